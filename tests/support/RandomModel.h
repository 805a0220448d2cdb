#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "support/FailureOracle.h"
#include "support/ModelSketch.h"

namespace FTS {

struct RandomModelOptions {
  /// Leaves ports without lines, deviations without logic, allocations without an exported
  /// deviation and lines with nothing at the other end. Without it every operand of an output
  /// deviation's logic leads to an event at least, though single ends of a line may be empty.
  bool unconnected = false;

  /// The most events that one tree may mention.
  int mostEvents = 12;
};

/// A system model made up from a seed, with the answers: refined and propagating components, up to
/// three levels of systems, one or two perspectives with allocations, common causes, several
/// failure classes, lines of all kinds, gotos, labels, hazards or system outports. No deviation
/// depends on itself, and there is no NOT. Every event has a fixed unavailability.
///
/// What the models mean is told in SketchSolution.h and FailureOracle.h.
///
///   for (std::uint64_t seed = 1; seed <= 500; ++seed) {
///     const RandomModel model(seed);
///     ... read model.Xml(), synthesise, analyse ...
///     EXPECT_EQ(found, model.MinimalCutSets(tree)) << model.Describe();
///   }
class RandomModel {
 public:
  explicit RandomModel(std::uint64_t seed, const RandomModelOptions& initOptions = {});

  /// The model as the text of a model file.
  std::string Xml() const;

  /// The names of the trees, in the order in which synthesis makes them.
  const std::vector<std::string>& Trees() const { return names; }

  /// The minimal cut sets of a tree, by events' full names: the component's full name with its
  /// perspective, "." and the event's name; a common cause by its own name. Throws
  /// std::out_of_range for a tree that the model lacks.
  const CutSets& MinimalCutSets(const std::string& tree) const;

  /// Esary and Proschan's figure for a tree.
  double Unavailability(const std::string& tree) const;

  /// The fixed figures of all events, by full name.
  const EventFigures& Events() const { return events; }

  const ModelSketch& Sketch() const { return sketch; }

  /// Seed, trees with their cut sets, and the text: what a failed test prints.
  std::string Describe() const;

  using Test = std::function<bool(const RandomModel&)>;

  /// The first model that comes about by leaving out one thing of this one and that passes; none if
  /// no such model does.
  std::optional<RandomModel> FindSmaller(const Test& passes) const;

 private:
  RandomModel(ModelSketch initSketch, std::uint64_t initSeed,
              const RandomModelOptions& initOptions);

  /// Solves the sketch; false if it is of no use: a loop, too many events, no tree, a hazard over
  /// nothing.
  bool Solve();

  std::uint64_t seed;
  RandomModelOptions options;
  ModelSketch sketch;
  std::vector<std::string> names;
  std::map<std::string, CutSets> cutSets;
  EventFigures events;
};

/// The smallest model that still fails, found by leaving out one thing after the other for as long
/// as `stillFails` says so.
RandomModel Shrink(RandomModel model, const RandomModel::Test& stillFails);

}  // namespace FTS
