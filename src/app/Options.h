#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "app/Config.h"

namespace FTS {

/// What the first argument asks the program to do.
enum class ProgramMode { Normal, RegressionTest, PruningTest };

/// The part of the command line that is not kept in `Config`.
struct RunOptions {
  ProgramMode mode = ProgramMode::Normal;
  std::string modelFile;                         // Empty when there is none, as in the test modes.
  std::string recognised;                        // The options that meant something, a line each.
  bool useXmlParser = false;                     // Read the model as XML whatever its extension.
  std::string gaType = "CoitGA";                 // Exactly this selects the CoitGA search.
  std::optional<std::int32_t> maxGenerations;    // Goes before the limit of the model.
  std::optional<std::string> refusedRandomSeed;  // What `randomSeed=` names and is no seed.
};

/// Replaces the settings of the process by those of a file.
using ConfigLoader = Config& (*)(const std::string& path);

/// Settles `Config` and the program's path from the command line, whose first element is the
/// program. An option is never refused: what is unknown or malformed changes nothing and is not
/// reported here; a search tells a seed that is none, lest it seems to be repeatable. Throws
/// VtnException when `config=` names a file that can't be used.
///
/// Options come in two kinds. Some are written into `Config` at once, and are lost when `config=`
/// then replaces it, wherever it stands on the line; others are held back and outlast it. Scripts
/// of our users rely on which is which.
RunOptions SettleOptions(const std::vector<std::string>& arguments,
                         ConfigLoader loadConfig = Config::LoadOrCreate);

}  // namespace FTS
