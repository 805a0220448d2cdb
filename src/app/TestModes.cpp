#include "app/TestModes.h"

#include <iostream>

namespace FTS {

int RunRegressionTests() {
  std::cerr << "The regression test mode is not available in this version.\n";
  return 1;
}

int RunPruningTests() {
  std::cerr << "The pruning test mode is not available in this version.\n";
  return 1;
}

}  // namespace FTS
