#include "app/Options.h"

#include <charconv>
#include <string_view>
#include <utility>
#include <variant>

#include "app/ProgramPath.h"
#include "model/NumberText.h"
#include "platform/Clock.h"
#include "platform/FileSystem.h"

namespace FTS {
namespace {

constexpr std::size_t ShortestOption = 5;

/// Options that are copied into `Config` only after a configuration file has replaced it.
struct HeldOptions : RunOptions {
  std::string configPath;
  std::optional<std::int32_t> forcedContraction;
  bool openFaultTreePlus = true;
  bool openBrowser = true;
  std::int32_t populationSize = 100;
  std::optional<std::int32_t> childPopulationSize;  // Without it that of the parents.
  std::int32_t populationSizing = PopulationSizing::Variable;
  std::int32_t outputInterval = 0;
  double mutationRate = 0.05;
  double crossoverRate = 0.9;
  bool useRBD = false;
  bool pureElitist = false;
  bool strictBoundaries = false;
  bool allowInfeasibleResults = false;
  bool forceRestart = false;
  bool includeArchive = true;
  std::string previousStateFileName;
  std::string timingDataFileName;
  std::int32_t encodingType = EncodingType::Tree;
  std::int64_t randomSeed = 0;  // 0 stands for the calendar time.
};

bool IsTrue(std::string_view value) { return value == "true"; }

void SetOutputDir(Config& config, std::string_view value) {
  constexpr char Quote = '"';
  if (value.size() >= 2 && value.front() == Quote && value.back() == Quote) {
    value = value.substr(1, value.size() - 2);
  }
  config.outputDir = value.empty() ? "default" : value;
}

void SetOutputTypes(Config& config, std::string_view value) { config.SetOutputTypes(value); }

void SetQuantAnalysisTypes(Config& config, std::string_view value) {
  config.SetQuantAnalysisTypes(value);
}

void SetCostHeuristic(Config& config, std::string_view value) { config.SetCostHeuristic(value); }

void SetOptimise(Config& config, std::string_view value) {
  config.optimise = IsTrue(value);
  // A search prints figures of its own; a later "runSilent=false" brings the rest back.
  config.runSilent = config.optimise;
}

void SetDisplayOutput(HeldOptions& held, std::string_view value) {
  if (value != "false") return;
  held.openFaultTreePlus = false;
  held.openBrowser = false;
}

// Any first character is taken for the sign, and only the one that switches off has an effect.
void SetOpenFaultTreePlus(HeldOptions& held, std::string_view sign) {
  if (sign == "-") held.openFaultTreePlus = false;
}

void SetOpenBrowser(HeldOptions& held, std::string_view sign) {
  if (sign == "-") held.openBrowser = false;
}

void SetContract(HeldOptions& held, std::string_view value) {
  held.forcedContraction = IsTrue(value) ? Contraction::Contract : Contraction::None;
}

// Here every sign but a plus switches off.
void SetSignedContract(HeldOptions& held, std::string_view sign) {
  held.forcedContraction = sign == "+" ? Contraction::Contract : Contraction::None;
}

void SetPopulationSize(HeldOptions& held, std::string_view value) {
  if (value == "variable") {
    held.populationSizing = PopulationSizing::Variable;
  } else if (value == "unlimited") {
    held.populationSizing = PopulationSizing::Unlimited;
  } else {
    held.populationSizing = PopulationSizing::Fixed;
    held.populationSize = ParseInteger(value);
  }
}

void SetEncodingType(HeldOptions& held, std::string_view value) {
  constexpr std::pair<std::string_view, std::int32_t> Words[] = {
      {"TREE", EncodingType::Tree},
      {"FIXED", EncodingType::Fixed},
      {"FIXED_ASIL", EncodingType::FixedAsil},
      {"TREE_ASIL", EncodingType::TreeAsil},
  };
  for (const auto& [word, type] : Words) {
    if (word == value) held.encodingType = type;
  }
}

void SetRandomSeed(HeldOptions& held, std::string_view value) {
  std::uint32_t seed = 0;
  const char* const end = value.data() + value.size();
  const auto read = std::from_chars(value.data(), end, seed);
  const bool whole = read.ec == std::errc() && read.ptr == end;
  held.randomSeed = whole ? seed : 0;
  if (whole) {
    held.refusedRandomSeed.reset();
  } else {
    held.refusedRandomSeed = value;
  }
}

struct Reversed {
  bool Config::*field;  // Becomes true for "false".
};

struct Raised {
  bool Config::*field;  // Becomes true whatever follows the spelling.
};

/// Where the value of an option goes: into `Config` at once, or into what is held back.
using Setting = std::variant<bool Config::*, std::int32_t Config::*, double Config::*, Reversed,
                             Raised, void (*)(Config&, std::string_view), bool HeldOptions::*,
                             std::int32_t HeldOptions::*, double HeldOptions::*,
                             std::string HeldOptions::*, std::optional<std::int32_t> HeldOptions::*,
                             void (*)(HeldOptions&, std::string_view)>;

struct OptionRow {
  std::string_view spelling;
  Setting setting;
  // Above 0: the spelling follows a first character of any kind, which is the value, and the
  // argument has exactly so many characters. At 0 the argument begins with the spelling.
  std::size_t length = 0;
};

// The first row that matches wins.
constexpr OptionRow OptionRows[] = {
    {"config=", &HeldOptions::configPath},
    {"maxcutset=", &Config::maxCutSetSize},
    {"maxcutsets=", &Config::maxCutSetSize},
    {"maxCutSet=", &Config::maxCutSetSize},
    {"maxCutSetSize=", &Config::maxCutSetSize},
    {"useBDDs=", &Config::useBDDs},
    {"idevns=", &Config::removeHangingNodes},
    {"outputContractedTrees=", &Config::outputContractedTrees},
    {"useXMLParser=", &HeldOptions::useXmlParser},
    {"warnings=", Reversed{&Config::suppressWarnings}},
    {"circles=", &Config::removeCircleNodes},
    {"mutualexclusion=", &Config::mutualExclusion},
    {"modularise=", &Config::modularise},
    {"outputdir=", SetOutputDir},
    {"GAType=", &HeldOptions::gaType},
    {"outputtype=", SetOutputTypes},
    {"quantanalysis=", &Config::quantitativeAnalysis},
    {"quantanalysistype=", SetQuantAnalysisTypes},
    {"skipAnalysis=", &Config::skipAnalysis},
    {"analyse=", Reversed{&Config::skipAnalysis}},
    {"decomposeSILs", Raised{&Config::decomposeSILs}},
    {"decomposeDALs", Raised{&Config::decomposeDALs}},
    {"displayOutput=", SetDisplayOutput},
    {"isomode", Raised{&Config::isoMode}},
    {"openftp", SetOpenFaultTreePlus, 8},
    // Never matches, for the word alone is longer. That is on purpose: "-openbrowser" stands in
    // scripts that have always had their results opened; "displayOutput=false" prevents it.
    {"openbrowser", SetOpenBrowser, 8},
    {"contract=", SetContract},
    {"contract", SetSignedContract, 9},
    {"runSilent=", &Config::runSilent},
    {"optimise=", SetOptimise},
    {"generateFMEAXML=", &Config::generateFMEAXML},
    {"populationSize=", SetPopulationSize},
    {"childPopulationSize=", &HeldOptions::childPopulationSize},
    {"outputInterval=", &HeldOptions::outputInterval},
    {"mutationRate=", &HeldOptions::mutationRate},
    {"useRBD=", &HeldOptions::useRBD},
    {"previousStateFileName=", &HeldOptions::previousStateFileName},
    {"timingDataFileName=", &HeldOptions::timingDataFileName},
    {"pureElitist=", &HeldOptions::pureElitist},
    {"crossoverRate=", &HeldOptions::crossoverRate},
    {"strictBoundaries=", &HeldOptions::strictBoundaries},
    {"allowInfeasibleResults=", &HeldOptions::allowInfeasibleResults},
    {"forceRestart=", &HeldOptions::forceRestart},
    {"includeArchive=", &HeldOptions::includeArchive},
    {"randomSeed=", SetRandomSeed},
    {"numberOfRepeatRuns=", &Config::numberOfRepeatRuns},
    {"maxGenerations=", &HeldOptions::maxGenerations},
    {"countNormalEvents=", &Config::countNormalEvents},
    {"encodingType=", SetEncodingType},
    {"tabuRepetitionLimit=", &Config::tabuRepetitionLimit},
    {"tabuUpdatePdesFrequency=", &Config::tabuUpdatePdesFrequency},
    {"tabuUpdatePascFrequency=", &Config::tabuUpdatePascFrequency},
    {"tabuPdesLimit=", &Config::tabuPdesLimit},
    {"tabuPascLimit=", &Config::tabuPascLimit},
    {"tabuNumOutputSolutions=", &Config::tabuNumOutputSolutions},
    {"asilCostHeuristic=", SetCostHeuristic},
    {"dalCostHeuristic=", SetCostHeuristic},  // The same field on purpose: the last one wins.
};
static_assert(std::size(OptionRows) == 57);

bool Matches(const OptionRow& row, std::string_view argument) {
  if (row.length == 0) return argument.starts_with(row.spelling);
  return argument.size() == row.length && argument.substr(1) == row.spelling;
}

void Store(std::string_view value, bool& field) { field = IsTrue(value); }
void Store(std::string_view value, std::int32_t& field) { field = ParseInteger(value); }
void Store(std::string_view value, double& field) { field = ParseDoubleLikeAtof(value); }
void Store(std::string_view value, std::string& field) { field = value; }
void Store(std::string_view value, std::optional<std::int32_t>& field) {
  field = ParseInteger(value);
}

/// Carries one value to where a row says that it goes.
class Storing {
 public:
  Storing(std::string_view initValue, HeldOptions& initHeld) : value(initValue), held(initHeld) {}

