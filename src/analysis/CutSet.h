#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "analysis/Forward.h"
#include "analysis/IPrime.h"
#include "faulttree/Forward.h"
#include "model/ISafetyRequirementTarget.h"

namespace FTS {

class Workbook;

/// How one cut set's signature stands to another's.
enum class Inclusion { Unrelated = 0, Within = 1, Around = 2 };

/// The orders of several cut sets; empty when there is none.
struct OrderRange {
  int lowest = std::numeric_limits<int>::max();
  int highest = -1;

  bool IsEmpty() const { return highest < 0; }
  void Include(const OrderRange& other) {
    lowest = std::min(lowest, other.lowest);
    highest = std::max(highest, other.highest);
  }
};

/// A set of events that together cause a top event. Two devices make millions of them cheap to
/// compare, and they are kept apart: the product of the members' primes tells whether two cut sets
/// are the same, the bit signature tells whether one lies inside the other. Neither ever looks at
/// the members. Both have limits that are accepted: products are rounded beyond 2^53, and the
/// signature bits of event numbers n and n + 2048 coincide.
class CutSet : public IPrime, public ISafetyRequirementTarget {
 public:
  static constexpr int SignatureWords = 64;
  using Signature = std::array<std::uint32_t, SignatureWords>;
  /// Event numbers this far apart set the same bit of the signature.
  static constexpr std::uint32_t SignatureBits = 2048;
  /// A figure that has not been computed yet.
  static constexpr double NotComputed = -1.0;

  CutSet();
  ~CutSet() override;
  CutSet(const CutSet&) = delete;
  CutSet& operator=(const CutSet&) = delete;

  std::string GetPrimeType() const override { return "CUTSET"; }
  virtual bool IsConsensus() const { return false; }

  /// Multiplies `prime` by the event's in any case, and enters the event unless it is there.
  void AddEvent(BasicEvent& event);
  /// Adds the members of `other` that this set lacks. False when mutual exclusion is on and a new
  /// member shares its component with one that was there; the members are added all the same.
  bool Merge(const CutSet& other);
  /// True when two members have the same owning component.
  bool HasSharedOwner() const;
  /// Logs that this cut set is left out because its members exclude each other.
  void WarnOfExclusion() const;
  /// A plain cut set of the same members, whose prime is multiplied anew in ascending order.
  std::unique_ptr<CutSet> Clone() const;
  /// A plain cut set of the same members that keeps the product as it was multiplied here.
  std::unique_ptr<CutSet> Copy() const;
  /// Makes this set what a clone of `source` would be, without an allocation once it is large
  /// enough.
  void BecomeCloneOf(const CutSet& source);
  /// Multiplies the members' primes anew in ascending order, as a clone has it.
  void RestorePrime();

  /// One bit for each member, by event number. Made when it is first asked for: most cut sets are
  /// never compared, and it would be three quarters of their size.
  const Signature& GetSignature() const;
  /// `Within` when this set lies inside `other` or equals it, `Around` when `other` lies inside.
  Inclusion CompareSignature(const CutSet& other) const;
  /// The number of members less those that are normal events, or modules made of nothing else.
  int GetEffectiveOrder() const;
  /// The order as the option `countNormalEvents=` defines it: size or effective order.
  int GetOrder() const;
  int GetSize() const { return static_cast<int>(events.size()); }
  /// True when the event is a member: id and prime are both equal, since a gate and its dual share
  /// an id and both may be modules.
  bool HasEvent(const BasicEvent& event) const;

  /// True when an event and its complement are members: the set never holds.
  bool IsContradiction() const;

  // Modules: analysis/ModuleExpansion.cpp

  /// Fills `list` with the cut sets that come of putting those of its modules in the place of its
  /// module events, as far as they stay within the order limit.
  void Expand(std::vector<std::unique_ptr<CutSet>>& list) const;
  /// The orders of what `Expand` gives, without regard to the limit.
  OrderRange ExpandedOrders() const;

  /// The product of the members' unavailabilities, 1.0 for none; kept in `unavailability`.
  double ComputeUnavailability();
  /// How often the set completes: for each member its frequency times the unavailability of the
  /// others, summed; 0.0 for no member. Kept in `frequency`.
  double ComputeFrequency();
  /// The cached figure, computed when it has not been yet.
  double GetUnavailability();
  double GetFrequency();

  /// A row for each member in a workbook: the name in `column`, and in the first row, in the two
  /// columns behind, the figures. The first row is open already, with what stands before.
  void WriteExcelRows(Workbook& stream, int column);

  /// "<size>{<names joined by ", ">}", for warnings.
  std::string ToText() const;

  std::uint32_t signatureSummary = 0;  ///< One bit for each word of the signature in use, folded.
  /// Two bits of 64 for each member, shared by event numbers that share a signature bit: a set with
  /// bits that another lacks does not lie inside it. Lists of cut sets keep this word beside the
  /// pointer, so that most comparisons touch no cut set.
  std::uint64_t digest = 0;
  std::vector<BasicEvent*> events;  ///< Ascending by prime; not owned.
  double unavailability = NotComputed;
  double frequency = NotComputed;
  std::uint32_t arrival = 0;  ///< Belongs to the index that lists this cut set.
  bool hasModule = false;     ///< A member is a `ModuleEvent`.

 private:
  mutable bool hasSignature = false;             // `signature` is that of the present members.
  mutable std::unique_ptr<Signature> signature;  // Kept for the next members when they change.
};

// They exist by the million.
static_assert(sizeof(CutSet) <= 88);

/// 1 when `a` divides `b` (equality included), 2 when `b` divides `a`, 0 otherwise.
int ComparePrimes(const IPrime& a, const IPrime& b);

}  // namespace FTS
