#pragma once

#include <memory>
#include <string>
#include <vector>

#include "faulttree/ProxyNode.h"

namespace FTS {

/// A jump in failure logic: it names a deviation elsewhere in the architecture, by a global label
/// or as class, "-", port, and synthesis hangs that deviation's logic under it. One that finds
/// nothing is a hole, which refinement treats as an unconnected deviation.
class GotoNode : public ProxyNode {
 public:
  GotoNode(std::string initName, Model* initModel, const std::shared_ptr<Component>& initOwner,
           int initLine = -1, int initId = NewId);

  void Accept(Visitor& visitor) override;
  std::string GetTypeName() const override { return "GotoNode"; }
  std::shared_ptr<BasicEvent> GetEventNode() override;

  std::weak_ptr<Component>
      owner;  ///< Weak: the component owns the expression that holds this node.
  std::shared_ptr<OutputDeviationNode> eventNode;
  int line;

 protected:
  std::shared_ptr<ProxyNode> MakeSame(Model* target, CloneMode mode,
                                      const std::shared_ptr<Component>& context) override;
  void AppendCloned(std::vector<FaultTreeNode*>& nodes) const override;
};

/// A state of the state machine in the logic of a failed state: what hangs below is resolved in
/// that state.
class StateProxy : public ProxyNode {
 public:
  StateProxy(std::string initName, Model* initModel, std::shared_ptr<State> initTargetState,
             int initId = NewId);

  void Accept(Visitor& visitor) override;
  std::string GetTypeName() const override { return "StateProxy"; }

  std::shared_ptr<State> targetState;

 protected:
  std::shared_ptr<ProxyNode> MakeSame(Model* target, CloneMode mode,
                                      const std::shared_ptr<Component>& context) override;
};

}  // namespace FTS
