#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace FTS {

/// The length in bytes of the character that `text` begins with: that of a well-formed UTF-8
/// sequence, else 1. Model texts are UTF-8, but the sign of a complement, and whole texts of older
/// models, are Latin-1 bytes between them. `text` is not empty.
std::size_t CharacterLength(std::string_view text);

/// The length of the text in UTF-16 units, by which spreadsheet programs have their limits: 2 for a
/// character beyond the first plane of Unicode, else 1.
std::size_t UnitsOf(std::string_view text);

/// The text's beginning, whole characters that count no more than `units`.
std::string_view BeginningOf(std::string_view text, std::size_t units);

/// The text as it stands in an XML document of UTF-8, in an element or in an attribute between
/// double quotes. Bytes that are no UTF-8 are taken for Latin-1; control characters that XML knows
/// no spelling for become U+FFFD.
std::string EscapeXml(std::string_view text);

}  // namespace FTS
