#include <gmock/gmock.h>

#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>

#include "app/Config.h"
#include "app/DiagnosticLog.h"
#include "app/TestModes.h"
#include "faulttree/BasicEvent.h"
#include "model/Model.h"
#include "model/VtnException.h"
#include "support/CapturedStreams.h"
#include "support/CaseName.h"
#include "support/CurrentFolder.h"
#include "support/FixedClock.h"
#include "support/ModelXml.h"
#include "support/ProcessStateTest.h"
#include "support/TemporaryFolder.h"

namespace FTS {
namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;

/// The cut sets are {a}, {b, c} and {b, day}, where `day` is a normal event.
std::string SmallModel() {
  return XmlModel({XmlHazard("H", "Omission-A.out")},
                  XmlSystem({XmlLeaf("A", {"out"},
                                     {{XmlEvent("a", 0.5), XmlEvent("b", 0.5), XmlEvent("c", 0.5)},
                                      {XmlDeviation("Omission-out", "a + b * c + b * day")},
                                      {},
                                      {XmlNormalEvent("day", 0.5)}})},
                            {}));
}

class TestModesTest : public ProcessStateTest {
 protected:
  TestModesTest() {
    folder.Write("small.xml", SmallModel());
    Config::Instance().quantAnalysisTypes = QuantAnalysisType::EsaryProschan;
  }

  int Run(const std::string& list, const TestModelReader& read = ReadTestModel) {
    folder.Write("TestModels.txt", list);
    return RunRegressionTests(read);
  }

  std::string Log() const { return folder.Read("TestResults.txt"); }
  std::string Summary() const { return folder.Read("TestSummary.txt"); }

