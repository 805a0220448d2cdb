#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "support/ProcessStateTest.h"
#include "support/ProgramRun.h"
#include "support/TemporaryFolder.h"
#include "support/TestPaths.h"

namespace FTS {
namespace {

/// A row of tests/models/bad/expected.tsv; what its columns mean is told in the README there.
struct FaultyModel {
  std::string file;
  std::string phase;
  std::string kind;
  std::string text;
};

std::string Folder() { return TestsFolder() + "/models/bad/"; }

std::vector<FaultyModel> FaultyModels() {
  std::vector<FaultyModel> models;
  std::ifstream table(Folder() + "expected.tsv");
  std::string line;
  std::getline(table, line);
  while (std::getline(table, line)) {
    std::istringstream cells(line);
    FaultyModel model;
    std::getline(cells, model.file, '\t');
    std::getline(cells, model.phase, '\t');
    std::getline(cells, model.kind, '\t');
    std::getline(cells, model.text, '\t');
    models.push_back(model);
  }
  return models;
}

bool Has(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

class FaultyModelsTest : public ProcessStateTest,
                         public ::testing::WithParamInterface<FaultyModel> {
 protected:
  /// The text stands where the row's kind says, and nothing worse is reported.
  static bool Answers(const FaultyModel& model, const std::string& errors) {
    if (model.kind == "none") return errors.empty();
    if (model.kind == "error") return Has(errors, "ERROR: " + model.text);
    if (model.kind == "warning") {
      const std::size_t warnings = errors.find("WARNINGS: ");
      return warnings != std::string::npos && Has(errors.substr(warnings), model.text) &&
             !Has(errors, "ERROR");
    }
    return Has(errors, model.text);
  }
};

TEST_P(FaultyModelsTest, AreAnsweredWithTheirFault) {
  const TemporaryFolder folder;
  const FaultyModel& model = GetParam();
  const auto run = RunProgramWith({Folder() + model.file, "outputdir=" + folder.Path(),
                                   "outputtype=RESULTS", "displayOutput=false"});
  EXPECT_EQ(run.exitStatus, 0);
  EXPECT_TRUE(Answers(model, run.errors)) << "expected: " << model.text << "\n" << run.errors;
  EXPECT_EQ(Has(run.output, "Synthesising:"), model.phase != "reading") << run.output;
  EXPECT_EQ(Has(run.output, "Full analysis complete"), model.phase == "end") << run.output;
}

INSTANTIATE_TEST_SUITE_P(Files, FaultyModelsTest, ::testing::ValuesIn(FaultyModels()),
                         [](const auto& row) {
                           std::string name = row.param.file;
                           std::replace_if(
                               name.begin(), name.end(),
                               [](unsigned char c) { return std::isalnum(c) == 0; }, '_');
                           return name;
                         });

class FaultyModelsTableTest : public ProcessStateTest {};

TEST_F(FaultyModelsTableTest, HasARowForEachFileThatIsThere) {
  EXPECT_GE(FaultyModels().size(), 40U);
  for (const FaultyModel& model : FaultyModels()) {
    EXPECT_TRUE(std::ifstream(Folder() + model.file).is_open()) << model.file;
  }
}

}  // namespace
}  // namespace FTS
