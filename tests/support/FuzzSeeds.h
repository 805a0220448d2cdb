#pragma once

#include <string>
#include <vector>

namespace FTS {

/// The files with that ending (".vtn", ".cfg") under examples/ and tests/models/, in the order of
/// their paths: what robustness tests damage. A file that damage once broke the program with
/// belongs to tests/models/seeds/.
std::vector<std::string> FuzzSeeds(const std::string& ending);

}  // namespace FTS
