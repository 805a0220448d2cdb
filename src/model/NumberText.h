#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// Numbers as text, the same on every machine whatever its locale. Reading never fails: text that
// is no number is 0.

namespace FTS {

/// The text that a stream in its default state writes: six significant digits, scientific where
/// the exponent asks for it. What is no number is "nan", without a sign.
std::string FormatDouble(double value);

/// A decimal without exponent and with so many places behind the point, at most 200.
std::string FormatFixed(double value, int places);

/// A decimal without exponent, by which result pages sort figures: all digits of the shortest text
/// that reads back as `value`, at most 200 of them behind the point; "0.0" for zero.
std::string FormatSortKey(double value);

/// The number at the start of `text` as a stream extracts it into a double, leading white space
/// skipped. 0 when the characters that a stream would take form no number ("1e", "abc"); a number
/// out of range is the greatest finite one, with its sign.
double ParseDouble(std::string_view text);

/// The longest number at the start of `text`, as the C library's atof reads it: "1e" is 1.
double ParseDoubleLikeAtof(std::string_view text);

/// The integer at the start of `text`, as the C library's atoi reads it. A number out of range is
/// the nearest one that fits.
std::int32_t ParseInteger(std::string_view text);

}  // namespace FTS
