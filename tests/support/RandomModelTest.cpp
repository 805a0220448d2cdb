#include <gtest/gtest.h>

#include <algorithm>

#include "support/CaseName.h"
#include "support/ProcessStateTest.h"
#include "support/RandomModel.h"

namespace FTS {
namespace {

constexpr std::uint64_t SeedCount = 100;

RandomModelOptions Unconnected() {
  RandomModelOptions options;
  options.unconnected = true;
  return options;
}

class RandomModelTest : public ProcessStateTest {};

TEST_F(RandomModelTest, SeedDecidesTheModel) {
  EXPECT_EQ(RandomModel(7).Describe(), RandomModel(7).Describe());
  EXPECT_NE(RandomModel(7).Xml(), RandomModel(8).Xml());
}

TEST_F(RandomModelTest, EveryTreeOfAConnectedModelHasCutSets) {
  for (std::uint64_t seed = 1; seed <= SeedCount; ++seed) {
    const RandomModel model(seed);
    ASSERT_FALSE(model.Trees().empty());
    for (const std::string& tree : model.Trees()) {
      EXPECT_FALSE(model.MinimalCutSets(tree).empty()) << model.Describe();
    }
  }
}

TEST_F(RandomModelTest, SomeTreesOfUnconnectedModelsAreHoles) {
  int holes = 0;
  for (std::uint64_t seed = 1; seed <= SeedCount; ++seed) {
    const RandomModel model(seed, Unconnected());
    for (const std::string& tree : model.Trees()) holes += model.MinimalCutSets(tree).empty();
  }
  EXPECT_GT(holes, 0);
}

TEST_F(RandomModelTest, EveryMemberOfACutSetHasAFigure) {
  for (std::uint64_t seed = 1; seed <= SeedCount; ++seed) {
    const RandomModel model(seed);
    for (const std::string& tree : model.Trees()) {
      for (const auto& cutSet : model.MinimalCutSets(tree)) {
        for (const std::string& event : cutSet) {
          EXPECT_TRUE(model.Events().contains(event)) << event << "\n" << model.Describe();
        }
      }
    }
  }
}

TEST_F(RandomModelTest, CutSetsOfSeveralOrdersOccur) {
  std::map<std::size_t, int> byOrder;
  for (std::uint64_t seed = 1; seed <= SeedCount; ++seed) {
    const RandomModel model(seed);
    for (const std::string& tree : model.Trees()) {
      for (const auto& cutSet : model.MinimalCutSets(tree)) ++byOrder[cutSet.size()];
    }
  }
  EXPECT_GT(byOrder[1], 50);
  EXPECT_GT(byOrder[2], 50);
  EXPECT_GT(byOrder[3], 20);
  EXPECT_GT(byOrder[4], 3);
}

TEST_F(RandomModelTest, ShrinkingStopsAtAModelThatCannotLoseAnything) {
  const auto hasPair = [](const RandomModel& model) {
    return std::any_of(model.Trees().begin(), model.Trees().end(), [&](const std::string& tree) {
      const CutSets& sets = model.MinimalCutSets(tree);
      return std::any_of(sets.begin(), sets.end(),
                         [](const auto& cutSet) { return cutSet.size() >= 2; });
    });
  };
  std::uint64_t seed = 1;
  while (!hasPair(RandomModel(seed))) ++seed;
  const RandomModel start(seed);
  const RandomModel smallest = Shrink(start, hasPair);
  EXPECT_TRUE(hasPair(smallest));
  EXPECT_LT(smallest.Xml().size(), start.Xml().size());
  EXPECT_FALSE(smallest.FindSmaller(hasPair).has_value());
  EXPECT_EQ(smallest.Trees().size(), 1U);
  EXPECT_EQ(smallest.MinimalCutSets(smallest.Trees()[0]).size(), 1U) << smallest.Describe();
}

struct FeatureCase {
  const char* name;
  const char* text;
};

class RandomModelFeatureTest : public ProcessStateTest,
                               public ::testing::WithParamInterface<FeatureCase> {
 protected:
  static const std::vector<std::string>& Texts() {
    static const std::vector<std::string> texts = [] {
      std::vector<std::string> made;
      for (std::uint64_t seed = 1; seed <= SeedCount; ++seed)
        made.push_back(RandomModel(seed).Xml());
      return made;
    }();
    return texts;
  }
};

TEST_P(RandomModelFeatureTest, OccursInManyModels) {
  int found = 0;
  for (const std::string& text : Texts()) {
    found += text.find(GetParam().text) != std::string::npos;
  }
  EXPECT_GE(found, 3);
}

INSTANTIATE_TEST_SUITE_P(
    Features, RandomModelFeatureTest,
    ::testing::Values(
        FeatureCase{"Propagators", "<HBlockType>Propagator<"},
        FeatureCase{"RefinedComponents", "<HBlockType>Refined<"},
        FeatureCase{"ComponentsThatAreBoth", "<HBlockType>Both<"},
        FeatureCase{"Perspectives", "<Name>Software<"}, FeatureCase{"Allocations", "<Allocations>"},
        FeatureCase{"AllocatedLogic", "FromAllocation(Omission-service)"},
        FeatureCase{"LocalGotos", "LocalGoto("}, FeatureCase{"GlobalGotos", "GlobalGoto(Omission-"},
        FeatureCase{"Labels", "GlobalGoto(label"}, FeatureCase{"CommonCauses", "<PotentialCCF>"},
        FeatureCase{"NormalEvents", "<NormalEvent>"},
        FeatureCase{"UndirectedLines", "<Type>Undirected<"},
        FeatureCase{"DirectedLines", "<Type>Directed<"},
        FeatureCase{"AndDefaults", "<Default>AND<"},
        FeatureCase{"OutputDefaults", "<Default>OUTPUT<"},
        FeatureCase{"DefaultPlaceholders", "<PortExpression>DEFAULT<"},
        FeatureCase{"AndPlaceholders", "<PortExpression>ANDPORT<"},
        FeatureCase{"OrPlaceholders", "<PortExpression>ORPORT<"},
        FeatureCase{"OutputPlaceholders", "<PortExpression>OUTPUTPORT<"},
        FeatureCase{"ConnectionsForOneClass", "<FailureClass>"},
        FeatureCase{"SystemOutports", "<SystemOutport>true<"}, FeatureCase{"Hazards", "<Hazard>"},
        FeatureCase{"SeveralCauses", "<Cause>"}, FeatureCase{"Alternatives", "<Alternative>"}),
    CaseName);

}  // namespace
}  // namespace FTS
