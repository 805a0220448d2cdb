// Gotos: jumps in failure logic, by label, by name, or along an allocation to another perspective.
// Part of resolution; see Resolution.cpp for what it works on and which marks it uses.

#include <memory>
#include <string>

#include "faulttree/DeviationProxies.h"
#include "faulttree/Gates.h"
#include "faulttree/GotoNode.h"
#include "faulttree/Resolution.h"
#include "model/Component.h"
#include "model/Deviation.h"
#include "model/DeviationName.h"
#include "model/Implementation.h"
#include "model/Model.h"
#include "model/Perspective.h"
#include "model/Port.h"
#include "model/VtnException.h"

namespace FTS {

namespace {

void AddExported(Model& model, FaultTreeNode& parent, const ExportedDeviation& deviation) {
  if (!deviation.instance) return;
  parent.AddChild(deviation.instance);
  if (!deviation.instance->resolved) model.ResolveDeviation(*deviation.instance);
}

void AddPortLogic(Model& model, FaultTreeNode& parent, Port& port,
                  const std::string& failureClass) {
  if (IsPropagator(port)) {
    AddPassThrough(model, parent, port, failureClass);
    return;
  }
  AddAnnotation(model, parent, port, failureClass);
  if (!HasInside(port)) return;
  AddLineLogic(model, parent, port.GetInternalExpression(failureClass, model.GetCurrentStateName()),
               *port.GetOwner(), true);
}

}  // namespace

std::shared_ptr<Deviation> FindNamedTarget(const Model& model, const std::string& name) {
  if (const auto found = model.gotoTargets.find(name); found != model.gotoTargets.end()) {
    return found->second;
  }
  if (model.perspectives.empty() || name.find("::") != std::string::npos) return nullptr;
  const std::string completed =
      FailureClassOf(name) + "-" + model.perspectives.begin()->first + "::" + PortOf(name);
  const auto found = model.gotoTargets.find(completed);
  return found != model.gotoTargets.end() && found->second->exported ? found->second : nullptr;
}

std::shared_ptr<ExportedDeviation> FindExportedDeviation(const Component& host,
                                                         const std::string& name) {
  const Implementation& implementation = host.GetCurrentImplementation();
  std::shared_ptr<ExportedDeviation> deviation =
      implementation.GetExportedDeviation(name, DefaultState);
  const std::size_t colons = name.find("::");
  if (!deviation && colons != std::string::npos) {
    // Written with the host's perspective in front of the name.
    deviation = implementation.GetExportedDeviation(
        FailureClassOf(name) + "-" + name.substr(colons + 2), DefaultState);
  }
  return deviation;
}

void ResolveGoto(Model& model, GotoNode& node) {
  const std::shared_ptr<Deviation> named = FindNamedTarget(model, node.name);
  const auto gate = std::make_shared<OrGate>("", &model);
  gate->resolved = true;
  if (const auto exported = std::dynamic_pointer_cast<ExportedDeviation>(named)) {
    AddExported(model, *gate, *exported);
  } else {
    const std::string failureClass = named ? named->failureClass : FailureClassOf(node.name);
    if (!named && failureClass.empty()) {
      throw VtnException("External destination invalid; missing failure class: " + node.name);
    }
    const std::shared_ptr<Port> target =
        named ? named->GetPort() : model.FindPort(PortOf(node.name));
    if (!target) throw VtnException("Cannot find target for goto: " + node.name);
    if (node.owner.expired() || !target->GetOwner()) {
      throw VtnException("Goto invalid; must have component: " + node.name);
    }
    AddPortLogic(model, *gate, *target, failureClass);
  }
  if (gate->GetChildCount() > 0) node.AddChild(gate);
}

void ResolveAllocation(Model& model, ExportedDeviationProxy& proxy) {
  const std::shared_ptr<Component> owner = proxy.owner.lock();
  const std::shared_ptr<Component> host =
      owner ? model.FindComponent(owner->currentAllocation) : nullptr;
  if (!host) {
    throw VtnException("Exported Deviation " + proxy.name + " has no source allocation!");
  }
  const auto deviation = FindExportedDeviation(*host, proxy.name);
  if (deviation) AddExported(model, proxy, *deviation);
}

}  // namespace FTS
