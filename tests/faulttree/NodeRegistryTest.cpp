#include <gtest/gtest.h>

#include <limits>

#include "faulttree/Gates.h"
#include "faulttree/NodeRegistry.h"
#include "faulttree/ProxyNode.h"
#include "support/ProcessStateTest.h"
#include "support/ThrownMessage.h"
#include "support/TreeBuilder.h"

namespace FTS {
namespace {

using NodeRegistryTest = ProcessStateTest;

TEST_F(NodeRegistryTest, IdsStartAtOneAndAscend) {
  const OrGate first("", nullptr);
  const AndGate second("", nullptr);
  EXPECT_EQ(first.GetId(), 1);
  EXPECT_EQ(second.GetId(), 2);
}

TEST_F(NodeRegistryTest, GivenIdIsUsedAndLeavesTheCounterAlone) {
  const OrGate given("", nullptr, 70);
  const OrGate next("", nullptr);
  EXPECT_EQ(given.GetId(), 70);
  EXPECT_EQ(next.GetId(), 1);
}

TEST_F(NodeRegistryTest, AnyNegativeIdAsksForANewOne) {
  const OrGate gate("", nullptr, -7);
  EXPECT_EQ(gate.GetId(), 1);
}

TEST_F(NodeRegistryTest, LivingNodeIsFoundById) {
  const OrGate gate("", nullptr);
  EXPECT_EQ(FaultTreeNode::FindById(gate.GetId()), &gate);
  EXPECT_EQ(FaultTreeNode::FindById(99), nullptr);
}

TEST_F(NodeRegistryTest, DeadNodeIsForgotten) {
  auto gate = std::make_shared<OrGate>("", nullptr);
  const int id = gate->GetId();
  gate.reset();
  EXPECT_EQ(FaultTreeNode::FindById(id), nullptr);
}

TEST_F(NodeRegistryTest, EarlierNodeOfAnIdDoesNotTakeTheEntryOfALaterOneAlong) {
  auto earlier = std::make_shared<OrGate>("", nullptr, 5);
  const OrGate later("", nullptr, 5);
  earlier.reset();
  EXPECT_EQ(FaultTreeNode::FindById(5), &later);
}

TEST_F(NodeRegistryTest, IdsEndWithAMessage) {
  constexpr int LastId = std::numeric_limits<int>::max();
  ContinueNodeIdsBehind(LastId - 1);
  const OrGate last("", nullptr);
  EXPECT_EQ(last.GetId(), LastId);
  EXPECT_EQ(ThrownMessage([] { OrGate("", nullptr); }),
            "No ids are left for further nodes. A search can go on from its last saved state.");
  const OrGate given("", nullptr, 5);
  EXPECT_EQ(given.GetId(), 5);
}

TEST_F(NodeRegistryTest, CountsGoRoundAndKeepTheirDifference) {
  constexpr int Most = std::numeric_limits<int>::max();
  NodeCounters& counters = NodeCounters::Instance();
  counters.nodesMade = counters.nodesDestroyed = counters.gatesMade = Most;
  {
    const OrGate gate("", nullptr);
    EXPECT_EQ(counters.nodesMade, std::numeric_limits<int>::min());
    EXPECT_EQ(counters.gatesMade, std::numeric_limits<int>::min());
  }
  EXPECT_EQ(counters.nodesMade, counters.nodesDestroyed);
}

TEST_F(NodeRegistryTest, CountersTellGroupsApart) {
  auto top = Tree("AND(A, NOT(B), OR(A, C))");
  const NodeCounters made = NodeCounters::Instance();
  EXPECT_EQ(made.gatesMade, 2);
  EXPECT_EQ(made.proxiesMade, 1);
  EXPECT_EQ(made.eventsMade, 3);
  EXPECT_EQ(made.nodesMade, 6);
  EXPECT_EQ(made.nodesDestroyed, 0);
  top.reset();
  EXPECT_EQ(NodeCounters::Instance().nodesDestroyed, 6);
}

TEST_F(NodeRegistryTest, ResetStartsIdsAndEventNumbersAgain) {
  Tree("AND(A, B)").reset();
  NodeCounters::Reset();
  const BasicEvent event("E", nullptr, false);
  EXPECT_EQ(event.GetId(), 1);
  EXPECT_EQ(event.eventNumber, 1U);
  EXPECT_EQ(NodeCounters::Instance().nodesMade, 1);
}

}  // namespace
}  // namespace FTS
