#include <gmock/gmock.h>

#include <cmath>
#include <map>

#include "analysis/CutSet.h"
#include "analysis/CutSetList.h"
#include "analysis/FaultTree.h"
#include "app/Config.h"
#include "faulttree/BasicEvent.h"
#include "model/NumberText.h"
#include "support/CapturedStreams.h"
#include "support/Dice.h"
#include "support/PartsModel.h"
#include "support/ProcessStateTest.h"
#include "support/TreeBuilder.h"

namespace FTS {
namespace {

using ::testing::Pair;
using ::testing::UnorderedElementsAre;

class QuantificationTest : public ProcessStateTest {
 protected:
  /// Sets an event's unavailability, and its frequency to a tenth of it.
  BasicEvent& Event(const std::string& name, double unavailability) {
    builder.Tree(name);
    BasicEvent& event = *builder.Event(name);
    event.unavailability = unavailability;
    event.frequency = unavailability / 10.0;
    return event;
  }

  void Add(std::initializer_list<const char*> names) {
    auto cutSet = std::make_unique<CutSet>();
    for (const char* name : names) {
      builder.Tree(name);
      cutSet->AddEvent(*builder.Event(name));
    }
    tree.maxOrder = std::max(tree.maxOrder, cutSet->GetOrder());
    tree.AddCutSet(std::move(cutSet), false);
  }

  /// Cut sets of three events each over twenty, with figures from small to nearly certain.
  void AddRandom(std::uint64_t seed, int count) {
    Dice dice(seed);
    for (int i = 0; i < 20; ++i) Event("E" + std::to_string(i), 0.0001 * dice.Between(1, 9999));
    for (int i = 0; i < count; ++i) {
      auto cutSet = std::make_unique<CutSet>();
      for (int j = 0; j < 3; ++j) {
        cutSet->AddEvent(*builder.Event("E" + std::to_string(dice.Roll(20))));
      }
      tree.AddCutSet(std::move(cutSet), false);
    }
  }

