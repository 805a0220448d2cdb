#pragma once

#include <ostream>

namespace FTS {

/// Writes how the program is called, for somebody who called it without a model.
void PrintUsage(std::ostream& stream);

}  // namespace FTS
