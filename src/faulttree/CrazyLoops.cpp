// Crazy loops: a node at which a loop closes is crazy when the walk reaches it through two
// different enclosing loops, so that no single edge can be cut. The tree is then reported and
// dropped. Assumes FindCircles, loops uncut. Changes nothing but the circles' notes. The innermost
// loop through which the walk has come travels along; a node is entered once per level of nesting
// (LoopNesting) and enclosing loop: a further visit with the same loop compares the same two
// circles again. Marks: `visited`, on the path, cleared on return.

#include <deque>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "analysis/FaultTree.h"
#include "app/DiagnosticLog.h"
#include "faulttree/CircleNode.h"
#include "faulttree/LoopGraph.h"
#include "faulttree/Marks.h"
#include "faulttree/RefinementPasses.h"

namespace FTS {

namespace {

// Ways round that are reported per crazy node: the log keeps no more.
constexpr int MaxReportedPaths = DiagnosticLog::MaxStored;

bool Same(const CircleNode* a, const CircleNode* b) { return a && b && a->GetId() == b->GetId(); }

class CrazyLoopSearch {
 public:
  explicit CrazyLoopSearch(const LoopGraph& initGraph)
      : graph(initGraph), nesting(initGraph), met(1) {}

  void Run() { Visit(0, nullptr); }

  bool GaveUp() const { return nesting.IsExhausted(); }

 private:
  static constexpr long long StepsPerEntry = 20;  // In the time of dividing.

  void Visit(int index, const std::shared_ptr<CircleNode>& current) {
    FaultTreeNode& node = graph.GetNode(index);
    const OnPathMark mark(node);
    if (!mark.Entered()) return;
    const auto level = static_cast<std::size_t>(nesting.LevelOf(index));
    const int currentId = current ? current->GetId() : 0;
    if (!met[level].emplace(index, currentId).second) return;
    nesting.AddSteps(StepsPerEntry);
    if (GaveUp()) return;
    if (node.circle) Judge(index, node.circle, current);
    if (nesting.IsOnCycle(index)) {
      const LoopNesting::Entry entry(nesting, index);
      const auto inside = static_cast<std::size_t>(nesting.GetDepth());
      if (met.size() <= inside) met.resize(inside + 1);
      VisitChildren(index, current);
      met[inside].clear();
    } else {
      VisitChildren(index, current);
    }
  }

  void VisitChildren(int index, const std::shared_ptr<CircleNode>& current) {
    const std::shared_ptr<CircleNode>& own = graph.GetNode(index).circle;
    std::size_t i = 0;
    for (const int child : graph.ChildrenOf(index)) {
      const bool inLoop = own && own->loopChildren[i];
      Visit(child, inLoop ? own : current);
      ++i;
    }
  }

  void Judge(int index, const std::shared_ptr<CircleNode>& own,
             const std::shared_ptr<CircleNode>& current) {
    if (!own->entered) {
      own->entered = true;
      own->enclosing = current;
      return;
    }
    const CircleNode* enclosing = own->enclosing.get();
    const bool again = Same(current.get(), own.get());
    const bool fine = enclosing ? again || Same(current.get(), enclosing) : again || !current;
    if (!fine) Report(index, *own);
  }

  void Report(int index, CircleNode& own) {
    reported = 0;
    std::vector<int> path{index};
    std::size_t i = 0;
    for (const int child : graph.ChildrenOf(index)) {
      if (own.loopChildren[i++]) ReportCrazyLoop(child, path);
    }
    for (const auto& weak : own.trees) {
      if (const auto tree = weak.lock()) tree->unbreakable = true;
    }
  }

  /// Follows the loops from the last node of the path on until they close, and reports each.
  void ReportCrazyLoop(int index, std::vector<int>& path) {
    // A loop stays within its strongly connected part.
    if (reported >= MaxReportedPaths || !nesting.AreConnected(index, path.front())) return;
    nesting.AddSteps(StepsPerEntry);
    if (GaveUp()) return;
    path.push_back(index);
    FaultTreeNode& node = graph.GetNode(index);
    const OnPathMark mark(node);
    if (!mark.Entered()) {
      LogPath(path);
    } else {
      std::size_t i = 0;
      for (const int child : graph.ChildrenOf(index)) {
        const bool follow = !node.circle || node.circle->loopChildren[i];
        ++i;
        if (follow) ReportCrazyLoop(child, path);
      }
    }
    path.pop_back();
  }

  void LogPath(const std::vector<int>& path) {
    ++reported;
    nesting.AddSteps(StepsPerEntry * static_cast<long long>(path.size()));
    std::string text =
        "ERROR: Crazy Loop(s) detected - unresolvable circular logic in the fault tree:\n\t" +
        graph.GetNode(path.front()).name + "\n";
    for (std::size_t i = 1; i < path.size(); ++i) {
      text += "\t-> " + graph.GetNode(path[i]).name + "\n";
    }
    DiagnosticLog::Instance().AddError(text);
  }

  const LoopGraph& graph;
  LoopNesting nesting;
  std::deque<std::set<std::pair<int, int>>> met;  // By level; looked up only, never walked.
  int reported = 0;
};

}  // namespace

void DetectCrazyLoops(FaultTree& tree) {
  if (!tree.root || !tree.hasLoops || tree.unbreakable) return;
  const LoopGraph graph(*tree.root);
  CrazyLoopSearch search(graph);
  search.Run();
  if (search.GaveUp()) RejectEndlessLoops(tree);
}

}  // namespace FTS
