#include "app/Duration.h"

#include <cstdint>

#include "model/NumberText.h"

namespace FTS {

std::string FormatDuration(float seconds) {
  constexpr std::int64_t Sixty = 60;
  std::int64_t minutes = 0;
  std::int64_t hours = 0;
  if (seconds > 60.0f) {
    minutes = static_cast<std::int64_t>(seconds) / Sixty;
    seconds -= static_cast<float>(minutes * Sixty);
  }
  if (minutes > Sixty) {
    hours = minutes / Sixty;
    minutes -= hours * Sixty;
  }
  std::string text;
  if (hours > 0) text += std::to_string(hours) + "h ";
  if (minutes > 0) text += std::to_string(minutes) + "m ";
  return text + FormatDouble(static_cast<double>(seconds)) + "s";
}

}  // namespace FTS
