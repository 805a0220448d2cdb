#include "optimisation/TreeASILEncoding.h"

#include <algorithm>
#include <set>
#include <utility>

#include "app/Config.h"
#include "faulttree/BasicEvent.h"
#include "model/Component.h"
#include "model/Implementation.h"
#include "model/Model.h"
#include "model/Perspective.h"
#include "model/PrintLine.h"
#include "model/Subsystem.h"
#include "optimisation/Choices.h"
#include "optimisation/FixedASILEncoding.h"
#include "optimisation/Random.h"
#include "optimisation/SavedStateText.h"

namespace FTS {

namespace {

constexpr std::int32_t NoLevel = -1;

/// The encoding that it gives is what a saved one is compared with, event by event.
const SafetyAllocation WithoutLevels;

std::int32_t LevelFor(double prime, const SafetyAllocation* allocation) {
  if (!allocation) return RandomLevel();
  const auto level = allocation->find(prime);
  return level == allocation->end() ? NoLevel : level->second;
}

bool Matching(const std::vector<TreeASILEncodingNode::Pointer>& left,
              const std::vector<TreeASILEncodingNode::Pointer>& right) {
  return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                    [](const auto& one, const auto& other) { return one->Equals(*other); });
}

}  // namespace

TreeASILEncodingNode::TreeASILEncodingNode(const Model& model, const Component& component,
                                           const SafetyAllocation* allocation)
    : componentName(component.GetFullNameText()) {
  const Implementation& current = component.GetCurrentImplementation();
  for (const auto& [name, event] : current.basicEvents) {
    const auto known = model.basicEvents.find(event->prime);
    if (known == model.basicEvents.end()) continue;
    levels[event->prime] = LevelFor(event->prime, allocation);
    events[event->prime] = known->second;
  }
  if (!current.subsystem) return;
  for (const auto& [name, inner] : current.subsystem->components) {
    subNodes.push_back(std::make_unique<TreeASILEncodingNode>(model, *inner, allocation));
  }
}

TreeASILEncodingNode::TreeASILEncodingNode(std::string initComponentName)
    : componentName(std::move(initComponentName)) {}

void TreeASILEncodingNode::ReadLevels(XmlElement element) {
  const std::string name = RequiredText(RequiredChild(element, "Component"), "FullName");
  if (!IsSavedName(name, componentName)) {
    RefuseEncoding(element, name + " stands in the place of " + componentName);
  }
  const XmlElement list = RequiredChild(element, "BasicEvents");
  RequireChildren(list, events.size(), "events of " + componentName);
  std::set<double> read;
  for (XmlElement item = list.FirstChild(); item; item = item.NextSibling()) {
    const std::string eventName = RequiredText(item, "Name");
    const double prime = RequiredDouble(item, "ID");
    const auto known = events.find(prime);
    if (known == events.end() || !IsSavedName(eventName, known->second->name) ||
        !read.insert(prime).second) {
      RefuseEncoding(item, "no event " + eventName + " with the ID " + PrimeText(prime) +
                               " is left in " + componentName);
    }
    levels[prime] = ReadLevel(item, *known->second);
  }
  const XmlElement inside = RequiredChild(element, "SubNodes");
  RequireChildren(inside, subNodes.size(), "components inside " + componentName);
  XmlElement item = inside.FirstChild();
  for (const Pointer& node : subNodes) {
    node->ReadLevels(item);
    item = item.NextSibling();
  }
}

void TreeASILEncodingNode::Print(std::ostream& stream, int indent) const {
  std::string line = componentName + ":";
  for (const auto& [prime, level] : levels) line += " " + std::to_string(level);
  PrintLine(stream, indent, line);
  for (const Pointer& node : subNodes) node->Print(stream, indent + NestedIndent);
}

std::int32_t TreeASILEncodingNode::GetSize() const {
  std::int32_t size = 1;
  for (const Pointer& node : subNodes) size += node->GetSize();
  return size;
}

bool TreeASILEncodingNode::Mutate(double rate, int depth) {
  const double threshold = MutationRateAt(depth, rate);
  bool changed = false;
  for (auto& [prime, level] : levels) {
    if (static_cast<double>(RandomUniform()) >= threshold) continue;
    const std::int32_t drawn = RandomLevel();
    changed |= drawn != level;
    level = drawn;
  }
  for (const Pointer& node : subNodes) changed |= node->Mutate(rate, depth + 1);
  return changed;
}

TreeASILEncodingNode::Pointer TreeASILEncodingNode::Crossover(
    const TreeASILEncodingNode& other) const {
  auto node = std::make_unique<TreeASILEncodingNode>(componentName);
  for (const auto& [prime, level] : levels) {
    const bool own = TakeFirst();
    const auto otherLevel = other.levels.find(prime);
    // The event is the same for both, being the model's own.
    node->events[prime] = events.at(prime);
    node->levels[prime] = own ? level : otherLevel == other.levels.end() ? 0 : otherLevel->second;
  }
  const std::size_t inside = std::min(subNodes.size(), other.subNodes.size());
  for (std::size_t i = 0; i < inside; ++i) {
    node->subNodes.push_back(subNodes[i]->Crossover(*other.subNodes[i]));
  }
  return node;
}

