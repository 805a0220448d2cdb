#include "optimisation/FixedASILEncoding.h"

#include <algorithm>
#include <iostream>
#include <map>
#include <utility>

#include "app/Config.h"
#include "faulttree/BasicEvent.h"
#include "model/Component.h"
#include "model/Model.h"
#include "model/NumberText.h"
#include "model/PrintLine.h"
#include "optimisation/Choices.h"
#include "optimisation/DesignComponents.h"
#include "optimisation/Random.h"
#include "optimisation/SavedStateText.h"

namespace FTS {

namespace {

constexpr int Levels = 5;

}  // namespace

std::int32_t RandomLevel() { return RandomIndex(Levels); }

std::int32_t ReadLevel(XmlElement element, const BasicEvent& event) {
  constexpr std::int32_t Lowest = -1;
  constexpr std::int32_t Highest = 5;  // Which costs, but is not drawn.
  const std::int32_t level = RequiredInteger(element, "SafetyRequirement");
  if (level >= Lowest && level <= Highest) return level;
  RefuseEncoding(element, EventText(event) + " has the level " + std::to_string(level));
}

std::string EventText(const BasicEvent& event) {
  const std::shared_ptr<Component> owner = event.owner.lock();
  return owner ? owner->GetFullNameText() + ":" + event.name : event.name;
}

std::string PrimeText(double prime) { return FormatFixed(prime, 0); }

FixedASILEncodingNode::FixedASILEncodingNode(const BasicEvent& event)
    : FixedASILEncodingNode(EventText(event), event.prime, RandomLevel()) {
  std::cout << level << '\n';
}

FixedASILEncodingNode::FixedASILEncodingNode(std::string initName, double initPrime,
                                             std::int32_t initLevel)
    : name(std::move(initName)), prime(initPrime), level(initLevel) {}

std::string FixedASILEncodingNode::GetName() const {
  const std::size_t colon = name.rfind(':');
  return colon == std::string::npos ? "None" : name.substr(colon + 1);
}

void FixedASILEncodingNode::Print(std::ostream& stream, int indent) const {
  PrintLine(stream, indent, name + ": " + std::to_string(level));
}

void FixedASILEncodingNode::ToXML(XmlOutputElement parent) const {
  const XmlOutputElement component = parent.Add("EncodingNode").Add("Component");
  component.Add("BasicEvent", GetName());
  component.Add("Name", name);
  component.Add("ID", PrimeText(prime));
  component.Add("SafetyRequirement", std::to_string(level));
}

FixedASILEncoding::FixedASILEncoding(Model& initModel, bool buildNodes)
    : type(EncodingType::FixedAsil), model(&initModel) {
  if (!buildNodes) return;
  for (const auto& [prime, event] : model->basicEvents) {
    nodes.push_back(std::make_unique<FixedASILEncodingNode>(*event));
  }
}

FixedASILEncoding::FixedASILEncoding(Model& initModel, XmlElement element)
    : type(EncodingType::FixedAsil), model(&initModel) {
  RequireChildren(element, model->basicEvents.size(), "events");
  std::map<double, std::int32_t> levels;
  for (XmlElement item = element.FirstChild(); item; item = item.NextSibling()) {
    const XmlElement component = RequiredChild(item, "Component");
    const std::string name = RequiredText(component, "Name");
    const double prime = RequiredDouble(component, "ID");
    const auto known = model->basicEvents.find(prime);
    if (known == model->basicEvents.end() || !IsSavedName(name, EventText(*known->second)) ||
        !levels.try_emplace(prime, ReadLevel(component, *known->second)).second) {
      RefuseEncoding(component,
                     "no event " + name + " with the ID " + PrimeText(prime) + " is left");
    }
  }
  for (const auto& [prime, event] : model->basicEvents) {
    nodes.push_back(
        std::make_unique<FixedASILEncodingNode>(EventText(*event), prime, levels.at(prime)));
  }
}

FixedASILEncoding::~FixedASILEncoding() = default;

bool FixedASILEncoding::Mutate(double rate) {
  bool changed = false;
  for (const auto& node : nodes) {
    if (rate > static_cast<double>(RandomUniform())) {
      const std::int32_t level = TakeFirst() ? RandomLevel() : 0;
      changed |= level != node->level;
      node->level = level;
    }
    std::cout << node->level << '\n';
  }
  return changed;
}

std::unique_ptr<Encoding> FixedASILEncoding::Crossover(const Encoding& other) const {
  const auto* partner = dynamic_cast<const FixedASILEncoding*>(&other);
  if (!partner || partner->nodes.size() != nodes.size()) return nullptr;
  auto child = std::make_unique<FixedASILEncoding>(*model, false);
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    const auto& chosen = TakeFirst() ? nodes[i] : partner->nodes[i];
    child->nodes.push_back(
        std::make_unique<FixedASILEncodingNode>(nodes[i]->name, nodes[i]->prime, chosen->level));
  }
  return child;
}

std::unique_ptr<Encoding> FixedASILEncoding::Clone() const {
  auto copy = std::make_unique<FixedASILEncoding>(*model, false);
  for (const auto& node : nodes) {
    copy->nodes.push_back(
        std::make_unique<FixedASILEncodingNode>(node->name, node->prime, node->level));
  }
  return copy;
}

void FixedASILEncoding::Apply(Model& target) const {
  for (const auto& node : nodes) {
    const auto event = target.basicEvents.find(node->prime);
    if (event != target.basicEvents.end()) event->second->safetyRequirement = node->level;
  }
  RebuildPortExpressions(target);
}

bool FixedASILEncoding::Equals(const Encoding& other) const {
  const auto* allocation = dynamic_cast<const FixedASILEncoding*>(&other);
  return allocation && std::equal(nodes.begin(), nodes.end(), allocation->nodes.begin(),
                                  allocation->nodes.end(), [](const auto& left, const auto& right) {
                                    return left->level == right->level &&
                                           left->GetName() == right->GetName();
                                  });
}

XmlOutputElement FixedASILEncoding::ToXML(XmlOutputElement parent) const {
  const XmlOutputElement element = parent.Add("FixedASILEncoding");
  for (const auto& node : nodes) node->ToXML(element);
  return element;
}

void FixedASILEncoding::Print(std::ostream& stream, int indent) const {
  PrintLine(stream, indent, "FIXED ASIL ENCODING");
  for (const auto& node : nodes) node->Print(stream, indent + NestedIndent);
}

}  // namespace FTS
