#pragma once

#include "optimisation/Random.h"

namespace FTS {

// Choices that all encodings make alike.

/// One of two with the same chance; true for the first.
inline bool TakeFirst() { return RandomUniform() <= 0.5F; }

/// The rate of mutation at a depth below the top nodes of a hierarchy, which have 0. Right below
/// them, and nowhere else, it is ten times as rare, on purpose: searches are tuned to it.
inline double MutationRateAt(int depth, double rate) { return depth == 1 ? rate / 10.0 : rate; }

}  // namespace FTS
