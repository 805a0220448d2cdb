#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "support/StateMachineXml.h"

namespace FTS {

/// Up to seven states, one of them the start and one or two failed, with transitions at random:
/// ways back, ways to itself, several between two states, and dead ends among them. Causes are the
/// components "A" to "H" of a sketch.
std::vector<SketchedState> RandomMachine(std::uint64_t seed);

/// Which causes, all together, lead from the start to the failed state: the minimal ones of the
/// combinations along all ways that meet no state twice, walked forwards from the start. Without
/// any way there is no combination; for the start itself there is the empty one.
std::set<std::set<std::string>> MinimalWays(const std::vector<SketchedState>& states,
                                            const std::string& failed);

}  // namespace FTS
