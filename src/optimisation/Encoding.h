#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "model/Forward.h"
#include "model/IPrintable.h"
#include "platform/XmlOutput.h"

namespace FTS {

/// The genotype of an individual: the choices that the search makes in a model.
class Encoding {
 public:
  Encoding() = default;
  Encoding(const Encoding&) = delete;
  Encoding& operator=(const Encoding&) = delete;
  virtual ~Encoding() = default;

  /// The model that this encoding belongs to, not owned.
  virtual Model* GetModel() const = 0;
  /// One of `EncodingType`. The two tree forms share the code 0.
  virtual std::int32_t GetType() const = 0;
  /// The number of genes; the search mutates one of them on average.
  virtual std::int32_t GetSize() const = 0;
  /// Changes each gene with the probability `rate`. True when the design is another one by that.
  virtual bool Mutate(double rate) = 0;
  /// One child of two encodings of the same form over the same model.
  virtual std::unique_ptr<Encoding> Crossover(const Encoding& other) const = 0;
  virtual std::unique_ptr<Encoding> Clone() const = 0;
  /// Puts this design into the model, which may be a clone of the one it belongs to. Throws
  /// `VtnException` when the model lacks a component that the design names.
  virtual void Apply(Model& target) const = 0;
  virtual bool Equals(const Encoding& other) const = 0;
  /// Whether the design can be built at all.
  virtual bool IsValid() const = 0;
  virtual const IPrintable& GetPrintable() const = 0;
  /// Appends the element of a saved search to `parent` and returns it.
  virtual XmlOutputElement ToXML(XmlOutputElement parent) const = 0;

  // Figures of the design by the tables of the redundancy benchmark: reliability, cost, weight.
  virtual double GetProduct() const = 0;
  virtual double GetSum1() const = 0;
  virtual double GetSum2() const = 0;

  /// What is wrong with a design that is not valid, for messages; empty when there is nothing to
  /// tell.
  virtual std::string DescribeInvalid() const { return ""; }
};

}  // namespace FTS
