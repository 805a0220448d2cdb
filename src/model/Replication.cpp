// Redundancy: a component is replaced, inside, by replicas of its implementations. What enters the
// component enters each replica; what leaves it is joined from what leaves the replicas. Replicas
// are copies with events of their own, while common causes stay common. Names inside a copy that
// led into the component's own inside are re-based, so that they lead into the replica's.

#include <algorithm>
#include <memory>
#include <set>
#include <utility>

#include "analysis/CutSet.h"
#include "analysis/ModuleEvent.h"
#include "faulttree/DeviationProxies.h"
#include "faulttree/FaultTreeGate.h"
#include "faulttree/GotoNode.h"
#include "faulttree/GraphWalk.h"
#include "model/Component.h"
#include "model/Deviation.h"
#include "model/DeviationName.h"
#include "model/Implementation.h"
#include "model/Line.h"
#include "model/LineEnds.h"
#include "model/Model.h"
#include "model/Perspective.h"
#include "model/Port.h"
#include "model/Subsystem.h"
#include "model/VtnException.h"

namespace FTS {

namespace {

constexpr const char* RedundancyDescription = "AutoGen Line for redundancy";

std::string WithoutZeros(std::string selection) {
  std::erase(selection, '0');
  return selection;
}

/// The implementation at the 1-based position that the digit tells.
int ReadPosition(char digit, const Component& component) {
  const int position = digit >= '1' && digit <= '9' ? digit - '0' : 0;
  if (position >= 1 && position <= static_cast<int>(component.implementations.size())) {
    return position;
  }
  throw VtnException(std::string("No implementation at position ") + digit +
                     " of component: " + component.GetFullNameText());
}

/// Turns names that lead into one component into names that lead into another.
class Rebasing {
 public:
  Rebasing(const Component& initSource, const Component& initCopy)
      : source(initSource.fullName), copyName(initCopy.GetFullNameText()), model(*initCopy.model) {
    const auto perspective = initSource.GetPerspective();
    inDefaultPerspective = perspective && !model.perspectives.empty() &&
                           perspective == model.perspectives.begin()->second;
  }

  void Apply(const Implementation& implementation) const {
    for (const auto& [state, logic] : implementation.stateLogic) {
      for (const auto& [name, deviation] : logic->exportedDeviations) ApplyToGotos(*deviation);
      for (const auto& [name, deviation] : logic->outputDeviations) ApplyToGotos(*deviation);
    }
    if (!implementation.subsystem) return;
    for (const auto& line : implementation.subsystem->lines) ApplyToReferences(*line);
    for (const auto& [name, component] : implementation.subsystem->components) {
      for (const auto& inner : component->implementations) Apply(*inner);
    }
  }

 private:
  void ApplyToGotos(const IFailureCause& deviation) const {
    if (!deviation.expression) return;
    ForEachNode(*deviation.expression, [this](FaultTreeNode& node) {
      // What is a label, or the name of an exported deviation, names no port.
      if (node.type == NodeType::External && !model.gotoTargets.contains(node.name)) {
        node.name = Rebased(node.name);
      }
    });
  }

  void ApplyToReferences(const Line& line) const {
    for (const auto& [key, expression] : line.connections) {
      if (!expression) continue;
      ForEachNode(*expression, [this](FaultTreeNode& node) {
        if (node.type != NodeType::OutputDeviation || !node.IsProxy()) return;
        const auto& proxy = static_cast<const OutputDeviationProxy&>(node);
        node.name = proxy.classless ? RebasedPort(node.name) : Rebased(node.name);
      });
    }
  }

  std::string Rebased(const std::string& name) const {
    const std::string failureClass = FailureClassOf(name);
    return failureClass.empty() ? name : failureClass + "-" + RebasedPort(PortOf(name));
  }

  std::string RebasedPort(const std::string& text) const {
    const HierarchicalName target(text);
    const bool samePerspective = target.Perspective().empty()
                                     ? inDefaultPerspective
                                     : target.Perspective() == source.Perspective();
    if (!samePerspective || !target.IsWithin(source)) return text;
    std::string result = copyName;
    for (std::size_t i = source.Path().size() + 1; i < target.Path().size(); ++i) {
      result += "." + target.Path()[i];
    }
    return result + "." + target.Name();
  }

  const HierarchicalName& source;
  const std::string& copyName;
  const Model& model;
  bool inDefaultPerspective = false;
};

/// Builds the implementation that holds the replicas.
class Redundancy {
 public:
  explicit Redundancy(const std::shared_ptr<Component>& initComponent)
      : component(*initComponent),
        model(initComponent->model),
        result(std::make_shared<Implementation>("OptimisedImplementation", initComponent, model)) {
    result->description = "Automatically generated to store optimised implementations";
    result->hBlockType = HBlockType::REFINED;
    result->subsystem = std::make_shared<Subsystem>(model);
    result->subsystem->owner = result;
  }

