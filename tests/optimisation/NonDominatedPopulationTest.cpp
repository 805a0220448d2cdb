#include <gmock/gmock.h>

#include <limits>
#include <string>
#include <vector>

#include "optimisation/Individual.h"
#include "optimisation/NonDominatedPopulation.h"
#include "optimisation/SearchTest.h"
#include "support/CaseName.h"

namespace FTS {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// What the order of the search asks for.
struct Standing {
  bool feasible;
  bool boundary;
  double crowding;
  int rank = 0;
};

/// Whether the left one comes first, when it is the older and when it is the younger of the two.
struct OrderCase {
  const char* name;
  Standing left;
  Standing right;
  bool firstWhenOlder;
  bool firstWhenYounger;
};

class CrowdedLessTest : public SearchTest, public ::testing::WithParamInterface<OrderCase> {
 protected:
  std::unique_ptr<Individual> WithStanding(const Standing& standing) {
    auto made = Candidate({});
    made->feasible = standing.feasible;
    made->boundary = standing.boundary;
    made->crowding = standing.crowding;
    made->rank = standing.rank;
    return made;
  }
};

TEST_P(CrowdedLessTest, OrdersTwo) {
  const auto older = WithStanding(GetParam().left);
  const auto right = WithStanding(GetParam().right);
  const auto younger = WithStanding(GetParam().left);
  EXPECT_EQ(CrowdedLess(*older, *right), GetParam().firstWhenOlder) << "older";
  EXPECT_EQ(CrowdedLess(*right, *older), !GetParam().firstWhenOlder) << "older, asked backwards";
  EXPECT_EQ(CrowdedLess(*younger, *right), GetParam().firstWhenYounger) << "younger";
  EXPECT_EQ(CrowdedLess(*right, *younger), !GetParam().firstWhenYounger)
      << "younger, asked backwards";
}

constexpr bool Feasible = true;
constexpr bool Infeasible = false;
INSTANTIATE_TEST_SUITE_P(
    Pairs, CrowdedLessTest,
    ::testing::Values(
        OrderCase{"LowerRank", {Infeasible, false, 0.0, 1}, {Feasible, true, 9.0, 2}, true, true},
        OrderCase{"FeasibleBeforeInfeasible",
                  {Feasible, false, 0.0},
                  {Infeasible, true, 9.0},
                  true,
                  true},
        OrderCase{"InfeasibleBehindFeasible",
                  {Infeasible, true, 9.0},
                  {Feasible, false, 0.0},
                  false,
                  false},
        OrderCase{"BothFeasible", {Feasible, false, 0.0}, {Feasible, false, 0.0}, false, true},
        OrderCase{"CrowdingOfFeasibleIsIgnored",
                  {Feasible, true, 9.0},
                  {Feasible, false, 0.0},
                  false,
                  true},
        OrderCase{"BoundaryFirst", {Infeasible, true, 0.0}, {Infeasible, false, 9.0}, true, true},
        OrderCase{
            "BoundaryOnTheRight", {Infeasible, false, 9.0}, {Infeasible, true, 0.0}, false, false},
        OrderCase{
            "BothAtTheBoundary", {Infeasible, true, 9.0}, {Infeasible, true, 0.0}, false, true},
        OrderCase{"MoreCrowding", {Infeasible, false, 9.0}, {Infeasible, false, 8.0}, true, true},
        OrderCase{"LessCrowding", {Infeasible, false, 8.0}, {Infeasible, false, 9.0}, false, false},
        OrderCase{
            "EqualCrowding", {Infeasible, false, 8.0}, {Infeasible, false, 8.0}, false, true}),
    CaseName);

class NonDominatedPopulationTest : public SearchTest {
 protected:
  NonDominatedPopulationTest() : frontier(*search) {}

  bool Insert(std::unique_ptr<Individual> candidate) {
    return frontier.Insert(std::move(candidate), rejected);
  }
  std::vector<std::int32_t> Members() const {
    std::vector<std::int32_t> ids;
    for (const auto& [id, member] : frontier.members) {
      EXPECT_EQ(id, member->individualId);
      ids.push_back(id);
    }
    return ids;
  }
  std::vector<std::int32_t> Rejected() const {
    std::vector<std::int32_t> ids;
    for (const auto& one : rejected) {
      EXPECT_FALSE(one->dominated);
      ids.push_back(one->individualId);
    }
    return ids;
  }
  std::vector<double> Crowding() const {
    std::vector<double> values;
    for (const auto& [id, member] : frontier.members) values.push_back(member->crowding);
    return values;
  }
  std::vector<bool> Boundary() const {
    std::vector<bool> values;
    for (const auto& [id, member] : frontier.members) values.push_back(member->boundary);
    return values;
  }

