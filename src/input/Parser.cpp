#include "input/Parser.h"

#include <cassert>

#include "model/Model.h"
#include "model/VtnException.h"

namespace FTS {
namespace {

/// What a message calls the token: the last keywords of files have no name of their own.
std::string NameOf(const Token& token) {
  const std::string_view name = TokenName(token.type);
  return name.empty() ? token.text : std::string(name);
}

std::string Expectation(TokenType expected, const Token& found) {
  return " Expected: \"" + std::string(TokenName(expected)) + "\" but found: \"" + NameOf(found) +
         "\"";
}

std::string Value(const Token& found) { return " with value: \"" + found.text + "\""; }

bool IsWord(const Token& token) {
  return token.type == TokenType::STRING || token.type == TokenType::ID;
}

}  // namespace

Parser::Parser(const std::string& fileName) { fileNameLexer.SetText(fileName, 1); }

Parser::~Parser() = default;

TokenPtr Parser::Match(TokenType expected) {
  assert(currentLexer && "Tokens are matched while an expression or a text file is read.");
  TokenPtr found = currentLexer->Current();
  if (currentLexer->Advance(expected)) return found;

  const int line = currentLexer->LineNumber();
  if (!found) {
    throw ParseException(
        "Match Error #1: Ran out of tokens. Expected: \"" + std::string(TokenName(expected)) + "\"",
        line);
  }
  if (IsWord(*found)) {
    throw ParseException("Match Error #2: Incorrect Token type - found String/ID." +
                             Expectation(expected, *found) + Value(*found),
                         line);
  }
  if (found->type == TokenType::NUMBER) {
    throw ParseException("Match Error #3: Incorrect Token type - found Number." +
                             Expectation(expected, *found) + Value(*found),
                         line);
  }
  throw ParseException("Match Error #4: Incorrect Token type." + Expectation(expected, *found),
                       line);
}

TokenPtr Parser::StringMatch(TokenType expected, const std::string& text) {
  assert(currentLexer && "Tokens are matched while an expression or a text file is read.");
  TokenPtr found = currentLexer->Current();
  if (found && found->text == text && currentLexer->Advance(expected)) return found;

  const int line = currentLexer->LineNumber();
  if (!found) {
    throw ParseException("String Match Error #1. Ran out of Tokens! Expected: \"" +
                             std::string(TokenName(expected)) + "\" Received: \"\"",
                         line);
  }
  // The numbers stay as they are, 1 twice and 3 nowhere: scripts of our users match these texts.
  if (IsWord(*found)) {
    throw ParseException("String Match Error #1: Incorrect Token type - found String/ID." +
                             Expectation(expected, *found) + Value(*found),
                         line);
  }
  if (found->type == TokenType::NUMBER) {
    throw ParseException("String Match Error #2: Incorrect Token type - found Number." +
                             Expectation(expected, *found) + Value(*found),
                         line);
  }
  throw ParseException(
      "String Match Error #4: Incorrect Token type." + Expectation(expected, *found), line);
}

void Parser::AddFailureClass(const std::string& failureClass) {
  if (!failureClass.empty()) model->AddFailureClass(failureClass);
}

}  // namespace FTS
