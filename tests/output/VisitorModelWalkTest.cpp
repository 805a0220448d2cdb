#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "analysis/FMEA.h"
#include "faulttree/BasicEvent.h"
#include "faulttree/CommonCauseNodes.h"
#include "model/Component.h"
#include "model/Deviation.h"
#include "model/Hazard.h"
#include "model/IFailureCause.h"
#include "model/Implementation.h"
#include "model/Line.h"
#include "model/Model.h"
#include "model/Perspective.h"
#include "model/Port.h"
#include "model/Subsystem.h"
#include "model/VtnException.h"
#include "output/RecordingVisitor.h"
#include "support/BrakeModel.h"
#include "support/ProcessStateTest.h"

namespace FTS {

namespace {

using Steps = std::vector<std::string>;

/// A deviation of no particular kind.
class PlainDeviation : public Deviation {
 public:
  explicit PlainDeviation(const std::shared_ptr<Component>& initOwner)
      : Deviation(initOwner, "Omission") {}
};

/// A perspective with one component, which has a port on each side and an implementation.
class VisitorModelWalkTest : public ProcessStateTest {
 protected:
  VisitorModelWalkTest() {
    perspective->rootSubsystem = system;
    system->perspective = perspective;
    component = std::make_shared<Component>("C", system, model.get());
    system->AddComponent(component);
    component->AddPort(std::make_shared<Port>("in", component, model.get()));
    component->AddPort(std::make_shared<Port>("out", component, model.get()));
    implementation = std::make_shared<Implementation>("I", component, model.get());
    component->AddImplementation(implementation);
    component->SelectImplementation(0);
  }

  std::unique_ptr<Cause> MakeCause() const {
    return std::make_unique<Cause>("c", model.get(), 1.0,
                                   std::make_shared<BasicEvent>("e", model.get(), true));
  }

  Steps Walk(IVisitable& object) {
    object.Accept(visitor);
    return visitor.steps;
  }

  std::string MessageOfWalk(IVisitable& object) {
    try {
      object.Accept(visitor);
    } catch (const VtnException& exception) {
      return exception.GetMessage();
    }
    return "nothing was thrown";
  }

