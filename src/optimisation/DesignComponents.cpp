#include "optimisation/DesignComponents.h"

#include "model/Component.h"
#include "model/Model.h"
#include "model/Perspective.h"
#include "model/Subsystem.h"
#include "model/VtnException.h"

namespace FTS {

Component& FindDesignComponent(const Model& model, const std::string& fullName) {
  const std::shared_ptr<Component> component = model.FindComponent(fullName);
  if (!component) throw VtnException("Component of the encoding is not in the model: " + fullName);
  if (component->implementations.empty()) {
    throw VtnException("No current implementation found for component: " + fullName);
  }
  return *component;  // The model owns it.
}

void RebuildPortExpressions(Model& model) {
  for (const auto& [name, perspective] : model.perspectives) {
    if (!perspective->rootSubsystem) continue;
    perspective->rootSubsystem->ForgetPortExpressions();
    perspective->rootSubsystem->BuildPortExpressions();
  }
}

}  // namespace FTS
