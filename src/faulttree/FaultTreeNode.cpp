#include "faulttree/FaultTreeNode.h"

#include <utility>

#include "analysis/BDD.h"
#include "analysis/CutSet.h"
#include "analysis/ModuleEvent.h"
#include "faulttree/BasicEvent.h"
#include "faulttree/CircleNode.h"

namespace FTS {

FaultTreeNode::FaultTreeNode(NodeType initType, std::string initName, Model* initModel, int initId)
    : FaultTreeNode(initType, std::move(initName), initModel,
                    ExactId{initId < 0 ? TakeId() : initId}) {}

FaultTreeNode::FaultTreeNode(NodeType initType, std::string initName, Model* initModel,
                             ExactId initId)
    : name(std::move(initName)), model(initModel), id(initId.value), type(initType) {
  EnterRegistry();
}

FaultTreeNode::~FaultTreeNode() { LeaveRegistry(); }

const FaultTreeNode::Pointer& FaultTreeNode::GetChild(int /*index*/) const {
  static const Pointer None;
  return None;
}

void FaultTreeNode::AddChild(const Pointer& /*node*/) {}

void FaultTreeNode::ReplaceChild(int /*index*/, const Pointer& /*node*/) {}

bool FaultTreeNode::RemoveChild(const FaultTreeNode& /*node*/) { return false; }

bool FaultTreeNode::HasChild(const FaultTreeNode& node) const {
  const int count = GetChildCount();
  for (int i = 0; i < count; ++i) {
    const FaultTreeNode& child = *GetChild(i);
    if (child.id == node.id) return true;
    if (!child.IsEvent() || !node.IsEvent()) continue;
    if (static_cast<const BasicEvent&>(child).prime == static_cast<const BasicEvent&>(node).prime) {
      return true;
    }
  }
  return false;
}

}  // namespace FTS
