#include "faulttree/FaultTreeGate.h"

#include <algorithm>
#include <cassert>
#include <utility>

#include "analysis/CutSetList.h"
#include "faulttree/NodeRegistry.h"

namespace FTS {

ChildrenList::ChildrenList(std::string initState, FaultTreeGate& initOwner)
    : state(std::move(initState)), owner(&initOwner) {}

ChildrenList::~ChildrenList() = default;

FaultTreeGate::FaultTreeGate(NodeType initType, std::string initName, Model* initModel, int initId)
    : FaultTreeNode(initType, std::move(initName), initModel, initId) {
  auto& list = childLists[DefaultState];
  list = std::make_unique<ChildrenList>(DefaultState, *this);
  currentChildren = list.get();
  CountOn(NodeCounters::Instance().gatesMade);
}

FaultTreeGate::~FaultTreeGate() = default;

int FaultTreeGate::GetChildCount() const { return static_cast<int>(Children().size()); }

const FaultTreeNode::Pointer& FaultTreeGate::GetChild(int index) const {
  assert(index >= 0 && index < GetChildCount() && "The index counts current children.");
  return Children()[static_cast<std::size_t>(index)];
}

void FaultTreeGate::AddChild(const Pointer& node) {
  assert(node && "A gate has no empty inputs.");
  currentChildren->children.push_back(node);
}

void FaultTreeGate::ReplaceChild(int index, const Pointer& node) {
  assert(node && "A gate has no empty inputs.");
  assert(index >= 0 && index < GetChildCount() && "The index counts current children.");
  currentChildren->children[static_cast<std::size_t>(index)] = node;
}

bool FaultTreeGate::RemoveChild(const FaultTreeNode& node) {
  auto& children = currentChildren->children;
  const int wantedId = node.GetId();
  const auto found = std::find_if(children.begin(), children.end(),
                                  [&](const Pointer& child) { return child->GetId() == wantedId; });
  if (found == children.end()) return false;
  children.erase(found);
  return true;
}

void FaultTreeGate::ClearChildren() { currentChildren->children.clear(); }

}  // namespace FTS
