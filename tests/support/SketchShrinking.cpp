#include "support/SketchShrinking.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <set>
#include <string>
#include <utility>

#include "support/SketchSolution.h"

namespace FTS {
namespace {

bool Holds(const std::vector<std::string>& list, const std::string& text) {
  return std::find(list.begin(), list.end(), text) != list.end();
}

const SketchDeviation* Find(const std::vector<SketchDeviation>& deviations,
                            const std::string& failureClass, const std::string& port) {
  for (const SketchDeviation& deviation : deviations) {
    if (deviation.failureClass == failureClass && deviation.port == port) return &deviation;
  }
  return nullptr;
}

/// Checks the references of a sketch.
class ReferenceCheck {
 public:
  explicit ReferenceCheck(const ModelSketch& initSketch) : sketch(initSketch), solution(sketch) {
    const std::vector<int> found = sketch.PresentComponents();
    present.insert(found.begin(), found.end());
  }

  bool Passes() const {
    return HazardsPass() &&
           std::all_of(present.begin(), present.end(),
                       [&](int component) { return ComponentPasses(component); }) &&
           std::all_of(sketch.perspectives.begin(), sketch.perspectives.end(),
                       [&](const SketchPerspective& p) { return SystemPasses(p.system); });
  }

 private:
  static bool AllLeaves(const SketchLogic& logic,
                        const std::function<bool(const SketchLogic&)>& passes) {
    const bool gate = logic.kind == SketchLogic::Kind::OR || logic.kind == SketchLogic::Kind::AND;
    if (!gate) return passes(logic);
    return !logic.operands.empty() &&
           std::all_of(logic.operands.begin(), logic.operands.end(),
                       [&](const SketchLogic& operand) { return AllLeaves(operand, passes); });
  }

  bool IsPort(int component, const std::string& port) const {
    return present.contains(component) && Holds(sketch.components[component].ports, port);
  }

  bool HazardsPass() const {
    for (const SketchHazard& hazard : sketch.hazards) {
      if (hazard.causes.empty()) return false;
      for (const SketchLogic& cause : hazard.causes) {
        if (!AllLeaves(cause, [&](const SketchLogic& leaf) { return IsTop(leaf); })) return false;
      }
    }
    return true;
  }

  bool IsTop(const SketchLogic& leaf) const {
    if (!IsPort(leaf.component, leaf.port)) return false;
    const SketchComponent& component = sketch.components[leaf.component];
    const SketchDeviation* deviation = Find(component.deviations, leaf.text, leaf.port);
    const bool annotated = component.block != SketchBlock::REFINED && deviation != nullptr &&
                           !deviation->causes.empty();
    const bool inner = component.block != SketchBlock::NOT_REFINED &&
                       solution.HasInnerConnection(leaf.component, leaf.port, leaf.text);
    return component.block != SketchBlock::PROPAGATOR && (annotated || inner);
  }

  bool ComponentPasses(int index) const {
    const SketchComponent& component = sketch.components[index];
    if (component.allocation >= 0 && !present.contains(component.allocation)) return false;
    if (!CausesPass(component, sketch.perspectives[sketch.PerspectiveOf(index)])) return false;
    for (const auto* deviations : {&component.deviations, &component.exported}) {
      for (const SketchDeviation& deviation : *deviations) {
        const bool hidden = component.block == SketchBlock::REFINED || deviation.causes.empty();
        if (deviation.systemOutport && hidden) return false;
        for (const SketchLogic& cause : deviation.causes) {
          const auto passes = [&](const SketchLogic& leaf) { return LocalPasses(leaf, index); };
          if (!AllLeaves(cause, passes)) return false;
        }
      }
    }
    return true;
  }

  static bool CausesPass(const SketchComponent& component, const SketchPerspective& perspective) {
    return std::all_of(
        component.commonCauses.begin(), component.commonCauses.end(), [&](const std::string& name) {
          return std::any_of(perspective.commonCauses.begin(), perspective.commonCauses.end(),
                             [&](const SketchEvent& cause) { return cause.name == name; });
        });
  }

