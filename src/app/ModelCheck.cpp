#include "app/ModelCheck.h"

#include "app/DiagnosticLog.h"
#include "app/Duration.h"
#include "app/RunReports.h"
#include "model/Model.h"
#include "platform/Clock.h"

namespace FTS {

ModelCheck::ModelCheck(const TestEntry& initEntry, const TestModelReader& initRead,
                       TestReport& initReport)
    : entry(initEntry), read(initRead), report(initReport), start(Clock::Milliseconds()) {}

ModelCheck::~ModelCheck() = default;

std::string ModelCheck::TimeSince(long long start) {
  return FormatDuration(static_cast<float>(Clock::Milliseconds() - start) / 1000.0f);
}

void ModelCheck::End() {
  model.reset();
  report.Show("Model deleted.");
  report.Show("Time elapsed: " + TimeSince(start));
  report.Show("Warnings: " + std::to_string(DiagnosticLog::Instance().ReportedWarnings()));
  PrintErrors(report.LogStream());
}

TestOutcome ModelCheck::Outcome(bool complete) const {
  if (failed) return TestOutcome::Fail;
  const bool hasErrors = !complete || DiagnosticLog::Instance().ReportedErrors() > 0;
  return hasErrors ? TestOutcome::Errors : TestOutcome::Pass;
}

}  // namespace FTS
