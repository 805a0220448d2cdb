#include "app/TestList.h"

#include <algorithm>
#include <string_view>

#include "model/NumberText.h"
#include "platform/FileSystem.h"

namespace FTS {
namespace {

std::vector<std::string_view> SplitAt(char separator, std::string_view text) {
  std::vector<std::string_view> parts;
  while (true) {
    const std::size_t end = text.find(separator);
    parts.push_back(text.substr(0, end));
    if (end == std::string_view::npos) return parts;
    text.remove_prefix(end + 1);
  }
}

std::string_view Trimmed(std::string_view text) {
  constexpr std::string_view Blanks = " \t\r";
  const std::size_t start = text.find_first_not_of(Blanks);
  if (start == std::string_view::npos) return "";
  return text.substr(start, text.find_last_not_of(Blanks) + 1 - start);
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

bool IsNumber(std::string_view text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), IsDigit);
}

TestEntry ReadEntry(std::string_view line) {
  const std::vector<std::string_view> parts = SplitAt(',', line);
  TestEntry entry;
  entry.path = Trimmed(parts[0]);
  for (std::size_t i = 1; i < parts.size(); ++i) {
    const std::string_view part = Trimmed(parts[i]);
    if (part == "discountNormalEvents") {
      entry.discountNormalEvents = true;
    } else if (part == "keepHangingIDEVNs") {
      entry.removeHangingNodes = false;
    } else if (!part.empty()) {
      entry.maxCutSetSize = ParseInteger(part);
    }
  }
  return entry;
}

/// Takes a line of expectations; false if it doesn't fit.
bool ReadExpectation(std::string_view line, std::vector<ExpectedTree>& trees) {
  if (line.starts_with('#')) {
    const std::string_view number = Trimmed(line.substr(1));
    if (!IsNumber(number)) return false;
    trees.push_back({ParseInteger(number), std::nullopt, {}});
    return true;
  }
  if (trees.empty() || line.size() < 3 || line[1] != ' ') return false;
  const std::string_view value = Trimmed(line.substr(2));
  if (line[0] == 'U' && !value.empty() && IsDigit(value[0])) {
    trees.back().unavailability = ParseDouble(value);
    return true;
  }
  const std::size_t blank = value.find(' ');
  if (line[0] != 'C' || blank == std::string_view::npos) return false;
  const std::string_view order = value.substr(0, blank);
  const std::string_view count = Trimmed(value.substr(blank));
  if (!IsNumber(order) || !IsNumber(count)) return false;
  trees.back().cutSets[ParseInteger(order)] = ParseInteger(count);
  return true;
}

}  // namespace

std::vector<TestEntry> ReadTestList(const std::string& path) {
  std::vector<TestEntry> entries;
  const std::string text = ReadWholeFile(path).value_or("");
  for (const std::string_view line : SplitAt('\n', text)) {
    if (Trimmed(line).empty()) break;
    entries.push_back(ReadEntry(line));
  }
  return entries;
}

std::string ExpectationsPath(const std::string& modelPath) {
  const PathParts parts = SplitPath(modelPath);
  return parts.drive + parts.directory + parts.baseName + "_expectedResults.txt";
}

std::optional<Expectations> ReadExpectations(const std::string& path) {
  const std::optional<std::string> text = ReadWholeFile(path);
  if (!text) return std::nullopt;
  Expectations expectations;
  int number = 0;
  std::vector<std::string_view> lines = SplitAt('\n', *text);
  while (!lines.empty() && Trimmed(lines.back()).empty()) lines.pop_back();
  for (const std::string_view line : lines) {
    ++number;
    if (ReadExpectation(Trimmed(line), expectations.trees)) continue;
    expectations.strangeLine = number;
    break;
  }
  return expectations;
}

}  // namespace FTS
