// The sensor network of examples/, whose true front is found by going through all designs.

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "app/Config.h"
#include "input/vtnxParser.h"
#include "model/Model.h"
#include "model/NumberText.h"
#include "optimisation/Individual.h"
#include "optimisation/NSGA.h"
#include "optimisation/NonDominatedPopulation.h"
#include "optimisation/Random.h"
#include "support/CapturedStreams.h"
#include "support/ProcessStateTest.h"
#include "support/TemporaryFolder.h"
#include "support/TestPaths.h"

namespace FTS {
namespace {

/// A price, and the probability to fail.
struct Quality {
  double cost;
  double unavailability;
};

/// Cost and unavailability of a design, the latter with six significant digits.
using Point = std::pair<double, double>;

class SensorNetworkSearchTest : public ProcessStateTest {
 protected:
  SensorNetworkSearchTest() {
    Config& config = Config::Instance();
    config.runSilent = true;
    config.openBrowser = false;
    config.quantAnalysisTypes = QuantAnalysisType::EsaryProschan;
    config.encodingType = EncodingType::Fixed;
    config.populationSizing = PopulationSizing::Unlimited;
    const std::vector<std::vector<Quality>> parts = {{{10, 0.03}, {25, 0.008}, {60, 0.001}},
                                                     {{40, 0.01}, {90, 0.002}, {150, 0.0005}},
                                                     {{15, 0.05}, {35, 0.012}, {80, 0.003}},
                                                     {{50, 0.006}, {120, 0.001}}};
    AddDesigns(parts, 0, {0.0, 0.0});
    for (const Point& one : designs) {
      if (std::none_of(designs.begin(), designs.end(),
                       [&](const Point& other) { return Dominates(other, one); })) {
        front.insert(one);
      }
    }
  }

  /// The front that the search has found behind so many generations.
  std::set<Point> Found(std::int64_t seed, int generations) const {
    vtnxParser parser(ExamplesFolder() + "/sensor-network/sensor-network.xml");
    const auto model = parser.Parse();
    const TemporaryFolder folder;
    Config::Instance().randomSeed = seed;
    Config::Instance().maxGenerations = generations;
    const CapturedStreams streams;
    model->ResetImplementations();
    NSGA search(*model, folder.Path("sensor-network.xml"), 1);
    search.Evolve();
    std::set<Point> found;
    for (const auto& [id, member] : search.frontiers.at(0)->members) {
      found.emplace(member->evaluations.at("Cost"),
                    member->evaluations.at("Unavailability(LossOfReading)"));
    }
    return found;
  }
  static bool Dominates(const Point& better, const Point& worse) {
    return better != worse && better.first <= worse.first && better.second <= worse.second;
  }

  std::set<Point> designs;
  std::set<Point> front;
  std::size_t designCount = 0;

 private:
  /// Parts stand in series; the replicas of a part, one or two, are parallel. `soFar` holds the
  /// cost and what is lost by the parts before.
  void AddDesigns(const std::vector<std::vector<Quality>>& parts, std::size_t at,
                  const Quality& soFar) {
    if (at == parts.size()) {
      ++designCount;
      designs.emplace(soFar.cost, ParseDouble(FormatDouble(soFar.unavailability)));
      return;
    }
    const auto add = [&](const Quality& part) {
      AddDesigns(parts, at + 1,
                 {soFar.cost + part.cost,
                  1.0 - (1.0 - soFar.unavailability) * (1.0 - part.unavailability)});
    };
    for (std::size_t i = 0; i < parts[at].size(); ++i) {
      const Quality& first = parts[at][i];
      add(first);
      for (std::size_t j = i; j < parts[at].size(); ++j) {
        const Quality& second = parts[at][j];
        add({first.cost + second.cost, first.unavailability * second.unavailability});
      }
    }
  }
};

TEST_F(SensorNetworkSearchTest, TrueFrontHasFortyOfAllDesigns) {
  EXPECT_EQ(designCount, 3645U);
  EXPECT_EQ(front.size(), 40U);
  EXPECT_EQ(*front.begin(), Point(115.0, 0.0931887));
  EXPECT_EQ(*front.rbegin(), Point(820.0, 1.125e-05));
}

class SensorNetworkSeedTest : public SensorNetworkSearchTest,
                              public ::testing::WithParamInterface<int> {};

// With the options and the generations that the example's text names.
TEST_P(SensorNetworkSeedTest, SearchReachesTheTrueFront) {
  Config& config = Config::Instance();
  config.populationSizing = PopulationSizing::Fixed;
  config.populationSize = 200;
  config.childPopulationSize = 200;
  config.pureElitist = true;
  config.crossoverRate = 0.3;
  EXPECT_EQ(Found(GetParam(), 60), front);
}

// A search takes half a minute without optimisation by the compiler, and minutes under a sanitizer.
#ifdef __SANITIZE_ADDRESS__
constexpr int SeedCount = 1;
#else
constexpr int SeedCount = 5;
#endif

INSTANTIATE_TEST_SUITE_P(Seeds, SensorNetworkSeedTest, ::testing::Range(1, SeedCount + 1),
                         ::testing::PrintToStringParamName());

TEST_F(SensorNetworkSearchTest, FiguresAreThoseOfTheProductFormula) {
  for (std::int64_t seed = 1; seed <= 5; ++seed) {
    const std::set<Point> found = Found(seed, 4);
    EXPECT_GT(found.size(), 1U) << "seed " << seed;
    for (const Point& one : found) {
      EXPECT_TRUE(designs.contains(one)) << one.first << ' ' << one.second << ", seed " << seed;
      EXPECT_TRUE(std::none_of(found.begin(), found.end(),
                               [&](const Point& other) { return Dominates(other, one); }))
          << one.first << ' ' << one.second << ", seed " << seed;
    }
  }
}

}  // namespace
}  // namespace FTS
