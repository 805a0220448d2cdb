#pragma once

#include <memory>
#include <string>

#include "faulttree/FaultTreeNode.h"

namespace FTS {

/// An acyclic graph of nodes in one line: type and name of each, operands in parentheses, for
/// instance "Or'OR [x]'(FailureMode'A', FailureMode'B')". A null node is "nothing".
inline std::string LogicText(const std::shared_ptr<FaultTreeNode>& node) {
  if (!node) return "nothing";
  std::string text = ToText(node->type) + "'" + node->name + "'";
  if (node->GetChildCount() == 0) return text;
  text += "(";
  for (int i = 0; i < node->GetChildCount(); ++i) {
    text += (i > 0 ? ", " : "") + LogicText(node->GetChild(i));
  }
  return text + ")";
}

/// The structure alone: operators as words, leaves by name, for instance "Or(A, And(B, C))".
inline std::string StructureText(const std::shared_ptr<FaultTreeNode>& node) {
  if (!node) return "nothing";
  if (node->GetChildCount() == 0) return node->name;
  std::string text = ToText(node->type) + "(";
  for (int i = 0; i < node->GetChildCount(); ++i) {
    text += (i > 0 ? ", " : "") + StructureText(node->GetChild(i));
  }
  return text + ")";
}

}  // namespace FTS
