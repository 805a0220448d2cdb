#include "support/Golden.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>

#include "support/TestPaths.h"

namespace FTS {

namespace {

constexpr std::size_t ContextBefore = 60;
constexpr std::size_t ContextAfter = 60;

/// The text around an offset, unprintable bytes as "\xAC".
std::string Around(std::string_view text, std::size_t offset) {
  constexpr char HexDigits[] = "0123456789ABCDEF";
  const std::size_t start = offset > ContextBefore ? offset - ContextBefore : 0;
  std::string result = start > 0 ? "..." : "";
  for (std::size_t i = start; i < std::min(text.size(), offset + ContextAfter); ++i) {
    if (i == offset) result += ">>>";
    const unsigned char byte = static_cast<unsigned char>(text[i]);
    if (byte >= 0x20 && byte < 0x7F) {
      result += text[i];
    } else {
      result += std::string("\\x") + HexDigits[byte / 16] + HexDigits[byte % 16];
    }
  }
  if (offset >= text.size()) return result + ">>>(end)";
  return offset + ContextAfter < text.size() ? result + "..." : result;
}

bool Updating() {
  const char* value = std::getenv("FTS_UPDATE_GOLDEN");
  return value && *value != '\0';
}

std::optional<std::string> ReadBytes(const std::filesystem::path& path) {
  std::ifstream stream(path, std::ios::binary);
  if (!stream) return std::nullopt;
  return std::string(std::istreambuf_iterator<char>(stream), {});
}

::testing::AssertionResult Update(const std::filesystem::path& path, std::string_view actual) {
  std::filesystem::create_directories(path.parent_path());
  std::ofstream stream(path, std::ios::binary);
  stream << actual;
  stream.close();
  if (stream) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << "cannot write " << path;
}

}  // namespace

::testing::AssertionResult SameBytes(std::string_view actual, std::string_view expected) {
  if (actual == expected) return ::testing::AssertionSuccess();
  const auto [inActual, inExpected] =
      std::mismatch(actual.begin(), actual.end(), expected.begin(), expected.end());
  const auto offset = static_cast<std::size_t>(std::distance(actual.begin(), inActual));
  return ::testing::AssertionFailure()
         << "first difference at offset " << offset << " (actual has " << actual.size()
         << " bytes, expected " << expected.size() << ")\n  actual:   " << Around(actual, offset)
         << "\n  expected: " << Around(expected, offset);
}

::testing::AssertionResult MatchesGolden(std::string_view actual, const std::string& name) {
  const std::filesystem::path path = std::filesystem::path(TestsFolder()) / "golden" / name;
  if (Updating()) return Update(path, actual);
  const std::optional<std::string> expected = ReadBytes(path);
  if (!expected) return ::testing::AssertionFailure() << "cannot read golden file " << path;
  return SameBytes(actual, *expected) << "  (golden file " << name << ")";
}

}  // namespace FTS
