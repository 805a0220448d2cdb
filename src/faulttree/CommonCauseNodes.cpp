#include "faulttree/CommonCauseNodes.h"

#include <utility>

#include "model/CCF.h"
#include "model/Component.h"

namespace FTS {

PCCFNode::PCCFNode(std::string initName, Model* initModel, int initId)
    : BasicEvent(std::move(initName), initModel, false, NodeType::PCCF, initId) {}

PCCFProxy::PCCFProxy(std::string initName, Model* initModel, int initId)
    : ProxyNode(NodeType::PCCF, std::move(initName), initModel, initId),
      node(std::make_shared<PCCFNode>(name, initModel)) {}

PCCFProxy::PCCFProxy(std::string initName, Model* initModel, std::shared_ptr<PCCFNode> initNode,
                     int initId)
    : ProxyNode(NodeType::PCCF, std::move(initName), initModel, initId),
      node(std::move(initNode)) {}

void PCCFProxy::Activate(const std::shared_ptr<CCF>& ccf) {
  actual = ccf;
  node->actual = ccf;
  AddChild(ccf);
}

std::shared_ptr<BasicEvent> PCCFProxy::GetEventNode() {
  node->owner = owner;
  return node;
}

}  // namespace FTS
