#pragma once

#include <memory>

#include "optimisation/Encoding.h"

namespace FTS {

/// A design that is nothing but a number, for tests of what the search does with designs. Crossover
/// adds the numbers up.
class FakeEncoding : public IPrintable, public Encoding {
 public:
  explicit FakeEncoding(int initDesign, bool initValid = true)
      : design(initDesign), valid(initValid) {}

  Model* GetModel() const override { return nullptr; }
  std::int32_t GetType() const override { return 0; }
  std::int32_t GetSize() const override { return 1; }
  bool Mutate(double) override { return false; }
  std::unique_ptr<Encoding> Crossover(const Encoding& other) const override {
    return std::make_unique<FakeEncoding>(design + dynamic_cast<const FakeEncoding&>(other).design);
  }
  std::unique_ptr<Encoding> Clone() const override {
    return std::make_unique<FakeEncoding>(design, valid);
  }
  void Apply(Model&) const override {}
  bool Equals(const Encoding& other) const override {
    return design == dynamic_cast<const FakeEncoding&>(other).design;
  }
  bool IsValid() const override { return valid; }
  const IPrintable& GetPrintable() const override { return *this; }
  XmlOutputElement ToXML(XmlOutputElement parent) const override { return parent.Add("Fake"); }
  double GetProduct() const override { return 0.5; }
  double GetSum1() const override { return 10.0 * design; }
  double GetSum2() const override { return 100.0 * design; }
  void Print(std::ostream& stream, int) const override { stream << design; }

  int design;
  bool valid;
};

}  // namespace FTS
