#pragma once

#include <string>

namespace FTS {

// Files of a search are written whole or not at all: a run may be ended at any moment.

/// Replaces the file; a failure is told on the error stream, and the run goes on.
void WriteResultFile(const std::string& path, const std::string& text);

/// The same with a script that holds the text in a variable: a page that is opened from the disk
/// may read a script beside it, but no document.
void WriteScript(const std::string& path, const std::string& variable, const std::string& text);

}  // namespace FTS
