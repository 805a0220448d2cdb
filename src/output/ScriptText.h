#pragma once

#include <string>

namespace FTS {

/// The text as it has to stand in a string of a script between apostrophes.
std::string EscapedForScript(const std::string& text);

}  // namespace FTS
