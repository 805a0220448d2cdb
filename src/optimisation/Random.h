#pragma once

#include <array>
#include <cstdint>

namespace FTS {

/// The random numbers of the search: the combined generator of L'Ecuyer (Efficient and Portable
/// Combined Random Number Generators, Communications of the ACM 31, 1988) with a Bays-Durham
/// shuffle, known as "ran2" (Press and Teukolsky, Computers in Physics 6, 1992). A seed gives the
/// same numbers on every machine, so that a search can be repeated.
class RandomGenerator {
 public:
  /// A negative seed counts as its positive; 0 as 1.
  explicit RandomGenerator(std::int64_t seed);

  /// The next number, above 0 and below 1.
  float Uniform();

  /// The state of the first of the two generators; what a saved search stores.
  std::int64_t State() const { return first; }

 private:
  static constexpr std::size_t TableSize = 32;

  std::int64_t first;
  std::int64_t second;
  std::int64_t shuffle;
  std::array<std::int64_t, TableSize> table{};
};

/// The generator of this process. A seed that is not the one before starts it anew; the same seed
/// again, or 0, lets the sequence go on, so that searches which follow one another differ. A seed
/// of 0 at first stands for the calendar time.
void SeedRandom(std::int64_t seed);

/// The next number of the process's generator, above 0 and below 1. Before the first seeding it is
/// seeded with the options' seed.
float RandomUniform();

/// A random position among `count`, which is at least 1, from one number of the generator.
int RandomIndex(int count);

/// The state that a saved search stores.
std::int64_t RandomState();

/// Forgets the generator and its seed.
void ReleaseRandom();

}  // namespace FTS
