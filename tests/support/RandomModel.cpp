#include "support/RandomModel.h"

#include <set>
#include <stdexcept>
#include <utility>

#include "support/RandomSketch.h"
#include "support/SketchShrinking.h"
#include "support/SketchSolution.h"
#include "support/SketchText.h"

namespace FTS {
namespace {

constexpr std::uint64_t MostAttempts = 10000;

EventFigures FiguresOf(const ModelSketch& sketch) {
  EventFigures figures;
  for (const SketchPerspective& perspective : sketch.perspectives) {
    for (const SketchEvent& cause : perspective.commonCauses) {
      figures[cause.name] = cause.unavailability;
    }
  }
  for (const int component : sketch.PresentComponents()) {
    for (const SketchEvent& event : sketch.components[component].events) {
      figures[sketch.FullName(component) + "." + event.name] = event.unavailability;
    }
  }
  return figures;
}

}  // namespace

RandomModel::RandomModel(std::uint64_t initSeed, const RandomModelOptions& initOptions)
    : seed(initSeed), options(initOptions) {
  for (std::uint64_t attempt = 0; attempt < MostAttempts; ++attempt) {
    try {
      sketch = MakeRandomSketch(seed * MostAttempts + attempt, options.unconnected);
    } catch (const SketchLoop&) {
      continue;
    }
    if (Solve()) return;
  }
  throw std::runtime_error("no usable model from seed " + std::to_string(seed));
}

RandomModel::RandomModel(ModelSketch initSketch, std::uint64_t initSeed,
                         const RandomModelOptions& initOptions)
    : seed(initSeed), options(initOptions), sketch(std::move(initSketch)) {}

bool RandomModel::Solve() {
  names.clear();
  cutSets.clear();
  sketch.name = "seed_" + std::to_string(seed);
  if (!RefersWell(sketch)) return false;
  try {
    SketchSolution solution(sketch);
    const auto trees = solution.Trees();
    if (solution.MetHole() && !options.unconnected) return false;
    for (const auto& [name, formula] : trees) {
      if (static_cast<int>(EventsOf(formula).size()) > options.mostEvents) return false;
      names.push_back(name);
      cutSets[name] = FTS::MinimalCutSets(formula);
    }
  } catch (const SketchLoop&) {
    return false;
  }
  events = FiguresOf(sketch);
  return !names.empty();
}

std::string RandomModel::Xml() const { return SketchText(sketch); }

const CutSets& RandomModel::MinimalCutSets(const std::string& tree) const {
  return cutSets.at(tree);
}

double RandomModel::Unavailability(const std::string& tree) const {
  return EsaryProschan(cutSets.at(tree), events);
}

std::string RandomModel::Describe() const {
  std::string text =
      "seed " + std::to_string(seed) + (options.unconnected ? ", with unconnected ends\n" : "\n");
  for (const std::string& name : names) {
    text += "minimal cut sets of " + name + ":\n" + ToText(cutSets.at(name));
  }
  return text + Xml();
}

std::optional<RandomModel> RandomModel::FindSmaller(const Test& passes) const {
  std::optional<RandomModel> found;
  TrySmallerSketches(sketch, [&](ModelSketch& smaller) {
    RandomModel model(std::move(smaller), seed, options);
    if (model.Solve() && passes(model)) found = std::move(model);
    return found.has_value();
  });
  return found;
}

RandomModel Shrink(RandomModel model, const RandomModel::Test& stillFails) {
  while (std::optional<RandomModel> smaller = model.FindSmaller(stillFails)) {
    model = std::move(*smaller);
  }
  return model;
}

}  // namespace FTS
