#include <gmock/gmock.h>

#include <random>

#include "analysis/FMEA.h"
#include "analysis/FaultTree.h"
#include "app/Config.h"
#include "faulttree/CommonCauseNodes.h"
#include "faulttree/DeviationProxies.h"
#include "model/CCF.h"
#include "model/Component.h"
#include "model/Deviation.h"
#include "model/Hazard.h"
#include "model/Implementation.h"
#include "model/Line.h"
#include "model/Model.h"
#include "model/Objective.h"
#include "model/Perspective.h"
#include "model/Port.h"
#include "model/StateMachine.h"
#include "model/Subsystem.h"
#include "support/ModelBuilder.h"
#include "support/ProcessStateTest.h"
#include "support/TreeBuilder.h"

namespace FTS {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

LineText InsideB(const std::string& from, const std::string& to) {
  LineText text;
  text.inside = "B";
  text.directed = true;
  text.connections = {{from, "OUTPUTPORT"}, {to, "DEFAULT"}};
  return text;
}

/// A model with something of everything: refined, propagating, looped, allocated, labelled, with
/// common causes, unconnected inputs, alternatives and two hazards.
std::unique_ptr<Model> Everything() {
  ModelBuilder builder;
  builder.Perspective("Hw").CommonCause("fire");
  builder.Component("Cpu", {"in", "out"}).Event("Cpu", "dead");
  builder.PotentialCommonCause("Cpu", "heat", "fire").PotentialCommonCause("Cpu", "frost", "");
  builder.Export("Cpu", "Loss-power", "OR(dead, heat)");
  builder.Output("Cpu", "Late-out", "OR(AND(dead, frost), heat, Late-in)");
  builder.Label("slow", "Cpu", "Late-out");
  builder.Perspective("Sw");
  builder.Component("A", {"in", "out"}).Event("A", "bug").Allocate("A", "Hw::Cpu");
  builder.Output("A", "Late-out", "OR(bug, ALLOC(Loss-power), GOTO(slow), Late-in)");
  builder.Component("B", {"in", "out"}).Event("B", "typo").NormalEvent("B", "busy");
  builder.Output("B", "Late-out", "AND(typo, NOT(busy))");
  builder.Component("B.Core", {"in", "out"}).Event("B.Core", "slip");
  builder.Output("B.Core", "Late-out", "OR(slip, Late-in)");
  builder.Line(InsideB("in", "Core.in")).Line(InsideB("Core.out", "out"));
  builder.Block("B", HBlockType::BOTH);
  builder.Alternative("B", "simple").Event("B", "simpleTypo").Output("B", "Late-out", "simpleTypo");
  builder.Component("C", {"in", "out"}).Block("C", HBlockType::PROPAGATOR);
  builder.Configurable("B");
  builder.Line("A.out", "B.in").Line("B.out", "C.in").Line("C.out", "A.in");
  builder.Hazard("Both", "AND(Late-Sw::B.out, Late-Hw::Cpu.out)").Hazard("Slow", "Late-Sw::C.out");
  auto model = builder.Build();
  model->ReindexConfigurableComponents();
  return model;
}

int LivingNodes() {
  return NodeCounters::Instance().nodesMade - NodeCounters::Instance().nodesDestroyed;
}

class ModelLifeTest : public ProcessStateTest {
 protected:
  ModelLifeTest() : nodesBefore(LivingNodes()) { Config::Instance().runSilent = true; }

  static std::string Synthesised(Model& model) {
    model.Synthesise();
    return TreesText(model);
  }

