#include <gtest/gtest.h>

#include <cmath>
#include <initializer_list>
#include <memory>
#include <string>

#include "analysis/CutSet.h"
#include "analysis/FaultTree.h"
#include "analysis/HardwareMetrics.h"
#include "faulttree/BasicEvent.h"
#include "faulttree/Gates.h"
#include "model/Deviation.h"
#include "model/Hazard.h"
#include "model/Implementation.h"
#include "support/PartsModel.h"
#include "support/ProcessStateTest.h"

namespace FTS {
namespace {

/// A tree for the hazard "H" over components whose rates are in 1e-9 per hour.
class HardwareMetricsTest : public ProcessStateTest {
 protected:
  using Event = std::shared_ptr<BasicEvent>;

  HardwareMetricsTest()
      : hazard(std::make_shared<Hazard>("H", &parts.model)),
        tree(std::make_shared<OrGate>("H", &parts.model)) {
    tree.source = hazard;
  }

  std::shared_ptr<Component> AddComponent(const std::string& name, double rate) {
    const auto component = parts.AddComponent(name);
    component->GetCurrentImplementation().failureRate = rate * 1e-9;
    return component;
  }

  Event AddEvent(const std::shared_ptr<Component>& component, const std::string& name,
                 double percentage) {
    const auto event = std::make_shared<BasicEvent>(name, &parts.model, true);
    event->owner = component;
    event->failureModel = FailureModel::DISTRIBUTION;
    event->SetParameter("Percentage", percentage);
    component->GetCurrentImplementation().AddBasicEvent(event);
    parts.model.AddEvent(event);
    return event;
  }

  void AddCutSet(std::initializer_list<Event> events) {
    auto cutSet = std::make_unique<CutSet>();
    for (const Event& event : events) cutSet->AddEvent(*event);
    tree.AddCutSet(std::move(cutSet), false);
  }

  /// Covers the event for a hazard by a mechanism of its own.
  void Cover(const Event& event, const std::string& hazardName, double percent) {
    const auto component = parts.AddComponent("Guard" + std::to_string(mechanisms.size()));
    parts.AddPort(component, "in");
    mechanisms.push_back(parts.Input(component, "late", "in"));
    mechanisms.back()->SetCoverage(hazardName, percent);
    event->coverage[hazardName] = mechanisms.back();
  }

  void ExpectMetrics(double total, double singlePoint, double latent) {
    tree.ComputeHardwareMetrics(parts.model);
    EXPECT_NEAR(tree.totalFailureRate, total * 1e-9, 1e-20);
    EXPECT_NEAR(tree.singlePointMetric, singlePoint, 1e-12);
    EXPECT_NEAR(tree.latentFaultMetric, latent, 1e-12);
  }

