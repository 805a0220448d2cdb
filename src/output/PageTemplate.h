#pragma once

#include <string>

namespace FTS {

/// Unpacks the scripts and styles that all result pages use from "FTOutput.zip", which stands
/// beside the program, into the folder. An archive that is missing or broken is reported on the
/// error stream, and the run goes on without; so it does when a file cannot be written to its end,
/// which is an error in the log.
void UnpackPageTemplate(const std::string& folder);

}  // namespace FTS
