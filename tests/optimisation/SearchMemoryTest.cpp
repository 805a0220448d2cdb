// Thousands of designs are analysed in one process: nothing of them may stay behind.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "analysis/Prime.h"
#include "faulttree/FaultTreeNode.h"
#include "model/Component.h"
#include "model/Implementation.h"
#include "optimisation/SearchTest.h"
#include "support/CaseName.h"

namespace FTS {
namespace {

/// What grows when something is left behind.
struct Footprint {
  int nodes;   ///< Alive.
  int found;   ///< Known by their id.
  int primes;  ///< Handed out.
  std::size_t events;
  std::size_t components;
  std::size_t configurable;
  std::size_t implementations;  ///< Of the two components.

  bool operator==(const Footprint&) const = default;
  friend void PrintTo(const Footprint& print, std::ostream* stream) {
    *stream << print.nodes << " nodes, " << print.found << " ids, " << print.primes << " primes, "
            << print.events << " events, " << print.components << " components, "
            << print.configurable << " configurable, " << print.implementations
            << " implementations";
  }
};

struct EncodingCase {
  const char* name;
  std::int32_t type;
};

class SearchMemoryTest : public SearchTest, public ::testing::WithParamInterface<EncodingCase> {
 protected:
  SearchMemoryTest() {
    Config& config = Config::Instance();
    config.encodingType = GetParam().type;
    config.populationSize = 10;
    config.childPopulationSize = 10;
    config.openBrowser = false;
    const std::string inner = XmlDesignPart("Inner", {{"i0", 1.0, 0.1}, {"i1", 2.0, 0.05}});
    UseModel({{XmlObjective("Cost"), XmlObjective("Unavailability")},
              {XmlDesignPart("A", {{"a", 1.0, 0.2}, {"b", 2.0, 0.0, 0.0, {inner}}}),
               XmlDesignPart("B", {{"c", 3.0, 0.1}, {"d", 4.0, 0.05}})},
              {"Omission-A.out OR Omission-B.out", "Omission-A.out AND Omission-B.out"},
              3,
              2});
  }

  Footprint Measured() const {
    const NodeCounters& counters = NodeCounters::Instance();
    Footprint print{counters.nodesMade - counters.nodesDestroyed,
                    0,
                    Prime::Instance().GetIndex(),
                    model->basicEvents.size(),
                    model->components.size(),
                    model->configurableComponents.size(),
                    model->FindComponent("A")->implementations.size() +
                        model->FindComponent("B")->implementations.size()};
    // Each node that was ever made took an id, complements the negative of one.
    for (int id = -counters.nodesMade; id <= counters.nodesMade; ++id) {
      if (FaultTreeNode::FindById(id)) ++print.found;
    }
    return print;
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
  const Footprint before = Measured();
  for (int i = 0; i < 50; ++i) ASSERT_TRUE(design.Evaluate());
  EXPECT_EQ(Measured(), before);
  // Different designs take different numbers of primes, but leave nothing.
  for (int i = 0; i < 10; ++i) Generation();
  ASSERT_TRUE(design.Evaluate());
  EXPECT_EQ(Measured(), before);
  for (int i = 0; i < 20; ++i) Generation();
  ASSERT_TRUE(design.Evaluate());
  EXPECT_EQ(Measured(), before);
  EXPECT_FALSE(search->frontiers.empty());
}

INSTANTIATE_TEST_SUITE_P(Encodings, SearchMemoryTest,
                         ::testing::Values(EncodingCase{"Fixed", EncodingType::Fixed},
                                           EncodingCase{"Tree", EncodingType::Tree}),
                         CaseName);

}  // namespace
}  // namespace FTS
