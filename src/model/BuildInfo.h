#pragma once

namespace FTS {

/// The edition word of this build, written into result files.
inline constexpr const char* BuildEdition = "Internal";

/// The date of this build, shown in the banner and written into result files.
inline constexpr const char* BuildDate = "17 October 2022";

inline constexpr int MajorVersion = 2;
inline constexpr int MinorVersion = 5;
inline constexpr int BuildNumber = 901;

}  // namespace FTS
