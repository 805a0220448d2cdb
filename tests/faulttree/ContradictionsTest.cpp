#include <gmock/gmock.h>

#include "app/DiagnosticLog.h"
#include "faulttree/BasicEvent.h"
#include "faulttree/CommonCauseNodes.h"
#include "faulttree/Marks.h"
#include "model/CCF.h"
#include "support/CaseName.h"
#include "support/ProcessStateTest.h"
#include "support/TreeBuilder.h"

namespace FTS {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

const std::vector<std::string>& Warnings() { return DiagnosticLog::Instance().Warnings(); }

void Find(FaultTreeNode& root) {
  OnceMarks marks;
  root.FindContradictions(marks);
}

struct DeadCase {
  const char* name;
  const char* before;  // D is dead: a gate without inputs.
  const char* after;
  bool rootIsDead;
};

class DeadInputTest : public ProcessStateTest, public ::testing::WithParamInterface<DeadCase> {};

TEST_P(DeadInputTest, IsJudgedByTheGate) {
  const auto top = Tree(GetParam().before);
  Find(*top);
  EXPECT_EQ(ShapeOf(top), GetParam().after);
  EXPECT_EQ(top->contradictory, GetParam().rootIsDead);
}

INSTANTIATE_TEST_SUITE_P(
    Gates, DeadInputTest,
    ::testing::Values(
        DeadCase{"OrLosesIt", "OR(A, D=AND(), B)", "OR(A, B)", false},
        DeadCase{"OrLosesEach", "OR(D=AND(), A, D, OR(D))", "OR(A)", false},
        DeadCase{"OrOfNothingElseDies", "OR(D=AND())", "OR()", true},
        DeadCase{"AndDies", "AND(A, D=OR())", "AND(A, OR())", true},
        DeadCase{"PandDies", "PAND(A, D=OR())", "PAND(A, OR())", true},
        DeadCase{"SandDies", "SAND(A, D=OR())", "SAND(A, OR())", true},
        DeadCase{"PorLosesAnOtherThanTheFirst", "POR(A, D=OR(), B)", "POR(A, B)", false},
        DeadCase{"PorDiesOfItsFirst", "POR(D=OR(), A)", "POR(OR(), A)", true},
        DeadCase{"XorTakesNoNotice", "XOR(A, D=OR())", "XOR(A, OR())", false},
        DeadCase{"ProxyDies", "PROXY(D=OR())", "PROXY(OR())", true},
        DeadCase{"NegationHolds", "NOT(D=OR())", "NOT(OR())", false},
        DeadCase{"EmptyProxyLives", "AND(A, PROXY())", "AND(A, PROXY())", false},
        DeadCase{"ChildlessRootDies", "OR()", "OR()", true},
        DeadCase{"DeathTravelsUp", "OR(AND(A, PROXY(AND(B, D=OR()))), C)", "OR(C)", false},
        DeadCase{"DeathStopsAtNegation", "AND(A, NOT(AND(B, D=OR())))", "AND(A, NOT(AND(B, OR())))",
                 false},
        DeadCase{"LivingTreeStays", "OR(A, AND(B, NOT(A)), XOR(A, B))",
                 "OR(A, AND(B, NOT(A)), XOR(A, B))", false}),
    CaseName);

using ContradictionsTest = ProcessStateTest;

TEST_F(ContradictionsTest, LivingTreeGivesNoWarning) {
  Find(*Tree("OR(A, AND(B, NOT(A)))"));
  EXPECT_THAT(Warnings(), IsEmpty());
}

TEST_F(ContradictionsTest, DeadNodesAreReportedOnceFromBelow) {
  Find(*Tree("Top=OR(Q=PROXY(P=AND(A, D=OR())), R=AND(D, B), C)"));
  EXPECT_THAT(Warnings(), ElementsAre("Contradiction found: D", "Contradiction found: P",
                                      "Contradiction found: Q", "Contradiction found: R"));
}

TEST_F(ContradictionsTest, GateThatLosesAllInputsIsReportedOnce) {
  Find(*Tree("Top=OR(D=OR())"));
  EXPECT_THAT(Warnings(), ElementsAre("Contradiction found: D", "Contradiction found: Top"));
}

TEST_F(ContradictionsTest, SharedDeadNodeFallsFromEachParent) {
  const auto top = Tree("OR(A, AND(B, OR(C, D=AND())), OR(D, B))");
  Find(*top);
  EXPECT_EQ(ShapeOf(top), "OR(A, AND(B, OR(C)), OR(B))");
}

TEST_F(ContradictionsTest, MarkedEventWarnsAndKillsItsGate) {
  TreeBuilder builder;
  const auto top = builder.Tree("Top=AND(A, B)");
  builder.Event("B")->contradictory = true;
  Find(*top);
  EXPECT_THAT(Warnings(), ElementsAre("Contradiction found: B", "Contradiction found: Top"));
}

TEST_F(ContradictionsTest, GateMarkedBeforeIsReportedWithoutALookAtItsInputs) {
  const auto top = Tree("Top=AND(A, D=OR())");
  top->contradictory = true;
  Find(*top);
  EXPECT_THAT(Warnings(), ElementsAre("Contradiction found: Top"));
}

TEST_F(ContradictionsTest, CommonCauseEventTakesTheMarkOfTheActualOne) {
  PCCFNode event("fire here", nullptr);
  event.actual = std::make_shared<CCF>("fire", nullptr, nullptr, true);
  event.actual->contradictory = true;
  Find(event);
  EXPECT_TRUE(event.contradictory);
  EXPECT_THAT(Warnings(),
              ElementsAre("Contradiction found: fire", "Contradiction found: fire here"));
}

TEST_F(ContradictionsTest, CommonCauseEventWithoutAnActualOneLives) {
  PCCFNode event("fire here", nullptr);
  Find(event);
  EXPECT_FALSE(event.contradictory);
}

TEST_F(ContradictionsTest, LadderOfSharedGatesIsWalkedOnce) {
  TreeBuilder builder;
  auto rung = builder.Tree("OR(A, B)");
  for (int i = 0; i < 64; ++i) {  // 2^64 paths.
    const auto left = Tree("AND()");
    const auto right = Tree("AND()");
    left->AddChild(rung);
    right->AddChild(rung);
    rung = Tree("OR()");
    rung->AddChild(left);
    rung->AddChild(right);
  }
  Find(*rung);
  EXPECT_FALSE(rung->contradictory);
}

}  // namespace
}  // namespace FTS
