#include "analysis/CutSet.h"
#include "faulttree/CircleNode.h"
#include "faulttree/Gates.h"
#include "model/GraphRelease.h"
#include "support/ProcessStateTest.h"
#include "support/TreeBuilder.h"

namespace FTS {
namespace {

class GraphReleaseTest : public ProcessStateTest {
 protected:
  static int LivingNodes() {
    return NodeCounters::Instance().nodesMade - NodeCounters::Instance().nodesDestroyed;
  }
};

TEST_F(GraphReleaseTest, FreesLoops) {
  const int before = LivingNodes();
  ReleaseGraphs({Tree("G=OR(A, IN(AND(B, G)), NOT(G))")});
  EXPECT_EQ(LivingNodes(), before);
}

TEST_F(GraphReleaseTest, FreesLoopsInAnyState) {
  const int before = LivingNodes();
  {
    auto root = Tree("G=OR(A, IN(G))");
    root->CopyChildrenToState("contracted");
    root->ClearChildren();
    ReleaseGraphs({root});
  }
  EXPECT_EQ(LivingNodes(), before);
}

TEST_F(GraphReleaseTest, FreesLoopsOfProxiesInAnyState) {
  const int before = LivingNodes();
  {
    auto root = Tree("P=PROXY(Q=PROXY(P))");
    root->SetCurrentState("contracted");
    ReleaseGraphs({root});
  }
  EXPECT_EQ(LivingNodes(), before);
}

TEST_F(GraphReleaseTest, NodesThatAreHeldLoseTheirChildrenOnly) {
  TreeBuilder builder;
  const auto root = builder.Tree("OR(H=AND(A, B), C)");
  const auto held = builder.Node("H");
  ReleaseGraphs({root});
  EXPECT_EQ(ShapeOf(held), "AND()");
  EXPECT_EQ(ShapeOf(root), "OR()");
}

TEST_F(GraphReleaseTest, EventsKeepWhatTheyHold) {
  TreeBuilder builder;
  const auto root = builder.Tree("OR(A)");
  const auto complement = builder.Event("A")->GetComplement();
  ReleaseGraphs({root});
  EXPECT_EQ(builder.Event("A")->complement, complement);
}

TEST_F(GraphReleaseTest, FreesCirclesThatEncloseEachOther) {
  const int before = LivingNodes();
  {
    auto root = Tree("OR(A)");
    root->circle = std::make_shared<CircleNode>(*root, nullptr);
    root->circle->enclosing = std::make_shared<CircleNode>(*root, nullptr);
    root->circle->enclosing->enclosing = root->circle;
    ReleaseGraphs({root});
  }
  EXPECT_EQ(LivingNodes(), before);
}

TEST_F(GraphReleaseTest, FreesAnAbandonedClone) {
  const int before = LivingNodes();
  {
    const auto root = Tree("G=OR(A, IN(G))");
    root->Clone(nullptr, CloneMode::NewNodes, true, nullptr);  // Whose memo nobody clears.
    ReleaseGraphs({root});
  }
  EXPECT_EQ(LivingNodes(), before);
}

TEST_F(GraphReleaseTest, NullRootsArePassedBy) {
  const int before = LivingNodes();
  ReleaseGraphs({nullptr, Tree("OR(A)"), nullptr});
  EXPECT_EQ(LivingNodes(), before);
}

TEST_F(GraphReleaseTest, DeepGraphsNeedNoDeepStack) {
  const int before = LivingNodes();
  {
    FaultTreeNode::Pointer root = std::make_shared<OrGate>("", nullptr);
    for (int i = 0; i < 300000; ++i) {
      auto above = std::make_shared<OrGate>("", nullptr);
      above->AddChild(root);
      root = std::move(above);
    }
    ReleaseGraphs({std::move(root)});
  }
  EXPECT_EQ(LivingNodes(), before);
}

TEST_F(GraphReleaseTest, ForgottenAnalysisLeavesIdentityAndLevel) {
  BasicEvent event("stuck", nullptr, true);
  event.safetyRequirement = 3;
  event.GetComplement();
  const double prime = event.prime;
  ForgetAnalysis(event);
  EXPECT_EQ(event.complement, nullptr);
  EXPECT_EQ(event.prime, prime);
  EXPECT_EQ(event.safetyRequirement, 3);
}

}  // namespace
}  // namespace FTS
