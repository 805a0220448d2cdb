#include <gmock/gmock.h>

#include <sstream>

#include "analysis/FaultTree.h"
#include "analysis/Prime.h"
#include "app/Config.h"
#include "faulttree/BasicEvent.h"
#include "faulttree/Gates.h"
#include "model/Component.h"
#include "model/Implementation.h"
#include "model/Model.h"
#include "model/Objective.h"
#include "model/Perspective.h"
#include "model/StateMachine.h"
#include "model/Subsystem.h"
#include "platform/FileSystem.h"
#include "support/CapturedStreams.h"
#include "support/CaseName.h"
#include "support/ModelBuilder.h"
#include "support/ProcessStateTest.h"
#include "support/TemporaryFolder.h"
#include "support/ThrownMessage.h"

namespace FTS {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ModelTest : public ProcessStateTest {
 protected:
  ModelTest() : model(ModelBuilder().Build()) {}

  void AddTree(const std::string& name, double unavailability, double severity) {
    auto tree = std::make_shared<FaultTree>(std::make_shared<OrGate>(name, model.get()));
    tree->unavailability = unavailability;
    tree->severity = severity;
    model->AddFaultTree(tree);
  }

  std::unique_ptr<Model> model;
};

TEST_F(ModelTest, PathIsDivided) {
  const Model other(3, "/a/b/brake.v2.xml", "Brake", "of a car", 1.5F, 100.0);
  EXPECT_EQ(other.GetDirectory(), "/a/b/");
  EXPECT_EQ(other.GetFileName(), "brake.v2.xml");
  EXPECT_EQ(other.GetFileStem(), "brake.v2");
  EXPECT_EQ(other.GetName(), "Brake");
  EXPECT_EQ(other.mode, 3);
}

TEST_F(ModelTest, PathThatCannotBeMadeAbsoluteIsRefused) {
  EXPECT_EQ(ThrownMessage([] { Model(0, "", "", "", 1.0F, 0.0); }), "Invalid file name: ");
  const std::string longPath = "/" + std::string(300, 'x');
  EXPECT_EQ(ThrownMessage([&] { Model(0, longPath, "", "", 1.0F, 0.0); }),
            "Invalid file name: " + longPath);
}

TEST_F(ModelTest, StartsInTheDefaultState) {
  EXPECT_EQ(model->GetCurrentStateName(), "default");
  ASSERT_EQ(model->stateMachine->states.size(), 1U);
  EXPECT_EQ(model->stateStack.back(), model->stateMachine->states.at("default"));
  EXPECT_THAT(model->stateMachine->failStates, IsEmpty());
}

TEST_F(ModelTest, FailureClassIsEnteredOnceInOrderOfMention) {
  for (const char* name : {"Omission", "Late", "Omission"}) model->AddFailureClass(name);
  EXPECT_THAT(model->failureClasses, ElementsAre("Omission", "Late"));
  EXPECT_TRUE(model->HasFailureClass("Late"));
  EXPECT_FALSE(model->HasFailureClass("late"));
}

TEST_F(ModelTest, RemovedTreeClosesTheGap) {
  for (const char* name : {"a", "b", "c"}) AddTree(name, 0.0, 0.0);
  const auto removed = model->faultTrees[1];
  model->RemoveFaultTree(*removed);
  EXPECT_EQ(model->FindFaultTreeIndex("c"), 1);
  model->RemoveFaultTree(*removed);
  EXPECT_EQ(model->GetFaultTreeCount(), 2);
}

TEST_F(ModelTest, TreeIsFoundByTheNameOfItsRoot) {
  EXPECT_EQ(model->FindFaultTreeIndex("a"), -1);
  for (const char* name : {"a", "b", "b"}) AddTree(name, 0.0, 0.0);
  EXPECT_EQ(model->FindFaultTreeIndex("b"), 1);
  EXPECT_EQ(model->FindFaultTreeIndex("none"), -1);
}

TEST_F(ModelTest, FiguresOfAMissingTreeAreZero) {
  AddTree("a", 0.25, 3.0);
  EXPECT_EQ(model->GetFaultTreeUnavailability(0), 0.25);
  EXPECT_EQ(model->GetFaultTreeSeverity(0), 3.0);
  for (const int index : {-1, 1}) {
    EXPECT_EQ(model->GetFaultTreeUnavailability(index), 0.0);
    EXPECT_EQ(model->GetFaultTreeSeverity(index), 0.0);
  }
}

TEST_F(ModelTest, ObjectiveIsNullWhenUnknown) {
  model->objectives["Cost"].upperBound = 5.0;
  EXPECT_EQ(model->GetObjective("Cost")->upperBound, 5.0);
  EXPECT_EQ(model->GetObjective("Weight"), nullptr);
  EXPECT_EQ(model->GetObjectiveCount(), 1);
  EXPECT_EQ(model->ObjectivesBegin()->first, "Cost");
}

TEST_F(ModelTest, LevelsOfEventsHaveTheirCosts) {
  for (const int level : {-1, 0, 1, 2, 3, 4, 5, 6}) {
    const auto event = std::make_shared<BasicEvent>("e", model.get(), true);
    event->safetyRequirement = level;
    model->AddEvent(event);
  }
  EXPECT_EQ(model->EvaluateASILCost(), 111110);
}

TEST_F(ModelTest, CostOfLevelsMayExceedAnInteger) {
  const auto event = std::make_shared<BasicEvent>("e", model.get(), true);
  event->safetyRequirement = 5;
  constexpr int Events = 30'000;
  for (int i = 0; i < Events; ++i) model->basicEvents[i] = event;
  EXPECT_EQ(model->EvaluateASILCost(), 3e9);
}

TEST_F(ModelTest, PrimeIndexIsThatOfTheSource) {
  model->SetPrimeIndex(10);
  EXPECT_EQ(model->GetPrimeCount(), 10);
  Prime::Instance().Next();
  EXPECT_EQ(model->GetPrimeCount(), 11);
}

struct DirectoryCase {
  const char* name;
  const char* option;
  const char* directory;
};

class OutputDirectoryTest : public ProcessStateTest,
                            public ::testing::WithParamInterface<DirectoryCase> {};

TEST_P(OutputDirectoryTest, FollowsTheOption) {
  const Model model(0, "/a/b/m.xml", "", "", 1.0F, 0.0);
  Config::Instance().outputDir = GetParam().option;
  EXPECT_EQ(model.OutputDirectory(), GetParam().directory);
}

INSTANTIATE_TEST_SUITE_P(Options, OutputDirectoryTest,
                         ::testing::Values(DirectoryCase{"Default", "default", "/a/b/"},
                                           DirectoryCase{"Empty", "", "/a/b/"},
                                           DirectoryCase{"Plain", "out", "out/"},
                                           DirectoryCase{"WithSeparator", "out/", "out/"},
                                           DirectoryCase{"WithTheOther", "out\\", "out\\"}),
                         CaseName);

class ConfigurableTest : public ProcessStateTest {
 protected:
  ConfigurableTest()
      : model(ModelBuilder()
                  .Component("Out", {})
                  .Component("Out.In", {})
                  .Configurable("Out.In")
                  .Component("Top", {})
                  .Alternative("Top", "second")
                  .Component("Top.Hidden", {})
                  .Configurable("Top.Hidden")
                  .Configurable("Top")
                  .Component("Left", {})
                  .Component("Left.In", {})
                  .Configurable("Left.In")
                  .Block("Left", HBlockType::NOT_REFINED)
                  .Build()) {
    model->ReindexConfigurableComponents();
  }

