#pragma once

#include <cstdint>
#include <sstream>
#include <string>

#include "input/Lexer.h"

namespace FTS {

/// Turns one text, such as the failure logic inside an element of a model file, into tokens. It
/// differs from the lexer of files in some symbols and keywords, in strings, and in that
/// punctuation has its character as text.
class StringLexer : public Lexer {
 public:
  TokenPtr ReadToken() override;

  /// Starts over on `source`, whose first line has the number `startLine`.
  void SetText(std::string source, std::int32_t startLine);

 private:
  std::stringbuf input;
};

}  // namespace FTS
