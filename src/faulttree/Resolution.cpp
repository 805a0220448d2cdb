// Resolution: grows the logic of a top event by walking backwards across the architecture. A leaf
// that names a deviation at a port gets, as its child, what the component says about that port: its
// own annotation, the lines inside it, or for a propagator the lines on its other side. Works on
// instances only (Port::Get...Expression, copies of deviations made by Instantiate); templates in
// components and lines are never touched. Marks: `resolved`, set for good, so that each node is
// walked once per synthesis; a node met again is simply used once more, and a cycle in the
// architecture becomes a cycle in the graph. Children are appended only.

#include "faulttree/Resolution.h"

#include <memory>
#include <string>

#include "app/DiagnosticLog.h"
#include "faulttree/DeviationProxies.h"
#include "faulttree/Gates.h"
#include "faulttree/GotoNode.h"
#include "model/Component.h"
#include "model/Deviation.h"
#include "model/DeviationName.h"
#include "model/Implementation.h"
#include "model/Model.h"
#include "model/Port.h"
#include "model/StateMachine.h"
#include "model/VtnException.h"

namespace FTS {

using Pointer = FaultTreeNode::Pointer;

bool HasAnnotation(const Port& port) {
  return port.GetOwner()->GetCurrentImplementation().hBlockType != HBlockType::REFINED;
}

bool HasInside(const Port& port) {
  return port.GetOwner()->GetCurrentImplementation().hBlockType != HBlockType::NOT_REFINED;
}

bool IsPropagator(const Port& port) {
  return port.GetOwner()->GetCurrentImplementation().hBlockType == HBlockType::PROPAGATOR;
}

void AddLineLogic(Model& model, FaultTreeNode& parent, const Pointer& expression,
                  const Component& from, bool descending) {
  if (!expression) return;
  parent.AddChild(expression);
  if (expression->resolved) return;
  expression->resolved = true;
  model.ResolveConnection(*expression, from, descending);
}

void AddPassThrough(Model& model, FaultTreeNode& parent, const Port& port,
                    const std::string& failureClass) {
  const std::shared_ptr<Component> component = port.GetOwner();
  // With more than two ports it is open where the deviation comes from, so it goes nowhere.
  if (component->ports.size() != 2) return;
  const auto first = component->ports.begin();
  Port& other = first->second.get() == &port ? *std::next(first)->second : *first->second;
  AddLineLogic(model, parent,
               other.GetExternalExpression(failureClass, model.GetCurrentStateName()), *component,
               false);
}

void AddAnnotation(Model& model, FaultTreeNode& parent, Port& port,
                   const std::string& failureClass) {
  if (!HasAnnotation(port)) return;
  const auto deviation = port.GetOutputDeviation(failureClass, model.GetCurrentStateName());
  if (!deviation || !deviation->expression) return;
  if (!deviation->resolved) {
    deviation->resolved = true;
    model.ResolveDeviation(*deviation->expression);
  }
  parent.AddChild(deviation->expression);
}

Pointer JoinInside(Model& model, const Port& port, const Pointer& annotation,
                   const Pointer& inside) {
  if (!inside) return annotation;
  model.ResolveConnection(*inside, *port.GetOwner(), true);
  if (!annotation) return inside;
  if (annotation == inside) return annotation;
  // Not added to the annotation itself: a line inside that meets the port from within takes the
  // annotation, and would find itself there.
  const auto either = std::make_shared<OrGate>(annotation->name, &model);
  either->resolved = true;
  either->AddChild(annotation);
  either->AddChild(inside);
  return either;
}

namespace {

/// Makes the state that a proxy names the one in which deviations are resolved, for as long as it
/// lives.
class StateScope {
 public:
  StateScope(Model& initModel, const FaultTreeNode& node)
      : model(initModel), pushed(node.type == NodeType::State && !node.resolved) {
    if (pushed) model.stateStack.push_back(static_cast<const StateProxy&>(node).targetState);
  }
  ~StateScope() {
    if (pushed) model.stateStack.pop_back();
  }
  StateScope(const StateScope&) = delete;
  StateScope& operator=(const StateScope&) = delete;

