#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "model/Objective.h"
#include "optimisation/CoitGA.h"
#include "optimisation/Random.h"
#include "optimisation/SearchTest.h"
#include "support/CaseName.h"

namespace FTS {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

using Ids = std::vector<std::int32_t>;

class SteppedCoitGA : public CoitGA {
 public:
  using CoitGA::AdvanceGeneration;
  using CoitGA::CoitGA;
};

/// A penalty search whose candidates are made by hand: their cost is what the test says, and
/// evaluation is by tables, so that it leaves the cost alone.
class CoitGATest : public SearchTest {
 protected:
  CoitGATest() { Start({}, 100); }

  void Start(const std::vector<std::string>& objectives, int populationSize) {
    const CapturedStreams streams;
    Config::Instance().populationSize = populationSize;
    Config::Instance().useRBD = true;
    coit.reset();
    UseModel({objectives, {XmlDesignPart("A", {{"a"}, {"b"}})}});
    coit = std::make_unique<SteppedCoitGA>(*model, "/models/plant.xml", 1);
  }

  std::unique_ptr<Individual> Made(double asilCost, bool feasible = true, const Values& values = {},
                                   std::unique_ptr<Encoding> encoding = nullptr) {
    if (!encoding) encoding = std::make_unique<FakeEncoding>(100 + ++madeSoFar);
    auto one = std::make_unique<Individual>(*coit, EncodingType::Tree, std::move(encoding));
    one->asilCost = asilCost;
    one->feasible = feasible;
    one->evaluations = values;
    return one;
  }
  void Wait(std::unique_ptr<Individual> one) {
    coit->uncheckedPopulation.push_back(std::move(one));
  }
  Ids Population() const {
    Ids ids;
    for (const auto& one : coit->frontiers) ids.push_back(one->individualId);
    return ids;
  }

  std::unique_ptr<SteppedCoitGA> coit;

