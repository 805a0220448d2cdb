#include <gmock/gmock.h>

#include <cmath>

#include "app/DiagnosticLog.h"
#include "faulttree/BasicEvent.h"
#include "model/CCF.h"
#include "support/CaseName.h"
#include "support/PartsModel.h"
#include "support/ProcessStateTest.h"

namespace FTS {
namespace {

using ::testing::DoubleNear;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

using Parameters = std::map<std::string, double>;

const std::vector<std::string>& Warnings() { return DiagnosticLog::Instance().Warnings(); }

struct FigureCase {
  const char* name;
  FailureModel failureModel;
  Parameters parameters;  // "RiskTime" counts, as the event has no owner.
  double unavailability;
  double frequency;
};

class FigureTest : public ProcessStateTest, public ::testing::WithParamInterface<FigureCase> {};

TEST_P(FigureTest, FollowsFromTheParameters) {
  const FigureCase& figures = GetParam();
  BasicEvent event("E", nullptr, false);
  event.failureModel = figures.failureModel;
  for (const auto& [parameter, value] : figures.parameters) event.SetParameter(parameter, value);
  event.ComputeFailureData();
  // Differences of nearly equal numbers cost some of the sixteen digits.
  const auto near = [](double value) { return DoubleNear(value, std::abs(value) * 1e-13); };
  EXPECT_THAT(event.GetUnavailability(), near(figures.unavailability));
  EXPECT_THAT(event.GetFrequency(), near(figures.frequency));
}

// Expected figures were computed with forty decimal digits.

INSTANTIATE_TEST_SUITE_P(
    Repairable, FigureTest,
    ::testing::Values(FigureCase{"Constant",
                                 FailureModel::CONSTANT,
                                 {{"FailureRate", 0.001}, {"RepairRate", 0.1}, {"RiskTime", 100}},
                                 0.009900583370740343557,
                                 0.000990099416629259656},
                      FigureCase{"RepairTime",
                                 FailureModel::MTTR,
                                 {{"FailureRate", 0.001}, {"MTTR", 10}, {"RiskTime", 100}},
                                 0.009900583370740343557,
                                 0.000990099416629259656},
                      FigureCase{"TimeToFailure",
                                 FailureModel::MTTF,
                                 {{"MTTF", 1000}, {"RepairRate", 0.1}, {"RiskTime", 100}},
                                 0.009900583370740343557,
                                 0.000990099416629259656},
                      FigureCase{"BothTimes",
                                 FailureModel::MTTFMTTR,
                                 {{"MTTF", 1000}, {"MTTR", 10}, {"RiskTime", 100}},
                                 0.009900583370740343557,
                                 0.000990099416629259656},
                      FigureCase{"RepairTimeOfZeroIsNoRepair",
                                 FailureModel::MTTR,
                                 {{"FailureRate", 0.001}, {"MTTR", 0}, {"RiskTime", 100}},
                                 0.095162581964040431858,
                                 0.001 * (1 - 0.095162581964040431858)},
                      FigureCase{"MissingRepairTimeIsNoRepair",
                                 FailureModel::MTTFMTTR,
                                 {{"MTTF", 1000}, {"RiskTime", 100}},
                                 0.095162581964040431858,
                                 0.001 * (1 - 0.095162581964040431858)},
                      FigureCase{"MissingTimeToFailureIsNoFailure",
                                 FailureModel::MTTF,
                                 {{"RepairRate", 0.1}, {"RiskTime", 100}},
                                 0.0,
                                 0.0},
                      FigureCase{"RateOfZero",
                                 FailureModel::CONSTANT,
                                 {{"FailureRate", 0}, {"RepairRate", 0.1}, {"RiskTime", 100}},
                                 0.0,
                                 0.0},
                      FigureCase{"MissingParametersCountAsMinusOne",
                                 FailureModel::CONSTANT,
                                 {},
                                 (1 - std::exp(-2.0)) * 0.5,
                                 -1 + (1 - std::exp(-2.0)) * 0.5}),
    CaseName);

constexpr double Ln2 = 0.69314718055994530942;

INSTANTIATE_TEST_SUITE_P(
    Voting, FigureTest,
    ::testing::Values(
        FigureCase{
            "OneOfTwo",
            FailureModel::BINOMIAL,
            {{"FailureRate", 0.002}, {"RepairRate", 0.05}, {"RiskTime", 50}, {"n", 2}, {"m", 1}},
            0.069942018527903173382,
            0.002 * (1 - 0.069942018527903173382)},
        FigureCase{
            "TwoOfThree",
            FailureModel::BINOMIAL,
            {{"FailureRate", 0.002}, {"RepairRate", 0.05}, {"RiskTime", 50}, {"n", 3}, {"m", 2}},
            0.003712845663182900155,
            0.002 * (1 - 0.003712845663182900155)},
        FigureCase{"FractionsAreCutOff",
                   FailureModel::BINOMIAL,
                   {{"FailureRate", 0.002},
                    {"RepairRate", 0.05},
                    {"RiskTime", 50},
                    {"n", 3.9},
                    {"m", 2.9}},
                   0.003712845663182900155,
                   0.002 * (1 - 0.003712845663182900155)},
        FigureCase{
            "MoreThanThereAreNeverFail",
            FailureModel::BINOMIAL,
            {{"FailureRate", 0.002}, {"RepairRate", 0.05}, {"RiskTime", 50}, {"n", 2}, {"m", 3}},
            0.0,
            0.002},
        // 13! wraps to 1932053504, which holds 12! four times.
        FigureCase{"CoefficientsWrapFromThirteenOn",
                   FailureModel::BINOMIAL,
                   {{"FailureRate", Ln2 / 100},
                    {"RepairRate", 0},
                    {"RiskTime", 100},
                    {"n", 13},
                    {"m", 12}},
                   0.0006103515625,
                   Ln2 / 100 * (1 - 0.0006103515625)},
        // 32! and 33! both wrap to the lowest integer, so the coefficients are 1 and 1.
        FigureCase{"LowestIntegerIsDivided",
                   FailureModel::BINOMIAL,
                   {{"FailureRate", Ln2 / 100},
                    {"RepairRate", 0},
                    {"RiskTime", 100},
                    {"n", 33},
                    {"m", 32}},
                   0x1p-32,
                   Ln2 / 100 * (1 - 0x1p-32)},
        FigureCase{
            "FactorialsOfZeroGiveZero",
            FailureModel::BINOMIAL,
            {{"FailureRate", 0.002}, {"RepairRate", 0.05}, {"RiskTime", 50}, {"n", 34}, {"m", 1}},
            0.0,
            0.002},
        FigureCase{"NumbersOutOfRangeAreClamped",
                   FailureModel::BINOMIAL,
                   {{"FailureRate", 0.002},
                    {"RepairRate", 0.05},
                    {"RiskTime", 50},
                    {"n", 1e300},
                    {"m", -1e300}},
                   0.0,
                   0.002}),
    CaseName);

INSTANTIATE_TEST_SUITE_P(
    Standby, FigureTest,
    ::testing::Values(FigureCase{"NoSpares",
                                 FailureModel::POISSON,
                                 {{"FailureRate", 0.001}, {"n", 2}, {"s", 0}, {"RiskTime", 500}},
                                 0.632120558828557678404,
                                 0.001 * 0.367879441171442321596},
                      FigureCase{"OneSpare",
                                 FailureModel::POISSON,
                                 {{"FailureRate", 0.001}, {"n", 2}, {"s", 1}, {"RiskTime", 500}},
                                 0.264241117657115356809,
                                 0.001 * (1 - 0.264241117657115356809)},
                      FigureCase{"TwoSpares",
                                 FailureModel::POISSON,
                                 {{"FailureRate", 0.001}, {"n", 2}, {"s", 2}, {"RiskTime", 500}},
                                 0.080301397071394196011,
                                 0.001 * (1 - 0.080301397071394196011)},
                      FigureCase{"MissingSparesSumNothing",
                                 FailureModel::POISSON,
                                 {{"FailureRate", 0.001}, {"n", 2}, {"RiskTime", 500}},
                                 1.0,
                                 0.0},
                      FigureCase{
                          "SparesBelowTheLowestInteger",
                          FailureModel::POISSON,
                          {{"FailureRate", 0.001}, {"n", 2}, {"s", -1e300}, {"RiskTime", 500}},
                          1.0,
                          0.0},
                      FigureCase{"NoFailures",
                                 FailureModel::POISSON,
                                 {{"FailureRate", 0}, {"n", 2}, {"s", 1}, {"RiskTime", 500}},
                                 0.0,
                                 0.0}),
    CaseName);

INSTANTIATE_TEST_SUITE_P(
    Others, FigureTest,
    ::testing::Values(
        FigureCase{"Fixed", FailureModel::FIXED, {{"Unavailability", 0.25}}, 0.25, 0.0},
        FigureCase{"FixedWithoutFigure", FailureModel::FIXED, {}, -1.0, 0.0},
        FigureCase{"Dormant",
                   FailureModel::DORMANT,
                   {{"FailureRate", 0.0001}, {"MTTR", 10}, {"InspectionTime", 1000}},
                   0.049278911095074299219,
                   0.000095072108890492570},
        FigureCase{"DormantWithoutFailures",
                   FailureModel::DORMANT,
                   {{"FailureRate", 0}, {"MTTR", 10}, {"InspectionTime", 1000}},
                   0.0,
                   0.0},
        FigureCase{"Time", FailureModel::TIME, {{"Unavailability", 0.5}}, 0.0, 0.0},
        FigureCase{"Sequential", FailureModel::SEQUENTIAL, {{"Unavailability", 0.5}}, 0.0, 0.0},
        FigureCase{"None", FailureModel::NONE, {{"Unavailability", 0.5}}, 0.0, 0.0}),
    CaseName);

Parameters Phases(double riskTime) {
  return {{"Interval1", 10}, {"Interval2", 100}, {"Scale1", 50}, {"Scale2", 200},
          {"Scale3", 80},    {"Slope1", 0.5},    {"Slope3", 2},  {"RiskTime", riskTime}};
}

INSTANTIATE_TEST_SUITE_P(
    Phases, FigureTest,
    ::testing::Values(
        FigureCase{"Early", FailureModel::VARIABLE, Phases(5), 0.271106585889975398027, 0.0},
        FigureCase{"EndOfEarly", FailureModel::VARIABLE, Phases(10), 0.360592680838102899800, 0.0},
        FigureCase{"Useful", FailureModel::VARIABLE, Phases(60), 0.581791897766698031555, 0.0},
        FigureCase{"EndOfUseful", FailureModel::VARIABLE, Phases(110), 0.754062021125469476196,
                   0.0},
        FigureCase{"WearOut", FailureModel::VARIABLE, Phases(130), 0.814648958311993690077, 0.0}),
    CaseName);

using FailureModelsTest = ProcessStateTest;

std::shared_ptr<BasicEvent> EventOf(const std::shared_ptr<Component>& component,
                                    FailureModel failureModel, const Parameters& parameters) {
  auto event = std::make_shared<BasicEvent>("E", component->GetModel(), true);
  event->owner = component;
  event->failureModel = failureModel;
  event->parameters = parameters;
  return event;
}

TEST_F(FailureModelsTest, MissingParameterIsMinusOne) {
  BasicEvent event("E", nullptr, false);
  EXPECT_EQ(event.GetParameter("n"), -1.0);
  event.SetParameter("n", 4.0);
  EXPECT_EQ(event.GetParameter("n"), 4.0);
}

TEST_F(FailureModelsTest, PoissonFactorialsWrapFromThirteenOn) {
  BasicEvent event("E", nullptr, false);
  event.failureModel = FailureModel::POISSON;
  event.parameters = {{"FailureRate", 0.001}, {"n", 2}, {"s", 13}, {"RiskTime", 500}};
  event.ComputeFailureData();
  EXPECT_NEAR(event.unavailability, -1.26810743061052200679e-10, 1e-15);
}

TEST_F(FailureModelsTest, PoissonTermsBeyondTheRangeOfFactorialsCountNothing) {
  BasicEvent event("E", nullptr, false);
  event.failureModel = FailureModel::POISSON;
  event.parameters = {{"FailureRate", 0.001}, {"n", 2}, {"s", 33}, {"RiskTime", 500}};
  event.ComputeFailureData();
  const double upToTheLast = event.unavailability;
  event.parameters["s"] = 1e300;
  event.ComputeFailureData();
  EXPECT_EQ(event.unavailability, upToTheLast);
}

TEST_F(FailureModelsTest, OwnersRiskTimeComesBeforeTheEventsOwn) {
  PartsModel parts(100.0);
  const auto component = parts.AddComponent("A");
  component->riskTime = 40.0;
  const auto event = EventOf(component, FailureModel::NONE, {{"RiskTime", 7.0}});
  EXPECT_EQ(event->ResolveRiskTime(), 40.0);
}

TEST_F(FailureModelsTest, EventWithoutOwnerUsesItsOwnRiskTime) {
  PartsModel parts(100.0);
  BasicEvent event("E", &parts.model, false);
  EXPECT_EQ(event.ResolveRiskTime(), -1.0);
  event.SetParameter("RiskTime", 7.0);
  EXPECT_EQ(event.ResolveRiskTime(), 7.0);
}

TEST_F(FailureModelsTest, RiskTimeOfZeroIsThatOfTheModel) {
  PartsModel parts(100.0);
  BasicEvent event("E", &parts.model, false);
  event.SetParameter("RiskTime", 0.0);
  EXPECT_EQ(event.ResolveRiskTime(), 100.0);
}

TEST_F(FailureModelsTest, RoundedUnavailabilityIsReportedWithTheOwner) {
  PartsModel parts(1.0);
  const auto component = parts.AddComponent("A");
  const auto event =
      EventOf(component, FailureModel::CONSTANT, {{"FailureRate", 1e-300}, {"RepairRate", 0.0}});
  event->ComputeFailureData();
  EXPECT_EQ(event->unavailability, 0.0);
  EXPECT_EQ(event->frequency, 1e-300);
  EXPECT_THAT(Warnings(), ElementsAre("Basic event: Main::A.E has a non-zero failure rate but zero "
                                      "unavailability; possible rounding error."));
}

TEST_F(FailureModelsTest, RoundedUnavailabilityOfACommonCauseIsReportedAsSuch) {
  CCF event("fire", nullptr, nullptr, false);
  event.failureModel = FailureModel::CONSTANT;
  event.parameters = {{"FailureRate", 1e-300}, {"RepairRate", 0.0}, {"RiskTime", 1.0}};
  event.ComputeFailureData();
  EXPECT_THAT(Warnings(), ElementsAre("CCF: fire has a non-zero failure rate but zero "
                                      "unavailability; possible rounding error."));
}

TEST_F(FailureModelsTest, NoFailureRateIsNoRoundingError) {
  BasicEvent event("E", nullptr, false);
  event.failureModel = FailureModel::CONSTANT;
  event.parameters = {{"FailureRate", 0.0}, {"RepairRate", 0.0}, {"RiskTime", 1.0}};
  event.ComputeFailureData();
  EXPECT_THAT(Warnings(), IsEmpty());
}

TEST_F(FailureModelsTest, VotingMayRoundToZeroToo) {
  BasicEvent event("E", nullptr, false);
  event.failureModel = FailureModel::BINOMIAL;
  event.parameters = {
      {"FailureRate", 1e-300}, {"RepairRate", 0.0}, {"RiskTime", 1.0}, {"n", 2.0}, {"m", 1.0}};
  event.ComputeFailureData();
  EXPECT_EQ(Warnings().size(), 1U);
}

TEST_F(FailureModelsTest, DistributionIsAShareOfTheRateOfItsImplementation) {
  PartsModel parts;
  const auto component = parts.AddComponent("A");
  const auto event = EventOf(component, FailureModel::DISTRIBUTION, {{"Percentage", 25.0}});
  component->implementations[0]->failureRate = 0.004;
  component->implementations[0]->AddBasicEvent(event);
  parts.AddImplementation(component, "other")->failureRate = 0.8;
  event->frequency = 0.5;
  event->ComputeFailureData();
  EXPECT_DOUBLE_EQ(event->unavailability, 0.001);
  EXPECT_EQ(event->frequency, 0.5);
}

TEST_F(FailureModelsTest, DistributionComputedWhileReadingUsesTheImplementationAddedLast) {
  PartsModel parts;
  const auto component = parts.AddComponent("A");
  component->implementations[0]->failureRate = 0.8;
  parts.AddImplementation(component, "read")->failureRate = 0.004;
  const auto event = EventOf(component, FailureModel::DISTRIBUTION, {{"Percentage", 25.0}});
  event->ComputeFailureData();
  EXPECT_DOUBLE_EQ(event->unavailability, 0.001);
}

TEST_F(FailureModelsTest, DistributionWithoutOwnerWarnsAndIsZero) {
  BasicEvent event("E", nullptr, false);
  event.failureModel = FailureModel::DISTRIBUTION;
  event.SetParameter("Percentage", 25.0);
  event.unavailability = 0.5;
  event.frequency = 0.5;
  event.ComputeFailureData();
  EXPECT_EQ(event.unavailability, 0.0);
  EXPECT_EQ(event.frequency, 0.5);
  EXPECT_THAT(Warnings(), ElementsAre("Cannot calculate a failure distribution for event: E as it "
                                      "has no parent component"));
}

class LeavesFrequencyTest : public ProcessStateTest,
                            public ::testing::WithParamInterface<FigureCase> {};

TEST_P(LeavesFrequencyTest, AsItWas) {
  BasicEvent event("E", nullptr, false);
  event.failureModel = GetParam().failureModel;
  event.frequency = 0.5;
  event.unavailability = 0.5;
  event.ComputeFailureData();
  EXPECT_EQ(event.frequency, 0.5);
  EXPECT_EQ(event.unavailability, 0.0);
}

INSTANTIATE_TEST_SUITE_P(Models, LeavesFrequencyTest,
                         ::testing::Values(FigureCase{"Time", FailureModel::TIME, {}, 0, 0},
                                           FigureCase{
                                               "Sequential", FailureModel::SEQUENTIAL, {}, 0, 0},
                                           FigureCase{"None", FailureModel::NONE, {}, 0, 0}),
                         CaseName);

}  // namespace
}  // namespace FTS
