// What an implementation in a model document says about failures: its events, common causes and
// diagnostic coverages, and the order in which its failure data are read.

#include <cstddef>
#include <iterator>
#include <vector>

#include "app/Config.h"
#include "app/DiagnosticLog.h"
#include "faulttree/BasicEvent.h"
#include "faulttree/CommonCauseNodes.h"
#include "input/ExpressionReader.h"
#include "input/XmlElements.h"
#include "input/vtnxParser.h"
#include "model/CCF.h"
#include "model/Component.h"
#include "model/Deviation.h"
#include "model/DeviationName.h"
#include "model/Hazard.h"
#include "model/Implementation.h"
#include "model/Model.h"
#include "model/NumberText.h"
#include "model/Perspective.h"

namespace FTS {
namespace {

struct FormulaWord {
  std::string_view element;
  FailureModel failureModel;
};

constexpr FormulaWord FormulaWords[] = {
    {"Constant", FailureModel::CONSTANT},
    {"MTTR", FailureModel::MTTR},
    {"MTTF", FailureModel::MTTF},
    {"MTTFMTTR", FailureModel::MTTFMTTR},
    {"Fixed", FailureModel::FIXED},
    {"Binomial", FailureModel::BINOMIAL},
    {"Poisson", FailureModel::POISSON},
    {"Dormant", FailureModel::DORMANT},
    {"Variable", FailureModel::VARIABLE},
    {"ISO26262DetectabilityAnalysis", FailureModel::DISTRIBUTION},
};

FailureModel FailureModelOf(std::string_view element) {
  for (const FormulaWord& row : FormulaWords) {
    if (row.element == element) return row.failureModel;
  }
  return FailureModel::NONE;
}

/// The parts of a comma-separated list, trimmed, without empty ones.
std::vector<std::string> ListItems(const std::string& text) {
  std::vector<std::string> items;
  for (std::size_t start = 0; start <= text.size();) {
    const std::size_t comma = std::min(text.find(',', start), text.size());
    std::string item = Trimmed(std::string_view(text).substr(start, comma - start));
    if (!item.empty()) items.push_back(std::move(item));
    start = comma + 1;
  }
  return items;
}

/// The name under which an implementation keeps an input deviation: the port's last part counts.
std::string RecordName(const std::string& deviationName) {
  const std::string port = PortOf(deviationName);
  if (port.empty()) return deviationName;
  return FailureClassOf(deviationName) + "-" + BehindLastPoint(port);
}

}  // namespace

void vtnxParser::ReadFailureData(XmlElement element) {
  const double failureRate = ElementDouble(element, "ComponentFailureRate");
  if (failureRate != 0.0) implementation->failureRate = failureRate;
  ReadBasicEvents(element);
  ForEachItem(element.FirstChild("NormalEvents"), "NormalEvent",
              [this](XmlElement item) { ReadBasicEvent(item, true); });
  ForEachItem(element.FirstChild("PotentialCCFs"), "PotentialCCF",
              [this](XmlElement item) { ReadPotentialCCF(item); });
  ForEachItem(element.FirstChild("OutputDeviations"), "OutputDeviation",
              [this](XmlElement item) { ReadOutputDeviation(item); });
  ForEachItem(element.FirstChild("ExportedPropagations"), "ExportedPropagation",
              [this](XmlElement item) { ReadExportedPropagation(item); });
  ForEachItem(element.FirstChild("DiagnosticCoverages"), "DiagnosticCoverage",
              [this](XmlElement item) { ReadDiagnosticCoverage(item); });
}

void vtnxParser::ReadBasicEvents(XmlElement data) {
  constexpr double WholeDistribution = 100.0;
  bool distributed = false;
  double total = 0.0;
  ForEachItem(data.FirstChild("BasicEvents"), "BasicEvent", [&](XmlElement item) {
    const std::shared_ptr<BasicEvent> event = ReadBasicEvent(item, false);
    if (!event || event->failureModel != FailureModel::DISTRIBUTION) return;
    distributed = true;
    total += event->GetParameter("Percentage");
  });
  if (!distributed || total == WholeDistribution) return;
  DiagnosticLog::Instance().AddWarning(
      "Total failure distribution for component: " + component->GetFullNameText() + " is " +
      FormatDouble(total) + "% (should be 100%)");
}

std::shared_ptr<BasicEvent> vtnxParser::ReadBasicEvent(XmlElement element, bool normal) {
  const std::string name = ElementText(element, "Name");
  if (implementation->basicEvents.contains(name)) return nullptr;
  std::shared_ptr<BasicEvent> event;
  if (normal) {
    event = std::make_shared<NormalEvent>(name, model.get(), true);
  } else {
    event = std::make_shared<BasicEvent>(name, model.get(), true);
  }
  event->owner = component;
  event->description = ElementText(element, "Description");
  implementation->AddBasicEvent(event);
  ReadUnavailabilityFormula(element.FirstChild("UnavailabilityFormula"), *event);
  if (Config::Instance().quantitativeAnalysis) event->ComputeFailureData();
  return event;
}

void vtnxParser::ReadUnavailabilityFormula(XmlElement element, BasicEvent& event) {
  const XmlElement formula = element.FirstChild();
  event.failureModel = FailureModelOf(formula.Name());
  for (XmlElement parameter = formula.FirstChild(); parameter;
       parameter = parameter.NextSibling()) {
    event.SetParameter(std::string(parameter.Name()), ParseDouble(parameter.Text()));
  }
}

void vtnxParser::ReadPotentialCCF(XmlElement element) {
  const std::string name = ElementText(element, "Name");
  const auto proxy = std::make_shared<PCCFProxy>(name, model.get());
  proxy->owner = component;
  proxy->node->owner = component;
  proxy->description = ElementText(element, "Description");
  if (const auto ccf = perspective->FindCCF(ElementText(element, "ACCF"))) {
    proxy->Activate(ccf);
  } else {
    DiagnosticLog::Instance().AddError("Actual CCF not found for Potential CCF: " + name +
                                       LineNumberNote(element));
  }
  implementation->AddPCCF(proxy);
}

void vtnxParser::ReadDiagnosticCoverage(XmlElement element) {
  const std::string name = ElementText(element, "Name");
  ForEachItem(element.FirstChild("SafetyGoalCoverages"), "SafetyGoalCoverage",
              [&](XmlElement item) { ReadGoalCoverage(item, name); });
}

void vtnxParser::ReadGoalCoverage(XmlElement element, const std::string& coverageName) {
  const std::string hazardName = ElementText(element, "Name");
  if (!model->FindHazard(hazardName)) {
    DiagnosticLog::Instance().AddWarning("Diagnostic coverage " + coverageName + " in " +
                                         component->GetFullNameText() + " refers to hazard " +
                                         hazardName + " which does not exist.");
    return;
  }
  const double percentage = ElementDouble(element, "Percentage");
  for (const std::string& deviation : ListItems(ElementText(element, "InputDeviations"))) {
    CoverInputDeviation(deviation, hazardName, percentage, coverageName);
  }
}

void vtnxParser::CoverInputDeviation(const std::string& deviationName,
                                     const std::string& hazardName, double percentage,
                                     const std::string& coverageName) {
  const std::string subject =
      "Diagnostic coverage " + coverageName + " in " + component->GetFullNameText();
  const auto record = implementation->inputDeviationRecords.find(RecordName(deviationName));
  if (record == implementation->inputDeviationRecords.end()) {
    DiagnosticLog::Instance().AddWarning(subject + " refers to input deviation " + deviationName +
                                         " which does not exist.");
    return;
  }
  auto& coverage = record->second->coverage;
  if (coverage.contains(hazardName)) {
    DiagnosticLog::Instance().AddWarning(
        subject + " is being applied to input deviation " + deviationName + " for hazard " +
        hazardName + " which already has a diagnostic coverage; using new value.");
  }
  coverage[hazardName] = percentage;
}

}  // namespace FTS
