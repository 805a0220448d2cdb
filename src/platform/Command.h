#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace FTS {

/// A program to run and its arguments. No shell takes part, so no character in them is special.
struct CommandLine {
  std::string program;  ///< A path, or a name that is looked up as the system looks up commands.
  std::vector<std::string> arguments;
  bool discardOutput = false;  ///< Both output streams, and an empty input.
  bool detached = false;  ///< It goes on by itself: nobody waits, and it outlives this program.
};

/// Where a program that belongs to this one lies in its folder: `name` with the ending ".exe", or
/// without it where only that may be run. The folder ends in a separator or is empty.
std::string ToolPath(const std::string& folder, const std::string& name);

/// What runs external programs. Tests put a recording one in its place.
class CommandRunner {
 public:
  virtual ~CommandRunner() = default;

  /// Runs the program, waits for its end and returns its exit status; nothing if it could not be
  /// started or was ended by a signal. A detached one is not waited for, its status counts as 0.
  virtual std::optional<int> Run(const CommandLine& line) = 0;
};

/// The process-wide way to run external programs.
class Command {
 public:
  Command() = delete;

  /// Runs the program, waits for its end and returns its exit status; nothing if it could not be
  /// started or was ended by a signal. A detached one is not waited for, its status counts as 0.
  /// What was printed before appears before its output.
  static std::optional<int> Run(const CommandLine& line);

  /// Has programs run by `runner` from now on and returns the one that served before; null stands
  /// for the system on both sides.
  static std::unique_ptr<CommandRunner> Replace(std::unique_ptr<CommandRunner> runner);
};

}  // namespace FTS
