#include "support/ModelSketch.h"

#include <utility>

namespace FTS {
namespace {

void CollectComponents(const ModelSketch& sketch, int system, std::vector<int>& found) {
  for (const int component : sketch.systems[system].components) {
    found.push_back(component);
    const int inside = sketch.components[component].inside;
    if (inside >= 0) CollectComponents(sketch, inside, found);
  }
}

SketchLogic Gate(SketchLogic::Kind kind, std::vector<SketchLogic> operands) {
  SketchLogic gate;
  gate.kind = kind;
  gate.operands = std::move(operands);
  return gate;
}

SketchLogic Leaf(SketchLogic::Kind kind, const std::string& text, int component,
                 const std::string& port) {
  SketchLogic leaf;
  leaf.kind = kind;
  leaf.text = text;
  leaf.component = component;
  leaf.port = port;
  return leaf;
}

}  // namespace

int ModelSketch::AddPerspective(const std::string& perspectiveName) {
  const int index = static_cast<int>(perspectives.size());
  SketchSystem top;
  top.perspective = index;
  systems.push_back(top);
  perspectives.push_back({perspectiveName, static_cast<int>(systems.size()) - 1, {}});
  return index;
}

int ModelSketch::AddComponent(int system, const std::string& componentName,
                              std::vector<std::string> ports) {
  SketchComponent component;
  component.name = componentName;
  component.system = system;
  component.ports = std::move(ports);
  components.push_back(std::move(component));
  const int index = static_cast<int>(components.size()) - 1;
  systems[system].components.push_back(index);
  return index;
}

int ModelSketch::Refine(int component) {
  SketchSystem inner;
  inner.owner = component;
  inner.perspective = PerspectiveOf(component);
  systems.push_back(inner);
  components[component].inside = static_cast<int>(systems.size()) - 1;
  components[component].block = SketchBlock::REFINED;
  return components[component].inside;
}

std::string ModelSketch::FullName(int component) const {
  const SketchSystem& system = systems[components[component].system];
  const std::string scope = system.owner >= 0 ? FullName(system.owner) + "."
                                              : perspectives[system.perspective].name + "::";
  return scope + components[component].name;
}

int ModelSketch::PerspectiveOf(int component) const {
  return systems[components[component].system].perspective;
}

std::string ModelSketch::DefaultPerspective() const {
  std::string first = perspectives.front().name;
  for (const SketchPerspective& perspective : perspectives) {
    if (perspective.name < first) first = perspective.name;
  }
  return first;
}

std::vector<int> ModelSketch::PresentComponents() const {
  std::vector<int> found;
  for (const SketchPerspective& perspective : perspectives) {
    CollectComponents(*this, perspective.system, found);
  }
  return found;
}

std::string PotentialName(const std::string& commonCause) { return "by_" + commonCause; }

SketchLogic EventLogic(const std::string& name) {
  return Leaf(SketchLogic::Kind::EVENT, name, -1, "");
}

SketchLogic InputLogic(const std::string& failureClass, const std::string& port) {
  return Leaf(SketchLogic::Kind::INPUT, failureClass, -1, port);
}

SketchLogic PortLogic(int component, const std::string& port, const std::string& failureClass) {
  return Leaf(SketchLogic::Kind::PORT, failureClass, component, port);
}

SketchLogic TopLogic(const std::string& failureClass, int component, const std::string& port) {
  return Leaf(SketchLogic::Kind::TOP, failureClass, component, port);
}

SketchLogic Placeholder(const std::string& word) {
  return Leaf(SketchLogic::Kind::PLACEHOLDER, word, -1, "");
}

SketchLogic OrLogic(std::vector<SketchLogic> operands) {
  return Gate(SketchLogic::Kind::OR, std::move(operands));
}

SketchLogic AndLogic(std::vector<SketchLogic> operands) {
  return Gate(SketchLogic::Kind::AND, std::move(operands));
}

}  // namespace FTS
