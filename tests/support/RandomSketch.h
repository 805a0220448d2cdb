#pragma once

#include <cstdint>

#include "support/ModelSketch.h"

namespace FTS {

/// A sketch made up from a seed. Seldom it has a loop, no tree or too many events; RandomModel
/// tries another seed then. Throws SketchLoop when a loop shows already while it is made.
ModelSketch MakeRandomSketch(std::uint64_t seed, bool unconnected);

}  // namespace FTS
