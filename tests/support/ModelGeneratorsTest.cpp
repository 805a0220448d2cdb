#include <gtest/gtest.h>

#include <functional>

#include "support/CaseName.h"
#include "support/FailureOracle.h"
#include "support/ModelGenerators.h"
#include "support/ProcessStateTest.h"
#include "support/SketchSolution.h"

namespace FTS {
namespace {

struct GeneratorCase {
  const char* name;
  std::function<GeneratedModel()> make;
};

class ModelGeneratorsTest : public ProcessStateTest,
                            public ::testing::WithParamInterface<GeneratorCase> {
 protected:
  static EventFigures FiguresOf(const ModelSketch& sketch) {
    EventFigures figures;
    for (const int component : sketch.PresentComponents()) {
      for (const SketchEvent& event : sketch.components[component].events) {
        figures[sketch.FullName(component) + "." + event.name] = event.unavailability;
      }
    }
    return figures;
  }
};

TEST_P(ModelGeneratorsTest, ClosedFormIsWhatTheTruthTableGives) {
  const GeneratedModel model = GetParam().make();
  const auto trees = SketchSolution(model.sketch).Trees();
  ASSERT_EQ(trees.size(), 1U);
  const CutSets sets = MinimalCutSets(trees[0].second);
  std::map<int, std::size_t> byOrder;
  for (const auto& cutSet : sets) ++byOrder[static_cast<int>(cutSet.size())];
  EXPECT_EQ(byOrder, model.setsByOrder) << ToText(sets);
  EXPECT_NEAR(model.unavailability, EsaryProschan(sets, FiguresOf(model.sketch)), 1e-15);
}

INSTANTIATE_TEST_SUITE_P(
    Small, ModelGeneratorsTest,
    ::testing::Values(GeneratorCase{"LadderOfOneLayer", [] { return Ladder(1); }},
                      GeneratorCase{"LadderOfSixLayers", [] { return Ladder(6); }},
                      GeneratorCase{"ChainOfOne", [] { return Chain(1); }},
                      GeneratorCase{"ChainOfNine", [] { return Chain(9); }},
                      GeneratorCase{"TwoOrsOfOneEach", [] { return TwoOrs(1, 1); }},
                      GeneratorCase{"TwoOrsWithALoneFactor", [] { return TwoOrs(1, 4); }},
                      GeneratorCase{"TwoOrsWithALoneFactorBehind", [] { return TwoOrs(4, 1); }},
                      GeneratorCase{"TwoOrs", [] { return TwoOrs(3, 5); }},
                      GeneratorCase{"VotersWithoutALayer", [] { return SharedVoters(0); }},
                      GeneratorCase{"VotersOfThreeLayers", [] { return SharedVoters(3); }},
                      GeneratorCase{"OneAnd", [] { return OrOfAnds(1); }},
                      GeneratorCase{"OrOfAnds", [] { return OrOfAnds(6); }},
                      GeneratorCase{"LargeModel", [] { return LargeModel(1); }}),
    CaseName);

class LargeModelTest : public ProcessStateTest {};

TEST_F(LargeModelTest, TextIsAsLongAsWanted) {
  const std::size_t size = LargeModel(2).Xml().size();
  EXPECT_GE(size, 2000000U);
  EXPECT_LT(size, 2100000U);
}

}  // namespace
}  // namespace FTS
