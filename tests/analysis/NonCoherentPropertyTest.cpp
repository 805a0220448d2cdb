#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <vector>

#include "analysis/CutSet.h"
#include "analysis/FaultTree.h"
#include "app/Config.h"
#include "faulttree/ProxyNode.h"
#include "support/CaseName.h"
#include "support/CutSetText.h"
#include "support/PartsModel.h"
#include "support/ProcessStateTest.h"
#include "support/RandomLogic.h"

namespace FTS {
namespace {

struct NonCoherentCase {
  const char* name;
  bool modularise;
  int lastSeed;
};

/// Trees that hold negations: their cut sets are compared as a function, since what remains when
/// the consensus law has done its work is one of several correct answers.
class NonCoherentPropertyTest : public ProcessStateTest,
                                public ::testing::WithParamInterface<NonCoherentCase> {
 protected:
  NonCoherentPropertyTest() {
    Config::Instance().runSilent = true;
    Config::Instance().quantitativeAnalysis = false;
    Config::Instance().modularise = GetParam().modularise;
  }

  static RandomLogicOptions Options() {
    RandomLogicOptions options;
    options.leastEvents = 1;
    options.mostEvents = 10;
    options.mostGates = 6;  // With more some trees have consensus terms by the ten thousand.
    options.negations = true;
    return options;
  }

  /// Analysis works on a state of its own, beside the tree as it was synthesised.
  std::shared_ptr<FaultTree> Add(const FaultTreeNode::Pointer& root) {
    root->CopyChildrenToState(ContractedState);
    auto tree = std::make_shared<FaultTree>(root);
    tree->containsNot = ContainsNot(*root);
    parts.model.AddFaultTree(tree);
    return tree;
  }

  FaultTreeNode::Pointer Negated(const FaultTreeNode::Pointer& node) {
    auto negation = std::make_shared<NotGate>("NOT", &parts.model);
    negation->AddChild(node);
    return negation;
  }

  static bool IsSubset(const CutSet& inner, const CutSet& outer) {
    return std::includes(outer.events.begin(), outer.events.end(), inner.events.begin(),
                         inner.events.end(),
                         [](const auto* a, const auto* b) { return a->prime < b->prime; });
  }

  /// No cut set lies inside another one, and none contradicts itself.
  static void ExpectClean(const FaultTree& tree, const RandomLogic& random) {
    for (const auto& [key, cutSet] : tree.cutSets) {
      EXPECT_TRUE(random.MeaningOf(*cutSet).any())
          << "never holds: " << cutSet->ToText() << ", " << random.Describe();
      for (const auto& [otherKey, other] : tree.cutSets) {
        if (cutSet == other) continue;
        EXPECT_FALSE(IsSubset(*cutSet, *other))
            << other->ToText() << " lies around " << cutSet->ToText() << ", " << random.Describe();
      }
    }
  }

  static void ExpectMeaning(const FaultTree& tree, const TruthTable& meaning,
                            const RandomLogic& random) {
    EXPECT_EQ(random.MeaningOf(tree.cutSets), meaning)
        << random.Describe() << "\nfound: " << TextOf(tree.cutSets);
  }

  PartsModel parts;
};

TEST_P(NonCoherentPropertyTest, CutSetsAreTheFunctionOfTheTree) {
  std::size_t complements = 0;
  std::size_t cutSets = 0;
  for (int seed = 1; seed <= GetParam().lastSeed; ++seed) {
    const RandomLogic random(static_cast<std::uint64_t>(seed), Options(), &parts.model);
    const auto tree = Add(random.Root());
    parts.model.Analyse(false);
    ExpectMeaning(*tree, random.Meaning(), random);
    ExpectClean(*tree, random);
    cutSets += tree->cutSets.size();
    for (const auto& [key, cutSet] : tree->cutSets) {
      complements += static_cast<std::size_t>(
          std::count_if(cutSet->events.begin(), cutSet->events.end(),
                        [](const auto* event) { return event->type == NodeType::Complement; }));
    }
    parts.model.RemoveFaultTree(*tree);
    if (HasFailure()) break;
  }
  // Else the trees have become too simple to prove anything.
  EXPECT_GT(cutSets, 2000U);
  EXPECT_GT(complements, 2000U);
}

TEST_P(NonCoherentPropertyTest, TreesThatShareNodesDoNotDisturbEachOther) {
  for (int seed = 1; seed <= GetParam().lastSeed / 2; ++seed) {
    const bool negated = seed % 2 == 0;  // Then the first tree's root is replaced.
    const RandomLogic random(static_cast<std::uint64_t>(seed), Options(), &parts.model);
    const std::size_t inner = random.Parts().size() - 2;
    std::vector<std::shared_ptr<FaultTree>> trees;
    for (const std::size_t part : {inner, inner + 1}) {
      const FaultTreeNode::Pointer& node = random.Parts()[part].node;
      trees.push_back(Add(negated && part == inner ? Negated(node) : node));
    }
    parts.model.Analyse(false);
    const TruthTable& meaning = random.Parts()[inner].meaning;
    ExpectMeaning(*trees[0], negated ? ~meaning : meaning, random);
    ExpectMeaning(*trees[1], random.Meaning(), random);
    for (const auto& tree : trees) {
      ExpectClean(*tree, random);
      parts.model.RemoveFaultTree(*tree);
    }
    if (HasFailure()) break;
  }
}

INSTANTIATE_TEST_SUITE_P(Routes, NonCoherentPropertyTest,
                         ::testing::Values(NonCoherentCase{"Modularised", true, 2500},
                                           NonCoherentCase{"Whole", false, 2500}),
                         CaseName);

}  // namespace
}  // namespace FTS
