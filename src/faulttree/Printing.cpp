// Printing: writes a graph as indented text, for people who inspect a tree.
// Assumes nothing about the graph, which may hold cycles; changes nothing. Marks: `visited`, on the
// path. A shared node is written under each of its parents.

#include "faulttree/FaultTreeNode.h"
#include "faulttree/Marks.h"

namespace FTS {

void FaultTreeNode::Print(std::ostream& stream, int indent) const {
  Indent(stream, indent);
  stream << ToText(type) << ": " << name << '(' << id << ") = " << cutSets.size() << " # " << state
         << '\n';
  const int count = GetChildCount();
  const OnPathMark mark(*this);
  if (count == 0 || !mark.Entered()) return;
  Indent(stream, indent);
  stream << "{\n";
  for (int i = 0; i < count; ++i) GetChild(i)->Print(stream, indent + 2);
  Indent(stream, indent);
  stream << "} \n";
}

std::string FaultTreeNode::GetDisplayName() const {
  const std::string shown = !name.empty() ? name : IsGate() ? "Gate" : "Event";
  return shown + " [" + std::to_string(id) + "]";
}

}  // namespace FTS
