// Order weights: hands the weights down that order the variables of a diagram.
// Assumes nothing about the graph. Changes `orderWeight` of events and module events only, and
// looks at nothing below inner modules, which are one variable each. A node
// that several paths reach keeps the weight of the last path in the order of children; so the walk
// goes backwards, from the last child to the first, and enters each node once: the path by which it
// gets there first is the one that would have come last.

#include "analysis/ModuleEvent.h"
#include "faulttree/BasicEvent.h"
#include "faulttree/Marks.h"

namespace FTS {

namespace {

void AssignBelow(FaultTreeNode& node, float weight, OnceMarks& marks);

void Assign(FaultTreeNode& node, float weight, OnceMarks& marks) {
  if (!marks.Enter(node)) return;
  if (node.moduleEvent) node.moduleEvent->orderWeight = weight;
  if (node.IsEvent()) static_cast<BasicEvent&>(node).orderWeight = weight;
  if (!node.isModule) AssignBelow(node, weight, marks);
}

void AssignBelow(FaultTreeNode& node, float weight, OnceMarks& marks) {
  const int count = node.GetChildCount();
  for (int i = count - 1; i >= 0; --i) {
    const auto rest = static_cast<float>(count - i);
    Assign(*node.GetChild(i), weight * 0.5F + rest * 0.001F, marks);
  }
}

}  // namespace

void FaultTreeNode::AssignOrderWeight(float weight) {
  OnceMarks marks;
  Assign(*this, weight, marks);
  if (isModule) AssignBelow(*this, weight, marks);
}

}  // namespace FTS