  std::vector<std::string> Names() const {
    std::vector<std::string> names;
    for (int i = 0; i < model->GetComponentCount(); ++i)
      names.push_back(model->GetComponentName(i));
    return names;
  }

  std::unique_ptr<Model> model;
};

TEST_F(ConfigurableTest, AreThoseMarkedUnlessAroundThemIsOneOrNothingRefined) {
  EXPECT_THAT(Names(), ElementsAre("DEFAULT::Out.In", "DEFAULT::Top"));
}

TEST_F(ConfigurableTest, ReindexingStartsAnew) {
  model->ReindexConfigurableComponents();
  EXPECT_EQ(model->GetComponentCount(), 2);
}

TEST_F(ConfigurableTest, ChoiceIsReadByPosition) {
  EXPECT_EQ(model->GetImplementationCount(1), 2);
  EXPECT_EQ(model->GetCurrentImplementationIndex(1), 0);
  model->configurableComponents[1]->SelectImplementation(1);
  EXPECT_EQ(model->GetCurrentImplementationIndex(1), 1);
}

TEST_F(ConfigurableTest, ResetSelectsTheFirstImplementationsAndClears) {
  model->configurableComponents[1]->SelectImplementation(1);
  model->AddFaultTree(std::make_shared<FaultTree>(nullptr));
  model->ResetImplementations();
  EXPECT_EQ(model->GetCurrentImplementationIndex(1), 0);
  EXPECT_EQ(model->GetFaultTreeCount(), 0);
  EXPECT_EQ(model->GetComponentCount(), 2);
}

TEST_F(ConfigurableTest, SelectionsAreWrittenWithNames) {
  std::ostringstream text;
  model->WriteImplementations("10|0201", text);
  EXPECT_EQ(text.str(), "DEFAULT::Out.In: impl\nDEFAULT::Top: second, impl\n");
}

TEST_F(ModelTest, PrintCountsAndShowsPerspectives) {
  model->AddFailureClass("Late");
  const std::string expected =
      " --------------------------------------------------\n"
      " MODEL: /models/model.xml (A model)\n"
      " numBasicEvents: 0\n"
      " numCCFs: 0\n"
      " numComponents: 0\n"
      " numConfigurableComponents: 0\n"
      " numFailureClasses: 1\n"
      " numFaultTrees: 0\n"
      " numFaultTreePlusIndices: 0\n"
      " numObjectives: 0\n"
      " numSystemOutports: 0\n"
      " numHazards: 0\n"
      "    --------------------------------------------------\n"
      "    PERSPECTIVE: DEFAULT\n"
      "    numCCFs: 0\n"
      "       SUBSYSTEM: DEFAULT::\n"
      "       numComponents: 0\n"
      "       numLines: 0\n"
      "       END SUBSYSTEM\n"
      "    END PERSPECTIVE\n"
      "    --------------------------------------------------\n"
      " END MODEL\n"
      " --------------------------------------------------\n";
  const CapturedStreams streams;
  model->Print(1, "");
  EXPECT_EQ(streams.Output(), expected);
}

TEST_F(ModelTest, PrintGoesToAFile) {
  const TemporaryFolder folder;
  const CapturedStreams streams;
  model->Print(0, "");
  const std::string path = folder.Path("model.txt");
  model->Print(0, path);
  EXPECT_EQ(ReadWholeFile(path), streams.Output());
}

TEST_F(ModelTest, CommonCausesOfPerspectivesAreCounted) {
  const auto other = ModelBuilder().CommonCause("fire").CommonCause("flood").Build();
  EXPECT_EQ(other->ccfs.size(), 2U);
}

}  // namespace
}  // namespace FTS
