#include "platform/Clock.h"

#include <chrono>
#include <utility>

namespace FTS {

namespace {

std::unique_ptr<ClockSource>& Replacement() {
  static std::unique_ptr<ClockSource> replacement;
  return replacement;
}

}  // namespace

long long Clock::Milliseconds() {
  if (Replacement()) return Replacement()->Milliseconds();
  const auto now = std::chrono::steady_clock::now().time_since_epoch();
  return std::chrono::duration_cast<std::chrono::milliseconds>(now).count();
}

long long Clock::CalendarSeconds() {
  if (Replacement()) return Replacement()->CalendarSeconds();
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  return std::chrono::duration_cast<std::chrono::seconds>(now).count();
}

std::unique_ptr<ClockSource> Clock::Replace(std::unique_ptr<ClockSource> source) {
  return std::exchange(Replacement(), std::move(source));
}

}  // namespace FTS
