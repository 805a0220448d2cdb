#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "faulttree/Forward.h"
#include "model/Forward.h"

namespace FTS {

/// A way from one state of the system to another, caused by an output deviation.
class Transition : public std::enable_shared_from_this<Transition> {
 public:
  Transition(std::string initName, std::string initCause, std::string initDestinationName,
             const std::shared_ptr<State>& initOwner);

  /// Finds destination and deviation, and enters this transition in the destination's `incoming`.
  /// Throws `VtnException` for a state, a port or a deviation that does not exist:
  /// faulttree/FailedStates.cpp.
  void Link(Model& model);

  std::shared_ptr<OutputDeviation> deviation;  ///< Null until linked.
  std::string cause;                           ///< Class, "-", port.
  std::shared_ptr<State> destination;          ///< Null until linked.
  std::string destinationName;
  std::string name;
  std::weak_ptr<State> owner;  ///< The state it leaves.
};

/// A state of the system.
class State : public std::enable_shared_from_this<State> {
 public:
  State(std::string initName, const std::shared_ptr<StateMachine>& initMachine);

  /// Hangs under the proxy by which transitions and causes the system comes from a start to this
  /// state. False when no way leads here that does not come back to itself. Needs linked states:
  /// faulttree/FailedStates.cpp.
  bool BuildFailLogic(Model& model, ProxyNode& proxy);

  bool isFail = false;
  std::string failName;                               ///< Labels the tree of a failed state.
  std::vector<std::shared_ptr<Transition>> incoming;  ///< Filled by linking.
  std::string name;
  std::vector<std::shared_ptr<Transition>> transitions;  ///< Those that leave, in reading order.
  bool isStart = false;
  std::weak_ptr<StateMachine> machine;
  bool visiting = false;  ///< On the path of the walk that builds a failed state's logic.
};

/// The states of a system. Every model has one; one without failed states plays no part.
class StateMachine : public std::enable_shared_from_this<StateMachine> {
 public:
  explicit StateMachine(Model* initModel);

  /// Enters the state under its name, in the place of one of the same name.
  void AddState(const std::shared_ptr<State>& state);
  /// Binds all transitions, in the order of the states' names; see `Transition::Link`. What an
  /// earlier linking has filled in goes first.
  void Link(Model& target);
  /// Takes back what linking has filled in: links lead in circles and would never be freed.
  void Unlink();
  /// An unlinked copy for another model.
  std::shared_ptr<StateMachine> Clone(Model* target) const;

  std::vector<std::shared_ptr<State>> failStates;  ///< In reading order.
  Model* model;                                    ///< Not owned.
  std::shared_ptr<State> startState;
  std::map<std::string, std::shared_ptr<State>> states;  ///< Owns the states.
};

}  // namespace FTS
