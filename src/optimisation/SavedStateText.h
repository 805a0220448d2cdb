#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

#include "platform/XmlDocument.h"

namespace FTS {

// How the readers of a saved search take what they need from its elements.

// Messages end with the place in the file; whoever knows the path puts it behind them.

/// Throws `VtnException` "Missing element X in saved state (in Y, line N)".
[[noreturn]] void ThrowMissing(XmlElement parent, const std::string& name);
/// The child of that name. Throws as above.
XmlElement RequiredChild(XmlElement parent, const std::string& name);
/// Its text.
std::string RequiredText(XmlElement parent, const std::string& name);
/// Its text as a number, a whole one without anything behind it in the first case. Throws
/// `VtnException` "No number in element X of saved state: ..." or "Number out of range in ...".
std::int32_t RequiredInteger(XmlElement parent, const std::string& name,
                             std::int32_t highest = std::numeric_limits<std::int32_t>::max());
double RequiredDouble(XmlElement parent, const std::string& name);
/// A whole number that may not be negative: then it throws "Negative number in ...".
std::int32_t RequiredCount(XmlElement parent, const std::string& name);

/// A seed of the random numbers. Throws as above.
std::int64_t RequiredSeed(XmlElement parent, const std::string& name);

/// Whether a name that was read from a saved search is the model's own one. Names are compared as
/// they come back from XML, which folds runs of blanks and cuts those at the ends.
bool IsSavedName(std::string_view saved, std::string_view own);

/// The end of the reading of a design: throws `VtnException` "Encoding in saved state does not fit
/// the model: " + reason, with the place of the element.
[[noreturn]] void RefuseEncoding(XmlElement element, const std::string& reason);

/// Refuses the encoding unless the element has that many children; `what` names them.
void RequireChildren(XmlElement parent, std::size_t count, const std::string& what);

}  // namespace FTS
