// The search against a problem whose best designs are known, through the program.

#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "model/NumberText.h"
#include "platform/XmlDocument.h"
#include "support/ModelXml.h"
#include "support/ProcessStateTest.h"
#include "support/ProgramRun.h"
#include "support/TemporaryFolder.h"
#include "support/TestPaths.h"

namespace FTS {
namespace {

using Point = std::pair<int, int>;  // Cost and weight.

/// Cost and weight of each choice, subsystem by subsystem, as the literature has them.
const std::vector<std::vector<Point>> Choices = {
    {{1, 3}, {1, 4}, {2, 2}, {2, 5}}, {{2, 8}, {1, 10}, {1, 9}},
    {{2, 7}, {3, 5}, {1, 6}, {4, 4}}, {{3, 5}, {4, 6}, {5, 4}},
    {{2, 4}, {2, 3}, {3, 5}},         {{3, 5}, {3, 4}, {2, 5}, {2, 4}},
    {{4, 7}, {4, 8}, {5, 9}},         {{3, 4}, {5, 7}, {6, 6}},
    {{2, 8}, {3, 9}, {4, 7}, {3, 8}}, {{4, 6}, {4, 5}, {5, 6}},
    {{3, 5}, {4, 6}, {5, 6}},         {{2, 4}, {3, 5}, {4, 6}, {5, 7}},
    {{2, 5}, {3, 5}, {2, 6}},         {{4, 6}, {4, 7}, {5, 6}, {6, 9}},
};

/// The points of which no other is at most as large in both.
std::set<Point> FrontOf(const std::set<Point>& points) {
  std::set<Point> front;
  for (const Point& point : points) {  // Ascending by cost, so only the weight has to fall.
    if (front.empty() || point.second < front.rbegin()->second) front.insert(point);
  }
  return front;
}

/// One component in each subsystem: more of them only cost more.
std::set<Point> TrueFront() {
  std::set<Point> front{{0, 0}};
  for (const auto& choices : Choices) {
    std::set<Point> sums;
    for (const Point& sum : front) {
      for (const Point& choice : choices) {
        sums.emplace(sum.first + choice.first, sum.second + choice.second);
      }
    }
    front = FrontOf(sums);
  }
  return front;
}

Point PointOf(XmlElement individual) {
  Point point;
  const XmlElement values = individual.FirstChild("Evaluations");
  for (XmlElement item = values.FirstChild(); item; item = item.NextSibling()) {
    const int value = static_cast<int>(ParseDouble(item.FirstChild("Value").Text()));
    (item.FirstChild("Name").Text() == "Cost" ? point.first : point.second) = value;
  }
  return point;
}

class RedundancyBenchmarkRunTest : public ProcessStateTest {
 protected:
  /// The archive that the search leaves.
  std::set<Point> Found(const std::string& model, const std::string& encoding,
                        const std::vector<std::string>& options = {}) {
    std::vector<std::string> all = {ExamplesFolder() + "/redundancy-benchmark/" + model + ".xml",
                                    "optimise=true",
                                    "GAType=NSGA",
                                    "useRBD=true",
                                    "encodingType=" + encoding,
                                    "populationSize=100",
                                    "pureElitist=true",
                                    "randomSeed=1",
                                    "outputdir=" + folder.Path()};
    all.insert(all.end(), options.begin(), options.end());
    const ProgramRun run = RunProgramWith(all);
    EXPECT_EQ(run.errors, "");
    std::set<Point> points;
    for (const auto& entry :
         std::filesystem::directory_iterator(folder.Path(model + "-OptimisationResults"))) {
      if (entry.path().extension() != ".xml") continue;
      const XmlDocument state = XmlDocument::LoadFile(entry.path().string());
      const XmlElement archive = state.FirstChild("Vel-Tarn_Results")
                                     .FirstChild("NSGA")
                                     .FirstChild("ArchiveNonDominatedPopulations")
                                     .FirstChild();
      for (XmlElement item = archive.FirstChild(); item; item = item.NextSibling()) {
        points.insert(PointOf(item));
      }
    }
    return points;
  }

  TemporaryFolder folder;
};

TEST_F(RedundancyBenchmarkRunTest, FlatSearchFindsTheWholeFront) {
  EXPECT_EQ(Found("flat", "FIXED"), TrueFront());
}

TEST_F(RedundancyBenchmarkRunTest, HierarchicalSearchFindsTheWholeFront) {
  EXPECT_EQ(Found("tree", "TREE"), TrueFront());
}

/// The saved search of one design, whose stored figures are none of a design, so that its copy by a
/// search without crossover and mutation takes its place.
std::string StateOf(const std::vector<std::vector<int>>& genes) {
  constexpr std::size_t Slots = 8;
  std::string nodes;
  for (std::size_t i = 0; i < genes.size(); ++i) {
    std::string slots;
    for (std::size_t k = 0; k < Slots; ++k) {
      const int gene = k < genes[i].size() ? genes[i][k] : 0;
      slots += Xml("Implementation", Xml("Name", "") + Xml("Index", std::to_string(gene)));
    }
    const std::string name =
        std::string("DEFAULT::fyffe") + (i < 9 ? "0" : "") + std::to_string(i + 1);
    nodes +=
        Xml("EncodingNode", Xml("Component", Xml("Name", name)) + Xml("Implementations", slots));
  }
  const auto value = [](const std::string& name) {
    return Xml("Evaluation", Xml("Name", name) + Xml("Value", "999"));
  };
  const std::string individual =
      Xml("Individual", Xml("IndividualID", "0") + Xml("Encoding", Xml("FixedEncoding", nodes)) +
                            Xml("Evaluations", value("Cost") + value("Weight")));
  return Xml(
      "Vel-Tarn_Results",
      Xml("NSGA",
          "<Generation>1</Generation><EncodingType>FixedEncoding</EncodingType>"
          "<TimeElapsed>0</TimeElapsed><UncheckedPopulation/>" +
              Xml("NonDominatedPopulation", individual) + "<OtherNonDominatedPopulations/>"));
}

// Of the designs that the literature gives for a weight of at most 191.
TEST_F(RedundancyBenchmarkRunTest, PublishedDesignCostsAndWeighsWhatIsPublished) {
  folder.Write("state.xml", StateOf({{3, 3, 3},
                                     {1, 1},
                                     {4, 4, 4},
                                     {3, 3, 3, 3},
                                     {2, 2, 2},
                                     {2, 2},
                                     {1, 1, 1},
                                     {1, 1, 1, 1},
                                     {1, 2},
                                     {2, 3, 3},
                                     {3, 3},
                                     {1, 1, 1, 1},
                                     {1, 1},
                                     {3, 4}}));
  EXPECT_EQ(Found("flat", "FIXED",
                  {"previousStateFileName=" + folder.Path("state.xml"), "crossoverRate=0",
                   "mutationRate=0", "maxGenerations=2"}),
            (std::set<Point>{{130, 191}}));
}

TEST_F(RedundancyBenchmarkRunTest, FrontIsTheOneOfTheText) {
  EXPECT_EQ(
      TrueFront(),
      (std::set<Point>{{34, 74}, {35, 73}, {36, 72}, {38, 71}, {39, 70}, {41, 69}, {43, 68}}));
}

}  // namespace
}  // namespace FTS
