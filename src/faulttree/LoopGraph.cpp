#include "faulttree/LoopGraph.h"

#include <algorithm>
#include <numeric>
#include <unordered_map>

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
class LoopNesting::Search {
 public:
  Search(LoopNesting& initNesting, std::size_t initBegin, std::size_t initEnd)
      : nesting(initNesting), begin(initBegin), end(initEnd), place(initBegin) {}

  /// Numbers the nodes of the range and closes their parts, which fill the range from its begin.
  void Run() {
    const std::vector<int> members(nesting.order.begin() + static_cast<std::ptrdiff_t>(begin),
                                   nesting.order.begin() + static_cast<std::ptrdiff_t>(end));
    for (const int member : members) StateOf(member) = NodeState{};
    for (const int member : members) {
      if (StateOf(member).number == 0) Explore(member);
    }
    for (const int member : members) StateOf(member).inRange = false;
  }

 private:
  using NodeState = LoopNesting::NodeState;
  struct Open {
    int node;
    std::size_t next;
  };

  NodeState& StateOf(int node) { return nesting.states[static_cast<std::size_t>(node)]; }

  void Begin(int node) {
    NodeState& mine = StateOf(node);
    mine.number = mine.low = ++lastNumber;
    mine.onStack = true;
    stack.push_back(node);
    open.push_back({node, 0});
  }

  void Explore(int start) {
    Begin(start);
    while (!open.empty()) {
      const int node = open.back().node;
      const std::span<const int> below = nesting.graph.ChildrenOf(node);
      if (open.back().next < below.size()) {
        Look(node, below[open.back().next++]);
        continue;
      }
      open.pop_back();
      NodeState& mine = StateOf(node);
      if (!open.empty()) {
        NodeState& parent = StateOf(open.back().node);
        parent.low = std::min(parent.low, mine.low);
      }
      if (mine.low == mine.number) ClosePart(node);
    }
  }

  void Look(int node, int child) {
    NodeState& other = StateOf(child);
    if (!other.inRange) return;
    if (child == node) other.ownLoop = true;
    if (other.number == 0) {
      Begin(child);
    } else if (other.onStack) {
      NodeState& mine = StateOf(node);
      mine.low = std::min(mine.low, other.number);
    }
  }

  void ClosePart(int root) {
    const std::size_t first = place;
    int member = -1;
    do {
      member = stack.back();
      stack.pop_back();
      StateOf(member).onStack = false;
      nesting.partOf[static_cast<std::size_t>(member)] = static_cast<int>(nesting.parts.size());
      nesting.order[place++] = member;
    } while (member != root);
    const bool onCycle = place - first > 1 || StateOf(root).ownLoop;
    nesting.parts.push_back({first, place, onCycle, nesting.depth});
  }

  LoopNesting& nesting;
  const std::size_t begin;
  const std::size_t end;
  std::size_t place;
  std::vector<int> stack;
  std::vector<Open> open;
  int lastNumber = 0;
};

LoopNesting::LoopNesting(const LoopGraph& initGraph)
    : graph(initGraph), order(graph.AllNodes()), partOf(order.size()), states(order.size()) {
  Divide(0, order.size());
  undivided = partOf;
}

void LoopNesting::Divide(std::size_t begin, std::size_t end) {
  steps += static_cast<long long>(end - begin);
  Search(*this, begin, end).Run();
}

LoopNesting::Entry::Entry(LoopNesting& initNesting, int node)
    : nesting(initNesting),
      part(nesting.partOf[static_cast<std::size_t>(node)]),
      outerParts(nesting.parts.size()) {
  const Part& entered = nesting.parts[static_cast<std::size_t>(part)];
  const auto first = nesting.order.begin() + static_cast<std::ptrdiff_t>(entered.begin);
  const auto last = nesting.order.begin() + static_cast<std::ptrdiff_t>(entered.end);
  std::iter_swap(first, std::find(first, last, node));
  ++nesting.depth;
  nesting.Divide(entered.begin + 1, entered.end);
}

LoopNesting::Entry::~Entry() {
  --nesting.depth;
  nesting.parts.resize(outerParts);
  const Part& left = nesting.parts[static_cast<std::size_t>(part)];
  for (std::size_t i = left.begin; i < left.end; ++i) {
    nesting.partOf[static_cast<std::size_t>(nesting.order[i])] = part;
  }
}

}  // namespace FTS
