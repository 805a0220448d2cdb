#pragma once

#include <cstddef>
#include <span>
#include <utility>
#include <vector>

#include "faulttree/Forward.h"

namespace FTS {

/// An index of the graph below a root as it stands when the index is made: nodes are numbered in
/// depth-first order, the root being 0.
class LoopGraph {
 public:
  explicit LoopGraph(FaultTreeNode& root);

  int GetCount() const { return static_cast<int>(nodes.size()); }
  /// Every number from 0 on.
  std::vector<int> AllNodes() const;
  FaultTreeNode& GetNode(int index) const { return *nodes[static_cast<std::size_t>(index)]; }
  /// The numbers of the node's children, in child order.
  std::span<const int> ChildrenOf(int index) const;

 private:
  std::vector<FaultTreeNode*> nodes;
  std::vector<int> children;                // Of all nodes, one behind the other.
  std::vector<std::pair<int, int>> ranges;  // Where each node's children begin and end.
};

/// The nesting of loops along a walk. The graph is divided into strongly connected parts (R.
/// Tarjan: Depth-First Search and Linear Graph Algorithms, SIAM J. Comput. 1 (1972)). A walk that
/// enters a part through one of its nodes has that node on its path, so that loops among the others
/// can no longer pass through it: what lies below is decided by the division of the rest, and a
/// walk need enter each node of the rest only once per level instead of once per path. The memory
/// is linear in the nodes, however deep the nesting.
class LoopNesting {
 public:
  explicit LoopNesting(const LoopGraph& initGraph);

  /// How many parts inside each other the walk has entered where it meets the node; 0 for a node of
  /// no part entered.
  int LevelOf(int node) const { return PartWith(node).level; }
  /// True when the node lies on a cycle of its part, as it is divided now.
  bool IsOnCycle(int node) const { return PartWith(node).cyclic; }
  /// True when a cycle of the undivided graph may pass through both.
  bool AreConnected(int node, int other) const {
    return undivided[static_cast<std::size_t>(node)] == undivided[static_cast<std::size_t>(other)];
  }
  /// The deepest level in use.
  int GetDepth() const { return depth; }

  /// Loops that enclose each other in every possible order make a walk factorial in their number.
  /// True when dividing, and what the walk has added, have taken longer than anybody would wait.
  bool IsExhausted() const { return steps > StepLimit; }
  void AddSteps(long long count) { steps += count; }

  /// While it lives, the part of the node is divided without the node. Entries end in the opposite
  /// order of their beginning.
  class Entry {
   public:
    Entry(LoopNesting& initNesting, int node);
    ~Entry();
    Entry(const Entry&) = delete;
    Entry& operator=(const Entry&) = delete;

   private:
    LoopNesting& nesting;
    int part;
    std::size_t outerParts;
  };

 private:
  static constexpr long long StepLimit = 2'000'000'000;

  // The members stand side by side in `order`.
  struct Part {
    std::size_t begin;
    std::size_t end;
    bool cyclic;
    int level;
  };

  // What the search keeps of a node.
  struct NodeState {
    int number = 0;
    int low = 0;
    bool inRange = true;
    bool onStack = false;
    bool ownLoop = false;
  };

  class Search;

  const Part& PartWith(int node) const {
    return parts[static_cast<std::size_t>(partOf[static_cast<std::size_t>(node)])];
  }
  void Divide(std::size_t begin, std::size_t end);

  const LoopGraph& graph;
  std::vector<int> order;
  std::vector<int> partOf;  // The innermost part, by node.
  std::vector<Part> parts;  // Outer ones first.
  std::vector<NodeState> states;
  std::vector<int> undivided;  // `partOf` of the whole graph.
  int depth = 0;
  long long steps = 0;
};

}  // namespace FTS
