#include <gmock/gmock.h>

#include <string>

#include "faulttree/DeviationProxies.h"
#include "faulttree/GotoNode.h"
#include "input/ExpressionTest.h"
#include "model/Deviation.h"
#include "platform/BigStack.h"
#include "support/CaseName.h"

namespace FTS {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class OutputExpressionTest : public ExpressionTest {
 protected:
  std::string StructureOf(const std::string& text) { return StructureText(Output(text)); }
  std::string LogicOf(const std::string& text) { return LogicText(Output(text)); }

  const GotoNode& Goto(const std::string& text) {
    return dynamic_cast<const GotoNode&>(*(last = Output(text)));
  }

  std::shared_ptr<FaultTreeNode> last;
};

struct StructureCase {
  const char* name;
  const char* text;
  const char* structure;
};

class OutputStructureTest : public OutputExpressionTest,
                            public ::testing::WithParamInterface<StructureCase> {};

TEST_P(OutputStructureTest, IsReadAs) {
  EXPECT_EQ(StructureOf(GetParam().text), GetParam().structure);
  EXPECT_THAT(Errors(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Expressions, OutputStructureTest,
    ::testing::Values(
        StructureCase{"OneNameGivesNoGate", "A", "A"},
        StructureCase{"ChainGivesOneFlatGate", "A + B + C", "Or(A, B, C)"},
        StructureCase{"SpellingsOfOneOperatorMix", "A + B OR C or D", "Or(A, B, C, D)"},
        StructureCase{"AndIsWrittenInThreeWays", "A AND B and C * D", "And(A, B, C, D)"},
        StructureCase{"AndBindsTighterThanOr", "A + B * C", "Or(A, And(B, C))"},
        StructureCase{"OrAfterAndTakesTheAnd", "A * B + C", "Or(And(A, B), C)"},
        StructureCase{"XorBindsTighterThanOr", "A + B ^ C", "Or(A, XOr(B, C))"},
        StructureCase{"AndBindsTighterThanXor", "A xor B * C", "XOr(A, And(B, C))"},
        StructureCase{"PorBindsTighterThanAnd", "A * B por C", "And(A, POr(B, C))"},
        StructureCase{"PandBindsTighterThanPor", "A < B | C", "POr(PAnd(A, B), C)"},
        StructureCase{"SandBindsTighterThanPand", "A pand B & C", "PAnd(A, SAnd(B, C))"},
        StructureCase{"AllLevelsNest", "A + B ^ C * D | E < N & P",
                      "Or(A, XOr(B, And(C, POr(D, PAnd(E, SAnd(N, P))))))"},
        StructureCase{"AllLevelsNestBackwards", "A & B < C | D * E ^ N + P",
                      "Or(XOr(And(POr(PAnd(SAnd(A, B), C), D), E), N), P)"},
        StructureCase{"NotTakesOnePrimary", "not A + B", "Or(Not(A), B)"},
        StructureCase{"NotIsWrittenAsTilde", "~A", "Not(A)"},
        StructureCase{"NotIsWrittenAsExclamationMark", "!A", "Not(A)"},
        StructureCase{"NotIsWrittenAsLatinOneSign",
                      "\xAC"
                      "A",
                      "Not(A)"},
        StructureCase{"NotStandsBehindAnOperator", "A * ~B", "And(A, Not(B))"},
        StructureCase{"ParenthesesGiveAProxy", "(A)", "NullOp(A)"},
        StructureCase{"ParenthesesGroup", "(A + B) * C", "And(NullOp(Or(A, B)), C)"},
        StructureCase{"NegatedParentheses", "~(A * B)", "Not(NullOp(And(A, B)))"},
        StructureCase{"SmallEIsTheNameE", "e", "E"}, StructureCase{"CapitalEIsTheNameE", "E", "E"},
        StructureCase{"NormalEventIsFound", "N", "N"},
        StructureCase{"PotentialCommonCauseIsFound", "P", "P"},
        StructureCase{"TextBehindTheExpressionIsIgnored", "A B", "A"},
        StructureCase{"ClosingParenthesisTooManyIsIgnored", "A ) + B", "A"}),
    CaseName);

TEST_F(OutputExpressionTest, GatesAreNamedAfterTheLabel) {
  EXPECT_EQ(LogicOf("A + B ^ C * D | A < B & ~C"),
            "Or'OR [x]'(FailureMode'A', XOr'XOR [x]'(FailureMode'B', And'AND [x]'(FailureMode'C', "
            "POr'POR [x]'(FailureMode'D', PAnd'PAND [x]'(FailureMode'A', SAnd'SAND [x]'("
            "FailureMode'B', Not'NOT [x]'(FailureMode'C')))))))");
}

TEST_F(OutputExpressionTest, ParenthesesAreNamedSubExpression) {
  EXPECT_EQ(LogicOf("(A)"), "NullOp'Sub-Expression'(FailureMode'A')");
}

TEST_F(OutputExpressionTest, EventsAreSharedAndNotCopied) {
  const auto gate = Output("A + A");
  ASSERT_EQ(gate->GetChildCount(), 2);
  EXPECT_EQ(gate->GetChild(0), pump->currentImplementation->basicEvents.at("A"));
  EXPECT_EQ(gate->GetChild(1), gate->GetChild(0));
}

TEST_F(OutputExpressionTest, PotentialCommonCauseHidesAnEventOfItsName) {
  pump->currentImplementation->AddBasicEvent(
      std::make_shared<BasicEvent>("P", parser.model.get(), true));
  EXPECT_EQ(LogicOf("P"), "PCCF'P'");
}

TEST_F(OutputExpressionTest, ReadingMakesOwnerTheCurrentOne) {
  Output("A");
  EXPECT_EQ(parser.component, pump);
  EXPECT_EQ(parser.implementation, pump->currentImplementation);
  EXPECT_EQ(parser.currentLexer, nullptr);
}

TEST_F(OutputExpressionTest, EmptyTextGivesNothing) {
  EXPECT_EQ(LogicOf(""), "nothing");
  EXPECT_THAT(Errors(), ElementsAre("Unknown node type! [line number : 1]"));
}

// Input deviations.

TEST_F(OutputExpressionTest, InputDeviationIsNamedByItsFullName) {
  EXPECT_EQ(LogicOf("Omission-in"), "InputDeviation'Omission-Sys::Pump.in'");
}

TEST_F(OutputExpressionTest, InputDeviationProxyKnowsDeviationAndLine) {
  const auto node = Output("\nOmission-in");
  const auto& proxy = dynamic_cast<const InputDeviationProxy&>(*node);
  EXPECT_EQ(proxy.line, 2);
  EXPECT_EQ(proxy.deviation, pump->currentImplementation->inputDeviationRecords.at("Omission-in"));
}

TEST_F(OutputExpressionTest, InputDeviationsShareOneRecordInProxiesOfTheirOwn) {
  const auto gate = Output("Omission-in + Omission-in");
  const auto& first = dynamic_cast<const InputDeviationProxy&>(*gate->GetChild(0));
  const auto& second = dynamic_cast<const InputDeviationProxy&>(*gate->GetChild(1));
  EXPECT_NE(first.GetId(), second.GetId());
  EXPECT_EQ(first.deviation, second.deviation);
  EXPECT_EQ(pump->currentImplementation->inputDeviationRecords.size(), 1U);
  EXPECT_EQ(pump->currentImplementation->inputDeviations.size(), 1U);
  EXPECT_EQ(pump->currentImplementation->inputDeviations.begin()->second.get(), &first);
}

TEST_F(OutputExpressionTest, OnlyThePartBehindTheLastPointNamesThePort) {
  EXPECT_EQ(LogicOf("Omission-Plant.Pump.in"), "InputDeviation'Omission-Sys::Pump.in'");
}

TEST_F(OutputExpressionTest, PortMayBeCalledLikeAKeyword) {
  pump->AddPort(std::make_shared<Port>("time", pump, parser.model.get()));
  EXPECT_EQ(LogicOf("Omission-time"), "InputDeviation'Omission-Sys::Pump.time'");
}

TEST_F(OutputExpressionTest, LetterEIsAFailureClassAsWritten) {
  EXPECT_EQ(LogicOf("e-in"), "InputDeviation'e-Sys::Pump.in'");
}

TEST_F(OutputExpressionTest, InputDeviationTellsTheModelOfItsClass) {
  Output("Omission-in + Value-in2 + Omission-in2");
  EXPECT_THAT(parser.model->failureClasses, ElementsAre("Omission", "Value"));
}

TEST_F(OutputExpressionTest, NothingIsEnteredInThePort) {
  Output("Omission-in");
  EXPECT_TRUE(pump->FindPort("in")->inputProxies.empty());
}

TEST_F(OutputExpressionTest, MissingPortIsAnErrorAndReadingGoesOn) {
  EXPECT_EQ(LogicOf("Omission-Plant.nowhere + A"), "Or'OR [x]'(FailureMode'A')");
  EXPECT_THAT(Errors(), ElementsAre("Port nowhere in component Sys::Pump not found! "
                                    "[line number : 1]"));
}

TEST_F(OutputExpressionTest, HyphenAtTheEndStopsTheReading) {
  EXPECT_EQ(ThrownBy([this] { Output("Omission-"); }),
            "Match Error #1: Ran out of tokens. Expected: \"<ID>\" @1");
}

TEST_F(OutputExpressionTest, LexerIsNoLongerCurrentBehindAnException) {
  EXPECT_THROW(Output("Omission-"), ParseException);
  EXPECT_EQ(parser.currentLexer, nullptr);
}

// Faults.

TEST_F(OutputExpressionTest, UnknownNameIsAnErrorAndReadingGoesOn) {
  EXPECT_EQ(StructureOf("Z + A + Y + B"), "Or(A, B)");
  EXPECT_THAT(Errors(),
              ElementsAre("Basic event Z is referred to in an output deviation but does not exist "
                          "in component Sys::Pump [line number : 1]",
                          "Basic event Y is referred to in an output deviation but does not exist "
                          "in component Sys::Pump [line number : 1]"));
}

TEST_F(OutputExpressionTest, UnknownNameInAGateWithoutOtherOperandGivesNothing) {
  EXPECT_EQ(LogicOf("Z + Y"), "nothing");
  EXPECT_EQ(LogicOf("~Z"), "nothing");
  EXPECT_EQ(LogicOf("(Z)"), "nothing");
}

TEST_F(OutputExpressionTest, CapitalWordsOfTemporalOperatorsAreNames) {
  EXPECT_EQ(LogicOf("PAND"), "nothing");
  EXPECT_THAT(Errors(), ElementsAre("Basic event PAND is referred to in an output deviation but "
                                    "does not exist in component Sys::Pump [line number : 1]"));
}

TEST_F(OutputExpressionTest, PortWithoutClassIsAnErrorAndReadingGoesOn) {
  EXPECT_EQ(StructureOf("-in + A"), "Or(A)");
  EXPECT_THAT(Errors(), ElementsAre("Possible input deviation without failure class. -in "
                                    "[line number : 1]"));
}

TEST_F(OutputExpressionTest, HyphenAloneIsAnError) {
  EXPECT_EQ(LogicOf("-"), "nothing");
  EXPECT_THAT(Errors(),
              ElementsAre("Possible input deviation without failure class. - [line number : 1]"));
}

TEST_F(OutputExpressionTest, UnknownNodeLeavesItsToken) {
  EXPECT_EQ(StructureOf("A + + B"), "Or(A, B)");
  EXPECT_THAT(Errors(), ElementsAre("Unknown node type! [line number : 1]"));
}

TEST_F(OutputExpressionTest, UnknownNodeEndsTheExpressionUnlessItIsAnOperator) {
  EXPECT_EQ(StructureOf("A + 5 + B"), "Or(A)");
  EXPECT_THAT(Errors(), ElementsAre("Unknown node type! [line number : 1]"));
}

TEST_F(OutputExpressionTest, DoubleNegationIsNoExpression) {
  EXPECT_EQ(LogicOf("~~A"), "nothing");
  EXPECT_THAT(Errors(), ElementsAre("Unknown node type! [line number : 1]"));
}

TEST_F(OutputExpressionTest, OperatorAtTheEndLeavesOneOperand) {
  EXPECT_EQ(LogicOf("A *"), "And'AND [x]'(FailureMode'A')");
  EXPECT_THAT(Errors(), ElementsAre("Unknown node type! [line number : 1]"));
}

TEST_F(OutputExpressionTest, EmptyParenthesesGiveNothing) {
  EXPECT_EQ(LogicOf("()"), "nothing");
  EXPECT_THAT(Errors(), ElementsAre("Unknown node type! [line number : 1]"));
}

TEST_F(OutputExpressionTest, MissingParenthesisStopsTheReading) {
  EXPECT_EQ(ThrownBy([this] { Output("(A + B"); }),
            "Match Error #1: Ran out of tokens. Expected: \")\" @1");
  EXPECT_EQ(ThrownBy([this] { Output("(A B)"); }),
            "Match Error #2: Incorrect Token type - found String/ID. Expected: \")\" but found: "
            "\"<ID>\" with value: \"B\" @1");
  EXPECT_EQ(ThrownBy([this] { Output("(A 7)"); }),
            "Match Error #3: Incorrect Token type - found Number. Expected: \")\" but found: "
            "\"<NUMBER>\" with value: \"7\" @1");
  EXPECT_EQ(ThrownBy([this] { Output("(A ="); }),
            "Match Error #4: Incorrect Token type. Expected: \")\" but found: \"EQUALS\" @1");
}

TEST_F(OutputExpressionTest, MessagesCountLinesFromTheStartingLine) {
  parser.BuildOutputExpression("A +\nB +\nZ", pump->currentImplementation, "x", 40);
  EXPECT_THAT(Errors(), ElementsAre("Basic event Z is referred to in an output deviation but does "
                                    "not exist in component Sys::Pump [line number : 42]"));
}

// Allocations and gotos.

TEST_F(OutputExpressionTest, AllocationIsNamedByClassAndName) {
  EXPECT_EQ(LogicOf("FromAllocation(Omission-cpu)"), "ExternalDeviation'Omission-cpu'");
}

TEST_F(OutputExpressionTest, AllocationKeepsAPerspective) {
  EXPECT_EQ(LogicOf("FromAllocation(Omission-Hw::Cpu.core)"),
            "ExternalDeviation'Omission-Hw::Cpu.core'");
}

TEST_F(OutputExpressionTest, AllocationWithoutClassKeepsTheHyphen) {
  EXPECT_EQ(LogicOf("FromAllocation(cpu)"), "ExternalDeviation'-cpu'");
}

TEST_F(OutputExpressionTest, AllocationBelongsToTheComponent) {
  const auto node = Output("FromAllocation(Omission-cpu)");
  const auto& proxy = dynamic_cast<const ExportedDeviationProxy&>(*node);
  EXPECT_EQ(proxy.owner.lock(), pump);
  EXPECT_EQ(proxy.line, 1);
}

TEST_F(OutputExpressionTest, AllocationNeedsItsParentheses) {
  EXPECT_EQ(ThrownBy([this] { Output("FromAllocation Omission-cpu"); }),
            "Match Error #2: Incorrect Token type - found String/ID. Expected: \"(\" but found: "
            "\"<ID>\" with value: \"Omission\" @1");
  EXPECT_EQ(ThrownBy([this] { Output("FromAllocation(Omission-cpu"); }),
            "Match Error #1: Ran out of tokens. Expected: \")\" @1");
}

TEST_F(OutputExpressionTest, OneColonIsNotEnough) {
  EXPECT_EQ(
      ThrownBy([this] { Output("FromAllocation(Omission-Hw:cpu)"); }),
      "Match Error #2: Incorrect Token type - found String/ID. Expected: \"Colon\" but found: "
      "\"<ID>\" with value: \"cpu\" @1");
}

TEST_F(OutputExpressionTest, LocalGotoIsCompletedWithTheComponent) {
  EXPECT_EQ(Goto("LocalGoto(Omission-out)").name, "Omission-Sys::Pump.out");
}

TEST_F(OutputExpressionTest, LocalGotoReachesInside) {
  EXPECT_EQ(Goto("LocalGoto(Omission-Rotor.shaft)").name, "Omission-Sys::Pump.Rotor.shaft");
}

TEST_F(OutputExpressionTest, LocalGotoWithAPerspectiveIsComplete) {
  EXPECT_EQ(Goto("LocalGoto(Omission-Sys::Valve.out)").name, "Omission-Sys::Valve.out");
}

TEST_F(OutputExpressionTest, LocalGotoNeedsAClass) {
  EXPECT_EQ(ThrownBy([this] { Output("LocalGoto(out)"); }),
            "Match Error #4: Incorrect Token type. Expected: \"MINUS\" but found: \")\" @1");
}

TEST_F(OutputExpressionTest, GlobalGotoKeepsItsText) {
  EXPECT_EQ(Goto("GlobalGoto(Omission-Valve.out)").name, "Omission-Valve.out");
  EXPECT_EQ(Goto("GlobalGoto(Omission-Sys::Valve.out)").name, "Omission-Sys::Valve.out");
}

TEST_F(OutputExpressionTest, DefaultPerspectiveMayBeNamedThoughItIsAKeyword) {
  EXPECT_EQ(Goto("GlobalGoto(Omission-DEFAULT::Valve.out)").name, "Omission-DEFAULT::Valve.out");
  EXPECT_EQ(Goto("LocalGoto(Omission-Default::Valve.out)").name, "Omission-Default::Valve.out");
  EXPECT_EQ(LogicOf("FromAllocation(Omission-DEFAULT::Cpu.core)"),
            "ExternalDeviation'Omission-DEFAULT::Cpu.core'");
}

TEST_F(OutputExpressionTest, KeywordWithoutTwoColonsIsNoPerspective) {
  EXPECT_EQ(ThrownBy([this] { Output("GlobalGoto(Omission-DEFAULT)"); }),
            "Match Error #4: Incorrect Token type. Expected: \"<ID>\" but found: \"Default\" @1");
  EXPECT_EQ(ThrownBy([this] { Output("GlobalGoto(Omission-DEFAULT:x)"); }),
            "Match Error #4: Incorrect Token type. Expected: \"<ID>\" but found: \"Default\" @1");
}

TEST_F(OutputExpressionTest, LoneNameInAGlobalGotoIsALabel) {
  EXPECT_EQ(Goto("GlobalGoto(LossOfPower)").name, "LossOfPower");
  EXPECT_TRUE(parser.model->failureClasses.empty());
}

TEST_F(OutputExpressionTest, GotoBelongsToTheComponentAndKnowsItsLine) {
  const GotoNode& node = Goto("\n\nGlobalGoto(LossOfPower)");
  EXPECT_EQ(node.owner.lock(), pump);
  EXPECT_EQ(node.line, 3);
}

TEST_F(OutputExpressionTest, GotosAndAllocationsTellTheModelOfTheirClass) {
  Output("LocalGoto(Omission-out) + GlobalGoto(Value-Valve.out) + FromAllocation(Late-cpu)");
  EXPECT_THAT(parser.model->failureClasses, ElementsAre("Omission", "Value", "Late"));
}

// Size.

TEST_F(OutputExpressionTest, LongChainGivesOneFlatGate) {
  constexpr int Operands = 100000;
  std::string text = "A";
  for (int i = 1; i < Operands; ++i) text += " + B";
  const auto gate = Output(text);
  EXPECT_EQ(gate->GetChildCount(), Operands);
}

TEST_F(OutputExpressionTest, DeepParenthesesAreRead) {
  static constexpr std::size_t Depth = 20000;
  RunOnBigStack([this] {
    const std::string text = std::string(Depth, '(') + "A + B" + std::string(Depth, ')');
    std::shared_ptr<FaultTreeNode> node = Output(text);
    std::size_t depth = 0;
    while (node->name == "Sub-Expression") {
      node = node->GetChild(0);
      ++depth;
    }
    EXPECT_EQ(depth, Depth);
    EXPECT_EQ(StructureText(node), "Or(A, B)");
  });
  EXPECT_THAT(Errors(), IsEmpty());
}

TEST_F(OutputExpressionTest, EndlessParenthesesAreRefused) {
  static constexpr std::size_t Depth = 1000000;
  RunOnBigStack([this] {
    EXPECT_EQ(ThrownBy([this] { Output(std::string(Depth, '(')); }),
              "Expression with parentheses nested too deeply in component: Sys::Pump @1");
  });
}

}  // namespace
}  // namespace FTS
