#include "app/RunPhases.h"

#include <iostream>
#include <memory>

#include "app/Config.h"
#include "app/DecompositionTools.h"
#include "model/Model.h"
#include "model/VtnException.h"
#include "optimisation/CoitGA.h"
#include "optimisation/NSGA.h"
#include "optimisation/Random.h"

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

namespace {

std::unique_ptr<GA> MakeSearch(Model& model, const RunOptions& options, std::int32_t run) {
  const Config& config = Config::Instance();
  if (!config.previousStateFileName.empty() && !config.forceRestart) {
    return LoadState(model, config.previousStateFileName, options.modelFile, run);
  }
  if (options.gaType == "CoitGA") {
    return std::make_unique<CoitGA>(model, options.modelFile, run);
  }
  return std::make_unique<NSGA>(model, options.modelFile, run);
}

/// One search from beginning to end. What ends it early is told, and the next one still runs.
void RunSearch(Model& model, const RunOptions& options, std::int32_t run) {
  std::unique_ptr<GA> search;
  try {
    search = MakeSearch(model, options, run);
    SeedRandom(Config::Instance().randomSeed);
    std::cout << "Starting Genetic Algorithm run number " << run << '\n';
    search->Evolve();
  } catch (const VtnException& exception) {
    std::cerr << "VtnException: " << exception.GetMessage() << '\n';
  }
  std::cout << "Genetic Algorithm finished: deleting\n";
}

/// Tells settings by which nothing is searched, or not what was asked for.
void WarnOfSettings(const RunOptions& options) {
  const Config& config = Config::Instance();
  if (options.refusedRandomSeed) {
    std::cerr << "Warning: randomSeed= wants a whole number from 1 to 4294967295, not \""
              << *options.refusedRandomSeed << "\". The search is seeded by the time.\n";
  }
  if (config.populationSize < 1) {
    std::cerr << "Warning: populationSize= wants a whole number above 0, variable or unlimited. "
                 "Nothing can be kept of a population of "
              << config.populationSize << ".\n";
  } else if (config.childPopulationSize < 1) {
    std::cerr << "Warning: childPopulationSize= wants a whole number above 0. No designs are tried "
                 "with "
              << config.childPopulationSize << ".\n";
  }
}

}  // namespace

void RunOptimisation(Model& model, const RunOptions& options) {
  Config& config = Config::Instance();
  WarnOfSettings(options);
  config.maxGenerations = options.maxGenerations.value_or(model.GetMaxGenerations());
  model.ResetImplementations();
  if (config.decomposeSILs) {
    config.encodingType = EncodingType::TreeAsil;
    model.Synthesise();
    model.Analyse(false);
  }
  for (std::int32_t run = 1; run <= config.numberOfRepeatRuns; ++run) {
    RunSearch(model, options, run);
  }
}

}  // namespace FTS
