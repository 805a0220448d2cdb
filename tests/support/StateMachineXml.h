#pragma once

#include <string>
#include <vector>

namespace FTS {

/// A way out of a state of a sketched machine.
struct SketchedTransition {
  std::string cause;  ///< As in the sketch.
  std::string destination;
};

struct SketchedState {
  std::string name;
  bool isStart = false;
  bool isFail = false;
  std::vector<SketchedTransition> transitions;
};

/// A state machine in a line, states in the order of the model file:
///
///     *ok A>down B>worn; worn C>down; !down
///
/// "*" marks a start, "!" a failed state, whose text is "loss of " and its name. "A>down" is a way
/// to "down" that the deviation Omission-A.out causes; a cause with a hyphen, Value-A.hot, stands
/// for itself.
std::vector<SketchedState> ReadStateSketch(const std::string& sketch);

/// The same in the notation.
std::string ToText(const std::vector<SketchedState>& states);

/// The file's element. Transitions are named "by " and the cause as in the sketch.
std::string XmlStateMachine(const std::vector<SketchedState>& states);
std::string XmlStateMachine(const std::string& sketch);

/// A whole model: the machine, and for each cause "A" a component A whose port "out" fails with
/// Omission by the event "dead".
std::string XmlStateModel(const std::string& sketch);

}  // namespace FTS
