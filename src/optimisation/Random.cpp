#include "optimisation/Random.h"

#include <cstdlib>
#include <optional>

#include "app/Config.h"
#include "platform/Clock.h"

namespace FTS {

namespace {

constexpr std::int64_t FirstModulus = 2147483563;
constexpr std::int64_t SecondModulus = 2147483399;
constexpr std::int64_t FirstMultiplier = 40014;
constexpr std::int64_t SecondMultiplier = 40692;
constexpr std::int64_t IndexDivisor = 67108862;
constexpr std::int64_t WrapAddend = 2147483562;
constexpr double Scale = 4.656613057391769e-10;
constexpr float Largest = 0.99999988F;
constexpr float AtLargest = 0.9999999F;
constexpr int WarmUp = 40;

struct SeededGenerator {
  std::int64_t seed;
  RandomGenerator generator;
};

std::optional<SeededGenerator>& TheGenerator() {
  static std::optional<SeededGenerator> generator;
  return generator;
}

std::int64_t SeedFromTime() {
  const std::int64_t seconds = Clock::CalendarSeconds();
  return seconds == 0 ? 1 : seconds;
}

/// 0 and its multiples would stay what they are for ever.
std::int64_t StartOf(std::int64_t seed, std::int64_t modulus) {
  const std::int64_t start = std::abs(seed);
  return start % modulus == 0 ? 1 : start;
}

RandomGenerator& Seeded() {
  if (!TheGenerator()) SeedRandom(Config::Instance().randomSeed);
  return TheGenerator()->generator;
}

}  // namespace

RandomGenerator::RandomGenerator(std::int64_t seed)
    : first(StartOf(seed, FirstModulus)), second(StartOf(seed, SecondModulus)) {
  for (int step = WarmUp - 1; step >= 0; --step) {
    first = FirstMultiplier * first % FirstModulus;
    if (step < static_cast<int>(TableSize)) table[static_cast<std::size_t>(step)] = first;
  }
  shuffle = table[0];
}

float RandomGenerator::Uniform() {
  first = FirstMultiplier * first % FirstModulus;
  second = SecondMultiplier * second % SecondModulus;
  std::int64_t& entry = table[static_cast<std::size_t>(shuffle / IndexDivisor)];
  shuffle = entry - second;
  entry = first;
  if (shuffle < 1) shuffle += WrapAddend;
  const float number = static_cast<float>(static_cast<double>(shuffle) * Scale);
  return number > Largest ? AtLargest : number;
}

void SeedRandom(std::int64_t seed) {
  std::optional<SeededGenerator>& current = TheGenerator();
  if (seed == 0 ? current.has_value() : current && current->seed == seed) return;
  const std::int64_t used = seed == 0 ? SeedFromTime() : seed;
  current.emplace(SeededGenerator{used, RandomGenerator(used)});
}

float RandomUniform() { return Seeded().Uniform(); }

int RandomIndex(int count) {
  // In single precision, as the saved searches of our users count on it.
  const float range = static_cast<float>(count - 1) + 1.0F;
  return static_cast<int>(RandomUniform() * range);
}

std::int64_t RandomState() { return Seeded().State(); }

void ReleaseRandom() { TheGenerator().reset(); }

}  // namespace FTS
