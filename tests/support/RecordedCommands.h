#pragma once

#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "platform/Command.h"

namespace FTS {

/// While it lives no external program is run: each is written down instead, and ends with the
/// status that the test has set.
class RecordedCommands {
 public:
  RecordedCommands() {
    auto made = std::make_unique<Recorder>();
    recorder = made.get();
    before = Command::Replace(std::move(made));
  }

  ~RecordedCommands() { Command::Replace(std::move(before)); }

  RecordedCommands(const RecordedCommands&) = delete;
  RecordedCommands& operator=(const RecordedCommands&) = delete;

  /// What was to be run, in order.
  const std::vector<CommandLine>& Lines() const { return recorder->lines; }

  /// How commands end from now on; nothing for one that can't be started. At first 0.
  void SetStatus(std::optional<int> value) { recorder->status = value; }

 private:
  struct Recorder : CommandRunner {
    std::optional<int> Run(const CommandLine& line) override {
      lines.push_back(line);
      return status;
    }

    std::vector<CommandLine> lines;
    std::optional<int> status = 0;
  };

  Recorder* recorder = nullptr;  // Owned by the process-wide place until the end of this object.
  std::unique_ptr<CommandRunner> before;
};

}  // namespace FTS
