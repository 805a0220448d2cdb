#include "model/SafetyAllocation.h"

#include <iterator>

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
  std::int32_t sum = 0;
  for (const auto& [prime, level] : allocation) sum += CostOfSafetyLevel(level);
  return sum;
}

}  // namespace FTS
