#include <gmock/gmock.h>

#include "faulttree/CommonCauseNodes.h"
#include "faulttree/DeviationProxies.h"
#include "faulttree/FaultTreeGate.h"
#include "model/CCF.h"
#include "model/Component.h"
#include "model/Deviation.h"
#include "model/Implementation.h"
#include "model/Model.h"
#include "model/Port.h"
#include "support/PartsModel.h"
#include "support/ProcessStateTest.h"
#include "support/TreeBuilder.h"

namespace FTS {
namespace {

using ::testing::ElementsAre;

using CollectionTest = ProcessStateTest;

std::vector<std::string> NamesOf(const std::map<double, std::shared_ptr<BasicEvent>>& events) {
  std::vector<std::string> names;
  names.reserve(events.size());
  for (const auto& [prime, event] : events) names.push_back(event->name);
  return names;
}

TEST_F(CollectionTest, NodesAreEnteredById) {
  const ScopedGraph graph(Tree("G=OR(A, AND(B, G), NOT(A))"));
  std::map<int, FaultTreeNode*> nodes;
  graph->CollectNodes(nodes);
  EXPECT_EQ(nodes.size(), 5U);
  for (const auto& [id, node] : nodes) EXPECT_EQ(node->GetId(), id);
}

TEST_F(CollectionTest, NodeThatIsThereAlreadyEndsTheWalk) {
  TreeBuilder builder;
  const auto first = builder.Tree("OR(G=AND(A))");
  std::map<int, FaultTreeNode*> nodes;
  builder.Node("G")->CollectNodes(nodes);
  builder.Node("G")->AddChild(builder.Tree("B"));
  first->CollectNodes(nodes);
  EXPECT_FALSE(nodes.contains(builder.Node("B")->GetId()));
}

TEST_F(CollectionTest, FirstOfTwoNodesOfOneIdIsEntered) {
  TreeBuilder builder;
  const auto top = builder.Tree("OR(G=AND(A))");
  const auto dual = MakeGate(NodeType::Or, "dual", nullptr, builder.Node("G")->GetId());
  dual->AddChild(builder.Tree("B"));
  top->AddChild(dual);
  std::map<int, FaultTreeNode*> nodes;
  top->CollectNodes(nodes);
  EXPECT_EQ(nodes.at(dual->GetId()), builder.Node("G").get());
  EXPECT_FALSE(nodes.contains(builder.Node("B")->GetId()));
}

TEST_F(CollectionTest, EventsAreEnteredByPrime) {
  const ScopedGraph graph(Tree("G=OR(A, AND(B, G), NOT(A))"));
  std::map<double, BasicEvent*> events;
  graph->CollectEvents(events);
  ASSERT_EQ(events.size(), 2U);
  EXPECT_EQ(events.at(3.0)->name, "A");
  EXPECT_EQ(events.at(5.0)->name, "B");
}

TEST_F(CollectionTest, OnlyCurrentChildrenCount) {
  const auto top = Tree("OR(A, B)");
  top->CopyChildrenToState("contracted");
  top->RemoveChild(*top->GetChild(0));
  std::map<double, BasicEvent*> events;
  top->CollectEvents(events);
  EXPECT_EQ(events.size(), 1U);
}

TEST_F(CollectionTest, NegationIsFoundAnywhere) {
  EXPECT_TRUE(ContainsNot(*Tree("NOT(A)")));
  EXPECT_TRUE(ContainsNot(*Tree("OR(A, AND(B, PROXY(NOT(C))))")));
  EXPECT_FALSE(ContainsNot(*Tree("OR(A, AND(B, ~A), XOR(A, B))")));
}

TEST_F(CollectionTest, NegationIsFoundBehindALoop) {
  const ScopedGraph with(Tree("G=OR(AND(G), NOT(A))"));
  EXPECT_TRUE(ContainsNot(*with));
  const ScopedGraph without(Tree("G=OR(AND(G), A)"));
  EXPECT_FALSE(ContainsNot(*without));
}

class RegistrationTest : public ProcessStateTest {
 protected:
  PartsModel parts;
  Model& model = parts.model;
};

TEST_F(RegistrationTest, EventsOfTheGraphEnterTheModel) {
  const ScopedGraph graph(Tree("G=OR(B, AND(A, G), NOT(B))", &model));
  graph->RegisterBasicEvents(model);
  EXPECT_THAT(NamesOf(model.basicEvents), ElementsAre("B", "A"));
}

TEST_F(RegistrationTest, EventOfAPrimeThatIsThereStaysOut) {
  const auto first = std::make_shared<BasicEvent>("first", &model, true);
  const auto second = std::make_shared<BasicEvent>("second", &model, false);
  second->prime = first->prime;
  first->RegisterBasicEvents(model);
  second->RegisterBasicEvents(model);
  EXPECT_THAT(NamesOf(model.basicEvents), ElementsAre("first"));
}

TEST_F(RegistrationTest, CommonCauseEventEntersOnlyWhenActivated) {
  const auto event = std::make_shared<PCCFNode>("fire here", &model);
  event->prime = 7.0;
  event->RegisterBasicEvents(model);
  EXPECT_TRUE(model.basicEvents.empty());
  event->actual = std::make_shared<CCF>("fire", &model, nullptr, true);
  event->RegisterBasicEvents(model);
  EXPECT_THAT(NamesOf(model.basicEvents), ElementsAre("fire here"));
}

TEST_F(RegistrationTest, InputDeviationEntersItsPortOnce) {
  const auto component = parts.AddComponent("A");
  const auto port = parts.AddPort(component, "in");
  const auto first = parts.Input(component, "late", "in");
  const auto second = parts.Input(component, "late", "in");
  first->RegisterBasicEvents(model);
  second->RegisterBasicEvents(model);
  EXPECT_EQ(port->inputProxies.at("default").at("late"), first);
  EXPECT_EQ(second->GetChildCount(), 0);
}

}  // namespace
}  // namespace FTS
