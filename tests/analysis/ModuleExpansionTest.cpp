#include <gmock/gmock.h>

#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

#include "analysis/CutSet.h"
#include "analysis/FaultTree.h"
#include "analysis/ModuleEvent.h"
#include "app/Config.h"
#include "app/DiagnosticLog.h"
#include "faulttree/FaultTreeGate.h"
#include "support/CapturedStreams.h"
#include "support/CaseName.h"
#include "support/CutSetText.h"
#include "support/PartsModel.h"
#include "support/ProcessStateTest.h"
#include "support/TreeBuilder.h"

namespace FTS {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// A module whose cut sets the test writes down, over events of a builder.
class ExpandTest : public ProcessStateTest {
 protected:
  using Members = std::initializer_list<const char*>;

  ModuleEvent& Module(const std::string& name, std::initializer_list<Members> cutSets) {
    const auto gate = MakeGate(NodeType::Or, name, nullptr);
    gates.push_back(gate);
    gate->moduleEvent = std::make_unique<ModuleEvent>(*gate);
    builder.Define("MOD " + name, FaultTreeNode::Pointer(gate, gate->moduleEvent.get()));
    for (const Members& members : cutSets) gate->AddCutSet(Set(members), true);
    gate->moduleEvent->TakeCutSets(*gate);
    return *gate->moduleEvent;
  }

  std::unique_ptr<CutSet> Set(Members names) {
    auto cutSet = std::make_unique<CutSet>();
    for (const char* name : names) {
      builder.Tree(name);
      cutSet->AddEvent(*builder.Event(name));
    }
    return cutSet;
  }

  std::vector<std::string> Expanded(Members names) {
    std::vector<std::unique_ptr<CutSet>> list;
    Set(names)->Expand(list);
    std::vector<std::string> texts;
    for (const auto& cutSet : list) texts.push_back(MembersOf(*cutSet));
    return texts;
  }

