#pragma once

#include <string>

#include "model/VtnException.h"

namespace FTS {

/// The message of the failure that `work` ends with; "no exception" when it ends well.
template <typename Work>
std::string ThrownMessage(const Work& work) {
  try {
    work();
  } catch (const VtnException& e) {
    return e.GetMessage();
  }
  return "no exception";
}

}  // namespace FTS
