#pragma once

#include <string>

namespace FTS {

/// Shows a result file to the user in the program named by the environment variable BROWSER, else
/// in the one that the desktop has for such files. Nothing happens for an empty path or without a
/// display, and a viewer that fails or does not exist is no failure of the run. The run does not
/// wait for the viewer, which may stay open; what it prints is dropped.
void OpenInViewer(const std::string& path);

}  // namespace FTS
