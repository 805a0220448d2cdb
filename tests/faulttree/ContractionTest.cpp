#include <gtest/gtest.h>

#include <string>

#include "app/Config.h"
#include "app/DiagnosticLog.h"
#include "faulttree/CircleNode.h"
#include "faulttree/RefinementPasses.h"
#include "model/Model.h"
#include "support/CaseName.h"
#include "support/ProcessStateTest.h"
#include "support/TreeBuilder.h"

namespace FTS {
namespace {

struct FoldCase {
  const char* name;
  const char* before;
  const char* after;
};

class ContractionTest : public ProcessStateTest {
 protected:
  std::string Contracted(const std::string& text) {
    const auto root = Tree(text, &model);
    root->CopyChildrenToState(ContractedState);
    Contract(model, *root);
    return ShapeOf(root);
  }
  std::string Subcontracted(const std::string& text) {
    const auto root = Tree(text, &model);
    root->CopyChildrenToState(ContractedState);
    Subcontract(*root);
    return ShapeOf(root);
  }

  Model model{0, "m.xml", "m", "", 1.0F, 1.0};
};

class FoldTest : public ContractionTest, public ::testing::WithParamInterface<FoldCase> {};

TEST_P(FoldTest, FoldsTo) { EXPECT_EQ(Contracted(GetParam().before), GetParam().after); }

INSTANTIATE_TEST_SUITE_P(
    Gates, FoldTest,
    ::testing::Values(
        FoldCase{"LikeGatesMerge", "AND(A, AND(B, C))", "AND(A, B, C)"},
        FoldCase{"RootStaysWithOneChild", "OR(AND(A))", "OR(A)"},
        FoldCase{"NegationStays", "OR(NOT(A))", "OR(NOT(A))"},
        FoldCase{"DoubleNegationStays", "OR(NOT(NOT(A)))", "OR(NOT(NOT(A)))"},
        FoldCase{"PriorityGatesFlatten", "PAND(A, PAND(B, C))", "PAND(A, B, C)"},
        FoldCase{"SimultaneousGatesFlatten", "SAND(A, SAND(B, C))", "SAND(A, B, C)"},
        FoldCase{"PriorityOrsFlatten", "POR(A, POR(B, C))", "POR(A, B, C)"},
        FoldCase{"ExclusiveOrsFlatten", "XOR(A, XOR(B, C))", "XOR(A, B, C)"},
        FoldCase{"LonePriorityGateGoes", "OR(PAND(A), B)", "OR(B, A)"},
        FoldCase{"DuplicateIsDropped", "OR(A, OR(A, B))", "OR(A, B)"},
        FoldCase{"OwnRepetitionsStay", "OR(A, A)", "OR(A, A)"},
        FoldCase{"ProxyGivesWay", "OR(IN(A), B)", "OR(B, A)"},
        FoldCase{"LiftedChildrenComeBehindInOrder", "OR(A, OR(B, C), D, OR(E))",
                 "OR(A, D, B, C, E)"},
        FoldCase{"LiftedGateIsUnfoldedInItsTurn", "OR(IN(OR(A, B)), OR(C, D))", "OR(C, D, A, B)"},
        FoldCase{"DeepLikeGatesUnfold", "OR(A, OR(B, OR(C, OR(D, E))))", "OR(A, B, C, D, E)"},
        FoldCase{"GatesOfAnotherTypeStay", "OR(A, AND(B, OR(C, D)))", "OR(A, AND(B, OR(C, D)))"},
        FoldCase{"LoneChildOfLoneChild", "OR(A, AND(OR(B, C)))", "OR(A, B, C)"},
        FoldCase{"ASharedGateIsTakenInOnce", "OR(G=OR(A, B), IN(G), C)", "OR(C, A, B)"},
        FoldCase{"RootProxyTakesItsGrandchild", "IN(OUT(OR(A, B)))", "IN(OR(A, B))"},
        FoldCase{"EmptyLikeGateGoes", "OR(A, OR())", "OR(A)"},
        FoldCase{"EmptyGateOfAnotherTypeGoes", "AND(A, OR())", "AND(A)"},
        FoldCase{"EmptyProxyGoes", "AND(A, PROXY())", "AND(A)"},
        FoldCase{"ProxyOverAnEmptyGateGoes", "AND(A, IN(OR()))", "AND(A)"}),
    CaseName);

class HangingNodeTest : public ContractionTest {};

TEST_F(HangingNodeTest, RemovedProxiesAreNamedInWarnings) {
  EXPECT_EQ(Contracted("OR(A, late-P.in=IN(), late-P.out=OUT(), late-q=EXPORTED(), "
                       "late-P.jump=GOTO(), shock=PCCF())"),
            "OR(A)");
  const std::vector<std::string> expected = {
      "Warning: removing unconnected input deviation - late-P.in",
      "Warning: removing unconnected line node leading to - late-P.out",
      "Warning: removing unconnected line node leading to - late-q",
      "Warning: removing unconnected line node leading to - late-P.jump",
      "Warning: removing unconnected line node leading to - shock",
      "Warning: removing unactivated PCCF - shock"};
  EXPECT_EQ(DiagnosticLog::Instance().Warnings(), expected);
}

TEST_F(HangingNodeTest, ACircleUnderAProxyGoesWhenCirclesAreNotWanted) {
  Config::Instance().removeCircleNodes = true;
  TreeBuilder builder(&model);
  const auto target = builder.Tree("T=OR(A)");
  builder.Define("circle", std::make_shared<CircleNode>(*target, &model));
  const auto root = builder.Tree("OR(B, IN(circle))");
  root->CopyChildrenToState(ContractedState);
  Contract(model, *root);
  EXPECT_EQ(ShapeOf(root), "OR(B)");
  ASSERT_FALSE(DiagnosticLog::Instance().Warnings().empty());
  EXPECT_EQ(DiagnosticLog::Instance().Warnings()[0], "Warning: removing circle node - CIRCLE TO T");
}

TEST_F(HangingNodeTest, SubcontractionKeepsTheStructure) {
  EXPECT_EQ(Subcontracted("AND(A, AND(B))"), "AND(A, AND(B))");
}

TEST_F(HangingNodeTest, SubcontractionRemovesGatesLeftWithoutChildren) {
  EXPECT_EQ(Subcontracted("AND(A, OR(late-P.in=IN()))"), "AND(A)");
  EXPECT_EQ(DiagnosticLog::Instance().Warnings(),
            std::vector<std::string>{"Warning: removing unconnected deviation - late-P.in"});
}

TEST_F(HangingNodeTest, SubcontractionRemovesCirclesWhereTheyAreNotWanted) {
  Config::Instance().removeCircleNodes = true;
  TreeBuilder builder(&model);
  const auto target = builder.Tree("T=OR(A)");
  builder.Define("circle", std::make_shared<CircleNode>(*target, &model));
  const auto root = builder.Tree("OR(B, AND(circle, C))");
  root->CopyChildrenToState(ContractedState);
  Subcontract(*root);
  EXPECT_EQ(ShapeOf(root), "OR(B, AND(C))");
}

TEST_F(HangingNodeTest, SubcontractionRemovesUnactivatedCommonCausesWhateverTheOption) {
  Config::Instance().removeHangingNodes = false;
  EXPECT_EQ(Subcontracted("OR(A, shock=PCCF())"), "OR(A)");
  EXPECT_EQ(DiagnosticLog::Instance().Warnings(),
            std::vector<std::string>{"Warning: removing unactivated PCCF - shock"});
}

}  // namespace
}  // namespace FTS
