#include <gmock/gmock.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "support/MeasuredRun.h"
#include "support/ModelGenerators.h"
#include "support/ModelXml.h"
#include "support/ProcessStateTest.h"
#include "support/ProgramRun.h"
#include "support/TemporaryFolder.h"
#include "support/TestPaths.h"

namespace FTS {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

/// Workbooks and the console block as users get them: whole runs of the program.
class WorkbookRunTest : public ProcessStateTest {
 protected:
  static constexpr const char* Results = "m-FMEAOutput/m_Excel.xml";
  static constexpr const char* Metrics = "m-FMEAOutput/m_ISO26262_Excel.xml";

  ProgramRun Run(const std::string& model, std::vector<std::string> options) const {
    options.insert(options.begin(), {folder.Write("m.xml", model), "outputdir=" + folder.Path()});
    const ProgramRun run = RunProgramWith(options);
    EXPECT_EQ(run.exitStatus, 0);
    return run;
  }

  /// One component whose deviation is the top event of each hazard.
  static std::string Single(const std::vector<std::string>& hazards, const std::string& event,
                            const std::string& extra = "") {
    return XmlModel(hazards,
                    XmlSystem({XmlLeaf("A", {"out"},
                                       {{event}, {XmlDeviation("Omission-out", "stuck")}}, extra)},
                              {}));
  }
  static std::string Single(const std::vector<std::string>& hazards) {
    return Single(hazards, XmlEvent("stuck", 0.25));
  }

  static int Count(const std::string& text, std::string_view part) {
    int count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
      ++count;
    }
    return count;
  }

  /// The one name of a sheet that begins so.
  static std::string SheetThatBegins(const std::string& book, const std::string& start) {
    const std::string tag = "<Worksheet ss:Name=\"";
    const std::size_t at = book.find(tag + start);
    if (at == std::string::npos) return "";
    const std::size_t name = at + tag.size();
    return book.substr(name, book.find('"', name) - name);
  }

  TemporaryFolder folder;
};

TEST_F(WorkbookRunTest, SaysWhatItWritesInTheOrderOfTheSteps) {
  const ProgramRun run =
      Run(Single({XmlHazard("H", "Omission-A.out", 2.0)}), {"outputtype=EPM,ISO,EXCEL,RESULTS"});
  const std::size_t start = run.output.find("Outputting");
  ASSERT_NE(start, std::string::npos) << run.output;
  EXPECT_THAT(run.output.substr(start),
              ::testing::MatchesRegex(
                  "Outputting Cut Sets To XML SpreadSheet Navigation Pane: H: [0-9.]+ secs\n"
                  "Outputting Cut Sets To XML SpreadSheet: H: [0-9.]+ secs\n"
                  "EPM_Output\nFaultTree: H\nCutSets: 1\nUnavailability: 0.25\nSeverity: 2\n"
                  "Risk: 0.5\nSystemRisk: 0.5\nEnd_EPM_Output\n"
                  "Generating XML results to Results.xml\n(.|\n)*"));
  EXPECT_TRUE(folder.Contains(Results));
  EXPECT_TRUE(folder.Contains(Metrics));
  EXPECT_EQ(run.errors, "");
}

TEST_F(WorkbookRunTest, SilentRunPrintsTheConsoleBlockAlone) {
  const ProgramRun run = Run(Single({XmlHazard("H", "Omission-A.out", 2.0)}),
                             {"outputtype=EPM,EXCEL,ISO", "runSilent=true"});
  EXPECT_THAT(run.output, Not(HasSubstr("Outputting")));
  EXPECT_THAT(run.output, HasSubstr("\nEPM_Output\nFaultTree: H\n"));
}

TEST_F(WorkbookRunTest, NamesWithMarkupGiveAnXmlDocument) {
  Run(Single({XmlHazard("a &lt; b &amp; \"c\" 'd'", "Omission-A.out")}), {"outputtype=EXCEL,ISO"});
  for (const char* file : {Results, Metrics}) {
    const std::string book = folder.Read(file);
    EXPECT_THAT(book, HasSubstr("<Worksheet ss:Name=\"a &lt; b &amp; &quot;c&quot; 'd'("));
    EXPECT_THAT(book, Not(HasSubstr("a < b")));
  }
  EXPECT_THAT(folder.Read(Results), HasSubstr("ss:HRef=\"#'a &lt; b &amp; &quot;c&quot; ''d''("));
}

