#pragma once

#include <cstddef>

#include "faulttree/Forward.h"

namespace FTS {

/// What came of an attempt to work on a gate's whole graph at once.
struct FamilyAttempt {
  bool done = false;         ///< The gate has its cut sets.
  std::size_t nodesMet = 0;  ///< Nodes looked at to find out whether the graph is fit for it.
};

/// Fills the gate's cut sets from families of cut sets (see `CutSetFamilies`) of the nodes below,
/// which keep none of their own; the result is the same as that of multiplying cut sets one by one,
/// at a fraction of the cost. Nothing is done where the two would differ:
/// - members exclude each other, and every removed cut set has its warning;
/// - two events below share a signature bit, so that subsets are seen where there are none;
/// - a product of primes overflows, so that different cut sets have one key.
FamilyAttempt GenerateThroughFamilies(FaultTreeGate& gate);

}  // namespace FTS
