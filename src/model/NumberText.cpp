#include "model/NumberText.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <charconv>
#include <cmath>
#include <limits>

namespace FTS {
namespace {

constexpr int StreamDigits = 6;
constexpr int SortKeyPlaces = 200;

// Sign, 309 digits before the point, the point and the places behind it.
constexpr std::size_t LongestFixed = 1 + 309 + 1 + SortKeyPlaces;

constexpr std::string_view WhiteSpace = " \t\n\v\f\r";

bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsSign(char c) { return c == '+' || c == '-'; }
bool IsExponentMark(char c) { return c == 'e' || c == 'E'; }

std::string_view SkipWhiteSpace(std::string_view text) {
  const std::size_t start = text.find_first_not_of(WhiteSpace);
  return start == std::string_view::npos ? std::string_view() : text.substr(start);
}

/// Takes a sign off the front of `text`; true for a minus.
bool TakeSign(std::string_view& text) {
  if (text.empty() || !IsSign(text.front())) return false;
  const bool negative = text.front() == '-';
  text.remove_prefix(1);
  return negative;
}

/// How many characters of `text`, which begins behind the sign, a stream takes for a number. They
/// need not form one: an exponent mark is taken before it is known whether digits follow.
std::size_t CountStreamCharacters(std::string_view text) {
  bool foundDigit = false;
  bool foundPoint = false;
  bool foundExponent = false;
  std::size_t i = 0;
  for (; i < text.size(); ++i) {
    if (IsDigit(text[i])) {
      foundDigit = true;
    } else if (text[i] == '.' && !foundPoint && !foundExponent) {
      foundPoint = true;
    } else if (IsExponentMark(text[i]) && foundDigit && !foundExponent) {
      foundExponent = true;
      if (i + 1 < text.size() && IsSign(text[i + 1])) ++i;
    } else {
      break;
    }
  }
  return i;
}

/// The value of a number without sign whose value no double holds: `overflow`, or 0 when it is too
/// small rather than too great.
double OutOfRange(std::string_view number, double overflow) {
  const std::size_t mark = number.find_first_of("eE");
  const std::string_view mantissa = number.substr(0, mark);
  const std::size_t point = std::min(mantissa.find('.'), mantissa.size());
  const std::size_t first = mantissa.find_first_of("123456789");
  if (first == std::string_view::npos) return 0.0;
  // The power of ten of the first digit that counts; a double has room to add the exponent to it.
  double power = static_cast<double>(point) - static_cast<double>(first);
  if (mark != std::string_view::npos) power += ParseInteger(number.substr(mark + 1));
  return power > 0.0 ? overflow : 0.0;
}

struct Reading {
  double value = 0.0;
  std::size_t length = 0;  // Characters read; 0 when there is no number.
};

/// Reads the decimal number at the start of `text`, which has no sign.
Reading ReadMagnitude(std::string_view text, double overflow) {
  Reading reading;
  // The library would also read the words for infinity and for what is no number.
  if (text.empty() || !(IsDigit(text.front()) || text.front() == '.')) return reading;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), reading.value);
  if (error == std::errc::invalid_argument) return reading;
  reading.length = static_cast<std::size_t>(end - text.data());
  if (error == std::errc::result_out_of_range) {
    reading.value = OutOfRange(text.substr(0, reading.length), overflow);
  }
  return reading;
}

/// The shortest decimal of a finite `value` without exponent, or empty when it has more than
/// `SortKeyPlaces` places.
std::string ShortestFixed(double value) {
  std::array<char, 32> buffer{};
  const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(),
                                          std::fabs(value), std::chars_format::scientific);
  assert(error == std::errc());
  const std::string_view text(buffer.data(), static_cast<std::size_t>(end - buffer.data()));
  const std::size_t mark = text.find('e');
  std::string digits(text.substr(0, mark));
  std::erase(digits, '.');
  const int wholeDigits = ParseInteger(text.substr(mark + 1)) + 1;
  const int places = std::max(static_cast<int>(digits.size()) - wholeDigits, 0);
  if (places > SortKeyPlaces) return {};
  if (wholeDigits <= 0) {
    digits.insert(0, static_cast<std::size_t>(1 - wholeDigits), '0');
  } else {
    digits.resize(std::max(digits.size(), static_cast<std::size_t>(wholeDigits)), '0');
  }
  digits.insert(digits.size() - static_cast<std::size_t>(places), 1, '.');
  return std::signbit(value) ? "-" + digits : digits;
}

std::string RoundedFixed(double value) {
  std::array<char, LongestFixed> buffer{};
  const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                          std::chars_format::fixed, SortKeyPlaces);
  assert(error == std::errc());
  return {buffer.data(), end};
}

}  // namespace

std::string FormatDouble(double value) {
  // Which sign a computed one has is up to the compiler and the processor.
  if (std::isnan(value)) return "nan";
  std::array<char, 32> buffer{};
  const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                          std::chars_format::general, StreamDigits);
  assert(error == std::errc());
  return {buffer.data(), end};
}

std::string FormatFixed(double value, int places) {
  if (std::isnan(value)) return "nan";
  std::array<char, LongestFixed> buffer{};
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                 std::chars_format::fixed, std::min(places, SortKeyPlaces));
  return {buffer.data(), end.ptr};
}

std::string FormatSortKey(double value) {
  if (!std::isfinite(value)) return FormatDouble(value);
  std::string text = ShortestFixed(value);
  if (text.empty()) text = RoundedFixed(value);
  text.erase(text.find_last_not_of('0') + 1);
  if (text.ends_with('.')) text += '0';
  return text;
}

double ParseDouble(std::string_view text) {
  text = SkipWhiteSpace(text);
  const bool negative = TakeSign(text);
  const std::string_view number = text.substr(0, CountStreamCharacters(text));
  const Reading reading = ReadMagnitude(number, std::numeric_limits<double>::max());
  if (reading.length == 0 || reading.length != number.size()) return 0.0;
  return negative ? -reading.value : reading.value;
}

double ParseDoubleLikeAtof(std::string_view text) {
  text = SkipWhiteSpace(text);
  const bool negative = TakeSign(text);
  const Reading reading = ReadMagnitude(text, std::numeric_limits<double>::infinity());
  return negative && reading.length > 0 ? -reading.value : reading.value;
}

std::int32_t ParseInteger(std::string_view text) {
  text = SkipWhiteSpace(text);
  const bool negative = TakeSign(text);
  constexpr std::int64_t Limit = std::numeric_limits<std::int32_t>::max();
  std::int64_t value = 0;
  for (const char c : text) {
    if (!IsDigit(c)) break;
    value = std::min(value * 10 + (c - '0'), Limit + 1);
  }
  return static_cast<std::int32_t>(negative ? -value : std::min(value, Limit));
}

}  // namespace FTS
