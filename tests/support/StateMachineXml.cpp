#include "support/StateMachineXml.h"

#include <set>
#include <sstream>

#include "support/ModelXml.h"

namespace FTS {

namespace {

bool IsComponent(const std::string& cause) { return cause.find('-') == std::string::npos; }

std::string CauseText(const std::string& cause) {
  return IsComponent(cause) ? "Omission-" + cause + ".out" : cause;
}

SketchedState ReadState(const std::string& text) {
  SketchedState state;
  std::istringstream words(text);
  words >> state.name;
  while (!state.name.empty() && (state.name[0] == '*' || state.name[0] == '!')) {
    (state.name[0] == '*' ? state.isStart : state.isFail) = true;
    state.name.erase(0, 1);
  }
  for (std::string word; words >> word;) {
    const std::size_t arrow = word.find('>');
    state.transitions.push_back({word.substr(0, arrow), word.substr(arrow + 1)});
  }
  return state;
}

}  // namespace

std::vector<SketchedState> ReadStateSketch(const std::string& sketch) {
  std::vector<SketchedState> states;
  std::istringstream texts(sketch);
  for (std::string text; std::getline(texts, text, ';');) states.push_back(ReadState(text));
  return states;
}

std::string ToText(const std::vector<SketchedState>& states) {
  std::string text;
  for (const SketchedState& state : states) {
    text += std::string(text.empty() ? "" : "; ") + (state.isStart ? "*" : "") +
            (state.isFail ? "!" : "") + state.name;
    for (const auto& transition : state.transitions) {
      text += " " + transition.cause + ">" + transition.destination;
    }
  }
  return text;
}

std::string XmlStateMachine(const std::vector<SketchedState>& states) {
  std::string text;
  for (const SketchedState& state : states) {
    std::string transitions;
    for (const auto& transition : state.transitions) {
      transitions += Xml("Transition", Xml("Name", "by " + transition.cause) +
                                           Xml("Cause", CauseText(transition.cause)) +
                                           Xml("DestinationState", transition.destination));
    }
    text += Xml("State", Xml("Name", state.name) + (state.isStart ? Xml("StartState", "") : "") +
                             (state.isFail ? Xml("FailState", "loss of " + state.name) : "") +
                             Xml("Transitions", transitions));
  }
  return Xml("StateMachine", text);
}

std::string XmlStateMachine(const std::string& sketch) {
  return XmlStateMachine(ReadStateSketch(sketch));
}

std::string XmlStateModel(const std::string& sketch) {
  const auto states = ReadStateSketch(sketch);
  std::set<std::string> names;
  for (const SketchedState& state : states) {
    for (const auto& transition : state.transitions) {
      if (IsComponent(transition.cause)) names.insert(transition.cause);
    }
  }
  std::vector<std::string> components;
  for (const std::string& name : names) {
    components.push_back(
        XmlLeaf(name, {"out"}, {{XmlEvent("dead")}, {XmlDeviation("Omission-out", "dead")}}));
  }
  return XmlModel({}, XmlSystem(components, {}) + XmlStateMachine(states));
}

}  // namespace FTS
