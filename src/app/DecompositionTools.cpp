#include "app/DecompositionTools.h"

#include "model/VtnException.h"

namespace FTS {

void LaunchSilDecomposition(const Model&) {
  throw VtnException("The SIL decomposition tool is not launched by this version.");
}

void LaunchDalDecomposition(const Model&) {
  throw VtnException("The DAL decomposition tool is not launched by this version.");
}

}  // namespace FTS
