#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "analysis/CutSet.h"
#include "analysis/ModuleEvent.h"
#include "analysis/Prime.h"
#include "app/Config.h"
#include "faulttree/BasicEvent.h"
#include "faulttree/FaultTreeGate.h"
#include "support/CaseName.h"
#include "support/CutSetText.h"
#include "support/PartsModel.h"
#include "support/ProcessStateTest.h"
#include "support/TreeBuilder.h"

namespace FTS {
namespace {

class CutSetTest : public ProcessStateTest {
 protected:
  /// Events are made on their first mention: the first has the prime 3 and the number 1.
  BasicEvent& Event(const std::string& name) {
    builder.Tree(name);
    return *builder.Event(name);
  }

  std::unique_ptr<CutSet> Set(std::initializer_list<const char*> names) {
    auto cutSet = std::make_unique<CutSet>();
    for (const char* name : names) cutSet->AddEvent(Event(name));
    return cutSet;
  }

  /// An event with that event number.
  BasicEvent& Numbered(const std::string& name, std::uint32_t number) {
    BasicEvent& event = Event(name);
    event.eventNumber = number;
    return event;
  }

  BasicEvent& OwnedBy(const std::shared_ptr<Component>& component, const std::string& name) {
    BasicEvent& event = Event(name);
    event.owner = component;
    return event;
  }

  std::shared_ptr<NormalEvent> Normal(const std::string& name) {
    auto event = std::make_shared<NormalEvent>(name, nullptr, true);
    builder.Define(name, event);
    return event;
  }

