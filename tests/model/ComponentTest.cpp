#include <gmock/gmock.h>

#include <sstream>

#include "model/Component.h"
#include "model/Implementation.h"
#include "model/Model.h"
#include "model/Perspective.h"
#include "model/Port.h"
#include "model/Subsystem.h"
#include "support/ModelBuilder.h"
#include "support/ProcessStateTest.h"
#include "support/ThrownMessage.h"

namespace FTS {
namespace {

using ::testing::HasSubstr;

class ComponentTest : public ProcessStateTest {
 protected:
  ComponentTest()
      : model(ModelBuilder()
                  .Component("A", {"in"})
                  .Alternative("A", "second")
                  .Component("B", {"in"})
                  .Component("B.Inner", {"in"})
                  .Build()) {}

  std::shared_ptr<Component> At(const std::string& name) { return model->FindComponent(name); }
  Perspective& ThePerspective() { return *model->perspectives.at("DEFAULT"); }

  std::unique_ptr<Model> model;
};

TEST_F(ComponentTest, FullNameHasThePerspectiveInFront) {
  EXPECT_EQ(At("A")->GetFullNameText(), "DEFAULT::A");
  EXPECT_EQ(At("B.Inner")->GetFullNameText(), "DEFAULT::B.Inner");
  EXPECT_EQ(At("B.Inner")->GetLocalName(), "Inner");
}

TEST_F(ComponentTest, OutsideAPerspectiveTheNameStandsAlone) {
  const auto loose = std::make_shared<Subsystem>(model.get());
  EXPECT_EQ(Component("A", loose, model.get()).GetFullNameText(), "A");
}

TEST_F(ComponentTest, IndexOutOfRangeKeepsTheImplementation) {
  const auto component = At("A");
  component->SelectImplementation(1);
  component->SelectImplementation(-1);
  component->SelectImplementation(2);
  EXPECT_EQ(component->GetCurrentImplementation().name, "second");
}

TEST_F(ComponentTest, WithoutImplementationItHasNoInside) {
  const auto component = At("B");
  component->currentImplementation = nullptr;
  EXPECT_EQ(ThrownMessage([&] { component->GetSubsystem(); }),
            "No current implementation found for component: DEFAULT::B");
}

TEST_F(ComponentTest, RiskTimeIsInheritedFromTheModel) {
  EXPECT_EQ(At("B.Inner")->GetRiskTime(), 1000.0);
}

TEST_F(ComponentTest, RiskTimeOfThePerspectiveGoesBeforeTheModels) {
  ThePerspective().riskTime = 500.0;
  EXPECT_EQ(At("B.Inner")->GetRiskTime(), 500.0);
}

TEST_F(ComponentTest, RiskTimeOfTheComponentAroundGoesBeforeThePerspectives) {
  ThePerspective().riskTime = 500.0;
  At("B")->riskTime = 50.0;
  EXPECT_EQ(At("B.Inner")->GetRiskTime(), 50.0);
  EXPECT_EQ(At("A")->GetRiskTime(), 500.0);
}

TEST_F(ComponentTest, OwnRiskTimeGoesFirst) {
  At("B")->riskTime = 50.0;
  At("B.Inner")->riskTime = 5.0;
  EXPECT_EQ(At("B.Inner")->GetRiskTime(), 5.0);
}

TEST_F(ComponentTest, MessageWithoutEntryLeadsNowhere) {
  EXPECT_EQ(At("A")->FindInputPort("speed"), nullptr);
  EXPECT_EQ(At("A")->FindOutputPort("speed"), nullptr);
}

TEST_F(ComponentTest, PerspectiveIsFoundFromInside) {
  EXPECT_EQ(At("B.Inner")->GetPerspective().get(), &ThePerspective());
}

TEST_F(ComponentTest, CostAndWeightAreThoseOfTheChosenImplementations) {
  At("A")->implementations[0]->cost = 1.0;
  At("A")->implementations[1]->cost = 2.0;
  At("B")->implementations[0]->cost = 10.0;
  At("B.Inner")->implementations[0]->cost = 100.0;
  At("A")->implementations[1]->weight = 3.0;
  At("B.Inner")->implementations[0]->weight = 0.5;
  At("A")->SelectImplementation(1);
  EXPECT_EQ(model->EvaluateCost(), 112.0);
  EXPECT_EQ(model->EvaluateWeight(), 3.5);
}

TEST_F(ComponentTest, CostNeedsImplementations) {
  At("A")->currentImplementation = nullptr;
  EXPECT_EQ(ThrownMessage([&] { model->EvaluateCost(); }),
            "No current implementation found for component: DEFAULT::A");
}

TEST_F(ComponentTest, PrintFramesPortsAndImplementations) {
  std::ostringstream text;
  At("B")->Print(text, 0);
  EXPECT_THAT(text.str(), HasSubstr("COMPONENT: DEFAULT::B\n"));
  EXPECT_THAT(text.str(), HasSubstr("\n   PORT: DEFAULT::B.in\n"));
  EXPECT_THAT(text.str(), HasSubstr("\n         COMPONENT: DEFAULT::B.Inner\n"));
  EXPECT_THAT(text.str(), HasSubstr("\nEND COMPONENT\n"));
}

}  // namespace
}  // namespace FTS
