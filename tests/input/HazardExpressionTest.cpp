#include <gmock/gmock.h>

#include <string>

#include "faulttree/DeviationProxies.h"
#include "input/ExpressionTest.h"
#include "platform/BigStack.h"
#include "support/CaseName.h"

namespace FTS {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class HazardExpressionTest : public ExpressionTest {
 protected:
  std::string LogicOf(const std::string& text) {
    return LogicText(parser.BuildHazardExpression(text, "Flood"));
  }
};

struct HazardCase {
  const char* name;
  const char* text;
  const char* logic;
};

class HazardLogicTest : public HazardExpressionTest,
                        public ::testing::WithParamInterface<HazardCase> {};

TEST_P(HazardLogicTest, IsReadAs) {
  EXPECT_EQ(LogicOf(GetParam().text), GetParam().logic);
  EXPECT_THAT(Errors(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Expressions, HazardLogicTest,
    ::testing::Values(
        HazardCase{"DeviationIsKeptAsWritten", "Omission-Plant.Pump.out",
                   "OutputDeviation'Omission-Plant.Pump.out'"},
        HazardCase{"PerspectiveIsKept", "Omission-Sys::Pump.out",
                   "OutputDeviation'Omission-Sys::Pump.out'"},
        HazardCase{"DefaultReadsAsAName", "Omission-DEFAULT::Pump.out",
                   "OutputDeviation'Omission-Default::Pump.out'"},
        HazardCase{"ClassMayBeCalledLikeAKeyword", "Time-Pump.out",
                   "OutputDeviation'Time-Pump.out'"},
        HazardCase{"OrGateHasAPlainName", "A-x or B-y + C-z",
                   "Or'OR'(OutputDeviation'A-x', OutputDeviation'B-y', OutputDeviation'C-z')"},
        HazardCase{"AndBindsTighterThanOr", "A-x + B-y * C-z",
                   "Or'OR'(OutputDeviation'A-x', "
                   "And'AND'(OutputDeviation'B-y', OutputDeviation'C-z'))"},
        HazardCase{"NotTakesOnePrimary", "not A-x AND B-y",
                   "And'AND'(Not'NOT'(OutputDeviation'A-x'), OutputDeviation'B-y')"},
        HazardCase{"BracketedGateIsRenamed", "(A-x + B-y) * C-z",
                   "And'AND'(Or'Line Sub-Expression'(OutputDeviation'A-x', OutputDeviation'B-y'), "
                   "OutputDeviation'C-z')"},
        HazardCase{"BracketedDeviationIsNot", "(A-x)", "OutputDeviation'A-x'"},
        HazardCase{"TextBehindTheExpressionIsIgnored", "A-x B-y", "OutputDeviation'A-x'"}),
    CaseName);

TEST_F(HazardExpressionTest, DeviationHasNoLineAndIsNoReferenceOfALine) {
  const auto node = parser.BuildHazardExpression("A-x", "Flood");
  const auto& proxy = dynamic_cast<const OutputDeviationProxy&>(*node);
  EXPECT_EQ(proxy.line, -1);
  EXPECT_FALSE(proxy.reference);
  EXPECT_FALSE(proxy.classless);
}

TEST_F(HazardExpressionTest, ClassesAreToldToTheModel) {
  LogicOf("Omission-x + Value-y + Omission-z");
  EXPECT_THAT(parser.model->failureClasses, ElementsAre("Omission", "Value"));
}

TEST_F(HazardExpressionTest, MissingClassIsAnErrorAndReadingGoesOn) {
  EXPECT_EQ(LogicOf("x + B-y"), "Or'OR'(OutputDeviation'B-y')");
  EXPECT_THAT(Errors(), ElementsAre("No failure class in hazard expression [line number: 0]",
                                    "Unknown node 'x' in Hazard expression 'x + B-y' "
                                    "[line number : 0]"));
}

TEST_F(HazardExpressionTest, MissingNameIsAnError) {
  EXPECT_EQ(LogicOf("A-"), "nothing");
  EXPECT_EQ(LogicOf("B-("), "nothing");
  EXPECT_THAT(Errors(),
              ElementsAre("Unknown node '' in Hazard expression 'A-' [line number : 0]",
                          "Unknown node '(' in Hazard expression 'B-(' [line number : 0]"));
}

TEST_F(HazardExpressionTest, EmptyTextGivesNothing) {
  EXPECT_EQ(LogicOf(""), "nothing");
  EXPECT_THAT(Errors(), ElementsAre("No failure class in hazard expression [line number: 0]",
                                    "Unknown node '' in Hazard expression '' [line number : 0]"));
}

TEST_F(HazardExpressionTest, NegatedNothingIsNothing) { EXPECT_EQ(LogicOf("not x"), "nothing"); }

TEST_F(HazardExpressionTest, LinesAreCountedFromZero) {
  LogicOf("A-x +\nB-y +\nz");
  ASSERT_THAT(Errors(), SizeIs(2));
  EXPECT_EQ(Errors().front(), "No failure class in hazard expression [line number: 2]");
}

TEST_F(HazardExpressionTest, MissingBracketStopsTheReading) {
  EXPECT_EQ(ThrownBy([this] { LogicOf("(A-x + B-y"); }),
            "Match Error #1: Ran out of tokens. Expected: \")\" @0");
}

TEST_F(HazardExpressionTest, EndlessParenthesesAreRefused) {
  RunOnBigStack([this] {
    EXPECT_EQ(ThrownBy([this] { LogicOf(std::string(100000, '(')); }),
              "Expression with parentheses nested too deeply in hazard: Flood @0");
  });
}

TEST_F(HazardExpressionTest, OneColonIsNotEnough) {
  EXPECT_EQ(
      ThrownBy([this] { LogicOf("A-Sys:x"); }),
      "Match Error #2: Incorrect Token type - found String/ID. Expected: \"Colon\" but found: "
      "\"<ID>\" with value: \"x\" @0");
}

TEST_F(HazardExpressionTest, LongExpressionsAreQuotedInPartOnly) {
  constexpr std::size_t LongestQuotation = 1 << 20;
  constexpr int Faults = 600000;
  std::string text = "x";
  for (int i = 1; i < Faults; ++i) text += "+x";
  LogicOf(text);
  EXPECT_EQ(DiagnosticLog::Instance().ReportedErrors(), 2 * Faults);
  EXPECT_EQ(Errors().at(1), "Unknown node 'x' in Hazard expression '" +
                                text.substr(0, LongestQuotation) + "...' [line number : 0]");
}

}  // namespace
}  // namespace FTS
