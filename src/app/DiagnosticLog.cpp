#include "app/DiagnosticLog.h"

#include <memory>

#include "app/Config.h"

namespace FTS {
namespace {

std::unique_ptr<DiagnosticLog>& Holder() {
  static std::unique_ptr<DiagnosticLog> log;
  return log;
}

void Add(const std::string& text, std::vector<std::string>& texts, std::int32_t& count) {
  if (!Config::Instance().runSilent && count < DiagnosticLog::MaxStored) texts.push_back(text);
  ++count;
}

}  // namespace

DiagnosticLog& DiagnosticLog::Instance() {
  if (!Holder()) Holder() = std::make_unique<DiagnosticLog>();
  return *Holder();
}

void DiagnosticLog::Release() { Holder().reset(); }

void DiagnosticLog::AddWarning(const std::string& text) { Add(text, warnings, warningCount); }

void DiagnosticLog::AddError(const std::string& text) { Add(text, errors, errorCount); }

}  // namespace FTS
