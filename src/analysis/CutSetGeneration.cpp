// Minimal cut sets upward: each node gets its cut sets from those of its children, in one walk that
// works on every node once per analysis (`cutSetsDone`).
// Assumes an acyclic graph without negations. Leaves the result on the node on which the walk
// began. A gate is worked on by families of cut sets where these give the same result (see
// FamilyGeneration.h), and by the products below where they do not; children in order in both.

#include <algorithm>
#include <cstddef>
#include <map>
#include <memory>
#include <utility>
#include <vector>

#include "analysis/CutSet.h"
#include "analysis/CutSetList.h"
#include "analysis/FamilyGeneration.h"
#include "analysis/ModuleEvent.h"
#include "app/Config.h"
#include "app/DiagnosticLog.h"
#include "faulttree/BasicEvent.h"
#include "faulttree/CommonCauseNodes.h"
#include "faulttree/FaultTreeGate.h"
#include "faulttree/GraphWalk.h"
#include "faulttree/ProxyNode.h"
#include "model/CCF.h"
#include "model/VtnException.h"

namespace FTS {
namespace {

using CutSetMap = std::map<double, std::unique_ptr<CutSet>>;

void ClearCutSets(FaultTreeGate& gate) {
  gate.cutSets.clear();
  gate.primeIndex.reset();
}

/// True for a gate over a few events and modules. A tree that is modules all through has thousands
/// of them, each of which is worked on by itself.
bool IsSmall(const FaultTreeGate& gate) {
  constexpr std::size_t FewInputs = 8;
  return gate.Children().size() <= FewInputs &&
         std::all_of(gate.Children().begin(), gate.Children().end(),
                     [](const auto& child) { return child->IsEvent() || child->isModule; });
}

/// One walk over a graph. Keeps what the gates on its way have in common.
class CutSetWalk {
 public:
  /// Generates the node's cut sets unless they are done.
  void Generate(FaultTreeNode& node);
  void GenerateGate(FaultTreeGate& gate);
  void GenerateProxy(FaultTreeNode& proxy);

 private:
  bool TryFamilies(FaultTreeGate& gate);
  bool TakeInput(FaultTreeGate& gate, const FaultTreeNode& child);
  bool TakeModule(FaultTreeGate& gate, ModuleEvent& event);
  bool TakeEmptyInput(FaultTreeGate& gate, const FaultTreeNode& child);
  void MultiplyByModule(FaultTreeGate& gate, const CutSet& module);
  void Multiply(FaultTreeGate& gate, const CutSetMap& factors);
  void MultiplyByOne(FaultTreeGate& gate, const CutSet& factor);
  bool IsWanted(FaultTreeGate& gate, const CutSet& product, bool merged) const;
  bool IsOverLimit(const CutSet& cutSet) const { return limit != 0 && cutSet.GetOrder() > limit; }

