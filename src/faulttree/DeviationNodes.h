#pragma once

#include <memory>
#include <string>

#include "faulttree/BasicEvent.h"

namespace FTS {

/// Ends the name of an event for a deviation that nothing connects.
inline constexpr const char* UnconnectedSuffix = " (UNCONNECTED)";

// The events that stand in a tree for a deviation that nothing connects, when hanging nodes are
// kept. Whoever makes one ends its name in `UnconnectedSuffix`, so that a reader of the cut sets
// sees the system boundary, and gives it its prime when it enters a tree.

class InputDeviationNode : public BasicEvent {
 public:
  InputDeviationNode(std::string initName, Model* initModel,
                     const std::shared_ptr<InputDeviation>& initDeviation, int initId = NewId);

  void Accept(Visitor& visitor) override;
  std::string GetTypeName() const override { return "InputDeviationNode"; }

  std::weak_ptr<InputDeviation> deviation;

 protected:
  std::shared_ptr<BasicEvent> MakeSame(Model* target, int newId) override;
};

class OutputDeviationNode : public BasicEvent {
 public:
  OutputDeviationNode(std::string initName, Model* initModel, int initId = NewId);

  void Accept(Visitor& visitor) override;
  std::string GetTypeName() const override { return "OutputDeviationNode"; }

 protected:
  std::shared_ptr<BasicEvent> MakeSame(Model* target, int newId) override;
};

class ExportedDeviationNode : public BasicEvent {
 public:
  ExportedDeviationNode(std::string initName, Model* initModel, int initId = NewId);

  void Accept(Visitor& visitor) override;
  std::string GetTypeName() const override { return "ExportedDeviationNode"; }

 protected:
  std::shared_ptr<BasicEvent> MakeSame(Model* target, int newId) override;
};

}  // namespace FTS
