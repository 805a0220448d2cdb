#include <limits>
#include <sstream>

#include "analysis/CutSet.h"
#include "analysis/FaultTree.h"
#include "faulttree/BasicEvent.h"
#include "model/Hazard.h"
#include "model/Model.h"
#include "support/ModelBuilder.h"
#include "support/ProcessStateTest.h"
#include "support/TreeBuilder.h"

namespace FTS {
namespace {

class HazardTest : public ProcessStateTest {
 protected:
  HazardTest()
      : model(ModelBuilder().Build()), hazard(std::make_shared<Hazard>("Loss", model.get())) {
    model->AddHazard(hazard);
  }

  std::shared_ptr<BasicEvent> AddEvent(int level) {
    auto event = std::make_shared<BasicEvent>("e", model.get(), true);
    event->safetyRequirement = level;
    model->AddEvent(event);
    return event;
  }

  void AddCutSet(std::initializer_list<std::shared_ptr<BasicEvent>> events) {
    if (!hazard->faultTree) hazard->faultTree = std::make_shared<FaultTree>(nullptr);
    auto cutSet = std::make_unique<CutSet>();
    for (const auto& event : events) cutSet->AddEvent(*event);
    hazard->faultTree->AddCutSet(std::move(cutSet), false);
  }

  std::unique_ptr<Model> model;
  std::shared_ptr<Hazard> hazard;
};

TEST_F(HazardTest, WithoutATreeViolatesNothing) {
  hazard->safetyRequirement = 4;
  EXPECT_EQ(hazard->CountRequirementViolations(), 0);
}

TEST_F(HazardTest, LevelsOfACutSetAddUp) {
  hazard->safetyRequirement = 2;
  AddCutSet({AddEvent(1), AddEvent(1)});
  AddCutSet({AddEvent(1)});
  EXPECT_EQ(hazard->CountRequirementViolations(), 1);
}

TEST_F(HazardTest, LargeLevelsDoNotGoRound) {
  constexpr int Largest = std::numeric_limits<int>::max();
  hazard->safetyRequirement = Largest;
  AddCutSet({AddEvent(Largest), AddEvent(Largest)});
  EXPECT_EQ(hazard->CountRequirementViolations(), 0);
}

TEST_F(HazardTest, WithoutRequirementViolatesNothing) {
  AddCutSet({AddEvent(0)});
  EXPECT_EQ(hazard->CountRequirementViolations(), 0);
}

TEST_F(HazardTest, LevelIsThatOfTheModelsEvent) {
  hazard->safetyRequirement = 3;
  const auto event = AddEvent(0);
  const auto allocated = std::make_shared<BasicEvent>("e", model.get(), false);
  allocated->prime = event->prime;
  allocated->safetyRequirement = 3;
  model->AddEvent(allocated);
  AddCutSet({event});
  EXPECT_EQ(hazard->CountRequirementViolations(), 0);
}

TEST_F(HazardTest, ModelAddsTheViolationsOfItsHazardsUp) {
  const auto weak = AddEvent(0);
  hazard->safetyRequirement = 1;
  AddCutSet({weak});
  const auto other = std::make_shared<Hazard>("Other", model.get());
  other->safetyRequirement = 1;
  other->faultTree = hazard->faultTree;
  model->AddHazard(other);
  EXPECT_EQ(model->CountRequirementViolations(), 2);
}

TEST_F(HazardTest, CloneIsForTheOtherModel) {
  hazard->description = "no pressure";
  hazard->safetyRequirement = 3;
  hazard->severity = 1.5;
  hazard->expression = Tree("OR(a=OUT(), b=OUT())", model.get());
  const auto other = ModelBuilder().Build();
  const auto copy = hazard->Clone(other.get());
  EXPECT_EQ(copy->name, "Loss");
  EXPECT_EQ(copy->description, "no pressure");
  EXPECT_EQ(copy->safetyRequirement, 3);
  EXPECT_EQ(copy->severity, 1.5);
  EXPECT_EQ(copy->model, other.get());
  EXPECT_EQ(copy->expression->model, other.get());
  EXPECT_EQ(ShapeOf(copy->expression), ShapeOf(hazard->expression));
}

TEST_F(HazardTest, PrintFramesTheExpression) {
  hazard->description = "no pressure";
  hazard->safetyRequirement = 2;
  std::ostringstream text;
  hazard->Print(text, 1);
  EXPECT_EQ(text.str(),
            " Hazard: Loss\n"
            " Desc: no pressure\n"
            " Safety Requirement: 2\n"
            " Cause: \n"
            " End of hazard\n");
}

}  // namespace
}  // namespace FTS
