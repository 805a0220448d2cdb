#pragma once

#include <string>

#include "model/Forward.h"

namespace FTS {

/// Ends the name of the folder that most writers share; its start is the model's file stem.
inline constexpr const char* FMEAOutputSuffix = "-FMEAOutput";

/// Makes the output folder and in it the model's own, whose name ends in `suffix`; returns its
/// path. Throws std::filesystem::filesystem_error when it cannot be made.
std::string MakeResultsFolder(const Model& model, const std::string& suffix);

}  // namespace FTS
