// ProbLog nodes: failure logic as the body of a rule, and the events of an implementation as
// probabilistic facts.
// Works on templates, which hold no more than one component or one line says, and changes nothing.
// A node is written once for each of its parents, since a body is a tree of text. Gates get no
// brackets and so bind as the operators of the reader do; an AND over an OR in brackets is told
// apart from one without by the model alone.

#include <cassert>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "faulttree/BasicEvent.h"
#include "faulttree/CircleNode.h"
#include "faulttree/DeviationNodes.h"
#include "faulttree/DeviationProxies.h"
#include "faulttree/Gates.h"
#include "faulttree/GotoNode.h"
#include "faulttree/Marks.h"
#include "faulttree/Resolution.h"
#include "model/CCF.h"
#include "model/Component.h"
#include "model/Deviation.h"
#include "model/DeviationName.h"
#include "model/HierarchicalName.h"
#include "model/Model.h"
#include "model/NumberText.h"
#include "model/Port.h"
#include "output/ProblogRule.h"
#include "output/VisitorProblog.h"

namespace FTS {

namespace {

/// A failure model as readers of these files know it. Both models with one rate and one time are
/// "mttf": which of the two figures is the rate tells them apart.
struct Formula {
  FailureModel model;
  const char* word;
  std::vector<std::string_view> parameters;
};

constexpr std::string_view FixedSlope = "";  // Stands for the fixed shape of the second phase.

const Formula& FormulaOf(FailureModel model) {
  static const std::vector<Formula> formulas = {
      {FailureModel::CONSTANT, "constant", {"FailureRate", "RepairRate"}},
      {FailureModel::MTTR, "mttf", {"FailureRate", "MTTR"}},
      {FailureModel::MTTF, "mttf", {"MTTF", "RepairRate"}},
      {FailureModel::MTTFMTTR, "mttfmttr", {"MTTF", "MTTR"}},
      {FailureModel::FIXED, "fixed", {"Unavailability"}},
      {FailureModel::TIME, "time", {}},
      {FailureModel::BINOMIAL, "binomial", {"FailureRate", "RepairRate", "n", "m"}},
      {FailureModel::POISSON, "poisson", {"FailureRate", "n", "s"}},
      {FailureModel::DORMANT, "dormant", {"FailureRate", "MTTR", "InspectionTime"}},
      {FailureModel::SEQUENTIAL, "sequential", {}},
      {FailureModel::VARIABLE,
       "variable",
       {"Scale1", "Scale2", "Scale3", "Slope1", FixedSlope, "Slope3", "Interval1", "Interval2"}},
      {FailureModel::DISTRIBUTION, "distribution", {"Percentage"}},
  };
  static const Formula none = {FailureModel::NONE, "none", {}};
  for (const Formula& formula : formulas) {
    if (formula.model == model) return formula;
  }
  return none;
}

std::string OwnerAtom(const BasicEvent& event) {
  const std::shared_ptr<Component> owner = event.owner.lock();
  return owner ? Sanitise(owner->GetFullNameText()) : "null";
}

std::string OwnedTerm(const char* word, const BasicEvent& event) {
  return std::string(word) + "(" + OwnerAtom(event) + ", " + Sanitise(event.name) + ")";
}

std::string DeviationTerm(const std::string& failureClass, const std::string& place) {
  return "deviation(" + Sanitise(failureClass) + ", " + Sanitise(place) + ")";
}

/// A deviation by its name, class and port in one; a port that the model knows has its full name.
std::string NamedTerm(const std::string& name, const std::shared_ptr<Port>& port) {
  return DeviationTerm(FailureClassOf(name), port ? port->GetFullNameText() : PortOf(name));
}

/// The name of an unconnected deviation's event less the mark of that.
std::string WithoutSuffix(std::string name) {
  const std::string suffix = UnconnectedSuffix;
  if (name.ends_with(suffix)) name.resize(name.size() - suffix.size());
  return name;
}

bool Knows(const Model& model, const std::string& place) {
  const std::string perspective = HierarchicalName(place).Perspective();
  return perspective.empty() ? !model.perspectives.empty()
                             : model.perspectives.contains(perspective);
}

std::shared_ptr<Port> FindPortNamed(const Model* model, const std::string& name) {
  const std::string place = PortOf(name);
  return model && Knows(*model, place) ? model->FindPort(place) : nullptr;
}

/// What the component's host exports under that name; null when nothing is found. Unlike synthesis
/// this walk meets logic that no top event needs, and what is wrong there is no reason to stop.
std::shared_ptr<ExportedDeviation> FindExport(const ExportedDeviationProxy& proxy) {
  const std::shared_ptr<Component> owner = proxy.owner.lock();
  if (!proxy.model || !owner || owner->currentAllocation.empty()) return nullptr;
  if (!Knows(*proxy.model, owner->currentAllocation)) return nullptr;
  const auto host = proxy.model->FindComponent(owner->currentAllocation);
  return host ? FindExportedDeviation(*host, proxy.name) : nullptr;
}

std::string TargetTerm(const GotoNode& node) {
  const auto target = node.model ? FindNamedTarget(*node.model, node.name) : nullptr;
  if (const auto exported = std::dynamic_pointer_cast<ExportedDeviation>(target)) {
    return ExportedTerm(*exported);
  }
  const std::shared_ptr<Port> port = target ? target->GetPort() : nullptr;
  if (port) return DeviationTerm(target->failureClass, port->GetFullNameText());
  return NamedTerm(node.name, node.FindNamedPort());
}

bool IsDeviationProxy(const FaultTreeNode& node) {
  if (!node.IsProxy()) return false;
  return node.type == NodeType::InputDeviation || node.type == NodeType::OutputDeviation ||
         node.type == NodeType::ExternalDeviation;
}

}  // namespace

// Gates

void VisitorProblog::Put(std::string_view text) {
  if (insideRule) {
    body += text;
  } else {
    out << text;
  }
}

std::string VisitorProblog::BodyOf(FaultTreeNode* node) {
  const Rule rule(*this);
  if (node) node->Accept(*this);
  return body.empty() ? "null" : std::move(body);
}

bool VisitorProblog::WriteBehind(std::string_view sign, FaultTreeNode& node) {
  assert(insideRule && "Gates are met as logic of a rule only.");
  const std::size_t before = body.size();
  body += sign;
  const std::size_t start = body.size();
  node.Accept(*this);
  if (body.size() > start) return true;
  body.resize(before);
  return false;
}

// Parts are put together in place: logic may be nested many thousand times.
void VisitorProblog::WriteJoined(FaultTreeNode& gate, std::string_view separator) {
  const OnPathMark mark(gate);
  if (!mark.Entered()) return;
  bool any = false;
  for (int i = 0; i < gate.GetChildCount(); ++i) {
    any |= WriteBehind(any ? separator : "", *gate.GetChild(i));
  }
}

void VisitorProblog::Visit(AndGate& gate) {
  Enter(gate);
  WriteJoined(gate, " & ");
  Leave(gate);
}

void VisitorProblog::Visit(OrGate& gate) {
  Enter(gate);
  WriteJoined(gate, " | ");
  Leave(gate);
}

void VisitorProblog::Visit(NotGate& gate) {
  Enter(gate);
  if (gate.GetChildCount() > 0) WriteBehind("!", *gate.GetChild(0));
  Leave(gate);
}

void VisitorProblog::Visit(GotoNode& node) {
  Enter(node);
  if (node.GetChildCount() > 0) {
    WalkChildren(node);
  } else {
    WriteInRule(TargetTerm(node) + " ");
  }
  Leave(node);
}

void VisitorProblog::WalkChildren(FaultTreeNode& node) {
  if (!IsDeviationProxy(node)) Visitor::WalkChildren(node);
}

// Deviations

void VisitorProblog::WriteInRule(const std::string& term) {
  if (insideRule) Put(term);
}

// A deviation that is found by a message has the message in its name; rules are about its port.
void VisitorProblog::Enter(InputDeviationProxy& proxy) {
  const auto port = proxy.deviation ? proxy.deviation->GetPort() : proxy.FindNamedPort();
  WriteInRule(NamedTerm(proxy.name, port));
}

void VisitorProblog::Enter(OutputDeviationProxy& proxy) {
  WriteInRule(NamedTerm(proxy.name, proxy.FindNamedPort()));
}

void VisitorProblog::Enter(ExportedDeviationProxy& proxy) {
  const auto exported = FindExport(proxy);
  WriteInRule(exported ? ExportedTerm(*exported)
                       : ExportedTerm(FailureClassOf(proxy.name), PortOf(proxy.name)));
}

// Events

void VisitorProblog::WriteEvent(const BasicEvent& event, const std::string& term) {
  if (insideRule) {
    Put(term);
  } else {
    out << event.GetUnavailability() << "::" << term << ".\n\n";
  }
}

void VisitorProblog::WriteFormula(const BasicEvent& event) {
  const Formula& formula = FormulaOf(event.failureModel);
  out << "unavailabilityFormula(" << OwnerAtom(event) << ", " << Sanitise(event.name) << ", "
      << formula.word;
  for (const std::string_view parameter : formula.parameters) {
    out << ", " << (parameter == FixedSlope ? 1.0 : event.GetParameter(std::string(parameter)));
  }
  out << ").\n";
}

void VisitorProblog::Enter(BasicEvent& event) {
  const std::string term = OwnedTerm("basicEvent", event);
  if (insideRule) {
    Put(term);
    return;
  }
  out << event.GetUnavailability() << "::" << term << ".\n";
  WriteFormula(event);
  out << "\n";
}

void VisitorProblog::Enter(CCF& event) { WriteEvent(event, OwnedTerm("ccf", event)); }

void VisitorProblog::Enter(CircleNode& event) {
  WriteEvent(event, "circleEvent(" + Sanitise(event.name) + ")");
}

// The word for "nobody" stands behind the name here, unlike in front of it elsewhere: readers of
// these files match it there.
void VisitorProblog::Enter(NormalEvent& event) {
  WriteEvent(event, event.owner.expired() ? "normalEvent(" + Sanitise(event.name) + ", null)"
                                          : OwnedTerm("normalEvent", event));
}

void VisitorProblog::Enter(InputDeviationNode& event) {
  const std::string name = WithoutSuffix(event.name);
  const auto deviation = event.deviation.lock();
  const auto port = deviation ? deviation->GetPort() : FindPortNamed(event.model, name);
  WriteEvent(event, NamedTerm(name, port));
}

void VisitorProblog::Enter(OutputDeviationNode& event) {
  const std::string name = WithoutSuffix(event.name);
  WriteEvent(event, NamedTerm(name, FindPortNamed(event.model, name)));
}

void VisitorProblog::Enter(ExportedDeviationNode& event) {
  const std::string name = WithoutSuffix(event.name);
  WriteEvent(event, ExportedTerm(FailureClassOf(name), PortOf(name)));
}

}  // namespace FTS
