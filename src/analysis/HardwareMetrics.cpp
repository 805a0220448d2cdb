// Hardware architectural metrics (ISO 26262-5:2018, annex C): how much of the failure rate of the
// components behind a safety goal neither leads to its violation alone nor stays latent.

#include "analysis/HardwareMetrics.h"

#include <map>
#include <memory>
#include <set>

#include "analysis/CutSetList.h"
#include "analysis/FaultTree.h"
#include "faulttree/BasicEvent.h"
#include "faulttree/DeviationProxies.h"
#include "model/Component.h"
#include "model/Hazard.h"
#include "model/Implementation.h"
#include "model/Model.h"

namespace FTS {
namespace {

constexpr double Percent = 100.0;
constexpr int Alone = 1;
constexpr int WithOneOther = 2;

/// The components of the events of the tree's index, each once, in the order of the index.
std::vector<std::shared_ptr<Component>> ComponentsOf(const FaultTree& tree, const Model& model) {
  std::vector<std::shared_ptr<Component>> components;
  std::set<const Component*> met;
  for (const auto& [eventPrime, lists] : tree.primeIndex->lists) {
    const auto found = model.basicEvents.find(eventPrime);
    if (found == model.basicEvents.end()) continue;  // A complement, which is no failure.
    auto component = found->second->owner.lock();
    if (component && met.insert(component.get()).second) components.push_back(std::move(component));
  }
  return components;
}

bool HasCutSets(const FaultTree& tree, const BasicEvent& event, int size) {
  const CutSetList* const list = tree.primeIndex->Find(event.prime, size);
  return list && list->GetCount() > 0;
}

/// The event's percentage as the metrics take it: a failure model other than the share of a failure
/// rate has none, and one that is not given is 0, unlike in the event's own figures.
double PercentageOf(const BasicEvent& event, const std::string& parameter) {
  if (event.failureModel != FailureModel::DISTRIBUTION) return 0.0;
  const auto found = event.parameters.find(parameter);
  return found == event.parameters.end() ? 0.0 : found->second;
}

void FindCoverage(const FaultTree& tree, FailureModeMetrics& mode) {
  const std::shared_ptr<Hazard> hazard = tree.source.lock();
  if (!hazard) return;  // Only hazards have safety mechanisms.
  const auto found = mode.event->coverage.find(hazard->name);
  if (found == mode.event->coverage.end()) return;
  const std::shared_ptr<InputDeviationProxy> mechanism = found->second.lock();
  if (!mechanism) return;
  mode.mechanism = mechanism->name;
  mode.coverage = mechanism->GetCoverage(hazard->name) / Percent;
}

FailureModeMetrics MetricsOf(const std::shared_ptr<BasicEvent>& event, double failureRate,
                             const FaultTree& tree) {
  FailureModeMetrics mode;
  mode.event = event;
  const double percentage = PercentageOf(*event, "Percentage");
  mode.share = percentage / Percent;
  mode.single = HasCutSets(tree, *event, Alone);
  mode.dual = HasCutSets(tree, *event, WithOneOther);
  FindCoverage(tree, mode);
  if (mode.single) mode.residualRate = failureRate * percentage / Percent * (1.0 - mode.coverage);
  if (mode.dual) {
    mode.latentCoverage = PercentageOf(*event, "DiagnosticCoverage") / Percent;
    mode.latentRate =
        (percentage * failureRate / Percent - mode.residualRate) * (1.0 - mode.latentCoverage);
  }
  return mode;
}

}  // namespace

std::vector<ComponentMetrics> CollectHardwareMetrics(const FaultTree& tree, const Model& model) {
  std::vector<ComponentMetrics> all;
  for (const auto& component : ComponentsOf(tree, model)) {
    const Implementation& implementation = component->GetCurrentImplementation();
    ComponentMetrics metrics{component, implementation.failureRate, {}};
    for (const auto& [eventName, event] : implementation.basicEvents) {
      // Trees and FMEA know the event that was entered under the prime, coverage included.
      const auto entered = model.basicEvents.find(event->prime);
      const auto& known = entered == model.basicEvents.end() ? event : entered->second;
      metrics.modes.push_back(MetricsOf(known, metrics.failureRate, tree));
    }
    all.push_back(std::move(metrics));
  }
  return all;
}

double FaultTree::ComputeTotalFailureRate(const Model& model) {
  totalFailureRate = 0.0;
  for (const auto& component : ComponentsOf(*this, model)) {
    totalFailureRate += component->GetCurrentImplementation().failureRate;
  }
  return totalFailureRate;
}

void FaultTree::ComputeHardwareMetrics(const Model& model) {
  double residual = 0.0;
  double latent = 0.0;
  for (const ComponentMetrics& metrics : CollectHardwareMetrics(*this, model)) {
    for (const FailureModeMetrics& mode : metrics.modes) {
      residual += mode.residualRate;
      latent += mode.latentRate;
    }
  }
  // Without any failure rate both become NaN or an infinity: there is nothing to be a share of.
  const double total = ComputeTotalFailureRate(model);
  singlePointMetric = 1.0 - residual / total;
  latentFaultMetric = 1.0 - latent / (total - residual);
}

}  // namespace FTS