  TemporaryFolder folder;
  CurrentFolder current{folder.Path()};
  FixedClock clock;
  CapturedStreams streams;
};

constexpr const char* Rule = "\n--------------------------------\n";

TEST_F(TestModesTest, SummaryHasALineForEachTestAndTheCounts) {
  folder.Write("small_expectedResults.txt", "#1\nU 0.71875\nC 1 1\nC 2 2\n");
  EXPECT_EQ(Run("small.xml\nmissing.xml\nsmall.xml\n"), 1);
  const std::string counts = std::string(Rule) +
                             "Total time taken: 0s\n"
                             "Number of Passes: 2\n"
                             "Number of Leaks: 0 (NB: These count as passes above :)\n"
                             "Number of Fails: 0\n"
                             "Number of Errors: 1\n";
  EXPECT_EQ(Summary(),
            "001:   PASS\t\tsmall.xml\n002:   ERRORS\t\tmissing.xml\n003:   PASS\t\tsmall.xml\n" +
                counts);
  EXPECT_THAT(streams.Output(), HasSubstr(counts));
}

TEST_F(TestModesTest, LogTellsPhasesAndResults) {
  Run("small.xml\n");
  EXPECT_EQ(Log(),
            "TEST 1\n--------\nTesting file: small.xml\nParsing...\nParse successful\n"
            "Synthesising...\nAnalysing...\nBuilding FMEA...\nGenerating output...\n"
            "Process complete.\n1 fault trees generated\nFault Tree #1\nUnavailability: 0.71875\n"
            "Minimal Cut Sets: 3\n1 cut sets of order 1\n2 cut sets of order 2\n"
            "No expected results file found: small_expectedResults.txt - cannot check results\n"
            "Model deleted.\nTime elapsed: 0s\nWarnings: 0\n");
  EXPECT_THAT(Summary(), HasSubstr("001:   PASS\t\tsmall.xml\n"));
}

TEST_F(TestModesTest, ComparisonsAreLogged) {
  folder.Write("small_expectedResults.txt", "#1\nU 0.7188\nC 1 1\nC 2 3\nC 3 0\n");
  EXPECT_EQ(Run("small.xml\n"), 1);
  EXPECT_THAT(Log(), HasSubstr("For FT #1\nActual U = 0.71875\tExpected U = 0.7188\tPASS\n"
                               "Actual CS1 = 1\tExpected CS1 = 1\tPASS\n"
                               "Actual CS2 = 2\tExpected CS2 = 3\tFAIL\n"
                               "Actual CS3 = 0\tExpected CS3 = 0\tPASS\n"));
  EXPECT_THAT(Summary(), HasSubstr("001:   FAIL\t\tsmall.xml\n"));
}

struct VerdictCase {
  const char* name;
  const char* expectations;
  int status;
};

class VerdictTest : public TestModesTest, public ::testing::WithParamInterface<VerdictCase> {};

TEST_P(VerdictTest, IsTheExitStatus) {
  folder.Write("small_expectedResults.txt", GetParam().expectations);
  EXPECT_EQ(Run("small.xml\n"), GetParam().status) << Log();
}

INSTANTIATE_TEST_SUITE_P(
    Expectations, VerdictTest,
    ::testing::Values(VerdictCase{"Equal", "#1\nU 0.71875\nC 1 1\nC 2 2\n", 0},
                      VerdictCase{"WithinTolerance", "#1\nU 0.71884\nC 1 1\nC 2 2\n", 0},
                      VerdictCase{"BeyondTolerance", "#1\nU 0.71886\nC 1 1\nC 2 2\n", 1},
                      VerdictCase{"UnnamedOrderIsNone", "#1\nU 0.71875\nC 1 1\n", 1},
                      VerdictCase{"OrderThatIsNotThere", "#1\nC 1 1\nC 2 2\nC 3 1\n", 1},
                      VerdictCase{"OneTooFew", "#1\nC 1 1\nC 2 1\n", 1},
                      VerdictCase{"TreeThatIsNotThere", "#2\n", 1},
                      VerdictCase{"FiguresOfATreeThatIsNotThere", "#2\nU 0\nC 1 0\n", 1},
                      VerdictCase{"EmptyLinesAtTheEnd", "#1\nC 1 1\nC 2 2\n\n\n", 0}),
    CaseName);

struct BrokenExpectations {
  const char* name;
  const char* text;
  const char* message;
};

class BrokenExpectationsTest : public TestModesTest,
                               public ::testing::WithParamInterface<BrokenExpectations> {};

TEST_P(BrokenExpectationsTest, AreAnErrorThatNamesFileAndLine) {
  folder.Write("small_expectedResults.txt", GetParam().text);
  EXPECT_EQ(Run("small.xml\n"), 1);
  const std::string message = "Exception occurred: " + std::string(GetParam().message) + "\n";
  EXPECT_EQ(streams.Errors(), message);
  EXPECT_THAT(Log(), HasSubstr(message));
  EXPECT_THAT(Summary(), HasSubstr("001:   ERRORS\t\tsmall.xml\n"));
}

INSTANTIATE_TEST_SUITE_P(
    Files, BrokenExpectationsTest,
    ::testing::Values(
        BrokenExpectations{"FirstLine", "# one\nU 0\nC 1 7\n",
                           "Line 1 of small_expectedResults.txt is no expected result"},
        BrokenExpectations{"EmptyLineBetween", "#1\nU 0.71875\nC 1 1\nC 2 2\n\n#2\n",
                           "Line 5 of small_expectedResults.txt is no expected result"},
        BrokenExpectations{"LastLine", "#1\nU 0.71875\nC 1 1\nC 2 2\nC3 0",
                           "Line 5 of small_expectedResults.txt is no expected result"},
        BrokenExpectations{"EmptyFile", "", "No expected results in small_expectedResults.txt"},
        BrokenExpectations{"EmptyLines", "\n\n",
                           "No expected results in small_expectedResults.txt"}),
    CaseName);

TEST_F(TestModesTest, ComparisonThatFailedGoesBeforeAStrangeLine) {
  folder.Write("small_expectedResults.txt", "#1\nU 0.1\n\nC 1 1\n");
  EXPECT_EQ(Run("small.xml\n"), 1);
  EXPECT_THAT(Log(), HasSubstr("Expected U = 0.1\tFAIL\n"));
  EXPECT_THAT(Log(), HasSubstr("Line 3 of small_expectedResults.txt is no expected result\n"));
  EXPECT_THAT(Summary(), HasSubstr("001:   FAIL\t\tsmall.xml\n"));
}

TEST_F(TestModesTest, EntriesSetWhatTheirTestRunsWith) {
  Run("small.xml,1\nsmall.xml,discountNormalEvents\nsmall.xml\n");
  EXPECT_THAT(Log(), HasSubstr("Minimal Cut Sets: 1\n1 cut sets of order 1\nNo expected"));
  // {b, day} counts as one event, and orders are printed one higher without normal events.
  EXPECT_THAT(Log(),
              HasSubstr("Minimal Cut Sets: 3\n2 cut sets of order 2\n1 cut sets of order 3"));
  EXPECT_THAT(Log(),
              HasSubstr("Minimal Cut Sets: 3\n1 cut sets of order 1\n2 cut sets of order 2"));
}

TEST_F(TestModesTest, NodesThatOutliveTheirModelAreALeak) {
  std::vector<std::shared_ptr<BasicEvent>> kept;
  const auto leaky = [&kept](const std::string& path) {
    auto model = ReadTestModel(path);
    kept.push_back(std::make_shared<BasicEvent>("kept", model.get(), false));
    return model;
  };
  folder.Write("small_expectedResults.txt", "#1\nC 1 1\nC 2 2\n");
  EXPECT_EQ(Run("small.xml\n", leaky), 0);
  EXPECT_THAT(Summary(), HasSubstr("001:   LEAK\t\tsmall.xml\n"));
  EXPECT_THAT(Summary(), HasSubstr("Number of Passes: 1\nNumber of Leaks: 1 (NB: These count as "
                                   "passes above :)\n"));
}

TEST_F(TestModesTest, LeakOfOneTestIsNotThatOfTheNext) {
  std::vector<std::shared_ptr<BasicEvent>> kept;
  const auto leaky = [&kept](const std::string& path) {
    auto model = ReadTestModel(path);
    if (kept.empty()) kept.push_back(std::make_shared<BasicEvent>("kept", model.get(), false));
    return model;
  };
  Run("small.xml\nsmall.xml\n", leaky);
  EXPECT_THAT(Summary(), HasSubstr("001:   LEAK\t\tsmall.xml\n002:   PASS\t\tsmall.xml\n"));
  // The second test has counted anew, so this fixture's own balance has to as well.
  kept.clear();
  NodeCounters::Reset();
}

TEST_F(TestModesTest, FailureGoesBeforeALeak) {
  std::vector<std::shared_ptr<BasicEvent>> kept;
  const auto leaky = [&kept](const std::string& path) {
    auto model = ReadTestModel(path);
    kept.push_back(std::make_shared<BasicEvent>("kept", model.get(), false));
    return model;
  };
  folder.Write("small_expectedResults.txt", "#1\nC 1 7\n");
  EXPECT_EQ(Run("small.xml\n", leaky), 1);
  EXPECT_THAT(Summary(), HasSubstr("001:   FAIL\t\tsmall.xml\n"));
}

TEST_F(TestModesTest, LoggedErrorsMakeATestAnError) {
  const auto faulty = [](const std::string& path) {
    DiagnosticLog::Instance().AddError("something odd");
    return ReadTestModel(path);
  };
  EXPECT_EQ(Run("small.xml\n", faulty), 1);
  EXPECT_THAT(Summary(), HasSubstr("001:   ERRORS\t\tsmall.xml\n"));
  EXPECT_THAT(Log(), HasSubstr("\nERRORS: 1\nERROR: something odd\n"));
}

TEST_F(TestModesTest, ErrorsOfOneTestAreNotThoseOfTheNext) {
  bool first = true;
  const auto faulty = [&first](const std::string& path) {
    if (std::exchange(first, false)) DiagnosticLog::Instance().AddError("something odd");
    return ReadTestModel(path);
  };
  EXPECT_EQ(Run("small.xml\nsmall.xml\n", faulty), 1);
  EXPECT_THAT(Summary(), HasSubstr("002:   PASS\t\tsmall.xml\n"));
}

TEST_F(TestModesTest, ExceptionsAreToldAndTheNextTestFollows) {
  int test = 0;
  const auto throwing = [&test](const std::string& path) -> std::unique_ptr<Model> {
    if (++test == 1) throw ParseException("odd token", 12);
    if (test == 2) throw VtnException("odd model");
    if (test == 3) throw std::runtime_error("odd library");
    return ReadTestModel(path);
  };
  EXPECT_EQ(Run("a.xml\nb.xml\nc.xml\nsmall.xml\n", throwing), 3);
  const std::string first = "Exception occurred: odd token at line Number: 12\n";
  const std::string second = "Exception occurred: odd model\n";
  const std::string third = "Exception: odd library\nException occurred: \n";
  EXPECT_EQ(streams.Errors(), first + second + third);
  EXPECT_THAT(Log(), HasSubstr("Parsing...\n" + first + "Model deleted.\n"));
  EXPECT_THAT(Log(), HasSubstr(second));
  EXPECT_THAT(Log(), HasSubstr(third));
  EXPECT_THAT(Summary(), HasSubstr("003:   ERRORS\t\tc.xml\n004:   PASS\t\tsmall.xml\n"));
}

TEST_F(TestModesTest, BrokenDocumentIsAnError) {
  folder.Write("broken.xml", "<Model>");
  EXPECT_EQ(Run("broken.xml\n"), 1);
  EXPECT_THAT(Log(), HasSubstr("Exception occurred: XML parser error: "));
}

TEST_F(TestModesTest, MissingListMeansNoTests) {
  EXPECT_EQ(RunRegressionTests(), 0);
  EXPECT_THAT(Summary(), HasSubstr("Number of Passes: 0\n"));
}

TEST_F(TestModesTest, ExitStatusEndsAt125) {
  std::string list;
  for (int i = 0; i < 130; ++i) list += "missing.xml\n";
  EXPECT_EQ(Run(list), 125);
  EXPECT_THAT(Summary(), HasSubstr("Number of Errors: 130\n"));
}

TEST_F(TestModesTest, ReportsThatDoNotFitAreTold) {
  std::filesystem::create_symlink("/dev/full", folder.Path("TestResults.txt"));
  std::filesystem::create_symlink("/dev/full", folder.Path("TestSummary.txt"));
  EXPECT_EQ(Run("missing.xml\n"), 1);
  EXPECT_THAT(streams.Errors(), EndsWith("Cannot write the whole of file: TestResults.txt\n"
                                         "Cannot write the whole of file: TestSummary.txt\n"));
}

TEST_F(TestModesTest, SilentRunWritesFilesOnly) {
  Config::Instance().runSilent = true;
  Run("small.xml\n");
  EXPECT_EQ(streams.Output(), "");
  EXPECT_THAT(Summary(), HasSubstr("001:   PASS"));
}

TEST_F(TestModesTest, ErrorsAreSeenInASilentRunToo) {
  Config::Instance().runSilent = true;
  const auto faulty = [](const std::string& path) {
    DiagnosticLog::Instance().AddError("something odd");
    return ReadTestModel(path);
  };
  EXPECT_EQ(Run("small.xml\n", faulty), 1);
}

TEST_F(TestModesTest, ModelWithoutTreesHasNoOutput) {
  folder.Write("small.xml", XmlModel({}, XmlSystem({}, {})));
  EXPECT_EQ(Run("small.xml\n"), 0);
  EXPECT_THAT(Log(), HasSubstr("No fault trees present: no output generated.\nProcess complete.\n"
                               "0 fault trees generated\n"));
}

TEST_F(TestModesTest, PruningComparesEachOrderWithTheWholeRun) {
  folder.Write("TestModels.txt", "small.xml\n");
  EXPECT_EQ(RunPruningTests(), 0);
  EXPECT_EQ(Log(),
            "TEST 1\n--------\nTesting file: small.xml\nTime elapsed for unpruned: 0s\n"
            "################################\nUnpruned cut sets\nFaultTree: 1\nOrder 1: 1\n"
            "Order 2: 2\nCurrent max order for pruning: 1\nTime elapsed for order 1: 0s\n"
            "Pruned cut sets\nFault Tree: 1\nOrder 1: 1\nPASS order: 1\n"
            "Current max order for pruning: 2\nTime elapsed for order 2: 0s\nPruned cut sets\n"
            "Fault Tree: 1\nOrder 1: 1\nOrder 2: 2\nPASS order: 1\nPASS order: 2\n"
            "Model deleted.\nTime elapsed: 0s\nWarnings: 0\n");
  EXPECT_EQ(Summary(), "001:   PASS\t\tsmall.xml\n" + std::string(Rule) +
                           "Total time taken: 0s\nNumber of Passes: 1\nNumber of Fails: 0\n"
                           "Number of Errors: 0\n");
}

TEST_F(TestModesTest, PruningKeepsWithinTheLimitOfTheEntry) {
  folder.Write("TestModels.txt", "small.xml,1\n");
  EXPECT_EQ(RunPruningTests(), 0);
  EXPECT_THAT(Log(), Not(HasSubstr("max order for pruning: 2")));
}

TEST_F(TestModesTest, PruningGoesByTheEventsThatCount) {
  folder.Write("TestModels.txt", "small.xml,discountNormalEvents\n");
  EXPECT_EQ(RunPruningTests(), 0) << Log();
  // Orders are printed one higher: two cut sets within the limit 1, all within 2.
  EXPECT_THAT(Log(), HasSubstr("pruning: 1\nTime elapsed for order 1: 0s\nPruned cut sets\n"
                               "Fault Tree: 1\nOrder 2: 2\nPASS order: 1\nPASS order: 2\n"));
  EXPECT_THAT(Log(), HasSubstr("Order 3: 1\nPASS order: 1\nPASS order: 2\nPASS order: 3\n"));
}

TEST_F(TestModesTest, PruningThatLosesACutSetFails) {
  // Another model under the limit stands for a limit that drops too much.
  folder.Write("other.xml", XmlModel({XmlHazard("H", "Omission-A.out")},
                                     XmlSystem({XmlLeaf("A", {"out"},
                                                        {{XmlEvent("a"), XmlEvent("b")},
                                                         {XmlDeviation("Omission-out", "a * b")}})},
                                               {})));
  const auto losing = [](const std::string& path) {
    return ReadTestModel(Config::Instance().maxCutSetSize == 0 ? path : "other.xml");
  };
  folder.Write("TestModels.txt", "small.xml\n");
  EXPECT_EQ(RunPruningTests(losing), 1);
  EXPECT_THAT(Log(), HasSubstr("FAIL order: 1\nFAIL order: 2\nModel deleted."));
  EXPECT_THAT(Log(), HasSubstr("FAIL order: 1\nCurrent max order for pruning: 2\n"));
  EXPECT_THAT(Summary(), HasSubstr("001:   FAIL\t\tsmall.xml\n"));
}

}  // namespace
}  // namespace FTS
