#include "output/ResultsFolder.h"

#include "model/Model.h"
#include "platform/FileSystem.h"

namespace FTS {

std::string MakeResultsFolder(const Model& model, const std::string& suffix) {
  const std::string base = model.OutputDirectory();
  CreateFolders(base);
  const std::string folder = JoinPath(base, model.GetFileStem() + suffix);
  CreateFolders(folder);
  return folder;
}

}  // namespace FTS
