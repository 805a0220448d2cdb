#include "faulttree/GotoNode.h"

#include <utility>

#include "faulttree/DeviationNodes.h"
#include "model/Component.h"
#include "model/StateMachine.h"

namespace FTS {

GotoNode::GotoNode(std::string initName, Model* initModel,
                   const std::shared_ptr<Component>& initOwner, int initLine, int initId)
    : ProxyNode(NodeType::External, std::move(initName), initModel, initId),
      owner(initOwner),
      line(initLine) {}

std::shared_ptr<BasicEvent> GotoNode::GetEventNode() {
  if (!eventNode) {
    eventNode = std::make_shared<OutputDeviationNode>(name + UnconnectedSuffix, model);
    eventNode->owner = FindNamedOwner();
  }
  return eventNode;
}

StateProxy::StateProxy(std::string initName, Model* initModel,
                       std::shared_ptr<State> initTargetState, int initId)
    : ProxyNode(NodeType::State, std::move(initName), initModel, initId),
      targetState(std::move(initTargetState)) {}

}  // namespace FTS
