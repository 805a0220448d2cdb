#include "optimisation/TreeEncoding.h"

#include <algorithm>
#include <utility>

#include "app/Config.h"
#include "model/Component.h"
#include "model/Implementation.h"
#include "model/Model.h"
#include "model/Perspective.h"
#include "model/PrintLine.h"
#include "model/Subsystem.h"
#include "model/VtnException.h"
#include "optimisation/Choices.h"
#include "optimisation/Random.h"
#include "optimisation/RedundancyBenchmark.h"
#include "optimisation/SavedStateText.h"

namespace FTS {

namespace {

std::shared_ptr<Implementation> ImplementationAt(const Component& component, int index) {
  if (index < 0 || index >= static_cast<int>(component.implementations.size())) {
    throw VtnException("No implementation " + std::to_string(index) +
                       " of component: " + component.GetFullNameText());
  }
  return component.implementations[static_cast<std::size_t>(index)];
}

/// Adds those of the subsystem's components that get a node, in order; nothing for no subsystem.
void AddOptimisable(const Subsystem* scope, std::vector<std::shared_ptr<Component>>& components) {
  if (!scope) return;
  for (const auto& [name, component] : scope->components) {
    if (!component->includeInOptimisation || component->implementations.empty()) continue;
    components.push_back(component);
  }
}

std::vector<std::shared_ptr<Component>> OptimisableAtTheTop(const Model& model) {
  std::vector<std::shared_ptr<Component>> components;
  for (const auto& [name, perspective] : model.perspectives) {
    AddOptimisable(perspective->rootSubsystem.get(), components);
  }
  return components;
}

std::vector<std::shared_ptr<Component>> OptimisableIn(const Implementation& implementation) {
  std::vector<std::shared_ptr<Component>> components;
  AddOptimisable(implementation.subsystem.get(), components);
  return components;
}

/// The chosen position, for the component that has to stand at this place.
int ReadChoice(const Component& component, XmlElement element) {
  const XmlElement chosen = RequiredChild(element, "Component");
  const std::string name = RequiredText(chosen, "Name");
  if (!IsSavedName(name, component.GetFullNameText())) {
    RefuseEncoding(element, name + " stands in the place of " + component.GetFullNameText());
  }
  const std::int32_t index = RequiredInteger(RequiredChild(chosen, "Implementation"), "Index");
  if (index < 0 || index >= static_cast<int>(component.implementations.size())) {
    RefuseEncoding(element, name + " has no implementation " + std::to_string(index));
  }
  return index;
}

bool Matching(const std::vector<TreeEncodingNode::Pointer>& left,
              const std::vector<TreeEncodingNode::Pointer>& right) {
  return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                    [](const auto& one, const auto& other) { return one->Equals(*other); });
}

}  // namespace

TreeEncodingNode::TreeEncodingNode(TreeEncoding& initEncoding,
                                   std::shared_ptr<Component> initComponent)
    : TreeEncodingNode(initEncoding, initComponent,
                       RandomIndex(static_cast<int>(initComponent->implementations.size()))) {
  if (!initComponent->allocations.empty()) ChooseAllocation();
  BuildSubNodes();
}

TreeEncodingNode::TreeEncodingNode(TreeEncoding& initEncoding,
                                   std::shared_ptr<Component> initComponent, int index)
    : componentName(initComponent->GetFullNameText()),
      implementationIndex(index),
      implementation(ImplementationAt(*initComponent, index)),
      encoding(&initEncoding) {}

TreeEncodingNode::TreeEncodingNode(TreeEncoding& initEncoding, const TreeEncodingNode& source)
    : componentName(source.componentName),
      implementationIndex(source.implementationIndex),
      implementation(source.implementation),
      allocation(source.allocation),
      encoding(&initEncoding) {
  for (const Pointer& node : source.subNodes) {
    subNodes.push_back(std::make_unique<TreeEncodingNode>(initEncoding, *node));
  }
}

TreeEncodingNode::TreeEncodingNode(TreeEncoding& initEncoding,
                                   std::shared_ptr<Component> initComponent, XmlElement element)
    : TreeEncodingNode(initEncoding, initComponent, ReadChoice(*initComponent, element)) {
  ReadAllocation(element);
  const std::vector<std::shared_ptr<Component>> expected = OptimisableIn(*implementation);
  const XmlElement inside = RequiredChild(element, "SubNodes");
  RequireChildren(inside, expected.size(), "components inside " + componentName);
  XmlElement item = inside.FirstChild();
  for (const auto& component : expected) {
    subNodes.push_back(std::make_unique<TreeEncodingNode>(initEncoding, component, item));
    item = item.NextSibling();
  }
}