 private:
  Model& model;
  const bool pushed;
};

void ResolveInput(Model& model, InputDeviationProxy& proxy) {
  const std::shared_ptr<Port> port = proxy.deviation ? proxy.deviation->GetPort() : nullptr;
  if (!port) {
    if (proxy.name != "OUTPUTPORT") {
      DiagnosticLog::Instance().AddError("Cannot find port " + proxy.name);
    }
    return;
  }
  const Pointer expression =
      port->GetExternalExpression(proxy.deviation->failureClass, model.GetCurrentStateName());
  if (!expression) return;
  proxy.AddChild(expression);
  if (!expression->resolved) model.ResolveConnection(*expression, *port->GetOwner(), false);
}

/// The logic of a hazard's leaf; null when the port has none.
Pointer LogicOfHazardLeaf(Model& model, Port& port, const std::string& failureClass) {
  const auto deviation = HasAnnotation(port)
                             ? port.GetOutputDeviation(failureClass, model.GetCurrentStateName())
                             : nullptr;
  const Pointer inside =
      HasInside(port) ? port.GetInternalExpression(failureClass, DefaultState) : nullptr;
  if (!deviation) return JoinInside(model, port, nullptr, inside);
  const Pointer logic = JoinInside(model, port, deviation->expression, inside);
  if (deviation->expression && !deviation->resolved) {
    deviation->resolved = true;
    model.ResolveDeviation(*deviation->expression);
  }
  return logic;
}

void ResolveHazardLeaf(Model& model, FaultTreeNode& node) {
  const std::string portName = PortOf(node.name);
  const std::shared_ptr<Port> port = model.FindPort(portName);
  if (!port) {
    DiagnosticLog::Instance().AddError("Cannot find port " +
                                       (portName.empty() ? node.name : portName));
    return;
  }
  const std::string failureClass = FailureClassOf(node.name);
  if (IsPropagator(*port)) AddPassThrough(model, node, *port, failureClass);
  if (node.GetChildCount() > 0) return;
  const Pointer logic = LogicOfHazardLeaf(model, *port, failureClass);
  if (!logic) {
    throw VtnException("Invalid output deviation: " + failureClass + "-" + port->GetFullNameText());
  }
  node.AddChild(logic);
}

}  // namespace

void Model::ResolveHazardExpression(FaultTreeNode& node) {
  if (node.resolved) return;
  node.resolved = true;
  if (node.GetChildCount() > 0) {
    for (int i = 0; i < node.GetChildCount(); ++i) ResolveHazardExpression(*node.GetChild(i));
    return;
  }
  if (node.type != NodeType::OutputDeviation) {
    throw VtnException("Invalid leaf node in hazard expression: " + node.name);
  }
  ResolveHazardLeaf(*this, node);
}

void Model::ResolveDeviation(FaultTreeNode& node) {
  const StateScope scope(*this, node);
  if (node.resolved) return;
  node.resolved = true;
  if (node.GetChildCount() > 0) {
    for (int i = 0; i < node.GetChildCount(); ++i) ResolveDeviation(*node.GetChild(i));
    return;
  }
  switch (node.type) {
    case NodeType::InputDeviation:
      // Types are shared by proxies and the events that stand in for them; only proxies are
      // resolved.
      if (node.IsProxy()) ResolveInput(*this, static_cast<InputDeviationProxy&>(node));
      return;
    case NodeType::ExternalDeviation:
      if (node.IsProxy()) {
        ResolveAllocation(*this, static_cast<ExportedDeviationProxy&>(node));
      }
      return;
    case NodeType::External:
      ResolveGoto(*this, static_cast<GotoNode&>(node));
      return;
    default:
      return;  // Events need nothing.
  }
}

bool Model::ResolveConnection(FaultTreeNode& node, const Component& from, bool descending) {
  node.resolved = true;
  if (node.GetChildCount() > 0) {
    for (int i = 0; i < node.GetChildCount(); ++i) {
      FaultTreeNode& child = *node.GetChild(i);
      if (!child.resolved && !ResolveConnection(child, from, descending)) return false;
    }
    return true;
  }
  if (node.IsGate()) return true;  // A placeholder on a line without other ports.
  const std::shared_ptr<Port> port = FindPort(PortOf(node.name));
  if (!port) {
    if (node.name != "OUTPUTPORT") {
      DiagnosticLog::Instance().AddError("Cannot find port " + node.name);
    }
    return true;
  }
  const Component& component = *port->GetOwner();
  // The siblings stay unwalked too: what comes back into the component from outside is no cause of
  // what leaves it.
  if (!descending && component.fullName.IsWithin(from.fullName)) return false;
  const auto gate = std::make_shared<OrGate>("OR [" + node.name + "]", this);
  gate->resolved = true;
  const std::string failureClass = FailureClassOf(node.name);
  if (IsPropagator(*port)) {
    AddPassThrough(*this, *gate, *port, failureClass);
  } else {
    AddAnnotation(*this, *gate, *port, failureClass);
    if (HasInside(*port)) {
      // A walk that comes from inside the component goes on outside it, and one that meets the
      // component's own boundary from inside as well.
      const bool leaving =
          descending ? &component == &from : from.fullName.IsWithin(component.fullName);
      const std::string& current = GetCurrentStateName();
      AddLineLogic(*this, *gate,
                   leaving ? port->GetExternalExpression(failureClass, current)
                           : port->GetInternalExpression(failureClass, current),
                   component, !leaving);
    }
  }
  if (gate->GetChildCount() > 0) node.AddChild(gate);
  return true;
}

}  // namespace FTS
