// Configuration files: lines "Key = value;" that replace all settings of the process.

#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <variant>

#include "app/Config.h"
#include "app/DiagnosticLog.h"
#include "model/NumberText.h"
#include "model/VtnException.h"
#include "platform/FileSystem.h"

namespace FTS {
namespace {

constexpr std::string_view DefaultText =
    "// Maximum number of events in a cut set - larger ones are removed\n"
    "Max cut set size = 4;\n"
    "\n"
    "// The output type - can be a combination of XML (for XML web page output),\n"
    "// FTP (Fault Tree +, if available), EXCEL (MS Excel) or NONE.\n"
    "// Separate values with commas.\n"
    "Output type = XML, FTP;\n"
    "\n"
    "// Where to output (default means the same dir as the .vtn model files)\n"
    "// Note that this output directory must contain the FTOutput folder for XML output\n"
    "Output dir = default;\n"
    "\n"
    "// Are circles removed from the fault trees?\n"
    "Remove circle nodes = false;\n"
    "\n"
    "// Are unconnected nodes removed?\n"
    "Remove hanging nodes = true;\n"
    "\n"
    "// Should the warning messages be suppressed?\n"
    "Suppress warnings = false;\n"
    "\n"
    "// Should events from the same component be mutually exclusive?\n"
    "Mutual exclusion = false;\n";

void SetContraction(Config& config, std::string_view value) {
  constexpr std::pair<std::string_view, std::int32_t> Words[] = {
      {"contract", Contraction::Contract},
      {"subcontract", Contraction::Subcontract},
      {"none", Contraction::None},
  };
  for (const auto& [word, contraction] : Words) {
    if (word == value) config.contraction = contraction;
  }
}

void SetOutputTypes(Config& config, std::string_view value) { config.SetOutputTypes(value); }

void SetOutputDir(Config& config, std::string_view value) {
  config.outputDir = value.empty() ? "default" : value;
}

using Setting =
    std::variant<bool Config::*, std::int32_t Config::*, void (*)(Config&, std::string_view)>;

struct ConfigRow {
  std::string_view key;
  Setting setting;
};

// Blanks in keys and values mean nothing, so the keys stand here without.
constexpr ConfigRow ConfigRows[] = {
    {"Maxcutsetsize", &Config::maxCutSetSize},
    {"Removecirclenodes", &Config::removeCircleNodes},
    {"Removehangingnodes", &Config::removeHangingNodes},
    {"Mutualexclusion", &Config::mutualExclusion},
    {"Runsilent", &Config::runSilent},
    {"Suppresswarnings", &Config::suppressWarnings},
    {"Modularise", &Config::modularise},
    {"Ignorecrazyloops", &Config::ignoreCrazyLoops},
    {"Contraction", SetContraction},
    {"Outputtype", SetOutputTypes},
    {"Outputdir", SetOutputDir},
    {"Quantitativeanalysis", &Config::quantitativeAnalysis},
};

/// Carries one value to where a row says that it goes.
struct Storing {
  Config& config;
  std::string_view value;

  void operator()(bool Config::*field) const { config.*field = value == "true"; }
  void operator()(std::int32_t Config::*field) const { config.*field = ParseInteger(value); }
  void operator()(void (*set)(Config&, std::string_view)) const { set(config, value); }
};

std::string WithoutBlanks(std::string_view text) {
  std::string bare(text);
  std::erase_if(bare, [](char c) { return c == ' ' || c == ';'; });
  return bare;
}

void ReadLine(std::string_view line, Config& config) {
  if (line.starts_with("//")) return;
  const std::size_t equals = line.find('=');
  if (equals == std::string_view::npos) return;
  const std::string key = WithoutBlanks(line.substr(0, equals));
  const std::string value = WithoutBlanks(line.substr(equals + 1));
  for (const ConfigRow& row : ConfigRows) {
    if (row.key == key) std::visit(Storing{config, value}, row.setting);
  }
}

/// The settings that a file holds; null if it can't be read.
std::unique_ptr<Config> ReadConfig(const std::string& path) {
  const std::optional<std::string> text = ReadWholeFile(path);
  if (!text) return nullptr;
  auto config = std::make_unique<Config>();
  std::string_view rest = *text;
  while (!rest.empty()) {
    const std::size_t end = rest.find('\n');
    std::string_view line = rest.substr(0, end);
    if (line.ends_with('\r')) line.remove_suffix(1);
    ReadLine(line, *config);
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
  }
  return config;
}

void MakeFolderOf(const std::string& path) {
  const PathParts parts = SplitPath(path);
  const std::string folder = parts.drive + parts.directory;
  if (IsDirectory(folder)) return;
  try {
    CreateFolders(folder);
  } catch (const std::filesystem::filesystem_error&) {
    // That the file can't be created in it is what the user is told.
    return;
  }
}

/// Writes the default file. One that is there and only can't be read is left alone. Half a file is
/// taken away again: the next run would read it and know only the settings in it.
void CreateDefaultFile(const std::string& path) {
  MakeFolderOf(path);
  std::ofstream file;
  // A path that can't even be looked at (a circle of links, a name beyond what the system takes)
  // can't be created either.
  std::error_code unseen;
  const bool isFree = !std::filesystem::exists(path, unseen) && !unseen;
  if (isFree) file.open(path, std::ios::binary);
  const VtnException failure("Could not create new config file 'veltarn.cfg'!");
  if (!file.is_open()) throw failure;
  file << DefaultText;
  file.close();
  if (!file) {
    RemoveFile(path);
    throw failure;
  }
  // The standard name, whatever the file is called.
  DiagnosticLog::Instance().AddWarning(
      "No config file present - creating new file 'veltarn.cfg' with default values.");
}

}  // namespace

std::unique_ptr<Config> Config::ReadOrCreate(const std::string& path) {
  if (auto config = ReadConfig(path)) return config;
  const std::optional<std::string> absolute = AbsolutePath(path);
  if (!absolute) throw VtnException("Invalid file name: " + path);
  CreateDefaultFile(*absolute);
  if (auto config = ReadConfig(*absolute)) return config;
  throw VtnException("Could not load new config file 'veltarn.cfg'!");
}

}  // namespace FTS