  TreeBuilder builder;
  FaultTree tree{builder.Tree("Top=OR()")};
};

// Esary-Proschan

TEST_F(QuantificationTest, NoCutSetsGiveZero) {
  tree.EsaryProschan();
  tree.ComputeFrequency();
  EXPECT_EQ(tree.unavailability, 0.0);
  EXPECT_EQ(tree.frequency, 0.0);
}

TEST_F(QuantificationTest, SingleCutSetPassesItsFiguresOn) {
  Event("A", 0.25);
  Add({"A"});
  tree.EsaryProschan();
  tree.ComputeFrequency();
  EXPECT_EQ(tree.unavailability, 0.25);
  EXPECT_EQ(tree.frequency, 0.025);
}

TEST_F(QuantificationTest, CommonEventsAreFactoredOut) {
  Event("A", 0.5);
  Event("B", 0.25);
  Event("C", 0.125);
  Add({"A", "B"});
  Add({"A", "C"});
  tree.EsaryProschan();
  EXPECT_EQ(tree.unavailability, 0.5 * (1.0 - 0.75 * 0.875));
}

TEST_F(QuantificationTest, WithoutCommonEventsTheBoundIsThePlainProduct) {
  Event("A", 0.5);
  Event("B", 0.25);
  Event("C", 0.125);
  Add({"A", "B"});
  Add({"B", "C"});
  Add({"A", "C"});
  tree.EsaryProschan();
  EXPECT_EQ(tree.unavailability, 1.0 - (1.0 - 0.125) * (1.0 - 0.0625) * (1.0 - 0.03125));
}

TEST_F(QuantificationTest, VerySmallFiguresKeepTheirDigits) {
  for (const char* name : {"A", "B", "C", "D"}) Event(name, 1e-9);
  Add({"A", "B"});
  Add({"C", "D"});
  tree.EsaryProschan();
  EXPECT_DOUBLE_EQ(tree.unavailability, 2e-18);
}

TEST_F(QuantificationTest, EventsCommonToSomeCutSetsOnlyStay) {
  Event("A", 0.5);
  Event("B", 0.25);
  Event("C", 0.125);
  Add({"A", "B"});
  Add({"A", "C"});
  Add({"B", "C"});
  tree.EsaryProschan();
  EXPECT_EQ(tree.unavailability, 1.0 - (1.0 - 0.125) * (1.0 - 0.0625) * (1.0 - 0.03125));
}

TEST_F(QuantificationTest, CommonEventsFollowTheirFiguresWhenTheyAreAll) {
  Event("A", 0.5);
  Event("B", 0.25);
  Add({"A", "B"});
  tree.EsaryProschan();
  EXPECT_EQ(tree.unavailability, 0.125);
}

TEST_F(QuantificationTest, ComplementsCountWithWhatIsLeft) {
  Event("A", 0.25);
  auto cutSet = std::make_unique<CutSet>();
  cutSet->AddEvent(*builder.Event("A")->GetComplement());
  tree.AddCutSet(std::move(cutSet), false);
  tree.EsaryProschan();
  EXPECT_EQ(tree.unavailability, 0.75);
}

// Frequency

TEST_F(QuantificationTest, FrequencyCountsWhereNoOtherCutSetHolds) {
  Event("A", 0.5);
  Event("B", 0.25);
  Event("C", 0.125);
  Add({"A"});
  Add({"B", "C"});
  tree.ComputeFrequency();
  const double both = 0.025 * 0.125 + 0.0125 * 0.25;
  EXPECT_DOUBLE_EQ(tree.frequency, 0.05 * (1.0 - 0.25 * 0.125) + both * (1.0 - 0.5));
}

TEST_F(QuantificationTest, FrequencyFillsTheFiguresOfTheCutSets) {
  Event("A", 0.5);
  Event("B", 0.25);
  Add({"A"});
  Add({"B"});
  tree.ComputeFrequency();
  for (const auto& [key, cutSet] : tree.cutSets) {
    EXPECT_NE(cutSet->unavailability, CutSet::NotComputed);
    EXPECT_NE(cutSet->frequency, CutSet::NotComputed);
  }
}

TEST_F(QuantificationTest, CutSetsThatAreCertainLeaveNoFrequencyToOthers) {
  Event("A", 1.0);
  Event("B", 0.5);
  Event("C", 1.0);
  Add({"A"});
  Add({"B"});
  Add({"C"});
  tree.ComputeFrequency();
  EXPECT_EQ(tree.frequency, 0.0);
}

/// The sum as it is defined, every other cut set multiplied anew for each one.
double FrequencyByDefinition(const FaultTree& tree) {
  double sum = 0.0;
  for (const auto& one : tree.cutSets) {
    double none = 1.0;
    for (const auto& other : tree.cutSets) {
      if (other.second != one.second) none *= 1.0 - other.second->ComputeUnavailability();
    }
    sum += one.second->ComputeFrequency() * none;
  }
  return sum;
}

TEST_F(QuantificationTest, FrequencyIsThatOfTheDefinitionToTheLastPrintedDigit) {
  for (std::uint64_t seed = 1; seed <= 30; ++seed) {
    tree.cutSets.clear();
    tree.primeIndex->Clear();
    AddRandom(seed, 40);
    tree.ComputeFrequency();
    EXPECT_EQ(FormatDouble(tree.frequency), FormatDouble(FrequencyByDefinition(tree)))
        << "seed " << seed;
  }
}

// Inclusion-exclusion

TEST_F(QuantificationTest, TwoCutSetsTakeTheirOverlapOff) {
  Event("A", 0.5);
  Event("B", 0.25);
  Event("C", 0.125);
  Add({"A", "B"});
  Add({"A", "C"});
  tree.CrossProduct();
  EXPECT_EQ(tree.unavailability, 0.125 + 0.0625 - 0.5 * 0.25 * 0.125);
  EXPECT_EQ(tree.frequency, 0.0);
}

TEST_F(QuantificationTest, ThreeCutSetsAddTheTripleBack) {
  Event("A", 0.5);
  Event("B", 0.25);
  Event("C", 0.125);
  Add({"A"});
  Add({"B"});
  Add({"C"});
  tree.CrossProduct();
  EXPECT_EQ(tree.unavailability,
            0.875 - (0.5 * 0.25 + 0.5 * 0.125 + 0.25 * 0.125) + 0.5 * 0.25 * 0.125);
}

TEST_F(QuantificationTest, ThreeTermsAreThoseOfTheDefinition) {
  AddRandom(7, 12);
  for (int i = 0; i < 20; ++i) Event("E" + std::to_string(i), 0.001 * (i + 1));
  tree.CrossProduct();
  double sums[3] = {0.0, 0.0, 0.0};
  for (auto i = tree.cutSets.begin(); i != tree.cutSets.end(); ++i) {
    sums[0] += i->second->Clone()->ComputeUnavailability();
    for (auto j = std::next(i); j != tree.cutSets.end(); ++j) {
      const auto pair = i->second->Clone();
      pair->Merge(*j->second);
      sums[1] += pair->ComputeUnavailability();
      for (auto k = std::next(j); k != tree.cutSets.end(); ++k) {
        const auto triple = pair->Clone();
        triple->Merge(*k->second);
        sums[2] += triple->ComputeUnavailability();
      }
    }
  }
  EXPECT_EQ(tree.unavailability, sums[0] - sums[1] + sums[2]);
}

TEST_F(QuantificationTest, RareEventsAreSummed) {
  Config::Instance().quantAnalysisTypes = QuantAnalysisType::Rare | QuantAnalysisType::CrossProduct;
  Event("A", 0.5);
  Event("B", 0.25);
  Add({"A"});
  Add({"B"});
  tree.CrossProduct();
  EXPECT_EQ(tree.unavailability, 0.75);
}

TEST_F(QuantificationTest, SumsAboveOneAreCapped) {
  Config::Instance().quantAnalysisTypes = QuantAnalysisType::Rare;
  Event("A", 0.75);
  Event("B", 0.5);
  Add({"A"});
  Add({"B"});
  tree.CrossProduct();
  EXPECT_EQ(tree.unavailability, 1.0);
}

TEST_F(QuantificationTest, MutualExclusionDoesNotTouchTheFigures) {
  Config::Instance().mutualExclusion = true;
  PartsModel parts;
  const auto pump = parts.AddComponent("Pump");
  Event("A", 0.5).owner = pump;
  Event("B", 0.25).owner = pump;
  Add({"A"});
  Add({"B"});
  tree.CrossProduct();
  EXPECT_EQ(tree.unavailability, 0.75 - 0.125);
}

// Numbers by order

class SummaryTest : public QuantificationTest {
 protected:
  std::string Summary() {
    const CapturedStreams streams;
    tree.PrintCutSetSummary();
    return streams.Output();
  }

