// Decision diagrams of nodes, and the cut sets of a tree from its diagram.
// Assumes an acyclic graph without negations. Changes `bdd`, which holds the diagram of each node
// that has been built, and the order weights of events; the diagrams go when the cut sets are
// there. Children in order. A shared node is built once, and every parent takes a copy. Nothing
// below an inner module is looked at: its event is one variable, and no event below it occurs
// elsewhere.

#include <iostream>
#include <memory>
#include <utility>
#include <vector>

#include "analysis/BDD.h"
#include "analysis/CutSetList.h"
#include "analysis/FaultTree.h"
#include "analysis/ModuleEvent.h"
#include "faulttree/BasicEvent.h"
#include "faulttree/CommonCauseNodes.h"
#include "faulttree/FaultTreeGate.h"
#include "faulttree/Marks.h"
#include "faulttree/ProxyNode.h"
#include "model/CCF.h"
#include "model/VtnException.h"

namespace FTS {
namespace {

using Diagram = std::unique_ptr<BDDParent>;

Diagram CopyOf(const Diagram& diagram) { return diagram ? diagram->Clone() : nullptr; }

/// Takes the diagram of the next input of a gate in.
Diagram Join(NodeType gateType, Diagram left, Diagram right) {
  if (!right) return left;
  if (!left) return right;
  if (gateType == NodeType::And) return ApplyAnd(std::move(left), std::move(right));
  if (gateType == NodeType::Or) return ApplyOr(std::move(left), std::move(right));
  return left;  // The other types take the first input that has a diagram.
}

}  // namespace

std::unique_ptr<BDDParent> FaultTreeGate::BuildBDD(bool asRoot) {
  if (isModule && !asRoot) return moduleEvent ? moduleEvent->BuildBDD(false) : nullptr;
  if (!bdd) {
    for (const Pointer& child : Children())
      bdd = Join(type, std::move(bdd), child->BuildBDD(false));
  }
  return CopyOf(bdd);
}

std::unique_ptr<BDDParent> ProxyNode::BuildBDD(bool /*asRoot*/) {
  if (GetChildCount() == 0) {
    RequireChild();
    return nullptr;
  }
  return GetChild(0)->BuildBDD(false);
}

std::unique_ptr<BDDParent> BasicEvent::BuildBDD(bool /*asRoot*/) {
  if (IsLeftOut()) return nullptr;
  if (!bdd) bdd = std::make_unique<BDDNode>(*this, false);
  return bdd->Clone();
}

std::unique_ptr<BDDParent> ComplementEvent::BuildBDD(bool /*asRoot*/) {
  if (IsLeftOut()) return nullptr;
  // A variable of its own that is true where it does not occur: no way names a complement, and the
  // cut sets tell which failures suffice, not which must be absent.
  if (!bdd) bdd = std::make_unique<BDDNode>(*this, true);
  return bdd->Clone();
}

std::unique_ptr<BDDParent> PCCFNode::BuildBDD(bool asRoot) {
  return actual ? actual->BuildBDD(asRoot) : BasicEvent::BuildBDD(asRoot);
}

void FaultTreeNode::ClearBDD() {
  OnceMarks marks;
  std::vector<FaultTreeNode*> pending{this};
  while (!pending.empty()) {
    FaultTreeNode& node = *pending.back();
    pending.pop_back();
    if (!marks.Enter(node)) continue;
    node.bdd.reset();
    if (node.moduleEvent) node.moduleEvent->bdd.reset();
    if (node.isModule && &node != this) continue;
    for (int i = 0; i < node.GetChildCount(); ++i) pending.push_back(node.GetChild(i).get());
  }
}

bool CollectBDDCutSets(FaultTreeNode& gate,
                       const std::function<void(const BDDParent&)>& beforeCollecting) {
  gate.ClearBDD();
  gate.AssignOrderWeight(1.0F);
  const Diagram diagram = gate.BuildBDD(true);
  gate.ClearBDD();
  if (!diagram) return false;
  beforeCollecting(*diagram);
  std::vector<BasicEvent*> path;
  diagram->CollectCutSets(gate, path);
  return true;
}

void FaultTree::GenerateBDDCutSets() {
  FaultTreeNode* const top = GetTopGate();
  if (!top) return;
  // These lines are for watching a diagram grow, and so they come in silent runs too.
  CollectBDDCutSets(*top, [](const BDDParent& diagram) {
    std::cout << "      " << diagram.CountNodes() << " nodes in tree\n"
              << "      Collecting cut sets...\n";
  });
  maxOrder = top->maxOrder;
}

}  // namespace FTS