TEST_F(WorkbookRunTest, LongNameIsCutWithinThirtyOneCharacters) {
  const std::string name = "0123456789012345678901234567890123456789";
  Run(Single({XmlHazard(name, "Omission-A.out")}), {"outputtype=EXCEL"});
  const std::string book = folder.Read(Results);
  const std::string sheet = SheetThatBegins(book, "0123");
  EXPECT_EQ(sheet.size(), 31u) << sheet;
  EXPECT_THAT(sheet, HasSubstr("..("));
  EXPECT_THAT(book, HasSubstr("ss:HRef=\"#'" + sheet + "'!A1\"><Data ss:Type=\"String\">" + name));
}

TEST_F(WorkbookRunTest, TwoHundredTreesHaveASheetEach) {
  constexpr int TreeCount = 200;
  std::vector<std::string> hazards;
  for (int i = 0; i < TreeCount; ++i) {
    hazards.push_back(XmlHazard("Hazard " + std::to_string(i), "Omission-A.out"));
  }
  Run(Single(hazards), {"outputtype=EXCEL,ISO"});
  EXPECT_EQ(Count(folder.Read(Results), "<Worksheet "), TreeCount + 3);
  EXPECT_EQ(Count(folder.Read(Metrics), "<Worksheet "), TreeCount + 1);
  EXPECT_EQ(Count(folder.Read(Results), "<Cell ss:StyleID=\"hyperlinkLeftAllBorders\""), TreeCount);
}

