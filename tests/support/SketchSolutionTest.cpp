#include <gtest/gtest.h>

#include "support/ProcessStateTest.h"
#include "support/SketchSolution.h"

namespace FTS {
namespace {

const char* const Lost = "Omission";
const char* const Wrong = "Value";

/// Small models made by hand. S is a source with the event "s", T another with "t", and R reads
/// them at "in".
class SketchSolutionTest : public ProcessStateTest {
 protected:
  SketchSolutionTest() {
    sketch.AddPerspective("DEFAULT");
    s = Source("S", "s");
    t = Source("T", "t");
    r = sketch.AddComponent(0, "R", {"in", "out"});
  }

  int Source(const std::string& name, const std::string& event, int system = 0) {
    const int component = sketch.AddComponent(system, name, {"out"});
    sketch.components[component].events.push_back({event, 0.5});
    Annotate(component, EventLogic(event));
    return component;
  }

  void Annotate(int component, const SketchLogic& logic, const std::string& failureClass = Lost) {
    SketchDeviation deviation;
    deviation.failureClass = failureClass;
    deviation.port = "out";
    deviation.causes = {logic};
    sketch.components[component].deviations.push_back(deviation);
  }

  SketchLine& AddLine(bool directed, const std::string& defaultOperator = "OR", int system = 0) {
    SketchLine line;
    line.directed = directed;
    line.defaultOperator = defaultOperator;
    sketch.systems[system].lines.push_back(line);
    return sketch.systems[system].lines.back();
  }

  static void End(SketchLine& line, int component, const std::string& port,
                  const SketchLogic& expression, const std::string& failureClass = "") {
    line.connections.push_back({component, port, failureClass, expression});
  }

  CutSets Arriving(const std::string& failureClass = Lost) {
    return MinimalCutSets(SketchSolution(sketch).Arriving(r, "in", failureClass));
  }

  CutSets Leaving(int component, const std::string& failureClass = Lost) {
    return MinimalCutSets(SketchSolution(sketch).Leaving(component, "out", failureClass));
  }

