#pragma once

#include <stdlib.h>

#include <optional>
#include <string>

namespace FTS {

/// Gives an environment variable another value, or none, while it lives.
class EnvironmentVariable {
 public:
  EnvironmentVariable(const char* initName, const std::optional<std::string>& value)
      : name(initName) {
    if (const char* old = getenv(name)) before = old;
    Set(value);
  }

  ~EnvironmentVariable() { Set(before); }

  EnvironmentVariable(const EnvironmentVariable&) = delete;
  EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;

 private:
  void Set(const std::optional<std::string>& value) const {
    if (value) {
      setenv(name, value->c_str(), 1);
    } else {
      unsetenv(name);
    }
  }

  const char* name;
  std::optional<std::string> before;
};

}  // namespace FTS
