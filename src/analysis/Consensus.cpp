// The consensus law (W. V. Quine: A Way to Simplify Truth Functions, American Mathematical Monthly
// 62 (1955)): cleans the cut sets of a tree that holds negations. Cut sets that contradict
// themselves go; pairs that differ in one event and its complement join; and a cut set goes when
// others, none of which is it, imply a part of it.
// Terms are made from pairs of cut sets and terms that hold an event and its complement. Each pair
// is combined once: a second time it would give the same term, which is known by then.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <iostream>
#include <map>
#include <memory>
#include <numeric>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "analysis/ConsensusCutSet.h"
#include "analysis/CutSet.h"
#include "analysis/CutSetList.h"
#include "analysis/FaultTree.h"
#include "app/Config.h"
#include "app/DiagnosticLog.h"
#include "faulttree/BasicEvent.h"

namespace FTS {
namespace {

constexpr int MostRounds = 100;

// How many pairs are combined at most: terms breed terms, and without an end to it a few hundred
// cut sets can keep the law busy for ever. What is there at the end is right in any case; it may
// hold cut sets that others make redundant.
constexpr long long MostPairs = 2'000'000;

/// Cut sets by member. Walked in the order in which the members came, so that results do not depend
/// on addresses.
struct Occurrences {
  std::vector<BasicEvent*> events;  // Each once, in the order of first appearance.
  std::unordered_map<const BasicEvent*, std::vector<CutSet*>> sets;

  void Enter(CutSet& cutSet) {
    for (BasicEvent* const member : cutSet.events) {
      std::vector<CutSet*>& list = sets[member];
      if (list.empty()) events.push_back(member);
      list.push_back(&cutSet);
    }
  }

  const std::vector<CutSet*>* Find(const BasicEvent* event) const {
    const auto found = sets.find(event);
    return found == sets.end() || found->second.empty() ? nullptr : &found->second;
  }
};

std::size_t HashOf(const BasicEvent& member) {
  constexpr std::uint64_t Scatter = 0x9E3779B97F4A7C15U;
  constexpr int ShiftToLowBits = 29;
  const std::uint64_t mixed = static_cast<std::uint64_t>(member.GetId()) * Scatter;
  return static_cast<std::size_t>((mixed ^ (mixed >> ShiftToLowBits)) * Scatter);
}

/// A number that is equal for equal members, whatever their order.
std::size_t HashOf(const CutSet& cutSet) {
  return std::accumulate(
      cutSet.events.begin(), cutSet.events.end(), std::size_t{0},
      [](std::size_t sum, const BasicEvent* member) { return sum + HashOf(*member); });
}

/// The same without one of the members.
std::size_t HashOfRest(const CutSet& cutSet, const BasicEvent& without) {
  return HashOf(cutSet) - HashOf(without);
}

/// True when the two are the same but for `event` in `a` and `other` in `b`.
bool AreEqualBut(const CutSet& a, const BasicEvent& event, const CutSet& b,
                 const BasicEvent& other) {
  if (a.GetSize() != b.GetSize()) return false;
  return std::all_of(a.events.begin(), a.events.end(), [&](const BasicEvent* member) {
    return member == &event || (member != &other && b.HasEvent(*member));
  });
}

class ConsensusLaw {
 public:
  explicit ConsensusLaw(FaultTree& initTree) : tree(initTree) {}

  void RemoveContradictions();
  void JoinPairs();
  void FindRedundantCutSets();
  void RemoveRedundant();

 private:
  void JoinOn(BasicEvent& event);
  void Join(CutSet& a, CutSet& b, const BasicEvent& event);
  void StoreMinimal(std::unique_ptr<CutSet> cutSet);
  void Withdraw(CutSet& cutSet);
  void DropWithdrawn();
  void GenerateConsensus(const Occurrences& source, Occurrences& out);
  void CombineAll(const BasicEvent& event, const Occurrences& source, Occurrences& out);
  void Combine(const CutSet& a, const CutSet& b, const BasicEvent& event, Occurrences& out);
  bool IsKnown(const ConsensusCutSet& term) const;
  void FindRedundant(const ConsensusCutSet& term);
  void Announce(const std::string& text) const {
    if (!quiet) std::cout << text << '\n';
  }

  // How much of the two lists of an event and its complement has been combined.
  struct Progress {
    std::size_t positive = 0;
    std::size_t negative = 0;
  };