  void AddReplica(int position) {
    const std::string localName =
        component.GetLocalName() + "_COPY_" + std::to_string(replicas.size() + 1);
    replicas.push_back(component.CreateReplica(result->subsystem, localName, position - 1));
  }

  std::shared_ptr<Implementation> Connect() {
    const std::shared_ptr<Line> inLine = AddLine("InLine", LineOperator::OR);
    JoinAnnotatedOutputs();
    JoinPassedOutputs();
    JoinExports();
    for (const auto& replica : replicas) {
      ConnectAnnotatedInputs(*inLine, *replica);
      ConnectPassedInputs(*inLine, *replica);
    }
    return result;
  }

 private:
  std::shared_ptr<Line> AddLine(const std::string& name, LineOperator defaultOperator) {
    auto line = std::make_shared<Line>(name, result->subsystem, model);
    line->description = RedundancyDescription;
    line->defaultOperator = defaultOperator;
    line->directed = true;
    result->subsystem->AddLine(line);
    return line;
  }

  /// A reference as a reader makes it.
  FaultTreeNode::Pointer ReferenceTo(const std::string& failureClass, const Port& port) const {
    auto reference =
        std::make_shared<OutputDeviationProxy>(failureClass + "-" + port.GetFullNameText(), model);
    reference->reference = true;
    return reference;
  }

  /// What must happen to the replicas for the failure to leave the component: a class whose
  /// assignment is 0 or 2, or that has none, takes all of them, any other class one.
  std::shared_ptr<FaultTreeGate> MakeJoin(const std::string& failureClass,
                                          const std::string& name) const {
    const auto assigned = model->failureClassAssignments.find(failureClass);
    const bool all = assigned == model->failureClassAssignments.end() || assigned->second == 0 ||
                     assigned->second == 2;
    return MakeGate(all ? NodeType::And : NodeType::Or, name, model);
  }

  void JoinOutput(const std::string& failureClass, const std::string& portName) {
    if (!joined.emplace(failureClass, portName).second) return;
    // One character less for each line, and in the end no name: saved designs refer to the lines
    // by these names.
    static const std::string Names = "Outline";
    const std::string lineName = Names.substr(std::min(joined.size(), Names.size()));
    const auto line = AddLine(lineName, LineOperator::AND);
    const std::string key = failureClass + "-" + portName;
    const auto gate = MakeJoin(failureClass, key);
    for (const auto& replica : replicas) {
      gate->AddChild(ReferenceTo(failureClass, *replica->FindPort(portName)));
    }
    line->AddConnection(key, gate);
  }

  void JoinAnnotatedOutputs() {
    const auto logic = replicas.front()->currentImplementation->GetStateLogic(DefaultState);
    for (const auto& [name, deviation] : logic->outputDeviations) {
      const std::shared_ptr<Port> port = deviation->GetPort();
      if (!port) continue;
      if (deviation->IsSystemOutput()) TakeSystemOutput(*deviation);
      JoinOutput(deviation->failureClass, port->GetLocalName());
    }
    for (const auto& replica : replicas) StripSystemOutputs(*replica->currentImplementation);
  }

  void TakeSystemOutput(const OutputDeviation& deviation) {
    result->AddOutputDeviation(
        std::make_shared<OutputDeviation>(deviation, component.shared_from_this()), DefaultState);
  }

  /// A replica's port is no boundary of the system.
  static void StripSystemOutputs(const Implementation& implementation) {
    for (const auto& [state, logic] : implementation.stateLogic) {
      for (const auto& [name, deviation] : logic->outputDeviations) {
        deviation->SetSystemOutput(false);
      }
    }
  }

  /// Failures that leave a replica without an annotation: through its inside, or as they came.
  void JoinPassedOutputs() {
    for (const std::string& failureClass : model->failureClasses) {
      for (const auto& [portName, port] : component.ports) {
        if (AnyPassesOut(failureClass, portName)) JoinOutput(failureClass, portName);
      }
    }
  }

  bool AnyPassesOut(const std::string& failureClass, const std::string& portName) const {
    return std::any_of(replicas.begin(), replicas.end(), [&](const auto& replica) {
      return PassesOut(*replica, failureClass, portName);
    });
  }

