#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "support/ModelXml.h"
#include "support/ProcessStateTest.h"
#include "support/ProgramRun.h"
#include "support/TemporaryFolder.h"
#include "support/TestPaths.h"

namespace FTS {
namespace {

/// Runs of a copy of the program, with tools beside it that write down how they were called.
class DecompositionRunTest : public ProcessStateTest {
 protected:
  DecompositionRunTest() {
    std::filesystem::create_directories(folder.Path("my tools"));
    // A copy, since the program looks where its own file lies. A hard link is one without the
    // bytes.
    std::error_code failure;
    std::filesystem::create_hard_link(ProgramUnderTest(), Program(), failure);
    if (failure) std::filesystem::copy_file(ProgramUnderTest(), Program());
  }

  std::string Program() const { return folder.Path("my tools/vtn"); }

  void WriteTool(const std::string& name) const {
    const std::string path = folder.Write(
        "my tools/" + name,
        "#!/bin/sh\n{ echo \"$0\"; for a in \"$@\"; do echo \"[$a]\"; done; } >> \"$PWD/calls\"\n"
        "test -f \"$1/FaultTrees.xml\" && echo results >> \"$PWD/calls\"\nexit 4\n");
    std::filesystem::permissions(path, std::filesystem::perms::owner_all);
  }

  ProgramRun Run(const std::string& model, std::vector<std::string> options) const {
    folder.Write(
        model,
        XmlModel(hazards,
                 XmlSystem({XmlLeaf("A", {"out"},
                                    {{XmlEvent("a", 0.5)}, {XmlDeviation("Omission-out", "a")}})},
                           {})));
    options.insert(options.begin(), {model, "outputtype=XML", "displayOutput=false"});
    return RunProgramWith(options, {folder.Path(), Program()});
  }

  static bool Holds(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
  }

  TemporaryFolder folder;
  std::vector<std::string> hazards = {XmlHazard("H", "Omission-A.out")};
};

TEST_F(DecompositionRunTest, ToolsGetTheResultsThatWereWritten) {
  WriteTool("asilDecomp.exe");
  WriteTool("DAL");
  const ProgramRun run =
      Run("brake.xml", {"decomposeDALs", "decomposeSILs", "dalCostHeuristic=1,2,3,4,5"});
  EXPECT_EQ(run.exitStatus, 0);
  EXPECT_EQ(run.errors.find("ERROR"), std::string::npos) << run.errors;
  const std::string results = folder.Path("brake-FMEAOutput");
  EXPECT_EQ(folder.Read("calls"),
            Program().substr(0, Program().size() - 3) + "asilDecomp.exe\n[" + results +
                "]\n[1]\n[2]\n[3]\n[4]\n[5]\n[1]\n[1000]\n[3]\n[4]\n[1]\n"
                "[0.4]\n[50]\nresults\n" +
                Program().substr(0, Program().size() - 3) + "DAL\n[" + results +
                "]\n[dalCosts]\n[1]\n[2]\n[3]\n[4]\n[5]\nresults\n");
  EXPECT_TRUE(Holds(
      run.output, "asilDecomp.exe\" \"" + results + "\" 1 2 3 4 5 1 1000 3 4 1 0.4 50\n\"" +
                      folder.Path("my tools/DAL") + "\" \"" + results + "\" dalCosts 1 2 3 4 5\n"))
      << run.output;
}

TEST_F(DecompositionRunTest, NameOfAModelRunsNothing) {
  WriteTool("asilDecomp");
  Run("a \"b\" $(touch hacked) `touch hacked` ; touch hacked.xml", {"decomposeSILs"});
  EXPECT_FALSE(folder.Contains("hacked"));
  EXPECT_TRUE(
      Holds(folder.Read("calls"), "[" +
                                      folder.Path("a \"b\" $(touch hacked) `touch hacked` ; touch "
                                                  "hacked-FMEAOutput") +
                                      "]\n"));
}

TEST_F(DecompositionRunTest, ToolOfAnotherSystemDoesNotHideTheOneThatRuns) {
  folder.Write("my tools/asilDecomp.exe", "MZ");
  WriteTool("asilDecomp");
  Run("brake.xml", {"decomposeSILs"});
  EXPECT_TRUE(Holds(folder.Read("calls"), "/my tools/asilDecomp\n"));
}

TEST_F(DecompositionRunTest, RunEndsWellWithoutTheTools) {
  const ProgramRun run = Run("brake.xml", {"decomposeSILs", "decomposeDALs"});
  EXPECT_EQ(run.exitStatus, 0);
  EXPECT_TRUE(Holds(run.output, "/my tools/DAL.exe\" \"")) << run.output;
  EXPECT_TRUE(Holds(run.output, "Time elapsed: "));
}

TEST_F(DecompositionRunTest, ToolsStayAwayWithoutAFaultTree) {
  WriteTool("asilDecomp");
  hazards = {};
  EXPECT_TRUE(Holds(Run("brake.xml", {"decomposeSILs"}).errors,
                    "No fault trees present: no output generated.\n"));
  EXPECT_FALSE(folder.Contains("calls"));
}

}  // namespace
}  // namespace FTS
