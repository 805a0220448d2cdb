#pragma once

#include <string>

#include "input/Lexer.h"

namespace FTS {

/// A token as "name'text'".
inline std::string TextOf(const Token& token) {
  return std::string(TokenName(token.type)) + "'" + token.text + "'";
}

/// All tokens that a lexer still reads, blanks between them, for comparison in one line.
inline std::string RestOf(Lexer& lexer) {
  std::string text;
  while (const TokenPtr token = lexer.ReadToken()) {
    if (!text.empty()) text += ' ';
    text += TextOf(*token);
  }
  return text;
}

}  // namespace FTS
