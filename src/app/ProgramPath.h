#pragma once

#include <string>

namespace FTS {

/// The path of this program, kept so that tools that stand beside it are found. Empty until the
/// run has stored it.
const std::string& ProgramPath();

/// Stores the path of this program.
void SetProgramPath(std::string path);

/// The part of `ProgramPath` up to and with its last separator ('/' or '\'), empty without one.
std::string ProgramFolder();

}  // namespace FTS
