// Failure models: the unavailability and frequency that an event's parameters give for the risk
// time, and the diagnostic coverage of events.
// The models assume that all parameters are stored; one that is missing enters the formulas as
// -1.0. Coverage assumes nothing about the graph, changes `coverage` of events only, and meets each
// node once per safety mechanism, children in their order: an event hears of each mechanism once. A
// mechanism is a deviation, however many proxies in the component's expressions name it.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <unordered_map>
#include <unordered_set>

#include "app/DiagnosticLog.h"
#include "faulttree/BasicEvent.h"
#include "faulttree/DeviationProxies.h"
#include "faulttree/FaultTreeGate.h"
#include "faulttree/ProxyNode.h"
#include "model/Component.h"
#include "model/Hazard.h"
#include "model/Implementation.h"
#include "model/Model.h"
#include "model/NumberText.h"

namespace FTS {

namespace {

// From here on a factorial is a multiple of 2^32, which leaves 0 in 32 bits.
constexpr std::int64_t ZeroFactorial = 34;

std::int32_t ToInteger(double value) {
  using Limits = std::numeric_limits<std::int32_t>;
  if (std::isnan(value)) return 0;
  const double lowest = Limits::min();
  const double highest = Limits::max();
  return static_cast<std::int32_t>(std::clamp(value, lowest, highest));
}

/// The rate that belongs to a mean time; a time that is missing or 0 gives the rate 0.
double RateOf(double time) { return time > 0.0 ? 1.0 / time : 0.0; }

// Whole numbers have 32 bits and wrap around: beyond 12 factors the coefficients of the models
// below are no longer those of the books, and established results depend on that.

std::uint32_t WrappingFactorial(std::int64_t n) {
  if (n >= ZeroFactorial) return 0;
  std::uint32_t product = 1;
  for (std::int64_t factor = 2; factor <= n; ++factor) {
    product *= static_cast<std::uint32_t>(factor);
  }
  return product;
}

std::int64_t AsSigned(std::uint32_t value) { return static_cast<std::int32_t>(value); }

double BinomialCoefficient(std::int64_t n, std::int64_t i) {
  const std::int64_t denominator = AsSigned(WrappingFactorial(n - i) * WrappingFactorial(i));
  if (denominator == 0) return 0.0;
  const std::int64_t coefficient = AsSigned(WrappingFactorial(n)) / denominator;
  return static_cast<double>(coefficient);
}

/// The probability that at least m of n like items are down, each with probability q.
double BinomialUnavailability(double q, std::int32_t n, std::int32_t m) {
  const std::int64_t last = n;
  if (last >= ZeroFactorial) return 0.0;  // Every coefficient is 0.
  double sum = 0.0;
  for (auto i = std::max<std::int64_t>(m, last - ZeroFactorial + 1); i <= last; ++i) {
    sum += BinomialCoefficient(last, i) * std::pow(q, static_cast<double>(i)) *
           std::pow(1.0 - q, static_cast<double>(last - i));
  }
  return sum;
}

/// The probability of more than s events in a Poisson process that expects x of them.
double PoissonUnavailability(double x, std::int32_t s) {
  const std::int64_t last = std::min<std::int64_t>(s, ZeroFactorial - 1);
  double sum = 0.0;
  for (std::int64_t k = 0; k <= last; ++k) {
    sum += std::exp(-x) * std::pow(x, static_cast<double>(k)) /
           static_cast<double>(AsSigned(WrappingFactorial(k)));
  }
  return 1.0 - sum;
}

double DormantUnavailability(double lambda, double repairTime, double inspectionTime) {
  const double x = inspectionTime * lambda;
  const double e = std::exp(-x);
  const double a = repairTime * lambda * (1.0 - e);
  const double denominator = a + x;
  return denominator == 0.0 ? 0.0 : (x - (1.0 - e) + a) / denominator;
}

/// W. Weibull: A Statistical Distribution Function of Wide Applicability, Journal of Applied
/// Mechanics 18 (1951).
double Weibull(double time, double scale, double slope) {
  return 1.0 - std::exp(-std::pow(time / scale, slope));
}

/// Early failures, useful life and wear-out; the phases add up without a cap.
double VariableUnavailability(const BasicEvent& event, double t) {
  const double first = event.GetParameter("Interval1");
  const double second = event.GetParameter("Interval2");
  const auto early = [&](double time) {
    return Weibull(time, event.GetParameter("Scale1"), event.GetParameter("Slope1"));
  };
  const auto useful = [&](double time) {
    return Weibull(time, event.GetParameter("Scale2"), 1.0);  // The shape of a constant rate.
  };
  if (t <= first) return early(t);
  if (t <= first + second) return early(first) + useful(t - first);
  return early(first) + useful(second) +
         Weibull(t - first - second, event.GetParameter("Scale3"), event.GetParameter("Slope3"));
}

/// The implementation that holds the event. A reader computes the figures before it stores the
/// event, in the implementation that it has added last.
const Implementation* HolderOf(const BasicEvent& event, const Component& component) {
  for (const auto& implementation : component.implementations) {
    const auto found = implementation->basicEvents.find(event.name);
    if (found != implementation->basicEvents.end() && found->second.get() == &event) {
      return implementation.get();
    }
  }
  return component.implementations.empty() ? nullptr : component.implementations.back().get();
}

/// The event's share of the failure rate of its component: a rate, and no probability.
double ShareOfFailureRate(const BasicEvent& event) {
  const std::shared_ptr<Component> component = event.owner.lock();
  if (!component) {
    DiagnosticLog::Instance().AddWarning("Cannot calculate a failure distribution for event: " +
                                         event.name + " as it has no parent component");
    return 0.0;
  }
  const Implementation* holder = HolderOf(event, *component);
  return holder ? event.GetParameter("Percentage") / 100.0 * holder->failureRate : 0.0;
}

}  // namespace

double BasicEvent::ResolveRiskTime() const {
  if (const std::shared_ptr<Component> component = owner.lock()) return component->GetRiskTime();
  const double own = GetParameter("RiskTime");
  if (own != 0.0) return own;  // Also the -1.0 of an event without the parameter.
  return model ? model->riskTime : 0.0;
}

double BasicEvent::RepairableUnavailability(double lambda, double mu, double t) {
  unavailability = 0.0;
  if (lambda == 0.0) return unavailability;
  // Not expm1: it would find a figure where this rounds to 0, and the warning would never come.
  unavailability = (1.0 - std::exp(-(lambda + mu) * t)) * (lambda / (lambda + mu));
  if (unavailability == 0.0) {
    const std::string who =
        type == NodeType::ACCF ? "CCF: " + name : "Basic event: " + GetFullName();
    DiagnosticLog::Instance().AddWarning(
        who + " has a non-zero failure rate but zero unavailability; possible rounding error.");
  }
  return unavailability;
}

void BasicEvent::ComputeRepairable(double lambda, double mu) {
  frequency = (1.0 - RepairableUnavailability(lambda, mu, ResolveRiskTime())) * lambda;
}

void BasicEvent::ComputeFailureData() {
  const double lambda = GetParameter("FailureRate");
  switch (failureModel) {
    case FailureModel::CONSTANT:
      return ComputeRepairable(lambda, GetParameter("RepairRate"));
    case FailureModel::MTTR:
      return ComputeRepairable(lambda, RateOf(GetParameter("MTTR")));
    case FailureModel::MTTF:
      return ComputeRepairable(RateOf(GetParameter("MTTF")), GetParameter("RepairRate"));
    case FailureModel::MTTFMTTR:
      return ComputeRepairable(RateOf(GetParameter("MTTF")), RateOf(GetParameter("MTTR")));
    case FailureModel::FIXED:
      unavailability = GetParameter("Unavailability");
      frequency = 0.0;
      return;
    case FailureModel::BINOMIAL:
      unavailability = BinomialUnavailability(
          RepairableUnavailability(lambda, GetParameter("RepairRate"), ResolveRiskTime()),
          ToInteger(GetParameter("n")), ToInteger(GetParameter("m")));
      break;
    case FailureModel::POISSON: {
      const std::int32_t n = ToInteger(GetParameter("n"));
      unavailability =
          PoissonUnavailability(n * lambda * ResolveRiskTime(), ToInteger(GetParameter("s")));
      break;
    }
    case FailureModel::DORMANT:
      unavailability =
          DormantUnavailability(lambda, GetParameter("MTTR"), GetParameter("InspectionTime"));
      break;
    case FailureModel::VARIABLE:
      unavailability = VariableUnavailability(*this, ResolveRiskTime());
      frequency = 0.0;
      return;
    case FailureModel::DISTRIBUTION:
      unavailability = ShareOfFailureRate(*this);
      return;
    case FailureModel::TIME:
    case FailureModel::SEQUENTIAL:
    case FailureModel::NONE:
      unavailability = 0.0;
      return;
  }
  frequency = (1.0 - unavailability) * lambda;
}

// Diagnostic coverage.

class CoverageWalk {
 public:
  using Mechanism = std::shared_ptr<InputDeviationProxy>;