  PartsModel parts;
  std::shared_ptr<Hazard> hazard;
  FaultTree tree;
  std::vector<std::shared_ptr<InputDeviationProxy>> mechanisms;
};

TEST_F(HardwareMetricsTest, SinglePointsLowerTheFirstMetric) {
  const auto pump = AddComponent("Pump", 100);
  AddCutSet({AddEvent(pump, "stuck", 30)});
  AddEvent(pump, "leak", 70);
  ExpectMetrics(100, 1.0 - 30.0 / 100, 1.0);
}

TEST_F(HardwareMetricsTest, CoverageLeavesAResidue) {
  const auto pump = AddComponent("Pump", 100);
  const Event stuck = AddEvent(pump, "stuck", 30);
  AddCutSet({stuck});
  Cover(stuck, "H", 90);
  ExpectMetrics(100, 1.0 - 3.0 / 100, 1.0);
}

TEST_F(HardwareMetricsTest, CoverageForAnotherHazardCountsForNothing) {
  const Event stuck = AddEvent(AddComponent("Pump", 100), "stuck", 30);
  AddCutSet({stuck});
  Cover(stuck, "Other", 90);
  ExpectMetrics(100, 1.0 - 30.0 / 100, 1.0);
}

TEST_F(HardwareMetricsTest, TreeOfASystemOutputKnowsNoCoverage) {
  const Event stuck = AddEvent(AddComponent("Pump", 100), "stuck", 30);
  AddCutSet({stuck});
  Cover(stuck, "H", 90);
  tree.source.reset();
  ExpectMetrics(100, 1.0 - 30.0 / 100, 1.0);
}

TEST_F(HardwareMetricsTest, PairsLowerTheSecondMetricOnly) {
  const Event a = AddEvent(AddComponent("A", 100), "a", 20);
  const Event b = AddEvent(AddComponent("B", 60), "b", 50);
  a->SetParameter("DiagnosticCoverage", 75);
  AddCutSet({a, b});
  // 100 * 0.2 * 0.25 = 5, and 60 * 0.5 = 30 without any coverage.
  ExpectMetrics(160, 1.0, 1.0 - 35.0 / 160);
}

TEST_F(HardwareMetricsTest, WhatIsCoveredOfASinglePointCanStillBeLatent) {
  const Event a = AddEvent(AddComponent("A", 100), "a", 20);
  const Event b = AddEvent(AddComponent("B", 60), "b", 0);
  Cover(a, "H", 75);
  AddCutSet({a});
  AddCutSet({a, b});  // Not minimal, but cut sets need not have been compared.
  // Residual 100 * 0.2 * 0.25 = 5; latent 20 - 5 = 15, of what the residue leaves.
  ExpectMetrics(160, 1.0 - 5.0 / 160, 1.0 - 15.0 / 155);
}

TEST_F(HardwareMetricsTest, LargerCutSetsCountForNeither) {
  const auto pump = AddComponent("Pump", 100);
  AddCutSet({AddEvent(pump, "a", 30), AddEvent(pump, "b", 30), AddEvent(pump, "c", 40)});
  ExpectMetrics(100, 1.0, 1.0);
}

TEST_F(HardwareMetricsTest, ComponentCountsOnceHoweverManyOfItsEventsMatter) {
  const auto pump = AddComponent("Pump", 100);
  AddCutSet({AddEvent(pump, "a", 10)});
  AddCutSet({AddEvent(pump, "b", 20)});
  ExpectMetrics(100, 1.0 - 30.0 / 100, 1.0);
  EXPECT_NEAR(tree.ComputeTotalFailureRate(parts.model), 100e-9, 1e-20);
}

TEST_F(HardwareMetricsTest, ComponentThatTheTreeDoesNotMeetIsLeftOut) {
  AddCutSet({AddEvent(AddComponent("Pump", 100), "a", 10)});
  AddEvent(AddComponent("Radio", 1000), "dead", 100);
  ExpectMetrics(100, 0.9, 1.0);
}

TEST_F(HardwareMetricsTest, OnlySharesOfAFailureRateHaveARate) {
  const Event fixed = AddEvent(AddComponent("Pump", 100), "a", 10);
  fixed->failureModel = FailureModel::FIXED;
  AddCutSet({fixed});
  ExpectMetrics(100, 1.0, 1.0);
}

TEST_F(HardwareMetricsTest, ParametersThatAreNotGivenAreNone) {
  const Event a = AddEvent(AddComponent("A", 100), "a", 10);
  const Event b = AddEvent(AddComponent("B", 100), "b", 50);
  a->parameters.clear();
  AddCutSet({a});
  AddCutSet({b, AddEvent(AddComponent("C", 50), "c", 0)});
  ExpectMetrics(250, 1.0, 1.0 - 50.0 / 250);
}

TEST_F(HardwareMetricsTest, CurrentImplementationIsWhatCounts) {
  const auto pump = AddComponent("Pump", 100);
  AddCutSet({AddEvent(pump, "a", 10)});
  parts.AddImplementation(pump, "other")->failureRate = 5e-6;
  ExpectMetrics(100, 0.9, 1.0);
}

TEST_F(HardwareMetricsTest, EventsWithoutComponentAndComplementsHaveNoRate) {
  const Event a = AddEvent(AddComponent("A", 100), "a", 10);
  const auto fire = std::make_shared<BasicEvent>("fire", &parts.model, true);
  parts.model.AddEvent(fire);
  AddCutSet({a, fire});
  AddCutSet({a->GetComplement()});
  ExpectMetrics(100, 1.0, 1.0 - 10.0 / 100);
}

TEST_F(HardwareMetricsTest, NoRateGivesNoMetric) {
  AddCutSet({AddEvent(AddComponent("A", 0), "a", 10)});
  tree.ComputeHardwareMetrics(parts.model);
  EXPECT_EQ(tree.totalFailureRate, 0.0);
  EXPECT_TRUE(std::isnan(tree.singlePointMetric));
  EXPECT_TRUE(std::isnan(tree.latentFaultMetric));
}

TEST_F(HardwareMetricsTest, TreeWithoutCutSetsHasNoComponents) {
  EXPECT_TRUE(CollectHardwareMetrics(tree, parts.model).empty());
  tree.ComputeHardwareMetrics(parts.model);
  EXPECT_EQ(tree.totalFailureRate, 0.0);
}

TEST_F(HardwareMetricsTest, ListsAllModesOfAComponentByNameInTheOrderOfTheFirstEvent) {
  const auto late = AddComponent("Late", 1);
  const auto early = AddComponent("Early", 2);
  const Event z = AddEvent(early, "z", 50);
  AddCutSet({AddEvent(late, "m", 50), z});
  AddEvent(early, "a", 50);
  const auto all = CollectHardwareMetrics(tree, parts.model);
  ASSERT_EQ(all.size(), 2u);
  EXPECT_EQ(all[0].component, early);
  ASSERT_EQ(all[0].modes.size(), 2u);
  EXPECT_EQ(all[0].modes[0].event->name, "a");
  EXPECT_FALSE(all[0].modes[0].dual);
  EXPECT_EQ(all[0].modes[1].event->name, "z");
  EXPECT_TRUE(all[0].modes[1].dual);
  EXPECT_EQ(all[1].component, late);
}

}  // namespace
}  // namespace FTS
