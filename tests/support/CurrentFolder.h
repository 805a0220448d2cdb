#pragma once

#include <filesystem>
#include <string>

namespace FTS {

/// Makes a folder the current one while it lives.
class CurrentFolder {
 public:
  explicit CurrentFolder(const std::string& path) : before(std::filesystem::current_path()) {
    std::filesystem::current_path(path);
  }
  ~CurrentFolder() { std::filesystem::current_path(before); }
  CurrentFolder(const CurrentFolder&) = delete;
  CurrentFolder& operator=(const CurrentFolder&) = delete;

 private:
  std::filesystem::path before;
};

}  // namespace FTS
