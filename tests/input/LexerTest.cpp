#include <gmock/gmock.h>

#include "input/Lexer.h"
#include "model/VtnException.h"
#include "support/CaseName.h"
#include "support/ProcessStateTest.h"
#include "support/TemporaryFolder.h"
#include "support/TokenText.h"

namespace FTS {
namespace {

struct FileCase {
  const char* name;
  const char* text;
  const char* tokens;
};

class LexerTest : public ProcessStateTest {
 protected:
  void Open(const std::string& text) { lexer.Open(folder.Write("model.vtn", text)); }

  TemporaryFolder folder;
  Lexer lexer;
};

class LexerTextTest : public LexerTest, public ::testing::WithParamInterface<FileCase> {};

TEST_P(LexerTextTest, ReadsAs) {
  Open(GetParam().text);
  EXPECT_EQ(RestOf(lexer), GetParam().tokens) << GetParam().text;
}

INSTANTIATE_TEST_SUITE_P(
    Symbols, LexerTextTest,
    ::testing::Values(FileCase{"TextIsEmpty", "*+-/=<|&^()[]{}.,:",
                               "MULTIPLY'' PLUS'' MINUS'' DIVIDE'' EQUALS'' PAND'' POR'' SAND'' "
                               "XOR'' ('' )'' ['' ]'' {'' }'' .'' ,'' Colon''"},
                      FileCase{"SemicolonIsAPriorityAndToo", "A;B<C",
                               "<ID>'A' PAND'' <ID>'B' PAND'' <ID>'C'"},
                      FileCase{"SignForNotStartsNoToken", "\xAC~!", "NOT'' NOT''"},
                      FileCase{"OtherCharactersAreSkipped", "#A @ B\\\r\n", "<ID>'A' <ID>'B'"}),
    CaseName);

INSTANTIATE_TEST_SUITE_P(
    WordsAndNumbers, LexerTextTest,
    ::testing::Values(FileCase{"PointSlashAndBracketsStayInside", "A.b/c[1]_x", "<ID>'A.b/c[1]_x'"},
                      FileCase{"DecimalIsThreeTokens", "12.5", "<NUMBER>'12' .'' <NUMBER>'5'"},
                      FileCase{"DigitBeforeAWordIsANumber", "2A", "<NUMBER>'2' <ID>'A'"},
                      FileCase{"Empty", "", ""}),
    CaseName);

INSTANTIATE_TEST_SUITE_P(
    Strings, LexerTextTest,
    ::testing::Values(
        FileCase{"EscapedQuoteStays", R"("a\"b")", "<STRING>'a\"b'"},
        FileCase{"OtherBackslashesAreDropped", R"("C:\dir\\x")", "<STRING>'C:dirx'"},
        FileCase{"BackslashBehindABackslashEscapesTheQuote", R"("a\\"b")", "<STRING>'a\"b'"},
        FileCase{"LineEndStaysWithoutItsCarriageReturn", "\"a\nb\r\nc\"", "<STRING>'a\nb\nc'"},
        FileCase{"EmptyString", "\"\"", "<STRING>''"},
        FileCase{"EndOfFileEndsIt", "\"a\\", "<STRING>'a'"}),
    CaseName);

INSTANTIATE_TEST_SUITE_P(
    Keywords, LexerTextTest,
    ::testing::Values(
        FileCase{"OperatorsInBothCases", "SAND sand PAND pand POR por XOR xor NOT not",
                 "SAND'SAND' SAND'sand' PAND'PAND' PAND'pand' POR'POR' POR'por' XOR'XOR' "
                 "XOR'xor' NOT'NOT' NOT'not'"},
        FileCase{"OnlyCapitalsAreExternal", "EXTERNAL External external",
                 "GotoNode'EXTERNAL' <ID>'External' <ID>'external'"},
        FileCase{"ShortBlockTypeIsAName", "H_", "<ID>'H_'"},
        FileCase{"Costs", "Cost cost", "Cost'Cost' Cost'cost'"},
        FileCase{"Sections", "Hazards Hazard Perspectives Perspective Allocations Allocation",
                 "Hazards'Hazards' Hazard'Hazard' Perspectives'Perspectives' "
                 "Perspective'Perspective' Allocations'Allocations' Allocation'Allocation'"},
        FileCase{"CommonCauses", "Actual Potential CCFs CCF ACCF",
                 "Actual'Actual' Potential'Potential' CCFs'CCFs' CCF'CCF' ACCF'ACCF'"},
        FileCase{"Blocks", "Inport SubSystem Branch SrcBlock SrcPort DstBlock DstPort",
                 "Inport'Inport' SubSystem'SubSystem' Branch'Branch' SrcBlock'SrcBlock' "
                 "SrcPort'SrcPort' DstBlock'DstBlock' DstPort'DstPort'"},
        FileCase{"Objectives",
                 "Objectives Objective Reliability Safety Risk Unavailability Maximise Minimise",
                 "Objectives'Objectives' Objective'Objective' Reliability'Reliability' "
                 "Safety'Safety' Risk'Risk' Unavailability'Unavailability' Maximise'Maximise' "
                 "Minimise'Minimise'"},
        FileCase{"Optimisation",
                 "OptimisationParams MaxGenerations DefaultMaxReplicants MaxReplicants "
                 "IncludeInOptimisation ExcludeFromOptimisation",
                 "OptimisationParams'OptimisationParams' MaxGenerations'MaxGenerations' "
                 "DefaultMaxReplicants'DefaultMaxReplicants' MaxReplicants'MaxReplicants' "
                 "IncludeInOptimisation'IncludeInOptimisation' "
                 "ExcludeFromOptimisation'ExcludeFromOptimisation'"},
        FileCase{"Failures",
                 "RiskTime MTTFMTTR SafetyRequirement Logic FailureDistribution Percentage "
                 "FailureClassAssignments FailureClass",
                 "RiskTime'RiskTime' MTTFMTTR'MTTFMTTR' SafetyRequirement'SafetyRequirement' "
                 "Logic'Logic' FailureDistribution'FailureDistribution' Percentage'Percentage' "
                 "FailureClassAssignments'FailureClassAssignments' FailureClass'FailureClass'"},
        FileCase{"Tools", "SimulationX Matlab", "SimulationX'SimulationX' Matlab'Matlab'"},
        FileCase{"KeywordsWithoutANameOfTheirType", "DiagnosticCoverage NormalEvents NormalEvent",
                 "'DiagnosticCoverage' 'NormalEvents' 'NormalEvent'"}),
    CaseName);

INSTANTIATE_TEST_SUITE_P(
    OpenWords, LexerTextTest,
    ::testing::Values(
        FileCase{"BasicEvents", "Basic Event Basic Events",
                 "Basic Event'BasicEvent' Basic Events'BasicEvents'"},
        FileCase{"OutputDeviations", "Output Deviation Output Deviations",
                 "Output Deviation'OutputDeviation' Output Deviations'OutputDeviations'"},
        FileCase{"NormalEvents", "Normal Event Normal Events", "'NormalEvent' 'NormalEvents'"},
        FileCase{"Linetype", "Linetype Directed", "Linetype Directed'LinetypeDirected'"},
        FileCase{"WrittenTogether", "BasicEvent LinetypeDirected",
                 "Basic Event'BasicEvent' Linetype Directed'LinetypeDirected'"},
        FileCase{"MoreBlanksBetween", "Basic \n  Event", "Basic Event'BasicEvent'"},
        FileCase{"JoinedWordThatIsNoKeyword", "Basic Valve", "<ID>'BasicValve'"},
        FileCase{"CharacterBehindIsDropped", "Output(A)", "<ID>'OutputA' )''"},
        FileCase{"SymbolBetweenEndsTheWord", "Output - A", "MINUS'' <ID>'A'"},
        FileCase{"NumberBehindStandsAlone", "Output 12", "<NUMBER>'12'"},
        FileCase{"StringBehindStandsAlone", "Output \"x\"", "<STRING>'x'"},
        FileCase{"AtTheEndItGivesNothing", "A Normal", "<ID>'A'"}),
    CaseName);

std::string MessageOfOpening(Lexer& lexer, const std::string& name) {
  try {
    lexer.Open(name);
  } catch (const VtnException& exception) {
    return exception.GetMessage();
  }
  return "no exception";
}

TEST_F(LexerTest, FileThatIsNotThereIsRefused) {
  EXPECT_EQ(MessageOfOpening(lexer, "not/there.vtn"),
            "The parser could not find the specified model file: not/there.vtn");
}

TEST_F(LexerTest, FolderIsRefused) {
  const std::string path = folder.Path();
  EXPECT_EQ(MessageOfOpening(lexer, path),
            "The parser could not find the specified model file: " + path);
}

TEST_F(LexerTest, LinesAreCountedFromOne) {
  Open("A\r\nB\n\"c\nd\" E");
  EXPECT_EQ(lexer.ReadToken()->line, 1u);
  EXPECT_EQ(lexer.ReadToken()->line, 2u);
  EXPECT_EQ(lexer.ReadToken()->line, 4u);
  EXPECT_EQ(lexer.LineNumber(), 4);
}

TEST_F(LexerTest, LineEndBehindAnOpenWordIsCounted) {
  Open("Basic\nEvent");
  EXPECT_EQ(lexer.ReadToken()->line, 2u);
}

TEST_F(LexerTest, OpenStartsOverAtTheTop) {
  Open("A\nB\nC");
  lexer.ReadAhead();
  EXPECT_TRUE(lexer.Advance(TokenType::ID));
  EXPECT_EQ(lexer.Peek(9), nullptr);
  Open("A\nB\nC");
  EXPECT_EQ(lexer.LineNumber(), 1);
  EXPECT_EQ(lexer.Current(), nullptr);
  lexer.ReadAhead();
  EXPECT_EQ(TextOf(*lexer.Current()), "<ID>'A'");
}

TEST_F(LexerTest, InputIsUsedUpOnceReadingMeetsItsEnd) {
  Open("A");
  EXPECT_TRUE(lexer.HasInput());
  EXPECT_NE(lexer.ReadToken(), nullptr);
  EXPECT_EQ(lexer.ReadToken(), nullptr);
  EXPECT_FALSE(lexer.HasInput());
}

}  // namespace
}  // namespace FTS
