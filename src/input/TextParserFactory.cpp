// The look at the start of a text file that tells whether it is a model.

#include "input/Lexer.h"
#include "input/ParserSimX.h"
#include "model/VtnException.h"
#include "platform/FileSystem.h"

namespace FTS {
namespace {

/// One of these must follow the head of the file.
constexpr TokenType Sections[] = {TokenType::OptimisationParams, TokenType::Hazards,
                                  TokenType::Perspectives, TokenType::Actual, TokenType::System};

bool TakeValue(Lexer& lexer, TokenType keyword) {
  return !lexer.Advance(keyword) || lexer.Advance(TokenType::STRING);
}

bool TakeVersion(Lexer& lexer) {
  if (!lexer.Advance(TokenType::Version)) return true;
  if (!lexer.Advance(TokenType::NUMBER)) return false;
  return !lexer.Advance(TokenType::Point) || lexer.Advance(TokenType::NUMBER);
}

/// Whether the tokens are those of a model up to the first section.
bool IsTextModel(Lexer& lexer) {
  lexer.ReadAhead();
  if (!lexer.Advance(TokenType::Model)) return false;
  if (!TakeValue(lexer, TokenType::Name) || !TakeValue(lexer, TokenType::Description)) return false;
  lexer.Advance(TokenType::SimulationX);
  lexer.Advance(TokenType::Matlab);
  if (!TakeVersion(lexer) || !TakeValue(lexer, TokenType::RiskTime)) return false;
  for (const TokenType section : Sections) {
    if (lexer.NextIs(section)) return true;
  }
  return false;
}

}  // namespace

std::unique_ptr<Parser> CreateTextParser(const std::string& path) {
  // It is read twice, which a pipe can't be, and one that nobody writes to would never end.
  if (!FileReadable(path) || !IsRegularFile(path)) {
    throw VtnException("File not found! Could not open file: " + path);
  }
  auto lexer = std::make_unique<Lexer>();
  lexer->Open(path);
  if (!IsTextModel(*lexer)) {
    throw VtnException("Parser creation error: The file '" + path +
                       "' could not be parsed - it is not a recognised format");
  }
  lexer->Open(path);
  return std::make_unique<ParserSimX>(std::move(lexer), path);
}

}  // namespace FTS
