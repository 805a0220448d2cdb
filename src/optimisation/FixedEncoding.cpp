#include "optimisation/FixedEncoding.h"

#include <algorithm>
#include <iostream>
#include <map>
#include <utility>

#include "app/Config.h"
#include "model/Component.h"
#include "model/Implementation.h"
#include "model/Model.h"
#include "model/PrintLine.h"
#include "optimisation/Choices.h"
#include "optimisation/DesignComponents.h"
#include "optimisation/Random.h"
#include "optimisation/RedundancyBenchmark.h"
#include "optimisation/SavedStateText.h"

namespace FTS {

namespace {

/// Used slots come first.
bool ComesBefore(std::int32_t left, std::int32_t right) {
  if ((left == 0) != (right == 0)) return right == 0;
  return left < right;
}

/// How many replicas a component has room for.
int SlotsOf(const Component& component) { return std::max(component.maxReplicants + 1, 0); }

}  // namespace

FixedEncodingNode::FixedEncodingNode(FixedEncoding& initEncoding, std::string initComponentName,
                                     bool skipGenes)
    : componentName(std::move(initComponentName)), encoding(&initEncoding) {
  const Component& component = FindDesignComponent(*encoding->GetModel(), componentName);
  implementationCount = static_cast<std::int32_t>(component.implementations.size());
  if (skipGenes) return;
  const int slots = SlotsOf(component);
  if (slots == 0) return;
  const int filled = RandomIndex(slots) + 1;
  for (int i = 0; i < slots; ++i) genes.push_back(i < filled ? RandomGene() : 0);
  SortGenes();
}

FixedEncodingNode::FixedEncodingNode(FixedEncoding& initEncoding, const FixedEncodingNode& source)
    : componentName(source.componentName),
      genes(source.genes),
      encoding(&initEncoding),
      implementationCount(source.implementationCount) {
  SortGenes();
}

FixedEncodingNode::FixedEncodingNode(FixedEncoding& initEncoding, const std::string& expectedName,
                                     XmlElement element)
    : componentName(expectedName), encoding(&initEncoding) {
  const std::string name = RequiredText(RequiredChild(element, "Component"), "Name");
  if (!IsSavedName(name, componentName)) {
    RefuseEncoding(element, name + " stands in the place of " + componentName);
  }
  const Component& component = FindDesignComponent(*encoding->GetModel(), componentName);
  implementationCount = static_cast<std::int32_t>(component.implementations.size());
  const XmlElement implementations = RequiredChild(element, "Implementations");
  RequireChildren(implementations, static_cast<std::size_t>(SlotsOf(component)),
                  "genes of " + componentName);
  for (XmlElement item = implementations.FirstChild(); item; item = item.NextSibling()) {
    const std::int32_t gene = RequiredInteger(item, "Index");
    if (gene < 0) RefuseEncoding(item, "a gene of " + componentName + " is negative");
    if (gene > implementationCount) {
      std::cout << "Error processing encoding: index bit is out of range for model\n";
    }
    genes.push_back(gene);
  }
}

void FixedEncodingNode::Print(std::ostream& stream, int indent) const {
  std::string line = componentName + ":";
  for (const std::int32_t gene : genes) line += " " + std::to_string(gene);
  PrintLine(stream, indent, line);
}

std::int32_t FixedEncodingNode::RandomGene() const { return RandomIndex(implementationCount) + 1; }

void FixedEncodingNode::SortGenes() { std::sort(genes.begin(), genes.end(), ComesBefore); }

bool FixedEncodingNode::Mutate(double rate) {
  std::map<std::int32_t, int> changes;  // By gene: how often it came, less how often it went.
  for (std::int32_t& gene : genes) {
    if (static_cast<double>(RandomUniform()) >= rate) continue;
    const std::int32_t mutated = TakeFirst() ? RandomGene() : 0;
    if (mutated == gene) continue;
    --changes[gene];
    ++changes[mutated];
    gene = mutated;
  }
  const bool changed = std::any_of(changes.begin(), changes.end(),
                                   [](const auto& change) { return change.second != 0; });
  // Values that have only changed places are the design from before, and stay as they are.
  if (changed) SortGenes();
  return changed;
}

std::unique_ptr<FixedEncodingNode> FixedEncodingNode::Crossover(
    FixedEncoding& child, const FixedEncodingNode& other) const {
  auto node = std::make_unique<FixedEncodingNode>(child, *this);
  for (std::size_t i = 0; i < genes.size(); ++i) {
    const bool own = TakeFirst();
    node->genes[i] = own || i >= other.genes.size() ? genes[i] : other.genes[i];
  }
  node->SortGenes();
  return node;
}

bool FixedEncodingNode::Equals(const FixedEncodingNode& other) const {
  return componentName == other.componentName && genes == other.genes;
}

bool FixedEncodingNode::IsValid() const {
  return std::any_of(genes.begin(), genes.end(), [](std::int32_t gene) { return gene != 0; });
}

void FixedEncodingNode::Apply(Model& target) const {
  std::string selection;
  for (const std::int32_t gene : genes) {
    // A gene of two digits reads like two replicas there. That is the form in which users write
    // selections down, so it stays; a search over such a component warns of it.
    if (gene != 0) selection += std::to_string(gene);
  }
  FindDesignComponent(target, componentName).CreateOptimisedImplementation(selection);
}

void FixedEncodingNode::ToXML(XmlOutputElement parent) const {
  const Component& component = FindDesignComponent(*encoding->GetModel(), componentName);
  const XmlOutputElement node = parent.Add("EncodingNode");
  node.Add("Component").Add("Name", componentName);
  const XmlOutputElement implementations = node.Add("Implementations");
  for (const std::int32_t gene : genes) {
    const XmlOutputElement implementation = implementations.Add("Implementation");
    const bool named = gene > 0 && gene <= static_cast<int>(component.implementations.size());
    implementation.Add("Name",
                       named ? component.implementations[static_cast<std::size_t>(gene - 1)]->name
                             : std::string());
    implementation.Add("Index", std::to_string(gene));
  }
}

FixedEncoding::FixedEncoding(Model& initModel, bool buildNodes)
    : type(EncodingType::Fixed), model(&initModel) {
  if (!buildNodes) return;
  for (const auto& component : model->configurableComponents) {
    nodes.push_back(
        std::make_unique<FixedEncodingNode>(*this, component->GetFullNameText(), false));
  }
}

FixedEncoding::FixedEncoding(Model& initModel, XmlElement element)
    : type(EncodingType::Fixed), model(&initModel) {
  RequireChildren(element, model->configurableComponents.size(), "components");
  XmlElement item = element.FirstChild();
  for (const auto& component : model->configurableComponents) {
    nodes.push_back(std::make_unique<FixedEncodingNode>(*this, component->GetFullNameText(), item));
    item = item.NextSibling();
  }
}

FixedEncoding::~FixedEncoding() = default;

std::int32_t FixedEncoding::GetSize() const {
  std::size_t size = 0;
  for (const auto& node : nodes) size += node->genes.size();
  return static_cast<std::int32_t>(size);
}

bool FixedEncoding::Mutate(double rate) {
  bool changed = false;
  for (const auto& node : nodes) changed |= node->Mutate(rate);
  return changed;
}

std::unique_ptr<Encoding> FixedEncoding::Crossover(const Encoding& other) const {
  const auto* partner = dynamic_cast<const FixedEncoding*>(&other);
  if (!partner || partner->nodes.size() != nodes.size()) return nullptr;
  auto child = std::make_unique<FixedEncoding>(*model, false);
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    child->nodes.push_back(nodes[i]->Crossover(*child, *partner->nodes[i]));
  }
  return child;
}

