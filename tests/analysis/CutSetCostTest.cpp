#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "analysis/CutSet.h"
#include "analysis/CutSetFamilies.h"
#include "analysis/CutSetList.h"
#include "app/Config.h"
#include "faulttree/BasicEvent.h"
#include "faulttree/FaultTreeGate.h"
#include "support/ProcessStateTest.h"
#include "support/TreeBuilder.h"

namespace FTS {
namespace {

/// Counts instead of times: they are the same on every machine.
class CutSetCostTest : public ProcessStateTest {
 protected:
  /// Mutual exclusion takes the road of products; no event here has a component.
  static void TakeProducts() { Config::Instance().mutualExclusion = true; }

  void Generate(const std::string& tree) {
    root = builder.Tree(tree);
    root->GenerateCutSets();
  }

  /// Layers of three voters. Each has a failure of its own, and fails with two of the three below;
  /// the sources at the bottom and the voter at the top make one more layer. Each layer has three
  /// pairs, and the number of paths to the bottom is six to the power of the layers.
  std::string Voters(int layers) {
    std::string below[3] = {"s1", "s2", "s3"};
    for (int layer = 1; layer <= layers; ++layer) {
      const std::string vote = TwoOf(below);
      for (int i = 0; i < 3; ++i) {
        const std::string name = std::to_string(layer) + "_" + std::to_string(i);
        builder.Tree("V" + name + "=OR(v" + name + ", " + vote + ")");
        below[i] = "V" + name;
      }
    }
    return "Top=" + TwoOf(below);
  }

  TreeBuilder builder;
  FaultTreeNode::Pointer root;

 private:
  static std::string TwoOf(const std::string (&inputs)[3]) {
    return "OR(AND(" + inputs[0] + ", " + inputs[1] + "), AND(" + inputs[0] + ", " + inputs[2] +
           "), AND(" + inputs[1] + ", " + inputs[2] + "))";
  }
};

TEST_F(CutSetCostTest, ProductsOfVotersTakeFewComparisons) {
  TakeProducts();
  const std::string top = Voters(6);
  const CutSetList::Counters before = CutSetList::Cost();
  Generate(top);
  EXPECT_EQ(root->cutSets.size(), 3U * 7U);
  EXPECT_LE(CutSetList::Cost().entriesMet - before.entriesMet, 16000U);
  EXPECT_LE(CutSetList::Cost().comparisons - before.comparisons, 8000U);
}

TEST_F(CutSetCostTest, FamiliesOfVotersTakeStepsByGateNotByPath) {
  const std::string top = Voters(20);
  const std::uint64_t before = CutSetFamilies::Cost().steps;
  Generate(top);
  EXPECT_EQ(root->cutSets.size(), 3U * 21U);
  EXPECT_LE(CutSetFamilies::Cost().steps - before, 400000U);
}

TEST_F(CutSetCostTest, SumOfManyEventsTakesNoComparisons) {
  TakeProducts();
  const auto gate = MakeGate(NodeType::Or, "G", nullptr);
  for (int i = 0; i < 3000; ++i) {
    gate->AddChild(std::make_shared<BasicEvent>("E" + std::to_string(i), nullptr, true));
  }
  const CutSetList::Counters before = CutSetList::Cost();
  gate->GenerateCutSets();
  EXPECT_EQ(gate->cutSets.size(), 3000U) << "Events that share a bit share no list.";
  EXPECT_EQ(CutSetList::Cost().comparisons, before.comparisons);
}

TEST_F(CutSetCostTest, ProductOfManyEventsIsOneCutSet) {
  const auto gate = MakeGate(NodeType::And, "G", nullptr);
  for (int i = 0; i < 5000; ++i) {
    gate->AddChild(std::make_shared<BasicEvent>("E" + std::to_string(i), nullptr, true));
  }
  const CutSetList::Counters before = CutSetList::Cost();
  gate->GenerateCutSets();
  ASSERT_EQ(gate->cutSets.size(), 1U);
  EXPECT_EQ(gate->cutSets.begin()->second->GetSize(), 5000);
  EXPECT_EQ(CutSetList::Cost().entriesMet, before.entriesMet);
}

}  // namespace
}  // namespace FTS
