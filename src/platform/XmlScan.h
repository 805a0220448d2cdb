#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace FTS {

/// What a look over an XML text tells before it is parsed.
struct XmlScan {
  /// The line of each element's tag in document order, counted from 0.
  std::vector<int> elementRows;

  /// What forbids to parse the text at all; empty if nothing does. Errors of syntax are left to the
  /// parser.
  std::string errorText;
  int errorRow = 0;     ///< Counted from 1, like the column.
  int errorColumn = 0;  ///< In bytes.
};

/// Looks over a text whose line ends are LF. Refused are NUL bytes, behind which the parser would
/// see nothing, and elements nested deeper than `deepestNesting`, for which it would run out of
/// stack.
XmlScan ScanXml(std::string_view text, int deepestNesting);

}  // namespace FTS
