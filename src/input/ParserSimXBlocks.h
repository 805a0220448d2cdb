#pragma once

#include "input/ParserSimX.h"

// For the sources of ParserSimX: bodies of its templates.

namespace FTS {

template <typename Read>
void ParserSimX::ReadBlock(Read read) {
  Match(TokenType::LeftBrace);
  read();
  Match(TokenType::RightBrace);
}

}  // namespace FTS
