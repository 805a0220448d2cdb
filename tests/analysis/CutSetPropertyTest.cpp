#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "analysis/CutSet.h"
#include "analysis/FaultTree.h"
#include "app/Config.h"
#include "faulttree/FaultTreeGate.h"
#include "support/CaseName.h"
#include "support/Dice.h"
#include "support/FailureOracle.h"
#include "support/ProcessStateTest.h"
#include "support/TreeBuilder.h"

namespace FTS {
namespace {

/// A random coherent graph as nodes and as a formula for the truth table. Later gates share earlier
/// ones; a few gates have no inputs.
class RandomTree {
 public:
  RandomTree(std::uint64_t seed, int eventCount, int normalCount, int gateCount) : dice(seed) {
    for (int i = 0; i < eventCount; ++i) {
      const std::string name = "E" + std::to_string(i);
      if (i < normalCount) {
        nodes.push_back(std::make_shared<NormalEvent>(name, nullptr, true));
      } else {
        nodes.push_back(std::make_shared<BasicEvent>(name, nullptr, true));
      }
      formulas.push_back(EventFormula(name));
    }
    // Numbers and primes in another order than that of the names.
    for (int i = 0; i < eventCount; ++i) {
      auto& one = static_cast<BasicEvent&>(*nodes[Pick(eventCount)]);
      auto& other = static_cast<BasicEvent&>(*nodes[Pick(eventCount)]);
      std::swap(one.prime, other.prime);
    }
    for (int i = 0; i < gateCount; ++i) AddGate(i);
  }

  const FaultTreeNode::Pointer& Root() const { return nodes.back(); }
  const FormulaPtr& Meaning() const { return formulas.back(); }

 private:
  std::size_t Pick(int limit) { return static_cast<std::size_t>(dice.Roll(limit)); }

  void AddGate(int number) {
    const bool isAnd = dice.Chance(45);
    const auto gate =
        MakeGate(isAnd ? NodeType::And : NodeType::Or, "G" + std::to_string(number), nullptr);
    std::vector<FormulaPtr> operands;
    const int inputs = dice.Chance(4) ? 0 : dice.Between(2, 4);
    for (int i = 0; i < inputs; ++i) {
      // Late nodes are taken more often, so that graphs become deep.
      const int known = static_cast<int>(nodes.size());
      const std::size_t input = std::max(Pick(known), Pick(known));
      if (gate->HasChild(*nodes[input])) continue;
      gate->AddChild(nodes[input]);
      operands.push_back(formulas[input]);
    }
    nodes.push_back(gate);
    formulas.push_back(isAnd ? AllOf(operands) : AnyOf(operands));
  }

  Dice dice;
  std::vector<FaultTreeNode::Pointer> nodes;
  std::vector<FormulaPtr> formulas;
};

CutSets Named(const FaultTree::CutSetMap& found) {
  CutSets named;
  for (const auto& [key, cutSet] : found) {
    std::set<std::string> members;
    for (const BasicEvent* event : cutSet->events) members.insert(event->name);
    EXPECT_TRUE(named.insert(members).second) << "A cut set is there twice: " << cutSet->ToText();
  }
  return named;
}

struct PropertyCase {
  const char* name;
  bool products;  // Mutual exclusion takes the road of products; here no event has a component.
  int limit;
  bool countNormalEvents;
};

class CutSetPropertyTest : public ProcessStateTest,
                           public ::testing::WithParamInterface<PropertyCase> {
 protected:
  static constexpr int EventCount = 10;
  static constexpr int NormalCount = 3;
  static constexpr int GateCount = 18;

  CutSetPropertyTest() {
    Config& config = Config::Instance();
    config.mutualExclusion = GetParam().products;
    config.maxCutSetSize = GetParam().limit;
    config.countNormalEvents = GetParam().countNormalEvents;
  }

  static int OrderOf(const std::set<std::string>& cutSet) {
    int order = 0;
    for (const std::string& name : cutSet) {
      const bool normal = std::stoi(name.substr(1)) < NormalCount;
      if (!normal || GetParam().countNormalEvents) ++order;
    }
    return order;
  }

  /// The minimal cut sets of the truth table, as far as the limit admits them.
  static CutSets Expected(const FormulaPtr& meaning) {
    CutSets expected;
    for (const auto& cutSet : MinimalCutSets(meaning)) {
      if (GetParam().limit == 0 || OrderOf(cutSet) <= GetParam().limit) expected.insert(cutSet);
    }
    return expected;
  }
};

TEST_P(CutSetPropertyTest, MinimalCutSetsAreThoseOfTheTruthTable) {
  std::size_t found = 0;
  for (std::uint64_t seed = 1; seed <= 600; ++seed) {
    const RandomTree random(seed, EventCount, NormalCount, GateCount);
    FaultTree tree(random.Root());
    tree.GetTopGate()->GenerateCutSets();
    tree.CollectCutSets();
    const CutSets expected = Expected(random.Meaning());
    ASSERT_EQ(Named(tree.cutSets), expected)
        << "seed " << seed << ": " << ShapeOf(random.Root()) << "\nexpected:\n"
        << ToText(expected);
    found += expected.size();
  }
  EXPECT_GT(found, 1000U) << "The trees have become too simple to prove anything.";
}

INSTANTIATE_TEST_SUITE_P(
    Roads, CutSetPropertyTest,
    ::testing::Values(PropertyCase{"Families", false, 0, true},
                      PropertyCase{"FamiliesToOrderTwo", false, 2, true},
                      PropertyCase{"FamiliesToOrderThree", false, 3, true},
                      PropertyCase{"FamiliesToEffectiveOrder", false, 2, false},
                      PropertyCase{"Products", true, 0, true},
                      PropertyCase{"ProductsToOrderTwo", true, 2, true},
                      PropertyCase{"ProductsToOrderThree", true, 3, true},
                      PropertyCase{"ProductsToEffectiveOrder", true, 2, false}),
    CaseName);

}  // namespace
}  // namespace FTS
