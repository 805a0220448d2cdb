#include <gtest/gtest.h>

#include "app/Config.h"
#include "support/BrakeModel.h"
#include "support/CapturedStreams.h"
#include "support/ProcessStateTest.h"

namespace FTS {

namespace {

class EPMBlockTest : public ProcessStateTest {
 protected:
  std::string Printed() {
    brake.Get().WriteEPMBlock();
    return streams.Output();
  }

  BrakeModel brake;
  CapturedStreams streams;
};

TEST_F(EPMBlockTest, TellsFiguresAndRiskOfEachTreeAndTheSumOfRisks) {
  brake.Late().severity = 4.0;
  brake.Late().unavailability = 0.125;
  EXPECT_EQ(Printed(),
            "EPM_Output\n"
            "FaultTree: Loss of braking\n"
            "CutSets: 2\n"
            "Unavailability: 0.501235\n"
            "Severity: 2.5\n"
            "Risk: 1.25309\n"
            "FaultTree: Braking late\n"
            "CutSets: 1\n"
            "Unavailability: 0.125\n"
            "Severity: 4\n"
            "Risk: 0.5\n"
            "SystemRisk: 1.75309\n"
            "End_EPM_Output\n");
}

TEST_F(EPMBlockTest, SeverityThatWasNeverSetMakesTheRiskNegative) {
  brake.Late().unavailability = 0.25;
  brake.Get().faultTrees.erase(brake.Get().faultTrees.begin());
  EXPECT_EQ(Printed(),
            "EPM_Output\nFaultTree: Braking late\nCutSets: 1\nUnavailability: 0.25\n"
            "Severity: -1\nRisk: -0.25\nSystemRisk: -0.25\nEnd_EPM_Output\n");
}

TEST_F(EPMBlockTest, IsPrintedInSilentRunsToo) {
  Config::Instance().runSilent = true;
  brake.Get().faultTrees.clear();
  EXPECT_EQ(Printed(), "EPM_Output\nSystemRisk: 0\nEnd_EPM_Output\n");
}

TEST_F(EPMBlockTest, TreeWithoutTopNodeHasNoName) {
  brake.Get().faultTrees.clear();
  AddTree(brake.Get(), nullptr);
  EXPECT_EQ(Printed(),
            "EPM_Output\nFaultTree: \nCutSets: 0\nUnavailability: 0\nSeverity: -1\nRisk: 0\n"
            "SystemRisk: 0\nEnd_EPM_Output\n");
}

}  // namespace

}  // namespace FTS
