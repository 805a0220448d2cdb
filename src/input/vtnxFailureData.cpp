// What an implementation in a model document says about failures: its events, common causes and
// diagnostic coverages, and the order in which its failure data are read.

#include <cstddef>
#include <iterator>
#include <vector>

#include "app/DiagnosticLog.h"
#include "faulttree/BasicEvent.h"
#include "input/ExpressionReader.h"
#include "input/ModelParts.h"
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
  DistributionTotal total;
  ForEachItem(data.FirstChild("BasicEvents"), "BasicEvent", [&](XmlElement item) {
    if (const auto event = ReadBasicEvent(item, false)) total.Add(*event);
  });
  total.Check(*component);
}

std::shared_ptr<BasicEvent> vtnxParser::ReadBasicEvent(XmlElement element, bool normal) {
  auto event = AddBasicEvent(ElementText(element, "Name"), normal, component, *implementation);
  if (!event) return nullptr;
  event->description = ElementText(element, "Description");
  ReadUnavailabilityFormula(element.FirstChild("UnavailabilityFormula"), *event);
  FinishEvent(*event);
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
  const auto ccf = perspective->FindCCF(ElementText(element, "ACCF"));
  if (!ccf) {
    DiagnosticLog::Instance().AddError("Actual CCF not found for Potential CCF: " + name +
                                       LineNumberNote(element));
  }
  AddPotentialCCF(name, ElementText(element, "Description"), ccf, component, *implementation);
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
