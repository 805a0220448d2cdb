#pragma once

#include <memory>
#include <utility>

#include "platform/Clock.h"

namespace FTS {

/// Stops the process-wide clock while it lives; only the test moves it on.
class FixedClock {
 public:
  FixedClock() {
    auto made = std::make_unique<Source>();
    source = made.get();
    before = Clock::Replace(std::move(made));
  }

  ~FixedClock() { Clock::Replace(std::move(before)); }

  FixedClock(const FixedClock&) = delete;
  FixedClock& operator=(const FixedClock&) = delete;

  void Advance(long long milliseconds) { source->milliseconds += milliseconds; }
  void SetCalendarSeconds(long long value) { source->calendarSeconds = value; }

 private:
  struct Source : ClockSource {
    long long Milliseconds() override { return milliseconds; }
    long long CalendarSeconds() override { return calendarSeconds; }

    long long milliseconds = 0;
    long long calendarSeconds = 0;
  };

  Source* source = nullptr;  // Owned by the clock until the end of this object.
  std::unique_ptr<ClockSource> before;
};

}  // namespace FTS