  FaultTree& tree;
  const bool quiet = Config::Instance().runSilent;
  std::vector<std::unique_ptr<CutSet>> pool;  // Owns what has left the tree, and the terms.
  std::unordered_set<const CutSet*> withdrawn;
  std::vector<CutSet*> kept;
  Occurrences first;
  Occurrences all;
  std::map<double, const CutSet*> derived;  // By key: cut sets and terms.
  std::unordered_multimap<std::size_t, const ConsensusCutSet*> terms;  // By members.
  std::unordered_map<const BasicEvent*, Progress> progress;
  std::unordered_set<CutSet*> redundant;
  long long pairs = 0;
  bool initial = true;  // Cut sets are combined with each other, not yet with terms.
};

void ConsensusLaw::RemoveContradictions() {
  std::vector<CutSet*> contradictions;
  for (const auto& [key, cutSet] : tree.cutSets) {
    if (cutSet->IsContradiction()) {
      contradictions.push_back(cutSet.get());
    } else {
      kept.push_back(cutSet.get());
      first.Enter(*cutSet);
    }
  }
  if (contradictions.empty()) return;
  Announce("Removing " + std::to_string(contradictions.size()) + " contradictions");
  for (CutSet* const cutSet : contradictions) tree.RemoveCutSet(*cutSet);
}

void ConsensusLaw::JoinPairs() {
  for (BasicEvent* const event : first.events) {
    if (event->complement) JoinOn(*event);
  }
  DropWithdrawn();
}

void ConsensusLaw::JoinOn(BasicEvent& event) {
  const BasicEvent& complement = *event.complement;
  const auto* const positive = first.Find(&event);
  const auto* const negative = first.Find(&complement);
  if (!positive || !negative) return;
  std::unordered_multimap<std::size_t, CutSet*> rests;
  for (CutSet* const cutSet : *negative) rests.emplace(HashOfRest(*cutSet, complement), cutSet);
  for (CutSet* const cutSet : *positive) {
    if (withdrawn.contains(cutSet)) continue;
    const auto [begin, end] = rests.equal_range(HashOfRest(*cutSet, event));
    const auto partner = std::find_if(begin, end, [&](const auto& entry) {
      return !withdrawn.contains(entry.second) &&
             AreEqualBut(*cutSet, event, *entry.second, complement);
    });
    if (partner != end) Join(*cutSet, *partner->second, event);
  }
}

void ConsensusLaw::Join(CutSet& a, CutSet& b, const BasicEvent& event) {
  auto joined = std::make_unique<CutSet>();
  for (BasicEvent* const member : a.events) {
    if (member != &event) joined->AddEvent(*member);
  }
  StoreMinimal(std::move(joined));
  for (CutSet* const cutSet : {&a, &b}) {
    if (!withdrawn.contains(cutSet)) Withdraw(*cutSet);
  }
}

/// Stores the cut set unless it is redundant; those that it makes redundant leave the tree.
void ConsensusLaw::StoreMinimal(std::unique_ptr<CutSet> cutSet) {
  std::vector<CutSet*> around;
  if (tree.FindSubsumed(*cutSet, around)) cutSet.reset();
  for (CutSet* const listed : around) Withdraw(*listed);
  if (!cutSet) return;
  // A rounded key can be that of another cut set, which gives way to the new one.
  const auto sameKey = tree.cutSets.find(cutSet->prime);
  if (sameKey != tree.cutSets.end()) Withdraw(*sameKey->second);
  tree.AddCutSet(std::move(cutSet), false);
}

void ConsensusLaw::Withdraw(CutSet& cutSet) {
  withdrawn.insert(&cutSet);
  pool.push_back(tree.TakeCutSet(cutSet));
}

void ConsensusLaw::DropWithdrawn() {
  if (withdrawn.empty()) return;
  const auto isGone = [this](const CutSet* cutSet) { return withdrawn.contains(cutSet); };
  std::erase_if(kept, isGone);
  for (auto& [event, list] : first.sets) std::erase_if(list, isGone);
}

void ConsensusLaw::FindRedundantCutSets() {
  Announce("\tApplying initial Consensus Law...");
  GenerateConsensus(first, all);
  progress.clear();
  initial = false;
  for (CutSet* const cutSet : kept) {
    all.Enter(*cutSet);
    derived[cutSet->prime] = cutSet;
  }
  for (int round = 1; round <= MostRounds; ++round) {
    Announce("\tGenerating derived Consensus Cut Sets...");
    const std::size_t before = derived.size();
    GenerateConsensus(all, all);
    if (derived.size() == before || pairs > MostPairs) break;
  }
  if (pairs <= MostPairs) return;
  DiagnosticLog::Instance().AddWarning(
      "The cut sets of " + tree.GetName() +
      " imply too many others to be all looked at; redundant ones may be left.");
}

// Source and result may be the same: what a round adds to it takes part in the same round.
void ConsensusLaw::GenerateConsensus(const Occurrences& source, Occurrences& out) {
  for (std::size_t i = 0; i < source.events.size(); ++i) {
    const BasicEvent& event = *source.events[i];
    if (event.complement) CombineAll(event, source, out);
  }
}

void ConsensusLaw::CombineAll(const BasicEvent& event, const Occurrences& source,
                              Occurrences& out) {
  // A term holds neither of the two, so these lists do not grow while they are combined.
  const auto* const positive = source.Find(&event);
  const auto* const negative = source.Find(event.complement.get());
  if (!positive || !negative) return;
  const Progress done = progress[&event];
  for (std::size_t i = 0; i < positive->size() && pairs <= MostPairs; ++i) {
    for (std::size_t j = i < done.positive ? done.negative : 0; j < negative->size(); ++j) {
      Combine(*(*positive)[i], *(*negative)[j], event, out);
    }
  }
  progress[&event] = {positive->size(), negative->size()};
}

void ConsensusLaw::Combine(const CutSet& a, const CutSet& b, const BasicEvent& event,
                           Occurrences& out) {
  if (!initial && !a.IsConsensus() && !b.IsConsensus()) return;  // Combined at first.
  if (++pairs > MostPairs) return;
  auto term = std::make_unique<ConsensusCutSet>(a, b, event);
  if (term->IsContradiction()) return;
  FindRedundant(*term);
  if (IsKnown(*term)) return;
  if (!derived.try_emplace(term->prime, term.get()).second) return;
  terms.emplace(HashOf(*term), term.get());
  out.Enter(*term);
  pool.push_back(std::move(term));
}

/// True when the same members came about before from some of the same parents. Keys tell
/// derivations apart, not sets, and there is no end of derivations; what this term can lead to, the
/// earlier one has led to or will.
bool ConsensusLaw::IsKnown(const ConsensusCutSet& term) const {
  const auto [begin, end] = terms.equal_range(HashOf(term));
  return std::any_of(begin, end, [&](const auto& entry) {
    const ConsensusCutSet& known = *entry.second;
    return known.events == term.events &&
           std::includes(term.parents.begin(), term.parents.end(), known.parents.begin(),
                         known.parents.end(), std::less<>());
  });
}

void ConsensusLaw::FindRedundant(const ConsensusCutSet& term) {
  // A cut set that goes because of another one can't be the reason for a third to go.
  const auto isRedundant = [this](const CutSet* cutSet) {
    return redundant.contains(const_cast<CutSet*>(cutSet));
  };
  if (std::any_of(term.parents.begin(), term.parents.end(), isRedundant)) return;
  for (CutSet* const cutSet : tree.primeIndex->FindAround(term)) {
    if (!term.HasParent(*cutSet)) redundant.insert(cutSet);
  }
}

void ConsensusLaw::RemoveRedundant() {
  for (CutSet* const cutSet : redundant) tree.RemoveCutSet(*cutSet);
}

}  // namespace

ConsensusCutSet::ConsensusCutSet(const CutSet& a, const CutSet& b, const BasicEvent& event) {
  const BasicEvent* const complement = event.complement.get();
  for (const CutSet* const source : {&a, &b}) {
    AddParents(*source);
    // Members of both count twice in the prime: it identifies the way in which the term came about.
    for (BasicEvent* const member : source->events) {
      if (member != &event && member != complement) AddEvent(*member);
    }
  }
}

void ConsensusCutSet::AddParents(const CutSet& cutSet) {
  const auto add = [this](const CutSet* parent) {
    const auto place = std::lower_bound(parents.begin(), parents.end(), parent, std::less<>());
    if (place == parents.end() || *place != parent) parents.insert(place, parent);
  };
  if (!cutSet.IsConsensus()) return add(&cutSet);
  for (const CutSet* const parent : static_cast<const ConsensusCutSet&>(cutSet).parents) {
    add(parent);
  }
}

bool ConsensusCutSet::HasParent(const CutSet& cutSet) const {
  return std::binary_search(parents.begin(), parents.end(), &cutSet, std::less<>());
}

bool CutSet::IsContradiction() const {
  return std::any_of(events.begin(), events.end(), [this](const BasicEvent* member) {
    return member->complement && HasEvent(*member->complement);
  });
}

void FaultTree::ApplyConsensus() {
  ConsensusLaw law(*this);
  law.RemoveContradictions();
  law.JoinPairs();
  law.FindRedundantCutSets();
  law.RemoveRedundant();
}

void FaultTree::RebuildCutSetMap() {
  std::unordered_map<const CutSet*, std::unique_ptr<CutSet>> owners;
  CutSetMap rebuilt;
  for (auto& [key, cutSet] : cutSets) {
    // The set of no events holds always, and no event leads to it.
    if (cutSet->events.empty()) {
      rebuilt[key] = std::move(cutSet);
    } else {
      owners.emplace(cutSet.get(), std::move(cutSet));
    }
  }
  for (const auto& [eventPrime, lists] : primeIndex->lists) {
    for (const auto& [size, list] : lists) {
      for (const CutSet* const cutSet : list->Own()) {
        rebuilt[cutSet->prime] = std::move(owners[cutSet]);
      }
    }
  }
  cutSets = std::move(rebuilt);
}

}  // namespace FTS
