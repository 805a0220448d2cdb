// What is measured of a design; the designs are what the model stands on.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "analysis/Prime.h"
#include "app/DiagnosticLog.h"
#include "faulttree/BasicEvent.h"
#include "model/Component.h"
#include "model/Hazard.h"
#include "model/Implementation.h"
#include "model/Objective.h"
#include "optimisation/Individual.h"
#include "optimisation/SearchTest.h"
#include "support/CaseName.h"

namespace FTS {
namespace {

class EvaluationTest : public SearchTest {
 protected:
  /// Two parts, each the only cause of a hazard of its own, and these objectives.
  void Measure(const std::vector<std::string>& objectives) {
    UseModel({objectives,
              {XmlDesignPart("A", {{"a", 3.0, 0.25, 7.0}}),
               XmlDesignPart("B", {{"b", 4.0, 0.125, 9.0}})},
              {"Omission-A.out", "Omission-B.out"}});
  }

  std::unique_ptr<Individual> Evaluated(int design = 1) {
    auto made = Candidate(design, {});
    EXPECT_TRUE(made->Evaluate());
    return made;
  }

  BasicEvent& EventOf(const std::string& component) const {
    return *model->FindComponent(component)->currentImplementation->basicEvents.at("dead");
  }
};

TEST_F(EvaluationTest, SumsUpCostAndWeight) {
  Measure({XmlObjective("Cost"), XmlObjective("Weight")});
  EXPECT_EQ(Evaluated()->evaluations, At(7.0, 16.0));
}

TEST_F(EvaluationTest, NotesTheGeneration) {
  search->generation = 12;
  EXPECT_EQ(Evaluated()->lastAlteredGeneration, 12);
}

TEST_F(EvaluationTest, ForgetsWhatWasMeasuredBefore) {
  const auto made = Candidate({{"Gone", 3.0}});
  made->Evaluate();
  EXPECT_FALSE(made->evaluations.contains("Gone"));
}

TEST_F(EvaluationTest, AnImpossibleDesignIsNotMeasured) {
  auto made = Individual(*search, EncodingType::Tree, std::make_unique<FakeEncoding>(1, false));
  EXPECT_FALSE(made.Evaluate());
  EXPECT_TRUE(made.evaluations.empty());
}

TEST_F(EvaluationTest, ValuesHaveSixSignificantDigits) {
  Measure({XmlObjective("Cost"), XmlObjective("Weight"),
           XmlObjective("Unavailability(Omission-A.out)")});
  model->FindComponent("A")->currentImplementation->cost = 1234567.0 - 4.0;
  model->FindComponent("A")->currentImplementation->weight = 0.00123456789 - 9.0;
  EventOf("A").unavailability = 0.123456789;
  EXPECT_EQ(Evaluated()->evaluations, (Values{{"Cost", 1234570.0},
                                              {"Unavailability(Omission-A.out)", 0.123457},
                                              {"Weight", 0.00123457}}));
}

TEST_F(EvaluationTest, CostsThatDifferInTheSeventhDigitAreEqual) {
  Measure({XmlObjective("Cost")});
  Implementation& a = *model->FindComponent("A")->currentImplementation;
  a.cost = 999997.0;  // And 4 for the other part.
  const auto cheaper = Evaluated(1);
  a.cost = 1000000.0;
  const auto dearer = Evaluated(2);
  EXPECT_EQ(cheaper->evaluations, dearer->evaluations);
  a.cost = 1000007.0;
  EXPECT_NE(Evaluated(3)->evaluations, dearer->evaluations);
}

struct TreeCase {
  const char* name;
  const char* objective;
  double value;
  int warnings;
};

class UnavailabilityTest : public EvaluationTest, public ::testing::WithParamInterface<TreeCase> {};

TEST_P(UnavailabilityTest, IsThatOfTheNamedTree) {
  Measure({XmlObjective(GetParam().objective)});
  EXPECT_EQ(Evaluated()->evaluations, (Values{{GetParam().objective, GetParam().value}}));
  EXPECT_EQ(DiagnosticLog::Instance().ReportedWarnings(), GetParam().warnings);
}

INSTANTIATE_TEST_SUITE_P(
    Names, UnavailabilityTest,
    ::testing::Values(TreeCase{"First", "Unavailability(Omission-A.out)", 0.25, 0},
                      TreeCase{"Second", "Unavailability(Omission-B.out)", 0.125, 0},
                      TreeCase{"WithoutBrackets", "Unavailability", 0.25, 0},
                      TreeCase{"WithoutBracketsInOtherWords", "TheUnavailabilityOfAll", 0.25, 0},
                      TreeCase{"UnknownTree", "Unavailability(X)", 0.25, 1},
                      TreeCase{"EmptyBrackets", "Unavailability()", 0.25, 1},
                      // The length of the name is counted from the whole word, so a longer word
                      // keeps the bracket.
                      TreeCase{"PrefixedTree", "MyUnavailability(Omission-B.out)", 0.25, 1}),
    CaseName);

TEST_F(EvaluationTest, AnUnknownTreeIsWarnedOfOncePerEvaluation) {
  Measure({XmlObjective("Unavailability(X)")});
  Config::Instance().runSilent = false;
  const CapturedStreams streams;
  const auto made = Evaluated();
  const std::vector<std::string> once = {"Fault Tree with name not found. Using first fault tree."};
  EXPECT_EQ(DiagnosticLog::Instance().Warnings(), once);
  made->Evaluate();
  EXPECT_EQ(DiagnosticLog::Instance().ReportedWarnings(), 2);
}

TEST_F(EvaluationTest, WithoutTreesNothingFails) {
  UseModel(
      {{XmlObjective("Risk"), XmlObjective("Unavailability(X)"), XmlObjective("Unavailability")},
       {XmlDesignPart("A", {{"a"}})}});
  EXPECT_EQ(Evaluated()->evaluations,
            (Values{{"Risk", 0.0}, {"Unavailability", 0.0}, {"Unavailability(X)", 0.0}}));
  EXPECT_EQ(DiagnosticLog::Instance().ReportedWarnings(), 0);
}

TEST_F(EvaluationTest, RiskSumsUpRoundedFactorsUnrounded) {
  Measure({XmlObjective("Risk")});
  EventOf("A").unavailability = 0.123456789;
  EventOf("A").frequency = 0.0314159265;
  EventOf("B").unavailability = 0.2;
  EventOf("B").frequency = 0.3333333333;
  EXPECT_EQ(Evaluated()->evaluations.at("Risk"), 0.123457 * 0.0314159 + 0.2 * 0.333333);
}

TEST_F(EvaluationTest, OtherObjectivesGetNoValue) {
  Measure({XmlObjective("Reliability"), XmlObjective("Safety"), XmlObjective("SystemSlack"),
           XmlObjective("ASILCost"), XmlObjective("ASILInvalids"), XmlObjective("cost"),
           XmlObjective("unavailability(Omission-A.out)"), XmlObjective("Unavailabilit")});
  const auto made = Evaluated();
  EXPECT_TRUE(made->evaluations.empty());
  EXPECT_TRUE(made->feasible);
  EXPECT_EQ(DiagnosticLog::Instance().ReportedWarnings(), 0);
}

struct BoundCase {
  const char* name;
  const char* bounds;
  bool feasible;
  int count;
  double violation;
};

/// The cost of 7 against bounds.
class BoundsTest : public EvaluationTest, public ::testing::WithParamInterface<BoundCase> {};

TEST_P(BoundsTest, DecideOnFeasibility) {
  Measure({XmlObjective("Cost", "Minimise", GetParam().bounds), XmlObjective("Weight")});
  const auto made = Evaluated();
  EXPECT_EQ(made->feasible, GetParam().feasible);
  EXPECT_EQ(made->violationCount, GetParam().count);
  EXPECT_EQ(made->violations, At(GetParam().violation, 0.0));
}

#define LOW(x) "<LowerBound>" #x "</LowerBound>"
#define HIGH(x) "<UpperBound>" #x "</UpperBound>"
INSTANTIATE_TEST_SUITE_P(
    Cost, BoundsTest,
    ::testing::Values(BoundCase{"None", "", true, 0, 0.0},
                      BoundCase{"AtTheLower", LOW(7), true, 0, 0.0},
                      BoundCase{"AtTheUpper", HIGH(7), true, 0, 0.0},
                      BoundCase{"AtBoth", LOW(7) HIGH(7), true, 0, 0.0},
                      BoundCase{"BelowTheLower", LOW(7.5), false, 1, 0.5},
                      BoundCase{"AboveTheUpper", HIGH(5), false, 1, 2.0},
                      BoundCase{"AboveTheUpperOfTwo", LOW(1) HIGH(5), false, 1, 2.0},
                      BoundCase{"BelowTheLowerOfTwo", LOW(8) HIGH(9), false, 1, 1.0},
                      BoundCase{"OutsideBothAtOnce", LOW(8) HIGH(5), false, 2, 2.0},
                      BoundCase{"AnUpperBoundOfZero", HIGH(0), false, 1, 7.0}),
    CaseName);
#undef LOW
#undef HIGH

TEST_F(EvaluationTest, BoundsAreAskedAnew) {
  Measure({XmlObjective("Cost", "Minimise", "<UpperBound>8</UpperBound>")});
  Implementation& a = *model->FindComponent("A")->currentImplementation;
  a.cost = 5.0;
  const auto made = Evaluated();
  EXPECT_FALSE(made->feasible);
  a.cost = 4.0;
  made->Evaluate();
  EXPECT_TRUE(made->feasible);
  EXPECT_EQ(made->violationCount, 0);
  EXPECT_EQ(made->violations, (Values{{"Cost", 0.0}}));
}

TEST_F(EvaluationTest, NothingOfTheAnalysisStays) {
  Measure({XmlObjective("Risk")});
  Evaluated();
  EXPECT_TRUE(model->faultTrees.empty());
  EXPECT_TRUE(model->basicEvents.empty());
  EXPECT_FALSE(model->fmea);
}

TEST_F(EvaluationTest, EveryEvaluationNumbersEventsAlike) {
  Measure({XmlObjective("Risk")});
  Prime::Instance().SetIndex(1000);
  Evaluated();
  const int first = Prime::Instance().GetIndex();
  Prime::Instance().SetIndex(2000);
  Evaluated();
  EXPECT_EQ(Prime::Instance().GetIndex(), first);
  EXPECT_LT(first, 1000);
  EXPECT_GE(first, static_cast<int>(search->basePrimeCount));
}

/// Figures of the encoding itself: cost 10 and weight 100 times its number.
class BenchmarkEvaluationTest : public EvaluationTest {
 protected:
  BenchmarkEvaluationTest() { Config::Instance().useRBD = true; }
};

TEST_F(BenchmarkEvaluationTest, TakesCostAndWeightFromTheEncoding) {
  Measure({XmlObjective("Cost"), XmlObjective("Weight")});
  EXPECT_EQ(Evaluated(3)->evaluations, At(30.0, 300.0));
}

TEST_F(BenchmarkEvaluationTest, GivesNoValueThatWouldNeedAnAnalysis) {
  Measure({XmlObjective("Cost"), XmlObjective("Risk"), XmlObjective("Unavailability")});
  EXPECT_EQ(Evaluated(3)->evaluations, (Values{{"Cost", 30.0}}));
}

TEST_F(BenchmarkEvaluationTest, AnImpossibleDesignIsNotMeasured) {
  Measure({XmlObjective("Cost")});
  EXPECT_FALSE(
      Individual(*search, EncodingType::Tree, std::make_unique<FakeEncoding>(1, false)).Evaluate());
}

TEST_F(BenchmarkEvaluationTest, LeavesTheModelAlone) {
  Measure({XmlObjective("Cost")});
  const int made = NodeCounters::Instance().nodesMade;
  Evaluated(3);
  EXPECT_EQ(NodeCounters::Instance().nodesMade, made);
}

/// The levels of the events of an analysed model.
class SafetyLevelEvaluationTest : public EvaluationTest {
 protected:
  SafetyLevelEvaluationTest() {
    Config::Instance().decomposeSILs = true;
    Measure({XmlObjective("ASILCost"), XmlObjective("ASILInvalids")});
    for (const auto& [name, hazard] : model->hazards) hazard->safetyRequirement = 2;
    model->Synthesise();
    model->Analyse(false);
  }

