#include <gtest/gtest.h>

#include "faulttree/FaultTreeGate.h"
#include "faulttree/ProxyNode.h"
#include "support/ProcessStateTest.h"
#include "support/TreeBuilder.h"

namespace FTS {
namespace {

using StatesTest = ProcessStateTest;

TEST_F(StatesTest, NodesStartInTheDefaultState) {
  EXPECT_EQ(Tree("A")->state, "default");
  EXPECT_EQ(Tree("OR()")->state, "default");
}

TEST_F(StatesTest, UnknownStateOfAGateHasNoChildren) {
  const auto top = Tree("OR(A, B)");
  top->SetCurrentState("degraded");
  EXPECT_EQ(top->GetChildCount(), 0);
  EXPECT_EQ(top->state, "degraded");
}

TEST_F(StatesTest, ProxyFindsItsChildAgainInTheOldState) {
  const auto proxy = Tree("PROXY(A)");
  proxy->SetCurrentState("degraded");
  EXPECT_EQ(proxy->GetChildCount(), 0);
  proxy->SetCurrentState("default");
  EXPECT_EQ(ShapeOf(proxy), "PROXY(A)");
}

TEST_F(StatesTest, SelectingGoesOnIntoTheChildrenOfTheStateSelected) {
  TreeBuilder builder;
  const auto top = builder.Tree("OR(X=AND(A))");
  top->SetCurrentState("degraded");
  top->AddChild(builder.Tree("Y=AND(B)"));
  top->SetCurrentState("default");
  top->SetCurrentState("degraded");
  EXPECT_EQ(builder.Node("Y")->state, "degraded");
  EXPECT_EQ(builder.Node("X")->state, "default");
}

TEST_F(StatesTest, SelectingReachesEventsToo) {
  TreeBuilder builder;
  const auto top = builder.Tree("OR(A)");
  top->CopyChildrenToState("degraded");
  EXPECT_EQ(builder.Node("A")->state, "degraded");
  top->SetCurrentState("default");
  EXPECT_EQ(builder.Node("A")->state, "default");
}

TEST_F(StatesTest, CopyHoldsTheSameChildrenAndIsCurrent) {
  const auto top = Tree("OR(A, PROXY(AND(B, C)))");
  top->CopyChildrenToState("contracted");
  EXPECT_EQ(ShapeOf(top), "OR(A, PROXY(AND(B, C)))");
  EXPECT_EQ(top->state, "contracted");
  EXPECT_EQ(top->GetChild(1)->GetChild(0)->state, "contracted");
}

TEST_F(StatesTest, ChangesOfTheCopyLeaveTheOldStateAlone) {
  const auto top = Tree("OR(A, PROXY(AND(B, C)))");
  top->CopyChildrenToState("contracted");
  FaultTreeNode& proxy = *top->GetChild(1);
  proxy.GetChild(0)->ClearChildren();
  proxy.ClearChildren();
  top->RemoveChild(*top->GetChild(0));
  EXPECT_EQ(ShapeOf(top), "OR(PROXY())");
  top->SetCurrentState("default");
  EXPECT_EQ(ShapeOf(top), "OR(A, PROXY(AND(B, C)))");
}

TEST_F(StatesTest, ListThatAGateHasAlreadyIsKept) {
  TreeBuilder builder;
  const auto top = builder.Tree("OR(A)");
  top->CopyChildrenToState("contracted");
  top->AddChild(builder.Tree("B"));
  top->SetCurrentState("default");
  top->CopyChildrenToState("contracted");
  EXPECT_EQ(ShapeOf(top), "OR(A, B)");
}

TEST_F(StatesTest, CopyingGoesOnIntoTheChildrenOfTheStateLeft) {
  TreeBuilder builder;
  const auto top = builder.Tree("OR(X=AND(A))");
  top->SetCurrentState("contracted");
  top->SetCurrentState("default");
  top->CopyChildrenToState("contracted");
  EXPECT_EQ(top->GetChildCount(), 0);
  EXPECT_EQ(builder.Node("X")->state, "contracted");
}

TEST_F(StatesTest, ProxyTakesItsChildAlongWhateverItHadThere) {
  const auto proxy = Tree("PROXY(A)");
  proxy->SetCurrentState("contracted");
  proxy->SetCurrentState("default");
  proxy->CopyChildrenToState("contracted");
  EXPECT_EQ(ShapeOf(proxy), "PROXY(A)");
}

TEST_F(StatesTest, LoopsAreWalkedOnce) {
  const ScopedGraph graph(Tree("G=OR(A, PROXY(G))"));
  graph->CopyChildrenToState("contracted");
  EXPECT_EQ(ShapeOf(*graph), "G=OR(A, PROXY(G))");
  EXPECT_EQ(graph->GetChild(1)->state, "contracted");
  graph->SetCurrentState("default");
  EXPECT_EQ(ShapeOf(*graph), "G=OR(A, PROXY(G))");
  EXPECT_EQ(graph->GetChild(1)->state, "default");
}

}  // namespace
}  // namespace FTS
