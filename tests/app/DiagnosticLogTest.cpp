#include <gmock/gmock.h>

#include "app/Config.h"
#include "app/DiagnosticLog.h"
#include "support/ProcessStateTest.h"

namespace FTS {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class DiagnosticLogTest : public ProcessStateTest {
 protected:
  DiagnosticLog log;
};

TEST_F(DiagnosticLogTest, StartsEmpty) {
  EXPECT_THAT(log.Warnings(), IsEmpty());
  EXPECT_THAT(log.Errors(), IsEmpty());
  EXPECT_EQ(log.ReportedWarnings(), 0);
  EXPECT_EQ(log.ReportedErrors(), 0);
}

TEST_F(DiagnosticLogTest, KeepsTextsInTheOrderOfTheirArrival) {
  log.AddWarning("one");
  log.AddError("two");
  log.AddWarning("three");
  EXPECT_THAT(log.Warnings(), ElementsAre("one", "three"));
  EXPECT_THAT(log.Errors(), ElementsAre("two"));
}

TEST_F(DiagnosticLogTest, KeepsAHundredWarningsAndCountsOn) {
  for (int i = 0; i < 105; ++i) log.AddWarning(std::to_string(i));
  EXPECT_THAT(log.Warnings(), SizeIs(100));
  EXPECT_EQ(log.Warnings().back(), "99");
  EXPECT_EQ(log.ReportedWarnings(), 105);
}

TEST_F(DiagnosticLogTest, KeepsAHundredErrorsAndCountsOn) {
  for (int i = 0; i < 101; ++i) log.AddError(std::to_string(i));
  EXPECT_THAT(log.Errors(), SizeIs(100));
  EXPECT_EQ(log.ErrorCount(), 100);
  EXPECT_EQ(log.ReportedErrors(), 101);
}

TEST_F(DiagnosticLogTest, SilentRunCountsWithoutKeeping) {
  Config::Instance().runSilent = true;
  log.AddWarning("warning");
  log.AddError("error");
  EXPECT_THAT(log.Warnings(), IsEmpty());
  EXPECT_EQ(log.ErrorCount(), 0);
  EXPECT_EQ(log.ReportedWarnings(), 1);
  EXPECT_EQ(log.ReportedErrors(), 1);
}

TEST_F(DiagnosticLogTest, RoomThatASilentRunCountedAwayIsNotGivenBack) {
  Config::Instance().runSilent = true;
  for (int i = 0; i < 99; ++i) log.AddWarning("silent");
  Config::Instance().runSilent = false;
  log.AddWarning("hundredth");
  log.AddWarning("too late");
  EXPECT_THAT(log.Warnings(), ElementsAre("hundredth"));
}

TEST_F(DiagnosticLogTest, ReleaseForgetsEverything) {
  DiagnosticLog::Instance().AddError("error");
  EXPECT_EQ(DiagnosticLog::Instance().ErrorCount(), 1);
  DiagnosticLog::Release();
  EXPECT_EQ(DiagnosticLog::Instance().ErrorCount(), 0);
  EXPECT_EQ(DiagnosticLog::Instance().ReportedErrors(), 0);
}

}  // namespace
}  // namespace FTS
