#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <utility>

#include "endtoend/SearchRun.h"
#include "model/NumberText.h"

namespace FTS {
namespace {

using ::testing::HasSubstr;

/// Levels of three events are searched: losing A and B both requires 3, and losing C requires 2.
class SafetyLevelSearchTest : public SearchRun {
 protected:
  using Point = std::pair<int, int>;  ///< Cost, and how many cut sets stay below.

  SafetyLevelSearchTest() {
    const auto hazard = [](const std::string& name, const std::string& logic, int level) {
      return Xml("Hazard", Xml("Name", name) + Xml("SafetyRequirement", std::to_string(level)) +
                               Xml("Logic", logic));
    };
    const std::string objectives =
        Xml("OptimisationParams",
            Xml("MaxGenerations", "30") +
                Xml("Objectives", XmlObjective("ASILCost") + XmlObjective("ASILInvalids")));
    folder.Write("plant.xml", XmlModel({hazard("H1", "Omission-A.out AND Omission-B.out", 3),
                                        hazard("H2", "Omission-C.out", 2)},
                                       objectives + XmlSystem({XmlDesignPart("A", {{"a"}}, ""),
                                                               XmlDesignPart("B", {{"b"}}, ""),
                                                               XmlDesignPart("C", {{"c"}}, "")},
                                                              {})));
  }

  ProgramRun Levels(const std::vector<std::string>& options) const {
    std::vector<std::string> all = {"plant.xml",     "optimise=true",     "decomposeSILs",
                                    "randomSeed=21", "populationSize=30", "outputdir=out"};
    all.insert(all.end(), options.begin(), options.end());
    return RunProgramWith(all, {folder.Path(), ""});
  }
  std::string OnlyState() const {
    for (const std::string& name : Files()) {
      if (name.ends_with(".xml")) return folder.Read(ResultsIn("out") + name);
    }
    return "";
  }

