#include "output/PageTemplate.h"

#include <iostream>

#include "app/Config.h"
#include "app/ProgramPath.h"
#include "platform/FileSystem.h"
#include "platform/ZipArchive.h"

namespace FTS {

void UnpackPageTemplate(const std::string& folder) {
  if (!Config::Instance().runSilent) {
    std::cout << "Extracting FTOutput files to output folder.\n";
  }
  const std::string archive = JoinPath(ProgramFolder(), "FTOutput.zip");
  const int status = UnpackArchive(archive, folder);
  if (status == ZipOk) return;
  std::cerr << "Problem opening zip file: " << archive << " (" << status << ")\n";
}

}  // namespace FTS
