#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace FTS {

/// How much of a text is fit to be parsed.
struct XmlLimits {
  int nesting;     ///< How deep elements may be nested: the parser needs stack for each level.
  int attributes;  ///< How many a tag may have: the parser compares each with all before it.
};

/// A place in a text: its line and its byte in the line, counted from 1; both 0 for no place.
struct XmlPlace {
  int row = 0;
  int column = 0;
};

/// A comment in a text, from its "<!--" up to where its "-->" ends.
struct XmlComment {
  std::size_t begin;
  std::size_t end;
};

/// What a look over an XML text tells before it is parsed.
struct XmlScan {
  /// The line of each element's tag in document order, counted from 0.
  std::vector<int> elementRows;

  /// The comments inside of elements, in the order of the text.
  std::vector<XmlComment> comments;

  /// What forbids to parse the text at all; empty if nothing does. The errors of syntax that the
  /// parser finds are left to it.
  std::string errorText;
  XmlPlace errorPlace;
};

/// Where the byte with that index stands in a text whose line ends are LF.
XmlPlace PlaceInText(std::string_view text, std::size_t index);

/// Looks over a text whose line ends are LF. Refused is what the parser would take without a word
/// and read wrongly: NUL bytes, comments, CDATA and declarations without an end, behind which it
/// sees nothing; and what is beyond the limits, for which it lacks stack or time.
XmlScan ScanXml(std::string_view text, const XmlLimits& limits);

}  // namespace FTS
