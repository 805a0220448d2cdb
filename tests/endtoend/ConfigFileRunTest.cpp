#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "support/CaseName.h"
#include "support/ModelXml.h"
#include "support/ProcessStateTest.h"
#include "support/ProgramRun.h"
#include "support/TemporaryFolder.h"

namespace FTS {
namespace {

/// Runs of the program with a configuration file, on a model whose cut sets are {a} and {b, c}.
class ConfigFileRunTest : public ProcessStateTest {
 protected:
  ConfigFileRunTest() {
    folder.Write(
        "model.xml",
        XmlModel({XmlHazard("H", "Omission-A.out")},
                 XmlSystem({XmlLeaf("A", {"out"},
                                    {{XmlEvent("a", 0.5), XmlEvent("b", 0.5), XmlEvent("c", 0.5)},
                                     {XmlDeviation("Omission-out", "a + b * c")}})},
                           {})));
  }

  ProgramRun Run(std::vector<std::string> options) const {
    options.insert(options.begin(), "model.xml");
    return RunProgramWith(options, {folder.Path(), ""});
  }

  static bool Holds(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
  }

  TemporaryFolder folder;
};

TEST_F(ConfigFileRunTest, LimitOfTheFileGoesBeforeThatOfTheCommandLine) {
  folder.Write("my.cfg", "Max cut set size = 1;\n");
  for (const char* limit : {"maxcutset=2", "maxcutset=0"}) {
    EXPECT_TRUE(Holds(Run({limit, "config=my.cfg"}).output, "\n1: 1\nTotal: 1\n")) << limit;
    EXPECT_TRUE(Holds(Run({"config=my.cfg", limit}).output, "\n1: 1\nTotal: 1\n")) << limit;
  }
}

TEST_F(ConfigFileRunTest, OutputTypesOfTheCommandLineAreLost) {
  folder.Write("my.cfg", "Modularise = true;\n");
  const ProgramRun run = Run({"outputtype=RESULTS", "config=my.cfg"});
  EXPECT_TRUE(Holds(run.output, "outputtype=RESULTS\nconfig=my.cfg\n"));
  EXPECT_EQ(run.exitStatus, 0);
  EXPECT_FALSE(folder.Contains("model-Results"));
}

TEST_F(ConfigFileRunTest, FileSaysWhatIsWrittenAndWhere) {
  folder.Write("my.cfg", "Output type = RESULTS;\nOutput dir = out;\n");
  Run({"config=my.cfg"});
  EXPECT_TRUE(folder.Contains("out/model-Results/Results.xml"));
}

TEST_F(ConfigFileRunTest, MissingFileIsCreatedAndUsed) {
  const ProgramRun run = Run({"config=settings/team/my.cfg", "displayOutput=false"});
  EXPECT_EQ(run.exitStatus, 0);
  EXPECT_TRUE(folder.Contains("settings/team/my.cfg"));
  EXPECT_TRUE(folder.Contains("model-FMEAOutput/FaultTrees.xml"));
  EXPECT_TRUE(Holds(run.errors,
                    "\nNo config file present - creating new file 'veltarn.cfg' with "
                    "default values.\n"))
      << run.errors;
}

struct UnusablePath {
  const char* name;
  std::string path;
};

class UnusablePathTest : public ConfigFileRunTest,
                         public ::testing::WithParamInterface<UnusablePath> {
 protected:
  UnusablePathTest() { std::filesystem::create_symlink("loop", folder.Path("loop")); }
};

TEST_P(UnusablePathTest, EndsWithOne) {
  const ProgramRun run = Run({"config=" + GetParam().path});
  EXPECT_EQ(run.exitStatus, 1);
  EXPECT_EQ(
      run.errors,
      "Error while trying to load or create Vel-Tarn configuration file: Could not create new "
      "config file 'veltarn.cfg'!\n");
  EXPECT_FALSE(Holds(run.output, "Parsing file"));
}

INSTANTIATE_TEST_SUITE_P(Paths, UnusablePathTest,
                         ::testing::Values(UnusablePath{"BelowAFile", "model.xml/my.cfg"},
                                           UnusablePath{"CircleOfLinks", "loop"},
                                           UnusablePath{"BelowACircleOfLinks", "loop/my.cfg"}),
                         CaseName);

TEST_F(ConfigFileRunTest, NameThatTheSystemRefusesEndsWithOne) {
  // Too long for a file system, and in the topmost folder short enough for a path.
  const ProgramRun run = Run({"config=/" + std::string(256, 'x')});
  EXPECT_EQ(run.exitStatus, 1);
  EXPECT_TRUE(Holds(run.errors, "Could not create new config file 'veltarn.cfg'!\n")) << run.errors;
}

TEST_F(ConfigFileRunTest, NothingIsReadOrWrittenWithoutTheOption) {
  folder.Write("veltarn.cfg", "Max cut set size = 1;\n");
  EXPECT_TRUE(Holds(Run({}).output, "\n1: 1\n2: 1\nTotal: 2\n"));
}

}  // namespace
}  // namespace FTS
