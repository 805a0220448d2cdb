#include "support/FuzzSeeds.h"

#include <algorithm>
#include <filesystem>

#include "platform/FileSystem.h"
#include "support/TestPaths.h"

namespace FTS {
namespace {

bool IsResult(const std::filesystem::path& path) {
  const std::string folder = path.parent_path().filename().string();
  return folder.find("-FMEAOutput") != std::string::npos ||
         folder.find("Results") != std::string::npos;
}

}  // namespace

std::vector<std::string> FuzzSeeds(const std::string& ending) {
  std::vector<std::string> paths;
  for (const std::string& folder : {ExamplesFolder(), TestsFolder() + "/models"}) {
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
      // What runs have left beside the examples is no seed.
      if (entry.path().extension() == ending && !IsResult(entry.path())) {
        paths.push_back(entry.path().string());
      }
    }
  }
  std::sort(paths.begin(), paths.end());
  std::vector<std::string> texts;
  for (const std::string& path : paths) texts.push_back(ReadWholeFile(path).value());
  return texts;
}

}  // namespace FTS
