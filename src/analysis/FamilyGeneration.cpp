// Cut sets of a whole graph as families: one walk that scouts the events and gives them their place
// in the diagrams, one that combines the families of the children at each gate.
// Assumes an acyclic graph. Changes nothing below but the cut sets of events and modules, which are
// generated on the way, and of the gate itself. Each node is met once per walk; the walks remember
// the nodes in tables of their own, because modules are generated within them. Children in order:
// events that are near each other in the tree are near each other in the diagrams, which keeps
// these small.

#include "analysis/FamilyGeneration.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "analysis/CutSet.h"
#include "analysis/CutSetFamilies.h"
#include "analysis/ModuleEvent.h"
#include "app/Config.h"
#include "faulttree/BasicEvent.h"
#include "faulttree/FaultTreeGate.h"
#include "faulttree/ProxyNode.h"

namespace FTS {
namespace {

using Family = CutSetFamilies::Family;
using KeyedCutSet = std::pair<double, std::unique_ptr<CutSet>>;

/// The events that can be members of the cut sets, each with its variable.
class EventTable {
 public:
  /// Enters the event unless it is there. False when it can't be told from another one.
  bool Enter(BasicEvent& event);
  bool EnterMembers(const FaultTreeNode& node);
  /// Orders the events by prime, when all are in. False when primes don't tell them apart.
  bool Rank();

  int VariableOf(const BasicEvent& event) const { return variables.at(&event); }
  /// What each variable adds to the order of a cut set.
  std::vector<int> Weights() const;
  /// The cut set of these variables.
  std::unique_ptr<CutSet> MakeCutSet(const std::vector<int>& members);

 private:
  std::vector<BasicEvent*> events;  // By variable.
  std::unordered_map<const BasicEvent*, int> variables;
  std::array<const BasicEvent*, CutSet::SignatureBits> owners{};  // By signature bit.
  std::vector<BasicEvent*> ascending;                             // By prime.
  std::vector<int> ranks;                                         // In `ascending`, by variable.
  std::vector<int> sorted;
};

bool EventTable::Enter(BasicEvent& event) {
  const BasicEvent*& bitOwner = owners[event.eventNumber % CutSet::SignatureBits];
  if (bitOwner == &event) return true;
  if (bitOwner) return false;
  bitOwner = &event;
  variables.emplace(&event, static_cast<int>(events.size()));
  events.push_back(&event);
  return true;
}

bool EventTable::EnterMembers(const FaultTreeNode& node) {
  return std::all_of(node.cutSets.begin(), node.cutSets.end(), [this](const auto& entry) {
    const auto& members = entry.second->events;
    return !members.empty() && std::all_of(members.begin(), members.end(),
                                           [this](BasicEvent* event) { return Enter(*event); });
  });
}

bool EventTable::Rank() {
  constexpr double FirstPrime = 2.0;
  ascending = events;
  std::sort(ascending.begin(), ascending.end(),
            [](const BasicEvent* a, const BasicEvent* b) { return a->prime < b->prime; });
  const auto equal = std::adjacent_find(
      ascending.begin(), ascending.end(),
      [](const BasicEvent* a, const BasicEvent* b) { return a->prime == b->prime; });
  if (equal != ascending.end()) return false;
  if (!ascending.empty() && ascending.front()->prime < FirstPrime) return false;
  ranks.resize(events.size());
  for (std::size_t rank = 0; rank < ascending.size(); ++rank) {
    ranks[static_cast<std::size_t>(VariableOf(*ascending[rank]))] = static_cast<int>(rank);
  }
  return true;
}

std::vector<int> EventTable::Weights() const {
  std::vector<int> weights;
  for (BasicEvent* event : events) {
    CutSet alone;
    alone.AddEvent(*event);
    weights.push_back(alone.GetOrder());
  }
  return weights;
}

std::unique_ptr<CutSet> EventTable::MakeCutSet(const std::vector<int>& members) {
  sorted.clear();
  for (const int variable : members) sorted.push_back(ranks[static_cast<std::size_t>(variable)]);
  std::sort(sorted.begin(), sorted.end());
  auto cutSet = std::make_unique<CutSet>();
  cutSet->events.reserve(sorted.size());
  for (const int rank : sorted) cutSet->AddEvent(*ascending[static_cast<std::size_t>(rank)]);
  return cutSet;
}

class FamilyWalk {
 public:
  explicit FamilyWalk(FaultTreeGate& initTop) : top(initTop) {}

  /// Finds the events. False when the graph is not fit for families.
  bool Scout() { return ScoutBelow(top) && table.Rank(); }
  std::size_t NodesMet() const { return scouted.size(); }
  /// Gives the gate its cut sets. False, and nothing has changed, when their keys overflow.
  bool Generate();

 private:
  struct Outcome {
    Family family = CutSetFamilies::None;
    bool truncated = false;
  };
  struct IgnoredInput {
    FaultTreeGate* gate;
    const FaultTreeNode* input;
  };

  bool ScoutBelow(FaultTreeNode& node);
  bool ScoutInput(FaultTreeNode& node);
  Outcome FamilyOf(FaultTreeNode& node);
  Outcome Combine(FaultTreeGate& gate);
  Outcome CombineProxy(FaultTreeNode& proxy);
  Outcome ReadCutSets(const FaultTreeNode& node);
  void Multiply(Outcome& product, const Outcome& factor, bool module);
  bool MakeCutSets(Family family, std::vector<KeyedCutSet>& made);

