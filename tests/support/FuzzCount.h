#pragma once

#include <cstdint>
#include <cstdlib>
#include <string>

namespace FTS {

/// How many damaged inputs a robustness test makes: `usual` in the suite; the number in the
/// environment variable VTN_FUZZ_INPUTS where somebody wants a long search.
inline int FuzzCount(int usual) {
  const char* const wanted = std::getenv("VTN_FUZZ_INPUTS");
  return wanted ? std::atoi(wanted) : usual;
}

/// What the damage starts from: `usual` in the suite; the number in the environment variable
/// VTN_FUZZ_SEED, so that a second search makes other inputs than the first.
inline std::uint64_t FuzzSeed(std::uint64_t usual) {
  const char* const wanted = std::getenv("VTN_FUZZ_SEED");
  return wanted ? std::strtoull(wanted, nullptr, 10) : usual;
}

}  // namespace FTS
