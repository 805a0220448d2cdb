#include <gmock/gmock.h>

#include "analysis/CutSet.h"
#include "analysis/CutSetList.h"
#include "analysis/FaultTree.h"
#include "app/Config.h"
#include "app/DiagnosticLog.h"
#include "faulttree/FaultTreeGate.h"
#include "support/CutSetText.h"
#include "support/PartsModel.h"
#include "support/ProcessStateTest.h"
#include "support/TreeBuilder.h"

namespace FTS {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class TreeCutSetsTest : public ProcessStateTest {
 protected:
  FaultTree& Make(const std::string& text) {
    tree = std::make_unique<FaultTree>(builder.Tree(text));
    return *tree;
  }

  /// Generates and collects.
  FaultTree& Analysed(const std::string& text) {
    Make(text).GetTopGate()->GenerateCutSets();
    tree->CollectCutSets();
    return *tree;
  }

  std::unique_ptr<CutSet> Set(std::initializer_list<const char*> names) {
    auto cutSet = std::make_unique<CutSet>();
    for (const char* name : names) {
      builder.Tree(name);
      cutSet->AddEvent(*builder.Event(name));
    }
    return cutSet;
  }

  double PrimeOf(const std::string& name) const { return builder.Event(name)->prime; }

  TreeBuilder builder;
  std::unique_ptr<FaultTree> tree;
};

TEST_F(TreeCutSetsTest, TreeTakesTheCutSetsOfItsTopGate) {
  Analysed("OR(A, AND(B, C))");
  EXPECT_EQ(TextOf(tree->cutSets), "A; B C");
  EXPECT_EQ(tree->maxOrder, 2);
  EXPECT_TRUE(tree->root->cutSets.empty());
  EXPECT_FALSE(tree->root->cutSetsDone);
  EXPECT_FALSE(builder.Node("A")->cutSetsDone);
}

TEST_F(TreeCutSetsTest, IndexListsEachCutSetByItsEvents) {
  Analysed("OR(A, AND(B, C), AND(B, D))");
  EXPECT_EQ(tree->primeIndex->lists.size(), 4U);
  const CutSetList* const list = tree->primeIndex->Find(PrimeOf("B"), 2);
  ASSERT_TRUE(list);
  EXPECT_EQ(list->GetOwnCount(), 2);
  EXPECT_EQ(MembersOf(*list->Own().front()), "B C") << "In the order of the keys.";
  EXPECT_EQ(tree->primeIndex->Find(PrimeOf("D"), 2)->GetOwnCount(), 0);
}

TEST_F(TreeCutSetsTest, ProxiesAtTheRootAreSeenThrough) {
  Analysed("OUT(IN(OR(A, B)))");
  EXPECT_EQ(TextOf(tree->cutSets), "A; B");
}

TEST_F(TreeCutSetsTest, EventAtTheRootIsItsOwnCutSet) {
  Analysed("IN(A)");
  EXPECT_EQ(TextOf(tree->cutSets), "A");
  EXPECT_EQ(tree->maxOrder, 1);
}

TEST_F(TreeCutSetsTest, TreesWithoutTopGateHaveNoCutSets) {
  EXPECT_FALSE(Make("OUT(IN())").GetTopGate());
  tree->maxOrder = 7;
  tree->CollectCutSets();
  EXPECT_TRUE(tree->cutSets.empty());
  EXPECT_EQ(tree->maxOrder, 0);

  FaultTree rootless(nullptr);
  EXPECT_FALSE(rootless.GetTopGate());
  rootless.CollectCutSets();
  EXPECT_TRUE(rootless.cutSets.empty());
}

TEST_F(TreeCutSetsTest, LimitIsAppliedAgainAndDroppedSetsCountForTheHighestOrder) {
  Make("OR(A, AND(B, C))").GetTopGate()->GenerateCutSets();
  Config::Instance().maxCutSetSize = 1;
  tree->CollectCutSets();
  EXPECT_EQ(TextOf(tree->cutSets), "A");
  EXPECT_EQ(tree->maxOrder, 2);
}

TEST_F(TreeCutSetsTest, KeysAreMultipliedInAscendingOrder) {
  builder.Tree("A");
  Make("G=OR(A)");
  auto& gate = static_cast<FaultTreeGate&>(*tree->root);
  auto squared = Set({"A"});
  squared->AddEvent(*builder.Event("A"));
  gate.AddCutSet(std::move(squared), true);
  tree->CollectCutSets();
  ASSERT_EQ(tree->cutSets.size(), 1U);
  EXPECT_EQ(tree->cutSets.begin()->first, 3.0);
  EXPECT_EQ(tree->cutSets.begin()->second->prime, 3.0);
}

TEST_F(TreeCutSetsTest, ExclusionIsAppliedToEveryCutSet) {
  PartsModel parts;
  const auto pump = parts.AddComponent("Pump");
  Make("OR(A, AND(open, closed), AND(B, C, D))");
  builder.Event("open")->owner = pump;
  builder.Event("closed")->owner = pump;
  tree->GetTopGate()->GenerateCutSets();
  Config::Instance().mutualExclusion = true;
  tree->CollectCutSets();
  EXPECT_EQ(TextOf(tree->cutSets), "A; B C D");
  EXPECT_EQ(tree->maxOrder, 3);
  EXPECT_THAT(DiagnosticLog::Instance().Warnings(),
              ElementsAre("Warning: removing cut set with mutually exclusive events: "
                          "2{open, closed}"));
}

TEST_F(TreeCutSetsTest, ExcludedCutSetAboveTheLimitIsDroppedWithoutAWord) {
  PartsModel parts;
  const auto pump = parts.AddComponent("Pump");
  Make("AND(open, closed)");
  builder.Event("open")->owner = pump;
  builder.Event("closed")->owner = pump;
  tree->GetTopGate()->GenerateCutSets();
  Config::Instance().mutualExclusion = true;
  Config::Instance().maxCutSetSize = 1;
  tree->CollectCutSets();
  EXPECT_TRUE(tree->cutSets.empty());
  EXPECT_THAT(DiagnosticLog::Instance().Warnings(), IsEmpty());
  EXPECT_EQ(tree->maxOrder, 2);
}

TEST_F(TreeCutSetsTest, AnalysisCanBeRepeated) {
  Analysed("OR(A, AND(B, C))");
  tree->cutSets.clear();
  tree->primeIndex->Clear();
  tree->GetTopGate()->GenerateCutSets();
  tree->CollectCutSets();
  EXPECT_EQ(TextOf(tree->cutSets), "A; B C");
}

TEST_F(TreeCutSetsTest, CutSetTakesThePlaceOfOneWithTheSameKey) {
  Make("OR(A, B)");
  builder.Event("A")->prime = 6.0;
  builder.Event("B")->prime = 10.0;
  builder.Tree("C");
  builder.Tree("D");
  builder.Event("C")->prime = 4.0;
  builder.Event("D")->prime = 15.0;
  tree->AddCutSet(Set({"A", "B"}), false);
  tree->AddCutSet(Set({"C", "D"}), false);
  EXPECT_EQ(TextOf(tree->cutSets), "C D");
  EXPECT_EQ(tree->primeIndex->lists.size(), 2U);
  EXPECT_TRUE(tree->primeIndex->Find(4.0, 2));
  EXPECT_FALSE(tree->primeIndex->Find(6.0, 2));
}

TEST_F(TreeCutSetsTest, UncheckedCutSetIsStoredBesideItsSubsets) {
  Make("OR(A, B)");
  tree->AddCutSet(Set({"A"}), false);
  tree->AddCutSet(Set({"A", "B"}), false);
  EXPECT_EQ(TextOf(tree->cutSets), "A; A B");
}

TEST_F(TreeCutSetsTest, CheckedCutSetIsDroppedWhenItIsRedundant) {
  Make("OR(A, B)");
  tree->AddCutSet(Set({"A"}), false);
  tree->AddCutSet(Set({"A", "B"}), true);
  EXPECT_EQ(TextOf(tree->cutSets), "A");
  EXPECT_EQ(tree->primeIndex->lists.size(), 1U);
}

TEST_F(TreeCutSetsTest, CheckedCutSetRemovesItsSupersetsForGood) {
  Make("OR(A, B, C)");
  tree->AddCutSet(Set({"A", "B"}), false);
  tree->AddCutSet(Set({"A", "C"}), false);
  tree->AddCutSet(Set({"B", "C"}), false);
  tree->AddCutSet(Set({"A"}), true);
  EXPECT_EQ(TextOf(tree->cutSets), "A; B C");
  EXPECT_FALSE(tree->primeIndex->Find(PrimeOf("A"), 2));
  EXPECT_EQ(tree->primeIndex->Find(PrimeOf("B"), 2)->GetCount(), 1);
}

TEST_F(TreeCutSetsTest, RemovedCutSetLeavesNoEmptyLists) {
  Make("OR(A, B)");
  tree->AddCutSet(Set({"A", "B"}), false);
  tree->RemoveCutSet(*tree->cutSets.begin()->second);
  EXPECT_TRUE(tree->cutSets.empty());
  EXPECT_TRUE(tree->primeIndex->lists.empty());
}

TEST_F(TreeCutSetsTest, NameAndPrintAreThoseOfTheRoot) {
  Make("Top=OR(A, B)");
  EXPECT_EQ(tree->GetName(), "Top");
  std::ostringstream printed;
  std::ostringstream expected;
  tree->Print(printed, 2);
  tree->root->Print(expected, 2);
  EXPECT_EQ(printed.str(), expected.str());
  EXPECT_FALSE(printed.str().empty());

  const FaultTree rootless(nullptr);
  std::ostringstream nothing;
  rootless.Print(nothing, 2);
  EXPECT_EQ(rootless.GetName(), "");
  EXPECT_EQ(nothing.str(), "");
}

}  // namespace
}  // namespace FTS
