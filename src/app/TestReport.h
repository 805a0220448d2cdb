#pragma once

#include <fstream>
#include <string>

namespace FTS {

/// What a test of the test modes came to.
enum class TestOutcome { Pass, Fail, Errors, Leak };

/// What the test modes write: the log "TestResults.txt" and the summary "TestSummary.txt" in the
/// current folder, and their progress on the standard output unless the run is silent.
class TestReport {
 public:
  /// Empties both files. Says on the error stream which of them can't be written.
  TestReport();

  /// A line for the log alone.
  void Log(const std::string& line);
  /// A line for log and standard output.
  void Show(const std::string& line);
  /// A line for log and error stream.
  void Complain(const std::string& line);

  /// Enters the outcome of a test in the summary and in the counts.
  void Finish(int number, TestOutcome outcome, const std::string& path);
  /// Ends the summary with the counts. `milliseconds` is the time that all tests took.
  void FinishAll(long long milliseconds, bool countsLeaks);

  /// The number of tests that failed or had errors, as far as an exit status can tell it.
  int ExitStatus() const;

  /// For what writes to a stream itself.
  std::ostream& LogStream() { return log; }

 private:
  void Print(const std::string& line) const;

  bool quiet;
  std::ofstream log;
  std::ofstream summary;
  int passes = 0;  // Leaks included.
  int leaks = 0;
  int fails = 0;
  int errors = 0;
};

}  // namespace FTS
