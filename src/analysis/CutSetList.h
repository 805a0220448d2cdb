#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "analysis/Forward.h"
#include "analysis/IPrime.h"

namespace FTS {

/// The cut sets of one size that hold one event, in two groups: first those that merely contain the
/// event, latest first, then those that begin with it (it is their member of lowest prime), in the
/// order of their arrival. The search for redundant cut sets depends on the groups. The list points
/// at cut sets that a gate or a tree owns.
class CutSetList : public IPrime {
 public:
  /// What the search has cost in this process, for tests that guard it.
  struct Counters {
    std::uint64_t entriesMet = 0;   ///< Entries whose digest was looked at.
    std::uint64_t comparisons = 0;  ///< Signatures compared because the digest did not decide.
  };

  explicit CutSetList(int initOrder = 0);
  ~CutSetList() override;

  std::string GetPrimeType() const override { return "CUTSETLIST"; }

  /// Enters a cut set that begins with the list's event; at the end. Throws std::length_error
  /// "list too long" like `Prepend`.
  void Append(CutSet& cutSet);
  /// Enters a cut set that contains the list's event; at the front.
  void Prepend(CutSet& cutSet);
  void Remove(const CutSet& cutSet);

  /// Compares the listed cut sets with the candidate, in list order; with `ownOnly` only those that
  /// begin with the event. True as soon as one lies inside the candidate or equals it. Those met
  /// before that the candidate lies inside of are added to `redundant`; the caller removes them.
  bool CheckSubsumption(const CutSet& candidate, bool ownOnly,
                        std::vector<CutSet*>& redundant) const;

  /// Adds the listed cut sets that the candidate lies inside of or equals.
  void AppendAround(const CutSet& candidate, std::vector<CutSet*>& around) const;

  /// The cut sets in list order: all, or those that begin with the event.
  std::vector<CutSet*> All() const;
  std::vector<CutSet*> Own() const;
  int GetCount() const { return foreign.GetCount() + own.GetCount(); }
  int GetOwnCount() const { return own.GetCount(); }

  int order;  ///< The size that every cut set of the list has.

  static Counters& Cost();

 private:
  // One entry of a list: digest and pointer side by side, so that a scan reads memory in one sweep.
  // An entry whose cut set was removed has a null pointer and keeps the arrival in the digest's
  // place, for the binary search; entries are swept out when they are the majority.
  struct Entry {
    std::uint64_t digest;
    CutSet* cutSet;
  };

  // Entries in the order of arrival.
  class Group {
   public:
    void Add(CutSet& cutSet);
    bool Remove(const CutSet& cutSet);
    const std::vector<Entry>& Entries() const { return entries; }
    int GetCount() const { return static_cast<int>(entries.size() - removed); }

   private:
    std::vector<Entry> entries;
    std::size_t removed = 0;
  };

  class Search;

  Group foreign;  // The front group, stored in the order of arrival: the list has it backwards.
  Group own;
};

/// The cut sets of a gate or a tree by event and size: a cut set of n members stands in the n lists
/// of its events. It lets the owner find the few cut sets that are worth comparing with a new one.
class CutSetIndex {
 public:
  using ListsBySize = std::map<int, std::shared_ptr<CutSetList>>;

  CutSetIndex();
  ~CutSetIndex();
  CutSetIndex(const CutSetIndex&) = delete;
  CutSetIndex& operator=(const CutSetIndex&) = delete;

  /// Enters the cut set in the lists of all its events.
  void Add(CutSet& cutSet);
  /// Takes the cut set out of all its lists. Lists that become empty stay.
  void Remove(const CutSet& cutSet);
  /// The same, and lists and events that become empty go too.
  void RemoveAndPrune(const CutSet& cutSet);
  void Clear();

  /// True when a listed cut set lies inside the candidate or equals it. Listed ones that the
  /// candidate lies inside of, met before that is decided, are added to `redundant`; the caller
  /// removes them. The first event's lists are searched whole, which finds every listed cut set
  /// around the candidate; those of the others only for cut sets that begin with the event and are
  /// no larger than the candidate.
  bool IsSubsumed(const CutSet& candidate, std::vector<CutSet*>& redundant) const;

  /// The listed cut sets that the candidate lies inside of or equals; none for the set of no
  /// events.
  std::vector<CutSet*> FindAround(const CutSet& candidate) const;

  /// Null when there is none.
  const CutSetList* Find(double eventPrime, int size) const;

  std::map<double, ListsBySize> lists;  ///< By event prime, then by size.

 private:
  CutSetList& ListOf(double eventPrime, int size);

  std::uint32_t arrivals = 0;
};

}  // namespace FTS
