#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "analysis/CutSetFamilies.h"
#include "support/CaseName.h"
#include "support/Dice.h"
#include "support/ProcessStateTest.h"

namespace FTS {
namespace {

using Sets = std::set<std::set<int>>;

/// What the families are checked against: plain sets, every pair looked at.
Sets Minimal(const Sets& sets) {
  Sets minimal;
  for (const auto& set : sets) {
    bool redundant = false;
    for (const auto& other : sets) {
      redundant = redundant || (other != set &&
                                std::includes(set.begin(), set.end(), other.begin(), other.end()));
    }
    if (!redundant) minimal.insert(set);
  }
  return minimal;
}

int OrderOf(const std::set<int>& set, const std::vector<int>& weights) {
  int order = 0;
  for (const int variable : set) order += weights[static_cast<std::size_t>(variable)];
  return order;
}

Sets MinimalProduct(const Sets& a, const Sets& b, const std::vector<int>& weights, int limit) {
  Sets products;
  for (const auto& one : a) {
    for (auto product : b) {
      product.insert(one.begin(), one.end());
      if (OrderOf(product, weights) <= limit) products.insert(product);
    }
  }
  return Minimal(products);
}

bool SomeProductExceeds(const Sets& a, const Sets& b, const std::vector<int>& weights, int limit) {
  for (const auto& one : a) {
    for (auto product : b) {
      product.insert(one.begin(), one.end());
      if (OrderOf(product, weights) > limit) return true;
    }
  }
  return false;
}

Sets SetsOf(const CutSetFamilies& families, CutSetFamilies::Family family) {
  Sets sets;
  families.ForEachSet(family, [&](const std::vector<int>& members) {
    EXPECT_TRUE(sets.emplace(members.begin(), members.end()).second)
        << "A set is handed over twice.";
    EXPECT_TRUE(std::is_sorted(members.begin(), members.end()));
    return true;
  });
  return sets;
}

class CutSetFamiliesTest : public ProcessStateTest {
 protected:
  static CutSetFamilies::Family FamilyOf(CutSetFamilies& families, const Sets& sets) {
    std::vector<CutSetFamilies::Family> parts;
    for (const auto& set : sets) parts.push_back(families.SetOf({set.begin(), set.end()}));
    return families.Union(parts);
  }

