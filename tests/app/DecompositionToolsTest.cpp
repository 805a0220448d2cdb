#include <gmock/gmock.h>

#include <filesystem>
#include <memory>

#include "app/Config.h"
#include "app/DecompositionTools.h"
#include "app/ProgramPath.h"
#include "model/Model.h"
#include "support/CapturedStreams.h"
#include "support/ProcessStateTest.h"
#include "support/RecordedCommands.h"
#include "support/TemporaryFolder.h"

namespace FTS {
namespace {

using ::testing::ElementsAre;

class DecompositionToolsTest : public ProcessStateTest {
 protected:
  DecompositionToolsTest() { SetProgramPath("/opt/vtn tools/vtn"); }

  static std::unique_ptr<Model> MakeModel(const std::string& path) {
    return std::make_unique<Model>(0, path, "name inside", "", 1.0f, 1.0);
  }

  TemporaryFolder folder;
  RecordedCommands commands;
  CapturedStreams streams;
};

TEST_F(DecompositionToolsTest, SilToolGetsFolderCostsAndSearchSettings) {
  LaunchSilDecomposition(*MakeModel("/models/brake.xml"));
  ASSERT_EQ(commands.Lines().size(), 1U);
  EXPECT_EQ(commands.Lines()[0].program, "/opt/vtn tools/asilDecomp.exe");
  EXPECT_THAT(commands.Lines()[0].arguments,
              ElementsAre("/models/brake-FMEAOutput", "0", "10", "20", "30", "40", "1", "1000", "3",
                          "4", "1", "0.4", "50"));
  EXPECT_EQ(streams.Output(),
            "\"/opt/vtn tools/asilDecomp.exe\" \"/models/brake-FMEAOutput\" 0 10 20 30 40 1 1000 3 "
            "4 1 0.4 50\n");
}

TEST_F(DecompositionToolsTest, SilToolGetsTheSettingsOfTheRun) {
  Config& config = Config::Instance();
  config.SetCostHeuristic("1,2,3,4,5");
  config.numberOfRepeatRuns = 7;
  config.tabuRepetitionLimit = 8;
  config.tabuUpdatePdesFrequency = 1e-7;
  config.tabuUpdatePascFrequency = 2.5;
  config.tabuPdesLimit = 0.1;
  config.tabuPascLimit = 1234567.0;
  config.tabuNumOutputSolutions = 9;
  LaunchSilDecomposition(*MakeModel("/models/brake.xml"));
  EXPECT_THAT(commands.Lines()[0].arguments,
              ElementsAre("/models/brake-FMEAOutput", "1", "2", "3", "4", "5", "7", "8", "1e-07",
                          "2.5", "0.1", "1.23457e+06", "9"));
}

TEST_F(DecompositionToolsTest, DalToolGetsAWordAndTheSameCosts) {
  Config::Instance().SetCostHeuristic("1,2,3,4,5");
  LaunchDalDecomposition(*MakeModel("/models/brake.xml"));
  ASSERT_EQ(commands.Lines().size(), 1U);
  EXPECT_EQ(commands.Lines()[0].program, "/opt/vtn tools/DAL.exe");
  EXPECT_THAT(commands.Lines()[0].arguments,
              ElementsAre("/models/brake-FMEAOutput", "dalCosts", "1", "2", "3", "4", "5"));
  EXPECT_EQ(streams.Output(),
            "\"/opt/vtn tools/DAL.exe\" \"/models/brake-FMEAOutput\" dalCosts 1 2 3 4 5\n");
}

TEST_F(DecompositionToolsTest, FolderIsThatOfTheResults) {
  Config::Instance().outputDir = "/out\\all results";
  LaunchDalDecomposition(*MakeModel("/models/my brake.v2.xml"));
  EXPECT_EQ(commands.Lines()[0].arguments[0], "/out/all results/my brake.v2-FMEAOutput");
}

TEST_F(DecompositionToolsTest, NoCharacterOfANameIsSpecial) {
  LaunchSilDecomposition(*MakeModel("/models/a\" ; $(touch x) `y` 'z' && w.xml"));
  EXPECT_EQ(commands.Lines()[0].arguments[0], "/models/a\" ; $(touch x) `y` 'z' && w-FMEAOutput");
  EXPECT_EQ(commands.Lines()[0].arguments.size(), 13U);
}

TEST_F(DecompositionToolsTest, ToolWithoutEndingIsFoundToo) {
  SetProgramPath(folder.Path("vtn"));
  const auto writeTool = [this](const std::string& name) {
    std::filesystem::permissions(folder.Write(name, ""), std::filesystem::perms::owner_all);
  };
  writeTool("DAL");
  LaunchDalDecomposition(*MakeModel("/models/brake.xml"));
  EXPECT_EQ(commands.Lines()[0].program, folder.Path("DAL"));
  writeTool("DAL.exe");
  LaunchDalDecomposition(*MakeModel("/models/brake.xml"));
  EXPECT_EQ(commands.Lines()[1].program, folder.Path("DAL.exe"));
}

TEST_F(DecompositionToolsTest, FailureOfAToolIsIgnored) {
  commands.SetStatus(3);
  LaunchSilDecomposition(*MakeModel("/models/brake.xml"));
  commands.SetStatus(std::nullopt);
  LaunchDalDecomposition(*MakeModel("/models/brake.xml"));
  EXPECT_EQ(streams.Errors(), "");
}

TEST_F(DecompositionToolsTest, SilentRunPrintsNoCommand) {
  Config::Instance().runSilent = true;
  LaunchSilDecomposition(*MakeModel("/models/brake.xml"));
  EXPECT_EQ(commands.Lines().size(), 1U);
  EXPECT_EQ(streams.Output(), "");
}

}  // namespace
}  // namespace FTS
