// The logic program as users get it: whole runs of the program, which is started in the folder that
// the file goes to.

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "support/Golden.h"
#include "support/ModelXml.h"
#include "support/ProcessStateTest.h"
#include "support/ProgramRun.h"
#include "support/TemporaryFolder.h"
#include "support/TestPaths.h"

namespace FTS {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

class ProblogRunTest : public ProcessStateTest {
 protected:
  ProgramRun RunOn(const std::string& path, std::vector<std::string> options) const {
    options.insert(options.begin(), {path, "outputdir=" + folder.Path("results")});
    const ProgramRun run = RunProgramWith(options, {.folder = folder.Path(), .program = ""});
    EXPECT_EQ(run.exitStatus, 0);
    return run;
  }

  ProgramRun Run(const std::string& model, std::vector<std::string> options) const {
    return RunOn(folder.Write("m.xml", model), std::move(options));
  }

  static std::string Single(const std::string& logic) {
    return XmlModel({XmlHazard("H", "Omission-A.out", 2.0)},
                    XmlSystem({XmlLeaf("A", {"in", "out"},
                                       {{XmlEvent("a"), XmlEvent("b"), XmlEvent("c")},
                                        {XmlDeviation("Omission-out", logic)}})},
                              {}));
  }

  TemporaryFolder folder;
};

TEST_F(ProblogRunTest, WholeModelIsOneProgramInTheWorkingFolder) {
  const ProgramRun run = RunOn(TestsFolder() + "/models/exchange.xml", {"outputtype=PROBLOG"});
  EXPECT_THAT(run.errors, Not(HasSubstr("PROBLOG")));
  EXPECT_GOLDEN(folder.Read("my_Model_1.txt"), "output/my_Model_1.txt");
  EXPECT_FALSE(folder.Contains("results"));
}

TEST_F(ProblogRunTest, ProgramIsTheSameWithoutAnalysisAndInSilence) {
  const ProgramRun run = RunOn(TestsFolder() + "/models/exchange.xml",
                               {"outputtype=PROBLOG", "analyse=false", "runSilent=true"});
  EXPECT_GOLDEN(folder.Read("my_Model_1.txt"), "output/my_Model_1.txt");
  EXPECT_EQ(run.errors, "");
}

TEST_F(ProblogRunTest, NothingIsToldOnTheConsole) {
  const ProgramRun with = Run(Single("a"), {"outputtype=PROBLOG,RESULTS"});
  EXPECT_EQ(with.errors, "");
  EXPECT_THAT(with.output, HasSubstr("\nGenerating XML results to Results.xml\n"));
  EXPECT_THAT(with.output, Not(HasSubstr("roblog")));
}

TEST_F(ProblogRunTest, GatesInGatesHaveNoBrackets) {
  Run(Single("(a + b) * c"), {"outputtype=PROBLOG"});
  EXPECT_THAT(folder.Read("model.txt"),
              HasSubstr("\n1::deviation(omission, dEFAULT__A_out) :- basicEvent(dEFAULT__A, a) | "
                        "basicEvent(dEFAULT__A, b) & basicEvent(dEFAULT__A, c).\n"));
}

TEST_F(ProblogRunTest, InputDeviationWithoutLineIsNull) {
  Run(Single("a + Omission-in"), {"outputtype=PROBLOG"});
  EXPECT_THAT(folder.Read("model.txt"),
              HasSubstr("\n\ndeviation(omission, dEFAULT__A_in) :- null.\n\n1::deviation("));
}

TEST_F(ProblogRunTest, AlternativesAreWrittenBesideTheImplementationInUse) {
  RunOn(TestsFolder() + "/models/everything.xml", {"outputtype=PROBLOG"});
  const std::string text = folder.Read("everything.txt");
  EXPECT_THAT(text, HasSubstr("::basicEvent(plant__Pump, seized).\n"));
  EXPECT_THAT(text, HasSubstr("::basicEvent(plant__Pump, e).\n"));
  // What an alternative is made of is not.
  EXPECT_THAT(text, Not(HasSubstr("Rotor")));
}

TEST_F(ProblogRunTest, FileThatCannotBeWrittenStopsNothing) {
  folder.Write("model.txt/in-the-way", "");
  const ProgramRun run = Run(Single("a"), {"outputtype=PROBLOG,RESULTS"});
  EXPECT_EQ(run.errors, "");
  EXPECT_TRUE(folder.Contains("results/m-Results/Results.xml"));
}

}  // namespace
}  // namespace FTS
