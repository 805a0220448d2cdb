// Release of graphs: the one place that frees what synthesis has linked in circles.
// Children are moved from their lists to a list of the walk, so that a node met again has nothing
// left to give, no marks are needed, and no node dies with a graph below it: destruction is never
// recursive. Linear in the links of the graphs.

#include "model/GraphRelease.h"

#include <memory>
#include <utility>

#include "analysis/CutSet.h"
#include "analysis/ModuleEvent.h"
#include "faulttree/CircleNode.h"
#include "faulttree/FaultTreeGate.h"
#include "faulttree/ProxyNode.h"

namespace FTS {

namespace {

using Nodes = std::vector<FaultTreeNode::Pointer>;

void Take(FaultTreeNode::Pointer node, Nodes& pending) {
  if (node) pending.push_back(std::move(node));
}

void TakeChildren(FaultTreeGate& gate, Nodes& pending) {
  for (auto& [listState, list] : gate.childLists) {
    for (auto& child : list->children) Take(std::move(child), pending);
    list->children.clear();
  }
}

void TakeChildren(ProxyNode& proxy, Nodes& pending) {
  if (proxy.GetChildCount() > 0) Take(proxy.GetChild(0), pending);
  proxy.ClearChildren();
  for (auto& [childState, child] : proxy.childByState) Take(std::exchange(child, nullptr), pending);
}

}  // namespace

void ReleaseGraphs(std::vector<FaultTreeNode::Pointer> roots) {
  Nodes& pending = roots;
  while (!pending.empty()) {
    const FaultTreeNode::Pointer node = std::move(pending.back());
    pending.pop_back();
    if (!node) continue;
    if (node->IsGate()) TakeChildren(static_cast<FaultTreeGate&>(*node), pending);
    if (node->IsProxy()) TakeChildren(static_cast<ProxyNode&>(*node), pending);
    if (node->type == NodeType::Circle && node->IsEvent()) {
      Take(std::exchange(static_cast<CircleNode&>(*node).enclosing, nullptr), pending);
    }
    Take(std::exchange(node->circle, nullptr), pending);
    Take(std::exchange(node->clone, nullptr), pending);
  }
}

void ForgetAnalysis(BasicEvent& event) {
  event.complement.reset();
  event.coverage.clear();
  event.ResetOwnCutSets();
}

}  // namespace FTS