  explicit CoverageWalk(const Hazard& initHazard) : hazard(initHazard.name) {}

  void Visit(FaultTreeNode& node, const Mechanism& mechanism) {
    const InputDeviation* const record = mechanism ? mechanism->deviation.get() : nullptr;
    if (met[record].insert(&node).second) node.TakeCoverage(*this, mechanism);
  }

  void VisitChildren(FaultTreeNode& node, const Mechanism& mechanism) {
    for (int i = 0; i < node.GetChildCount(); ++i) Visit(*node.GetChild(i), mechanism);
  }

  const std::string& GetHazard() const { return hazard; }

 private:
  const std::string hazard;
  // The nodes met, by mechanism. Looked up only, never walked.
  std::unordered_map<const InputDeviation*, std::unordered_set<const FaultTreeNode*>> met;
};

void FaultTreeNode::ApplyDiagnosticCoverage(const Hazard& hazard,
                                            const std::shared_ptr<InputDeviationProxy>& mechanism) {
  CoverageWalk(hazard).Visit(*this, mechanism);
}

void FaultTreeGate::TakeCoverage(CoverageWalk& walk,
                                 const std::shared_ptr<InputDeviationProxy>& mechanism) {
  walk.VisitChildren(*this, mechanism);
}

void ProxyNode::TakeCoverage(CoverageWalk& walk,
                             const std::shared_ptr<InputDeviationProxy>& mechanism) {
  walk.VisitChildren(*this, mechanism);
}

void InputDeviationProxy::TakeCoverage(CoverageWalk& walk,
                                       const std::shared_ptr<InputDeviationProxy>& mechanism) {
  const bool covers = HasCoverage(walk.GetHazard());
  walk.VisitChildren(*this, covers
                                ? std::static_pointer_cast<InputDeviationProxy>(shared_from_this())
                                : mechanism);
}

void BasicEvent::TakeCoverage(CoverageWalk& walk,
                              const std::shared_ptr<InputDeviationProxy>& mechanism) {
  if (!mechanism) return;
  const std::string& hazard = walk.GetHazard();
  std::weak_ptr<InputDeviationProxy>& entry = coverage[hazard];
  const std::shared_ptr<InputDeviationProxy> present = entry.lock();
  if (!present) {
    entry = mechanism;
    return;
  }
  // Hazards of one name walk to the event one after the other.
  if (present->deviation == mechanism->deviation) return;
  const double presentCoverage = present->GetCoverage(hazard);
  DiagnosticLog::Instance().AddWarning(
      "Basic event " + GetFullName() + " already has diagnostic coverage " +
      FormatDouble(presentCoverage) + " from " + present->name +
      " but is receiving more coverage from " + mechanism->name + " - using highest value.");
  if (presentCoverage < mechanism->GetCoverage(hazard)) entry = mechanism;
}

}  // namespace FTS
