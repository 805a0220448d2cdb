#include "support/FuzzSeeds.h"

#include <algorithm>
#include <filesystem>

#include "platform/FileSystem.h"
#include "support/TestPaths.h"

namespace FTS {

std::vector<std::string> FuzzSeeds(const std::string& ending) {
  std::vector<std::string> paths;
  for (const std::string& folder : {ExamplesFolder(), TestsFolder() + "/models"}) {
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
      if (entry.path().extension() == ending) paths.push_back(entry.path().string());
    }
  }
  std::sort(paths.begin(), paths.end());
  std::vector<std::string> texts;
  for (const std::string& path : paths) texts.push_back(ReadWholeFile(path).value());
  return texts;
}

}  // namespace FTS
