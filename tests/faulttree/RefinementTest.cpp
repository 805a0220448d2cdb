#include <gtest/gtest.h>

#include <string>

#include "analysis/FaultTree.h"
#include "app/Config.h"
#include "app/DiagnosticLog.h"
#include "faulttree/CircleNode.h"
#include "faulttree/RefinementPasses.h"
#include "model/Model.h"
#include "support/CapturedStreams.h"
#include "support/ModelXml.h"
#include "support/ProcessStateTest.h"

namespace FTS {
namespace {

class RefinementTest : public ProcessStateTest {
 protected:
  static std::string Relay(const std::string& name) {
    return XmlLeaf(name, {"in", "out"},
                   {{XmlEvent("stuck")}, {XmlDeviation("Omission-out", "stuck + Omission-in")}});
  }
  static std::string Loop() {
    return XmlModel(
        {XmlHazard("H", "Omission-A.out")},
        XmlSystem({Relay("A"), Relay("B")}, {XmlWire("A.out", "B.in"), XmlWire("B.out", "A.in")}));
  }
  /// A component of which each output needs both inputs, so that loops cross.
  static std::string Hub(const std::string& name) {
    return XmlLeaf(
        name, {"a", "b", "out"},
        {{XmlEvent("f")}, {XmlDeviation("Omission-out", "f + Omission-a * Omission-b")}});
  }
};

TEST_F(RefinementTest, ALoopIsCutByACircleThatStandsInTheCutSets) {
  EXPECT_EQ(OnlyCutSets(Loop()), "A.stuck + B.stuck + CIRCLE TO Omission-DEFAULT::A.out");
}

TEST_F(RefinementTest, CirclesGoWhenTheyAreNotWanted) {
  Config::Instance().removeCircleNodes = true;
  EXPECT_EQ(OnlyCutSets(Loop()), "A.stuck + B.stuck");
}

TEST_F(RefinementTest, ALoopIsNotedOnTheTree) {
  Config::Instance().runSilent = true;
  const auto model = LoadModel(Loop());
  model->Synthesise();
  ASSERT_EQ(model->GetFaultTreeCount(), 1);
  EXPECT_TRUE(model->faultTrees[0]->hasLoops);
  EXPECT_FALSE(model->faultTrees[0]->unbreakable);
}

TEST_F(RefinementTest, TreesThatShareALoopAreCutApart) {
  Config::Instance().runSilent = true;
  Config::Instance().removeCircleNodes = true;
  const auto model = LoadModel(XmlModel(
      {XmlHazard("H1", "Omission-A.out"), XmlHazard("H2", "Omission-B.out")},
      XmlSystem({Relay("A"), Relay("B")}, {XmlWire("A.out", "B.in"), XmlWire("B.out", "A.in")})));
  model->Synthesise();
  model->Analyse(false);
  EXPECT_EQ(CutSetsOf(*model, "H1"), "A.stuck + B.stuck");
  EXPECT_EQ(CutSetsOf(*model, "H2"), "A.stuck + B.stuck");
}

TEST_F(RefinementTest, AnUnconnectedInputIsRemovedWithAWarning) {
  Config::Instance().runSilent = false;
  CapturedStreams streams;
  const auto model =
      LoadModel(XmlModel({XmlHazard("H", "Omission-A.out")}, XmlSystem({Relay("A")}, {})));
  model->Synthesise();
  model->Analyse(false);
  EXPECT_EQ(CutSetsOf(*model, "H"), "A.stuck");
  ASSERT_EQ(DiagnosticLog::Instance().Warnings().size(), 1U);
  EXPECT_EQ(DiagnosticLog::Instance().Warnings()[0],
            "Warning: removing unconnected input deviation - Omission-DEFAULT::A.in");
}

TEST_F(RefinementTest, AnUnconnectedInputStaysAsAnEventWhenHangingNodesAreKept) {
  Config::Instance().removeHangingNodes = false;
  EXPECT_EQ(OnlyCutSets(XmlModel({XmlHazard("H", "Omission-A.out")}, XmlSystem({Relay("A")}, {}))),
            "A.stuck + Omission-DEFAULT::A.in (UNCONNECTED)");
}

TEST_F(RefinementTest, OneUnconnectedInputIsOneEventHoweverOftenItIsNamed) {
  Config::Instance().removeHangingNodes = false;
  const std::string component = XmlLeaf("A", {"in", "out", "out2"},
                                        {{},
                                         {XmlDeviation("Omission-out", "Omission-in"),
                                          XmlDeviation("Omission-out2", "Omission-in")}});
  EXPECT_EQ(OnlyCutSets(XmlModel({XmlHazard("H", "Omission-A.out AND Omission-A.out2")},
                                 XmlSystem({component}, {}))),
            "Omission-DEFAULT::A.in (UNCONNECTED)");
}

TEST_F(RefinementTest, AnUnconnectedBoundaryInputIsOneEventForAnnotationAndInside) {
  Config::Instance().removeHangingNodes = false;
  const std::string inner =
      XmlLeaf("Inner", {"in", "out"}, {{}, {XmlDeviation("Omission-out", "Omission-in")}});
  const std::string outer = XmlBlock(
      "Outer", {"in", "out", "out2"}, "Both", {{}, {XmlDeviation("Omission-out2", "Omission-in")}},
      XmlSystem({inner}, {XmlWire("in", "Inner.in"), XmlWire("Inner.out", "out")}));
  EXPECT_EQ(OnlyCutSets(XmlModel({XmlHazard("H", "Omission-Outer.out AND Omission-Outer.out2")},
                                 XmlSystem({outer}, {}))),
            "Omission-DEFAULT::Outer.in (UNCONNECTED)");
}

TEST_F(RefinementTest, AnUnactivatedCommonCauseIsRemovedOrKeptAsAnEvent) {
  const std::string potential =
      Xml("PotentialCCFs", Xml("PotentialCCF", Xml("Name", "shock") + Xml("ACCF", "quake")));
  for (const bool remove : {true, false}) {
    Config::Instance().removeHangingNodes = remove;
    Config::Instance().runSilent = true;
    const std::string current = Xml(
        "Current", Xml("HBlockType", "NotRefined") +
                       Xml("FailureData",
                           Xml("BasicEvents", XmlEvent("f")) + potential +
                               Xml("OutputDeviations", XmlDeviation("Omission-out", "f + shock"))));
    const auto model = LoadModel(XmlModel(
        {XmlHazard("H", "Omission-A.out")},
        XmlSystem(
            {Xml("Component", Xml("Name", "A") + Xml("Ports", Xml("Port", Xml("Name", "out"))) +
                                  Xml("Implementations", current))},
            {})));
    model->Synthesise();
    model->Analyse(false);
    EXPECT_EQ(CutSetsOf(*model, "H"), remove ? "A.f" : "A.f + A.shock");
  }
}

TEST_F(RefinementTest, ProgressIsToldInOrder) {
  Config::Instance().runSilent = false;
  CapturedStreams streams;
  const auto model = LoadModel(Loop());
  model->Synthesise();
  const std::string text = streams.Output();
  std::size_t at = 0;
  for (const char* line :
       {"Synthesising:\n", "    H\n", "\tSynthesis complete in ", "Refining fault trees...\n",
        "Detecting CrazyLoops...\n", "Manipulating trees...\n", "Terminating loops in H\n",
        "Contracting H\n", "Full synthesis complete in "}) {
    const std::size_t found = text.find(line, at);
    ASSERT_NE(found, std::string::npos) << line << " missing behind " << at << " in\n" << text;
    at = found;
  }
}

TEST_F(RefinementTest, ATreeWithALoopReachedThroughTwoOthersIsReportedAndDropped) {
  // A needs B and C, and each of these needs A and the other.
  Config::Instance().runSilent = false;
  CapturedStreams streams;
  const auto model = LoadModel(XmlModel(
      {XmlHazard("H", "Omission-A.out")},
      XmlSystem({Hub("A"), Hub("B"), Hub("C")},
                {XmlWire("B.out", "A.a"), XmlWire("C.out", "A.b"),
                 XmlLine("Directed", "OR",
                         {{"B.a", "", "A.out"}, {"C.a", "", "A.out"}, {"A.out", "", "OUTPUTPORT"}}),
                 XmlWire("C.out", "B.b"), XmlWire("B.out", "C.b")})));
  model->Synthesise();
  EXPECT_EQ(model->GetFaultTreeCount(), 0);
  EXPECT_NE(streams.Output().find("H contains unbreakable loops and cannot be analysed.\n"),
            std::string::npos);
  ASSERT_GE(DiagnosticLog::Instance().ErrorCount(), 1);
  EXPECT_EQ(
      DiagnosticLog::Instance().Errors()[0].find(
          "ERROR: Crazy Loop(s) detected - unresolvable circular logic in the fault tree:\n\t"),
      0U);
}

TEST_F(RefinementTest, CrazyLoopsAreCutWhereTheyAreIgnored) {
  Config::Instance().ignoreCrazyLoops = true;
  Config::Instance().removeCircleNodes = true;
  EXPECT_EQ(OnlyCutSets(XmlModel({XmlHazard("H", "Omission-A.out")},
                                 XmlSystem({Hub("A"), Hub("B")},
                                           {XmlWire("B.out", "A.a"), XmlWire("B.out", "A.b"),
                                            XmlWire("A.out", "B.a"), XmlWire("A.out", "B.b")}))),
            "A.f + B.f");
}

}  // namespace
}  // namespace FTS
