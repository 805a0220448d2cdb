#include <gtest/gtest.h>

#include <stdexcept>

#include "support/FailureOracle.h"
#include "support/ProcessStateTest.h"

namespace FTS {
namespace {

class FailureOracleTest : public ProcessStateTest {
 protected:
  const FormulaPtr a = EventFormula("a");
  const FormulaPtr b = EventFormula("b");
  const FormulaPtr c = EventFormula("c");
  const FormulaPtr hole;
};

TEST_F(FailureOracleTest, EventIsACutSet) { EXPECT_EQ(MinimalCutSets(a), (CutSets{{"a"}})); }

TEST_F(FailureOracleTest, OrGivesASetForEachOperand) {
  EXPECT_EQ(MinimalCutSets(AnyOf({a, b, c})), (CutSets{{"a"}, {"b"}, {"c"}}));
}

TEST_F(FailureOracleTest, AndGivesOneSet) {
  EXPECT_EQ(MinimalCutSets(AllOf({a, b, c})), (CutSets{{"a", "b", "c"}}));
}

TEST_F(FailureOracleTest, SupersetIsNotMinimal) {
  EXPECT_EQ(MinimalCutSets(AnyOf({AllOf({a, b}), a})), (CutSets{{"a"}}));
  EXPECT_EQ(MinimalCutSets(AllOf({a, AnyOf({a, b})})), (CutSets{{"a"}}));
}

TEST_F(FailureOracleTest, TwoOutOfThreeHasThreePairs) {
  const FormulaPtr vote = AnyOf({AllOf({a, b}), AllOf({a, c}), AllOf({b, c})});
  EXPECT_EQ(MinimalCutSets(vote), (CutSets{{"a", "b"}, {"a", "c"}, {"b", "c"}}));
}

// Eight events make a table of four words, so rows and columns cross the words' borders.
TEST_F(FailureOracleTest, TableOfSeveralWordsIsSolved) {
  std::vector<FormulaPtr> pairs;
  CutSets expected;
  for (int i = 0; i < 4; ++i) {
    const std::string x = "x" + std::to_string(i);
    const std::string y = "y" + std::to_string(i);
    pairs.push_back(AllOf({EventFormula(x), EventFormula(y)}));
    expected.insert({x, y});
  }
  EXPECT_EQ(MinimalCutSets(AnyOf(pairs)), expected);
  EXPECT_EQ(MinimalCutSets(AllOf(pairs)).begin()->size(), 8U);
}

TEST_F(FailureOracleTest, SharedOperandCountsOnce) {
  const FormulaPtr shared = AnyOf({a, b});
  EXPECT_EQ(MinimalCutSets(AllOf({shared, shared})), (CutSets{{"a"}, {"b"}}));
}

TEST_F(FailureOracleTest, TooManyEventsAreRefused) {
  std::vector<FormulaPtr> events;
  for (int i = 0; i < 23; ++i) events.push_back(EventFormula("e" + std::to_string(i)));
  EXPECT_THROW(MinimalCutSets(AnyOf(events)), std::length_error);
}

TEST_F(FailureOracleTest, GatePassesOverHoles) {
  EXPECT_EQ(MinimalCutSets(AllOf({a, hole, b})), (CutSets{{"a", "b"}}));
  EXPECT_EQ(MinimalCutSets(AnyOf({hole, a})), (CutSets{{"a"}}));
}

TEST_F(FailureOracleTest, GateOfHolesIsAHole) {
  EXPECT_EQ(AllOf({hole, AnyOf({hole})}), nullptr);
  EXPECT_TRUE(MinimalCutSets(hole).empty());
}

TEST_F(FailureOracleTest, MentionedEventsAreThoseOfAllOperands) {
  EXPECT_EQ(EventsOf(AllOf({a, AnyOf({a, b})})), (std::set<std::string>{"a", "b"}));
  EXPECT_TRUE(EventsOf(hole).empty());
}

class FailureFiguresTest : public ProcessStateTest {
 protected:
  const EventFigures q = {{"a", 0.5}, {"b", 0.25}, {"c", 0.125}};
  const EventFigures f = {{"a", 2.0}, {"b", 4.0}};
};

TEST_F(FailureFiguresTest, NoCutSetsHaveNoUnavailability) { EXPECT_EQ(EsaryProschan({}, q), 0.0); }

TEST_F(FailureFiguresTest, OneCutSetHasTheProductOfItsEvents) {
  EXPECT_EQ(EsaryProschan({{"a", "b"}}, q), 0.125);
}

TEST_F(FailureFiguresTest, SetsWithoutACommonEventCountAsIndependent) {
  // 1 - (1 - 1/2) (1 - 1/4 * 1/8)
  EXPECT_EQ(EsaryProschan({{"a"}, {"b", "c"}}, q), 1.0 - 0.5 * (1.0 - 0.03125));
}

// The plain formula would give 1 - (1 - 1/8) (1 - 1/16).
TEST_F(FailureFiguresTest, CommonEventIsTakenOutFirst) {
  EXPECT_EQ(EsaryProschan({{"a", "b"}, {"a", "c"}}, q), 0.5 * (1.0 - 0.75 * 0.875));
}

TEST_F(FailureFiguresTest, FrequencyOfOneSetTakesEachEventAsTheLast) {
  EXPECT_EQ(TopFrequency({{"a", "b"}}, q, f), 2.0 * 0.25 + 4.0 * 0.5);
}

TEST_F(FailureFiguresTest, FrequencyCountsASetWhileNoOtherHolds) {
  EXPECT_EQ(TopFrequency({{"a"}, {"b"}}, q, f), 2.0 * 0.75 + 4.0 * 0.5);
}

TEST_F(FailureFiguresTest, EventWithoutAFrequencyHasNone) {
  EXPECT_EQ(TopFrequency({{"c"}}, q, f), 0.0);
}

}  // namespace
}  // namespace FTS
