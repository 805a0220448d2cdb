// One test of the pruning mode: an order limit may only cost the cut sets beyond it.

#include <algorithm>

#include "analysis/FaultTree.h"
#include "analysis/Prime.h"
#include "app/Config.h"
#include "app/ModelCheck.h"
#include "model/Model.h"
#include "platform/Clock.h"

namespace FTS {
namespace {

/// The order under which cut sets are counted that just keep within a limit: one more than the
/// limit when normal events don't count.
int CountedOrder(int limit) { return Config::Instance().countNormalEvents ? limit : limit + 1; }

int LargestOrder(const std::vector<std::map<int, int>>& counts) {
  int largest = 0;
  for (const auto& tree : counts) {
    if (!tree.empty()) largest = std::max(largest, tree.rbegin()->first);
  }
  return largest;
}

}  // namespace

void PruningCheck::RunPhases() {
  const Counts all = Analyse();
  report.Show("Time elapsed for unpruned: " + TimeSince(start));
  report.Show("################################");
  report.Show("Unpruned cut sets");
  ShowCounts("FaultTree: ", all);
  const int largest = LargestOrder(all);
  for (int limit = 1; CountedOrder(limit) <= largest; ++limit) {
    report.Show("Current max order for pruning: " + std::to_string(limit));
    Config::Instance().maxCutSetSize = limit;
    const long long orderStart = Clock::Milliseconds();
    const Counts pruned = Analyse();
    report.Show("Time elapsed for order " + std::to_string(limit) + ": " + TimeSince(orderStart));
    report.Show("Pruned cut sets");
    ShowCounts("Fault Tree: ", pruned);
    Compare(pruned, all, CountedOrder(limit));
  }
}

/// Reads the model anew and counts the cut sets under the present limit.
PruningCheck::Counts PruningCheck::Analyse() {
  model.reset();
  Prime::Release();
  model = read(entry.path);
  model->Synthesise();
  model->Analyse(Config::Instance().useBDDs);
  Counts counts;
  for (const auto& tree : model->faultTrees) counts.push_back(tree->CountCutSetsByOrder());
  return counts;
}

void PruningCheck::ShowCounts(const char* treeWord, const Counts& counts) {
  int number = 0;
  for (const auto& tree : counts) {
    report.Show(treeWord + std::to_string(++number));
    for (const auto& [order, count] : tree) {
      report.Show("Order " + std::to_string(order) + ": " + std::to_string(count));
    }
  }
}

void PruningCheck::Compare(const Counts& pruned, const Counts& all, int largestOrder) {
  std::map<int, bool> agrees;  // By order.
  for (int order = 1; order <= largestOrder; ++order) agrees[order] = true;
  for (std::size_t i = 0; i < std::max(pruned.size(), all.size()); ++i) {
    std::map<int, int> wanted = i < all.size() ? all[i] : std::map<int, int>();
    wanted.erase(wanted.upper_bound(largestOrder), wanted.end());
    std::map<int, int> found = i < pruned.size() ? pruned[i] : std::map<int, int>();
    for (const auto& [order, count] : wanted) {
      if (found[order] != count) agrees[order] = false;
    }
    // What is left over lies beyond the limit, or was not there without it.
    for (const auto& [order, count] : found) {
      if (count != 0 && !wanted.contains(order)) agrees[order] = false;
    }
  }
  for (const auto& [order, same] : agrees) {
    report.Show((same ? "PASS order: " : "FAIL order: ") + std::to_string(order));
    if (!same) failed = true;
  }
}

}  // namespace FTS
