#pragma once

#include "app/Options.h"
#include "model/Forward.h"

namespace FTS {

/// Takes a model that has been read through synthesis, analysis, effects and output. Throws
/// VtnException for what cannot go on.
void RunNormalPhases(Model& model);

/// Searches designs of the model. Throws VtnException for what cannot go on.
void RunOptimisation(Model& model, const RunOptions& options);

}  // namespace FTS
