#include "faulttree/ProxyNode.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <utility>

#include "app/DiagnosticLog.h"
#include "faulttree/NodeRegistry.h"
#include "model/Component.h"
#include "model/DeviationName.h"
#include "model/HierarchicalName.h"
#include "model/Model.h"
#include "model/Port.h"

namespace FTS {

namespace {

constexpr std::array ProxyTypes = {
    NodeType::NullOp, NodeType::Not,      NodeType::InputDeviation,    NodeType::OutputDeviation,
    NodeType::PCCF,   NodeType::External, NodeType::ExternalDeviation, NodeType::State};

}  // namespace

ProxyNode::ProxyNode(NodeType initType, std::string initName, Model* initModel, int initId)
    : FaultTreeNode(initType, std::move(initName), initModel, initId),
      childByState{{DefaultState, nullptr}} {
  CountOn(NodeCounters::Instance().proxiesMade);
  if (std::find(ProxyTypes.begin(), ProxyTypes.end(), initType) != ProxyTypes.end()) return;
  // Scripts of our users match this wording, its grammar included.
  DiagnosticLog::Instance().AddWarning("Creating a proxy node with a operator type of " +
                                       ToText(initType));
}

ProxyNode::~ProxyNode() = default;

const FaultTreeNode::Pointer& ProxyNode::GetChild(int index) const {
  assert(index == 0 && "A proxy has one child.");
  static_cast<void>(index);
  return child;
}

void ProxyNode::AddChild(const Pointer& node) {
  child = node;
  childByState[state] = node;
}

void ProxyNode::ReplaceChild(int /*index*/, const Pointer& node) { AddChild(node); }

bool ProxyNode::RemoveChild(const FaultTreeNode& node) {
  if (!child || child->GetId() != node.GetId()) return false;
  ClearChildren();
  return true;
}

void ProxyNode::ClearChildren() { AddChild(nullptr); }

std::shared_ptr<Component> ProxyNode::FindNamedOwner() const {
  const std::shared_ptr<Port> port = FindNamedPort();
  return port ? port->GetOwner() : nullptr;
}

std::shared_ptr<Port> ProxyNode::FindNamedPort() const {
  const std::string portName = PortOf(name);
  if (!model || portName.empty()) return nullptr;
  // What stands before "::" need not be a perspective here, and a look-up there would throw.
  const std::string perspective = HierarchicalName(portName).Perspective();
  const bool known = perspective.empty() ? !model->perspectives.empty()
                                         : model->perspectives.contains(perspective);
  if (!known) return nullptr;
  return model->FindPort(portName);
}

NotGate::NotGate(std::string initName, Model* initModel, int initId)
    : ProxyNode(NodeType::Not, std::move(initName), initModel, initId) {}

}  // namespace FTS
