#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace FTS {

/// What a look over an XML text tells before it is parsed.
struct XmlScan {
  /// The line of each element's tag in document order, counted from 0.
  std::vector<int> elementRows;

  /// What forbids to parse the text at all; empty if nothing does. The errors of syntax that the
  /// parser finds are left to it.
  std::string errorText;
  int errorRow = 0;     ///< Counted from 1, like the column.
  int errorColumn = 0;  ///< In bytes.
};

/// Looks over a text whose line ends are LF. Refused is what the parser would take without a word
/// and read wrongly: NUL bytes, comments, CDATA and declarations without an end, behind which it
/// sees nothing; and elements nested deeper than `deepestNesting`, for which it runs out of stack.
XmlScan ScanXml(std::string_view text, int deepestNesting);

}  // namespace FTS