TEST_F(WorkbookRunTest, TakesNoMemoryForWhatIsWritten) {
  constexpr int Events = 142;  // Under each of two ORs: 20,164 cut sets.
  constexpr long long MostKilobytes = 8'000;
  const std::string model = folder.Write("m.xml", TwoOrs(Events, Events).Xml());
  const auto run = [&](const std::string& type) {
    return RunMeasured({model, "outputdir=" + folder.Path(), "outputtype=" + type});
  };
  const MeasuredRun without = run("NONE");
  const MeasuredRun with = run("EXCEL,ISO");
  EXPECT_LT(with.peakKilobytes, without.peakKilobytes + MostKilobytes);
  // Or else it could be kept whole without being seen.
  EXPECT_GT(std::filesystem::file_size(folder.Path(Results)), MostKilobytes * 3'000);
  EXPECT_EQ(with.run.exitStatus, 0);
}

TEST_F(WorkbookRunTest, ModelWithoutFailureRatesHasNoMetrics) {
  Run(Single({XmlHazard("H", "Omission-A.out")}), {"outputtype=ISO"});
  const std::string book = folder.Read(Metrics);
  EXPECT_THAT(book, HasSubstr("<Cell><Data ss:Type=\"Number\">0</Data></Cell>\n"
                              "    <Cell><Data ss:Type=\"String\">nan</Data></Cell>\n"
                              "    <Cell><Data ss:Type=\"String\">nan</Data></Cell>\n"));
  EXPECT_THAT(book, HasSubstr("ss:Formula=\"=1-(R[-1]C/R[-1]C[-6])\"/>"));
}

TEST_F(WorkbookRunTest, TreeWithoutCutSetsHasSumsOfNothing) {
  Run(Single({XmlHazard("H", "Omission-A.out")}), {"outputtype=ISO,EXCEL", "analyse=false"});
  EXPECT_EQ(Count(folder.Read(Metrics), "ss:Formula=\"=SUM(R[-1]C:R[-1]C)\""), 3);
}

TEST_F(WorkbookRunTest, RateThatIsAllCoveredButOneShareGivesTheMetricOfTheNorm) {
  const std::string event =
      Xml("BasicEvent", Xml("Name", "stuck") +
                            Xml("UnavailabilityFormula",
                                Xml("ISO26262DetectabilityAnalysis", Xml("Percentage", "25"))));
  std::string model = Single({XmlHazard("H", "Omission-A.out")}, event);
  const std::string place = "<FailureData>";
  model.insert(model.find(place) + place.size(), Xml("ComponentFailureRate", "4e-6"));
  Run(model, {"outputtype=ISO"});
  EXPECT_THAT(folder.Read(Metrics),
              HasSubstr("<Cell><Data ss:Type=\"Number\">4e-06</Data></Cell>\n"
                        "    <Cell><Data ss:Type=\"Number\">0.75</Data></Cell>\n"
                        "    <Cell><Data ss:Type=\"Number\">1</Data></Cell>\n"));
}

/// Safety goals that are violated by one deviation, and a mechanism at its input that covers each.
class CommonLogicTest : public WorkbookRunTest {
 protected:
  static std::string Share(const std::string& name, const std::string& percentage) {
    return Xml("BasicEvent", Xml("Name", name) +
                                 Xml("UnavailabilityFormula", Xml("ISO26262DetectabilityAnalysis",
                                                                  Xml("Percentage", percentage))));
  }

  static std::string Goal(const std::string& hazard) {
    return Xml("SafetyGoalCoverage", Xml("Name", hazard) + Xml("Percentage", "90") +
                                         Xml("InputDeviations", "Omission-in"));
  }

  /// Sensor.dead reaches Guard.in; the guard fails by that or as `logic` says.
  static std::string GuardedModel(const std::string& logic) {
    std::string model = XmlModel(
        {XmlHazard("H1", "Omission-Guard.out"), XmlHazard("H2", "Omission-Guard.out")},
        XmlSystem({XmlLeaf("Sensor", {"out"},
                           {{Share("dead", "100")}, {XmlDeviation("Omission-out", "dead")}}),
                   XmlLeaf("Guard", {"in", "out"},
                           {{Share("stuck", "50"), Share("noise", "50")},
                            {XmlDeviation("Omission-out", "Omission-in + " + logic)}})},
                  {XmlWire("Sensor.out", "Guard.in")}));
    const std::string start = "<FailureData>";
    const std::string rate = Xml("ComponentFailureRate", "1e-6");
    for (std::size_t at = 0; (at = model.find(start, at)) != std::string::npos; ++at) {
      model.insert(at + start.size(), rate);
    }
    const std::string coverage =
        Xml("DiagnosticCoverages",
            Xml("DiagnosticCoverage",
                Xml("Name", "Check") + Xml("SafetyGoalCoverages", Goal("H1") + Goal("H2"))));
    return model.insert(model.rfind("</FailureData>"), coverage);
  }

  void ExpectBothGoals(const std::string& singlePoint, const std::string& latent) const {
    const std::string book = folder.Read(Metrics);
    for (const char* goal : {"H1", "H2"}) {
      EXPECT_THAT(book, HasSubstr(std::string(">") + goal + "</Data></Cell>\n" + Figure("2e-06") +
                                  Figure(singlePoint) + Figure(latent)));
    }
    EXPECT_EQ(Count(book, ">Omission-DEFAULT::Guard.in</Data>"), 2);
  }

  static std::string Figure(const std::string& text) {
    return "    <Cell><Data ss:Type=\"Number\">" + text + "</Data></Cell>\n";
  }
};

TEST_F(CommonLogicTest, IsCoveredForEachGoal) {
  for (const char* contraction : {"contract=true", "contract=false"}) {
    Run(GuardedModel("stuck"), {"outputtype=ISO", "isomode", contraction});
    // Residual 1e-6 * 0.1 and 1e-6 * 0.5, of 2e-6.
    ExpectBothGoals("0.7", "1");
  }
}

TEST_F(CommonLogicTest, IsCoveredForEachGoalWhereANegationGivesTreesOfTheirOwn) {
  Run(GuardedModel("(stuck AND not noise)"), {"outputtype=ISO", "isomode"});
  // Residual 1e-6 * 0.1 of 2e-6; latent 1e-6 * 0.5 of the 1.9e-6 that are left.
  ExpectBothGoals("0.95", "0.736842");
}

TEST_F(CommonLogicTest, DeviationThatIsNamedTwiceIsOneMechanism) {
  const ProgramRun run = Run(GuardedModel("(Omission-in AND noise) + stuck"),
                             {"outputtype=ISO", "isomode", "contract=false"});
  ExpectBothGoals("0.7", "1");
  EXPECT_THAT(run.errors, Not(HasSubstr("already has diagnostic coverage")));
}

TEST_F(CommonLogicTest, DeviationThatIsNamedInTwoOutputsIsOneMechanism) {
  std::string model = GuardedModel("stuck");
  const std::string logic = "<Logic>Omission-Guard.out</Logic>";
  for (std::size_t at = 0; (at = model.find(logic, at)) != std::string::npos; ++at) {
    model.replace(at, logic.size(), "<Logic>Omission-Guard.out OR Late-Guard.out</Logic>");
  }
  model.insert(model.rfind("</OutputDeviations>"), XmlDeviation("Late-out", "Omission-in"));
  const ProgramRun run = Run(model, {"outputtype=ISO", "isomode"});
  ExpectBothGoals("0.7", "1");
  EXPECT_THAT(run.errors, Not(HasSubstr("already has diagnostic coverage")));
}

/// The example with two safety goals, whose metrics its text works out.
class PowerSteeringTest : public WorkbookRunTest {
 protected:
  ProgramRun RunExample(const std::vector<std::string>& options) {
    const std::string name = "electric-power-steering";
    std::vector<std::string> arguments = {ExamplesFolder() + "/" + name + "/" + name + ".xml",
                                          "outputdir=" + folder.Path(), "outputtype=ISO"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const ProgramRun run = RunProgramWith(arguments);
    book = folder.Read(name + "-FMEAOutput/" + name + "_ISO26262_Excel.xml");
    return run;
  }

  /// The rows of the summary, from the tree's name on.
  static std::string Row(const std::string& tree, const std::string& rate,
                         const std::string& singlePoint, const std::string& latent) {
    std::string row = "<Data ss:Type=\"String\">" + tree + "</Data></Cell>\n";
    for (const std::string& figure : {rate, singlePoint, latent}) {
      row += "    <Cell><Data ss:Type=\"Number\">" + figure + "</Data></Cell>\n";
    }
    return row;
  }

  std::string book;
};

TEST_F(PowerSteeringTest, GivesTheMetricsWorkedOutByHand) {
  RunExample({"isomode"});
  // 1 - 2.9/570 and 1 - 7/567.1; 1 - 177/650 and 1 - 6/473.
  EXPECT_THAT(book, HasSubstr(Row("SelfSteering", "5.7e-07", "0.994912", "0.987656")));
  EXPECT_THAT(book, HasSubstr(Row("LossOfAssist", "6.5e-07", "0.727692", "0.987315")));
}

TEST_F(PowerSteeringTest, GivesThemByEveryRouteToTheCutSets) {
  for (const char* option : {"modularise=false", "useBDDs=true", "contract=false"}) {
    RunExample({"isomode", option});
    EXPECT_THAT(book, HasSubstr(Row("SelfSteering", "5.7e-07", "0.994912", "0.987656"))) << option;
  }
}

TEST_F(PowerSteeringTest, KnowsNoMechanismsOutsideIsoMode) {
  RunExample({});
  // All of the single points: 20 + 20 + 10 + 50 of 570, and 7 of the 470 that are left.
  EXPECT_THAT(book, HasSubstr(Row("SelfSteering", "5.7e-07", "0.824561", "0.985106")));
  EXPECT_THAT(book, Not(HasSubstr("PowerStage.command")));
}

TEST_F(PowerSteeringTest, WarnsOfTwoMechanismsAndTakesTheBetter) {
  const ProgramRun run = RunExample({"isomode"});
  EXPECT_THAT(run.errors,
              HasSubstr("Basic event DEFAULT::Supply.overvoltage already has diagnostic coverage "
                        "90 from Value-DEFAULT::Controller.voltage but is receiving more coverage "
                        "from Value-DEFAULT::PowerStage.voltage - using highest value.\n"));
  EXPECT_THAT(run.errors,
              HasSubstr("Basic event DEFAULT::Supply.lost already has diagnostic coverage 60 from "
                        "Omission-DEFAULT::Motor.current but is receiving more coverage from "
                        "Omission-DEFAULT::PowerStage.voltage - using highest value.\n"));
  EXPECT_THAT(run.errors, HasSubstr("\nWARNINGS: 2\n"));
  const std::string coverage = "</Data></Cell>\n    <Cell><Data ss:Type=\"Number\">0.9</Data>";
  EXPECT_THAT(book, HasSubstr(">Value-DEFAULT::Controller.voltage" + coverage));
  EXPECT_THAT(book, HasSubstr(">Omission-DEFAULT::PowerStage.voltage" + coverage));
}

}  // namespace
}  // namespace FTS
