#pragma once

#include <ostream>
#include <string_view>

namespace FTS {

/// How deep objects nested in a model object are printed below it.
inline constexpr int NestedIndent = 3;

/// Writes one line of a model's print, indented as `IPrintable::Indent` does it.
inline void PrintLine(std::ostream& stream, int indent, std::string_view text) {
  for (int level = 0; level < indent; ++level) stream << ' ';
  stream << text << '\n';
}

/// A line of 50 dashes.
inline void PrintRule(std::ostream& stream, int indent) {
  PrintLine(stream, indent, "--------------------------------------------------");
}

}  // namespace FTS