  /// The values of the members of a population.
  static std::set<Point> Points(const std::string& population) {
    static const std::regex Figures(
        "<Name>ASILCost</Name>\\s*<Value>([0-9]*)</Value>\\s*</Evaluation>\\s*<Evaluation>\\s*"
        "<Name>ASILInvalids</Name>\\s*<Value>([0-9]*)<");
    std::set<Point> points;
    for (std::sregex_iterator i(population.begin(), population.end(), Figures), end; i != end;
         ++i) {
      points.emplace(ParseInteger((*i)[1].str()), ParseInteger((*i)[2].str()));
    }
    return points;
  }
  /// All 125 allocations, and of them what no other one is better than.
  static std::set<Point> TrueFront() {
    constexpr std::array<int, 5> Costs = {0, 10, 100, 1000, 10000};
    std::set<Point> all;
    for (int i = 0; i < 125; ++i) {
      const int a = i % 5;
      const int b = i / 5 % 5;
      const int c = i / 25;
      const auto cost = [&](int level) { return Costs[static_cast<std::size_t>(level)]; };
      all.emplace(cost(a) + cost(b) + cost(c), (a + b < 3 ? 1 : 0) + (c < 2 ? 1 : 0));
    }
    std::set<Point> front;
    for (const Point& one : all) {
      if (std::none_of(all.begin(), all.end(), [&](const Point& other) {
            return other != one && other.first <= one.first && other.second <= one.second;
          })) {
        front.insert(one);
      }
    }
    return front;
  }
};

TEST_F(SafetyLevelSearchTest, FindsTheTrueFront) {
  ASSERT_EQ(TrueFront(), (std::set<Point>{{0, 2}, {100, 1}, {210, 0}}));
  const ProgramRun run = Levels({"GAType=NSGA"});
  EXPECT_EQ(run.errors, "");
  EXPECT_EQ(Points(Between(OnlyState(), "NonDominatedPopulation")), TrueFront());
}

TEST_F(SafetyLevelSearchTest, TellsFewerAndFewerInvalidCutSets) {
  const ProgramRun run = Levels({"GAType=NSGA"});
  EXPECT_THAT(run.output, HasSubstr("New lowest Invalids count : 0\n"));
  EXPECT_EQ(Count(run.output, "New lowest Invalids count : 0\n"), 1);
}

TEST_F(SafetyLevelSearchTest, StateNamesTheFlatForm) {
  Levels({"GAType=NSGA"});
  const std::string state = OnlyState();
  EXPECT_THAT(state, HasSubstr("<EncodingType>FixedEncoding</EncodingType>"));
  EXPECT_THAT(state, HasSubstr("<TreeASILEncoding>"));
}

TEST_F(SafetyLevelSearchTest, GoesOnFromItsStateWithAWarning) {
  Levels({"GAType=NSGA", "maxGenerations=4"});
  Keep(OnlyState());
  std::filesystem::remove_all(folder.Path("out"));
  const ProgramRun run = Levels({"GAType=NSGA", "previousStateFileName=state.xml"});
  EXPECT_EQ(run.errors, "");
  EXPECT_THAT(run.output, HasSubstr("Warning encoding type in saved state is different"));
  EXPECT_THAT(run.output, HasSubstr("Starting evolution at generation: 5\n"));
  EXPECT_EQ(Points(Between(OnlyState(), "NonDominatedPopulation")), TrueFront());
}

TEST_F(SafetyLevelSearchTest, OneSeedGivesOneResult) {
  Levels({"GAType=NSGA", "outputdir=first"});
  Levels({"GAType=NSGA", "outputdir=second"});
  ASSERT_FALSE(Contents("first").empty());
  EXPECT_EQ(Contents("first"), Contents("second"));
}

// The bound makes designs with invalid cut sets infeasible; the cheapest feasible one costs 210. It
// takes some hundred generations until the penalty outweighs what they save.
TEST_F(SafetyLevelSearchTest, PenaltySearchFindsTheCheapestFeasibleAllocation) {
  std::string model = folder.Read("plant.xml");
  const std::string goal = "<Name>ASILInvalids</Name><Goal>Minimise</Goal>";
  model.insert(model.find(goal) + goal.size(), Xml("Bounds", Xml("UpperBound", "0")));
  folder.Write("plant.xml", model);
  const ProgramRun run = Levels({"GAType=CoitGA", "maxGenerations=500"});
  EXPECT_EQ(run.errors, "");
  const std::set<Point> found = Points(Between(OnlyState(), "Population"));
  int cheapest = 1000000;
  for (const Point& point : found) {
    if (point.second == 0) cheapest = std::min(cheapest, point.first);
  }
  EXPECT_EQ(cheapest, 210);
}

TEST_F(SafetyLevelSearchTest, SavedLevelsThatAreNoneAreRefused) {
  Levels({"GAType=NSGA", "maxGenerations=4"});
  Keep(std::regex_replace(OnlyState(), std::regex("<SafetyRequirement>[0-9]<"),
                          "<SafetyRequirement>9<"));
  std::filesystem::remove_all(folder.Path("out"));
  const ProgramRun run = Levels({"GAType=NSGA", "previousStateFileName=state.xml"});
  EXPECT_EQ(run.exitStatus, 0);
  EXPECT_THAT(run.errors, HasSubstr("DEFAULT::A:dead has the level 9 (in BasicEvent, line "));
  EXPECT_THAT(run.errors, HasSubstr("VtnException: No individual of the saved state fits the "
                                    "model: state.xml\n"));
  EXPECT_TRUE(Files().empty());
}

/// A saved search of the flat form, made from one along the hierarchy.
class FlatLevelSearchTest : public SafetyLevelSearchTest {
 protected:
  FlatLevelSearchTest() {
    Levels({"GAType=NSGA", "maxGenerations=4"});
    const std::string state = OnlyState();
    static const std::regex Node("<FullName>([^<]*)</FullName>[^]*?<ID>([0-9]*)<");
    for (std::sregex_iterator i(state.begin(), state.end(), Node), end;
         i != end && events.size() < 3; ++i) {
      events.emplace_back((*i)[1].str() + ":dead", (*i)[2].str());
    }
    std::filesystem::remove_all(folder.Path("out"));
    folder.Write(
        "state.xml",
        Xml("Vel-Tarn_Results",
            Xml("NSGA", Xml("Generation", "4") + Xml("EncodingType", "FixedASILEncoding") +
                            Xml("TimeElapsed", "1") + "<UncheckedPopulation/>" +
                            Xml("NonDominatedPopulation",
                                Allocation(1, {0, 0, 0}, 0, 2) + Allocation(2, {1, 2, 2}, 210, 0)) +
                            "<OtherNonDominatedPopulations/>")));
  }

