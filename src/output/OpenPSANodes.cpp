// Open-PSA nodes: the definitions of a tree's nodes, in which other nodes are references by name.
// Assumes nothing about the graph and changes nothing. Each node is met once per tree, parents
// first and children in their order; so it is defined once and referred to by each of its parents.

#include "faulttree/BasicEvent.h"
#include "faulttree/FaultTreeGate.h"
#include "faulttree/GraphWalk.h"
#include "faulttree/ProxyNode.h"
#include "platform/XmlOutput.h"

namespace FTS {

namespace {

/// The format knows no gates that ask for a sequence. Their connective has no name, so that a
/// reader refuses the file instead of taking such a gate for another one.
const char* ConnectiveOf(NodeType type) {
  if (type == NodeType::And) return "and";
  if (type == NodeType::Or) return "or";
  if (type == NodeType::XOr) return "xor";
  return "";
}

XmlOutputElement Define(const XmlOutputElement& tree, const char* what, const FaultTreeNode& node) {
  const XmlOutputElement definition = tree.Add(what);
  definition.SetAttribute("name", node.GetDisplayName());
  return definition;
}

void AddReferences(const XmlOutputElement& parent, const FaultTreeNode& node) {
  for (int i = 0; i < node.GetChildCount(); ++i) {
    const FaultTreeNode& child = *node.GetChild(i);
    parent.Add(child.IsEvent() ? "basic-event" : "gate")
        .SetAttribute("name", child.GetDisplayName());
  }
}

}  // namespace

void FaultTreeNode::WriteOpenPSA(const XmlOutputElement& tree) {
  ForEachNode(*this, [&](const FaultTreeNode& node) { node.DefineInOpenPSA(tree); });
}

void FaultTreeGate::DefineInOpenPSA(const XmlOutputElement& tree) const {
  AddReferences(Define(tree, "define-gate", *this).Add(ConnectiveOf(type)), *this);
}

// A proxy is a gate that passes its one input on; an empty one has none.
void ProxyNode::DefineInOpenPSA(const XmlOutputElement& tree) const {
  AddReferences(Define(tree, "define-gate", *this), *this);
}

void NotGate::DefineInOpenPSA(const XmlOutputElement& tree) const {
  AddReferences(Define(tree, "define-gate", *this).Add("not"), *this);
}

void BasicEvent::DefineInOpenPSA(const XmlOutputElement& tree) const {
  Define(tree, "define-basic-event", *this);
}

}  // namespace FTS
