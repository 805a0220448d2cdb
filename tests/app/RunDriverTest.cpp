#include <new>
#include <stdexcept>
#include <string>
#include <vector>

#include "app/Config.h"
#include "app/DiagnosticLog.h"
#include "app/RunDriver.h"
#include "support/CapturedStreams.h"
#include "support/CurrentFolder.h"
#include "support/FixedClock.h"
#include "support/ProcessStateTest.h"
#include "support/TemporaryFolder.h"

namespace FTS {
namespace {

constexpr const char* Banner =
    "Vel-Tarn Safety Analysis & Optimisation Tool\n"
    "SimulationX Build v2.5.901 (x64)\n"
    "17 October 2022\n"
    "\n";

/// A model of one component whose output can fail, but of which nothing is a top event.
constexpr const char* SoundModel =
    "<Model><Name>Small</Name><System><Name>S</Name><Components><Component><Name>A</Name>"
    "<Ports><Port><Name>out</Name></Port></Ports><Implementations><Current><Name>I</Name>"
    "</Current></Implementations></Component></Components></System></Model>";

/// The same with a deviation whose logic names an event that is not there.
constexpr const char* FaultyModel =
    "<Model><Name>Faulty</Name><System><Name>S</Name><Components><Component><Name>A</Name>"
    "<Ports><Port><Name>out</Name></Port></Ports><Implementations><Current><Name>I</Name>"
    "<FailureData><OutputDeviations><OutputDeviation><Name>Omission-out</Name>"
    "<FailureExpression>missing</FailureExpression></OutputDeviation></OutputDeviations>"
    "</FailureData></Current></Implementations></Component></Components></System></Model>";

class RunDriverTest : public ProcessStateTest {
 protected:
  int Run(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "vtn");
    std::vector<char*> pointers;
    for (std::string& argument : arguments) pointers.push_back(argument.data());
    return RunProgram(static_cast<int>(pointers.size()), pointers.data());
  }

