#include "model/StateMachine.h"

#include <utility>

#include "model/Deviation.h"

namespace FTS {

namespace {

using Copies = std::map<std::string, std::shared_ptr<State>>;

std::shared_ptr<State> CopyState(const State& source,
                                 const std::shared_ptr<StateMachine>& machine) {
  auto copy = std::make_shared<State>(source.name, machine);
  copy->isFail = source.isFail;
  copy->failName = source.failName;
  copy->isStart = source.isStart;
  for (const auto& transition : source.transitions) {
    copy->transitions.push_back(std::make_shared<Transition>(transition->name, transition->cause,
                                                             transition->destinationName, copy));
  }
  return copy;
}

/// The copy of a state: that of the same name when the machine holds the state, else a new one, for
/// a state whose name another has taken over.
std::shared_ptr<State> CopyOf(const State& source, const StateMachine& original,
                              const std::shared_ptr<StateMachine>& copy) {
  const auto held = original.states.find(source.name);
  const bool current = held != original.states.end() && held->second.get() == &source;
  return current ? copy->states.at(source.name) : CopyState(source, copy);
}

}  // namespace

Transition::Transition(std::string initName, std::string initCause, std::string initDestinationName,
                       const std::shared_ptr<State>& initOwner)
    : cause(std::move(initCause)),
      destinationName(std::move(initDestinationName)),
      name(std::move(initName)),
      owner(initOwner) {}

State::State(std::string initName, const std::shared_ptr<StateMachine>& initMachine)
    : name(std::move(initName)), machine(initMachine) {}

StateMachine::StateMachine(Model* initModel) : model(initModel) {}

void StateMachine::AddState(const std::shared_ptr<State>& state) { states[state->name] = state; }

void StateMachine::Unlink() {
  for (const auto& [stateName, state] : states) {
    state->incoming.clear();
    for (const auto& transition : state->transitions) {
      transition->destination.reset();
      transition->deviation.reset();
    }
  }
}

std::shared_ptr<StateMachine> StateMachine::Clone(Model* target) const {
  auto copy = std::make_shared<StateMachine>(target);
  for (const auto& [stateName, state] : states) copy->AddState(CopyState(*state, copy));
  for (const auto& state : failStates) copy->failStates.push_back(CopyOf(*state, *this, copy));
  if (startState) copy->startState = CopyOf(*startState, *this, copy);
  return copy;
}

}  // namespace FTS
