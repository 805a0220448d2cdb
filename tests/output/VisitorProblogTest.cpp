#include <gmock/gmock.h>

#include <memory>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "faulttree/CircleNode.h"
#include "faulttree/CommonCauseNodes.h"
#include "faulttree/DeviationNodes.h"
#include "faulttree/DeviationProxies.h"
#include "faulttree/Gates.h"
#include "faulttree/GotoNode.h"
#include "model/CCF.h"
#include "model/Component.h"
#include "model/Deviation.h"
#include "model/Hazard.h"
#include "model/Implementation.h"
#include "model/Line.h"
#include "model/Model.h"
#include "model/Perspective.h"
#include "model/Port.h"
#include "model/Subsystem.h"
#include "output/VisitorProblog.h"
#include "support/BrakeModel.h"
#include "support/CaseName.h"
#include "support/CurrentFolder.h"
#include "support/ProcessStateTest.h"
#include "support/TemporaryFolder.h"
#include "support/ThrownMessage.h"
#include "support/TreeBuilder.h"

namespace FTS {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

class VisitorProblogTest : public ProcessStateTest {
 protected:
  VisitorProblogTest() : model(EmptyModel("plant.xml")) {
    perspective = std::make_shared<Perspective>("P", model.get());
    system = std::make_shared<Subsystem>(model.get());
    system->perspective = perspective;
    perspective->rootSubsystem = system;
    model->AddPerspective(perspective);
    pump = AddComponent("Pump", {"in", "out"});
  }
  ~VisitorProblogTest() override { model->ClearSynthesis(); }

  std::shared_ptr<Component> AddComponent(const std::string& name,
                                          const std::vector<std::string>& ports) {
    const auto component = std::make_shared<Component>(name, system, model.get());
    for (const std::string& port : ports) {
      component->AddPort(std::make_shared<Port>(port, component, model.get()));
    }
    component->AddImplementation(std::make_shared<Implementation>("only", component, model.get()));
    component->SelectImplementation(0);
    system->AddComponent(component);
    model->AddComponent(component);
    return component;
  }

  static std::string Written(Model& source, const std::string& file) {
    const TemporaryFolder folder;
    {
      const CurrentFolder here(folder.Path());
      VisitorProblog writer;
      source.Accept(writer);
    }
    return folder.Read(file);
  }
  std::string Written() { return Written(*model, "a_model.txt"); }

  /// The body of a rule with that logic.
  std::string BodyOf(FaultTreeNode::Pointer logic) {
    const auto hazard = std::make_shared<Hazard>("H", model.get());
    hazard->causes.push_back(std::make_unique<Cause>("", model.get(), 0.5, std::move(logic)));
    model->AddHazard(hazard);
    const std::string text = Written();
    model->hazards.clear();
    const std::string start = "0.5::hazard(h) :- ";
    const std::size_t at = text.find(start);
    if (at == std::string::npos) return text;
    return text.substr(at + start.size(), text.find(".\n\n", at) - at - start.size());
  }
  std::string BodyOf(const std::string& logic) { return BodyOf(Tree(logic, model.get())); }

  template <typename Event>
  std::shared_ptr<Event> Owned(std::shared_ptr<Event> event) {
    event->owner = pump;
    return event;
  }

  /// The whole block of one event in the pump's implementation.
  std::string BlockOf(const std::shared_ptr<BasicEvent>& event) {
    auto& events = pump->GetCurrentImplementation().basicEvents;
    events = {{event->name, event}};
    const std::string text = Written();
    events.clear();
    const std::string before = "partOf(p__Pump_out, p__Pump).\n\n";
    const std::size_t start = text.find(before) + before.size();
    return text.substr(start, text.find("% End of component: P::Pump") - start);
  }

