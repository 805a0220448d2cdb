// Times the search for modules, their expansion, and decision diagrams as they grow.

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "analysis/BDD.h"
#include "analysis/CutSet.h"
#include "analysis/FaultTree.h"
#include "analysis/Prime.h"
#include "app/Config.h"
#include "faulttree/BasicEvent.h"
#include "faulttree/FaultTreeGate.h"

namespace FTS {
namespace {

using Node = FaultTreeNode::Pointer;

Node Event(const std::string& name) {
  auto event = std::make_shared<BasicEvent>(name, nullptr, true);
  event->unavailability = 1e-3;
  return event;
}

std::shared_ptr<FaultTreeGate> Gate(NodeType type, const std::vector<Node>& inputs) {
  const auto gate = MakeGate(type, "gate", nullptr);
  for (const Node& input : inputs) gate->AddChild(input);
  return gate;
}

/// A binary tree of AND and OR gates over events that every two neighbours share, so that there are
/// modules and gates that are none.
Node GateTree(std::int64_t gates) {
  std::vector<Node> level;
  const std::int64_t leaves = gates / 2;
  Node shared;
  for (std::int64_t i = 0; i < leaves; ++i) {
    if (i % 4 == 0) shared = Event("s" + std::to_string(i));
    level.push_back(Gate(NodeType::And, {shared, Event("e" + std::to_string(i))}));
  }
  bool either = true;
  while (level.size() > 1) {
    std::vector<Node> above;
    for (std::size_t i = 0; i + 1 < level.size(); i += 2) {
      above.push_back(Gate(either ? NodeType::Or : NodeType::And, {level[i], level[i + 1]}));
    }
    if (level.size() % 2 != 0) above.push_back(level.back());
    level = std::move(above);
    either = !either;
  }
  return level.front();
}

Node Voters(std::int64_t count) {
  Prime::Release();  // Products of large primes that lie close together would be rounded to one
                     // key.
  std::vector<Node> voters;
  for (std::int64_t i = 0; i < count; ++i) {
    const std::string name = "v" + std::to_string(i);
    const Node a = Event(name + "a");
    const Node b = Event(name + "b");
    const Node c = Event(name + "c");
    voters.push_back(Gate(NodeType::Or, {Gate(NodeType::And, {a, b}), Gate(NodeType::And, {a, c}),
                                         Gate(NodeType::And, {b, c})}));
  }
  return Gate(NodeType::And, voters);
}

/// All pairs out of the events: each pair an AND gate.
Node Pairs(std::int64_t count) {
  std::vector<Node> events;
  std::vector<Node> pairs;
  for (std::int64_t i = 0; i < count; ++i) {
    events.push_back(Event("e" + std::to_string(i)));
    for (std::size_t j = 0; j + 1 < events.size(); ++j) {
      pairs.push_back(Gate(NodeType::And, {events[j], events.back()}));
    }
  }
  return Gate(NodeType::Or, pairs);
}

class Silent {
 public:
  Silent() { Config::Instance().runSilent = true; }
  ~Silent() { Config::Instance().runSilent = false; }
  Silent(const Silent&) = delete;
  Silent& operator=(const Silent&) = delete;
};

void FindModules(benchmark::State& state) {
  const Node root = GateTree(state.range(0));
  std::vector<std::shared_ptr<FaultTreeGate>> modules;
  for ([[maybe_unused]] auto round : state) {
    modules.clear();
    root->ResetModules();
    root->AssignVisitNumbersAlt(1);
    root->FindModulesDeep(modules);
    state.counters["modules"] = static_cast<double>(modules.size());
  }
  root->ResetModules();
}
BENCHMARK(FindModules)->Arg(5000)->Arg(10000)->Arg(20000)->Unit(benchmark::kMillisecond);

void ModularisedTree(benchmark::State& state) {
  const Silent silent;
  Config::Instance().maxCutSetSize = 4;
  const Node root = GateTree(state.range(0));
  for ([[maybe_unused]] auto round : state) {
    FaultTree tree(root);
    tree.Modularise(false);
    root->GenerateCutSets();
    tree.CollectCutSets();
    state.counters["cutSets"] = static_cast<double>(tree.cutSets.size());
  }
  Config::Instance().maxCutSetSize = 0;
}
BENCHMARK(ModularisedTree)->Arg(5000)->Arg(10000)->Arg(20000)->Unit(benchmark::kMillisecond);

void IndependentVoters(benchmark::State& state) {
  const Silent silent;
  const Node root = Voters(state.range(0));
  for ([[maybe_unused]] auto round : state) {
    FaultTree tree(root);
    tree.Modularise(false);
    root->GenerateCutSets();
    tree.CollectCutSets();
    tree.EsaryProschan();
    tree.ComputeFrequency();
    benchmark::DoNotOptimize(tree.unavailability);
    state.counters["cutSets"] = static_cast<double>(tree.cutSets.size());
  }
}
BENCHMARK(IndependentVoters)->Arg(8)->Arg(10)->Arg(12)->Unit(benchmark::kMillisecond);

void Diagram(benchmark::State& state) {
  const Node root = Pairs(state.range(0));
  for ([[maybe_unused]] auto round : state) {
    root->ResetCutSets();
    CollectBDDCutSets(*root, [&](const BDDParent& diagram) {
      state.counters["nodes"] = static_cast<double>(diagram.CountNodes());
    });
  }
}
BENCHMARK(Diagram)->DenseRange(4, 16, 2)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace FTS