  void DefineNormal(const char* name) {
    builder.Define(name, std::make_shared<NormalEvent>(name, nullptr, true));
  }
};

TEST_F(SummaryTest, WithoutCutSetsThereIsOnlyTheHeader) {
  EXPECT_EQ(Summary(), "Cut Set Summary for: Top\n");
}

TEST_F(SummaryTest, EachOrderHasALine) {
  Add({"A"});
  Add({"B", "C", "D"});
  Add({"B", "C", "E"});
  EXPECT_EQ(Summary(), "Cut Set Summary for: Top\n1: 1\n2: 0\n3: 2\nTotal: 3\n");
  EXPECT_THAT(tree.CountCutSetsByOrder(), UnorderedElementsAre(Pair(1, 1), Pair(3, 2)));
}

TEST_F(SummaryTest, DroppedOrdersHaveALineToo) {
  Add({"A"});
  tree.maxOrder = 3;
  EXPECT_EQ(Summary(), "Cut Set Summary for: Top\n1: 1\n2: 0\n3: 0\nTotal: 1\n");
}

TEST_F(SummaryTest, EffectiveOrdersStandUnderTheNextNumber) {
  Config::Instance().countNormalEvents = false;
  DefineNormal("n");
  DefineNormal("m");
  Add({"n", "m"});
  Add({"n", "A"});
  Add({"B", "C"});
  EXPECT_EQ(tree.maxOrder, 2);
  EXPECT_EQ(Summary(), "Cut Set Summary for: Top\n1: 1\n2: 1\n3: 1\nTotal: 3\n");
  EXPECT_THAT(tree.CountCutSetsByOrder(), UnorderedElementsAre(Pair(1, 1), Pair(2, 1), Pair(3, 1)));
}

TEST_F(SummaryTest, EffectiveOrderZeroAloneIsPrinted) {
  Config::Instance().countNormalEvents = false;
  DefineNormal("n");
  Add({"n"});
  EXPECT_EQ(Summary(), "Cut Set Summary for: Top\n1: 1\nTotal: 1\n");
}

TEST_F(SummaryTest, NegativeHighestOrderLeavesOnlyTheTotal) {
  Config::Instance().countNormalEvents = false;
  Add({"A"});
  tree.maxOrder = -1;
  EXPECT_EQ(Summary(), "Cut Set Summary for: Top\nTotal: 0\n");
}

}  // namespace
}  // namespace FTS
