#pragma once

#include "model/Forward.h"

namespace FTS {

/// Hands the results of the model to the tool beside the program that allocates safety integrity
/// levels: prints the command, unless the run is silent, runs it and waits for it. What becomes of
/// it is its own business; a tool that isn't there changes nothing.
void LaunchSilDecomposition(const Model& model);

/// The same for development assurance levels.
void LaunchDalDecomposition(const Model& model);

}  // namespace FTS
