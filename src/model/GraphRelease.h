#pragma once

#include <memory>
#include <vector>

#include "faulttree/Forward.h"

namespace FTS {

/// Takes the graphs below the nodes apart, so that every node in them that nobody else holds dies:
/// empties the children lists of all states, and drops circles and memoised clones. Events stay as
/// they are. Graphs may hold cycles and be of any depth. Not for templates that are still needed.
void ReleaseGraphs(std::vector<std::shared_ptr<FaultTreeNode>> roots);

/// Drops what synthesis and analysis have left on an event that outlives them: its complement,
/// diagnostic coverage and cut sets.
void ForgetAnalysis(BasicEvent& event);

}  // namespace FTS
