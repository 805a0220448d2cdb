#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "analysis/CutSet.h"
#include "analysis/CutSetList.h"
#include "analysis/FMEA.h"
#include "app/Config.h"
#include "app/DiagnosticLog.h"
#include "faulttree/BasicEvent.h"
#include "faulttree/Gates.h"
#include "output/VisitorCombinedXML.h"
#include "output/VisitorXML.h"
#include "support/BrakeModel.h"
#include "support/CapturedStreams.h"
#include "support/ProcessStateTest.h"
#include "support/TemporaryFolder.h"

namespace FTS {

namespace {

class ResultsWriterTest : public ProcessStateTest {
 protected:
  ResultsWriterTest() { Config::Instance().outputDir = folder.Path(); }

  /// The text of "Results.xml", which holds everything.
  std::string Results(Model& model) {
    const CapturedStreams streams;
    VisitorCombinedXML writer;
    writer.WriteResultsFile(folder.Path(), model);
    return folder.Read("Results.xml");
  }

  /// The text from the first `start` up to and with the next `end`; empty when there is none.
  static std::string Part(const std::string& text, const std::string& start,
                          const std::string& end) {
    const std::size_t from = text.find(start);
    const std::size_t to = text.find(end, from);
    return to == std::string::npos ? "" : text.substr(from, to + end.size() - from);
  }

  static bool Holds(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
  }

