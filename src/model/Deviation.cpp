#include "model/Deviation.h"

#include <utility>

#include "faulttree/DeviationNodes.h"
#include "model/Component.h"
#include "model/NumberText.h"
#include "model/Port.h"
#include "model/PrintLine.h"
#include "model/VtnException.h"

namespace FTS {

namespace {

/// The class and what divides it from a port.
std::string Prefix(const std::string& failureClass) {
  return failureClass.empty() ? std::string() : failureClass + "-";
}

FaultTreeNode::Pointer CloneExpression(const IFailureCause& source,
                                       const std::shared_ptr<Component>& newOwner, CloneMode mode) {
  if (!source.expression) return nullptr;
  return source.expression->Clone(newOwner->GetModel(), mode, true, newOwner);
}

/// The gate that `IFailureCause::AddCause` makes bears its deviation's name, and a copy of it the
/// copy's.
void RenameTop(const IFailureCause& source, const IFailureCause& copy) {
  if (copy.expression && copy.expression->name == source.GetCauseName()) {
    copy.expression->name = copy.GetCauseName();
  }
}

void PrintExpression(const IFailureCause& source, std::ostream& stream, int indent) {
  PrintLine(stream, indent, "EXPRESSION: ");
  if (source.expression) source.expression->Print(stream, indent + NestedIndent);
}

}  // namespace

Deviation::Deviation(const std::shared_ptr<Component>& initOwner, std::string initFailureClass)
    : owner(initOwner), failureClass(std::move(initFailureClass)) {}

Deviation::Deviation(const Deviation& source, const std::shared_ptr<Component>& initOwner)
    : owner(initOwner),
      description(source.description),
      failureClass(source.failureClass),
      byMessage(source.byMessage),
      exported(source.exported),
      subject(source.subject) {
  const std::shared_ptr<Port> model = source.GetPort();
  if (model) port = initOwner->FindPort(model->GetLocalName());
}

Deviation::~Deviation() = default;

void Deviation::FindSubject(const std::string& text, bool output) {
  const std::shared_ptr<Component> component = GetOwner();
  if (const auto named = component->FindPort(text)) {
    port = named;
    return;
  }
  subject = text.substr(text.rfind('.') + 1);  // All of it without a point.
  const auto linked =
      output ? component->FindOutputPort(subject) : component->FindInputPort(subject);
  if (!linked) {
    throw VtnException("Could not find port in component: " + component->GetFullNameText() +
                       " with failure subject: " + text);
  }
  port = linked;
  byMessage = true;
}

std::string Deviation::GetFullName() const {
  if (exported) {
    const std::shared_ptr<Component> component = GetOwner();
    return Prefix(failureClass) + (component ? component->GetFullNameText() : "") + "." + subject;
  }
  const std::shared_ptr<Port> place = GetPort();
  const std::string name = Prefix(failureClass) + (place ? place->GetFullNameText() : "");
  return subject.empty() ? name : name + ":" + subject;
}

std::string Deviation::GetLocalName() const {
  if (exported) return failureClass + "-" + subject;
  const std::shared_ptr<Port> place = GetPort();
  const std::string name = Prefix(failureClass) + (place ? place->GetLocalName() : "");
  return subject.empty() ? name : name + ":" + subject;
}

void Deviation::Print(std::ostream& stream, int indent) const {
  const std::string fullName = GetFullName();
  PrintLine(stream, indent, "DEVIATION: " + fullName);
  PrintLine(stream, indent, "DESCRIPTION: " + description);
  PrintDetails(stream, indent);
  PrintLine(stream, indent, "END OF DEVIATION (" + fullName + ")");
}

void Deviation::PrintDetails(std::ostream& /*stream*/, int /*indent*/) const {}

InputDeviation::InputDeviation(const std::shared_ptr<Component>& initOwner,
                               std::string initFailureClass, const std::string& initSubject)
    : Deviation(initOwner, std::move(initFailureClass)) {
  FindSubject(initSubject, false);
}

InputDeviation::InputDeviation(const InputDeviation& source,
                               const std::shared_ptr<Component>& initOwner)
    : Deviation(source, initOwner), coverage(source.coverage) {}

std::shared_ptr<InputDeviation> InputDeviation::Copy(
    const std::shared_ptr<Component>& newOwner) const {
  return std::make_shared<InputDeviation>(*this, newOwner);
}

std::shared_ptr<InputDeviationNode> InputDeviation::GetEventNode() {
  if (!eventNode) {
    // Without owner: the event happens outside the component, and must not exclude its events.
    const std::shared_ptr<Component> component = GetOwner();
    eventNode = std::make_shared<InputDeviationNode>(GetFullName() + UnconnectedSuffix,
                                                     component ? component->GetModel() : nullptr,
                                                     shared_from_this());
  }
  return eventNode;
}

OutputDeviation::OutputDeviation(const std::shared_ptr<Component>& initOwner,
                                 std::string initFailureClass, const std::string& initSubject)
    : Deviation(initOwner, std::move(initFailureClass)), IFailureCause(OfOutputDeviation) {
  FindSubject(initSubject, true);
}

OutputDeviation::OutputDeviation(const OutputDeviation& source,
                                 const std::shared_ptr<Component>& initOwner)
    : Deviation(source, initOwner),
      IFailureCause(OfOutputDeviation),
      severity(source.severity),
      resolved(source.resolved),
      systemOutput(source.systemOutput) {}

std::shared_ptr<OutputDeviation> OutputDeviation::Copy(
    const std::shared_ptr<Component>& newOwner) const {
  std::shared_ptr<OutputDeviation> copy = CopyWithin(newOwner, CloneMode::NewNodes);
  if (expression) ClearClones(*expression);
  return copy;
}

std::shared_ptr<OutputDeviation> OutputDeviation::CopyWithin(
    const std::shared_ptr<Component>& newOwner, CloneMode mode) const {
  auto copy = std::make_shared<OutputDeviation>(*this, newOwner);
  copy->expression = CloneExpression(*this, newOwner, mode);
  RenameTop(*this, *copy);
  return copy;
}

void OutputDeviation::PrintDetails(std::ostream& stream, int indent) const {
  PrintLine(stream, indent, "SEVERITY: " + FormatDouble(severity));
  PrintLine(stream, indent, std::string("SYSTEM OUTPORT: ") + (systemOutput ? "Yes" : "No"));
  PrintExpression(*this, stream, indent);
}

ExportedDeviation::ExportedDeviation(const std::shared_ptr<Component>& initOwner,
                                     std::string initFailureClass, std::string initSubject)
    : Deviation(initOwner, std::move(initFailureClass)), IFailureCause(OfExportedDeviation) {
  subject = std::move(initSubject);
  exported = true;
}

std::shared_ptr<ExportedDeviation> ExportedDeviation::CopyWithin(
    const std::shared_ptr<Component>& newOwner, CloneMode mode) const {
  auto copy = std::make_shared<ExportedDeviation>(newOwner, failureClass, subject);
  copy->description = description;
  copy->expression = CloneExpression(*this, newOwner, mode);
  RenameTop(*this, *copy);
  return copy;
}

void ExportedDeviation::PrintDetails(std::ostream& stream, int indent) const {
  PrintExpression(*this, stream, indent);
}

}  // namespace FTS
