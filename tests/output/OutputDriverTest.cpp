#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "app/Config.h"
#include "app/DiagnosticLog.h"
#include "app/ProgramPath.h"
#include "platform/FileSystem.h"
#include "support/BrakeModel.h"
#include "support/CapturedStreams.h"
#include "support/CurrentFolder.h"
#include "support/EnvironmentVariable.h"
#include "support/ProcessStateTest.h"
#include "support/RecordedCommands.h"
#include "support/TemporaryFolder.h"
#include "support/ThrownMessage.h"

namespace FTS {

namespace {

constexpr const char* TreesFile = "brake.v2-FMEAOutput/FaultTrees.xml";
constexpr const char* PagesFile = "brake.v2-FMEAOutput/Index.html";
constexpr const char* ResultsFile = "brake.v2-Results/Results.xml";

class OutputDriverTest : public ProcessStateTest {
 protected:
  OutputDriverTest() {
    Config::Instance().outputDir = folder.Path();
    // The archive of the pages stands beside the tests as it does beside the program.
    SetProgramPath(ProgramPathFromSystem());
  }
  ~OutputDriverTest() override { SetProgramPath(""); }

  void Run(std::int32_t types) {
    Config::Instance().outputTypes = types;
    brake.Get().OutputResults();
  }

  static const std::vector<std::string>& Warnings() { return DiagnosticLog::Instance().Warnings(); }

