#include "app/RunPhases.h"

#include <iostream>

#include "app/Config.h"
#include "app/DecompositionTools.h"
#include "model/Model.h"
#include "model/VtnException.h"

namespace FTS {

void RunNormalPhases(Model& model) {
  const Config& config = Config::Instance();
  model.Synthesise();
  if (!config.skipAnalysis) model.Analyse(config.useBDDs);
  model.BuildFMEA();
  if (model.GetFaultTreeCount() < 1) {
    std::cerr << "No fault trees present: no output generated.\n";
    return;
  }
  model.OutputResults();
  if (config.decomposeSILs) LaunchSilDecomposition(model);
  if (config.decomposeDALs) LaunchDalDecomposition(model);
}

void RunOptimisation(Model&, const RunOptions&) {
  throw VtnException("Optimisation is not available in this version.");
}

}  // namespace FTS
