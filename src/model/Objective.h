#pragma once

#include <string>

namespace FTS {

/// What the search for designs minimises or maximises, as the model declares it.
struct Objective {
  std::string name;
  bool maximise = false;
  bool hasLowerBound = false;
  bool hasUpperBound = false;
  double lowerBound = 0.0;
  double upperBound = 0.0;

  // Thresholds of the penalty for missed bounds: those in use, and those of the start.
  double lowerScale = 0.0;
  double lowerScaleStart = 0.0;
  double upperScale = 0.0;
  double upperScaleStart = 0.0;

  /// Derives the thresholds from the bounds: the factor and the value are fixed.
  void ResetScales() {
    lowerScaleStart = hasLowerBound ? lowerBound / 1.3 : 0.0;
    upperScaleStart = hasUpperBound ? 10.0 : 0.0;
    lowerScale = lowerScaleStart;
    upperScale = upperScaleStart;
  }
};

}  // namespace FTS
