#include "input/Lexer.h"

#include <array>
#include <optional>
#include <streambuf>
#include <utility>

#include "input/Dialect.h"
#include "model/VtnException.h"
#include "platform/FileSystem.h"

namespace FTS {
namespace {

constexpr int EndOfInput = std::streambuf::traits_type::eof();

/// What a character may do in a word. Only letters of ASCII count, on every machine.
struct CharacterClass {
  bool startsWord = false;
  bool continuesWord = false;
  bool isDigit = false;
};

constexpr std::array<CharacterClass, 256> MakeCharacterClasses() {
  std::array<CharacterClass, 256> classes{};
  constexpr std::string_view Letters = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ_";
  for (const char c : Letters) classes[static_cast<unsigned char>(c)] = {true, true, false};
  for (const char c : std::string_view("0123456789")) {
    classes[static_cast<unsigned char>(c)] = {false, true, true};
  }
  for (const char c : std::string_view("./[]")) {
    classes[static_cast<unsigned char>(c)].continuesWord = true;
  }
  return classes;
}

constexpr std::array<CharacterClass, 256> CharacterClasses = MakeCharacterClasses();

/// The class of what a stream buffer returned; the end of the input has none.
CharacterClass ClassOf(int character) {
  return character == EndOfInput ? CharacterClass() : CharacterClasses[character & 0xFF];
}

void AppendWhile(std::streambuf& input, bool CharacterClass::*belongs, std::string& text) {
  while (ClassOf(input.sgetc()).*belongs) text += static_cast<char>(input.sbumpc());
}

}  // namespace

Lexer::Lexer() = default;
Lexer::~Lexer() = default;

TokenPtr Lexer::Peek(std::size_t distance) {
  while (tokens.size() <= distance) {
    TokenPtr token = ReadToken();
    if (!token) return nullptr;
    tokens.push_back(std::move(token));
  }
  return tokens[distance];
}

TokenPtr Lexer::ReadToken() { return Scan(*file.rdbuf(), FileDialect); }

void Lexer::Open(const std::string& name) {
  file.close();
  file.clear();
  fileName = name;
  if (FileReadable(name)) file.open(WithNativeSeparators(name), std::ios::binary);
  if (!file.is_open()) {
    throw VtnException("The parser could not find the specified model file: " + name);
  }
  Restart(1);
}

void Lexer::ReadAhead() {
  if (TokenPtr token = ReadToken()) tokens.push_back(std::move(token));
}

bool Lexer::NextIs(TokenType type) const { return !tokens.empty() && tokens.front()->type == type; }

bool Lexer::Advance(TokenType type) {
  if (!NextIs(type)) return false;
  ReadAhead();
  tokens.pop_front();
  return true;
}

TokenPtr Lexer::Current() const { return tokens.empty() ? nullptr : tokens.front(); }

void Lexer::Restart(std::int32_t startLine) {
  lineNumber = startLine;
  hasInput = true;
  text.clear();
  tokens.clear();
}

TokenPtr Lexer::MakeToken(TokenType type) {
  return std::make_shared<const Token>(
      Token{static_cast<std::uint32_t>(lineNumber), type, std::exchange(text, {})});
}

TokenPtr Lexer::Scan(std::streambuf& input, const Dialect& dialect) {
  text.clear();
  while (true) {
    const int character = input.sgetc();
    if (character == EndOfInput) {
      hasInput = false;
      return nullptr;
    }
    const CharacterClass characterClass = ClassOf(character);
    if (characterClass.startsWord) {
      AppendWhile(input, &CharacterClass::continuesWord, text);
      if (!dialect.IsOpenWord(text))
        return MakeToken(dialect.FindKeyword(text).value_or(TokenType::ID));
      // The word behind is read into the same text, so that "Basic Event" is one keyword.
      if (dialect.dropsCharacterBehindOpenWord && input.sbumpc() == '\n') ++lineNumber;
      continue;
    }
    if (characterClass.isDigit) {
      text.clear();
      AppendWhile(input, &CharacterClass::isDigit, text);
      return MakeToken(TokenType::NUMBER);
    }
    input.sbumpc();
    if (character == '"') return ScanString(input, dialect);
    if (character == '\n') ++lineNumber;
    const TokenType symbol = dialect.symbols[static_cast<std::size_t>(character)];
    if (symbol == TokenType::FileClosed) continue;
    text.assign(dialect.symbolsHaveText ? 1 : 0, static_cast<char>(character));
    return MakeToken(symbol);
  }
}

TokenPtr Lexer::ScanString(std::streambuf& input, const Dialect& dialect) {
  text.clear();
  for (int character = input.sbumpc(); character != EndOfInput && character != '"';
       character = input.sbumpc()) {
    if (character == '\\' && dialect.backslashEscapesQuote) {
      // Also the backslash that stands before no quote is dropped; what follows it stays.
      if (input.sgetc() == '"') text += static_cast<char>(input.sbumpc());
      continue;
    }
    if (character == '\r' && input.sgetc() == '\n') continue;
    if (character == '\n') {
      ++lineNumber;
      if (!dialect.keepsLineEndsInStrings) continue;
    }
    text += static_cast<char>(character);
  }
  return MakeToken(TokenType::STRING);
}

}  // namespace FTS
