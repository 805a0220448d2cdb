#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace FTS {

/// Values of `Config::contraction`.
namespace Contraction {
constexpr std::int32_t None = 0;
constexpr std::int32_t Contract = 1;
constexpr std::int32_t Subcontract = 2;
}  // namespace Contraction

/// Bits of `Config::outputTypes`; `Xml`, `Ftp` and `Html` are also those of
/// `Config::openResultTypes`.
namespace OutputType {
constexpr std::int32_t Xml = 0x1;
constexpr std::int32_t Ftp = 0x2;
constexpr std::int32_t Excel = 0x4;
constexpr std::int32_t OpenPsa = 0x8;
constexpr std::int32_t Iso = 0x10;
constexpr std::int32_t Problog = 0x20;
constexpr std::int32_t Epm = 0x40;
constexpr std::int32_t Results = 0x80;
constexpr std::int32_t Html = 0x100;
}  // namespace OutputType

/// Bits of `Config::quantAnalysisTypes`.
namespace QuantAnalysisType {
constexpr std::int32_t EsaryProschan = 0x1;
constexpr std::int32_t CrossProduct = 0x2;
constexpr std::int32_t Rare = 0x4;
}  // namespace QuantAnalysisType

/// Values of `Config::populationSizing`.
namespace PopulationSizing {
constexpr std::int32_t Fixed = 0;
constexpr std::int32_t Unlimited = 1;
constexpr std::int32_t Variable = 2;
}  // namespace PopulationSizing

/// Values of `Config::encodingType`.
namespace EncodingType {
constexpr std::int32_t Tree = 0;
constexpr std::int32_t Fixed = 1;
constexpr std::int32_t FixedAsil = 2;
constexpr std::int32_t TreeAsil = 3;
}  // namespace EncodingType

/// Every setting of a run, in one plain record for the whole process. The command line fills it, a
/// configuration file replaces it, everybody else only reads it. Nobody keeps a reference to it
/// across `LoadOrCreate` or `Release`: both end the life of the object.
class Config {
 public:
  /// The record of this process, made with the defaults below at first use.
  static Config& Instance();

  /// Destroys the record; the next `Instance` starts from the defaults again.
  static void Release();

  /// Replaces the record, whatever it holds, by the settings of the file at `path` and defaults for
  /// the rest. A file that isn't there is created with default settings, and with the folders it
  /// lies in. Returns the new record. Throws VtnException when the file can be neither read nor
  /// created.
  static Config& LoadOrCreate(const std::string& path);

  /// The defaults below.
  Config();

  Config(const Config&) = delete;
  Config& operator=(const Config&) = delete;

  /// Adds the result formats named in `words` (separated by commas, blanks ignored, case matters)
  /// to `outputTypes`, and those that can be shown to `openResultTypes`. Unknown words add nothing.
  void SetOutputTypes(std::string_view words);

  /// Adds the quantification methods named in `words` to `quantAnalysisTypes`, read likewise.
  void SetQuantAnalysisTypes(std::string_view words);

  /// Stores costs separated by commas in `asilCostHeuristic`, where blanks separate them.
  void SetCostHeuristic(std::string_view costs);

  std::int32_t contraction = Contraction::Contract;
  bool countNormalEvents = true;   // Normal events take part in cut sets.
  bool ignoreCrazyLoops = false;   // From configuration files only.
  bool isoMode = false;            // Diagnostic coverage of ISO 26262.
  std::int32_t maxCutSetSize = 0;  // Events per cut set; 0 is no limit.
  bool modularise = true;
  bool mutualExclusion = false;      // Events of one component exclude each other.
  std::int32_t openResultTypes = 0;  // Bits of OutputType: shown when the run ends.
  bool optimise = false;             // Search designs instead of analysing one.
  bool outputContractedTrees = true;
  std::string outputDir = "default";  // "default" is the folder of the model file.
  std::int32_t outputTypes = 0;       // Bits of OutputType.
  bool quantitativeAnalysis = true;
  std::int32_t quantAnalysisTypes = 0;  // Bits of QuantAnalysisType.
  bool removeCircleNodes = false;
  bool removeHangingNodes = true;  // Unconnected input deviations.
  bool runSilent = false;          // No progress text, and the log keeps nothing.
  bool decomposeSILs = false;
  bool decomposeDALs = false;
  bool suppressWarnings = false;  // Warnings are counted at the end of the run, not listed.
  bool testMode = false;
  bool useBDDs = false;
  bool generateFMEAXML = true;
  bool skipAnalysis = false;

  // For the external decomposition tools.
  std::string asilCostHeuristic;  // Five costs, "0 10 20 30 40" at first.
  std::int32_t tabuRepetitionLimit = 1000;
  double tabuUpdatePdesFrequency = 3.0;
  double tabuUpdatePascFrequency = 4.0;
  double tabuPdesLimit = 1.0;
  double tabuPascLimit = 0.4;
  std::int32_t tabuNumOutputSolutions = 50;

  // For the optimiser.
  std::int32_t populationSize = 100;
  std::int32_t childPopulationSize = 100;
  double mutationRate = 0.0;  // The command line always stores a rate of its own.
  double crossoverRate = 0.9;
  std::int32_t outputInterval = 0;      // Generations.
  std::int32_t maxGenerations = 1056;   // Set anew when an optimisation starts.
  std::int32_t numberOfRepeatRuns = 1;  // Searches that follow one another.
  bool allowInfeasibleResults = false;
  bool strictBoundaries = false;
  std::int32_t populationSizing = PopulationSizing::Variable;
  bool forceRestart = false;  // Ignores `previousStateFileName`.
  bool includeArchive = true;
  bool useRBD = false;
  bool pureElitist = false;
  bool openBrowser = true;
  std::int64_t randomSeed;            // Seed of each search; the calendar time in seconds.
  std::string previousStateFileName;  // Saved search to go on from; empty for none.
  std::string timingDataFileName;
  std::int32_t encodingType = EncodingType::Tree;

 private:
  static std::unique_ptr<Config> ReadOrCreate(const std::string& path);  // app/ConfigFile.cpp
};

}  // namespace FTS
