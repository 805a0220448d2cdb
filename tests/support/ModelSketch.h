#pragma once

#include <memory>
#include <string>
#include <vector>

namespace FTS {

/// A failure expression of any kind, as a test made it. Components are named by their index in the
/// sketch, so that nothing has to be looked up by name.
struct SketchLogic {
  enum class Kind {
    OR,
    AND,
    EVENT,            ///< `text` is an event of the component, or PotentialName of a common cause.
    INPUT,            ///< Failure class `text` arriving at the own port `port`.
    FROM_ALLOCATION,  ///< Exported deviation `text` ("class-subject") of the host.
    LOCAL_GOTO,   ///< Class `text` leaving `port` of `component`, which is the own one or inside.
    GLOBAL_GOTO,  ///< Class `text` leaving `port` of `component`, wherever that is.
    LABEL_GOTO,   ///< The same, written as the label of the target's deviation.
    EXPORT_GOTO,  ///< Exported deviation `text` ("class-subject") of `component`.
    PORT,         ///< On a line: `port` of `component`, with class `text` or, empty, without.
    PLACEHOLDER,  ///< On a line: the word `text`.
    TOP,          ///< In a hazard: class `text` leaving `port` of `component`.
  };

  Kind kind = Kind::OR;
  std::string text;
  int component = -1;
  std::string port;
  std::vector<SketchLogic> operands;  ///< Of OR and AND.
  bool parentheses = false;           ///< Writes a gate in parentheses where none are needed.
  int spelling = 0;                   ///< Of a gate's operator: "OR", "or" or "+".
};

struct SketchEvent {
  std::string name;
  double unavailability = 0.0;
  bool normal = false;  ///< A normal event, no failure.
};

/// A deviation that leaves a port, or one that is exported: `port` is the subject then.
struct SketchDeviation {
  std::string failureClass;
  std::string port;
  std::vector<SketchLogic> causes;  ///< Their OR is the logic; empty: a deviation without logic.
  std::string label;                ///< Unique in the model, or empty.
  bool systemOutport = false;
};

enum class SketchBlock { PROPAGATOR, REFINED, NOT_REFINED, BOTH };

struct SketchComponent {
  std::string name;
  int system = -1;  ///< The system that holds it.
  std::vector<std::string> ports;
  SketchBlock block = SketchBlock::NOT_REFINED;
  std::vector<SketchEvent> events;
  std::vector<std::string> commonCauses;  ///< Names in the perspective; see PotentialName.
  std::vector<SketchDeviation> deviations;
  std::vector<SketchDeviation> exported;
  int inside = -1;           ///< The system within, of a refined component.
  int allocation = -1;       ///< The component in another perspective that this one runs on.
  bool alternative = false;  ///< Writes a second implementation, which counts for nothing.
};

struct SketchConnection {
  int component = -1;  ///< In the line's system, or the one that owns the system.
  std::string port;
  std::string failureClass;  ///< Empty: for every class.
  SketchLogic expression;
};

struct SketchLine {
  bool directed = true;
  std::string defaultOperator = "OR";  ///< "AND", "OR" or "OUTPUT".
  std::vector<SketchConnection> connections;
};

struct SketchSystem {
  int owner = -1;  ///< The component that it refines; -1 at the top of a perspective.
  int perspective = 0;
  std::vector<int> components;
  std::vector<SketchLine> lines;
};

struct SketchPerspective {
  std::string name;
  int system = -1;
  std::vector<SketchEvent> commonCauses;
};

struct SketchHazard {
  std::string name;
  std::vector<SketchLogic> causes;  ///< One is written as the hazard's logic, several as causes.
};

/// A system model as plain values, cheap to copy and to change. It can be written as a model file
/// (SketchText.h) and solved without the product (SketchSolution.h). Components and systems that no
/// list holds any more are left out of both.
struct ModelSketch {
  std::string name = "sketch";
  std::vector<SketchPerspective> perspectives;  ///< A lone "DEFAULT" is written without a frame.
  std::vector<SketchSystem> systems;
  std::vector<SketchComponent> components;
  std::vector<SketchHazard> hazards;  ///< Without any, the system outports are the trees.

  /// A perspective with an empty system; its index.
  int AddPerspective(const std::string& perspectiveName);

  /// A component in a system, with the given ports; its index.
  int AddComponent(int system, const std::string& componentName, std::vector<std::string> ports);

  /// An empty system within a component, which becomes refined; the system's index.
  int Refine(int component);

  /// The component's name with its path and its perspective's prefix.
  std::string FullName(int component) const;

  /// The perspective that a component belongs to.
  int PerspectiveOf(int component) const;

  /// The name of the perspective in which names without a prefix are looked up.
  std::string DefaultPerspective() const;

  /// The components that the systems' lists still hold, in the order of the lists.
  std::vector<int> PresentComponents() const;
};

/// What a component calls its part in a common cause.
std::string PotentialName(const std::string& commonCause);

/// Shorthands for expressions.
SketchLogic EventLogic(const std::string& name);
SketchLogic InputLogic(const std::string& failureClass, const std::string& port);
SketchLogic PortLogic(int component, const std::string& port, const std::string& failureClass = "");
SketchLogic TopLogic(const std::string& failureClass, int component, const std::string& port);
SketchLogic Placeholder(const std::string& word);
SketchLogic OrLogic(std::vector<SketchLogic> operands);
SketchLogic AndLogic(std::vector<SketchLogic> operands);

}  // namespace FTS