/// A component that may have hosts has to have one: without it the model would keep that of the
/// design before.
void TreeEncodingNode::ReadAllocation(XmlElement element) {
  const std::vector<std::string>& hosts = GetComponent()->allocations;
  const XmlElement chosen = element.FirstChild("Allocation");
  if (!chosen && hosts.empty()) return;
  const std::string name(chosen.Text());
  const auto host = std::find_if(hosts.begin(), hosts.end(),
                                 [&](const std::string& own) { return IsSavedName(name, own); });
  if (host == hosts.end()) {
    RefuseEncoding(chosen ? chosen : element,
                   componentName + " cannot be allocated to \"" + name + "\"");
  }
  allocation = *host;
}

std::shared_ptr<Component> TreeEncodingNode::GetComponent() const {
  return implementation->GetOwner();
}

void TreeEncodingNode::Print(std::ostream& stream, int indent) const {
  std::string line = componentName + ": " + implementation->name;
  if (!allocation.empty()) line += " on " + allocation;
  PrintLine(stream, indent, line);
  for (const Pointer& node : subNodes) node->Print(stream, indent + NestedIndent);
}

std::int32_t TreeEncodingNode::GetSize() const {
  std::int32_t size = 1;
  for (const Pointer& node : subNodes) size += node->GetSize();
  return size;
}

int TreeEncodingNode::RandomImplementation() const {
  return RandomIndex(static_cast<int>(GetComponent()->implementations.size()));
}

void TreeEncodingNode::ChooseAllocation() {
  const std::vector<std::string>& hosts = GetComponent()->allocations;
  allocation = hosts[static_cast<std::size_t>(RandomIndex(static_cast<int>(hosts.size())))];
}

void TreeEncodingNode::BuildSubNodes() {
  for (const auto& component : OptimisableIn(*implementation)) {
    subNodes.push_back(std::make_unique<TreeEncodingNode>(*encoding, component));
  }
}

bool TreeEncodingNode::MutateImplementation() {
  const int drawn = RandomImplementation();
  if (drawn == implementationIndex) return false;
  implementationIndex = drawn;
  implementation = ImplementationAt(*GetComponent(), drawn);
  subNodes.clear();
  BuildSubNodes();
  return true;
}

bool TreeEncodingNode::Mutate(double rate, int depth) {
  bool reallocated = false;
  if (!GetComponent()->allocations.empty() && static_cast<double>(RandomUniform()) < rate) {
    ChooseAllocation();
    reallocated = true;
  }
  const double threshold = MutationRateAt(depth, rate);
  if (static_cast<double>(RandomUniform()) < threshold && MutateImplementation()) return true;
  // A new host ends the walk here.
  if (reallocated) return true;
  bool changed = false;
  for (const Pointer& node : subNodes) changed |= node->Mutate(rate, depth + 1);
  return changed;
}

TreeEncodingNode::Pointer TreeEncodingNode::Crossover(TreeEncoding& child,
                                                      const TreeEncodingNode& other) const {
  if (implementationIndex != other.implementationIndex) {
    const bool takeOther = TakeFirst();
    return std::make_unique<TreeEncodingNode>(child, takeOther ? other : *this);
  }
  auto node = std::make_unique<TreeEncodingNode>(child, GetComponent(), implementationIndex);
  node->allocation = allocation;
  // The same implementation has the same components inside.
  const std::size_t inside = std::min(subNodes.size(), other.subNodes.size());
  for (std::size_t i = 0; i < inside; ++i) {
    node->subNodes.push_back(subNodes[i]->Crossover(child, *other.subNodes[i]));
  }
  return node;
}

bool TreeEncodingNode::Equals(const TreeEncodingNode& other) const {
  return componentName == other.componentName && implementationIndex == other.implementationIndex &&
         allocation == other.allocation && Matching(subNodes, other.subNodes);
}

void TreeEncodingNode::Apply(Model& target) const {
  const std::shared_ptr<Component> component =
      &target == encoding->GetModel() ? GetComponent() : target.FindComponent(componentName);
  if (!component) {
    throw VtnException("Component of the encoding is not in the model: " + componentName);
  }
  component->SelectImplementation(implementationIndex);
  if (!allocation.empty()) component->currentAllocation = allocation;
  for (const Pointer& node : subNodes) node->Apply(target);
}

void TreeEncodingNode::ToXML(XmlOutputElement parent) const {
  const XmlOutputElement node = parent.Add("EncodingNode");
  const XmlOutputElement component = node.Add("Component");
  component.Add("Name", componentName);
  const XmlOutputElement choice = component.Add("Implementation");
  choice.Add("Name", implementation->name);
  choice.Add("Index", std::to_string(implementationIndex));
  if (!allocation.empty()) node.Add("Allocation", allocation);
  const XmlOutputElement inside = node.Add("SubNodes");
  for (const Pointer& subNode : subNodes) subNode->ToXML(inside);
}

