// Cloning: copies of graphs.
// Assumes nothing about the graph, which may hold cycles. Changes the source in one field, `clone`,
// which holds the copy of each node that got one: it makes the copy of a graph a graph of the same
// shape, and ends the walk at a cycle. `ClearClones` takes the memo away again. Each node is copied
// once; states are walked in key order, children in their order. An event that stays itself gets no
// memo. Every node on the way from the root to a memo has one too, so clearing ends at nodes
// without.

#include <utility>

#include "analysis/Prime.h"
#include "faulttree/BasicEvent.h"
#include "faulttree/CircleNode.h"
#include "faulttree/CommonCauseNodes.h"
#include "faulttree/DeviationNodes.h"
#include "faulttree/DeviationProxies.h"
#include "faulttree/FaultTreeGate.h"
#include "faulttree/Gates.h"
#include "faulttree/GotoNode.h"
#include "faulttree/ProxyNode.h"
#include "model/CCF.h"
#include "model/Component.h"
#include "model/Deviation.h"
#include "model/Implementation.h"

namespace FTS {

namespace {

using Nodes = std::vector<FaultTreeNode*>;

int IdFor(const FaultTreeNode& source, CloneMode mode) {
  return mode == CloneMode::KeepIdentity ? source.GetId() : FaultTreeNode::NewId;
}

void Append(Nodes& nodes, const FaultTreeNode::Pointer& node) {
  if (node) nodes.push_back(node.get());
}

/// `node->Clone` for those who need the class; null for null.
template <typename Node>
std::shared_ptr<Node> CloneOf(const std::shared_ptr<Node>& node, Model* target, CloneMode mode,
                              const std::shared_ptr<Component>& context) {
  if (!node) return nullptr;
  return std::static_pointer_cast<Node>(node->Clone(target, mode, true, context));
}

/// The record of the input deviation that proxies cloned for `component` take. A component of its
/// own that is being filled has its implementation at the back of its list; the proxies of one
/// deviation must find one record there, or the unconnected input would be several events.
std::shared_ptr<InputDeviation> RecordFor(const std::shared_ptr<Component>& component,
                                          const std::shared_ptr<InputDeviation>& source) {
  if (!component || !source || source->GetOwner() == component) return source;
  const std::string key = source->GetLocalName();
  const auto& implementations = component->implementations;
  for (auto entry = implementations.rbegin(); entry != implementations.rend(); ++entry) {
    const auto found = (*entry)->inputDeviationRecords.find(key);
    if (found != (*entry)->inputDeviationRecords.end()) return found->second;
  }
  const std::shared_ptr<InputDeviation> copy = source->Copy(component);
  if (!implementations.empty()) implementations.back()->AddInputDeviation(copy);
  return copy;
}

class ClearClonesAtEnd {
 public:
  explicit ClearClonesAtEnd(FaultTreeNode& initSource) : source(initSource) {}
  ~ClearClonesAtEnd() { ClearClones(source); }
  ClearClonesAtEnd(const ClearClonesAtEnd&) = delete;
  ClearClonesAtEnd& operator=(const ClearClonesAtEnd&) = delete;