  TemporaryFolder folder;
  BrakeModel brake;
  CapturedStreams streams;
  RecordedCommands commands;
  EnvironmentVariable display{"DISPLAY", ":0"};
};

TEST_F(OutputDriverTest, NoTypeWritesNothingAndMakesNoFolder) {
  Run(0);
  EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
  EXPECT_EQ(streams.Output(), "");
  EXPECT_TRUE(Warnings().empty());
}

TEST_F(OutputDriverTest, OpenPsaAloneWritesNothingHere) {
  Run(OutputType::OpenPsa);
  EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
  EXPECT_EQ(streams.Output(), "");
  EXPECT_TRUE(Warnings().empty());
}

TEST_F(OutputDriverTest, XmlMakesItsFolderAndFiles) {
  Run(OutputType::Xml);
  EXPECT_TRUE(folder.Contains(TreesFile));
  EXPECT_TRUE(folder.Contains("brake.v2-FMEAOutput/CutSets(20).xml"));
  EXPECT_FALSE(folder.Contains("brake.v2-Results"));
  EXPECT_EQ(streams.Output(), "Generating XML results\n");
}

TEST_F(OutputDriverTest, ResultsMakeTheirOwnFolderAndFile) {
  Run(OutputType::Results);
  EXPECT_TRUE(folder.Contains(ResultsFile));
  EXPECT_FALSE(folder.Contains("brake.v2-FMEAOutput"));
  EXPECT_EQ(streams.Output(),
            "Generating XML results to Results.xml\n" + folder.Path(ResultsFile) + "\n");
}

TEST_F(OutputDriverTest, WorkbookOfResultsIsWrittenAlone) {
  Run(OutputType::Excel);
  EXPECT_TRUE(folder.Contains("brake.v2-FMEAOutput/brake.v2_Excel.xml"));
  EXPECT_FALSE(folder.Contains("brake.v2-FMEAOutput/brake.v2_ISO26262_Excel.xml"));
  EXPECT_FALSE(folder.Contains(TreesFile));
  EXPECT_TRUE(Warnings().empty());
}

TEST_F(OutputDriverTest, WorkbookOfMetricsIsWrittenAloneAndWithoutAWord) {
  brake.Get().faultTrees.clear();
  Run(OutputType::Iso);
  EXPECT_TRUE(folder.Contains("brake.v2-FMEAOutput/brake.v2_ISO26262_Excel.xml"));
  EXPECT_FALSE(folder.Contains("brake.v2-FMEAOutput/brake.v2_Excel.xml"));
  EXPECT_EQ(streams.Output(), "");
  EXPECT_TRUE(Warnings().empty());
}

TEST_F(OutputDriverTest, ConsoleBlockWritesNoFile) {
  Run(OutputType::Epm);
  EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
  EXPECT_TRUE(Warnings().empty());
}

TEST_F(OutputDriverTest, WorkbooksComeFirstAndTheConsoleBlockBehindThem) {
  brake.Get().fmea = nullptr;
  brake.Get().faultTrees.clear();
  Run(OutputType::Excel | OutputType::Iso | OutputType::Epm | OutputType::Xml);
  EXPECT_EQ(streams.Output(),
            "EPM_Output\nSystemRisk: 0\nEnd_EPM_Output\nGenerating XML results\n");
}

TEST_F(OutputDriverTest, SilentRunWritesWithoutAWord) {
  Config::Instance().runSilent = true;
  Config::Instance().openResultTypes = OutputType::Html;
  Run(OutputType::Xml | OutputType::Results);
  EXPECT_TRUE(folder.Contains(TreesFile));
  EXPECT_TRUE(folder.Contains(ResultsFile));
  EXPECT_EQ(streams.Output() + streams.Errors(), "");
}

TEST_F(OutputDriverTest, FolderAboveIsMadeOnTheWay) {
  Config::Instance().outputDir = folder.Path("a/b");
  Run(OutputType::Xml);
  EXPECT_TRUE(folder.Contains("a/b/brake.v2-FMEAOutput/FaultTrees.xml"));
}

TEST_F(OutputDriverTest, SeparatorAtTheEndOfTheFolderMakesNoDifference) {
  Config::Instance().outputDir = folder.Path("a") + "/";
  Run(OutputType::Xml);
  EXPECT_TRUE(folder.Contains("a/brake.v2-FMEAOutput/FaultTrees.xml"));
}

TEST_F(OutputDriverTest, FolderThatCannotBeMadeEndsTheOutput) {
  folder.Write("file", "");
  Config::Instance().outputDir = folder.Path("file");
  try {
    Run(OutputType::Xml);
    ADD_FAILURE() << "nothing was thrown";
  } catch (const std::filesystem::filesystem_error& error) {
    EXPECT_NE(std::string(error.what()).find("create_directories"), std::string::npos)
        << error.what();
  }
}

// The viewer

TEST_F(OutputDriverTest, ViewerIsAskedWithAnEmptyPathBehindXml) {
  Config::Instance().openResultTypes = OutputType::Xml | OutputType::Html;
  Run(OutputType::Xml);
  EXPECT_EQ(streams.Output(), "Generating XML results\n\"\"\n");
  EXPECT_TRUE(commands.Lines().empty());
}

TEST_F(OutputDriverTest, XmlAloneOpensNoViewer) {
  Config::Instance().openResultTypes = OutputType::Xml;
  Run(OutputType::Xml);
  EXPECT_EQ(streams.Output(), "Generating XML results\n");
}

TEST_F(OutputDriverTest, PagesAreWrittenBesideTheXmlFiles) {
  Run(OutputType::Xml | OutputType::Html);
  EXPECT_TRUE(folder.Contains(TreesFile));
  EXPECT_TRUE(folder.Contains(PagesFile));
  EXPECT_EQ(streams.Output(),
            "Generating XML results\n"
            "Generating XML results\n"
            "Extracting FTOutput files to output folder.\n");
}

TEST_F(OutputDriverTest, ViewerShowsThePages) {
  Config::Instance().openResultTypes = OutputType::Html;
  Run(OutputType::Html);
  ASSERT_EQ(commands.Lines().size(), 1u);
  EXPECT_EQ(commands.Lines()[0].arguments, std::vector<std::string>({folder.Path(PagesFile)}));
  EXPECT_NE(streams.Output().find("\n\"" + folder.Path(PagesFile) + "\"\n"), std::string::npos)
      << streams.Output();
}

TEST_F(OutputDriverTest, PagesThatAreNotAskedForAreNotShown) {
  Run(OutputType::Html);
  EXPECT_TRUE(commands.Lines().empty());
}

TEST_F(OutputDriverTest, TestModeShowsNoPages) {
  Config::Instance().openResultTypes = OutputType::Html;
  Config::Instance().testMode = true;
  Run(OutputType::Html);
  EXPECT_TRUE(folder.Contains(PagesFile));
  EXPECT_TRUE(commands.Lines().empty());
}

TEST_F(OutputDriverTest, TestModeOpensNoViewer) {
  Config::Instance().openResultTypes = OutputType::Html;
  Config::Instance().testMode = true;
  Run(OutputType::Xml);
  EXPECT_EQ(streams.Output(), "Generating XML results\n");
}

TEST_F(OutputDriverTest, ResultsOpenNoViewer) {
  Config::Instance().openResultTypes = OutputType::Html;
  Run(OutputType::Results);
  EXPECT_EQ(streams.Output(),
            "Generating XML results to Results.xml\n" + folder.Path(ResultsFile) + "\n");
}

// What cannot be written

TEST_F(OutputDriverTest, MissingToolIsAWarningAndLaterStepsRun) {
  Run(OutputType::Ftp | OutputType::Results);
  EXPECT_EQ(Warnings(), std::vector<std::string>(
                            {"Fault Tree Plus DLL not found - Output to FT+ is not possible."}));
  EXPECT_TRUE(folder.Contains(ResultsFile));
  EXPECT_FALSE(folder.Contains("brake.v2-FMEAOutput"));
}

TEST_F(OutputDriverTest, ExchangeFileIsMissedBeforeXmlIsWritten) {
  Run(OutputType::Xml | OutputType::Ftp);
  EXPECT_NE(folder.Read(TreesFile).find(
                "<WarningList><Warning>Fault Tree Plus DLL not found - Output to FT+ is not "
                "possible.</Warning></WarningList>"),
            std::string::npos);
}

// The logic program

TEST_F(OutputDriverTest, LogicProgramGoesToTheWorkingFolder) {
  const CurrentFolder here(folder.Path());
  brake.Get().perspectives.clear();
  Run(OutputType::Problog);
  EXPECT_NE(folder.Read("a_model.txt").find("\nseverity(loss_of_braking, 0).\n"),
            std::string::npos);
  EXPECT_FALSE(folder.Contains("brake.v2-FMEAOutput"));
  EXPECT_EQ(streams.Output(), "");
}

TEST_F(OutputDriverTest, LogicProgramOfAnUnfinishedModelEndsTheOutputBehindTheWorkbook) {
  // Its components have no implementation, which no other writer looks at.
  const CurrentFolder here(folder.Path());
  EXPECT_EQ(ThrownMessage([&] { Run(OutputType::Problog | OutputType::Excel | OutputType::Iso); }),
            "No current implementation found for component: Sys::Pump");
  EXPECT_TRUE(folder.Contains("brake.v2-FMEAOutput/brake.v2_Excel.xml"));
  EXPECT_FALSE(folder.Contains("brake.v2-FMEAOutput/brake.v2_ISO26262_Excel.xml"));
}

}  // namespace

}  // namespace FTS
