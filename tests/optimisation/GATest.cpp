// The run of a search from generation to generation, and what reaches it from outside.

#include <gmock/gmock.h>

#include <filesystem>
#include <regex>
#include <string>
#include <vector>

#include "optimisation/CoitGA.h"
#include "optimisation/GA.h"
#include "optimisation/SearchTest.h"
#include "platform/Clock.h"
#include "support/CaseName.h"
#include "support/FixedClock.h"
#include "support/TemporaryFolder.h"

namespace FTS {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

/// A search that lies in a temporary folder, and writes nothing unless told otherwise.
class GATest : public SearchTest {
 protected:
  GATest() {
    Config::Instance().openBrowser = false;
    Config::Instance().outputDir = folder.Path("results");
    Config::Instance().childPopulationSize = 4;
    Config::Instance().populationSize = 4;
    Config::Instance().maxGenerations = 3;
    search = std::make_unique<NSGA>(*model, folder.Path("plant.v2.xml"), 1);
  }

  void Command(const std::string& text) {
    folder.Write("plant.v2-OptimisationResults/commandFile.txt", text);
  }
  bool HasCommand() const {
    return folder.Contains("plant.v2-OptimisationResults/commandFile.txt");
  }
  /// The output of the run with all figures of time replaced.
  std::string Evolved(GA& ga) const {
    const CapturedStreams streams;
    ga.Evolve();
    EXPECT_EQ(streams.Errors(), "");
    static const std::regex Figure("[0-9.e-]+( ?s\\.)");
    return std::regex_replace(streams.Output(), Figure, "<t>$1");
  }
  static int Count(const std::string& text, const std::string& part) {
    int count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
      ++count;
    }
    return count;
  }

  TemporaryFolder folder;
  FixedClock clock;
};

TEST_F(GATest, StartsWithItsSettings) {
  EXPECT_EQ(search->fileName, "plant.v2.xml");
  EXPECT_EQ(search->folder, folder.Path() + "/");
  EXPECT_EQ(search->generation, 0);
  EXPECT_EQ(search->maxGenerations, 3);
  EXPECT_EQ(search->runNumber, 1);
  EXPECT_TRUE(search->monitorStatus);
  EXPECT_FALSE(search->reportStatus || search->quit || search->storeState ||
               search->outputConfiguration);
  EXPECT_EQ(search->totalTime, 0.0F);
  EXPECT_EQ(search->basePrimeCount, static_cast<std::uint32_t>(model->GetPrimeCount()));
}

TEST_F(GATest, TellsItsWayLineByLine) {
  Config::Instance().populationSizing = PopulationSizing::Fixed;
  const std::string text = Evolved(*search);
  const int archived = static_cast<int>(search->archive->members.size());
  int all = 0;
  for (const auto& frontier : search->frontiers) all += static_cast<int>(frontier->members.size());
  const std::string archiveLine =
      "Number of archive individuals: " + std::to_string(archived) + "\n";
  // Two designs exist, the better of which is found at once.
  ASSERT_EQ(archived, 1);
  EXPECT_EQ(
      text,
      "Starting evolution at generation: 1\n"
      "--------Population initialised--------\n"
      "Time taken to intitialise population: <t>s.\n"
      "Number of individuals created: 4\n"
      "----------------------------------------\n"
      "Generation: 1/3 completed in <t> s. Session run time: <t> s. Total run time: <t>s.\n" +
          archiveLine +
          "Generation: 2/3 completed in <t> s. Session run time: <t> s. Total run time: <t>s.\n" +
          archiveLine +
          "Generation: 3/3 completed in <t> s. Session run time: <t> s. Total run time: <t>s.\n" +
          archiveLine +
          "Outputting optimisation results\n"
          "Output completed in <t> s.\n"
          "-------Maximum generation reached-------\n"
          "Generation: 3\n"
          "Session evolution time: <t>s.\n"
          "Total evolution time: <t>s.\n"
          "Total Number of individuals: " +
          std::to_string(all) +
          "\n"
          "Number of undominated individuals: " +
          std::to_string(search->frontiers[0]->members.size()) +
          "\n"
          "Number of archived individuals: 1\n"
          "----------------------------------------\n");
  EXPECT_TRUE(search->quit);
}

TEST_F(GATest, WithoutGenerationsNothingIsDone) {
  Config::Instance().openBrowser = true;
  search->maxGenerations = 0;
  EXPECT_EQ(Evolved(*search),
            "Current generation (0) of optimisation is already at maximum (0).\n");
  EXPECT_FALSE(folder.Contains("results"));
  EXPECT_FALSE(folder.Contains("plant.v2-OptimisationResults"));
}

