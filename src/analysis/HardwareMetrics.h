#pragma once

#include <memory>
#include <string>
#include <vector>

#include "analysis/Forward.h"
#include "faulttree/Forward.h"
#include "model/Forward.h"

namespace FTS {

/// What one failure mode of a component does to one safety goal. Shares and coverages are fractions
/// of 1, rates are per unit of time of the component's failure rate.
struct FailureModeMetrics {
  std::shared_ptr<BasicEvent> event;
  double share = 0.0;     ///< Of the component's failure rate; 0 unless the event has a share.
  bool single = false;    ///< Violates the goal alone.
  bool dual = false;      ///< Violates it together with one other failure mode.
  std::string mechanism;  ///< What covers it for the goal; empty for nothing.
  double coverage = 0.0;
  double latentCoverage = 0.0;
  double residualRate = 0.0;  ///< What violates the goal and is not covered; 0 unless `single`.
  double latentRate = 0.0;    ///< What stays undetected as one of two; 0 unless `dual`.
};

/// A component that plays a part in a tree, with all failure modes of its current implementation.
struct ComponentMetrics {
  std::shared_ptr<Component> component;
  double failureRate = 0.0;
  std::vector<FailureModeMetrics> modes;  ///< By name.
};

/// The components of the events of the tree's cut sets, each once, in the order of their first
/// event's prime. Events that belong to no component are left out: nobody knows their rate.
std::vector<ComponentMetrics> CollectHardwareMetrics(const FaultTree& tree, const Model& model);

}  // namespace FTS
