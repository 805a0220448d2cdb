#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

namespace FTS {

/// One run of the built program as a user would start it, both streams apart.
struct ProgramRun {
  std::string output;
  std::string errors;
  int exitStatus = -1;  ///< -1 when the program was ended by a signal.
};

/// From where the program is started.
struct ProgramStart {
  std::string folder;   ///< The current folder; that of the tests if empty.
  std::string program;  ///< A copy of the program; the built one if empty.
};

/// Runs the program with these arguments and waits for it. Its standard input is empty.
ProgramRun RunProgramWith(const std::vector<std::string>& arguments,
                          const ProgramStart& start = {});

/// The text with every elapsed time ("0.002s", "1m 30.5s") replaced by "<time>".
std::string WithoutTimes(const std::string& text);

/// One fault tree as Results.xml tells it.
struct ReportedTree {
  double unavailability = 0.0;
  double frequency = 0.0;
  double severity = 0.0;
  /// Events by their names in the FMEA (component's full name, ".", event; the name alone without a
  /// component), joined by ";" in ascending order.
  std::set<std::string> cutSets;
  std::map<std::string, double> unavailabilityOf;  ///< By cut set, as above.
  std::map<int, int> countByOrder;                 ///< From the summary.
};

/// The trees of a Results.xml file by name. A file that is no such document fails the test.
std::map<std::string, ReportedTree> ReadResults(const std::string& path);

}  // namespace FTS
