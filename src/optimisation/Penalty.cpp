// The penalty for missed bounds by which the single-number search ranks designs.

#include <cmath>

#include "model/Model.h"
#include "model/Objective.h"
#include "optimisation/GA.h"
#include "optimisation/Individual.h"

namespace FTS {

namespace {

// A shortfall weighs by its square, an excess by its fourth power, which is on purpose.
constexpr double ShortfallPower = 2.0;
constexpr double ExcessPower = 4.0;

double Term(double distance, double scale, double power) {
  return std::pow(distance / (scale == 0.0 ? 1.0 : scale), power);
}

}  // namespace

double Individual::GetPenalty() const {
  const double weight = ga->GetPenaltyWeight();
  if (weight == 0.0) return 0.0;
  double sum = 0.0;
  const Model& model = *ga->model;
  for (auto entry = model.ObjectivesBegin(); entry != model.ObjectivesEnd(); ++entry) {
    const Objective& objective = entry->second;
    const double value = GetValue(entry->first);
    if (objective.hasLowerBound && objective.lowerBound > value) {
      sum += Term(value - objective.lowerBound, objective.lowerScale, ShortfallPower);
    }
    if (objective.hasUpperBound && value > objective.upperBound) {
      sum += Term(value - objective.upperBound, objective.upperScale, ExcessPower);
    }
  }
  return weight * sum;
}

}  // namespace FTS
