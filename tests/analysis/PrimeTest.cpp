#include <cmath>
#include <vector>

#include "analysis/Prime.h"
#include "support/ProcessStateTest.h"

namespace FTS {
namespace {

constexpr int LastIndexOfTable = 9999;

class PrimeTest : public ProcessStateTest {
 protected:
  Prime prime;
};

/// The plain rule, without any cut-off: a candidate is divided by every odd prime known so far.
double NextByTrialDivision(const std::vector<double>& known) {
  double candidate = known.back();
  bool divided = true;
  while (divided) {
    candidate += 2.0;
    divided = false;
    for (std::size_t i = known.size() - 1; i >= 1 && !divided; --i) {
      divided = std::fmod(candidate, known[i]) == 0.0;
    }
  }
  return candidate;
}

TEST_F(PrimeTest, FirstObjectReceivesThree) {
  EXPECT_EQ(prime.Next(), 3.0);
  EXPECT_EQ(prime.Next(), 5.0);
  EXPECT_EQ(prime.Next(), 7.0);
  EXPECT_EQ(prime.Next(), 11.0);
}

TEST_F(PrimeTest, IndexCountsTwoAsHandedOut) {
  EXPECT_EQ(prime.GetIndex(), 1);
  prime.Next();
  EXPECT_EQ(prime.GetIndex(), 2);
}

TEST_F(PrimeTest, TableIsThatOfTrialDivision) {
  std::vector<double> known = {2.0, 3.0};
  EXPECT_EQ(prime.Next(), 3.0);
  for (int i = 0; i < 1000; ++i) {
    known.push_back(NextByTrialDivision(known));
    ASSERT_EQ(prime.Next(), known.back());
  }
}

TEST_F(PrimeTest, TableEndsWithTheTenThousandthPrime) {
  prime.SetIndex(LastIndexOfTable);
  EXPECT_EQ(prime.Next(), 104729.0);
}

TEST_F(PrimeTest, PrimesBehindTheTableAreThoseOfTrialDivision) {
  std::vector<double> known = {2.0};
  for (int i = 1; i <= LastIndexOfTable; ++i) known.push_back(prime.Next());
  for (int i = 0; i < 100; ++i) {
    known.push_back(NextByTrialDivision(known));
    ASSERT_EQ(prime.Next(), known.back());
  }
}

TEST_F(PrimeTest, FirstPrimeBehindTheTableIsTheTenThousandAndFirst) {
  prime.SetIndex(LastIndexOfTable + 1);
  EXPECT_EQ(prime.Next(), 104743.0);
}

TEST_F(PrimeTest, IndexSetBackRepeatsThePrimes) {
  for (int i = 0; i < 20; ++i) prime.Next();
  const int index = prime.GetIndex();
  const double first = prime.Next();
  const double second = prime.Next();
  prime.SetIndex(index);
  EXPECT_EQ(prime.Next(), first);
  EXPECT_EQ(prime.Next(), second);
}

TEST_F(PrimeTest, IndexSetForwardBehindTheTableGeneratesThePrimesBetween) {
  prime.SetIndex(LastIndexOfTable + 51);
  const double jumped = prime.Next();
  Prime other;
  double stepped = 0.0;
  while (other.GetIndex() <= LastIndexOfTable + 51) stepped = other.Next();
  EXPECT_EQ(jumped, stepped);
}

TEST_F(PrimeTest, IndexZeroHandsOutTwo) {
  prime.SetIndex(0);
  EXPECT_EQ(prime.Next(), 2.0);
}

TEST_F(PrimeTest, ReleaseStartsAnew) {
  EXPECT_EQ(Prime::Instance().Next(), 3.0);
  EXPECT_EQ(Prime::Instance().Next(), 5.0);
  Prime::Release();
  EXPECT_EQ(Prime::Instance().Next(), 3.0);
}

}  // namespace
}  // namespace FTS
