// The drivers of the analysis: from the synthesised trees to cut sets and figures, and from those
// to the FMEA table. Trees are independent of each other and are taken one after another.

#include <iostream>
#include <memory>
#include <string>

#include "analysis/CutSet.h"
#include "analysis/CutSetList.h"
#include "analysis/FMEA.h"
#include "analysis/FaultTree.h"
#include "app/Config.h"
#include "app/Duration.h"
#include "faulttree/BasicEvent.h"
#include "faulttree/FaultTreeNode.h"
#include "model/Model.h"
#include "model/NumberText.h"
#include "model/VtnException.h"
#include "platform/Clock.h"

namespace FTS {
namespace {

/// The text of the time since `start`.
std::string TimeSince(long long start) {
  constexpr float MillisecondsPerSecond = 1000.0F;
  return FormatDuration(static_cast<float>(Clock::Milliseconds() - start) / MillisecondsPerSecond);
}

/// Wrong cut sets are worse than none: what the analysis can't do ends the run.
void RequireAnalysable(const FaultTree& tree, bool useBDDs) {
  if (tree.containsNot) {
    throw VtnException("The fault tree " + tree.GetName() +
                       " holds a negation, which this version cannot analyse.");
  }
  if (useBDDs) {
    throw VtnException("The fault tree " + tree.GetName() +
                       " cannot be analysed by binary decision diagrams in this version.");
  }
}

void GenerateCutSets(FaultTree& tree) {
  if (FaultTreeNode* const top = tree.GetTopGate()) top->GenerateCutSets();
  tree.CollectCutSets();
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
  for (const auto& tree : faultTrees) {
    if (!quiet) std::cout << "    " << tree->GetName() << '\n';
    RequireAnalysable(*tree, useBDDs);
    GenerateCutSets(*tree);
    if (!quiet) {
      std::cout << "\tMICSUP produced " << tree->cutSets.size() << " in: " << TimeSince(phaseStart)
                << '\n';
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
