// Looking things of the model up by name. A full name is walked from the top of its perspective
// through the current implementations, one map look-up per level.

#include "app/DiagnosticLog.h"
#include "model/Component.h"
#include "model/HierarchicalName.h"
#include "model/Implementation.h"
#include "model/Model.h"
#include "model/Perspective.h"
#include "model/Port.h"
#include "model/StateMachine.h"
#include "model/Subsystem.h"
#include "model/VtnException.h"

namespace FTS {

namespace {

/// Failure expressions turn the keyword "DEFAULT" into a name by this spelling, so that it is what
/// reaches us for the perspective of models that declare none.
constexpr const char* WrittenDefault = "Default";
constexpr const char* DefaultPerspective = "DEFAULT";

/// Null when the model has no perspective at all and the name asks for none.
std::shared_ptr<Perspective> FindPerspective(const Model& model, const std::string& name,
                                             const std::string& resolving) {
  if (name.empty() && model.perspectives.empty()) return nullptr;
  if (name.empty()) return model.perspectives.begin()->second;
  auto found = model.perspectives.find(name);
  if (found == model.perspectives.end() && name == WrittenDefault) {
    found = model.perspectives.find(DefaultPerspective);
  }
  if (found != model.perspectives.end()) return found->second;
  const std::string message = "ERROR: Perspective not found: " + name + resolving;
  DiagnosticLog::Instance().AddError(message);
  throw VtnException(message);
}

std::shared_ptr<Component> FindIn(const Subsystem* subsystem, const std::string& name) {
  if (!subsystem) return nullptr;
  const auto found = subsystem->components.find(name);
  return found == subsystem->components.end() ? nullptr : found->second;
}

}  // namespace

std::shared_ptr<Port> Model::FindPort(const std::string& fullName) const {
  const HierarchicalName target(fullName);
  const std::shared_ptr<Component> component = WalkPath(target, "");
  return component ? component->FindPort(target.Name()) : nullptr;
}

std::shared_ptr<Component> Model::FindComponent(const std::string& fullName) const {
  const HierarchicalName target(fullName);
  // Scripts match the message, which runs into the name without a blank.
  const std::string resolving = " when resolving" + fullName;
  const auto perspective = FindPerspective(*this, target.Perspective(), resolving);
  if (!perspective) return nullptr;
  if (target.Path().empty()) return FindIn(perspective->rootSubsystem.get(), target.Name());
  const std::shared_ptr<Component> around = WalkPath(target, resolving);
  return around ? FindIn(around->GetSubsystem().get(), target.Name()) : nullptr;
}

/// The component in which the named thing lies; null when there is none.
std::shared_ptr<Component> Model::WalkPath(const HierarchicalName& target,
                                           const std::string& resolving) const {
  const auto perspective = FindPerspective(*this, target.Perspective(), resolving);
  if (!perspective || target.Path().empty()) return nullptr;
  std::shared_ptr<Component> component =
      FindIn(perspective->rootSubsystem.get(), target.Path().front());
  for (std::size_t level = 1; component && level < target.Path().size(); ++level) {
    component = FindIn(component->GetSubsystem().get(), target.Path()[level]);
  }
  return component;
}

std::shared_ptr<Hazard> Model::FindHazard(const std::string& hazardName) const {
  const auto found = hazards.find(hazardName);
  return found == hazards.end() ? nullptr : found->second;
}

const std::string& Model::GetCurrentStateName() const { return stateStack.back()->name; }

}  // namespace FTS
