#pragma once

#include <memory>
#include <string>
#include <vector>

#include "optimisation/Encoding.h"
#include "platform/XmlDocument.h"

namespace FTS {

class TreeEncoding;

/// The choice of one component's implementation, and of the host that it is allocated to. Below it
/// stand the choices of the components inside that implementation: another implementation has
/// others.
class TreeEncodingNode : public IPrintable {
 public:
  using Pointer = std::unique_ptr<TreeEncodingNode>;

  /// A random choice, and all the choices inside it.
  TreeEncodingNode(TreeEncoding& initEncoding, std::shared_ptr<Component> initComponent);
  /// That choice, without what is inside it.
  TreeEncodingNode(TreeEncoding& initEncoding, std::shared_ptr<Component> initComponent, int index);
  /// A deep copy for another encoding.
  TreeEncodingNode(TreeEncoding& initEncoding, const TreeEncodingNode& source);
  /// From a saved search, for that component. Throws `VtnException` naming what is missing or does
  /// not fit the model.
  TreeEncodingNode(TreeEncoding& initEncoding, std::shared_ptr<Component> initComponent,
                   XmlElement element);

  void Print(std::ostream& stream, int indent) const override;
  /// The number of choices from here down.
  std::int32_t GetSize() const;
  /// `depth` is that of the node below the top, which has 0.
  bool Mutate(double rate, int depth);
  Pointer Crossover(TreeEncoding& child, const TreeEncodingNode& other) const;
  bool Equals(const TreeEncodingNode& other) const;
  /// Makes the choices in a model, from here down.
  void Apply(Model& target) const;
  void ToXML(XmlOutputElement parent) const;
  /// By the tables of the redundancy benchmark.
  double GetNodeReliability() const;
  double GetNodeCost() const;
  double GetNodeWeight() const;

  std::string componentName;  ///< Full name.
  std::int32_t implementationIndex = 0;
  std::shared_ptr<Implementation> implementation;  ///< Of the encoding's own model.
  std::string allocation;                          ///< Empty when the component has none.
  std::vector<Pointer> subNodes;  ///< By name, one per component inside that is to be optimised.

 private:
  std::shared_ptr<Component> GetComponent() const;
  int RandomImplementation() const;
  void ChooseAllocation();
  void BuildSubNodes();
  void ReadAllocation(XmlElement element);
  /// Draws another implementation, and then everything inside it anew. False when it is the same.
  bool MutateImplementation();

  TreeEncoding* encoding;
};

/// A design along the hierarchy of components: it reaches every level of it, and chooses among
/// implementations and allocations, without redundancy. Nodes are built from the components of the
/// chosen implementations, never by name from a model that may stand on another choice.
class TreeEncoding : public IPrintable, public Encoding {
 public:
  /// With random nodes, or without any.
  TreeEncoding(Model& initModel, bool buildNodes);
  /// From the element "TreeEncoding" of a saved search. Throws `VtnException` when it does not fit
  /// the model.
  TreeEncoding(Model& initModel, XmlElement element);
  ~TreeEncoding() override;

  Model* GetModel() const override { return model; }
  std::int32_t GetType() const override { return type; }
  std::int32_t GetSize() const override;
  bool Mutate(double rate) override;
  std::unique_ptr<Encoding> Crossover(const Encoding& other) const override;
  std::unique_ptr<Encoding> Clone() const override;
  /// Drops what an earlier analysis left in the target, and makes the choices in it.
  void Apply(Model& target) const override;
  bool Equals(const Encoding& other) const override;
  bool IsValid() const override { return true; }
  const IPrintable& GetPrintable() const override { return *this; }
  XmlOutputElement ToXML(XmlOutputElement parent) const override;
  double GetProduct() const override;
  double GetSum1() const override;
  double GetSum2() const override;

  void Print(std::ostream& stream, int indent) const override;

 private:
  std::int32_t type;
  std::vector<TreeEncodingNode::Pointer> nodes;
  Model* model;
};

}  // namespace FTS
