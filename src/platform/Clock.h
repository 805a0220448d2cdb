#pragma once

#include <memory>

namespace FTS {

/// Where times come from. Tests put a source of their own in its place, so that none of them
/// depends on the real time.
class ClockSource {
 public:
  virtual ~ClockSource() = default;

  /// Milliseconds since some moment before the run began; never goes back.
  virtual long long Milliseconds() = 0;

  /// Seconds since the beginning of 1970 in universal time.
  virtual long long CalendarSeconds() = 0;
};

/// The process-wide clock: elapsed time for progress texts, calendar time for seeds and dates.
class Clock {
 public:
  Clock() = delete;

  /// Elapsed time of the process in milliseconds; only differences mean something.
  static long long Milliseconds();

  /// Seconds since the beginning of 1970 in universal time.
  static long long CalendarSeconds();

  /// Takes times from `source` from now on and returns the source that served before; null stands
  /// for the system's clock on both sides.
  static std::unique_ptr<ClockSource> Replace(std::unique_ptr<ClockSource> source);
};

}  // namespace FTS
