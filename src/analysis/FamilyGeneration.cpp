// Cut sets of a whole graph as families: one walk that scouts the events and gives them their place
// in the diagrams, one that combines the families of the children at each gate.
// Assumes an acyclic graph. Changes nothing below but the cut sets of events and modules, which are
// generated in between, and of the gate itself. Each node is met once per walk: the first uses
// `OnceMarks`, the second remembers each node's family. Children in order: events that are near
// each other in the tree are near each other in the diagrams, which keeps these small.

#include "analysis/FamilyGeneration.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <unordered_map>
#include <utility>
#include <vector>

#include "analysis/CutSet.h"
#include "analysis/CutSetFamilies.h"
#include "analysis/ModuleEvent.h"
#include "app/Config.h"
#include "faulttree/BasicEvent.h"
#include "faulttree/FaultTreeGate.h"
#include "faulttree/Marks.h"
#include "faulttree/ProxyNode.h"

namespace FTS {
namespace {

using Family = CutSetFamilies::Family;

/// The events that can be members of the cut sets, each with its variable.
class EventTable {
 public:
  /// Enters the event unless it is there. False when it can't be told from another one.
  bool Enter(BasicEvent& event);
  bool EnterMembers(const FaultTreeNode& node);
  /// Orders the events by prime, when all are in. False when primes don't tell them apart.
  bool Rank();

  int VariableOf(const BasicEvent& event) const { return variables[BitOf(event)]; }
  /// What each variable adds to the order of a cut set.
  std::vector<int> Weights() const;
  /// The place of the variable's event among all, by prime; and the event of that place.
  int RankOf(int variable) const { return ranks[static_cast<std::size_t>(variable)]; }
  BasicEvent& EventOfRank(int rank) const { return *ascending[static_cast<std::size_t>(rank)]; }

 private:
  static std::size_t BitOf(const BasicEvent& event) {
    return event.eventNumber % CutSet::SignatureBits;
  }

  std::array<const BasicEvent*, CutSet::SignatureBits> owners{};  // By signature bit.
  std::array<int, CutSet::SignatureBits> variables{};             // By signature bit.
  std::vector<BasicEvent*> events;                                // By variable.
  std::vector<BasicEvent*> ascending;                             // By prime.
  std::vector<int> ranks;                                         // In `ascending`, by variable.
};

/// Cut sets in the least space, until all are known and can be made in the order of their keys:
/// whatever walks over them later then meets them in memory one after another.
class CutSetDraft {
 public:
  explicit CutSetDraft(const EventTable& initTable) : table(initTable) {}

  /// Adds the cut set of these variables. False when its key overflows.
  bool Add(const std::vector<int>& variables);
  /// Makes the cut sets. Of several with one key the first stands, as in any gate.
  void MakeCutSets(FaultTreeGate& gate);

 private:
  struct Entry {
    double key;
    std::size_t start;  // Of the members in `members`.
    std::size_t end;
  };

  using Rank = std::uint16_t;
  static_assert(CutSet::SignatureBits <= 1U << 16U, "Each event has a signature bit of its own.");

