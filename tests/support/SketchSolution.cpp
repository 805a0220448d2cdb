#include "support/SketchSolution.h"

#include <algorithm>
#include <utility>

namespace FTS {
namespace {

bool IsGate(const SketchLogic& logic) {
  return logic.kind == SketchLogic::Kind::OR || logic.kind == SketchLogic::Kind::AND;
}

/// Applies `leaf` to the leaves of an expression and joins what it gives.
template <typename LeafSolver>
FormulaPtr Fold(const SketchLogic& logic, const LeafSolver& leaf) {
  if (!IsGate(logic)) return leaf(logic);
  std::vector<FormulaPtr> operands;
  for (const SketchLogic& operand : logic.operands) operands.push_back(Fold(operand, leaf));
  return logic.kind == SketchLogic::Kind::OR ? AnyOf(operands) : AllOf(operands);
}

std::string DeviationName(const SketchDeviation& deviation) {
  return deviation.failureClass + "-" + deviation.port;
}

const SketchDeviation* FindDeviation(const std::vector<SketchDeviation>& deviations,
                                     const std::string& name) {
  const auto found = std::find_if(
      deviations.begin(), deviations.end(),
      [&](const SketchDeviation& deviation) { return DeviationName(deviation) == name; });
  return found == deviations.end() ? nullptr : &*found;
}

/// The word that decides what a placeholder does: the line's default for "DEFAULT".
std::string OperatorOf(const std::string& word, const SketchLine& line) {
  if (word == "DEFAULT") return line.defaultOperator;
  if (word == "ANDPORT") return "AND";
  return word == "ORPORT" ? "OR" : "OUTPUT";
}

bool IsOutput(const SketchConnection& connection, const SketchLine& line) {
  return connection.expression.kind == SketchLogic::Kind::PLACEHOLDER &&
         OperatorOf(connection.expression.text, line) == "OUTPUT";
}

bool SamePort(const SketchConnection& a, const SketchConnection& b) {
  return a.component == b.component && a.port == b.port;
}

}  // namespace

SketchSolution::SketchSolution(const ModelSketch& initSketch) : sketch(initSketch) {}

FormulaPtr SketchSolution::Once(const std::string& key, const std::function<FormulaPtr()>& solve) {
  const auto known = solved.find(key);
  if (known != solved.end()) return known->second;
  if (!open.insert(key).second) throw SketchLoop(key);
  FormulaPtr result = solve();
  open.erase(key);
  solved[key] = result;
  return result;
}

FormulaPtr SketchSolution::Leaving(int component, const std::string& port,
                                   const std::string& failureClass) {
  return Seen(component, port, failureClass, false);
}

FormulaPtr SketchSolution::Arriving(int component, const std::string& port,
                                    const std::string& failureClass) {
  return Lines(sketch.components[component].system, component, port, failureClass);
}

FormulaPtr SketchSolution::Exported(int component, const std::string& name) {
  const SketchDeviation* deviation = FindDeviation(sketch.components[component].exported, name);
  if (!deviation) return nullptr;
  return Once("exported " + name + " " + std::to_string(component),
              [&] { return Deviation(component, *deviation); });
}

FormulaPtr SketchSolution::Seen(int component, const std::string& port,
                                const std::string& failureClass, bool fromInside) {
  const SketchComponent& seen = sketch.components[component];
  if (seen.block == SketchBlock::PROPAGATOR) {
    if (seen.ports.size() != 2) return nullptr;
    const std::string& other = seen.ports[seen.ports[0] == port ? 1 : 0];
    return Arriving(component, other, failureClass);
  }
  std::vector<FormulaPtr> parts;
  if (seen.block != SketchBlock::REFINED) parts.push_back(Annotated(component, port, failureClass));
  if (seen.block != SketchBlock::NOT_REFINED) {
    parts.push_back(fromInside ? Arriving(component, port, failureClass)
                               : Lines(seen.inside, component, port, failureClass));
  }
  return AnyOf(parts);
}

FormulaPtr SketchSolution::Annotated(int component, const std::string& port,
                                     const std::string& failureClass) {
  const std::string name = failureClass + "-" + port;
  const SketchDeviation* deviation = FindDeviation(sketch.components[component].deviations, name);
  if (!deviation) return nullptr;
  return Once("deviation " + name + " " + std::to_string(component),
              [&] { return Deviation(component, *deviation); });
}

FormulaPtr SketchSolution::Deviation(int component, const SketchDeviation& deviation) {
  std::vector<FormulaPtr> causes;
  for (const SketchLogic& cause : deviation.causes) {
    causes.push_back(
        Fold(cause, [&](const SketchLogic& leaf) { return Noted(LocalLogic(leaf, component)); }));
  }
  return AnyOf(causes);
}

FormulaPtr SketchSolution::Noted(FormulaPtr operand) {
  metHole |= operand == nullptr;
  return operand;
}

FormulaPtr SketchSolution::LocalLogic(const SketchLogic& logic, int component) {
  const SketchComponent& own = sketch.components[component];
  switch (logic.kind) {
    case SketchLogic::Kind::EVENT:
      for (const std::string& cause : own.commonCauses) {
        if (PotentialName(cause) == logic.text) return EventFormula(cause);
      }
      return EventFormula(sketch.FullName(component) + "." + logic.text);
    case SketchLogic::Kind::INPUT:
      return Arriving(component, logic.port, logic.text);
    case SketchLogic::Kind::FROM_ALLOCATION:
      return Exported(own.allocation, logic.text);
    case SketchLogic::Kind::EXPORT_GOTO:
      return Exported(logic.component, logic.text);
    case SketchLogic::Kind::LOCAL_GOTO:
    case SketchLogic::Kind::GLOBAL_GOTO:
    case SketchLogic::Kind::LABEL_GOTO:
      return Leaving(logic.component, logic.port, logic.text);
    case SketchLogic::Kind::OR:
    case SketchLogic::Kind::AND:
    case SketchLogic::Kind::PORT:
    case SketchLogic::Kind::PLACEHOLDER:
    case SketchLogic::Kind::TOP:
      break;
  }
  throw std::logic_error("no leaf of a deviation's logic");
}

FormulaPtr SketchSolution::Lines(int system, int component, const std::string& port,
                                 const std::string& failureClass) {
  if (system < 0) return nullptr;
  const Rule rule = FindRule(system, component, port, failureClass);
  if (!rule.connection) return nullptr;
  const std::string key = "line " + failureClass + "-" + port + " " + std::to_string(component) +
                          " " + std::to_string(system);
  return Once(key, [&] {
    return Fold(rule.connection->expression,
                [&](const SketchLogic& leaf) { return LineLogic(leaf, rule); });
  });
}

SketchSolution::Rule SketchSolution::FindRule(int system, int component, const std::string& port,
                                              const std::string& failureClass) const {
  Rule general;
  Rule special;
  for (const SketchLine& line : sketch.systems[system].lines) {
    for (const SketchConnection& connection : line.connections) {
      if (connection.component != component || connection.port != port) continue;
      const Rule rule{&line, &connection, system, failureClass};
      if (connection.failureClass == failureClass) special = rule;
      if (connection.failureClass.empty() && !general.connection) general = rule;
    }
  }
  return special.connection ? special : general;
}

FormulaPtr SketchSolution::LineLogic(const SketchLogic& logic, const Rule& rule) {
  if (logic.kind == SketchLogic::Kind::PLACEHOLDER) return Peers(logic.text, rule);
  const std::string& failureClass = logic.text.empty() ? rule.failureClass : logic.text;
  const bool fromInside = logic.component == sketch.systems[rule.system].owner;
  return Seen(logic.component, logic.port, failureClass, fromInside);
}

FormulaPtr SketchSolution::Peers(const std::string& word, const Rule& rule) {
  const std::string wanted = OperatorOf(word, *rule.line);
  if (wanted == "OUTPUT") return nullptr;
  std::map<std::pair<int, std::string>, bool> isOutput;  // The other ports that take part.
  for (const SketchConnection& peer : rule.line->connections) {
    const bool applies = peer.failureClass.empty() || peer.failureClass == rule.failureClass;
    if (!applies || SamePort(peer, *rule.connection)) continue;
    isOutput[{peer.component, peer.port}] |= IsOutput(peer, *rule.line);
  }
  const bool outputsOnly =
      rule.line->directed &&
      std::any_of(isOutput.begin(), isOutput.end(), [](const auto& peer) { return peer.second; });
  const int owner = sketch.systems[rule.system].owner;
  std::vector<FormulaPtr> operands;
  for (const auto& [end, output] : isOutput) {
    if (outputsOnly && !output) continue;
    operands.push_back(Seen(end.first, end.second, rule.failureClass, end.first == owner));
  }
  return wanted == "AND" ? AllOf(operands) : AnyOf(operands);
}

FormulaPtr SketchSolution::HazardLogic(const SketchLogic& logic) {
  return Fold(logic, [&](const SketchLogic& leaf) {
    return Noted(Leaving(leaf.component, leaf.port, leaf.text));
  });
}

bool SketchSolution::HasInnerConnection(int component, const std::string& port,
                                        const std::string& failureClass) const {
  const int inside = sketch.components[component].inside;
  return inside >= 0 && FindRule(inside, component, port, failureClass).connection;
}

std::vector<std::pair<std::string, FormulaPtr>> SketchSolution::Trees() {
  std::vector<std::pair<std::string, FormulaPtr>> trees;
  for (const SketchHazard& hazard : sketch.hazards) {
    std::vector<FormulaPtr> causes;
    for (const SketchLogic& cause : hazard.causes) causes.push_back(HazardLogic(cause));
    trees.emplace_back(hazard.name, AnyOf(causes));
  }
  std::sort(trees.begin(), trees.end(),
            [](const auto& a, const auto& b) { return a.first < b.first; });
  if (!trees.empty()) return trees;

  std::map<std::string, int> tops;
  for (const SketchPerspective& perspective : sketch.perspectives) {
    tops[perspective.name] = perspective.system;
  }
  for (const auto& entry : tops) AddOutports(entry.second, trees);
  return trees;
}

void SketchSolution::AddOutports(int system,
                                 std::vector<std::pair<std::string, FormulaPtr>>& trees) {
  std::map<std::string, int> byName;
  for (const int component : sketch.systems[system].components) {
    byName[sketch.components[component].name] = component;
  }
  for (const auto& entry : byName) {
    const SketchComponent& component = sketch.components[entry.second];
    std::map<std::string, const SketchDeviation*> deviations;
    for (const SketchDeviation& deviation : component.deviations) {
      if (deviation.systemOutport) deviations[DeviationName(deviation)] = &deviation;
    }
    for (const auto& [name, deviation] : deviations) {
      trees.emplace_back(
          deviation->failureClass + "-" + sketch.FullName(entry.second) + "." + deviation->port,
          Leaving(entry.second, deviation->port, deviation->failureClass));
    }
    if (component.inside >= 0) AddOutports(component.inside, trees);
  }
}

}  // namespace FTS
