#include <string>

#include "app/Config.h"
#include "app/ProgramPath.h"
#include "app/RunPhases.h"
#include "model/Model.h"
#include "model/VtnException.h"
#include "support/CapturedStreams.h"
#include "support/ProcessStateTest.h"
#include "support/RecordedCommands.h"

namespace FTS {
namespace {

/// A model that does nothing but write down what it is asked for.
class RecordingModel : public Model {
 public:
  explicit RecordingModel(int initTrees)
      : Model(0, "recording.xml", "recording", "", 1.0f, 1.0), trees(initTrees) {}

  void Synthesise() override { calls += "Synthesise "; }
  void Analyse(bool useBDDs) override { calls += useBDDs ? "Analyse(BDD) " : "Analyse "; }
  void BuildFMEA() override { calls += "BuildFMEA "; }
  void OutputResults() override { calls += "OutputResults "; }
  int GetFaultTreeCount() const override { return trees; }

  std::string calls;

 private:
  int trees;
};

class RunPhasesTest : public ProcessStateTest {
 protected:
  CapturedStreams streams;
};

TEST_F(RunPhasesTest, PhasesFollowOneAnother) {
  RecordingModel model(1);
  RunNormalPhases(model);
  EXPECT_EQ(model.calls, "Synthesise Analyse BuildFMEA OutputResults ");
  EXPECT_EQ(streams.Errors(), "");
}

TEST_F(RunPhasesTest, AnalysisIsToldOfDecisionDiagrams) {
  Config::Instance().useBDDs = true;
  RecordingModel model(2);
  RunNormalPhases(model);
  EXPECT_EQ(model.calls, "Synthesise Analyse(BDD) BuildFMEA OutputResults ");
}

TEST_F(RunPhasesTest, EffectsAreBuiltWithoutAnAnalysis) {
  Config::Instance().skipAnalysis = true;
  RecordingModel model(1);
  RunNormalPhases(model);
  EXPECT_EQ(model.calls, "Synthesise BuildFMEA OutputResults ");
}

TEST_F(RunPhasesTest, NothingIsWrittenWithoutAFaultTree) {
  RecordingModel model(0);
  RunNormalPhases(model);
  EXPECT_EQ(model.calls, "Synthesise Analyse BuildFMEA ");
  EXPECT_EQ(streams.Errors(), "No fault trees present: no output generated.\n");
}

TEST_F(RunPhasesTest, ToolsDoNotRunWithoutAFaultTree) {
  Config::Instance().decomposeSILs = true;
  Config::Instance().decomposeDALs = true;
  const RecordedCommands commands;
  RecordingModel model(0);
  RunNormalPhases(model);
  EXPECT_EQ(commands.Lines().size(), 0U);
}

TEST_F(RunPhasesTest, ToolsRunBehindTheOutputTheSilToolFirst) {
  Config::Instance().decomposeSILs = true;
  Config::Instance().decomposeDALs = true;
  SetProgramPath("/opt/vtn");
  const RecordedCommands commands;
  RecordingModel model(1);
  RunNormalPhases(model);
  EXPECT_EQ(model.calls, "Synthesise Analyse BuildFMEA OutputResults ");
  ASSERT_EQ(commands.Lines().size(), 2U);
  EXPECT_EQ(commands.Lines()[0].program, "/opt/asilDecomp.exe");
  EXPECT_EQ(commands.Lines()[1].program, "/opt/DAL.exe");
}

TEST_F(RunPhasesTest, ToolsRunOnlyWhenAskedFor) {
  const RecordedCommands commands;
  RecordingModel model(1);
  RunNormalPhases(model);
  EXPECT_EQ(commands.Lines().size(), 0U);
}

TEST_F(RunPhasesTest, NoRunOfTheSearchLeavesTheModelAlone) {
  Config::Instance().numberOfRepeatRuns = 0;
  RecordingModel model(1);
  RunOptimisation(model, RunOptions());
  EXPECT_EQ(model.calls, "");
  EXPECT_EQ(streams.Output(), "");
}

TEST_F(RunPhasesTest, LimitOfGenerationsIsTheModels) {
  Config::Instance().numberOfRepeatRuns = 0;
  RecordingModel model(1);
  model.maxGenerations = 7;
  RunOptimisation(model, RunOptions());
  EXPECT_EQ(Config::Instance().maxGenerations, 7);
}

TEST_F(RunPhasesTest, LimitOfGenerationsOnTheCommandLineGoesFirst) {
  Config::Instance().numberOfRepeatRuns = 0;
  RecordingModel model(1);
  model.maxGenerations = 7;
  RunOptions options;
  options.maxGenerations = 9;
  RunOptimisation(model, options);
  EXPECT_EQ(Config::Instance().maxGenerations, 9);
}

TEST_F(RunPhasesTest, SearchThatCannotStartIsToldAndTheNextOneRuns) {
  Config::Instance().numberOfRepeatRuns = 2;
  Config::Instance().previousStateFileName = "absent.xml";
  RecordingModel model(1);
  RunOptimisation(model, RunOptions());
  EXPECT_EQ(streams.Output(),
            "Genetic Algorithm finished: deleting\nGenetic Algorithm finished: deleting\n");
  EXPECT_NE(streams.Errors().find("VtnException: Cannot read saved state: absent.xml"),
            std::string::npos)
      << streams.Errors();
}

}  // namespace
}  // namespace FTS