  static bool PassesOut(const Component& replica, const std::string& failureClass,
                        const std::string& portName) {
    const Implementation& inside = *replica.currentImplementation;
    if (inside.hBlockType == HBlockType::PROPAGATOR) return replica.ports.size() == 2;
    if (!HasPassage(inside)) return false;
    for (const auto& line : inside.subsystem->lines) {
      for (const auto& [text, expression] : line->connections) {
        const ConnectionKey key(text);
        const bool ofClass = key.failureClass.empty() || key.failureClass == failureClass;
        if (ofClass && key.component.empty() && key.port == portName) return true;
      }
    }
    return false;
  }

  /// What is allocated on the component goes on finding its exported deviations.
  void JoinExports() {
    const auto logic = replicas.front()->currentImplementation->GetStateLogic(DefaultState);
    const std::shared_ptr<Component> owner = component.shared_from_this();
    for (const auto& [name, deviation] : logic->exportedDeviations) {
      auto joint =
          std::make_shared<ExportedDeviation>(owner, deviation->failureClass, deviation->subject);
      joint->description = deviation->description;
      const auto gate = MakeJoin(deviation->failureClass, joint->GetFullName());
      for (const auto& replica : replicas) {
        const auto own = replica->currentImplementation->GetExportedDeviation(name, DefaultState);
        if (own) gate->AddChild(std::make_shared<GotoNode>(own->GetFullName(), model, owner));
      }
      joint->expression = gate;
      result->AddExportedDeviation(joint, DefaultState);
    }
  }

  void ConnectInput(Line& inLine, const Component& replica, const std::string& failureClass,
                    const Port& port) {
    const std::string key = failureClass + "-" + replica.GetLocalName() + "." + port.GetLocalName();
    if (!inLine.connections.contains(key)) {
      inLine.AddConnection(key, ReferenceTo(failureClass, port));
    }
  }

  void ConnectAnnotatedInputs(Line& inLine, const Component& replica) {
    for (const auto& [name, record] : replica.currentImplementation->inputDeviationRecords) {
      const std::shared_ptr<Port> port = record->GetPort();
      if (!port) continue;
      ConnectInput(inLine, replica, record->failureClass,
                   *component.FindPort(port->GetLocalName()));
    }
  }

  /// Failures that enter a replica without an annotation.
  void ConnectPassedInputs(Line& inLine, const Component& replica) {
    const Implementation& inside = *replica.currentImplementation;
    if (inside.hBlockType != HBlockType::PROPAGATOR && !HasPassage(inside)) return;
    for (const std::string& failureClass : model->failureClasses) {
      for (const auto& [portName, port] : component.ports) {
        ConnectInput(inLine, replica, failureClass, *port);
      }
    }
  }

  static bool HasPassage(const Implementation& implementation) {
    return implementation.subsystem && implementation.hBlockType != HBlockType::NOT_REFINED;
  }

  Component& component;
  Model* model;
  std::shared_ptr<Implementation> result;
  std::vector<std::shared_ptr<Component>> replicas;
  std::set<std::pair<std::string, std::string>> joined;  // Class and local port name.
};

}  // namespace

std::shared_ptr<Component> Component::CreateReplica(const std::shared_ptr<Subsystem>& target,
                                                    const std::string& localName,
                                                    int implementationIndex) {
  auto replica = std::make_shared<Component>(localName, target, model);
  CopyPortsTo(replica);
  CopyFieldsTo(*replica);
  replica->includeInOptimisation = false;  // The choice is made where the replica comes from.
  CopyMessagesTo(*replica);
  const Implementation& chosen = *implementations.at(static_cast<std::size_t>(implementationIndex));
  replica->currentImplementation = chosen.CloneForReplica(replica);
  Rebasing(*this, *replica).Apply(*replica->currentImplementation);
  target->AddComponent(replica);
  model->AddComponent(replica);
  return replica;
}

bool Component::CreateOptimisedImplementation(std::string& selection) {
  selection = WithoutZeros(selection);
  if (selection.empty()) return false;
  std::vector<int> positions;
  for (const char digit : selection) positions.push_back(ReadPosition(digit, *this));
  for (const auto& [portName, port] : ports) port->internalExpressions.clear();
  Redundancy redundancy(shared_from_this());
  for (const int position : positions) redundancy.AddReplica(position);
  AddImplementation(redundancy.Connect());
  currentImplementation = implementations.back();
  return true;
}

void Component::WriteImplementations(const std::string& selection, std::ostream& stream) const {
  stream << fullNameText << ": ";
  const char* separator = "";
  for (const char digit : WithoutZeros(selection)) {
    const int position = ReadPosition(digit, *this);
    stream << separator << implementations[static_cast<std::size_t>(position - 1)]->name;
    separator = ", ";
  }
}

}  // namespace FTS
