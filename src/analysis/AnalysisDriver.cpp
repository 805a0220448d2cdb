// The drivers of the analysis: from the synthesised trees to cut sets and figures, and from those
// to the FMEA table. Trees are independent of each other and are taken one after another.

#include <algorithm>
#include <iostream>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "analysis/CutSet.h"
#include "analysis/CutSetList.h"
#include "analysis/FMEA.h"
#include "analysis/FaultTree.h"
#include "app/Config.h"
#include "app/DiagnosticLog.h"
#include "app/Duration.h"
#include "faulttree/BasicEvent.h"
#include "faulttree/FaultTreeNode.h"
#include "faulttree/GraphWalk.h"
#include "model/Model.h"
#include "model/NumberText.h"
#include "platform/Clock.h"

namespace FTS {
namespace {

/// The text of the time since `start`.
std::string TimeSince(long long start) {
  constexpr float MillisecondsPerSecond = 1000.0F;
  return FormatDuration(static_cast<float>(Clock::Milliseconds() - start) / MillisecondsPerSecond);
}

/// Calls `work` for each gate and proxy of the tree.
template <typename Work>
void ForEachInnerNode(const FaultTree& tree, const Work& work) {
  ForEachNode(*tree.root, [&](FaultTreeNode& node) {
    if (!node.IsEvent()) work(&node);
  });
}

/// Gives a tree that holds a negation nodes of its own where it shares some with another tree:
/// negations are rewritten in place, and the other tree may need the logic as it is.
void SeparateNegatedTrees(const std::vector<std::shared_ptr<FaultTree>>& trees) {
  const bool any =
      std::any_of(trees.begin(), trees.end(), [](const auto& tree) { return tree->containsNot; });
  if (!any || trees.size() < 2) return;
  std::unordered_map<const FaultTreeNode*, int> users;
  for (const auto& tree : trees) {
    if (tree->root) ForEachInnerNode(*tree, [&](const auto* node) { ++users[node]; });
  }
  for (const auto& tree : trees) {
    if (!tree->containsNot || !tree->root) continue;
    bool shares = false;
    ForEachInnerNode(*tree, [&](const auto* node) { shares = shares || users[node] > 1; });
    if (!shares) continue;
    ForEachInnerNode(*tree, [&](const auto* node) { --users[node]; });
    tree->root = CloneTemplate(*tree->root, tree->root->model, CloneMode::NewNodes);
  }
}

/// From the top gate to the cut sets of the tree.
void GenerateCutSets(FaultTree& tree, bool useBDDs, bool quiet) {
  if (tree.containsNot && tree.root) tree.Dualise();
  if (Config::Instance().modularise) {
    const int count = tree.Modularise(useBDDs);
    if (!quiet) std::cout << "\tModularisation complete: " << count << " modules found.\n";
  }
  if (useBDDs) {
    if (tree.containsNot) {
      DiagnosticLog::Instance().AddWarning(
          "Cut sets by decision diagrams leave out which events must not occur: " + tree.GetName());
    }
    tree.GenerateBDDCutSets();
  } else if (FaultTreeNode* const top = tree.GetTopGate()) {
    top->GenerateCutSets();
  }
  tree.CollectCutSets();
  if (!tree.containsNot) return;
  // "a and b, or a and not b" is a: with a limit of 1 neither is there to tell.
  if (Config::Instance().maxCutSetSize > 0) {
    DiagnosticLog::Instance().AddWarning(
        "The order limit may hide smaller cut sets, which negation would make of larger ones: " +
        tree.GetName());
  }
  tree.ApplyConsensus();
  tree.RebuildCutSetMap();
}

void Quantify(FaultTree& tree) {
  const Config& config = Config::Instance();
  if (!config.quantitativeAnalysis) return;
  if ((config.quantAnalysisTypes & QuantAnalysisType::EsaryProschan) != 0) {
    tree.EsaryProschan();
    tree.ComputeFrequency();
  } else {
    tree.CrossProduct();
  }
}

}  // namespace

void Model::Analyse(bool useBDDs) {
  const bool quiet = Config::Instance().runSilent;
  const long long totalStart = Clock::Milliseconds();
  long long phaseStart = totalStart;
  if (!quiet) std::cout << "Analysing: \n";
  SeparateNegatedTrees(faultTrees);
  for (const auto& tree : faultTrees) {
    if (!quiet) std::cout << "    " << tree->GetName() << '\n';
    GenerateCutSets(*tree, useBDDs, quiet);
    if (!quiet) {
      std::cout << (useBDDs ? "\tBDD produced " : "\tMICSUP produced ") << tree->cutSets.size()
                << " in: " << TimeSince(phaseStart) << '\n';
    }
    // The next tree's time counts from here: its line tells what has passed since this one's.
    phaseStart = Clock::Milliseconds();
    Quantify(*tree);
    if (quiet) continue;
    // Both lines are printed whatever was computed; a figure that was not is 0.
    const std::string time = " calculated in: " + TimeSince(phaseStart) + "\n";
    std::cout << "\tUnavailability of " << FormatDouble(tree->unavailability) << time
              << "\tFrequency of " << FormatDouble(tree->frequency) << time;
    tree->PrintCutSetSummary();
  }
  if (!quiet) std::cout << "Full analysis complete in " << TimeSince(totalStart) << "\n\n";
}

void Model::BuildFMEA() {
  fmea = std::make_shared<FMEA>(*this);
  for (const auto& [prime, event] : basicEvents) fmea->AddEvent(event);
  for (const auto& tree : faultTrees) tree->AddToFMEA(*fmea);
}

}  // namespace FTS
