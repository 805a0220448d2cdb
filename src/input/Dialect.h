#pragma once

#include <array>
#include <optional>
#include <span>
#include <string_view>

#include "input/Token.h"

namespace FTS {

/// A word with a meaning of its own.
struct Keyword {
  std::string_view word;
  TokenType type;
};

/// In what the lexers of files and of expressions differ. The two grew apart with the formats that
/// they read, and models in use rely on either as it is.
struct Dialect {
  std::array<TokenType, 256> symbols;           // By character; `FileClosed` where it is none.
  std::span<const Keyword> keywords;            // In ascending order of the words.
  std::span<const std::string_view> openWords;  // They join the word behind them.
  bool dropsCharacterBehindOpenWord;
  bool symbolsHaveText;
  bool backslashEscapesQuote;
  bool keepsLineEndsInStrings;

  /// The type of a keyword; nothing for other words.
  std::optional<TokenType> FindKeyword(std::string_view word) const;

  bool IsOpenWord(std::string_view word) const;
};

/// The dialect of model files, and that of the expressions inside elements.
extern const Dialect FileDialect;
extern const Dialect ExpressionDialect;

}  // namespace FTS
