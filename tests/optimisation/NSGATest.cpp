#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "model/Component.h"
#include "model/VtnException.h"
#include "optimisation/NSGA.h"
#include "optimisation/Random.h"
#include "optimisation/SearchTest.h"
#include "support/CaseName.h"
#include "support/ThrownMessage.h"

namespace FTS {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

using Ids = std::vector<std::int32_t>;

class NSGATest : public SearchTest {
 protected:
  /// Appends a candidate that waits to be ranked, and returns its id.
  std::int32_t Wait(double cost, double weight, bool feasible = true) {
    search->uncheckedPopulation.push_back(Candidate(At(cost, weight), feasible));
    return search->uncheckedPopulation.back()->individualId;
  }

  /// Appends a frontier of so many members of which none dominates another.
  void AddFrontier(int size, bool feasible = true) {
    auto frontier = std::make_unique<NonDominatedPopulation>(*search);
    for (int i = 0; i < size; ++i) {
      auto one = Candidate(At(i, size - i), feasible);
      frontier->members.emplace(one->individualId, std::move(one));
    }
    search->frontiers.push_back(std::move(frontier));
  }

  std::vector<int> Sizes() const {
    std::vector<int> sizes;
    for (const auto& frontier : search->frontiers) {
      sizes.push_back(static_cast<int>(frontier->members.size()));
    }
    return sizes;
  }
  static Ids IdsOf(const NonDominatedPopulation& population) {
    Ids ids;
    for (const auto& [id, member] : population.members) ids.push_back(id);
    return ids;
  }
  std::vector<Ids> Frontiers() const {
    std::vector<Ids> all;
    for (const auto& frontier : search->frontiers) all.push_back(IdsOf(*frontier));
    return all;
  }
};

TEST_F(NSGATest, RateOfMutationBecomesOneOverTheGenes) {
  UseModel({{}, {XmlDesignPart("A", {{"a"}}), XmlDesignPart("B", {{"b"}})}, {}, 3, 4});
  Config::Instance().mutationRate = 0.5;
  const NSGA made(*model, "/models/m.xml", 1);
  EXPECT_EQ(Config::Instance().mutationRate, 1.0 / 10.0);
}

TEST_F(NSGATest, FirstRankingSortsIntoFrontiers) {
  Wait(1, 9);  // 0
  Wait(9, 1);  // 1
  Wait(2, 9);  // 2, behind 0
  Wait(3, 9);  // 3, behind 2
  Wait(9, 2);  // 4, behind 1
  search->RankPopulation();
  EXPECT_THAT(Frontiers(), ElementsAre(Ids{0, 1}, Ids{2, 4}, Ids{3}));
  EXPECT_THAT(search->uncheckedPopulation, IsEmpty());
}

TEST_F(NSGATest, NothingToRankLeavesNoFrontier) {
  search->RankPopulation();
  EXPECT_THAT(search->frontiers, IsEmpty());
}

TEST_F(NSGATest, NewFirstFrontierMembersMeetTheOldOnes) {
  Wait(5, 5);
  search->RankPopulation();
  Wait(4, 4);
  Wait(4, 6);
  search->RankPopulation();
  // What the first newcomer has beaten goes behind; neither of the two beats the other.
  EXPECT_THAT(Frontiers(), ElementsAre(Ids{1}, Ids{0, 2}));
}

// Three frontiers stand. Losers try the first one again at each level below three, then a new
// fourth one; those in the middle stay as they are, even where a loser would dominate them.
TEST_F(NSGATest, LosersGoBehindAllFrontiersThatStand) {
  Wait(1, 1);  // 0
  Wait(4, 4);  // 1
  Wait(8, 8);  // 2
  search->RankPopulation();
  ASSERT_THAT(Frontiers(), ElementsAre(Ids{0}, Ids{1}, Ids{2}));
  Wait(2, 2);  // 3: behind the first, better than the second
  Wait(3, 3);  // 4: behind that
  search->RankPopulation();
  EXPECT_THAT(Frontiers(), ElementsAre(Ids{0}, Ids{1}, Ids{2}, Ids{3}, Ids{4}));
}

TEST_F(NSGATest, MembersOfTheFirstFrontierThatLoseGoBehindAllTheOthers) {
  Wait(4, 4);  // 0
  Wait(8, 8);  // 1
  search->RankPopulation();
  Wait(1, 1);  // 2
  search->RankPopulation();
  EXPECT_THAT(Frontiers(), ElementsAre(Ids{2}, Ids{1}, Ids{0}));
}

// The later one of two equal designs is tried first, wins for the time being, and gives way when
// the older one comes; the loser lies in a frontier of its own behind it.
TEST_F(NSGATest, TheYoungerOfTwoEqualDesignsGoesBehind) {
  search->uncheckedPopulation.push_back(Candidate(5, At(1, 1)));
  search->uncheckedPopulation.push_back(Candidate(5, At(1, 1)));
  search->RankPopulation();
  EXPECT_THAT(Frontiers(), ElementsAre(Ids{0}, Ids{1}));
}

TEST_F(NSGATest, PureElitismKeepsOneFrontier) {
  Config::Instance().pureElitist = true;
  Wait(1, 9);
  Wait(9, 1);
  Wait(9, 9);
  search->RankPopulation();
  EXPECT_THAT(Frontiers(), ElementsAre(Ids{0, 1}));
  Wait(1, 1);
  Wait(2, 2);
  search->RankPopulation();
  EXPECT_THAT(Frontiers(), ElementsAre(Ids{3}));
}

TEST_F(NSGATest, StrictBoundariesDropTheInfeasible) {
  Config::Instance().strictBoundaries = true;
  Wait(1, 1, false);
  Wait(5, 5);
  Wait(6, 6);
  Wait(2, 2, false);
  search->RankPopulation();
  EXPECT_THAT(Frontiers(), ElementsAre(Ids{1}, Ids{2}));
}

TEST_F(NSGATest, StrictBoundariesEndWhenNothingIsFeasible) {
  Config::Instance().strictBoundaries = true;
  Wait(1, 1, false);
  Wait(2, 2, false);
  search->RankPopulation();
  EXPECT_THAT(search->uncheckedPopulation, IsEmpty());
  for (const int size : Sizes()) EXPECT_EQ(size, 0);
  EXPECT_THAT(search->archive->members, IsEmpty());
}

TEST_F(NSGATest, StrictBoundariesWithPureElitismKeepTheFeasible) {
  Config::Instance().strictBoundaries = true;
  Config::Instance().pureElitist = true;
  Wait(1, 1, false);
  Wait(5, 5);
  Wait(6, 6);
  search->RankPopulation();
  EXPECT_THAT(Frontiers(), ElementsAre(Ids{1}));
}

TEST_F(NSGATest, ArchiveHoldsCopiesOfTheFeasibleBest) {
  Wait(1, 9);
  Wait(9, 1, false);
  Wait(5, 9);
  search->RankPopulation();
  EXPECT_EQ(IdsOf(*search->archive), (Ids{0}));
  EXPECT_NE(search->archive->members.at(0).get(), search->frontiers[0]->members.at(0).get());
  EXPECT_TRUE(search->frontiers[0]->members.at(0)->archived);
  EXPECT_FALSE(search->frontiers[0]->members.at(1)->archived);
}

TEST_F(NSGATest, ArchiveLosesWhatIsBeaten) {
  Wait(5, 5);
  search->RankPopulation();
  Wait(4, 4);
  search->RankPopulation();
  EXPECT_EQ(IdsOf(*search->archive), (Ids{1}));
}

// A feasible design stays in the archive when an infeasible one pushes it out of the frontier.
TEST_F(NSGATest, ArchiveOutlastsTheFrontier) {
  Wait(5, 5);
  search->RankPopulation();
  Wait(4, 4, false);
  search->RankPopulation();
  EXPECT_EQ(Frontiers()[0], (Ids{1}));
  EXPECT_EQ(IdsOf(*search->archive), (Ids{0}));
}

TEST_F(NSGATest, WithoutArchiveNothingIsCopied) {
  Config::Instance().includeArchive = false;
  Wait(1, 1);
  search->RankPopulation();
  EXPECT_THAT(search->archive->members, IsEmpty());
  EXPECT_FALSE(search->frontiers[0]->members.at(0)->archived);
}

/// The population of 100 after frontiers of these sizes have been cut.
struct TrimCase {
  const char* name;
  std::int32_t sizing;
  int generation;  // Of 50.
  std::vector<int> before;
  std::vector<int> after;
};

class TrimTest : public NSGATest, public ::testing::WithParamInterface<TrimCase> {};

TEST_P(TrimTest, CutsToTheSize) {
  Config::Instance().populationSize = 100;
  Config::Instance().populationSizing = GetParam().sizing;
  search->maxGenerations = 50;
  search->generation = GetParam().generation;
  for (const int size : GetParam().before) AddFrontier(size);
  search->TrimPopulation();
  EXPECT_EQ(Sizes(), GetParam().after);
}

using List = std::vector<int>;
INSTANTIATE_TEST_SUITE_P(
    Sizings, TrimTest,
    ::testing::Values(TrimCase{"StrictUnder", 0, 9, List{40, 60}, List{40, 60}},
                      TrimCase{"StrictPart", 0, 9, List{40, 50, 30}, List{40, 50, 10}},
                      TrimCase{"StrictWhole", 0, 9, List{40, 60, 30, 5}, List{40, 60}},
                      TrimCase{"StrictFirst", 0, 9, List{120, 30}, List{100}},
                      TrimCase{"StrictOnlyFirst", 0, 9, List{120}, List{100}},
                      TrimCase{"ExemptFirst", 1, 9, List{120, 30, 20}, List{120}},
                      TrimCase{"ExemptFirstOfTheSize", 1, 9, List{100, 30}, List{100}},
                      TrimCase{"ExemptSmallFirst", 1, 9, List{40, 50, 30, 7}, List{40, 50, 10}},
                      TrimCase{"ExemptAlone", 1, 9, List{250}, List{250}},
                      TrimCase{"VariableEarly", 2, 4, List{120, 30}, List{120}},
                      TrimCase{"VariableEarlySmall", 2, 4, List{40, 90}, List{40, 60}},
                      TrimCase{"VariableFromTheTenth", 2, 5, List{120, 30}, List{100}},
                      TrimCase{"VariableLate", 2, 49, List{120}, List{100}},
                      TrimCase{"None", 0, 9, List{}, List{}}),
    CaseName);

TEST_F(NSGATest, TrimmingDestroysTheOldestOfTheFeasible) {
  Config::Instance().populationSize = 2;
  Config::Instance().populationSizing = PopulationSizing::Fixed;
  AddFrontier(4);
  search->TrimPopulation();
  EXPECT_THAT(Frontiers(), ElementsAre(Ids{2, 3}));
}

TEST_F(NSGATest, CrowdingIsAssignedToWhatStaysAlone) {
  Config::Instance().populationSize = 5;
  AddFrontier(4);
  AddFrontier(2);
  AddFrontier(3);
  search->AssignCrowding();
  EXPECT_TRUE(search->frontiers[0]->members.begin()->second->boundary);
  // One too many of two: cut, so it has to be known which.
  EXPECT_TRUE(search->frontiers[1]->members.begin()->second->boundary);
  // Four too many, all three go.
  EXPECT_FALSE(search->frontiers[2]->members.begin()->second->boundary);
}

TEST_F(NSGATest, CrowdingOfAFrontierThatGoesWholeIsNotAssigned) {
  Config::Instance().populationSize = 4;
  AddFrontier(4);
  AddFrontier(2);
  search->AssignCrowding();
  EXPECT_TRUE(search->frontiers[0]->members.begin()->second->boundary);
  EXPECT_FALSE(search->frontiers[1]->members.begin()->second->boundary);
}

TEST_F(NSGATest, CrowdingWithinTheSizeIsAssignedEverywhere) {
  Config::Instance().populationSize = 9;
  AddFrontier(4);
  AddFrontier(2);
  AddFrontier(3);
  search->AssignCrowding();
  for (const auto& frontier : search->frontiers) {
    EXPECT_TRUE(frontier->members.begin()->second->boundary);
  }
}

/// Offspring of real designs: one component of three choices, each of which costs its number.
class OffspringTest : public NSGATest {
 protected:
  OffspringTest() {
    Config::Instance().childPopulationSize = 30;
    Config::Instance().encodingType = EncodingType::Fixed;
    UseModel({{XmlObjective("Cost")}, {XmlDesignPart("A", {{"a", 1.0}, {"b", 2.0}, {"c", 4.0}})}});
  }
  const CapturedStreams streams;
};

TEST_F(OffspringTest, FirstPopulationHasAsManyAsChildrenAreMade) {
  Config::Instance().populationSize = 7;
  search->InitialisePopulation();
  EXPECT_EQ(search->uncheckedPopulation.size(), 30U);
  for (const auto& one : search->uncheckedPopulation) EXPECT_EQ(one->evaluations.size(), 1U);
}

TEST_F(OffspringTest, InitialisationTellsWhatItMade) {
  Config::Instance().childPopulationSize = 3;
  search->InitialisePopulation();
  EXPECT_THAT(streams.Output(),
              ::testing::MatchesRegex("--------Population initialised--------\n"
                                      "Time taken to intitialise population: [^\n]*s\\.\n"
                                      "Number of individuals created: 3\n"
                                      "----------------------------------------\n"));
}

TEST_F(OffspringTest, AsManyChildrenAreBredAsAreAskedFor) {
  search->InitialisePopulation();
  search->RankPopulation();
  search->generation = 2;
  search->CreateOffspring();
  ASSERT_EQ(search->uncheckedPopulation.size(), 30U);
  for (const auto& child : search->uncheckedPopulation) {
    EXPECT_GE(child->individualId, 30);
    EXPECT_EQ(child->lastAlteredGeneration, 2);
    EXPECT_TRUE(child->encoding->IsValid());
  }
}

TEST_F(OffspringTest, EmptyPoolIsFilledAtRandom) {
  search->CreateOffspring();
  EXPECT_EQ(search->uncheckedPopulation.size(), 30U);
}

/// What tournaments take: the numbers are those of the generator, drawn by the test itself.
TEST_F(OffspringTest, ParentsAreTheBetterOfTwoDrawnWithReplacement) {
  for (int i = 0; i < 9; ++i) Wait(i, 9 - i);
  search->RankPopulation();
  Config::Instance().childPopulationSize = 20;
  Config::Instance().crossoverRate = 1.0;
  Config::Instance().useRBD = true;  // Numbers in the place of designs need no analysis.
  SeedRandom(31);
  RandomGenerator generator(31);
  search->CreateOffspring();
  for (const auto& child : search->uncheckedPopulation) {
    // Feasible designs stand from the newest to the oldest; a design has the number 1001 + id.
    const auto draw = [&] { return static_cast<int>(generator.Uniform() * 9.0F); };
    const auto winner = [&] {
      const int first = draw();
      return 1009 - std::min(first, draw());
    };
    const int mother = winner();
    const int father = winner();
    generator.Uniform();  // Decides on the crossover.
    EXPECT_EQ(dynamic_cast<const FakeEncoding&>(*child->encoding).design, mother + father);
  }
}

/// A component that loses its only replica more often than not.
TEST_F(OffspringTest, ImpossibleChildrenAreDropped) {
  UseModel({{XmlObjective("Cost")}, {XmlDesignPart("A", {{"a", 1.0}})}, {}, 3, 0});
  search->InitialisePopulation();
  search->RankPopulation();
  Config::Instance().mutationRate = 1.0;
  search->CreateOffspring();
  ASSERT_EQ(search->uncheckedPopulation.size(), 30U);
  for (const auto& child : search->uncheckedPopulation) {
    EXPECT_EQ(child->evaluations, (Values{{"Cost", 1.0}}));
  }
  // Ids tell that more than those 30 have been made.
  EXPECT_GT(search->uncheckedPopulation.back()->individualId, 65);
}

/// A design of which no child can be built.
class BarrenEncoding : public FakeEncoding {
 public:
  using FakeEncoding::FakeEncoding;
  std::unique_ptr<Encoding> Crossover(const Encoding&) const override {
    return std::make_unique<FakeEncoding>(design, false);
  }
  std::unique_ptr<Encoding> Clone() const override {
    return std::make_unique<FakeEncoding>(design, false);
  }
};

TEST_F(OffspringTest, SearchThatFindsNoDesignGivesUp) {
  search->uncheckedPopulation.push_back(std::make_unique<Individual>(
      *search, EncodingType::Tree, std::make_unique<BarrenEncoding>(1)));
  search->uncheckedPopulation.back()->feasible = false;
  search->RankPopulation();
  EXPECT_EQ(ThrownMessage([this] { search->CreateOffspring(); }),
            "No valid design found in 10000 tries.");
}

TEST_F(OffspringTest, SearchThatLosesEveryReplicaNamesTheComponent) {
  Config::Instance().encodingType = EncodingType::Fixed;
  UseModel({{XmlObjective("Cost")},
            {XmlDesignPart("A", {{"a"}}), XmlDesignPart("B", {{"b"}})},
            {},
            3,
            -1});
  model->FindComponent("A")->maxReplicants = 0;
  EXPECT_EQ(ThrownMessage([this] { search->InitialisePopulation(); }),
            "No valid design found in 10000 tries: DEFAULT::B has no room for a replica: "
            "MaxReplicants=-1.");
}

}  // namespace
}  // namespace FTS
