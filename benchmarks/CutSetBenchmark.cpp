// Times the way from a tree to its minimal cut sets and figures, on trees of three sizes.

#include <benchmark/benchmark.h>

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "analysis/CutSet.h"
#include "analysis/CutSetList.h"
#include "analysis/FaultTree.h"
#include "app/Config.h"
#include "faulttree/BasicEvent.h"
#include "faulttree/FaultTreeGate.h"

namespace FTS {
namespace {

using Node = FaultTreeNode::Pointer;

Node Event(const std::string& name) {
  auto event = std::make_shared<BasicEvent>(name, nullptr, true);
  event->unavailability = 1e-3;
  event->frequency = 1e-4;
  return event;
}

Node Gate(NodeType type, const std::vector<Node>& inputs) {
  const auto gate = MakeGate(type, "gate", nullptr);
  for (const Node& input : inputs) gate->AddChild(input);
  return gate;
}

Node SumOfEvents(const std::string& name, std::int64_t count) {
  std::vector<Node> events;
  for (std::int64_t i = 0; i < count; ++i) events.push_back(Event(name + std::to_string(i)));
  return Gate(NodeType::Or, events);
}

/// Two redundant chains of components, each of which fails by an event of its own.
Node TwoChains(std::int64_t components) {
  return Gate(NodeType::And, {SumOfEvents("a", components), SumOfEvents("b", components)});
}

/// Each pair of the events as an AND gate of its own.
Node PairsWrittenOut(std::int64_t count) {
  std::vector<Node> events;
  std::vector<Node> pairs;
  for (std::int64_t i = 0; i < count; ++i) {
    events.push_back(Event("e" + std::to_string(i)));
    for (std::int64_t j = 0; j < i; ++j) {
      pairs.push_back(Gate(NodeType::And, {events[static_cast<std::size_t>(j)], events.back()}));
    }
  }
  return Gate(NodeType::Or, pairs);
}

/// Layers of three voters, two of three each, that all see the three of the layer below.
Node SharedVoters(std::int64_t layers) {
  std::vector<Node> below = {Event("s1"), Event("s2"), Event("s3")};
  const auto vote = [&below](const Node& failure) {
    std::vector<Node> inputs = {Gate(NodeType::And, {below[0], below[1]}),
                                Gate(NodeType::And, {below[0], below[2]}),
                                Gate(NodeType::And, {below[1], below[2]})};
    if (failure) inputs.push_back(failure);
    return Gate(NodeType::Or, inputs);
  };
  for (std::int64_t layer = 0; layer < layers; ++layer) {
    std::vector<Node> voters;
    for (int i = 0; i < 3; ++i) {
      voters.push_back(vote(Event("v" + std::to_string(layer) + "_" + std::to_string(i))));
    }
    below = std::move(voters);
  }
  return vote(nullptr);
}

void Analyse(benchmark::State& state, const Node& root) {
  for ([[maybe_unused]] auto round : state) {
    FaultTree tree(root);
    tree.GetTopGate()->GenerateCutSets();
    tree.CollectCutSets();
    tree.EsaryProschan();
    tree.ComputeFrequency();
    benchmark::DoNotOptimize(tree.unavailability + tree.frequency);
    state.counters["cutSets"] = static_cast<double>(tree.cutSets.size());
  }
}

// By families of cut sets.

void ProductOfSums(benchmark::State& state) { Analyse(state, TwoChains(state.range(0))); }
BENCHMARK(ProductOfSums)->Arg(32)->Arg(100)->Arg(317)->Unit(benchmark::kMillisecond);

void SumOfProducts(benchmark::State& state) { Analyse(state, PairsWrittenOut(state.range(0))); }
BENCHMARK(SumOfProducts)->Arg(46)->Arg(142)->Arg(448)->Unit(benchmark::kMillisecond);

void SharedGates(benchmark::State& state) { Analyse(state, SharedVoters(state.range(0))); }
BENCHMARK(SharedGates)->Arg(4)->Arg(20)->Arg(50)->Unit(benchmark::kMillisecond);

// More events than a signature tells apart: cut sets one by one.

void SumOfEventsOneByOne(benchmark::State& state) {
  Analyse(state, SumOfEvents("e", state.range(0)));
}
BENCHMARK(SumOfEventsOneByOne)->Arg(3000)->Arg(20000)->Arg(100000)->Unit(benchmark::kMillisecond);

// Mutual exclusion: products one by one.

void ProductOfSumsOneByOne(benchmark::State& state) {
  Config::Instance().mutualExclusion = true;
  Analyse(state, TwoChains(state.range(0)));
  Config::Instance().mutualExclusion = false;
}
BENCHMARK(ProductOfSumsOneByOne)->Arg(32)->Arg(100)->Arg(317)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace FTS
