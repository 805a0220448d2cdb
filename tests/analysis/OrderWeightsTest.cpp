#include <gtest/gtest.h>

#include "analysis/ModuleEvent.h"
#include "faulttree/FaultTreeGate.h"
#include "support/ProcessStateTest.h"
#include "support/RandomNodes.h"
#include "support/TreeBuilder.h"

namespace FTS {
namespace {

using OrderWeightsTest = ProcessStateTest;

TEST_F(OrderWeightsTest, ChildrenGetHalfTheWeightAndTheEarlierOnesMore) {
  TreeBuilder builder;
  builder.Tree("OR(A, B)")->AssignOrderWeight(1.0F);
  EXPECT_EQ(builder.Event("A")->orderWeight, 0.5F + 2.0F * 0.001F);
  EXPECT_EQ(builder.Event("B")->orderWeight, 0.5F + 0.001F);
}

TEST_F(OrderWeightsTest, ProxyHandsDownLikeAGateOfOneInput) {
  TreeBuilder builder;
  builder.Tree("PROXY(A)")->AssignOrderWeight(1.0F);
  EXPECT_EQ(builder.Event("A")->orderWeight, 0.5F + 0.001F);
}

TEST_F(OrderWeightsTest, EventReachedTwiceKeepsTheWeightOfTheLastPath) {
  TreeBuilder builder;
  builder.Tree("OR(A, AND(B, A))")->AssignOrderWeight(1.0F);
  const float gate = 1.0F * 0.5F + 1.0F * 0.001F;
  EXPECT_EQ(builder.Event("A")->orderWeight, gate * 0.5F + 1.0F * 0.001F);
}

TEST_F(OrderWeightsTest, ModuleEventGetsTheWeightOfItsGate) {
  const auto top = Tree("OR(A)");
  top->moduleEvent = std::make_unique<ModuleEvent>(static_cast<FaultTreeGate&>(*top));
  top->AssignOrderWeight(0.75F);
  EXPECT_EQ(top->moduleEvent->orderWeight, 0.75F);
}

void AssignPathByPath(FaultTreeNode& node, float weight) {
  if (node.IsEvent()) static_cast<BasicEvent&>(node).orderWeight = weight;
  const int count = node.GetChildCount();
  for (int i = 0; i < count; ++i) {
    AssignPathByPath(*node.GetChild(i), weight * 0.5F + static_cast<float>(count - i) * 0.001F);
  }
}

TEST_F(OrderWeightsTest, WeightsAreThoseOfAWalkAlongEveryPath) {
  for (unsigned seed = 1; seed <= 200; ++seed) {
    RandomNodes random(seed);
    const auto top = random.MakeAcyclic();
    std::map<double, BasicEvent*> events;
    top->CollectEvents(events);
    AssignPathByPath(*top, 1.0F);
    std::map<double, float> expected;
    for (const auto& [prime, event] : events) {
      expected[prime] = event->orderWeight;
      event->orderWeight = 0.0F;
    }
    top->AssignOrderWeight(1.0F);
    for (const auto& [prime, event] : events) {
      EXPECT_EQ(event->orderWeight, expected[prime])
          << event->name << " in " << ShapeOf(top) << ", seed " << seed;
    }
  }
}

}  // namespace
}  // namespace FTS
