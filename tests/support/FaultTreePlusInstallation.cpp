#include "support/FaultTreePlusInstallation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <sstream>
#include <utility>

namespace FTS {

void ListedRegistry::AddKey(const std::string& key) {
  keys[key];
  const std::size_t last = key.rfind('\\');
  if (last != std::string::npos) keys[key.substr(0, last)].push_back(key.substr(last + 1));
}

std::int32_t ListedRegistry::Open(const std::string& key) {
  return keys.contains(key) ? Success : NotThere;
}

std::uint32_t ListedRegistry::CountKeys(const std::string& key) {
  const auto found = keys.find(key);
  return found == keys.end() ? 0 : static_cast<std::uint32_t>(found->second.size());
}

std::int32_t ListedRegistry::KeyName(const std::string& key, std::uint32_t index,
                                     std::string& name) {
  const std::string& known = keys.at(key).at(index);
  const auto error = errors.find(key + "\\" + known);
  if (error != errors.end()) return error->second;
  name = known;
  return Success;
}

std::int32_t ListedRegistry::ReadText(const std::string& key, const std::string& value,
                                      std::string& text) {
  const auto found = texts.find(key + "\\" + value);
  if (found == texts.end()) return NotThere;
  text = found->second;
  return Success;
}

FaultTreePlusInstallation::FaultTreePlusInstallation() {
  std::filesystem::create_directories(ProgramFolder());
  std::filesystem::copy_file(FTS_RECORDING_LIBRARY, PathOfLibrary());
  auto made = std::make_unique<ListedRegistry>();
  registry = made.get();
  const std::string version = std::string(ToolKey) + "\\11.0";
  registry->AddKey(version);
  registry->texts[version + "\\ProductDir"] = folder.Path();
  before = Registry::Replace(std::move(made));
}

FaultTreePlusInstallation::~FaultTreePlusInstallation() { Registry::Replace(std::move(before)); }

std::unique_ptr<DynamicLibrary> FaultTreePlusInstallation::Load() const {
  auto library = DynamicLibrary::Load(PathOfLibrary());
  EXPECT_NE(library, nullptr) << PathOfLibrary();
  return library;
}

std::string CallsOf(const DynamicLibrary& library) {
  const auto recorded = library.Find<const char*()>("RecordedCalls");
  return recorded ? recorded() : "no recording library";
}

std::string CallsOf(const DynamicLibrary& library, const std::string& start) {
  std::istringstream all(CallsOf(library));
  std::string chosen;
  for (std::string line; std::getline(all, line);) {
    if (line.starts_with(start)) chosen += line + "\n";
  }
  return chosen;
}

void* PartialLibrary::FindAddress(const std::string& entry) const {
  asked.push_back(entry);
  if (std::find(missing.begin(), missing.end(), entry) != missing.end()) return nullptr;
  return reinterpret_cast<void*>(whole.Find<void()>(entry.c_str()));
}

}  // namespace FTS