TEST_F(GATest, BeyondTheLastGenerationNothingIsDone) {
  search->generation = 7;
  EXPECT_EQ(Evolved(*search),
            "Current generation (7) of optimisation is already at maximum (3).\n");
}

TEST_F(GATest, GoesOnFromItsGeneration) {
  search->generation = 1;
  const std::string text = Evolved(*search);
  EXPECT_THAT(text, HasSubstr("Starting evolution at generation: 2\n"));
  EXPECT_THAT(text, Not(HasSubstr("Population initialised")));
  EXPECT_EQ(Count(text, "\nGeneration: 2/3"), 1);
  EXPECT_EQ(Count(text, "\nGeneration: 3/3"), 1);
}

TEST_F(GATest, GivenCandidatesTakeThePlaceOfTheFirstPopulation) {
  search->maxGenerations = 1;
  search->uncheckedPopulation.push_back(Candidate(At(1, 1)));
  const std::string text = Evolved(*search);
  EXPECT_THAT(text, Not(HasSubstr("Population initialised")));
  EXPECT_THAT(text, HasSubstr("Total Number of individuals: 1\n")) << "none is bred in addition";
}

TEST_F(GATest, SpreadsItsTimeOverTheSession) {
  /// A quarter of a second goes by whenever somebody looks.
  struct Ticking : ClockSource {
    long long Milliseconds() override { return now += 250; }
    long long CalendarSeconds() override { return 0; }
    long long now = 0;
  };
  auto before = Clock::Replace(std::make_unique<Ticking>());
  search->totalTime = 100.0F;
  Evolved(*search);
  const float total = search->totalTime;
  Clock::Replace(std::move(before));
  EXPECT_GT(total, 100.0F);
  EXPECT_LT(total, 110.0F);
}

TEST_F(GATest, QuitEndsTheRunBehindTheGeneration) {
  Command("QUIT");
  const std::string text = Evolved(*search);
  EXPECT_FALSE(HasCommand());
  EXPECT_EQ(Count(text, "\nGeneration: 1/3"), 1);
  EXPECT_EQ(Count(text, "\nGeneration: 2/3"), 0);
  EXPECT_EQ(Count(text, "Outputting optimisation results\n"), 1);
  // The count stands on the generation that would have come.
  EXPECT_EQ(Count(text, "-------Maximum generation reached-------\nGeneration: 2\n"), 1);
}

TEST_F(GATest, ResultsComeEveryIntervalAndAtTheEnd) {
  Config::Instance().outputInterval = 5;
  search->maxGenerations = 17;
  const std::string text = Evolved(*search);
  EXPECT_EQ(Count(text, "Outputting optimisation results\n"), 4);
  for (const int generation : {5, 10, 15}) {
    const std::size_t output = text.find("\nGeneration: " + std::to_string(generation) + "/17");
    ASSERT_NE(output, std::string::npos);
    const std::string before = text.substr(0, output);
    EXPECT_EQ(before.substr(before.rfind('\n', before.size() - 1) + 1),
              "Output completed in <t> s.")
        << generation;
  }
}

TEST_F(GATest, LastGenerationOfAnIntervalIsWrittenTwice) {
  Config::Instance().outputInterval = 3;
  EXPECT_EQ(Count(Evolved(*search), "Outputting optimisation results\n"), 2);
}

TEST_F(GATest, WithoutBrowserNothingIsWritten) {
  Config::Instance().outputInterval = 1;
  Evolved(*search);
  EXPECT_FALSE(folder.Contains("results"));
  EXPECT_TRUE(std::filesystem::is_empty(folder.Path("plant.v2-OptimisationResults")))
      << "only the place for commands is made";
}

struct CommandCase {
  const char* name;
  const char* text;
  bool quit;
  bool report;
  bool monitor;
  bool store;
  bool configuration;
  bool removed;
};

class ObeyedCommandTest : public GATest, public ::testing::WithParamInterface<CommandCase> {};