TreeEncoding::TreeEncoding(Model& initModel, bool buildNodes)
    : type(EncodingType::Tree), model(&initModel) {
  if (!buildNodes) return;
  for (const auto& component : OptimisableAtTheTop(*model)) {
    nodes.push_back(std::make_unique<TreeEncodingNode>(*this, component));
  }
}

TreeEncoding::TreeEncoding(Model& initModel, XmlElement element)
    : type(EncodingType::Tree), model(&initModel) {
  const std::vector<std::shared_ptr<Component>> expected = OptimisableAtTheTop(*model);
  RequireChildren(element, expected.size(), "components");
  XmlElement item = element.FirstChild();
  for (const auto& component : expected) {
    nodes.push_back(std::make_unique<TreeEncodingNode>(*this, component, item));
    item = item.NextSibling();
  }
}

TreeEncoding::~TreeEncoding() = default;

std::int32_t TreeEncoding::GetSize() const {
  std::int32_t size = 0;
  for (const auto& node : nodes) size += node->GetSize();
  return size;
}

bool TreeEncoding::Mutate(double rate) {
  bool changed = false;
  for (const auto& node : nodes) changed |= node->Mutate(rate, 0);
  return changed;
}

std::unique_ptr<Encoding> TreeEncoding::Crossover(const Encoding& other) const {
  const auto* partner = dynamic_cast<const TreeEncoding*>(&other);
  if (!partner || partner->nodes.size() != nodes.size()) return nullptr;
  auto child = std::make_unique<TreeEncoding>(*model, false);
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    child->nodes.push_back(nodes[i]->Crossover(*child, *partner->nodes[i]));
  }
  return child;
}

std::unique_ptr<Encoding> TreeEncoding::Clone() const {
  auto copy = std::make_unique<TreeEncoding>(*model, false);
  for (const auto& node : nodes) {
    copy->nodes.push_back(std::make_unique<TreeEncodingNode>(*copy, *node));
  }
  return copy;
}

void TreeEncoding::Apply(Model& target) const {
  target.ClearSynthesis();
  for (const auto& node : nodes) node->Apply(target);
}

bool TreeEncoding::Equals(const Encoding& other) const {
  const auto* design = dynamic_cast<const TreeEncoding*>(&other);
  return design && Matching(nodes, design->nodes);
}

XmlOutputElement TreeEncoding::ToXML(XmlOutputElement parent) const {
  const XmlOutputElement element = parent.Add("TreeEncoding");
  for (const auto& node : nodes) node->ToXML(element);
  return element;
}

double TreeEncodingNode::GetNodeReliability() const {
  const int subsystem = TreeBenchmarkSubsystem(componentName);
  if (subsystem != 0) return BenchmarkChoiceOf(subsystem, implementationIndex + 1).reliability;
  // What is inside works in parallel.
  double failing = 1.0;
  for (const Pointer& node : subNodes) failing *= 1.0 - node->GetNodeReliability();
  return 1.0 - failing;
}

double TreeEncodingNode::GetNodeCost() const {
  const int subsystem = TreeBenchmarkSubsystem(componentName);
  if (subsystem != 0) return BenchmarkChoiceOf(subsystem, implementationIndex + 1).cost;
  double sum = 0.0;
  for (const Pointer& node : subNodes) sum += node->GetNodeCost();
  return sum;
}

double TreeEncodingNode::GetNodeWeight() const {
  const int subsystem = TreeBenchmarkSubsystem(componentName);
  if (subsystem != 0) return BenchmarkChoiceOf(subsystem, implementationIndex + 1).weight;
  double sum = 0.0;
  for (const Pointer& node : subNodes) sum += node->GetNodeWeight();
  return sum;
}

double TreeEncoding::GetProduct() const {
  double product = 1.0;
  for (const auto& node : nodes) product *= node->GetNodeReliability();
  return product;
}

double TreeEncoding::GetSum1() const {
  double sum = 0.0;
  for (const auto& node : nodes) sum += node->GetNodeCost();
  return sum;
}

double TreeEncoding::GetSum2() const {
  double sum = 0.0;
  for (const auto& node : nodes) sum += node->GetNodeWeight();
  return sum;
}

void TreeEncoding::Print(std::ostream& stream, int indent) const {
  PrintLine(stream, indent, "TREE ENCODING");
  for (const auto& node : nodes) node->Print(stream, indent + NestedIndent);
}

}  // namespace FTS
