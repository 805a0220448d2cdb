#include <gtest/gtest.h>

#include <string>

#include "analysis/FaultTree.h"
#include "app/Config.h"
#include "app/DiagnosticLog.h"
#include "faulttree/DeviationProxies.h"
#include "faulttree/Gates.h"
#include "model/Component.h"
#include "model/Model.h"
#include "model/VtnException.h"
#include "support/ModelXml.h"
#include "support/ProcessStateTest.h"

namespace FTS {
namespace {

class SynthesisTest : public ProcessStateTest {
 protected:
  static std::string Source(const std::string& name) {
    return XmlLeaf(name, {"out"}, {{XmlEvent("dead")}, {XmlDeviation("Omission-out", "dead")}});
  }
  static std::string Relay(const std::string& name) {
    return XmlLeaf(name, {"in", "out"},
                   {{XmlEvent("stuck")}, {XmlDeviation("Omission-out", "stuck + Omission-in")}});
  }
  static std::string WhatSynthesisThrows(const std::string& xml) {
    Config::Instance().runSilent = true;
    const auto model = LoadModel(xml);
    try {
      model->Synthesise();
    } catch (const VtnException& exception) {
      return exception.GetMessage();
    }
    return "nothing";
  }
};

TEST_F(SynthesisTest, FollowsALineToItsSource) {
  EXPECT_EQ(OnlyCutSets(XmlModel({XmlHazard("H", "Omission-B.out")},
                                 XmlSystem({Source("A"), Relay("B")}, {XmlWire("A.out", "B.in")}))),
            "A.dead + B.stuck");
}

TEST_F(SynthesisTest, GrowsOneTreePerHazardInNameOrder) {
  Config::Instance().runSilent = true;
  const auto model =
      LoadModel(XmlModel({XmlHazard("Z", "Omission-A.out", 3.0), XmlHazard("M", "Omission-B.out")},
                         XmlSystem({Source("A"), Relay("B")}, {XmlWire("A.out", "B.in")})));
  model->Synthesise();
  ASSERT_EQ(model->GetFaultTreeCount(), 2);
  EXPECT_EQ(model->faultTrees[0]->GetName(), "M");
  EXPECT_EQ(model->faultTrees[1]->GetName(), "Z");
  EXPECT_EQ(model->faultTrees[1]->severity, 3.0);
}

TEST_F(SynthesisTest, WithoutHazardsSystemOutputsAreTheTopEvents) {
  const std::string system = Xml("SystemOutport", "true");
  EXPECT_EQ(
      OnlyCutSets(XmlModel(
          {}, XmlSystem({Source("A"),
                         XmlLeaf("B", {"in", "out"},
                                 {{}, {XmlDeviation("Omission-out", "Omission-in", system)}})},
                        {XmlWire("A.out", "B.in")}))),
      "A.dead");
}

TEST_F(SynthesisTest, ASystemOutputWithoutLogicMakesNoTreeAndNoMessage) {
  Config::Instance().runSilent = false;
  const auto model = LoadModel(XmlModel(
      {},
      XmlSystem({XmlLeaf("B", {"out"},
                         {{}, {XmlDeviation("Omission-out", "", Xml("SystemOutport", "true"))}})},
                {})));
  model->Synthesise();
  EXPECT_EQ(model->GetFaultTreeCount(), 0);
  EXPECT_EQ(DiagnosticLog::Instance().ReportedErrors(), 0);
  EXPECT_EQ(DiagnosticLog::Instance().ReportedWarnings(), 0);
}

struct BlockCase {
  const char* name;
  const char* blockType;
  const char* cutSets;
};

class BlockTypeSynthesisTest : public SynthesisTest,
                               public ::testing::WithParamInterface<BlockCase> {
 protected:
  /// A component with an annotation of its own and an inside.
  static std::string Outer() {
    return XmlBlock(
        "Outer", {"in", "out"}, GetParam().blockType,
        {{XmlEvent("own")}, {XmlDeviation("Omission-out", "own + Omission-in")}},
        XmlSystem({Relay("Inner")}, {XmlWire("in", "Inner.in"), XmlWire("Inner.out", "out")}));
  }
};

TEST_P(BlockTypeSynthesisTest, DecidesWhatTheOutputOfAComponentMeans) {
  EXPECT_EQ(OnlyCutSets(XmlModel(
                {XmlHazard("H", "Omission-Sink.out")},
                XmlSystem({Source("A"), Outer(), Relay("Sink")},
                          {XmlWire("A.out", "Outer.in"), XmlWire("Outer.out", "Sink.in")}))),
            GetParam().cutSets);
}

TEST_P(BlockTypeSynthesisTest, HoldsForAHazardOnTheComponentItself) {
  const std::string all = GetParam().cutSets;
  EXPECT_EQ(
      OnlyCutSets(XmlModel({XmlHazard("H", "Omission-Outer.out")},
                           XmlSystem({Source("A"), Outer()}, {XmlWire("A.out", "Outer.in")}))) +
          " + Sink.stuck",
      all);
}

INSTANTIATE_TEST_SUITE_P(
    Types, BlockTypeSynthesisTest,
    ::testing::Values(BlockCase{"NotRefined", "NotRefined", "A.dead + Outer.own + Sink.stuck"},
                      BlockCase{"Refined", "Refined", "A.dead + Inner.stuck + Sink.stuck"},
                      BlockCase{"Both", "Both", "A.dead + Inner.stuck + Outer.own + Sink.stuck"},
                      BlockCase{"Propagator", "Propagator", "A.dead + Sink.stuck"}),
    [](const auto& block) { return std::string(block.param.name); });

TEST_F(SynthesisTest, BothJoinsAnAnnotationThatIsAProductWithTheInside) {
  EXPECT_EQ(
      OnlyCutSets(XmlModel(
          {XmlHazard("H", "Omission-Outer.out")},
          XmlSystem(
              {XmlBlock("Outer", {"out"}, "Both",
                        {{XmlEvent("a"), XmlEvent("b")}, {XmlDeviation("Omission-out", "a * b")}},
                        XmlSystem({Source("Inner")}, {XmlWire("Inner.out", "out")}))},
              {}))),
      "Inner.dead + Outer.a*Outer.b");
}

TEST_F(SynthesisTest, APropagatorWithThreePortsPassesNothing) {
  EXPECT_EQ(OnlyCutSets(XmlModel(
                {XmlHazard("H", "Omission-Sink.out")},
                XmlSystem({Source("A"), XmlBlock("P", {"in", "in2", "out"}, "Propagator", {}, ""),
                           Relay("Sink")},
                          {XmlWire("A.out", "P.in"), XmlWire("P.out", "Sink.in")}))),
            "Sink.stuck");
}

TEST_F(SynthesisTest, AnInnerLineFromBoundaryToBoundaryLetsADeviationThrough) {
  EXPECT_EQ(OnlyCutSets(XmlModel(
                {XmlHazard("H", "Omission-Sink.out")},
                XmlSystem({Source("A"),
                           XmlBlock("Outer", {"in", "out"}, "Refined", {},
                                    XmlSystem({}, {XmlWire("in", "out")})),
                           Relay("Sink")},
                          {XmlWire("A.out", "Outer.in"), XmlWire("Outer.out", "Sink.in")}))),
            "A.dead + Sink.stuck");
}

struct LineCase {
  const char* name;
  const char* type;
  const char* defaultOperator;
  const char* expression;
  const char* cutSets;
};

class LineSynthesisTest : public SynthesisTest, public ::testing::WithParamInterface<LineCase> {};

TEST_P(LineSynthesisTest, JoinsTheOutputsOfALine) {
  const std::string line = XmlLine(GetParam().type, GetParam().defaultOperator,
                                   {{"A.out", "", "OUTPUTPORT"},
                                    {"B.out", "", "OUTPUTPORT"},
                                    {"Sink.in", "", GetParam().expression}});
  EXPECT_EQ(OnlyCutSets(XmlModel({XmlHazard("H", "Omission-Sink.out")},
                                 XmlSystem({Source("A"), Source("B"), Relay("Sink")}, {line}))),
            GetParam().cutSets);
}

INSTANTIATE_TEST_SUITE_P(
    Lines, LineSynthesisTest,
    ::testing::Values(
        LineCase{"DefaultOr", "Directed", "OR", "DEFAULT", "A.dead + B.dead + Sink.stuck"},
        LineCase{"DefaultAnd", "Directed", "AND", "DEFAULT", "A.dead*B.dead + Sink.stuck"},
        LineCase{"AndPort", "Directed", "OR", "ANDPORT", "A.dead*B.dead + Sink.stuck"},
        LineCase{"OrPort", "Directed", "AND", "ORPORT", "A.dead + B.dead + Sink.stuck"},
        LineCase{"Undirected", "Undirected", "OR", "ANDPORT", "A.dead*B.dead + Sink.stuck"},
        LineCase{"Named", "Directed", "OR", "A.out * B.out", "A.dead*B.dead + Sink.stuck"},
        LineCase{"Nested", "Directed", "AND", "A.out + (ANDPORT)", "A.dead + Sink.stuck"},
        LineCase{"OneOfThem", "Directed", "AND", "B.out", "B.dead + Sink.stuck"}),
    [](const auto& line) { return std::string(line.param.name); });

class ConnectionClassTest : public SynthesisTest {};

TEST_F(ConnectionClassTest, AConnectionWithAClassWinsOverTheGeneralOne) {
  for (const bool classedFirst : {true, false}) {
    std::vector<XmlConnection> connections = {{"Sink.in", "Omission", "Omission-A.out"},
                                              {"Sink.in", "", "B.out"},
                                              {"A.out", "", "OUTPUTPORT"},
                                              {"B.out", "", "OUTPUTPORT"}};
    if (!classedFirst) std::swap(connections[0], connections[1]);
    EXPECT_EQ(OnlyCutSets(XmlModel({XmlHazard("H", "Omission-Sink.out")},
                                   XmlSystem({Source("A"), Source("B"), Relay("Sink")},
                                             {XmlLine("Directed", "OR", connections)}))),
              "A.dead + Sink.stuck");
  }
}

TEST_F(SynthesisTest, DeviationsOfAnotherClassAreNotMixedIn) {
  const std::string source =
      XmlLeaf("A", {"out"},
              {{XmlEvent("dead"), XmlEvent("wrong")},
               {XmlDeviation("Omission-out", "dead"), XmlDeviation("Value-out", "wrong")}});
  const std::string relay = XmlLeaf(
      "B", {"in", "out"},
      {{}, {XmlDeviation("Omission-out", "Omission-in"), XmlDeviation("Value-out", "Value-in")}});
  EXPECT_EQ(OnlyCutSets(XmlModel({XmlHazard("H", "Value-B.out")},
                                 XmlSystem({source, relay}, {XmlWire("A.out", "B.in")}))),
            "A.wrong");
}

TEST_F(SynthesisTest, AHazardOverAPortWithoutLogicIsRefused) {
  EXPECT_EQ(
      WhatSynthesisThrows(XmlModel({XmlHazard("H", "Late-A.out")}, XmlSystem({Source("A")}, {}))),
      "Invalid output deviation: Late-DEFAULT::A.out");
}

TEST_F(SynthesisTest, AHazardOverAnUnknownPortLosesThatBranch) {
  EXPECT_EQ(OnlyCutSets(XmlModel({XmlHazard("H", "Omission-A.out OR Omission-A.nowhere")},
                                 XmlSystem({Source("A")}, {}))),
            "A.dead");
  Config::Instance().runSilent = false;
  const auto model =
      LoadModel(XmlModel({XmlHazard("H", "Omission-A.nowhere")}, XmlSystem({Source("A")}, {})));
  model->Synthesise();
  ASSERT_EQ(DiagnosticLog::Instance().ErrorCount(), 1);
  EXPECT_EQ(DiagnosticLog::Instance().Errors()[0], "Cannot find port A.nowhere");
}

TEST_F(SynthesisTest, ASharedDeviationIsResolvedOnceForAllTrees) {
  Config::Instance().runSilent = true;
  Config::Instance().contraction = 0;
  const auto model =
      LoadModel(XmlModel({XmlHazard("H1", "Omission-B.out"), XmlHazard("H2", "Omission-B.out")},
                         XmlSystem({Source("A"), Relay("B")}, {XmlWire("A.out", "B.in")})));
  model->Synthesise();
  ASSERT_EQ(model->GetFaultTreeCount(), 2);
  EXPECT_EQ(model->faultTrees[0]->root->GetChild(0), model->faultTrees[1]->root->GetChild(0));
}

TEST_F(SynthesisTest, AWalkThatComesBackIntoItsComponentStopsTheBranchAndItsSiblings) {
  Config::Instance().runSilent = true;
  const std::string outer =
      XmlBlock("Outer", {"in", "out"}, "Both", {{}, {}}, XmlSystem({Source("Inner")}, {}));
  const auto model = LoadModel(XmlModel({XmlHazard("H", "Omission-A.out")},
                                        XmlSystem({Source("A"), Source("B"), outer}, {})));
  model->Synthesise();
  OrGate outside("sources of Outer.in", model.get());
  for (const char* port : {"DEFAULT::A.out", "DEFAULT::Outer.Inner.out", "DEFAULT::B.out"}) {
    outside.AddChild(
        std::make_shared<OutputDeviationProxy>(std::string("Omission-") + port, model.get()));
  }
  EXPECT_FALSE(model->ResolveConnection(outside, *model->FindComponent("Outer"), false));
  EXPECT_EQ(outside.GetChild(0)->GetChildCount(), 1);
  EXPECT_EQ(outside.GetChild(1)->GetChildCount(), 0);
  EXPECT_EQ(outside.GetChild(2)->GetChildCount(), 0);
  EXPECT_FALSE(outside.GetChild(2)->resolved);
}

TEST_F(SynthesisTest, GotosJumpToADeviationElsewhere) {
  const std::string jumping = XmlLeaf(
      "J", {"out"},
      {{XmlEvent("own")}, {XmlDeviation("Omission-out", "own + GlobalGoto(Omission-A.out)")}});
  EXPECT_EQ(OnlyCutSets(XmlModel({XmlHazard("H", "Omission-J.out")},
                                 XmlSystem({Source("A"), jumping}, {}))),
            "A.dead + J.own");
}

TEST_F(SynthesisTest, LocalGotosStayInTheComponent) {
  const std::string jumping =
      XmlLeaf("J", {"out", "aux"},
              {{XmlEvent("own"), XmlEvent("aux_dead")},
               {XmlDeviation("Omission-out", "own + LocalGoto(Omission-aux)"),
                XmlDeviation("Omission-aux", "aux_dead")}});
  EXPECT_EQ(OnlyCutSets(XmlModel({XmlHazard("H", "Omission-J.out")}, XmlSystem({jumping}, {}))),
            "J.aux_dead + J.own");
}

TEST_F(SynthesisTest, GotosFindADeviationByItsGlobalLabel) {
  const std::string labelled = XmlLeaf(
      "A", {"out"},
      {{XmlEvent("dead")}, {XmlDeviation("Omission-out", "dead", Xml("GlobalLabel", "Loss-A"))}});
  const std::string jumping =
      XmlLeaf("J", {"out"}, {{}, {XmlDeviation("Omission-out", "GlobalGoto(Loss-A)")}});
  EXPECT_EQ(
      OnlyCutSets(XmlModel({XmlHazard("H", "Omission-J.out")}, XmlSystem({labelled, jumping}, {}))),
      "A.dead");
}

TEST_F(SynthesisTest, AGotoToNowhereIsRefused) {
  const std::string jumping =
      XmlLeaf("J", {"out"}, {{}, {XmlDeviation("Omission-out", "GlobalGoto(Omission-A.out)")}});
  EXPECT_EQ(
      WhatSynthesisThrows(XmlModel({XmlHazard("H", "Omission-J.out")}, XmlSystem({jumping}, {}))),
      "Cannot find target for goto: Omission-A.out");
}

std::string TwoPerspectives(const std::string& allocation) {
  const std::string host =
      XmlLeaf("Cpu", {"p"},
              {{XmlEvent("halted")},
               {},
               {Xml("ExportedPropagation",
                    Xml("Name", "Omission-exec") + Xml("FailureExpression", "halted"))}});
  const std::string task = XmlLeaf(
      "Task", {"out"},
      {{XmlEvent("bug")}, {XmlDeviation("Omission-out", "bug + FromAllocation(Omission-exec)")}},
      allocation);
  return XmlModel(
      {XmlHazard("H", "Omission-Software::Task.out")},
      Xml("Perspectives", Xml("Perspective", Xml("Name", "Hardware") + XmlSystem({host}, {})) +
                              Xml("Perspective", Xml("Name", "Software") + XmlSystem({task}, {}))));
}

TEST_F(SynthesisTest, AnAllocationBringsInWhatTheHostExports) {
  EXPECT_EQ(OnlyCutSets(TwoPerspectives(Xml("Allocations", Xml("Current", "Hardware::Cpu")))),
            "Cpu.halted + Task.bug");
}

TEST_F(SynthesisTest, AnAllocationToNothingIsRefused) {
  EXPECT_EQ(WhatSynthesisThrows(TwoPerspectives("")),
            "Exported Deviation Omission-exec has no source allocation!");
}

TEST_F(SynthesisTest, GivesTheSameTreesAfterAClear) {
  Config::Instance().runSilent = true;
  const auto model =
      LoadModel(XmlModel({XmlHazard("H", "Omission-B.out")},
                         XmlSystem({Source("A"), Relay("B")}, {XmlWire("A.out", "B.in")})));
  std::string first;
  for (int round = 0; round < 3; ++round) {
    model->ClearSynthesis();
    model->Synthesise();
    model->Analyse(false);
    const std::string found = CutSetsOf(*model, "H");
    if (round == 0) first = found;
    EXPECT_EQ(found, first) << "round " << round;
  }
  EXPECT_EQ(first, "A.dead + B.stuck");
}

}  // namespace
}  // namespace FTS
