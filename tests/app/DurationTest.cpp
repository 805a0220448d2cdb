#include "app/Duration.h"
#include "support/CaseName.h"
#include "support/ProcessStateTest.h"

namespace FTS {
namespace {

struct DurationCase {
  const char* name;
  float seconds;
  const char* text;
};

class DurationTest : public ProcessStateTest, public ::testing::WithParamInterface<DurationCase> {};

TEST_P(DurationTest, ReadsAs) {
  EXPECT_EQ(FormatDuration(GetParam().seconds), GetParam().text) << GetParam().seconds;
}

INSTANTIATE_TEST_SUITE_P(Spans, DurationTest,
                         ::testing::Values(DurationCase{"Nothing", 0.0f, "0s"},
                                           DurationCase{"Millisecond", 0.001f, "0.001s"},
                                           DurationCase{"BelowAMinute", 59.5f, "59.5s"},
                                           DurationCase{"MinuteStaysSeconds", 60.0f, "60s"},
                                           DurationCase{"AboveAMinute", 60.5f, "1m 0.5s"},
                                           DurationCase{"MinuteAndAHalf", 90.5f, "1m 30.5s"},
                                           DurationCase{"TwoMinutes", 120.0f, "2m 0s"},
                                           DurationCase{"HourStaysMinutes", 3600.0f, "60m 0s"},
                                           DurationCase{"LastSecondOfTheSixtiethMinute", 3659.0f,
                                                        "60m 59s"},
                                           DurationCase{"HourAndAMinute", 3660.0f, "1h 1m 0s"},
                                           DurationCase{"TwoHoursHaveNoMinutes", 7200.0f, "2h 0s"},
                                           DurationCase{"DayStaysHours", 90061.5f, "25h 1m 1.5s"}),
                         CaseName);

}  // namespace
}  // namespace FTS
