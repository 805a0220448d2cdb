#include <gmock/gmock.h>

#include <set>

#include "app/DiagnosticLog.h"
#include "faulttree/FaultTreeGate.h"
#include "faulttree/ProxyNode.h"
#include "support/CaseName.h"
#include "support/ProcessStateTest.h"
#include "support/RandomNodes.h"
#include "support/TreeBuilder.h"

namespace FTS {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

using NegationTest = ProcessStateTest;

struct DualCase {
  const char* name;
  const char* before;
  const char* after;  // Of the node that stands in the place of the root.
};

class DualiseTest : public ProcessStateTest, public ::testing::WithParamInterface<DualCase> {};

TEST_P(DualiseTest, PushesNegationsDown) {
  const auto top = Tree(GetParam().before);
  const auto replacement = top->Dualise(false);
  EXPECT_EQ(ShapeOf(replacement ? replacement : top), GetParam().after);
}

INSTANTIATE_TEST_SUITE_P(
    Trees, DualiseTest,
    ::testing::Values(
        DualCase{"WithoutNegation", "OR(A, AND(B, PROXY(C)))", "OR(A, AND(B, PROXY(C)))"},
        DualCase{"Event", "AND(A, NOT(A))", "AND(A, ~A)"},
        DualCase{"Or", "AND(A, NOT(OR(B, C)))", "AND(A, AND(~B, ~C))"},
        DualCase{"And", "AND(A, NOT(AND(B, C)))", "AND(A, OR(~B, ~C))"},
        DualCase{"Deep", "OR(NOT(AND(A, OR(B, C))))", "OR(OR(~A, AND(~B, ~C)))"},
        DualCase{"Double", "OR(NOT(NOT(A)))", "OR(A)"},
        DualCase{"Triple", "OR(NOT(NOT(NOT(A))))", "OR(~A)"},
        DualCase{"DoubleOverAGate", "OR(NOT(AND(A, NOT(OR(B, C)))))", "OR(OR(~A, OR(B, C)))"},
        DualCase{"BelowAProxy", "OR(PROXY(NOT(A)), B)", "OR(PROXY(~A), B)"},
        DualCase{"OverAProxy", "OR(NOT(PROXY(A)), B)", "OR(PROXY(~A), B)"},
        DualCase{"OfNothing", "OR(NOT(), A)", "OR(NOT(), A)"},
        DualCase{"OfAnEmptyProxy", "OR(NOT(PROXY()), A)", "OR(PROXY(), A)"},
        DualCase{"AtTheRoot", "NOT(OR(A, B))", "AND(~A, ~B)"},
        DualCase{"InOtherGates", "XOR(NOT(A), PAND(NOT(B), SAND(C, NOT(C))))",
                 "XOR(~A, PAND(~B, SAND(C, ~C)))"},
        DualCase{"OfAGateWithoutADual", "OR(NOT(XOR(A, NOT(B))), C)", "OR(XOR(A, ~B), C)"},
        DualCase{"OfAGateNeededBothWays", "AND(G=OR(A, NOT(B)), NOT(G))",
                 "AND(OR(A, ~B), AND(~A, B))"},
        DualCase{"NegatedFirst", "AND(NOT(G=OR(A, NOT(B))), G)", "AND(AND(~A, B), OR(A, ~B))"}),
    CaseName);

TEST_F(NegationTest, DualKeepsTheIdAndTellsWhatItWas) {
  const auto top = Tree("NOT(G=OR(A, H=AND(B, C)))");
  const int id = top->GetChild(0)->GetId();
  const auto dual = top->Dualise(false);
  EXPECT_EQ(dual->GetId(), id);
  EXPECT_EQ(dual->name, "AND {was: G}");
  EXPECT_EQ(dual->GetChild(1)->name, "OR {was: H}");
}

TEST_F(NegationTest, ResultStandsForTheNegationOfTheNode) {
  const auto top = Tree("OR(A, NOT(B))");
  EXPECT_EQ(ShapeOf(top->Dualise(true)), "AND(~A, B)");
  EXPECT_EQ(ShapeOf(top), "OR(A, NOT(B))");
}

TEST_F(NegationTest, ComplementIsMadeOnce) {
  const auto top = Tree("AND(NOT(A), OR(B, NOT(A)))");
  top->Dualise(false);
  EXPECT_EQ(top->GetChild(0), top->GetChild(1)->GetChild(1));
}

class NoDualTest : public ProcessStateTest, public ::testing::WithParamInterface<DualCase> {};

TEST_P(NoDualTest, HasNoReplacementAndWarns) {
  const auto top = Tree(GetParam().before);
  EXPECT_EQ(top->Dualise(true), nullptr);
  EXPECT_THAT(DiagnosticLog::Instance().Warnings(), ElementsAre(GetParam().after));
}

INSTANTIATE_TEST_SUITE_P(
    Gates, NoDualTest,
    ::testing::Values(
        DualCase{"Xor", "G=XOR(A, B)", "Negation of a XOr gate is not supported: G"},
        DualCase{"Pand", "G=PAND(A, B)", "Negation of a PAnd gate is not supported: G"},
        DualCase{"Sand", "G=SAND(A, B)", "Negation of a SAnd gate is not supported: G"},
        DualCase{"Por", "G=POR(A, B)", "Negation of a POr gate is not supported: G"}),
    CaseName);

TEST_F(NegationTest, SharedGateIsReplacedByOneDual) {
  const auto top = Tree("OR(NOT(G=AND(A, B)), AND(C, NOT(G)))");
  top->Dualise(false);
  EXPECT_EQ(ShapeOf(top), "OR(OR(~A, ~B), AND(C, OR(~A, ~B)))");
  EXPECT_EQ(top->GetChild(0), top->GetChild(1)->GetChild(1));
}

TEST_F(NegationTest, WarningOfASharedGateComesOnce) {
  Tree("OR(NOT(G=XOR(A, B)), AND(C, NOT(G)))")->Dualise(false);
  EXPECT_EQ(DiagnosticLog::Instance().ReportedWarnings(), 1);
}

TEST_F(NegationTest, WorksOnTheCurrentStateAndLeavesOthersAlone) {
  const auto top = Tree("OR(NOT(AND(A, B)), C)");
  top->CopyChildrenToState("contracted");
  top->Dualise(false);
  EXPECT_EQ(ShapeOf(top), "OR(OR(~A, ~B), C)");
  EXPECT_EQ(top->GetChild(0)->state, "contracted");
  top->SetCurrentState("default");
  EXPECT_EQ(ShapeOf(top), "OR(NOT(AND(A, B)), C)");
}

TEST_F(NegationTest, ReplacedProxyIsANewOneOfItsClass) {
  const auto top = Tree("OR(P=IN(NOT(A)))");
  const auto source = top->GetChild(0);
  top->Dualise(false);
  const auto& copy = top->GetChild(0);
  EXPECT_NE(copy, source);
  EXPECT_NE(copy->GetId(), source->GetId());
  EXPECT_EQ(copy->name, "P");
  EXPECT_EQ(copy->GetTypeName(), "InputDeviationProxy");
  EXPECT_EQ(ShapeOf(source), "IN(NOT(A))");
}

bool Holds(const FaultTreeNode& node, unsigned assignment) {
  if (node.type == NodeType::Complement) {
    return !Holds(*static_cast<const ComplementEvent&>(node).source, assignment);
  }
  if (node.IsEvent()) return ((assignment >> (node.name[1] - '0')) & 1U) != 0;
  const bool isAnd = node.type == NodeType::And;
  bool result = isAnd;
  for (int i = 0; i < node.GetChildCount(); ++i) {
    const bool child = Holds(*node.GetChild(i), assignment);
    result = isAnd ? result && child : result || child;
  }
  return node.type == NodeType::Not ? !result : result;
}

TEST_F(NegationTest, TruthTableStays) {
  for (unsigned seed = 1; seed <= 300; ++seed) {
    RandomNodes random(seed);
    const auto top = random.MakeLogic();
    const std::string text = ShapeOf(top);
    std::vector<bool> before;
    for (unsigned row = 0; row < 32; ++row) before.push_back(Holds(*top, row));
    const auto negation = top->Dualise(true);
    ASSERT_NE(negation, nullptr);
    const auto replacement = top->Dualise(false);
    const FaultTreeNode::Pointer after = replacement ? replacement : top;
    EXPECT_FALSE(ContainsNot(*after));
    EXPECT_FALSE(ContainsNot(*negation));
    for (unsigned row = 0; row < 32; ++row) {
      EXPECT_EQ(Holds(*after, row), before[row]) << text << ", seed " << seed << ", row " << row;
      EXPECT_NE(Holds(*negation, row), before[row]) << text << ", seed " << seed << ", row " << row;
    }
  }
}

TEST_F(NegationTest, LadderOfSharedGatesStaysALadder) {
  FaultTreeNode::Pointer rung = Tree("OR(A, B)");
  for (int i = 0; i < 64; ++i) {  // 2^64 paths, with even and odd numbers of negations.
    const auto negated = Tree("NOT()");
    negated->AddChild(rung);
    const auto next = i % 2 == 0 ? Tree("AND()") : Tree("OR()");
    next->AddChild(rung);
    next->AddChild(negated);
    rung = next;
  }
  rung->Dualise(false);
  EXPECT_FALSE(ContainsNot(*rung));
  int gates = 0;
  std::set<const FaultTreeNode*> met{rung.get()};
  std::vector<const FaultTreeNode*> pending{rung.get()};
  while (!pending.empty()) {
    const FaultTreeNode* node = pending.back();
    pending.pop_back();
    gates += node->IsGate() ? 1 : 0;
    for (int i = 0; i < node->GetChildCount(); ++i) {
      const FaultTreeNode* child = node->GetChild(i).get();
      if (met.insert(child).second) pending.push_back(child);
    }
  }
  EXPECT_EQ(gates, 1 + 2 * 64);  // Each below the top once as it is and once negated.
}

TEST_F(NegationTest, WithoutNegationNothingIsMade) {
  const auto top = Tree("OR(A, AND(B, PROXY(C)), XOR(A, B))");
  const int made = NodeCounters::Instance().nodesMade;
  EXPECT_EQ(top->Dualise(false), nullptr);
  EXPECT_EQ(NodeCounters::Instance().nodesMade, made);
  EXPECT_THAT(DiagnosticLog::Instance().Warnings(), IsEmpty());
}

}  // namespace
}  // namespace FTS
