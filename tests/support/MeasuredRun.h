#pragma once

#include <string>
#include <vector>

#include "support/ProgramRun.h"

namespace FTS {

/// A run of the built program and the most memory that it had at a time.
struct MeasuredRun {
  ProgramRun run;
  long long peakKilobytes = 0;
};

/// As `RunProgramWith` does. Where memory that was given back counts on (address sanitizer), it is
/// told not to.
MeasuredRun RunMeasured(const std::vector<std::string>& arguments);

}  // namespace FTS
