#pragma once

#include <string>
#include <string_view>

namespace FTS {

/// A deviation is written "class-port", divided at the first "-". Both parts are empty for a text
/// without "-".
std::string FailureClassOf(std::string_view text);
std::string PortOf(std::string_view text);

}  // namespace FTS
