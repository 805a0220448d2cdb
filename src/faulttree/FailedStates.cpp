// Failed states: the logic by which a system comes to a failed state, and one fault tree for each.
// Linking binds transitions to states and output deviations, once per synthesis, when the ports
// hold their deviations. The logic is then built backwards from the failed state to the start,
// along each path anew: what a state contributes depends on the states behind it on the path,
// because a way that comes back to itself ends there, and so nothing is remembered. Marks:
// `State::visiting`.

#include <iostream>
#include <memory>
#include <string>

#include "analysis/FaultTree.h"
#include "app/DiagnosticLog.h"
#include "faulttree/Gates.h"
#include "faulttree/GotoNode.h"
#include "faulttree/Resolution.h"
#include "model/Deviation.h"
#include "model/DeviationName.h"
#include "model/Model.h"
#include "model/Port.h"
#include "model/StateMachine.h"
#include "model/VtnException.h"

namespace FTS {

void StateMachine::Link(Model& target) {
  Unlink();
  for (const auto& [stateName, state] : states) {
    for (const auto& transition : state->transitions) transition->Link(target);
  }
}

void Transition::Link(Model& model) {
  const std::shared_ptr<State> from = owner.lock();
  const std::string place = " in transition " + name + " in state " + from->name;
  const auto& states = from->machine.lock()->states;
  const auto target = states.find(destinationName);
  // The quotes stay open in all three messages: users search their logs for this wording.
  if (target == states.end()) {
    throw VtnException("Missing destination state '" + destinationName + place);
  }
  destination = target->second;
  destination->incoming.push_back(shared_from_this());
  const std::string missing = "Cannot find output deviation '" + cause + place;
  const std::shared_ptr<Port> port = model.FindPort(PortOf(cause));
  if (!port) throw VtnException(missing + " - missing port.");
  const auto known = port->GetOutputDeviation(FailureClassOf(cause), from->name);
  if (!known) throw VtnException(missing + " - no output deviation of that class in the port.");
  // A copy, because its logic is resolved in the state that this transition leads to, and the same
  // deviation may cause transitions to other states.
  deviation = known->Copy(port->GetOwner());
}

namespace {

/// Makes a state the one in which deviations are resolved, for as long as this object lives.
class InState {
 public:
  InState(Model& initModel, const std::shared_ptr<State>& state) : model(initModel) {
    model.stateStack.push_back(state);
  }
  ~InState() { model.stateStack.pop_back(); }
  InState(const InState&) = delete;
  InState& operator=(const InState&) = delete;

 private:
  Model& model;
};

/// The logic of the deviation that causes the transition; null when it has none.
FaultTreeNode::Pointer LogicOfCause(Model& model, const Transition& transition) {
  OutputDeviation& deviation = *transition.deviation;
  const std::shared_ptr<Port> port = deviation.GetPort();
  const FaultTreeNode::Pointer annotation = HasAnnotation(*port) ? deviation.expression : nullptr;
  if (!HasInside(*port)) return annotation;
  const auto inside =
      port->GetInternalExpression(deviation.failureClass, transition.owner.lock()->name);
  if (!inside) return annotation;
  // What the deviation depends on counts in the state that the transition leads to, as for all that
  // hangs below that state's proxy.
  const InState scope(model, transition.destination);
  if (annotation && !deviation.resolved) {
    deviation.resolved = true;
    model.ResolveDeviation(*annotation);
  }
  return JoinInside(model, *port, annotation, inside);
}

/// The state is reached from the one that the transition leaves, and by what causes the transition.
/// Null when no way leads from a start to there.
std::shared_ptr<AndGate> WayOver(Model& model, const Transition& transition) {
  const std::shared_ptr<State> from = transition.owner.lock();
  const auto reached = std::make_shared<StateProxy>("State: " + from->name, &model, from);
  const auto both = std::make_shared<AndGate>("", &model);
  if (!from->BuildFailLogic(model, *reached)) return nullptr;
  const FaultTreeNode::Pointer cause = LogicOfCause(model, transition);
  if (!cause) {
    DiagnosticLog::Instance().AddWarning("Nothing causes the transition " + transition.name +
                                         " in state " + from->name + ": " + transition.cause +
                                         " has no logic.");
    return nullptr;
  }
  both->AddChild(reached);
  both->AddChild(cause);
  return both;
}

}  // namespace

bool State::BuildFailLogic(Model& model, ProxyNode& proxy) {
  if (visiting) return false;
  visiting = true;
  bool reached = isStart;
  if (incoming.size() > 1) {
    const auto either = std::make_shared<OrGate>("State: " + name, &model);
    for (const auto& transition : incoming) {
      if (const auto way = WayOver(model, *transition)) either->AddChild(way);
    }
    // A start needs no way to it, though one may lead there from another start.
    if (!isStart) proxy.AddChild(either);
    reached = reached || either->GetChildCount() > 0;
  } else if (incoming.size() == 1) {
    const auto way = WayOver(model, *incoming.front());
    if (way && !isStart) proxy.AddChild(way);
    reached = reached || way;
  } else if (!isStart) {
    DiagnosticLog::Instance().AddWarning(
        "State machine contains a leaf state that is not the starting state: " + name);
  }
  visiting = false;
  return reached;
}

void Model::SynthesiseFromStateMachine() {
  stateMachine->Link(*this);
  for (const std::shared_ptr<State>& state : stateMachine->failStates) {
    const auto proxy =
        std::make_shared<StateProxy>("Failed State: " + state->failName, this, state);
    const bool reached = state->BuildFailLogic(*this, *proxy);
    // Printed in silent runs too, like the logic with everything resolved.
    proxy->Print(std::cout, 0);
    if (!reached) continue;
    ResolveDeviation(*proxy);
    proxy->Print(std::cout, 0);
    const auto tree = std::make_shared<FaultTree>(proxy);
    tree->label = proxy->description;
    AddFaultTree(tree);
  }
}

}  // namespace FTS
