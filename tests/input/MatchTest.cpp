#include <memory>
#include <string>

#include "input/Parser.h"
#include "model/Model.h"
#include "model/VtnException.h"
#include "support/CaseName.h"
#include "support/ProcessStateTest.h"
#include "support/TokenText.h"

namespace FTS {
namespace {

/// A parser that stands before the tokens of a text.
class TextParser : public Parser {
 public:
  explicit TextParser(const std::string& text, int line = 1) : Parser("text") {
    expressionLexer.SetText(text, line);
    expressionLexer.ReadAhead();
    currentLexer = &expressionLexer;
  }

  std::unique_ptr<Model> Parse() override { return nullptr; }

  TokenPtr Head() const { return currentLexer->Current(); }
};

struct MatchCase {
  const char* name;
  const char* text;
  TokenType expected;
  const char* message;
};

class MatchTest : public ProcessStateTest {};

TEST_F(MatchTest, MatchingTokenIsConsumedAndReturned) {
  TextParser parser("A + B");
  EXPECT_EQ(TextOf(*parser.Match(TokenType::ID)), "<ID>'A'");
  EXPECT_EQ(TextOf(*parser.Match(TokenType::PLUS)), "PLUS'+'");
  EXPECT_EQ(TextOf(*parser.Match(TokenType::ID)), "<ID>'B'");
  EXPECT_EQ(parser.Head(), nullptr);
}

TEST_F(MatchTest, OtherTokenIsNotConsumed) {
  TextParser parser("A");
  EXPECT_THROW(parser.Match(TokenType::NUMBER), ParseException);
  EXPECT_EQ(TextOf(*parser.Head()), "<ID>'A'");
}

TEST_F(MatchTest, ExceptionCarriesTheLineOfReading) {
  TextParser parser("A\nB\nC", 10);
  parser.Match(TokenType::ID);
  try {
    parser.Match(TokenType::NUMBER);
    FAIL() << "No exception";
  } catch (const ParseException& exception) {
    EXPECT_EQ(exception.GetLine(), 11);
  }
}

class MatchErrorTest : public ProcessStateTest, public ::testing::WithParamInterface<MatchCase> {};

TEST_P(MatchErrorTest, OtherTokenIsNamed) {
  TextParser parser(GetParam().text);
  try {
    parser.Match(GetParam().expected);
    FAIL() << "No exception";
  } catch (const ParseException& exception) {
    EXPECT_EQ(exception.GetMessage(), GetParam().message);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Texts, MatchErrorTest,
    ::testing::Values(
        MatchCase{"OutOfTokens", "", TokenType::RightParenthesis,
                  "Match Error #1: Ran out of tokens. Expected: \")\""},
        MatchCase{"Identifier", "pump", TokenType::NUMBER,
                  "Match Error #2: Incorrect Token type - found String/ID. Expected: \"<NUMBER>\" "
                  "but found: \"<ID>\" with value: \"pump\""},
        MatchCase{"String", "\"a pump\"", TokenType::ID,
                  "Match Error #2: Incorrect Token type - found String/ID. Expected: \"<ID>\" but "
                  "found: \"<STRING>\" with value: \"a pump\""},
        MatchCase{"Number", "42", TokenType::MINUS,
                  "Match Error #3: Incorrect Token type - found Number. Expected: \"MINUS\" but "
                  "found: \"<NUMBER>\" with value: \"42\""},
        MatchCase{"Keyword", "OR", TokenType::ID,
                  "Match Error #4: Incorrect Token type. Expected: \"<ID>\" but found: \"OR\""},
        MatchCase{"Symbol", "(", TokenType::ID,
                  "Match Error #4: Incorrect Token type. Expected: \"<ID>\" but found: \"(\""}),
    CaseName);

TEST_F(MatchTest, StringMatchTakesTypeAndText) {
  TextParser parser("A B");
  EXPECT_EQ(TextOf(*parser.StringMatch(TokenType::ID, "A")), "<ID>'A'");
  EXPECT_EQ(TextOf(*parser.Head()), "<ID>'B'");
}

class StringMatchErrorTest : public ProcessStateTest,
                             public ::testing::WithParamInterface<MatchCase> {};

TEST_P(StringMatchErrorTest, OtherTokenIsNamed) {
  TextParser parser(GetParam().text);
  try {
    parser.StringMatch(GetParam().expected, "pump");
    FAIL() << "No exception";
  } catch (const ParseException& exception) {
    EXPECT_EQ(exception.GetMessage(), GetParam().message);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Texts, StringMatchErrorTest,
    ::testing::Values(
        MatchCase{"OutOfTokens", "", TokenType::ID,
                  "String Match Error #1. Ran out of Tokens! Expected: \"<ID>\" Received: \"\""},
        MatchCase{"OtherText", "valve", TokenType::ID,
                  "String Match Error #1: Incorrect Token type - found String/ID. Expected: "
                  "\"<ID>\" but found: \"<ID>\" with value: \"valve\""},
        MatchCase{"OtherType", "pump", TokenType::STRING,
                  "String Match Error #1: Incorrect Token type - found String/ID. Expected: "
                  "\"<STRING>\" but found: \"<ID>\" with value: \"pump\""},
        MatchCase{"Number", "42", TokenType::ID,
                  "String Match Error #2: Incorrect Token type - found Number. Expected: \"<ID>\" "
                  "but found: \"<NUMBER>\" with value: \"42\""},
        MatchCase{"Symbol", "-", TokenType::ID,
                  "String Match Error #4: Incorrect Token type. Expected: \"<ID>\" but found: "
                  "\"MINUS\""}),
    CaseName);

}  // namespace
}  // namespace FTS
