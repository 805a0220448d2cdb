#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <fstream>
#include <string>

#include "input/Token.h"

namespace FTS {

struct Dialect;

/// Turns the text of a model file into tokens and lets a parser look ahead as far as it likes. What
/// starts no token is skipped, so reading never fails.
///
/// Order of use: `Open`, once `ReadAhead`, then `NextIs`, `Peek`, `Advance`.
class Lexer {
 public:
  Lexer();
  virtual ~Lexer();
  Lexer(const Lexer&) = delete;
  Lexer& operator=(const Lexer&) = delete;

  /// The token at `distance` from the head, which has distance 0; reads as many as that takes. Null
  /// when there are not so many.
  virtual TokenPtr Peek(std::size_t distance);

  /// Takes one token from the input and returns it without keeping it; null at the input's end.
  virtual TokenPtr ReadToken();

  /// Starts over at the first line of a file. Throws VtnException when it can't be opened.
  void Open(const std::string& name);

  /// Puts one more token of the input, if there is any, behind those that can be looked at.
  void ReadAhead();

  /// Whether the head has this type; false without a head.
  bool NextIs(TokenType type) const;

  /// Drops the head, and reads one token more, if the head has this type; false otherwise.
  bool Advance(TokenType type);

  /// The head; null when all tokens are used up.
  TokenPtr Current() const;

  /// The line that reading has come to, which lies behind the head's by the tokens looked at.
  std::int32_t LineNumber() const { return lineNumber; }

  /// False once reading has met the end of the input.
  bool HasInput() const { return hasInput; }

 protected:
  /// Starts over at a line of an input that `Scan` will be given.
  void Restart(std::int32_t startLine);

  /// The next token of `input` in the given dialect; null at its end.
  TokenPtr Scan(std::streambuf& input, const Dialect& dialect);

 private:
  TokenPtr ScanString(std::streambuf& input, const Dialect& dialect);
  TokenPtr MakeToken(TokenType type);

  std::string fileName;
  std::ifstream file;
  std::int32_t lineNumber = 1;
  bool hasInput = false;
  std::string text;  // Of the token being read.
  std::deque<TokenPtr> tokens;
};

}  // namespace FTS
