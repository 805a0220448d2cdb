#include "analysis/ModuleEvent.h"

#include <algorithm>

#include "analysis/Prime.h"
#include "faulttree/FaultTreeGate.h"

namespace FTS {

ModuleEvent::ModuleEvent(FaultTreeGate& initGate)
    : BasicEvent("MOD: " + initGate.name, initGate.model, true, NodeType::Module, initGate.GetId()),
      gate(&initGate) {
  prime = Prime::Instance().Next();
}

ModuleEvent::~ModuleEvent() = default;

bool ModuleEvent::IsMadeOfNormalEvents() const {
  return std::any_of(moduleCutSets.begin(), moduleCutSets.end(),
                     [](const auto& cutSet) { return cutSet->GetEffectiveOrder() == 0; });
}

std::shared_ptr<BasicEvent> ModuleEvent::MakeSame(Model* /*target*/, int /*newId*/) {
  return std::make_shared<ModuleEvent>(*gate);
}

}  // namespace FTS