  TreeBuilder builder;
};

TEST_F(CutSetTest, EmptySetHasTheProductOne) {
  const CutSet cutSet;
  EXPECT_EQ(cutSet.prime, 1.0);
  EXPECT_EQ(cutSet.GetSize(), 0);
  EXPECT_EQ(cutSet.signatureSummary, 0U);
}

TEST_F(CutSetTest, MembersStandInTheOrderOfTheirPrimes) {
  Event("A");
  Event("B");
  Event("C");
  EXPECT_EQ(MembersOf(*Set({"C", "A", "B"})), "A B C");
}

TEST_F(CutSetTest, ProductIsMultipliedInTheOrderOfArrival) {
  // From 2^53 on products are rounded, and the order of the factors shows.
  for (int i = 0; i < 6000; ++i) Prime::Instance().Next();
  CutSet forwards;
  CutSet backwards;
  std::vector<BasicEvent*> events;
  double forwardProduct = 1.0;
  double backwardProduct = 1.0;
  for (int i = 0; i < 12; ++i) events.push_back(&Event("E" + std::to_string(i)));
  for (std::size_t i = 0; i < events.size(); ++i) {
    forwards.AddEvent(*events[i]);
    forwardProduct *= events[i]->prime;
    backwards.AddEvent(*events[events.size() - 1 - i]);
    backwardProduct *= events[events.size() - 1 - i]->prime;
  }
  EXPECT_EQ(forwards.prime, forwardProduct);
  EXPECT_EQ(backwards.prime, backwardProduct);
  EXPECT_NE(forwards.prime, backwards.prime);
  EXPECT_EQ(backwards.Clone()->prime, forwardProduct) << "A clone multiplies in ascending order.";
  EXPECT_EQ(backwards.Copy()->prime, backwardProduct) << "A copy keeps the product.";
}

TEST_F(CutSetTest, EventAddedTwiceIsOneMemberAndSquaresItsFactor) {
  CutSet cutSet;
  cutSet.AddEvent(Event("A"));
  cutSet.AddEvent(Event("A"));
  EXPECT_EQ(MembersOf(cutSet), "A");
  EXPECT_EQ(cutSet.prime, 9.0);
  EXPECT_EQ(cutSet.Clone()->prime, 3.0);
}

TEST_F(CutSetTest, ProductOfManyMembersOverflows) {
  CutSet cutSet;
  for (int i = 0; i < 200; ++i) cutSet.AddEvent(Event("E" + std::to_string(i)));
  EXPECT_TRUE(std::isinf(cutSet.prime));
  EXPECT_TRUE(std::isinf(cutSet.Clone()->prime));
  EXPECT_EQ(cutSet.Clone()->GetSize(), 200);
}

TEST_F(CutSetTest, CloneOfAnOverflownSquareIsMultipliedAnew) {
  CutSet cutSet;
  for (int i = 0; i < 700; ++i) cutSet.AddEvent(Event("A"));
  ASSERT_TRUE(std::isinf(cutSet.prime));
  EXPECT_EQ(cutSet.Clone()->prime, 3.0);
}

TEST_F(CutSetTest, CloneHasNoFiguresButTheSafetyRequirement) {
  const auto cutSet = Set({"A", "B"});
  cutSet->safetyRequirement = 3;
  cutSet->ComputeUnavailability();
  cutSet->ComputeFrequency();
  const auto clone = cutSet->Clone();
  EXPECT_EQ(MembersOf(*clone), "A B");
  EXPECT_EQ(clone->safetyRequirement, 3);
  EXPECT_EQ(clone->unavailability, CutSet::NotComputed);
  EXPECT_EQ(clone->frequency, CutSet::NotComputed);
  EXPECT_EQ(clone->CompareSignature(*cutSet), Inclusion::Within);
  EXPECT_EQ(clone->digest, cutSet->digest);
  EXPECT_FALSE(clone->IsConsensus());
  EXPECT_EQ(clone->GetPrimeType(), "CUTSET");
}

TEST_F(CutSetTest, SetTurnedIntoACloneForgetsWhatItWas) {
  const auto source = Set({"A", "B"});
  CutSet target;
  target.AddEvent(Event("C"));
  target.ComputeUnavailability();
  target.BecomeCloneOf(*source);
  EXPECT_EQ(MembersOf(target), "A B");
  EXPECT_EQ(target.prime, 15.0);
  EXPECT_EQ(target.unavailability, CutSet::NotComputed);
  EXPECT_EQ(target.CompareSignature(*Set({"C"})), Inclusion::Unrelated);
}

// Signatures

TEST_F(CutSetTest, SignatureBitsFollowTheEventNumber) {
  CutSet cutSet;
  cutSet.AddEvent(Numbered("A", 5));           // Quotient 0, remainder 5.
  cutSet.AddEvent(Numbered("B", 64 * 3 + 7));  // Quotient 3, remainder 7.
  EXPECT_EQ(cutSet.GetSignature()[5], 1U << 1);
  EXPECT_EQ(cutSet.GetSignature()[7], 1U << 4);
  EXPECT_EQ(cutSet.signatureSummary, (1U << 6) | (1U << 8));
}

TEST_F(CutSetTest, SignatureBitsWrapAround) {
  CutSet cutSet;
  cutSet.AddEvent(Numbered("A", 64 * 31 + 31));  // Quotient 31, remainder 31.
  cutSet.AddEvent(Numbered("B", 63));            // Its summary bit is that of remainder 31.
  EXPECT_EQ(cutSet.GetSignature()[31], 1U);
  EXPECT_EQ(cutSet.GetSignature()[63], 1U << 1);
  EXPECT_EQ(cutSet.signatureSummary, 1U);
}

TEST_F(CutSetTest, SignatureFollowsMembersThatCameLater) {
  CutSet cutSet;
  cutSet.AddEvent(Numbered("A", 5));
  EXPECT_EQ(cutSet.GetSignature()[7], 0U);
  cutSet.AddEvent(Numbered("B", 7));
  EXPECT_EQ(cutSet.GetSignature()[5], 1U << 1);
  EXPECT_EQ(cutSet.GetSignature()[7], 1U << 1);
}

TEST_F(CutSetTest, EventsTwoThousandAndFortyEightApartCannotBeTold) {
  CutSet one;
  CutSet other;
  one.AddEvent(Numbered("A", 5));
  other.AddEvent(Numbered("B", 2053));
  EXPECT_EQ(one.CompareSignature(other), Inclusion::Within);
  EXPECT_EQ(other.CompareSignature(one), Inclusion::Within);
}

TEST_F(CutSetTest, AllEventNumbersBelowTheLimitAreTold) {
  std::vector<std::unique_ptr<CutSet>> singles;
  CutSet all;
  for (std::uint32_t number = 1; number < CutSet::SignatureBits; ++number) {
    singles.push_back(std::make_unique<CutSet>());
    BasicEvent& event = Numbered("E" + std::to_string(number), number);
    singles.back()->AddEvent(event);
    all.AddEvent(event);
  }
  for (std::size_t i = 1; i < singles.size(); ++i) {
    ASSERT_EQ(singles[i]->CompareSignature(*singles[i - 1]), Inclusion::Unrelated) << i;
    ASSERT_EQ(singles[i]->CompareSignature(*singles[0]), Inclusion::Unrelated) << i;
    ASSERT_EQ(singles[i]->CompareSignature(all), Inclusion::Within) << i;
    ASSERT_EQ(all.CompareSignature(*singles[i]), Inclusion::Around) << i;
    ASSERT_EQ(singles[i]->digest & ~all.digest, 0U);
  }
}

struct CompareCase {
  const char* name;
  std::vector<const char*> one;
  std::vector<const char*> other;
  Inclusion expected;
};

class CompareSignatureTest : public CutSetTest,
                             public ::testing::WithParamInterface<CompareCase> {};

TEST_P(CompareSignatureTest, Compares) {
  for (const char* name : {"A", "B", "C", "D"}) Event(name);
  CutSet one;
  CutSet other;
  for (const char* name : GetParam().one) one.AddEvent(Event(name));
  for (const char* name : GetParam().other) other.AddEvent(Event(name));
  EXPECT_EQ(one.CompareSignature(other), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Sets, CompareSignatureTest,
    ::testing::Values(CompareCase{"Equal", {"A", "B"}, {"B", "A"}, Inclusion::Within},
                      CompareCase{"Smaller", {"A"}, {"A", "B"}, Inclusion::Within},
                      CompareCase{"Larger", {"A", "B", "C"}, {"A", "C"}, Inclusion::Around},
                      CompareCase{"Disjoint", {"A"}, {"B"}, Inclusion::Unrelated},
                      CompareCase{"Overlapping", {"A", "B"}, {"B", "C"}, Inclusion::Unrelated},
                      CompareCase{"EmptyWithin", {}, {"A"}, Inclusion::Within},
                      CompareCase{"AroundEmpty", {"A"}, {}, Inclusion::Around},
                      CompareCase{"BothEmpty", {}, {}, Inclusion::Within}),
    CaseName);

// Merging

TEST_F(CutSetTest, MergeAddsWhatIsMissing) {
  const auto cutSet = Set({"A", "B"});
  EXPECT_TRUE(cutSet->Merge(*Set({"B", "C"})));
  EXPECT_EQ(MembersOf(*cutSet), "A B C");
  EXPECT_EQ(cutSet->prime, 3.0 * 5.0 * 7.0);
}

TEST_F(CutSetTest, MergeWithItselfChangesNothing) {
  const auto cutSet = Set({"A", "B"});
  EXPECT_TRUE(cutSet->Merge(*cutSet));
  EXPECT_EQ(MembersOf(*cutSet), "A B");
  EXPECT_EQ(cutSet->prime, 15.0);
}

TEST_F(CutSetTest, GateAndDualThatShareAnIdAreTwoMembers) {
  const auto andGate = MakeGate(NodeType::And, "and", nullptr);
  const auto orGate = MakeGate(NodeType::Or, "or", nullptr, andGate->GetId());
  ModuleEvent one(*andGate);
  ModuleEvent other(*orGate);
  CutSet cutSet;
  CutSet addition;
  cutSet.AddEvent(one);
  addition.AddEvent(other);
  EXPECT_TRUE(cutSet.Merge(addition));
  EXPECT_EQ(cutSet.GetSize(), 2);
  EXPECT_TRUE(cutSet.hasModule);
}

class ExclusionTest : public CutSetTest {
 protected:
  PartsModel parts;
  std::shared_ptr<Component> pump = parts.AddComponent("Pump");
  std::shared_ptr<Component> valve = parts.AddComponent("Valve");
};

TEST_F(ExclusionTest, EventsOfOneComponentConflict) {
  Config::Instance().mutualExclusion = true;
  CutSet cutSet;
  CutSet addition;
  cutSet.AddEvent(OwnedBy(pump, "open"));
  cutSet.AddEvent(OwnedBy(valve, "leak"));
  addition.AddEvent(OwnedBy(pump, "closed"));
  addition.AddEvent(Event("fire"));
  EXPECT_FALSE(cutSet.Merge(addition));
  EXPECT_EQ(MembersOf(cutSet), "open leak closed fire") << "Members are added all the same.";
}

TEST_F(ExclusionTest, SameEventDoesNotConflictWithItself) {
  Config::Instance().mutualExclusion = true;
  CutSet cutSet;
  CutSet addition;
  cutSet.AddEvent(OwnedBy(pump, "open"));
  addition.AddEvent(OwnedBy(pump, "open"));
  addition.AddEvent(OwnedBy(valve, "leak"));
  EXPECT_TRUE(cutSet.Merge(addition));
}

TEST_F(ExclusionTest, EventsWithoutComponentDoNotConflict) {
  Config::Instance().mutualExclusion = true;
  const auto cutSet = Set({"A"});
  EXPECT_TRUE(cutSet->Merge(*Set({"B", "C"})));
  EXPECT_FALSE(cutSet->HasSharedOwner());
}

TEST_F(ExclusionTest, NothingConflictsUnlessItIsAskedFor) {
  CutSet cutSet;
  CutSet addition;
  cutSet.AddEvent(OwnedBy(pump, "open"));
  addition.AddEvent(OwnedBy(pump, "closed"));
  EXPECT_TRUE(cutSet.Merge(addition));
  EXPECT_TRUE(cutSet.HasSharedOwner());
}

// Orders

TEST_F(CutSetTest, NormalEventsDoNotCountInTheEffectiveOrder) {
  CutSet cutSet;
  cutSet.AddEvent(Event("A"));
  cutSet.AddEvent(*Normal("n"));
  cutSet.AddEvent(Event("B"));
  EXPECT_EQ(cutSet.GetSize(), 3);
  EXPECT_EQ(cutSet.GetEffectiveOrder(), 2);
  EXPECT_EQ(cutSet.GetOrder(), 3);
  Config::Instance().countNormalEvents = false;
  EXPECT_EQ(cutSet.GetOrder(), 2);
}

TEST_F(CutSetTest, ModuleWithACutSetOfNormalEventsAloneDoesNotCount) {
  const auto inner = MakeGate(NodeType::Or, "inner", nullptr);
  const auto outer = MakeGate(NodeType::Or, "outer", nullptr);
  ModuleEvent innerModule(*inner);
  ModuleEvent outerModule(*outer);
  const auto normal = Normal("n");
  auto failure = std::make_unique<CutSet>();
  failure->AddEvent(Event("A"));
  innerModule.moduleCutSets.push_back(std::move(failure));
  auto nested = std::make_unique<CutSet>();
  nested->AddEvent(innerModule);
  nested->AddEvent(*normal);
  outerModule.moduleCutSets.push_back(std::move(nested));
  CutSet cutSet;
  cutSet.AddEvent(outerModule);
  cutSet.AddEvent(Event("B"));
  EXPECT_EQ(cutSet.GetEffectiveOrder(), 2);

  auto operation = std::make_unique<CutSet>();
  operation->AddEvent(*normal);
  innerModule.moduleCutSets.push_back(std::move(operation));
  EXPECT_EQ(cutSet.GetEffectiveOrder(), 1);
}

// Membership and text

TEST_F(CutSetTest, MemberIsFoundByIdAndPrime) {
  const auto cutSet = Set({"A", "C"});
  EXPECT_TRUE(cutSet->HasEvent(Event("A")));
  EXPECT_TRUE(cutSet->HasEvent(Event("C")));
  EXPECT_FALSE(cutSet->HasEvent(Event("B")));
}

TEST_F(CutSetTest, EqualPrimeAloneIsNotTheSameMember) {
  const auto cutSet = Set({"A"});
  Event("B").prime = Event("A").prime;
  EXPECT_FALSE(cutSet->HasEvent(Event("B")));
  EXPECT_TRUE(cutSet->Merge(*Set({"B"})));
  EXPECT_EQ(MembersOf(*cutSet), "A");
  EXPECT_EQ(cutSet->prime, 9.0);
}

TEST_F(CutSetTest, TextCountsAndNamesTheMembers) {
  EXPECT_EQ(Set({"A", "B"})->ToText(), "2{A, B}");
  EXPECT_EQ(Set({"A"})->ToText(), "1{A}");
  EXPECT_EQ(CutSet().ToText(), "0{}");
}

// Figures

class CutSetFiguresTest : public CutSetTest {
 protected:
  CutSet& With(const std::string& name, double unavailability, double frequency) {
    BasicEvent& event = Event(name);
    event.unavailability = unavailability;
    event.frequency = frequency;
    cutSet.AddEvent(event);
    return cutSet;
  }

  CutSet cutSet;
};

TEST_F(CutSetFiguresTest, EmptySetIsCertainAndNeverHappens) {
  EXPECT_EQ(cutSet.ComputeUnavailability(), 1.0);
  EXPECT_EQ(cutSet.ComputeFrequency(), 0.0);
}

TEST_F(CutSetFiguresTest, SingleEventPassesItsFiguresOn) {
  With("A", 0.25, 0.5);
  EXPECT_EQ(cutSet.ComputeUnavailability(), 0.25);
  EXPECT_EQ(cutSet.ComputeFrequency(), 0.5);
}

TEST_F(CutSetFiguresTest, FrequencySumsOverTheEventThatComesLast) {
  With("A", 0.5, 8.0);
  With("B", 0.25, 4.0);
  With("C", 0.125, 2.0);
  EXPECT_EQ(cutSet.ComputeUnavailability(), 0.5 * 0.25 * 0.125);
  EXPECT_EQ(cutSet.ComputeFrequency(), 8.0 * 0.25 * 0.125 + 4.0 * 0.5 * 0.125 + 2.0 * 0.5 * 0.25);
}

TEST_F(CutSetFiguresTest, FrequencyOfALargeSetIsThatOfTheDefinition) {
  double product = 1.0;
  for (int i = 0; i < 40; ++i) {
    With("E" + std::to_string(i), 1.0 - 0.01 * i, 0.5 + i);
    product *= 1.0 - 0.01 * i;
  }
  double expected = 0.0;
  for (int i = 0; i < 40; ++i) expected += (0.5 + i) * (product / (1.0 - 0.01 * i));
  EXPECT_NEAR(cutSet.ComputeFrequency() / expected, 1.0, 1e-12);
}

TEST_F(CutSetFiguresTest, FiguresAreComputedOnce) {
  With("A", 0.25, 0.5);
  EXPECT_EQ(cutSet.GetUnavailability(), 0.25);
  EXPECT_EQ(cutSet.GetFrequency(), 0.5);
  Event("A").unavailability = 0.75;
  Event("A").frequency = 0.75;
  EXPECT_EQ(cutSet.GetUnavailability(), 0.25);
  EXPECT_EQ(cutSet.GetFrequency(), 0.5);
}

// Divisibility

struct DivisionCase {
  const char* name;
  double a;
  double b;
  int expected;
};

class ComparePrimesTest : public CutSetTest, public ::testing::WithParamInterface<DivisionCase> {
 protected:
  struct Number : IPrime {
    std::string GetPrimeType() const override { return "NUMBER"; }
  };
};

TEST_P(ComparePrimesTest, TellsWhichDivides) {
  Number a;
  Number b;
  a.prime = GetParam().a;
  b.prime = GetParam().b;
  EXPECT_EQ(ComparePrimes(a, b), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Products, ComparePrimesTest,
    ::testing::Values(DivisionCase{"FirstDivides", 3.0, 15.0, 1},
                      DivisionCase{"SecondDivides", 15.0, 5.0, 2},
                      DivisionCase{"EqualCountsAsDividing", 15.0, 15.0, 1},
                      DivisionCase{"NeitherFromBelow", 7.0, 15.0, 0},
                      DivisionCase{"NeitherFromAbove", 15.0, 7.0, 0},
                      DivisionCase{"OverflowDividesNothing",
                                   std::numeric_limits<double>::infinity(), 3.0, 0},
                      DivisionCase{"TwoOverflows", std::numeric_limits<double>::infinity(),
                                   std::numeric_limits<double>::infinity(), 0}),
    CaseName);

}  // namespace
}  // namespace FTS
