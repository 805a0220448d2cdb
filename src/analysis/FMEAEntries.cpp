// FMEA entries: enters the effects that the cut sets of a node have for a tree.
// Assumes that cut sets were generated. Changes the table only. Looks at one node, or for a proxy
// at the node it stands for; a whole tree is entered from its own index (FaultTree::AddToFMEA), as
// its gates have given up their cut sets by then.

#include <algorithm>

#include "analysis/CutSetList.h"
#include "analysis/FMEA.h"
#include "faulttree/BasicEvent.h"
#include "faulttree/FaultTreeGate.h"
#include "faulttree/ProxyNode.h"

namespace FTS {

namespace {

constexpr int Alone = 1;

bool HoldsAny(const CutSetIndex::ListsBySize& lists) {
  return std::any_of(lists.begin(), lists.end(),
                     [](const auto& entry) { return entry.second->GetCount() > 0; });
}

bool HoldsOneAlone(const CutSetIndex::ListsBySize& lists) {
  const auto found = lists.find(Alone);
  return found != lists.end() && found->second->GetCount() > 0;
}

}  // namespace

void FaultTreeGate::AddToFMEA(FMEA& fmea, const std::shared_ptr<FaultTree>& tree) {
  for (const auto& [eventPrime, lists] : GetIndex().lists) {
    // A list stays when its last cut set has gone.
    if (HoldsAny(lists)) fmea.AddEffect(eventPrime, tree, HoldsOneAlone(lists));
  }
}

void ProxyNode::AddToFMEA(FMEA& fmea, const std::shared_ptr<FaultTree>& tree) {
  if (GetChildCount() > 0) GetChild(0)->AddToFMEA(fmea, tree);
}

void BasicEvent::AddToFMEA(FMEA& fmea, const std::shared_ptr<FaultTree>& tree) {
  fmea.AddEffect(prime, tree, true);
}

}  // namespace FTS
