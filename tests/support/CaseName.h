#pragma once

#include <string>

namespace FTS {

/// Names the tests of a table by the `name` of each row: the last argument of
/// INSTANTIATE_TEST_SUITE_P.
inline constexpr auto CaseName = [](const auto& testCase) {
  return std::string(testCase.param.name);
};

}  // namespace FTS
