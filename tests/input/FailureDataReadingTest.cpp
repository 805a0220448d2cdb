// Events, common causes, deviations and diagnostic coverages of an implementation.

#include <gmock/gmock.h>

#include <string>

#include "faulttree/BasicEvent.h"
#include "faulttree/CommonCauseNodes.h"
#include "faulttree/DeviationProxies.h"
#include "input/ModelTextTest.h"
#include "model/CCF.h"
#include "support/CaseName.h"

namespace FTS {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;
using ::testing::SizeIs;

class FailureDataReadingTest : public ModelTextTest {
 protected:
  /// Failure data with the events A, B and C and further content.
  void ReadWithEvents(const std::string& content) {
    ReadFailureData(
        "<BasicEvents><BasicEvent><Name>A</Name></BasicEvent><BasicEvent><Name>B</Name>"
        "</BasicEvent><BasicEvent><Name>C</Name></BasicEvent></BasicEvents>" +
        content);
  }

  /// Output deviation "Omission-out" with that content, behind the events.
  void ReadDeviation(const std::string& content) {
    ReadWithEvents(
        Tag("OutputDeviations", Tag("OutputDeviation", "<Name>Omission-out</Name>" + content)));
  }

  std::shared_ptr<OutputDeviation> Deviation(const std::string& state = "default") {
    return Built().GetOutputDeviation("Omission-out", state);
  }

  /// Shares of the component's failure rate, one event each.
  static std::string Shares(const std::vector<std::string>& percentages) {
    std::string events;
    for (const std::string& percentage : percentages) {
      events += Tag("BasicEvent",
                    Tag("Name", "E" + percentage) +
                        Tag("UnavailabilityFormula",
                            Tag("ISO26262DetectabilityAnalysis", Tag("Percentage", percentage))));
    }
    return Tag("BasicEvents", events);
  }

  /// A model with the hazards Fire and Flood in which Pump uses Omission-in.
  void ReadCoverages(const std::string& coverages) {
    Read(
        "<Hazards><Hazard><Name>Fire</Name></Hazard><Hazard><Name>Flood</Name></Hazard></Hazards>"
        "<System><Components><Component>" +
        std::string(PumpHead) +
        "<Implementations><Current><Name>built</Name><FailureData><OutputDeviations>"
        "<OutputDeviation><Name>Omission-out</Name><FailureExpression>Omission-in"
        "</FailureExpression></OutputDeviation></OutputDeviations>" +
        Tag("DiagnosticCoverages", Tag("DiagnosticCoverage", "<Name>Guard</Name>" + coverages)) +
        "</FailureData></Current></Implementations></Component></Components></System>");
  }

