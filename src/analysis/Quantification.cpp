// Figures of a tree from those of its cut sets, and their numbers by order. Cut sets are taken in
// the order of their keys throughout, so that rounding is the same in every run.

#include <algorithm>
#include <cstddef>
#include <iostream>
#include <map>
#include <memory>
#include <vector>

#include "analysis/CutSet.h"
#include "analysis/CutSetList.h"
#include "analysis/FaultTree.h"
#include "app/Config.h"
#include "faulttree/BasicEvent.h"

namespace FTS {
namespace {

using CutSetMap = std::map<double, std::unique_ptr<CutSet>>;
using Members = std::vector<BasicEvent*>;

/// The events that are in every one of the cut sets.
Members CommonEvents(const CutSetMap& cutSets) {
  if (cutSets.empty()) return {};
  Members common = cutSets.begin()->second->events;
  for (const auto& entry : cutSets) {
    if (common.empty()) break;
    const CutSet& cutSet = *entry.second;
    std::erase_if(common, [&](const BasicEvent* event) { return !cutSet.HasEvent(*event); });
  }
  return common;
}

/// The product over the members that are not in `common`. Both ascend by prime.
double UnavailabilityWithout(const Members& common, const CutSet& cutSet) {
  double product = 1.0;
  auto shared = common.begin();
  for (const BasicEvent* event : cutSet.events) {
    if (shared != common.end() && (*shared)->prime == event->prime) {
      ++shared;
    } else {
      product *= event->GetUnavailability();
    }
  }
  return product;
}

/// The members of `a` and `b` in `joined`, ascending by prime, each once.
void Join(const Members& a, const Members& b, Members& joined) {
  joined.clear();
  std::set_union(a.begin(), a.end(), b.begin(), b.end(), std::back_inserter(joined),
                 [](const BasicEvent* x, const BasicEvent* y) { return x->prime < y->prime; });
}

double UnavailabilityOf(const Members& members) {
  double product = 1.0;
  for (const BasicEvent* event : members) product *= event->GetUnavailability();
  return product;
}

struct Overlaps {
  double ofPairs = 0.0;
  double ofTriples = 0.0;
};

/// The second and third sums of inclusion-exclusion: the unavailabilities of all unions of two and
/// of three cut sets.
Overlaps SumOverlaps(const CutSetMap& cutSets) {
  Overlaps sums;
  Members pair;
  Members triple;
  for (auto i = cutSets.begin(); i != cutSets.end(); ++i) {
    for (auto j = std::next(i); j != cutSets.end(); ++j) {
      Join(i->second->events, j->second->events, pair);
      sums.ofPairs += UnavailabilityOf(pair);
      for (auto k = std::next(j); k != cutSets.end(); ++k) {
        Join(pair, k->second->events, triple);
        sums.ofTriples += UnavailabilityOf(triple);
      }
    }
  }
  return sums;
}

}  // namespace

void FaultTree::EsaryProschan() {
  const Members common = CommonEvents(cutSets);
  // The same as 1 less the product of all 1 - q, in steps that keep the digits of figures far below
  // one: 1e-12 would be 9.99978e-13 otherwise, and 1e-17 nothing at all.
  unavailability = 0.0;
  for (const auto& [key, cutSet] : cutSets) {
    unavailability += UnavailabilityWithout(common, *cutSet) * (1.0 - unavailability);
  }
  for (const BasicEvent* event : common) unavailability *= event->GetUnavailability();
}

void FaultTree::CrossProduct() {
  double sum = 0.0;
  for (const auto& [key, cutSet] : cutSets) sum += cutSet->GetUnavailability();
  const bool rare = (Config::Instance().quantAnalysisTypes & QuantAnalysisType::Rare) != 0;
  if (!rare) {
    const Overlaps overlaps = SumOverlaps(cutSets);
    sum = sum - overlaps.ofPairs + overlaps.ofTriples;
  }
  unavailability = std::min(sum, 1.0);
}

void FaultTree::ComputeFrequency() {
  // That none of the others holds is the product over those before and those behind, so that the
  // sum takes two sweeps instead of one per cut set.
  std::vector<double> noneBehind(cutSets.size() + 1, 1.0);
  std::size_t place = cutSets.size();
  for (auto entry = cutSets.rbegin(); entry != cutSets.rend(); ++entry, --place) {
    noneBehind[place - 1] = noneBehind[place] * (1.0 - entry->second->GetUnavailability());
  }
  frequency = 0.0;
  double noneBefore = 1.0;
  for (const auto& [key, cutSet] : cutSets) {
    ++place;
    frequency += cutSet->GetFrequency() * (noneBefore * noneBehind[place]);
    noneBefore *= 1.0 - cutSet->GetUnavailability();
  }
}

std::map<int, int> FaultTree::CountCutSetsByOrder() const {
  std::map<int, int> counts;
  if (Config::Instance().countNormalEvents) {
    for (const auto& [eventPrime, lists] : primeIndex->lists) {
      for (const auto& [size, list] : lists) {
        if (list->GetOwnCount() > 0) counts[size] += list->GetOwnCount();
      }
    }
  } else {
    // Printed one above the order, so that cut sets of normal events alone stand under 1. Users of
    // the option know its tables that way.
    for (const auto& [key, cutSet] : cutSets) ++counts[cutSet->GetEffectiveOrder() + 1];
  }
  return counts;
}

void FaultTree::PrintCutSetSummary() const {
  std::cout << "Cut Set Summary for: " << GetName() << '\n';
  if (cutSets.empty()) return;
  const std::map<int, int> counts = CountCutSetsByOrder();
  const int lastLine = Config::Instance().countNormalEvents ? maxOrder : maxOrder + 1;
  int total = 0;
  for (int line = 1; line <= lastLine; ++line) {
    const auto found = counts.find(line);
    const int count = found == counts.end() ? 0 : found->second;
    std::cout << line << ": " << count << '\n';
    total += count;
  }
  std::cout << "Total: " << total << '\n';
}

}  // namespace FTS
