#include "analysis/CutSet.h"

#include <algorithm>
#include <cmath>

#include "analysis/ModuleEvent.h"
#include "app/Config.h"
#include "app/DiagnosticLog.h"
#include "faulttree/BasicEvent.h"
#include "model/Component.h"

namespace FTS {
namespace {

constexpr std::uint32_t WordBits = 32;
constexpr std::uint32_t DigestBits = 64;

using Members = std::vector<BasicEvent*>;

/// The first member whose prime is not below `prime`.
Members::const_iterator FindPlace(const Members& members, double prime) {
  // New members mostly belong at the end: trees hand their events out in ascending order.
  if (members.empty() || members.back()->prime < prime) return members.end();
  return std::lower_bound(
      members.begin(), members.end(), prime,
      [](const BasicEvent* member, double wanted) { return member->prime < wanted; });
}

std::uint32_t WordOf(const BasicEvent& event) {
  return event.eventNumber % static_cast<std::uint32_t>(CutSet::SignatureWords);
}

std::uint32_t BitInWord(const BasicEvent& event) {
  const std::uint32_t quotient =
      event.eventNumber / static_cast<std::uint32_t>(CutSet::SignatureWords);
  return 1U << ((quotient + 1) % WordBits);
}

/// Two bits for the place of a signature bit: its lower half directly, the other one scattered.
std::uint64_t DigestOf(std::uint32_t eventNumber) {
  constexpr std::uint32_t Scatter = 2654435761U;  // Knuth's multiplicative hash.
  const std::uint32_t place = eventNumber % CutSet::SignatureBits;
  constexpr std::uint32_t ShiftToDigestBits = 26;
  return (std::uint64_t{1} << (place % DigestBits)) |
         (std::uint64_t{1} << ((place * Scatter) >> ShiftToDigestBits));
}

// Up to this size the plain sum is faster than one that remembers partial products.
constexpr std::size_t FewMembers = 16;

/// The sum over the members of frequency times the unavailabilities of the others.
double SumFrequencies(const Members& members) {
  double sum = 0.0;
  for (const BasicEvent* member : members) {
    double term = member->GetFrequency();
    for (const BasicEvent* other : members) {
      if (other != member) term *= other->GetUnavailability();
    }
    sum += term;
  }
  return sum;
}

/// The same in two sweeps: the product over the others is that of the members before times that of
/// the members behind.
double SweepFrequencies(const Members& members) {
  std::vector<double> behind(members.size() + 1, 1.0);
  for (std::size_t i = members.size(); i > 0; --i) {
    behind[i - 1] = behind[i] * members[i - 1]->GetUnavailability();
  }
  double sum = 0.0;
  double before = 1.0;
  for (std::size_t i = 0; i < members.size(); ++i) {
    sum += members[i]->GetFrequency() * (before * behind[i + 1]);
    before *= members[i]->GetUnavailability();
  }
  return sum;
}

bool IsNormal(const BasicEvent& event) {
  if (event.type == NodeType::Normal) return true;
  if (event.type != NodeType::Module) return false;
  return static_cast<const ModuleEvent&>(event).IsMadeOfNormalEvents();
}

}  // namespace

CutSet::CutSet() { prime = 1.0; }

CutSet::~CutSet() = default;

void CutSet::AddEvent(BasicEvent& event) {
  // Multiplied before the test for a repeat on purpose: `Merge` filters repeats itself, while
  // module expansion and consensus live with a squared factor in the key.
  prime *= event.prime;
  const auto place = FindPlace(events, event.prime);
  if (place != events.end() && (*place)->prime == event.prime) return;
  events.insert(place, &event);
  if (event.type == NodeType::Module) hasModule = true;

  hasSignature = false;
  signatureSummary |= 1U << ((WordOf(event) + 1) % WordBits);
  digest |= DigestOf(event.eventNumber);
}

bool CutSet::Merge(const CutSet& other) {
  const bool exclusive = Config::Instance().mutualExclusion;
  bool conflict = false;
  for (BasicEvent* event : other.events) {
    if (HasEvent(*event)) continue;
    if (exclusive && !conflict) {
      const auto component = event->owner.lock();
      conflict = component && std::any_of(events.begin(), events.end(), [&](const auto* member) {
                   return member->owner.lock() == component;
                 });
    }
    AddEvent(*event);
  }
  return !conflict;
}

bool CutSet::HasSharedOwner() const {
  std::vector<const Component*> owners;
  for (const BasicEvent* event : events) {
    if (const auto component = event->owner.lock()) owners.push_back(component.get());
  }
  std::sort(owners.begin(), owners.end());
  return std::adjacent_find(owners.begin(), owners.end()) != owners.end();
}

void CutSet::WarnOfExclusion() const {
  DiagnosticLog::Instance().AddWarning(
      "Warning: removing cut set with mutually exclusive events: " + ToText());
}

std::unique_ptr<CutSet> CutSet::Clone() const {
  auto clone = std::make_unique<CutSet>();
  clone->BecomeCloneOf(*this);
  return clone;
}

std::unique_ptr<CutSet> CutSet::Copy() const {
  auto copy = Clone();
  copy->prime = prime;
  return copy;
}

void CutSet::BecomeCloneOf(const CutSet& source) {
  safetyRequirement = source.safetyRequirement;
  signatureSummary = source.signatureSummary;
  digest = source.digest;
  events = source.events;
  hasSignature = false;
  unavailability = NotComputed;
  frequency = NotComputed;
  hasModule = source.hasModule;
  RestorePrime();
}

void CutSet::RestorePrime() {
  prime = 1.0;
  for (const BasicEvent* event : events) {
    prime *= event->prime;
    if (std::isinf(prime)) return;  // Further factors, all above 1, change nothing.
  }
}

const CutSet::Signature& CutSet::GetSignature() const {
  if (!hasSignature) {
    if (!signature) signature = std::make_unique<Signature>();
    signature->fill(0);
    for (const BasicEvent* event : events) (*signature)[WordOf(*event)] |= BitInWord(*event);
    hasSignature = true;
  }
  return *signature;
}

Inclusion CutSet::CompareSignature(const CutSet& other) const {
  const std::uint32_t common = signatureSummary & other.signatureSummary;
  if (common != signatureSummary && common != other.signatureSummary) return Inclusion::Unrelated;
  constexpr std::size_t Stride = 8;  // Words taken together, which compilers turn into wide ones.
  const Signature& words = GetSignature();
  const Signature& otherWords = other.GetSignature();
  bool within = true;
  bool around = true;
  for (std::size_t start = 0; start < SignatureWords; start += Stride) {
    std::uint32_t outside = 0;
    std::uint32_t missing = 0;
    for (std::size_t i = start; i < start + Stride; ++i) {
      outside |= words[i] & ~otherWords[i];
      missing |= otherWords[i] & ~words[i];
    }
    within = within && outside == 0;
    around = around && missing == 0;
    if (!within && !around) return Inclusion::Unrelated;
  }
  return within ? Inclusion::Within : Inclusion::Around;
}

int CutSet::GetEffectiveOrder() const {
  const auto normal = std::count_if(events.begin(), events.end(),
                                    [](const BasicEvent* event) { return IsNormal(*event); });
  return GetSize() - static_cast<int>(normal);
}

int CutSet::GetOrder() const {
  return Config::Instance().countNormalEvents ? GetSize() : GetEffectiveOrder();
}

bool CutSet::HasEvent(const BasicEvent& event) const {
  const auto place = FindPlace(events, event.prime);
  return place != events.end() && (*place)->prime == event.prime &&
         (*place)->GetId() == event.GetId();
}

double CutSet::ComputeUnavailability() {
  unavailability = 1.0;
  for (const BasicEvent* event : events) unavailability *= event->GetUnavailability();
  return unavailability;
}

double CutSet::ComputeFrequency() {
  frequency = events.size() <= FewMembers ? SumFrequencies(events) : SweepFrequencies(events);
  return frequency;
}

double CutSet::GetUnavailability() {
  return unavailability == NotComputed ? ComputeUnavailability() : unavailability;
}

double CutSet::GetFrequency() { return frequency == NotComputed ? ComputeFrequency() : frequency; }

std::string CutSet::ToText() const {
  std::string names;
  for (const BasicEvent* event : events) {
    if (event != events.front()) names += ", ";
    names += event->name;
  }
  return std::to_string(events.size()) + "{" + names + "}";
}

int ComparePrimes(const IPrime& a, const IPrime& b) {
  // A remainder that is no number counts as not divisible: overflown products divide nothing.
  if (a.prime > b.prime) return std::fmod(a.prime, b.prime) == 0.0 ? 2 : 0;
  return std::fmod(b.prime, a.prime) == 0.0 ? 1 : 0;
}

}  // namespace FTS
