#include <gmock/gmock.h>

#include <memory>
#include <string>

#include "faulttree/DeviationProxies.h"
#include "input/ExpressionTest.h"
#include "platform/BigStack.h"
#include "support/CaseName.h"

namespace FTS {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class LineExpressionTest : public ExpressionTest {
 protected:
  /// The expression of a connection of the port Valve.in on line "pipe" of the top level.
  std::shared_ptr<FaultTreeNode> Read(const std::string& text,
                                      const std::string& failureClass = "Omission") {
    return ReadOn(system, text, failureClass);
  }

  std::shared_ptr<FaultTreeNode> ReadOn(const std::shared_ptr<Subsystem>& where,
                                        const std::string& text,
                                        const std::string& failureClass = "Omission") {
    line = std::make_shared<Line>("pipe", where, parser.model.get());
    line->defaultOperator = defaultOperator;
    const std::string prefix = failureClass.empty() ? "" : failureClass + "-";
    parser.BuildLineExpression(text, prefix + "Valve.in", *line, 7, failureClass);
    return line->connections.at(prefix + "Valve.in");
  }

  std::string LogicOf(const std::string& text) { return LogicText(Read(text)); }

  std::shared_ptr<Line> line;
  LineOperator defaultOperator = LineOperator::OR;
};

struct LogicCase {
  const char* name;
  const char* text;
  const char* logic;
};

class LineLogicTest : public LineExpressionTest, public ::testing::WithParamInterface<LogicCase> {};

TEST_P(LineLogicTest, IsReadAs) {
  EXPECT_EQ(LogicOf(GetParam().text), GetParam().logic);
  EXPECT_THAT(Errors(), IsEmpty());
  EXPECT_THAT(Warnings(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Expressions, LineLogicTest,
    ::testing::Values(
        LogicCase{"PortIsNamedByItsFullName", "Omission-Pump.out",
                  "OutputDeviation'Omission-Sys::Pump.out'"},
        LogicCase{"OrGateIsNamedAfterTheConnection", "Omission-Pump.out OR Omission-Pump.in",
                  "Or'OR [Omission-Valve.in]'(OutputDeviation'Omission-Sys::Pump.out', "
                  "OutputDeviation'Omission-Sys::Pump.in')"},
        LogicCase{"AndBindsTighterThanOr",
                  "Omission-Pump.out + Omission-Pump.in * Omission-Pump.in2",
                  "Or'OR [Omission-Valve.in]'(OutputDeviation'Omission-Sys::Pump.out', "
                  "And'AND [Omission-Valve.in]'(OutputDeviation'Omission-Sys::Pump.in', "
                  "OutputDeviation'Omission-Sys::Pump.in2'))"},
        LogicCase{"BracketedGateIsRenamed", "(Omission-Pump.out + Omission-Pump.in)",
                  "Or'Line Sub-Expression'(OutputDeviation'Omission-Sys::Pump.out', "
                  "OutputDeviation'Omission-Sys::Pump.in')"},
        LogicCase{"BracketedPortIsNot", "(Omission-Pump.out)",
                  "OutputDeviation'Omission-Sys::Pump.out'"},
        LogicCase{"BracketedPlaceholderIsNot", "(ANDPORT)", "And'ANDPORT'"},
        LogicCase{"AndPort", "ANDPORT", "And'ANDPORT'"},
        LogicCase{"OrPort", "ORPORT", "Or'ORPORT'"},
        LogicCase{"OutputPort", "OUTPUTPORT", "NullOp'OUTPUTPORT'"},
        LogicCase{"OutputStandsForOutputPort", "OUTPUT", "NullOp'OUTPUTPORT'"},
        LogicCase{"TextBehindTheExpressionIsIgnored", "ANDPORT ORPORT", "And'ANDPORT'"},
        LogicCase{"PlaceholderMayBeAnOperand", "ANDPORT + Omission-Pump.out",
                  "Or'OR [Omission-Valve.in]'(And'ANDPORT', "
                  "OutputDeviation'Omission-Sys::Pump.out')"}),
    CaseName);

TEST_F(LineExpressionTest, DefaultFollowsTheLinesOperator) {
  defaultOperator = LineOperator::AND;
  EXPECT_EQ(LogicOf("DEFAULT"), "And'DEFAULT'");
  defaultOperator = LineOperator::OR;
  EXPECT_EQ(LogicOf("Default"), "Or'DEFAULT'");
  defaultOperator = LineOperator::OUTPUT;
  EXPECT_EQ(LogicOf("(DEFAULT)"), "NullOp'DEFAULT'");
}

TEST_F(LineExpressionTest, ReferenceIsMarkedAndKnowsItsLine) {
  const auto node = Read("\nOmission-Pump.out");
  const auto& proxy = dynamic_cast<const OutputDeviationProxy&>(*node);
  EXPECT_TRUE(proxy.reference);
  EXPECT_FALSE(proxy.classless);
  EXPECT_EQ(proxy.line, 8);
}

TEST_F(LineExpressionTest, ReferenceWithoutClassIsNamedByThePortAndMarked) {
  const auto node = Read("Pump.out", "");
  EXPECT_EQ(LogicText(node), "OutputDeviation'Sys::Pump.out'");
  const auto& proxy = dynamic_cast<const OutputDeviationProxy&>(*node);
  EXPECT_TRUE(proxy.reference);
  EXPECT_TRUE(proxy.classless);
  EXPECT_THAT(Errors(), IsEmpty());
}

TEST_F(LineExpressionTest, GateOfAConnectionWithoutClassIsNamedAfterThePort) {
  EXPECT_EQ(LogicText(Read("Pump.out + Pump.in", "")),
            "Or'OR [Valve.in]'(OutputDeviation'Sys::Pump.out', OutputDeviation'Sys::Pump.in')");
}

TEST_F(LineExpressionTest, MissingClassInAClassedLineIsAnError) {
  EXPECT_EQ(LogicOf("Pump.out"), "OutputDeviation'Sys::Pump.out'");
  EXPECT_THAT(Errors(), ElementsAre("Line expression is classed and so must contain failure "
                                    "classes on the right-hand side pipe [line number: 7]"));
}

TEST_F(LineExpressionTest, OtherClassIsAWarningAndCounts) {
  EXPECT_EQ(LogicOf("Value-Pump.out"), "OutputDeviation'Value-Sys::Pump.out'");
  EXPECT_THAT(Warnings(), ElementsAre("Failure classes do not match in line: 'Omission' and "
                                      "'Value' pipe on line number: 7"));
  EXPECT_THAT(Errors(), IsEmpty());
}

TEST_F(LineExpressionTest, ClassInALineWithoutClassIsAWarning) {
  Read("Value-Pump.out", "");
  EXPECT_THAT(Warnings(), ElementsAre("Failure classes do not match in line: '' and 'Value' pipe "
                                      "on line number: 7"));
}

TEST_F(LineExpressionTest, FoundClassIsToldToTheModel) {
  Read("Omission-Pump.out + Value-Pump.out");
  EXPECT_THAT(parser.model->failureClasses, ElementsAre("Omission", "Value"));
}

TEST_F(LineExpressionTest, NameWithoutPointIsAPortOfTheOwner) {
  EXPECT_EQ(LogicText(ReadOn(inside, "Omission-in")), "OutputDeviation'Omission-Sys::Pump.in'");
}

TEST_F(LineExpressionTest, ComponentIsLookedUpInsideTheOwner) {
  EXPECT_EQ(LogicText(ReadOn(inside, "Omission-Rotor.shaft")),
            "OutputDeviation'Omission-Sys::Pump.Rotor.shaft'");
}

TEST_F(LineExpressionTest, PathIsCutAtItsFirstPoint) {
  EXPECT_EQ(ThrownBy([this] { Read("Omission-Pump.Rotor.shaft"); }),
            "Error! Cannot find port: Pump.Rotor.shaft on line: pipe in component: Sys::Pump on "
            "line");
}

TEST_F(LineExpressionTest, MissingComponentOfTheTopLayerStopsTheReading) {
  EXPECT_EQ(ThrownBy([this] { Read("Omission-Tank.out"); }),
            "Error! Cannot find port: Tank.out on line: pipe in model top layer; may not be "
            "locally qualified");
}

TEST_F(LineExpressionTest, NameWithoutPointInTheTopLayerStopsTheReading) {
  EXPECT_EQ(ThrownBy([this] { Read("Omission-out"); }),
            "Error! Cannot find port: out on line: pipe in model top layer; may not be locally "
            "qualified");
}

TEST_F(LineExpressionTest, MissingComponentInsideStopsTheReading) {
  EXPECT_EQ(ThrownBy([this] { ReadOn(inside, "Omission-Tank.out"); }),
            "Error! Cannot find port: Tank.out on line: pipe in component: Sys::Pump may not be "
            "locally qualified");
}

TEST_F(LineExpressionTest, MissingPortStopsTheReading) {
  EXPECT_EQ(ThrownBy([this] { Read("Omission-Pump.nowhere"); }),
            "Error! Cannot find port: Pump.nowhere on line: pipe in component: Sys::Pump on line");
  EXPECT_EQ(ThrownBy([this] { ReadOn(inside, "Omission-nowhere"); }),
            "Error! Cannot find port: nowhere on line: pipe in component: Sys::Pump on line");
}

TEST_F(LineExpressionTest, MissingPathStopsTheReading) {
  EXPECT_EQ(ThrownBy([this] { Read("Omission-"); }),
            "Match Error #1: Ran out of tokens. Expected: \"<ID>\" @7");
}

TEST_F(LineExpressionTest, UnknownTokenIsAnErrorAndStopsTheReading) {
  EXPECT_EQ(ThrownBy([this] { Read("~Omission-Pump.out"); }), "Unknown Port Node! @7");
  EXPECT_THAT(Errors(), ElementsAre("Unknown Port Node! (~) [line number : 7]"));
}

TEST_F(LineExpressionTest, EndlessParenthesesAreRefused) {
  RunOnBigStack([this] {
    EXPECT_EQ(ThrownBy([this] { Read(std::string(100000, '(')); }),
              "Expression with parentheses nested too deeply in line: pipe @7");
  });
}

TEST_F(LineExpressionTest, MissingOperandIsAnErrorAndStopsTheReading) {
  EXPECT_EQ(ThrownBy([this] { Read("ANDPORT +"); }), "Unknown Port Node! @7");
  EXPECT_THAT(Errors(), ElementsAre("Unknown Port Node! () [line number : 7]"));
}

TEST_F(LineExpressionTest, TemporalOperatorsEndTheExpression) {
  EXPECT_EQ(LogicOf("ANDPORT & ORPORT"), "And'ANDPORT'");
}

TEST_F(LineExpressionTest, MissingBracketStopsTheReading) {
  EXPECT_EQ(ThrownBy([this] { Read("(ANDPORT"); }),
            "Match Error #1: Ran out of tokens. Expected: \")\" @7");
}

}  // namespace
}  // namespace FTS
