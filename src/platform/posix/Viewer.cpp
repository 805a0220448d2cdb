#include "platform/Viewer.h"

#include <cstdlib>
#include <sstream>
#include <string_view>

#include "platform/Command.h"

namespace FTS {

namespace {

std::string Environment(const char* name) {
  const char* value = std::getenv(name);
  return value ? value : "";
}

bool HasDisplay() {
  return !Environment("DISPLAY").empty() || !Environment("WAYLAND_DISPLAY").empty();
}

/// BROWSER may carry options behind the program, separated by blanks.
CommandLine ViewerCommand() {
  CommandLine line;
  line.discardOutput = true;
  line.detached = true;
  std::istringstream words(Environment("BROWSER"));
  words >> line.program;
  for (std::string word; words >> word;) line.arguments.push_back(word);
  if (line.program.empty()) line.program = "xdg-open";
  return line;
}

}  // namespace

void OpenInViewer(const std::string& path) {
  if (path.empty() || !HasDisplay()) return;
  CommandLine line = ViewerCommand();
  line.arguments.push_back(path);
  Command::Run(line);
}

}  // namespace FTS
