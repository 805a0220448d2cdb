#include "output/PageTemplate.h"

#include <iostream>
#include <vector>

#include "app/Config.h"
#include "app/ProgramPath.h"
#include "output/ResultFile.h"
#include "platform/FileSystem.h"
#include "platform/ZipArchive.h"

namespace FTS {

void UnpackPageTemplate(const std::string& folder) {
  if (!Config::Instance().runSilent) {
    std::cout << "Extracting FTOutput files to output folder.\n";
  }
  const std::string archive = JoinPath(ProgramFolder(), "FTOutput.zip");
  std::vector<std::string> cutShort;
  const int status = UnpackArchive(archive, folder, cutShort);
  for (const std::string& path : cutShort) ReportCutShort(path);
  if (status == ZipOk) return;
  std::cerr << "Problem opening zip file: " << archive << " (" << status << ")\n";
}

}  // namespace FTS
