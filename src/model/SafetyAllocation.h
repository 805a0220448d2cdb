#pragma once

#include <cstdint>
#include <map>

namespace FTS {

/// Integrity levels by the prime of the event that has them.
using SafetyAllocation = std::map<double, std::int32_t>;

/// What an event costs at an integrity level: 10, 100, 1000, 10000 or 100000 for 1 to 5, and
/// nothing at any other.
std::int32_t CostOfSafetyLevel(std::int32_t level);

/// The sum over the levels of an allocation, at most 2147483647.
std::int32_t GetASILCost(const SafetyAllocation& allocation);

}  // namespace FTS
