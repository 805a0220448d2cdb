// Circles: finds the loops of a tree's graph and cuts them.
// Assumes synthesis is complete below the root. A graph with a cycle is copied first (gates and
// proxies anew, events shared), since cutting changes lists and other trees may share the original.
// A loop is noted at a node wherever a path from the root leads to it and on, without meeting
// itself, back to it. Looking at each path in turn would take exponential time; instead each
// strongly connected part is entered once per entry node and level of nesting (LoopNesting),
// which
// sees the same loops: nodes outside the part cannot be reached again, and the nodes on the path
// that can are the entries of the enclosing parts. Parts without a cycle are passed once. Marks:
// `visited`, on the path, for the report of crazy loops only. Cutting meets each node once: once a
// node is left, nothing below it leads back to the path.

#include <deque>
#include <map>
#include <memory>
#include <set>

#include "analysis/FaultTree.h"
#include "app/Config.h"
#include "app/DiagnosticLog.h"
#include "faulttree/CircleNode.h"
#include "faulttree/LoopGraph.h"
#include "faulttree/Marks.h"
#include "faulttree/RefinementPasses.h"
#include "model/Model.h"

namespace FTS {

namespace {

void GiveCircle(Model& model, FaultTreeNode& node) {
  if (node.circle) return;
  node.circle = std::make_shared<CircleNode>(node, &model);
  model.AddEvent(node.circle);
}

bool HasCycleBelow(const FaultTreeNode& node, OnceMarks& marks) {
  if (!marks.Enter(node)) return node.visited;
  const OnPathMark mark(node);
  for (int i = 0; i < node.GetChildCount(); ++i) {
    if (HasCycleBelow(*node.GetChild(i), marks)) return true;
  }
  return false;
}

bool HasCycle(const FaultTreeNode& root) {
  OnceMarks marks;
  return HasCycleBelow(root, marks);
}

class CircleSearch {
 public:
  CircleSearch(Model& initModel, FaultTree& initTree, const LoopGraph& initGraph)
      : model(initModel),
        tree(initTree),
        graph(initGraph),
        nesting(initGraph),
        onPath(static_cast<std::size_t>(graph.GetCount()), false),
        memo(1) {}

  void Run() { Visit(0); }

  bool GaveUp() const { return nesting.IsExhausted(); }

 private:
  using Closings = std::set<int>;  // Nodes on the path at which loops close.

  static constexpr long long StepsPerEntry = 20;  // In the time of dividing.

  /// What closes below the node.
  const Closings& Visit(int node) {
    const auto level = static_cast<std::size_t>(nesting.LevelOf(node));
    if (const auto found = memo[level].find(node); found != memo[level].end()) return found->second;
    nesting.AddSteps(StepsPerEntry);
    if (GaveUp()) return nothing;
    Closings below;
    onPath[static_cast<std::size_t>(node)] = true;
    if (nesting.IsOnCycle(node)) {
      const LoopNesting::Entry entry(nesting, node);
      const auto inside = static_cast<std::size_t>(nesting.GetDepth());
      if (memo.size() <= inside) memo.resize(inside + 1);
      below = VisitChildren(node);
      memo[inside].clear();
    } else {
      below = VisitChildren(node);
    }
    onPath[static_cast<std::size_t>(node)] = false;
    below.erase(node);
    return memo[level].insert_or_assign(node, std::move(below)).first->second;
  }

  Closings VisitChildren(int node) {
    Closings all;
    int index = -1;
    for (const int child : graph.ChildrenOf(node)) {
      ++index;
      if (onPath[static_cast<std::size_t>(child)]) {
        Close(child);
        all.insert(child);
        if (child == node) NoteLoop(node, index);
        continue;
      }
      const Closings& below = Visit(child);
      if (below.contains(node)) NoteLoop(node, index);
      all.insert(below.begin(), below.end());
    }
    return all;
  }

  void NoteLoop(int node, int child) {
    graph.GetNode(node).circle->loopChildren[static_cast<std::size_t>(child)] = true;
  }

  void Close(int target) {
    FaultTreeNode& node = graph.GetNode(target);
    GiveCircle(model, node);
    node.circle->AddTree(tree.shared_from_this());
    tree.hasLoops = true;
  }

  Model& model;
  FaultTree& tree;
  const LoopGraph& graph;
  LoopNesting nesting;
  std::vector<bool> onPath;
  std::deque<std::map<int, Closings>> memo;  // By level; looked up only, never walked.
  const Closings nothing;
};

}  // namespace

void FindCircles(Model& model, FaultTree& tree) {
  if (!tree.root || !HasCycle(*tree.root)) return;
  tree.root = CloneTemplate(*tree.root, &model, CloneMode::NewNodes);
  const LoopGraph graph(*tree.root);
  CircleSearch search(model, tree, graph);
  search.Run();
  if (search.GaveUp() && !Config::Instance().ignoreCrazyLoops) RejectEndlessLoops(tree);
}

void RejectEndlessLoops(FaultTree& tree) {
  tree.unbreakable = true;
  DiagnosticLog::Instance().AddError("The loops in " + tree.root->name +
                                     " enclose each other in too many ways to be told apart.");
}

namespace {

void CutBelow(Model& model, FaultTreeNode& node, OnceMarks& marks) {
  if (!marks.Enter(node)) return;
  const OnPathMark mark(node);
  for (int i = 0; i < node.GetChildCount(); ++i) {
    FaultTreeNode& child = *node.GetChild(i);
    if (child.visited) {
      GiveCircle(model, child);  // Missing only after a search that gave up.
      node.ReplaceChild(i, child.circle);
    } else {
      CutBelow(model, child, marks);
    }
  }
}

}  // namespace

void CutCircles(Model& model, FaultTreeNode& root) {
  OnceMarks marks;
  CutBelow(model, root, marks);
}

}  // namespace FTS
