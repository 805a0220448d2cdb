#pragma once

#include <initializer_list>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "faulttree/FaultTreeNode.h"
#include "model/Enumerations.h"
#include "model/Forward.h"
#include "model/Model.h"

namespace FTS {

/// What a line of a test model is made of.
struct LineText {
  std::map<std::string, std::string> connections;  ///< From key to logic.
  bool directed = false;
  LineOperator defaultOperator = LineOperator::OR;
  std::string name = "line";
  std::string inside;  ///< The component in which the line lies; empty for the top.
};

/// Makes models as the reader of model files does, in a line or two. Components are named by their
/// path ("A.Inner" lies in the current implementation of "A"), all of them in the perspective named
/// last, which is "DEFAULT" at first. Logic is written in operators before their operands,
///
///     OR(stuck, AND(Omission-in, NOT(warm)), GOTO(Omission-DEFAULT::C.out), ALLOC(Loss-power))
///
/// where leaves are those of the model file: events and input deviations in outputs and exports;
/// ports, with or without class, and placeholders in lines; deviations in hazards. A component that
/// is named first gets an implementation "impl" of type NOT_REFINED, one that gets an inside
/// becomes REFINED.
class ModelBuilder {
 public:
  ModelBuilder();
  ~ModelBuilder();
  ModelBuilder(ModelBuilder&&) noexcept;

  ModelBuilder& Perspective(const std::string& name);
  ModelBuilder& Component(const std::string& path, std::initializer_list<const char*> ports);
  /// Starts a further implementation of the component; what is added to it from now on goes there.
  /// The first one stays the one in use when the model is built.
  ModelBuilder& Alternative(const std::string& path, const std::string& name);
  ModelBuilder& Block(const std::string& path, HBlockType type);
  ModelBuilder& Event(const std::string& path, const std::string& name);
  ModelBuilder& NormalEvent(const std::string& path, const std::string& name);
  ModelBuilder& CommonCause(const std::string& name);
  /// A potential common cause failure; not activated when `actual` is empty.
  ModelBuilder& PotentialCommonCause(const std::string& path, const std::string& name,
                                     const std::string& actual);
  /// `deviation` is class, "-", port. No logic when the text is empty.
  ModelBuilder& Output(const std::string& path, const std::string& deviation,
                       const std::string& logic, const std::string& state = DefaultState);
  ModelBuilder& SystemOutput(const std::string& path, const std::string& deviation,
                             const std::string& logic);
  ModelBuilder& Label(const std::string& label, const std::string& path,
                      const std::string& deviation);
  ModelBuilder& Export(const std::string& path, const std::string& deviation,
                       const std::string& logic);
  ModelBuilder& Allocate(const std::string& path, const std::string& host);
  ModelBuilder& Configurable(const std::string& path);
  ModelBuilder& Line(const LineText& text);
  /// A directed line between two ports, for all classes.
  ModelBuilder& Line(const std::string& from, const std::string& to);
  ModelBuilder& Hazard(const std::string& logic);
  ModelBuilder& Hazard(const std::string& name, const std::string& logic);
  ModelBuilder& FailureClass(const std::string& name);

  std::unique_ptr<Model> Build();

 private:
  FTS::Component& At(const std::string& path) const;
  FTS::Implementation& Filled(const std::string& path);
  std::shared_ptr<FTS::Subsystem> Inside(const std::string& path);
  std::shared_ptr<OutputDeviation> AddOutput(const std::string& path, const std::string& deviation,
                                             const std::string& logic, const std::string& state);

  std::unique_ptr<Model> model;
  std::shared_ptr<FTS::Perspective> perspective;
  std::map<std::string, std::shared_ptr<FTS::Component>> byPath;  // Of the perspective named last.
  std::map<FTS::Component*, std::shared_ptr<FTS::Implementation>> alternatives;  // Being filled.
};

/// Components in a row, each with the ports "in" and "out" and the output deviation "Omission-out"
/// of its events and of "Omission-in", joined by directed lines for all classes.
class ChainBuilder {
 public:
  explicit ChainBuilder(std::vector<std::string> initNames);

  ChainBuilder& Event(const std::string& component, const std::string& name);
  ChainBuilder& Hazard(const std::string& logic);
  std::unique_ptr<Model> Build();

 private:
  std::vector<std::string> names;
  std::map<std::string, std::vector<std::string>> events;
  std::vector<std::string> hazards;
};

ChainBuilder Chain(std::vector<std::string> names);

/// The model's trees: each name, "=" and the shape of the root (TreeBuilder.h), one a line.
std::string TreesText(const Model& model);

}  // namespace FTS
