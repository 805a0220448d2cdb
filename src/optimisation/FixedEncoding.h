#pragma once

#include <memory>
#include <string>
#include <vector>

#include "optimisation/Encoding.h"
#include "platform/XmlDocument.h"

namespace FTS {

class FixedEncoding;

/// The genes of one component: at once its choice of implementation and its degree of redundancy.
/// Each gene above 0 is a replica in the implementation of that 1-based number, a gene of 0 is an
/// unused slot. There is one gene more than the component may have further replicas. Genes are kept
/// in ascending order with the zeros last, so that equal designs have equal genes.
class FixedEncodingNode : public IPrintable {
 public:
  /// Random genes, at least one of them used; none at all with `skipGenes`. The component is looked
  /// up by full name. Throws `VtnException` when there is none or it has no implementation.
  FixedEncodingNode(FixedEncoding& initEncoding, std::string initComponentName, bool skipGenes);
  /// A copy for another encoding.
  FixedEncodingNode(FixedEncoding& initEncoding, const FixedEncodingNode& source);
  /// From a saved search, for that component. Throws `VtnException` naming what is missing or does
  /// not fit the model. A gene above the number of implementations is told on standard output and
  /// kept.
  FixedEncodingNode(FixedEncoding& initEncoding, const std::string& expectedName,
                    XmlElement element);

  void Print(std::ostream& stream, int indent) const override;
  bool Mutate(double rate);
  std::unique_ptr<FixedEncodingNode> Crossover(FixedEncoding& child,
                                               const FixedEncodingNode& other) const;
  bool Equals(const FixedEncodingNode& other) const;
  bool IsValid() const;
  void Apply(Model& target) const;
  void ToXML(XmlOutputElement parent) const;
  /// By the tables of the redundancy benchmark.
  double GetNodeReliability() const;
  double GetNodeCost() const;
  double GetNodeWeight() const;

  std::string componentName;
  std::vector<std::int32_t> genes;

 private:
  std::int32_t RandomGene() const;
  void SortGenes();

  FixedEncoding* encoding;
  std::int32_t implementationCount = 0;
};

/// A design as a flat table: the genes of every component that the search may change, in the order
/// of the model's list.
class FixedEncoding : public IPrintable, public Encoding {
 public:
  /// With random nodes, or without any.
  FixedEncoding(Model& initModel, bool buildNodes);
  /// From the element "FixedEncoding" of a saved search. Throws `VtnException` when it does not fit
  /// the model.
  FixedEncoding(Model& initModel, XmlElement element);
  ~FixedEncoding() override;

  Model* GetModel() const override { return model; }
  std::int32_t GetType() const override { return type; }
  std::int32_t GetSize() const override;
  bool Mutate(double rate) override;
  std::unique_ptr<Encoding> Crossover(const Encoding& other) const override;
  std::unique_ptr<Encoding> Clone() const override;
  /// Builds the replicas into the target, which has to be a clone of the model: the old
  /// implementations of its components are no longer current then.
  void Apply(Model& target) const override;
  bool Equals(const Encoding& other) const override;
  /// Every component needs a replica.
  bool IsValid() const override;
  const IPrintable& GetPrintable() const override { return *this; }
  XmlOutputElement ToXML(XmlOutputElement parent) const override;
  double GetProduct() const override;
  double GetSum1() const override;
  double GetSum2() const override;
  std::string DescribeInvalid() const override;

  void Print(std::ostream& stream, int indent) const override;

 private:
  std::int32_t type;
  std::vector<std::unique_ptr<FixedEncodingNode>> nodes;
  Model* model;
};

}  // namespace FTS
