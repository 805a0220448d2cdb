#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/XmlDocument.h"

// Values of a model document: all of them are texts of elements.

namespace FTS {

/// The text without white space at both ends.
std::string Trimmed(std::string_view text);

/// The trimmed text of the first child of that name; empty without the child.
std::string ElementText(XmlElement parent, std::string_view name);

/// The number in the first child of that name; 0.0 if it is missing or no number.
double ElementDouble(XmlElement parent, std::string_view name);

/// `ElementDouble` truncated towards zero, and kept in the range of the type.
std::int32_t ElementInteger(XmlElement parent, std::string_view name);

/// Whether the text of the first child of that name is "true".
bool ElementFlag(XmlElement parent, std::string_view name);

/// Calls `read` with each item of a list. The list begins with its first element of the given name;
/// every element behind that one counts as an item, whatever its name. Files have nothing else in
/// their lists, and a misspelt item is read as an empty one instead of being passed over.
template <typename Reader>
void ForEachItem(XmlElement list, std::string_view itemName, Reader read) {
  for (XmlElement item = list.FirstChild(itemName); item; item = item.NextSibling()) read(item);
}

}  // namespace FTS
