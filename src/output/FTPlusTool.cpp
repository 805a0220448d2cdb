// The tool FaultTree+ on this machine: where it is, its library, and its start.

#include <cstdint>
#include <iostream>
#include <memory>
#include <string>

#include "app/Config.h"
#include "app/DiagnosticLog.h"
#include "output/FTPlusExport.h"
#include "platform/FileSystem.h"
#include "platform/Registry.h"

namespace FTS {

namespace {

constexpr const char* LibraryName = "PSA32DLL.DLL";
constexpr const char* ToolKey = "SOFTWARE\\RAMS\\FaultTree+";
constexpr const char* NoVersion = "Not found";

using StartEntry = void FTS_LIBRARY_CALL(const char* project, const char* directory,
                                         std::int32_t mode, std::int32_t wait);

void Warn(const std::string& text) {
  DiagnosticLog::Instance().AddWarning("Cannot start FaultTree+ - " + text);
}

void WarnWithCode(const char* what, std::int32_t code) {
  Warn(std::string(what) + ": Registry error code: " + std::to_string(code));
}

/// Installers enter versions in turn, so the last one is the latest; the numbers are not compared.
std::string LatestVersion(Registry& registry) {
  std::string latest = NoVersion;
  const std::uint32_t count = registry.CountKeys(ToolKey);
  for (std::uint32_t i = 0; i < count; ++i) {
    std::string name;
    const std::int32_t code = registry.KeyName(ToolKey, i, name);
    if (code == Registry::Success) {
      latest = name;
    } else {
      WarnWithCode("Error querying version", code);
    }
  }
  return latest;
}

std::string ProgramFolder(Registry& registry) {
  if (const std::int32_t code = registry.Open(ToolKey); code != Registry::Success) {
    WarnWithCode("Error opening FaultTree+ key", code);
    return "";
  }
  const std::string version = LatestVersion(registry);
  if (version == NoVersion) {
    Warn("Latest version not found: ");
    return "";
  }
  const std::string key = std::string(ToolKey) + "\\" + version;
  if (const std::int32_t code = registry.Open(key); code != Registry::Success) {
    WarnWithCode("Error opening version key", code);
    return "";
  }
  std::string folder;
  if (const std::int32_t code = registry.ReadText(key, "ProductDir", folder);
      code != Registry::Success) {
    WarnWithCode("Error querying ProductDir", code);
    return "";
  }
  return JoinPath(folder, "Program");
}

}  // namespace

std::string GetFaultTreePlusDirectory() {
  Registry* const registry = Registry::Instance();
  return registry ? ProgramFolder(*registry) : "";
}

// Without a registry nothing is loaded: a library that happens to have the name is not the one.
std::unique_ptr<DynamicLibrary> LoadFaultTreePlus() {
  if (!Registry::Instance()) return nullptr;
  return DynamicLibrary::Load(JoinPath(GetFaultTreePlusDirectory(), LibraryName));
}

void OpenFaultTreePlus(const std::string& projectPath, const DynamicLibrary& library) {
  constexpr std::int32_t Mode = 0;
  constexpr std::int32_t Wait = 1000;
  const std::string directory = GetFaultTreePlusDirectory();
  if (directory.empty()) {
    Warn("Could not find FaultTree+ directory in registry");
    return;
  }
  StartEntry* const start = library.Find<StartEntry>("_PSADLLStartFaultTreePlus@16");
  if (!start) {
    DiagnosticLog::Instance().AddWarning(
        "Cannot start Fault Tree + : Could not find load function in FaultTree+ DLL.");
    return;
  }
  if (!Config::Instance().runSilent) std::cout << "Opening Fault Tree+ ...\n";
  start(projectPath.c_str(), directory.c_str(), Mode, Wait);
}

}  // namespace FTS
