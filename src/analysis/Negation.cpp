// Negation: pushes negations down to the events by the rules of De Morgan.
// Assumes an acyclic graph, and events that the model holds: one that the tree has only negated
// leaves it for its complement. Replaces current child lists of gates, all of them when the walk
// has ended, because a gate may be needed negated and as it is, and both grow from the inputs it
// came with. New gates and proxies stand for negated ones; events get complements. Children in
// their order. A shared node is met once per polarity, and what it is replaced by is shared in its
// turn.

#include <array>
#include <unordered_map>
#include <utility>
#include <vector>

#include "analysis/FaultTree.h"
#include "app/DiagnosticLog.h"
#include "faulttree/BasicEvent.h"
#include "faulttree/Gates.h"
#include "faulttree/ProxyNode.h"

namespace FTS {

class NegationWalk {
 public:
  using Pointer = FaultTreeNode::Pointer;

  /// The replacement of the node in that polarity, null when it stays as it is.
  Pointer ReplacementOf(FaultTreeNode& node, bool negate) {
    auto& known = replacements[negate ? 1 : 0];
    const auto found = known.find(&node);
    if (found != known.end()) return found->second;
    Pointer result = node.DualiseWithin(*this, negate);
    return known.emplace(&node, std::move(result)).first->second;
  }

  /// The node that stands in that polarity where `node` stood.
  Pointer InPlaceOf(const Pointer& node, bool negate) {
    Pointer replacement = ReplacementOf(*node, negate);
    return replacement ? replacement : node;
  }

  void ReplaceLater(ChildrenList& list, std::vector<Pointer> children) {
    pending.emplace_back(&list, std::move(children));
  }

  void ReplaceLists() {
    for (auto& [list, children] : pending) list->children = std::move(children);
    pending.clear();
  }

 private:
  // By polarity. Looked up only, never walked.
  std::array<std::unordered_map<const FaultTreeNode*, Pointer>, 2> replacements;
  std::vector<std::pair<ChildrenList*, std::vector<Pointer>>> pending;
};

FaultTreeNode::Pointer FaultTreeNode::Dualise(bool negate) {
  NegationWalk walk;
  Pointer result = walk.ReplacementOf(*this, negate);
  walk.ReplaceLists();
  return result;
}

void FaultTree::Dualise() {
  const FaultTreeNode::Pointer result = root->Dualise(false);
  if (!result) return;
  const FaultTreeNode::Pointer old = root;
  const auto top = std::make_shared<OrGate>(old->name, old->model, old->GetId());
  top->description = old->description;
  if (old->state != DefaultState) {
    // The tree as synthesised stays readable in its own state. It takes a copy: the old root has
    // given its id away, and selecting a state in it would reach the result, and other trees too.
    const FaultTreeNode::Pointer synthesised = CloneTemplate(*old, old->model, CloneMode::NewNodes);
    synthesised->SetCurrentState(DefaultState);
    top->AddChild(synthesised);
    top->SetCurrentState(old->state);
  }
  top->AddChild(result);
  root = top;
}

namespace {

bool HasDual(NodeType type) { return type == NodeType::And || type == NodeType::Or; }

}  // namespace

FaultTreeNode::Pointer FaultTreeGate::DualiseWithin(NegationWalk& walk, bool negate) {
  if (negate && !HasDual(type)) {
    DiagnosticLog::Instance().AddWarning("Negation of a " + ToText(type) +
                                         " gate is not supported: " + name);
    walk.ReplacementOf(*this, false);  // It stays, but its own inputs may hold negations.
    return nullptr;
  }
  std::vector<Pointer> inputs;
  inputs.reserve(Children().size());
  for (const Pointer& child : Children()) inputs.push_back(walk.InPlaceOf(child, negate));
  if (!negate) {
    walk.ReplaceLater(CurrentList(), std::move(inputs));
    return nullptr;
  }
  const bool toAnd = type == NodeType::Or;
  const auto dual = MakeGate(toAnd ? NodeType::And : NodeType::Or,
                             (toAnd ? "AND {was: " : "OR {was: ") + name + "}", model, id);
  dual->description = description;
  dual->SelectState(state);
  dual->CurrentList().children = std::move(inputs);
  return dual;
}

FaultTreeNode::Pointer ProxyNode::DualiseWithin(NegationWalk& walk, bool negate) {
  if (GetChildCount() == 0) return nullptr;
  const Pointer replacement = walk.ReplacementOf(*GetChild(0), negate);
  if (!replacement) return nullptr;
  const std::shared_ptr<ProxyNode> copy = MakeSame(model, CloneMode::NewNodes, nullptr);
  copy->description = description;
  copy->SelectState(state);
  copy->AddChild(replacement);
  return copy;
}

FaultTreeNode::Pointer NotGate::DualiseWithin(NegationWalk& walk, bool negate) {
  return GetChildCount() == 0 ? nullptr : walk.InPlaceOf(GetChild(0), !negate);
}

FaultTreeNode::Pointer BasicEvent::DualiseWithin(NegationWalk& /*walk*/, bool negate) {
  return negate ? GetComplement() : nullptr;
}

}  // namespace FTS
