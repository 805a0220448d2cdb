#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "model/NumberText.h"
#include "support/ProcessStateTest.h"
#include "support/ProgramRun.h"
#include "support/TemporaryFolder.h"
#include "support/TestPaths.h"

namespace FTS {
namespace {

std::vector<std::string> Split(const std::string& text, char separator) {
  std::vector<std::string> parts;
  std::stringstream stream(text);
  for (std::string part; std::getline(stream, part, separator);) parts.push_back(part);
  return parts;
}

/// The folders of examples/ that hold a model and what is to be expected of it.
std::vector<std::string> ExampleNames() {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(ExamplesFolder())) {
    if (std::filesystem::exists(entry.path() / "expected.csv")) {
      names.push_back(entry.path().filename().string());
    }
  }
  std::sort(names.begin(), names.end());
  return names;
}

/// Those of them whose model stands beside it in the text format too.
std::vector<std::string> TextExampleNames() {
  std::vector<std::string> names = ExampleNames();
  std::erase_if(names, [](const std::string& name) {
    return !std::filesystem::exists(ExamplesFolder() + "/" + name + "/" + name + ".vtn");
  });
  return names;
}

/// The event's name as results have it: the table is UTF-8, they write the sign of a complement as
/// one byte.
std::string AsReported(std::string name) {
  const std::string sign = "\xC2\xAC";
  const std::size_t at = name.find(sign);
  return at == std::string::npos ? name : name.replace(at, sign.size(), "\xAC");
}

/// The figures that were worked out for an example without the program.
std::map<std::string, ReportedTree> ReadExpected(const std::string& path) {
  std::map<std::string, ReportedTree> trees;
  std::ifstream file(path);
  std::string line;
  std::getline(file, line);
  EXPECT_EQ(line, "row,tree,unavailability,frequency,order,events");
  while (std::getline(file, line)) {
    const auto cells = Split(line, ',');
    ReportedTree& tree = trees[cells.at(1)];
    if (cells[0] == "tree") {
      tree.unavailability = ParseDouble(cells.at(2));
      tree.frequency = ParseDouble(cells.at(3));
      continue;
    }
    auto members = Split(cells.at(5), ';');
    for (auto& member : members) member = AsReported(member);
    std::sort(members.begin(), members.end());
    std::string joined;
    for (const auto& member : members) joined += (joined.empty() ? "" : ";") + member;
    tree.cutSets.insert(joined);
    tree.unavailabilityOf[joined] = ParseDouble(cells.at(2));
    ++tree.countByOrder[ParseInteger(cells.at(4))];
  }
  return trees;
}

class ExamplesTest : public ProcessStateTest, public ::testing::WithParamInterface<std::string> {
 protected:
  /// Results carry six significant digits.
  static void ExpectFigure(double actual, double expected, const std::string& what) {
    EXPECT_NEAR(actual, expected, 1e-5 * std::abs(expected)) << what;
  }

  std::string Home() const { return ExamplesFolder() + "/" + GetParam() + "/"; }

  ProgramRun Run(std::vector<std::string> options, const std::string& extension = ".xml") {
    options.insert(options.begin(), {Home() + GetParam() + extension, "outputdir=" + folder.Path(),
                                     "outputtype=XML,RESULTS"});
    ProgramRun run = RunProgramWith(options);
    EXPECT_EQ(run.exitStatus, 0);
    EXPECT_EQ(run.errors.find("ERROR"), std::string::npos) << run.errors;
    return run;
  }

  void ExpectFiguresWorkedOut() const;

