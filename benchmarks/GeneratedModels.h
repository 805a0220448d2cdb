#pragma once

#include <string>

namespace FTS {

/// The text of a model whose components C0, C1... form a chain: each fails by an event of its own
/// or because the one before it fails. The hazard is the failure of the last one, so its tree has
/// `componentCount` minimal cut sets of order 1.
std::string ChainModelText(int componentCount);

}  // namespace FTS
