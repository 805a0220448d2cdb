#pragma once

#include <span>
#include <unordered_map>
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

/// Divides a set of nodes into strongly connected parts (R. Tarjan: Depth-First Search and Linear
/// Graph Algorithms, SIAM J. Comput. 1 (1972)).
class LoopPartition {
 public:
  /// Divides the given nodes, of which `without` (-1 for none) counts as absent.
  LoopPartition(const LoopGraph& graph, const std::vector<int>& members, int without);

  bool Contains(int node) const { return partOf.contains(node); }
  /// True when the node lies on a cycle within the set.
  bool IsOnCycle(int node) const;
  /// The members of the part in which the node lies.
  const std::vector<int>& PartWith(int node) const;

 private:
  class Search;

  std::unordered_map<int, int> partOf;
  std::vector<std::vector<int>> parts;
  std::vector<bool> cyclic;
};

/// One step of nesting in a walk that looks for loops: a part has been entered through a node, and
/// as that node is now on the path, loops among the others can no longer pass through it. What lies
/// below is therefore decided by the division of the rest, and a walk need enter each node of the
/// rest only once per level instead of once per path.
struct LoopLevel {
  LoopLevel(const LoopGraph& graph, const std::vector<int>& members, int initEntry,
            LoopLevel* initOuter)
      : partition(graph, members, initEntry), entry(initEntry), outer(initOuter) {}

  /// The innermost level, from this one outwards, among whose nodes `node` is. The outermost level
  /// holds the whole graph.
  LoopLevel& LevelOf(int node) {
    LoopLevel* level = this;
    while (!level->partition.Contains(node)) level = level->outer;
    return *level;
  }

  LoopPartition partition;
  int entry;         ///< The node through which the part was entered, -1 for the whole graph.
  LoopLevel* outer;  ///< Null for the whole graph.
};

}  // namespace FTS
