#include "platform/Clock.h"
#include "support/FixedClock.h"
#include "support/ProcessStateTest.h"

namespace FTS {
namespace {

class ClockTest : public ProcessStateTest {};

TEST_F(ClockTest, ReplacementTellsBothTimes) {
  FixedClock clock;
  clock.Advance(1500);
  clock.SetCalendarSeconds(86'400);
  EXPECT_EQ(Clock::Milliseconds(), 1500);
  EXPECT_EQ(Clock::CalendarSeconds(), 86'400);
}

TEST_F(ClockTest, InnerReplacementGivesTheOuterOneBack) {
  FixedClock outer;
  outer.Advance(7);
  {
    const FixedClock inner;
    EXPECT_EQ(Clock::Milliseconds(), 0);
  }
  EXPECT_EQ(Clock::Milliseconds(), 7);
}

TEST_F(ClockTest, SystemClockServesWhenNothingReplacesIt) {
  const std::unique_ptr<ClockSource> before = Clock::Replace(nullptr);
  EXPECT_EQ(before, nullptr);
  EXPECT_LE(Clock::Milliseconds(), Clock::Milliseconds());
  constexpr long long StartOf2024 = 1'704'067'200;  // Before this test was written.
  EXPECT_GT(Clock::CalendarSeconds(), StartOf2024);
}

}  // namespace
}  // namespace FTS
