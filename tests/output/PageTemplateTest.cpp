#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "app/Config.h"
#include "app/DiagnosticLog.h"
#include "app/ProgramPath.h"
#include "output/PageTemplate.h"
#include "support/CapturedStreams.h"
#include "support/ProcessStateTest.h"
#include "support/TemporaryFolder.h"
#include "support/ZipWriter.h"

namespace FTS {
namespace {

class PageTemplateTest : public ProcessStateTest {
 protected:
  PageTemplateTest() { SetProgramPath(folder.Path("program")); }
  ~PageTemplateTest() override { SetProgramPath(""); }

  TemporaryFolder folder;
  CapturedStreams streams;
};

TEST_F(PageTemplateTest, IsUnpackedFromBesideTheProgram) {
  WriteZip(folder.Path("FTOutput.zip"), {{"FTOutput/css/a.css", "body {}"}});
  UnpackPageTemplate(folder.Path("results"));
  EXPECT_EQ(folder.Read("results/FTOutput/css/a.css"), "body {}");
  EXPECT_EQ(streams.Output(), "Extracting FTOutput files to output folder.\n");
  EXPECT_EQ(streams.Errors(), "");
}

TEST_F(PageTemplateTest, SilentRunSaysNothing) {
  Config::Instance().runSilent = true;
  WriteZip(folder.Path("FTOutput.zip"), {{"FTOutput/css/a.css", "body {}"}});
  UnpackPageTemplate(folder.Path("results"));
  EXPECT_EQ(streams.Output(), "");
}

TEST_F(PageTemplateTest, FileThatDoesNotFitIsAnError) {
  WriteZip(folder.Path("FTOutput.zip"), {{"a.css", "body {}"}});
  folder.Write("results/b", "");
  std::filesystem::create_symlink("/dev/full", folder.Path("results/a.css"));
  UnpackPageTemplate(folder.Path("results"));
  EXPECT_EQ(DiagnosticLog::Instance().Errors(),
            std::vector{"Cannot write the whole of file: " + folder.Path("results/a.css")});
}

TEST_F(PageTemplateTest, MissingArchiveIsTold) {
  UnpackPageTemplate(folder.Path("results"));
  EXPECT_EQ(streams.Errors(),
            "Problem opening zip file: " + folder.Path("FTOutput.zip") + " (65536)\n");
}

}  // namespace
}  // namespace FTS
