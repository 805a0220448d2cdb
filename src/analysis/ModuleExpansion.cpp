// Module expansion: puts the cut sets of modules in the place of the module events that stand for
// them in the cut sets of a top gate. Inner modules are expanded when an outer one first needs
// them. No cut set of one module shares an event with the rest of the tree, so what comes out is
// minimal as it is, and orders add up. That allows leaving out early what would exceed the order
// limit: modules count as single events while cut sets are generated, and most of what they hide
// may.

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <limits>
#include <memory>
#include <utility>
#include <vector>

#include "analysis/CutSet.h"
#include "analysis/CutSetList.h"
#include "analysis/ModuleEvent.h"
#include "app/Config.h"
#include "faulttree/FaultTreeGate.h"

namespace FTS {
namespace {

using CutSets = std::vector<std::unique_ptr<CutSet>>;

constexpr int NoLimit = std::numeric_limits<int>::max();

int OrderLimit() {
  const int limit = Config::Instance().maxCutSetSize;
  return limit == 0 ? NoLimit : limit;
}

bool CountsForOrder(const BasicEvent& event) {
  return event.type != NodeType::Normal || Config::Instance().countNormalEvents;
}

const ModuleEvent* AsModule(const BasicEvent& event) {
  return event.type == NodeType::Module ? static_cast<const ModuleEvent*>(&event) : nullptr;
}

/// What the member adds to the order of an expanded cut set.
OrderRange RangeOf(const BasicEvent& member) {
  if (const ModuleEvent* const module = AsModule(member)) return module->orders;
  const int order = CountsForOrder(member) ? 1 : 0;
  return {order, order};
}

bool LeadsToEmptySet(const CutSet& cutSet) {
  return cutSet.events.empty() ||
         std::any_of(cutSet.events.begin(), cutSet.events.end(), [](const BasicEvent* member) {
           const ModuleEvent* const module = AsModule(*member);
           return module && module->holdsEmptySet;
         });
}

/// The work on one cut set: starts with nothing, and takes member after member in.
class Expansion {
 public:
  Expansion(CutSets& initResult, int initLimit) : result(initResult), limit(initLimit) {}

  /// `lowestBehind` is the least that the members still to come add to the order.
  void TakeEvent(BasicEvent& event, int lowestBehind) {
    if (!std::exchange(started, true)) result.push_back(std::make_unique<CutSet>());
    for (const auto& cutSet : result) cutSet->AddEvent(event);
    Drop(lowestBehind);
  }

  void TakeModule(const CutSets& moduleCutSets, int lowestBehind) {
    if (!std::exchange(started, true)) {
      for (const auto& cutSet : moduleCutSets) {
        if (Fits(cutSet->GetOrder(), lowestBehind)) result.push_back(cutSet->Clone());
      }
      return;
    }
    // An empty module empties the whole: nothing causes it, so nothing causes it with others.
    CutSets product;
    const std::vector<int> orders = OrdersOf(result);
    for (const auto& factor : moduleCutSets) {
      const int factorOrder = factor->GetOrder();
      for (std::size_t i = 0; i < result.size(); ++i) {
        if (!Fits(orders[i] + factorOrder, lowestBehind)) continue;
        product.push_back(result[i]->Clone());
        for (BasicEvent* const event : factor->events) product.back()->AddEvent(*event);
      }
    }
    result = std::move(product);
  }

 private:
  bool Fits(int order, int lowestBehind) const {
    return limit == NoLimit || order + lowestBehind <= limit;
  }

  void Drop(int lowestBehind) {
    if (limit == NoLimit) return;
    std::erase_if(result,
                  [&](const auto& cutSet) { return !Fits(cutSet->GetOrder(), lowestBehind); });
  }

  static std::vector<int> OrdersOf(const CutSets& cutSets) {
    std::vector<int> orders;
    orders.reserve(cutSets.size());
    for (const auto& cutSet : cutSets) orders.push_back(cutSet->GetOrder());
    return orders;
  }

  CutSets& result;
  const int limit;
  bool started = false;
};

}  // namespace

OrderRange CutSet::ExpandedOrders() const {
  OrderRange sum{0, 0};
  for (const BasicEvent* member : events) {
    const OrderRange range = RangeOf(*member);
    if (range.IsEmpty()) return {};
    sum.lowest += range.lowest;
    sum.highest += range.highest;
  }
  return sum;
}

void CutSet::Expand(std::vector<std::unique_ptr<CutSet>>& list) const {
  list.clear();
  int lowestBehind = ExpandedOrders().lowest;
  if (ExpandedOrders().IsEmpty()) return;
  Expansion expansion(list, OrderLimit());
  for (BasicEvent* const member : events) {
    lowestBehind -= RangeOf(*member).lowest;
    if (member->type != NodeType::Module) {
      expansion.TakeEvent(*member, lowestBehind);
      continue;
    }
    auto& module = static_cast<ModuleEvent&>(*member);
    if (module.hasNestedModules) module.ExpandModuleCutSets();
    expansion.TakeModule(module.moduleCutSets, lowestBehind);
  }
}

int ModuleEvent::ExpandModuleCutSets() {
  CutSets expanded;
  CutSets list;
  for (auto& cutSet : moduleCutSets) {
    if (!cutSet->hasModule) {
      expanded.push_back(std::move(cutSet));
      continue;
    }
    cutSet->Expand(list);
    std::move(list.begin(), list.end(), std::back_inserter(expanded));
  }
  moduleCutSets = std::move(expanded);
  return orders.IsEmpty() ? 0 : orders.highest;
}

void ModuleEvent::TakeCutSets(FaultTreeGate& source) {
  for (auto& [key, cutSet] : source.cutSets) {
    hasNestedModules = hasNestedModules || cutSet->hasModule;
    holdsEmptySet = holdsEmptySet || LeadsToEmptySet(*cutSet);
    orders.Include(cutSet->ExpandedOrders());
    cutSet->RestorePrime();
    moduleCutSets.push_back(std::move(cutSet));
  }
  source.cutSets.clear();
  source.primeIndex.reset();
}

int FaultTreeGate::ExpandModuleCutSets() {
  OrderRange orders;
  bool mayShrink = false;
  CutSets expanded;
  CutSets list;
  for (auto entry = cutSets.begin(); entry != cutSets.end();) {
    const CutSet& cutSet = *entry->second;
    if (!cutSet.hasModule) {
      ++entry;
      continue;
    }
    orders.Include(cutSet.ExpandedOrders());
    mayShrink = mayShrink || LeadsToEmptySet(cutSet);
    cutSet.Expand(list);
    std::move(list.begin(), list.end(), std::back_inserter(expanded));
    RemoveFromIndex(cutSet);
    entry = cutSets.erase(entry);
  }
  // In the order of their keys, which is that of memory from then on: there may be millions.
  for (const auto& cutSet : expanded) cutSet->RestorePrime();
  std::stable_sort(expanded.begin(), expanded.end(),
                   [](const auto& a, const auto& b) { return a->prime < b->prime; });
  for (auto& cutSet : expanded) {
    maxOrder = std::max(maxOrder, cutSet->GetOrder());
    AddCutSet(std::move(cutSet), !mayShrink);
  }
  return orders.IsEmpty() ? 0 : orders.highest;
}

}  // namespace FTS
