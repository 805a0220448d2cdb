#include "faulttree/LoopGraph.h"

#include <algorithm>
#include <numeric>

#include "faulttree/FaultTreeNode.h"

namespace FTS {

LoopGraph::LoopGraph(FaultTreeNode& root) {
  struct Open {
    int node;
    int next;  // The child to look at.
    std::size_t pending;
  };
  std::unordered_map<const FaultTreeNode*, int> indexOf;
  const auto number = [&](FaultTreeNode& node) {
    const auto [entry, added] = indexOf.try_emplace(&node, GetCount());
    if (added) nodes.push_back(&node);
    return std::make_pair(entry->second, added);
  };
  // Children are collected on a side stack until their parent is complete, so that they end up
  // beside each other.
  std::vector<int> collected;
  std::vector<Open> open;
  number(root);
  open.push_back({0, 0, 0});
  while (!open.empty()) {
    Open& top = open.back();
    FaultTreeNode& node = GetNode(top.node);
    if (top.next < node.GetChildCount()) {
      const auto [child, added] = number(*node.GetChild(top.next));
      ++top.next;
      collected.push_back(child);
      if (added) open.push_back({child, 0, collected.size()});
      continue;
    }
    const int begin = static_cast<int>(children.size());
    children.insert(children.end(), collected.begin() + static_cast<long>(top.pending),
                    collected.end());
    collected.resize(top.pending);
    if (ranges.size() < nodes.size()) ranges.resize(nodes.size());
    ranges[static_cast<std::size_t>(top.node)] = {begin, static_cast<int>(children.size())};
    open.pop_back();
  }
}

std::vector<int> LoopGraph::AllNodes() const {
  std::vector<int> all(nodes.size());
  std::iota(all.begin(), all.end(), 0);
  return all;
}

std::span<const int> LoopGraph::ChildrenOf(int index) const {
  const auto& [begin, end] = ranges[static_cast<std::size_t>(index)];
  return std::span(children).subspan(static_cast<std::size_t>(begin),
                                     static_cast<std::size_t>(end - begin));
}

/// The depth-first search, on a stack of its own: it runs over whole models.
class LoopPartition::Search {
 public:
  Search(const LoopGraph& initGraph, LoopPartition& initResult)
      : graph(initGraph), result(initResult) {}

  void Run(const std::vector<int>& members, int without) {
    for (const int member : members) {
      if (member != without) state.try_emplace(member);
    }
    for (const int member : members) {
      if (member != without && state.at(member).number == 0) Explore(member);
    }
  }

 private:
  struct NodeState {
    int number = 0;
    int low = 0;
    bool onStack = false;
    bool ownLoop = false;
  };
  struct Open {
    int node;
    std::size_t next;
  };

  void Begin(int node) {
    NodeState& mine = state.at(node);
    mine.number = mine.low = ++lastNumber;
    mine.onStack = true;
    stack.push_back(node);
    open.push_back({node, 0});
  }

  void Explore(int start) {
    Begin(start);
    while (!open.empty()) {
      const int node = open.back().node;
      const std::span<const int> below = graph.ChildrenOf(node);
      if (open.back().next < below.size()) {
        Look(node, below[open.back().next++]);
        continue;
      }
      open.pop_back();
      NodeState& mine = state.at(node);
      if (!open.empty()) {
        NodeState& parent = state.at(open.back().node);
        parent.low = std::min(parent.low, mine.low);
      }
      if (mine.low == mine.number) ClosePart(node);
    }
  }

  void Look(int node, int child) {
    const auto found = state.find(child);
    if (found == state.end()) return;  // Outside the set.
    if (child == node) found->second.ownLoop = true;
    if (found->second.number == 0) {
      Begin(child);
    } else if (found->second.onStack) {
      NodeState& mine = state.at(node);
      mine.low = std::min(mine.low, found->second.number);
    }
  }

  void ClosePart(int root) {
    std::vector<int> part;
    int member = -1;
    do {
      member = stack.back();
      stack.pop_back();
      state.at(member).onStack = false;
      result.partOf[member] = static_cast<int>(result.parts.size());
      part.push_back(member);
    } while (member != root);
    const bool onCycle = part.size() > 1 || state.at(root).ownLoop;
    result.cyclic.push_back(onCycle);
    result.parts.push_back(std::move(part));
  }

  const LoopGraph& graph;
  LoopPartition& result;
  std::unordered_map<int, NodeState> state;
  std::vector<int> stack;
  std::vector<Open> open;
  int lastNumber = 0;
};

LoopPartition::LoopPartition(const LoopGraph& graph, const std::vector<int>& members, int without) {
  Search(graph, *this).Run(members, without);
}

bool LoopPartition::IsOnCycle(int node) const {
  return cyclic[static_cast<std::size_t>(partOf.at(node))];
}

const std::vector<int>& LoopPartition::PartWith(int node) const {
  return parts[static_cast<std::size_t>(partOf.at(node))];
}

}  // namespace FTS