TreeASILEncodingNode::Pointer TreeASILEncodingNode::Clone() const {
  auto copy = std::make_unique<TreeASILEncodingNode>(componentName);
  copy->levels = levels;
  copy->events = events;
  for (const Pointer& node : subNodes) copy->subNodes.push_back(node->Clone());
  return copy;
}

bool TreeASILEncodingNode::Equals(const TreeASILEncodingNode& other) const {
  return componentName == other.componentName && events == other.events && levels == other.levels &&
         Matching(subNodes, other.subNodes);
}

void TreeASILEncodingNode::Apply() const {
  for (const auto& [prime, event] : events) {
    const auto level = levels.find(prime);
    event->safetyRequirement = level == levels.end() ? 0 : level->second;
  }
  for (const Pointer& node : subNodes) node->Apply();
}

void TreeASILEncodingNode::ToXML(XmlOutputElement parent) const {
  const XmlOutputElement node = parent.Add("EncodingNode");
  const XmlOutputElement component = node.Add("Component");
  component.Add("ShortName", componentName.substr(componentName.rfind('.') + 1));
  component.Add("FullName", componentName);
  const XmlOutputElement list = node.Add("BasicEvents");
  for (const auto& [prime, event] : events) {
    const XmlOutputElement item = list.Add("BasicEvent");
    item.Add("Name", event->name);
    item.Add("ID", PrimeText(prime));
    item.Add("SafetyRequirement", std::to_string(levels.at(prime)));
  }
  const XmlOutputElement inside = node.Add("SubNodes");
  for (const Pointer& subNode : subNodes) subNode->ToXML(inside);
}

TreeASILEncoding::TreeASILEncoding(Model& initModel)
    : type(EncodingType::Tree), model(&initModel) {}

TreeASILEncoding::TreeASILEncoding(Model& initModel, const SafetyAllocation* allocation)
    : TreeASILEncoding(initModel) {
  for (const auto& [name, perspective] : model->perspectives) {
    if (!perspective->rootSubsystem) continue;
    for (const auto& [localName, component] : perspective->rootSubsystem->components) {
      nodes.push_back(std::make_unique<TreeASILEncodingNode>(*model, *component, allocation));
    }
  }
}

TreeASILEncoding::TreeASILEncoding(Model& initModel, XmlElement element)
    : TreeASILEncoding(initModel, &WithoutLevels) {
  RequireChildren(element, nodes.size(), "components");
  XmlElement item = element.FirstChild();
  for (const auto& node : nodes) {
    node->ReadLevels(item);
    item = item.NextSibling();
  }
}

TreeASILEncoding::~TreeASILEncoding() = default;

std::int32_t TreeASILEncoding::GetSize() const {
  std::int32_t size = 0;
  for (const auto& node : nodes) size += node->GetSize();
  return size;
}

bool TreeASILEncoding::Mutate(double rate) {
  bool changed = false;
  for (const auto& node : nodes) changed |= node->Mutate(rate, 0);
  return changed;
}

std::unique_ptr<Encoding> TreeASILEncoding::Crossover(const Encoding& other) const {
  const auto* partner = dynamic_cast<const TreeASILEncoding*>(&other);
  if (!partner || partner->nodes.size() != nodes.size()) return nullptr;
  std::unique_ptr<TreeASILEncoding> child(new TreeASILEncoding(*model));
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    child->nodes.push_back(nodes[i]->Crossover(*partner->nodes[i]));
  }
  return child;
}

std::unique_ptr<Encoding> TreeASILEncoding::Clone() const {
  std::unique_ptr<TreeASILEncoding> copy(new TreeASILEncoding(*model));
  for (const auto& node : nodes) copy->nodes.push_back(node->Clone());
  return copy;
}

void TreeASILEncoding::Apply(Model&) const {
  for (const auto& node : nodes) node->Apply();
}

bool TreeASILEncoding::Equals(const Encoding& other) const {
  const auto* allocation = dynamic_cast<const TreeASILEncoding*>(&other);
  return allocation && Matching(nodes, allocation->nodes);
}

XmlOutputElement TreeASILEncoding::ToXML(XmlOutputElement parent) const {
  const XmlOutputElement element = parent.Add("TreeASILEncoding");
  for (const auto& node : nodes) node->ToXML(element);
  return element;
}

void TreeASILEncoding::Print(std::ostream& stream, int indent) const {
  PrintLine(stream, indent, "TREE ASIL ENCODING");
  for (const auto& node : nodes) node->Print(stream, indent + NestedIndent);
}

}  // namespace FTS
