#include "app/Config.h"

#include <algorithm>
#include <exception>
#include <memory>
#include <utility>

#include "app/DiagnosticLog.h"
#include "platform/Clock.h"

namespace FTS {
namespace {

struct OutputTypeWord {
  std::string_view word;
  std::int32_t outputBit;
  std::int32_t openBit;
};

constexpr OutputTypeWord OutputTypeWords[] = {
    {"XML", OutputType::Xml, OutputType::Xml},
    {"FTP", OutputType::Ftp, OutputType::Ftp},
    {"EXCEL", OutputType::Excel, 0},
    {"OPENPSA", OutputType::OpenPsa, 0},
    {"ISO", OutputType::Iso, 0},
    {"PROBLOG", OutputType::Problog, 0},
    {"EPM", OutputType::Epm, 0},
    {"RESULTS", OutputType::Results, 0},
    {"HTML", OutputType::Html, OutputType::Html},
};

struct QuantAnalysisWord {
  std::string_view word;
  std::int32_t bit;
};

constexpr QuantAnalysisWord QuantAnalysisWords[] = {
    {"EsaryProschan", QuantAnalysisType::EsaryProschan},
    {"CrossProduct", QuantAnalysisType::CrossProduct},
    {"Rare", QuantAnalysisType::Rare},
};

constexpr const char* DefaultCostHeuristic = "0 10 20 30 40";

/// Hands each piece of `words` between commas to `use`, without its blanks.
template <typename Use>
void ForEachWord(std::string_view words, Use use) {
  while (true) {
    const std::size_t end = words.find(',');
    std::string word(words.substr(0, end));
    std::erase(word, ' ');
    use(word);
    if (end == std::string_view::npos) return;
    words.remove_prefix(end + 1);
  }
}

std::unique_ptr<Config>& Holder() {
  static std::unique_ptr<Config> config;
  return config;
}

}  // namespace

Config& Config::Instance() {
  if (!Holder()) Holder() = std::make_unique<Config>();
  return *Holder();
}

void Config::Release() { Holder().reset(); }

Config& Config::LoadOrCreate(const std::string& path) {
  // First, so that the settings of the command line don't decide what of the loading is logged.
  Holder().reset();
  Holder() = ReadOrCreate(path);
  return *Holder();
}

Config::Config() : asilCostHeuristic(DefaultCostHeuristic), randomSeed(Clock::CalendarSeconds()) {}

void Config::SetOutputTypes(std::string_view words) {
  ForEachWord(words, [this](const std::string& word) {
    for (const OutputTypeWord& row : OutputTypeWords) {
      if (row.word != word) continue;
      outputTypes |= row.outputBit;
      openResultTypes |= row.openBit;
    }
  });
}

void Config::SetQuantAnalysisTypes(std::string_view words) {
  ForEachWord(words, [this](const std::string& word) {
    for (const QuantAnalysisWord& row : QuantAnalysisWords) {
      if (row.word == word) quantAnalysisTypes |= row.bit;
    }
  });
}

void Config::SetCostHeuristic(std::string_view costs) {
  try {
    std::string text(costs);
    std::replace(text.begin(), text.end(), ',', ' ');
    asilCostHeuristic = std::move(text);
  } catch (const std::exception&) {
    DiagnosticLog::Instance().AddWarning(
        "Error parsing Asil cost heuristic arguments. Using default values");
    asilCostHeuristic = DefaultCostHeuristic;
  }
}

}  // namespace FTS
