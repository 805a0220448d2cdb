#pragma once

#include <memory>
#include <string>

#include "faulttree/BasicEvent.h"

namespace FTS {

// The events that stand in a tree for a deviation that nothing connects, when hanging nodes are
// kept. Their names end in " (UNCONNECTED)", so that a reader of the cut sets sees the system
// boundary.

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
