#pragma once

#include <cstdint>
#include <string>

#include "platform/XmlDocument.h"

namespace FTS {

// How the readers of a saved search take what they need from its elements.

/// The child of that name. Throws `VtnException` "Missing element X in saved state (in Y, line N)".
XmlElement RequiredChild(XmlElement parent, const std::string& name);
/// Its text.
std::string RequiredText(XmlElement parent, const std::string& name);
/// Its text as a number. Throws `VtnException` "No number in element X of saved state: ...".
std::int32_t RequiredInteger(XmlElement parent, const std::string& name);
double RequiredDouble(XmlElement parent, const std::string& name);

}  // namespace FTS
