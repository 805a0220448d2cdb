#include "analysis/CutSetList.h"

#include <algorithm>
#include <cassert>
#include <limits>
#include <stdexcept>

#include "analysis/CutSet.h"
#include "faulttree/BasicEvent.h"

namespace FTS {

// What a scan of entries needs to know about the candidate.
class CutSetList::Search {
 public:
  Search(const CutSet& initCandidate, std::vector<CutSet*>& initRedundant)
      : candidate(initCandidate), digest(initCandidate.digest), redundant(initRedundant) {}

  /// True when the entry's cut set lies inside the candidate.
  bool Meets(const Entry& entry) {
    const std::uint64_t common = entry.digest & digest;
    if (common != entry.digest && common != digest) return false;
    if (!entry.cutSet) return false;
    ++Cost().comparisons;
    switch (entry.cutSet->CompareSignature(candidate)) {
      case Inclusion::Within:
        return true;
      case Inclusion::Around:
        redundant.push_back(entry.cutSet);
        return false;
      case Inclusion::Unrelated:
        return false;
    }
    return false;
  }

 private:
  const CutSet& candidate;
  std::uint64_t digest;
  std::vector<CutSet*>& redundant;
};

void CutSetList::Group::Add(CutSet& cutSet) {
  if (entries.size() >= static_cast<std::size_t>(std::numeric_limits<int>::max())) {
    throw std::length_error("list too long");
  }
  entries.push_back({cutSet.digest, &cutSet});
}

bool CutSetList::Group::Remove(const CutSet& cutSet) {
  const auto arrivalOf = [](const Entry& entry) {
    return entry.cutSet ? entry.cutSet->arrival : static_cast<std::uint32_t>(entry.digest);
  };
  auto found = std::lower_bound(
      entries.begin(), entries.end(), cutSet.arrival,
      [&](const Entry& entry, std::uint32_t arrival) { return arrivalOf(entry) < arrival; });
  // Cut sets that no index has numbered share one arrival.
  while (found != entries.end() && found->cutSet != &cutSet) {
    if (arrivalOf(*found) != cutSet.arrival) return false;
    ++found;
  }
  if (found == entries.end()) return false;
  *found = {cutSet.arrival, nullptr};
  ++removed;
  if (removed * 2 > entries.size()) {
    std::erase_if(entries, [](const Entry& entry) { return !entry.cutSet; });
    removed = 0;
  }
  return true;
}

CutSetList::CutSetList(int initOrder) : order(initOrder) { prime = 1.0; }

CutSetList::~CutSetList() = default;

CutSetList::Counters& CutSetList::Cost() {
  static Counters counters;
  return counters;
}

void CutSetList::Append(CutSet& cutSet) {
  own.Add(cutSet);
  prime *= cutSet.prime;
}

void CutSetList::Prepend(CutSet& cutSet) {
  foreign.Add(cutSet);
  prime *= cutSet.prime;
}

void CutSetList::Remove(const CutSet& cutSet) {
  if (own.Remove(cutSet) || foreign.Remove(cutSet)) prime /= cutSet.prime;
}

bool CutSetList::CheckSubsumption(const CutSet& candidate, bool ownOnly,
                                  std::vector<CutSet*>& redundant) const {
  Search search(candidate, redundant);
  const auto meets = [&](const Entry& entry) { return search.Meets(entry); };
  if (!ownOnly) {
    const std::vector<Entry>& front = foreign.Entries();
    Cost().entriesMet += front.size();
    if (std::any_of(front.rbegin(), front.rend(), meets)) return true;
  }
  Cost().entriesMet += own.Entries().size();
  return std::any_of(own.Entries().begin(), own.Entries().end(), meets);
}

void CutSetList::AppendAround(const CutSet& candidate, std::vector<CutSet*>& around) const {
  for (const Group* const group : {&foreign, &own}) {
    Cost().entriesMet += group->Entries().size();
    for (const Entry& entry : group->Entries()) {
      if (!entry.cutSet || (entry.digest & candidate.digest) != candidate.digest) continue;
      ++Cost().comparisons;
      if (candidate.CompareSignature(*entry.cutSet) == Inclusion::Within) {
        around.push_back(entry.cutSet);
      }
    }
  }
}

std::vector<CutSet*> CutSetList::All() const {
  std::vector<CutSet*> cutSets;
  cutSets.reserve(static_cast<std::size_t>(GetCount()));
  for (auto entry = foreign.Entries().rbegin(); entry != foreign.Entries().rend(); ++entry) {
    if (entry->cutSet) cutSets.push_back(entry->cutSet);
  }
  for (const Entry& entry : own.Entries()) {
    if (entry.cutSet) cutSets.push_back(entry.cutSet);
  }
  return cutSets;
}

std::vector<CutSet*> CutSetList::Own() const {
  std::vector<CutSet*> cutSets;
  cutSets.reserve(static_cast<std::size_t>(GetOwnCount()));
  for (const Entry& entry : own.Entries()) {
    if (entry.cutSet) cutSets.push_back(entry.cutSet);
  }
  return cutSets;
}

CutSetIndex::CutSetIndex() = default;

CutSetIndex::~CutSetIndex() = default;

CutSetList& CutSetIndex::ListOf(double eventPrime, int size) {
  std::shared_ptr<CutSetList>& list = lists[eventPrime][size];
  if (!list) list = std::make_shared<CutSetList>(size);
  return *list;
}

void CutSetIndex::Add(CutSet& cutSet) {
  cutSet.arrival = arrivals++;
  const int size = cutSet.GetSize();
  bool first = true;
  for (const BasicEvent* event : cutSet.events) {
    CutSetList& list = ListOf(event->prime, size);
    if (first) {
      list.Append(cutSet);
    } else {
      list.Prepend(cutSet);
    }
    first = false;
  }
}

void CutSetIndex::Remove(const CutSet& cutSet) {
  for (const BasicEvent* event : cutSet.events) {
    const auto bySize = lists.find(event->prime);
    if (bySize == lists.end()) continue;
    const auto list = bySize->second.find(cutSet.GetSize());
    if (list != bySize->second.end()) list->second->Remove(cutSet);
  }
}

void CutSetIndex::RemoveAndPrune(const CutSet& cutSet) {
  for (const BasicEvent* event : cutSet.events) {
    const auto bySize = lists.find(event->prime);
    if (bySize == lists.end()) continue;
    const auto list = bySize->second.find(cutSet.GetSize());
    if (list == bySize->second.end()) continue;
    list->second->Remove(cutSet);
    if (list->second->GetCount() == 0) bySize->second.erase(list);
    if (bySize->second.empty()) lists.erase(bySize);
  }
}

void CutSetIndex::Clear() { lists.clear(); }

bool CutSetIndex::IsSubsumed(const CutSet& candidate, std::vector<CutSet*>& redundant) const {
  bool first = true;
  for (const BasicEvent* event : candidate.events) {
    const auto bySize = lists.find(event->prime);
    if (bySize != lists.end()) {
      for (const auto& [size, list] : bySize->second) {
        if (!first && size > candidate.GetSize()) break;
        if (list->CheckSubsumption(candidate, !first, redundant)) return true;
      }
    }
    first = false;
  }
  return false;
}

std::vector<CutSet*> CutSetIndex::FindAround(const CutSet& candidate) const {
  std::vector<CutSet*> around;
  if (candidate.events.empty()) return around;
  // What holds all of the candidate holds its first member.
  const auto bySize = lists.find(candidate.events.front()->prime);
  if (bySize == lists.end()) return around;
  const auto first = bySize->second.lower_bound(candidate.GetSize());
  for (auto list = first; list != bySize->second.end(); ++list) {
    list->second->AppendAround(candidate, around);
  }
  return around;
}

const CutSetList* CutSetIndex::Find(double eventPrime, int size) const {
  const auto bySize = lists.find(eventPrime);
  if (bySize == lists.end()) return nullptr;
  const auto list = bySize->second.find(size);
  return list == bySize->second.end() ? nullptr : list->second.get();
}

}  // namespace FTS
