#pragma once

#include "model/Forward.h"

namespace FTS {

/// Hands the results of the model to the tool beside the program that allocates safety integrity
/// levels. Throws VtnException: this version doesn't launch it.
void LaunchSilDecomposition(const Model& model);

/// The same for development assurance levels.
void LaunchDalDecomposition(const Model& model);

}  // namespace FTS
