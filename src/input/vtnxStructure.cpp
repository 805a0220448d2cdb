// The architecture of a model document: perspectives, subsystems, components with their ports and
// implementations, and lines. The component and the implementation being read are those of
// `Parser`, since failure logic is read in their context; nested ones give them back.

#include <optional>
#include <utility>

#include "app/DiagnosticLog.h"
#include "input/ModelParts.h"
#include "input/XmlElements.h"
#include "input/vtnxParser.h"
#include "model/CCF.h"
#include "model/Component.h"
#include "model/Implementation.h"
#include "model/Line.h"
#include "model/Model.h"
#include "model/Perspective.h"
#include "model/Port.h"
#include "model/Subsystem.h"

namespace FTS {
namespace {

bool ReadsFailureData(HBlockType type) {
  return type == HBlockType::NOT_REFINED || type == HBlockType::BOTH;
}

bool ReadsSystem(HBlockType type) {
  return type == HBlockType::REFINED || type == HBlockType::BOTH;
}

LineOperator DefaultOperatorOf(std::string_view word) {
  if (word == "AND") return LineOperator::AND;
  if (word == "OUTPUT") return LineOperator::OUTPUT;
  return LineOperator::OR;
}

}  // namespace

void vtnxParser::ReadPerspective(XmlElement element) {
  const bool named = static_cast<bool>(element.FirstChild("Name"));
  const std::string name = named ? ElementText(element, "Name") : DefaultPerspectiveName;
  perspective = AddPerspective(name, ElementFlag(element, "AutoGen"), *model);
  perspective->riskTime = ElementDouble(element, "RiskTime");
  perspective->description = ElementText(element, "Description");
  ReadPerspectiveContents(element);
}

void vtnxParser::ReadDefaultPerspective(XmlElement root) {
  perspective = AddPerspective(DefaultPerspectiveName, true, *model);
  ReadPerspectiveContents(root);
}

void vtnxParser::ReadPerspectiveContents(XmlElement element) {
  ForEachItem(element.FirstChild("ActualCCFs"), "ActualCCF",
              [this](XmlElement item) { ReadActualCCF(item); });
  const XmlElement system = element.FirstChild("System");
  if (system) ReadSystem(system, AddRootSubsystem(perspective));
}

void vtnxParser::ReadActualCCF(XmlElement element) {
  const auto ccf =
      std::make_shared<CCF>(ElementText(element, "Name"), model.get(), perspective, true);
  ccf->description = ElementText(element, "Description");
  ReadUnavailabilityFormula(element.FirstChild("UnavailabilityFormula"), *ccf);
  AddActualCCF(ccf, *perspective);
}

void vtnxParser::ReadSystem(XmlElement element, const std::shared_ptr<Subsystem>& subsystem) {
  ForEachItem(element.FirstChild("Components"), "Component",
              [&](XmlElement item) { ReadComponent(item, subsystem); });
  ForEachItem(element.FirstChild("Lines"), "Line",
              [&](XmlElement item) { ReadLine(item, subsystem); });
}

void vtnxParser::ReadComponent(XmlElement element, const std::shared_ptr<Subsystem>& subsystem) {
  const Restore outerComponent(component);
  const Restore outerImplementation(implementation);
  component = std::make_shared<Component>(ElementText(element, "Name"), subsystem, model.get());
  ReadComponentFields(element, *subsystem);
  subsystem->AddComponent(component);
  model->AddComponent(component);
  ForEachItem(element.FirstChild("Ports"), "Port", [this](XmlElement item) {
    component->AddPort(std::make_shared<Port>(ElementText(item, "Name"), component, model.get()));
  });
  ReadAllocations(element.FirstChild("Allocations"));
  const XmlElement implementations = element.FirstChild("Implementations");
  if (const XmlElement current = implementations.FirstChild("Current")) {
    ReadImplementation(current, true);
  }
  ForEachItem(implementations.FirstChild("Alternatives"), "Alternative",
              [this](XmlElement item) { ReadImplementation(item, false); });
}

void vtnxParser::ReadComponentFields(XmlElement element, const Subsystem& subsystem) {
  component->description = ElementText(element, "Description");
  component->sid = ElementText(element, "SID");
  if (element.FirstChild("RiskTime")) {
    SetRiskTime(*component, ElementDouble(element, "RiskTime"), subsystem);
  }
  component->maxReplicants = element.FirstChild("MaxReplicants")
                                 ? ElementInteger(element, "MaxReplicants")
                                 : model->defaultMaxReplicants;
  component->includeInOptimisation = ElementFlag(element, "IncludeInOptimisation");
}

void vtnxParser::ReadAllocations(XmlElement element) {
  if (element.FirstChild("Current")) {
    component->currentAllocation = ElementText(element, "Current");
    component->allocations.push_back(component->currentAllocation);
  }
  ForEachItem(element.FirstChild("Alternatives"), "Alternative",
              [this](XmlElement item) { component->allocations.push_back(Trimmed(item.Text())); });
}

void vtnxParser::ReadImplementation(XmlElement element, bool isCurrent) {
  implementation =
      std::make_shared<Implementation>(ElementText(element, "Name"), component, model.get());
  component->AddImplementation(implementation);
  // Before its contents are read: the components inside ask this one for its risk time and inside.
  if (isCurrent) component->currentImplementation = implementation;
  implementation->description = ElementText(element, "Description");
  implementation->cost = ElementDouble(element, "Cost");
  implementation->weight = ElementDouble(element, "Weight");
  implementation->includeInOptimisation = !ElementFlag(element, "ExcludeFromOptimisation");
  ReadBlockType(element.FirstChild("HBlockType"));
  if (ReadsFailureData(implementation->hBlockType)) {
    ReadFailureData(element.FirstChild("FailureData"));
  }
  const XmlElement system = element.FirstChild("System");
  if (!system || !ReadsSystem(implementation->hBlockType)) return;
  ReadSystem(system, AddInside(implementation));
}

void vtnxParser::ReadBlockType(XmlElement element) {
  const std::string word = Trimmed(element.Text());
  if (word.empty()) return;
  // Documents have a spelling of their own beside that of all formats.
  const std::optional<HBlockType> type =
      word == "NotRefined" ? HBlockType::NOT_REFINED : FindBlockType(word);
  if (!type) {
    DiagnosticLog::Instance().AddError("Unrecognised block type: " + word +
                                       LineNumberNote(element));
    return;
  }
  SetBlockType(*implementation, *component, *type);
}

void vtnxParser::ReadLine(XmlElement element, const std::shared_ptr<Subsystem>& subsystem) {
  const auto line = std::make_shared<Line>(ElementText(element, "Name"), subsystem, model.get());
  line->description = ElementText(element, "Description");
  line->directed = ElementText(element, "Type") == "Directed";
  line->defaultOperator = DefaultOperatorOf(ElementText(element, "Default"));
  ForEachItem(element.FirstChild("Connections"), "Connection",
              [&](XmlElement item) { ReadConnection(item, *line); });
  subsystem->AddLine(line);
}

void vtnxParser::ReadConnection(XmlElement element, Line& line) {
  // From the element's own line to the text of the expression, which stands third in it.
  constexpr std::int32_t RowsToExpression = 3;
  const std::string port = ElementText(element, "Port");
  const std::string failureClass = ElementText(element, "FailureClass");
  AddFailureClass(failureClass);
  const std::string failureName = failureClass.empty() ? port : failureClass + "-" + port;
  BuildLineExpression(ElementText(element, "PortExpression"), failureName, line,
                      element.Row() + RowsToExpression, failureClass);
}

}  // namespace FTS
