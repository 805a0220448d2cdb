#include "analysis/CutSetFamilies.h"

#include <algorithm>
#include <cassert>
#include <limits>
#include <utility>

namespace FTS {
namespace {

// Both tables grow with the diagram; these are powers of two, for the sake of the masks.
constexpr std::size_t FirstTableSize = std::size_t{1} << 10;
constexpr std::size_t LargestResultTable = std::size_t{1} << 22;

constexpr int BehindAllVariables = std::numeric_limits<int>::max();

std::size_t Scatter(std::uint64_t a, std::uint64_t b, std::uint64_t c) {
  // Odd multipliers and a finishing mix, as in the generators of Steele, Lea and Flood.
  std::uint64_t value = a * 0x9E3779B97F4A7C15U ^ b * 0xC2B2AE3D27D4EB4FU ^ c * 0x165667B19E3779F9U;
  value = (value ^ (value >> 29)) * 0xBF58476D1CE4E5B9U;
  return static_cast<std::size_t>(value ^ (value >> 32));
}

}  // namespace

CutSetFamilies::Counters& CutSetFamilies::Cost() {
  static Counters counters;
  return counters;
}

CutSetFamilies::CutSetFamilies(std::vector<int> initWeights, int initLimit)
    : weights(std::move(initWeights)),
      limit(std::min(initLimit, NoLimit)),
      nodes{{BehindAllVariables, None, None, 0}, {BehindAllVariables, None, None, 0}},
      unique(FirstTableSize, None),
      results(FirstTableSize, Result{0, None, None, None}) {}

CutSetFamilies::~CutSetFamilies() = default;

CutSetFamilies::Family CutSetFamilies::SetOf(const std::vector<int>& variables) {
  assert(std::is_sorted(variables.begin(), variables.end()) && "Variables ascend.");
  Family family = Certain;
  for (auto variable = variables.rbegin(); variable != variables.rend(); ++variable) {
    family = MakeNode(*variable, family, None);
  }
  return family;
}

CutSetFamilies::Family CutSetFamilies::Union(Family a, Family b) {
  if (a == None) return b;
  if (b == None || a == b) return a;
  if (a == Certain || b == Certain) return Certain;  // The empty set lies inside every other.
  if (a > b) std::swap(a, b);
  if (const Result* known = Recall(UNION, a, b)) return known->value;
  const Node nodeA = nodes[a];
  const Node nodeB = nodes[b];
  const int variable = std::min(nodeA.variable, nodeB.variable);
  const Family withA = nodeA.variable == variable ? nodeA.with : None;
  const Family withB = nodeB.variable == variable ? nodeB.with : None;
  const Family withoutA = nodeA.variable == variable ? nodeA.without : a;
  const Family withoutB = nodeB.variable == variable ? nodeB.without : b;
  const Family without = Union(withoutA, withoutB);
  const Family with = WithoutSupersets(Union(withA, withB), without);
  return Remember(UNION, a, b, MakeNode(variable, with, without));
}

CutSetFamilies::Family CutSetFamilies::Union(std::vector<Family> parts) {
  // In pairs, so that each part takes part in few unions: one after the other, every union would
  // walk through all that is there already.
  if (parts.empty()) return None;
  while (parts.size() > 1) {
    const std::size_t pairs = parts.size() / 2;
    for (std::size_t i = 0; i < pairs; ++i) parts[i] = Union(parts[2 * i], parts[2 * i + 1]);
    if (parts.size() % 2 != 0) parts[pairs] = parts.back();
    parts.resize(parts.size() - pairs);
  }
  return parts.front();
}

// The sets of `a` that hold no set of `b`.
CutSetFamilies::Family CutSetFamilies::WithoutSupersets(Family a, Family b) {
  if (a == None || b == Certain || a == b) return None;
  if (b == None || a == Certain) return a;  // The empty set is only in the family `Certain`.
  if (const Result* known = Recall(MINUS, a, b)) return known->value;
  const Node nodeA = nodes[a];
  const Node nodeB = nodes[b];
  if (nodeB.variable < nodeA.variable) {
    return Remember(MINUS, a, b, WithoutSupersets(a, nodeB.without));
  }
  Family with = nodeA.with;
  Family without = nodeA.without;
  if (nodeA.variable == nodeB.variable) {
    with = WithoutSupersets(WithoutSupersets(with, nodeB.with), nodeB.without);
    without = WithoutSupersets(without, nodeB.without);
  } else {
    with = WithoutSupersets(with, b);
    without = WithoutSupersets(without, b);
  }
  return Remember(MINUS, a, b, MakeNode(nodeA.variable, with, without));
}

CutSetFamilies::Family CutSetFamilies::Product(Family a, Family b, int left) {
  if (a == None || b == None || left < 0) return None;
  if (a == Certain || a == b) return Trim(b, left);
  if (b == Certain) return Trim(a, left);
  if (a > b) std::swap(a, b);
  const std::uint32_t key = Key(PRODUCT, left);
  if (const Result* known = Recall(key, a, b)) return known->value;
  const Node nodeA = nodes[a];
  const Node nodeB = nodes[b];
  const int variable = std::min(nodeA.variable, nodeB.variable);
  const int behind = left == NoLimit ? NoLimit : left - WeightOf(variable);
  Family with = None;
  Family without = None;
  if (nodeA.variable == nodeB.variable) {
    without = Product(nodeA.without, nodeB.without, left);
    with = Union(Product(nodeA.with, Union(nodeB.with, nodeB.without), behind),
                 Product(nodeA.without, nodeB.with, behind));
  } else if (nodeA.variable == variable) {
    without = Product(nodeA.without, b, left);
    with = Product(nodeA.with, b, behind);
  } else {
    without = Product(a, nodeB.without, left);
    with = Product(a, nodeB.with, behind);
  }
  return Remember(key, a, b, MakeNode(variable, WithoutSupersets(with, without), without));
}

// The sets of `a` with an order of at most `left`.
CutSetFamilies::Family CutSetFamilies::Trim(Family a, int left) {
  if (left < 0) return None;
  if (nodes[a].heaviest <= left) return a;
  const std::uint32_t key = Key(TRIM, left);
  if (const Result* known = Recall(key, a, a)) return known->value;
  const Node node = nodes[a];
  const Family with = Trim(node.with, left - WeightOf(node.variable));
  const Family without = Trim(node.without, left);
  return Remember(key, a, a, MakeNode(node.variable, with, without));
}

bool CutSetFamilies::Exceeds(Family a, Family b, int left) {
  if (a == None || b == None) return false;
  const Node nodeA = nodes[a];
  const Node nodeB = nodes[b];
  if (nodeA.heaviest + nodeB.heaviest <= left) return false;
  if (nodeA.heaviest > left || nodeB.heaviest > left) return true;
  const std::uint32_t key = Key(EXCEEDS, left);
  if (const Result* known = Recall(key, a, b)) return known->value != 0;
  const int variable = std::min(nodeA.variable, nodeB.variable);
  const int behind = left - WeightOf(variable);
  const Family withA = nodeA.variable == variable ? nodeA.with : None;
  const Family withB = nodeB.variable == variable ? nodeB.with : None;
  const Family withoutA = nodeA.variable == variable ? nodeA.without : a;
  const Family withoutB = nodeB.variable == variable ? nodeB.without : b;
  const bool exceeds = Exceeds(withA, withB, behind) || Exceeds(withA, withoutB, behind) ||
                       Exceeds(withoutA, withB, behind) || Exceeds(withoutA, withoutB, left);
  Remember(key, a, b, exceeds ? 1 : 0);
  return exceeds;
}

void CutSetFamilies::ForEachSet(Family family, const Taker& take) const {
  // An explicit stack: a branch waits until the sets before it have been handed over.
  struct Branch {
    Family family;
    std::size_t depth;
  };
  std::vector<Branch> waiting;
  std::vector<int> members;
  Family current = family;
  while (true) {
    while (current > Certain) {
      const Node& node = nodes[current];
      if (node.without != None) waiting.push_back({node.without, members.size()});
      members.push_back(node.variable);
      current = node.with;
    }
    if (current == Certain && !take(members)) return;
    if (waiting.empty()) return;
    current = waiting.back().family;
    members.resize(waiting.back().depth);
    waiting.pop_back();
  }
}

CutSetFamilies::Family CutSetFamilies::MakeNode(int variable, Family with, Family without) {
  if (with == None) return without;
  const std::size_t mask = unique.size() - 1;
  std::size_t place = Scatter(static_cast<std::uint64_t>(variable), with, without) & mask;
  for (; unique[place] != None; place = (place + 1) & mask) {
    const Node& node = nodes[unique[place]];
    if (node.variable == variable && node.with == with && node.without == without) {
      return unique[place];
    }
  }
  const int heaviest = std::max(nodes[with].heaviest + WeightOf(variable), nodes[without].heaviest);
  const auto made = static_cast<Family>(nodes.size());
  nodes.push_back({variable, with, without, heaviest});
  unique[place] = made;
  if (nodes.size() * 2 > unique.size()) Grow();
  return made;
}

std::uint32_t CutSetFamilies::Key(Operation operation, int left) {
  constexpr std::uint32_t OperationBits = 3;
  return (static_cast<std::uint32_t>(left) + 1) << OperationBits | operation;
}

const CutSetFamilies::Result* CutSetFamilies::Recall(std::uint32_t operation, Family a,
                                                     Family b) const {
  ++Cost().steps;
  const Result& result = results[Scatter(operation, a, b) & (results.size() - 1)];
  return result.operation == operation && result.a == a && result.b == b ? &result : nullptr;
}

CutSetFamilies::Family CutSetFamilies::Remember(std::uint32_t operation, Family a, Family b,
                                                Family value) {
  results[Scatter(operation, a, b) & (results.size() - 1)] = {operation, a, b, value};
  return value;
}

void CutSetFamilies::Grow() {
  unique.assign(unique.size() * 2, None);
  const std::size_t mask = unique.size() - 1;
  for (Family family = Certain + 1; family < nodes.size(); ++family) {
    const Node& node = nodes[family];
    std::size_t place =
        Scatter(static_cast<std::uint64_t>(node.variable), node.with, node.without) & mask;
    while (unique[place] != None) place = (place + 1) & mask;
    unique[place] = family;
  }
  if (results.size() < LargestResultTable) {
    results.assign(results.size() * 2, Result{0, None, None, None});
  }
}

}  // namespace FTS
