#include "input/ModelParts.h"

#include <algorithm>
#include <limits>

#include "app/Config.h"
#include "app/DiagnosticLog.h"
#include "faulttree/BasicEvent.h"
#include "faulttree/CommonCauseNodes.h"
#include "model/CCF.h"
#include "model/Component.h"
#include "model/Implementation.h"
#include "model/Model.h"
#include "model/NumberText.h"
#include "model/Perspective.h"
#include "model/Subsystem.h"

namespace FTS {
namespace {

/// The most ports that a component may have to pass failures on.
constexpr std::size_t MaxPropagatorPorts = 2;

struct BlockTypeWord {
  std::string_view word;
  HBlockType type;
};

constexpr BlockTypeWord BlockTypeWords[] = {
    {"Not Refined", HBlockType::NOT_REFINED},
    {"Refined", HBlockType::REFINED},
    {"Both", HBlockType::BOTH},
    {"Propagator", HBlockType::PROPAGATOR},
};

/// The time of the component around a subsystem, else the model's.
double ParentRiskTime(const Subsystem& subsystem) {
  const std::shared_ptr<Component> parent = subsystem.GetOwnerComponent();
  return parent ? parent->GetRiskTime() : subsystem.GetModel()->riskTime;
}

}  // namespace

float ToFloat(double value) {
  constexpr double Largest = std::numeric_limits<float>::max();
  return static_cast<float>(std::clamp(value, -Largest, Largest));
}

std::shared_ptr<Perspective> AddPerspective(const std::string& name, bool generated, Model& model) {
  auto perspective = std::make_shared<Perspective>(name, &model);
  perspective->defaultGenerated =
      generated || name == DefaultPerspectiveName || name == "Default" || name == model.name;
  model.AddPerspective(perspective);
  return perspective;
}

std::shared_ptr<Subsystem> AddRootSubsystem(const std::shared_ptr<Perspective>& perspective) {
  perspective->rootSubsystem = std::make_shared<Subsystem>(perspective->model);
  perspective->rootSubsystem->perspective = perspective;
  return perspective->rootSubsystem;
}

std::shared_ptr<Subsystem> AddInside(const std::shared_ptr<Implementation>& implementation) {
  implementation->subsystem = std::make_shared<Subsystem>(implementation->model);
  implementation->subsystem->owner = implementation;
  return implementation->subsystem;
}

void AddActualCCF(const std::shared_ptr<CCF>& ccf, Perspective& perspective) {
  ccf->SetParameter("RiskTime", perspective.model->riskTime);
  FinishEvent(*ccf);
  perspective.AddCCF(ccf);
}

void SetRiskTime(Component& component, double riskTime, const Subsystem& subsystem) {
  component.riskTime = riskTime;
  if (riskTime <= ParentRiskTime(subsystem)) return;
  DiagnosticLog::Instance().AddWarning("Component " + component.GetLocalName() +
                                       " has a local risk time greater than its parent (or the "
                                       "model) - this value will be ignored.");
  component.riskTime = 0.0;
}

std::optional<HBlockType> FindBlockType(std::string_view word) {
  for (const BlockTypeWord& row : BlockTypeWords) {
    if (row.word == word) return row.type;
  }
  return std::nullopt;
}

void SetBlockType(Implementation& implementation, const Component& component, HBlockType type) {
  implementation.hBlockType = type;
  if (type != HBlockType::PROPAGATOR || component.ports.size() <= MaxPropagatorPorts) return;
  implementation.hBlockType = HBlockType::NOT_REFINED;
  DiagnosticLog::Instance().AddWarning(
      "Implementation \"" + implementation.name +
      "\" of Component: " + component.GetFullNameText() + " is a Propagator blocktype with " +
      std::to_string(component.ports.size()) +
      " ports; Propagator block type can NOT have more than 2 ports; This component will NOT "
      "propagate as expected and be treated as UNREFINED; please enter output deviations for this "
      "block instead");
}

std::shared_ptr<BasicEvent> AddBasicEvent(const std::string& name, bool normal,
                                          const std::shared_ptr<Component>& component,
                                          Implementation& implementation) {
  if (implementation.basicEvents.contains(name)) return nullptr;
  Model* const model = implementation.model;
  std::shared_ptr<BasicEvent> event;
  if (normal) {
    event = std::make_shared<NormalEvent>(name, model, true);
  } else {
    event = std::make_shared<BasicEvent>(name, model, true);
  }
  event->owner = component;
  implementation.AddBasicEvent(event);
  return event;
}

void FinishEvent(BasicEvent& event) {
  if (Config::Instance().quantitativeAnalysis) event.ComputeFailureData();
}

void DistributionTotal::Add(const BasicEvent& event) {
  if (event.failureModel != FailureModel::DISTRIBUTION) return;
  any = true;
  total += event.GetParameter("Percentage");
}

void DistributionTotal::Check(const Component& component) const {
  constexpr double Whole = 100.0;
  if (!any || total == Whole) return;
  DiagnosticLog::Instance().AddWarning(
      "Total failure distribution for component: " + component.GetFullNameText() + " is " +
      FormatDouble(total) + "% (should be 100%)");
}

void AddPotentialCCF(const std::string& name, const std::string& description,
                     const std::shared_ptr<CCF>& ccf, const std::shared_ptr<Component>& component,
                     Implementation& implementation) {
  const auto proxy = std::make_shared<PCCFProxy>(name, implementation.model);
  proxy->owner = component;
  proxy->node->owner = component;
  proxy->description = description;
  if (ccf) proxy->Activate(ccf);
  implementation.AddPCCF(proxy);
}

WrittenName SplitDeviationName(const std::string& name, std::int32_t line) {
  const std::size_t hyphen = name.find('-');
  if (hyphen != std::string::npos) return {true, name.substr(0, hyphen), name.substr(hyphen + 1)};
  DiagnosticLog::Instance().AddError(
      "Output Deviation " + name + " has no failure class. [line number: " + std::to_string(line) +
      "]");
  return {false, "", name};
}

}  // namespace FTS