std::unique_ptr<Encoding> FixedEncoding::Clone() const {
  auto copy = std::make_unique<FixedEncoding>(*model, false);
  for (const auto& node : nodes) {
    copy->nodes.push_back(std::make_unique<FixedEncodingNode>(*copy, *node));
  }
  return copy;
}

void FixedEncoding::Apply(Model& target) const {
  for (const auto& node : nodes) node->Apply(target);
  RebuildPortExpressions(target);
}

bool FixedEncoding::Equals(const Encoding& other) const {
  const auto* design = dynamic_cast<const FixedEncoding*>(&other);
  return design &&
         std::equal(nodes.begin(), nodes.end(), design->nodes.begin(), design->nodes.end(),
                    [](const auto& left, const auto& right) { return left->Equals(*right); });
}

bool FixedEncoding::IsValid() const {
  return std::all_of(nodes.begin(), nodes.end(), [](const auto& node) { return node->IsValid(); });
}

std::string FixedEncoding::DescribeInvalid() const {
  const auto empty =
      std::find_if(nodes.begin(), nodes.end(), [](const auto& node) { return !node->IsValid(); });
  if (empty == nodes.end()) return "";
  const FixedEncodingNode& node = **empty;
  if (!node.genes.empty()) return node.componentName + " is left without a replica";
  const Component& component = FindDesignComponent(*model, node.componentName);
  return node.componentName +
         " has no room for a replica: MaxReplicants=" + std::to_string(component.maxReplicants);
}

XmlOutputElement FixedEncoding::ToXML(XmlOutputElement parent) const {
  const XmlOutputElement element = parent.Add("FixedEncoding");
  for (const auto& node : nodes) node->ToXML(element);
  return element;
}

double FixedEncodingNode::GetNodeReliability() const {
  const int subsystem = FlatBenchmarkSubsystem(componentName);
  double failing = 1.0;
  for (const std::int32_t gene : genes) {
    failing *= 1.0 - BenchmarkChoiceOf(subsystem, gene).reliability;
  }
  return 1.0 - failing;
}

double FixedEncodingNode::GetNodeCost() const {
  const int subsystem = FlatBenchmarkSubsystem(componentName);
  double sum = 0.0;
  for (const std::int32_t gene : genes) sum += BenchmarkChoiceOf(subsystem, gene).cost;
  return sum;
}

double FixedEncodingNode::GetNodeWeight() const {
  const int subsystem = FlatBenchmarkSubsystem(componentName);
  double sum = 0.0;
  for (const std::int32_t gene : genes) sum += BenchmarkChoiceOf(subsystem, gene).weight;
  return sum;
}

double FixedEncoding::GetProduct() const {
  double product = 1.0;
  for (const auto& node : nodes) product *= node->GetNodeReliability();
  return product;
}

double FixedEncoding::GetSum1() const {
  double sum = 0.0;
  for (const auto& node : nodes) sum += node->GetNodeCost();
  return sum;
}

double FixedEncoding::GetSum2() const {
  double sum = 0.0;
  for (const auto& node : nodes) sum += node->GetNodeWeight();
  return sum;
}

void FixedEncoding::Print(std::ostream& stream, int indent) const {
  PrintLine(stream, indent, "FIXED ENCODING");
  for (const auto& node : nodes) node->Print(stream, indent + NestedIndent);
}

}  // namespace FTS
