#include "optimisation/ResultFiles.h"

#include <iostream>

#include "output/ScriptText.h"
#include "platform/FileSystem.h"

namespace FTS {

void WriteResultFile(const std::string& path, const std::string& text) {
  if (ReplaceFile(path, text)) return;
  std::cerr << "ERROR: Could not open XML file to write: " << path << '\n';
}

void WriteScript(const std::string& path, const std::string& variable, const std::string& text) {
  WriteResultFile(path, "var " + variable + " = '" + EscapedForScript(text) + "';\n");
}

}  // namespace FTS