  TemporaryFolder folder;
  FixedClock clock;
  CapturedStreams streams;
};

TEST_F(RunDriverTest, UsageIsPrintedWithoutAModel) {
  EXPECT_EQ(Run({}), 0);
  EXPECT_TRUE(streams.Output().starts_with(std::string(Banner) + "Usage:\n\tvtn <fileName>\n"))
      << streams.Output();
  EXPECT_EQ(streams.Errors(), "");
}

TEST_F(RunDriverTest, ConfigurationFileThatCannotBeUsedEndsTheProgramWithOne) {
  EXPECT_EQ(Run({"model.xml", "config=" + folder.Path()}), 1);
  EXPECT_EQ(streams.Output(), Banner);
  EXPECT_EQ(
      streams.Errors(),
      "Error while trying to load or create Vel-Tarn configuration file: Could not create new "
      "config file 'veltarn.cfg'!\n");
}

TEST_F(RunDriverTest, TestModeGivesItsExitStatus) {
  const CurrentFolder current(folder.Path());
  folder.Write("TestModels.txt", "missing.xml\nmissing.xml\n");
  EXPECT_EQ(Run({"testMode"}), 2);
  EXPECT_TRUE(streams.Output().starts_with(std::string(Banner) + "TEST 1\n--------\n"));
  EXPECT_EQ(Run({"testpruningmode"}), 2);
  EXPECT_TRUE(folder.Contains("TestSummary.txt"));
}

TEST_F(RunDriverTest, ConfigurationFileKeepsTheTestModeAndItsFormat) {
  const CurrentFolder current(folder.Path());
  folder.Write("my.cfg", "Output type = RESULTS;\n");
  EXPECT_EQ(Run({"testMode", "config=my.cfg"}), 0);
  EXPECT_TRUE(Config::Instance().testMode);
  EXPECT_EQ(Config::Instance().outputTypes, OutputType::Xml | OutputType::Results);
}

TEST_F(RunDriverTest, ModelThatIsNotThereEndsWithItsMessageAndTheTime) {
  const std::string path = folder.Path("absent.xml");
  EXPECT_EQ(Run({path, "maxcutset=3", "nonsense"}), 0);
  EXPECT_EQ(streams.Output(), std::string(Banner) + "Program Arguments Passed: \nmaxcutset=3\n" +
                                  "\n\nParsing file: " + path + "\n\nTime elapsed: 0s\n");
  EXPECT_EQ(streams.Errors(), "File does not exist: " + path + "\n");
}

TEST_F(RunDriverTest, SilentRunPrintsNeitherFileNorTime) {
  const std::string path = folder.Path("absent.xml");
  EXPECT_EQ(Run({path, "runSilent=true"}), 0);
  EXPECT_EQ(streams.Output(), std::string(Banner) + "Program Arguments Passed: \nrunSilent=true\n");
  EXPECT_EQ(streams.Errors(), "File does not exist: " + path + "\n");
}

TEST_F(RunDriverTest, BrokenDocumentIsReportedWithItsPlace) {
  const std::string path = folder.Write("broken.xml", "<Model>\n  <Name>x</Nome>\n</Model>");
  EXPECT_EQ(Run({path}), 0);
  EXPECT_TRUE(streams.Errors().starts_with("XML parser error: ")) << streams.Errors();
  EXPECT_NE(streams.Errors().find(" at row: 2 column: "), std::string::npos) << streams.Errors();
}

TEST_F(RunDriverTest, TextModelIsRead) {
  const std::string path = folder.Write("old.vtn", "Model Name \"old\" System { }");
  EXPECT_EQ(Run({path}), 0);
  EXPECT_NE(streams.Output().find("\n\nModel parsed\nSynthesising"), std::string::npos);
  EXPECT_EQ(streams.Errors(), "No fault trees present: no output generated.\n");
}

TEST_F(RunDriverTest, FaultOfATextModelIsReportedWithItsLine) {
  const std::string path = folder.Write("old.vtn", "Model Name \"old\"\nSystem {\n  7 }");
  EXPECT_EQ(Run({path}), 0);
  EXPECT_EQ(streams.Errors(),
            "Match Error #3: Incorrect Token type - found Number. Expected: \"}\" but found: "
            "\"<NUMBER>\" with value: \"7\" at line number: 3\n");
}

TEST_F(RunDriverTest, ExtensionCountsAsSpelled) {
  const std::string path = folder.Write("model.XML", SoundModel);
  EXPECT_EQ(Run({path}), 0);
  EXPECT_EQ(streams.Errors(), "Parser creation error: The file '" + path +
                                  "' could not be parsed - it is not a recognised format\n");
}

TEST_F(RunDriverTest, ModelWithoutTopEventGivesNoOutput) {
  const std::string path = folder.Write("small.xml", SoundModel);
  EXPECT_EQ(Run({path}), 0);
  EXPECT_EQ(streams.Errors(), "No fault trees present: no output generated.\n");
}

TEST_F(RunDriverTest, ParsingErrorsStopTheRunAndAreListedTwice) {
  const std::string path = folder.Write("faulty.xml", FaultyModel);
  EXPECT_EQ(Run({path}), 0);
  const std::string errors = streams.Errors();
  const std::size_t end = errors.find("There were unrecoverable errors");
  ASSERT_NE(end, std::string::npos) << errors;
  const std::string list = errors.substr(0, end);
  EXPECT_TRUE(list.starts_with("\nERRORS: 1\nERROR: Basic event missing is referred to")) << list;
  EXPECT_EQ(errors, list +
                        "There were unrecoverable errors found during parsing. at line number: "
                        "-1\n" +
                        list);
}

TEST_F(RunDriverTest, SilentRunGoesOnBehindParsingErrors) {
  const std::string path = folder.Write("faulty.xml", FaultyModel);
  EXPECT_EQ(Run({path, "runSilent=true"}), 0);
  EXPECT_EQ(streams.Errors(), "No fault trees present: no output generated.\n");
}

TEST_F(RunDriverTest, WarningsLeaveTheStatusAlone) {
  const std::string path = folder.Write("small.xml", SoundModel);
  DiagnosticLog::Instance().AddWarning("odd");
  EXPECT_EQ(Run({path}), 0);
  EXPECT_EQ(streams.Errors(), "No fault trees present: no output generated.\n\nWARNINGS: 1\nodd\n");
}

TEST_F(RunDriverTest, OptimisationTakesThePlaceOfTheAnalysis) {
  const std::string path = folder.Write("small.xml", SoundModel);
  EXPECT_EQ(Run({path, "optimise=true", "GAType=NSGA", "maxGenerations=0"}), 0);
  EXPECT_EQ(streams.Errors(), "");
  EXPECT_NE(
      streams.Output().find("Starting Genetic Algorithm run number 1\n"
                            "Current generation (0) of optimisation is already at maximum (0).\n"
                            "Genetic Algorithm finished: deleting\n"),
      std::string::npos)
      << streams.Output();
}

TEST_F(RunDriverTest, RunLeavesFreshStateBehind) {
  DiagnosticLog::Instance().AddWarning("left over");
  EXPECT_EQ(Run({folder.Path("absent.xml"), "maxcutset=3"}), 0);
  EXPECT_EQ(streams.Errors().find("\nWARNINGS: 1\nleft over\n"),
            streams.Errors().size() - std::string("\nWARNINGS: 1\nleft over\n").size());
  EXPECT_EQ(DiagnosticLog::Instance().ReportedWarnings(), 0);
  EXPECT_EQ(Config::Instance().maxCutSetSize, 0);
}

TEST_F(RunDriverTest, LackOfMemoryEndsWithOneAndAMessage) {
  EXPECT_EQ(RunToTheEnd([]() -> int { throw std::bad_alloc(); }), 1);
  EXPECT_EQ(streams.Errors(), "Vel-Tarn has exited with an out of memory exception.\n");
}

TEST_F(RunDriverTest, ExceptionThatNobodyCaughtEndsWithOneAndItsText) {
  EXPECT_EQ(RunToTheEnd([]() -> int { throw std::runtime_error("odd library"); }), 1);
  EXPECT_EQ(streams.Errors(), "odd library\n");
}

TEST_F(RunDriverTest, ResultStandsWhileMemorySuffices) {
  EXPECT_EQ(RunToTheEnd([] { return 7; }), 7);
  EXPECT_EQ(streams.Errors(), "");
}

}  // namespace
}  // namespace FTS
