#include <gmock/gmock.h>

#include <filesystem>
#include <string>
#include <vector>

#include "support/ModelXml.h"
#include "support/ProcessStateTest.h"
#include "support/ProgramRun.h"
#include "support/TemporaryFolder.h"

namespace FTS {
namespace {

using ::testing::Contains;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;

/// Runs of the program whose results do not fit: their places lead to a device that is full.
class FullDiskTest : public ProcessStateTest {
 protected:
  ProgramRun Run() const {
    const std::string model = XmlModel(
        {XmlHazard("H", "Omission-A.out")},
        XmlSystem(
            {XmlLeaf("A", {"out"}, {{XmlEvent("dead")}, {XmlDeviation("Omission-out", "dead")}})},
            {}));
    return RunProgramWith({folder.Write("m.xml", model), "outputdir=" + folder.Path("out"),
                           "outputtype=XML,HTML,RESULTS,EXCEL,ISO,PROBLOG"},
                          {folder.Path(), ""});
  }

  /// The files that runs have written into that folder, paths in front.
  std::vector<std::string> Results(const std::string& part) const {
    std::vector<std::string> paths;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.Path(part))) {
      if (entry.is_regular_file()) paths.push_back(entry.path().string());
    }
    return paths;
  }

  static void Fill(const std::string& path) {
    std::filesystem::remove(path);
    std::filesystem::create_symlink("/dev/full", path);
  }

  static std::string Complaint(const std::string& path) {
    return "\nERROR: Cannot write the whole of file: " + path + "\n";
  }

  TemporaryFolder folder;
};

TEST_F(FullDiskTest, EachFileIsNamedOnce) {
  EXPECT_THAT(Run().errors, Not(HasSubstr("Cannot write")));
  const std::vector<std::string> results = Results("out");
  for (const char* name : {"m_Excel.xml", "m_ISO26262_Excel.xml", "FaultTrees.xml", "Index.html",
                           "FaultTrees.js", "Results.xml"}) {
    EXPECT_THAT(results, Contains(EndsWith(name)));
  }
  for (const std::string& path : results) Fill(path);
  const ProgramRun run = Run();
  for (const std::string& path : results) EXPECT_THAT(run.errors, HasSubstr(Complaint(path)));
  EXPECT_THAT(run.errors, HasSubstr("\nERRORS: " + std::to_string(results.size()) + "\n"));
  EXPECT_EQ(run.exitStatus, 0);
}

TEST_F(FullDiskTest, OtherFilesAreWhole) {
  Run();
  const std::string written = folder.Read("out/m-Results/Results.xml");
  Fill(folder.Path("out/m-FMEAOutput/m_Excel.xml"));
  EXPECT_THAT(Run().errors, HasSubstr(Complaint(folder.Path("out/m-FMEAOutput/m_Excel.xml"))));
  EXPECT_EQ(folder.Read("out/m-Results/Results.xml"), written);
}

TEST_F(FullDiskTest, LogicProgramInTheCurrentFolderIsNamedToo) {
  Run();
  std::string program;
  for (const auto& entry : std::filesystem::directory_iterator(folder.Path())) {
    if (entry.is_regular_file() && entry.path().filename() != "m.xml") program = entry.path();
  }
  ASSERT_NE(program, "");
  Fill(program);
  const std::string name = std::filesystem::path(program).filename();
  EXPECT_THAT(Run().errors, HasSubstr(Complaint(name)));
}

}  // namespace
}  // namespace FTS
