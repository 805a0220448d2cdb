// Times how model documents are read.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>

#include "benchmarks/GeneratedModels.h"
#include "platform/XmlDocument.h"

namespace FTS {
namespace {

void LoadDocument(benchmark::State& state) {
  const std::string text = ChainModelText(static_cast<int>(state.range(0)));
  for ([[maybe_unused]] auto round : state) {
    const XmlDocument document = XmlDocument::LoadMemory(text);
    benchmark::DoNotOptimize(document.FirstChild("Model").Row());
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(text.size()) * state.iterations());
}
BENCHMARK(LoadDocument)->Arg(100)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace FTS
