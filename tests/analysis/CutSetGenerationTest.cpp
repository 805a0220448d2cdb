#include <gmock/gmock.h>

#include <string>

#include "analysis/CutSet.h"
#include "analysis/CutSetList.h"
#include "analysis/ModuleEvent.h"
#include "analysis/Prime.h"
#include "app/Config.h"
#include "app/DiagnosticLog.h"
#include "faulttree/CircleNode.h"
#include "faulttree/CommonCauseNodes.h"
#include "faulttree/DeviationNodes.h"
#include "faulttree/FaultTreeGate.h"
#include "faulttree/ProxyNode.h"
#include "model/CCF.h"
#include "model/VtnException.h"
#include "support/CaseName.h"
#include "support/CutSetText.h"
#include "support/PartsModel.h"
#include "support/ProcessStateTest.h"
#include "support/TreeBuilder.h"

namespace FTS {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// Cut sets are found by families or by products. Mutual exclusion needs the products, and changes
/// nothing for events that belong to no component.
enum class Road { FAMILIES, PRODUCTS };

class CutSetGenerationTest : public ProcessStateTest {
 protected:
  static void Take(Road road) { Config::Instance().mutualExclusion = road == Road::PRODUCTS; }

  std::string CutSetsOf(const std::string& tree) {
    root = builder.Tree(tree);
    root->GenerateCutSets();
    return TextOf(root->cutSets);
  }

  static const std::vector<std::string>& Warnings() { return DiagnosticLog::Instance().Warnings(); }

  FaultTreeGate& Gate(const std::string& name) {
    return static_cast<FaultTreeGate&>(*builder.Node(name));
  }

  BasicEvent& Event(const std::string& name) {
    builder.Tree(name);
    return *builder.Event(name);
  }

  /// Makes the gate a module that an analysis has found.
  void MakeModule(const std::string& name) {
    Gate(name).isModule = true;
    Gate(name).moduleEvent = std::make_unique<ModuleEvent>(Gate(name));
  }