  std::string Allocation(int id, const std::array<int, 3>& levels, int cost, int invalids) const {
    std::string nodes;
    for (std::size_t i = 0; i < 3; ++i) {
      nodes += Xml("EncodingNode",
                   Xml("Component", Xml("BasicEvent", "dead") + Xml("Name", events.at(i).first) +
                                        Xml("ID", events.at(i).second) +
                                        Xml("SafetyRequirement", std::to_string(levels.at(i)))));
    }
    const auto value = [](const std::string& name, int figure) {
      return Xml("Evaluation", Xml("Name", name) + Xml("Value", std::to_string(figure)));
    };
    return Xml("Individual",
               Xml("IndividualID", std::to_string(id)) +
                   Xml("Encoding", Xml("FixedASILEncoding", nodes)) +
                   Xml("Evaluations", value("ASILCost", cost) + value("ASILInvalids", invalids)));
  }
  ProgramRun Resume(const std::string& generations) const {
    return Levels({"GAType=NSGA", "previousStateFileName=state.xml", "mutationRate=0.3",
                   "maxGenerations=" + generations});
  }

  std::vector<std::pair<std::string, std::string>> events;  ///< Text and prime.
};

TEST_F(FlatLevelSearchTest, GoesOnFromItsOwnStates) {
  ASSERT_EQ(events.size(), 3U);
  for (const std::string generations : {"30", "40"}) {
    const ProgramRun run = Resume(generations);
    EXPECT_EQ(run.errors, "");
    EXPECT_THAT(run.output, HasSubstr("Generation: " + generations + "/" + generations));
    const std::string state = OnlyState();
    EXPECT_GT(Count(state, "<FixedASILEncoding>"), 0);
    EXPECT_EQ(Count(state, "<TreeASILEncoding>"), 0);
    EXPECT_EQ(Points(Between(state, "NonDominatedPopulation")), TrueFront());
    Keep(state);
    std::filesystem::remove_all(folder.Path("out"));
  }
}

TEST_F(FlatLevelSearchTest, TellsEveryLevel) {
  static const std::regex Level("\n[0-4](?=\n)");
  const std::string output = Resume("5").output;
  // Thirty children of three events each, drawn or not.
  EXPECT_GE(std::distance(std::sregex_iterator(output.begin(), output.end(), Level), {}), 90);
}

TEST_F(SafetyLevelSearchTest, WithoutHazardsNothingIsInvalid) {
  std::string model = folder.Read("plant.xml");
  const std::size_t begin = model.find("<Hazards>");
  model.erase(begin, model.find("</Hazards>") + std::string("</Hazards>").size() - begin);
  folder.Write("plant.xml", model);
  for (const std::string kind : {"GAType=NSGA", "GAType=CoitGA"}) {
    const ProgramRun run = Levels({kind});
    EXPECT_EQ(run.exitStatus, 0);
    EXPECT_EQ(run.errors, "");
    const std::string state = OnlyState();
    EXPECT_GT(Count(state, "<Individual>"), 0);
    for (const Point& point : Points(state)) EXPECT_EQ(point.second, 0) << point.first;
    EXPECT_EQ(Points(state).begin()->first, 0) << "the cheapest has no level at all";
    std::filesystem::remove_all(folder.Path("out"));
  }
}

}  // namespace
}  // namespace FTS
