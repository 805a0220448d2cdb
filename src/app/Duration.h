#pragma once

#include <string>

namespace FTS {

/// The text of a time span for the console, such as "1h 2m 3.5s". `seconds` are at least 0. Up to
/// sixty seconds stay seconds, and up to sixty minutes stay minutes, both inclusive.
std::string FormatDuration(float seconds);

}  // namespace FTS