  const EventTable& table;
  std::vector<Rank> members;  // Ranks of events, ascending in each cut set.
  std::vector<Entry> entries;
};

bool EventTable::Enter(BasicEvent& event) {
  const std::size_t bit = BitOf(event);
  if (owners[bit] == &event) return true;
  if (owners[bit]) return false;
  owners[bit] = &event;
  variables[bit] = static_cast<int>(events.size());
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

bool CutSetDraft::Add(const std::vector<int>& variables) {
  const std::size_t start = members.size();
  for (const int variable : variables) members.push_back(static_cast<Rank>(table.RankOf(variable)));
  std::sort(members.begin() + static_cast<std::ptrdiff_t>(start), members.end());
  double key = 1.0;
  for (std::size_t i = start; i < members.size(); ++i) key *= table.EventOfRank(members[i]).prime;
  entries.push_back({key, start, members.size()});
  return std::isfinite(key);
}

void CutSetDraft::MakeCutSets(FaultTreeGate& gate) {
  std::stable_sort(entries.begin(), entries.end(),
                   [](const Entry& a, const Entry& b) { return a.key < b.key; });
  for (const Entry& entry : entries) {
    const auto place = gate.cutSets.try_emplace(gate.cutSets.end(), entry.key);
    if (place->second) continue;
    place->second = std::make_unique<CutSet>();
    CutSet& cutSet = *place->second;
    cutSet.events.reserve(entry.end - entry.start);
    for (std::size_t i = entry.start; i < entry.end; ++i) {
      cutSet.AddEvent(table.EventOfRank(members[i]));
    }
  }
}

class FamilyWalk {
 public:
  explicit FamilyWalk(FaultTreeGate& initTop) : top(initTop) {}

  /// Finds the events. False when the graph is not fit for families.
  bool Scout() { return ScoutBelow(top) && table.Rank(); }
  std::size_t NodesMet() const { return nodesMet; }
  /// Gives the gate its cut sets. False, and nothing has changed, when their keys overflow.
  bool Generate();

 private:
  struct Outcome {
    Family family = CutSetFamilies::None;
    bool truncated = false;
    bool incomplete = false;
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

  FaultTreeGate& top;
  EventTable table;
  OnceMarks scouted;
  std::size_t nodesMet = 0;
  std::vector<FaultTreeNode*> modules;
  std::unordered_map<const FaultTreeNode*, Outcome> outcomes;
  std::unique_ptr<CutSetFamilies> families;
  std::vector<IgnoredInput> ignored;
};

bool FamilyWalk::ScoutBelow(FaultTreeNode& node) {
  if (!scouted.Enter(node)) return true;
  ++nodesMet;
  if (node.IsEvent()) node.GenerateCutSets();
  if (node.cutSetsDone) return table.EnterMembers(node);
  for (int i = 0; i < node.GetChildCount(); ++i) {
    if (!ScoutInput(*node.GetChild(i))) return false;
  }
  return true;
}

bool FamilyWalk::ScoutInput(FaultTreeNode& node) {
  if (!node.isModule) return ScoutBelow(node);
  modules.push_back(&node);
  return !node.moduleEvent || table.Enter(*node.moduleEvent);
}

bool FamilyWalk::Generate() {
  for (FaultTreeNode* module : modules) module->GenerateCutSets();
  const int limit = Config::Instance().maxCutSetSize;
  families = std::make_unique<CutSetFamilies>(table.Weights(),
                                              limit == 0 ? CutSetFamilies::NoLimit : limit);
  const Outcome outcome = Combine(top);
  CutSetDraft draft(table);
  bool inRange = true;
  families->ForEachSet(outcome.family, [&](const std::vector<int>& members) {
    inRange = draft.Add(members);
    return inRange;
  });
  if (!inRange) return false;
  draft.MakeCutSets(top);
  top.truncated = outcome.truncated;
  top.incomplete = outcome.incomplete;
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
      if (!input.incomplete) {
        if (isAnd && child->type != NodeType::State) ignored.push_back({&gate, child.get()});
        continue;
      }
      result.incomplete = true;
      result.truncated = result.truncated || input.truncated;
      if (isAnd) return {CutSetFamilies::None, result.truncated, true};
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
  if (families->ProductExceedsLimit(product.family, factor.family)) {
    product.incomplete = true;
    // With a module it is no truncation: the true size of the product is not known here.
    if (!module) product.truncated = true;
  }
  product.family = families->Product(product.family, factor.family);
}

FamilyWalk::Outcome FamilyWalk::CombineProxy(FaultTreeNode& proxy) {
  if (proxy.GetChildCount() == 0) {
    proxy.GenerateCutSets();  // Tells what is missing, and throws.
    return {};
  }
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
  return {families->Union(std::move(parts)), node.truncated, node.incomplete};
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
