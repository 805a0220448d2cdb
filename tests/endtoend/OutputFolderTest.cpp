#include <gtest/gtest.h>

#include <string>

#include "support/ModelXml.h"
#include "support/ProcessStateTest.h"
#include "support/ProgramRun.h"
#include "support/TemporaryFolder.h"

namespace FTS {
namespace {

/// Runs of the program whose output folder cannot be made. A file stands in its way, which stops
/// every user; permissions would not stop them all.
class OutputFolderTest : public ProcessStateTest {
 protected:
  ProgramRun Run(const std::string& outputType) const {
    const std::string model =
        XmlModel({XmlHazard("H", "Omission-A.out")},
                 XmlSystem({XmlLeaf("A", {"in", "out"},
                                    {{XmlEvent("dead", 0.5)},
                                     {XmlDeviation("Omission-out", "dead + Omission-in")}})},
                           {}));
    return RunProgramWith({folder.Write("m.xml", model),
                           "outputdir=" + folder.Write("report", "kept"),
                           "outputtype=" + outputType});
  }

  static std::size_t Find(const std::string& text, const std::string& part) {
    return text.find(part);
  }

  TemporaryFolder folder;
};

TEST_F(OutputFolderTest, IsNamedOnTheErrorStreamInFrontOfTheReports) {
  for (const std::string type : {"XML", "RESULTS"}) {
    const ProgramRun run = Run(type);
    EXPECT_EQ(run.exitStatus, 0) << type;
    const std::string warnings =
        "\nWARNINGS: 1\n"
        "Warning: removing unconnected input deviation - Omission-DEFAULT::A.in\n";
    EXPECT_TRUE(run.errors.ends_with(warnings)) << run.errors;
    const std::size_t named = Find(run.errors, folder.Path("report"));
    EXPECT_LT(named, Find(run.errors, "WARNINGS")) << run.errors;
  }
}

TEST_F(OutputFolderTest, DoesNotKeepTheAnalysisFromBeingTold) {
  const ProgramRun run = Run("RESULTS");
  EXPECT_NE(Find(run.output, "\tUnavailability of 0.5 calculated in: "), std::string::npos)
      << run.output;
  EXPECT_NE(Find(run.output, "Full analysis complete in "), std::string::npos) << run.output;
  EXPECT_NE(Find(run.output, "\nTime elapsed: "), std::string::npos) << run.output;
}

TEST_F(OutputFolderTest, LeavesTheFileInItsWayAsItWas) {
  Run("XML");
  EXPECT_EQ(folder.Read("report"), "kept");
}

}  // namespace
}  // namespace FTS
