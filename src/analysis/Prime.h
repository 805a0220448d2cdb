#pragma once

#include <cstdint>
#include <vector>

namespace FTS {

/// The source of the primes that identify events. It hands them out in ascending order from 3 on;
/// 2 goes to nobody. Nothing is ever returned to it.
class Prime {
 public:
  /// The source of this process, made at first use.
  static Prime& Instance();

  /// Destroys the source; the next `Instance` starts at 3 again.
  static void Release();

  Prime();
  Prime(const Prime&) = delete;
  Prime& operator=(const Prime&) = delete;

  /// The next prime, as the double that keys of cut sets are multiplied from. Never ends: behind
  /// the table of the first 10,000 primes each further one is searched for.
  double Next();

  /// The index in the ascending list of primes (2 at index 0) of what `Next` hands out next.
  std::int32_t GetIndex() const { return next; }

  /// Lets `Next` go on from `index`, which is at least 0, forwards or backwards. The search for
  /// designs sets it back, so that each candidate numbers its events alike.
  void SetIndex(std::int32_t index);

 private:
  void AppendPrime();

  std::vector<double> primes;
  std::int32_t next = 0;
};

}  // namespace FTS
