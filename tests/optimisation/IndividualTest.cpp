#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "optimisation/Individual.h"
#include "optimisation/Random.h"
#include "optimisation/SearchTest.h"
#include "support/CaseName.h"

namespace FTS {
namespace {

class IndividualTest : public SearchTest {
 protected:
  static int Design(const Individual& individual) {
    return dynamic_cast<const FakeEncoding&>(*individual.encoding).design;
  }
};

TEST_F(IndividualTest, TakesIdsInAscendingOrderFromZero) {
  EXPECT_EQ(Candidate({})->individualId, 0);
  EXPECT_EQ(Candidate({})->individualId, 1);
  EXPECT_EQ(Candidate({})->individualId, 2);
}

TEST_F(IndividualTest, StartsFeasibleAndWithoutMarks) {
  const auto made = Candidate({});
  EXPECT_TRUE(made->feasible);
  EXPECT_FALSE(made->boundary || made->dominated || made->archived);
  EXPECT_EQ(made->rank, 0);
  EXPECT_EQ(made->violationCount, 0);
  EXPECT_EQ(made->lastAlteredGeneration, 0);
  EXPECT_EQ(made->asilCost, 0.0);
}

struct KindCase {
  const char* name;
  std::int32_t asked;
  std::int32_t code;  // Both tree forms have that of the tree.
};

class FreshEncodingTest : public IndividualTest, public ::testing::WithParamInterface<KindCase> {};

TEST_P(FreshEncodingTest, IsMadeWhenNoneIsGiven) {
  const CapturedStreams streams;  // The flat form of levels tells them.
  model->Synthesise();
  const Individual made(*search, GetParam().asked, nullptr);
  ASSERT_TRUE(made.encoding);
  EXPECT_EQ(made.encoding->GetType(), GetParam().code);
  EXPECT_EQ(made.encoding->GetModel(), model.get());
}

INSTANTIATE_TEST_SUITE_P(Types, FreshEncodingTest,
                         ::testing::Values(KindCase{"Tree", 0, 0}, KindCase{"Fixed", 1, 1},
                                           KindCase{"FixedLevels", 2, 2},
                                           KindCase{"TreeLevels", 3, 0}),
                         CaseName);

TEST_F(IndividualTest, CloneHasTheSameIdAndItsOwnDesign) {
  const auto source = Candidate(5, At(3.0, 4.0), false);
  source->lastAlteredGeneration = 17;
  source->notes[2] = "kept";
  source->archived = true;
  const auto copy = source->Clone();
  EXPECT_EQ(copy->individualId, source->individualId);
  EXPECT_FALSE(copy->feasible);
  EXPECT_EQ(copy->lastAlteredGeneration, 17);
  EXPECT_EQ(copy->evaluations, At(3.0, 4.0));
  EXPECT_EQ(copy->notes.at(2), "kept");
  EXPECT_FALSE(copy->archived);
  EXPECT_NE(copy->encoding.get(), source->encoding.get());
  EXPECT_EQ(Design(*copy), 5);
  EXPECT_EQ(Candidate({})->individualId, source->individualId + 1) << "the clone took an id";
}

/// The number that decides on the next crossover.
float NextNumber(std::int64_t seed) {
  SeedRandom(seed);
  return RandomGenerator(seed).Uniform();
}

TEST_F(IndividualTest, BreedsByCrossoverWhenTheRateIsAboveTheNumber) {
  const auto mother = Candidate(5, {});
  const auto father = Candidate(70, {});
  Config::Instance().crossoverRate = std::nextafter(static_cast<double>(NextNumber(99)), 2.0);
  const auto child = mother->Breed(*father);
  EXPECT_EQ(Design(*child), 75);
  EXPECT_EQ(child->individualId, 2);
}

TEST_F(IndividualTest, BreedsACopyWhenTheRateIsNotAboveTheNumber) {
  const auto mother = Candidate(5, At(1.0, 2.0));
  const auto father = Candidate(70, {});
  Config::Instance().crossoverRate = static_cast<double>(NextNumber(99));
  const auto child = mother->Breed(*father);
  EXPECT_EQ(Design(*child), 5);
  EXPECT_EQ(child->individualId, 2) << "a child has an id of its own";
  EXPECT_TRUE(child->evaluations.empty()) << "a child has not been measured";
  EXPECT_EQ(RandomUniform(), [] {
    RandomGenerator generator(99);
    generator.Uniform();
    return generator.Uniform();
  }()) << "one number per child";
}

constexpr double NaN = std::numeric_limits<double>::quiet_NaN();

/// Two candidates, the left one older. What is absent has no entry.
struct DominanceCase {
  const char* name;
  std::map<std::string, double> left;
  std::map<std::string, double> right;
  bool sameDesign;
  const char* dominated;  // "left", "right" or "none".
};

class DominanceTest : public IndividualTest, public ::testing::WithParamInterface<DominanceCase> {
 protected:
  DominanceTest() {
    UseModel({{XmlObjective("Cost"), XmlObjective("Weight"), XmlObjective("Risk"),
               XmlObjective("Safety", "Maximise")},
              {XmlDesignPart("A", {{"only"}})}});
  }

