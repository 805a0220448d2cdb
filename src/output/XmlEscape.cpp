#include "output/XmlEscape.h"

#include <algorithm>
#include <cstdint>

namespace FTS {
namespace {

/// How UTF-8 spells the characters of one length: the first byte's fixed bits and their values, and
/// the lowest character that needs the length.
struct Sequence {
  std::size_t length;
  unsigned mask;
  unsigned mark;
  std::uint32_t lowest;
};
constexpr Sequence Sequences[] = {
    {2, 0xE0, 0xC0, 0x80}, {3, 0xF0, 0xE0, 0x800}, {4, 0xF8, 0xF0, 0x10000}};

unsigned ByteAt(std::string_view text, std::size_t index) {
  return static_cast<unsigned char>(text[index]);
}

bool IsXmlCharacter(std::uint32_t character) {
  const bool surrogate = character >= 0xD800 && character <= 0xDFFF;
  return !surrogate && character != 0xFFFE && character != 0xFFFF && character <= 0x10FFFF;
}

bool IsSequence(std::string_view text, const Sequence& sequence) {
  if (text.size() < sequence.length) return false;
  std::uint32_t character = ByteAt(text, 0) & ~sequence.mask;
  for (std::size_t i = 1; i < sequence.length; ++i) {
    if ((ByteAt(text, i) & 0xC0U) != 0x80U) return false;
    character = (character << 6U) | (ByteAt(text, i) & 0x3FU);
  }
  return character >= sequence.lowest && IsXmlCharacter(character);
}

std::size_t UnitsOfCharacter(std::size_t length) { return length == 4 ? 2 : 1; }

bool IsPlain(char c) {
  return c >= ' ' && c < '\x7F' && c != '&' && c != '<' && c != '>' && c != '"';
}

std::string Reference(unsigned byte) {
  constexpr unsigned Replacement = 0xFFFD;
  const bool known = byte >= ' ' || byte == '\t' || byte == '\n' || byte == '\r';
  return "&#" + std::to_string(known ? byte : Replacement) + ";";
}

std::string EscapedByte(char c) {
  switch (c) {
    case '&':
      return "&amp;";
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    case '"':
      return "&quot;";
    default:
      return Reference(static_cast<unsigned char>(c));
  }
}

}  // namespace

std::size_t CharacterLength(std::string_view text) {
  for (const Sequence& sequence : Sequences) {
    if ((ByteAt(text, 0) & sequence.mask) != sequence.mark) continue;
    return IsSequence(text, sequence) ? sequence.length : 1;
  }
  return 1;
}

std::size_t UnitsOf(std::string_view text) {
  std::size_t units = 0;
  while (!text.empty()) {
    const std::size_t length = CharacterLength(text);
    units += UnitsOfCharacter(length);
    text.remove_prefix(length);
  }
  return units;
}

std::string_view BeginningOf(std::string_view text, std::size_t units) {
  std::size_t end = 0;
  while (end < text.size()) {
    const std::size_t length = CharacterLength(text.substr(end));
    if (UnitsOfCharacter(length) > units) break;
    units -= UnitsOfCharacter(length);
    end += length;
  }
  return text.substr(0, end);
}

std::string EscapeXml(std::string_view text) {
  if (std::all_of(text.begin(), text.end(), IsPlain)) return std::string(text);
  std::string escaped;
  while (!text.empty()) {
    const std::size_t length = CharacterLength(text);
    if (length > 1 || IsPlain(text.front())) {
      escaped += text.substr(0, length);
    } else {
      escaped += EscapedByte(text.front());
    }
    text.remove_prefix(length);
  }
  return escaped;
}

}  // namespace FTS
