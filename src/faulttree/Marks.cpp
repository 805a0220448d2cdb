// Marks: the marks that walks set, and the passes that clear one field in a whole graph.
// Each node is met once, cycles included, in no order that matters. The passes change the one field
// that they are named after.

#include "faulttree/Marks.h"

#include "faulttree/FaultTreeNode.h"
#include "faulttree/GraphWalk.h"

namespace FTS {

namespace {

std::uint64_t NextWalk() {
  static std::uint64_t last = 0;  // Nodes start at 0, the number of no walk.
  return ++last;
}

}  // namespace

OnceMarks::OnceMarks() : walk(NextWalk()) {}

bool OnceMarks::Enter(const FaultTreeNode& node) {
  if (node.lastWalk == walk) return false;
  node.lastWalk = walk;
  return true;
}

OnPathMark::OnPathMark(const FaultTreeNode& initNode) : node(initNode), entered(!initNode.visited) {
  node.visited = true;
}

OnPathMark::~OnPathMark() {
  if (entered) node.visited = false;
}

void FaultTreeNode::ClearVisited() {
  ForEachNode(*this, [](const FaultTreeNode& node) { node.visited = false; });
}

void FaultTreeNode::ClearResolved() {
  ForEachNode(*this, [](FaultTreeNode& node) { node.resolved = false; });
}

void FaultTreeNode::ClearContradiction() {
  ForEachNode(*this, [](FaultTreeNode& node) { node.contradictory = false; });
}

}  // namespace FTS