TEST_P(ObeyedCommandTest, IsObeyed) {
  Command(GetParam().text);
  search->ReadCommandFile();
  EXPECT_EQ(search->quit, GetParam().quit);
  EXPECT_EQ(search->reportStatus, GetParam().report);
  EXPECT_EQ(search->monitorStatus, GetParam().monitor);
  EXPECT_EQ(search->storeState, GetParam().store);
  EXPECT_EQ(search->outputConfiguration, GetParam().configuration);
  EXPECT_EQ(HasCommand(), !GetParam().removed);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, ObeyedCommandTest,
    ::testing::Values(
        CommandCase{"Quit", "QUIT", true, false, true, false, false, true},
        CommandCase{"QuitWithLineEnd", "QUIT\n", true, false, true, false, false, true},
        CommandCase{"Report", "REPORT_STATUS", false, true, true, false, false, true},
        CommandCase{"Monitor", "MONITOR_STATUS", false, false, true, false, false, true},
        CommandCase{"Cancel", "CANCEL_MONITOR_STATUS", false, false, false, false, false, true},
        CommandCase{"Store", "STORE_CURRENT_STATE", false, false, true, true, false, true},
        CommandCase{"Configuration", "OUTPUT_CURRENT_GENERATION_CONFIGURATION", false, false, true,
                    false, true, true},
        CommandCase{"LineEndHidesTheNext", "QUIT\nREPORT_STATUS", true, false, true, false, false,
                    true},
        CommandCase{"RunTogether", "REPORT_STATUSCANCEL_MONITOR_STATUSQUIT", true, true, false,
                    false, false, true},
        CommandCase{"LastOneCounts", "CANCEL_MONITOR_STATUSMONITOR_STATUS", false, false, true,
                    false, false, true},
        CommandCase{"BlankInFront", " QUIT", false, false, true, false, false, false},
        CommandCase{"LineEndInFront", "\nQUIT", false, false, true, false, false, false},
        CommandCase{"SmallLetters", "quit", false, false, true, false, false, false},
        CommandCase{"Unknown", "STOP", false, false, true, false, false, false},
        CommandCase{"CutOff", "QUI", false, false, true, false, false, false},
        CommandCase{"Empty", "", false, false, true, false, false, false}),
    CaseName);

TEST_F(GATest, WithoutCommandsTheFolderForThemIsMade) {
  search->ReadCommandFile();
  EXPECT_TRUE(std::filesystem::is_directory(folder.Path("plant.v2-OptimisationResults")));
  EXPECT_TRUE(search->monitorStatus);
}

TEST_F(GATest, FolderThatCannotBeMadeEndsTheRun) {
  folder.Write("plant.v2-OptimisationResults", "a file in its place");
  try {
    search->ReadCommandFile();
    FAIL() << "no exception";
  } catch (const std::filesystem::filesystem_error& error) {
    EXPECT_THAT(error.what(), HasSubstr("create_directories"));
  }
}

TEST_F(GATest, CancelledStatusIsNotTold) {
  Command("CANCEL_MONITOR_STATUS");
  EXPECT_EQ(Count(Evolved(*search), "completed in <t> s. Session"), 0);
}

TEST_F(GATest, ReportedStatusIsToldEvenWhenMonitoringIsCancelled) {
  Command("CANCEL_MONITOR_STATUSREPORT_STATUS");
  EXPECT_EQ(Count(Evolved(*search), "completed in <t> s. Session"), 3);
}

/// The stem of result names.
struct RunNameCase {
  const char* name;
  void (*settle)(Config& config);
  const char* expected;
};

class RunNameTest : public GATest, public ::testing::WithParamInterface<RunNameCase> {};