  TemporaryFolder folder;
};

void ExamplesTest::ExpectFiguresWorkedOut() const {
  const auto expected = ReadExpected(Home() + "expected.csv");
  const auto actual = ReadResults(folder.Path(GetParam() + "-Results/Results.xml"));
  ASSERT_FALSE(expected.empty());
  ASSERT_EQ(actual.size(), expected.size());
  for (const auto& [treeName, tree] : expected) {
    ASSERT_TRUE(actual.contains(treeName)) << treeName;
    const ReportedTree& found = actual.at(treeName);
    EXPECT_EQ(found.cutSets, tree.cutSets) << treeName;
    EXPECT_EQ(found.countByOrder, tree.countByOrder) << treeName;
    ExpectFigure(found.unavailability, tree.unavailability, treeName + " unavailability");
    ExpectFigure(found.frequency, tree.frequency, treeName + " frequency");
    for (const auto& [cutSet, figure] : tree.unavailabilityOf) {
      if (found.unavailabilityOf.contains(cutSet)) {
        ExpectFigure(found.unavailabilityOf.at(cutSet), figure, treeName + " " + cutSet);
      }
    }
  }
}

TEST_P(ExamplesTest, GivesTheFiguresWorkedOutForIt) {
  Run({});
  ExpectFiguresWorkedOut();
}

TEST_P(ExamplesTest, GivesThemWithoutModules) {
  Run({"modularise=false"});
  ExpectFiguresWorkedOut();
}

TEST_P(ExamplesTest, GivesThemByDiagramsOrWarns) {
  for (const char* modules : {"modularise=true", "modularise=false"}) {
    const ProgramRun run = Run({"useBDDs=true", modules});
    if (run.output.find("Consensus Law") == std::string::npos) {
      ExpectFiguresWorkedOut();
    } else {
      EXPECT_NE(run.errors.find("leave out which events must not occur"), std::string::npos);
    }
  }
}

std::string NameOf(const ::testing::TestParamInfo<std::string>& example) {
  std::string name = example.param;
  std::replace(name.begin(), name.end(), '-', '_');
  return name;
}

INSTANTIATE_TEST_SUITE_P(Examples, ExamplesTest, ::testing::ValuesIn(ExampleNames()), NameOf);

/// Examples in the text format.
class TextExamplesTest : public ExamplesTest {
 protected:
  /// The lines of the console from the synthesis on, without times and paths.
  static std::string Progress(const ProgramRun& run) {
    const std::string text = WithoutTimes(run.output);
    return text.substr(text.find("Synthesising"));
  }
};

TEST_P(TextExamplesTest, GivesTheFiguresWorkedOutForIt) {
  Run({}, ".vtn");
  ExpectFiguresWorkedOut();
}

TEST_P(TextExamplesTest, RunsLikeTheDocument) {
  const ProgramRun document = Run({});
  const ProgramRun text = Run({}, ".vtn");
  EXPECT_EQ(Progress(text), Progress(document));
  EXPECT_EQ(text.errors, document.errors);
}

TEST_P(TextExamplesTest, GivesTheTreesOfTheDocument) {
  const std::string results = folder.Path(GetParam() + "-Results/Results.xml");
  Run({"modularise=false"});
  const auto document = ReadResults(results);
  Run({"modularise=false"}, ".vtn");
  const auto text = ReadResults(results);
  ASSERT_EQ(text.size(), document.size());
  for (const auto& [name, tree] : document) {
    ASSERT_TRUE(text.contains(name)) << name;
    EXPECT_EQ(text.at(name).cutSets, tree.cutSets) << name;
    EXPECT_EQ(text.at(name).unavailability, tree.unavailability) << name;
    EXPECT_EQ(text.at(name).frequency, tree.frequency) << name;
    EXPECT_EQ(text.at(name).severity, tree.severity) << name;
  }
}

INSTANTIATE_TEST_SUITE_P(Examples, TextExamplesTest, ::testing::ValuesIn(TextExampleNames()),
                         NameOf);

class TextExamplesListTest : public ProcessStateTest {};

// The rest hold what the format has no words for: allocations, state machines, coverages, a NOT in
// a hazard, objectives of their own.
TEST_F(TextExamplesListTest, HoldsTheModelsThatTheFormatCanCarry) {
  EXPECT_EQ(TextExampleNames(),
            (std::vector<std::string>{"avionics-supply", "brake-by-wire", "consensus-interlock",
                                      "control-loop", "measuring-network", "process-plant",
                                      "pumping-station", "sensor-network"}));
}

}  // namespace
}  // namespace FTS
