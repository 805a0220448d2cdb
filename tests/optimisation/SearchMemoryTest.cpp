// Thousands of designs are analysed in one process: nothing of them may stay behind.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "analysis/Prime.h"
#include "faulttree/BasicEvent.h"
#include "faulttree/FaultTreeNode.h"
#include "model/Component.h"
#include "model/Implementation.h"
#include "optimisation/SearchTest.h"
#include "support/CaseName.h"

namespace FTS {
namespace {

/// What grows when something is left behind.
struct Footprint {
  int nodes;                   ///< Alive.
  int found;                   ///< Known by their id.
  int primes;                  ///< The index of the next one, which the table has to reach.
  int ids;                     ///< That one evaluation takes.
  std::uint32_t eventNumbers;  ///< Likewise.
  std::size_t events;
  std::size_t components;
  std::size_t configurable;
  std::size_t implementations;  ///< Of the two components.

  bool operator==(const Footprint&) const = default;
  friend void PrintTo(const Footprint& print, std::ostream* stream) {
    *stream << print.nodes << " nodes, " << print.found << " ids, " << print.primes << " primes, "
            << print.ids << " new ids, " << print.eventNumbers << " new event numbers, "
            << print.events << " events, " << print.components << " components, "
            << print.configurable << " configurable, " << print.implementations
            << " implementations";
  }
};

// Designs that are tried: as many as a long search tries where the program is made to be fast.
#ifdef NDEBUG
constexpr int Generations = 1000;
#else
constexpr int Generations = 40;
#endif
constexpr int Children = 10;

struct EncodingCase {
  const char* name;
  std::int32_t type;
};

class SearchMemoryTest : public SearchTest, public ::testing::WithParamInterface<EncodingCase> {
 protected:
  SearchMemoryTest() {
    Config& config = Config::Instance();
    config.encodingType = GetParam().type;
    config.populationSize = Children;
    config.childPopulationSize = Children;
    config.openBrowser = false;
    const std::string inner = XmlDesignPart("Inner", {{"i0", 1.0, 0.1}, {"i1", 2.0, 0.05}});
    UseModel({{XmlObjective("Cost"), XmlObjective("Unavailability")},
              {XmlDesignPart("A", {{"a", 1.0, 0.2}, {"b", 2.0, 0.0, 0.0, {inner}}}),
               XmlDesignPart("B", {{"c", 3.0, 0.1}, {"d", 4.0, 0.05}})},
              {"Omission-A.out OR Omission-B.out", "Omission-A.out AND Omission-B.out"},
              3,
              2});
  }

  /// What there is behind one more evaluation of the design.
  Footprint MeasuredBehind(Individual& design) const {
    const auto [firstId, firstNumber] = Next();
    EXPECT_TRUE(design.Evaluate());
    const int primes = Prime::Instance().GetIndex();
    const auto [lastId, lastNumber] = Next();
    const NodeCounters& counters = NodeCounters::Instance();
    Footprint print{counters.nodesMade - counters.nodesDestroyed,
                    0,
                    primes,
                    lastId - firstId,
                    lastNumber - firstNumber,
                    model->basicEvents.size(),
                    model->components.size(),
                    model->configurableComponents.size(),
                    model->FindComponent("A")->implementations.size() +
                        model->FindComponent("B")->implementations.size()};
    // Complements have the negative of an id.
    for (int id = -lastId; id <= lastId; ++id) {
      if (FaultTreeNode::FindById(id)) ++print.found;
    }
    return print;
  }

  /// The id and event number that a further event gets.
  static std::pair<int, std::uint32_t> Next() {
    const BasicEvent probe("probe", nullptr, false);
    return {probe.GetId(), probe.eventNumber};
  }

  void Generation() const {
    ++search->generation;
    search->CreateOffspring();
    search->RankPopulation();
    search->AssignCrowding();
    search->TrimPopulation();
  }
};

TEST_P(SearchMemoryTest, StaysAsItIsFromDesignToDesign) {
  const CapturedStreams streams;
  // One design that is measured again and again numbers its events alike.
  Individual design(*search, GetParam().type, nullptr);
  ASSERT_TRUE(design.Evaluate());
  const Footprint before = MeasuredBehind(design);
  EXPECT_GT(before.ids, 0);
  for (int i = 0; i < 50; ++i) ASSERT_TRUE(design.Evaluate());
  EXPECT_EQ(MeasuredBehind(design), before);
  // Different designs take different numbers of primes, but leave nothing.
  int mostPrimes = 0;
  for (int i = 0; i < Generations; ++i) {
    Generation();
    mostPrimes = std::max(mostPrimes, Prime::Instance().GetIndex());
    if (i == Generations / 4) {
      EXPECT_EQ(MeasuredBehind(design), before);
    }
  }
  EXPECT_EQ(MeasuredBehind(design), before);
  EXPECT_LT(mostPrimes, before.primes + 50) << "the table of primes grows";
  EXPECT_FALSE(search->frontiers.empty());
  // Ids are given to candidates in turn, one for each evaluation at least.
  EXPECT_GE(Individual(*search, GetParam().type, nullptr).individualId, Generations * Children);
}

INSTANTIATE_TEST_SUITE_P(Encodings, SearchMemoryTest,
                         ::testing::Values(EncodingCase{"Fixed", EncodingType::Fixed},
                                           EncodingCase{"Tree", EncodingType::Tree}),
                         CaseName);

}  // namespace
}  // namespace FTS
