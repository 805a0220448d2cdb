#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "support/ProcessStateTest.h"
#include "support/ProgramRun.h"
#include "support/TemporaryFolder.h"
#include "support/TestPaths.h"

namespace FTS {
namespace {

/// Runs of the test modes on a copy of examples/, where they write their files.
class TestModesRunTest : public ProcessStateTest {
 protected:
  TestModesRunTest() {
    namespace Files = std::filesystem;
    Files::copy_file(ExamplesFolder() + "/TestModels.txt", folder.Path("TestModels.txt"));
    for (const auto& example : Files::directory_iterator(ExamplesFolder())) {
      if (!example.is_directory()) continue;
      const Files::path copy = folder.Path(example.path().filename().string());
      Files::create_directory(copy);
      for (const auto& file : Files::directory_iterator(example)) {
        if (file.is_regular_file()) Files::copy(file, copy / file.path().filename());
      }
      // The benchmark of the search has no trees, so nothing is expected of it.
      if (Files::exists(example.path() / "expected.csv")) ++examples;
    }
  }

  ProgramRun Run(const std::string& mode) const {
    return RunProgramWith({mode}, {folder.Path(), ""});
  }

  static int CountOf(const std::string& part, const std::string& text) {
    int count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
      ++count;
    }
    return count;
  }

  TemporaryFolder folder;
  int examples = 0;
};

TEST_F(TestModesRunTest, RegressionModePassesOnTheExamples) {
  for (const char* mode : {"testMode", "testmode"}) {
    const ProgramRun run = Run(mode);
    const std::string summary = folder.Read("TestSummary.txt");
    EXPECT_EQ(run.exitStatus, 0) << summary;
    EXPECT_EQ(CountOf(":   PASS\t\t", summary), examples) << summary;
    EXPECT_NE(summary.find("\nNumber of Fails: 0\nNumber of Errors: 0\n"), std::string::npos);
    EXPECT_NE(run.output.find("\nNumber of Passes: " + std::to_string(examples) + "\n"),
              std::string::npos);
    EXPECT_EQ(folder.Read("TestResults.txt").find("FAIL"), std::string::npos);
  }
}

// In one example two combinations become a smaller one, "manual or not". A limit that drops both
// leaves nothing to make it of, which is what this mode is there to find.
TEST_F(TestModesRunTest, PruningModeFindsTheExampleThatALimitFalsifies) {
  for (const char* mode : {"testPruningMode", "testpruningmode"}) {
    const ProgramRun run = Run(mode);
    const std::string summary = folder.Read("TestSummary.txt");
    EXPECT_EQ(run.exitStatus, 1) << summary;
    EXPECT_EQ(CountOf(":   PASS\t\t", summary), examples - 1) << summary;
    EXPECT_NE(summary.find(":   FAIL\t\tconsensus-interlock/consensus-interlock.xml\n"),
              std::string::npos);
    EXPECT_EQ(CountOf("FAIL order: 1\n", folder.Read("TestResults.txt")), 1);
    EXPECT_EQ(CountOf("FAIL order: ", folder.Read("TestResults.txt")), 1);
  }
}

TEST_F(TestModesRunTest, EveryExampleHasExpectationsThatAreCompared) {
  Run("testMode");
  const std::string log = folder.Read("TestResults.txt");
  EXPECT_EQ(CountOf("No expected results file found", log), 0);
  EXPECT_EQ(CountOf("is no expected result", log), 0);
  EXPECT_EQ(CountOf("For FT #", log), CountOf("Fault Tree #", log));
  EXPECT_GE(CountOf("\tPASS\n", log), 5 * examples);
}

TEST_F(TestModesRunTest, ResultsAreWrittenBesideTheModels) {
  Run("testMode");
  EXPECT_TRUE(folder.Contains("brake-by-wire/brake-by-wire-FMEAOutput/FaultTrees.xml"));
}

TEST_F(TestModesRunTest, WrongExpectationsAreTheExitStatus) {
  folder.Write("brake-by-wire/brake-by-wire_expectedResults.txt", "#1\nC 1 4\nC 2 16\nC 3 18\n");
  folder.Write("silent-alarm/silent-alarm_expectedResults.txt", "#1\nU 0.5\n");
  EXPECT_EQ(Run("testMode").exitStatus, 2);
  const std::string summary = folder.Read("TestSummary.txt");
  EXPECT_NE(summary.find("002:   FAIL\t\tbrake-by-wire/brake-by-wire.xml\n"), std::string::npos);
  EXPECT_EQ(CountOf(":   FAIL\t\t", summary), 2) << summary;
}

TEST_F(TestModesRunTest, BrokenExpectationsAreAnError) {
  folder.Write("TestModels.txt", "brake-by-wire/brake-by-wire.xml,3\n");
  folder.Write("brake-by-wire/brake-by-wire_expectedResults.txt", "Tree 1\nU 0.5\n");
  const ProgramRun run = Run("testMode");
  EXPECT_EQ(run.exitStatus, 1);
  EXPECT_EQ(run.errors,
            "Exception occurred: Line 1 of brake-by-wire/brake-by-wire_expectedResults.txt is no "
            "expected result\n");
}

TEST_F(TestModesRunTest, NoModelIsReadAsText) {
  folder.Write("TestModels.txt", "brake-by-wire/brake-by-wire.vtn\n");
  const ProgramRun run = Run("testMode");
  EXPECT_EQ(run.exitStatus, 1);
  EXPECT_EQ(run.errors,
            "Exception occurred: XML parser error: Error document empty. at row: 0 "
            "column: 0\n");
}

TEST_F(TestModesRunTest, MissingListIsAnEmptyOne) {
  std::filesystem::remove(folder.Path("TestModels.txt"));
  EXPECT_EQ(Run("testMode").exitStatus, 0);
  EXPECT_NE(folder.Read("TestSummary.txt").find("Number of Passes: 0\n"), std::string::npos);
}

}  // namespace
}  // namespace FTS
