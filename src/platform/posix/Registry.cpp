#include "platform/Registry.h"

#include <utility>

namespace FTS {

namespace {

std::unique_ptr<Registry>& Replacement() {
  static std::unique_ptr<Registry> registry;
  return registry;
}

}  // namespace

Registry* Registry::Instance() { return Replacement().get(); }

std::unique_ptr<Registry> Registry::Replace(std::unique_ptr<Registry> registry) {
  std::swap(Replacement(), registry);
  return registry;
}

}  // namespace FTS
