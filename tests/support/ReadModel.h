#pragma once

#include <memory>
#include <string>

#include "input/vtnxParser.h"
#include "model/Model.h"
#include "support/TemporaryFolder.h"

namespace FTS {

/// Reads a model document given as text. Fails with the parser's exceptions.
inline std::unique_ptr<Model> ReadModelText(const std::string& xml) {
  const TemporaryFolder folder;
  return vtnxParser(folder.Write("model.xml", xml)).Parse();
}

}  // namespace FTS