  template <typename Field>
  void operator()(Field Config::*field) const {
    Store(value, Config::Instance().*field);
  }
  template <typename Field>
  void operator()(Field HeldOptions::*field) const {
    Store(value, held.*field);
  }
  void operator()(Reversed reversed) const {
    Config::Instance().*reversed.field = value == "false";
  }
  void operator()(Raised raised) const { Config::Instance().*raised.field = true; }
  void operator()(void (*set)(Config&, std::string_view)) const { set(Config::Instance(), value); }
  void operator()(void (*set)(HeldOptions&, std::string_view)) const { set(held, value); }

 private:
  std::string_view value;
  HeldOptions& held;
};

void ScanOption(const std::string& argument, HeldOptions& held) {
  if (argument.size() < ShortestOption) return;
  for (const OptionRow& row : OptionRows) {
    if (!Matches(row, argument)) continue;
    const std::string_view text = argument;
    const std::string_view value =
        row.length == 0 ? text.substr(row.spelling.size()) : text.substr(0, 1);
    std::visit(Storing(value, held), row.setting);
    held.recognised += argument + "\n";
    return;
  }
}

void ScanFirstArgument(const std::string& argument, HeldOptions& held) {
  constexpr std::pair<std::string_view, ProgramMode> Words[] = {
      {"testMode", ProgramMode::RegressionTest},
      {"testmode", ProgramMode::RegressionTest},
      {"testPruningMode", ProgramMode::PruningTest},
      {"testpruningmode", ProgramMode::PruningTest},
  };
  for (const auto& [word, mode] : Words) {
    if (word != argument) continue;
    held.mode = mode;
    Config::Instance().SetOutputTypes("XML");
    Config::Instance().testMode = true;
    return;
  }
  held.modelFile = argument;
}

HeldOptions ScanArguments(const std::vector<std::string>& arguments) {
  HeldOptions held;
  if (arguments.size() > 1) ScanFirstArgument(arguments[1], held);
  for (std::size_t i = 2; i < arguments.size(); ++i) ScanOption(arguments[i], held);
  return held;
}

void KeepProgramPath(const std::vector<std::string>& arguments) {
  std::string path = ProgramPathFromSystem();
  if (path.empty() && !arguments.empty()) path = arguments[0];
  SetProgramPath(std::move(path));
}

void ApplyHeldOptions(const HeldOptions& held) {
  Config& config = Config::Instance();
  if (!held.openFaultTreePlus) config.openResultTypes &= ~OutputType::Ftp;
  if (!held.openBrowser) config.openResultTypes &= ~OutputType::Xml;
  if (held.forcedContraction) config.contraction = *held.forcedContraction;
  config.mutationRate = held.mutationRate;
  config.crossoverRate = held.crossoverRate;
  config.outputInterval = held.outputInterval;
  config.pureElitist = held.pureElitist;
  config.openBrowser = held.openBrowser;
  config.previousStateFileName = held.previousStateFileName;
  config.timingDataFileName = held.timingDataFileName;
  config.populationSize = held.populationSize;
  config.childPopulationSize = held.childPopulationSize.value_or(held.populationSize);
  config.populationSizing = held.populationSizing;
  config.strictBoundaries = held.strictBoundaries;
  config.allowInfeasibleResults = held.allowInfeasibleResults;
  config.forceRestart = held.forceRestart;
  config.encodingType = held.encodingType;
  config.includeArchive = held.includeArchive;
  config.useRBD = held.useRBD;
  config.randomSeed = held.randomSeed != 0 ? held.randomSeed : Clock::CalendarSeconds();
  if (config.quantAnalysisTypes <= 0) config.quantAnalysisTypes = QuantAnalysisType::EsaryProschan;
}

}  // namespace

RunOptions SettleOptions(const std::vector<std::string>& arguments, ConfigLoader loadConfig) {
  HeldOptions held = ScanArguments(arguments);
  KeepProgramPath(arguments);
  if (!held.configPath.empty()) loadConfig(held.configPath);
  ApplyHeldOptions(held);
  return std::move(static_cast<RunOptions&>(held));
}

}  // namespace FTS
