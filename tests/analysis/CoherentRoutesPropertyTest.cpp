#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "analysis/CutSet.h"
#include "analysis/FaultTree.h"
#include "analysis/Prime.h"
#include "app/Config.h"
#include "model/Model.h"
#include "support/CapturedStreams.h"
#include "support/CaseName.h"
#include "support/FailureOracle.h"
#include "support/ModelXml.h"
#include "support/PartsModel.h"
#include "support/ProcessStateTest.h"
#include "support/RandomLogic.h"
#include "support/RandomModel.h"

namespace FTS {
namespace {

struct RouteCase {
  const char* name;
  bool useBDDs;
  bool modularise;
};

/// All roads to the cut sets of a coherent tree lead to the same ones.
class CoherentRoutesPropertyTest : public ProcessStateTest,
                                   public ::testing::WithParamInterface<RouteCase> {
 protected:
  static constexpr int TreeCount = 2000;

  CoherentRoutesPropertyTest() {
    Config::Instance().runSilent = true;
    Config::Instance().quantitativeAnalysis = false;
    Config::Instance().modularise = GetParam().modularise;
  }

  std::set<EventMask> Analyse(const RandomLogic& random) {
    random.Root()->ResetModules();
    const auto tree = std::make_shared<FaultTree>(random.Root());
    parts.model.AddFaultTree(tree);
    {
      const CapturedStreams streams;
      parts.model.Analyse(GetParam().useBDDs);
    }
    parts.model.RemoveFaultTree(*tree);
    std::set<EventMask> found;
    for (const auto& [key, cutSet] : tree->cutSets) {
      EXPECT_TRUE(found.insert(random.MaskOf(*cutSet)).second)
          << cutSet->ToText() << " is there twice, " << random.Describe();
    }
    return found;
  }

  static std::string ToText(const std::set<EventMask>& sets) {
    std::string text;
    for (const EventMask set : sets) {
      text += text.empty() ? "" : "; ";
      for (int i = 0; i < 32; ++i) {
        if (((set >> i) & 1U) != 0) text += "E" + std::to_string(i) + " ";
      }
    }
    return text;
  }

  /// Those sets that the predicate lets pass.
  template <typename Predicate>
  static std::set<EventMask> Only(const std::set<EventMask>& sets, const Predicate& passes) {
    std::set<EventMask> result;
    for (const EventMask set : sets) {
      if (passes(set)) result.insert(set);
    }
    return result;
  }

  void ExpectSets(const RandomLogic& random, const std::set<EventMask>& expected) {
    const std::set<EventMask> found = Analyse(random);
    EXPECT_EQ(found, expected) << random.Describe() << "\nlimit "
                               << Config::Instance().maxCutSetSize
                               << "\nfound:    " << ToText(found)
                               << "\nexpected: " << ToText(expected);
  }

  PartsModel parts;
};

class OrderLimitPropertyTest : public CoherentRoutesPropertyTest {};
class EffectiveOrderPropertyTest : public CoherentRoutesPropertyTest {};
class ExclusionPropertyTest : public CoherentRoutesPropertyTest {};

TEST_P(CoherentRoutesPropertyTest, CutSetsAreTheMinimalAssignments) {
  std::size_t all = 0;
  for (int seed = 1; seed <= TreeCount && !HasFailure(); ++seed) {
    const RandomLogic random(static_cast<std::uint64_t>(seed), {}, &parts.model);
    const std::set<EventMask> minimal = random.MinimalSets();
    ExpectSets(random, minimal);
    all += minimal.size();
  }
  EXPECT_GT(all, 5000U) << "The trees have become too simple to prove anything.";
}

TEST_P(OrderLimitPropertyTest, KeepsAllCutSetsUpToIt) {
  constexpr std::uint64_t FirstSeed = 100000;
  std::size_t dropped = 0;
  for (int i = 0; i < TreeCount && !HasFailure(); ++i) {
    const RandomLogic random(FirstSeed + static_cast<std::uint64_t>(i), {}, &parts.model);
    const std::set<EventMask> minimal = random.MinimalSets();
    for (int limit = 1; limit <= 4 && !HasFailure(); ++limit) {
      Config::Instance().maxCutSetSize = limit;
      const auto fits = [limit](EventMask set) { return std::popcount(set) <= limit; };
      const std::set<EventMask> expected = Only(minimal, fits);
      ExpectSets(random, expected);
      dropped += minimal.size() - expected.size();
    }
  }
  EXPECT_GT(dropped, 5000U) << "The limit has hardly been put to the test.";
}

TEST_P(EffectiveOrderPropertyTest, LimitLeavesNormalEventsOut) {
  constexpr std::uint64_t FirstSeed = 200000;
  constexpr EventMask NormalOnes = 7;
  RandomLogicOptions options;
  options.normalEvents = 3;
  Config::Instance().countNormalEvents = false;
  for (int i = 0; i < TreeCount && !HasFailure(); ++i) {
    const RandomLogic random(FirstSeed + static_cast<std::uint64_t>(i), options, &parts.model);
    const std::set<EventMask> minimal = random.MinimalSets();
    for (int limit = 1; limit <= 3 && !HasFailure(); ++limit) {
      Config::Instance().maxCutSetSize = limit;
      ExpectSets(random, Only(minimal, [limit](EventMask set) {
                   return std::popcount(set & ~NormalOnes) <= limit;
                 }));
    }
  }
}

TEST_P(ExclusionPropertyTest, RemovesCutSetsWithTwoEventsOfOneComponent) {
  constexpr std::uint64_t FirstSeed = 300000;
  constexpr std::size_t EventsPerComponent = 3;
  Config::Instance().mutualExclusion = true;
  std::vector<std::shared_ptr<Component>> components;
  std::vector<EventMask> owned;
  for (std::size_t i = 0; i < 4; ++i) {
    components.push_back(parts.AddComponent("C" + std::to_string(i)));
    owned.push_back(((1U << EventsPerComponent) - 1) << (i * EventsPerComponent));
  }
  std::size_t removed = 0;
  for (int i = 0; i < TreeCount && !HasFailure(); ++i) {
    const RandomLogic random(FirstSeed + static_cast<std::uint64_t>(i), {}, &parts.model);
    for (std::size_t event = 0; event < random.Events().size(); ++event) {
      random.Events()[event]->owner = components[event / EventsPerComponent];
    }
    const std::set<EventMask> minimal = random.MinimalSets();
    const std::set<EventMask> expected = Only(minimal, [&](EventMask set) {
      return std::none_of(owned.begin(), owned.end(),
                          [set](EventMask mask) { return std::popcount(set & mask) > 1; });
    });
    ExpectSets(random, expected);
    removed += minimal.size() - expected.size();
  }
  EXPECT_GT(removed, 1000U);
}

/// The minimal cut sets of a whole model, read from its text.
TEST_P(CoherentRoutesPropertyTest, ModelsHaveTheCutSetsOfWhatTheyDescribe) {
  constexpr std::uint64_t FirstSeed = 50000;
  for (std::uint64_t seed = FirstSeed; seed < FirstSeed + 150; ++seed) {
    Prime::Release();
    const RandomModel expected(seed);
    const std::unique_ptr<Model> model = LoadModel(expected.Xml());
    {
      const CapturedStreams streams;
      model->Synthesise();
      model->Analyse(GetParam().useBDDs);
    }
    for (const std::string& name : expected.Trees()) {
      const int index = model->FindFaultTreeIndex(name);
      CutSets found;
      if (index >= 0) {
        for (const auto& [key, cutSet] :
             model->faultTrees[static_cast<std::size_t>(index)]->cutSets) {
          CutSets::value_type members;
          for (const BasicEvent* event : cutSet->events) members.insert(event->GetFullName());
          found.insert(members);
        }
      }
      ASSERT_EQ(found, expected.MinimalCutSets(name)) << name << "\n" << expected.Describe();
    }
  }
}

constexpr RouteCase Upward{"Upward", false, false};
constexpr RouteCase UpwardModularised{"UpwardModularised", false, true};
constexpr RouteCase Diagram{"Diagram", true, false};
constexpr RouteCase DiagramModularised{"DiagramModularised", true, true};

INSTANTIATE_TEST_SUITE_P(Routes, CoherentRoutesPropertyTest,
                         ::testing::Values(Upward, UpwardModularised, Diagram, DiagramModularised),
                         CaseName);

INSTANTIATE_TEST_SUITE_P(Routes, OrderLimitPropertyTest,
                         ::testing::Values(Upward, UpwardModularised, Diagram, DiagramModularised),
                         CaseName);

// Ways through a diagram are limited by their plain length.
INSTANTIATE_TEST_SUITE_P(Routes, EffectiveOrderPropertyTest,
                         ::testing::Values(Upward, UpwardModularised), CaseName);

INSTANTIATE_TEST_SUITE_P(Routes, ExclusionPropertyTest,
                         ::testing::Values(Upward, UpwardModularised, Diagram, DiagramModularised),
                         CaseName);

}  // namespace
}  // namespace FTS
