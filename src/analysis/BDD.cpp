#include "analysis/BDD.h"

#include <utility>

#include "analysis/CutSet.h"
#include "app/Config.h"
#include "faulttree/BasicEvent.h"

namespace FTS {
namespace {

using Diagram = std::unique_ptr<BDDParent>;
using Operation = Diagram (*)(Diagram, Diagram);

constexpr int BranchIndent = 3;

bool IsInner(const Diagram& diagram) { return diagram->kind == BDDParent::Kind::Inner; }

bool ValueOf(const Diagram& terminal) { return static_cast<const BDDTerminal&>(*terminal).value; }

BDDNode& AsNode(const Diagram& diagram) { return static_cast<BDDNode&>(*diagram); }

/// Two inner nodes: the branches of the one on top are combined with the other one.
Diagram Combine(Diagram a, Diagram b, Operation operation) {
  BDDNode& first = AsNode(a);
  BDDNode& second = AsNode(b);
  if (first.event == second.event) {
    first.low = operation(std::move(first.low), std::move(second.low));
    first.high = operation(std::move(first.high), std::move(second.high));
    return a;
  }
  if (first.event->orderWeight < second.event->orderWeight) std::swap(a, b);
  BDDNode& top = AsNode(a);
  top.low = operation(std::move(top.low), b->Clone());
  top.high = operation(std::move(top.high), std::move(b));
  return a;
}

/// A terminal and another diagram: one of the terminal's two values decides, the other one leaves
/// the result to the other operand.
Diagram Decide(Diagram a, Diagram b, bool decidingValue) {
  if (IsInner(a)) std::swap(a, b);
  return ValueOf(a) == decidingValue ? std::move(a) : std::move(b);
}

}  // namespace

BDDNode::BDDNode(BasicEvent& initEvent, bool initNegated)
    : BDDParent(Kind::Inner),
      event(&initEvent),
      high(std::make_unique<BDDTerminal>(!initNegated)),
      low(std::make_unique<BDDTerminal>(initNegated)),
      negated(initNegated) {}

void BDDNode::Print(std::ostream& stream, int indent) const {
  Indent(stream, indent);
  stream << "BDDNODE: " << event->name << '\n';
  high->Print(stream, indent + BranchIndent);
  low->Print(stream, indent + BranchIndent);
}

std::unique_ptr<BDDParent> BDDNode::Clone() const {
  auto copy = std::make_unique<BDDNode>(*event, negated);
  copy->high = high->Clone();
  copy->low = low->Clone();
  return copy;
}

int BDDNode::CountNodes() const { return 1 + high->CountNodes() + low->CountNodes(); }

void BDDNode::CollectCutSets(FaultTreeNode& gate, std::vector<BasicEvent*>& path) const {
  path.push_back(event);
  high->CollectCutSets(gate, path);
  path.pop_back();
  low->CollectCutSets(gate, path);
}

void BDDTerminal::Print(std::ostream& stream, int indent) const {
  Indent(stream, indent);
  stream << "BDDTERMINAL: " << (value ? "1" : "0") << '\n';
}

std::unique_ptr<BDDParent> BDDTerminal::Clone() const {
  return std::make_unique<BDDTerminal>(value);
}

void BDDTerminal::CollectCutSets(FaultTreeNode& gate, std::vector<BasicEvent*>& path) const {
  if (!value) return;
  auto cutSet = std::make_unique<CutSet>();
  for (BasicEvent* const member : path) cutSet->AddEvent(*member);
  // The plain size counts, whatever of it is normal operation. It may be less than the length of
  // the way: events of equal weight can stand in either order, and so twice on a way.
  const int size = cutSet->GetSize();
  const int limit = Config::Instance().maxCutSetSize;
  if (limit != 0 && size > limit) return;
  if (gate.AddCutSet(std::move(cutSet), false) && gate.maxOrder < size) gate.maxOrder = size;
}

std::unique_ptr<BDDParent> ApplyAnd(std::unique_ptr<BDDParent> a, std::unique_ptr<BDDParent> b) {
  if (IsInner(a) && IsInner(b)) return Combine(std::move(a), std::move(b), ApplyAnd);
  return Decide(std::move(a), std::move(b), false);
}

std::unique_ptr<BDDParent> ApplyOr(std::unique_ptr<BDDParent> a, std::unique_ptr<BDDParent> b) {
  if (IsInner(a) && IsInner(b)) return Combine(std::move(a), std::move(b), ApplyOr);
  return Decide(std::move(a), std::move(b), true);
}

}  // namespace FTS
