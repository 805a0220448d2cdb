#include <gtest/gtest.h>

#include <string>

#include "app/Config.h"
#include "app/DiagnosticLog.h"
#include "output/VisitorCombinedXML.h"
#include "output/VisitorXML.h"
#include "support/BrakeModel.h"
#include "support/CapturedStreams.h"
#include "support/Golden.h"
#include "support/ProcessStateTest.h"
#include "support/TemporaryFolder.h"

namespace FTS {

namespace {

class ResultsGoldenTest : public ProcessStateTest {
 protected:
  ResultsGoldenTest() {
    Config::Instance().outputDir = folder.Path();
    DiagnosticLog::Instance().AddWarning("First thing");
    DiagnosticLog::Instance().AddWarning("Port a < b: \"c\"");
  }

  TemporaryFolder folder;
  BrakeModel brake;
  CapturedStreams streams;
};

TEST_F(ResultsGoldenTest, TreesAndFailureModesShareAFile) {
  VisitorXML writer;
  brake.Get().Accept(writer);
  EXPECT_GOLDEN(folder.Read("brake.v2-FMEAOutput/FaultTrees.xml"), "output/FaultTrees.xml");
}

TEST_F(ResultsGoldenTest, CutSetsOfATreeHaveAFileOfTheirOwn) {
  VisitorXML writer;
  brake.Get().Accept(writer);
  EXPECT_GOLDEN(folder.Read("brake.v2-FMEAOutput/CutSets(20).xml"), "output/CutSets(20).xml");
  EXPECT_GOLDEN(folder.Read("brake.v2-FMEAOutput/CutSets(30).xml"), "output/CutSets(30).xml");
}

TEST_F(ResultsGoldenTest, CombinedFileHoldsTreesAndCutSets) {
  VisitorCombinedXML writer;
  brake.Get().Accept(writer);
  EXPECT_GOLDEN(folder.Read("brake.v2-Results/Results.xml"), "output/Results.xml");
}

}  // namespace

}  // namespace FTS
