#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace FTS {

/// Whether `actual` is, byte for byte, the golden file of that name in tests/golden/. A failure
/// tells the first offset at which they differ, with what stands around it. While the environment
/// variable FTS_UPDATE_GOLDEN is set and not empty the file is written instead, and the check
/// holds: scripts/update-golden runs the tests that way.
::testing::AssertionResult MatchesGolden(std::string_view actual, const std::string& name);

/// The comparison behind `MatchesGolden`.
::testing::AssertionResult SameBytes(std::string_view actual, std::string_view expected);

}  // namespace FTS

/// Fails unless `actual` is the golden file of that name.
#define EXPECT_GOLDEN(actual, name) EXPECT_TRUE(::FTS::MatchesGolden(actual, name))
