// Deviations in a model document, and the forms in which their logic is written: a list of causes,
// one expression, or expressions by state in braces. Hazards share the list of causes.

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/DiagnosticLog.h"
#include "faulttree/FaultTreeNode.h"
#include "input/ExpressionReader.h"
#include "input/ModelParts.h"
#include "input/XmlElements.h"
#include "input/vtnxParser.h"
#include "model/Component.h"
#include "model/Deviation.h"
#include "model/Implementation.h"
#include "model/Model.h"

namespace FTS {
namespace {

struct StateExpression {
  std::string state;
  std::string expression;
};

std::vector<std::string_view> SplitAt(char separator, std::string_view text) {
  std::vector<std::string_view> parts;
  while (true) {
    const std::size_t end = text.find(separator);
    parts.push_back(text.substr(0, end));
    if (end == std::string_view::npos) return parts;
    text.remove_prefix(end + 1);
  }
}

/// Reads "{state:expression,...}". A piece is cut at all its colons, so a colon within an
/// expression ends it: files in use rely on what follows being ignored.
std::vector<StateExpression> SplitStates(std::string_view text) {
  text.remove_prefix(1);
  text = text.substr(0, text.find('}'));
  std::vector<StateExpression> states;
  for (const std::string_view piece : SplitAt(',', text)) {
    const std::vector<std::string_view> parts = SplitAt(':', piece);
    if (parts.size() >= 2) states.push_back({Trimmed(parts[0]), Trimmed(parts[1])});
  }
  return states;
}

WrittenName SplitName(XmlElement element) {
  return SplitDeviationName(ElementText(element, "Name"), element.Row() + 1);
}

void Store(const std::shared_ptr<OutputDeviation>& deviation, const std::string& state,
           Implementation& implementation) {
  implementation.AddOutputDeviation(deviation, state);
}

void Store(const std::shared_ptr<ExportedDeviation>& deviation, const std::string& state,
           Implementation& implementation) {
  implementation.AddExportedDeviation(deviation, state);
}

/// A deviation like the given one, without logic.
std::shared_ptr<OutputDeviation> MakeTwin(const OutputDeviation& deviation) {
  return std::make_shared<OutputDeviation>(deviation, deviation.GetOwner());
}

std::shared_ptr<ExportedDeviation> MakeTwin(const ExportedDeviation& deviation) {
  auto twin = std::make_shared<ExportedDeviation>(deviation.GetOwner(), deviation.failureClass,
                                                  deviation.subject);
  twin->description = deviation.description;
  return twin;
}

}  // namespace

void vtnxParser::ReadOutputDeviation(XmlElement element) {
  const WrittenName name = SplitName(element);
  const std::string port = BehindLastPoint(name.place);
  // Without a hyphen the name has been reported; that it names no port either is no second fault,
  // and would keep the rest of the file from being read.
  if (!name.hasHyphen && !component->FindPort(port)) return;
  AddFailureClass(name.failureClass);
  const auto deviation = std::make_shared<OutputDeviation>(component, name.failureClass, port);
  deviation->description = ElementText(element, "Description");
  deviation->severity = ElementDouble(element, "Severity");
  deviation->SetSystemOutput(ElementFlag(element, "SystemOutport"));
  ReadGlobalLabel(element, deviation);
  ReadDeviationLogic(element, deviation);
}

void vtnxParser::ReadExportedPropagation(XmlElement element) {
  const WrittenName name = SplitName(element);
  AddFailureClass(name.failureClass);
  // What is exported is no port, so its name is kept with its points.
  const auto deviation =
      std::make_shared<ExportedDeviation>(component, name.failureClass, name.place);
  deviation->description = ElementText(element, "Description");
  ReadDeviationLogic(element, deviation);
}

void vtnxParser::ReadGlobalLabel(XmlElement element,
                                 const std::shared_ptr<OutputDeviation>& deviation) {
  const std::string label = ElementText(element, "GlobalLabel");
  if (label.empty() || model->gotoTargets.emplace(label, deviation).second) return;
  DiagnosticLog::Instance().AddError(
      "Global label '" + label + "' for output deviation " + deviation->GetFullName() +
      " already exists. Global labels must be unique." + LineNumberNote(element));
}

template <typename DeviationType>
void vtnxParser::ReadDeviationLogic(XmlElement element,
                                    const std::shared_ptr<DeviationType>& deviation) {
  const std::string label = ElementText(element, "Name");
  const std::int32_t line = element.Row() + 1;
  const std::string text = ElementText(element, "FailureExpression");
  const XmlElement causes = element.FirstChild("Causes");
  if (!causes && text.starts_with('{')) {
    ReadStateLogic(text, label, line, deviation);
    return;
  }
  if (causes) {
    ReadCauses(causes, *deviation, [&](const std::string& logic, std::int32_t causeLine) {
      return BuildOutputExpression(logic, implementation, label, causeLine);
    });
  } else {
    AttachExpression(text, label, line, *deviation);
  }
  Store(deviation, DefaultState, *implementation);
}

template <typename DeviationType>
void vtnxParser::ReadStateLogic(const std::string& text, const std::string& label,
                                std::int32_t line,
                                const std::shared_ptr<DeviationType>& deviation) {
  // The first state takes the deviation itself, which a label may lead to.
  std::shared_ptr<DeviationType> next = deviation;
  for (const StateExpression& piece : SplitStates(text)) {
    AttachExpression(piece.expression, label, line, *next);
    Store(next, piece.state, *implementation);
    next = MakeTwin(*deviation);
  }
}

void vtnxParser::ReadCauses(XmlElement element, IFailureCause& owner, const LogicReader& read) {
  const DiagnosticLog& log = DiagnosticLog::Instance();
  ForEachItem(element, "Cause", [&](XmlElement item) {
    const std::string logic = ElementText(item, "FailureLogic");
    if (logic.empty()) return;
    const std::int32_t errorsBefore = log.ReportedErrors();
    const NodePointer expression = read(logic, item.Row() + 1);
    // A cause read in part would say something else than the model does.
    if (!expression || log.ReportedErrors() != errorsBefore) return;
    const bool hasProbability = static_cast<bool>(item.FirstChild("Probability"));
    const double probability =
        hasProbability ? ElementDouble(item, "Probability") : CertainProbability;
    owner.AddCause(std::make_unique<Cause>(logic, model.get(), probability, expression),
                   model.get());
  });
}

}  // namespace FTS
