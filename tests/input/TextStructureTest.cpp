// What a text model says about structure: the head, systems, components, lines.

#include <gmock/gmock.h>

#include "input/TextModelTest.h"
#include "model/CCF.h"
#include "model/Hazard.h"
#include "model/Objective.h"

namespace FTS {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class TextStructureTest : public TextModelTest {
 protected:
  /// The one line of a system with two components A and B that have one port p each.
  Line& ReadLineOf(const std::string& line, const std::string& head = "") {
    ReadText(head +
             "System { Component { Name \"A\" Port { Name \"p\" } Implementation { } }\n"
             "Component { Name \"B\" Port { Name \"p\" } Implementation { } }\n"
             "Line { " +
             line + " } }");
    return *model->perspectives.begin()->second->rootSubsystem->lines.at(0);
  }

  Implementation& ReadBuiltText(const std::string& content) {
    ReadText(BuiltSystem(content));
    return Built();
  }

  std::string Console(const std::string& text) {
    const CapturedStreams streams;
    model = ReadTextModel(text);
    return streams.Output();
  }
};

TEST_F(TextStructureTest, HeadGivesTheModelItsFields) {
  const CapturedStreams streams;
  model = ReadTextModel(
      "Model Name \"plant\" Description \"a plant\" SimulationX Matlab Version 3.25 "
      "RiskTime \"1e3\" System { }");
  EXPECT_EQ(model->name, "plant");
  EXPECT_EQ(model->description, "a plant");
  EXPECT_EQ(model->versionNumber, 3.25f);
  EXPECT_EQ(model->riskTime, 1000.0);
  EXPECT_EQ(model->fileName, "model.vtn");
}

TEST_F(TextStructureTest, VersionNeedsNoFraction) {
  ReadText("Version 1 System { }");
  EXPECT_EQ(model->versionNumber, 1.0f);
  ReadText("Version 1.2 System { }");
  EXPECT_EQ(model->versionNumber, 1.2f);
}

TEST_F(TextStructureTest, SystemMayFollowAtOnce) {
  ReadText("System { }");
  EXPECT_EQ(model->description, "");
  EXPECT_EQ(model->versionNumber, 0.0f);
  EXPECT_EQ(model->riskTime, 0.0);
}

TEST_F(TextStructureTest, ReadingTellsThatItIsDoneUnlessSilent) {
  EXPECT_EQ(Console("Model Name \"m\" System { }"), "Model parsed\n");
  Config::Instance().runSilent = true;
  EXPECT_EQ(Console("Model Name \"m\" System { }"), "");
}

TEST_F(TextStructureTest, SearchParametersAreRead) {
  ReadText(
      "OptimisationParams { MaxGenerations 12 DefaultMaxReplicants 3 Objectives {\n"
      "Objective { Cost : Minimise { 0.5, 100 } }\n"
      "Objective { Reliability : Maximise } Objective { Unavailability : Minimise }\n"
      "Objective { Safety : Maximise } Objective { Risk : Minimise }\n"
      "Objective { Weight : Minimise { 1, 2.25 } } } } System { }");
  EXPECT_EQ(model->maxGenerations, 12);
  EXPECT_EQ(model->defaultMaxReplicants, 3);
  ASSERT_EQ(model->objectives.size(), 6U);
  const Objective& cost = model->objectives.at("Cost");
  EXPECT_FALSE(cost.maximise);
  EXPECT_TRUE(cost.hasLowerBound && cost.hasUpperBound);
  EXPECT_EQ(cost.lowerBound, 0.5);
  EXPECT_EQ(cost.upperBound, 100.0);
  EXPECT_TRUE(model->objectives.at("Safety").maximise);
  EXPECT_FALSE(model->objectives.at("Risk").hasLowerBound);
  EXPECT_EQ(model->objectives.at("Weight").upperBound, 2.25);
}

TEST_F(TextStructureTest, WithoutPerspectivesThereIsTheDefaultOne) {
  ReadText("System { }");
  ASSERT_EQ(model->perspectives.size(), 1U);
  EXPECT_EQ(model->perspectives.begin()->first, "DEFAULT");
  EXPECT_TRUE(model->perspectives.begin()->second->defaultGenerated);
}

TEST_F(TextStructureTest, PerspectivesHaveSystemsOfTheirOwn) {
  ReadText(
      "Perspectives { Perspective { Name \"Hardware\" Description \"boxes\"\n"
      "System { Component { Name \"Cpu\" Implementation { } } } }\n"
      "Perspective { System { Component { Name \"Task\" Implementation { } } } } }");
  EXPECT_EQ(model->perspectives.at("Hardware")->description, "boxes");
  EXPECT_FALSE(model->perspectives.at("Hardware")->defaultGenerated);
  EXPECT_NE(model->FindComponent("Hardware::Cpu"), nullptr);
  EXPECT_NE(model->FindComponent("DEFAULT::Task"), nullptr);
}

TEST_F(TextStructureTest, ActualCommonCausesBelongToTheirPerspective) {
  ReadText(
      "RiskTime \"8\" Actual CCFs { Actual CCF { Name \"fire\" Description \"hot\"\n"
      "Time { t = \"3\" } } } System { }");
  const auto ccf = model->perspectives.at("DEFAULT")->FindCCF("fire");
  ASSERT_NE(ccf, nullptr);
  EXPECT_EQ(ccf->description, "hot");
  EXPECT_EQ(ccf->failureModel, FailureModel::TIME);
  EXPECT_EQ(ccf->GetParameter("time"), 3.0);
  EXPECT_EQ(ccf->GetParameter("RiskTime"), 8.0);
}

struct ComponentHead {
  const char* name;
  const char* text;
};

class ComponentHeadTest : public TextStructureTest,
                          public ::testing::WithParamInterface<ComponentHead> {};

TEST_P(ComponentHeadTest, NamesTheComponent) {
  ReadText("System { " + std::string(GetParam().text) +
           " Description \"d\" Port { Name \"p\" } Implementation { } } }");
  const auto component = model->FindComponent("DEFAULT::Pump");
  ASSERT_NE(component, nullptr);
  EXPECT_EQ(component->description, "d");
  EXPECT_NE(component->FindPort("p"), nullptr);
}

INSTANTIATE_TEST_SUITE_P(
    Forms, ComponentHeadTest,
    ::testing::Values(ComponentHead{"NameInside", "Component { Name \"Pump\""},
                      ComponentHead{"Bare", "Component { \"Pump\""},
                      ComponentHead{"TypeInside", "Component { Type Name \"Pump\""},
                      ComponentHead{"TypeInFront", "Component Type Name \"Pump\" {"},
                      ComponentHead{"SmallTypeInFront", "Component type Name \"Pump\" {"},
                      ComponentHead{"ComponentTypeInside",
                                    "Component { ComponentType Name \"Pump\""},
                      ComponentHead{"ComponentTypeAlone", "Componenttype Name \"Pump\" {"},
                      ComponentHead{"NameInFront", "Component Name \"Pump\" {"}),
    CaseName);

TEST_F(TextStructureTest, ComponentFieldsAreRead) {
  ReadText(
      "RiskTime \"100\" System { Component { Name \"Pump\" Description \"d\" MaxReplicants 4\n"
      "IncludeInOptimisation \"true\" RiskTime \"50\" Implementation { } } }");
  EXPECT_EQ(Pump().maxReplicants, 4);
  EXPECT_TRUE(Pump().includeInOptimisation);
  EXPECT_EQ(Pump().riskTime, 50.0);
  EXPECT_THAT(Warnings(), IsEmpty());
}

TEST_F(TextStructureTest, OnlyTrueIncludesInTheSearch) {
  for (const char* value : {"\"false\"", "\"1\"", "yes", "\"True\"", "1"}) {
    ReadText("System { Component { Name \"Pump\" IncludeInOptimisation " + std::string(value) +
             " Implementation { } } }");
    EXPECT_FALSE(Pump().includeInOptimisation) << value;
  }
  ReadText("System { Component { Name \"Pump\" IncludeInOptimisation true Implementation { } } }");
  EXPECT_TRUE(Pump().includeInOptimisation);
}

TEST_F(TextStructureTest, ReplicantsDefaultToThoseOfTheModel) {
  ReadText(
      "OptimisationParams { MaxGenerations 1 DefaultMaxReplicants 7 Objectives { } }\n"
      "System { Component { Name \"Pump\" Implementation { } } }");
  EXPECT_EQ(Pump().maxReplicants, 7);
}

TEST_F(TextStructureTest, RiskTimeAboveTheParentsIsIgnored) {
  ReadText(
      "RiskTime \"10\" System { Component { Name \"Pump\" RiskTime \"11\" Implementation { } } }");
  EXPECT_EQ(Pump().riskTime, 0.0);
  EXPECT_THAT(Warnings(), ElementsAre("Component Pump has a local risk time greater than its "
                                      "parent (or the model) - this value will be ignored."));
}

TEST_F(TextStructureTest, RiskTimeEqualToTheParentsStands) {
  ReadText(
      "RiskTime \"10\" System { Component { Name \"Pump\" RiskTime \"10\" Implementation { } } }");
  EXPECT_EQ(Pump().riskTime, 10.0);
  EXPECT_THAT(Warnings(), IsEmpty());
}

TEST_F(TextStructureTest, PortsMayHaveTypeAndDescription) {
  ReadText(
      "System { Component { Name \"Pump\" Port { Porttype Name \"in\" Description \"d\" }\n"
      "Port { Name \"out\" } Implementation { } } }");
  EXPECT_NE(Pump().FindPort("in"), nullptr);
  EXPECT_NE(Pump().FindPort("out"), nullptr);
}

TEST_F(TextStructureTest, AlternativesFollowTheCurrentImplementation) {
  ReadText(
      PumpSystem("Implementation { Name \"one\" }\n"
                 "Alternatives { Implementation { Name \"two\" } "
                 "Implementation { Name \"three\" } }"));
  EXPECT_EQ(Pump().implementations.size(), 3U);
  EXPECT_EQ(Built().name, "one");
}

TEST_F(TextStructureTest, ImplementationFieldsAreRead) {
  const Implementation& built =
      ReadBuiltText("Description \"d\" ExcludeFromOptimisation Cost 12.5 Weight 3");
  EXPECT_EQ(built.description, "d");
  EXPECT_FALSE(built.includeInOptimisation);
  EXPECT_EQ(built.cost, 12.5);
  EXPECT_EQ(built.weight, 3.0);
}

TEST_F(TextStructureTest, ImplementationNeedsNothing) {
  ReadText(PumpSystem("Implementation { }"));
  EXPECT_EQ(Built().name, "");
  EXPECT_TRUE(Built().includeInOptimisation);
  EXPECT_EQ(Built().hBlockType, HBlockType::BOTH);
}

struct BlockTypeCase {
  const char* name;
  const char* word;
  HBlockType type;
};

class TextBlockTypeTest : public TextStructureTest,
                          public ::testing::WithParamInterface<BlockTypeCase> {};

TEST_P(TextBlockTypeTest, IsThatOfTheWord) {
  EXPECT_EQ(ReadBuiltText("H_BlockType \"" + std::string(GetParam().word) + "\"").hBlockType,
            GetParam().type);
}

INSTANTIATE_TEST_SUITE_P(
    Words, TextBlockTypeTest,
    ::testing::Values(BlockTypeCase{"NotRefined", "Not Refined", HBlockType::NOT_REFINED},
                      BlockTypeCase{"Refined", "Refined", HBlockType::REFINED},
                      BlockTypeCase{"Both", "Both", HBlockType::BOTH},
                      BlockTypeCase{"Propagator", "Propagator", HBlockType::PROPAGATOR}),
    CaseName);

TEST_F(TextStructureTest, PropagatorWithThreePortsIsNotRefined) {
  ReadText(
      "System { Component { Name \"Pump\" Port { Name \"a\" } Port { Name \"b\" } Port { Name "
      "\"c\" }\nImplementation { Name \"built\" H_BlockType \"Propagator\" } } }");
  EXPECT_EQ(Built().hBlockType, HBlockType::NOT_REFINED);
  ASSERT_EQ(Warnings().size(), 1U);
  EXPECT_TRUE(
      Warnings()[0].starts_with("Implementation \"built\" of Component: DEFAULT::Pump is a "
                                "Propagator blocktype with 3 ports;"))
      << Warnings()[0];
}

TEST_F(TextStructureTest, DataAndSystemAreReadWhateverTheBlockType) {
  for (const char* type : {"Not Refined", "Refined", "Both", "Propagator"}) {
    ReadBuiltText("H_BlockType \"" + std::string(type) +
                  "\" FData { Basic Events { Basic Event { Name \"a\" None { } } } Output "
                  "Deviations { } } System { Component { Name \"Rotor\" Implementation { } } }");
    EXPECT_TRUE(Built().basicEvents.contains("a")) << type;
    EXPECT_NE(model->FindComponent("DEFAULT::Pump.Rotor"), nullptr) << type;
  }
}

TEST_F(TextStructureTest, LineFieldsAreRead) {
  const Line& line = ReadLineOf(
      "Default OUTPUT Linetype Directed Name \"wire\" Description \"d\" Connections { }");
  EXPECT_EQ(line.defaultOperator, LineOperator::OUTPUT);
  EXPECT_TRUE(line.directed);
  EXPECT_EQ(line.name, "wire");
  EXPECT_EQ(line.description, "d");
}

TEST_F(TextStructureTest, LineNeedsOnlyItsDefault) {
  const Line& line = ReadLineOf("Default AND Connections { }");
  EXPECT_EQ(line.defaultOperator, LineOperator::AND);
  EXPECT_FALSE(line.directed);
  EXPECT_EQ(line.name, "");
}

TEST_F(TextStructureTest, ConnectionsAreKeptByClassAndPort) {
  const Line& line = ReadLineOf(
      "Default OR Name \"wire\" Connections { Omission-B.p = Omission-A.p, Late-B.p = ORPORT }");
  ASSERT_EQ(line.connections.size(), 2U);
  EXPECT_EQ(StructureText(line.connections.at("Omission-B.p")), "Omission-DEFAULT::A.p");
  EXPECT_EQ(StructureText(line.connections.at("Late-B.p")), "ORPORT");
  EXPECT_THAT(model->failureClasses, ElementsAre("Omission", "Late"));
}

TEST_F(TextStructureTest, LineGatesHaveBareNames) {
  const Line& line = ReadLineOf(
      "Default OR Connections { Omission-B.p = Omission-A.p + Omission-A.p * Omission-B.p }");
  EXPECT_EQ(LogicText(line.connections.at("Omission-B.p")),
            "Or'OR'(OutputDeviation'Omission-DEFAULT::A.p', "
            "And'AND'(OutputDeviation'Omission-DEFAULT::A.p', "
            "OutputDeviation'Omission-DEFAULT::B.p'))");
}

TEST_F(TextStructureTest, BracketedGateOfALineIsRenamed) {
  const Line& line = ReadLineOf(
      "Default OR Connections { Omission-B.p = Omission-A.p AND (Omission-A.p OR Omission-B.p) }");
  EXPECT_EQ(LogicText(line.connections.at("Omission-B.p")),
            "And'AND'(OutputDeviation'Omission-DEFAULT::A.p', "
            "Or'Line Sub-Expression'(OutputDeviation'Omission-DEFAULT::A.p', "
            "OutputDeviation'Omission-DEFAULT::B.p'))");
}

TEST_F(TextStructureTest, PlaceholdersStandForTheRestOfTheLine) {
  const Line& line = ReadLineOf(
      "Default AND Connections { a-A.p = DEFAULT, b-A.p = ANDPORT, c-A.p = ORPORT, d-A.p = "
      "OUTPUTPORT, E-A.p = OUTPUT }");
  EXPECT_EQ(LogicText(line.connections.at("a-A.p")), "And'DEFAULT'");
  EXPECT_EQ(LogicText(line.connections.at("b-A.p")), "And'ANDPORT'");
  EXPECT_EQ(LogicText(line.connections.at("c-A.p")), "Or'ORPORT'");
  EXPECT_EQ(line.connections.at("d-A.p")->name, "OUTPUTPORT");
  EXPECT_EQ(line.connections.at("E-A.p")->name, "OUTPUTPORT");
}

TEST_F(TextStructureTest, SymbolsOfTheFileSeparateOperands) {
  // In files a semicolon is an operator of its own, so it ends a line's expression.
  EXPECT_EQ(FaultOf("System { Component { Name \"A\" Port { Name \"p\" } Implementation { } }\n"
                    "Line { Default OR Connections { x-A.p = x-A.p ; x-A.p } } }"),
            "Match Error #4: Incorrect Token type. Expected: \"}\" but found: \"PAND\" @3");
}

TEST_F(TextStructureTest, LinesMayStandBetweenComponents) {
  ReadText(
      "System { Name \"s\" Description \"d\" Component { Name \"A\" Port { Name \"p\" } "
      "Implementation { } }\nLine { Default OR Connections { x-B.p = x-A.p } }\n"
      "Component { Name \"B\" Port { Name \"p\" } Implementation { } } }");
  EXPECT_EQ(model->components.size(), 2U);
  EXPECT_EQ(model->perspectives.at("DEFAULT")->rootSubsystem->lines.size(), 1U);
}

TEST_F(TextStructureTest, ReferenceWithoutClassIsAnErrorOfTheLog) {
  ReadLineOf("Default OR Name \"wire\" Connections { x-B.p = A.p }");
  EXPECT_THAT(Errors(),
              ElementsAre("Line expression is classed and so must contain failure classes on the "
                          "right-hand side wire [line number: 4]"));
}

TEST_F(TextStructureTest, TextBehindTheModelIsWarnedOf) {
  ReadText("System { }\n}\nSystem { }");
  EXPECT_THAT(Warnings(),
              ElementsAre("The text behind the end of the model is ignored [line number: 3]"));
}

TEST_F(TextStructureTest, HazardsAreRead) {
  ReadText(
      "Hazards { Hazard { Name \"H\" Description \"d\" SafetyRequirement 4 Severity 7.5\n"
      "Logic \"Omission-A.p AND (Late-B.p OR e-B.q) OR Value-C.r\" } } System { }");
  const auto hazard = model->FindHazard("H");
  ASSERT_NE(hazard, nullptr);
  EXPECT_EQ(hazard->description, "d");
  EXPECT_EQ(hazard->safetyRequirement, 4);
  EXPECT_EQ(hazard->severity, 7.5);
  EXPECT_EQ(LogicText(hazard->expression),
            "Or'OR'(And'AND'(OutputDeviation'Omission-A.p', "
            "NullOp'Sub-Expression'(Or'OR'(OutputDeviation'Late-B.p', OutputDeviation'e-B.q'))), "
            "OutputDeviation'Value-C.r')");
  EXPECT_THAT(model->failureClasses, ElementsAre("Omission", "Late", "e", "Value"));
}

TEST_F(TextStructureTest, HazardMayNameAPerspective) {
  ReadText("Hazards { Hazard { Name \"H\" Logic \"Omission-Hardware::Cpu.out\" } } System { }");
  EXPECT_EQ(model->FindHazard("H")->expression->name, "Omission-Hardware::Cpu.out");
}

TEST_F(TextStructureTest, HazardWithoutLogicStaysWithout) {
  ReadText("Hazards { Hazard { Name \"H\" Logic \"\" } } System { }");
  EXPECT_EQ(model->FindHazard("H")->expression, nullptr);
}

TEST_F(TextStructureTest, HazardGivenTwiceKeepsItsFieldsAndTakesTheLaterLogic) {
  ReadText(
      "Hazards { Hazard { Name \"H\" Severity 1 Logic \"a-A.p\" }\n"
      "Hazard { Name \"H\" Severity 2 Logic \"b-B.p\" } } System { }");
  EXPECT_EQ(model->FindHazard("H")->severity, 1.0);
  EXPECT_EQ(model->FindHazard("H")->expression->name, "b-B.p");
}

}  // namespace
}  // namespace FTS
