#pragma once

#include <memory>
#include <string>
#include <vector>

#include "faulttree/BasicEvent.h"

namespace FTS {

/// Stands for the failure that a loop would feed back: it replaces the edge that closes the loop.
/// The name is "CIRCLE TO " and the name of the node at which the loop closes (its id in brackets
/// when it has none).
class CircleNode : public BasicEvent {
 public:
  /// `target` is the node at which the loop closes.
  CircleNode(const FaultTreeNode& target, Model* initModel, int initId = NewId);
  CircleNode(std::string initName, Model* initModel, std::size_t childCount, int initId);

  void Accept(Visitor& visitor) override;
  std::string GetTypeName() const override { return "Circle"; }
  /// Notes a tree in which the loop was found, once.
  void AddTree(const std::shared_ptr<FaultTree>& tree);

  std::vector<bool>
      loopChildren;  ///< Per child of the target: a loop leaves the target through it.
  std::vector<std::weak_ptr<FaultTree>> trees;
  bool entered = false;  ///< The search for crazy loops has met the target.
  std::shared_ptr<CircleNode>
      enclosing;  ///< The innermost loop through which it first did; or null.

 protected:
  std::shared_ptr<BasicEvent> MakeSame(Model* target, int newId) override;
};

}  // namespace FTS
