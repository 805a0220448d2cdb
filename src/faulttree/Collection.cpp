// Collection: gathers the nodes and events of a graph, and enters its events in the model.
// Assumes nothing about the graph, which may hold cycles; changes nothing in it. Each node is met
// once, parents first, children in their order.

#include "faulttree/BasicEvent.h"
#include "faulttree/CommonCauseNodes.h"
#include "faulttree/DeviationProxies.h"
#include "faulttree/GraphWalk.h"
#include "model/Deviation.h"
#include "model/DeviationName.h"
#include "model/Model.h"
#include "model/Port.h"

namespace FTS {

void FaultTreeNode::CollectNodes(std::map<int, FaultTreeNode*>& nodes) {
  // The map itself is the mark: it may have been filled by walks over other trees.
  std::vector<FaultTreeNode*> pending{this};
  while (!pending.empty()) {
    FaultTreeNode& node = *pending.back();
    pending.pop_back();
    if (!nodes.try_emplace(node.id, &node).second) continue;
    for (int i = node.GetChildCount() - 1; i >= 0; --i) pending.push_back(node.GetChild(i).get());
  }
}

void FaultTreeNode::CollectEvents(std::map<double, BasicEvent*>& events) {
  ForEachNode(*this, [&](FaultTreeNode& node) {
    if (!node.IsEvent()) return;
    auto& event = static_cast<BasicEvent&>(node);
    events.try_emplace(event.prime, &event);
  });
}

bool ContainsNot(FaultTreeNode& node) {
  bool found = false;
  ForEachNode(node, [&](const FaultTreeNode& met) {
    if (met.type == NodeType::Not) found = true;
  });
  return found;
}

void FaultTreeNode::RegisterBasicEvents(Model& target) {
  ForEachNode(*this, [&](FaultTreeNode& node) { node.RegisterSelf(target); });
}

void FaultTreeNode::RegisterSelf(Model& /*target*/) {}

// The port learns of the first proxy of its class, unless its lines have given it one.
void InputDeviationProxy::RegisterSelf(Model& target) {
  const std::string portName = PortOf(name);
  if (portName.empty()) return;
  const std::shared_ptr<Port> port = deviation ? deviation->GetPort() : target.FindPort(portName);
  if (!port) return;
  port->inputProxies[DefaultState].try_emplace(
      FailureClassOf(name), std::static_pointer_cast<InputDeviationProxy>(shared_from_this()));
}

void BasicEvent::RegisterSelf(Model& target) {
  target.basicEvents.try_emplace(prime, std::static_pointer_cast<BasicEvent>(shared_from_this()));
}

void PCCFNode::RegisterSelf(Model& target) {
  if (actual) BasicEvent::RegisterSelf(target);
}

}  // namespace FTS
