#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "app/Config.h"
#include "optimisation/Random.h"
#include "support/CaseName.h"
#include "support/FixedClock.h"
#include "support/ProcessStateTest.h"

namespace FTS {
namespace {

/// The generator as it was published: in 32-bit whole numbers, by the method of Schrage, which
/// takes the remainder of a product without ever forming it.
class PublishedGenerator {
 public:
  explicit PublishedGenerator(std::uint32_t seed) : first(seed), second(seed) {
    for (int j = 39; j >= 0; --j) {
      Step(first, 40014U, 53668U, 12211U, 2147483563U);
      if (j < 32) table[static_cast<std::size_t>(j)] = static_cast<std::int32_t>(first);
    }
    shuffle = table[0];
  }

  float Next() {
    Step(first, 40014U, 53668U, 12211U, 2147483563U);
    Step(second, 40692U, 52774U, 3791U, 2147483399U);
    const auto j = static_cast<std::size_t>(shuffle / 67108862);
    shuffle = table[j] - static_cast<std::int32_t>(second);
    table[j] = static_cast<std::int32_t>(first);
    if (shuffle < 1) shuffle += 2147483562;
    const auto value = static_cast<float>((1.0 / 2147483563.0) * shuffle);
    return static_cast<double>(value) > 1.0 - 1.2e-7 ? 0.9999999F : value;
  }

  std::uint32_t First() const { return first; }

 private:
  static void Step(std::uint32_t& state, std::uint32_t a, std::uint32_t q, std::uint32_t r,
                   std::uint32_t m) {
    const std::uint32_t k = state / q;
    auto next = static_cast<std::int32_t>(a * (state - k * q)) - static_cast<std::int32_t>(k * r);
    if (next < 0) next += static_cast<std::int32_t>(m);
    state = static_cast<std::uint32_t>(next);
  }

  std::uint32_t first;
  std::uint32_t second;
  std::int32_t shuffle = 0;
  std::array<std::int32_t, 32> table{};
};

struct SeedCase {
  const char* name;
  std::int64_t seed;
  std::uint32_t published;  // What the published form is seeded with.
};

class PublishedSequenceTest : public ProcessStateTest,
                              public ::testing::WithParamInterface<SeedCase> {};

TEST_P(PublishedSequenceTest, FirstThousandNumbersAreThePublishedOnes) {
  RandomGenerator ours(GetParam().seed);
  PublishedGenerator published(GetParam().published);
  for (int i = 0; i < 1000; ++i) {
    ASSERT_EQ(ours.Uniform(), published.Next()) << "number " << i;
    ASSERT_EQ(ours.State(), published.First()) << "state behind number " << i;
  }
}

INSTANTIATE_TEST_SUITE_P(Seeds, PublishedSequenceTest,
                         ::testing::Values(SeedCase{"One", 1, 1}, SeedCase{"Zero", 0, 1},
                                           SeedCase{"Negative", -987654321, 987654321},
                                           SeedCase{"DateInSeconds", 1666000000, 1666000000},
                                           SeedCase{"ModulusLessOne", 2147483562, 2147483562},
                                           SeedCase{"SmallestOf32Bits", -2147483648LL, 2147483648U},
                                           SeedCase{"AboveTwoToThe31", 3123456789LL, 3123456789U},
                                           SeedCase{"LargestOf32Bits", 4294967295LL, 4294967295U}),
                         CaseName);

std::vector<float> Draw(int count) {
  std::vector<float> numbers;
  for (int i = 0; i < count; ++i) numbers.push_back(RandomUniform());
  return numbers;
}

std::vector<float> Published(std::uint32_t seed, int count, int skipped = 0) {
  PublishedGenerator generator(seed);
  for (int i = 0; i < skipped; ++i) generator.Next();
  std::vector<float> numbers;
  for (int i = 0; i < count; ++i) numbers.push_back(generator.Next());
  return numbers;
}

class RandomTest : public ProcessStateTest {};

// Seeds that reach the limit soon were found by searching the published generator for them.
TEST_F(RandomTest, NumbersStayBelowOne) {
  RandomGenerator generator(1132773);
  for (int i = 1; i < 4; ++i) generator.Uniform();
  EXPECT_EQ(generator.Uniform(), 0.9999999F);
  RandomGenerator roundedToOne(2202970);
  for (int i = 1; i < 18; ++i) roundedToOne.Uniform();
  EXPECT_EQ(roundedToOne.Uniform(), 0.9999999F);
}

TEST_F(RandomTest, ANewSeedStartsItsSequence) {
  SeedRandom(77);
  EXPECT_EQ(Draw(5), Published(77, 5));
  SeedRandom(78);
  EXPECT_EQ(Draw(5), Published(78, 5));
}

TEST_F(RandomTest, TheSameSeedAgainLetsTheSequenceGoOn) {
  SeedRandom(77);
  Draw(5);
  SeedRandom(77);
  EXPECT_EQ(Draw(5), Published(77, 5, 5));
}

TEST_F(RandomTest, AnEarlierSeedStartsItsSequenceAnew) {
  SeedRandom(77);
  Draw(5);
  SeedRandom(78);
  SeedRandom(77);
  EXPECT_EQ(Draw(5), Published(77, 5));
}

TEST_F(RandomTest, ZeroFirstStandsForTheCalendar) {
  FixedClock clock;
  clock.SetCalendarSeconds(1700000000);
  SeedRandom(0);
  EXPECT_EQ(Draw(5), Published(1700000000, 5));
}

TEST_F(RandomTest, ZeroLaterLetsTheSequenceGoOn) {
  FixedClock clock;
  clock.SetCalendarSeconds(1700000000);
  SeedRandom(77);
  Draw(5);
  SeedRandom(0);
  EXPECT_EQ(Draw(5), Published(77, 5, 5));
}

TEST_F(RandomTest, CalendarSeedIsRememberedAsOne) {
  FixedClock clock;
  clock.SetCalendarSeconds(1700000000);
  SeedRandom(0);
  Draw(3);
  clock.SetCalendarSeconds(1700000001);
  SeedRandom(0);
  SeedRandom(1700000000);
  EXPECT_EQ(Draw(3), Published(1700000000, 3, 3));
}

TEST_F(RandomTest, UnseededNumbersAreThoseOfTheOptionsSeed) {
  Config::Instance().randomSeed = 4711;
  EXPECT_EQ(Draw(5), Published(4711, 5));
  SeedRandom(4711);
  EXPECT_EQ(Draw(5), Published(4711, 5, 5));
}

TEST_F(RandomTest, StateIsThatOfTheFirstGenerator) {
  SeedRandom(5);
  PublishedGenerator published(5);
  Draw(10);
  for (int i = 0; i < 10; ++i) published.Next();
  EXPECT_EQ(RandomState(), published.First());
}

TEST_F(RandomTest, PositionsAreTruncatedNumbersTimesTheCount) {
  SeedRandom(5);
  const std::vector<float> numbers = Published(5, 300);
  for (int i = 0; i < 300; ++i) {
    ASSERT_EQ(RandomIndex(7), static_cast<int>(numbers[static_cast<std::size_t>(i)] * 7.0F)) << i;
  }
  EXPECT_EQ(RandomIndex(1), 0);
}

}  // namespace
}  // namespace FTS