 private:
  FaultTreeNode& source;
};

}  // namespace

void ClearClones(FaultTreeNode& node) {
  Nodes pending{&node};
  while (!pending.empty()) {
    FaultTreeNode& source = *pending.back();
    pending.pop_back();
    if (!source.clone) continue;
    source.clone.reset();
    source.AppendCloned(pending);
  }
}

FaultTreeNode::Pointer CloneTemplate(FaultTreeNode& source, Model* target, CloneMode mode,
                                     const std::shared_ptr<Component>& context) {
  const ClearClonesAtEnd clearing(source);
  return source.Clone(target, mode, true, context);
}

void FaultTreeNode::AppendCloned(Nodes& nodes) const { Append(nodes, circle); }

// Gates.

FaultTreeNode::Pointer FaultTreeGate::Clone(Model* target, CloneMode mode, bool copyStates,
                                            const std::shared_ptr<Component>& context) {
  if (clone) return clone;
  const auto copy = MakeGate(type, name, target, IdFor(*this, mode));
  clone = copy;  // Before the children, which may lead back here.
  copy->description = description;
  copy->circle = CloneOf(circle, target, mode, context);
  if (copyStates) {
    for (const auto& [listState, list] : childLists) {
      copy->SelectState(listState);
      copy->currentChildren->children.reserve(list->children.size());
      for (const Pointer& child : list->children) {
        copy->AddChild(child->Clone(target, mode, copyStates, context));
      }
    }
  }
  copy->SelectState(state);
  return copy;
}

void FaultTreeGate::AppendCloned(Nodes& nodes) const {
  FaultTreeNode::AppendCloned(nodes);
  for (const auto& [listState, list] : childLists) {
    for (const Pointer& child : list->children) Append(nodes, child);
  }
}

// Proxies.

FaultTreeNode::Pointer ProxyNode::Clone(Model* target, CloneMode mode, bool copyStates,
                                        const std::shared_ptr<Component>& context) {
  if (clone) return clone;
  const std::shared_ptr<ProxyNode> copy = MakeSame(target, mode, context);
  clone = copy;
  copy->description = description;
  copy->circle = CloneOf(circle, target, mode, context);
  if (copyStates) {
    for (const auto& [childState, stateChild] : childByState) {
      copy->SelectState(childState);
      if (stateChild) copy->AddChild(stateChild->Clone(target, mode, copyStates, context));
    }
  }
  copy->SelectState(state);
  return copy;
}

void ProxyNode::AppendCloned(Nodes& nodes) const {
  FaultTreeNode::AppendCloned(nodes);
  for (const auto& [childState, stateChild] : childByState) Append(nodes, stateChild);
}

std::shared_ptr<ProxyNode> ProxyNode::MakeSame(Model* target, CloneMode mode,
                                               const std::shared_ptr<Component>& /*context*/) {
  return std::make_shared<ProxyNode>(type, name, target, IdFor(*this, mode));
}

std::shared_ptr<ProxyNode> NotGate::MakeSame(Model* target, CloneMode mode,
                                             const std::shared_ptr<Component>& /*context*/) {
  return std::make_shared<NotGate>(name, target, IdFor(*this, mode));
}

std::shared_ptr<ProxyNode> InputDeviationProxy::MakeSame(
    Model* target, CloneMode mode, const std::shared_ptr<Component>& context) {
  auto copy = std::make_shared<InputDeviationProxy>(name, target, IdFor(*this, mode));
  copy->deviation = RecordFor(context, deviation);
  if (copy->deviation != deviation) copy->name = copy->deviation->GetFullName();
  copy->line = line;
  return copy;
}

std::shared_ptr<ProxyNode> OutputDeviationProxy::MakeSame(
    Model* target, CloneMode mode, const std::shared_ptr<Component>& context) {
  auto copy = std::make_shared<OutputDeviationProxy>(name, target, line, IdFor(*this, mode));
  copy->eventNode = CloneOf(eventNode, target, mode, context);
  copy->classless = classless;
  copy->reference = reference;
  return copy;
}

void OutputDeviationProxy::AppendCloned(Nodes& nodes) const {
  ProxyNode::AppendCloned(nodes);
  Append(nodes, eventNode);
}

std::shared_ptr<ProxyNode> ExportedDeviationProxy::MakeSame(
    Model* target, CloneMode mode, const std::shared_ptr<Component>& context) {
  auto copy = std::make_shared<ExportedDeviationProxy>(
      name, target, context ? context : owner.lock(), line, IdFor(*this, mode));
  copy->eventNode = CloneOf(eventNode, target, mode, context);
  return copy;
}

void ExportedDeviationProxy::AppendCloned(Nodes& nodes) const {
  ProxyNode::AppendCloned(nodes);
  Append(nodes, eventNode);
}

std::shared_ptr<ProxyNode> GotoNode::MakeSame(Model* target, CloneMode mode,
                                              const std::shared_ptr<Component>& context) {
  auto copy = std::make_shared<GotoNode>(name, target, context ? context : owner.lock(), line,
                                         IdFor(*this, mode));
  copy->eventNode = CloneOf(eventNode, target, mode, context);
  return copy;
}

void GotoNode::AppendCloned(Nodes& nodes) const {
  ProxyNode::AppendCloned(nodes);
  Append(nodes, eventNode);
}

std::shared_ptr<ProxyNode> StateProxy::MakeSame(Model* target, CloneMode mode,
                                                const std::shared_ptr<Component>& /*context*/) {
  return std::make_shared<StateProxy>(name, target, targetState, IdFor(*this, mode));
}

FaultTreeNode::Pointer PCCFProxy::Clone(Model* target, CloneMode mode, bool copyStates,
                                        const std::shared_ptr<Component>& context) {
  if (clone) return clone;
  const Pointer copy = ProxyNode::Clone(target, mode, copyStates, context);
  auto& proxy = static_cast<PCCFProxy&>(*copy);
  proxy.actual = CloneOf(actual, target, mode, context);
  proxy.node = CloneOf(node, target, mode, context);
  return copy;
}

std::shared_ptr<ProxyNode> PCCFProxy::MakeSame(Model* target, CloneMode mode,
                                               const std::shared_ptr<Component>& context) {
  auto copy = std::make_shared<PCCFProxy>(name, target, node, IdFor(*this, mode));
  copy->owner = context ? context : owner.lock();
  copy->actual = actual;
  return copy;
}

void PCCFProxy::AppendCloned(Nodes& nodes) const {
  ProxyNode::AppendCloned(nodes);
  Append(nodes, actual);
  Append(nodes, node);
}

// Events.

FaultTreeNode::Pointer BasicEvent::Clone(Model* target, CloneMode mode, bool /*copyStates*/,
                                         const std::shared_ptr<Component>& context) {
  if (clone) return clone;
  // A common cause strikes all replicas of a component: one for each would hide just that.
  const bool renewed = mode == CloneMode::NewIdentity && type != NodeType::ACCF;
  if (target == model && !renewed) return shared_from_this();
  const std::shared_ptr<BasicEvent> copy = MakeSame(target, renewed ? NewId : id);
  clone = copy;
  copy->description = description;
  copy->circle = CloneOf(circle, target, mode, context);
  copy->state = state;
  // What belongs to no component, as a common cause does, belongs to none in the copy.
  copy->owner = context && !owner.expired() ? context : owner;
  copy->coverage = coverage;
  copy->parameters = parameters;
  copy->unavailability = unavailability;
  copy->frequency = frequency;
  copy->failureModel = failureModel;
  copy->safetyRequirement = safetyRequirement;
  if (renewed) {
    copy->prime = Prime::Instance().Next();
  } else {
    copy->prime = prime;
    copy->eventNumber = eventNumber;
  }
  return copy;
}

std::shared_ptr<BasicEvent> BasicEvent::MakeSame(Model* target, int newId) {
  return std::make_shared<BasicEvent>(name, target, false, type, newId);
}

std::shared_ptr<BasicEvent> NormalEvent::MakeSame(Model* target, int newId) {
  return std::make_shared<NormalEvent>(name, target, false, newId);
}

FaultTreeNode::Pointer ComplementEvent::Clone(Model* target, CloneMode mode, bool copyStates,
                                              const std::shared_ptr<Component>& context) {
  if (clone) return clone;
  const Pointer sourceCopy = source->Clone(target, mode, copyStates, context);
  if (sourceCopy.get() == source) return shared_from_this();
  const auto copy = static_cast<BasicEvent&>(*sourceCopy).GetComplement();
  clone = copy;
  copy->description = description;
  copy->safetyRequirement = safetyRequirement;
  if (sourceCopy->GetId() == source->GetId()) {  // The same event in another model.
    copy->prime = prime;
    copy->eventNumber = eventNumber;
  }
  return copy;
}

void ComplementEvent::AppendCloned(Nodes& nodes) const {
  BasicEvent::AppendCloned(nodes);
  nodes.push_back(source);
}

std::shared_ptr<BasicEvent> InputDeviationNode::MakeSame(Model* target, int newId) {
  return std::make_shared<InputDeviationNode>(name, target, deviation.lock(), newId);
}

std::shared_ptr<BasicEvent> OutputDeviationNode::MakeSame(Model* target, int newId) {
  return std::make_shared<OutputDeviationNode>(name, target, newId);
}

std::shared_ptr<BasicEvent> ExportedDeviationNode::MakeSame(Model* target, int newId) {
  return std::make_shared<ExportedDeviationNode>(name, target, newId);
}

std::shared_ptr<BasicEvent> CircleNode::MakeSame(Model* target, int newId) {
  return std::make_shared<CircleNode>(name, target, loopChildren.size(), newId);
}

FaultTreeNode::Pointer PCCFNode::Clone(Model* target, CloneMode mode, bool copyStates,
                                       const std::shared_ptr<Component>& context) {
  if (clone) return clone;
  const Pointer copy = BasicEvent::Clone(target, mode, copyStates, context);
  if (copy.get() == this) return copy;
  static_cast<PCCFNode&>(*copy).actual = CloneOf(actual, target, mode, context);
  return copy;
}

std::shared_ptr<BasicEvent> PCCFNode::MakeSame(Model* target, int newId) {
  return std::make_shared<PCCFNode>(name, target, newId);
}

void PCCFNode::AppendCloned(Nodes& nodes) const {
  BasicEvent::AppendCloned(nodes);
  Append(nodes, actual);
}

}  // namespace FTS
