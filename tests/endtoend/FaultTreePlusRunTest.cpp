// What asking for a FaultTree+ project comes to on a system that the tool is not made for.

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "support/ModelXml.h"
#include "support/ProcessStateTest.h"
#include "support/ProgramRun.h"
#include "support/TemporaryFolder.h"

namespace FTS {
namespace {

class FaultTreePlusRunTest : public ProcessStateTest {
 protected:
  static constexpr const char* OneWarning =
      "\nWARNINGS: 1\nFault Tree Plus DLL not found - Output to FT+ is not possible.\n";

  ProgramRun Run(std::vector<std::string> options) const {
    const std::string model = XmlModel(
        {XmlHazard("H", "Omission-A.out")},
        XmlSystem({XmlLeaf("A", {"out"},
                           {{XmlEvent("dead", 0.5)}, {XmlDeviation("Omission-out", "dead")}})},
                  {}));
    options.insert(options.begin(),
                   {folder.Write("m.xml", model), "outputdir=" + folder.Path("results")});
    const ProgramRun run = RunProgramWith(options, {.folder = folder.Path(), .program = ""});
    EXPECT_EQ(run.exitStatus, 0);
    return run;
  }

  TemporaryFolder folder;
};

TEST_F(FaultTreePlusRunTest, IsOneWarningAndNoFolder) {
  const ProgramRun run = Run({"outputtype=FTP"});
  EXPECT_EQ(run.errors, OneWarning);
  EXPECT_FALSE(folder.Contains("results"));
  EXPECT_THAT(run.output, ::testing::Not(::testing::HasSubstr("Generating Fault Tree + file")));
  EXPECT_THAT(run.output, ::testing::HasSubstr("\nTime elapsed: "));
}

TEST_F(FaultTreePlusRunTest, ALibraryInTheWayChangesNothing) {
  folder.Write("PSA32DLL.DLL", "no library");
  EXPECT_EQ(Run({"outputtype=FTP", "-openftp"}).errors, OneWarning);
}

TEST_F(FaultTreePlusRunTest, OtherResultsAreWritten) {
  EXPECT_EQ(Run({"outputtype=XML,FTP,RESULTS"}).errors, OneWarning);
  EXPECT_TRUE(folder.Contains("results/m-FMEAOutput/FaultTrees.xml"));
  EXPECT_TRUE(folder.Contains("results/m-Results/Results.xml"));
  EXPECT_FALSE(folder.Contains("results/m-FMEAOutput/FaultTreePlusLookup.csv"));
}

TEST_F(FaultTreePlusRunTest, ExchangeFilesOfAllKindsGoTogether) {
  EXPECT_EQ(Run({"outputtype=OPENPSA,PROBLOG,FTP"}).errors, OneWarning);
  EXPECT_TRUE(folder.Contains("results/m-FMEAOutput/m.xml"));
  EXPECT_TRUE(folder.Contains("model.txt"));
}

}  // namespace
}  // namespace FTS
