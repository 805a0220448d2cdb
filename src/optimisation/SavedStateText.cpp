#include "optimisation/SavedStateText.h"

#include <cctype>

#include "model/NumberText.h"
#include "model/VtnException.h"

namespace FTS {

namespace {

std::string Place(XmlElement element) {
  return " (in " + std::string(element.Name()) + ", line " + std::to_string(element.Row() + 1) +
         ")";
}

/// The reading of numbers takes what is none for 0, which no saved search means.
std::string NumberText(XmlElement parent, const std::string& name) {
  std::string text = RequiredText(parent, name);
  const std::size_t sign = !text.empty() && (text[0] == '-' || text[0] == '+') ? 1 : 0;
  const bool startsLikeOne =
      text.size() > sign && (std::isdigit(static_cast<unsigned char>(text[sign])) != 0 ||
                             text[sign] == '.' || text.substr(sign) == "inf" || text == "nan");
  if (!startsLikeOne) {
    throw VtnException("No number in element " + name + " of saved state: " + text + Place(parent));
  }
  return text;
}

}  // namespace

XmlElement RequiredChild(XmlElement parent, const std::string& name) {
  const XmlElement child = parent.FirstChild(name);
  if (!child) throw VtnException("Missing element " + name + " in saved state" + Place(parent));
  return child;
}

std::string RequiredText(XmlElement parent, const std::string& name) {
  return std::string(RequiredChild(parent, name).Text());
}

std::int32_t RequiredInteger(XmlElement parent, const std::string& name) {
  return ParseInteger(NumberText(parent, name));
}

double RequiredDouble(XmlElement parent, const std::string& name) {
  return ParseDouble(NumberText(parent, name));
}

}  // namespace FTS
