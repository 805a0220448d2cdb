#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/DynamicLibrary.h"
#include "platform/Registry.h"
#include "support/TemporaryFolder.h"

namespace FTS {

/// A registry with what a test has entered: keys, the names of those below, and texts.
class ListedRegistry : public Registry {
 public:
  static constexpr std::int32_t NotThere = 2;

  /// Makes the key and enters it below the one that it lies in.
  void AddKey(const std::string& key);

  std::int32_t Open(const std::string& key) override;
  std::uint32_t CountKeys(const std::string& key) override;
  std::int32_t KeyName(const std::string& key, std::uint32_t index, std::string& name) override;
  std::int32_t ReadText(const std::string& key, const std::string& value,
                        std::string& text) override;

  std::map<std::string, std::vector<std::string>> keys;  ///< The names below each key, in order.
  std::map<std::string, std::string> texts;              ///< By key, "\\" and the text's name.
  std::map<std::string, std::int32_t> errors;            ///< By key, "\\" and a name below it.
};

/// While it lives the tool FaultTree+ seems to be installed: the registry tells of it, and its
/// library is a copy of that of tests/ftplus/RecordingLibrary.cpp, which nobody else has loaded.
class FaultTreePlusInstallation {
 public:
  static constexpr const char* ToolKey = "SOFTWARE\\RAMS\\FaultTree+";

  FaultTreePlusInstallation();
  ~FaultTreePlusInstallation();
  FaultTreePlusInstallation(const FaultTreePlusInstallation&) = delete;
  FaultTreePlusInstallation& operator=(const FaultTreePlusInstallation&) = delete;

  /// Where the tool's programs and its library are.
  std::string ProgramFolder() const { return folder.Path("Program"); }
  std::string PathOfLibrary() const { return folder.Path("Program/PSA32DLL.DLL"); }
  ListedRegistry& GetRegistry() { return *registry; }
  /// Its library, which stays loaded as long as the result.
  std::unique_ptr<DynamicLibrary> Load() const;

 private:
  TemporaryFolder folder;
  ListedRegistry* registry;  // Owned by the process-wide place.
  std::unique_ptr<Registry> before;
};

/// What has been called in the library since it was loaded, one line each.
std::string CallsOf(const DynamicLibrary& library);
/// Only the lines that begin so.
std::string CallsOf(const DynamicLibrary& library, const std::string& start);

/// The library without some of its entries. It remembers the names that were asked for.
class PartialLibrary : public DynamicLibrary {
 public:
  PartialLibrary(const DynamicLibrary& initWhole, std::vector<std::string> initMissing)
      : whole(initWhole), missing(std::move(initMissing)) {}

  void StayLoaded() override {}

  mutable std::vector<std::string> asked;

 protected:
  void* FindAddress(const std::string& entry) const override;

 private:
  const DynamicLibrary& whole;
  const std::vector<std::string> missing;
};

}  // namespace FTS