  static std::string Dominated(const Individual& left, const Individual& right) {
    if (left.dominated && right.dominated) return "both";
    if (left.dominated) return "left";
    return right.dominated ? "right" : "none";
  }
};

TEST_P(DominanceTest, MarksTheOneThatIsNoBetter) {
  const auto left = Candidate(1, GetParam().left);
  const auto right = Candidate(GetParam().sameDesign ? 1 : 2, GetParam().right);
  Individual::Compare(*left, *right);
  EXPECT_EQ(Dominated(*left, *right), GetParam().dominated);
}

INSTANTIATE_TEST_SUITE_P(
    Values, DominanceTest,
    ::testing::Values(
        DominanceCase{"BetterInAll",
                      {{"Cost", 1}, {"Weight", 1}},
                      {{"Cost", 2}, {"Weight", 2}},
                      false,
                      "right"},
        DominanceCase{"WorseInAll",
                      {{"Cost", 2}, {"Weight", 2}},
                      {{"Cost", 1}, {"Weight", 1}},
                      false,
                      "left"},
        DominanceCase{"BetterInOneEqualInTheOther",
                      {{"Cost", 1}, {"Weight", 2}},
                      {{"Cost", 2}, {"Weight", 2}},
                      false,
                      "right"},
        DominanceCase{"WorseInOneEqualInTheOther",
                      {{"Cost", 3}, {"Weight", 2}},
                      {{"Cost", 2}, {"Weight", 2}},
                      false,
                      "left"},
        DominanceCase{"EachBetterInOne",
                      {{"Cost", 1}, {"Weight", 3}},
                      {{"Cost", 2}, {"Weight", 2}},
                      true,
                      "none"},
        DominanceCase{"BetterInTwoWorseInOne",
                      {{"Cost", 1}, {"Risk", 9}, {"Weight", 1}},
                      {{"Cost", 2}, {"Risk", 8}, {"Weight", 2}},
                      false,
                      "none"},
        DominanceCase{"WorseInTwoBetterInOne",
                      {{"Cost", 2}, {"Risk", 8}, {"Weight", 2}},
                      {{"Cost", 1}, {"Risk", 9}, {"Weight", 1}},
                      false,
                      "none"},
        DominanceCase{"EqualValuesOtherDesign",
                      {{"Cost", 1}, {"Weight", 1}},
                      {{"Cost", 1}, {"Weight", 1}},
                      false,
                      "none"},
        DominanceCase{"EqualValuesSameDesign",
                      {{"Cost", 1}, {"Weight", 1}},
                      {{"Cost", 1}, {"Weight", 1}},
                      true,
                      "right"},
        DominanceCase{"SameDesignOtherValues", {{"Cost", 1}}, {{"Cost", 2}}, true, "right"},
        DominanceCase{"NothingMeasuredSameDesign", {}, {}, true, "right"},
        DominanceCase{"NothingMeasuredOtherDesign", {}, {}, false, "none"},
        DominanceCase{"MoreOfWhatIsMaximised", {{"Safety", 5}}, {{"Safety", 4}}, false, "right"},
        DominanceCase{"LessOfWhatIsMaximised", {{"Safety", 4}}, {{"Safety", 5}}, false, "left"},
        DominanceCase{"SensesApart",
                      {{"Cost", 4}, {"Safety", 4}},
                      {{"Cost", 5}, {"Safety", 5}},
                      false,
                      "none"},
        DominanceCase{"BetterInBothSenses",
                      {{"Cost", 4}, {"Safety", 5}},
                      {{"Cost", 5}, {"Safety", 4}},
                      false,
                      "right"},
        DominanceCase{"AbsentCountsAsZero", {{"Cost", 1}}, {}, false, "left"},
        DominanceCase{"AbsentIsAboveANegativeValue", {{"Cost", -1}}, {}, false, "right"},
        DominanceCase{"ObjectivesOfTheLeftCount",
                      {{"Cost", 1}},
                      {{"Cost", 2}, {"Weight", 0}},
                      false,
                      "right"},
        DominanceCase{
            "WithoutARecordItIsMinimised", {{"Unknown", 1}}, {{"Unknown", 2}}, false, "right"},
        DominanceCase{"NoNumberCountsAsEqual",
                      {{"Cost", NaN}, {"Weight", 1}},
                      {{"Cost", 5}, {"Weight", 2}},
                      false,
                      "right"},
        DominanceCase{"NoNumberOnTheRightCountsAsEqual",
                      {{"Cost", 5}, {"Weight", 2}},
                      {{"Cost", NaN}, {"Weight", 1}},
                      false,
                      "left"},
        DominanceCase{"NoNumberAtAllSameDesign", {{"Cost", NaN}}, {{"Cost", NaN}}, true, "right"}),
    CaseName);

TEST_F(DominanceTest, OfEqualDesignsTheOlderStaysWhicheverStandsFirst) {
  const auto older = Candidate(1, At(1.0, 1.0));
  const auto younger = Candidate(1, At(1.0, 1.0));
  Individual::Compare(*younger, *older);
  EXPECT_TRUE(younger->dominated);
  EXPECT_FALSE(older->dominated);
}

TEST_F(DominanceTest, TheFirstOfTwoCopiesWithOneIdGoes) {
  const auto source = Candidate(1, At(1.0, 1.0));
  const auto copy = source->Clone();
  Individual::Compare(*source, *copy);
  EXPECT_TRUE(source->dominated);
  EXPECT_FALSE(copy->dominated);
}

TEST_F(DominanceTest, AnAbsentValueIsEnteredOnTheRight) {
  const auto left = Candidate({{"Cost", 1.0}});
  const auto right = Candidate({{"Weight", 1.0}});
  Individual::Compare(*left, *right);
  EXPECT_EQ(right->evaluations, (Values{{"Cost", 0.0}, {"Weight", 1.0}}));
  EXPECT_EQ(left->evaluations, (Values{{"Cost", 1.0}}));
}

TEST_F(DominanceTest, EveryComparisonIsCounted) {
  const auto left = Candidate(At(1.0, 1.0));
  const auto right = Candidate(At(2.0, 2.0));
  EXPECT_EQ(Individual::ComparisonCount(), 0.0);
  Individual::Compare(*left, *right);
  Individual::Compare(*right, *left);
  EXPECT_EQ(Individual::ComparisonCount(), 2.0);
}

}  // namespace
}  // namespace FTS
