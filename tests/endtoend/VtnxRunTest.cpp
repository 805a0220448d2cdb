#include <gtest/gtest.h>

#include <set>
#include <string>

#include "support/ModelXml.h"
#include "support/ProcessStateTest.h"
#include "support/ProgramRun.h"
#include "support/TemporaryFolder.h"
#include "support/ZipWriter.h"

namespace FTS {
namespace {

/// Runs of the program on archives, the form in which tools save models.
class VtnxRunTest : public ProcessStateTest {
 protected:
  static std::string Relay() {
    return XmlModel(
        {XmlHazard("H", "Omission-B.out")},
        XmlSystem({XmlLeaf("A", {"out"},
                           {{XmlEvent("dead", 0.5)}, {XmlDeviation("Omission-out", "dead")}}),
                   XmlLeaf("B", {"in", "out"},
                           {{XmlEvent("stuck", 0.25)},
                            {XmlDeviation("Omission-out", "stuck + Omission-in")}})},
                  {XmlWire("A.out", "B.in")}));
  }

  ProgramRun Run(const std::string& path) const {
    return RunProgramWith({path, "outputdir=" + folder.Path(), "outputtype=RESULTS"});
  }

  static bool Holds(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
  }

  TemporaryFolder folder;
};

TEST_F(VtnxRunTest, ArchiveIsAnalysedLikeItsDocument) {
  const std::string path = folder.Path("relay.vtnx");
  WriteZip(path, {{"layout.xml", "<Layout/>"}, {"relay.xml", Relay()}});
  const ProgramRun run = Run(path);
  EXPECT_EQ(run.exitStatus, 0);
  EXPECT_EQ(run.errors, "");
  EXPECT_TRUE(
      Holds(run.output, "\n\nParsing file: " + path + "\n\n" + path + "\nSynthesising:\n    H\n"))
      << run.output;
  const ReportedTree tree = ReadResults(folder.Path("relay-Results/Results.xml")).at("H");
  EXPECT_EQ(tree.cutSets, (std::set<std::string>{"DEFAULT::A.dead", "DEFAULT::B.stuck"}));
  EXPECT_EQ(tree.unavailability, 0.625);  // 1 - (1 - 0.5) * (1 - 0.25)
}

TEST_F(VtnxRunTest, ArchiveWithoutTheDocumentIsReported) {
  const std::string path = folder.Path("relay.vtnx");
  WriteZip(path, {{"other.xml", Relay()}});
  const ProgramRun run = Run(path);
  EXPECT_EQ(run.exitStatus, 0);
  EXPECT_EQ(run.errors, "XML parser error: Error document empty. at row: 0 column: 0\n");
  EXPECT_FALSE(Holds(run.output, "Synthesising"));
}

TEST_F(VtnxRunTest, PlaceOfAFaultIsThatInTheDocument) {
  const std::string path = folder.Path("relay.vtnx");
  WriteZip(path, {{"relay.xml", "<Model>\n <Name>relay</Nam>\n</Model>"}});
  EXPECT_EQ(Run(path).errors, "XML parser error: Error reading end tag. at row: 2 column: 13\n");
}

}  // namespace
}  // namespace FTS
