#include <gtest/gtest.h>

#include "faulttree/Gates.h"
#include "faulttree/Marks.h"
#include "platform/BigStack.h"
#include "support/ProcessStateTest.h"
#include "support/TreeBuilder.h"

namespace FTS {
namespace {

using MarksTest = ProcessStateTest;

TEST_F(MarksTest, NodeIsEnteredOncePerWalk) {
  const OrGate node("", nullptr);
  {
    OnceMarks first;
    EXPECT_TRUE(first.Enter(node));
    EXPECT_FALSE(first.Enter(node));
  }
  OnceMarks second;
  EXPECT_TRUE(second.Enter(node));
}

TEST_F(MarksTest, PathMarkGoesWithTheObjectThatSetIt) {
  const OrGate node("", nullptr);
  {
    const OnPathMark outer(node);
    EXPECT_TRUE(outer.Entered());
    {
      const OnPathMark inner(node);
      EXPECT_FALSE(inner.Entered());
    }
    EXPECT_TRUE(node.visited);
  }
  EXPECT_FALSE(node.visited);
}

class ClearingTest : public ProcessStateTest {
 protected:
  ClearingTest() : graph(Tree("G=OR(A, S=AND(B, PROXY(G)), NOT(S))")) {}

  template <typename Field>
  void SetAll(Field field) {
    std::map<int, FaultTreeNode*> nodes;
    graph->CollectNodes(nodes);
    for (const auto& [id, node] : nodes) node->*field = true;
  }

  template <typename Field>
  int CountSet(Field field) {
    std::map<int, FaultTreeNode*> nodes;
    graph->CollectNodes(nodes);
    int count = 0;
    for (const auto& [id, node] : nodes) count += node->*field ? 1 : 0;
    return count;
  }

  ScopedGraph graph;
};

TEST_F(ClearingTest, VisitedIsClearedInAGraphWithLoops) {
  SetAll(&FaultTreeNode::visited);
  ASSERT_EQ(CountSet(&FaultTreeNode::visited), 6);
  graph->ClearVisited();
  EXPECT_EQ(CountSet(&FaultTreeNode::visited), 0);
}

TEST_F(ClearingTest, ResolvedIsClearedInAGraphWithLoops) {
  SetAll(&FaultTreeNode::resolved);
  graph->ClearResolved();
  EXPECT_EQ(CountSet(&FaultTreeNode::resolved), 0);
}

TEST_F(ClearingTest, ContradictionsAreClearedInAGraphWithLoops) {
  SetAll(&FaultTreeNode::contradictory);
  graph->ClearContradiction();
  EXPECT_EQ(CountSet(&FaultTreeNode::contradictory), 0);
}

TEST_F(ClearingTest, OtherMarksStay) {
  SetAll(&FaultTreeNode::resolved);
  graph->ClearVisited();
  graph->ClearContradiction();
  EXPECT_EQ(CountSet(&FaultTreeNode::resolved), 6);
}

TEST_F(MarksTest, DeepGraphIsClearedWithoutADeepStack) {
  RunOnBigStack([] {  // The nodes die one inside the other.
    FaultTreeNode::Pointer top = std::make_shared<OrGate>("", nullptr);
    for (int depth = 0; depth < 200000; ++depth) {
      const auto above = std::make_shared<OrGate>("", nullptr);
      above->AddChild(top);
      above->visited = true;
      top = above;
    }
    top->ClearVisited();
    EXPECT_FALSE(top->GetChild(0)->visited);
  });
}

}  // namespace
}  // namespace FTS