  const int nodesBefore;
};

// Clearing.

TEST_F(ModelLifeTest, ClearedModelSynthesisesTheSameTrees) {
  const auto model = Everything();
  const std::string first = Synthesised(*model);
  model->ClearSynthesis();
  EXPECT_EQ(Synthesised(*model), first);
}

TEST_F(ModelLifeTest, ClearingFreesAllThatSynthesisMade) {
  const auto model = Everything();
  const int parsed = LivingNodes();
  model->Synthesise();
  EXPECT_GT(LivingNodes(), parsed);
  model->ClearSynthesis();
  EXPECT_EQ(LivingNodes(), parsed);
}

TEST_F(ModelLifeTest, ClearingFreesTheEventsOfWhatIsUnconnected) {
  Config::Instance().removeHangingNodes = false;
  const auto model = Everything();
  const int parsed = LivingNodes();
  const std::string first = Synthesised(*model);
  EXPECT_THAT(first, ::testing::HasSubstr("(UNCONNECTED)"));
  model->ClearSynthesis();
  EXPECT_EQ(LivingNodes(), parsed);
  EXPECT_EQ(Synthesised(*model), first);
}

TEST_F(ModelLifeTest, ClearingFreesTheEventsOfOutputsThatSayNothing) {
  Config::Instance().removeHangingNodes = false;
  ModelBuilder builder;
  builder.Component("A", {"out"}).Component("B", {"in", "out"}).Output("B", "Late-out", "Late-in");
  builder.Line("A.out", "B.in").Hazard("Loss", "Late-B.out");
  const auto model = builder.Build();
  const int parsed = LivingNodes();
  EXPECT_EQ(Synthesised(*model), "Loss=OUT(Late-DEFAULT::A.out (UNCONNECTED))\n");
  EXPECT_EQ(model->unconnectedEvents.size(), 1U);
  model->ClearSynthesis();
  EXPECT_EQ(LivingNodes(), parsed);
}

TEST_F(ModelLifeTest, ClearingFreesASynthesisThatFailed) {
  ModelBuilder builder;
  builder.Component("A", {"in", "out"}).Output("A", "Late-out", "Late-in");
  builder.Line("A.out", "A.in").Hazard("Fine", "Late-A.out").Hazard("Wrong", "Early-A.out");
  const auto model = builder.Build();
  const int parsed = LivingNodes();
  EXPECT_THROW(model->Synthesise(), std::exception);
  model->ClearSynthesis();
  EXPECT_EQ(LivingNodes(), parsed);
}

TEST_F(ModelLifeTest, ClearingFreesInstancesThatWereForgotten) {
  const auto model = Everything();
  const int parsed = LivingNodes();
  model->Synthesise();
  for (const auto& [name, perspective] : model->perspectives) {
    perspective->rootSubsystem->ForgetPortExpressions();
    perspective->rootSubsystem->BuildPortExpressions();
  }
  model->ClearSynthesis();
  EXPECT_EQ(LivingNodes(), parsed);
}

TEST_F(ModelLifeTest, ClearingLeavesTheParsedState) {
  const auto model = Everything();
  model->Synthesise();
  model->fmea = std::make_shared<FMEA>(*model);
  model->ClearSynthesis();
  EXPECT_EQ(model->GetFaultTreeCount(), 0);
  EXPECT_EQ(model->fmea, nullptr);
  EXPECT_THAT(model->basicEvents, IsEmpty());
  EXPECT_THAT(model->systemOutports, IsEmpty());
  EXPECT_EQ(model->FindHazard("Both")->faultTree, nullptr);
  ASSERT_EQ(model->gotoTargets.size(), 1U);
  EXPECT_EQ(model->gotoTargets.begin()->first, "slow");
}

TEST_F(ModelLifeTest, ChoiceOfImplementationTakesEffectAfterClearing) {
  const auto model = Everything();
  model->Synthesise();
  model->ClearSynthesis();
  model->FindComponent("Sw::B")->SelectImplementation(1);
  EXPECT_THAT(Synthesised(*model), ::testing::HasSubstr("Slow=OUT(simpleTypo)\n"));
}

TEST_F(ModelLifeTest, NothingOutlivesTheModel) {
  {
    const auto model = Everything();
    model->Synthesise();
  }
  EXPECT_EQ(LivingNodes(), nodesBefore);
}

// Clones.

TEST_F(ModelLifeTest, CloneSynthesisesTheSameTrees) {
  const auto model = Everything();
  const auto copy = model->Clone();
  EXPECT_EQ(Synthesised(*copy), Synthesised(*model));
}

TEST_F(ModelLifeTest, CloneOfASynthesisedModelIsInTheParsedState) {
  const auto model = Everything();
  const std::string trees = Synthesised(*model);
  const auto copy = model->Clone();
  EXPECT_EQ(copy->GetFaultTreeCount(), 0);
  EXPECT_THAT(copy->basicEvents, IsEmpty());
  EXPECT_EQ(copy->gotoTargets.size(), 1U);
  EXPECT_EQ(Synthesised(*copy), trees);
  EXPECT_EQ(TreesText(*model), trees);
}

TEST_F(ModelLifeTest, CloneOutlivesItsSource) {
  auto model = Everything();
  const auto copy = model->Clone();
  const std::string trees = Synthesised(*model);
  model.reset();
  EXPECT_EQ(Synthesised(*copy), trees);
}

TEST_F(ModelLifeTest, NothingOutlivesTheClone) {
  {
    const auto model = Everything();
    const auto copy = model->Clone();
    copy->Synthesise();
  }
  EXPECT_EQ(LivingNodes(), nodesBefore);
}

TEST_F(ModelLifeTest, CloneKeepsTheIdentityOfEvents) {
  const auto model = Everything();
  const auto copy = model->Clone();
  const auto source =
      model->FindComponent("Sw::A")->GetCurrentImplementation().basicEvents.at("bug");
  const auto event = copy->FindComponent("Sw::A")->GetCurrentImplementation().basicEvents.at("bug");
  EXPECT_NE(event, source);
  EXPECT_EQ(event->prime, source->prime);
  EXPECT_EQ(event->GetId(), source->GetId());
  EXPECT_EQ(event->eventNumber, source->eventNumber);
  EXPECT_EQ(event->owner.lock(), copy->FindComponent("Sw::A"));
  EXPECT_EQ(event->model, copy.get());
}

TEST_F(ModelLifeTest, CoverageOfEventsIsNotCloned) {
  const auto model = Everything();
  model->FindComponent("Sw::A")->GetCurrentImplementation().basicEvents.at("bug")->coverage["Both"];
  const auto copy = model->Clone();
  const auto event = copy->FindComponent("Sw::A")->GetCurrentImplementation().basicEvents.at("bug");
  EXPECT_TRUE(event->coverage.empty());
}

TEST_F(ModelLifeTest, CloneHasOneCommonCause) {
  const auto model = Everything();
  const auto copy = model->Clone();
  const auto fire = copy->perspectives.at("Hw")->FindCCF("fire");
  EXPECT_EQ(fire->perspective.lock(), copy->perspectives.at("Hw"));
  EXPECT_EQ(fire->model, copy.get());
  const auto& implementation = copy->FindComponent("Hw::Cpu")->GetCurrentImplementation();
  EXPECT_EQ(implementation.ccfNodes.at("heat")->actual, fire);
  EXPECT_EQ(implementation.ccfNodes.at("heat")->node->actual, fire);
  EXPECT_EQ(model->perspectives.at("Hw")->FindCCF("fire")->clone, nullptr);
}

TEST_F(ModelLifeTest, CloneHasItsOwnInputRecords) {
  const auto model = Everything();
  model->FindComponent("Sw::A")
      ->GetCurrentImplementation()
      .inputDeviationRecords.at("Late-in")
      ->coverage["Both"] = 90.0;
  const auto copy = model->Clone();
  const auto& implementation = copy->FindComponent("Sw::A")->GetCurrentImplementation();
  const auto& record = implementation.inputDeviationRecords.at("Late-in");
  EXPECT_EQ(record->GetPort(), copy->FindPort("Sw::A.in"));
  EXPECT_EQ(record->coverage.at("Both"), 90.0);
  EXPECT_EQ(implementation.inputDeviations.at("Late-in")->deviation, record);
}

TEST_F(ModelLifeTest, LabelsOfTheCloneAreItsOwn) {
  const auto model = Everything();
  const auto copy = model->Clone();
  EXPECT_EQ(copy->gotoTargets.at("slow"),
            copy->FindComponent("Hw::Cpu")->GetCurrentImplementation().GetOutputDeviation(
                "Late-out", DefaultState));
}

TEST_F(ModelLifeTest, CloneHasTheFieldsOfItsSource) {
  const auto model = Everything();
  model->maxGenerations = 7;
  model->defaultMaxReplicants = 3;
  model->cutSetCount = 5;
  model->failureClassAssignments["Late"] = 1;
  model->objectives["Cost"].maximise = true;
  model->stateMachine->AddState(std::make_shared<State>("down", model->stateMachine));
  model->perspectives.at("Sw")->riskTime = 5.0;
  const auto copy = model->Clone();
  EXPECT_EQ(copy->GetDirectory() + copy->GetFileName(), "/models/model.xml");
  EXPECT_EQ(copy->maxGenerations, 7);
  EXPECT_EQ(copy->defaultMaxReplicants, 3);
  EXPECT_EQ(copy->cutSetCount, 5);
  EXPECT_EQ(copy->failureClassAssignments, model->failureClassAssignments);
  EXPECT_TRUE(copy->GetObjective("Cost")->maximise);
  EXPECT_EQ(copy->failureClasses, model->failureClasses);
  EXPECT_EQ(copy->stateMachine->states.size(), 2U);
  EXPECT_EQ(copy->stateStack.back(), copy->stateMachine->states.at("default"));
  EXPECT_EQ(copy->perspectives.at("Sw")->riskTime, 5.0);
  EXPECT_EQ(copy->components.size(), model->components.size());
  EXPECT_EQ(copy->hazards.size(), 2U);
}

TEST_F(ModelLifeTest, CloneHasTheSameConfigurableComponents) {
  const auto model = Everything();
  const auto copy = model->Clone();
  EXPECT_THAT(copy->configurableComponents, ElementsAre(copy->FindComponent("Sw::B")));
}

TEST_F(ModelLifeTest, CloneHasTheChosenImplementations) {
  const auto model = Everything();
  model->FindComponent("Sw::B")->SelectImplementation(1);
  const auto copy = model->Clone();
  const auto component = copy->FindComponent("Sw::B");
  ASSERT_EQ(component->implementations.size(), 2U);
  EXPECT_EQ(component->currentImplementation, component->implementations[1]);
}

TEST_F(ModelLifeTest, CloneOfARedundantModelIsRedundant) {
  const auto model = Everything();
  std::string selection = "12";
  model->FindComponent("Sw::B")->CreateOptimisedImplementation(selection);
  const auto copy = model->Clone();
  const std::string trees = Synthesised(*model);
  EXPECT_THAT(trees, ::testing::HasSubstr("AND("));
  EXPECT_EQ(Synthesised(*copy), trees);
}

// Bringing a clone up to date.

TEST_F(ModelLifeTest, CloneTakesOverLaterChoices) {
  const auto model = Everything();
  const auto copy = model->Clone();
  model->FindComponent("Sw::B")->SelectImplementation(1);
  model->FindComponent("Sw::A")->currentAllocation = "Sw::C";
  model->CopyPerspectives(*copy);
  EXPECT_EQ(copy->FindComponent("Sw::B")->GetCurrentImplementation().name, "simple");
  EXPECT_EQ(copy->FindComponent("Sw::A")->currentAllocation, "Sw::C");
}

TEST_F(ModelLifeTest, CloneTakesOverLaterRedundancy) {
  const auto model = Everything();
  const auto copy = model->Clone();
  std::string selection = "21";
  model->FindComponent("Sw::B")->CreateOptimisedImplementation(selection);
  model->CopyPerspectives(*copy);
  EXPECT_EQ(Synthesised(*copy), Synthesised(*model));
}

TEST_F(ModelLifeTest, CloneTakesOverLaterLines) {
  const auto model = Everything();
  const auto copy = model->Clone();
  const auto root = model->perspectives.at("Sw")->rootSubsystem;
  root->lines[0]->AddConnection("B.in", Tree("PROXY()", model.get()));
  model->CopyPerspectives(*copy);
  EXPECT_EQ(Synthesised(*copy), Synthesised(*model));
}

TEST_F(ModelLifeTest, BringingUpToDateChangesNothingThatIs) {
  const auto model = Everything();
  const auto copy = model->Clone();
  const int nodes = LivingNodes();
  model->CopyPerspectives(*copy);
  EXPECT_EQ(LivingNodes(), nodes);
  EXPECT_EQ(Synthesised(*copy), Synthesised(*model));
}

// The same for models at random.

class RandomModelLifeTest : public ModelLifeTest, public ::testing::WithParamInterface<unsigned> {};

class RandomArchitecture {
 public:
  /// The trees of every other model are those of its system outputs.
  explicit RandomArchitecture(unsigned seed) : source(seed), outports(seed % 2 == 0) {}

