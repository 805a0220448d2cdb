#pragma once

#include <cstdint>
#include <memory>
#include <string>

namespace FTS {

/// What a system has written down about the products installed on the machine, as Windows keeps it:
/// a tree of keys, each with named texts. Keys are paths with backslashes below that of the local
/// machine, and only read. Operations return the system's error code, `Success` when they went
/// well.
class Registry {
 public:
  static constexpr std::int32_t Success = 0;

  /// That of this system, or the one a test has put in its place; null where systems keep none.
  static Registry* Instance();
  /// Has `registry` answer from now on and returns the one that served before; null stands for the
  /// system's on both sides.
  static std::unique_ptr<Registry> Replace(std::unique_ptr<Registry> registry);

  virtual ~Registry() = default;

  /// Whether the key can be opened for reading.
  virtual std::int32_t Open(const std::string& key) = 0;
  /// How many keys lie directly below; 0 when the key cannot be asked.
  virtual std::uint32_t CountKeys(const std::string& key) = 0;
  /// The name of one of them, `index` from 0.
  virtual std::int32_t KeyName(const std::string& key, std::uint32_t index, std::string& name) = 0;
  virtual std::int32_t ReadText(const std::string& key, const std::string& value,
                                std::string& text) = 0;
};

}  // namespace FTS