  static std::string Goal(const std::string& hazard, const std::string& percentage,
                          const std::string& deviations) {
    return Tag("SafetyGoalCoverage", Tag("Name", hazard) + Tag("Percentage", percentage) +
                                         Tag("InputDeviations", deviations));
  }
};

// Events.

TEST_F(FailureDataReadingTest, BasicEventHasItsFields) {
  ReadFailureData(
      "<BasicEvents><BasicEvent><Name>stuck</Name><Description>Seized</Description>"
      "<UnavailabilityFormula><Fixed><Unavailability>0.5</Unavailability></Fixed>"
      "</UnavailabilityFormula></BasicEvent></BasicEvents>");
  const BasicEvent& stuck = *Built().basicEvents.at("stuck");
  EXPECT_EQ(stuck.description, "Seized");
  EXPECT_EQ(stuck.type, NodeType::FailureMode);
  EXPECT_EQ(stuck.failureModel, FailureModel::FIXED);
  EXPECT_EQ(stuck.GetUnavailability(), 0.5);
  EXPECT_EQ(stuck.prime, 3.0);
  EXPECT_EQ(stuck.owner.lock().get(), &Pump());
}

TEST_F(FailureDataReadingTest, NormalEventIsAnEventOfItsOwnKind) {
  ReadFailureData("<NormalEvents><NormalEvent><Name>demand</Name></NormalEvent></NormalEvents>");
  EXPECT_EQ(Built().basicEvents.at("demand")->type, NodeType::Normal);
}

TEST_F(FailureDataReadingTest, EventsTakePrimesInTheOrderOfTheFile) {
  ReadWithEvents("<NormalEvents><NormalEvent><Name>N</Name></NormalEvent></NormalEvents>");
  EXPECT_EQ(Built().basicEvents.at("A")->prime, 3.0);
  EXPECT_EQ(Built().basicEvents.at("B")->prime, 5.0);
  EXPECT_EQ(Built().basicEvents.at("C")->prime, 7.0);
  EXPECT_EQ(Built().basicEvents.at("N")->prime, 11.0);
}

TEST_F(FailureDataReadingTest, FiguresAreNotComputedWithoutQuantification) {
  Config::Instance().quantitativeAnalysis = false;
  ReadFailureData(
      "<BasicEvents><BasicEvent><Name>stuck</Name><UnavailabilityFormula><Fixed>"
      "<Unavailability>0.5</Unavailability></Fixed></UnavailabilityFormula></BasicEvent>"
      "</BasicEvents>");
  EXPECT_EQ(Built().basicEvents.at("stuck")->GetUnavailability(), 0.0);
  EXPECT_EQ(Built().basicEvents.at("stuck")->GetParameter("Unavailability"), 0.5);
}

TEST_F(FailureDataReadingTest, SecondEventOfANameIsIgnored) {
  ReadFailureData(
      "<BasicEvents><BasicEvent><Name>stuck</Name><Description>first</Description></BasicEvent>"
      "<BasicEvent><Name>stuck</Name><Description>second</Description><UnavailabilityFormula>"
      "<Fixed><Unavailability>0.5</Unavailability></Fixed></UnavailabilityFormula></BasicEvent>"
      "</BasicEvents><NormalEvents><NormalEvent><Name>stuck</Name></NormalEvent></NormalEvents>");
  const BasicEvent& stuck = *Built().basicEvents.at("stuck");
  EXPECT_EQ(stuck.description, "first");
  EXPECT_EQ(stuck.type, NodeType::FailureMode);
  EXPECT_EQ(stuck.failureModel, FailureModel::NONE);
  EXPECT_EQ(Prime::Instance().Next(), 5.0);
}

struct FormulaCase {
  const char* name;
  FailureModel failureModel;
};

class FormulaTest : public FailureDataReadingTest,
                    public ::testing::WithParamInterface<FormulaCase> {};

TEST_P(FormulaTest, IsNamedByTheFirstElement) {
  Config::Instance().quantitativeAnalysis = false;
  ReadFailureData(Tag(
      "BasicEvents",
      Tag("BasicEvent", "<Name>E</Name>" + Tag("UnavailabilityFormula",
                                               Tag(GetParam().name, "<a>1.5</a><b/><c>x</c>")))));
  const BasicEvent& event = *Built().basicEvents.at("E");
  EXPECT_EQ(event.failureModel, GetParam().failureModel);
  EXPECT_THAT(event.parameters, ElementsAre(Pair("a", 1.5), Pair("b", 0.0), Pair("c", 0.0)));
}

INSTANTIATE_TEST_SUITE_P(
    Elements, FormulaTest,
    ::testing::Values(
        FormulaCase{"Constant", FailureModel::CONSTANT}, FormulaCase{"MTTR", FailureModel::MTTR},
        FormulaCase{"MTTF", FailureModel::MTTF}, FormulaCase{"MTTFMTTR", FailureModel::MTTFMTTR},
        FormulaCase{"Fixed", FailureModel::FIXED}, FormulaCase{"Binomial", FailureModel::BINOMIAL},
        FormulaCase{"Poisson", FailureModel::POISSON},
        FormulaCase{"Dormant", FailureModel::DORMANT},
        FormulaCase{"Variable", FailureModel::VARIABLE},
        FormulaCase{"ISO26262DetectabilityAnalysis", FailureModel::DISTRIBUTION},
        FormulaCase{"None", FailureModel::NONE}, FormulaCase{"Time", FailureModel::NONE},
        FormulaCase{"Sequential", FailureModel::NONE}),
    CaseName);

TEST_F(FailureDataReadingTest, EventWithoutFormulaHasNoModel) {
  ReadFailureData(
      "<BasicEvents><BasicEvent><Name>E</Name><UnavailabilityFormula/></BasicEvent>"
      "</BasicEvents>");
  EXPECT_EQ(Built().basicEvents.at("E")->failureModel, FailureModel::NONE);
}

// Failure rate and distribution.

TEST_F(FailureDataReadingTest, FailureRateIsThatOfTheImplementation) {
  ReadPump(
      "<Implementations><Current><Name>a</Name><FailureData><ComponentFailureRate>1e-6"
      "</ComponentFailureRate></FailureData></Current><Alternatives><Alternative>"
      "<Name>b</Name><FailureData><ComponentFailureRate>4e-6</ComponentFailureRate>" +
      Shares({"100"}) + "</FailureData></Alternative></Alternatives></Implementations>");
  EXPECT_EQ(Pump().implementations[0]->failureRate, 1e-6);
  EXPECT_EQ(Pump().implementations[1]->failureRate, 4e-6);
  EXPECT_EQ(Pump().implementations[1]->basicEvents.at("E100")->GetUnavailability(), 4e-6);
}

TEST_F(FailureDataReadingTest, FullDistributionGivesNoWarning) {
  ReadFailureData(Shares({"60", "40"}));
  EXPECT_THAT(Warnings(), IsEmpty());
}

TEST_F(FailureDataReadingTest, IncompleteDistributionIsAWarningWithItsTotal) {
  ReadFailureData(Shares({"60", "39.5"}));
  EXPECT_THAT(Warnings(), ElementsAre("Total failure distribution for component: DEFAULT::Pump is "
                                      "99.5% (should be 100%)"));
  EXPECT_THAT(Errors(), IsEmpty());
}

TEST_F(FailureDataReadingTest, RepeatedEventCountsOnceInTheDistribution) {
  ReadFailureData(Shares({"60", "40", "40"}));
  EXPECT_THAT(Warnings(), IsEmpty());
}

TEST_F(FailureDataReadingTest, OtherModelsAreNoDistribution) {
  ReadWithEvents("");
  EXPECT_THAT(Warnings(), IsEmpty());
}

TEST_F(FailureDataReadingTest, NormalEventsAreNoPartOfTheDistribution) {
  ReadFailureData(Shares({"100"}) +
                  "<NormalEvents><NormalEvent><Name>N</Name><UnavailabilityFormula>"
                  "<ISO26262DetectabilityAnalysis><Percentage>5</Percentage>"
                  "</ISO26262DetectabilityAnalysis></UnavailabilityFormula></NormalEvent>"
                  "</NormalEvents>");
  EXPECT_THAT(Warnings(), IsEmpty());
}

// Potential common causes.

TEST_F(FailureDataReadingTest, PotentialCommonCauseLeadsToTheActualOne) {
  Read("<ActualCCFs><ActualCCF><Name>fire</Name></ActualCCF></ActualCCFs><System><Components>" +
       Tag("Component",
           std::string(PumpHead) +
               "<Implementations><Current><Name>built</Name><FailureData><PotentialCCFs>"
               "<PotentialCCF><Name>burnt</Name><ACCF>fire</ACCF><Description>Cables</Description>"
               "</PotentialCCF></PotentialCCFs></FailureData></Current></Implementations>") +
       "</Components></System>");
  const PCCFProxy& burnt = *Built().ccfNodes.at("burnt");
  EXPECT_EQ(burnt.actual, model->perspectives.at("DEFAULT")->FindCCF("fire"));
  EXPECT_EQ(LogicText(Built().ccfNodes.at("burnt")), "PCCF'burnt'(ACCF'fire')");
  EXPECT_EQ(burnt.description, "Cables");
  EXPECT_EQ(burnt.owner.lock().get(), &Pump());
  EXPECT_THAT(Errors(), IsEmpty());
}

TEST_F(FailureDataReadingTest, PotentialCommonCauseWithoutActualOneIsAnErrorAndKept) {
  ReadFailureData(
      "\n<PotentialCCFs>\n<PotentialCCF><Name>burnt</Name><ACCF>fire</ACCF>"
      "</PotentialCCF></PotentialCCFs>");
  EXPECT_EQ(LogicText(Built().ccfNodes.at("burnt")), "PCCF'burnt'");
  EXPECT_THAT(Errors(), ElementsAre("Actual CCF not found for Potential CCF: burnt "
                                    "[line number: 3]"));
}

// Output deviations.

TEST_F(FailureDataReadingTest, OutputDeviationHasItsFields) {
  ReadDeviation(
      "<Description>No flow</Description><Severity>4.5</Severity>"
      "<SystemOutport>true</SystemOutport><FailureExpression>A + B</FailureExpression>");
  ASSERT_NE(Deviation(), nullptr);
  EXPECT_EQ(Deviation()->description, "No flow");
  EXPECT_EQ(Deviation()->severity, 4.5);
  EXPECT_TRUE(Deviation()->IsSystemOutput());
  EXPECT_EQ(Deviation()->failureClass, "Omission");
  EXPECT_EQ(Deviation()->GetPort(), Pump().FindPort("out"));
  EXPECT_EQ(Deviation()->GetFullName(), "Omission-DEFAULT::Pump.out");
  EXPECT_THAT(model->failureClasses, ElementsAre("Omission"));
}

TEST_F(FailureDataReadingTest, ExpressionIsACertainCauseNamedByItsText) {
  ReadDeviation("<FailureExpression> A + B </FailureExpression>");
  ASSERT_THAT(Deviation()->causes, SizeIs(1));
  EXPECT_EQ(Deviation()->causes[0]->name, "A + B");
  EXPECT_EQ(Deviation()->causes[0]->probability, 1.0);
  EXPECT_EQ(LogicText(Deviation()->causes[0]->expression),
            "Or'OR [Omission-out]'(FailureMode'A', FailureMode'B')");
  EXPECT_EQ(LogicText(Deviation()->expression),
            "Or'Omission-DEFAULT::Pump.out'(FailureMode'A', FailureMode'B')");
}

TEST_F(FailureDataReadingTest, EmptyExpressionGivesADeviationWithoutLogic) {
  ReadDeviation("<FailureExpression/>");
  ASSERT_NE(Deviation(), nullptr);
  EXPECT_EQ(Deviation()->expression, nullptr);
  EXPECT_THAT(Deviation()->causes, IsEmpty());
}

TEST_F(FailureDataReadingTest, OnlyTheLastPartOfThePortCounts) {
  ReadWithEvents(
      "<OutputDeviations><OutputDeviation><Name>Omission-Plant.Pump.out</Name>"
      "<FailureExpression>A * B</FailureExpression></OutputDeviation>"
      "</OutputDeviations>");
  ASSERT_NE(Deviation(), nullptr);
  EXPECT_EQ(Deviation()->causes[0]->expression->name, "AND [Omission-Plant.Pump.out]");
}

TEST_F(FailureDataReadingTest, NameIsSplitAtItsFirstHyphen) {
  Read(
      "<System><Components><Component><Name>Pump</Name><Ports><Port><Name>b-c</Name></Port></Ports>"
      "<Implementations><Current><FailureData><OutputDeviations><OutputDeviation>"
      "<Name>a-b-c</Name></OutputDeviation></OutputDeviations></FailureData></Current>"
      "</Implementations></Component></Components></System>");
  EXPECT_NE(Built().GetOutputDeviation("a-b-c", "default"), nullptr);
  EXPECT_THAT(model->failureClasses, ElementsAre("a"));
}

TEST_F(FailureDataReadingTest, NameWithoutHyphenIsAnErrorAndKept) {
  ReadFailureData(
      "\n\n\n<OutputDeviations><OutputDeviation><Name>out</Name></OutputDeviation>"
      "</OutputDeviations>");
  EXPECT_THAT(Errors(), ElementsAre("Output Deviation out has no failure class. "
                                    "[line number: 4]"));
  EXPECT_NE(Built().GetOutputDeviation("out", "default"), nullptr);
  EXPECT_THAT(model->failureClasses, IsEmpty());
}

TEST_F(FailureDataReadingTest, DeviationOfAMissingPortStopsTheReading) {
  EXPECT_EQ(ThrownBy([this] {
              ReadFailureData(
                  "<OutputDeviations><OutputDeviation><Name>Omission-x</Name>"
                  "</OutputDeviation></OutputDeviations>");
            }),
            "Could not find port in component: DEFAULT::Pump with failure subject: x");
}

TEST_F(FailureDataReadingTest, EmptyClassDoesNotHideThatThePortIsMissing) {
  const std::string message =
      "Could not find port in component: DEFAULT::Pump with failure subject: ";
  for (const std::string port : {"x", "", "-", "-x"}) {
    EXPECT_EQ(ThrownBy([&] {
                ReadFailureData("<OutputDeviations><OutputDeviation><Name>-" + port +
                                "</Name></OutputDeviation></OutputDeviations>");
              }),
              message + port);
  }
  EXPECT_THAT(Errors(), IsEmpty());
}

TEST_F(FailureDataReadingTest, ExpressionStartsAtTheLineOfItsDeviation) {
  ReadFailureData(
      "\n\n<OutputDeviations>\n<OutputDeviation><Name>Omission-out</Name>\n"
      "<FailureExpression>Z</FailureExpression></OutputDeviation></OutputDeviations>");
  EXPECT_THAT(Errors(), ElementsAre("Basic event Z is referred to in an output deviation but does "
                                    "not exist in component DEFAULT::Pump [line number : 4]"));
}

TEST_F(FailureDataReadingTest, ExpressionWithAFaultKeepsWhatCouldBeRead) {
  ReadDeviation("<FailureExpression>A * Z</FailureExpression>");
  EXPECT_EQ(StructureText(Deviation()->expression), "Or(And(A))");
  EXPECT_THAT(Errors(), SizeIs(1));
}

// Global labels.

TEST_F(FailureDataReadingTest, GlobalLabelLeadsToTheDeviation) {
  ReadDeviation("<GlobalLabel>NoFlow</GlobalLabel>");
  EXPECT_EQ(model->gotoTargets.at("NoFlow"), Deviation());
}

TEST_F(FailureDataReadingTest, GlobalLabelThatIsTakenIsAnErrorAndStays) {
  ReadFailureData(
      "<OutputDeviations><OutputDeviation><Name>Omission-out</Name>"
      "<GlobalLabel>NoFlow</GlobalLabel></OutputDeviation>\n<OutputDeviation>"
      "<Name>Value-out</Name><GlobalLabel>NoFlow</GlobalLabel></OutputDeviation>"
      "</OutputDeviations>");
  EXPECT_EQ(model->gotoTargets.at("NoFlow"), Deviation());
  EXPECT_THAT(Errors(), ElementsAre("Global label 'NoFlow' for output deviation "
                                    "Value-DEFAULT::Pump.out already exists. Global labels must be "
                                    "unique. [line number: 2]"));
}

// Causes.

TEST_F(FailureDataReadingTest, CausesMakeOneOr) {
  ReadDeviation(
      "<Causes><Cause><Probability>0.5</Probability><FailureLogic>A + B</FailureLogic>"
      "</Cause><Cause><FailureLogic>A * C</FailureLogic></Cause></Causes>");
  EXPECT_EQ(LogicText(Deviation()->expression),
            "Or'Omission-DEFAULT::Pump.out'(FailureMode'A', FailureMode'B', "
            "And'AND [Omission-out]'(FailureMode'A', FailureMode'C'))");
  ASSERT_THAT(Deviation()->causes, SizeIs(2));
  EXPECT_EQ(Deviation()->causes[0]->probability, 0.5);
  EXPECT_EQ(Deviation()->causes[0]->name, "A + B");
  EXPECT_EQ(Deviation()->causes[1]->probability, 1.0);
}

TEST_F(FailureDataReadingTest, CausesWinOverAnExpression) {
  ReadDeviation(
      "<FailureExpression>{s:B}</FailureExpression>"
      "<Causes><Cause><FailureLogic>A</FailureLogic></Cause></Causes>");
  EXPECT_EQ(StructureText(Deviation()->expression), "Or(A)");
  EXPECT_EQ(Deviation("s"), nullptr);
}

TEST_F(FailureDataReadingTest, EmptyCausesGiveADeviationWithoutLogic) {
  ReadDeviation("<FailureExpression>A</FailureExpression><Causes/>");
  ASSERT_NE(Deviation(), nullptr);
  EXPECT_EQ(Deviation()->expression, nullptr);
}

TEST_F(FailureDataReadingTest, CauseWithoutLogicIsPassedBy) {
  ReadDeviation(
      "<Causes><Cause><Probability>1</Probability></Cause><Cause><FailureLogic>A"
      "</FailureLogic></Cause></Causes>");
  EXPECT_THAT(Deviation()->causes, SizeIs(1));
}

TEST_F(FailureDataReadingTest, CauseWithAFaultIsNotAttached) {
  ReadDeviation(
      "<Causes>\n<Cause><FailureLogic>A * Z</FailureLogic></Cause><Cause><FailureLogic>B"
      "</FailureLogic></Cause></Causes>");
  EXPECT_EQ(StructureText(Deviation()->expression), "Or(B)");
  EXPECT_THAT(Errors(), ElementsAre("Basic event Z is referred to in an output deviation but does "
                                    "not exist in component DEFAULT::Pump [line number : 2]"));
}

TEST_F(FailureDataReadingTest, CauseWithAFaultIsNotAttachedInASilentRunEither) {
  Config::Instance().runSilent = true;
  ReadDeviation("<Causes><Cause><FailureLogic>A * Z</FailureLogic></Cause></Causes>");
  EXPECT_EQ(Deviation()->expression, nullptr);
}

// Logic by state.

TEST_F(FailureDataReadingTest, BracesGiveADeviationPerState) {
  ReadDeviation(
      "<Description>No flow</Description><Severity>3</Severity>"
      "<SystemOutport>true</SystemOutport><GlobalLabel>NoFlow</GlobalLabel>"
      "<FailureExpression>{ run : A + B , idle:C}</FailureExpression>");
  EXPECT_EQ(Deviation(), nullptr);
  ASSERT_NE(Deviation("run"), nullptr);
  ASSERT_NE(Deviation("idle"), nullptr);
  EXPECT_EQ(StructureText(Deviation("run")->expression), "Or(A, B)");
  EXPECT_EQ(StructureText(Deviation("idle")->expression), "Or(C)");
  EXPECT_EQ(Deviation("idle")->description, "No flow");
  EXPECT_EQ(Deviation("idle")->severity, 3.0);
  EXPECT_TRUE(Deviation("idle")->IsSystemOutput());
  EXPECT_EQ(Deviation("idle")->causes.at(0)->name, "C");
  EXPECT_EQ(model->gotoTargets.at("NoFlow"), Deviation("run"));
}

TEST_F(FailureDataReadingTest, StateDefaultIsAStateLikeOthers) {
  ReadDeviation("<FailureExpression>{default:A,idle:B}</FailureExpression>");
  EXPECT_EQ(StructureText(Deviation()->expression), "Or(A)");
}

TEST_F(FailureDataReadingTest, PieceWithoutColonIsSkipped) {
  ReadDeviation("<FailureExpression>{A,idle:B,}</FailureExpression>");
  EXPECT_THAT(Built().stateLogic, SizeIs(2));
  EXPECT_NE(Deviation("idle"), nullptr);
  EXPECT_THAT(Errors(), IsEmpty());
}

TEST_F(FailureDataReadingTest, StateWithoutExpressionHasADeviationWithoutLogic) {
  ReadDeviation("<FailureExpression>{idle:}</FailureExpression>");
  ASSERT_NE(Deviation("idle"), nullptr);
  EXPECT_EQ(Deviation("idle")->expression, nullptr);
}

TEST_F(FailureDataReadingTest, SecondColonEndsTheExpressionOfAState) {
  ReadDeviation("<FailureExpression>{idle:A:B}</FailureExpression>");
  EXPECT_EQ(StructureText(Deviation("idle")->expression), "Or(A)");
}

TEST_F(FailureDataReadingTest, FirstClosingBraceEndsTheStates) {
  ReadDeviation("<FailureExpression>{run:A},idle:B}</FailureExpression>");
  EXPECT_NE(Deviation("run"), nullptr);
  EXPECT_EQ(Deviation("idle"), nullptr);
}

TEST_F(FailureDataReadingTest, MissingClosingBraceIsNoFault) {
  ReadDeviation("<FailureExpression>{run:A</FailureExpression>");
  EXPECT_EQ(StructureText(Deviation("run")->expression), "Or(A)");
}

TEST_F(FailureDataReadingTest, EmptyBracesGiveNoDeviation) {
  ReadDeviation("<FailureExpression>{}</FailureExpression>");
  EXPECT_EQ(Deviation(), nullptr);
  EXPECT_THAT(Built().stateLogic, SizeIs(1));
}

// Exported propagations.

TEST_F(FailureDataReadingTest, ExportedPropagationIsKeptByClassAndName) {
  ReadWithEvents(
      "<ExportedPropagations><ExportedPropagation><Name>Omission-Cpu.core</Name>"
      "<Description>Halts</Description><FailureExpression>A * B</FailureExpression>"
      "</ExportedPropagation></ExportedPropagations>");
  const auto deviation = Built().GetExportedDeviation("Omission-Cpu.core", "default");
  ASSERT_NE(deviation, nullptr);
  EXPECT_EQ(deviation->description, "Halts");
  EXPECT_EQ(deviation->GetFullName(), "Omission-DEFAULT::Pump.Cpu.core");
  EXPECT_EQ(LogicText(deviation->expression),
            "Or'Omission-DEFAULT::Pump.Cpu.core'(And'AND [Omission-Cpu.core]'(FailureMode'A', "
            "FailureMode'B'))");
  EXPECT_THAT(model->failureClasses, ElementsAre("Omission"));
}

TEST_F(FailureDataReadingTest, ExportedPropagationMayHaveCauses) {
  ReadWithEvents(
      "<ExportedPropagations><ExportedPropagation><Name>Omission-cpu</Name><Causes>"
      "<Cause><FailureLogic>A</FailureLogic></Cause></Causes></ExportedPropagation>"
      "</ExportedPropagations>");
  EXPECT_EQ(StructureText(Built().GetExportedDeviation("Omission-cpu", "default")->expression),
            "Or(A)");
}

TEST_F(FailureDataReadingTest, ExportedPropagationMayHaveStates) {
  ReadWithEvents(
      "<ExportedPropagations><ExportedPropagation><Name>Omission-cpu</Name>"
      "<Description>Halts</Description><FailureExpression>{run:A,idle:B}"
      "</FailureExpression></ExportedPropagation></ExportedPropagations>");
  EXPECT_EQ(Built().GetExportedDeviation("Omission-cpu", "default"), nullptr);
  EXPECT_EQ(StructureText(Built().GetExportedDeviation("Omission-cpu", "run")->expression),
            "Or(A)");
  EXPECT_EQ(Built().GetExportedDeviation("Omission-cpu", "idle")->description, "Halts");
}

TEST_F(FailureDataReadingTest, ExportedPropagationWithoutHyphenIsAnError) {
  ReadFailureData(
      "<ExportedPropagations><ExportedPropagation><Name>cpu</Name>"
      "</ExportedPropagation></ExportedPropagations>");
  EXPECT_THAT(Errors(), ElementsAre("Output Deviation cpu has no failure class. "
                                    "[line number: 1]"));
}

// Diagnostic coverages.

TEST_F(FailureDataReadingTest, CoverageIsKeptOnTheInputDeviation) {
  ReadCoverages(Tag("SafetyGoalCoverages",
                    Goal("Fire", "90", "Omission-in") + Goal("Flood", "60.5", "Omission-in")));
  EXPECT_THAT(Built().inputDeviationRecords.at("Omission-in")->coverage,
              ElementsAre(Pair("Fire", 90.0), Pair("Flood", 60.5)));
  EXPECT_THAT(Warnings(), IsEmpty());
}

TEST_F(FailureDataReadingTest, CoveredDeviationsAreSeparatedByCommas) {
  ReadCoverages(
      Tag("SafetyGoalCoverages", Goal("Fire", "90", " Omission-in , Omission-Pump.in ,,x")));
  EXPECT_THAT(
      Warnings(),
      ElementsAre("Diagnostic coverage Guard in DEFAULT::Pump is being applied to input deviation "
                  "Omission-Pump.in for hazard Fire which already has a diagnostic coverage; using "
                  "new value.",
                  "Diagnostic coverage Guard in DEFAULT::Pump refers to input deviation x which "
                  "does not exist."));
}

TEST_F(FailureDataReadingTest, CoverageOfAMissingHazardIsAWarning) {
  ReadCoverages(Tag("SafetyGoalCoverages", Goal("Ice", "90", "Omission-in,Omission-x")));
  EXPECT_THAT(Warnings(), ElementsAre("Diagnostic coverage Guard in DEFAULT::Pump refers to hazard "
                                      "Ice which does not exist."));
  EXPECT_THAT(Built().inputDeviationRecords.at("Omission-in")->coverage, IsEmpty());
}

TEST_F(FailureDataReadingTest, SecondCoverageReplacesTheFirst) {
  ReadCoverages(Tag("SafetyGoalCoverages",
                    Goal("Fire", "90", "Omission-in") + Goal("Fire", "70", "Omission-in")));
  EXPECT_THAT(Built().inputDeviationRecords.at("Omission-in")->coverage,
              ElementsAre(Pair("Fire", 70.0)));
  EXPECT_THAT(Warnings(),
              ElementsAre("Diagnostic coverage Guard in DEFAULT::Pump is being applied to input "
                          "deviation Omission-in for hazard Fire which already has a diagnostic "
                          "coverage; using new value."));
}

}  // namespace
}  // namespace FTS
