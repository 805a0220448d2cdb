#include "faulttree/CircleNode.h"

#include <algorithm>
#include <utility>

#include "analysis/FaultTree.h"

namespace FTS {

namespace {

std::string NameFor(const FaultTreeNode& target) {
  const std::string shown =
      target.name.empty() ? "[" + std::to_string(target.GetId()) + "]" : target.name;
  return "CIRCLE TO " + shown;
}

}  // namespace

CircleNode::CircleNode(const FaultTreeNode& target, Model* initModel, int initId)
    : BasicEvent(NameFor(target), initModel, true, NodeType::Circle, initId),
      loopChildren(static_cast<std::size_t>(target.GetChildCount()), false) {}

CircleNode::CircleNode(std::string initName, Model* initModel, std::size_t childCount, int initId)
    : BasicEvent(std::move(initName), initModel, false, NodeType::Circle, initId),
      loopChildren(childCount, false) {}

void CircleNode::AddTree(const std::shared_ptr<FaultTree>& tree) {
  const bool known = std::any_of(trees.begin(), trees.end(),
                                 [&](const auto& entry) { return entry.lock() == tree; });
  if (!known) trees.push_back(tree);
}

}  // namespace FTS
