#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>

#include "analysis/BDD.h"
#include "analysis/CutSet.h"
#include "analysis/FaultTree.h"
#include "analysis/ModuleEvent.h"
#include "app/Config.h"
#include "faulttree/FaultTreeGate.h"
#include "support/CapturedStreams.h"
#include "support/CaseName.h"
#include "support/CutSetText.h"
#include "support/ProcessStateTest.h"
#include "support/TreeBuilder.h"

namespace FTS {
namespace {

class BDDGenerationTest : public ProcessStateTest {
 protected:
  /// What is printed.
  std::string Generate(const std::string& text) {
    tree = std::make_unique<FaultTree>(builder.Tree(text));
    const CapturedStreams streams;
    tree->GenerateBDDCutSets();
    EXPECT_EQ(streams.Errors(), "");
    return streams.Output();
  }

  /// The diagram of a tree's top gate as `Print` shows it.
  std::string Diagram(const std::string& text) {
    const auto top = builder.Tree(text);
    top->ClearBDD();
    top->AssignOrderWeight(1.0F);
    std::ostringstream stream;
    top->BuildBDD(true)->Print(stream, 0);
    return stream.str();
  }

  TreeBuilder builder;
  std::unique_ptr<FaultTree> tree;
};

TEST_F(BDDGenerationTest, EarlierInputsAreNearerToTheRoot) {
  EXPECT_EQ(Diagram("OR(A, B)"),
            "BDDNODE: A\n"
            "   BDDTERMINAL: 1\n"
            "   BDDNODE: B\n"
            "      BDDTERMINAL: 1\n"
            "      BDDTERMINAL: 0\n");
}

TEST_F(BDDGenerationTest, EventsHighInTheTreeAreNearerToTheRoot) {
  EXPECT_EQ(Diagram("AND(OR(A, B), C)"),
            "BDDNODE: C\n"
            "   BDDNODE: A\n"
            "      BDDTERMINAL: 1\n"
            "      BDDNODE: B\n"
            "         BDDTERMINAL: 1\n"
            "         BDDTERMINAL: 0\n"
            "   BDDTERMINAL: 0\n");
}

TEST_F(BDDGenerationTest, ComplementIsTrueWhereItDoesNotOccur) {
  EXPECT_EQ(Diagram("OR(~A)"),
            "BDDNODE: \xAC"
            "A\n"
            "   BDDTERMINAL: 0\n"
            "   BDDTERMINAL: 1\n");
}

TEST_F(BDDGenerationTest, EventAndItsComplementAreTwoVariables) {
  EXPECT_EQ(Diagram("AND(A, ~A)"),
            "BDDNODE: A\n"
            "   BDDNODE: \xAC"
            "A\n"
            "      BDDTERMINAL: 0\n"
            "      BDDTERMINAL: 1\n"
            "   BDDTERMINAL: 0\n");
}

TEST_F(BDDGenerationTest, CallersMayChangeTheirCopies) {
  const auto top = builder.Tree("AND(A, B)");
  top->AssignOrderWeight(1.0F);
  auto first = top->BuildBDD(true);
  static_cast<BDDNode&>(*first).high = std::make_unique<BDDTerminal>(false);
  EXPECT_EQ(top->BuildBDD(true)->CountNodes(), 5);
  EXPECT_EQ(first->CountNodes(), 3);
}

struct SetsCase {
  const char* name;
  const char* tree;
  const char* cutSets;
  int nodes;
};

class BDDCutSetsTest : public BDDGenerationTest, public ::testing::WithParamInterface<SetsCase> {};

TEST_P(BDDCutSetsTest, CollectsTheMinimalCutSets) {
  Generate(GetParam().tree);
  tree->CollectCutSets();
  EXPECT_EQ(TextOf(tree->cutSets), GetParam().cutSets);
}

TEST_P(BDDCutSetsTest, TellsTheSizeOfTheDiagramInSilentRunsToo) {
  Config::Instance().runSilent = true;
  EXPECT_EQ(Generate(GetParam().tree), "      " + std::to_string(GetParam().nodes) +
                                           " nodes in tree\n      Collecting cut sets...\n");
}

INSTANTIATE_TEST_SUITE_P(
    Trees, BDDCutSetsTest,
    ::testing::Values(SetsCase{"OneEvent", "OR(A)", "A", 3},
                      SetsCase{"EventAtTheRoot", "IN(A)", "A", 3},
                      SetsCase{"Or", "OR(A, B)", "A; B", 5}, SetsCase{"And", "AND(A, B)", "A B", 5},
                      SetsCase{"EqualEvents", "AND(A, A)", "A", 3},
                      SetsCase{"AbsorbedBehind", "OR(A, AND(A, B))", "A", 3},
                      SetsCase{"AbsorbedBefore", "OR(AND(A, B), A)", "A", 3},
                      SetsCase{"SharedGate", "AND(OR(A, G=AND(B, C)), OR(D, G))", "A D; B C", 19},
                      SetsCase{"Proxies", "OUT(OR(PROXY(A), IN(AND(B, C))))", "A; B C", 7},
                      SetsCase{"FirstInputOfPand", "PAND(A, B)", "A", 3},
                      SetsCase{"FirstInputOfSand", "SAND(A, B)", "A", 3},
                      SetsCase{"FirstInputOfPor", "POR(A, B)", "A", 3},
                      SetsCase{"FirstInputOfXor", "XOR(OR(A, B), C)", "A; B", 5},
                      SetsCase{"WithAComplement", "AND(A, ~B)", "A", 5}),
    CaseName);

TEST_F(BDDGenerationTest, HighestOrderOfTheTreeIsThatOfItsTopGate) {
  Generate("OR(A, AND(B, C))");
  EXPECT_EQ(tree->maxOrder, 2);
}

TEST_F(BDDGenerationTest, OrderLimitLeavesNoMark) {
  Config::Instance().maxCutSetSize = 1;
  Generate("AND(A, B)");
  EXPECT_FALSE(tree->root->IsTruncated());
  tree->CollectCutSets();
  EXPECT_TRUE(tree->cutSets.empty());
}

TEST_F(BDDGenerationTest, NothingIsLeftOfTheDiagramsAfterwards) {
  Generate("OR(A, G=AND(B, C))");
  for (const char* name : {"A", "B", "G"}) EXPECT_FALSE(builder.Node(name)->bdd) << name;
  EXPECT_FALSE(tree->root->bdd);
}

TEST_F(BDDGenerationTest, RepeatedGenerationFollowsTheTree) {
  Generate("OR(A, AND(B, C))");
  tree->CollectCutSets();
  EXPECT_EQ(TextOf(tree->cutSets), "A; B C");
  tree->root->RemoveChild(*builder.Node("A"));
  FaultTree again(tree->root);
  const CapturedStreams streams;
  again.GenerateBDDCutSets();
  again.CollectCutSets();
  EXPECT_EQ(TextOf(again.cutSets), "B C");
}

TEST_F(BDDGenerationTest, ModulesAreVariablesOfTheDiagramsAbove) {
  tree = std::make_unique<FaultTree>(builder.Tree("OR(G=AND(A, B), H=AND(C, D))"));
  const CapturedStreams streams;
  EXPECT_EQ(tree->Modularise(true), 3);
  tree->GenerateBDDCutSets();
  EXPECT_EQ(streams.Output(), "      5 nodes in tree\n      Collecting cut sets...\n");
  EXPECT_EQ(TextOf(tree->root->cutSets), "MOD: G; MOD: H");
  tree->CollectCutSets();
  EXPECT_EQ(TextOf(tree->cutSets), "A B; C D");
}

TEST_F(BDDGenerationTest, VariableOfAModuleHasTheWeightOfItsGate) {
  tree = std::make_unique<FaultTree>(builder.Tree("OR(X, G=AND(A, B), Y)"));
  const CapturedStreams streams;
  tree->Modularise(true);
  tree->root->AssignOrderWeight(1.0F);
  EXPECT_EQ(builder.Node("G")->moduleEvent->orderWeight, 1.0F * 0.5F + 2.0F * 0.001F);
  std::ostringstream printed;
  tree->root->BuildBDD(true)->Print(printed, 0);
  EXPECT_EQ(printed.str(),
            "BDDNODE: X\n"
            "   BDDTERMINAL: 1\n"
            "   BDDNODE: MOD: G\n"
            "      BDDTERMINAL: 1\n"
            "      BDDNODE: Y\n"
            "         BDDTERMINAL: 1\n"
            "         BDDTERMINAL: 0\n");
}

TEST_F(BDDGenerationTest, TreesWithoutTopGateHaveNoDiagram) {
  FaultTree rootless(nullptr);
  const CapturedStreams streams;
  rootless.GenerateBDDCutSets();
  EXPECT_EQ(streams.Output(), "");
  EXPECT_TRUE(rootless.cutSets.empty());
}

}  // namespace
}  // namespace FTS
