#include <gmock/gmock.h>

#include "app/DiagnosticLog.h"
#include "faulttree/DeviationProxies.h"
#include "faulttree/Gates.h"
#include "model/Component.h"
#include "model/Deviation.h"
#include "model/Implementation.h"
#include "model/Line.h"
#include "model/Model.h"
#include "model/Perspective.h"
#include "model/Port.h"
#include "model/Subsystem.h"
#include "support/CaseName.h"
#include "support/ModelBuilder.h"
#include "support/ProcessStateTest.h"
#include "support/ThrownMessage.h"
#include "support/TreeBuilder.h"

namespace FTS {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Connections = std::map<std::string, std::string>;

LineText Directed(Connections connections) {
  LineText text;
  text.connections = std::move(connections);
  text.directed = true;
  return text;
}

LineText Undirected(Connections connections) {
  LineText text;
  text.connections = std::move(connections);
  return text;
}

std::shared_ptr<Subsystem> RootOf(const Model& model) {
  return model.perspectives.begin()->second->rootSubsystem;
}

/// What the lines outside (inside) the port's component say, "none" without a line.
std::string OuterShape(const Model& model, const std::string& port,
                       const std::string& failureClass) {
  const auto expression = model.FindPort(port)->GetExternalTemplate(failureClass);
  return expression ? ShapeOf(expression) : "none";
}

std::string InnerShape(const Model& model, const std::string& port,
                       const std::string& failureClass) {
  const auto expression = model.FindPort(port)->GetInternalTemplate(failureClass);
  return expression ? ShapeOf(expression) : "none";
}

/// Components A, B and C at the top, each with "in" and "out"; the classes are Late and Omission.
ModelBuilder Abc() {
  ModelBuilder builder;
  builder.FailureClass("Late").FailureClass("Omission");
  for (const char* name : {"A", "B", "C"}) builder.Component(name, {"in", "out"});
  return builder;
}

std::unique_ptr<Model> AbcWith(const LineText& text) {
  auto builder = Abc();
  auto model = builder.Line(text).Build();
  RootOf(*model)->BuildPortExpressions();
  return model;
}

class PortExpressionsTest : public ProcessStateTest {};

// Which ports a placeholder joins.

TEST_F(PortExpressionsTest, DirectedLineComesFromItsOutputPorts) {
  const auto model =
      AbcWith(Directed({{"A.out", "OUTPUTPORT"}, {"B.out", "OUTPUTPORT"}, {"C.in", "DEFAULT"}}));
  EXPECT_EQ(OuterShape(*model, "C.in", "Late"),
            "OR(OR(Late-DEFAULT::A.out=OUT(), Late-DEFAULT::B.out=OUT()))");
}

TEST_F(PortExpressionsTest, UndirectedLineComesFromAllOtherPorts) {
  const auto model =
      AbcWith(Undirected({{"A.out", "OUTPUTPORT"}, {"B.in", "DEFAULT"}, {"C.in", "DEFAULT"}}));
  EXPECT_EQ(OuterShape(*model, "C.in", "Late"),
            "OR(OR(Late-DEFAULT::A.out=OUT(), Late-DEFAULT::B.in=OUT()))");
}

TEST_F(PortExpressionsTest, DefaultTakesTheLinesOperator) {
  LineText text = Directed({{"A.out", "OUTPUTPORT"}, {"B.out", "OUTPUTPORT"}, {"C.in", "DEFAULT"}});
  text.defaultOperator = LineOperator::AND;
  EXPECT_EQ(OuterShape(*AbcWith(text), "C.in", "Late"),
            "AND(AND(Late-DEFAULT::A.out=OUT(), Late-DEFAULT::B.out=OUT()))");
}

TEST_F(PortExpressionsTest, PlaceholdersNameTheirGate) {
  const auto model =
      AbcWith(Directed({{"A.out", "OUTPUTPORT"}, {"B.in", "ANDPORT"}, {"C.in", "ORPORT"}}));
  EXPECT_EQ(OuterShape(*model, "B.in", "Late"), "AND(AND(Late-DEFAULT::A.out=OUT()))");
  EXPECT_EQ(OuterShape(*model, "C.in", "Late"), "OR(OR(Late-DEFAULT::A.out=OUT()))");
}

TEST_F(PortExpressionsTest, JoiningGateKeepsThePlaceholdersName) {
  const auto model = AbcWith(Directed({{"A.out", "OUTPUTPORT"}, {"B.in", "ANDPORT"}}));
  const auto root = model->FindPort("B.in")->GetExternalTemplate("Late");
  EXPECT_EQ(root->name, "Late-DEFAULT::B.in");
  EXPECT_EQ(root->GetChild(0)->name, "ANDPORT");
}

TEST_F(PortExpressionsTest, PlaceholdersStandAtAnyDepth) {
  const auto model = AbcWith(Directed(
      {{"A.out", "OUTPUTPORT"}, {"B.out", "OUTPUTPORT"}, {"C.in", "AND(B.in, OR(ORPORT, B.in))"}}));
  EXPECT_EQ(OuterShape(*model, "C.in", "Late"),
            "AND(OR(OR(OR(Late-DEFAULT::A.out=OUT(), Late-DEFAULT::B.out=OUT())), "
            "Late-DEFAULT::B.in=OUT()), Late-DEFAULT::B.in=OUT())");
}

TEST_F(PortExpressionsTest, OutputDefaultStandsForAnOutput) {
  LineText text = Directed({{"A.out", "DEFAULT"}, {"C.in", "ORPORT"}});
  text.defaultOperator = LineOperator::OUTPUT;
  const auto model = AbcWith(text);
  EXPECT_EQ(OuterShape(*model, "C.in", "Late"), "OR(OR(Late-DEFAULT::A.out=OUT()))");
  EXPECT_EQ(OuterShape(*model, "A.out", "Late"), "OUTPUTPORT=PROXY()");
}

TEST_F(PortExpressionsTest, OutputPortKeepsItsName) {
  const auto model = AbcWith(Directed({{"A.out", "OUTPUTPORT"}, {"C.in", "DEFAULT"}}));
  EXPECT_EQ(model->FindPort("A.out")->GetExternalTemplate("Late")->name, "OUTPUTPORT");
}

TEST_F(PortExpressionsTest, PortUnderTwoKeysIsConnectedOnce) {
  const auto model = AbcWith(
      Undirected({{"A.out", "OUTPUTPORT"}, {"Late-A.out", "OUTPUTPORT"}, {"C.in", "DEFAULT"}}));
  EXPECT_EQ(OuterShape(*model, "C.in", "Late"), "OR(OR(Late-DEFAULT::A.out=OUT()))");
}

TEST_F(PortExpressionsTest, KeyOfAnotherClassIsNoPeer) {
  const auto model = AbcWith(
      Undirected({{"Omission-A.out", "OUTPUTPORT"}, {"B.out", "OUTPUTPORT"}, {"C.in", "DEFAULT"}}));
  EXPECT_EQ(OuterShape(*model, "C.in", "Late"), "OR(OR(Late-DEFAULT::B.out=OUT()))");
  EXPECT_EQ(OuterShape(*model, "C.in", "Omission"),
            "OR(OR(Omission-DEFAULT::B.out=OUT(), Omission-DEFAULT::A.out=OUT()))");
}

TEST_F(PortExpressionsTest, OutputOfAnotherClassIsNoOutput) {
  const auto model = AbcWith(
      Directed({{"Omission-A.out", "OUTPUTPORT"}, {"B.out", "OUTPUTPORT"}, {"C.in", "DEFAULT"}}));
  EXPECT_EQ(OuterShape(*model, "C.in", "Late"), "OR(OR(Late-DEFAULT::B.out=OUT()))");
}

// Directed lines without outputs.

constexpr const char* NoOutputs =
    "BuildPortExpression Error. No output ports on directed line \"line\"; treating all ports as "
    "outputs instead.";

TEST_F(PortExpressionsTest, DirectedLineWithoutOutputsBehavesAsUndirected) {
  const auto model = AbcWith(Directed({{"Late-A.in", "DEFAULT"}, {"B.out", "A.in"}}));
  EXPECT_EQ(OuterShape(*model, "A.in", "Late"), "OR(OR(Late-DEFAULT::B.out=OUT()))");
}

TEST_F(PortExpressionsTest, MissingOutputsAreReportedOncePerExpansion) {
  // Of Late-A.in for its class, of B.in for both.
  AbcWith(Directed({{"Late-A.in", "DEFAULT"}, {"B.in", "ORPORT"}}));
  EXPECT_THAT(DiagnosticLog::Instance().Warnings(), ElementsAre(NoOutputs, NoOutputs, NoOutputs));
}

TEST_F(PortExpressionsTest, ExpressionWithTwoPlaceholdersIsTwoExpansions) {
  AbcWith(Directed({{"Late-A.in", "AND(ORPORT, ANDPORT)"}}));
  EXPECT_THAT(DiagnosticLog::Instance().Warnings(), ElementsAre(NoOutputs, NoOutputs));
}

TEST_F(PortExpressionsTest, OwnPortIsNoOutputOfItself) {
  auto model = AbcWith(Directed({{"A.in", "OUTPUTPORT"}, {"Late-A.in", "DEFAULT"}}));
  EXPECT_THAT(DiagnosticLog::Instance().Warnings(), ElementsAre(NoOutputs));
}

TEST_F(PortExpressionsTest, AskingForATemplateReportsNothing) {
  const auto model = AbcWith(Directed({{"Late-A.in", "DEFAULT"}}));
  const std::size_t before = DiagnosticLog::Instance().Warnings().size();
  OuterShape(*model, "A.in", "Late");
  EXPECT_EQ(DiagnosticLog::Instance().Warnings().size(), before);
}

TEST_F(PortExpressionsTest, DirectedLineWithOutputsReportsNothing) {
  AbcWith(Directed({{"A.out", "OUTPUTPORT"}, {"B.in", "DEFAULT"}, {"C.in", "A.out"}}));
  EXPECT_THAT(DiagnosticLog::Instance().Warnings(), IsEmpty());
}

// Which connection speaks for a class.

TEST_F(PortExpressionsTest, NamedClassWinsOverTheGeneralConnection) {
  const auto model =
      AbcWith(Directed({{"A.out", "OUTPUTPORT"}, {"B.in", "A.out"}, {"Late-B.in", "Late-C.out"}}));
  EXPECT_EQ(OuterShape(*model, "B.in", "Late"), "Late-DEFAULT::C.out=OUT()");
  EXPECT_EQ(OuterShape(*model, "B.in", "Omission"), "Omission-DEFAULT::A.out=OUT()");
}

TEST_F(PortExpressionsTest, NamedClassWinsWhenItsKeySortsFirst) {
  const auto model =
      AbcWith(Directed({{"A.out", "OUTPUTPORT"}, {"B.in", "A.out"}, {"Aged-B.in", "Aged-C.out"}}));
  EXPECT_EQ(OuterShape(*model, "B.in", "Aged"), "Aged-DEFAULT::C.out=OUT()");
}

TEST_F(PortExpressionsTest, FirstOfTwoGeneralLinesWins) {
  auto builder = Abc();
  builder.Line(Directed({{"B.in", "A.out"}})).Line(Directed({{"B.in", "C.out"}}));
  const auto model = builder.Build();
  RootOf(*model)->BuildPortExpressions();
  EXPECT_EQ(OuterShape(*model, "B.in", "Late"), "Late-DEFAULT::A.out=OUT()");
}

TEST_F(PortExpressionsTest, LastOfTwoLinesForTheClassWins) {
  auto builder = Abc();
  builder.Line(Directed({{"Late-B.in", "Late-A.out"}}))
      .Line(Directed({{"Late-B.in", "Late-C.out"}}));
  const auto model = builder.Build();
  RootOf(*model)->BuildPortExpressions();
  EXPECT_EQ(OuterShape(*model, "B.in", "Late"), "Late-DEFAULT::C.out=OUT()");
}

TEST_F(PortExpressionsTest, GeneralConnectionSpeaksForKnownClassesOnly) {
  const auto model = AbcWith(Directed({{"B.in", "A.out"}}));
  EXPECT_EQ(OuterShape(*model, "B.in", "Unheard"), "none");
}

TEST_F(PortExpressionsTest, PortWithoutALineHasNothing) {
  const auto model = AbcWith(Directed({{"B.in", "A.out"}}));
  EXPECT_EQ(OuterShape(*model, "C.in", "Late"), "none");
  EXPECT_EQ(InnerShape(*model, "B.in", "Late"), "none");
}

// References.

TEST_F(PortExpressionsTest, ReferenceKeepsItsOwnClass) {
  const auto model = AbcWith(Directed({{"Late-C.in", "OR(Omission-A.out, Late-B.out)"}}));
  EXPECT_EQ(OuterShape(*model, "C.in", "Late"),
            "OR(Omission-DEFAULT::A.out=OUT(), Late-DEFAULT::B.out=OUT())");
}

TEST_F(PortExpressionsTest, ReferencesMoveBehindWhatElseAGateHolds) {
  const auto model = AbcWith(Directed({{"C.in", "OR(A.out, AND(A.in, B.in), B.out)"}}));
  EXPECT_EQ(OuterShape(*model, "C.in", "Late"),
            "OR(AND(Late-DEFAULT::A.in=OUT(), Late-DEFAULT::B.in=OUT()), "
            "Late-DEFAULT::A.out=OUT(), Late-DEFAULT::B.out=OUT())");
}

TEST_F(PortExpressionsTest, ReferenceAsRootIsTheSharedProxyUnderItsOwnName) {
  const auto model = AbcWith(Directed({{"B.in", "A.out"}, {"C.in", "A.out"}}));
  const auto atB = model->FindPort("B.in")->GetExternalTemplate("Late");
  EXPECT_EQ(atB->name, "Late-DEFAULT::A.out");
  EXPECT_EQ(atB, model->FindPort("C.in")->GetExternalTemplate("Late"));
  EXPECT_EQ(atB, model->FindPort("A.out")->outputProxies.at("Late"));
}

TEST_F(PortExpressionsTest, GateAsRootBearsTheClassAndFullNameOfThePort) {
  const auto model = AbcWith(Directed({{"C.in", "AND(A.out, B.out)"}}));
  EXPECT_EQ(model->FindPort("C.in")->GetExternalTemplate("Late")->name, "Late-DEFAULT::C.in");
}

TEST_F(PortExpressionsTest, ConnectionsAsWrittenStayAsTheyAre) {
  const auto model = AbcWith(Directed({{"A.out", "OUTPUTPORT"}, {"C.in", "AND(DEFAULT, B.out)"}}));
  const auto raw = RootOf(*model)->lines[0]->connections.at("C.in");
  const std::string before = ShapeOf(raw);
  OuterShape(*model, "C.in", "Late");
  OuterShape(*model, "C.in", "Omission");
  EXPECT_EQ(ShapeOf(raw), before);
  EXPECT_EQ(raw->name, "AND [C.in]");
}

// Levels.

/// Around holds Inner; both have "in" and "out".
ModelBuilder Nested() {
  ModelBuilder builder;
  builder.FailureClass("Late").Component("Around", {"in", "out"});
  builder.Component("Around.Inner", {"in", "out"});
  return builder;
}

LineText Within(LineText text, const std::string& component) {
  text.inside = component;
  return text;
}

TEST_F(PortExpressionsTest, BoundaryInputIsAnInputDeviation) {
  auto builder = Nested();
  builder.Line(Within(Directed({{"in", "OUTPUTPORT"}, {"Inner.in", "DEFAULT"}}), "Around"));
  const auto model = builder.Build();
  RootOf(*model)->BuildPortExpressions();
  EXPECT_EQ(OuterShape(*model, "Around.Inner.in", "Late"), "OR(OR(Late-DEFAULT::Around.in=IN()))");
  const auto& proxy = model->FindPort("Around.in")->inputProxies.at(DefaultState).at("Late");
  EXPECT_EQ(proxy->deviation->description, "Input Deviation");
  EXPECT_EQ(proxy->deviation->GetPort(), model->FindPort("Around.in"));
}

TEST_F(PortExpressionsTest, BoundaryOutputListensToWhatComesOutInside) {
  auto builder = Nested();
  builder.Line(Within(Directed({{"Inner.out", "OUTPUTPORT"}, {"out", "DEFAULT"}}), "Around"));
  const auto model = builder.Build();
  RootOf(*model)->BuildPortExpressions();
  EXPECT_EQ(InnerShape(*model, "Around.out", "Late"),
            "OR(OR(Late-DEFAULT::Around.Inner.out=OUT()))");
  EXPECT_EQ(OuterShape(*model, "Around.out", "Late"), "none");
}

TEST_F(PortExpressionsTest, ReferenceToTheBoundaryIsChosenByDirection) {
  auto builder = Nested();
  builder.Line(Within(Directed({{"Inner.in", "in"}, {"out", "Inner.out"}}), "Around"));
  const auto model = builder.Build();
  RootOf(*model)->BuildPortExpressions();
  EXPECT_EQ(OuterShape(*model, "Around.Inner.in", "Late"), "Late-DEFAULT::Around.in=IN()");
  EXPECT_EQ(InnerShape(*model, "Around.out", "Late"), "Late-DEFAULT::Around.Inner.out=OUT()");
}

TEST_F(PortExpressionsTest, BoundaryJoinedToItselfIsAnOutput) {
  auto builder = Nested();
  builder.Line(Within(Directed({{"in", "OUTPUTPORT"}, {"out", "DEFAULT"}}), "Around"));
  const auto model = builder.Build();
  RootOf(*model)->BuildPortExpressions();
  EXPECT_EQ(InnerShape(*model, "Around.out", "Late"), "OR(OR(Late-DEFAULT::Around.in=OUT()))");
}

TEST_F(PortExpressionsTest, LineReachesIntoAComponentInside) {
  auto builder = Nested();
  builder.Component("B", {"in"})
      .Line(Directed({{"Around.Inner.out", "OUTPUTPORT"}, {"B.in", "DEFAULT"}}));
  const auto model = builder.Build();
  RootOf(*model)->BuildPortExpressions();
  EXPECT_EQ(OuterShape(*model, "B.in", "Late"), "OR(OR(Late-DEFAULT::Around.Inner.out=OUT()))");
  EXPECT_EQ(OuterShape(*model, "Around.Inner.out", "Late"), "OUTPUTPORT=PROXY()");
}

TEST_F(PortExpressionsTest, LinesOfOtherImplementationsSayNothing) {
  ModelBuilder builder;
  builder.FailureClass("Late").Component("A", {"out"}).Alternative("A", "other");
  builder.Component("A.Inner", {"out"});
  builder.Line(Within(Directed({{"out", "Inner.out"}}), "A"));
  const auto model = builder.Build();
  RootOf(*model)->BuildPortExpressions();
  EXPECT_EQ(InnerShape(*model, "A.out", "Late"), "none");
}

TEST_F(PortExpressionsTest, BuildingAgainFollowsTheChoiceOfImplementation) {
  ModelBuilder builder;
  builder.FailureClass("Late").Component("A", {"out"}).Component("A.One", {"out"});
  builder.Line(Within(Directed({{"out", "One.out"}}), "A")).Alternative("A", "other");
  builder.Component("A.Two", {"out"}).Line(Within(Directed({{"out", "Two.out"}}), "A"));
  const auto model = builder.Build();
  RootOf(*model)->BuildPortExpressions();
  EXPECT_EQ(InnerShape(*model, "A.out", "Late"), "Late-DEFAULT::A.One.out=OUT()");
  model->FindComponent("A")->SelectImplementation(1);
  RootOf(*model)->BuildPortExpressions();
  EXPECT_EQ(InnerShape(*model, "A.out", "Late"), "Late-DEFAULT::A.Two.out=OUT()");
}

TEST_F(PortExpressionsTest, NameWithAPointIsTriedAmongTheSubsystemsOwn) {
  ModelBuilder builder;
  builder.FailureClass("Late").Component("A", {"in", "out"});
  auto model = builder.Build();
  const auto root = RootOf(*model);
  const auto dotted = std::make_shared<Component>("B.v2", root, model.get());
  dotted->AddPort(std::make_shared<Port>("in", dotted, model.get()));
  const auto implementation = std::make_shared<Implementation>("impl", dotted, model.get());
  dotted->AddImplementation(implementation);
  dotted->SelectImplementation(0);
  root->AddComponent(dotted);
  const auto line = std::make_shared<Line>("line", root, model.get());
  line->AddConnection("A.out",
                      std::make_shared<ProxyNode>(NodeType::NullOp, "OUTPUTPORT", model.get()));
  line->AddConnection("B.v2.in", std::make_shared<OrGate>("DEFAULT", model.get()));
  root->AddLine(line);
  root->BuildPortExpressions();
  EXPECT_EQ(ShapeOf(dotted->FindPort("in")->GetExternalTemplate("Late")),
            "OR(OR(Late-DEFAULT::A.out=OUT()))");
}

// Mistakes.

struct MistakeCase {
  const char* name;
  const char* key;
  const char* inside;
  const char* message;
};

class ConnectionMistakeTest : public ProcessStateTest,
                              public ::testing::WithParamInterface<MistakeCase> {};

TEST_P(ConnectionMistakeTest, IsReportedWithItsPlace) {
  auto builder = Nested();
  builder.Line(Within(Directed({{GetParam().key, "OUTPUTPORT"}}), GetParam().inside));
  const auto model = builder.Build();
  EXPECT_EQ(ThrownMessage([&] { RootOf(*model)->BuildPortExpressions(); }), GetParam().message);
}

INSTANTIATE_TEST_SUITE_P(
    Keys, ConnectionMistakeTest,
    ::testing::Values(
        MistakeCase{"NoComponentAtTheTop", "in", "",
                    "Error! Cannot find port: in on line: line in model top layer; may not be "
                    "locally qualified"},
        MistakeCase{"UnknownComponentAtTheTop", "Late-Nobody.in", "",
                    "Error! Cannot find port: in on line: line in model top layer; may not be "
                    "locally qualified"},
        MistakeCase{"UnknownComponentInside", "Nobody.in", "Around",
                    "Error! Cannot find port: in on line: line in component: DEFAULT::Around may "
                    "not be locally qualified"},
        MistakeCase{"UnknownPort", "Around.none", "",
                    "Error! Cannot find port: none on line: line in component: DEFAULT::Around on "
                    "line"},
        MistakeCase{"UnknownPortOfTheBoundary", "none", "Around",
                    "Error! Cannot find port: none on line: line in component: DEFAULT::Around on "
                    "line"},
        MistakeCase{"UnknownPortInside", "Inner.none", "Around",
                    "Error! Cannot find port: none on line: line in component: "
                    "DEFAULT::Around.Inner on line"}),
    CaseName);

TEST_F(PortExpressionsTest, ComponentWithoutImplementationIsReported) {
  auto builder = Abc();
  const auto model = builder.Build();
  model->FindComponent("B")->currentImplementation = nullptr;
  EXPECT_EQ(ThrownMessage([&] { RootOf(*model)->BuildPortExpressions(); }),
            "No current implementation found for component: DEFAULT::B");
}

// Cost.

TEST_F(PortExpressionsTest, StarOfManyPortsTakesFewNodes) {
  constexpr int Count = 2000;
  ModelBuilder builder;
  builder.FailureClass("Late").Component("Hub", {"out"});
  LineText text = Directed({{"Hub.out", "OUTPUTPORT"}});
  for (int i = 0; i < Count; ++i) {
    const std::string name = "S" + std::to_string(i);
    builder.Component(name, {"in"});
    text.connections[name + ".in"] = "DEFAULT";
  }
  const auto model = builder.Line(text).Build();
  const int before = NodeCounters::Instance().nodesMade;
  RootOf(*model)->BuildPortExpressions();
  EXPECT_EQ(NodeCounters::Instance().nodesMade, before);
  for (int i = 0; i < Count; ++i) {
    model->FindPort("S" + std::to_string(i) + ".in")->GetExternalTemplate("Late");
  }
  // A root and its gate for each, and one proxy for all.
  EXPECT_EQ(NodeCounters::Instance().nodesMade, before + 2 * Count + 1);
}

}  // namespace
}  // namespace FTS
