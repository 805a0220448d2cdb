#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "output/ResultFile.h"
#include "output/Visitor.h"

namespace FTS {

/// The results as one tree of text: what all writers of results XML share, whichever files they
/// make of it. Texts go out byte for byte as the model holds them, without escapes, and nothing
/// stands between two elements: readers of this format depend on both, and a model whose names hold
/// "<" has to live with it.
class ResultsWriter : public Visitor {
 public:
  /// A tree is written no further than this many nodes below its top. A node with several parents
  /// is written once for each path to it, and a graph of some thirty shared gates that is written
  /// as it was synthesised has more paths than any disk has room for.
  static constexpr std::int64_t MostNodesOfTree = 10'000'000;

  explicit ResultsWriter(std::int64_t initNodeLimit = MostNodesOfTree);

  using Visitor::Enter;
  using Visitor::Leave;
  using Visitor::Visit;

  /// The warnings. Nothing when the log holds no text.
  void Enter(DiagnosticLog& log) override;

  void Enter(CutSet& cutSet) override;
  void Leave(CutSet& cutSet) override;

  // Nodes. Gates of order and exclusion and bare proxies leave no element: their children stand
  // right inside the element around them, as readers of this format expect.

  void Enter(ExportedDeviationNode& node) override;
  void Enter(ExportedDeviationProxy& node) override;
  void Enter(InputDeviationNode& node) override;
  void Enter(InputDeviationProxy& node) override;
  void Enter(OutputDeviationNode& node) override;
  void Enter(OutputDeviationProxy& node) override;
  void Enter(GotoNode& node) override;
  void Enter(ComplementEvent& node) override;
  void Enter(NormalEvent& node) override;
  void Enter(ModuleEvent& node) override;
  void Enter(CircleNode& node) override;
  void Enter(PCCFNode& node) override;
  void Enter(PCCFProxy& node) override;
  void Enter(StateProxy& node) override;
  void Enter(CCF& node) override;
  void Enter(BasicEvent& node) override;
  void Enter(NotGate& node) override;
  void Enter(AndGate& node) override;
  void Enter(OrGate& node) override;

  void Leave(ExportedDeviationProxy& node) override;
  void Leave(InputDeviationProxy& node) override;
  void Leave(OutputDeviationProxy& node) override;
  void Leave(GotoNode& node) override;
  void Leave(PCCFProxy& node) override;
  void Leave(PCCFNode& node) override;
  void Leave(StateProxy& node) override;
  void Leave(NotGate& node) override;
  void Leave(AndGate& node) override;
  void Leave(OrGate& node) override;

  /// The whole table.
  void Enter(FMEA& fmea) override;
  void Leave(FMEA& fmea) override;

  std::string viewerPath;  ///< What a viewer may show afterwards; empty unless the writer sets it.

 protected:
  /// Stops where the tree would grow beyond the limit of nodes.
  void WalkChildren(FaultTreeNode& node) override;

  /// The declaration and the start of the root element, without the attribute `model` when
  /// `modelName` is null; and the end of the root element.
  void WriteRootStart(const std::string* modelName);
  void WriteRootEnd();
  /// The warnings, each as `form` gives it. Nothing when the log holds no text.
  using TextForm = std::function<std::string(const std::string&)>;
  void WriteWarnings(const DiagnosticLog& log, const TextForm& form);
  /// The allocations of integrity levels; nothing when the model has none. The body stands with the
  /// encodings, in optimisation/SafetyAllocations.cpp.
  void WriteSafetyAllocations(Model& model);
  /// Nothing when the model has no table or the options leave it out.
  void WriteFMEA(Model& model);
  /// One `FaultTree`: its figures, then its nodes and all its cut sets as far as they are wanted.
  void WriteFaultTree(FaultTree& tree, bool withTree, bool withAllCutSets);

  /// A whole document: failure modes, and this one tree with its cut sets in place of its nodes.
  void WriteCutSetsDocument(Model& model, FaultTree& tree);

  /// Puts every tree back to what it was before contraction unless the options want it contracted.
  static void SelectTreeState(Model& model);

  ResultFile out;

 private:
  void WriteFaultTreeSummary(const FaultTree& tree);
  void WriteTopNode(FaultTree& tree);
  void WriteCutSetsSummary(const FaultTree& tree);
  void WriteAllCutSets(FaultTree& tree);
  void WriteCutSetsBySize(FaultTree& tree);
  void WriteCutSetsByEffectiveOrder(FaultTree& tree);
  void WriteEvents(const FMEA& fmea);
  void WriteEventBlock(const FMEA& fmea, const BasicEvent& event, bool linked);
  void WriteEffects(const FMEA& fmea, const BasicEvent& event);
  void WriteEffect(const FaultTree& tree, bool direct);
  void WriteUnavailabilitySort(double unavailability);
  void WriteElement(std::string_view element, std::string_view text);
  void WriteElement(std::string_view element, double figure);
  void WriteEventReference(const FaultTreeNode& node);
  void OpenNode(std::string_view element, const FaultTreeNode& node, std::string_view nodeName);
  void OpenParent(std::string_view element, const FaultTreeNode& node);
  void CloseParent(std::string_view element);

  std::int64_t nodeLimit;
  std::int64_t nodesLeft = 0;  // Of the tree that is being written.
  bool cutShort = false;       // The tree that is being written is not whole.
};

}  // namespace FTS
