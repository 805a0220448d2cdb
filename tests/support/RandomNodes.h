#pragma once

#include <map>
#include <random>
#include <string>
#include <vector>

#include "faulttree/FaultTreeGate.h"
#include "faulttree/ProxyNode.h"
#include "support/TreeBuilder.h"

namespace FTS {

/// Makes random graphs for properties that any graph must have. The same seed gives the same graph.
class RandomNodes {
 public:
  using Pointer = FaultTreeNode::Pointer;

  explicit RandomNodes(unsigned seed, Model* initModel = nullptr)
      : random(seed), model(initModel) {}

  /// Gates of all types, negations and parentheses over the events E0, E1, ...; later nodes may
  /// share earlier ones.
  Pointer MakeAcyclic(int eventCount = 5, int innerCount = 12) {
    return Make(eventCount, innerCount,
                {NodeType::Or, NodeType::And, NodeType::XOr, NodeType::PAnd, NodeType::SAnd,
                 NodeType::POr, NodeType::Not, NodeType::NullOp});
  }

  /// The same with AND, OR, negations and parentheses only: what a truth table can judge.
  Pointer MakeLogic(int eventCount = 5, int innerCount = 12) {
    return Make(eventCount, innerCount,
                {NodeType::Or, NodeType::And, NodeType::Not, NodeType::NullOp});
  }

  /// `MakeAcyclic` with a few edges back, which close loops. Needs `ReleaseGraph`.
  Pointer MakeCyclic(int eventCount = 5, int innerCount = 12) {
    const Pointer root = MakeAcyclic(eventCount, innerCount);
    std::map<int, FaultTreeNode*> below;
    root->CollectNodes(below);
    std::vector<FaultTreeNode*> gates;
    std::vector<FaultTreeNode*> nodes;
    for (const auto& [id, node] : below) {
      if (!node->IsEvent()) nodes.push_back(node);
      if (node->IsGate()) gates.push_back(node);
    }
    for (int i = 0; i < 4 && !gates.empty(); ++i) {
      gates[Below(gates.size())]->AddChild(nodes[Below(nodes.size())]->shared_from_this());
    }
    return root;
  }

  /// A number from 0 to one less than `limit`.
  std::size_t Below(std::size_t limit) { return random() % limit; }

 private:
  Pointer Make(int eventCount, int innerCount, const std::vector<NodeType>& types) {
    std::vector<Pointer> nodes;
    nodes.reserve(static_cast<std::size_t>(eventCount + innerCount));
    for (int i = 0; i < eventCount; ++i) {
      nodes.push_back(std::make_shared<BasicEvent>("E" + std::to_string(i), model, true));
    }
    events.insert(events.end(), nodes.begin(), nodes.end());
    for (int i = 0; i < innerCount; ++i) {
      const Pointer node = MakeInner(types[Below(types.size())], "N" + std::to_string(i));
      const std::size_t children = node->IsProxy() ? 1 : 1 + Below(4);
      for (std::size_t child = 0; child < children; ++child) {
        node->AddChild(nodes[Below(nodes.size())]);
      }
      nodes.push_back(node);
    }
    return nodes.back();
  }

  Pointer MakeInner(NodeType type, const std::string& name) {
    if (type == NodeType::Not) return std::make_shared<NotGate>(name, model);
    if (type == NodeType::NullOp) return std::make_shared<ProxyNode>(type, name, model);
    return MakeGate(type, name, model);
  }

  std::mt19937 random;
  Model* model;
  std::vector<Pointer> events;  // Kept as a model would, so that complements have their source.
};

}  // namespace FTS