  void SetLevels(int a, int b) const {
    EventOf("A").safetyRequirement = a;
    EventOf("B").safetyRequirement = b;
  }
};

TEST_F(SafetyLevelEvaluationTest, MeasuresCostAndInvalidCutSets) {
  const CapturedStreams streams;
  SetLevels(3, 1);
  const auto made = Evaluated();
  EXPECT_EQ(made->evaluations, (Values{{"ASILCost", 1010.0}, {"ASILInvalids", 1.0}}));
  EXPECT_EQ(made->asilCost, 1010.0);
}

TEST_F(SafetyLevelEvaluationTest, KeepsTheTrees) {
  const CapturedStreams streams;
  Evaluated();
  EXPECT_EQ(model->GetFaultTreeCount(), 2);
  EXPECT_EQ(model->basicEvents.size(), 2U);
}

TEST_F(SafetyLevelEvaluationTest, TellsEachNewLowestCountOnce) {
  const CapturedStreams streams;
  SetLevels(1, 1);
  Evaluated();
  Evaluated();
  SetLevels(2, 1);
  Evaluated();
  SetLevels(0, 0);
  Evaluated();
  SetLevels(2, 4);
  Evaluated();
  Evaluated();
  EXPECT_EQ(streams.Output(),
            "New lowest Invalids count : 2\n"
            "New lowest Invalids count : 1\n"
            "New lowest Invalids count : 0\n");
}

TEST_F(SafetyLevelEvaluationTest, MeasuresEvenWithoutObjectivesForIt) {
  const CapturedStreams streams;
  model->objectives.clear();
  SetLevels(4, 4);
  EXPECT_EQ(Evaluated()->evaluations, (Values{{"ASILCost", 20000.0}, {"ASILInvalids", 0.0}}));
}

TEST_F(SafetyLevelEvaluationTest, ChecksBounds) {
  const CapturedStreams streams;
  Objective& invalids = model->objectives.at("ASILInvalids");
  invalids.hasUpperBound = true;
  invalids.upperBound = 0.0;
  SetLevels(1, 1);
  const auto made = Evaluated();
  EXPECT_FALSE(made->feasible);
  EXPECT_EQ(made->violations.at("ASILInvalids"), 2.0);
  SetLevels(2, 2);
  made->Evaluate();
  EXPECT_TRUE(made->feasible);
}

TEST_F(SafetyLevelEvaluationTest, GoesBeforeTheBenchmark) {
  const CapturedStreams streams;
  Config::Instance().useRBD = true;
  SetLevels(2, 2);
  EXPECT_EQ(Evaluated()->evaluations, (Values{{"ASILCost", 200.0}, {"ASILInvalids", 0.0}}));
}

TEST_F(SafetyLevelEvaluationTest, CostsHaveSixSignificantDigits) {
  const CapturedStreams streams;
  SetLevels(1, 0);
  for (int i = 0; i < 100; ++i) {
    auto event = std::make_shared<BasicEvent>("more", model.get(), true);
    event->safetyRequirement = 5;
    model->AddEvent(event);
  }
  EXPECT_EQ(model->EvaluateASILCost(), 10000010);
  EXPECT_EQ(Evaluated()->evaluations.at("ASILCost"), 10000000.0);
}

}  // namespace
}  // namespace FTS
