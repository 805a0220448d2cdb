#include "analysis/Prime.h"

#include <cassert>
#include <cmath>
#include <memory>

namespace FTS {
namespace {

constexpr std::size_t TableSize = 10000;
constexpr std::size_t LastOfTable = 104729;  // The ten-thousandth prime.

std::unique_ptr<Prime>& Holder() {
  static std::unique_ptr<Prime> prime;
  return prime;
}

/// All primes up to `LastOfTable`, by the sieve of Eratosthenes.
std::vector<double> MakeTable() {
  std::vector<bool> composite(LastOfTable + 1, false);
  std::vector<double> table;
  table.reserve(TableSize);
  for (std::size_t number = 2; number <= LastOfTable; ++number) {
    if (composite[number]) continue;
    table.push_back(static_cast<double>(number));
    for (std::size_t multiple = number * number; multiple <= LastOfTable; multiple += number) {
      composite[multiple] = true;
    }
  }
  assert(table.size() == TableSize && "The limit of the sieve fits the size of the table.");
  return table;
}

}  // namespace

Prime& Prime::Instance() {
  if (!Holder()) Holder() = std::make_unique<Prime>();
  return *Holder();
}

void Prime::Release() { Holder().reset(); }

Prime::Prime() : primes(MakeTable()) {
  Next();  // The even prime goes to nobody; the first event gets 3.
}

double Prime::Next() {
  const auto index = static_cast<std::size_t>(next);
  if (index == primes.size()) AppendPrime();
  ++next;
  return primes[index];
}

void Prime::SetIndex(std::int32_t index) {
  assert(index >= 0 && "An index counts primes.");
  while (primes.size() < static_cast<std::size_t>(index)) AppendPrime();
  next = index;
}

void Prime::AppendPrime() {
  // Candidates are odd, so 2 at index 0 is not tried; the list holds every divisor up to the root.
  const auto isPrime = [this](double candidate) {
    for (std::size_t i = 1; primes[i] * primes[i] <= candidate; ++i) {
      if (std::fmod(candidate, primes[i]) == 0.0) return false;
    }
    return true;
  };
  double candidate = primes.back() + 2.0;
  while (!isPrime(candidate)) candidate += 2.0;
  primes.push_back(candidate);
}

}  // namespace FTS
