// States: which of a node's children are current.
// Assumes nothing about the graph, which may hold cycles, and leaves all child lists but the
// current ones alone. Each node is met once. Selecting goes on into the children of the state
// selected, copying into those of the state left.

#include <vector>

#include "faulttree/FaultTreeGate.h"
#include "faulttree/GraphWalk.h"
#include "faulttree/Marks.h"
#include "faulttree/ProxyNode.h"

namespace FTS {

void FaultTreeNode::SetCurrentState(const std::string& value) {
  ForEachNode(*this, [&](FaultTreeNode& node) { node.SelectState(value); });
}

void FaultTreeNode::CopyChildrenToState(const std::string& value) {
  OnceMarks marks;
  std::vector<FaultTreeNode*> pending{this};
  while (!pending.empty()) {
    FaultTreeNode& node = *pending.back();
    pending.pop_back();
    if (!marks.Enter(node)) continue;
    for (int i = node.GetChildCount() - 1; i >= 0; --i) pending.push_back(node.GetChild(i).get());
    node.CopyListToState(value);
  }
}

void FaultTreeGate::SelectState(const std::string& value) {
  auto& list = childLists[value];
  if (!list) list = std::make_unique<ChildrenList>(value, *this);
  currentChildren = list.get();
  state = value;
}

void FaultTreeGate::CopyListToState(const std::string& value) {
  const ChildrenList& source = *currentChildren;
  const bool known = childLists.contains(value);
  SelectState(value);
  if (!known) currentChildren->children = source.children;
}

void ProxyNode::SelectState(const std::string& value) {
  child = childByState[value];
  state = value;
}

void ProxyNode::CopyListToState(const std::string& value) {
  childByState[value] = child;
  state = value;
}

}  // namespace FTS
