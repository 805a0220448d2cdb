// What levels cost, and which cut sets stay below what a hazard requires.

#include <gtest/gtest.h>

#include <vector>

#include "optimisation/SafetyLevelTest.h"
#include "support/CaseName.h"

namespace FTS {
namespace {

struct CostCase {
  const char* name;
  std::vector<int> levels;
  int cost;
};

class LevelCostTest : public SafetyLevelTest, public ::testing::WithParamInterface<CostCase> {};

TEST_P(LevelCostTest, IsTheSumOverTheEvents) {
  SetLevels(GetParam().levels[0], GetParam().levels[1], GetParam().levels[2]);
  EXPECT_EQ(model->EvaluateASILCost(), GetParam().cost);
}

INSTANTIATE_TEST_SUITE_P(
    Levels, LevelCostTest,
    ::testing::Values(CostCase{"NoLevel", {0, 0, 0}, 0}, CostCase{"One", {1, 0, 0}, 10},
                      CostCase{"Two", {0, 2, 0}, 100}, CostCase{"Three", {0, 0, 3}, 1000},
                      CostCase{"AllFour", {4, 4, 4}, 30000}, CostCase{"Five", {5, 0, 1}, 100010},
                      CostCase{"BeyondTheTable", {6, -1, 2}, 100}),
    CaseName);

struct InvalidCase {
  const char* name;
  std::vector<int> levels;
  int both;  // What the loss of both A and B requires.
  int c;     // What the loss of C requires.
  int invalid;
};

class InvalidCutSetsTest : public SafetyLevelTest,
                           public ::testing::WithParamInterface<InvalidCase> {};

TEST_P(InvalidCutSetsTest, StayBelowTheHazard) {
  SetLevels(GetParam().levels[0], GetParam().levels[1], GetParam().levels[2]);
  Require(BothLost, GetParam().both);
  Require(CLost, GetParam().c);
  EXPECT_EQ(model->CountRequirementViolations(), GetParam().invalid);
}

INSTANTIATE_TEST_SUITE_P(Levels, InvalidCutSetsTest,
                         ::testing::Values(InvalidCase{"NothingRequired", {0, 0, 0}, 0, 0, 0},
                                           InvalidCase{"NothingGiven", {0, 0, 0}, 1, 1, 2},
                                           InvalidCase{"LevelsAddUp", {1, 1, 0}, 2, 0, 0},
                                           InvalidCase{"SumTooLow", {1, 1, 0}, 3, 0, 1},
                                           InvalidCase{"OneBearsItAll", {0, 4, 4}, 4, 4, 0},
                                           InvalidCase{"AllFour", {4, 4, 4}, 4, 4, 0},
                                           InvalidCase{"SingleBelow", {4, 4, 3}, 4, 4, 1}),
                         CaseName);

TEST_F(SafetyLevelTest, HazardWithoutTreeHasNoInvalidCutSets) {
  Require(BothLost, 4);
  Require(CLost, 4);
  model->ClearSynthesis();
  EXPECT_EQ(model->CountRequirementViolations(), 0);
}

}  // namespace
}  // namespace FTS
