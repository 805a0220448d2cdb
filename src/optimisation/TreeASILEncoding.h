#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "faulttree/Forward.h"
#include "model/SafetyAllocation.h"
#include "optimisation/Encoding.h"
#include "platform/XmlDocument.h"

namespace FTS {

/// The integrity levels of one component's events, and below it those of the components inside its
/// current implementation.
class TreeASILEncodingNode : public IPrintable {
 public:
  using Pointer = std::unique_ptr<TreeASILEncodingNode>;

  /// Levels from the allocation, -1 for an event that it leaves out, or without one at random.
  TreeASILEncodingNode(const Model& model, const Component& component,
                       const SafetyAllocation* allocation);
  explicit TreeASILEncodingNode(std::string initComponentName);
  /// Takes the levels, from here down, of a saved search. Throws `VtnException` naming what is
  /// missing or does not fit this node.
  void ReadLevels(XmlElement element);

  void Print(std::ostream& stream, int indent) const override;
  std::int32_t GetSize() const;
  bool Mutate(double rate, int depth);
  Pointer Crossover(const TreeASILEncodingNode& other) const;
  Pointer Clone() const;
  bool Equals(const TreeASILEncodingNode& other) const;
  void Apply() const;
  void ToXML(XmlOutputElement parent) const;

  std::string componentName;  ///< Full name.
  std::map<double, std::int32_t> levels;
  std::map<double, std::shared_ptr<BasicEvent>> events;  ///< The model's own objects.
  std::vector<Pointer> subNodes;                         ///< By name.
};

/// An allocation of integrity levels along the hierarchy of components. It belongs to a model that
/// has been synthesised. Common causes stand with no component, and so are never given a level.
class TreeASILEncoding : public IPrintable, public Encoding {
 public:
  /// With the levels of an allocation, or at random when it is null.
  TreeASILEncoding(Model& initModel, const SafetyAllocation* allocation);
  /// From the element "TreeASILEncoding" of a saved search. Throws `VtnException` when it does not
  /// fit the model.
  TreeASILEncoding(Model& initModel, XmlElement element);
  ~TreeASILEncoding() override;

  Model* GetModel() const override { return model; }
  std::int32_t GetType() const override { return type; }
  /// Counts components, not events.
  std::int32_t GetSize() const override;
  bool Mutate(double rate) override;
  /// Null when the other is of another form.
  std::unique_ptr<Encoding> Crossover(const Encoding& other) const override;
  std::unique_ptr<Encoding> Clone() const override;
  void Apply(Model& target) const override;
  bool Equals(const Encoding& other) const override;
  bool IsValid() const override { return true; }
  const IPrintable& GetPrintable() const override { return *this; }
  XmlOutputElement ToXML(XmlOutputElement parent) const override;
  double GetProduct() const override { return 0.0; }
  double GetSum1() const override { return 0.0; }
  double GetSum2() const override { return 0.0; }

  void Print(std::ostream& stream, int indent) const override;

 private:
  explicit TreeASILEncoding(Model& initModel);

  std::int32_t type;
  std::vector<TreeASILEncodingNode::Pointer> nodes;
  Model* model;
};

}  // namespace FTS