TEST_P(RunNameTest, TellsTheOptions) {
  GetParam().settle(Config::Instance());
  search->generation = 12;
  search->runNumber = 3;
  EXPECT_EQ(search->GetRunName(), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Options, RunNameTest,
    ::testing::Values(
        RunNameCase{"Tree", [](Config&) {},
                    "GA(plant.v2)_Generation12_PopulationVariable4_ChildPopulationSize4_Archive_"
                    "TreeEncoding_RunNumber3"},
        RunNameCase{"FixedSizes",
                    [](Config& config) {
                      config.encodingType = EncodingType::Fixed;
                      config.populationSizing = PopulationSizing::Fixed;
                      config.populationSize = 30;
                      config.childPopulationSize = 7;
                    },
                    "GA(plant.v2)_Generation12_PopulationLimit30_ChildPopulationSize7_Archive_"
                    "FixedEncoding_RunNumber3"},
        RunNameCase{"UnlimitedElite",
                    [](Config& config) {
                      config.populationSizing = PopulationSizing::Unlimited;
                      config.includeArchive = false;
                      config.pureElitist = true;
                    },
                    "GA(plant.v2)_Generation12_PopulationSize4_ChildPopulationSize4_TreeEncoding_"
                    "PureElitist_RunNumber3"},
        RunNameCase{"FixedLevels",
                    [](Config& config) { config.encodingType = EncodingType::FixedAsil; },
                    "GA(plant.v2)_Generation12_PopulationVariable4_ChildPopulationSize4_Archive_"
                    "TreeEncoding_RunNumber3"},
        RunNameCase{"TreeLevels",
                    [](Config& config) { config.encodingType = EncodingType::TreeAsil; },
                    "GA(plant.v2)_Generation12_PopulationVariable4_ChildPopulationSize4_Archive_"
                    "TreeEncoding_RunNumber3"}),
    CaseName);

/// Ten designs of which none is better than another, of five parts that do not meet.
class PopulationSizeTest : public GATest {
 protected:
  PopulationSizeTest() {
    std::vector<XmlChoice> choices;
    for (int i = 0; i < 10; ++i) {
      choices.push_back({"c" + std::to_string(i), 1.0 + i, 0.1, 20.0 - i});
    }
    UseModel({{XmlObjective("Cost"), XmlObjective("Weight")}, {XmlDesignPart("A", choices)}});
    Config::Instance().childPopulationSize = 30;
    Config::Instance().populationSize = 50;
    search = std::make_unique<NSGA>(*model, folder.Path("plant.v2.xml"), 1);
    search->maxGenerations = 20;
  }
  std::size_t FirstFrontier() const { return search->frontiers.at(0)->members.size(); }
};

TEST_F(PopulationSizeTest, FollowsTheFirstFrontierInTheFirstTenth) {
  Config::Instance().includeArchive = false;
  search->quit = true;  // Behind the first of twenty.
  Evolved(*search);
  EXPECT_EQ(Config::Instance().populationSize, static_cast<int>(FirstFrontier()));
}

TEST_F(PopulationSizeTest, FollowsTheArchiveFromThenOn) {
  search->generation = 1;
  search->quit = true;  // Behind the second of twenty.
  Evolved(*search);
  EXPECT_EQ(Config::Instance().populationSize, static_cast<int>(search->archive->members.size()));
  EXPECT_GT(search->archive->members.size(), 0U);
}

TEST_F(PopulationSizeTest, StopsChangingThenWithoutArchive) {
  Config::Instance().includeArchive = false;
  search->generation = 1;
  search->quit = true;
  Evolved(*search);
  EXPECT_EQ(Config::Instance().populationSize, 50);
  EXPECT_TRUE(search->archive->members.empty());
}

TEST_F(PopulationSizeTest, NumberStaysAsItIs) {
  Config::Instance().populationSizing = PopulationSizing::Fixed;
  Evolved(*search);
  EXPECT_EQ(Config::Instance().populationSize, 50);
}

TEST_F(PopulationSizeTest, PureElitismLeavesOneFrontierBehindEveryGeneration) {
  Config::Instance().pureElitist = true;
  search->maxGenerations = 6;
  Evolved(*search);
  EXPECT_EQ(search->frontiers.size(), 1U);
}

TEST_F(GATest, PenaltySearchTellsEveryTenthGeneration) {
  std::unique_ptr<CoitGA> coit;
  {
    const CapturedStreams streams;
    coit = std::make_unique<CoitGA>(*model, folder.Path("plant.v2.xml"), 1);
  }
  coit->maxGenerations = 25;
  const std::string text = Evolved(*coit);
  EXPECT_EQ(Count(text, "completed in <t> s. Session"), 2);
  EXPECT_EQ(Count(text, "\nGeneration: 10/25 completed in"), 1);
  EXPECT_EQ(Count(text, "\nGeneration: 20/25 completed in"), 1);
  EXPECT_EQ(Count(text, "Number of archive individuals"), 0);
  EXPECT_EQ(Count(text, "-------Maximum generation reached-------\nGeneration: 25\n"), 1);
}

TEST_F(GATest, RepeatedSearchesGoOnInTheirSequence) {
  const auto firstDesigns = [this] {
    NSGA made(*model, folder.Path("plant.v2.xml"), 1);
    Config::Instance().childPopulationSize = 40;
    const CapturedStreams streams;
    made.InitialisePopulation();
    std::vector<double> costs;
    for (const auto& one : made.uncheckedPopulation) costs.push_back(one->evaluations.at("Cost"));
    return costs;
  };
  EXPECT_NE(firstDesigns(), firstDesigns());
}

}  // namespace
}  // namespace FTS