 private:
  int madeSoFar = 0;
};

TEST_F(CoitGATest, TellsItsRateOfMutation) {
  const CapturedStreams streams;
  const CoitGA made(*model, "/models/plant.xml", 1);
  EXPECT_EQ(streams.Output(), "MutationRate: 1\n") << "the tree has one choice";
  EXPECT_EQ(Config::Instance().mutationRate, 1.0);
}

TEST_F(CoitGATest, MeasuresAnEncodingOfTheOptionsType) {
  const CapturedStreams streams;
  Config::Instance().encodingType = EncodingType::Fixed;
  const CoitGA made(*model, "/models/plant.xml", 1);
  EXPECT_EQ(Config::Instance().mutationRate, 0.5) << "one component with two genes";
}

struct CountCase {
  const char* name;
  int populationSize;
  int mutations;
};

class MutationCountTest : public CoitGATest, public ::testing::WithParamInterface<CountCase> {};

TEST_P(MutationCountTest, IsAShareOfThePopulation) {
  Start({}, GetParam().populationSize);
  EXPECT_EQ(coit->mutationCount, GetParam().mutations);
}

INSTANTIATE_TEST_SUITE_P(Sizes, MutationCountTest,
                         ::testing::Values(CountCase{"Hundred", 100, 55}, CountCase{"Ten", 10, 5},
                                           CountCase{"Two", 2, 1}, CountCase{"One", 1, 0},
                                           CountCase{"None", 0, 0}),
                         CaseName);

TEST_F(CoitGATest, RanksFromTheLastToTheFirst) {
  for (int i = 0; i < 3; ++i) Wait(Made(10.0));
  coit->RankPopulation();
  EXPECT_THAT(Population(), ElementsAre(2, 1, 0));
  EXPECT_THAT(coit->uncheckedPopulation, IsEmpty());
}

/// One candidate from a saved search is waiting for the first generation.
TEST_F(CoitGATest, FirstGenerationBreedsOnFromGivenCandidates) {
  const CapturedStreams streams;
  Config::Instance().populationSize = 20;
  Config::Instance().childPopulationSize = 6;
  Config::Instance().openBrowser = false;
  coit->maxGenerations = 1;
  for (int i = 0; i < 3; ++i) coit->frontiers.push_back(Made(10.0 + i));
  Wait(Made(5.0));
  coit->Evolve();
  EXPECT_EQ(coit->frontiers.size(), 9U);
  EXPECT_EQ(streams.Output().find("Population initialised"), std::string::npos);
}

TEST_F(CoitGATest, RemembersTheBestCosts) {
  EXPECT_EQ(coit->bestCost, -1.0);
  EXPECT_EQ(coit->bestFeasibleCost, -1.0);
  Wait(Made(50.0, false));
  Wait(Made(90.0, true));
  Wait(Made(70.0, true));
  coit->RankPopulation();
  EXPECT_EQ(coit->bestCost, 50.0);
  EXPECT_EQ(coit->bestFeasibleCost, 70.0);
  Wait(Made(60.0, true));
  Wait(Made(80.0, false));
  coit->RankPopulation();
  EXPECT_EQ(coit->bestCost, 50.0);
  EXPECT_EQ(coit->bestFeasibleCost, 60.0);
}

TEST_F(CoitGATest, CostOfNothingIsABestCostToo) {
  Wait(Made(0.0, true));
  coit->RankPopulation();
  Wait(Made(10.0, true));
  coit->RankPopulation();
  EXPECT_EQ(coit->bestCost, 0.0);
  EXPECT_EQ(coit->bestFeasibleCost, 0.0);
}

struct PenaltyCase {
  const char* name;
  const char* bounds;
  double value;
  double bestFeasible;
  double best;
  double penalty;
};

class PenaltyTest : public CoitGATest, public ::testing::WithParamInterface<PenaltyCase> {};

TEST_P(PenaltyTest, WeighsMissedBoundsByTheGap) {
  Start({XmlObjective("Cost", "Minimise", GetParam().bounds)}, 10);
  coit->bestFeasibleCost = GetParam().bestFeasible;
  coit->bestCost = GetParam().best;
  const auto one = Made(0.0, false, {{"Cost", GetParam().value}});
  EXPECT_DOUBLE_EQ(one->GetPenalty(), GetParam().penalty);
}

#define LOW(x) "<LowerBound>" #x "</LowerBound>"
#define HIGH(x) "<UpperBound>" #x "</UpperBound>"
// The scale of a lower bound is the bound / 1.3, that of an upper one 10; a scale of 0 counts as 1.
INSTANTIATE_TEST_SUITE_P(
    Bounds, PenaltyTest,
    ::testing::Values(PenaltyCase{"NoBounds", "", 99.0, 21.0, 10.0, 0.0},
                      PenaltyCase{"ShortfallSquared", LOW(13), 8.0, 21.0, 10.0, -10.0 * 0.25},
                      PenaltyCase{"ExcessToTheFourth", HIGH(5), 25.0, 21.0, 10.0, -10.0 * 16.0},
                      PenaltyCase{"WithinBoth", LOW(13) HIGH(20), 15.0, 21.0, 10.0, 0.0},
                      PenaltyCase{"AtBoth", LOW(13) HIGH(13), 13.0, 21.0, 10.0, 0.0},
                      PenaltyCase{"BothMissed", LOW(13) HIGH(5), 8.0, 21.0, 10.0,
                                  -10.0 * (0.25 + 0.3 * 0.3 * 0.3 * 0.3)},
                      PenaltyCase{"LowerBoundOfZero", LOW(0), -3.0, 21.0, 10.0, -90.0},
                      PenaltyCase{"NothingFeasibleYet", HIGH(5), 25.0, -1.0, 10.0, 0.0},
                      PenaltyCase{"NoGap", HIGH(5), 25.0, 10.0, 10.0, 0.0},
                      PenaltyCase{"GapOfOne", HIGH(5), 25.0, 11.0, 10.0, 0.0}),
    CaseName);
#undef LOW
#undef HIGH

TEST_F(CoitGATest, PenaltyTakesZeroForWhatWasNotMeasured) {
  Start({XmlObjective("Cost", "Minimise", "<LowerBound>13</LowerBound>")}, 10);
  coit->bestFeasibleCost = 21.0;
  coit->bestCost = 10.0;
  EXPECT_DOUBLE_EQ(Made(0.0)->GetPenalty(), -10.0 * 1.69);
}

TEST_F(CoitGATest, PenaltiesOfObjectivesAddUp) {
  Start({XmlObjective("Cost", "Minimise", "<UpperBound>5</UpperBound>"),
         XmlObjective("Weight", "Minimise", "<UpperBound>5</UpperBound>")},
        10);
  coit->bestFeasibleCost = 21.0;
  coit->bestCost = 10.0;
  EXPECT_DOUBLE_EQ(Made(0.0, false, At(15.0, 25.0))->GetPenalty(), -10.0 * (1.0 + 16.0));
}

/// Generations without mutation: a population of one has none, larger ones are given none.
class GenerationTest : public CoitGATest {
 protected:
  void Advance(int generation) {
    coit->generation = generation;
    coit->mutationCount = 0;
    coit->AdvanceGeneration();
  }
};

TEST_F(GenerationTest, ThresholdsTightenWithTheGenerations) {
  Start(
      {XmlObjective("Cost", "Minimise", "<LowerBound>13</LowerBound><UpperBound>100</UpperBound>"),
       XmlObjective("Weight", "Minimise", "<UpperBound>5</UpperBound>"), XmlObjective("Risk")},
      10);
  Wait(Made(1.0));
  Advance(25);  // 25 * 0.04 + 1 = 2
  const Objective* const cost = model->GetObjective("Cost");
  EXPECT_DOUBLE_EQ(cost->lowerScale, 5.0);
  EXPECT_DOUBLE_EQ(cost->upperScale, 5.0);
  EXPECT_DOUBLE_EQ(cost->lowerScaleStart, 10.0);
  EXPECT_DOUBLE_EQ(model->GetObjective("Weight")->upperScale, 5.0);
  EXPECT_EQ(model->GetObjective("Risk")->upperScale, 0.0);
  Advance(75);
  EXPECT_DOUBLE_EQ(cost->lowerScale, 2.5);
}

TEST_F(GenerationTest, FitnessIsTheCostLessThePenalty) {
  Start({XmlObjective("Weight", "Minimise", "<UpperBound>5</UpperBound>")}, 10);
  Wait(Made(100.0, true, {{"Weight", 5.0}}));
  Wait(Made(90.0, false, {{"Weight", 10.0}}));
  Advance(25);  // The scale of 10 is 5 now: the second misses its bound by one of it.
  EXPECT_THAT(Population(), ElementsAre(1, 0));
  EXPECT_DOUBLE_EQ(coit->frontiers[0]->fitness, 90.0 - (90.0 - 100.0 + 1.0));
  EXPECT_DOUBLE_EQ(coit->frontiers[1]->fitness, 100.0);
}

TEST_F(GenerationTest, PenaltyPutsAViolatorBehind) {
  Start({XmlObjective("Weight", "Minimise", "<UpperBound>5</UpperBound>")}, 10);
  Wait(Made(90.0, false, {{"Weight", 15.0}}));
  Wait(Made(100.0, true, {{"Weight", 5.0}}));
  Advance(25);
  EXPECT_THAT(Population(), ElementsAre(1, 0));
  EXPECT_DOUBLE_EQ(coit->frontiers[1]->fitness, 90.0 + 9.0 * 16.0);
}

TEST_F(GenerationTest, WithoutBoundsFitnessIsTheCost) {
  for (const double cost : {30.0, 10.0, 20.0}) Wait(Made(cost));
  Advance(1);
  EXPECT_THAT(Population(), ElementsAre(1, 2, 0));
  for (const auto& one : coit->frontiers) EXPECT_EQ(one->fitness, one->asilCost);
}

TEST_F(GenerationTest, OfEqualFitnessTheNewestComesFirst) {
  for (int i = 0; i < 4; ++i) Wait(Made(0.0));
  Advance(1);
  EXPECT_THAT(Population(), ElementsAre(3, 2, 1, 0));
}

TEST_F(GenerationTest, PopulationIsCutToItsSize) {
  Start({}, 2);
  for (const double cost : {30.0, 10.0, 20.0, 40.0}) Wait(Made(cost));
  Advance(1);
  EXPECT_THAT(Population(), ElementsAre(1, 2));
}

TEST_F(GenerationTest, SurvivorsMeetTheNewcomers) {
  Start({}, 3);
  for (const double cost : {30.0, 10.0, 20.0}) Wait(Made(cost));
  Advance(1);
  for (const double cost : {15.0, 99.0}) Wait(Made(cost));
  Advance(2);
  EXPECT_THAT(Population(), ElementsAre(1, 3, 2));
}

/// A design that counts how often it has been mutated.
class CountingEncoding : public FakeEncoding {
 public:
  explicit CountingEncoding(int& initCount) : FakeEncoding(0), count(initCount) {}
  bool Mutate(double) override {
    ++count;
    return true;
  }
  std::unique_ptr<Encoding> Clone() const override {
    return std::make_unique<CountingEncoding>(count);
  }

