#include "app/TestReport.h"

#include <algorithm>
#include <iostream>

#include "app/Config.h"
#include "app/Duration.h"

namespace FTS {
namespace {

constexpr const char* LogName = "TestResults.txt";
constexpr const char* SummaryName = "TestSummary.txt";

/// Shells use the statuses above for ends of their own.
constexpr int LargestStatus = 125;

void Open(std::ofstream& stream, const char* name) {
  stream.open(name, std::ios::binary | std::ios::trunc);
  if (!stream) std::cerr << "Cannot write " << name << '\n';
}

void TellIfCutShort(const std::ofstream& stream, const char* name) {
  if (stream.is_open() && !stream) {
    std::cerr << "Cannot write the whole of file: " << name << '\n';
  }
}

const char* TextOf(TestOutcome outcome) {
  switch (outcome) {
    case TestOutcome::Pass:
      return "PASS";
    case TestOutcome::Fail:
      return "FAIL";
    case TestOutcome::Errors:
      return "ERRORS";
    case TestOutcome::Leak:
      return "LEAK";
  }
  return "";
}

std::string WithThreeDigits(int number) {
  const std::string text = std::to_string(number);
  return std::string(text.size() < 3 ? 3 - text.size() : 0, '0') + text;
}

}  // namespace

TestReport::TestReport() : quiet(Config::Instance().runSilent) {
  Open(log, LogName);
  Open(summary, SummaryName);
}

void TestReport::Print(const std::string& line) const {
  if (!quiet) std::cout << line << '\n' << std::flush;
}

// Flushed, so that the log tells what was at work when a test ends the program.
void TestReport::Log(const std::string& line) { log << line << '\n' << std::flush; }

void TestReport::Show(const std::string& line) {
  Log(line);
  Print(line);
}

void TestReport::Complain(const std::string& line) {
  Log(line);
  std::cerr << line << '\n';
}

void TestReport::Finish(int number, TestOutcome outcome, const std::string& path) {
  if (outcome == TestOutcome::Fail) ++fails;
  if (outcome == TestOutcome::Errors) ++errors;
  if (outcome == TestOutcome::Leak) ++leaks;
  if (outcome == TestOutcome::Pass || outcome == TestOutcome::Leak) ++passes;
  summary << WithThreeDigits(number) << ":   " << TextOf(outcome) << "\t\t" << path << '\n'
          << std::flush;
}

void TestReport::FinishAll(long long milliseconds, bool countsLeaks) {
  std::string text = "\n--------------------------------\n";
  text += "Total time taken: " + FormatDuration(static_cast<float>(milliseconds) / 1000.0f) + "\n";
  text += "Number of Passes: " + std::to_string(passes) + "\n";
  if (countsLeaks) {
    text += "Number of Leaks: " + std::to_string(leaks) + " (NB: These count as passes above :)\n";
  }
  text += "Number of Fails: " + std::to_string(fails) + "\n";
  text += "Number of Errors: " + std::to_string(errors);
  summary << text << '\n' << std::flush;
  Print(text);
  TellIfCutShort(log, LogName);
  TellIfCutShort(summary, SummaryName);
}

int TestReport::ExitStatus() const { return std::min(fails + errors, LargestStatus); }

}  // namespace FTS
