// Contradictions: finds branches that can never be true.
// Assumes an acyclic graph. Sets `contradictory` on what is dead and takes dead inputs out of the
// current lists of OR gates, and of POR gates behind the first. Marks: the caller's, once per node;
// a second visit would find the same, and would only repeat the warning. Children first, in their
// order.

#include <vector>

#include "app/DiagnosticLog.h"
#include "faulttree/BasicEvent.h"
#include "faulttree/CommonCauseNodes.h"
#include "faulttree/FaultTreeGate.h"
#include "faulttree/Marks.h"
#include "faulttree/ProxyNode.h"
#include "model/CCF.h"

namespace FTS {

namespace {

void WarnIfDead(const FaultTreeNode& node) {
  if (!node.contradictory) return;
  DiagnosticLog::Instance().AddWarning("Contradiction found: " + node.name);
}

enum class DeadInput { Ignored, Removed, KillsGate };

/// What a dead input, given by its position, means to a gate.
DeadInput JudgeDeadInput(NodeType gateType, std::size_t index) {
  if (gateType == NodeType::Or) return DeadInput::Removed;
  if (gateType == NodeType::XOr) return DeadInput::Ignored;
  if (gateType == NodeType::POr && index > 0) return DeadInput::Removed;
  return DeadInput::KillsGate;
}

}  // namespace

void FaultTreeGate::FindContradictions(OnceMarks& marks) {
  if (!marks.Enter(*this)) return;
  auto& children = CurrentList().children;
  if (!contradictory) {
    std::vector<Pointer> alive;
    alive.reserve(children.size());
    for (std::size_t i = 0; i < children.size(); ++i) {
      children[i]->FindContradictions(marks);
      const DeadInput verdict =
          children[i]->contradictory ? JudgeDeadInput(type, i) : DeadInput::Ignored;
      if (verdict == DeadInput::KillsGate) contradictory = true;
      if (verdict != DeadInput::Removed) alive.push_back(children[i]);
    }
    if (alive.size() < children.size()) children = std::move(alive);
  }
  if (children.empty()) contradictory = true;
  WarnIfDead(*this);
}

void ProxyNode::FindContradictions(OnceMarks& marks) {
  if (!marks.Enter(*this)) return;
  if (GetChildCount() > 0) {
    GetChild(0)->FindContradictions(marks);
    contradictory = GetChild(0)->contradictory;
  }
  WarnIfDead(*this);
}

void NotGate::FindContradictions(OnceMarks& marks) {
  if (!marks.Enter(*this)) return;
  if (GetChildCount() > 0) GetChild(0)->FindContradictions(marks);
  contradictory = false;  // What never holds makes its negation hold always.
}

void BasicEvent::FindContradictions(OnceMarks& marks) {
  if (marks.Enter(*this)) WarnIfDead(*this);
}

void PCCFNode::FindContradictions(OnceMarks& marks) {
  if (!marks.Enter(*this)) return;
  if (actual) {
    actual->FindContradictions(marks);
    contradictory = actual->contradictory;
  }
  WarnIfDead(*this);
}

}  // namespace FTS
