#include <gmock/gmock.h>

#include "analysis/FaultTree.h"
#include "faulttree/BasicEvent.h"
#include "faulttree/CircleNode.h"
#include "faulttree/CommonCauseNodes.h"
#include "faulttree/DeviationNodes.h"
#include "faulttree/Gates.h"
#include "model/CCF.h"
#include "support/PartsModel.h"
#include "support/ProcessStateTest.h"
#include "support/TreeBuilder.h"

namespace FTS {
namespace {

using ::testing::Each;
using ::testing::SizeIs;

using BasicEventTest = ProcessStateTest;

TEST_F(BasicEventTest, TakesItsPrimeWhenToldTo) {
  EXPECT_EQ(BasicEvent("A", nullptr, true).prime, 3.0);
  EXPECT_EQ(BasicEvent("B", nullptr, false).prime, 0.0);
  EXPECT_EQ(BasicEvent("C", nullptr, true).prime, 5.0);
}

TEST_F(BasicEventTest, NumbersCountEventsOnly) {
  const BasicEvent first("A", nullptr, false);
  const OrGate gate("", nullptr);
  const NormalEvent second("B", nullptr, false);
  EXPECT_EQ(first.eventNumber, 1U);
  EXPECT_EQ(second.eventNumber, 2U);
}

TEST_F(BasicEventTest, StartsWithoutFigures) {
  const BasicEvent event("A", nullptr, false);
  EXPECT_EQ(event.failureModel, FailureModel::NONE);
  EXPECT_EQ(event.GetUnavailability(), 0.0);
  EXPECT_EQ(event.GetFrequency(), 0.0);
  EXPECT_EQ(event.safetyRequirement, 0);
}

TEST_F(BasicEventTest, TypesAreThoseOfTheClasses) {
  EXPECT_EQ(BasicEvent("A", nullptr, false).type, NodeType::FailureMode);
  EXPECT_EQ(NormalEvent("A", nullptr, false).type, NodeType::Normal);
  EXPECT_EQ(PCCFNode("A", nullptr).type, NodeType::PCCF);
  EXPECT_EQ(InputDeviationNode("A", nullptr, nullptr).type, NodeType::InputDeviation);
  EXPECT_EQ(BasicEvent("A", nullptr, false).GetPrimeType(), "BASIC EVENT");
}

TEST_F(BasicEventTest, FullNameIsThatOfTheOwnerAndItsOwn) {
  PartsModel parts;
  const auto component = parts.AddComponent("A");
  BasicEvent event("stuck", &parts.model, false);
  EXPECT_EQ(event.GetFullName(), "stuck");
  event.owner = component;
  EXPECT_EQ(event.GetFullName(), "Main::A.stuck");
}

TEST_F(BasicEventTest, ComplementIsMadeOnceWithAPrimeOfItsOwn) {
  BasicEvent event("A", nullptr, true);
  EXPECT_EQ(event.complement, nullptr);
  const auto complement = event.GetComplement();
  EXPECT_EQ(complement, event.GetComplement());
  EXPECT_EQ(complement->prime, 5.0);
  EXPECT_EQ(complement->type, NodeType::Complement);
  EXPECT_EQ(complement->name,
            "\xAC"
            "A");
  EXPECT_EQ(complement->complement, nullptr);
  EXPECT_EQ(complement->source, &event);
}

TEST_F(BasicEventTest, ComplementHasTheNegatedIdWhateverItIs) {
  BasicEvent first("A", nullptr, true);
  BasicEvent second("B", nullptr, true);
  ASSERT_EQ(first.GetId(), 1);
  EXPECT_EQ(first.GetComplement()->GetId(), -1);
  EXPECT_EQ(second.GetComplement()->GetId(), -second.GetId());
  EXPECT_EQ(FaultTreeNode::FindById(-1), first.GetComplement().get());
}

TEST_F(BasicEventTest, ComplementHoldsWhenTheEventDoesNot) {
  BasicEvent event("A", nullptr, true);
  event.unavailability = 0.25;
  event.frequency = 0.5;
  EXPECT_EQ(event.GetComplement()->GetUnavailability(), 0.75);
  EXPECT_EQ(event.GetComplement()->GetFrequency(), 0.0);
  event.unavailability = 0.5;
  EXPECT_EQ(event.GetComplement()->GetUnavailability(), 0.5);
}

TEST_F(BasicEventTest, ComplementHasTheOwnerOfTheEvent) {
  PartsModel parts;
  const auto component = parts.AddComponent("A");
  BasicEvent event("stuck", &parts.model, false);
  event.owner = component;
  EXPECT_EQ(event.GetComplement()->owner.lock(), component);
}

TEST_F(BasicEventTest, CircleIsNamedAfterItsTarget) {
  EXPECT_EQ(CircleNode(*Tree("G=OR(A)"), nullptr).name, "CIRCLE TO G");
}

TEST_F(BasicEventTest, CircleOfANamelessTargetShowsTheId) {
  const OrGate target("", nullptr, 70);
  EXPECT_EQ(CircleNode(target, nullptr).name, "CIRCLE TO [70]");
}

TEST_F(BasicEventTest, CircleHasAPrimeAndAMarkPerChildOfTheTarget) {
  const auto target = Tree("G=OR(A, B, C)");
  const CircleNode circle(*target, nullptr);
  EXPECT_EQ(circle.prime, 11.0);
  EXPECT_EQ(circle.type, NodeType::Circle);
  EXPECT_EQ(circle.GetTypeName(), "Circle");
  EXPECT_THAT(circle.loopChildren, SizeIs(3));
  EXPECT_THAT(circle.loopChildren, Each(false));
}

TEST_F(BasicEventTest, CircleNotesATreeOnce) {
  const auto tree = std::make_shared<FaultTree>(Tree("OR(A)"));
  const auto other = std::make_shared<FaultTree>(Tree("OR(A)"));
  CircleNode circle(*tree->root, nullptr);
  circle.AddTree(tree);
  circle.AddTree(other);
  circle.AddTree(tree);
  EXPECT_THAT(circle.trees, SizeIs(2));
}

TEST_F(BasicEventTest, ActivatedCommonCauseHangsBelowItsProxy) {
  const auto cause = std::make_shared<CCF>("fire", nullptr, nullptr, true);
  PCCFProxy proxy("fire here", nullptr);
  proxy.Activate(cause);
  EXPECT_EQ(proxy.actual, cause);
  EXPECT_EQ(proxy.node->actual, cause);
  EXPECT_EQ(ShapeOf(proxy), "PCCF(fire)");
}

TEST_F(BasicEventTest, CommonCauseEventBelongsToTheComponentOfItsProxy) {
  PartsModel parts;
  PCCFProxy proxy("fire here", &parts.model);
  proxy.owner = parts.AddComponent("A");
  EXPECT_EQ(proxy.GetEventNode()->GetFullName(), "Main::A.fire here");
}

}  // namespace
}  // namespace FTS
