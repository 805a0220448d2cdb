#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "analysis/IPrime.h"
#include "faulttree/FaultTreeNode.h"

namespace FTS {

/// The inputs of a gate in one state of the state machine, or before and after contraction.
class ChildrenList {
 public:
  ChildrenList(std::string initState, FaultTreeGate& initOwner);
  virtual ~ChildrenList();

  std::vector<FaultTreeNode::Pointer> children;
  std::string state;
  FaultTreeGate* owner;  ///< The gate that owns this list.

  // Contraction keeps its progress here, so that a gate shared by trees is contracted once.
  bool contracted = false;  ///< Children are judged; gates of the same type may still be nested.
  bool flattened = false;   ///< Nothing is left to lift.
  std::size_t firstAppended = 0;  ///< Where the children begin that came by lifting.
};

/// A logic gate: an ordered list of inputs for each state.
class FaultTreeGate : public FaultTreeNode {
 public:
  FaultTreeGate(NodeType initType, std::string initName, Model* initModel, int initId = NewId);
  ~FaultTreeGate() override;

  int GetChildCount() const override;
  const Pointer& GetChild(int index) const override;
  void AddChild(const Pointer& node) override;
  void ReplaceChild(int index, const Pointer& node) override;
  bool RemoveChild(const FaultTreeNode& node) override;
  void ClearChildren() override;
  bool IsGate() const override { return true; }

  Pointer Clone(Model* target, CloneMode mode, bool copyStates,
                const std::shared_ptr<Component>& context) override;
  void FindContradictions(OnceMarks& marks) override;
  void TakeCoverage(CoverageWalk& walk,
                    const std::shared_ptr<InputDeviationProxy>& mechanism) override;
  Pointer DualiseWithin(NegationWalk& walk, bool negate) override;
  int GenerateCutSets() override;
  int ExpandModuleCutSets() override;
  std::unique_ptr<BDDParent> BuildBDD(bool asRoot) override;
  bool AddCutSet(std::unique_ptr<CutSet> cutSet, bool skipCheck) override;
  void ResetOwnCutSets() override;
  void AddToFMEA(FMEA& fmea, const std::shared_ptr<FaultTree>& tree) override;
  void DefineInOpenPSA(const XmlOutputElement& tree) const override;

  /// True when the gate's cut sets make the candidate redundant. Cut sets of the gate that the
  /// candidate makes redundant are removed on the way.
  bool IsSubsumed(const CutSet& candidate);
  /// Takes the cut set out of the lists of its events; it stays in `cutSets`.
  void RemoveFromIndex(const CutSet& cutSet);
  /// The index of `cutSets`, made when it was not needed so far.
  CutSetIndex& GetIndex();
  /// Hands the cut sets of a module to its event, when they are complete.
  void FillModuleEvent();
  /// Warns, once for each input, that this AND gate goes on without the input.
  void ReportIgnoredInput(const FaultTreeNode& input);

  /// Absorption on the level of gates: takes `object` in as an input unless an input covers it
  /// already. False in every case that changes nothing. AND and OR gates tell on standard output
  /// what they are given. No pass of the analysis calls it.
  virtual bool AddPrimeObject(FaultTreeNode& object, IPrime& identity);

  const std::vector<Pointer>& Children() const { return currentChildren->children; }
  ChildrenList& CurrentList() { return *currentChildren; }

  std::map<std::string, std::unique_ptr<ChildrenList>> childLists;  ///< By state; owned.
  std::unique_ptr<CutSetIndex> primeIndex;  ///< Finds `cutSets` by event; null until asked for.

 protected:
  void SelectState(const std::string& value) override;
  void CopyListToState(const std::string& value) override;
  void AppendCloned(std::vector<FaultTreeNode*>& nodes) const override;

 private:
  ChildrenList* currentChildren;   // Points into `childLists`.
  std::vector<int> ignoredInputs;  // Ids that `ReportIgnoredInput` has named.
};

/// Makes a gate of the given type: one of the six gate types of `NodeType`. Any other type is a
/// programming fault.
std::shared_ptr<FaultTreeGate> MakeGate(NodeType type, std::string name, Model* model,
                                        int id = FaultTreeNode::NewId);

}  // namespace FTS
