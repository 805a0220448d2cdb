#pragma once

#include <string>

namespace FTS {

/// What is identified by a prime number, or by a product of primes: events by a prime of their
/// own, cut sets by the product of their members' primes.
class IPrime {
 public:
  double prime = 0.0;

  virtual ~IPrime() = default;

  /// The kind of object, such as "BASIC EVENT" or "CUTSET".
  virtual std::string GetPrimeType() const = 0;
};

}  // namespace FTS