  NonDominatedPopulation frontier;
  std::vector<std::unique_ptr<Individual>> rejected;
};

TEST_F(NonDominatedPopulationTest, TakesWhatNoMemberDominates) {
  EXPECT_TRUE(Insert(Candidate(At(1, 3))));
  EXPECT_TRUE(Insert(Candidate(At(2, 2))));
  EXPECT_TRUE(Insert(Candidate(At(3, 1))));
  EXPECT_THAT(Members(), ElementsAre(0, 1, 2));
  EXPECT_THAT(rejected, IsEmpty());
}

TEST_F(NonDominatedPopulationTest, RefusesADominatedCandidate) {
  Insert(Candidate(At(1, 1)));
  EXPECT_FALSE(Insert(Candidate(At(2, 1))));
  EXPECT_THAT(Members(), ElementsAre(0));
  EXPECT_THAT(Rejected(), ElementsAre(1));
}

TEST_F(NonDominatedPopulationTest, LetsDominatedMembersGoInOrderOfTheirIds) {
  Insert(Candidate(At(3, 3)));
  Insert(Candidate(At(1, 9)));
  Insert(Candidate(At(2, 4)));
  EXPECT_TRUE(Insert(Candidate(At(2, 2))));
  EXPECT_THAT(Members(), ElementsAre(1, 3));
  EXPECT_THAT(Rejected(), ElementsAre(0, 2));
}

TEST_F(NonDominatedPopulationTest, AYoungerCopyOfAMemberIsRefused) {
  Insert(Candidate(5, At(1, 1)));
  EXPECT_FALSE(Insert(Candidate(5, At(1, 1))));
  EXPECT_THAT(Members(), ElementsAre(0));
}

TEST_F(NonDominatedPopulationTest, AnOlderCopyTakesTheYoungerOnesPlace) {
  auto older = Candidate(5, At(1, 1));
  Insert(Candidate(5, At(1, 1)));
  EXPECT_TRUE(Insert(std::move(older)));
  EXPECT_THAT(Members(), ElementsAre(0));
  EXPECT_THAT(Rejected(), ElementsAre(1));
}

TEST_F(NonDominatedPopulationTest, OtherDesignsWithEqualValuesLiveSideBySide) {
  Insert(Candidate(5, At(1, 1)));
  EXPECT_TRUE(Insert(Candidate(6, At(1, 1))));
  EXPECT_THAT(Members(), ElementsAre(0, 1));
}

TEST_F(NonDominatedPopulationTest, WithoutObjectivesOnlyCopiesAreRefused) {
  Insert(Candidate(5, {}));
  EXPECT_TRUE(Insert(Candidate(6, {})));
  EXPECT_FALSE(Insert(Candidate(5, {})));
  EXPECT_FALSE(Insert(Candidate(6, {})));
  EXPECT_THAT(Members(), ElementsAre(0, 1));
}

// Which member meets the candidate first decides: those that lost to it before stay out.
TEST_F(NonDominatedPopulationTest, MembersThatHaveLeftStayOutWhenTheCandidateFails) {
  Insert(Candidate(At(2, 2)));
  auto odd = Candidate({{"Cost", std::numeric_limits<double>::quiet_NaN()}, {"Weight", 1.0}});
  frontier.members.emplace(1, std::move(odd));
  EXPECT_FALSE(Insert(Candidate(At(1, 2))));
  EXPECT_THAT(Members(), ElementsAre(1));
  EXPECT_THAT(Rejected(), ElementsAre(0, 2));
}

TEST_F(NonDominatedPopulationTest, MarksOfEarlierComparisonsDoNotCount) {
  auto marked = Candidate(At(1, 1));
  marked->dominated = true;
  EXPECT_TRUE(Insert(std::move(marked)));
  frontier.members.at(0)->dominated = true;
  EXPECT_TRUE(Insert(Candidate(At(0, 2))));
  EXPECT_THAT(Members(), ElementsAre(0, 1));
}

TEST_F(NonDominatedPopulationTest, StrictBoundariesRefuseTheInfeasible) {
  Config::Instance().strictBoundaries = true;
  auto infeasible = Candidate(At(1, 1), false);
  infeasible->dominated = true;
  EXPECT_FALSE(Insert(std::move(infeasible)));
  EXPECT_TRUE(Insert(Candidate(At(2, 2))));
  EXPECT_THAT(Members(), ElementsAre(1));
  EXPECT_THAT(Rejected(), ElementsAre(0));
}

TEST_F(NonDominatedPopulationTest, TheInfeasibleJoinOtherwise) {
  EXPECT_TRUE(Insert(Candidate(At(1, 1), false)));
  EXPECT_FALSE(Insert(Candidate(At(2, 2)))) << "dominance does not ask for feasibility";
}

TEST_F(NonDominatedPopulationTest, TrimDestroysTheLastInTheOrder) {
  Insert(Candidate(At(1, 5)));
  Insert(Candidate(At(2, 4), false));
  Insert(Candidate(At(3, 3)));
  Insert(Candidate(At(4, 2), false));
  Insert(Candidate(At(5, 1)));
  frontier.members.at(1)->crowding = 7.0;
  frontier.members.at(3)->crowding = 8.0;
  frontier.Trim(0);
  EXPECT_THAT(Members(), ElementsAre(0, 1, 2, 3, 4));
  frontier.Trim(1);
  EXPECT_THAT(Members(), ElementsAre(0, 2, 3, 4));
  frontier.Trim(2);
  EXPECT_THAT(Members(), ElementsAre(2, 4));
  frontier.Trim(2);
  EXPECT_THAT(Members(), IsEmpty());
}

TEST_F(NonDominatedPopulationTest, CrowdingAddsUpTheGapsInTheirOwnUnits) {
  Insert(Candidate(At(1, 400)));
  Insert(Candidate(At(2, 300)));
  Insert(Candidate(At(4, 150)));
  Insert(Candidate(At(9, 100)));
  frontier.AssignCrowding();
  EXPECT_THAT(Crowding(), ElementsAre(0.0, 3.0 + 250.0, 7.0 + 200.0, 0.0));
  EXPECT_THAT(Boundary(), ElementsAre(true, false, false, true));
}

TEST_F(NonDominatedPopulationTest, CrowdingIsAssignedAnew) {
  for (int i = 0; i < 3; ++i) Insert(Candidate(At(1 + i, 9 - i)));
  frontier.members.at(1)->boundary = true;
  frontier.members.at(1)->crowding = 77.0;
  frontier.AssignCrowding();
  EXPECT_THAT(Crowding(), ElementsAre(0.0, 4.0, 0.0));
  EXPECT_THAT(Boundary(), ElementsAre(true, false, true));
}

// Sorted by cost the youngest of equals comes first: 3 (cost 1), then 2, 1, 0 with cost 5.
TEST_F(NonDominatedPopulationTest, OnEqualValuesTheYoungerComesFirst) {
  UseModel({{XmlObjective("Cost")}, {XmlDesignPart("A", {{"a"}})}});
  NonDominatedPopulation population(*search);
  for (int i = 0; i < 4; ++i) {
    auto one = Candidate({{"Cost", i == 3 ? 1.0 : 5.0}});
    population.members.emplace(one->individualId, std::move(one));
  }
  population.AssignCrowding();
  EXPECT_TRUE(population.members.at(3)->boundary);
  EXPECT_TRUE(population.members.at(0)->boundary);
  EXPECT_EQ(population.members.at(2)->crowding, 4.0);
  EXPECT_EQ(population.members.at(1)->crowding, 0.0);
}

TEST_F(NonDominatedPopulationTest, OneMemberLiesAtTheBoundary) {
  Insert(Candidate(At(1, 1)));
  frontier.AssignCrowding();
  EXPECT_THAT(Boundary(), ElementsAre(true));
  EXPECT_THAT(Crowding(), ElementsAre(0.0));
}

TEST_F(NonDominatedPopulationTest, TwoMembersLieAtTheBoundary) {
  Insert(Candidate(At(1, 2)));
  Insert(Candidate(At(2, 1)));
  frontier.AssignCrowding();
  EXPECT_THAT(Boundary(), ElementsAre(true, true));
  EXPECT_THAT(Crowding(), ElementsAre(0.0, 0.0));
}

TEST_F(NonDominatedPopulationTest, AnEmptyFrontierIsLeftAlone) {
  frontier.AssignCrowding();
  frontier.Trim(0);
  EXPECT_THAT(Members(), IsEmpty());
}

/// "Cost", "SystemSlack" and "Weight": one in the middle that is not sorted by.
class UnsortedObjectiveTest : public NonDominatedPopulationTest {};

// By cost the order is 2, 0, 1, 3, and that order stands for SystemSlack, whatever its values.
TEST_F(UnsortedObjectiveTest, CountsInTheOrderOfTheObjectiveBefore) {
  UseModel({{XmlObjective("Cost"), XmlObjective("SystemSlack")}, {XmlDesignPart("A", {{"a"}})}});
  NonDominatedPopulation population(*search);
  const std::vector<Values> values = {{{"Cost", 2.0}, {"SystemSlack", 50.0}},
                                      {{"Cost", 3.0}, {"SystemSlack", 10.0}},
                                      {{"Cost", 1.0}, {"SystemSlack", 20.0}},
                                      {{"Cost", 9.0}, {"SystemSlack", 40.0}}};
  for (const Values& one : values) {
    auto made = Candidate(one);
    population.members.emplace(made->individualId, std::move(made));
  }
  population.AssignCrowding();
  EXPECT_EQ(population.members.at(0)->crowding, (3.0 - 1.0) + (10.0 - 20.0));
  EXPECT_EQ(population.members.at(1)->crowding, (9.0 - 2.0) + (40.0 - 50.0));
  EXPECT_TRUE(population.members.at(2)->boundary && population.members.at(3)->boundary);
  EXPECT_FALSE(population.members.at(0)->boundary || population.members.at(1)->boundary);
}

TEST_F(UnsortedObjectiveTest, StandsInTheOrderOfIdsWhenItIsTheOnlyOne) {
  UseModel({{XmlObjective("SystemSlack")}, {XmlDesignPart("A", {{"a"}})}});
  NonDominatedPopulation population(*search);
  for (const double slack : {5.0, 1.0, 8.0}) {
    auto made = Candidate({{"SystemSlack", slack}});
    population.members.emplace(made->individualId, std::move(made));
  }
  population.AssignCrowding();
  EXPECT_EQ(population.members.at(1)->crowding, 3.0);
  EXPECT_TRUE(population.members.at(0)->boundary && population.members.at(2)->boundary);
}

struct SortedCase {
  const char* name;
  const char* objective;
};

class SortedObjectiveTest : public NonDominatedPopulationTest,
                            public ::testing::WithParamInterface<SortedCase> {};

TEST_P(SortedObjectiveTest, PutsTheLowestAndHighestAtTheBoundary) {
  UseModel({{XmlObjective(GetParam().objective)}, {XmlDesignPart("A", {{"a"}})}});
  NonDominatedPopulation population(*search);
  for (const double value : {5.0, 9.0, 2.0, 6.5}) {
    auto made = Candidate({{GetParam().objective, value}});
    population.members.emplace(made->individualId, std::move(made));
  }
  population.AssignCrowding();
  EXPECT_TRUE(population.members.at(1)->boundary && population.members.at(2)->boundary);
  EXPECT_EQ(population.members.at(0)->crowding, 4.5);
  EXPECT_EQ(population.members.at(3)->crowding, 4.0);
}

INSTANTIATE_TEST_SUITE_P(
    Names, SortedObjectiveTest,
    ::testing::Values(SortedCase{"Cost", "Cost"}, SortedCase{"Weight", "Weight"},
                      SortedCase{"ASILCost", "ASILCost"}, SortedCase{"Invalids", "ASILInvalids"},
                      SortedCase{"Risk", "Risk"}, SortedCase{"Reliability", "Reliability"},
                      SortedCase{"Safety", "Safety"},
                      SortedCase{"Unavailability", "Unavailability(H)"},
                      SortedCase{"WordWithin", "MeanUnavailabilityOfAll"}),
    CaseName);

TEST_F(NonDominatedPopulationTest, WhatIsNoNumberSortsLast) {
  UseModel({{XmlObjective("Cost")}, {XmlDesignPart("A", {{"a"}})}});
  NonDominatedPopulation population(*search);
  for (const double cost : {3.0, std::numeric_limits<double>::quiet_NaN(), 1.0}) {
    auto made = Candidate({{"Cost", cost}});
    population.members.emplace(made->individualId, std::move(made));
  }
  population.AssignCrowding();
  EXPECT_TRUE(population.members.at(1)->boundary && population.members.at(2)->boundary);
  EXPECT_FALSE(population.members.at(0)->boundary);
}

}  // namespace
}  // namespace FTS
