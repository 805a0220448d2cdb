#pragma once

#include <memory>
#include <string>

#include "faulttree/DeviationProxies.h"
#include "model/Component.h"
#include "model/Deviation.h"
#include "model/Implementation.h"
#include "model/Model.h"
#include "model/Perspective.h"
#include "model/Port.h"
#include "model/Subsystem.h"

namespace FTS {

/// A model of one perspective, "Main", to which tests of single nodes add the parts they need.
struct PartsModel {
  explicit PartsModel(double riskTime = 100.0)
      : model(0, "parts.xml", "parts", "", 1.0F, riskTime),
        perspective(std::make_shared<Perspective>("Main", &model)),
        root(std::make_shared<Subsystem>(&model)) {
    perspective->rootSubsystem = root;
    root->perspective = perspective;
    model.AddPerspective(perspective);
  }

  /// At the top level, with one current implementation.
  std::shared_ptr<Component> AddComponent(const std::string& name) {
    auto component = std::make_shared<Component>(name, root, &model);
    root->AddComponent(component);
    model.AddComponent(component);
    AddImplementation(component, "only");
    component->SelectImplementation(0);
    return component;
  }

  std::shared_ptr<Implementation> AddImplementation(const std::shared_ptr<Component>& component,
                                                    const std::string& name) {
    auto implementation = std::make_shared<Implementation>(name, component, &model);
    component->AddImplementation(implementation);
    return implementation;
  }

  std::shared_ptr<Port> AddPort(const std::shared_ptr<Component>& component,
                                const std::string& name) {
    auto port = std::make_shared<Port>(name, component, &model);
    component->AddPort(port);
    return port;
  }

  /// A proxy of the deviation; all proxies of one deviation share its record.
  std::shared_ptr<InputDeviationProxy> Input(const std::shared_ptr<Component>& component,
                                             const std::string& failureClass,
                                             const std::string& port) {
    Implementation& implementation = *component->implementations.back();
    auto& record = implementation.inputDeviationRecords[failureClass + "-" + port];
    if (!record) record = std::make_shared<InputDeviation>(component, failureClass, port);
    return std::make_shared<InputDeviationProxy>(record, &model, -1);
  }

  Model model;
  std::shared_ptr<Perspective> perspective;
  std::shared_ptr<Subsystem> root;
};

}  // namespace FTS
