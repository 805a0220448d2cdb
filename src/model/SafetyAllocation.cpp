#include "model/SafetyAllocation.h"

#include <algorithm>
#include <iterator>
#include <limits>

namespace FTS {

namespace {

constexpr std::int32_t LevelCosts[] = {10, 100, 1000, 10000, 100000};  // Of levels 1 to 5.

}  // namespace

std::int32_t CostOfSafetyLevel(std::int32_t level) {
  return level < 1 || level > static_cast<std::int32_t>(std::size(LevelCosts))
             ? 0
             : LevelCosts[level - 1];
}

std::int32_t GetASILCost(const SafetyAllocation& allocation) {
  // Result files hold an integer of 32 bits. What costs more shows the most that it can say, rather
  // than a sum that has gone round and looks cheap.
  constexpr std::int64_t Most = std::numeric_limits<std::int32_t>::max();
  std::int64_t sum = 0;
  for (const auto& [prime, level] : allocation) sum += CostOfSafetyLevel(level);
  return static_cast<std::int32_t>(std::min(sum, Most));
}

}  // namespace FTS