 private:
  int& count;
};

TEST_F(CoitGATest, BestIsNeverMutatedAndTheOthersByTheGenerator) {
  std::vector<int> counts(4, 0);
  for (std::size_t i = 0; i < 4; ++i) {
    Wait(Made(10.0 * static_cast<double>(i), true, {},
              std::make_unique<CountingEncoding>(counts[i])));
  }
  coit->mutationCount = 200;
  SeedRandom(17);
  RandomGenerator generator(17);
  std::vector<int> expected(4, 0);
  for (int i = 0; i < 200; ++i) {
    ++expected[1 + static_cast<std::size_t>(generator.Uniform() * 3.0F)];
  }
  coit->generation = 6;
  coit->AdvanceGeneration();
  EXPECT_EQ(counts, expected);
  EXPECT_EQ(coit->frontiers[0]->lastAlteredGeneration, 0);
  for (std::size_t i = 1; i < 4; ++i) EXPECT_EQ(coit->frontiers[i]->lastAlteredGeneration, 6);
}

/// A design that every mutation makes impossible.
class FragileEncoding : public FakeEncoding {
 public:
  using FakeEncoding::FakeEncoding;
  bool Mutate(double) override {
    valid = false;
    return true;
  }
  std::unique_ptr<Encoding> Clone() const override {
    return std::make_unique<FragileEncoding>(design, valid);
  }
};

TEST_F(CoitGATest, ImpossibleMutationsArePutBack) {
  for (int i = 0; i < 5; ++i) {
    Wait(Made(10.0, true, {{"Cost", 1.0}}, std::make_unique<FragileEncoding>(i)));
  }
  coit->mutationCount = 50;
  coit->AdvanceGeneration();
  ASSERT_EQ(coit->frontiers.size(), 5U);
  for (const auto& one : coit->frontiers) {
    EXPECT_TRUE(one->encoding->IsValid());
    EXPECT_EQ(one->evaluations, (Values{{"Cost", 1.0}}));
  }
}

TEST_F(CoitGATest, PopulationBelowTwoIsNotMutated) {
  int count = 0;
  coit->mutationCount = 5;
  coit->AdvanceGeneration();
  EXPECT_THAT(coit->frontiers, IsEmpty());
  Wait(Made(10.0, true, {}, std::make_unique<CountingEncoding>(count)));
  coit->AdvanceGeneration();
  EXPECT_EQ(count, 0);
  EXPECT_EQ(coit->frontiers.size(), 1U);
}

struct SelectionCase {
  const char* name;
  int size;
};

class SelectionTest : public CoitGATest, public ::testing::WithParamInterface<SelectionCase> {};

TEST_P(SelectionTest, PrefersTheBestBySquares) {
  const int size = GetParam().size;
  for (int i = 0; i < size; ++i) {
    Wait(Made(i, true, {}, std::make_unique<FakeEncoding>(1000 * i)));
  }
  coit->mutationCount = 0;
  coit->AdvanceGeneration();
  Config::Instance().crossoverRate = 1.0;
  Config::Instance().childPopulationSize = 50;
  SeedRandom(23);
  RandomGenerator generator(23);
  const auto parent = [&] {
    const int roots = static_cast<int>(std::sqrt(static_cast<float>(size - 1)));
    const int root = static_cast<int>(generator.Uniform() * (static_cast<float>(roots) + 1.0F));
    return std::min(root * root, size - 1);
  };
  coit->CreateOffspring();
  ASSERT_EQ(coit->uncheckedPopulation.size(), 50U);
  for (const auto& child : coit->uncheckedPopulation) {
    const int mother = parent();
    const int father = parent();
    generator.Uniform();  // Decides on the crossover; mutation comes behind the ranking.
    EXPECT_EQ(dynamic_cast<const FakeEncoding&>(*child->encoding).design, 1000 * (mother + father));
  }
}

INSTANTIATE_TEST_SUITE_P(Sizes, SelectionTest,
                         ::testing::Values(SelectionCase{"One", 1}, SelectionCase{"Two", 2},
                                           SelectionCase{"Three", 3}, SelectionCase{"Ten", 10},
                                           SelectionCase{"Hundred", 100}),
                         CaseName);

TEST_F(CoitGATest, CrowdingEmptiesThePopulation) {
  Wait(Made(1.0));
  coit->RankPopulation();
  coit->AssignCrowding();
  EXPECT_THAT(coit->frontiers, IsEmpty());
}

}  // namespace
}  // namespace FTS
