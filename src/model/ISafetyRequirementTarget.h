#pragma once

#include <cstdint>

namespace FTS {

/// What a safety integrity level can be allocated to: events and cut sets. Without virtual
/// operations, because cut sets exist by the million.
class ISafetyRequirementTarget {
 public:
  std::int32_t safetyRequirement = 0;  // 0 (none) to 4 (the highest level); clones copy it.

 protected:
  ISafetyRequirementTarget() = default;
  ISafetyRequirementTarget(const ISafetyRequirementTarget&) = default;
  ISafetyRequirementTarget& operator=(const ISafetyRequirementTarget&) = default;
  ~ISafetyRequirementTarget() = default;
};

}  // namespace FTS
