#pragma once

#include <string>

namespace FTS {

/// The built program `vtn`.
std::string ProgramUnderTest();

/// The folder tests/ of the checkout, without a separator at its end.
std::string TestsFolder();

/// The folder examples/ of the checkout, without a separator at its end.
std::string ExamplesFolder();

}  // namespace FTS
