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
};

}  // namespace FTS
