#include "app/RunReports.h"

#include <cstdint>
#include <string>
#include <vector>

#include "app/Config.h"
#include "app/DiagnosticLog.h"

namespace FTS {
namespace {

void PrintExcess(std::ostream& stream, const char* kind, std::size_t stored,
                 std::int32_t reported) {
  if (static_cast<std::int64_t>(stored) >= reported) return;
  stream << "Excessive number of " << kind << "; displaying first " << stored << " only.\n";
}

}  // namespace

void PrintWarnings(std::ostream& stream) {
  const DiagnosticLog& log = DiagnosticLog::Instance();
  if (log.Warnings().empty()) return;
  stream << "\nWARNINGS: " << log.ReportedWarnings() << '\n';
  PrintExcess(stream, "warnings", log.Warnings().size(), log.ReportedWarnings());
  if (Config::Instance().suppressWarnings) return;
  for (const std::string& text : log.Warnings()) stream << text << '\n';
}

void PrintErrors(std::ostream& stream) {
  const DiagnosticLog& log = DiagnosticLog::Instance();
  if (log.Errors().empty()) return;
  stream << "\nERRORS: " << log.ReportedErrors() << '\n';
  PrintExcess(stream, "errors", log.Errors().size(), log.ReportedErrors());
  for (const std::string& text : log.Errors()) stream << "ERROR: " << text << '\n';
}

}  // namespace FTS
