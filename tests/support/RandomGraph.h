#pragma once

#include <memory>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "faulttree/BasicEvent.h"
#include "faulttree/FaultTreeGate.h"
#include "faulttree/ProxyNode.h"

namespace FTS {

/// Makes random graphs of AND and OR gates, empty and filled parentheses and events. The same seed
/// gives the same graph, by name. Takes the graphs apart when it dies, for the sake of loops.
class RandomGraph {
 public:
  using Pointer = FaultTreeNode::Pointer;

  RandomGraph(unsigned seed, Model* initModel) : random(seed), model(initModel) {}
  ~RandomGraph() {
    for (const Pointer& node : inner) node->ClearChildren();
  }
  RandomGraph(const RandomGraph&) = delete;
  RandomGraph& operator=(const RandomGraph&) = delete;

  /// A graph of `innerCount` gates and proxies, of which the root reaches some.
  Pointer Acyclic(int innerCount) {
    std::vector<Pointer> nodes = MakeEvents();
    for (int i = 0; i < innerCount; ++i) {
      const Pointer node = MakeInner(i);
      const std::size_t children = node->IsProxy() ? Below(2) : Below(4);
      for (std::size_t child = 0; child < children; ++child) {
        node->AddChild(nodes[Below(nodes.size())]);
      }
      nodes.push_back(node);
    }
    const Pointer root = MakeGate(NodeType::Or, "Top", model);
    inner.push_back(root);
    for (int child = 0; child < 4; ++child) root->AddChild(nodes[Below(nodes.size())]);
    return root;
  }

  /// A graph of `innerCount` gates and proxies below the root with `edgeCount` edges among them,
  /// most of which close loops.
  Pointer Cyclic(int innerCount, int edgeCount) {
    const std::vector<Pointer> events = MakeEvents();
    const std::size_t first = inner.size();
    for (int i = 0; i < innerCount; ++i) {
      const Pointer node = MakeInner(i);
      if (i > 0) inner[first + Below(static_cast<std::size_t>(i))]->AddChild(node);
      if (node->IsGate()) node->AddChild(events[Below(events.size())]);
    }
    for (int i = 0; i < edgeCount; ++i) {
      const Pointer& from = inner[first + Below(static_cast<std::size_t>(innerCount))];
      from->AddChild(inner[first + Below(static_cast<std::size_t>(innerCount))]);
    }
    return inner[first];
  }

 private:
  std::size_t Below(std::size_t limit) { return random() % limit; }

  std::vector<Pointer> MakeEvents() {
    std::vector<Pointer> events;
    for (int i = 0; i < 4; ++i) {
      events.push_back(std::make_shared<BasicEvent>("E" + std::to_string(i), model, true));
    }
    return events;
  }

  Pointer MakeInner(int index) {
    const std::string name = "N" + std::to_string(index);
    Pointer node;
    switch (Below(5)) {
      case 0:
        node = std::make_shared<ProxyNode>(NodeType::NullOp, name, model);
        break;
      case 1:
      case 2:
        node = MakeGate(NodeType::And, name, model);
        break;
      default:
        node = MakeGate(NodeType::Or, name, model);
        break;
    }
    inner.push_back(node);
    return node;
  }

  std::mt19937 random;
  Model* model;
  std::vector<Pointer> inner;
};

namespace RandomGraphText {

inline void Append(const FaultTreeNode& node, std::set<const FaultTreeNode*>& met,
                   std::string& text) {
  text += node.name;
  if (node.IsEvent() || !met.insert(&node).second) return;
  text += "=" + ToText(node.type) + "(";
  for (int i = 0; i < node.GetChildCount(); ++i) {
    if (i > 0) text += ", ";
    Append(*node.GetChild(i), met, text);
  }
  text += ")";
}

}  // namespace RandomGraphText

/// The current graph with all names; a node is written out where it is met first.
inline std::string TextOf(const FaultTreeNode& root) {
  std::set<const FaultTreeNode*> met;
  std::string text;
  RandomGraphText::Append(root, met, text);
  return text;
}

}  // namespace FTS
