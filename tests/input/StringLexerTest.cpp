#include <gmock/gmock.h>

#include "input/StringLexer.h"
#include "support/CaseName.h"
#include "support/ProcessStateTest.h"
#include "support/TokenText.h"

namespace FTS {
namespace {

struct TextCase {
  const char* name;
  const char* text;
  const char* tokens;
};

class StringLexerTest : public ProcessStateTest {
 protected:
  void Start(const std::string& text, int line = 1) {
    lexer.SetText(text, line);
    lexer.ReadAhead();
  }

  StringLexer lexer;
};

class StringLexerTextTest : public StringLexerTest,
                            public ::testing::WithParamInterface<TextCase> {};

TEST_P(StringLexerTextTest, ReadsAs) {
  lexer.SetText(GetParam().text, 1);
  EXPECT_EQ(RestOf(lexer), GetParam().tokens) << GetParam().text;
}

INSTANTIATE_TEST_SUITE_P(
    Symbols, StringLexerTextTest,
    ::testing::Values(
        TextCase{"Arithmetic", "*+-/=", "MULTIPLY'*' PLUS'+' MINUS'-' DIVIDE'/' EQUALS'='"},
        TextCase{"Temporal", "<|&^", "PAND'<' POR'|' SAND'&' XOR'^'"},
        TextCase{"Not", "~!\xAC", "NOT'~' NOT'!' NOT'\xAC'"},
        TextCase{"Brackets", "()[]{}", "('(' )')' ['[' ]']' {'{' }'}'"},
        TextCase{"Punctuation", ".,:", ".'.' ,',' Colon':'"},
        TextCase{"SemicolonStartsNoToken", "A;B", "<ID>'A' <ID>'B'"},
        TextCase{"OtherCharactersAreSkipped", "#A @ B\\%>'?\t\r\x80\xE9", "<ID>'A' <ID>'B'"}),
    CaseName);

INSTANTIATE_TEST_SUITE_P(
    Words, StringLexerTextTest,
    ::testing::Values(TextCase{"PointSlashAndBracketsStayInside", "A.b/c[1]_x", "<ID>'A.b/c[1]_x'"},
                      TextCase{"UnderscoreStartsAWord", "_a1", "<ID>'_a1'"},
                      TextCase{"PointStartsNoWord", ".a", ".'.' <ID>'a'"},
                      TextCase{"EndingCharacterIsPutBack", "A+B-C",
                               "<ID>'A' PLUS'+' <ID>'B' MINUS'-' <ID>'C'"},
                      TextCase{"LetterBeyondAsciiEndsAWord", "caf\xE9s", "<ID>'caf' <ID>'s'"},
                      TextCase{"DigitBeforeAWordIsANumber", "2A", "<NUMBER>'2' <ID>'A'"},
                      TextCase{"Empty", "", ""}, TextCase{"BlanksOnly", " \t\n", ""}),
    CaseName);

INSTANTIATE_TEST_SUITE_P(
    Numbers, StringLexerTextTest,
    ::testing::Values(TextCase{"DecimalIsThreeTokens", "12.5", "<NUMBER>'12' .'.' <NUMBER>'5'"},
                      TextCase{"PowerOfTen", "1e-3", "<NUMBER>'1' E'e' MINUS'-' <NUMBER>'3'"},
                      TextCase{"PowerOfTenWithoutSign", "1E3", "<NUMBER>'1' <ID>'E3'"}),
    CaseName);

INSTANTIATE_TEST_SUITE_P(
    Strings, StringLexerTextTest,
    ::testing::Values(TextCase{"Plain", "\"a b\"c", "<STRING>'a b' <ID>'c'"},
                      TextCase{"EmptyString", "\"\"", "<STRING>''"},
                      TextCase{"BackslashIsOrdinary", "\"a\\\"b", "<STRING>'a\\' <ID>'b'"},
                      TextCase{"LineEndIsDropped", "\"a\nb\r\nc\"", "<STRING>'abc'"},
                      TextCase{"EndOfInputEndsIt", "\"a b", "<STRING>'a b'"}),
    CaseName);

INSTANTIATE_TEST_SUITE_P(
    Keywords, StringLexerTextTest,
    ::testing::Values(
        TextCase{"BothCases", "OR or AND and", "OR'OR' OR'or' AND'AND' AND'and'"},
        TextCase{"OtherCasesAreNames", "Or And", "<ID>'Or' <ID>'And'"},
        TextCase{"OperatorsInSmallLetters", "sand pand por xor not",
                 "SAND'sand' PAND'pand' POR'por' XOR'xor' NOT'not'"},
        TextCase{"OperatorsInCapitalsAreNames", "SAND PAND POR XOR NOT",
                 "<ID>'SAND' <ID>'PAND' <ID>'POR' <ID>'XOR' <ID>'NOT'"},
        TextCase{"Gotos", "GlobalGoto LocalGoto FromAllocation",
                 "GlobalGoto'GlobalGoto' LocalGoto'LocalGoto' FromAllocation'FromAllocation'"},
        TextCase{"External", "EXTERNAL External external",
                 "GotoNode'EXTERNAL' GotoNode'External' GotoNode'external'"},
        TextCase{"ShortBlockType", "H_ H_BlockType", "H_BlockType'H_' H_BlockType'H_BlockType'"},
        TextCase{"Ports", "DEFAULT Default ORPORT ANDPORT OUTPUTPORT OUTPUT",
                 "Default'DEFAULT' Default'Default' Or Port'ORPORT' And Port'ANDPORT' Output "
                 "Port'OUTPUTPORT' Output'OUTPUT'"},
        TextCase{"SingleLetters", "E e t", "E'E' E'e' Time't'"},
        TextCase{"Times", "Time time", "Time'Time' Time'time'"},
        TextCase{"Types", "ComponentType Componenttype Type type",
                 "Component type'ComponentType' Component type'Componenttype' Type'Type' "
                 "Type'type'"},
        TextCase{"KeywordInsideAWordIsNone", "ORs E.out", "<ID>'ORs' <ID>'E.out'"},
        TextCase{"KeywordsOfFilesAreNames", "Hazard Risk CCF Unavailability cost NormalEvent",
                 "<ID>'Hazard' <ID>'Risk' <ID>'CCF' <ID>'Unavailability' <ID>'cost' "
                 "<ID>'NormalEvent'"}),
    CaseName);

INSTANTIATE_TEST_SUITE_P(
    OpenWords, StringLexerTextTest,
    ::testing::Values(TextCase{"LinetypeJoinsTheNextWord", "Linetype Directed",
                               "Linetype Directed'LinetypeDirected'"},
                      TextCase{"LinetypeJoinsAnyWord", "Linetype \n X", "<ID>'LinetypeX'"},
                      TextCase{"CharacterBehindIsKept", "Linetype(A", "('(' <ID>'A'"},
                      TextCase{"AtTheEndItGivesNothing", "A Linetype", "<ID>'A'"},
                      TextCase{"WordsOfFilesAreNames", "Basic Event", "<ID>'Basic' <ID>'Event'"},
                      TextCase{"NormalAndOutputAreNames", "Normal Output",
                               "<ID>'Normal' <ID>'Output'"}),
    CaseName);

TEST_F(StringLexerTest, EmptyTextHasNoTokenAtAll) {
  Start("");
  EXPECT_EQ(lexer.Current(), nullptr);
  EXPECT_EQ(lexer.Peek(0), nullptr);
  EXPECT_FALSE(lexer.NextIs(TokenType::ID));
  EXPECT_FALSE(lexer.Advance(TokenType::ID));
  EXPECT_FALSE(lexer.HasInput());
}

TEST_F(StringLexerTest, HeadIsTheFirstToken) {
  Start("A + B");
  EXPECT_EQ(TextOf(*lexer.Current()), "<ID>'A'");
  EXPECT_TRUE(lexer.NextIs(TokenType::ID));
  EXPECT_FALSE(lexer.NextIs(TokenType::PLUS));
}

TEST_F(StringLexerTest, AdvanceTakesOnlyTheGivenType) {
  Start("A + B");
  EXPECT_FALSE(lexer.Advance(TokenType::PLUS));
  EXPECT_EQ(TextOf(*lexer.Current()), "<ID>'A'");
  EXPECT_TRUE(lexer.Advance(TokenType::ID));
  EXPECT_EQ(TextOf(*lexer.Current()), "PLUS'+'");
}

TEST_F(StringLexerTest, AdvanceBehindTheLastTokenLeavesNone) {
  Start("A");
  EXPECT_TRUE(lexer.Advance(TokenType::ID));
  EXPECT_EQ(lexer.Current(), nullptr);
  EXPECT_FALSE(lexer.Advance(TokenType::ID));
}

TEST_F(StringLexerTest, PeekLooksAsFarAsTheInputReaches) {
  Start("A + B");
  EXPECT_EQ(TextOf(*lexer.Peek(0)), "<ID>'A'");
  EXPECT_EQ(TextOf(*lexer.Peek(2)), "<ID>'B'");
  EXPECT_EQ(TextOf(*lexer.Peek(1)), "PLUS'+'");
  EXPECT_EQ(lexer.Peek(3), nullptr);
}

TEST_F(StringLexerTest, TokensThatWereLookedAtStayInOrder) {
  Start("A - B . C");
  lexer.Peek(3);
  std::string order;
  while (const TokenPtr head = lexer.Current()) {
    order += head->text;
    EXPECT_TRUE(lexer.Advance(head->type));
  }
  EXPECT_EQ(order, "A-B.C");
}

TEST_F(StringLexerTest, LinesAreCountedFromTheGivenOne) {
  Start("A\nB\n\nC", 7);
  EXPECT_EQ(lexer.Current()->line, 7u);
  EXPECT_EQ(lexer.Peek(1)->line, 8u);
  EXPECT_EQ(lexer.Peek(2)->line, 10u);
  EXPECT_EQ(lexer.LineNumber(), 10);
}

TEST_F(StringLexerTest, LineNumberIsThatOfReadingNotOfTheHead) {
  Start("A\nB");
  EXPECT_EQ(lexer.LineNumber(), 1);
  lexer.Peek(1);
  EXPECT_EQ(lexer.LineNumber(), 2);
  EXPECT_EQ(lexer.Current()->line, 1u);
}

TEST_F(StringLexerTest, LinesInsideStringsAreCounted) {
  Start("\"a\n\nb\" C");
  EXPECT_EQ(lexer.Current()->line, 3u);
}

TEST_F(StringLexerTest, SetTextForgetsWhatWasBefore) {
  Start("A B C\nD", 3);
  lexer.Peek(5);
  Start("X", 1);
  EXPECT_EQ(TextOf(*lexer.Current()), "<ID>'X'");
  EXPECT_EQ(lexer.LineNumber(), 1);
  EXPECT_EQ(lexer.Peek(1), nullptr);
}

TEST_F(StringLexerTest, LongTextsAreReadToTheirEnd) {
  constexpr int Words = 200000;
  std::string text;
  for (int i = 0; i < Words; ++i) text += "event" + std::to_string(i) + " + ";
  Start(text);
  int count = 0;
  while (const TokenPtr head = lexer.Current()) {
    ++count;
    ASSERT_TRUE(lexer.Advance(head->type));
  }
  EXPECT_EQ(count, 2 * Words);
}

}  // namespace
}  // namespace FTS