  bool LocalPasses(const SketchLogic& leaf, int index) const {
    const SketchComponent& component = sketch.components[index];
    switch (leaf.kind) {
      case SketchLogic::Kind::EVENT:
        return IsEvent(component, leaf.text);
      case SketchLogic::Kind::INPUT:
        return Holds(component.ports, leaf.port);
      case SketchLogic::Kind::FROM_ALLOCATION:
        return component.allocation >= 0;
      case SketchLogic::Kind::LABEL_GOTO: {
        if (!IsPort(leaf.component, leaf.port)) return false;
        const auto& deviations = sketch.components[leaf.component].deviations;
        const SketchDeviation* target = Find(deviations, leaf.text, leaf.port);
        return target != nullptr && !target->label.empty();
      }
      case SketchLogic::Kind::EXPORT_GOTO: {
        if (!present.contains(leaf.component)) return false;
        const std::size_t split = leaf.text.find('-');
        return Find(sketch.components[leaf.component].exported, leaf.text.substr(0, split),
                    leaf.text.substr(split + 1)) != nullptr;
      }
      default:
        return IsPort(leaf.component, leaf.port);
    }
  }

  static bool IsEvent(const SketchComponent& component, const std::string& name) {
    return std::any_of(component.events.begin(), component.events.end(),
                       [&](const SketchEvent& event) { return event.name == name; }) ||
           std::any_of(component.commonCauses.begin(), component.commonCauses.end(),
                       [&](const std::string& cause) { return PotentialName(cause) == name; });
  }

  bool SystemPasses(int index) const {
    const SketchSystem& system = sketch.systems[index];
    const auto reachable = [&](int component, const std::string& port) {
      return IsPort(component, port) &&
             (component == system.owner ||
              std::find(system.components.begin(), system.components.end(), component) !=
                  system.components.end());
    };
    for (const SketchLine& line : system.lines) {
      for (const SketchConnection& connection : line.connections) {
        const bool known = AllLeaves(connection.expression, [&](const SketchLogic& leaf) {
          return leaf.kind == SketchLogic::Kind::PLACEHOLDER ||
                 reachable(leaf.component, leaf.port);
        });
        if (!known || !reachable(connection.component, connection.port)) return false;
      }
    }
    return std::all_of(system.components.begin(), system.components.end(), [&](int component) {
      const int inside = sketch.components[component].inside;
      return inside < 0 || SystemPasses(inside);
    });
  }

  const ModelSketch& sketch;
  SketchSolution solution;
  std::set<int> present;
};

/// The expressions that come about by putting an operand in a gate's place or by leaving one out.
std::vector<SketchLogic> Simplified(const SketchLogic& logic) {
  std::vector<SketchLogic> variants = logic.operands;
  for (std::size_t i = 0; i < logic.operands.size(); ++i) {
    if (logic.operands.size() > 2) {
      SketchLogic fewer = logic;
      fewer.operands.erase(fewer.operands.begin() + static_cast<std::ptrdiff_t>(i));
      variants.push_back(fewer);
    }
    for (SketchLogic& simpler : Simplified(logic.operands[i])) {
      SketchLogic changed = logic;
      changed.operands[i] = std::move(simpler);
      variants.push_back(changed);
    }
  }
  return variants;
}

bool Mentions(const SketchLogic& logic, int component) {
  return logic.component == component ||
         std::any_of(logic.operands.begin(), logic.operands.end(),
                     [&](const SketchLogic& operand) { return Mentions(operand, component); });
}

/// Empties the components and systems that no list holds any more, so that copies cost little.
void ClearAbsent(ModelSketch& sketch) {
  const std::vector<int> present = sketch.PresentComponents();
  for (std::size_t i = 0; i < sketch.components.size(); ++i) {
    if (std::find(present.begin(), present.end(), static_cast<int>(i)) != present.end()) continue;
    const int inside = sketch.components[i].inside;
    if (inside >= 0) sketch.systems[inside] = {};
    sketch.components[i] = {};
  }
}

/// Makes the smaller sketches until one is accepted.
class Shrinking {
 public:
  using Accept = std::function<bool(ModelSketch&)>;

  Shrinking(const ModelSketch& initSketch, const Accept& initAccept)
      : sketch(initSketch), accept(initAccept) {}

  bool Run() {
    EachOf([](ModelSketch & s) -> auto& { return s.hazards; });
    DropComponents();
    for (const int component : sketch.PresentComponents()) DropFrom(component);
    for (std::size_t i = 0; i < sketch.systems.size(); ++i) DropLines(i);
    SimplifyLogic();
    for (std::size_t i = 0; i < sketch.perspectives.size(); ++i) {
      EachOf([i](ModelSketch & s) -> auto& { return s.perspectives[i].commonCauses; });
    }
    return accepted;
  }

