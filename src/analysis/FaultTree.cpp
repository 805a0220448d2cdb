#include "analysis/FaultTree.h"

#include <utility>

#include "analysis/CutSet.h"
#include "analysis/CutSetList.h"
#include "analysis/FMEA.h"
#include "faulttree/FaultTreeNode.h"
#include "model/Deviation.h"

namespace FTS {

FaultTree::FaultTree(std::shared_ptr<FaultTreeNode> initRoot)
    : primeIndex(std::make_unique<CutSetIndex>()), root(std::move(initRoot)) {}

FaultTree::~FaultTree() = default;

void FaultTree::Print(std::ostream& stream, int indent) const {
  if (root) root->Print(stream, indent);
}

std::string FaultTree::GetName() const { return root ? root->name : ""; }

FaultTreeNode* FaultTree::GetTopGate() const {
  FaultTreeNode* node = root.get();
  while (node && node->IsProxy()) {
    node = node->GetChildCount() > 0 ? node->GetChild(0).get() : nullptr;
  }
  return node;
}

void FaultTree::AddToFMEA(FMEA& fmea) {
  constexpr int Alone = 1;
  for (const auto& [eventPrime, lists] : primeIndex->lists) {
    fmea.AddEffect(eventPrime, shared_from_this(), lists.contains(Alone));
  }
}

}  // namespace FTS
