#pragma once

#include <memory>
#include <string>
#include <vector>

#include "faulttree/Forward.h"
#include "optimisation/Encoding.h"
#include "platform/XmlDocument.h"

namespace FTS {

/// The integrity level of one event.
class FixedASILEncodingNode : public IPrintable {
 public:
  /// A random level, told on standard output.
  explicit FixedASILEncodingNode(const BasicEvent& event);
  FixedASILEncodingNode(std::string initName, double initPrime, std::int32_t initLevel);

  /// What stands behind the last colon of the event's text, "None" without one.
  std::string GetName() const;
  void Print(std::ostream& stream, int indent) const override;
  void ToXML(XmlOutputElement parent) const;

  std::string name;  ///< The event's text: its owner's full name, a colon and its own name.
  double prime;      ///< Its key among the model's events.
  std::int32_t level;
};

/// An allocation of integrity levels as a flat list: one level for each event of the model's trees.
/// It belongs to a model that has been synthesised.
class FixedASILEncoding : public IPrintable, public Encoding {
 public:
  /// With random levels, or without any.
  FixedASILEncoding(Model& initModel, bool buildNodes);
  /// From the element "FixedASILEncoding" of a saved search, with the events in any order. Throws
  /// `VtnException` when it does not fit the model.
  FixedASILEncoding(Model& initModel, XmlElement element);
  ~FixedASILEncoding() override;

  Model* GetModel() const override { return model; }
  std::int32_t GetType() const override { return type; }
  std::int32_t GetSize() const override { return static_cast<std::int32_t>(nodes.size()); }
  /// Tells each level on standard output, changed or not, so that a run can be followed.
  bool Mutate(double rate) override;
  /// Null when the other is of another form.
  std::unique_ptr<Encoding> Crossover(const Encoding& other) const override;
  std::unique_ptr<Encoding> Clone() const override;
  /// Events that another model than the own one lacks are passed over.
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
  std::int32_t type;
  std::vector<std::unique_ptr<FixedASILEncodingNode>> nodes;
  Model* model;
};

/// A level from 0 to 4.
std::int32_t RandomLevel();

/// The level in an element of a saved search. Throws `VtnException` for what is none; -1 stands for
/// an event without a level.
std::int32_t ReadLevel(XmlElement element, const BasicEvent& event);

/// The text by which encodings name an event.
std::string EventText(const BasicEvent& event);

/// A prime as text, with all its digits.
std::string PrimeText(double prime);

}  // namespace FTS
