#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <string>

#include "app/Config.h"
#include "app/DiagnosticLog.h"
#include "app/ProgramPath.h"
#include "faulttree/BasicEvent.h"
#include "output/VisitorHTML.h"
#include "platform/FileSystem.h"
#include "support/BrakeModel.h"
#include "support/CapturedStreams.h"
#include "support/CurrentFolder.h"
#include "support/Golden.h"
#include "support/ProcessStateTest.h"
#include "support/TemporaryFolder.h"

namespace FTS {
namespace {

class VisitorHTMLTest : public ProcessStateTest {
 protected:
  VisitorHTMLTest() {
    Config::Instance().outputDir = folder.Path();
    // The archive of the pages stands beside the tests as it does beside the program.
    SetProgramPath(ProgramPathFromSystem());
  }
  ~VisitorHTMLTest() override { SetProgramPath(""); }

  void Write() { brake.Get().Accept(writer); }
  std::string Read(const std::string& name) const {
    return folder.Read("brake.v2-FMEAOutput/" + name);
  }

  TemporaryFolder folder;
  BrakeModel brake;
  CapturedStreams streams;
  VisitorHTML writer;
};

TEST_F(VisitorHTMLTest, StartPageLoadsTheModelAndTheTemplate) {
  Write();
  EXPECT_GOLDEN(Read("Index.html"), "output/Index.html");
}

TEST_F(VisitorHTMLTest, TreesAreAScriptWithoutFailureModes) {
  Write();
  EXPECT_GOLDEN(Read("model/FaultTrees.js"), "output/FaultTrees.js");
}

TEST_F(VisitorHTMLTest, CutSetsOfATreeAreAScriptWithTheFailureModes) {
  Write();
  VisitorXML files;
  brake.Get().Accept(files);
  EXPECT_EQ(Read("model/CutSets_20.js"), "var CutSets_20 = '" + Read("CutSets(20).xml") + "';");
  EXPECT_EQ(Read("model/CutSets_30.js"), "var CutSets_30 = '" + Read("CutSets(30).xml") + "';");
}

TEST_F(VisitorHTMLTest, EverythingThatThePageNamesIsThere) {
  Write();
  const std::string page = Read("Index.html");
  const std::regex Named("(?:src=|href=|import )\"([^\"]+)\"");
  int files = 0;
  for (auto match = std::sregex_iterator(page.begin(), page.end(), Named);
       match != std::sregex_iterator(); ++match) {
    EXPECT_TRUE(folder.Contains("brake.v2-FMEAOutput/" + (*match)[1].str())) << (*match)[1];
    ++files;
  }
  EXPECT_EQ(files, 26);
}

TEST_F(VisitorHTMLTest, ModelWithoutTreesHasNoCutSetScripts) {
  const auto empty = EmptyModel("none.xml");
  empty->Accept(writer);
  EXPECT_EQ(folder.Read("none-FMEAOutput/Index.html").find("CutSets_"), std::string::npos);
  EXPECT_NE(folder.Read("none-FMEAOutput/model/FaultTrees.js").find("<FaultTrees></FaultTrees>"),
            std::string::npos);
}

TEST_F(VisitorHTMLTest, ApostropheOfTheModelStaysAsItIs) {
  brake.stuck->name = "driver's";
  Write();
  EXPECT_NE(Read("model/CutSets_20.js").find("driver's"), std::string::npos);
}

TEST_F(VisitorHTMLTest, WarningsAreEscapedForTheScript) {
  DiagnosticLog::Instance().AddWarning("it's C:\\new\nline");
  Write();
  EXPECT_NE(Read("model/FaultTrees.js").find(R"(<Warning>it\'s C:\\new\nline</Warning>)"),
            std::string::npos);
}

TEST_F(VisitorHTMLTest, PathToShowIsAbsolute) {
  Write();
  EXPECT_EQ(writer.viewerPath, folder.Path("brake.v2-FMEAOutput/Index.html"));
}

TEST_F(VisitorHTMLTest, PathToShowIsAbsoluteForARelativeFolderToo) {
  const CurrentFolder inside(folder.Path());
  Config::Instance().outputDir = "results";
  Write();
  EXPECT_TRUE(std::filesystem::path(writer.viewerPath).is_absolute()) << writer.viewerPath;
  EXPECT_TRUE(std::filesystem::exists(writer.viewerPath)) << writer.viewerPath;
}

TEST_F(VisitorHTMLTest, PathToShowHasNoWayUpInIt) {
  std::filesystem::create_directory(folder.Path("here"));
  const CurrentFolder inside(folder.Path("here"));
  Config::Instance().outputDir = "../there/x/..";
  Write();
  EXPECT_EQ(writer.viewerPath, folder.Path("there/brake.v2-FMEAOutput/Index.html"));
}

TEST_F(VisitorHTMLTest, PathToShowKeepsAWayUpOutOfALinkedFolder) {
  std::filesystem::create_directories(folder.Path("far/away"));
  std::filesystem::create_directory(folder.Path("here"));
  const CurrentFolder inside(folder.Path("here"));
  std::filesystem::create_directory_symlink(folder.Path("far/away"), "link");
  Config::Instance().outputDir = "link/..";
  Write();
  EXPECT_TRUE(folder.Contains("far/brake.v2-FMEAOutput/Index.html"));
  EXPECT_EQ(writer.viewerPath, folder.Path("here/link/../brake.v2-FMEAOutput/Index.html"));
}

TEST_F(VisitorHTMLTest, StartPageOfUnknownStateEndsTheWriting) {
  std::filesystem::create_directories(folder.Path("brake.v2-FMEAOutput"));
  const std::string page = folder.Path("brake.v2-FMEAOutput/Index.html");
  std::filesystem::create_symlink("Index.html", page);  // To itself, so that nobody gets there.
  try {
    Write();
    FAIL() << "nothing was thrown";
  } catch (const std::filesystem::filesystem_error& error) {
    EXPECT_NE(std::string(error.what()).find("exists"), std::string::npos) << error.what();
    EXPECT_EQ(error.path1(), page);
    EXPECT_EQ(error.code(), std::errc::too_many_symbolic_link_levels);
  }
}

TEST_F(VisitorHTMLTest, StartPageThatCannotBeMadeIsTold) {
  std::filesystem::create_directories(folder.Path("brake.v2-FMEAOutput/Index.html"));
  Write();
  EXPECT_EQ(streams.Errors(), "ERROR: Could not open XML file to write: " +
                                  folder.Path("brake.v2-FMEAOutput/Index.html") + "\n");
}

}  // namespace
}  // namespace FTS
