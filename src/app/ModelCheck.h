#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "app/TestList.h"
#include "app/TestModes.h"
#include "app/TestReport.h"
#include "model/Forward.h"

namespace FTS {

/// One test of a test mode: what is done with one model of the list.
class ModelCheck {
 public:
  /// The references must outlive the test.
  ModelCheck(const TestEntry& initEntry, const TestModelReader& initRead, TestReport& initReport);
  virtual ~ModelCheck();
  ModelCheck(const ModelCheck&) = delete;
  ModelCheck& operator=(const ModelCheck&) = delete;

  /// Reads the model, works on it and compares. Throws what reading and the phases throw.
  virtual void RunPhases() = 0;

  /// Deletes what is left of the model and tells time and warnings.
  virtual void End();

  /// What the test came to; `complete` tells whether no exception has ended the phases.
  virtual TestOutcome Outcome(bool complete) const;

  const TestEntry& entry;

 protected:
  /// The time since the given moment as text.
  static std::string TimeSince(long long start);

  const TestModelReader& read;
  TestReport& report;
  std::unique_ptr<Model> model;
  bool failed = false;  // A comparison has.
  long long start;      // Milliseconds.
};

/// Runs a model through all phases and compares the results with expected ones. A file of expected
/// results that is not read to its end, or holds none, ends the phases with a VtnException.
class RegressionCheck : public ModelCheck {
 public:
  using ModelCheck::ModelCheck;
  void RunPhases() override;
  /// A leak of nodes too: more were made than destroyed.
  TestOutcome Outcome(bool complete) const override;

 private:
  void ShowResults();
  void CompareWithExpectations();
  void CompareTree(const ExpectedTree& expected);
  void CompareCutSets(const std::map<int, int>& actual, const std::map<int, int>& expected);
  const char* Verdict(bool agrees);
};

/// Analyses a model without and with order limits and compares the cut sets within the limits.
class PruningCheck : public ModelCheck {
 public:
  using ModelCheck::ModelCheck;
  void RunPhases() override;

 private:
  using Counts = std::vector<std::map<int, int>>;  // By tree and order.

  Counts Analyse();
  void ShowCounts(const char* treeWord, const Counts& counts);
  void Compare(const Counts& pruned, const Counts& all, int largestOrder);
};

}  // namespace FTS
