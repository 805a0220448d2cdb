#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

// The files that tell the test modes what to run and what to expect; docs/test-modes.md.

namespace FTS {

/// A model to test, and the settings to test it with.
struct TestEntry {
  std::string path;
  int maxCutSetSize = 0;  // 0 is no limit.
  bool discountNormalEvents = false;
  bool removeHangingNodes = true;
};

/// The entries of the list at `path`, up to its first empty line. A list that isn't there is empty.
std::vector<TestEntry> ReadTestList(const std::string& path);

/// What a fault tree should come to.
struct ExpectedTree {
  int number = 0;  // Of the tree, counted from 1.
  std::optional<double> unavailability;
  std::map<int, int> cutSets;  // By order; orders that are not named have none.
};

/// The expected results of a model.
struct Expectations {
  std::vector<ExpectedTree> trees;
  int strangeLine = 0;  // The line that ended the reading before the end of the file; 0 for none.
};

/// Where the expected results of a model are looked for.
std::string ExpectationsPath(const std::string& modelPath);

/// The expectations of the file at `path`; nothing if it can't be read.
std::optional<Expectations> ReadExpectations(const std::string& path);

}  // namespace FTS
