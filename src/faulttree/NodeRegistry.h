#pragma once

#include <cstdint>

namespace FTS {

/// Counts a node that was made or has died. Clones that keep their ids are counted, too, so that a
/// count may come to its end before the ids do. It goes round then: differences stay what they are.
inline void CountOn(int& counter) {
  counter = static_cast<int>(static_cast<std::uint32_t>(counter) + 1U);
}

/// Lets the ids of nodes go on behind that one, for tests of where they end: the node made behind
/// the last id of all throws `VtnException`.
void ContinueNodeIdsBehind(int id);

}  // namespace FTS