  TemporaryFolder folder;
  BrakeModel brake;
};

// Cut sets

TEST_F(ResultsWriterTest, TreeWithoutCutSetsHasNeitherSummaryNorCutSets) {
  const auto model = EmptyModel("m.xml");
  AddTree(*model, brake.stuck).maxOrder = 2;
  const std::string text = Results(*model);
  EXPECT_FALSE(Holds(text, "CutSets"));
  EXPECT_TRUE(Holds(text, "</TopNode></FaultTree>"));
}

TEST_F(ResultsWriterTest, OrdersThatWereDroppedHaveAnEmptyElementAndNoSummary) {
  brake.Late().maxOrder = 3;
  const std::string tree = Part(Results(brake.Get()), "<FaultTree ID=\"30\">", "</FaultTree>");
  EXPECT_TRUE(Holds(tree, "</CutSets><CutSets order=\"3\"></CutSets></AllCutSets>"));
  EXPECT_EQ(Part(tree, "<CutSetsSummary>", "</CutSetsSummary>"),
            "<CutSetsSummary><CutSets order=\"2\" pruned=\"false\">1</CutSets></CutSetsSummary>");
}

TEST_F(ResultsWriterTest, PrunedOrderShowsTheCountOfTheTable) {
  brake.Late().prunedCounts = {{1, 5}, {2, 7}};
  const std::string tree = Part(Results(brake.Get()), "<FaultTree ID=\"30\">", "</FaultTree>");
  EXPECT_EQ(Part(tree, "<CutSetsSummary>", "</CutSetsSummary>"),
            "<CutSetsSummary><CutSets order=\"1\" pruned=\"true\">5</CutSets>"
            "<CutSets order=\"2\" pruned=\"true\">7</CutSets></CutSetsSummary>");
}

TEST_F(ResultsWriterTest, OrderWithoutNormalEventsIsPrintedOneHigher) {
  Config::Instance().countNormalEvents = false;
  const std::string tree = Part(Results(brake.Get()), "<FaultTree ID=\"20\">", "</FaultTree>");
  EXPECT_EQ(Part(tree, "<CutSetsSummary>", "</CutSetsSummary>"),
            "<CutSetsSummary><CutSets order=\"2\" pruned=\"false\">2</CutSets></CutSetsSummary>");
}

TEST_F(ResultsWriterTest, CutSetsWithoutNormalEventsStandUnderTheirReducedOrder) {
  Config::Instance().countNormalEvents = false;
  brake.Loss().maxOrder = 1;
  AddCutSet(brake.Loss(), {brake.demand});
  const std::string tree = Part(Results(brake.Get()), "<FaultTree ID=\"20\">", "</FaultTree>");
  EXPECT_EQ(Part(tree, "<AllCutSets>", "</AllCutSets>"),
            "<AllCutSets><CutSets order=\"1\" ><CutSet><Unavailability>1</Unavailability>"
            "<Frequency>0</Frequency><UnavailabilitySort>1.0</UnavailabilitySort>"
            "<Events><Event ID=\"13\" /></Events></CutSet></CutSets>"
            "<CutSets order=\"2\" ><CutSet><Unavailability>0.0025</Unavailability>"
            "<Frequency>1.2e-05</Frequency><UnavailabilitySort>0.0025</UnavailabilitySort>"
            "<Events><Event ID=\"11\" /></Events></CutSet><CutSet>"
            "<Unavailability>0.25</Unavailability><Frequency>0.125</Frequency>"
            "<UnavailabilitySort>0.25</UnavailabilitySort>"
            "<Events><Event ID=\"12\" /><Event ID=\"13\" /></Events></CutSet></CutSets>"
            "</AllCutSets>");
}

TEST_F(ResultsWriterTest, PrunedTableIsReadByThePrintedOrder) {
  Config::Instance().countNormalEvents = false;
  brake.Late().prunedCounts = {{2, 9}};
  const std::string tree = Part(Results(brake.Get()), "<FaultTree ID=\"30\">", "</FaultTree>");
  EXPECT_EQ(Part(tree, "<CutSetsSummary>", "</CutSetsSummary>"),
            "<CutSetsSummary><CutSets order=\"2\" pruned=\"true\">9</CutSets>"
            "<CutSets order=\"3\" pruned=\"false\">1</CutSets></CutSetsSummary>");
}

TEST_F(ResultsWriterTest, FiguresThatAreCachedAreNotComputedAnew) {
  brake.Late().cutSets.begin()->second->unavailability = 0.75;
  brake.Late().cutSets.begin()->second->frequency = 8.0;
  EXPECT_TRUE(Holds(Results(brake.Get()),
                    "<CutSet><Unavailability>0.75</Unavailability><Frequency>8</Frequency>"
                    "<UnavailabilitySort>0.75</UnavailabilitySort>"));
}

TEST_F(ResultsWriterTest, SharedEventDoesNotRepeatACutSet) {
  FaultTree& tree = brake.Late();
  tree.maxOrder = 2;
  AddCutSet(tree, {brake.leak, brake.fire});
  AddCutSet(tree, {brake.stuck, brake.leak});
  const std::string text = Part(Results(brake.Get()), "<FaultTree ID=\"30\">", "</FaultTree>");
  std::size_t count = 0;
  for (auto at = text.find("<CutSet>"); at != std::string::npos; at = text.find("<CutSet>", at + 1))
    ++count;
  EXPECT_EQ(count, 3U);
}

// Trees

TEST_F(ResultsWriterTest, TreeOfNoHazardHasNoLevel) {
  brake.Loss().source.reset();
  EXPECT_FALSE(Holds(Results(brake.Get()), "<SIL>"));
}

TEST_F(ResultsWriterTest, TreeWithoutRootIsShownByItsOwnTexts) {
  const auto model = EmptyModel("m.xml");
  AddTree(*model, nullptr).label = "Off";
  EXPECT_TRUE(Holds(Results(*model),
                    "<FaultTrees><FaultTree ID=\"0\"><Name>?</Name><Description>Off</Description>"
                    "<Unavailability>0</Unavailability><Frequency>0</Frequency>"
                    "<UnavailabilitySort>0.0</UnavailabilitySort><Severity>-1</Severity>"
                    "<TopNode></TopNode></FaultTree></FaultTrees>"));
}

TEST_F(ResultsWriterTest, ContractedTreesAreWrittenAsTheyStand) {
  brake.Loss().root->SetCurrentState(ContractedState);
  brake.Loss().root->AddChild(brake.fire);
  VisitorXML writer;
  brake.Get().Accept(writer);
  EXPECT_TRUE(Holds(folder.Read("brake.v2-FMEAOutput/FaultTrees.xml"),
                    "<Or ID=\"20\"><Name>Loss of braking</Name><Children><Event ID=\"14\" />"
                    "</Children></Or>"));
}

class UncontractedTest : public ResultsWriterTest {
 protected:
  UncontractedTest() {
    Config::Instance().outputContractedTrees = false;
    brake.Loss().root->SetCurrentState(ContractedState);
    brake.Loss().root->AddChild(brake.fire);
    AddTree(brake.Get(), nullptr);
  }

