#pragma once

#include <cstdlib>
#include <string>

namespace FTS {

/// How many damaged inputs a robustness test makes: `usual` in the suite; the number in the
/// environment variable VTN_FUZZ_INPUTS where somebody wants a long search.
inline int FuzzCount(int usual) {
  const char* const wanted = std::getenv("VTN_FUZZ_INPUTS");
  return wanted ? std::atoi(wanted) : usual;
}

}  // namespace FTS