  std::unique_ptr<Model> model;
  std::shared_ptr<Perspective> perspective;
  std::shared_ptr<Subsystem> system;
  std::shared_ptr<Component> pump;
};

// Names

struct NameCase {
  const char* name;
  std::string text;
  std::string atom;
};

void PrintTo(const NameCase& row, std::ostream* stream) { *stream << row.name; }

class SanitiseTest : public ProcessStateTest, public ::testing::WithParamInterface<NameCase> {};

TEST_P(SanitiseTest, MakesAnAtom) { EXPECT_EQ(Sanitise(GetParam().text), GetParam().atom); }

INSTANTIATE_TEST_SUITE_P(
    Names, SanitiseTest,
    ::testing::Values(NameCase{"Empty", "", ""}, NameCase{"Plain", "pump", "pump"},
                      NameCase{"CapitalInFront", "PumpA", "pumpA"},
                      NameCase{"ReplacedCharacters", "a\tb\nc\rd e-f.g:h", "a_b_c_d_e_f_g_h"},
                      NameCase{"ReplacedInFront", ".Pump", "_Pump"},
                      NameCase{"FullName", "DEFAULT::Pump.in", "dEFAULT__Pump_in"},
                      NameCase{"OthersStay", "2oo3 (a/b), \"c\"", "2oo3_(a/b),_\"c\""},
                      NameCase{"OneLetter", "X", "x"},
                      NameCase{"NoLetterOfAscii",
                               "\xC4"
                               "b",
                               "\xC4"
                               "b"}),
    CaseName);

TEST_F(VisitorProblogTest, FileHasTheSanitisedNameOfTheModel) {
  model->name = "My-Model.1";
  EXPECT_THAT(
      Written(*model, "my_Model_1.txt"),
      ::testing::StartsWith("% Vel-Tarn output\nmodel(my_Model_1).\nriskTime(my_Model_1, "));
}

TEST_F(VisitorProblogTest, FileStaysInTheWorkingFolderWhateverTheName) {
  model->name = "/../Sub/Model\\1";
  EXPECT_THAT(Written(*model, "____Sub_Model_1.txt"), HasSubstr("model(/__/Sub/Model\\1).\n"));
}

TEST_F(VisitorProblogTest, FileThatCannotBeOpenedIsMissedWithoutAWord) {
  const TemporaryFolder folder;
  folder.Write("a_model.txt/in-the-way", "");
  const CurrentFolder here(folder.Path());
  VisitorProblog writer;
  model->Accept(writer);
  EXPECT_TRUE(folder.Contains("a_model.txt/in-the-way"));
  EXPECT_EQ(DiagnosticLog::Instance().ReportedWarnings(), 0);
}

// Architecture

TEST_F(VisitorProblogTest, ModelWithoutDescriptionHasNone) {
  EXPECT_THAT(Written(), ::testing::StartsWith("% Vel-Tarn output\nmodel(a_model).\n"
                                               "riskTime(a_model, 1000).\n\nperspective(p).\n"
                                               "partOf(p, a_model).\n\n"));
}

TEST_F(VisitorProblogTest, DescriptionsStandAsTheyAre) {
  model->description = "Say \"it\" - X.";
  perspective->description = "Y";
  pump->description = "Z: 1";
  const std::string text = Written();
  // The model's has no blank behind the comma.
  EXPECT_THAT(text, HasSubstr("model(a_model).\ndesc(a_model,\"Say \"it\" - X.\").\nriskTime("));
  EXPECT_THAT(text, HasSubstr("partOf(p, a_model).\ndesc(p, \"Y\").\n\n"));
  EXPECT_THAT(text, HasSubstr("partOf(p__Pump, p).\ndesc(p__Pump, \"Z: 1\").\n\n"));
}

TEST_F(VisitorProblogTest, ComponentIsCommentedWithItsOwnName) {
  EXPECT_THAT(Written(), HasSubstr("% Component: P::Pump\ncomponent(p__Pump).\n"
                                   "partOf(p__Pump, p).\n\nport(p__Pump_in).\n"
                                   "partOf(p__Pump_in, p__Pump).\n\nport(p__Pump_out).\n"
                                   "partOf(p__Pump_out, p__Pump).\n\n"
                                   "% End of component: P::Pump\n\n\n"));
}

TEST_F(VisitorProblogTest, InheritedRiskTimeIsNotToldAgain) {
  EXPECT_THAT(Written(), Not(HasSubstr("riskTime(p__Pump")));
  pump->riskTime = 2.5e-07;
  EXPECT_THAT(Written(), HasSubstr("riskTime(p__Pump, 2.5e-07).\n"));
}

TEST_F(VisitorProblogTest, LineWithoutNameIsPassedOver) {
  const auto line = std::make_shared<Line>("", system, model.get());
  line->description = "told by nobody";
  system->AddLine(line);
  EXPECT_THAT(Written(), Not(HasSubstr("line(")));
  EXPECT_THAT(Written(), Not(HasSubstr("told by nobody")));
}

TEST_F(VisitorProblogTest, ComponentWithoutCurrentImplementationEndsTheWalk) {
  pump->currentImplementation = nullptr;
  EXPECT_EQ(ThrownMessage([&] { Written(); }),
            "No current implementation found for component: P::Pump");
}

// Gates in the body of a rule

TEST_F(VisitorProblogTest, GatesAreWrittenBetweenTheirInputs) {
  EXPECT_EQ(BodyOf("AND(A, B, C)"),
            "basicEvent(null, a) & basicEvent(null, b) & basicEvent(null, c)");
  EXPECT_EQ(BodyOf("OR(A, B)"), "basicEvent(null, a) | basicEvent(null, b)");
  EXPECT_EQ(BodyOf("NOT(A)"), "!basicEvent(null, a)");
}

TEST_F(VisitorProblogTest, GateInAGateHasNoBrackets) {
  EXPECT_EQ(BodyOf("AND(A, OR(B, NOT(C)))"),
            "basicEvent(null, a) & basicEvent(null, b) | !basicEvent(null, c)");
  EXPECT_EQ(BodyOf("NOT(OR(A, B))"), "!basicEvent(null, a) | basicEvent(null, b)");
}

TEST_F(VisitorProblogTest, NegationHasOneInputThatCounts) {
  const auto gate = std::make_shared<NotGate>("", model.get());
  gate->AddChild(Tree("A", model.get()));
  gate->AddChild(Tree("B", model.get()));  // A negation keeps one.
  EXPECT_EQ(BodyOf(gate), "!basicEvent(null, b)");
}

TEST_F(VisitorProblogTest, OtherGatesHaveNoOperator) {
  // Refused by whoever reads it, which is better than a gate taken for another.
  EXPECT_EQ(BodyOf("PAND(A, B)"), "basicEvent(null, a)basicEvent(null, b)");
}

TEST_F(VisitorProblogTest, GateWithOneInputIsItsInput) {
  EXPECT_EQ(BodyOf("AND(OR(PROXY(A)))"), "basicEvent(null, a)");
}

TEST_F(VisitorProblogTest, LogicOfNothingIsNull) {
  EXPECT_EQ(BodyOf("OR()"), "null");
  EXPECT_EQ(BodyOf("NOT()"), "null");
  EXPECT_EQ(BodyOf(FaultTreeNode::Pointer()), "null");
}

TEST_F(VisitorProblogTest, LoopInLogicEndsTheWalk) {
  const ScopedGraph loop(Tree("T=OR(A, AND(B, T))", model.get()));
  EXPECT_EQ(BodyOf(loop.Get()), "basicEvent(null, a) | basicEvent(null, b)");
}

// Leaves in the body of a rule

TEST_F(VisitorProblogTest, EventsInARuleAreNamedByOwnerAndName) {
  EXPECT_EQ(BodyOf(Owned(std::make_shared<BasicEvent>("Seal.1", model.get(), true))),
            "basicEvent(p__Pump, seal_1)");
  EXPECT_EQ(BodyOf(Owned(std::make_shared<NormalEvent>("Demand", model.get(), true))),
            "normalEvent(p__Pump, demand)");
  EXPECT_EQ(BodyOf(std::make_shared<NormalEvent>("Demand", model.get(), true)),
            "normalEvent(demand, null)");
  EXPECT_EQ(BodyOf(std::make_shared<CCF>("Fire", model.get(), perspective, true)),
            "ccf(null, fire)");
  const auto gate = Tree("G=OR(A)", model.get());
  EXPECT_EQ(BodyOf(std::make_shared<CircleNode>(*gate, model.get())), "circleEvent(cIRCLE_TO_G)");
}

TEST_F(VisitorProblogTest, PotentialCommonCauseIsTheActualOneOrNothing) {
  const auto ccf = std::make_shared<CCF>("Fire", model.get(), perspective, true);
  const auto active = std::make_shared<PCCFProxy>("burnt", model.get());
  active->Activate(ccf);
  const auto idle = std::make_shared<PCCFProxy>("idle", model.get());
  const auto gate = Tree("AND(A)", model.get());
  gate->AddChild(idle);
  gate->AddChild(active);
  EXPECT_EQ(BodyOf(gate), "basicEvent(null, a) & ccf(null, fire)");
  EXPECT_EQ(BodyOf(idle), "null");
}

TEST_F(VisitorProblogTest, DeviationsAreNamedByClassAndFullPort) {
  EXPECT_EQ(BodyOf("OUT(A)"), "deviation(, )");  // A proxy without a proper name.
  EXPECT_EQ(BodyOf("Omission-Pump.out=OUT()"), "deviation(omission, p__Pump_out)");
  EXPECT_EQ(BodyOf("Omission-P::Pump.out=OUT()"), "deviation(omission, p__Pump_out)");
  EXPECT_EQ(BodyOf("Late-Nobody.out=OUT()"), "deviation(late, nobody_out)");
  EXPECT_EQ(BodyOf("Late-X::Pump.out=OUT()"), "deviation(late, x__Pump_out)");
  EXPECT_EQ(BodyOf("a-b-c=IN()"), "deviation(a, b_c)");
}

TEST_F(VisitorProblogTest, DeviationInARuleIsNotFollowed) {
  EXPECT_EQ(BodyOf("OR(Late-Pump.in=IN(A), Late-Pump.out=OUT(B), Late-power=EXPORTED(C))"),
            "deviation(late, p__Pump_in) | deviation(late, p__Pump_out) | "
            "exportedPropagation(late, power)");
}

TEST_F(VisitorProblogTest, InputDeviationByMessageIsNamedByItsPort) {
  pump->inputMessages["Msg"] = {pump->FindPort("in")};
  const auto record = std::make_shared<InputDeviation>(pump, "Late", "Msg");
  const auto proxy = std::make_shared<InputDeviationProxy>(record, model.get(), -1);
  EXPECT_EQ(proxy->name, "Late-P::Pump.in:Msg");
  EXPECT_EQ(BodyOf(proxy), "deviation(late, p__Pump_in)");
}

TEST_F(VisitorProblogTest, ExportedDeviationIsThatOfTheHost) {
  const auto host = AddComponent("Cpu", {});
  const auto exported = std::make_shared<ExportedDeviation>(host, "Late", "service");
  host->GetCurrentImplementation().AddExportedDeviation(exported, DefaultState);
  pump->currentAllocation = "P::Cpu";
  const auto known = std::make_shared<ExportedDeviationProxy>("Late-service", model.get(), pump);
  EXPECT_EQ(BodyOf(known), "exportedPropagation(late, p__Cpu_service)");
  const auto unknown = std::make_shared<ExportedDeviationProxy>("-power", model.get(), pump);
  EXPECT_EQ(BodyOf(unknown), "exportedPropagation(none, power)");
  pump->currentAllocation = "Nowhere::Cpu";
  EXPECT_EQ(BodyOf(known), "exportedPropagation(late, service)");
}

TEST_F(VisitorProblogTest, ExportWithoutClassHasTheSameNameInHeadAndBody) {
  const auto host = AddComponent("Cpu", {});
  const auto exported = std::make_shared<ExportedDeviation>(host, "", "service");
  exported->AddCause(std::make_unique<Cause>("", model.get(), 1.0, Tree("A", model.get())),
                     model.get());
  host->GetCurrentImplementation().AddExportedDeviation(exported, DefaultState);
  pump->currentAllocation = "Cpu";
  const auto proxy = std::make_shared<ExportedDeviationProxy>("-service", model.get(), pump);
  EXPECT_THAT(
      Written(),
      HasSubstr("1::exportedPropagation(none, p__Cpu_service) :- basicEvent(null, a).\n\n"));
  EXPECT_EQ(BodyOf(proxy), "exportedPropagation(none, p__Cpu_service)");
}

TEST_F(VisitorProblogTest, UnconnectedDeviationsLoseTheirMark) {
  const auto output =
      std::make_shared<OutputDeviationNode>("Late-Pump.out (UNCONNECTED)", model.get());
  EXPECT_EQ(BodyOf(output), "deviation(late, p__Pump_out)");
  const auto exported =
      std::make_shared<ExportedDeviationNode>("Late-power (UNCONNECTED)", model.get());
  EXPECT_EQ(BodyOf(exported), "exportedPropagation(late, power)");
  const auto record = std::make_shared<InputDeviation>(pump, "Late", "in");
  EXPECT_EQ(BodyOf(record->GetEventNode()), "deviation(late, p__Pump_in)");
}

TEST_F(VisitorProblogTest, GotoWithoutLogicIsItsTargetAndABlank) {
  const auto go = [&](const std::string& target) {
    return BodyOf(std::make_shared<GotoNode>(target, model.get(), pump));
  };
  EXPECT_EQ(go("Late-Pump.out"), "deviation(late, p__Pump_out) ");
  EXPECT_EQ(go("Late-Nobody.out"), "deviation(late, nobody_out) ");
  const auto labelled = std::make_shared<OutputDeviation>(pump, "Omission", "out");
  model->gotoTargets["NoFlow"] = labelled;
  EXPECT_EQ(go("NoFlow"), "deviation(omission, p__Pump_out) ");
  model->gotoTargets["Late-P::Pump.service"] =
      std::make_shared<ExportedDeviation>(pump, "Late", "service");
  EXPECT_EQ(go("Late-Pump.service"), "exportedPropagation(late, p__Pump_service) ");
}

TEST_F(VisitorProblogTest, GotoWithLogicIsThatLogic) {
  EXPECT_EQ(BodyOf("Late-Pump.out=GOTO(OR(A, B))"), "basicEvent(null, a) | basicEvent(null, b)");
}

// Rules

TEST_F(VisitorProblogTest, InputDeviationWithoutLineIsNullAndNothingBehindIt) {
  pump->GetCurrentImplementation().AddInputDeviation(
      std::make_shared<InputDeviation>(pump, "K", "in"));
  EXPECT_THAT(Written(), HasSubstr("\n\ndeviation(k, p__Pump_in) :- null.\n\n% End of"));
}

TEST_F(VisitorProblogTest, CausesAreRulesWithTheirProbabilities) {
  const auto deviation = std::make_shared<OutputDeviation>(pump, "Late", "out");
  deviation->severity = 3.5;
  for (const double probability : {0.25, 1e-07}) {
    deviation->AddCause(
        std::make_unique<Cause>("", model.get(), probability, Tree("A", model.get())), model.get());
  }
  pump->GetCurrentImplementation().AddOutputDeviation(deviation, DefaultState);
  EXPECT_THAT(Written(),
              HasSubstr("\n\n0.25::deviation(late, p__Pump_out) :- basicEvent(null, a).\n\n"
                        "1e-07::deviation(late, p__Pump_out) :- basicEvent(null, a).\n\n"
                        "1.0::deviation(late, p__Pump_out) :- "
                        "basicEvent(null, a) | basicEvent(null, a).\n"
                        "severity(late, p__Pump_out, 3.5).\n\n% End of"));
}

TEST_F(VisitorProblogTest, OutputDeviationWithoutLogicIsNull) {
  pump->GetCurrentImplementation().AddOutputDeviation(
      std::make_shared<OutputDeviation>(pump, "Late", "out"), DefaultState);
  EXPECT_THAT(Written(), HasSubstr("1.0::deviation(late, p__Pump_out) :- null.\nseverity("));
}

TEST_F(VisitorProblogTest, HazardWithoutCauseHasItsSeverity) {
  const auto hazard = std::make_shared<Hazard>("No Water", model.get());
  hazard->severity = 9.0;
  model->AddHazard(hazard);
  EXPECT_THAT(Written(), ::testing::EndsWith("\n\n\nseverity(no_Water, 9).\n\n"));
}

TEST_F(VisitorProblogTest, LogicOfOtherStatesIsLeftOut) {
  const auto deviation = std::make_shared<OutputDeviation>(pump, "Late", "out");
  pump->GetCurrentImplementation().AddOutputDeviation(deviation, "idle");
  EXPECT_THAT(Written(), Not(HasSubstr("deviation(")));
}

// Events as facts

TEST_F(VisitorProblogTest, EventsWithoutFormulaAreOneLineAndABlankOne) {
  const auto normal = Owned(std::make_shared<NormalEvent>("Demand", model.get(), true));
  normal->unavailability = 0.5;
  EXPECT_EQ(BlockOf(normal), "0.5::normalEvent(p__Pump, demand).\n\n");
  const auto ccf = std::make_shared<CCF>("Fire", model.get(), perspective, true);
  ccf->unavailability = 1e-05;
  EXPECT_EQ(BlockOf(ccf), "1e-05::ccf(null, fire).\n\n");
  const auto gate = Tree("G=OR(A)", model.get());
  EXPECT_EQ(BlockOf(std::make_shared<CircleNode>(*gate, model.get())),
            "0::circleEvent(cIRCLE_TO_G).\n\n");
  EXPECT_EQ(
      BlockOf(std::make_shared<OutputDeviationNode>("Late-Pump.out (UNCONNECTED)", model.get())),
      "0::deviation(late, p__Pump_out).\n\n");
  EXPECT_EQ(BlockOf(std::make_shared<ExportedDeviationNode>("-power (UNCONNECTED)", model.get())),
            "0::exportedPropagation(none, power).\n\n");
}

TEST_F(VisitorProblogTest, EventWithoutOwnerBelongsToNull) {
  EXPECT_EQ(BlockOf(std::make_shared<BasicEvent>("A", model.get(), true)),
            "0::basicEvent(null, a).\nunavailabilityFormula(null, a, none).\n\n");
}

TEST_F(VisitorProblogTest, MissingParameterIsMinusOne) {
  const auto event = Owned(std::make_shared<BasicEvent>("A", model.get(), true));
  event->failureModel = FailureModel::CONSTANT;
  event->SetParameter("FailureRate", 2e-06);
  EXPECT_EQ(BlockOf(event),
            "0::basicEvent(p__Pump, a).\n"
            "unavailabilityFormula(p__Pump, a, constant, 2e-06, -1).\n\n");
}

struct FormulaCase {
  FailureModel model;
  const char* name;
  const char* text;
};

void PrintTo(const FormulaCase& row, std::ostream* stream) { *stream << row.name; }

class ProblogFormulaTest : public VisitorProblogTest,
                           public ::testing::WithParamInterface<FormulaCase> {};

TEST_P(ProblogFormulaTest, HasItsWordAndParameters) {
  const auto event = Owned(std::make_shared<BasicEvent>("A", model.get(), true));
  event->failureModel = GetParam().model;
  int value = 10;
  for (const char* parameter : {"FailureRate", "RepairRate", "MTTR", "MTTF", "Unavailability", "n",
                                "m", "s", "InspectionTime", "Scale1", "Scale2", "Scale3", "Slope1",
                                "Slope2", "Slope3", "Interval1", "Interval2", "Percentage"}) {
    event->SetParameter(parameter, ++value);
  }
  EXPECT_EQ(BlockOf(event), "0::basicEvent(p__Pump, a).\nunavailabilityFormula(p__Pump, a, " +
                                std::string(GetParam().text) + ").\n\n");
}

INSTANTIATE_TEST_SUITE_P(
    Models, ProblogFormulaTest,
    ::testing::Values(FormulaCase{FailureModel::CONSTANT, "Constant", "constant, 11, 12"},
                      FormulaCase{FailureModel::MTTR, "Mttr", "mttf, 11, 13"},
                      FormulaCase{FailureModel::MTTF, "Mttf", "mttf, 14, 12"},
                      FormulaCase{FailureModel::MTTFMTTR, "MttfMttr", "mttfmttr, 14, 13"},
                      FormulaCase{FailureModel::FIXED, "Fixed", "fixed, 15"},
                      FormulaCase{FailureModel::TIME, "Time", "time"},
                      FormulaCase{FailureModel::BINOMIAL, "Binomial", "binomial, 11, 12, 16, 17"},
                      FormulaCase{FailureModel::POISSON, "Poisson", "poisson, 11, 16, 18"},
                      FormulaCase{FailureModel::DORMANT, "Dormant", "dormant, 11, 13, 19"},
                      FormulaCase{FailureModel::SEQUENTIAL, "Sequential", "sequential"},
                      FormulaCase{FailureModel::VARIABLE, "Variable",
                                  "variable, 20, 21, 22, 23, 1, 25, 26, 27"},
                      FormulaCase{FailureModel::DISTRIBUTION, "Distribution", "distribution, 28"},
                      FormulaCase{FailureModel::NONE, "None", "none"}),
    CaseName);

}  // namespace
}  // namespace FTS
