#include "platform/Command.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <iostream>
#include <utility>

#include "platform/FileSystem.h"

namespace FTS {

namespace {

std::unique_ptr<CommandRunner>& Replacement() {
  static std::unique_ptr<CommandRunner> replacement;
  return replacement;
}

/// What the new process does with its streams before the program starts.
class StreamSetup {
 public:
  explicit StreamSetup(bool discardOutput) {
    posix_spawn_file_actions_init(&actions);
    if (!discardOutput) return;
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
  }

  ~StreamSetup() { posix_spawn_file_actions_destroy(&actions); }

  StreamSetup(const StreamSetup&) = delete;
  StreamSetup& operator=(const StreamSetup&) = delete;

  const posix_spawn_file_actions_t* Actions() const { return &actions; }

 private:
  posix_spawn_file_actions_t actions{};
};

/// A detached program gets a session of its own, so that it stays when the terminal closes.
class StartSetup {
 public:
  explicit StartSetup(bool detached) {
    posix_spawnattr_init(&attributes);
    if (detached) posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSID);
  }

  ~StartSetup() { posix_spawnattr_destroy(&attributes); }

  StartSetup(const StartSetup&) = delete;
  StartSetup& operator=(const StartSetup&) = delete;

  const posix_spawnattr_t* Attributes() const { return &attributes; }

 private:
  posix_spawnattr_t attributes{};
};

bool IsProgram(const std::string& path) {
  return access(WithNativeSeparators(path).c_str(), X_OK) == 0 && !IsDirectory(path);
}

std::optional<int> WaitFor(pid_t process) {
  int status = 0;
  while (waitpid(process, &status, 0) < 0) {
    if (errno != EINTR) return std::nullopt;
  }
  if (!WIFEXITED(status)) return std::nullopt;
  return WEXITSTATUS(status);
}

std::optional<int> RunInSystem(CommandLine line) {
  std::vector<char*> argumentVector{line.program.data()};
  for (std::string& argument : line.arguments) argumentVector.push_back(argument.data());
  argumentVector.push_back(nullptr);

  std::cout.flush();
  std::cerr.flush();
  const StreamSetup streams(line.discardOutput);
  const StartSetup start(line.detached);
  pid_t process = 0;
  const int failure = posix_spawnp(&process, line.program.c_str(), streams.Actions(),
                                   start.Attributes(), argumentVector.data(), environ);
  if (failure != 0) return std::nullopt;
  return line.detached ? 0 : WaitFor(process);
}

}  // namespace

std::string ToolPath(const std::string& folder, const std::string& name) {
  const std::string bare = folder + name;
  const std::string withEnding = bare + ".exe";
  // One that can't be run, as it is when copied from another system, must not hide one that can.
  if (IsProgram(withEnding)) return withEnding;
  return IsProgram(bare) ? bare : withEnding;
}

std::optional<int> Command::Run(const CommandLine& line) {
  return Replacement() ? Replacement()->Run(line) : RunInSystem(line);
}

std::unique_ptr<CommandRunner> Command::Replace(std::unique_ptr<CommandRunner> runner) {
  return std::exchange(Replacement(), std::move(runner));
}

}  // namespace FTS
