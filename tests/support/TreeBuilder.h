#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "faulttree/BasicEvent.h"
#include "faulttree/FaultTreeNode.h"

namespace FTS {

/// Builds node graphs from a notation that a test can state in a line.
///
///     AND(A, OR(B, C))          gates AND OR XOR PAND SAND POR, basic events A B C
///     OR(A, NOT(A))             equal names are one event
///     AND(G=OR(A, B), X(G))     G is shared; so is every named node
///     G=OR(A, AND(B, G))        a loop
///     OR(~A)                    the complement of A, as an event
///     OR(IN(A), late-P.in=IN()) proxies: a child or none, a name in front
///
/// The words of proxies are NOT, PROXY, IN, OUT, EXPORTED, GOTO, PCCF and STATE. A name may hold
/// any character but `(),=`, with blanks around it dropped; nodes without one get an empty name.
/// Events take their primes in the order in which they are first mentioned: 3, 5, 7, ... A text
/// that is not in this notation throws std::invalid_argument.
class TreeBuilder {
 public:
  using Pointer = FaultTreeNode::Pointer;

  explicit TreeBuilder(Model* initModel = nullptr) : model(initModel) {}

  /// Names are shared by all trees of one builder.
  Pointer Tree(std::string_view text);
  /// Lets the notation use a node made elsewhere, of a class without a word for instance.
  void Define(const std::string& name, Pointer node);
  /// The node of that name, which must have been mentioned.
  Pointer Node(const std::string& name) const;
  /// The same for an event.
  std::shared_ptr<BasicEvent> Event(const std::string& name) const;

 private:
  class Reader;

  Pointer EventNamed(const std::string& name);

  Model* model;
  std::map<std::string, Pointer> named;
};

/// The graph that the text describes, see `TreeBuilder`. All nodes that the text names live at
/// least as long as the result, whatever becomes of the graph.
FaultTreeNode::Pointer Tree(std::string_view text, Model* model = nullptr);

/// The current graph in the notation of `TreeBuilder`. A name stands before a gate or proxy only
/// where it is needed: at a node of a loop ("#" and the id without a name), at a shared node whose
/// name is a plain word, and at an empty proxy. Other shared nodes are written out each time.
std::string ShapeOf(const FaultTreeNode& root);
std::string ShapeOf(const FaultTreeNode::Pointer& root);

/// The first node below and including the root with that name, parents first; null when there is
/// none.
FaultTreeNode* FindNode(FaultTreeNode& root, const std::string& name);

/// Takes all children, of all states, memoised clones and circles from the nodes of the graph, so
/// that a loop in it does not keep it alive.
void ReleaseGraph(const FaultTreeNode::Pointer& root);

/// A root that calls `ReleaseGraph` when it dies.
class ScopedGraph {
 public:
  explicit ScopedGraph(FaultTreeNode::Pointer initRoot) : root(std::move(initRoot)) {}
  ~ScopedGraph() { ReleaseGraph(root); }
  ScopedGraph(const ScopedGraph&) = delete;
  ScopedGraph& operator=(const ScopedGraph&) = delete;

  FaultTreeNode& operator*() const { return *root; }
  FaultTreeNode* operator->() const { return root.get(); }
  const FaultTreeNode::Pointer& Get() const { return root; }

 private:
  FaultTreeNode::Pointer root;
};

}  // namespace FTS
