#include <gmock/gmock.h>

#include "analysis/CutSet.h"
#include "faulttree/CommonCauseNodes.h"
#include "faulttree/DeviationProxies.h"
#include "faulttree/Gates.h"
#include "model/Component.h"
#include "model/Deviation.h"
#include "model/Implementation.h"
#include "model/Model.h"
#include "model/Perspective.h"
#include "model/Port.h"
#include "model/Subsystem.h"
#include "support/ModelBuilder.h"
#include "support/ProcessStateTest.h"
#include "support/ThrownMessage.h"
#include "support/TreeBuilder.h"

namespace FTS {
namespace {

using ::testing::ElementsAre;

class ImplementationTest : public ProcessStateTest {
 protected:
  ImplementationTest()
      : model(ModelBuilder()
                  .CommonCause("fire")
                  .Component("A", {"in", "out"})
                  .Event("A", "stuck")
                  .NormalEvent("A", "warm")
                  .PotentialCommonCause("A", "heat", "fire")
                  .SystemOutput("A", "Late-out", "OR(stuck, Late-in)")
                  .Output("A", "Late-out", "warm", "degraded")
                  .Export("A", "Loss-power", "OR(stuck, heat)")
                  .Component("B", {})
                  .Component("B.Inner", {"out"})
                  .Event("B.Inner", "leak")
                  .Alternative("B", "other")
                  .Event("B", "unused")
                  .Build()) {
    component = model->FindComponent("A");
    implementation = component->implementations.at(0);
  }

  void Instantiate() { model->perspectives.at("DEFAULT")->rootSubsystem->Instantiate(); }

  std::vector<std::string> EventsOfTheModel() const {
    std::vector<std::string> names;
    for (const auto& [prime, event] : model->basicEvents) names.push_back(event->name);
    return names;
  }