  std::unique_ptr<Model> model = EmptyModel("walk.xml");
  std::shared_ptr<Perspective> perspective = std::make_shared<Perspective>("P", model.get());
  std::shared_ptr<Subsystem> system = std::make_shared<Subsystem>(model.get());
  std::shared_ptr<Component> component;
  std::shared_ptr<Implementation> implementation;
  RecordingVisitor visitor;
};

TEST_F(VisitorModelWalkTest, TableOfFailureModesHasNoParts) {
  FMEA fmea(*model);
  EXPECT_EQ(Walk(fmea), Steps({"+FMEA", "-FMEA"}));
}

TEST_F(VisitorModelWalkTest, HazardMeetsItsCauses) {
  Hazard hazard("H", model.get());
  hazard.AddCause(MakeCause(), model.get());
  hazard.AddCause(MakeCause(), model.get());
  EXPECT_EQ(Walk(hazard), Steps({"+Hazard", "+Cause", "-Cause", "+Cause", "-Cause", "-Hazard"}));
}

TEST_F(VisitorModelWalkTest, OutputDeviationMeetsItsCauses) {
  const auto deviation = std::make_shared<OutputDeviation>(component, "Omission", "out");
  deviation->AddCause(MakeCause(), model.get());
  EXPECT_EQ(Walk(*deviation), Steps({"+OutputDeviation", "+Cause", "-Cause", "-OutputDeviation"}));
}

TEST_F(VisitorModelWalkTest, ExportedDeviationMeetsItsCauses) {
  const auto deviation = std::make_shared<ExportedDeviation>(component, "Omission", "power");
  deviation->AddCause(MakeCause(), model.get());
  EXPECT_EQ(Walk(*deviation),
            Steps({"+ExportedDeviation", "+Cause", "-Cause", "-ExportedDeviation"}));
}

TEST_F(VisitorModelWalkTest, InputDeviationHasNoParts) {
  InputDeviation deviation(component, "Omission", "in");
  EXPECT_EQ(Walk(deviation), Steps({"+InputDeviation", "-InputDeviation"}));
}

TEST_F(VisitorModelWalkTest, PlainDeviationHasNoParts) {
  PlainDeviation deviation(component);
  EXPECT_EQ(Walk(deviation), Steps({"+Deviation", "-Deviation"}));
}

TEST_F(VisitorModelWalkTest, ImplementationMeetsItsTablesInOrder) {
  implementation->AddOutputDeviation(
      std::make_shared<OutputDeviation>(component, "Omission", "out"), "default");
  implementation->AddExportedDeviation(
      std::make_shared<ExportedDeviation>(component, "Omission", "power"), "default");
  implementation->AddPCCF(std::make_shared<PCCFProxy>("fire", model.get()));
  implementation->AddInputDeviation(std::make_shared<InputDeviation>(component, "Omission", "in"));
  implementation->AddBasicEvent(std::make_shared<NormalEvent>("b", model.get(), true));
  implementation->AddBasicEvent(std::make_shared<BasicEvent>("a", model.get(), true));
  EXPECT_EQ(Walk(*implementation),
            Steps({"+Implementation", "+BasicEvent", "-BasicEvent", "+NormalEvent", "-NormalEvent",
                   "+InputDeviation", "-InputDeviation", "+PCCFProxy", "+PCCFNode", "-PCCFNode",
                   "-PCCFProxy", "+ExportedDeviation", "-ExportedDeviation", "+OutputDeviation",
                   "-OutputDeviation", "-Implementation"}));
}

TEST_F(VisitorModelWalkTest, ImplementationShowsDeviationsOfStateDefaultOnly) {
  implementation->AddOutputDeviation(
      std::make_shared<OutputDeviation>(component, "Omission", "out"), "degraded");
  EXPECT_EQ(Walk(*implementation), Steps({"+Implementation", "-Implementation"}));
}

TEST_F(VisitorModelWalkTest, ImplementationWithoutStateDefaultIsAnError) {
  implementation->stateLogic.clear();
  EXPECT_EQ(MessageOfWalk(*implementation),
            "Cannot find state: default when looking up exported deviations in implementation I");
}

TEST_F(VisitorModelWalkTest, LineHasNoParts) {
  Line line("L", system, model.get());
  EXPECT_EQ(Walk(line), Steps({"+Line", "-Line"}));
}

TEST_F(VisitorModelWalkTest, PortIsEnteredAndNeverLeft) {
  EXPECT_EQ(Walk(*component->FindPort("in")), Steps({"+Port"}));
}

TEST_F(VisitorModelWalkTest, ComponentMeetsPortsThenAllImplementationsThenItsInside) {
  implementation->subsystem = std::make_shared<Subsystem>(model.get());
  component->AddImplementation(std::make_shared<Implementation>("J", component, model.get()));
  component->SelectImplementation(0);
  EXPECT_EQ(Walk(*component), Steps({"+Component", "+Port", "+Port", "+Implementation",
                                     "-Implementation", "+Implementation", "-Implementation",
                                     "+Subsystem", "-Subsystem", "-Component"}));
}

TEST_F(VisitorModelWalkTest, OnlyTheInsideOfTheCurrentImplementationIsMet) {
  const auto other = std::make_shared<Implementation>("J", component, model.get());
  other->subsystem = std::make_shared<Subsystem>(model.get());
  component->AddImplementation(other);
  component->SelectImplementation(0);
  EXPECT_EQ(Walk(*component),
            Steps({"+Component", "+Port", "+Port", "+Implementation", "-Implementation",
                   "+Implementation", "-Implementation", "-Component"}));
}

TEST_F(VisitorModelWalkTest, ComponentWithoutCurrentImplementationIsAnErrorBehindItsParts) {
  component->currentImplementation = nullptr;
  EXPECT_EQ(MessageOfWalk(*component), "No current implementation found for component: P::C");
  EXPECT_EQ(visitor.steps,
            Steps({"+Component", "+Port", "+Port", "+Implementation", "-Implementation"}));
}

TEST_F(VisitorModelWalkTest, SubsystemMeetsComponentsThenLines) {
  system->AddLine(std::make_shared<Line>("L", system, model.get()));
  EXPECT_EQ(Walk(*system),
            Steps({"+Subsystem", "+Component", "+Port", "+Port", "+Implementation",
                   "-Implementation", "-Component", "+Line", "-Line", "-Subsystem"}));
}

TEST_F(VisitorModelWalkTest, PerspectiveLeadsToItsRoot) {
  perspective->rootSubsystem = std::make_shared<Subsystem>(model.get());
  EXPECT_EQ(Walk(*perspective),
            Steps({"+Perspective", "+Subsystem", "-Subsystem", "-Perspective"}));
}

TEST_F(VisitorModelWalkTest, PerspectiveWithoutRootHasNoParts) {
  perspective->rootSubsystem = nullptr;
  EXPECT_EQ(Walk(*perspective), Steps({"+Perspective", "-Perspective"}));
}

TEST_F(VisitorModelWalkTest, ModelMeetsPerspectivesThenHazards) {
  model->AddPerspective(std::make_shared<Perspective>("A", model.get()));
  model->AddPerspective(std::make_shared<Perspective>("B", model.get()));
  model->AddHazard(std::make_shared<Hazard>("H", model.get()));
  EXPECT_EQ(Walk(*model), Steps({"+Model", "+Perspective", "-Perspective", "+Perspective",
                                 "-Perspective", "+Hazard", "-Hazard", "-Model"}));
}

}  // namespace

}  // namespace FTS
