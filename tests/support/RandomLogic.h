#pragma once

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "analysis/CutSet.h"
#include "analysis/FaultTree.h"
#include "faulttree/BasicEvent.h"
#include "faulttree/FaultTreeGate.h"
#include "faulttree/ProxyNode.h"
#include "support/Dice.h"
#include "support/TreeBuilder.h"

namespace FTS {

/// All assignments of up to twelve events at once: bit r tells whether something holds in row r, in
/// which the event of index i holds where bit i of r is set.
using TruthTable = std::bitset<4096>;

/// A set of events by their indices, one bit each; a coherent cut set.
using EventMask = std::uint32_t;

struct RandomLogicOptions {
  int leastEvents = 3;
  int mostEvents = 12;
  int normalEvents = 0;  ///< The first ones are normal events.
  int mostGates = 9;
  bool negations = false;
};

/// A random acyclic graph of AND and OR gates, parentheses and, if wanted, negations, and what it
/// means: the truth table is built beside the nodes and shares nothing with the analysis. Some
/// seeds give trees without sharing, which are all modules, and some give heavy sharing. Keeps all
/// events alive.
class RandomLogic {
 public:
  using Pointer = FaultTreeNode::Pointer;

  /// A node and what it means.
  struct Part {
    Pointer node;
    TruthTable meaning;
  };

  RandomLogic(std::uint64_t initSeed, const RandomLogicOptions& options, Model* initModel)
      : seed(initSeed), dice(initSeed), model(initModel) {
    MakeEvents(dice.Between(options.leastEvents, options.mostEvents), options.normalEvents);
    sharing = dice.Pick(std::vector<int>{0, 10, 25, 60});
    const int gateCount = dice.Between(1, options.mostGates);
    for (int i = 0; i < gateCount; ++i) AddGate(i, dice.Between(2, 4), options.negations);
    AddGate(gateCount, static_cast<int>(unused.size()), options.negations);
    text = ShapeOf(Root());
  }

  const Pointer& Root() const { return parts.back().node; }
  const TruthTable& Meaning() const { return parts.back().meaning; }
  /// Events, then gates, inputs before those that take them in.
  const std::vector<Part>& Parts() const { return parts; }
  const std::vector<std::shared_ptr<BasicEvent>>& Events() const { return events; }

  /// Seed and tree, as they came: the analysis rewrites negations in place.
  std::string Describe() const { return "seed " + std::to_string(seed) + ": " + text; }

  /// The rows in which all members hold.
  TruthTable MeaningOf(const CutSet& cutSet) const {
    TruthTable table;
    table.set();
    for (const BasicEvent* const member : cutSet.events) {
      if (member->type == NodeType::Complement) {
        table &= ~Variable(indices.at(static_cast<const ComplementEvent*>(member)->source));
      } else {
        table &= Variable(indices.at(member));
      }
    }
    return table;
  }

  /// The rows in which one cut set at least holds.
  TruthTable MeaningOf(const FaultTree::CutSetMap& cutSets) const {
    TruthTable table;
    for (const auto& [key, cutSet] : cutSets) table |= MeaningOf(*cutSet);
    return table;
  }

  /// The members of a cut set without complements. A foreign member throws std::out_of_range.
  EventMask MaskOf(const CutSet& cutSet) const {
    EventMask mask = 0;
    for (const BasicEvent* const member : cutSet.events) mask |= 1U << indices.at(member);
    return mask;
  }

  /// The smallest sets of events that make a coherent graph hold, by its table.
  std::set<EventMask> MinimalSets() const {
    std::set<EventMask> minimal;
    for (EventMask row = 0; row < 1U << events.size(); ++row) {
      if (Meaning()[row] && !HoldsWithOneLess(row)) minimal.insert(row);
    }
    return minimal;
  }

 private:
  static TruthTable Variable(std::size_t index) {
    TruthTable table;
    for (std::size_t row = 0; row < table.size(); ++row) table[row] = ((row >> index) & 1U) != 0;
    return table;
  }

  bool HoldsWithOneLess(EventMask row) const {
    for (std::size_t i = 0; i < events.size(); ++i) {
      if (((row >> i) & 1U) != 0 && Meaning()[row ^ (1U << i)]) return true;
    }
    return false;
  }

  void MakeEvents(int count, int normalCount) {
    for (int i = 0; i < count; ++i) {
      const std::string name = "E" + std::to_string(i);
      std::shared_ptr<BasicEvent> event;
      if (i < normalCount) {
        event = std::make_shared<NormalEvent>(name, model, true);
      } else {
        event = std::make_shared<BasicEvent>(name, model, true);
      }
      indices[event.get()] = static_cast<std::size_t>(i);
      unused.push_back(parts.size());
      parts.push_back({event, Variable(static_cast<std::size_t>(i))});
      events.push_back(std::move(event));
    }
    // Primes in another order than that of the names.
    for (int i = 0; i < count; ++i) {
      BasicEvent& one = *dice.Pick(events);
      BasicEvent& other = *dice.Pick(events);
      std::swap(one.prime, other.prime);
    }
  }

  /// A part that nothing has taken in yet, or, as often as the graph shares, any.
  std::size_t PickInput() {
    if (unused.empty() || dice.Chance(sharing)) return PickAny();
    const auto at = static_cast<std::size_t>(dice.Roll(static_cast<int>(unused.size())));
    const std::size_t index = unused[at];
    unused.erase(unused.begin() + static_cast<std::ptrdiff_t>(at));
    return index;
  }

  std::size_t PickAny() {
    return static_cast<std::size_t>(dice.Roll(static_cast<int>(parts.size())));
  }

  void AddGate(int number, int inputs, bool negations) {
    const bool isAnd = dice.Chance(50);
    const auto gate =
        MakeGate(isAnd ? NodeType::And : NodeType::Or, "G" + std::to_string(number), model);
    TruthTable meaning;
    if (isAnd) meaning.set();
    for (int i = 0; i < inputs || gate->GetChildCount() < 1; ++i) {
      Part input = parts[PickInput()];
      if (gate->HasChild(*input.node) && !dice.Chance(10)) continue;
      if (dice.Chance(8)) input.node = Wrapped(NodeType::NullOp, input.node);
      if (negations && dice.Chance(25)) {
        input = {Wrapped(NodeType::Not, input.node), ~input.meaning};
      }
      gate->AddChild(input.node);
      meaning = isAnd ? meaning & input.meaning : meaning | input.meaning;
    }
    unused.push_back(parts.size());
    parts.push_back({gate, meaning});
  }

  Pointer Wrapped(NodeType type, const Pointer& node) const {
    Pointer wrapper;
    if (type == NodeType::Not) {
      wrapper = std::make_shared<NotGate>("", model);
    } else {
      wrapper = std::make_shared<ProxyNode>(type, "", model);
    }
    wrapper->AddChild(node);
    return wrapper;
  }

  std::uint64_t seed;
  Dice dice;
  Model* model;
  int sharing = 0;
  std::vector<std::shared_ptr<BasicEvent>> events;
  std::map<const BasicEvent*, std::size_t> indices;  // Looked up only.
  std::vector<Part> parts;
  std::vector<std::size_t> unused;  // Indices of parts.
  std::string text;
};

}  // namespace FTS
