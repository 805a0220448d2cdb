#include <gmock/gmock.h>

#include "endtoend/SearchRun.h"
#include "model/NumberText.h"
#include "support/CaseName.h"

namespace FTS {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

/// Whole searches: what they tell, what they leave, and what stops them.
class SearchRunTest : public SearchRun {};

TEST_F(SearchRunTest, LeavesStatePageAndScripts) {
  const ProgramRun run = Search({});
  EXPECT_EQ(run.exitStatus, 0);
  EXPECT_EQ(run.errors, "");
  EXPECT_THAT(Files(), ElementsAre(Stem(6) + "-Model.js", Stem(6) + ".html", Stem(6) + ".js",
                                   Stem(6) + ".xml"));
  for (const char* name : {"css/menus.css", "css/basic.css", "css/tabs.css", "javascript/menus.js",
                           "javascript/xmlTransform.js", "javascript/popup.js",
                           "javascript/ftiens4.js", "javascript/ua.js"}) {
    EXPECT_TRUE(folder.Contains(ResultsIn("out") + "FTOutput/" + name)) << name;
  }
  EXPECT_FALSE(folder.Contains("out/plant-FMEAOutput"));
  EXPECT_FALSE(folder.Contains("out/plant-Results"));
}

TEST_F(SearchRunTest, TellsRunsAndThePageItOpens) {
  const ProgramRun run = Search({"numberOfRepeatRuns=2"});
  const std::string page = ResultsIn("out");
  for (int number = 1; number <= 2; ++number) {
    const std::size_t start = run.output.find(
        "Starting Genetic Algorithm run number " + std::to_string(number) +
        "\nStarting evolution at generation: 1\n--------Population initialised--------\n");
    ASSERT_NE(start, std::string::npos) << run.output;
    const std::size_t open =
        run.output.find("s.\nstart iexplore.exe \"" + page + Stem(6, number) +
                            ".html\"\n-------Maximum generation reached-------\nGeneration: 6\n",
                        start);
    ASSERT_NE(open, std::string::npos) << run.output;
    EXPECT_NE(run.output.find("----------------------------------------\n"
                              "Genetic Algorithm finished: deleting\n",
                              open),
              std::string::npos);
  }
}

TEST_F(SearchRunTest, PageHasItsLinesInOrder) {
  Search({});
  const std::string name = Stem(6);
  const auto script = [](const std::string& file) {
    return "<script type=\"text/javascript\" language=\"JavaScript\" src=\"FTOutput/javascript/" +
           file + ".js\"></script>\n";
  };
  const auto style = [](const std::string& file) {
    return "<style type=\"text/css\" media=\"screen\">\n\t@import \"FTOutput/css/" + file +
           ".css\";\n</style>\n";
  };
  const std::string page = folder.Read(ResultsIn("out") + name + ".html");
  const std::string icons = page.substr(0, page.find("<style"));
  EXPECT_THAT(icons,
              ::testing::MatchesRegex(
                  "<!doctype html>\n<html>\n<head>\n"
                  "<link rel=\"stylesheet\" type=\"text/css\" "
                  "href=\"FTOutput/css/menus.css\" />\n"
                  "<link rel=\"icon\" type=\"image/x-icon\" href=\"[^\"\n]*\" />\n"
                  "<link rel=\"shortcut icon\" type=\"image/x-icon\" href=\"[^\"\n]*\" />\n"));
  EXPECT_EQ(page.substr(icons.size()),
            style("basic") + style("tabs") + script("menus") + script("xmlTransform") +
                script("popup") + script("ftiens4") + script("ua") +
                "</head>\n<body class=\"tableHeader\" onload=\"\n"
                "menuTransform('" +
                name + ".xml','Optimisation Results');\noptimisationTransform('" + name +
                ".xml','', '');\noptimisationSummaryTransform('" + name +
                ".xml');\n\">\n<table id=\"BodyTable\" cellspacing=\"0\">\n"
                "<tr><td><div id=\"MenuHeader\">\n</div></td></tr>\n"
                "<tr>\n<td>\n<div id=\"OverviewSpace\">\n</div>\n</td>\n</tr>\n"
                "<tr>\n<td>\n<div id=\"ContentSpace\">\n</div>\n</td>\n</tr>\n"
                "</table>\n</body>\n</html>\n");
}

TEST_F(SearchRunTest, OneSeedGivesOneResult) {
  Search({}, "first");
  Search({}, "second");
  const auto first = Contents("first");
  ASSERT_EQ(first.size(), 4U);
  EXPECT_EQ(first, Contents("second"));
}

TEST_F(SearchRunTest, HierarchicalSearchIsRepeatedByItsSeedToo) {
  Search({"encodingType=TREE"}, "first");
  Search({"encodingType=TREE"}, "second");
  const auto first = Contents("first");
  ASSERT_EQ(first.size(), 4U);
  EXPECT_EQ(first, Contents("second"));
}

TEST_F(SearchRunTest, OtherSeedsGiveOtherSearches) {
  Search({}, "first");
  Search({"randomSeed=815"}, "second");
  EXPECT_NE(Between(State(6, "first"), "RandomSeed"), Between(State(6, "second"), "RandomSeed"));
  EXPECT_NE(Contents("first"), Contents("second"));
}

TEST_F(SearchRunTest, RateOfMutationHasNoEffect) {
  Search({}, "first");
  Search({"mutationRate=0.5"}, "second");
  EXPECT_EQ(Contents("first"), Contents("second"));
}

TEST_F(SearchRunTest, RepeatedRunsDoNotRepeatEachOther) {
  Search({"numberOfRepeatRuns=2"});
  const std::string first = folder.Read(ResultsIn("out") + Stem(6, 1) + ".xml");
  const std::string second = folder.Read(ResultsIn("out") + Stem(6, 2) + ".xml");
  EXPECT_NE(Between(first, "RandomSeed"), Between(second, "RandomSeed"));
  // The second run's designs come later.
  EXPECT_GT(ParseInteger(Between(second, "IndividualID")),
            ParseInteger(Between(first, "IndividualID")));
}

// Front and figures of the nine designs without replicas, worked out by hand.
TEST_F(SearchRunTest, FindsTheFrontOfASmallModel) {
  Search({"encodingType=TREE", "maxGenerations=20", "outputdir=tree"});
  const std::string state = folder.Read(
      "tree/plant-OptimisationResults/GA(plant)_Generation20_PopulationLimit12_"
      "ChildPopulationSize12_Archive_TreeEncoding_RunNumber1.xml");
  const std::string front = state.substr(0, state.find("</NonDominatedPopulation>"));
  static const std::regex Figures(
      "<Name>Cost</Name>\\s*<Value>([^<]*)</Value>\\s*</Evaluation>\\s*<Evaluation>\\s*"
      "<Name>Unavailability</Name>\\s*<Value>([^<]*)<");
  std::set<std::string> found;
  for (std::sregex_iterator i(front.begin(), front.end(), Figures), end; i != end; ++i) {
    found.insert((*i)[1].str() + " " + (*i)[2].str());
  }
  EXPECT_THAT(found, ElementsAre("11.000000 0.059500", "16.000000 0.019900", "2.000000 0.360000",
                                 "4.000000 0.240000", "6.000000 0.097500"));
}

TEST_F(SearchRunTest, WithoutDisplayNothingIsWritten) {
  const ProgramRun run = Search({"displayOutput=false", "outputInterval=2"});
  EXPECT_EQ(run.exitStatus, 0);
  EXPECT_EQ(Count(run.output, "Outputting optimisation results\n"), 4);
  EXPECT_FALSE(Holds(run.output, "iexplore"));
  EXPECT_FALSE(folder.Contains("out"));
}

TEST_F(SearchRunTest, NoGenerationsLeaveNothing) {
  const ProgramRun run = Search({"maxGenerations=0"});
  EXPECT_THAT(run.output,
              HasSubstr("Starting Genetic Algorithm run number 1\n"
                        "Current generation (0) of optimisation is already at maximum (0).\n"
                        "Genetic Algorithm finished: deleting\n"));
  EXPECT_FALSE(folder.Contains("out"));
}

TEST_F(SearchRunTest, ModelSaysHowLongToSearch) {
  const ProgramRun run = RunProgramWith(
      {"plant.xml", "optimise=true", "GAType=NSGA", "populationSize=4", "displayOutput=false"},
      {folder.Path(), ""});
  EXPECT_THAT(run.output, HasSubstr("Generation: 6/6 completed in"));
}

TEST_F(SearchRunTest, ResultsComeEveryIntervalAndAtTheEnd) {
  Search({"maxGenerations=7", "outputInterval=3"});
  std::set<std::string> states;
  for (const std::string& name : Files()) {
    if (name.ends_with(".xml")) states.insert(name);
  }
  EXPECT_THAT(states, ElementsAre(Stem(3) + ".xml", Stem(6) + ".xml", Stem(7) + ".xml"));
}

TEST_F(SearchRunTest, QuitLeavesResultsAndTakesTheCommandAway) {
  folder.Write("plant-OptimisationResults/commandFile.txt", "QUIT");
  const ProgramRun run = Search({});
  EXPECT_FALSE(folder.Contains("plant-OptimisationResults/commandFile.txt"));
  EXPECT_THAT(run.output, AllOf(HasSubstr("\nGeneration: 1/6"), Not(HasSubstr("\nGeneration: 2/6")),
                                HasSubstr("start iexplore.exe")));
  // The count stands on the generation that would have come.
  EXPECT_TRUE(Files().contains(Stem(2) + ".xml"));
}

TEST_F(SearchRunTest, LineEndHidesTheNextCommand) {
  folder.Write("plant-OptimisationResults/commandFile.txt", "CANCEL_MONITOR_STATUS\nQUIT");
  const ProgramRun run = Search({});
  EXPECT_FALSE(folder.Contains("plant-OptimisationResults/commandFile.txt"));
  EXPECT_FALSE(Holds(run.output,
                     "completed in"
                     " 0"
                     ".0 s. Session"));
  EXPECT_FALSE(Holds(run.output, "Session run time"));
  EXPECT_THAT(run.output, HasSubstr("-------Maximum generation reached-------\nGeneration: 6\n"));
}

TEST_F(SearchRunTest, UnknownCommandsStay) {
  folder.Write("plant-OptimisationResults/commandFile.txt", "STOP");
  Search({});
  EXPECT_TRUE(folder.Contains("plant-OptimisationResults/commandFile.txt"));
}

// The folder of commands lies beside the model, wherever results go.
TEST_F(SearchRunTest, CommandsInTheFolderOfResultsAreNotRead) {
  folder.Write(ResultsIn("out") + "commandFile.txt", "QUIT");
  EXPECT_THAT(Search({}).output, HasSubstr("Generation: 6/6 completed in"));
}

// A limit on the size of files ends the program amid the writing of a state.
TEST_F(SearchRunTest, KilledRunLeavesTheFilesBeforeWhole) {
  folder.Write(ResultsIn("out") + Stem(6) + ".xml", "the state before");
  ProgramRun run = Search({"maxGenerations=3", "populationSize=12"});
  ASSERT_GT(State(3).size(), 30720U) << "the state has to be larger than the limit";
  const std::string command = "ulimit -f 60; exec \"$0\" \"$@\"";
  run = RunProgramWith({"-c", command, ProgramUnderTest(), "plant.xml", "optimise=true",
                        "GAType=NSGA", "encodingType=FIXED", "randomSeed=814", "populationSize=12",
                        "maxGenerations=6", "outputdir=out"},
                       {folder.Path(), "/bin/sh"});
  EXPECT_EQ(run.exitStatus, -1) << "the limit did not end the program";
  EXPECT_EQ(State(6), "the state before");
}

TEST_F(SearchRunTest, FileThatCannotBeReplacedIsToldAndTheRunGoesOn) {
  std::filesystem::create_directories(folder.Path(ResultsIn("out") + Stem(6) + ".html/x"));
  const ProgramRun run = Search({});
  EXPECT_EQ(run.exitStatus, 0);
  EXPECT_THAT(run.errors, HasSubstr("ERROR: Could not open XML file to write: "));
  EXPECT_THAT(run.output, HasSubstr("Genetic Algorithm finished: deleting\n"));
}

TEST_F(SearchRunTest, PureElitistSearchHasOneFrontier) {
  Search({"pureElitist=true"});
  const std::string state =
      folder.Read(ResultsIn("out") +
                  "GA(plant)_Generation6_PopulationLimit12_ChildPopulationSize12_Archive_"
                  "FixedEncoding_PureElitist_RunNumber1.xml");
  EXPECT_THAT(state, HasSubstr("<OtherNonDominatedPopulations />"));
}

TEST_F(SearchRunTest, WithoutArchiveTheStateHasNone) {
  Search({"includeArchive=false", "outputdir=bare"});
  const std::string state =
      folder.Read(ResultsIn("bare") +
                  "GA(plant)_Generation6_PopulationLimit12_ChildPopulationSize12_"
                  "FixedEncoding_RunNumber1.xml");
  EXPECT_FALSE(Holds(state, "ArchiveNonDominatedPopulations"));
}

/// Bounds that no design can meet, strictly kept.
TEST_F(SearchRunTest, StrictBoundariesWithoutFeasibleDesignsEnd) {
  std::string model = folder.Read("plant.xml");
  const std::string goal = "<Name>Cost</Name><Goal>Minimise</Goal>";
  model.insert(model.find(goal) + goal.size(), Xml("Bounds", Xml("UpperBound", "1")));
  folder.Write("plant.xml", model);
  const ProgramRun run = Search({"strictBoundaries=true"});
  EXPECT_EQ(run.exitStatus, 0);
  EXPECT_EQ(run.errors, "No design met the bounds of the objectives.\n");
  EXPECT_THAT(run.output, AllOf(HasSubstr("Number of archived individuals: 0\n"),
                                HasSubstr("Genetic Algorithm finished: deleting\n")));
}

TEST_F(SearchRunTest, ModelWithoutChoicesIsSearchedAllTheSame) {
  folder.Write("plant.xml", XmlDesignModel({{XmlObjective("Cost")},
                                            {XmlDesignPart("A", {{"a", 5.0}}, "")},
                                            {"Omission-A.out"}}));
  for (const char* encoding : {"encodingType=FIXED", "encodingType=TREE"}) {
    const ProgramRun run = Search({encoding, "displayOutput=false"});
    EXPECT_EQ(run.exitStatus, 0);
    EXPECT_EQ(run.errors, "");
    EXPECT_THAT(run.output, HasSubstr("Number of undominated individuals: 1\n"));
  }
}

TEST_F(SearchRunTest, PenaltySearchIsTheDefault) {
  const ProgramRun run = RunProgramWith({"plant.xml", "optimise=true", "encodingType=FIXED",
                                         "randomSeed=814", "populationSize=6", "outputdir=out"},
                                        {folder.Path(), ""});
  EXPECT_EQ(run.errors, "");
  EXPECT_THAT(run.output, HasSubstr("MutationRate: 0.25\n"));
  EXPECT_FALSE(Holds(run.output, "Number of archive individuals"));
  const std::string state = folder.Read(
      ResultsIn("out") +
      "GA(plant)_Generation6_PopulationLimit6_ChildPopulationSize6_Archive_FixedEncoding_"
      "RunNumber1.xml");
  EXPECT_THAT(state, HasSubstr("<CoitGA>"));
  EXPECT_EQ(Count(state, "<Individual>"), 6);
}

TEST_F(SearchRunTest, PenaltySearchOfOneRuns) {
  const ProgramRun run = Search({"GAType=CoitGA", "populationSize=1"});
  EXPECT_EQ(run.exitStatus, 0);
  EXPECT_EQ(run.errors,
            "Warning: CoitGA needs a population of at least 2, for the best one is never mutated: "
            "populationSize=1\n");
  EXPECT_THAT(run.output, HasSubstr("Total Number of individuals: 1\n"));
}

// Without levels all costs are 0, and the order is that of the ids.
TEST_F(SearchRunTest, PenaltySearchOfDesignsKeepsTheNewest) {
  const ProgramRun run = Search({"GAType=CoitGA", "encodingType=TREE", "populationSize=5"});
  EXPECT_EQ(run.exitStatus, 0);
  EXPECT_EQ(run.errors, "");
  std::string state;
  for (const std::string& name : Files()) {
    if (name.ends_with(".xml")) state = folder.Read(ResultsIn("out") + name);
  }
  static const std::regex Id("<IndividualID>([0-9]*)<");
  std::vector<int> ids;
  for (std::sregex_iterator i(state.begin(), state.end(), Id), end; i != end; ++i) {
    ids.push_back(ParseInteger((*i)[1].str()));
  }
  ASSERT_EQ(ids.size(), 5U);
  EXPECT_TRUE(std::is_sorted(ids.rbegin(), ids.rend()));
  EXPECT_GT(ids.back(), 5 * 5 - 1) << "the last generation's are the newest";
}

struct SizeCase {
  const char* name;
  const char* kind;
  const char* option;
  const char* warning;  // "" for none.
};

class PopulationOfTest : public SearchRunTest, public ::testing::WithParamInterface<SizeCase> {};

TEST_P(PopulationOfTest, EndsInGoodOrder) {
  const SizeCase& size = GetParam();
  const ProgramRun run = Search({std::string("GAType=") + size.kind, size.option});
  EXPECT_EQ(run.exitStatus, 0);
  EXPECT_EQ(run.errors, size.warning);
  EXPECT_THAT(run.output, AllOf(HasSubstr("-------Maximum generation reached-------\n"),
                                HasSubstr("Genetic Algorithm finished: deleting\n")));
  EXPECT_FALSE(Files().empty());
}

constexpr const char* NothingKept =
    "Warning: populationSize= wants a whole number above 0, variable or unlimited. Nothing can be "
    "kept of a population of 0.\n";

INSTANTIATE_TEST_SUITE_P(
    Sizes, PopulationOfTest,
    ::testing::Values(
        SizeCase{"None", "NSGA", "populationSize=0", NothingKept},
        SizeCase{"NoNumber", "NSGA", "populationSize=many", NothingKept},
        SizeCase{"LessThanNone", "NSGA", "populationSize=-5",
                 "Warning: populationSize= wants a whole number above 0, variable or unlimited. "
                 "Nothing can be kept of a population of -5.\n"},
        SizeCase{"One", "NSGA", "populationSize=1", ""},
        SizeCase{"Two", "NSGA", "populationSize=2", ""},
        SizeCase{"Three", "NSGA", "populationSize=3", ""},
        SizeCase{"NoChildren", "NSGA", "childPopulationSize=0",
                 "Warning: childPopulationSize= wants a whole number above 0. No designs are tried "
                 "with 0.\n"},
        SizeCase{"PenaltyOfNone", "CoitGA", "populationSize=0", NothingKept},
        SizeCase{"PenaltyOfLessThanNone", "CoitGA", "populationSize=-5",
                 "Warning: populationSize= wants a whole number above 0, variable or unlimited. "
                 "Nothing can be kept of a population of -5.\n"},
        SizeCase{"PenaltyOfTwo", "CoitGA", "populationSize=2", ""},
        SizeCase{"PenaltyOfThree", "CoitGA", "populationSize=3", ""}),
    CaseName);

TEST_F(SearchRunTest, SeedThatIsNoneIsTold) {
  for (const std::string seed : {"-1", "4294967296", "abc", "12abc", "1.5", ""}) {
    const ProgramRun run = Search({"randomSeed=" + seed, "displayOutput=false"});
    EXPECT_EQ(run.errors, "Warning: randomSeed= wants a whole number from 1 to 4294967295, not \"" +
                              seed + "\". The search is seeded by the time.\n");
  }
}

// A search is silent and has no report at its end.
TEST_F(SearchRunTest, PagesOnAFullDiskAreTold) {
  Search({});
  const std::string page = folder.Path(ResultsIn("out") + "FTOutput/css/basic.css");
  std::filesystem::remove(page);
  std::filesystem::create_symlink("/dev/full", page);
  const ProgramRun run = Search({});
  EXPECT_TRUE(Holds(run.errors, "Cannot write the whole of file: ")) << run.errors;
  EXPECT_TRUE(Holds(run.errors, "FTOutput/css/basic.css\n")) << run.errors;
}

TEST_F(SearchRunTest, SeedsOfTheWholeRangeAreTaken) {
  for (const char* seed : {"randomSeed=0", "randomSeed=1", "randomSeed=4294967295"}) {
    EXPECT_EQ(Search({seed, "displayOutput=false"}).errors, "");
  }
}

TEST_F(SearchRunTest, ComponentWithoutRoomIsNamed) {
  folder.Write(
      "plant.xml",
      XmlDesignModel(
          {{XmlObjective("Cost")},
           {XmlDesignPart("A", {{"a"}}),
            XmlDesignPart("B", {{"b"}}, std::string(XmlIncluded) + Xml("MaxReplicants", "-1"))},
           {"Omission-A.out"}}));
  const ProgramRun run = Search({});
  EXPECT_EQ(run.exitStatus, 0);
  EXPECT_EQ(run.errors,
            "VtnException: No valid design found in 10000 tries: DEFAULT::B has no room for a "
            "replica: MaxReplicants=-1.\n");
  EXPECT_THAT(Files(), IsEmpty());
}

/// The second choice of A jumps to a place that does not exist, which shows when it is analysed.
TEST_F(SearchRunTest, DesignThatCannotBeAnalysedEndsTheSearchWithItsName) {
  std::string model = folder.Read("plant.xml");
  const std::string good = "<FailureExpression>dead<";
  model.replace(model.find(good, model.find("<Alternative>")), good.size(),
                "<FailureExpression>GlobalGoto(nowhere)<");
  folder.Write("plant.xml", model);
  for (const char* encoding : {"encodingType=FIXED", "encodingType=TREE"}) {
    const ProgramRun run = Search({encoding, "numberOfRepeatRuns=2"});
    EXPECT_EQ(run.exitStatus, 0);
    EXPECT_THAT(run.errors, ::testing::MatchesRegex("(VtnException: [^\n]*nowhere[^\n]* "
                                                    "\\(individual [0-9]+\\)\n)+"));
    EXPECT_EQ(Count(run.output, "Genetic Algorithm finished: deleting\n"), 2);
    EXPECT_THAT(Files(), IsEmpty());
  }
}

}  // namespace
}  // namespace FTS
