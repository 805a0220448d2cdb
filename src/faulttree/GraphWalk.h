#pragma once

#include <vector>

#include "faulttree/FaultTreeNode.h"
#include "faulttree/Marks.h"

namespace FTS {

/// Calls `work` for the node and everything below it: each node once, parents first, children in
/// their order. The children walked are those that are current when `work` has returned. The walk
/// needs no deep stack and may meet cycles. What `marks` have met before is passed by, so that
/// several roots can be walked as one graph.
template <typename Work>
void ForEachNode(FaultTreeNode& root, OnceMarks& marks, const Work& work) {
  std::vector<FaultTreeNode*> pending{&root};
  while (!pending.empty()) {
    FaultTreeNode& node = *pending.back();
    pending.pop_back();
    if (!marks.Enter(node)) continue;
    work(node);
    for (int i = node.GetChildCount() - 1; i >= 0; --i) pending.push_back(node.GetChild(i).get());
  }
}

/// The same for one root.
template <typename Work>
void ForEachNode(FaultTreeNode& root, const Work& work) {
  OnceMarks marks;
  ForEachNode(root, marks, work);
}

}  // namespace FTS
