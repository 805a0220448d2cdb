// Searches over the examples that stand in both formats: the same designs from either.

#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <string>
#include <vector>

#include "platform/FileSystem.h"
#include "support/CaseName.h"
#include "support/ProcessStateTest.h"
#include "support/ProgramRun.h"
#include "support/TemporaryFolder.h"
#include "support/TestPaths.h"

namespace FTS {
namespace {

struct SearchedExample {
  const char* name;
  const char* folder;
  const char* model;
  std::vector<std::string> options;
};

class TextModelSearchTest : public ProcessStateTest,
                            public ::testing::WithParamInterface<SearchedExample> {
 protected:
  /// What a short search saves, without the name of the model's file and the time.
  std::string StateOf(const std::string& extension) const {
    const std::string model = GetParam().model;
    const std::string out = folder.Path(extension.substr(1));
    std::vector<std::string> arguments = GetParam().options;
    arguments.insert(arguments.begin(),
                     {ExamplesFolder() + "/" + GetParam().folder + "/" + model + extension,
                      "optimise=true", "GAType=NSGA", "populationSize=30", "maxGenerations=5",
                      "randomSeed=1", "openBrowser=false", "outputdir=" + out});
    EXPECT_EQ(RunProgramWith(arguments).errors, "");
    std::string text;
    for (const auto& entry :
         std::filesystem::directory_iterator(out + "/" + model + "-OptimisationResults")) {
      if (entry.path().extension() == ".xml") text += ReadWholeFile(entry.path().string()).value();
    }
    static const std::regex varying("<(ModelFileName|TimeElapsed)>[^<]*<");
    text = std::regex_replace(text, varying, "<$1><");
    // The text format can't name the tree, and the networks have only one.
    static const std::regex tree("Unavailability\\([A-Za-z]*\\)");
    return std::regex_replace(text, tree, "Unavailability");
  }

  TemporaryFolder folder;
};

TEST_P(TextModelSearchTest, MakesTheDesignsOfTheDocument) {
  const std::string document = StateOf(".xml");
  EXPECT_NE(document.find("<Evaluations>"), std::string::npos) << document;
  EXPECT_EQ(StateOf(".vtn"), document);
}

INSTANTIATE_TEST_SUITE_P(
    Examples, TextModelSearchTest,
    ::testing::Values(
        SearchedExample{
            "FlatBenchmark", "redundancy-benchmark", "flat", {"useRBD=true", "encodingType=FIXED"}},
        SearchedExample{"HierarchicalBenchmark",
                        "redundancy-benchmark",
                        "tree",
                        {"useRBD=true", "encodingType=TREE"}},
        SearchedExample{
            "MeasuringNetwork", "measuring-network", "measuring-network", {"encodingType=FIXED"}},
        SearchedExample{
            "SensorNetwork", "sensor-network", "sensor-network", {"encodingType=FIXED"}}),
    CaseName);

}  // namespace
}  // namespace FTS
