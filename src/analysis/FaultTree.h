#pragma once

#include <map>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "analysis/Forward.h"
#include "faulttree/Forward.h"
#include "model/Forward.h"
#include "model/IPrintable.h"
#include "model/IVisitable.h"

namespace FTS {

class Workbook;

/// One top event: the graph below it, its minimal cut sets once they are found, and its figures.
class FaultTree : public IVisitable,
                  public IPrintable,
                  public std::enable_shared_from_this<FaultTree> {
 public:
  using CutSetMap = std::map<double, std::unique_ptr<CutSet>>;

  /// The root may be null: a tree without root has no cut sets.
  explicit FaultTree(std::shared_ptr<FaultTreeNode> initRoot);
  ~FaultTree() override;
  FaultTree(const FaultTree&) = delete;
  FaultTree& operator=(const FaultTree&) = delete;

  void Accept(Visitor& visitor) override;
  /// The root's graph.
  void Print(std::ostream& stream, int indent) const override;

  /// The root's name, "" without root.
  std::string GetName() const;
  /// The first node from the root down that is no proxy: a gate or an event; null when there is
  /// none.
  FaultTreeNode* GetTopGate() const;

  // Cut sets: analysis/TreeCutSets.cpp

  /// Finds the modules below the top gate and generates each of them, inner ones first. Returns how
  /// many gates are modules, the top gate included; with fewer than two nothing is generated.
  int Modularise(bool useBDDs);
  /// Gives the top gate its cut sets by way of a decision diagram; writes two lines of progress.
  void GenerateBDDCutSets();

  /// Takes the result of the top gate over, within the order limit, and clears the gates.
  void CollectCutSets();
  /// Stores the cut set under its key, in the place of one with the same key; with `check` a cut
  /// set that the stored ones make redundant is dropped, and stored ones that it makes redundant
  /// go.
  void AddCutSet(std::unique_ptr<CutSet> cutSet, bool check);
  /// True when a stored cut set makes the candidate redundant. Stored ones that the candidate makes
  /// redundant are removed.
  bool IsSubsumed(const CutSet& candidate);
  /// True when a stored cut set lies inside the candidate or equals it. Stored ones that the
  /// candidate lies inside of, met before that is decided, are added to `around`.
  bool FindSubsumed(const CutSet& candidate, std::vector<CutSet*>& around) const;
  /// Takes a stored cut set out of index and map and destroys it.
  void RemoveCutSet(CutSet& cutSet);
  /// The same, and the caller owns it.
  std::unique_ptr<CutSet> TakeCutSet(CutSet& cutSet);

  // Negation: analysis/Negation.cpp, analysis/Consensus.cpp

  /// Rewrites the tree without negations; see `FaultTreeNode::Dualise`. When that replaces the
  /// root, an OR gate with the root's id, name and description takes its place.
  void Dualise();
  /// Removes contradictions, joins pairs and removes redundant cut sets. For trees that held a
  /// negation.
  void ApplyConsensus();
  /// Fills `cutSets` anew from the index.
  void RebuildCutSetMap();

  // Figures: analysis/Quantification.cpp

  /// The Esary-Proschan bound over the minimal cut sets, with the events common to all of them
  /// factored out (J. D. Esary, F. Proschan: Coherent Structures of Non-Identical Components,
  /// Technometrics 5 (1963)). Sets `unavailability`.
  void EsaryProschan();
  /// The first three terms of inclusion-exclusion, or their first alone (rare event approximation),
  /// at most 1. Sets `unavailability`.
  void CrossProduct();
  /// The sum over the cut sets of frequency times the probability that no other one holds. Sets
  /// `frequency`.
  void ComputeFrequency();

  /// Numbers of cut sets by order, to standard output.
  void PrintCutSetSummary() const;
  /// The same numbers: by the order that is printed, orders without cut sets left out.
  std::map<int, int> CountCutSetsByOrder() const;
  /// Enters this tree as the effect of each event of its cut sets.
  void AddToFMEA(FMEA& fmea);

  // Hardware metrics: analysis/HardwareMetrics.cpp

  /// The failure rates of the components behind the cut sets, each counted once. Sets
  /// `totalFailureRate` and returns it.
  double ComputeTotalFailureRate(const Model& model);
  /// The single-point and the latent fault metric of ISO 26262 for the goal that this tree
  /// violates. Sets `totalFailureRate`, `singlePointMetric` and `latentFaultMetric`; NaN or an
  /// infinity where the rates are 0.
  void ComputeHardwareMetrics(const Model& model);

  // The spreadsheet workbooks: output/ExcelWorkbook.cpp, output/CutSetRows.cpp,
  // output/ISO26262Workbook.cpp

  /// This tree's row of the contents: link, numbers of cut sets of the orders 1 to `lastOrder`,
  /// and of all orders.
  void WriteNavigationRow(Workbook& stream, int lastOrder) const;
  /// The sheet with this tree's figures and cut sets.
  void WriteCutSetSheet(Workbook& stream) const;
  /// The sheet that calculates this tree's hardware metrics in formulas.
  void WriteISO26262Sheet(Workbook& stream) const;

  CutSetMap cutSets;                        ///< The result, by prime product; owned.
  std::unique_ptr<CutSetIndex> primeIndex;  ///< Finds `cutSets` by event; never null.
  std::string label;
  std::weak_ptr<Hazard> source;                      ///< The hazard it was synthesised for, if any.
  std::shared_ptr<OutputDeviation> sourceDeviation;  ///< The system output, if it was that.
  double severity = -1.0;
  double latentFaultMetric = 0.0;
  int maxOrder = 0;  ///< The highest order met, of dropped cut sets too.
  bool containsNot = false;
  bool hasLoops = false;
  bool unbreakable = false;         ///< Holds a loop that no single cut breaks; not analysed.
  std::map<int, int> prunedCounts;  ///< By order; stays empty, the results writers read it.
  double singlePointMetric = 0.0;
  double totalFailureRate = 0.0;
  std::shared_ptr<FaultTreeNode> root;
  double unavailability = 0.0;
  double frequency = 0.0;

 private:
  void Store(CutSetMap::node_type entry);
};

}  // namespace FTS
