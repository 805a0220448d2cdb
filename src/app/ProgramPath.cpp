#include "app/ProgramPath.h"

#include <utility>

namespace FTS {
namespace {

std::string& Holder() {
  static std::string path;
  return path;
}

}  // namespace

const std::string& ProgramPath() { return Holder(); }

void SetProgramPath(std::string path) { Holder() = std::move(path); }

std::string ProgramFolder() {
  const std::size_t separator = Holder().find_last_of("/\\");
  return separator == std::string::npos ? std::string() : Holder().substr(0, separator + 1);
}

}  // namespace FTS
