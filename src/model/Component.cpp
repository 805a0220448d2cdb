#include "model/Component.h"

#include <algorithm>

#include "app/DiagnosticLog.h"
#include "faulttree/FaultTreeNode.h"
#include "model/Implementation.h"
#include "model/Model.h"
#include "model/Perspective.h"
#include "model/Port.h"
#include "model/PrintLine.h"
#include "model/Subsystem.h"
#include "model/VtnException.h"

namespace FTS {

namespace {

using PortsByMessage = std::map<std::string, std::vector<std::shared_ptr<Port>>>;

std::shared_ptr<Port> FindMessagePort(const PortsByMessage& messages, const std::string& message,
                                      const std::string& direction, const Component& component) {
  const auto found = messages.find(message);
  if (found == messages.end() || found->second.empty()) return nullptr;
  if (found->second.size() > 1) {
    DiagnosticLog::Instance().AddWarning("Ambiguous port reference - multiple " + direction +
                                         " linked to line message " + message + " in component " +
                                         component.GetFullNameText());
  }
  return found->second.front();
}

PortsByMessage CopyMessages(const PortsByMessage& messages, const Component& target) {
  PortsByMessage copies;
  for (const auto& [message, ports] : messages) {
    auto& copy = copies[message];
    for (const auto& port : ports) {
      if (auto own = target.FindPort(port->GetLocalName())) copy.push_back(std::move(own));
    }
  }
  return copies;
}

}  // namespace

Component::Component(const std::string& localName, const std::shared_ptr<Subsystem>& initOwner,
                     Model* initModel)
    : fullName(initOwner ? initOwner->GetQualifier() : "", localName),
      owner(initOwner),
      model(initModel),
      fullNameText(fullName.ToString()) {}

Component::~Component() = default;

void Component::Print(std::ostream& stream, int indent) const {
  PrintLine(stream, indent, "COMPONENT: " + fullNameText);
  PrintLine(stream, indent, "Desc: " + description);
  PrintLine(stream, indent, "numPorts: " + std::to_string(ports.size()));
  PrintLine(stream, indent, "numImplementations: " + std::to_string(implementations.size()));
  for (const auto& [name, port] : ports) port->Print(stream, indent + NestedIndent);
  for (const auto& implementation : implementations) {
    if (implementation == currentImplementation) PrintLine(stream, indent, "Current:");
    implementation->Print(stream, indent + NestedIndent);
  }
  PrintLine(stream, indent, "END COMPONENT");
}

void Component::AddPort(const std::shared_ptr<Port>& port) { ports[port->GetLocalName()] = port; }

void Component::AddImplementation(const std::shared_ptr<Implementation>& implementation) {
  implementations.push_back(implementation);
}

void Component::SelectImplementation(int index) {
  if (index < 0 || index >= static_cast<int>(implementations.size())) return;
  currentImplementation = implementations[static_cast<std::size_t>(index)];
}

std::shared_ptr<Perspective> Component::GetPerspective() const {
  const std::shared_ptr<Subsystem> around = GetOwnerSubsystem();
  if (!around) return nullptr;
  if (const auto component = around->GetOwnerComponent()) return component->GetPerspective();
  return around->perspective.lock();
}

std::shared_ptr<Subsystem> Component::GetSubsystem() const {
  return GetCurrentImplementation().subsystem;
}

Implementation& Component::GetCurrentImplementation() const {
  if (!currentImplementation) {
    throw VtnException("No current implementation found for component: " + fullNameText);
  }
  return *currentImplementation;
}

double Component::GetRiskTime() const {
  if (riskTime > 0.0) return riskTime;
  const std::shared_ptr<Subsystem> around = GetOwnerSubsystem();
  if (around) {
    if (const auto component = around->GetOwnerComponent()) return component->GetRiskTime();
    const std::shared_ptr<Perspective> root = around->perspective.lock();
    if (root && root->riskTime > 0.0) return root->riskTime;
  }
  return model->riskTime;
}

std::shared_ptr<Port> Component::FindInputPort(const std::string& message) const {
  return FindMessagePort(inputMessages, message, "inports", *this);
}

std::shared_ptr<Port> Component::FindOutputPort(const std::string& message) const {
  return FindMessagePort(outputMessages, message, "outports", *this);
}

std::shared_ptr<Port> Component::FindPort(const std::string& localName) const {
  const auto found = ports.find(localName);
  return found == ports.end() ? nullptr : found->second;
}

void Component::ForgetPortExpressions() {
  for (const auto& [name, port] : ports) port->ClearInstances();
  if (const auto inside = GetSubsystem()) inside->ForgetPortExpressions();
}

void Component::ClearPorts() {
  for (const auto& [name, port] : ports) port->Clear();
  for (const auto& implementation : implementations) implementation->Clear();
}

void Component::ReindexConfigurable() {
  if (includeInOptimisation) {
    model->AddConfigurableComponent(shared_from_this());
    return;
  }
  const Implementation* current = currentImplementation.get();
  if (current && current->subsystem && current->hBlockType != HBlockType::NOT_REFINED) {
    current->subsystem->ReindexConfigurable();
  }
}

void Component::CopyFieldsTo(Component& target) const {
  target.allocations = allocations;
  target.currentAllocation = currentAllocation;
  target.variant = variant;
  target.description = description;
  target.sid = sid;
  target.maxReplicants = maxReplicants;
  target.includeInOptimisation = includeInOptimisation;
  target.riskTime = riskTime;
}

void Component::CopyPortsTo(const std::shared_ptr<Component>& target) const {
  for (const auto& [name, port] : ports) {
    target->AddPort(std::make_shared<Port>(name, target, target->model));
  }
}

void Component::CopyMessagesTo(Component& target) const {
  target.inputMessages = CopyMessages(inputMessages, target);
  target.outputMessages = CopyMessages(outputMessages, target);
}

std::shared_ptr<Component> Component::Clone(Model* target,
                                            const std::shared_ptr<Subsystem>& newOwner,
                                            CloneMode mode) const {
  auto copy = std::make_shared<Component>(GetLocalName(), newOwner, target);
  target->AddComponent(copy);
  CopyPortsTo(copy);
  CopyFieldsTo(*copy);
  CopyMessagesTo(*copy);
  for (const auto& implementation : implementations) {
    const auto added = mode == CloneMode::NewIdentity ? implementation->CloneForReplica(copy)
                                                      : implementation->Clone(copy);
    if (implementation == currentImplementation) copy->currentImplementation = added;
  }
  return copy;
}

void Component::ConnectClone(const std::shared_ptr<Component>& target) const {
  CopyFieldsTo(*target);
  CopyMessagesTo(*target);
  for (std::size_t i = 0; i < implementations.size(); ++i) {
    if (i == target->implementations.size()) {
      implementations[i]->Clone(target);
    } else if (implementations[i]->subsystem && target->implementations[i]->subsystem) {
      target->implementations[i]->subsystem->RebuildFrom(*implementations[i]->subsystem);
    }
    if (implementations[i] == currentImplementation) {
      target->currentImplementation = target->implementations[i];
    }
  }
}

}  // namespace FTS