 private:
  template <typename ListOf>
  void EachOf(const ListOf& listOf) {
    if (accepted) return;
    ModelSketch original = sketch;
    const std::size_t count = listOf(original).size();
    for (std::size_t i = 0; i < count && !accepted; ++i) {
      ModelSketch smaller = sketch;
      auto& list = listOf(smaller);
      list.erase(list.begin() + static_cast<std::ptrdiff_t>(i));
      Offer(smaller);
    }
  }

  void Offer(ModelSketch& smaller) {
    if (!accepted) accepted = accept(smaller);
  }

  void DropComponents() {
    for (const int component : sketch.PresentComponents()) {
      if (accepted) return;
      ModelSketch smaller = sketch;
      SketchSystem& system =
          smaller.systems[static_cast<std::size_t>(smaller.components[component].system)];
      std::erase(system.components, component);
      for (SketchLine& line : system.lines) {
        std::erase_if(line.connections, [&](const SketchConnection& connection) {
          return connection.component == component || Mentions(connection.expression, component);
        });
      }
      std::erase_if(system.lines, [](const SketchLine& line) { return line.connections.empty(); });
      ClearAbsent(smaller);
      Offer(smaller);
    }
  }

  void DropFrom(int component) {
    const auto at = [component](ModelSketch& s) -> SketchComponent& {
      return s.components[component];
    };
    EachOf([&](ModelSketch & s) -> auto& { return at(s).deviations; });
    EachOf([&](ModelSketch & s) -> auto& { return at(s).exported; });
    EachOf([&](ModelSketch & s) -> auto& { return at(s).events; });
    EachOf([&](ModelSketch & s) -> auto& { return at(s).commonCauses; });
    for (std::size_t i = 0; i < sketch.components[component].deviations.size(); ++i) {
      EachOf([&](ModelSketch & s) -> auto& { return at(s).deviations[i].causes; });
    }
    const SketchComponent& own = sketch.components[component];
    if (own.allocation >= 0) Change([&](ModelSketch& s) { at(s).allocation = -1; });
    if (own.alternative) Change([&](ModelSketch& s) { at(s).alternative = false; });
    if (own.block == SketchBlock::BOTH) {
      Change([&](ModelSketch& s) { at(s).block = SketchBlock::REFINED; });
      Change([&](ModelSketch& s) {
        at(s).block = SketchBlock::NOT_REFINED;
        at(s).inside = -1;
        ClearAbsent(s);
      });
    }
  }

  void DropLines(std::size_t system) {
    EachOf([system](ModelSketch & s) -> auto& { return s.systems[system].lines; });
    for (std::size_t i = 0; i < sketch.systems[system].lines.size(); ++i) {
      EachOf([&](ModelSketch & s) -> auto& { return s.systems[system].lines[i].connections; });
    }
  }

  void Change(const std::function<void(ModelSketch&)>& change) {
    if (accepted) return;
    ModelSketch smaller = sketch;
    change(smaller);
    Offer(smaller);
  }

  static void Collect(std::vector<SketchLogic*>& all, std::vector<SketchDeviation>& deviations) {
    for (SketchDeviation& deviation : deviations) {
      for (SketchLogic& cause : deviation.causes) all.push_back(&cause);
    }
  }

  static std::vector<SketchLogic*> AllLogic(ModelSketch& s) {
    std::vector<SketchLogic*> all;
    for (SketchHazard& hazard : s.hazards) {
      for (SketchLogic& cause : hazard.causes) all.push_back(&cause);
    }
    for (SketchComponent& component : s.components) {
      Collect(all, component.deviations);
      Collect(all, component.exported);
    }
    for (SketchSystem& system : s.systems) {
      for (SketchLine& line : system.lines) {
        for (SketchConnection& end : line.connections) all.push_back(&end.expression);
      }
    }
    return all;
  }

  void SimplifyLogic() {
    if (accepted) return;
    ModelSketch original = sketch;
    const std::vector<SketchLogic*> all = AllLogic(original);
    for (std::size_t i = 0; i < all.size(); ++i) {
      for (const SketchLogic& simpler : Simplified(*all[i])) {
        if (accepted) return;
        ModelSketch smaller = sketch;
        *AllLogic(smaller)[i] = simpler;
        Offer(smaller);
      }
    }
  }

  const ModelSketch& sketch;
  const Accept& accept;
  bool accepted = false;
};

}  // namespace

bool RefersWell(const ModelSketch& sketch) { return ReferenceCheck(sketch).Passes(); }

bool TrySmallerSketches(const ModelSketch& sketch,
                        const std::function<bool(ModelSketch&)>& accept) {
  return Shrinking(sketch, accept).Run();
}

}  // namespace FTS
