#include "output/VisitorProblog.h"

#include <algorithm>
#include <memory>

#include "faulttree/FaultTreeNode.h"
#include "model/Component.h"
#include "model/Deviation.h"
#include "model/Hazard.h"
#include "model/Line.h"
#include "model/Model.h"
#include "model/NumberText.h"
#include "model/Perspective.h"
#include "model/Port.h"
#include "model/Subsystem.h"
#include "output/ProblogRule.h"

namespace FTS {

namespace {

constexpr const char* BlankLine = "\n";

/// "name(a, b).", one line.
template <typename... Rest>
std::string Fact(std::string_view name, const std::string& first, const Rest&... rest) {
  std::string text(name);
  text.append("(").append(first);
  (text.append(", ").append(rest), ...);
  return text.append(").\n");
}

/// Descriptions go out as they stand, so that they read like the model.
std::string Quoted(const std::string& description) { return "\"" + description + "\""; }

/// What the parts of a subsystem are parts of: the component around it, else the perspective.
std::string AtomAround(const std::shared_ptr<Subsystem>& subsystem) {
  if (!subsystem) return "";
  if (const auto component = subsystem->GetOwnerComponent()) {
    return Sanitise(component->GetFullNameText());
  }
  const auto perspective = subsystem->perspective.lock();
  return perspective ? Sanitise(perspective->name) : "";
}

std::string AtomOf(const std::shared_ptr<Port>& port) {
  return port ? Sanitise(port->GetFullNameText()) : "";
}

std::string Arguments(const Deviation& deviation) {
  return Sanitise(deviation.failureClass) + ", " + AtomOf(deviation.GetPort());
}

/// A model's name may hold anything, but the file stays in its folder.
std::string FileNameFor(std::string atom) {
  std::replace_if(
      atom.begin(), atom.end(), [](char c) { return c == '/' || c == '\\'; }, '_');
  return atom + ".txt";
}

}  // namespace

std::string Sanitise(std::string_view text) {
  constexpr std::string_view Replaced = "\t\n\r -.:";
  std::string atom(text);
  for (char& c : atom) {
    if (Replaced.find(c) != std::string_view::npos) c = '_';
  }
  if (!atom.empty() && atom[0] >= 'A' && atom[0] <= 'Z')
    atom[0] = static_cast<char>(atom[0] + ('a' - 'A'));
  return atom;
}

std::string ExportedTerm(const ExportedDeviation& deviation) {
  const std::string fullName = deviation.GetFullName();
  const std::string& failureClass = deviation.failureClass;
  const std::string place =
      failureClass.empty() ? fullName : fullName.substr(failureClass.size() + 1);
  return ExportedTerm(failureClass, place);
}

std::string ExportedTerm(const std::string& failureClass, const std::string& place) {
  const std::string known = failureClass.empty() ? "none" : Sanitise(failureClass);
  return "exportedPropagation(" + known + ", " + Sanitise(place) + ")";
}

void VisitorProblog::Enter(Model& model) {
  modelAtom = Sanitise(model.name);
  out.Open(FileNameFor(modelAtom));
  out << "% Vel-Tarn output\n" << Fact("model", modelAtom);
  if (!model.description.empty()) {
    out << "desc(" << modelAtom << "," << Quoted(model.description) << ").\n";
  }
  out << Fact("riskTime", modelAtom, FormatDouble(model.riskTime)) << BlankLine;
}

void VisitorProblog::Enter(Perspective& perspective) {
  const std::string atom = Sanitise(perspective.name);
  out << Fact("perspective", atom) << Fact("partOf", atom, modelAtom);
  if (!perspective.description.empty()) out << Fact("desc", atom, Quoted(perspective.description));
  out << BlankLine;
}

void VisitorProblog::Enter(Component& component) {
  const std::string atom = Sanitise(component.GetFullNameText());
  out << "% Component: " << component.GetFullNameText() << "\n"
      << Fact("component", atom) << Fact("partOf", atom, AtomAround(component.GetOwnerSubsystem()));
  if (!component.description.empty()) out << Fact("desc", atom, Quoted(component.description));
  if (component.riskTime > 0.0) out << Fact("riskTime", atom, FormatDouble(component.riskTime));
  if (!component.currentAllocation.empty()) {
    out << Fact("allocatedTo", atom, Sanitise(component.currentAllocation));
  }
  out << BlankLine;
}

void VisitorProblog::Leave(Component& component) {
  out << "% End of component: " << component.GetFullNameText() << "\n\n\n";
}

void VisitorProblog::Enter(Port& port) {
  const std::string atom = Sanitise(port.GetFullNameText());
  const auto owner = port.GetOwner();
  out << Fact("port", atom) << Fact("partOf", atom, owner ? Sanitise(owner->GetFullNameText()) : "")
      << BlankLine;
}

void VisitorProblog::Enter(Line& line) {
  if (line.name.empty()) return;
  const std::string atom = Sanitise(line.name);
  out << Fact("line", atom) << Fact("partOf", atom, AtomAround(line.GetOwner()));
  if (!line.description.empty()) out << Fact("desc", atom, Quoted(line.description));
  out << BlankLine;
}

void VisitorProblog::Enter(InputDeviation& deviation) {
  const std::shared_ptr<Port> port = deviation.GetPort();
  // The template: what synthesis has made of it stands for everything upstream.
  const auto logic = port ? port->GetExternalTemplate(deviation.failureClass) : nullptr;
  out << "deviation(" << Arguments(deviation) << ") :- " << BodyOf(logic.get()) << ".\n"
      << BlankLine;
}

// Causes are walked between `Enter` and `Leave` of what they cause.

void VisitorProblog::Enter(Hazard& hazard) { head = "hazard(" + Sanitise(hazard.name) + ")"; }

void VisitorProblog::Enter(ExportedDeviation& deviation) { head = ExportedTerm(deviation); }

void VisitorProblog::Enter(OutputDeviation& deviation) {
  head = "deviation(" + Arguments(deviation) + ")";
}

void VisitorProblog::Leave(Hazard& hazard) {
  out << Fact("severity", Sanitise(hazard.name), FormatDouble(hazard.severity)) << BlankLine;
}

// Besides the rules of its causes, with their probabilities, a deviation has one of all its logic.
void VisitorProblog::Leave(OutputDeviation& deviation) {
  const std::string arguments = Arguments(deviation);
  out << "1.0::deviation(" << arguments << ") :- " << BodyOf(deviation.expression.get()) << ".\n"
      << Fact("severity", arguments, FormatDouble(deviation.severity)) << BlankLine;
}

void VisitorProblog::Enter(Cause& cause) {
  if (!insideRule) Put(FormatDouble(cause.probability) + "::");
  Put(head + " :- ");
}

void VisitorProblog::Visit(Cause& cause) {
  Enter(cause);
  Put(BodyOf(cause.expression.get()) + ".\n");
  Put(BlankLine);
  Leave(cause);
}

}  // namespace FTS
