#include "input/XmlElements.h"

#include <algorithm>
#include <limits>

#include "model/NumberText.h"

namespace FTS {

std::string Trimmed(std::string_view text) {
  constexpr std::string_view WhiteSpace = " \t\n\v\f\r";
  const std::size_t first = text.find_first_not_of(WhiteSpace);
  if (first == std::string_view::npos) return "";
  const std::size_t last = text.find_last_not_of(WhiteSpace);
  return std::string(text.substr(first, last - first + 1));
}

std::string ElementText(XmlElement parent, std::string_view name) {
  return Trimmed(parent.FirstChild(name).Text());
}

double ElementDouble(XmlElement parent, std::string_view name) {
  return ParseDouble(parent.FirstChild(name).Text());
}

std::int32_t ElementInteger(XmlElement parent, std::string_view name) {
  using Limits = std::numeric_limits<std::int32_t>;
  return static_cast<std::int32_t>(
      std::clamp<double>(ElementDouble(parent, name), Limits::min(), Limits::max()));
}

bool ElementFlag(XmlElement parent, std::string_view name) {
  return ElementText(parent, name) == "true";
}

}  // namespace FTS
