// The measuring of a design: from an encoding to objective values and missed bounds. Nearly all the
// time of a search goes by here, in one synthesis and one analysis for each candidate.

#include <algorithm>
#include <iostream>
#include <string>

#include "analysis/FaultTree.h"
#include "app/Config.h"
#include "app/DiagnosticLog.h"
#include "model/Model.h"
#include "model/Objective.h"
#include "model/VtnException.h"
#include "optimisation/GA.h"
#include "optimisation/Individual.h"

namespace FTS {

namespace {

constexpr std::string_view UnavailabilityWord = "Unavailability";

/// What stands in the brackets of "Unavailability(tree)"; nothing when there are none.
std::string TreeNameIn(const std::string& objective) {
  constexpr std::size_t AroundTheName = 16;  // The word and both brackets.
  const std::size_t bracket = objective.find('(');
  if (bracket == std::string::npos) return "";
  const std::size_t rest = objective.size() - bracket - 1;
  const std::size_t name = objective.size() < AroundTheName ? 0 : objective.size() - AroundTheName;
  return objective.substr(bracket + 1, std::min(rest, name));
}

double UnavailabilityFor(const std::string& objective, Model& model) {
  if (model.faultTrees.empty()) return 0.0;
  const bool named = objective.find('(') != std::string::npos;
  int index = named ? model.FindFaultTreeIndex(TreeNameIn(objective)) : 0;
  if (index < 0) {
    DiagnosticLog::Instance().AddWarning("Fault Tree with name not found. Using first fault tree.");
    index = 0;
  }
  return model.GetFaultTreeUnavailability(index);
}

double RiskOf(const Model& model) {
  double risk = 0.0;
  for (const auto& tree : model.faultTrees) {
    risk += ToSixDigits(tree->unavailability) * ToSixDigits(tree->frequency);
  }
  return risk;
}

}  // namespace

bool Individual::Evaluate() {
  try {
    return Measure();
  } catch (const ParseException& exception) {
    throw Named(exception.GetMessage() + " at line number: " + std::to_string(exception.GetLine()));
  } catch (const VtnException& exception) {
    throw Named(exception.GetMessage());
  }
}

VtnException Individual::Named(const std::string& message) const {
  return VtnException(message + " (individual " + std::to_string(individualId) + ")");
}

bool Individual::Measure() {
  const Config& config = Config::Instance();
  Model& model = *ga->model;
  model.SetPrimeIndex(static_cast<int>(ga->basePrimeCount));
  lastAlteredGeneration = ga->generation;
  const bool valid = encoding->IsValid();
  const bool byTables = config.useRBD && !config.decomposeSILs;
  if (!valid) return false;

  std::unique_ptr<Model> clone;
  Model* working = nullptr;
  if (!byTables) {
    const bool copy = encoding->GetType() == EncodingType::Fixed;
    working = model.EvaluateInClone(*encoding, copy, clone);
    if (!working) return false;
  }
  if (config.decomposeSILs) {
    EvaluateSafetyLevels(*working);
  } else {
    EvaluateDesign(working);
  }
  CheckBounds();
  return true;
}

/// Without a working model the encoding's own sums serve, and what needs trees is not measured.
void Individual::EvaluateDesign(Model* working) {
  if (working) {
    working->Synthesise();
    working->Analyse(Config::Instance().useBDDs);
  }
  evaluations.clear();
  feasible = true;
  const Model& model = *ga->model;
  for (auto entry = model.ObjectivesBegin(); entry != model.ObjectivesEnd(); ++entry) {
    const std::string& name = entry->first;
    if (name == "Cost") {
      evaluations[name] = ToSixDigits(working ? working->EvaluateCost() : encoding->GetSum1());
    } else if (name == "Weight") {
      evaluations[name] = ToSixDigits(working ? working->EvaluateWeight() : encoding->GetSum2());
    } else if (name == "Risk" && working) {
      evaluations[name] = RiskOf(*working);
    } else if (name.find(UnavailabilityWord) != std::string::npos && working) {
      evaluations[name] = ToSixDigits(UnavailabilityFor(name, *working));
    }
  }
  if (working) working->ClearSynthesis();
}

void Individual::EvaluateSafetyLevels(Model& working) {
  asilCost = ToSixDigits(working.EvaluateASILCost());
  evaluations["ASILCost"] = asilCost;
  const double invalids = ToSixDigits(working.CountRequirementViolations());
  evaluations["ASILInvalids"] = invalids;
  RecordInvalids(invalids);
}

void Individual::CheckBounds() {
  feasible = true;
  violationCount = 0;
  for (const auto& [name, value] : evaluations) {
    double violation = 0.0;
    const Objective* objective = ga->model->GetObjective(name);
    if (objective && objective->hasLowerBound && value < objective->lowerBound) {
      feasible = false;
      ++violationCount;
      violation = objective->lowerBound - value;
    }
    if (objective && objective->hasUpperBound && value > objective->upperBound) {
      feasible = false;
      ++violationCount;
      violation = value - objective->upperBound;
    }
    violations[name] = violation;
  }
}

}  // namespace FTS
