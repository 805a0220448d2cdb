#include "support/StateMachineOracle.h"

#include <algorithm>

#include "support/Dice.h"

namespace FTS {

namespace {

using Causes = std::set<std::string>;

/// Walks on from one state, and notes what the way has taken each time it ends in the failed one.
class WayFinder {
 public:
  WayFinder(const std::vector<SketchedState>& states, std::string initFailed)
      : failed(std::move(initFailed)) {
    for (const SketchedState& state : states) byName[state.name] = &state;
  }

  void Walk(const std::string& name, const Causes& taken) {
    if (name == failed) {
      found.insert(taken);
      return;
    }
    if (!onWay.insert(name).second) return;
    for (const SketchedTransition& transition : byName.at(name)->transitions) {
      Causes more = taken;
      more.insert(transition.cause);
      Walk(transition.destination, more);
    }
    onWay.erase(name);
  }

  const std::set<Causes>& Found() const { return found; }

 private:
  std::string failed;
  std::map<std::string, const SketchedState*> byName;
  Causes onWay;
  std::set<Causes> found;
};

}  // namespace

std::vector<SketchedState> RandomMachine(std::uint64_t seed) {
  Dice dice(seed);
  const int count = dice.Between(2, 7);
  std::vector<SketchedState> states(static_cast<std::size_t>(count));
  std::vector<std::string> names;
  for (int i = 0; i < count; ++i) names.push_back("s" + std::to_string(i));
  for (std::size_t i = 0; i < states.size(); ++i) states[i].name = names[i];
  const auto any = [&] { return static_cast<std::size_t>(dice.Roll(count)); };
  states[any()].isStart = true;
  const int failures = dice.Between(1, 2);
  for (int i = 0; i < failures; ++i) states[any()].isFail = true;
  const int causes = dice.Between(2, 8);
  const int transitions = dice.Between(count - 1, 3 * count);
  for (int i = 0; i < transitions; ++i) {
    const std::string cause(1, static_cast<char>('A' + dice.Roll(causes)));
    states[any()].transitions.push_back({cause, dice.Pick(names)});
  }
  return states;
}

std::set<std::set<std::string>> MinimalWays(const std::vector<SketchedState>& states,
                                            const std::string& failed) {
  WayFinder finder(states, failed);
  for (const SketchedState& state : states) {
    if (state.isStart) finder.Walk(state.name, {});
  }
  const std::set<Causes>& all = finder.Found();
  std::set<Causes> minimal;
  for (const Causes& one : all) {
    const bool covered = std::any_of(all.begin(), all.end(), [&](const Causes& other) {
      return other != one && std::includes(one.begin(), one.end(), other.begin(), other.end());
    });
    if (!covered) minimal.insert(one);
  }
  return minimal;
}

}  // namespace FTS
