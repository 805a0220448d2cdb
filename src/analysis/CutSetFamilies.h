#pragma once

#include <cstdint>
#include <functional>
#include <vector>

namespace FTS {

/// Families of minimal cut sets, held as zero-suppressed decision diagrams that share their parts
/// (S. Minato: Zero-Suppressed BDDs for Set Manipulation in Combinatorial Problems, DAC 1993). The
/// work of an operation grows with the diagrams, not with the cut sets in them, of which a diagram
/// of a few thousand nodes can hold millions. None of a family's sets lies inside another; every
/// operation keeps it that way (A. Rauzy: New algorithms for fault trees analysis, Reliability
/// Engineering and System Safety 40 (1993)).
///
/// Members are variables 0, 1, 2, ...; lower ones stand nearer to the root of a diagram. A family
/// is a plain number, valid as long as this object, and equal numbers are equal families.
class CutSetFamilies {
 public:
  using Family = std::uint32_t;
  /// The family without any set, and the one that holds just the empty set.
  static constexpr Family None = 0;
  static constexpr Family Certain = 1;
  static constexpr int NoLimit = 1 << 20;

  /// What the operations have cost in this process, for tests that guard it.
  struct Counters {
    std::uint64_t steps = 0;  ///< Pairs of diagram nodes worked on.
  };

  /// `initWeights` tells for each variable what it adds to the order of a set, 0 or 1. Products
  /// leave out what has an order above `initLimit`, which may be `NoLimit`.
  CutSetFamilies(std::vector<int> initWeights, int initLimit);
  ~CutSetFamilies();
  CutSetFamilies(const CutSetFamilies&) = delete;
  CutSetFamilies& operator=(const CutSetFamilies&) = delete;

  /// The family of one set. The variables ascend.
  Family SetOf(const std::vector<int>& variables);
  /// The minimal sets among those of the families.
  Family Union(Family a, Family b);
  Family Union(std::vector<Family> parts);
  /// The minimal unions of a set of `a` and a set of `b`, as far as the limit admits them.
  Family Product(Family a, Family b) { return Product(a, b, limit); }
  /// True when the union of some set of `a` and some set of `b` has an order above the limit.
  bool ProductExceedsLimit(Family a, Family b) { return Exceeds(a, b, limit); }
  /// The highest order of a set of the family, 0 for none.
  int HighestOrder(Family family) const { return nodes[family].heaviest; }

  /// Hands over each set of the family, ascending, until the taker answers false.
  using Taker = std::function<bool(const std::vector<int>&)>;
  void ForEachSet(Family family, const Taker& take) const;

  static Counters& Cost();

 private:
  // The sets with `variable`, without it, are those of `with`; the others those of `without`.
  struct Node {
    int variable;
    Family with;
    Family without;
    int heaviest;
  };

  // A remembered result. The operation's number holds what is left of the limit where that counts.
  struct Result {
    std::uint32_t operation;
    Family a;
    Family b;
    Family value;
  };

  enum Operation : std::uint32_t { UNION = 1, MINUS = 2, PRODUCT = 3, TRIM = 4, EXCEEDS = 5 };

  Family MakeNode(int variable, Family with, Family without);
  Family WithoutSupersets(Family a, Family b);
  Family Product(Family a, Family b, int left);
  Family Trim(Family a, int left);
  bool Exceeds(Family a, Family b, int left);
  int WeightOf(int variable) const { return weights[static_cast<std::size_t>(variable)]; }
  static std::uint32_t Key(Operation operation, int left);

  // Null when the result is not, or no longer, known.
  const Result* Recall(std::uint32_t operation, Family a, Family b) const;
  Family Remember(std::uint32_t operation, Family a, Family b, Family value);
  void Grow();

  std::vector<int> weights;
  int limit;
  std::vector<Node> nodes;      // The first two are `None` and `Certain`.
  std::vector<Family> unique;   // Open addressing over `nodes`; 0 is a free place.
  std::vector<Result> results;  // The latest result per place.
};

}  // namespace FTS
