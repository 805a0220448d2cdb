#include "model/Subsystem.h"

#include <algorithm>

#include "faulttree/FaultTreeNode.h"
#include "model/Component.h"
#include "model/Implementation.h"
#include "model/Line.h"
#include "model/Perspective.h"
#include "model/Port.h"
#include "model/PrintLine.h"

namespace FTS {

Subsystem::Subsystem(Model* initModel) : model(initModel) {}

Subsystem::~Subsystem() = default;

void Subsystem::Print(std::ostream& stream, int indent) const {
  PrintLine(stream, indent, "SUBSYSTEM: " + GetQualifier());
  PrintLine(stream, indent, "numComponents: " + std::to_string(components.size()));
  PrintLine(stream, indent, "numLines: " + std::to_string(lines.size()));
  for (const auto& [name, component] : components) component->Print(stream, indent + NestedIndent);
  for (const auto& line : lines) line->Print(stream, indent + NestedIndent);
  PrintLine(stream, indent, "END SUBSYSTEM");
}

void Subsystem::AddComponent(const std::shared_ptr<Component>& component) {
  components[component->GetLocalName()] = component;
}

void Subsystem::AddLine(const std::shared_ptr<Line>& line) { lines.push_back(line); }

std::shared_ptr<Component> Subsystem::GetOwnerComponent() const {
  const std::shared_ptr<Implementation> implementation = owner.lock();
  return implementation ? implementation->GetOwner() : nullptr;
}

std::string Subsystem::GetQualifier() const {
  if (const auto component = GetOwnerComponent()) return component->GetFullNameText();
  if (const auto root = perspective.lock()) return root->name + "::";
  return "";
}

// Lines may reach into components inside the subsystem's own, so all ports are untied before the
// first line is tied.
void Subsystem::BuildPortExpressions() {
  ForgetLineEnds();
  TieLines();
}

void Subsystem::ForgetLineEnds() {
  for (const auto& [name, component] : components) {
    for (const auto& [portName, port] : component->ports) port->ForgetLineEnds();
    // A component without implementation is complained of when lines are tied, in its turn.
    const auto& implementation = component->currentImplementation;
    if (implementation && implementation->subsystem) implementation->subsystem->ForgetLineEnds();
  }
}

void Subsystem::TieLines() {
  for (const auto& line : lines) line->BuildPortExpressions();
  for (const auto& [name, component] : components) {
    if (const auto inside = component->GetSubsystem()) inside->TieLines();
  }
}

void Subsystem::ForgetPortExpressions() {
  for (const auto& [name, component] : components) component->ForgetPortExpressions();
}

void Subsystem::Instantiate() {
  for (const auto& [name, component] : components) {
    component->GetCurrentImplementation().Instantiate();
  }
}

void Subsystem::Clear() {
  for (const auto& line : lines) line->Untie();
  for (const auto& [name, component] : components) component->ClearPorts();
}

double Subsystem::TotalCost() const {
  double sum = 0.0;
  for (const auto& [name, component] : components) {
    const Implementation& implementation = component->GetCurrentImplementation();
    sum += implementation.cost;
    if (implementation.subsystem) sum += implementation.subsystem->TotalCost();
  }
  return sum;
}

double Subsystem::TotalWeight() const {
  double sum = 0.0;
  for (const auto& [name, component] : components) {
    const Implementation& implementation = component->GetCurrentImplementation();
    sum += implementation.weight;
    if (implementation.subsystem) sum += implementation.subsystem->TotalWeight();
  }
  return sum;
}

int Subsystem::CountAnnotatedComponents() const {
  int count = 0;
  for (const auto& [name, component] : components) {
    const auto& implementation = component->currentImplementation;
    if (!implementation) continue;
    if (implementation->CountOutputDeviations(DefaultState) > 0) ++count;
    if (implementation->subsystem) count += implementation->subsystem->CountAnnotatedComponents();
  }
  return count;
}

void Subsystem::ReindexConfigurable() {
  for (const auto& [name, component] : components) component->ReindexConfigurable();
}

void Subsystem::ResetImplementations() {
  for (const auto& [name, component] : components) {
    component->SelectImplementation(0);
    for (const auto& implementation : component->implementations) {
      if (implementation->subsystem) implementation->subsystem->ResetImplementations();
    }
  }
}

std::shared_ptr<Subsystem> Subsystem::Clone(Model* target,
                                            const std::shared_ptr<Perspective>& newPerspective,
                                            const std::shared_ptr<Implementation>& newOwner,
                                            CloneMode mode) const {
  auto copy = std::make_shared<Subsystem>(target);
  copy->perspective = newPerspective;
  copy->owner = newOwner;
  for (const auto& [name, component] : components) {
    copy->AddComponent(component->Clone(target, copy, mode));
  }
  for (const auto& line : lines) copy->AddLine(line->Clone(copy));
  return copy;
}

void Subsystem::Reconnect(const Subsystem& source) {
  const std::size_t count = std::min(lines.size(), source.lines.size());
  for (std::size_t i = 0; i < count; ++i) source.lines[i]->CopyExpressions(*lines[i]);
}

void Subsystem::RebuildFrom(const Subsystem& source) {
  for (const auto& [name, component] : source.components) {
    const auto own = components.find(name);
    if (own != components.end()) component->ConnectClone(own->second);
  }
  Reconnect(source);
}

}  // namespace FTS
