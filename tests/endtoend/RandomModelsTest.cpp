#include <gtest/gtest.h>

#include <cmath>
#include <exception>
#include <memory>
#include <string>

#include "analysis/CutSet.h"
#include "analysis/FaultTree.h"
#include "analysis/Prime.h"
#include "app/Config.h"
#include "app/DiagnosticLog.h"
#include "faulttree/BasicEvent.h"
#include "model/Model.h"
#include "support/FailureOracle.h"
#include "support/ModelXml.h"
#include "support/ProcessStateTest.h"
#include "support/RandomModel.h"

namespace FTS {
namespace {

/// What the program finds for models whose minimal cut sets are known from an independent walk over
/// what they describe.
class RandomModelsTest : public ProcessStateTest, public ::testing::WithParamInterface<int> {
 protected:
  static constexpr int SeedsPerTest = 100;

  static CutSets CutSetsIn(const FaultTree& tree) {
    CutSets found;
    for (const auto& [key, cutSet] : tree.cutSets) {
      CutSets::value_type members;
      for (const BasicEvent* event : cutSet->events) members.insert(event->GetFullName());
      found.insert(members);
    }
    return found;
  }

  /// Empty when the program agrees with the model's answers.
  static std::string Disagreement(const RandomModel& expected) {
    DiagnosticLog::Release();
    Prime::Release();
    Config::Instance().runSilent = true;
    Config::Instance().quantAnalysisTypes = QuantAnalysisType::EsaryProschan;
    const std::unique_ptr<Model> model = LoadModel(expected.Xml());
    try {
      model->Synthesise();
      model->Analyse(false);
    } catch (const std::exception& exception) {
      return exception.what();
    }
    for (const std::string& name : expected.Trees()) {
      const int index = model->FindFaultTreeIndex(name);
      const CutSets& sets = expected.MinimalCutSets(name);
      // A tree whose logic has vanished may be there without cut sets, or not at all.
      if (index < 0 && sets.empty()) continue;
      if (index < 0) return "no tree " + name;
      const FaultTree& tree = *model->faultTrees[static_cast<std::size_t>(index)];
      if (CutSetsIn(tree) != sets)
        return "cut sets of " + name + ", found: " + ToText(CutSetsIn(tree));
      const double figure = expected.Unavailability(name);
      if (std::abs(tree.unavailability - figure) > 1e-12 + 1e-9 * figure) {
        return "unavailability of " + name;
      }
    }
    return "";
  }

  static void ExpectAgreement(const RandomModelOptions& options) {
    for (int i = 0; i < SeedsPerTest; ++i) {
      const auto seed = static_cast<std::uint64_t>(GetParam() * SeedsPerTest + i + 1);
      const RandomModel model(seed, options);
      const std::string wrong = Disagreement(model);
      if (wrong.empty()) continue;
      const RandomModel small = Shrink(
          model, [](const RandomModel& candidate) { return !Disagreement(candidate).empty(); });
      FAIL() << wrong << "; shrunk: " << Disagreement(small) << "\n" << small.Describe();
    }
  }
};

TEST_P(RandomModelsTest, HaveTheCutSetsOfTheFunctionThatTheyDescribe) { ExpectAgreement({}); }

TEST_P(RandomModelsTest, HaveThemWithUnconnectedPortsToo) {
  RandomModelOptions options;
  options.unconnected = true;
  ExpectAgreement(options);
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomModelsTest, ::testing::Range(0, 6));

}  // namespace
}  // namespace FTS
