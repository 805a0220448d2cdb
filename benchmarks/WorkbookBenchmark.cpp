// Times how a workbook of results is written, whose bytes are cut sets for the most part.

#include <benchmark/benchmark.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

#include "analysis/Prime.h"
#include "app/Config.h"
#include "input/vtnxParser.h"
#include "model/Model.h"
#include "support/ModelGenerators.h"

namespace FTS {
namespace {

/// A model, analysed, with that many events under each of two ORs and a folder for its results.
class AnalysedModel {
 public:
  explicit AnalysedModel(int events)
      : folder(std::filesystem::temp_directory_path() / "fts_workbook_benchmark") {
    Config& config = Config::Instance();
    config.runSilent = true;
    config.quantAnalysisTypes = QuantAnalysisType::EsaryProschan;
    config.outputDir = folder.string();
    std::filesystem::create_directories(folder);
    const std::string path = (folder / "m.xml").string();
    std::ofstream(path) << TwoOrs(events, events).Xml();
    model = vtnxParser(path).Parse();
    model->Synthesise();
    model->Analyse(false);
    model->BuildFMEA();
  }

  ~AnalysedModel() {
    model.reset();
    Config::Release();
    Prime::Release();  // Each model starts with the same ones.
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
  }

  AnalysedModel(const AnalysedModel&) = delete;
  AnalysedModel& operator=(const AnalysedModel&) = delete;

  Model& Get() { return *model; }

  std::uintmax_t WorkbookSize() const {
    return std::filesystem::file_size(folder / "m-FMEAOutput" / "m_Excel.xml");
  }

 private:
  std::filesystem::path folder;
  std::unique_ptr<Model> model;
};

void CutSetsInAWorkbook(benchmark::State& state) {
  AnalysedModel model(static_cast<int>(state.range(0)));
  for ([[maybe_unused]] auto round : state) model.Get().WriteExcelWorkbook();
  state.counters["cutSets"] = static_cast<double>(state.range(0) * state.range(0));
  state.SetBytesProcessed(static_cast<std::int64_t>(model.WorkbookSize()) * state.iterations());
}
BENCHMARK(CutSetsInAWorkbook)->Arg(32)->Arg(100)->Arg(317)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace FTS