  void ExpectSynthesisedForm(const std::string& text) {
    EXPECT_TRUE(Holds(text,
                      "<Or ID=\"20\"><Name>Loss of braking</Name><Children>"
                      "<Event ID=\"11\" /><And ID=\"22\">"));
  }
};

TEST_F(UncontractedTest, TreesGoBackToTheirFirstState) {
  VisitorXML writer;
  brake.Get().Accept(writer);
  ExpectSynthesisedForm(folder.Read("brake.v2-FMEAOutput/FaultTrees.xml"));
}

TEST_F(UncontractedTest, CombinedFileShowsTheFirstStateToo) {
  const CapturedStreams streams;
  VisitorCombinedXML writer;
  brake.Get().Accept(writer);
  ExpectSynthesisedForm(folder.Read("brake.v2-Results/Results.xml"));
}

// Failure modes and effects

TEST_F(ResultsWriterTest, ModelWithoutTableHasTreesOnly) {
  brake.Get().fmea = nullptr;
  EXPECT_TRUE(Holds(Results(brake.Get()), "<FaultTrees><FaultTree ID=\"20\">"));
}

TEST_F(ResultsWriterTest, OptionLeavesTheTableOutOfAllFiles) {
  Config::Instance().generateFMEAXML = false;
  VisitorXML writer;
  brake.Get().Accept(writer);
  EXPECT_FALSE(Holds(Results(brake.Get()), "FMEA"));
  EXPECT_FALSE(Holds(folder.Read("brake.v2-FMEAOutput/FaultTrees.xml"), "FMEA"));
  EXPECT_FALSE(Holds(folder.Read("brake.v2-FMEAOutput/CutSets(20).xml"), "FMEA"));
}

TEST_F(ResultsWriterTest, EmptyTableIsAnEmptyElement) {
  brake.Get().fmea = std::make_shared<FMEA>(brake.Get());
  EXPECT_TRUE(Holds(Results(brake.Get()), "<FaultTrees><FMEA></FMEA><FaultTree"));
}

TEST_F(ResultsWriterTest, EmptyKeyIsNamedNone) {
  FMEA& fmea = *brake.Get().fmea;
  fmea.eventsByComponent = {{"", {brake.fire}}};
  EXPECT_TRUE(Holds(Results(brake.Get()), "<FMEA><Component><Name>None</Name><Events><CCF "));
}

TEST_F(ResultsWriterTest, OnlyTheFirstEventIsAskedForTheSid) {
  FMEA& fmea = *brake.Get().fmea;
  fmea.eventsByComponent = {{"a", {brake.fire, brake.stuck}}, {"b", {brake.demand, brake.stuck}}};
  EXPECT_FALSE(Holds(Results(brake.Get()), "<SID>"));
  fmea.eventsByComponent = {{"a", {brake.stuck, brake.fire}}};
  EXPECT_TRUE(Holds(Results(brake.Get()), "</Events><SID>S-1</SID></Component></FMEA>"));
}

TEST_F(ResultsWriterTest, EffectOnATreeWithoutRootHasNoName) {
  AddTree(brake.Get(), nullptr);
  brake.Get().fmea->AddEffect(brake.fire->prime, brake.Get().faultTrees.back(), true);
  EXPECT_EQ(Part(Results(brake.Get()), "<Effects>", "</Effects>"),
            "<Effects><Effect ID=\"0\"><Name>?</Name>"
            "<SinglePointFailure>true</SinglePointFailure></Effect>"
            "<Effect ID=\"30\"><Name>Braking late</Name>"
            "<SinglePointFailure>false</SinglePointFailure></Effect></Effects>");
}

TEST_F(ResultsWriterTest, EffectsOfAComplementAreItsOwn) {
  brake.Get().fmea->AddEffect(brake.leak->complement->prime, brake.Get().faultTrees.at(1), true);
  EXPECT_EQ(Part(Results(brake.Get()), "<Children/>", "</ComplementEvent>"),
            "<Children/><Effects><Effect ID=\"30\"><Name>Braking late</Name>"
            "<SinglePointFailure>true</SinglePointFailure></Effect></Effects></ComplementEvent>");
}

// Warnings

TEST_F(ResultsWriterTest, NoWarningLeavesTheListOut) {
  EXPECT_FALSE(Holds(Results(brake.Get()), "WarningList"));
}

TEST_F(ResultsWriterTest, ErrorsAreNotInTheList) {
  DiagnosticLog::Instance().AddError("bad");
  EXPECT_FALSE(Holds(Results(brake.Get()), "WarningList"));
}

TEST_F(ResultsWriterTest, MoreWarningsThanAreHeldAreTold) {
  for (int i = 1; i <= 102; ++i) DiagnosticLog::Instance().AddWarning("w" + std::to_string(i));
  const std::string list = Part(Results(brake.Get()), "<WarningList>", "</WarningList>");
  const std::string start =
      "<WarningList><Warning>Excessive number of warnings; displaying first 100 of 102 only."
      "</Warning><Warning>w1</Warning><Warning>w2</Warning>";
  const std::string end = "<Warning>w99</Warning><Warning>w100</Warning></WarningList>";
  EXPECT_EQ(list.substr(0, start.size()), start);
  EXPECT_TRUE(list.ends_with(end));
}

TEST_F(ResultsWriterTest, WarningsOfASilentRunAreNotListed) {
  Config::Instance().runSilent = true;
  DiagnosticLog::Instance().AddWarning("w");
  EXPECT_FALSE(Holds(Results(brake.Get()), "WarningList"));
}

// Files

TEST_F(ResultsWriterTest, OnlyTreesWithRootHaveAFileOfCutSets) {
  AddTree(brake.Get(), nullptr);
  VisitorXML writer;
  brake.Get().Accept(writer);
  int files = 0;
  for (const auto& entry :
       std::filesystem::directory_iterator(folder.Path("brake.v2-FMEAOutput"))) {
    EXPECT_TRUE(entry.is_regular_file());
    ++files;
  }
  EXPECT_EQ(files, 3);  // The trees, and the cut sets of two of them.
}

TEST_F(ResultsWriterTest, CutSetsFileThatCannotBeMadeIsPassedOver) {
  std::filesystem::create_directories(folder.Path("brake.v2-FMEAOutput/CutSets(20).xml"));
  const CapturedStreams streams;
  VisitorXML writer;
  brake.Get().Accept(writer);
  EXPECT_TRUE(Holds(folder.Read("brake.v2-FMEAOutput/CutSets(30).xml"), "</Vel-Tarn_Results>"));
  EXPECT_EQ(streams.Output() + streams.Errors(), "");
  EXPECT_TRUE(DiagnosticLog::Instance().Warnings().empty());
}

TEST_F(ResultsWriterTest, TreesFileThatCannotBeMadeDoesNotStopTheOthers) {
  std::filesystem::create_directories(folder.Path("brake.v2-FMEAOutput/FaultTrees.xml"));
  VisitorXML writer;
  brake.Get().Accept(writer);
  EXPECT_TRUE(Holds(folder.Read("brake.v2-FMEAOutput/CutSets(20).xml"), "</Vel-Tarn_Results>"));
}

TEST_F(ResultsWriterTest, CombinedFileTellsItsPath) {
  const CapturedStreams streams;
  VisitorCombinedXML writer;
  brake.Get().Accept(writer);
  EXPECT_EQ(streams.Output(), folder.Path("brake.v2-Results/Results.xml") + "\n");
}

TEST_F(ResultsWriterTest, CombinedFileTellsNothingInASilentRun) {
  Config::Instance().runSilent = true;
  const CapturedStreams streams;
  VisitorCombinedXML writer;
  brake.Get().Accept(writer);
  EXPECT_EQ(streams.Output(), "");
  EXPECT_TRUE(folder.Contains("brake.v2-Results/Results.xml"));
}

TEST_F(ResultsWriterTest, OnlyTheTreesFileNamesTheModel) {
  VisitorXML writer;
  brake.Get().Accept(writer);
  EXPECT_TRUE(Holds(folder.Read("brake.v2-FMEAOutput/FaultTrees.xml"),
                    "<Vel-Tarn_Results model=\"brake.v2\" build=\"Internal\" "));
  EXPECT_TRUE(Holds(Results(brake.Get()), "<Vel-Tarn_Results build=\"Internal\" "));
}

TEST_F(ResultsWriterTest, TreeThatIsCutShortByTwoWritersIsToldOnce) {
  const CapturedStreams streams;
  const auto model = EmptyModel("m.xml");
  for (const char* name : {"Loss", "Delay"}) {
    const auto root = MakeGate(NodeType::Or, name, nullptr);
    root->AddChild(brake.stuck);
    root->AddChild(brake.leak);
    AddTree(*model, root);
  }
  VisitorXML(1).WriteFaultTreesFile(*model, folder.Path());
  VisitorCombinedXML(1).WriteResultsFile(folder.Path(), *model);
  const std::string text =
      "Fault tree is written in part only, as it has more than 1 nodes with shared ones repeated: ";
  EXPECT_EQ(DiagnosticLog::Instance().Warnings(),
            (std::vector<std::string>{text + "Loss", text + "Delay"}));
  EXPECT_EQ(DiagnosticLog::Instance().ReportedWarnings(), 2);
}

TEST_F(ResultsWriterTest, CombinedWriterPutsCutSetsIntoTheTreesFileToo) {
  VisitorCombinedXML writer;
  writer.WriteFaultTreesFile(brake.Get(), folder.Path());
  const std::string text = folder.Read("FaultTrees.xml");
  EXPECT_TRUE(Holds(text, "<AllCutSets>"));
  EXPECT_TRUE(Holds(text, "<TopNode>"));
}

}  // namespace

}  // namespace FTS
