#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace FTS {

/// Collects what the user must know about a model that the run could live with. All of it is
/// counted; only the first hundred texts of each kind are kept, so that a badly broken model cannot
/// fill the memory with messages, and a silent run keeps none.
class DiagnosticLog {
 public:
  static constexpr std::int32_t MaxStored = 100;

  /// The log of this process, made empty at first use.
  static DiagnosticLog& Instance();

  /// Destroys the log; the next `Instance` starts with an empty one.
  static void Release();

  DiagnosticLog() = default;
  DiagnosticLog(const DiagnosticLog&) = delete;
  DiagnosticLog& operator=(const DiagnosticLog&) = delete;

  void AddWarning(const std::string& text);
  void AddError(const std::string& text);

  /// How many errors are stored. A silent run stores none, however many it reports, and therefore
  /// is never stopped by its errors.
  int ErrorCount() const { return static_cast<int>(errors.size()); }

  /// The stored texts, in the order of their arrival.
  const std::vector<std::string>& Warnings() const { return warnings; }
  const std::vector<std::string>& Errors() const { return errors; }

  /// How many were reported in all, stored or not.
  std::int32_t ReportedWarnings() const { return warningCount; }
  std::int32_t ReportedErrors() const { return errorCount; }

 private:
  std::vector<std::string> warnings;
  std::vector<std::string> errors;
  std::int32_t warningCount = 0;
  std::int32_t errorCount = 0;
};

}  // namespace FTS