  TreeBuilder builder;
  std::vector<std::shared_ptr<FaultTreeGate>> gates;
};

TEST_F(ExpandTest, SetWithoutModulesIsItself) {
  EXPECT_THAT(Expanded({"A", "B"}), ElementsAre("A B"));
}

TEST_F(ExpandTest, LoneModuleGivesItsCutSetsInTheirOrder) {
  Module("M", {{"A"}, {"B", "C"}, {"D"}});
  EXPECT_THAT(Expanded({"MOD M"}), ElementsAre("A", "D", "B C"))
      << "In the order of their keys: 7, 17 and 11 * 13.";
}

TEST_F(ExpandTest, EventsStandBesideEachCutSetOfAModule) {
  Module("M", {{"A"}, {"B"}});
  EXPECT_THAT(Expanded({"X", "MOD M", "Y"}), ElementsAre("A X Y", "B X Y"))
      << "Members are sorted by their primes, of which A has the lowest.";
}

TEST_F(ExpandTest, TwoModulesAreMultipliedTheLaterOneOutermost) {
  Module("M", {{"A"}, {"B"}});
  Module("N", {{"C"}, {"D"}});
  EXPECT_THAT(Expanded({"MOD M", "MOD N"}), ElementsAre("A C", "B C", "A D", "B D"));
}

TEST_F(ExpandTest, InnerModulesAreExpandedFirst) {
  Module("M", {{"A"}, {"B", "C"}});
  ModuleEvent& outer = Module("N", {{"X"}, {"MOD M", "Y"}});
  EXPECT_TRUE(outer.hasNestedModules);
  EXPECT_THAT(Expanded({"Z", "MOD N"}), ElementsAre("X Z", "A Y Z", "B C Y Z"));
}

TEST_F(ExpandTest, NestedModuleCanBeExpandedAgain) {
  Module("M", {{"A"}, {"B"}});
  Module("N", {{"MOD M", "Y"}});
  const auto once = Expanded({"MOD N"});
  EXPECT_EQ(Expanded({"MOD N"}), once);
  EXPECT_THAT(once, ElementsAre("A Y", "B Y"));
}

TEST_F(ExpandTest, EmptyModuleEmptiesTheWholeInAnyPlace) {
  Module("M", {});
  Module("N", {{"A"}});
  EXPECT_THAT(Expanded({"MOD M"}), IsEmpty());
  EXPECT_THAT(Expanded({"MOD M", "MOD N", "X"}), IsEmpty());
  Module("O", {{"B"}});
  Module("P", {});
  EXPECT_THAT(Expanded({"X", "MOD O", "MOD P"}), IsEmpty());
}

TEST_F(ExpandTest, EventInBothPartsSquaresItsFactor) {
  builder.Tree("OR(A, B)");  // 3 and 5.
  Module("M", {{"A", "B"}});
  std::vector<std::unique_ptr<CutSet>> list;
  Set({"A", "MOD M"})->Expand(list);
  ASSERT_EQ(list.size(), 1U);
  EXPECT_EQ(MembersOf(*list[0]), "A B");
  EXPECT_EQ(list[0]->prime, 3.0 * 3.0 * 5.0);
}

TEST_F(ExpandTest, ExpandedSetsHoldNoModuleAnyMore) {
  Module("M", {{"A"}, {"B"}});
  const auto cutSet = Set({"MOD M", "X"});
  EXPECT_TRUE(cutSet->hasModule);
  std::vector<std::unique_ptr<CutSet>> list;
  cutSet->Expand(list);
  for (const auto& expanded : list) EXPECT_FALSE(expanded->hasModule);
  EXPECT_EQ(list.size(), 2U);
}

struct TreeCase {
  const char* name;
  const char* tree;
  int limit;
  const char* cutSets;
  int maxOrder;
};

/// Whole trees by way of their modules.
class ModularisedTreeTest : public ProcessStateTest,
                            public ::testing::WithParamInterface<TreeCase> {
 protected:
  ModularisedTreeTest() { Config::Instance().runSilent = true; }

  FaultTree& Analysed(const std::string& text, bool useBDDs = false) {
    tree = std::make_unique<FaultTree>(builder.Tree(text));
    const CapturedStreams streams;
    moduleCount = tree->Modularise(useBDDs);
    if (useBDDs) {
      tree->GenerateBDDCutSets();
    } else {
      tree->GetTopGate()->GenerateCutSets();
    }
    tree->CollectCutSets();
    return *tree;
  }

  TreeBuilder builder;
  std::unique_ptr<FaultTree> tree;
  int moduleCount = 0;
};

using ModuleExpansionTest = ModularisedTreeTest;

TEST_P(ModularisedTreeTest, HasItsCutSetsAndOrders) {
  Config::Instance().maxCutSetSize = GetParam().limit;
  Analysed(GetParam().tree);
  EXPECT_GE(moduleCount, 2);
  EXPECT_EQ(TextOf(tree->cutSets), GetParam().cutSets);
  EXPECT_EQ(tree->maxOrder, GetParam().maxOrder);
}

TEST_P(ModularisedTreeTest, HasTheSameCutSetsFromDiagrams) {
  Config::Instance().maxCutSetSize = GetParam().limit;
  Analysed(GetParam().tree, true);
  EXPECT_GE(moduleCount, 2);
  EXPECT_EQ(TextOf(tree->cutSets), GetParam().cutSets);
}

// What modules hide is seen by the limit only when they are expanded; sets dropped then still count
// for the highest order.
INSTANTIATE_TEST_SUITE_P(
    Trees, ModularisedTreeTest,
    ::testing::Values(
        TreeCase{"Modules", "OR(AND(A, B), AND(C, D))", 0, "A B; C D", 2},
        TreeCase{"Product", "AND(OR(AND(A, B), C), OR(AND(D, E), F))", 0,
                 "A B D E; A B F; C D E; C F", 4},
        TreeCase{"ProductToOrderTwo", "AND(OR(AND(A, B), C), OR(AND(D, E), F))", 2, "C F", 4},
        TreeCase{"ProductToOrderThree", "AND(OR(AND(A, B), C), OR(AND(D, E), F))", 3,
                 "A B F; C D E; C F", 4},
        TreeCase{"Nested", "AND(X, OR(AND(A, B), AND(C, OR(D, AND(E, F)))))", 0,
                 "X A B; X C D; X C E F", 4},
        TreeCase{"SharedModule", "AND(OR(X, M=AND(A, B)), OR(Y, M), OR(Z, AND(C, D)))", 0,
                 "A B C D; A B Z; X Y C D; X Y Z", 4}),
    CaseName);

TEST_F(ModuleExpansionTest, ExpansionRaisesTheHighestOrderOfTheGate) {
  tree = std::make_unique<FaultTree>(builder.Tree("OR(G=AND(A, B, C), H=AND(D, E))"));
  tree->Modularise(false);
  tree->root->GenerateCutSets();
  EXPECT_LE(tree->root->maxOrder, 1);
  tree->root->ExpandModuleCutSets();
  EXPECT_EQ(tree->root->maxOrder, 3);
  EXPECT_EQ(TextOf(tree->root->cutSets), "A B C; D E");
}

TEST_F(ModuleExpansionTest, ExpandedGateHasNoModulesInItsIndex) {
  tree = std::make_unique<FaultTree>(builder.Tree("OR(X, G=AND(A, B), H=AND(D, E))"));
  tree->Modularise(false);
  tree->root->GenerateCutSets();
  tree->root->ExpandModuleCutSets();
  auto& gate = static_cast<FaultTreeGate&>(*tree->root);
  CutSet candidate;
  for (const char* name : {"A", "B", "X"}) candidate.AddEvent(*builder.Event(name));
  EXPECT_TRUE(gate.IsSubsumed(candidate));
  CutSet module;
  module.AddEvent(*builder.Node("G")->moduleEvent);
  EXPECT_FALSE(gate.IsSubsumed(module));
}

TEST_F(ModuleExpansionTest, ProductOfModulesOverTheLimitLeavesNoMark) {
  Config::Instance().maxCutSetSize = 1;
  tree = std::make_unique<FaultTree>(builder.Tree("AND(OR(A, B), OR(C, D))"));
  tree->Modularise(false);
  EXPECT_EQ(tree->root->GenerateCutSets(), 2) << "The order of the latest attempt.";
  EXPECT_TRUE(tree->root->cutSets.empty());
  EXPECT_FALSE(tree->root->IsTruncated());
}

TEST_F(ModuleExpansionTest, ProductOfOrdinaryInputsOverTheLimitMarksTheGate) {
  Config::Instance().maxCutSetSize = 1;
  tree = std::make_unique<FaultTree>(builder.Tree("AND(A, B)"));
  tree->root->GenerateCutSets();
  EXPECT_TRUE(tree->root->cutSets.empty());
  EXPECT_TRUE(tree->root->IsTruncated());
}

TEST_F(ModuleExpansionTest, WithoutALimitNothingIsTruncated) {
  tree = std::make_unique<FaultTree>(builder.Tree("AND(A, OR(B, C), D)"));
  tree->root->GenerateCutSets();
  EXPECT_EQ(tree->root->cutSets.size(), 2U);
  EXPECT_FALSE(tree->root->IsTruncated());
}

class NormalModuleTest : public ModularisedTreeTest {
 protected:
  NormalModuleTest() {
    for (const char* name : {"N", "O"}) {
      normal.push_back(std::make_shared<NormalEvent>(name, nullptr, true));
      builder.Define(name, normal.back());
    }
    Config::Instance().countNormalEvents = false;
  }

