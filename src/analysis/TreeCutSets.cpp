// The cut sets of a whole tree: they are taken over from the top gate and live on in the tree
// alone. The tree's index is what results, summary and FMEA are read from, so lists and events
// without cut sets do not stay in it.

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

#include "analysis/CutSet.h"
#include "analysis/CutSetList.h"
#include "analysis/FaultTree.h"
#include "app/Config.h"
#include "faulttree/FaultTreeNode.h"

namespace FTS {

void FaultTree::CollectCutSets() {
  maxOrder = 0;
  FaultTreeNode* const top = GetTopGate();
  if (!top) return;
  const Config& config = Config::Instance();
  for (auto& [key, cutSet] : top->cutSets) {
    const int order = cutSet->GetOrder();
    const bool kept = config.maxCutSetSize == 0 || order <= config.maxCutSetSize;
    if (kept && config.mutualExclusion && cutSet->HasSharedOwner()) {
      cutSet->WarnOfExclusion();
      continue;
    }
    maxOrder = std::max(maxOrder, order);
    if (!kept) continue;
    cutSet->RestorePrime();
    AddCutSet(std::move(cutSet), false);
  }
  top->ResetCutSets();
}

void FaultTree::AddCutSet(std::unique_ptr<CutSet> cutSet, bool check) {
  if (check && IsSubsumed(*cutSet)) return;
  // Most arrive in the order of their keys.
  const double key = cutSet->prime;
  const auto entry = cutSets.try_emplace(cutSets.end(), key);
  if (entry->second) primeIndex->RemoveAndPrune(*entry->second);
  entry->second = std::move(cutSet);
  primeIndex->Add(*entry->second);
}

bool FaultTree::IsSubsumed(const CutSet& candidate) {
  std::vector<CutSet*> redundant;
  const bool subsumed = primeIndex->IsSubsumed(candidate, redundant);
  for (CutSet* cutSet : redundant) RemoveCutSet(*cutSet);
  return subsumed;
}

void FaultTree::RemoveCutSet(CutSet& cutSet) {
  primeIndex->RemoveAndPrune(cutSet);
  const auto entry = cutSets.find(cutSet.prime);
  if (entry != cutSets.end() && entry->second.get() == &cutSet) cutSets.erase(entry);
}

}  // namespace FTS
