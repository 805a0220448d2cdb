#pragma once

#include "analysis/Forward.h"
#include "faulttree/Forward.h"
#include "model/Forward.h"

namespace FTS {

// The passes that turn a synthesised graph into an acyclic tree fit for analysis. Each works on the
// current children lists of the whole graph below a root and lives in a source of its own.

/// Finds the loops of the tree, in a copy of its graph when there are any (`FaultTree::root` is
/// then replaced: other trees share the original). Each node at which a loop closes gets its
/// `circle`, entered in `Model::basicEvents`; sets `FaultTree::hasLoops`. faulttree/Circles.cpp
void FindCircles(Model& model, FaultTree& tree);

/// Reports loops that no single cut breaks as errors, and marks the trees concerned as
/// `unbreakable`. Needs `FindCircles`. faulttree/CrazyLoops.cpp
void DetectCrazyLoops(FaultTree& tree);

/// Marks the tree as `unbreakable` and reports that the search in its loops had to end.
/// faulttree/Circles.cpp
void RejectEndlessLoops(FaultTree& tree);

/// Replaces each edge that closes a loop by the circle of the node it leads to.
/// faulttree/Circles.cpp
void CutCircles(Model& model, FaultTreeNode& root);

/// Shrinks the graph to its logic: removes what is hanging, lifts the inputs of nodes with a single
/// child and of gates below gates of the same type. Needs an acyclic graph.
/// faulttree/Contraction.cpp
void Contract(Model& model, FaultTreeNode& root);

/// Removes what is hanging and leaves the structure as it is. Needs an acyclic graph.
/// faulttree/Contraction.cpp
void Subcontract(FaultTreeNode& root);

}  // namespace FTS
