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
  maxOrder = top->ExpandModuleCutSets();
  const Config& config = Config::Instance();
  while (!top->cutSets.empty()) {
    auto entry = top->cutSets.extract(top->cutSets.begin());
    CutSet& cutSet = *entry.mapped();
    const int order = cutSet.GetOrder();
    const bool kept = config.maxCutSetSize == 0 || order <= config.maxCutSetSize;
    if (kept && config.mutualExclusion && cutSet.HasSharedOwner()) {
      cutSet.WarnOfExclusion();
      continue;
    }
    maxOrder = std::max(maxOrder, order);
    if (!kept) continue;
    cutSet.RestorePrime();
    entry.key() = cutSet.prime;
    Store(std::move(entry));
  }
  top->ResetCutSets();
}

void FaultTree::AddCutSet(std::unique_ptr<CutSet> cutSet, bool check) {
  if (check && IsSubsumed(*cutSet)) return;
  CutSetMap single;
  const double key = cutSet->prime;
  single.emplace(key, std::move(cutSet));
  Store(single.extract(single.begin()));
}

// Entries are moved as they are: there may be millions, and most arrive in the order of their keys.
void FaultTree::Store(CutSetMap::node_type entry) {
  const auto place = cutSets.insert(cutSets.end(), std::move(entry));
  if (!entry.empty()) {
    primeIndex->RemoveAndPrune(*place->second);
    place->second = std::move(entry.mapped());
  }
  primeIndex->Add(*place->second);
}

bool FaultTree::FindSubsumed(const CutSet& candidate, std::vector<CutSet*>& around) const {
  // The set of no events is in no list, and lies inside every other.
  if (!cutSets.empty() && cutSets.begin()->second->events.empty()) return true;
  if (candidate.events.empty()) {
    for (const auto& [key, cutSet] : cutSets) around.push_back(cutSet.get());
    return false;
  }
  return primeIndex->IsSubsumed(candidate, around);
}

bool FaultTree::IsSubsumed(const CutSet& candidate) {
  std::vector<CutSet*> redundant;
  const bool subsumed = FindSubsumed(candidate, redundant);
  for (CutSet* cutSet : redundant) RemoveCutSet(*cutSet);
  return subsumed;
}

void FaultTree::RemoveCutSet(CutSet& cutSet) { TakeCutSet(cutSet); }

std::unique_ptr<CutSet> FaultTree::TakeCutSet(CutSet& cutSet) {
  primeIndex->RemoveAndPrune(cutSet);
  const auto entry = cutSets.find(cutSet.prime);
  if (entry == cutSets.end() || entry->second.get() != &cutSet) return nullptr;
  std::unique_ptr<CutSet> taken = std::move(entry->second);
  cutSets.erase(entry);
  return taken;
}

}  // namespace FTS