  CutSetFamilies families{std::vector<int>(8, 1), CutSetFamilies::NoLimit};
};

TEST_F(CutSetFamiliesTest, NoFamilyHasNoSet) {
  EXPECT_EQ(SetsOf(families, CutSetFamilies::None), Sets());
  EXPECT_EQ(families.Union(std::vector<CutSetFamilies::Family>()), CutSetFamilies::None);
  EXPECT_EQ(families.HighestOrder(CutSetFamilies::None), 0);
}

TEST_F(CutSetFamiliesTest, EmptySetMakesAllOthersRedundant) {
  const auto some = families.SetOf({1, 2});
  EXPECT_EQ(families.SetOf({}), CutSetFamilies::Certain);
  EXPECT_EQ(families.Union(some, CutSetFamilies::Certain), CutSetFamilies::Certain);
  EXPECT_EQ(families.Product(some, CutSetFamilies::Certain), some);
  EXPECT_EQ(SetsOf(families, CutSetFamilies::Certain), Sets({{}}));
}

TEST_F(CutSetFamiliesTest, EqualFamiliesAreEqualNumbers) {
  const auto one = families.Union(families.SetOf({0, 3}), families.SetOf({1}));
  const auto other = families.Union(families.SetOf({1}), families.SetOf({0, 3}));
  EXPECT_EQ(one, other);
  EXPECT_EQ(families.HighestOrder(one), 2);
}

TEST_F(CutSetFamiliesTest, UnionKeepsMinimalSetsOnly) {
  const auto family = FamilyOf(families, {{0, 1}, {1}, {2, 3}, {2, 3, 4}});
  EXPECT_EQ(SetsOf(families, family), Sets({{1}, {2, 3}}));
}

TEST_F(CutSetFamiliesTest, ProductKeepsMinimalSetsOnly) {
  const auto family =
      families.Product(FamilyOf(families, {{0}, {1}}), FamilyOf(families, {{0}, {2}}));
  EXPECT_EQ(SetsOf(families, family), Sets({{0}, {1, 2}}));
}

TEST_F(CutSetFamiliesTest, TakerMayStopEarly) {
  const auto family = FamilyOf(families, {{0}, {1}, {2}});
  int taken = 0;
  families.ForEachSet(family, [&](const std::vector<int>&) { return ++taken < 2; });
  EXPECT_EQ(taken, 2);
}

TEST_F(CutSetFamiliesTest, NegativeLimitLeavesNoProduct) {
  CutSetFamilies strict(std::vector<int>(4, 1), -1);
  const auto one = strict.SetOf({0});
  const auto other = strict.SetOf({1});
  EXPECT_TRUE(strict.ProductExceedsLimit(one, other));
  EXPECT_EQ(strict.Product(one, other), CutSetFamilies::None);
  EXPECT_EQ(strict.Product(one, one), CutSetFamilies::None);
}

struct FamilyCase {
  const char* name;
  int variables;
  int limit;
  int freeVariables;  // Without weight.
};

class RandomFamiliesTest : public CutSetFamiliesTest,
                           public ::testing::WithParamInterface<FamilyCase> {
 protected:
  static Sets RandomSets(Dice& dice, int variables) {
    Sets sets;
    const int count = dice.Between(1, 9);
    for (int i = 0; i < count; ++i) {
      std::set<int> set;
      const int size = dice.Between(1, 4);
      for (int j = 0; j < size; ++j) set.insert(dice.Roll(variables));
      sets.insert(set);
    }
    return Minimal(sets);
  }
};

TEST_P(RandomFamiliesTest, OperationsAreThoseOfPlainSets) {
  const FamilyCase& parameters = GetParam();
  std::vector<int> weights(static_cast<std::size_t>(parameters.variables), 1);
  for (int i = 0; i < parameters.freeVariables; ++i) weights[static_cast<std::size_t>(i * 2)] = 0;
  const int limit = parameters.limit == 0 ? CutSetFamilies::NoLimit : parameters.limit;
  CutSetFamilies random(weights, limit);
  for (std::uint64_t seed = 1; seed <= 300; ++seed) {
    Dice dice(seed);
    const Sets a = RandomSets(dice, parameters.variables);
    const Sets b = RandomSets(dice, parameters.variables);
    const auto familyA = FamilyOf(random, a);
    const auto familyB = FamilyOf(random, b);
    Sets both = a;
    both.insert(b.begin(), b.end());
    EXPECT_EQ(SetsOf(random, familyA), a) << "seed " << seed;
    EXPECT_EQ(SetsOf(random, random.Union(familyA, familyB)), Minimal(both)) << "seed " << seed;
    EXPECT_EQ(SetsOf(random, random.Product(familyA, familyB)),
              MinimalProduct(a, b, weights, limit))
        << "seed " << seed;
    EXPECT_EQ(random.ProductExceedsLimit(familyA, familyB),
              SomeProductExceeds(a, b, weights, limit))
        << "seed " << seed;
  }
}

INSTANTIATE_TEST_SUITE_P(
    Sizes, RandomFamiliesTest,
    ::testing::Values(FamilyCase{"Unlimited", 8, 0, 0}, FamilyCase{"LimitOne", 6, 1, 0},
                      FamilyCase{"LimitTwo", 8, 2, 0}, FamilyCase{"LimitThree", 10, 3, 0},
                      FamilyCase{"FreeVariables", 8, 2, 3}, FamilyCase{"FewVariables", 4, 3, 1}),
    CaseName);

TEST_F(CutSetFamiliesTest, TablesGrowWithoutChangingFamilies) {
  CutSetFamilies large(std::vector<int>(400, 1), CutSetFamilies::NoLimit);
  std::vector<CutSetFamilies::Family> pairs;
  Sets expected;
  for (int i = 0; i < 400; ++i) {
    for (int j = i + 1; j < 400; j += 7) {
      pairs.push_back(large.SetOf({i, j}));
      expected.insert({i, j});
    }
  }
  EXPECT_EQ(SetsOf(large, large.Union(pairs)), expected);
}

TEST_F(CutSetFamiliesTest, ProductOfLongSumsTakesStepsByNodesNotBySets) {
  CutSetFamilies large(std::vector<int>(634, 1), CutSetFamilies::NoLimit);
  std::vector<CutSetFamilies::Family> first;
  std::vector<CutSetFamilies::Family> second;
  for (int i = 0; i < 300; ++i) first.push_back(large.SetOf({i}));
  for (int i = 300; i < 634; ++i) second.push_back(large.SetOf({i}));
  const std::uint64_t before = CutSetFamilies::Cost().steps;
  const auto product = large.Product(large.Union(first), large.Union(second));
  EXPECT_LE(CutSetFamilies::Cost().steps - before, 20000U);
  std::size_t count = 0;
  large.ForEachSet(product, [&](const std::vector<int>&) { return ++count > 0; });
  EXPECT_EQ(count, 300U * 334U);
}

}  // namespace
}  // namespace FTS
