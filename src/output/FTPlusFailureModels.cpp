// FaultTree+ failure models: how an event's record says when the event fails.

#include <string>
#include <vector>

#include "app/DiagnosticLog.h"
#include "faulttree/BasicEvent.h"
#include "output/FTPlusProject.h"

namespace FTS {

namespace {

/// A parameter in one of the numbered fields of a record.
struct Field {
  int number;
  const char* parameter;  // Its key in the event.
  const char* shown;      // Its name in messages.
};

/// A failure model in the terms of the tool.
struct Mapping {
  FailureModel model;
  int type;
  const char* typeTag;  // Names the type in messages; readers of logs know these words.
  const char* tag;      // Names the model in front of a parameter.
  std::vector<Field> fields;
  const char* unknownToLegacy;  // Its word in the warning; null when all versions know it.
};

constexpr int FixedType = 0;

const Mapping* FindMapping(FailureModel model) {
  static const Field rate = {0, "FailureRate", "FailureRate"};
  static const std::vector<Mapping> mappings = {
      {FailureModel::CONSTANT,
       1,
       "PSA_RATE",
       "UF_CONSTANT",
       {rate, {2, "RepairRate", "RepairRate"}},
       nullptr},
      {FailureModel::MTTR, 10, "PSA_RATEMTTR", "UF_MTTR", {rate, {2, "MTTR", "MTTR"}}, "RATEMTTR"},
      {FailureModel::MTTFMTTR,
       2,
       "UF_MTTFMTTR - FailureRate",
       "UF_MTTFMTTR",
       {{0, "MTTF", "MTTF"}, {2, "MTTR", "MTTR"}},
       nullptr},
      {FailureModel::FIXED,
       FixedType,
       "UF_FIXED",
       "UF_FIXED",
       {{0, "Unavailability", "Unavailability"}},
       nullptr},
      {FailureModel::TIME,
       7,
       "UF_TIME",
       "UF_TIME",
       {rate, {2, "RiskTime", "RiskTime"}},
       "TIMEATRISK"},
      {FailureModel::BINOMIAL,
       8,
       "UF_BINOMIAL",
       "UF_BINOMIAL",
       {rate,
        {2, "RepairRate", "RepairRate"},
        {4, "n", "TotalFailureEvents"},
        {5, "m", "MinFailureEvents"}},
       "BINOMIAL"},
      {FailureModel::POISSON,
       9,
       "UF_POISSON",
       "UF_POISSON",
       {rate, {2, "n", "RequiredComponents"}, {3, "s", "SpareComponents"}},
       "POISSON"},
      {FailureModel::DORMANT,
       3,
       "UF_DORMANT",
       "UF_DORMANT",
       {rate, {2, "MTTR", "MTTR"}, {4, "InspectionTime", "InspectionTime"}},
       nullptr},
  };
  for (const Mapping& mapping : mappings) {
    if (mapping.model == model) return &mapping;
  }
  return nullptr;
}

void WriteType(FTPlusProject& project, int record, int type, const std::string& tag) {
  if (project.SetInteger(EventsTable, "Local Model Type", record, type)) return;
  FTPlusProject::Tell(record, "error setting " + tag + " ");
}

void WriteParameter(FTPlusProject& project, int record, int number, double value,
                    const std::string& shown) {
  const std::string field = "Local Model Parameter " + std::to_string(number);
  if (project.SetNumber(EventsTable, field, record, value)) return;
  FTPlusProject::Tell(record, "error setting " + shown + " ");
}

/// What the event's model comes to, for a tool that does not know the model.
void SetFixed(FTPlusProject& project, int record, double unavailability) {
  // The first text names another model and a parameter that was not set: see FTPlusNodes.cpp.
  WriteType(project, record, FixedType, "UF_MTTF - FailureRate");
  WriteParameter(project, record, 0, unavailability, "PSA_FIXED - Unavailability");
}

}  // namespace

void BasicEvent::ExportFailureModel(FTPlusProject& project) const {
  const int record = project.RecordOf(*this);
  if (failureModel == FailureModel::MTTF) {
    DiagnosticLog::Instance().AddWarning(
        "Fault Tree Plus does not support this method MTTF - Outputting to unavailability as "
        "FIXED.");
    SetFixed(project, record, GetUnavailability());
    return;
  }
  const Mapping* const mapping = FindMapping(failureModel);
  if (!mapping) return;
  if (mapping->unknownToLegacy && project.GetVersion() == FTPlusProject::LegacyVersion) {
    DiagnosticLog::Instance().AddWarning(
        "Using legacy Fault Tree Plus DLL which does not support " +
        std::string(mapping->unknownToLegacy) + " - Outputting to unavailability as FIXED.");
    SetFixed(project, record, GetUnavailability());
    return;
  }
  WriteType(project, record, mapping->type, mapping->typeTag);
  for (const Field& field : mapping->fields) {
    WriteParameter(project, record, field.number, GetParameter(field.parameter),
                   std::string(mapping->tag) + " - " + field.shown);
  }
}

}  // namespace FTS
