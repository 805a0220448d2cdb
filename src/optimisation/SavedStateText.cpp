#include "optimisation/SavedStateText.h"

#include <cctype>
#include <charconv>

#include "model/NumberText.h"
#include "model/VtnException.h"

namespace FTS {

namespace {

std::string Place(XmlElement element) {
  return " (in " + std::string(element.Name()) + ", line " + std::to_string(element.Row() + 1) +
         ")";
}

/// `what` is what stands there: "No number", for instance.
[[noreturn]] void ThrowNumber(const std::string& what, XmlElement parent, const std::string& name,
                              const std::string& text) {
  throw VtnException(what + " in element " + name + " of saved state: " + text + Place(parent));
}

/// The reading of numbers takes what is none for 0, which no saved search means.
std::string NumberText(XmlElement parent, const std::string& name) {
  std::string text = RequiredText(parent, name);
  const std::size_t sign = !text.empty() && (text[0] == '-' || text[0] == '+') ? 1 : 0;
  const bool startsLikeOne =
      text.size() > sign && (std::isdigit(static_cast<unsigned char>(text[sign])) != 0 ||
                             text[sign] == '.' || text.substr(sign) == "inf" || text == "nan");
  if (!startsLikeOne) ThrowNumber("No number", parent, name, text);
  return text;
}

/// A whole number without anything behind it, at most as high as the type or as told.
template <typename Number>
Number RequiredWhole(XmlElement parent, const std::string& name, Number highest) {
  const std::string text = NumberText(parent, name);
  const std::size_t sign = text[0] == '+' ? 1 : 0;  // Which the library does not know.
  const char* const end = text.data() + text.size();
  Number value = 0;
  const auto read = std::from_chars(text.data() + sign, end, value);
  if (read.ec == std::errc::result_out_of_range || value > highest) {
    ThrowNumber("Number out of range", parent, name, text);
  }
  if (read.ec != std::errc() || read.ptr != end) ThrowNumber("No number", parent, name, text);
  return value;
}

}  // namespace

void ThrowMissing(XmlElement parent, const std::string& name) {
  throw VtnException("Missing element " + name + " in saved state" + Place(parent));
}

XmlElement RequiredChild(XmlElement parent, const std::string& name) {
  const XmlElement child = parent.FirstChild(name);
  if (!child) ThrowMissing(parent, name);
  return child;
}

std::string RequiredText(XmlElement parent, const std::string& name) {
  return std::string(RequiredChild(parent, name).Text());
}

std::int32_t RequiredInteger(XmlElement parent, const std::string& name, std::int32_t highest) {
  return RequiredWhole<std::int32_t>(parent, name, highest);
}

std::int64_t RequiredSeed(XmlElement parent, const std::string& name) {
  return RequiredWhole(parent, name, std::numeric_limits<std::uint32_t>::max());
}

double RequiredDouble(XmlElement parent, const std::string& name) {
  return ParseDouble(NumberText(parent, name));
}

std::int32_t RequiredCount(XmlElement parent, const std::string& name) {
  const std::int32_t count = RequiredInteger(parent, name);
  if (count < 0) ThrowNumber("Negative number", parent, name, std::to_string(count));
  return count;
}

bool IsSavedName(std::string_view saved, std::string_view own) {
  std::string folded;
  for (const char c : own) {
    if (c != ' ' || (!folded.empty() && folded.back() != ' ')) folded += c;
  }
  if (!folded.empty() && folded.back() == ' ') folded.pop_back();
  return saved == folded;
}

void RefuseEncoding(XmlElement element, const std::string& reason) {
  throw VtnException("Encoding in saved state does not fit the model: " + reason + Place(element));
}

void RequireChildren(XmlElement parent, std::size_t count, const std::string& what) {
  std::size_t found = 0;
  for (XmlElement item = parent.FirstChild(); item; item = item.NextSibling()) ++found;
  if (found == count) return;
  RefuseEncoding(parent, "it has " + std::to_string(found) + " " + what + ", the model " +
                             std::to_string(count));
}

}  // namespace FTS