  FaultTreeGate& top;
  EventTable table;
  std::unordered_set<const FaultTreeNode*> scouted;
  std::unordered_map<const FaultTreeNode*, Outcome> outcomes;
  std::unique_ptr<CutSetFamilies> families;
  std::vector<IgnoredInput> ignored;
};

bool FamilyWalk::ScoutBelow(FaultTreeNode& node) {
  if (!scouted.insert(&node).second) return true;
  if (node.IsEvent()) node.GenerateCutSets();
  if (node.cutSetsDone) return table.EnterMembers(node);
  for (int i = 0; i < node.GetChildCount(); ++i) {
    if (!ScoutInput(*node.GetChild(i))) return false;
  }
  return true;
}

bool FamilyWalk::ScoutInput(FaultTreeNode& node) {
  if (!node.isModule) return ScoutBelow(node);
  node.GenerateCutSets();
  return !node.moduleEvent || table.Enter(*node.moduleEvent);
}

bool FamilyWalk::Generate() {
  const int limit = Config::Instance().maxCutSetSize;
  families = std::make_unique<CutSetFamilies>(table.Weights(),
                                              limit == 0 ? CutSetFamilies::NoLimit : limit);
  const Outcome outcome = Combine(top);
  std::vector<KeyedCutSet> made;
  if (!MakeCutSets(outcome.family, made)) return false;
  for (auto& [key, cutSet] : made) {
    top.cutSets.emplace_hint(top.cutSets.end(), key, std::move(cutSet));
  }
  top.truncated = outcome.truncated;
  top.maxOrder = families->HighestOrder(outcome.family);
  for (const IgnoredInput& pair : ignored) pair.gate->ReportIgnoredInput(*pair.input);
  return true;
}

FamilyWalk::Outcome FamilyWalk::FamilyOf(FaultTreeNode& node) {
  const auto known = outcomes.find(&node);
  if (known != outcomes.end()) return known->second;
  Outcome outcome;
  if (node.cutSetsDone) {
    outcome = ReadCutSets(node);
  } else if (node.IsGate()) {
    outcome = Combine(static_cast<FaultTreeGate&>(node));
  } else {
    outcome = CombineProxy(node);
  }
  outcomes.emplace(&node, outcome);
  return outcome;
}

FamilyWalk::Outcome FamilyWalk::Combine(FaultTreeGate& gate) {
  const bool isAnd = gate.type == NodeType::And;
  const bool isOr = gate.type == NodeType::Or;
  Outcome result;
  std::vector<Family> parts;  // Of an OR gate, whose union is made when all are known.
  for (const FaultTreeNode::Pointer& child : gate.Children()) {
    if (child->isModule && !child->moduleEvent) continue;
    const Outcome input = child->isModule
                              ? Outcome{families->SetOf({table.VariableOf(*child->moduleEvent)})}
                              : FamilyOf(*child);
    if (input.family == CutSetFamilies::None) {
      if (!input.truncated) {
        if (isAnd) ignored.push_back({&gate, child.get()});
        continue;
      }
      result.truncated = true;
      if (isAnd) return {CutSetFamilies::None, true};
    } else if (isOr) {
      parts.push_back(input.family);
    } else if (result.family == CutSetFamilies::None) {
      result.family = input.family;
    } else if (isAnd) {
      Multiply(result, input, child->isModule);
      if (result.family == CutSetFamilies::None) return result;
    }
  }
  if (isOr) result.family = families->Union(std::move(parts));
  return result;
}

void FamilyWalk::Multiply(Outcome& product, const Outcome& factor, bool module) {
  // A product with a module that fails the limit leaves no mark: its true size is not known here.
  if (!module && families->ProductExceedsLimit(product.family, factor.family)) {
    product.truncated = true;
  }
  product.family = families->Product(product.family, factor.family);
}

FamilyWalk::Outcome FamilyWalk::CombineProxy(FaultTreeNode& proxy) {
  if (proxy.GetChildCount() == 0) proxy.GenerateCutSets();  // Tells what is missing, and throws.
  FaultTreeNode& child = *proxy.GetChild(0);
  if (!child.isModule) return FamilyOf(child);
  if (!child.moduleEvent) return {};
  return {families->SetOf({table.VariableOf(*child.moduleEvent)})};
}

FamilyWalk::Outcome FamilyWalk::ReadCutSets(const FaultTreeNode& node) {
  std::vector<Family> parts;
  for (const auto& [key, cutSet] : node.cutSets) {
    std::vector<int> members;
    for (const BasicEvent* event : cutSet->events) members.push_back(table.VariableOf(*event));
    std::sort(members.begin(), members.end());
    parts.push_back(families->SetOf(members));
  }
  return {families->Union(std::move(parts)), node.truncated};
}

bool FamilyWalk::MakeCutSets(Family family, std::vector<KeyedCutSet>& made) {
  bool inRange = true;
  families->ForEachSet(family, [&](const std::vector<int>& members) {
    auto cutSet = table.MakeCutSet(members);
    inRange = std::isfinite(cutSet->prime);
    const double key = cutSet->prime;
    made.push_back({key, std::move(cutSet)});
    return inRange;
  });
  std::stable_sort(made.begin(), made.end(),
                   [](const KeyedCutSet& a, const KeyedCutSet& b) { return a.first < b.first; });
  return inRange;
}

}  // namespace

FamilyAttempt GenerateThroughFamilies(FaultTreeGate& gate) {
  FamilyAttempt attempt;
  if (Config::Instance().mutualExclusion) return attempt;
  FamilyWalk walk(gate);
  attempt.done = walk.Scout() && walk.Generate();
  attempt.nodesMet = walk.NodesMet();
  return attempt;
}

}  // namespace FTS
