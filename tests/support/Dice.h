#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace FTS {

/// Random choices for generated tests: the same from one seed on every machine and with every
/// standard library, which the distributions of <random> are not. (The SplitMix64 generator of
/// Steele, Lea and Flood, 2014.)
class Dice {
 public:
  explicit Dice(std::uint64_t seed) : state(seed) {}

  /// From 0 to n - 1; n is above 0.
  int Roll(int n) { return static_cast<int>(Next() % static_cast<std::uint64_t>(n)); }

  /// From low to high, both included.
  int Between(int low, int high) { return low + Roll(high - low + 1); }

  bool Chance(int percent) { return Roll(100) < percent; }

  template <typename T>
  const T& Pick(const std::vector<T>& choices) {
    return choices[static_cast<std::size_t>(Roll(static_cast<int>(choices.size())))];
  }

  /// At most n of the choices, each once, in random order.
  template <typename T>
  std::vector<T> PickSome(std::vector<T> choices, int n) {
    std::vector<T> picked;
    while (!choices.empty() && static_cast<int>(picked.size()) < n) {
      const auto i = static_cast<std::size_t>(Roll(static_cast<int>(choices.size())));
      picked.push_back(choices[i]);
      choices.erase(choices.begin() + static_cast<std::ptrdiff_t>(i));
    }
    return picked;
  }

 private:
  std::uint64_t Next() {
    state += 0x9E3779B97F4A7C15U;
    std::uint64_t z = state;
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9U;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBU;
    return z ^ (z >> 31);
  }

  std::uint64_t state;
};

}  // namespace FTS