  std::unique_ptr<Model> Make() {
    const int count = 2 + Roll(4);
    for (int i = 0; i < count; ++i) AddComponent("C" + std::to_string(i));
    for (int i = 0; i < count; ++i) AddLine("C" + std::to_string(i), count);
    if (!outports) builder.Hazard("Top", "OR(X-C0.out, Y-C1.out)");
    return builder.Build();
  }

 private:
  int Roll(int sides) { return static_cast<int>(source() % static_cast<unsigned>(sides)); }

  void AddComponent(const std::string& name) {
    builder.Component(name, {"in", "out"}).Event(name, "e" + name);
    for (const char* failureClass : {"X", "Y"}) {
      const char* gate = Roll(2) == 0 ? "OR(" : "AND(";
      const std::string input = Roll(3) == 0 ? "Y-in" : std::string(failureClass) + "-in";
      const std::string deviation = std::string(failureClass) + "-out";
      const std::string logic = std::string("OR(e") + name + ", " + gate + input + ", X-in))";
      if (outports && Roll(2) == 0) {
        builder.SystemOutput(name, deviation, logic);
      } else {
        builder.Output(name, deviation, logic);
      }
    }
  }

  void AddLine(const std::string& target, int count) {
    LineText text;
    text.directed = Roll(2) == 0;
    const char* placeholders[] = {"DEFAULT", "ANDPORT", "ORPORT"};
    text.connections[target + ".in"] = placeholders[Roll(3)];
    for (int i = 0; i <= Roll(2); ++i) {
      text.connections["C" + std::to_string(Roll(count)) + ".out"] = "OUTPUTPORT";
    }
    builder.Line(text);
  }

  std::minstd_rand source;
  const bool outports;
  ModelBuilder builder;
};

TEST_P(RandomModelLifeTest, TreesAreThoseOfTheCloneAndOfTheNextSynthesis) {
  {
    const auto model = RandomArchitecture(GetParam()).Make();
    const auto copy = model->Clone();
    const int parsed = LivingNodes();
    const std::string trees = Synthesised(*model);
    EXPECT_EQ(Synthesised(*copy), trees) << "seed " << GetParam();
    model->ClearSynthesis();
    EXPECT_EQ(Synthesised(*model), trees) << "seed " << GetParam();
    model->ClearSynthesis();
    copy->ClearSynthesis();
    EXPECT_EQ(LivingNodes(), parsed) << "seed " << GetParam();
  }
  EXPECT_EQ(LivingNodes(), nodesBefore) << "seed " << GetParam();
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomModelLifeTest, ::testing::Range(1U, 101U));

}  // namespace
}  // namespace FTS