  std::vector<std::shared_ptr<NormalEvent>> normal;
};

TEST_F(NormalModuleTest, ModuleOfNormalEventsAddsNothingToTheOrder) {
  Config::Instance().maxCutSetSize = 1;
  Analysed("AND(OR(N, O), A)");
  EXPECT_EQ(moduleCount, 2);
  EXPECT_EQ(TextOf(tree->cutSets), "N A; O A");
  EXPECT_EQ(tree->maxOrder, 1);
}

TEST_F(NormalModuleTest, OneCutSetOfNormalEventsMakesAModuleCountNothing) {
  Config::Instance().maxCutSetSize = 1;
  Analysed("AND(OR(N, B), A)");
  EXPECT_EQ(TextOf(tree->cutSets), "N A");
  EXPECT_EQ(tree->maxOrder, 2) << "The set of A and B was dropped when it was expanded.";
}

TEST_F(NormalModuleTest, NestedModulesOfNormalEventsCountNothingEither) {
  tree = std::make_unique<FaultTree>(builder.Tree("AND(A, M=OR(B, G=AND(N, O)))"));
  tree->Modularise(false);
  EXPECT_TRUE(builder.Node("G")->moduleEvent->IsMadeOfNormalEvents());
  EXPECT_TRUE(builder.Node("M")->moduleEvent->IsMadeOfNormalEvents());
  CutSet cutSet;
  cutSet.AddEvent(*builder.Event("A"));
  cutSet.AddEvent(*builder.Node("M")->moduleEvent);
  EXPECT_EQ(cutSet.GetEffectiveOrder(), 1);
  EXPECT_EQ(cutSet.GetSize(), 2);
}

TEST_F(NormalModuleTest, OrdersCountAllEventsWhenNormalOnesCount) {
  Config::Instance().countNormalEvents = true;
  Config::Instance().maxCutSetSize = 1;
  Analysed("OR(AND(OR(N, O), A), B)");
  EXPECT_EQ(TextOf(tree->cutSets), "B");
}

TEST_F(ModuleExpansionTest, ExclusionIsAppliedAfterExpansion) {
  PartsModel parts;
  const auto pump = parts.AddComponent("Pump");
  Config::Instance().mutualExclusion = true;
  Config::Instance().runSilent = false;
  builder.Tree("OR(open, A, closed, B)");
  builder.Event("open")->owner = pump;
  builder.Event("closed")->owner = pump;
  Analysed("AND(OR(open, A), OR(closed, B))");
  EXPECT_EQ(moduleCount, 3);
  EXPECT_EQ(TextOf(tree->cutSets), "A B; A closed; open B");
  EXPECT_THAT(DiagnosticLog::Instance().Warnings(),
              ElementsAre("Warning: removing cut set with mutually exclusive events: "
                          "2{open, closed}"));
}

}  // namespace
}  // namespace FTS
