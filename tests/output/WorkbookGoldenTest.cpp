#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "app/Config.h"
#include "faulttree/BasicEvent.h"
#include "faulttree/DeviationProxies.h"
#include "model/Deviation.h"
#include "model/Implementation.h"
#include "model/Port.h"
#include "support/BrakeModel.h"
#include "support/CapturedStreams.h"
#include "support/Golden.h"
#include "support/ProcessStateTest.h"
#include "support/TemporaryFolder.h"

namespace FTS {

namespace {

class WorkbookGoldenTest : public ProcessStateTest {
 protected:
  WorkbookGoldenTest() { Config::Instance().outputDir = folder.Path(); }

  void AddImplementation(const std::shared_ptr<Component>& component, double failureRate) {
    auto implementation = std::make_shared<Implementation>("only", component, &brake.Get());
    implementation->failureRate = failureRate;
    component->AddImplementation(implementation);
    component->SelectImplementation(0);
  }

  static void AddShare(BasicEvent& event, double percentage) {
    event.failureModel = FailureModel::DISTRIBUTION;
    event.SetParameter("Percentage", percentage);
  }

  /// What ISO 26262 wants to know of the two components.
  void AddFailureRates() {
    AddImplementation(brake.pump, 4e-06);
    AddImplementation(brake.valve, 1e-06);
    AddShare(*brake.stuck, 25.0);
    AddShare(*brake.leak, 75.0);
    brake.leak->SetParameter("DiagnosticCoverage", 80.0);
    brake.pump->GetCurrentImplementation().AddBasicEvent(brake.stuck);
    brake.pump->GetCurrentImplementation().AddBasicEvent(brake.leak);
    brake.valve->GetCurrentImplementation().AddBasicEvent(brake.demand);
  }

  void CoverStuck() {
    brake.valve->AddPort(std::make_shared<Port>("in", brake.valve, &brake.Get()));
    const auto record = std::make_shared<InputDeviation>(brake.valve, "Omission", "in");
    mechanism = std::make_shared<InputDeviationProxy>(record, &brake.Get(), -1);
    mechanism->SetCoverage(brake.hazard->name, 90.0);
    brake.stuck->coverage[brake.hazard->name] = mechanism;
  }

  TemporaryFolder folder;
  BrakeModel brake;
  std::shared_ptr<InputDeviationProxy> mechanism;
  CapturedStreams streams;
};

TEST_F(WorkbookGoldenTest, ResultsHaveContentsEffectsAndASheetForEachTree) {
  brake.Get().WriteExcelWorkbook();
  EXPECT_GOLDEN(folder.Read("brake.v2-FMEAOutput/brake.v2_Excel.xml"), "output/brake.v2_Excel.xml");
}

TEST_F(WorkbookGoldenTest, HardwareMetricsAreASummaryAndACalculationForEachTree) {
  AddFailureRates();
  CoverStuck();
  brake.Get().WriteISO26262Workbook();
  EXPECT_GOLDEN(folder.Read("brake.v2-FMEAOutput/brake.v2_ISO26262_Excel.xml"),
                "output/brake.v2_ISO26262_Excel.xml");
}

}  // namespace

}  // namespace FTS
