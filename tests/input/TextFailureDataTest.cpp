// What a text model says about failures: events, failure models, common causes, deviations.

#include <gmock/gmock.h>

#include "faulttree/BasicEvent.h"
#include "faulttree/CommonCauseNodes.h"
#include "input/TextModelTest.h"
#include "model/CCF.h"

namespace FTS {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class TextFailureDataTest : public TextModelTest {
 protected:
  void ReadData(const std::string& data) { ReadText(DataSystem(data)); }

  /// Failure data with one event "a" of that failure model.
  BasicEvent& ReadEventOf(const std::string& failureModel) {
    ReadData("Basic Events { Basic Event { Name \"a\" " + failureModel +
             " } }\nOutput Deviations { }");
    return *Built().basicEvents.at("a");
  }

  OutputDeviation& ReadDeviation(const std::string& content) {
    ReadData(
        "Basic Events { Basic Event { Name \"a\" None { } } Basic Event { Name \"b\" None { } "
        "} }\nOutput Deviations { Output Deviation { " +
        content + " } }");
    return *Built().stateLogic.at("default")->outputDeviations.begin()->second;
  }
};

struct FormulaCase {
  const char* name;
  const char* text;
  FailureModel failureModel;
  const char* parameter;
  double value;
};

class TextFormulaTest : public TextFailureDataTest,
                        public ::testing::WithParamInterface<FormulaCase> {};

TEST_P(TextFormulaTest, IsRead) {
  const BasicEvent& event = ReadEventOf(GetParam().text);
  EXPECT_EQ(event.failureModel, GetParam().failureModel);
  EXPECT_EQ(event.GetParameter(GetParam().parameter), GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(
    Models, TextFormulaTest,
    ::testing::Values(
        FormulaCase{"Constant", "Constant { FailureRate = \"1.5e-3\", RepairRate = \"2\" }",
                    FailureModel::CONSTANT, "FailureRate", 1.5e-3},
        FormulaCase{"MTTR", "MTTR { FailureRate = \"1\", MTTR = \"4\" }", FailureModel::MTTR,
                    "MTTR", 4.0},
        FormulaCase{"MTTF", "MTTF { MTTF = \"5\", RepairRate = \"2\" }", FailureModel::MTTF, "MTTF",
                    5.0},
        FormulaCase{"MTTFMTTR", "MTTFMTTR { MTTF = \"5\", MTTR = \"2\" }", FailureModel::MTTFMTTR,
                    "MTTR", 2.0},
        FormulaCase{"Fixed", "Fixed { Unavailability = \"0.25\" }", FailureModel::FIXED,
                    "Unavailability", 0.25},
        FormulaCase{"Time", "Time { rate = \"1\" }", FailureModel::TIME, "rate", 1.0},
        FormulaCase{"Binomial", "Binomial { n = \"3\", m = \"2\" }", FailureModel::BINOMIAL, "m",
                    2.0},
        FormulaCase{"Poisson", "Poisson { n = \"1\", s = \"2\" }", FailureModel::POISSON, "s", 2.0},
        FormulaCase{"Dormant", "Dormant { InspectionTime = \"9\" }", FailureModel::DORMANT,
                    "InspectionTime", 9.0},
        FormulaCase{"Sequential", "Sequential { x = \"-1\" }", FailureModel::SEQUENTIAL, "x", -1.0},
        FormulaCase{"Variable", "Variable { Scale1 = \"7\" }", FailureModel::VARIABLE, "Scale1",
                    7.0},
        FormulaCase{"FailureDistribution", "FailureDistribution { Percentage = \"100\" }",
                    FailureModel::DISTRIBUTION, "Percentage", 100.0},
        FormulaCase{"NotANumber", "Fixed { Unavailability = \"low\" }", FailureModel::FIXED,
                    "Unavailability", 0.0}),
    CaseName);

TEST_F(TextFailureDataTest, ModelNoneNeedsNoParameters) {
  EXPECT_EQ(ReadEventOf("None { }").failureModel, FailureModel::NONE);
}

TEST_F(TextFailureDataTest, FiguresAreComputedUnlessTheRunWantsNone) {
  EXPECT_EQ(ReadEventOf("Fixed { Unavailability = \"0.25\" }").GetUnavailability(), 0.25);
}

TEST_F(TextFailureDataTest, SecondEventOfANameIsReadOver) {
  ReadData(
      "Basic Events { Basic Event { Name \"a\" Description \"first\" Fixed { Unavailability = "
      "\"0.5\" } }\nBasic Event { Name \"a\" Description \"second\" None { } } }\n"
      "Output Deviations { }");
  const BasicEvent& event = *Built().basicEvents.at("a");
  EXPECT_EQ(Built().basicEvents.size(), 1U);
  EXPECT_EQ(event.description, "first");
  EXPECT_EQ(event.failureModel, FailureModel::FIXED);
}

TEST_F(TextFailureDataTest, NormalEventsAreRead) {
  ReadData(
      "Basic Events { }\nNormal Events { Normal Event { Name \"day\" Description \"d\" Fixed { "
      "Unavailability = \"0.5\" } } }\nOutput Deviations { }");
  EXPECT_EQ(Built().basicEvents.at("day")->type, NodeType::Normal);
  EXPECT_EQ(Built().basicEvents.at("day")->description, "d");
}

TEST_F(TextFailureDataTest, RateOfTheComponentIsKeptByTheImplementation) {
  ReadData("ComponentFailureRate = 0.000125\nBasic Events { }\nOutput Deviations { }");
  EXPECT_EQ(Built().failureRate, 0.000125);
}

TEST_F(TextFailureDataTest, SharesThatMissTheWholeAreWarnedOf) {
  ReadData(
      "Basic Events { Basic Event { Name \"a\" FailureDistribution { Percentage = \"60\" } }\n"
      "Basic Event { Name \"b\" FailureDistribution { Percentage = \"39.5\" } } }\n"
      "Output Deviations { }");
  EXPECT_THAT(Warnings(), ElementsAre("Total failure distribution for component: DEFAULT::Pump is "
                                      "99.5% (should be 100%)"));
}

TEST_F(TextFailureDataTest, PotentialCommonCauseReachesTheActualOne) {
  ReadText("Actual CCFs { Actual CCF { Name \"fire\" None { } } }\n" +
           DataSystem("Basic Events { }\nPotential CCFs { Potential CCF { Name \"heat\" "
                      "Description \"d\" ACCF \"fire\" } }\nOutput Deviations { Output Deviation { "
                      "Name \"Omission-out\" \"heat\" } }"));
  const auto& proxy = Built().ccfNodes.at("heat");
  EXPECT_EQ(proxy->description, "d");
  EXPECT_EQ(proxy->actual, model->perspectives.at("DEFAULT")->FindCCF("fire"));
}

TEST_F(TextFailureDataTest, DeviationFieldsAreRead) {
  const OutputDeviation& deviation = ReadDeviation(
      "Name \"Omission-out\" Description \"d\" Severity 2.5 System Outport \"true\" \"a + b\"");
  EXPECT_EQ(deviation.failureClass, "Omission");
  EXPECT_EQ(deviation.description, "d");
  EXPECT_EQ(deviation.severity, 2.5);
  EXPECT_TRUE(deviation.IsSystemOutput());
  EXPECT_THAT(model->failureClasses, ElementsAre("Omission"));
}

TEST_F(TextFailureDataTest, OnlyTrueMakesASystemOutput) {
  EXPECT_FALSE(ReadDeviation("Name \"x-out\" System Outport \"True\" \"a\"").IsSystemOutput());
}

TEST_F(TextFailureDataTest, LogicIsThatOfDocuments) {
  const OutputDeviation& deviation =
      ReadDeviation("Name \"Omission-out\" \"a < b | ~(a & Omission-in)\"");
  ASSERT_EQ(deviation.causes.size(), 1U);
  EXPECT_EQ(deviation.causes[0]->name, "a < b | ~(a & Omission-in)");
  EXPECT_EQ(deviation.causes[0]->probability, 1.0);
  EXPECT_EQ(LogicText(deviation.causes[0]->expression),
            "POr'POR [Omission-out]'(PAnd'PAND [Omission-out]'(FailureMode'a', FailureMode'b'), "
            "Not'NOT [Omission-out]'(NullOp'Sub-Expression'(SAnd'SAND [Omission-out]'("
            "FailureMode'a', InputDeviation'Omission-DEFAULT::Pump.in'))))");
}

TEST_F(TextFailureDataTest, WordsInCapitalsAreNamesInLogicAsInDocuments) {
  // The text of the logic has the keywords of expressions, not those of the file around it.
  ReadDeviation("Name \"Omission-out\" \"PAND\"");
  EXPECT_THAT(Errors(), ElementsAre("Basic event PAND is referred to in an output deviation but "
                                    "does not exist in component DEFAULT::Pump [line number : 6]"));
}

TEST_F(TextFailureDataTest, EmptyLogicGivesADeviationWithout) {
  EXPECT_THAT(ReadDeviation("Name \"Omission-out\" \"\"").causes, IsEmpty());
}

TEST_F(TextFailureDataTest, NameWithoutClassIsAnErrorWithItsLine) {
  ReadData("Basic Events { }\nOutput Deviations {\nOutput Deviation {\nName \"out\" \"\" } }");
  EXPECT_THAT(Errors(), ElementsAre("Output Deviation out has no failure class. [line number: 8]"));
}

TEST_F(TextFailureDataTest, PortMayBeGivenByItsFullName) {
  EXPECT_EQ(ReadDeviation("Name \"Omission-Pump.out\" \"a\"").GetFullName(),
            "Omission-DEFAULT::Pump.out");
}

TEST_F(TextFailureDataTest, LinesOfLogicAreThoseOfTheFile) {
  ReadData(
      "Basic Events { }\nOutput Deviations { Output Deviation { Name "
      "\"Omission-out\"\n\"\n\nlost\" } }");
  EXPECT_THAT(Errors(), ElementsAre("Basic event lost is referred to in an output deviation but "
                                    "does not exist in component DEFAULT::Pump [line number : 9]"));
}

TEST_F(TextFailureDataTest, StringsMayHoldQuotes) {
  const OutputDeviation& deviation =
      ReadDeviation(R"(Name "Omission-out" Description "the \"big\" one" "a")");
  EXPECT_EQ(deviation.description, "the \"big\" one");
}

}  // namespace
}  // namespace FTS