  std::unique_ptr<Model> model;
  std::shared_ptr<Component> component;
  std::shared_ptr<Implementation> implementation;
};

TEST_F(ImplementationTest, StartsAsBothWithTheDefaultState) {
  const Implementation fresh("new", component, model.get());
  EXPECT_EQ(fresh.hBlockType, HBlockType::BOTH);
  EXPECT_NE(fresh.GetStateLogic("default"), nullptr);
  EXPECT_EQ(fresh.CountOutputDeviations("default"), 0);
}

TEST_F(ImplementationTest, DeviationsAreFoundByLocalNameAndState) {
  EXPECT_NE(implementation->GetOutputDeviation("Late-out", "default"), nullptr);
  EXPECT_NE(implementation->GetOutputDeviation("Late-out", "degraded"), nullptr);
  EXPECT_EQ(implementation->GetOutputDeviation("Late-in", "default"), nullptr);
  EXPECT_EQ(implementation->GetOutputDeviation("Late-out", "unknown"), nullptr);
  EXPECT_NE(implementation->GetExportedDeviation("Loss-power", "default"), nullptr);
  EXPECT_EQ(implementation->GetExportedDeviation("Loss-power", "unknown"), nullptr);
}

TEST_F(ImplementationTest, WalkOverAnUnknownStateIsRefused) {
  EXPECT_EQ(ThrownMessage([&] { implementation->OutputDeviationsBegin("gone"); }),
            "Cannot find state: gone when looking up output deviations in implementation impl");
  EXPECT_EQ(ThrownMessage([&] { implementation->OutputDeviationsEnd("gone"); }),
            "Cannot find state: gone when looking up output deviations in implementation impl");
  EXPECT_EQ(ThrownMessage([&] { implementation->ExportedDeviationsBegin("gone"); }),
            "Cannot find state: gone when looking up exported deviations in implementation impl");
  EXPECT_EQ(ThrownMessage([&] { implementation->ExportedDeviationsEnd("gone"); }),
            "Cannot find state: gone when looking up exported deviations in implementation impl");
}

TEST_F(ImplementationTest, WalkMeetsTheDeviationsOfTheState) {
  const auto begin = implementation->OutputDeviationsBegin("default");
  EXPECT_EQ(std::distance(begin, implementation->OutputDeviationsEnd("default")), 1);
  EXPECT_EQ(begin->first, "Late-out");
}

TEST_F(ImplementationTest, FirstProxyOfAnInputIsKept) {
  const auto first = implementation->inputDeviations.at("Late-in");
  implementation->AddInputDeviationProxy(
      std::make_shared<InputDeviationProxy>(first->deviation, model.get(), 9));
  EXPECT_EQ(implementation->inputDeviations.at("Late-in"), first);
}

TEST_F(ImplementationTest, InstantiateEntersTheEventsInUse) {
  Instantiate();
  EXPECT_THAT(EventsOfTheModel(), ElementsAre("stuck", "warm", "leak"));
}

TEST_F(ImplementationTest, InstantiateCopiesDeviationsIntoThePort) {
  Instantiate();
  const auto copy = component->FindPort("out")->GetOutputDeviation("Late", DefaultState);
  const auto source = implementation->GetOutputDeviation("Late-out", DefaultState);
  EXPECT_NE(copy, source);
  EXPECT_EQ(ShapeOf(copy->expression), ShapeOf(source->expression));
  EXPECT_NE(component->FindPort("out")->outputDeviations.at("degraded").at("Late"), nullptr);
}

TEST_F(ImplementationTest, InstantiateListsSystemOutputs) {
  Instantiate();
  ASSERT_EQ(model->systemOutports.size(), 1U);
  EXPECT_EQ(model->systemOutports[0],
            component->FindPort("out")->GetOutputDeviation("Late", DefaultState));
}

TEST_F(ImplementationTest, InstantiateOffersExportedDeviationsToGotos) {
  Instantiate();
  const auto exported = implementation->GetExportedDeviation("Loss-power", DefaultState);
  EXPECT_EQ(model->gotoTargets.at("Loss-DEFAULT::A.power"), exported);
  EXPECT_NE(exported->instance, exported->expression);
  EXPECT_EQ(ShapeOf(exported->instance), ShapeOf(exported->expression));
}

TEST_F(ImplementationTest, LabelWinsOverAnExportedName) {
  const auto labelled = implementation->GetOutputDeviation("Late-out", DefaultState);
  model->gotoTargets["Loss-DEFAULT::A.power"] = labelled;
  Instantiate();
  EXPECT_EQ(model->gotoTargets.at("Loss-DEFAULT::A.power"), labelled);
}

TEST_F(ImplementationTest, ExportOfTheDefaultStateWinsOverThatOfAnEarlierOne) {
  implementation->AddExportedDeviation(
      std::make_shared<ExportedDeviation>(component, "Loss", "power"), "broken");
  Instantiate();
  EXPECT_EQ(model->gotoTargets.at("Loss-DEFAULT::A.power"),
            implementation->GetExportedDeviation("Loss-power", DefaultState));
}

TEST_F(ImplementationTest, InstantiateNeedsAnImplementation) {
  component->currentImplementation = nullptr;
  EXPECT_EQ(ThrownMessage([&] { Instantiate(); }),
            "No current implementation found for component: DEFAULT::A");
}

TEST_F(ImplementationTest, AnnotatedComponentsAreThoseWithOutputsInTheDefaultState) {
  EXPECT_EQ(model->CountAnnotatedComponents(), 1);
  component->currentImplementation = nullptr;
  EXPECT_EQ(model->CountAnnotatedComponents(), 0);
}

TEST_F(ImplementationTest, ClearForgetsWhatAnalysisLeftOnEvents) {
  const auto stuck = implementation->basicEvents.at("stuck");
  stuck->GetComplement();
  stuck->GenerateCutSets();
  stuck->coverage["Loss"];
  implementation->Clear();
  EXPECT_EQ(stuck->complement, nullptr);
  EXPECT_TRUE(stuck->cutSets.empty());
  EXPECT_TRUE(stuck->coverage.empty());
}

TEST_F(ImplementationTest, ClearForgetsTheEventsOfUnconnectedInputs) {
  const auto record = implementation->inputDeviationRecords.at("Late-in");
  record->GetEventNode();
  implementation->Clear();
  EXPECT_EQ(record->eventNode, nullptr);
}

TEST_F(ImplementationTest, ClearTakesExportedInstancesApart) {
  Instantiate();
  const auto exported = implementation->GetExportedDeviation("Loss-power", DefaultState);
  const std::weak_ptr<FaultTreeNode> instance = exported->instance;
  instance.lock()->AddChild(instance.lock());
  implementation->Clear();
  EXPECT_EQ(exported->instance, nullptr);
  EXPECT_TRUE(instance.expired());
}

TEST_F(ImplementationTest, ClearLeavesTemplatesAlone) {
  const auto source = implementation->GetOutputDeviation("Late-out", DefaultState);
  const std::string before = ShapeOf(source->expression);
  Instantiate();
  component->ClearPorts();
  EXPECT_EQ(ShapeOf(source->expression), before);
  EXPECT_EQ(implementation->ccfNodes.at("heat")->GetChildCount(), 1);
}

}  // namespace
}  // namespace FTS
