// One test of the regression mode: a whole run of a model, and its results against expected ones.

#include <algorithm>
#include <cmath>

#include "analysis/FaultTree.h"
#include "app/Config.h"
#include "app/ModelCheck.h"
#include "faulttree/FaultTreeNode.h"
#include "model/Model.h"
#include "model/NumberText.h"
#include "model/VtnException.h"

namespace FTS {
namespace {

/// How far an unavailability may be from the expected one.
constexpr double UnavailabilityTolerance = 0.0001;

int CountAt(const std::map<int, int>& counts, int order) {
  const auto entry = counts.find(order);
  return entry == counts.end() ? 0 : entry->second;
}

}  // namespace

void RegressionCheck::RunPhases() {
  report.Show("Parsing...");
  model = read(entry.path);
  report.Show("Parse successful");
  report.Show("Synthesising...");
  model->Synthesise();
  report.Show("Analysing...");
  model->Analyse(Config::Instance().useBDDs);
  report.Show("Building FMEA...");
  model->BuildFMEA();
  if (model->GetFaultTreeCount() < 1) {
    report.Show("No fault trees present: no output generated.");
  } else {
    report.Show("Generating output...");
    model->OutputResults();
  }
  report.Show("Process complete.");
  ShowResults();
  CompareWithExpectations();
}

TestOutcome RegressionCheck::Outcome(bool complete) const {
  const TestOutcome outcome = ModelCheck::Outcome(complete);
  const NodeCounters& counters = NodeCounters::Instance();
  const bool leaks = counters.nodesMade > counters.nodesDestroyed;
  return outcome == TestOutcome::Pass && leaks ? TestOutcome::Leak : outcome;
}

void RegressionCheck::ShowResults() {
  report.Log(std::to_string(model->GetFaultTreeCount()) + " fault trees generated");
  int number = 0;
  for (const auto& tree : model->faultTrees) {
    report.Log("Fault Tree #" + std::to_string(++number));
    report.Log("Unavailability: " + FormatDouble(tree->unavailability));
    report.Log("Minimal Cut Sets: " + std::to_string(tree->cutSets.size()));
    for (const auto& [order, count] : tree->CountCutSetsByOrder()) {
      report.Log(std::to_string(count) + " cut sets of order " + std::to_string(order));
    }
  }
}

void RegressionCheck::CompareWithExpectations() {
  const std::string path = ExpectationsPath(entry.path);
  const std::optional<Expectations> expectations = ReadExpectations(path);
  if (!expectations) {
    report.Show("No expected results file found: " + path + " - cannot check results");
    return;
  }
  for (const ExpectedTree& tree : expectations->trees) CompareTree(tree);
  // What stands behind such a line has not been compared, so the test has not passed.
  if (expectations->strangeLine > 0) {
    throw VtnException("Line " + std::to_string(expectations->strangeLine) + " of " + path +
                       " is no expected result");
  }
  if (expectations->trees.empty()) throw VtnException("No expected results in " + path);
}

void RegressionCheck::CompareTree(const ExpectedTree& expected) {
  report.Log("For FT #" + std::to_string(expected.number));
  const bool exists = expected.number >= 1 && expected.number <= model->GetFaultTreeCount();
  const auto tree =
      exists ? model->faultTrees[static_cast<std::size_t>(expected.number - 1)] : nullptr;
  if (expected.unavailability) {
    const bool agrees =
        tree && std::abs(tree->unavailability - *expected.unavailability) < UnavailabilityTolerance;
    report.Log("Actual U = " + (tree ? FormatDouble(tree->unavailability) : "none") +
               "\tExpected U = " + FormatDouble(*expected.unavailability) + "\t" + Verdict(agrees));
  }
  if (!tree && !expected.unavailability) report.Log(Verdict(false));
  CompareCutSets(tree ? tree->CountCutSetsByOrder() : std::map<int, int>(), expected.cutSets);
}

void RegressionCheck::CompareCutSets(const std::map<int, int>& actual,
                                     const std::map<int, int>& expected) {
  std::map<int, int> orders = expected;
  orders.insert(actual.begin(), actual.end());
  for (const auto& [order, count] : orders) {
    const std::string number = std::to_string(order);
    const int found = CountAt(actual, order);
    const int wanted = CountAt(expected, order);
    report.Log("Actual CS" + number + " = " + std::to_string(found) + "\tExpected CS" + number +
               " = " + std::to_string(wanted) + "\t" + Verdict(found == wanted));
  }
}

const char* RegressionCheck::Verdict(bool agrees) {
  if (!agrees) failed = true;
  return agrees ? "PASS" : "FAIL";
}

}  // namespace FTS
