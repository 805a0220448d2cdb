#pragma once

#include <memory>
#include <string>

#include "model/Forward.h"
#include "platform/DynamicLibrary.h"

namespace FTS {

// FaultTree+ is a tool of another maker. It comes with a closed library that writes its projects,
// found beside the tool and loaded when a project is asked for.

/// The library, or null when the tool is not installed. A registry that knows the tool in part only
/// is told in warnings.
std::unique_ptr<DynamicLibrary> LoadFaultTreePlus();

/// Writes the trees into a project in the folder of results, and the table of short names beside
/// it. Returns the project's path; an empty one, with a warning, when there is none. The records
/// are kept in `Model::faultTreePlusIds`. Throws std::filesystem::filesystem_error when the folder
/// cannot be made.
std::string ExportFaultTreePlus(Model& model, const DynamicLibrary& library);

/// Writes "FaultTreePlusLookup.csv", which tells what the short names in the project stand for: all
/// nodes of the trees by id. Throws likewise.
void WriteFaultTreePlusLookup(const Model& model);

/// The folder with the programs of the latest version of the tool; empty, with a warning, when the
/// registry does not tell. Needs a registry.
std::string GetFaultTreePlusDirectory();

/// Opens the project in the tool, or warns.
void OpenFaultTreePlus(const std::string& projectPath, const DynamicLibrary& library);

}  // namespace FTS
