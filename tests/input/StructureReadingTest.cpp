// The head of a model document, perspectives, components, implementations, lines and states.

#include <gmock/gmock.h>

#include <string>

#include "input/ModelTextTest.h"
#include "model/CCF.h"
#include "model/Hazard.h"
#include "model/Objective.h"
#include "model/StateMachine.h"
#include "support/CaseName.h"

namespace FTS {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class StructureReadingTest : public ModelTextTest {
 protected:
  /// Reads Pump inside the component Plant.
  void ReadNested(const std::string& plantFields, const std::string& pumpFields) {
    Read("<RiskTime>100</RiskTime><System><Components><Component><Name>Plant</Name>" + plantFields +
         "<Implementations><Current><Name>whole</Name><System><Components>" +
         Tag("Component", PumpHead + pumpFields) +
         "</Components></System></Current></Implementations></Component></Components></System>");
  }

  Component& NestedPump() { return ComponentNamed("DEFAULT::Plant.Pump"); }

  /// Reads a line of the top level between Pump.out and Tank.in.
  const Line& ReadLine(const std::string& content) {
    Read("<System><Components>" + Tag("Component", PumpHead) +
         "<Component><Name>Tank</Name><Ports><Port><Name>in</Name></Port></Ports></Component>"
         "</Components><Lines>\n<Line>" +
         content + "</Line></Lines></System>");
    return *model->perspectives.at("DEFAULT")->rootSubsystem->lines.at(0);
  }
};

// The model.

TEST_F(StructureReadingTest, ModelHasItsFields) {
  Read(
      "<Name> Plant\n</Name><Description>Cooling</Description>"
      "<VersionNumber>2.5</VersionNumber><RiskTime>1e4</RiskTime>");
  EXPECT_EQ(model->GetName(), "Plant");
  EXPECT_EQ(model->description, "Cooling");
  EXPECT_EQ(model->versionNumber, 2.5F);
  EXPECT_EQ(model->riskTime, 10000.0);
  EXPECT_EQ(model->GetFileName(), "model.xml");
  EXPECT_EQ(model->mode, 0);
}

TEST_F(StructureReadingTest, TextThatIsNoNumberIsZero) {
  Read("<RiskTime>a while</RiskTime>");
  EXPECT_EQ(model->riskTime, 0.0);
  EXPECT_THAT(Warnings(), IsEmpty());
}

TEST_F(StructureReadingTest, HugeNumbersStayInRange) {
  Read(
      "<VersionNumber>1e300</VersionNumber>"
      "<OptimisationParams><MaxGenerations>-1e300</MaxGenerations></OptimisationParams>");
  EXPECT_EQ(model->versionNumber, std::numeric_limits<float>::max());
  EXPECT_EQ(model->maxGenerations, std::numeric_limits<std::int32_t>::min());
}

TEST_F(StructureReadingTest, FirstOfTwoFieldsCounts) {
  Read("<Name>First</Name><Name>Second</Name>");
  EXPECT_EQ(model->GetName(), "First");
}

TEST_F(StructureReadingTest, OptimisationParametersAreTruncated) {
  Read(
      "<OptimisationParams><MaxGenerations>99.9</MaxGenerations>"
      "<DefaultMaxReplicants>3.7</DefaultMaxReplicants></OptimisationParams>");
  EXPECT_EQ(model->maxGenerations, 99);
  EXPECT_EQ(model->defaultMaxReplicants, 3);
}

TEST_F(StructureReadingTest, ObjectivesAreKeptByName) {
  Read(
      "<OptimisationParams><Objectives>"
      "<Objective><Name>Cost</Name><Goal>Minimise</Goal>"
      "<Bounds><UpperBound>50</UpperBound></Bounds></Objective>"
      "<Objective><Name>Weight</Name><Goal>Maximise</Goal>"
      "<Bounds><LowerBound>1.5</LowerBound></Bounds></Objective>"
      "<Objective><Name>Risk</Name><Goal>maximise</Goal></Objective>"
      "</Objectives></OptimisationParams>");
  ASSERT_THAT(model->objectives, SizeIs(3));
  const Objective& cost = model->objectives.at("Cost");
  EXPECT_FALSE(cost.maximise);
  EXPECT_FALSE(cost.hasLowerBound);
  EXPECT_TRUE(cost.hasUpperBound);
  EXPECT_EQ(cost.upperBound, 50.0);
  const Objective& weight = model->objectives.at("Weight");
  EXPECT_TRUE(weight.maximise);
  EXPECT_TRUE(weight.hasLowerBound);
  EXPECT_EQ(weight.lowerBound, 1.5);
  EXPECT_FALSE(model->objectives.at("Risk").maximise);
}

// Perspectives.

TEST_F(StructureReadingTest, ModelWithoutPerspectivesHasTheDefaultOne) {
  Read("<System><Components><Component><Name>Pump</Name></Component></Components></System>");
  ASSERT_THAT(model->perspectives, SizeIs(1));
  const Perspective& perspective = *model->perspectives.at("DEFAULT");
  EXPECT_TRUE(perspective.defaultGenerated);
  EXPECT_EQ(perspective.description, "");
  EXPECT_TRUE(perspective.rootSubsystem->components.contains("Pump"));
}

TEST_F(StructureReadingTest, PerspectiveHasItsFields) {
  Read(
      "<Perspectives><Perspective><Name>Hardware</Name><Description>Boxes</Description>"
      "<RiskTime>7</RiskTime><System/></Perspective></Perspectives>");
  const Perspective& perspective = *model->perspectives.at("Hardware");
  EXPECT_EQ(perspective.description, "Boxes");
  EXPECT_EQ(perspective.riskTime, 7.0);
  EXPECT_FALSE(perspective.defaultGenerated);
  EXPECT_NE(perspective.rootSubsystem, nullptr);
}

TEST_F(StructureReadingTest, PerspectiveWithoutSystemHasNone) {
  Read("<Perspectives><Perspective><Name>Hardware</Name></Perspective></Perspectives>");
  EXPECT_EQ(model->perspectives.at("Hardware")->rootSubsystem, nullptr);
}

TEST_F(StructureReadingTest, SystemBesidePerspectivesIsNotRead) {
  Read(
      "<Perspectives/><System><Components><Component><Name>Pump</Name></Component></Components>"
      "</System>");
  EXPECT_TRUE(model->perspectives.empty());
  EXPECT_TRUE(model->components.empty());
}

struct GeneratedCase {
  const char* name;
  const char* fields;
  const char* perspective;
  bool generated;
};

class GeneratedPerspectiveTest : public StructureReadingTest,
                                 public ::testing::WithParamInterface<GeneratedCase> {};

TEST_P(GeneratedPerspectiveTest, IsMarked) {
  Read("<Name>Plant</Name>" + Tag("Perspectives", Tag("Perspective", GetParam().fields)));
  EXPECT_EQ(model->perspectives.at(GetParam().perspective)->defaultGenerated, GetParam().generated);
}

INSTANTIATE_TEST_SUITE_P(
    Names, GeneratedPerspectiveTest,
    ::testing::Values(
        GeneratedCase{"NoName", "", "DEFAULT", true},
        GeneratedCase{"EmptyName", "<Name/>", "", false},
        GeneratedCase{"Default", "<Name>Default</Name>", "Default", true},
        GeneratedCase{"SmallDefault", "<Name>default</Name>", "default", false},
        GeneratedCase{"NameOfTheModel", "<Name>Plant</Name>", "Plant", true},
        GeneratedCase{"AutoGen", "<Name>Hw</Name><AutoGen>true</AutoGen>", "Hw", true},
        GeneratedCase{"NoAutoGen", "<Name>Hw</Name><AutoGen>True</AutoGen>", "Hw", false}),
    CaseName);

TEST_F(StructureReadingTest, ComponentsAreNamedByTheirPerspective) {
  Read(
      "<Perspectives><Perspective><Name>Hw</Name><System><Components><Component><Name>Cpu</Name>"
      "</Component></Components></System></Perspective></Perspectives>");
  EXPECT_TRUE(model->components.contains("Hw::Cpu"));
}

// Common causes.

TEST_F(StructureReadingTest, ActualCommonCauseIsAnEventOfThePerspective) {
  Read(
      "<RiskTime>10</RiskTime><ActualCCFs><ActualCCF><Name>fire</Name>"
      "<Description>Cable fire</Description>"
      "<UnavailabilityFormula><Fixed><Unavailability>0.25</Unavailability></Fixed>"
      "</UnavailabilityFormula></ActualCCF></ActualCCFs>");
  const auto fire = model->perspectives.at("DEFAULT")->FindCCF("fire");
  ASSERT_NE(fire, nullptr);
  EXPECT_EQ(fire->description, "Cable fire");
  EXPECT_EQ(fire->failureModel, FailureModel::FIXED);
  EXPECT_EQ(fire->GetParameter("RiskTime"), 10.0);
  EXPECT_EQ(fire->GetUnavailability(), 0.25);
  EXPECT_EQ(fire->prime, 3.0);
  EXPECT_EQ(fire->perspective.lock(), model->perspectives.at("DEFAULT"));
}

TEST_F(StructureReadingTest, ModelsRiskTimeReplacesThatOfTheFormula) {
  Read(
      "<RiskTime>10</RiskTime><ActualCCFs><ActualCCF><Name>fire</Name><UnavailabilityFormula>"
      "<Constant><RiskTime>99</RiskTime></Constant></UnavailabilityFormula></ActualCCF>"
      "</ActualCCFs>");
  EXPECT_EQ(model->perspectives.at("DEFAULT")->FindCCF("fire")->GetParameter("RiskTime"), 10.0);
}

// Components.

TEST_F(StructureReadingTest, ComponentHasItsFields) {
  ReadPump(
      "<Description>Feed pump</Description><SID>42:1</SID>"
      "<MaxReplicants>2.9</MaxReplicants><IncludeInOptimisation>true</IncludeInOptimisation>");
  EXPECT_EQ(Pump().description, "Feed pump");
  EXPECT_EQ(Pump().sid, "42:1");
  EXPECT_EQ(Pump().maxReplicants, 2);
  EXPECT_TRUE(Pump().includeInOptimisation);
  EXPECT_TRUE(Pump().ports.contains("in"));
  EXPECT_TRUE(Pump().ports.contains("out"));
  EXPECT_EQ(Pump().currentImplementation, nullptr);
}

TEST_F(StructureReadingTest, OnlyTheExactWordTrueIsTrue) {
  ReadPump("<IncludeInOptimisation>TRUE</IncludeInOptimisation>");
  EXPECT_FALSE(Pump().includeInOptimisation);
}

TEST_F(StructureReadingTest, ReplicantsDefaultToTheModels) {
  Read(
      "<OptimisationParams><DefaultMaxReplicants>4</DefaultMaxReplicants></OptimisationParams>"
      "<System><Components>" +
      Tag("Component", PumpHead) + "</Components></System>");
  EXPECT_EQ(Pump().maxReplicants, 4);
}

TEST_F(StructureReadingTest, EverySiblingBehindTheFirstItemIsAnItem) {
  Read(
      "<System><Components><Note>skipped</Note><!-- passed --><Component><Name>Pump</Name>"
      "</Component><Misspelt><Name>Tank</Name></Misspelt><!-- passed --><Empty/></Components>"
      "</System>");
  EXPECT_EQ(model->components.size(), 3U);
  EXPECT_TRUE(model->components.contains("DEFAULT::Pump"));
  EXPECT_TRUE(model->components.contains("DEFAULT::Tank"));
  EXPECT_TRUE(model->components.contains("DEFAULT::"));
}

TEST_F(StructureReadingTest, AllocationsAreTheCurrentOneAndTheAlternatives) {
  ReadPump(
      "<Allocations><Current> Hw::A </Current><Alternatives><Alternative>Hw::B</Alternative>"
      "<Alternative>nowhere</Alternative></Alternatives></Allocations>");
  EXPECT_EQ(Pump().currentAllocation, "Hw::A");
  EXPECT_THAT(Pump().allocations, ElementsAre("Hw::A", "Hw::B", "nowhere"));
}

TEST_F(StructureReadingTest, ComponentWithoutAllocationsHasNone) {
  ReadPump("");
  EXPECT_THAT(Pump().allocations, IsEmpty());
}

// Risk time.

TEST_F(StructureReadingTest, LocalRiskTimeUpToTheModelsIsKept) {
  Read("<RiskTime>100</RiskTime><System><Components>" +
       Tag("Component", std::string(PumpHead) + "<RiskTime>100</RiskTime>") +
       "</Components></System>");
  EXPECT_EQ(Pump().riskTime, 100.0);
  EXPECT_THAT(Warnings(), IsEmpty());
}

TEST_F(StructureReadingTest, LocalRiskTimeAboveTheModelsIsIgnored) {
  Read("<RiskTime>100</RiskTime><System><Components>" +
       Tag("Component", std::string(PumpHead) + "<RiskTime>100.5</RiskTime>") +
       "</Components></System>");
  EXPECT_EQ(Pump().riskTime, 0.0);
  EXPECT_THAT(Warnings(), ElementsAre("Component Pump has a local risk time greater than its "
                                      "parent (or the model) - this value will be ignored."));
}

TEST_F(StructureReadingTest, NestedRiskTimeIsComparedWithTheComponentAround) {
  ReadNested("<RiskTime>50</RiskTime>", "<RiskTime>60</RiskTime>");
  EXPECT_EQ(NestedPump().riskTime, 0.0);
  EXPECT_THAT(Warnings(), SizeIs(1));
}

TEST_F(StructureReadingTest, NestedRiskTimeIsComparedWithAnInheritedOne) {
  ReadNested("", "<RiskTime>100</RiskTime>");
  EXPECT_EQ(NestedPump().riskTime, 100.0);
  EXPECT_THAT(Warnings(), IsEmpty());
}

// Implementations.

TEST_F(StructureReadingTest, ImplementationHasItsFields) {
  ReadBuilt(
      "<Description>Cast iron</Description><Cost>12.5</Cost><Weight>80</Weight>"
      "<ExcludeFromOptimisation>true</ExcludeFromOptimisation>");
  EXPECT_EQ(Built().name, "built");
  EXPECT_EQ(Built().description, "Cast iron");
  EXPECT_EQ(Built().cost, 12.5);
  EXPECT_EQ(Built().weight, 80.0);
  EXPECT_FALSE(Built().includeInOptimisation);
  EXPECT_EQ(Built().hBlockType, HBlockType::BOTH);
}

TEST_F(StructureReadingTest, CurrentImplementationStandsBeforeTheAlternatives) {
  ReadPump(
      "<Implementations><Alternatives><Alternative><Name>b</Name></Alternative><Alternative>"
      "<Name>c</Name></Alternative></Alternatives><Current><Name>a</Name></Current>"
      "</Implementations>");
  ASSERT_THAT(Pump().implementations, SizeIs(3));
  EXPECT_EQ(Pump().implementations[0]->name, "a");
  EXPECT_EQ(Pump().implementations[1]->name, "b");
  EXPECT_EQ(Pump().implementations[2]->name, "c");
  EXPECT_EQ(Pump().currentImplementation, Pump().implementations[0]);
}

struct BlockTypeCase {
  const char* name;
  const char* word;
  HBlockType type;
  bool readsFailureData;
  bool readsSystem;
};

class BlockTypeTest : public StructureReadingTest,
                      public ::testing::WithParamInterface<BlockTypeCase> {};

TEST_P(BlockTypeTest, DecidesWhatIsRead) {
  ReadBuilt(Tag("HBlockType", GetParam().word) +
            "<FailureData><BasicEvents><BasicEvent><Name>A</Name></BasicEvent></BasicEvents>"
            "</FailureData><System><Components><Component><Name>Rotor</Name></Component>"
            "</Components></System>");
  EXPECT_EQ(Built().hBlockType, GetParam().type);
  EXPECT_EQ(Built().basicEvents.size(), GetParam().readsFailureData ? 1U : 0U);
  EXPECT_EQ(Built().subsystem != nullptr, GetParam().readsSystem);
  EXPECT_EQ(model->components.contains("DEFAULT::Pump.Rotor"), GetParam().readsSystem);
  EXPECT_THAT(Errors(), IsEmpty());
  EXPECT_THAT(Warnings(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Words, BlockTypeTest,
    ::testing::Values(
        BlockTypeCase{"NotRefined", "NotRefined", HBlockType::NOT_REFINED, true, false},
        BlockTypeCase{"NotRefinedInTwoWords", "Not Refined", HBlockType::NOT_REFINED, true, false},
        BlockTypeCase{"Refined", "Refined", HBlockType::REFINED, false, true},
        BlockTypeCase{"Both", "Both", HBlockType::BOTH, true, true},
        BlockTypeCase{"Empty", "", HBlockType::BOTH, true, true},
        BlockTypeCase{"Propagator", "Propagator", HBlockType::PROPAGATOR, false, false}),
    CaseName);

TEST_F(StructureReadingTest, UnknownBlockTypeIsAnErrorAndLeavesTheDefault) {
  ReadBuilt("\n\n<HBlockType>refined</HBlockType>");
  EXPECT_EQ(Built().hBlockType, HBlockType::BOTH);
  EXPECT_THAT(Errors(), ElementsAre("Unrecognised block type: refined [line number: 3]"));
}

TEST_F(StructureReadingTest, PropagatorWithThreePortsIsNotRefined) {
  Read(
      "<System><Components><Component><Name>Pump</Name><Ports><Port><Name>a</Name></Port><Port>"
      "<Name>b</Name></Port><Port><Name>c</Name></Port></Ports><Implementations><Current>"
      "<Name>built</Name><HBlockType>Propagator</HBlockType><FailureData><BasicEvents><BasicEvent>"
      "<Name>A</Name></BasicEvent></BasicEvents></FailureData></Current></Implementations>"
      "</Component></Components></System>");
  EXPECT_EQ(Built().hBlockType, HBlockType::NOT_REFINED);
  EXPECT_TRUE(Built().basicEvents.contains("A"));
  EXPECT_THAT(Warnings(),
              ElementsAre("Implementation \"built\" of Component: DEFAULT::Pump is a Propagator "
                          "blocktype with 3 ports; Propagator block type can NOT have more than 2 "
                          "ports; This component will NOT propagate as expected and be treated as "
                          "UNREFINED; please enter output deviations for this block instead"));
}

TEST_F(StructureReadingTest, AlternativeBehindARefinedOneBelongsToItsComponent) {
  ReadPump(
      "<Implementations><Current><Name>a</Name><System><Components><Component>"
      "<Name>Rotor</Name><Implementations><Current><Name>r</Name></Current></Implementations>"
      "</Component></Components></System></Current><Alternatives><Alternative><Name>b</Name>"
      "<FailureData><BasicEvents><BasicEvent><Name>A</Name></BasicEvent></BasicEvents>"
      "</FailureData></Alternative></Alternatives></Implementations>");
  ASSERT_THAT(Pump().implementations, SizeIs(2));
  EXPECT_TRUE(Pump().implementations[1]->basicEvents.contains("A"));
  EXPECT_EQ(Pump().implementations[1]->basicEvents.at("A")->owner.lock().get(), &Pump());
}

// Lines.

TEST_F(StructureReadingTest, LineHasItsFields) {
  const Line& line = ReadLine(
      "<Name>pipe</Name><Description>Steel</Description><Type>Directed</Type>"
      "<Default>AND</Default>");
  EXPECT_EQ(line.GetName(), "pipe");
  EXPECT_EQ(line.description, "Steel");
  EXPECT_TRUE(line.directed);
  EXPECT_EQ(line.defaultOperator, LineOperator::AND);
}

TEST_F(StructureReadingTest, LineIsUndirectedByDefault) {
  EXPECT_FALSE(ReadLine("<Type>directed</Type>").directed);
}

TEST_F(StructureReadingTest, DefaultOperatorOfALineIsOr) {
  EXPECT_EQ(ReadLine("").defaultOperator, LineOperator::OR);
  EXPECT_EQ(ReadLine("<Default>and</Default>").defaultOperator, LineOperator::OR);
  EXPECT_EQ(ReadLine("<Default>OR</Default>").defaultOperator, LineOperator::OR);
  EXPECT_EQ(ReadLine("<Default>OUTPUT</Default>").defaultOperator, LineOperator::OUTPUT);
}

TEST_F(StructureReadingTest, ConnectionsAreKeptByClassAndPort) {
  const Line& line = ReadLine(
      "<Connections><Connection><Port>Tank.in</Port><FailureClass>Omission</FailureClass>"
      "<PortExpression>Omission-Pump.out</PortExpression></Connection>"
      "<Connection><Port>Pump.out</Port><PortExpression>OUTPUTPORT</PortExpression></Connection>"
      "</Connections>");
  ASSERT_THAT(line.connections, SizeIs(2));
  EXPECT_EQ(LogicText(line.connections.at("Omission-Tank.in")),
            "OutputDeviation'Omission-DEFAULT::Pump.out'");
  EXPECT_EQ(LogicText(line.connections.at("Pump.out")), "NullOp'OUTPUTPORT'");
}

TEST_F(StructureReadingTest, ClassOfAConnectionIsToldToTheModel) {
  ReadLine(
      "<Connections><Connection><Port>Tank.in</Port><FailureClass>Late</FailureClass>"
      "<PortExpression>DEFAULT</PortExpression></Connection></Connections>");
  EXPECT_THAT(model->failureClasses, ElementsAre("Late"));
}

TEST_F(StructureReadingTest, ExpressionOfAConnectionStartsTwoLinesBelowIt) {
  // The line stands on row 2, the connection on row 3 as an editor counts.
  EXPECT_EQ(ThrownBy([this] {
              ReadLine(
                  "<Connections>\n<Connection>\n<Port>Tank.in</Port>\n"
                  "<PortExpression>~</PortExpression></Connection></Connections>");
            }),
            "Unknown Port Node! @5");
  EXPECT_THAT(Errors(), ElementsAre("Unknown Port Node! (~) [line number : 5]"));
}

TEST_F(StructureReadingTest, EmptyConnectionStopsTheReading) {
  EXPECT_EQ(ThrownBy([this] { ReadLine("<Connections><Connection/></Connections>"); }),
            "Unknown Port Node! @4");
}

TEST_F(StructureReadingTest, LineInsideAComponentNamesItsPorts) {
  ReadBuilt(
      "<System><Lines><Line><Name>inner</Name><Connections><Connection><Port>out</Port>"
      "<PortExpression>in</PortExpression></Connection></Connections></Line></Lines>"
      "</System>");
  EXPECT_EQ(LogicText(Built().subsystem->lines.at(0)->connections.at("out")),
            "OutputDeviation'DEFAULT::Pump.in'");
}

// States.

TEST_F(StructureReadingTest, StatesAreAddedToTheModelsMachine) {
  Read(
      "<StateMachine>"
      "<State><Name>ok</Name><StartState/><Transitions><Transition><Name>t</Name>"
      "<Cause>Omission-Pump.out</Cause><DestinationState>down</DestinationState></Transition>"
      "</Transitions></State>"
      "<State><Name>down</Name><FailState>Loss</FailState></State></StateMachine>");
  const StateMachine& machine = *model->stateMachine;
  EXPECT_THAT(machine.states, SizeIs(3));  // With the one that every machine has.
  const State& ok = *machine.states.at("ok");
  const State& down = *machine.states.at("down");
  EXPECT_TRUE(ok.isStart);
  EXPECT_FALSE(ok.isFail);
  EXPECT_EQ(machine.startState.get(), &ok);
  EXPECT_FALSE(down.isStart);
  EXPECT_TRUE(down.isFail);
  EXPECT_EQ(down.failName, "Loss");
  EXPECT_THAT(machine.failStates, ElementsAre(machine.states.at("down")));
  ASSERT_THAT(ok.transitions, SizeIs(1));
  EXPECT_EQ(ok.transitions[0]->name, "t");
  EXPECT_EQ(ok.transitions[0]->cause, "Omission-Pump.out");
  EXPECT_EQ(ok.transitions[0]->destinationName, "down");
  EXPECT_EQ(ok.transitions[0]->owner.lock().get(), &ok);
  EXPECT_THAT(model->failureClasses, ElementsAre("Omission"));
}

TEST_F(StructureReadingTest, LaterStartStateReplacesAnEarlierOne) {
  Read(
      "<StateMachine><State><Name>a</Name><StartState>true</StartState></State>"
      "<State><Name>b</Name><StartState/></State></StateMachine>");
  EXPECT_EQ(model->stateMachine->startState->name, "b");
  EXPECT_TRUE(model->stateMachine->states.at("a")->isStart);
}

TEST_F(StructureReadingTest, StateWithoutNameStopsTheReading) {
  EXPECT_EQ(ThrownBy([this] { Read("<StateMachine><State/></StateMachine>"); }),
            "State has no name.");
}

// Hazards.

TEST_F(StructureReadingTest, HazardHasItsFields) {
  Read(
      "<Hazards><Hazard><Name>Fire</Name><Description>Burns</Description>"
      "<SafetyRequirement>3.9</SafetyRequirement><Severity>7.5</Severity></Hazard></Hazards>");
  const Hazard& fire = *model->hazards.at("Fire");
  EXPECT_EQ(fire.description, "Burns");
  EXPECT_EQ(fire.safetyRequirement, 3);
  EXPECT_EQ(fire.severity, 7.5);
  EXPECT_EQ(fire.expression, nullptr);
}

TEST_F(StructureReadingTest, HazardOfAKnownNameAddsItsLogicOnly) {
  Read(
      "<Hazards><Hazard><Name>Fire</Name><Severity>1</Severity></Hazard>"
      "<Hazard><Name>Fire</Name><Severity>2</Severity><Logic>A-x</Logic></Hazard></Hazards>");
  ASSERT_THAT(model->hazards, SizeIs(1));
  EXPECT_EQ(model->hazards.at("Fire")->severity, 1.0);
  EXPECT_EQ(LogicText(model->hazards.at("Fire")->expression), "OutputDeviation'A-x'");
}

TEST_F(StructureReadingTest, CausesOfAHazardMakeOneOr) {
  Read(
      "<Hazards><Hazard><Name>Fire</Name><Causes>"
      "<Cause><FailureLogic>A-x * B-y</FailureLogic><Probability>0.25</Probability></Cause>"
      "<Cause><FailureLogic>C-z</FailureLogic></Cause></Causes></Hazard></Hazards>");
  const Hazard& fire = *model->hazards.at("Fire");
  EXPECT_EQ(StructureText(fire.expression), "Or(And(A-x, B-y), C-z)");
  EXPECT_EQ(fire.expression->name, "Fire");
  ASSERT_THAT(fire.causes, SizeIs(2));
  EXPECT_EQ(fire.causes[0]->name, "A-x * B-y");
  EXPECT_EQ(fire.causes[0]->probability, 0.25);
  EXPECT_EQ(fire.causes[1]->probability, 1.0);
}

TEST_F(StructureReadingTest, CausesOfAHazardWinOverItsLogic) {
  Read(
      "<Hazards><Hazard><Name>Fire</Name><Logic>B-y</Logic>"
      "<Causes><Cause><FailureLogic>A-x</FailureLogic></Cause></Causes></Hazard></Hazards>");
  EXPECT_EQ(StructureText(model->hazards.at("Fire")->expression), "Or(A-x)");
}

TEST_F(StructureReadingTest, EmptyLogicIsNotRead) {
  Read("<Hazards><Hazard><Name>Fire</Name><Logic> </Logic></Hazard></Hazards>");
  EXPECT_EQ(model->hazards.at("Fire")->expression, nullptr);
  EXPECT_THAT(Errors(), IsEmpty());
}

TEST_F(StructureReadingTest, LogicOfAHazardIsCountedFromLineZero) {
  Read("\n\n<Hazards><Hazard><Name>Fire</Name><Logic>x</Logic></Hazard></Hazards>");
  EXPECT_THAT(Errors(), ElementsAre("No failure class in hazard expression [line number: 0]",
                                    "Unknown node 'x' in Hazard expression 'x' "
                                    "[line number : 0]"));
}

}  // namespace
}  // namespace FTS