  ModelSketch sketch;
  int s;
  int t;
  int r;
  const CutSets onlyS = {{"DEFAULT::S.s"}};
  const CutSets onlyT = {{"DEFAULT::T.t"}};
  const CutSets either = {{"DEFAULT::S.s"}, {"DEFAULT::T.t"}};
  const CutSets together = {{"DEFAULT::S.s", "DEFAULT::T.t"}};
};

TEST_F(SketchSolutionTest, DeviationIsTheOrOfItsCauses) {
  sketch.components[s].events.push_back({"s2", 0.5});
  sketch.components[s].deviations[0].causes.push_back(EventLogic("s2"));
  EXPECT_EQ(Leaving(s), (CutSets{{"DEFAULT::S.s"}, {"DEFAULT::S.s2"}}));
}

TEST_F(SketchSolutionTest, CommonCauseIsOneEventForAll) {
  sketch.perspectives[0].commonCauses.push_back({"flood", 0.5});
  for (const int component : {s, t}) {
    sketch.components[component].commonCauses = {"flood"};
    sketch.components[component].deviations[0].causes = {EventLogic(PotentialName("flood"))};
  }
  SketchLine& line = AddLine(true);
  End(line, r, "in", AndLogic({PortLogic(s, "out"), PortLogic(t, "out")}));
  EXPECT_EQ(Arriving(), (CutSets{{"flood"}}));
}

TEST_F(SketchSolutionTest, PortWithoutALineIsAHole) { EXPECT_TRUE(Arriving().empty()); }

TEST_F(SketchSolutionTest, ReferenceTakesTheClassThatIsAsked) {
  Annotate(s, EventLogic("s"), Wrong);
  End(AddLine(true), r, "in", PortLogic(s, "out"));
  EXPECT_EQ(Arriving(Wrong), onlyS);
  EXPECT_TRUE(Arriving("Late").empty());
}

TEST_F(SketchSolutionTest, ReferenceWithAClassKeepsIt) {
  End(AddLine(true), r, "in", PortLogic(s, "out", Lost), Wrong);
  EXPECT_EQ(Arriving(Wrong), onlyS);
  EXPECT_TRUE(Arriving(Lost).empty());
}

TEST_F(SketchSolutionTest, DirectedLineListensToItsOutputs) {
  SketchLine& line = AddLine(true);
  End(line, s, "out", Placeholder("OUTPUTPORT"));
  End(line, t, "out", Placeholder("ORPORT"));
  End(line, r, "in", Placeholder("ORPORT"));
  EXPECT_EQ(Arriving(), onlyS);
}

TEST_F(SketchSolutionTest, DefaultOfAnOutputLineMarksAnOutput) {
  SketchLine& line = AddLine(true, "OUTPUT");
  End(line, s, "out", Placeholder("DEFAULT"));
  End(line, t, "out", Placeholder("ORPORT"));
  End(line, r, "in", Placeholder("ORPORT"));
  EXPECT_EQ(Arriving(), onlyS);
}

TEST_F(SketchSolutionTest, DirectedLineWithoutOutputsListensToAll) {
  SketchLine& line = AddLine(true);
  End(line, s, "out", Placeholder("ORPORT"));
  End(line, t, "out", Placeholder("ORPORT"));
  End(line, r, "in", Placeholder("ANDPORT"));
  EXPECT_EQ(Arriving(), together);
}

TEST_F(SketchSolutionTest, UndirectedLineListensToAll) {
  SketchLine& line = AddLine(false);
  End(line, s, "out", Placeholder("OUTPUTPORT"));
  End(line, t, "out", Placeholder("DEFAULT"));
  End(line, r, "in", Placeholder("DEFAULT"));
  EXPECT_EQ(Arriving(), either);
}

TEST_F(SketchSolutionTest, DefaultOperatorDecidesDefault) {
  SketchLine& line = AddLine(false, "AND");
  End(line, s, "out", Placeholder("DEFAULT"));
  End(line, t, "out", Placeholder("DEFAULT"));
  End(line, r, "in", Placeholder("DEFAULT"));
  EXPECT_EQ(Arriving(), together);
}

TEST_F(SketchSolutionTest, PlaceholderMayStandWithinAnExpression) {
  SketchLine& line = AddLine(true);
  End(line, s, "out", Placeholder("OUTPUTPORT"));
  End(line, r, "in", AndLogic({Placeholder("ORPORT"), PortLogic(t, "out")}));
  EXPECT_EQ(Arriving(), together);
}

TEST_F(SketchSolutionTest, SourceForAnotherClassIsNoPeer) {
  SketchLine& line = AddLine(true);
  End(line, s, "out", Placeholder("OUTPUTPORT"), Wrong);
  End(line, t, "out", Placeholder("OUTPUTPORT"), Lost);
  End(line, r, "in", Placeholder("ORPORT"));
  EXPECT_EQ(Arriving(), onlyT);
}

TEST_F(SketchSolutionTest, ConnectionWithTheClassWins) {
  SketchLine& line = AddLine(true);
  End(line, r, "in", PortLogic(t, "out", Lost), Lost);
  End(line, r, "in", PortLogic(s, "out"));
  EXPECT_EQ(Arriving(), onlyT);
}

TEST_F(SketchSolutionTest, FirstConnectionForAllClassesWins) {
  End(AddLine(true), r, "in", PortLogic(s, "out"));
  End(AddLine(true), r, "in", PortLogic(t, "out"));
  EXPECT_EQ(Arriving(), onlyS);
}

TEST_F(SketchSolutionTest, LastConnectionWithTheClassWins) {
  End(AddLine(true), r, "in", PortLogic(s, "out", Lost), Lost);
  End(AddLine(true), r, "in", PortLogic(t, "out", Lost), Lost);
  EXPECT_EQ(Arriving(), onlyT);
}

TEST_F(SketchSolutionTest, PropagatorHandsOnWhatArrives) {
  sketch.components[r].block = SketchBlock::PROPAGATOR;
  End(AddLine(true), r, "in", PortLogic(s, "out"));
  EXPECT_EQ(Leaving(r), onlyS);
}

TEST_F(SketchSolutionTest, PropagatorWithThreePortsIsAHole) {
  sketch.components[r].block = SketchBlock::PROPAGATOR;
  sketch.components[r].ports.push_back("out2");
  End(AddLine(true), r, "in", PortLogic(s, "out"));
  EXPECT_TRUE(Leaving(r).empty());
}

TEST_F(SketchSolutionTest, RefinedComponentIsWhatIsInside) {
  const int inside = sketch.Refine(r);
  const int inner = Source("X", "x", inside);
  End(AddLine(true, "OR", inside), r, "out", PortLogic(inner, "out"));
  Annotate(r, EventLogic("unused"));
  EXPECT_EQ(Leaving(r), (CutSets{{"DEFAULT::R.X.x"}}));
}

TEST_F(SketchSolutionTest, ComponentThatIsBothJoinsTheTwo) {
  const int inside = sketch.Refine(r);
  sketch.components[r].block = SketchBlock::BOTH;
  const int inner = Source("X", "x", inside);
  End(AddLine(true, "OR", inside), r, "out", PortLogic(inner, "out"));
  sketch.components[r].events.push_back({"own", 0.5});
  Annotate(r, EventLogic("own"));
  EXPECT_EQ(Leaving(r), (CutSets{{"DEFAULT::R.X.x"}, {"DEFAULT::R.own"}}));
}

TEST_F(SketchSolutionTest, BoundaryPortSeenFromInsideIsWhatArrives) {
  const int inside = sketch.Refine(r);
  End(AddLine(true), r, "in", PortLogic(s, "out"));
  End(AddLine(true, "OR", inside), r, "out", PortLogic(r, "in"));
  EXPECT_EQ(Leaving(r), onlyS);
}

TEST_F(SketchSolutionTest, JumpMeansWhatLeavesThePort) {
  SketchLogic jump = PortLogic(s, "out", Lost);
  jump.kind = SketchLogic::Kind::GLOBAL_GOTO;
  Annotate(r, jump);
  EXPECT_EQ(Leaving(r), onlyS);
}

TEST_F(SketchSolutionTest, AllocationMeansTheHostsExportedDeviation) {
  sketch.AddPerspective("Software");
  const int program = sketch.AddComponent(sketch.perspectives[1].system, "P", {"out"});
  sketch.components[program].allocation = s;
  SketchLogic host;
  host.kind = SketchLogic::Kind::FROM_ALLOCATION;
  host.text = "Omission-service";
  Annotate(program, host);
  EXPECT_TRUE(Leaving(program).empty());
  SketchDeviation service;
  service.failureClass = Lost;
  service.port = "service";
  service.causes = {EventLogic("s")};
  sketch.components[s].exported.push_back(service);
  EXPECT_EQ(Leaving(program), onlyS);
}

TEST_F(SketchSolutionTest, LoopIsReported) {
  Annotate(r, InputLogic(Lost, "in"));
  End(AddLine(true), r, "in", PortLogic(r, "out"));
  EXPECT_THROW(Leaving(r), SketchLoop);
}

TEST_F(SketchSolutionTest, HazardsAreTreesInTheOrderOfNames) {
  sketch.hazards.push_back({"Second", {TopLogic(Lost, s, "out")}});
  sketch.hazards.push_back({"First", {TopLogic(Lost, s, "out"), TopLogic(Lost, t, "out")}});
  const auto trees = SketchSolution(sketch).Trees();
  ASSERT_EQ(trees.size(), 2U);
  EXPECT_EQ(trees[0].first, "First");
  EXPECT_EQ(MinimalCutSets(trees[0].second), either);
  EXPECT_EQ(MinimalCutSets(trees[1].second), onlyS);
}

TEST_F(SketchSolutionTest, SystemOutportsAreTreesWithoutHazards) {
  sketch.components[t].deviations[0].systemOutport = true;
  const auto trees = SketchSolution(sketch).Trees();
  ASSERT_EQ(trees.size(), 1U);
  EXPECT_EQ(trees[0].first, "Omission-DEFAULT::T.out");
  EXPECT_EQ(MinimalCutSets(trees[0].second), onlyT);
}

}  // namespace
}  // namespace FTS
