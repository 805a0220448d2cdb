#pragma once

#include <memory>
#include <string>

#include "model/Forward.h"

namespace FTS {

/// Whether a model file is read as XML by its extension: ".vtnx" or ".xml", exactly so.
bool IsXmlModelFile(const std::string& path);

/// Reads a model, as XML if its extension or `useXmlParser` says so, as text otherwise. The result
/// may be null. Throws VtnException, or ParseException with a line, for what cannot be read; lesser
/// faults are logged.
std::unique_ptr<Model> ReadModel(const std::string& path, bool useXmlParser);

}  // namespace FTS
