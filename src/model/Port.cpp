#include "model/Port.h"

#include <utility>

#include "faulttree/DeviationProxies.h"
#include "model/Component.h"
#include "model/Deviation.h"
#include "model/DeviationName.h"
#include "model/GraphRelease.h"
#include "model/Implementation.h"
#include "model/Line.h"
#include "model/Model.h"
#include "model/PrintLine.h"

namespace FTS {

namespace {

std::string ProxyName(const std::string& failureClass, const std::string& portName) {
  return failureClass.empty() ? portName : failureClass + "-" + portName;
}

void PrintExpressions(const std::map<std::string, Port::ByClass>& expressions, const char* title,
                      std::ostream& stream, int indent) {
  PrintLine(stream, indent, title + std::string(" PORTEXPRESSIONS: "));
  if (const auto state = expressions.find(DefaultState); state != expressions.end()) {
    for (const auto& [failureClass, expression] : state->second) {
      expression->Print(stream, indent + NestedIndent);
    }
  }
  PrintLine(stream, indent, "End " + std::string(title) + " PORTEXPRESSIONS: ");
}

/// Null when there is none.
template <typename MapByState>
const auto* Find(const MapByState& states, const std::string& state,
                 const std::string& failureClass) {
  using Value = typename MapByState::mapped_type::mapped_type;
  const Value* none = nullptr;
  const auto ofState = states.find(state);
  if (ofState == states.end()) return none;
  const auto found = ofState->second.find(failureClass);
  return found == ofState->second.end() ? none : &found->second;
}

/// Moves the nodes of a map to `nodes`.
template <typename Map>
void Take(Map& map, std::vector<FaultTreeNode::Pointer>& nodes) {
  for (auto& [failureClass, node] : map) nodes.push_back(std::move(node));
  map.clear();
}

template <typename MapByState>
void TakeStates(MapByState& states, std::vector<FaultTreeNode::Pointer>& nodes) {
  for (auto& [state, map] : states) Take(map, nodes);
  states.clear();
}

}  // namespace

Port::Port(const std::string& initName, const std::shared_ptr<Component>& initOwner,
           Model* initModel)
    : owner(initOwner),
      model(initModel),
      localName(initName),
      fullNameText(initOwner->GetFullNameText() + "." + initName) {}

Port::~Port() = default;

void Port::Print(std::ostream& stream, int indent) const {
  PrintLine(stream, indent, "PORT: " + fullNameText);
  PrintLine(stream, indent, "OUTPUTDEVIATIONS: ");
  for (const auto& [state, deviations] : outputDeviations) {
    for (const auto& [failureClass, deviation] : deviations) {
      deviation->Print(stream, indent + NestedIndent);
    }
  }
  PrintLine(stream, indent, "END OUTPUTDEVIATIONS: ");
  PrintExpressions(internalExpressions, "Internal", stream, indent);
  PrintExpressions(externalExpressions, "External", stream, indent);
  PrintLine(stream, indent, "END OF PORT (" + fullNameText + ")");
}

Port::NodePointer Port::GetExternalExpression(const std::string& failureClass,
                                              const std::string& state) {
  if (const NodePointer* held = Find(externalExpressions, state, failureClass)) return *held;
  return Instantiate(externalExpressions,
                     FindTemplate(externalTemplates, externalEnds, failureClass), failureClass,
                     state);
}

Port::NodePointer Port::GetInternalExpression(const std::string& failureClass,
                                              const std::string& state) {
  if (const NodePointer* held = Find(internalExpressions, state, failureClass)) return *held;
  return Instantiate(internalExpressions,
                     FindTemplate(internalTemplates, internalEnds, failureClass), failureClass,
                     state);
}

Port::NodePointer Port::Instantiate(std::map<std::string, ByClass>& instances,
                                    const NodePointer& source, const std::string& failureClass,
                                    const std::string& state) {
  if (!source) return nullptr;
  NodePointer instance = CloneTemplate(*source, model, CloneMode::NewNodes);
  expressionRoots.push_back(instance);
  instances[state].emplace(failureClass, instance);
  return instance;
}

std::shared_ptr<OutputDeviation> Port::GetOutputDeviation(const std::string& failureClass,
                                                          const std::string& state) {
  if (const auto* own = Find(outputDeviations, state, failureClass)) return *own;
  const auto* common = Find(outputDeviations, DefaultState, failureClass);
  if (!common) return nullptr;
  // From the implementation's own deviation: what stands in this port may be resolved by now.
  const std::shared_ptr<Component> component = GetOwner();
  const auto source = component->GetCurrentImplementation().GetOutputDeviation(
      (*common)->GetLocalName(), DefaultState);
  if (!source) return nullptr;
  const std::shared_ptr<OutputDeviation> copy = source->Copy(component);
  AddOutputDeviation(copy, state);
  return copy;
}

Port::NodePointer Port::GetExternalTemplate(const std::string& failureClass) {
  return KeepTemplate(externalTemplates, externalEnds, failureClass);
}

Port::NodePointer Port::GetInternalTemplate(const std::string& failureClass) {
  return KeepTemplate(internalTemplates, internalEnds, failureClass);
}

Port::NodePointer Port::KeepTemplate(ByClass& templates, const std::vector<LineEnd>& ends,
                                     const std::string& failureClass) {
  NodePointer found = FindTemplate(templates, ends, failureClass);
  if (found && templates.emplace(failureClass, found).second) expressionRoots.push_back(found);
  return found;
}

// Most models have more failure classes than most lines carry, so a template is built when the
// walk from a top event arrives, not for each class that might. And as most ports are reached in
// one state only, one that was built to be instantiated is not kept.
Port::NodePointer Port::FindTemplate(ByClass& templates, const std::vector<LineEnd>& ends,
                                     const std::string& failureClass) {
  if (ends.empty()) return nullptr;
  const auto known = templates.find(failureClass);
  if (known != templates.end()) return known->second;
  NodePointer built = BuildTemplate(ends, failureClass);
  if (!built) templates.emplace(failureClass, nullptr);
  return built;
}

Port::NodePointer Port::BuildTemplate(const std::vector<LineEnd>& ends,
                                      const std::string& failureClass) {
  const LineEnd* chosen = nullptr;
  for (const LineEnd& end : ends) {
    if (end.failureClass == failureClass) {
      chosen = &end;
    } else if (!chosen && end.failureClass.empty() && model->HasFailureClass(failureClass)) {
      chosen = &end;
    }
  }
  const std::shared_ptr<Line> line = chosen ? chosen->line.lock() : nullptr;
  return line ? line->MakePortExpression(chosen->connection, failureClass) : nullptr;
}

void Port::AddLineEnd(const std::shared_ptr<Line>& line, std::size_t connection,
                      const std::string& failureClass, bool inside) {
  (inside ? internalEnds : externalEnds).push_back({failureClass, line, connection});
}

void Port::ForgetLineEnds() {
  externalEnds.clear();
  internalEnds.clear();
  externalTemplates.clear();
  internalTemplates.clear();
}

void Port::AddOutputDeviation(const std::shared_ptr<OutputDeviation>& deviation,
                              const std::string& state) {
  outputDeviations[state][deviation->failureClass] = deviation;
}

void Port::AddInputProxy(const std::shared_ptr<InputDeviationProxy>& proxy,
                         const std::string& state) {
  const std::string failureClass =
      proxy->deviation ? proxy->deviation->failureClass : FailureClassOf(proxy->name);
  inputProxies[state][failureClass] = proxy;
}

std::shared_ptr<OutputDeviationProxy> Port::GetOrMakeOutputProxy(const std::string& failureClass) {
  std::shared_ptr<OutputDeviationProxy>& proxy = outputProxies[failureClass];
  if (!proxy) {
    proxy = std::make_shared<OutputDeviationProxy>(ProxyName(failureClass, fullNameText), model);
  }
  return proxy;
}

std::shared_ptr<InputDeviationProxy> Port::GetOrMakeInputProxy(const std::string& failureClass) {
  if (const auto* held = Find(inputProxies, DefaultState, failureClass)) return *held;
  const auto record = std::make_shared<InputDeviation>(GetOwner(), failureClass, GetLocalName());
  record->description = "Input Deviation";
  const auto proxy = std::make_shared<InputDeviationProxy>(record, model, -1);
  AddInputProxy(proxy, DefaultState);
  return proxy;
}

void Port::ClearInstances() {
  externalExpressions.clear();
  internalExpressions.clear();
}

void Port::Clear() {
  std::vector<NodePointer> roots = std::move(expressionRoots);
  expressionRoots.clear();
  for (auto& [state, deviations] : outputDeviations) {
    for (auto& [failureClass, deviation] : deviations) {
      roots.push_back(std::move(deviation->expression));
    }
  }
  outputDeviations.clear();
  ClearInstances();
  ForgetLineEnds();
  Take(outputProxies, roots);
  TakeStates(inputProxies, roots);
  ReleaseGraphs(std::move(roots));
}

}  // namespace FTS