  const int limit = Config::Instance().maxCutSetSize;
  CutSet scratch;  // The product at hand: most are dropped, and cost no allocation.
  std::size_t gatesMet = 0;
  std::size_t wastedVisits = 0;  // Nodes that attempts with families looked at in vain.
};

void CutSetWalk::Generate(FaultTreeNode& node) {
  if (node.cutSetsDone) return;
  if (node.IsGate()) {
    GenerateGate(static_cast<FaultTreeGate&>(node));
  } else if (node.IsProxy() && node.GetChildCount() > 0) {
    GenerateProxy(node);
  } else {
    node.GenerateCutSets();
  }
}

void CutSetWalk::GenerateGate(FaultTreeGate& gate) {
  const bool complete = TryFamilies(gate);
  gate.cutSetsDone = true;
  if (!complete) {
    for (const FaultTreeNode::Pointer& child : gate.Children()) {
      Generate(*child);
      if (!TakeInput(gate, *child)) break;
    }
    gate.primeIndex.reset();  // Searched only while cut sets arrive.
  }
  gate.FillModuleEvent();
}

// A graph that is not fit for families has parts that are, so gates below try again. As many gates
// pass without an attempt as the attempts so far were dear, or a deep graph would be looked at from
// each of its gates.
bool CutSetWalk::TryFamilies(FaultTreeGate& gate) {
  constexpr std::size_t VisitsPerGate = 16;
  if (gatesMet++ * VisitsPerGate < wastedVisits || IsSmall(gate)) return false;
  const FamilyAttempt attempt = GenerateThroughFamilies(gate);
  if (!attempt.done) wastedVisits += attempt.nodesMet;
  return attempt.done;
}

void CutSetWalk::GenerateProxy(FaultTreeNode& proxy) {
  proxy.cutSetsDone = true;
  FaultTreeNode& child = *proxy.GetChild(0);
  Generate(child);
  if (!child.isModule) {
    child.CopyCutSetsTo(proxy);
  } else if (child.moduleEvent) {
    auto module = std::make_unique<CutSet>();
    module->AddEvent(*child.moduleEvent);
    proxy.AddCutSet(std::move(module), true);
  }
  proxy.truncated = child.truncated;
  proxy.incomplete = child.incomplete;
  proxy.maxOrder = child.maxOrder;
}

// False when an AND gate has lost its cut sets: further inputs would not bring them back.
bool CutSetWalk::TakeInput(FaultTreeGate& gate, const FaultTreeNode& child) {
  if (child.isModule) return !child.moduleEvent || TakeModule(gate, *child.moduleEvent);
  if (child.cutSets.empty()) return TakeEmptyInput(gate, child);
  if (gate.cutSets.empty()) {
    child.CopyCutSetsTo(gate);
    return true;
  }
  if (gate.type == NodeType::And) {
    Multiply(gate, child.cutSets);
    return !gate.cutSets.empty();
  }
  if (gate.type == NodeType::Or) {
    for (const auto& [key, cutSet] : child.cutSets) {
      if (!gate.IsSubsumed(*cutSet)) gate.AddCutSet(cutSet->Clone(), true);
    }
  }
  return true;  // The other types take the first input that has cut sets.
}

bool CutSetWalk::TakeEmptyInput(FaultTreeGate& gate, const FaultTreeNode& child) {
  const bool isAnd = gate.type == NodeType::And;
  if (!child.incomplete) {
    // Nothing is known to cause the input, and the gate goes on as if it were not there. That is as
    // it should be for the state in which a system starts.
    if (isAnd && child.type != NodeType::State) gate.ReportIgnoredInput(child);
    return true;
  }
  gate.incomplete = true;
  gate.truncated = gate.truncated || child.truncated;
  if (!isAnd) return true;
  ClearCutSets(gate);
  gate.maxOrder = 0;
  return false;
}

bool CutSetWalk::TakeModule(FaultTreeGate& gate, ModuleEvent& event) {
  auto module = std::make_unique<CutSet>();
  module->AddEvent(event);
  if (gate.cutSets.empty()) {
    gate.AddCutSet(std::move(module), true);
  } else if (gate.type == NodeType::And) {
    MultiplyByModule(gate, *module);
    return !gate.cutSets.empty();
  } else if (gate.type == NodeType::Or) {
    const int order = module->GetOrder();
    if (gate.AddCutSet(std::move(module), false)) gate.maxOrder = std::max(gate.maxOrder, order);
  }
  return true;
}

void CutSetWalk::MultiplyByModule(FaultTreeGate& gate, const CutSet& module) {
  const CutSetMap factors = std::move(gate.cutSets);
  ClearCutSets(gate);
  for (const auto& [key, factor] : factors) {
    scratch.BecomeCloneOf(*factor);
    if (!scratch.Merge(module)) {
      module.WarnOfExclusion();
      gate.incomplete = true;
      continue;
    }
    if (gate.IsSubsumed(scratch)) continue;
    // The order of the latest attempt, which stays when the attempt fails the limit. Neither does
    // that mark the gate as truncated: what the module will expand to is not known here.
    const int before = std::exchange(gate.maxOrder, scratch.GetOrder());
    if (IsOverLimit(scratch)) {
      gate.incomplete = true;
      continue;
    }
    if (!gate.AddCutSet(scratch.Copy(), true)) gate.maxOrder = before;
  }
}

void CutSetWalk::Multiply(FaultTreeGate& gate, const CutSetMap& factors) {
  if (factors.size() == 1) {
    MultiplyByOne(gate, *factors.begin()->second);
    return;
  }
  const CutSetMap present = std::move(gate.cutSets);
  ClearCutSets(gate);
  for (const auto& [presentKey, cutSet] : present) {
    for (const auto& [factorKey, factor] : factors) {
      scratch.BecomeCloneOf(*cutSet);
      const bool merged = scratch.Merge(*factor);
      if (IsWanted(gate, scratch, merged)) gate.AddCutSet(scratch.Copy(), true);
    }
  }
}

// Each cut set goes into one product only, and becomes that product.
void CutSetWalk::MultiplyByOne(FaultTreeGate& gate, const CutSet& factor) {
  CutSetMap present = std::move(gate.cutSets);
  ClearCutSets(gate);
  for (auto& [key, cutSet] : present) {
    cutSet->RestorePrime();
    const bool merged = cutSet->Merge(factor);
    if (IsWanted(gate, *cutSet, merged)) gate.AddCutSet(std::move(cutSet), true);
  }
}

bool CutSetWalk::IsWanted(FaultTreeGate& gate, const CutSet& product, bool merged) const {
  if (IsOverLimit(product)) {
    gate.truncated = gate.incomplete = true;
    return false;
  }
  if (!merged) {
    product.WarnOfExclusion();
    gate.incomplete = true;
    return false;
  }
  return !gate.IsSubsumed(product);
}

}  // namespace

int FaultTreeGate::GenerateCutSets() {
  if (!cutSetsDone) CutSetWalk().GenerateGate(*this);
  return maxOrder;
}

bool FaultTreeGate::AddCutSet(std::unique_ptr<CutSet> cutSet, bool skipCheck) {
  if (!skipCheck && IsSubsumed(*cutSet)) return false;
  const double key = cutSet->prime;
  const std::size_t before = cutSets.size();
  const auto entry = cutSets.try_emplace(cutSets.end(), key, std::move(cutSet));
  const bool isNew = cutSets.size() > before;
  if (isNew && primeIndex) primeIndex->Add(*entry->second);
  return isNew;
}

bool FaultTreeGate::IsSubsumed(const CutSet& candidate) {
  if (cutSets.empty()) return false;
  // The set of no events, which only diagrams give, is in no list and lies inside every other.
  if (cutSets.begin()->second->events.empty()) return true;
  if (candidate.events.empty()) {
    ClearCutSets(*this);
    return false;
  }
  std::vector<CutSet*> redundant;
  const bool subsumed = GetIndex().IsSubsumed(candidate, redundant);
  for (const CutSet* cutSet : redundant) {
    primeIndex->Remove(*cutSet);
    cutSets.erase(cutSets.find(cutSet->prime));
  }
  return subsumed;
}

void FaultTreeGate::RemoveFromIndex(const CutSet& cutSet) {
  if (primeIndex) primeIndex->Remove(cutSet);
}

// Most gates hand their cut sets on without a search in them.
CutSetIndex& FaultTreeGate::GetIndex() {
  if (!primeIndex) {
    primeIndex = std::make_unique<CutSetIndex>();
    for (const auto& [key, cutSet] : cutSets) primeIndex->Add(*cutSet);
  }
  return *primeIndex;
}

void FaultTreeGate::FillModuleEvent() {
  if (isModule && moduleEvent && GetChildCount() > 0) moduleEvent->TakeCutSets(*this);
}

void FaultTreeGate::ReportIgnoredInput(const FaultTreeNode& input) {
  const int inputId = input.GetId();
  if (std::find(ignoredInputs.begin(), ignoredInputs.end(), inputId) != ignoredInputs.end()) return;
  ignoredInputs.push_back(inputId);
  DiagnosticLog::Instance().AddWarning("Gate without cut sets is ignored under AND gate: " + name);
}

void FaultTreeGate::ResetOwnCutSets() {
  FaultTreeNode::ResetOwnCutSets();
  if (moduleEvent) moduleEvent->moduleCutSets.clear();
  primeIndex.reset();
}

int ProxyNode::GenerateCutSets() {
  if (cutSetsDone) return maxOrder;
  if (GetChildCount() == 0) {
    RequireChild();
    return maxOrder;
  }
  CutSetWalk().GenerateProxy(*this);
  return maxOrder;
}

void ProxyNode::RequireChild() const {
  if (GetChildCount() == 0 && type != NodeType::State) {
    throw VtnException("No component for: " + name);
  }
}

bool BasicEvent::IsLeftOut() const {
  const Config& config = Config::Instance();
  switch (type) {
    case NodeType::Circle:
      return config.removeCircleNodes;
    case NodeType::InputDeviation:
    case NodeType::OutputDeviation:
    case NodeType::ExternalDeviation:
      return config.removeHangingNodes;
    case NodeType::Complement:
      return static_cast<const ComplementEvent*>(this)->source->IsLeftOut();
    case NodeType::NullOp:
    case NodeType::Or:
    case NodeType::And:
    case NodeType::PAnd:
    case NodeType::SAnd:
    case NodeType::POr:
    case NodeType::Not:
    case NodeType::XOr:
    case NodeType::FailureMode:
    case NodeType::PCCF:
    case NodeType::ACCF:
    case NodeType::Module:
    case NodeType::External:
    case NodeType::Normal:
    case NodeType::State:
      return false;
  }
  return false;
}

int BasicEvent::GenerateCutSets() {
  if (cutSetsDone) return maxOrder;
  cutSetsDone = true;
  if (IsLeftOut()) return maxOrder;
  auto cutSet = std::make_unique<CutSet>();
  cutSet->AddEvent(*this);
  maxOrder = 1;
  AddCutSet(std::move(cutSet), true);
  return maxOrder;
}

int PCCFNode::GenerateCutSets() {
  if (cutSetsDone || !actual) return BasicEvent::GenerateCutSets();
  cutSetsDone = true;
  maxOrder = std::max(maxOrder, actual->GenerateCutSets());
  for (const auto& [key, cutSet] : actual->cutSets) {
    if (AddCutSet(cutSet->Clone(), false)) maxOrder = std::max(maxOrder, cutSet->GetOrder());
  }
  return maxOrder;
}

bool FaultTreeNode::AddCutSet(std::unique_ptr<CutSet> cutSet, bool /*skipCheck*/) {
  const double key = cutSet->prime;
  return cutSets.try_emplace(key, std::move(cutSet)).second;
}

void FaultTreeNode::CopyCutSetsTo(FaultTreeNode& target) const {
  for (const auto& [key, cutSet] : cutSets) target.AddCutSet(cutSet->Clone(), true);
}

void FaultTreeNode::ResetCutSets() {
  ForEachNode(*this, [](FaultTreeNode& node) { node.ResetOwnCutSets(); });
}

void FaultTreeNode::ResetOwnCutSets() {
  cutSets.clear();
  clone.reset();
  maxOrder = 0;
  cutSetsDone = false;
  truncated = false;
  incomplete = false;
}

}  // namespace FTS