  TreeBuilder builder;
  FaultTreeNode::Pointer root;
};

struct RoadCase {
  const char* name;
  Road road;
};

constexpr RoadCase BothRoads[] = {{"Families", Road::FAMILIES}, {"Products", Road::PRODUCTS}};

class BothRoadsTest : public CutSetGenerationTest, public ::testing::WithParamInterface<RoadCase> {
 protected:
  BothRoadsTest() { Take(GetParam().road); }
};

INSTANTIATE_TEST_SUITE_P(Roads, BothRoadsTest, ::testing::ValuesIn(BothRoads), CaseName);

struct TreeCase {
  const char* name;
  const char* tree;
  const char* expected;
};

class TreeCutSetTest : public CutSetGenerationTest,
                       public ::testing::WithParamInterface<std::tuple<RoadCase, TreeCase>> {};

constexpr auto RoadAndTreeName = [](const auto& testCase) {
  return std::string(std::get<0>(testCase.param).name) + std::get<1>(testCase.param).name;
};

TEST_P(TreeCutSetTest, HasTheMinimalCutSets) {
  const auto& [road, tree] = GetParam();
  Take(road.road);
  EXPECT_EQ(CutSetsOf(tree.tree), tree.expected);
  EXPECT_FALSE(root->truncated);
  EXPECT_TRUE(root->cutSetsDone);
}

INSTANTIATE_TEST_SUITE_P(
    Trees, TreeCutSetTest,
    ::testing::Combine(
        ::testing::ValuesIn(BothRoads),
        ::testing::Values(
            TreeCase{"Sum", "OR(A, B)", "A; B"}, TreeCase{"Product", "AND(A, B)", "A B"},
            TreeCase{"ProductOfSums", "AND(OR(A, B), OR(C, D))", "A C; A D; B C; B D"},
            TreeCase{"LaterSupersetIsRefused", "OR(A, AND(A, B))", "A"},
            TreeCase{"EarlierSupersetIsRemoved", "OR(AND(A, B), A)", "A"},
            TreeCase{"RepeatedEventIsAbsorbed", "AND(A, OR(A, B))", "A"},
            TreeCase{"SharedFactor", "AND(OR(A, B), OR(A, C))", "A; B C"},
            TreeCase{"ManySupersetsGoAtOnce", "OR(AND(A, B), AND(A, C), AND(A, D), AND(B, C), A)",
                     "A; B C"},
            TreeCase{"TwoOfThree", "OR(AND(A, B), AND(A, C), AND(B, C))", "A B; A C; B C"},
            TreeCase{"SharedGate", "AND(OR(G=OR(A, B), C), OR(G, D))", "A; B; C D"},
            TreeCase{"SameInputTwice", "AND(G=OR(A, B), G)", "A; B"},
            TreeCase{"ThreeFactors", "AND(OR(A, B), OR(B, C), OR(C, A))", "A B; A C; B C"},
            TreeCase{"ProxyPassesOn", "AND(A, IN(OR(B, C)))", "A B; A C"},
            TreeCase{"PandTakesTheFirst", "PAND(A, B)", "A"},
            TreeCase{"SandTakesTheFirst", "SAND(OR(A, B), C)", "A; B"},
            TreeCase{"PorTakesTheFirst", "POR(AND(A, B), C)", "A B"},
            TreeCase{"XorTakesTheFirst", "XOR(A, B)", "A"},
            TreeCase{"XorPassesOverEmptyInputs", "XOR(OR(), B, C)", "B"},
            TreeCase{"OrPassesOverEmptyInputs", "OR(AND(), A)", "A"},
            TreeCase{"AndPassesOverEmptyInputs", "AND(OR(), A, B)", "A B"},
            TreeCase{"GateWithoutInputs", "AND()", ""},
            TreeCase{"GateOfEmptyInputs", "OR(AND(), OR())", ""})),
    RoadAndTreeName);

TEST_P(BothRoadsTest, SecondCallOnlyAnswers) {
  CutSetsOf("G=OR(A, B)");
  const CutSet* const first = root->cutSets.begin()->second.get();
  root->GenerateCutSets();
  EXPECT_EQ(root->cutSets.begin()->second.get(), first);
}

TEST_P(BothRoadsTest, KeysAreTheProductsOfThePrimes) {
  CutSetsOf("AND(OR(A, B), C)");
  EXPECT_EQ(root->cutSets.size(), 2U);
  EXPECT_EQ(root->cutSets.count(3.0 * 7.0), 1U);
  EXPECT_EQ(root->cutSets.count(5.0 * 7.0), 1U);
  EXPECT_EQ(root->cutSets.at(21.0)->prime, 21.0);
}

TEST_P(BothRoadsTest, NodesThatAreDoneAreTakenAsTheyAre) {
  builder.Tree("AND(A, G=OR(B, C))");
  Gate("G").GenerateCutSets();
  Gate("G").ClearChildren();
  EXPECT_EQ(CutSetsOf("AND(A, G)"), "A B; A C");
}

// Inputs without cut sets

TEST_P(BothRoadsTest, AndWarnsOfAnInputThatItPassesOver) {
  EXPECT_EQ(CutSetsOf("Top=AND(A, OR())"), "A");
  EXPECT_THAT(Warnings(), ElementsAre("Gate without cut sets is ignored under AND gate: Top"));
}

TEST_P(BothRoadsTest, EachInputIsWarnedOfOnce) {
  CutSetsOf("Top=AND(E=OR(), A, F=OR(), E)");
  root->ResetCutSets();
  root->GenerateCutSets();
  EXPECT_EQ(Warnings().size(), 2U) << "E and F, although E stands there twice and twice analysed.";
}

TEST_P(BothRoadsTest, OrDoesNotWarnOfEmptyInputs) {
  EXPECT_EQ(CutSetsOf("OR(A, AND())"), "A");
  EXPECT_THAT(Warnings(), IsEmpty());
}

TEST_P(BothRoadsTest, AndWithoutAnyCutSetsDoesNotStopAtASkippedInput) {
  EXPECT_EQ(CutSetsOf("AND(OR(), OR(), A)"), "A");
}

// The limit

TEST_P(BothRoadsTest, ProductAboveTheLimitLeavesItsMark) {
  Config::Instance().maxCutSetSize = 1;
  EXPECT_EQ(CutSetsOf("AND(A, B)"), "");
  EXPECT_TRUE(root->truncated);
  EXPECT_TRUE(root->IsTruncated());
}

TEST_P(BothRoadsTest, ListThatLostMembersIsMarked) {
  Config::Instance().maxCutSetSize = 2;
  EXPECT_EQ(CutSetsOf("AND(OR(A, B), OR(C, AND(D, E)))"), "A C; B C");
  EXPECT_TRUE(root->truncated);
}

TEST_P(BothRoadsTest, RedundantProductAboveTheLimitLeavesItsMarkToo) {
  Config::Instance().maxCutSetSize = 2;
  EXPECT_EQ(CutSetsOf("AND(OR(A, AND(B, C)), OR(A, AND(C, D)))"), "A");
  EXPECT_TRUE(root->truncated);
}

TEST_P(BothRoadsTest, ListThatLostNothingIsNotMarked) {
  Config::Instance().maxCutSetSize = 2;
  EXPECT_EQ(CutSetsOf("AND(OR(A, B), OR(C, D))"), "A C; A D; B C; B D");
  EXPECT_FALSE(root->truncated);
}

TEST_P(BothRoadsTest, TruncatedInputEmptiesAnAnd) {
  Config::Instance().maxCutSetSize = 1;
  EXPECT_EQ(CutSetsOf("AND(A, AND(B, C))"), "");
  EXPECT_TRUE(root->truncated);
  EXPECT_THAT(Warnings(), IsEmpty());
}

TEST_P(BothRoadsTest, TruncatedInputIsMissingInAnOr) {
  Config::Instance().maxCutSetSize = 1;
  EXPECT_EQ(CutSetsOf("OR(AND(B, C), A)"), "A");
  EXPECT_TRUE(root->truncated);
}

TEST_P(BothRoadsTest, MarkTravelsThroughAProxy) {
  Config::Instance().maxCutSetSize = 1;
  EXPECT_EQ(CutSetsOf("AND(A, IN(AND(B, C)))"), "");
  EXPECT_TRUE(root->truncated);
}

TEST_P(BothRoadsTest, SingleEventsAreWithinAnyLimit) {
  Config::Instance().maxCutSetSize = 1;
  EXPECT_EQ(CutSetsOf("OR(A, B)"), "A; B");
  EXPECT_FALSE(root->truncated);
}

TEST_P(BothRoadsTest, EffectiveOrderMeetsTheLimitWhenNormalEventsDoNotCount) {
  Config::Instance().maxCutSetSize = 1;
  Config::Instance().countNormalEvents = false;
  builder.Define("n", std::make_shared<NormalEvent>("n", nullptr, true));
  builder.Define("m", std::make_shared<NormalEvent>("m", nullptr, true));
  EXPECT_EQ(CutSetsOf("OR(AND(n, A, m), AND(A, B))"), "n m A");
}

// Keys

TEST_F(CutSetGenerationTest, ProductsMultiplyOntoTheAscendingProduct) {
  // Twelve primes around 60,000 make a product of which the last digits show the order.
  Take(Road::PRODUCTS);
  for (int i = 0; i < 6000; ++i) Prime::Instance().Next();
  for (int i = 0; i < 12; ++i) Event("E" + std::to_string(i));
  std::string inputs = "E11";
  double expected = 1.0;
  for (int i = 10; i >= 0; --i) inputs += ", E" + std::to_string(i);
  for (int i = 1; i < 12; ++i) expected *= Event("E" + std::to_string(i)).prime;
  expected *= Event("E0").prime;
  CutSetsOf("AND(" + inputs + ")");
  ASSERT_EQ(root->cutSets.size(), 1U);
  EXPECT_EQ(root->cutSets.begin()->first, expected);
  EXPECT_NE(root->cutSets.begin()->second->Clone()->prime, expected);
}

TEST_P(BothRoadsTest, OfTwoCutSetsWithOneKeyTheFirstStays) {
  Event("A").prime = 6.0;
  Event("B").prime = 10.0;
  Event("C").prime = 4.0;
  Event("D").prime = 15.0;
  EXPECT_EQ(CutSetsOf("OR(AND(A, B), AND(C, D))"), "A B");
}

TEST_P(BothRoadsTest, CutSetsBeyondAllNumbersShareOneKey) {
  std::string first;
  std::string second;
  for (int i = 0; i < 200; ++i) {
    first += (i > 0 ? ", " : "") + ("A" + std::to_string(i));
    second += (i > 0 ? ", " : "") + ("B" + std::to_string(i));
  }
  CutSetsOf("OR(AND(" + first + "), AND(" + second + "), C)");
  ASSERT_EQ(root->cutSets.size(), 2U);
  EXPECT_EQ(MembersOf(*root->cutSets.begin()->second), "C");
  EXPECT_EQ(root->cutSets.rbegin()->second->GetSize(), 200);
  EXPECT_EQ(root->cutSets.rbegin()->second->events.front()->name, "A0");
}

TEST_P(BothRoadsTest, EventsThatShareASignatureBitHideEachOther) {
  Event("X");
  Event("A").eventNumber = 5;
  Event("B").eventNumber = 2053;
  EXPECT_EQ(CutSetsOf("OR(AND(X, A), AND(X, B))"), "X A");
}

TEST_P(BothRoadsTest, CutSetsWithoutCommonEventAreNotCompared) {
  Event("A").eventNumber = 5;
  Event("B").eventNumber = 2053;
  EXPECT_EQ(CutSetsOf("OR(A, B)"), "A; B");
}

TEST_P(BothRoadsTest, PartsWithoutSharedBitsAreRightBelowAGateWithThem) {
  Event("A").eventNumber = 100;
  Event("B").eventNumber = 100 + CutSet::SignatureBits;
  EXPECT_EQ(CutSetsOf("OR(AND(A, OR(C, D)), AND(B, OR(D, E), OR(D, F)))"), "A C; A D; B D; B E F");
}

// Events

TEST_P(BothRoadsTest, EventHasItselfAsCutSet) {
  EXPECT_EQ(CutSetsOf("A"), "A");
  EXPECT_EQ(root->maxOrder, 1);
  EXPECT_EQ(root->cutSets.count(3.0), 1U);
}

TEST_P(BothRoadsTest, CircleStandsUnlessCirclesAreRemoved) {
  const auto circle = std::make_shared<CircleNode>("loop", nullptr, 0U, FaultTreeNode::NewId);
  circle->prime = 101.0;
  builder.Define("loop", circle);
  EXPECT_EQ(CutSetsOf("OR(A, loop)"), "A; loop");
  Config::Instance().removeCircleNodes = true;
  root->ResetCutSets();
  root->GenerateCutSets();
  EXPECT_EQ(TextOf(root->cutSets), "A");
}

TEST_P(BothRoadsTest, UnconnectedDeviationsStandOnlyWhenHangingNodesAreKept) {
  const auto output = std::make_shared<OutputDeviationNode>("out", nullptr);
  const auto input = std::make_shared<InputDeviationNode>("in", nullptr, nullptr);
  const auto exported = std::make_shared<ExportedDeviationNode>("exp", nullptr);
  output->prime = 101.0;
  input->prime = 103.0;
  exported->prime = 107.0;
  builder.Define("out", output);
  builder.Define("in", input);
  builder.Define("exp", exported);
  EXPECT_EQ(CutSetsOf("OR(A, in, out, exp)"), "A");
  Config::Instance().removeHangingNodes = false;
  root->ResetCutSets();
  root->GenerateCutSets();
  EXPECT_EQ(TextOf(root->cutSets), "A; exp; in; out");
}

TEST_P(BothRoadsTest, ActivatedCommonCauseHasTheCutSetsOfTheActualOne) {
  const auto actual = std::make_shared<CCF>("flood", nullptr, nullptr, true);
  const auto node = std::make_shared<PCCFNode>("potential", nullptr);
  node->actual = actual;
  builder.Define("potential", node);
  EXPECT_EQ(CutSetsOf("AND(A, potential)"), "flood A");
  EXPECT_EQ(node->maxOrder, 1);
}

// Proxies

TEST_F(CutSetGenerationTest, ProxyHasTheCutSetsOfItsChild) {
  Config::Instance().maxCutSetSize = 1;
  EXPECT_EQ(CutSetsOf("IN(OR(A, AND(B, C)))"), "A");
  EXPECT_TRUE(root->truncated);
  EXPECT_NE(root->cutSets.begin()->second.get(), root->GetChild(0)->cutSets.begin()->second.get());
}

TEST_F(CutSetGenerationTest, EmptyProxyNamesWhatIsMissing) {
  const auto proxy = builder.Tree("late-P.in=IN()");
  try {
    proxy->GenerateCutSets();
    FAIL() << "An empty proxy can't have cut sets.";
  } catch (const VtnException& exception) {
    EXPECT_EQ(exception.GetMessage(), "No component for: late-P.in");
  }
}

TEST_P(BothRoadsTest, EmptyProxyInATreeEndsTheAnalysis) {
  EXPECT_THROW(CutSetsOf("OR(A, late-P.in=IN())"), VtnException);
}

// Mutual exclusion

class ExclusionGenerationTest : public CutSetGenerationTest {
 protected:
  ExclusionGenerationTest() {
    Config::Instance().mutualExclusion = true;
    for (const char* name : {"open", "closed"}) Event(name).owner = pump;
    Event("leak").owner = valve;
  }

