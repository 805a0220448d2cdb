#include "input/StringLexer.h"

#include <utility>

#include "input/Dialect.h"

namespace FTS {

TokenPtr StringLexer::ReadToken() { return Scan(input, ExpressionDialect); }

void StringLexer::SetText(std::string source, std::int32_t startLine) {
  input.str(std::move(source));
  Restart(startLine);
}

}  // namespace FTS
