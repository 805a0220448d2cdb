// Modules: finds the gates whose graphs share no node with the rest of their tree, so that the cut
// sets above can count each as one event (Y. Dutuit, A. Rauzy: A Linear-Time Algorithm to Find
// Modules of Fault Trees, IEEE Transactions on Reliability 45 (1996)). One depth-first walk dates
// the visits of every node; a gate is a module when everything below it is visited between its own
// first two dates only.
// Assumes an acyclic graph. Changes the dates, `isModule`, `moduleEvent` and cut sets. A gate is
// descended into once, however often it is shared, and so each walk is linear in the links. Marks:
// none; a date that is set tells that the node has been met.

#include <algorithm>
#include <iostream>
#include <memory>
#include <vector>

#include "analysis/BDD.h"
#include "analysis/CutSet.h"
#include "analysis/FaultTree.h"
#include "analysis/ModuleEvent.h"
#include "app/Config.h"
#include "faulttree/CommonCauseNodes.h"
#include "faulttree/FaultTreeGate.h"
#include "faulttree/GraphWalk.h"
#include "model/CCF.h"

namespace FTS {
namespace {

/// The common cause that an activated potential one stands for, null for other nodes. It counts as
/// an input of the node here: gates that share it through different nodes depend on each other.
FaultTreeNode* ActualCause(const FaultTreeNode& node) {
  if (node.type != NodeType::PCCF || !node.IsEvent()) return nullptr;
  return static_cast<const PCCFNode&>(node).actual.get();
}

std::vector<FaultTreeNode*> InputsOf(const FaultTreeNode& node) {
  std::vector<FaultTreeNode*> inputs;
  if (FaultTreeNode* const actual = ActualCause(node)) inputs.push_back(actual);
  for (int i = 0; i < node.GetChildCount(); ++i) inputs.push_back(node.GetChild(i).get());
  return inputs;
}

void ResetOwnModule(FaultTreeNode& node) {
  node.firstVisit = node.secondVisit = node.lastVisit = 0;
  node.minVisit = node.maxVisit = 0;
  node.isModule = false;
  node.moduleEvent.reset();
  node.ResetOwnCutSets();
}

// A date of 0 is none.
int Earlier(int date, int other) { return date == 0 ? other : std::min(date, other); }

/// A gate that nothing is known to cause is a hole, which the gates above pass over; as a module it
/// would take all their cut sets with it. One whose cut sets are too large, or exclude each other,
/// is none.
bool IsHole(const FaultTreeGate& module) {
  return module.moduleEvent->moduleCutSets.empty() && !module.incomplete;
}

void GenerateModule(FaultTreeGate& module, bool useBDDs) {
  bool hole = false;
  if (useBDDs) {
    hole = !CollectBDDCutSets(module, [](const BDDParent& /*diagram*/) {});
    module.FillModuleEvent();
  } else {
    module.GenerateCutSets();
    hole = IsHole(module);
  }
  if (!hole) return;
  module.isModule = false;
  module.moduleEvent.reset();
}

}  // namespace

void FaultTreeNode::ResetModules() {
  ForEachNode(*this, [](FaultTreeNode& node) {
    ResetOwnModule(node);
    if (FaultTreeNode* const actual = ActualCause(node)) ResetOwnModule(*actual);
  });
}

int FaultTreeNode::AssignVisitNumbersAlt(int date) {
  if (firstVisit == 0) firstVisit = date;
  const std::vector<FaultTreeNode*> inputs = InputsOf(*this);
  if (!inputs.empty()) {
    if (secondVisit != 0) {
      lastVisit = date;
      return date;
    }
    for (FaultTreeNode* const input : inputs) date = input->AssignVisitNumbersAlt(date + 1);
    ++date;
  }
  if (secondVisit == 0) secondVisit = date;
  lastVisit = date;
  return date;
}

void FaultTreeNode::FindModulesDeep(std::vector<std::shared_ptr<FaultTreeGate>>& modules) {
  if (minVisit != 0) return;
  for (FaultTreeNode* const input : InputsOf(*this)) {
    input->FindModulesDeep(modules);
    minVisit = Earlier(minVisit, input->minVisit);
    maxVisit = std::max(maxVisit, input->maxVisit);
  }
  if (IsGate() && minVisit > firstVisit && maxVisit < secondVisit) {
    const auto gate = std::static_pointer_cast<FaultTreeGate>(shared_from_this());
    isModule = true;
    moduleEvent = std::make_unique<ModuleEvent>(*gate);
    modules.push_back(gate);
  }
  // Visits from elsewhere count for the gates above.
  minVisit = Earlier(minVisit, firstVisit);
  maxVisit = std::max(maxVisit, lastVisit);
}

int FaultTree::Modularise(bool useBDDs) {
  FaultTreeNode* const top = GetTopGate();
  if (!top) return 0;
  std::vector<std::shared_ptr<FaultTreeGate>> modules;
  top->ResetModules();
  top->AssignVisitNumbersAlt(1);
  top->FindModulesDeep(modules);
  top->moduleEvent.reset();  // No gate of this tree takes it as an input.
  const int count = static_cast<int>(modules.size());
  if (count < 2) return count;  // The top gate as the only module is worth nothing.
  for (const auto& module : modules) {
    if (module.get() != top) GenerateModule(*module, useBDDs);
  }
  if (!Config::Instance().runSilent) std::cerr << "Number of modules found: " << count << '\n';
  return count;
}

}  // namespace FTS