  PartsModel parts;
  std::shared_ptr<Component> pump = parts.AddComponent("Pump");
  std::shared_ptr<Component> valve = parts.AddComponent("Valve");
};

TEST_F(ExclusionGenerationTest, FailureModesOfOneComponentHaveNoCommonCutSet) {
  EXPECT_EQ(CutSetsOf("AND(open, closed)"), "");
  EXPECT_THAT(Warnings(), ElementsAre("Warning: removing cut set with mutually exclusive events: "
                                      "2{open, closed}"));
}

TEST_F(ExclusionGenerationTest, EachRemovedCutSetIsWarnedOf) {
  EXPECT_EQ(CutSetsOf("AND(OR(open, leak), OR(closed, A))"), "closed leak; leak A; open A");
  EXPECT_EQ(Warnings().size(), 1U);
}

TEST_F(ExclusionGenerationTest, LimitIsTestedBeforeExclusion) {
  Config::Instance().maxCutSetSize = 1;
  EXPECT_EQ(CutSetsOf("AND(open, closed)"), "");
  EXPECT_THAT(Warnings(), IsEmpty());
  EXPECT_TRUE(root->truncated);
}

TEST_F(ExclusionGenerationTest, EmptiedAndDoesNotLookAtFurtherInputs) {
  CutSetsOf("AND(open, closed, AND(A, B))");
  EXPECT_FALSE(builder.Node("A")->cutSetsDone);
  EXPECT_FALSE(root->truncated);
}

TEST_F(ExclusionGenerationTest, GateEmptiedByExclusionEmptiesAnAndGateAbove) {
  // What excludes itself never holds, and nothing holds together with it.
  EXPECT_EQ(CutSetsOf("Top=AND(A, AND(open, closed))"), "");
  EXPECT_EQ(Warnings().size(), 1U);
}

TEST_F(ExclusionGenerationTest, GateEmptiedByExclusionIsNoInputOfAnOrGate) {
  EXPECT_EQ(CutSetsOf("Top=OR(A, AND(open, closed))"), "A");
}

// Modules

TEST_P(BothRoadsTest, ModuleCountsAsOneEvent) {
  builder.Tree("Top=AND(A, M=OR(B, C))");
  MakeModule("M");
  EXPECT_EQ(CutSetsOf("Top"), "A MOD: M");
  EXPECT_TRUE(root->cutSets.begin()->second->hasModule);
  EXPECT_EQ(Gate("M").moduleEvent->moduleCutSets.size(), 2U);
}

TEST_P(BothRoadsTest, ModuleAloneIsTheCutSet) {
  builder.Tree("Top=AND(M=AND(B, C), A)");
  MakeModule("M");
  EXPECT_EQ(CutSetsOf("Top"), "A MOD: M");
}

TEST_P(BothRoadsTest, ModulesJoinASum) {
  builder.Tree("Top=OR(A, M=AND(B, C))");
  MakeModule("M");
  EXPECT_EQ(CutSetsOf("Top"), "A; MOD: M");
  EXPECT_EQ(root->maxOrder, 1);
}

TEST_P(BothRoadsTest, ModuleWithoutEventIsPassedOver) {
  builder.Tree("Top=AND(A, M=OR(B, C))");
  Gate("M").isModule = true;
  EXPECT_EQ(CutSetsOf("Top"), "A");
  EXPECT_THAT(Warnings(), IsEmpty());
}

TEST_P(BothRoadsTest, SequenceGateWithCutSetsIgnoresAModule) {
  builder.Tree("Top=PAND(A, M=OR(B, C))");
  MakeModule("M");
  EXPECT_EQ(CutSetsOf("Top"), "A");
}

TEST_P(BothRoadsTest, ProductWithAModuleAboveTheLimitLeavesNoMark) {
  Config::Instance().maxCutSetSize = 1;
  builder.Tree("Top=AND(M=OR(A, B), N=OR(C, D))");
  MakeModule("M");
  MakeModule("N");
  EXPECT_EQ(CutSetsOf("Top"), "");
  EXPECT_FALSE(root->truncated);
}

TEST_P(BothRoadsTest, ProxyOfAModuleStandsForItsEvent) {
  builder.Tree("Top=AND(A, IN(M=OR(B, C)))");
  MakeModule("M");
  EXPECT_EQ(CutSetsOf("Top"), "A MOD: M");
}

TEST_F(CutSetGenerationTest, ProxyOfAModuleHasItsEventAsCutSet) {
  builder.Tree("P=IN(M=OR(B, C))");
  MakeModule("M");
  EXPECT_EQ(CutSetsOf("P"), "MOD: M");
}

TEST_P(BothRoadsTest, ModuleThatHoldsAModuleKnowsIt) {
  builder.Tree("Top=OR(M=AND(A, N=OR(B, C)), D)");
  MakeModule("N");
  MakeModule("M");
  EXPECT_EQ(CutSetsOf("Top"), "D; MOD: M");
  EXPECT_TRUE(Gate("M").moduleEvent->hasNestedModules);
  EXPECT_FALSE(Gate("N").moduleEvent->hasNestedModules);
  EXPECT_EQ(MembersOf(*Gate("M").moduleEvent->moduleCutSets.front()), "A MOD: N");
}

TEST_P(BothRoadsTest, EmptyModuleCountsAsAnEventToo) {
  builder.Tree("Top=AND(A, M=OR())");
  MakeModule("M");
  EXPECT_EQ(CutSetsOf("Top"), "A MOD: M");
}

TEST_F(ExclusionGenerationTest, ModuleOrderIsThatOfTheLatestAttempt) {
  Config::Instance().maxCutSetSize = 2;
  builder.Tree("Top=AND(G=OR(A, AND(B, C)), M=OR(D, E))");
  MakeModule("M");
  EXPECT_EQ(CutSetsOf("Top"), "A MOD: M");
  EXPECT_EQ(root->maxOrder, 3) << "The attempt that failed the limit was the last.";
  EXPECT_FALSE(root->truncated);
}

TEST_F(ExclusionGenerationTest, ConflictWithAModuleIsWarnedOfInItsName) {
  builder.Tree("Top=AND(open, M=OR(A, B))");
  MakeModule("M");
  Gate("M").moduleEvent->owner = pump;
  EXPECT_EQ(CutSetsOf("Top"), "");
  EXPECT_THAT(Warnings(),
              ElementsAre("Warning: removing cut set with mutually exclusive events: 1{MOD: M}"));
}

// Single operations

TEST_F(CutSetGenerationTest, RefusedCutSetIsNotListed) {
  const auto gate = MakeGate(NodeType::Or, "G", nullptr);
  Event("A").prime = 6.0;
  Event("B").prime = 10.0;
  Event("C").prime = 4.0;
  Event("D").prime = 15.0;
  auto first = std::make_unique<CutSet>();
  first->AddEvent(Event("A"));
  first->AddEvent(Event("B"));
  auto second = std::make_unique<CutSet>();
  second->AddEvent(Event("C"));
  second->AddEvent(Event("D"));
  EXPECT_TRUE(gate->AddCutSet(std::move(first), true));
  EXPECT_EQ(gate->GetIndex().lists.size(), 2U);
  EXPECT_FALSE(gate->AddCutSet(std::move(second), false));
  EXPECT_EQ(gate->cutSets.size(), 1U);
  EXPECT_EQ(gate->GetIndex().lists.size(), 2U);
  EXPECT_EQ(gate->GetIndex().Find(6.0, 2)->GetCount(), 1);
}

TEST_F(CutSetGenerationTest, CheckedCutSetReplacesItsSupersets) {
  const auto gate = MakeGate(NodeType::Or, "G", nullptr);
  for (const char* superset : {"B", "C", "D"}) {
    auto cutSet = std::make_unique<CutSet>();
    cutSet->AddEvent(Event("A"));
    cutSet->AddEvent(Event(superset));
    EXPECT_TRUE(gate->AddCutSet(std::move(cutSet), false));
  }
  auto small = std::make_unique<CutSet>();
  small->AddEvent(Event("A"));
  EXPECT_TRUE(gate->AddCutSet(std::move(small), false));
  EXPECT_EQ(TextOf(gate->cutSets), "A");
  EXPECT_EQ(gate->GetIndex().Find(Event("B").prime, 2)->GetCount(), 0);

  auto large = std::make_unique<CutSet>();
  large->AddEvent(Event("A"));
  large->AddEvent(Event("B"));
  EXPECT_TRUE(gate->IsSubsumed(*large));
  EXPECT_FALSE(gate->AddCutSet(std::move(large), false));
}

TEST_F(CutSetGenerationTest, CutSetLeavesTheIndexAndStaysOnTheGate) {
  CutSetsOf("G=OR(A, B)");
  const CutSet& cutSet = *root->cutSets.begin()->second;
  Gate("G").GetIndex();
  Gate("G").RemoveFromIndex(cutSet);
  EXPECT_EQ(Gate("G").GetIndex().Find(Event("A").prime, 1)->GetCount(), 0);
  EXPECT_EQ(root->cutSets.size(), 2U);
}

TEST_P(BothRoadsTest, ResetLeavesNothingBehind) {
  Config::Instance().maxCutSetSize = 1;
  CutSetsOf("Top=OR(A, G=AND(B, C))");
  root->ResetCutSets();
  for (const char* name : {"Top", "A", "G", "B"}) {
    const auto node = builder.Node(name);
    EXPECT_TRUE(node->cutSets.empty()) << name;
    EXPECT_FALSE(node->cutSetsDone) << name;
    EXPECT_FALSE(node->truncated) << name;
    EXPECT_EQ(node->maxOrder, 0) << name;
  }
  EXPECT_FALSE(Gate("Top").primeIndex);
  Config::Instance().maxCutSetSize = 0;
  root->GenerateCutSets();
  EXPECT_EQ(TextOf(root->cutSets), "A; B C");
}

TEST_F(CutSetGenerationTest, CutSetsAreCopiedToAnotherNode) {
  CutSetsOf("OR(A, AND(B, C))");
  const auto target = MakeGate(NodeType::Or, "target", nullptr);
  root->CopyCutSetsTo(*target);
  EXPECT_EQ(TextOf(target->cutSets), "A; B C");
  EXPECT_EQ(root->cutSets.size(), 2U);
}

}  // namespace
}  // namespace FTS
