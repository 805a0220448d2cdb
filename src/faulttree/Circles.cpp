// Circles: finds the loops of a tree's graph and cuts them.
// Assumes synthesis is complete below the root. A graph with a cycle is copied first (gates and
// proxies anew, events shared), since cutting changes lists and other trees may share the original.
// A loop is noted at a node wherever a path from the root leads to it and on, without meeting
// itself, back to it. Looking at each path in turn would take exponential time; instead each
// strongly connected part is entered once per entry node and level of nesting (LoopLevel), which
// sees the same loops: nodes outside the part cannot be reached again, and the nodes on the path
// that can are the entries of the enclosing parts. Parts without a cycle are passed once. Marks:
// `visited`, on the path, for the report of crazy loops only. Cutting meets each node once: once a
// node is left, nothing below it leads back to the path.

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

// How many nodes the search may enter in one tree. Loops that enclose each other in every possible
// order make the search factorial in their number; beyond this no model can be told apart in a time
// that anybody would wait for.
constexpr long long EntryLimit = 50'000'000;

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
        onPath(static_cast<std::size_t>(graph.GetCount()), false) {}

  void Run() {
    LoopLevel whole(graph, graph.AllNodes(), -1, nullptr);
    Visit(0, whole);
  }

  bool GaveUp() const { return entries > EntryLimit; }

 private:
  using Closings = std::set<int>;  // Nodes on the path at which loops close.

  /// What closes below the node, seen from `inner`, the level of the node above it.
  const Closings& Visit(int node, LoopLevel& inner) {
    LoopLevel& level = inner.LevelOf(node);
    auto& known = memo[&level];
    if (const auto found = known.find(node); found != known.end()) return found->second;
    ++entries;
    if (GaveUp()) return nothing;
    Closings below;
    onPath[static_cast<std::size_t>(node)] = true;
    if (level.partition.IsOnCycle(node)) {
      LoopLevel rest(graph, level.partition.PartWith(node), node, &level);
      below = VisitChildren(node, rest);
      memo.erase(&rest);
    } else {
      below = VisitChildren(node, level);
    }
    onPath[static_cast<std::size_t>(node)] = false;
    below.erase(node);
    return memo[&level].insert_or_assign(node, std::move(below)).first->second;
  }

  Closings VisitChildren(int node, LoopLevel& level) {
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
      const Closings& below = Visit(child, level);
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
  std::vector<bool> onPath;
  std::map<const LoopLevel*, std::map<int, Closings>> memo;  // Looked up only, never walked.
  const Closings nothing;
  long long entries = 0;
};

}  // namespace

void FindCircles(Model& model, FaultTree& tree) {
  if (!tree.root || !HasCycle(*tree.root)) return;
  tree.root = CloneTemplate(*tree.root, &model, CloneMode::NewNodes);
  const LoopGraph graph(*tree.root);
  CircleSearch search(model, tree, graph);
  search.Run();
  if (search.GaveUp() && !Config::Instance().ignoreCrazyLoops) {
    tree.unbreakable = true;
    DiagnosticLog::Instance().AddError("The loops in " + tree.root->name +
                                       " enclose each other in too many ways to be told apart.");
  }
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
