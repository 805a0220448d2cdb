// Contraction: shrinks a tree to its logic.
// Assumes loops are cut. Changes the current children lists only, so that the tree as synthesised
// stays readable in its own state. The result is that of lifting bottom-up, gate by gate: a gate
// takes in, behind its own children, the child of each lone-child node and the children of each
// gate of its type, in the order in which it comes to them, leaving out what it has already.
// Lifting literally would copy the whole of a long chain into every one of its gates; so the work
// is done in two passes, each of which meets a shared node once. Judging decides bottom-up what
// falls away and what is a lone child, and leaves gates of the same type nested. Flattening then
// goes top-down and unfolds the nested gates, only for gates that remain. A gate that an earlier
// tree has contracted is left as it is: a second visit would change nothing. Marks: none but the
// walks' own. Subcontraction, the milder form, removes dead branches and leaves the structure as it
// is; it meets each node once.

#include <algorithm>
#include <memory>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

#include "analysis/Prime.h"
#include "app/Config.h"
#include "app/DiagnosticLog.h"
#include "faulttree/BasicEvent.h"
#include "faulttree/DeviationProxies.h"
#include "faulttree/FaultTreeGate.h"
#include "faulttree/Marks.h"
#include "faulttree/ProxyNode.h"
#include "faulttree/RefinementPasses.h"
#include "model/Component.h"
#include "model/DeviationName.h"
#include "model/Model.h"
#include "model/Port.h"

namespace FTS {

namespace {

using Pointer = FaultTreeNode::Pointer;

void WarnOf(const char* action, const FaultTreeNode& node) {
  DiagnosticLog::Instance().AddWarning(std::string("Warning: ") + action + " - " + node.name);
}

/// What a gate holds already, as `FaultTreeNode::HasChild` would find it: by id, events by prime
/// too.
class Holdings {
 public:
  /// True when the node was not there yet.
  bool Enter(const FaultTreeNode& node) {
    const auto* event = node.IsEvent() ? dynamic_cast<const BasicEvent*>(&node) : nullptr;
    const bool newId = ids.insert(node.GetId()).second;
    const bool newPrime = !event || primes.insert(event->prime).second;
    return newId && newPrime;
  }

 private:
  std::unordered_set<int> ids;
  std::unordered_set<double> primes;
};

bool IsGateOfType(const FaultTreeNode& node, NodeType type) {
  return node.IsGate() && node.type == type;
}

/// True when the node has exactly one child and gives way to it. A lone gate of the same type below
/// a gate stands for several children, which have not been unfolded yet.
bool HasLoneChild(const FaultTreeNode& node) {
  return node.GetChildCount() == 1 &&
         !(node.IsGate() && IsGateOfType(*node.GetChild(0), node.type));
}

/// True for a gate all of whose children are one and the same node: unfolded, it adds one child at
/// most, and a parent that holds nothing else is lone.
bool HoldsOneNodeOnly(const FaultTreeNode& gate) {
  for (int i = 1; i < gate.GetChildCount(); ++i) {
    if (gate.GetChild(i) != gate.GetChild(0)) return false;
  }
  return !IsGateOfType(*gate.GetChild(0), gate.type);
}

class Judge {
 public:
  Judge(Model& initModel, const FaultTreeNode& initRoot)
      : model(initModel),
        root(initRoot),
        removeHanging(Config::Instance().removeHangingNodes),
        removeCircles(Config::Instance().removeCircleNodes) {}

  void Visit(FaultTreeNode& node) {
    if (!marks.Enter(node)) return;
    if (node.IsGate()) VisitGate(static_cast<FaultTreeGate&>(node));
    if (node.IsProxy()) VisitProxy(static_cast<ProxyNode&>(node));
  }

 private:
  struct Entry {
    Pointer node;
    bool nested;  // A gate of the same type, to be unfolded later.
  };

  void VisitGate(FaultTreeGate& gate) {
    ChildrenList& list = gate.CurrentList();
    if (list.contracted) return;
    std::vector<Entry> entries;
    Holdings holdings;
    for (const Pointer& child : list.children) {
      entries.push_back({child, false});
      holdings.Enter(*child);
    }
    const std::size_t own = entries.size();
    std::vector<Pointer> kept;
    for (std::size_t i = 0; i < entries.size(); ++i) {
      if (i == own) list.firstAppended = kept.size();
      const Entry entry = entries[i];
      if (entry.nested || Stays(gate, entry.node, entries, holdings)) kept.push_back(entry.node);
    }
    if (entries.size() == own) list.firstAppended = kept.size();
    if (kept.empty() && !entries.empty() &&
        std::all_of(entries.begin(), entries.end(),
                    [this](const Entry& entry) { return IsLeftByLoops(*entry.node); })) {
      leftByLoops.insert(&gate);
    }
    list.children = std::move(kept);
    list.contracted = true;
  }

  /// Contracts a child and tells whether the gate keeps it; what it gives way to joins `entries`.
  bool Stays(const FaultTreeGate& gate, const Pointer& child, std::vector<Entry>& entries,
             Holdings& holdings) {
    Visit(*child);
    // A gate over nothing but holes is a hole like them: kept, it would read as "never" and take
    // the cut sets of an AND above with it.
    if (!child->IsEvent() && child->GetChildCount() == 0) {
      if (child->type == NodeType::PCCF) WarnOf("removing unactivated PCCF", *child);
      return false;
    }
    const bool mayFold = child->type != NodeType::Not && child->type != NodeType::PCCF;
    if (mayFold && HasLoneChild(*child)) {
      const Pointer& only = child->GetChild(0);
      if (holdings.Enter(*only)) entries.push_back({only, false});
      return false;
    }
    if (!IsGateOfType(*child, gate.type)) return true;
    if (!HoldsOneNodeOnly(*child)) {
      entries.push_back({child, true});
    } else if (holdings.Enter(*child->GetChild(0))) {
      entries.push_back({child->GetChild(0), false});
    }
    return false;
  }

  void VisitProxy(ProxyNode& proxy) {
    if (proxy.GetChildCount() == 0) {
      CloseEmpty(proxy);
      return;
    }
    const Pointer child = proxy.GetChild(0);
    Visit(*child);
    LiftIntoProxy(proxy);
    if (proxy.GetChildCount() > 0) return;
    if (IsLeftByLoops(*child)) {
      leftByLoops.insert(&proxy);
    } else {
      CloseEmpty(proxy);
    }
  }

  /// True for a loop that has been removed, and for what nothing but such loops led to. It is
  /// connected, though nothing is left of it, and the user must not be told otherwise.
  bool IsLeftByLoops(const FaultTreeNode& node) const {
    return (node.type == NodeType::Circle && removeCircles) || leftByLoops.contains(&node);
  }

  void LiftIntoProxy(ProxyNode& proxy) {
    const Pointer child = proxy.GetChild(0);
    if (child->type == NodeType::Circle && removeCircles) {
      WarnOf("removing circle node", *child);
      proxy.ClearChildren();
      return;
    }
    if (child->type != NodeType::Not && HasLoneChild(*child)) {
      proxy.ReplaceChild(0, child->GetChild(0));
    } else if (child->GetChildCount() == 0 && !child->IsEvent()) {
      proxy.ClearChildren();
      return;
    }
    const Pointer below = proxy.GetChild(0);
    // A negation below a negation stays: removing both is the work of `Dualise`.
    if (below->type == proxy.type && proxy.type != NodeType::Not && !below->IsEvent()) {
      proxy.ReplaceChild(0, below->GetChildCount() > 0 ? below->GetChild(0) : nullptr);
    }
  }

  /// Removes a proxy that stands for nothing (its parent does, seeing it empty), or puts an event
  /// into the hole.
  void CloseEmpty(ProxyNode& proxy) {
    switch (proxy.type) {
      case NodeType::InputDeviation:
        if (removeHanging) return WarnOf("removing unconnected input deviation", proxy);
        return FillWithEvent(proxy);
      case NodeType::OutputDeviation:
      case NodeType::External:
      case NodeType::ExternalDeviation:
        if (removeHanging) return WarnOf("removing unconnected line node leading to", proxy);
        return FillWithEvent(proxy);
      case NodeType::PCCF:
        if (removeHanging) return WarnOf("removing unconnected line node leading to", proxy);
        return FillWithEvent(proxy);
      default:
        return;  // Parentheses, negations and states have no name that would tell a user anything.
    }
  }

  void FillWithEvent(ProxyNode& proxy) {
    const std::shared_ptr<BasicEvent> event = EventFor(proxy);
    if (!event) return;
    if (event->prime == 0.0) event->prime = Prime::Instance().Next();
    model.AddEvent(event);
    proxy.AddChild(event);
  }

  /// Every instance of a line's expression has proxies of its own, but what they name is one thing,
  /// and two events for it would hide that a single cause fails several inputs.
  std::shared_ptr<BasicEvent> EventFor(ProxyNode& proxy) {
    const bool ofPort = proxy.type == NodeType::InputDeviation ||
                        proxy.type == NodeType::OutputDeviation || proxy.type == NodeType::External;
    if (!ofPort && proxy.type != NodeType::ExternalDeviation) return proxy.GetEventNode();
    std::string key = proxy.name;
    if (ofPort) {
      // The root of a hazard bears the hazard's name, which says nothing about ports.
      const bool isRoot = &proxy == &root;
      const auto port = isRoot ? nullptr : proxy.FindNamedPort();
      if (port) key = FailureClassOf(proxy.name) + "-" + port->GetFullNameText();
      if (proxy.type == NodeType::InputDeviation) key += " arriving";
    } else if (const auto owner = static_cast<ExportedDeviationProxy&>(proxy).owner.lock()) {
      key += " for " + owner->GetFullNameText();  // Each component has a host of its own.
    }
    std::shared_ptr<BasicEvent>& event = model.unconnectedEvents[key];
    if (!event) event = proxy.GetEventNode();
    if (&proxy == &root) event->owner.reset();
    return event;
  }

  Model& model;
  const FaultTreeNode& root;
  const bool removeHanging;
  const bool removeCircles;
  std::unordered_set<const FaultTreeNode*> leftByLoops;
  OnceMarks marks;
};

class Flattening {
 public:
  void Visit(FaultTreeNode& node) {
    if (!marks.Enter(node)) return;
    if (node.IsGate()) Unfold(static_cast<FaultTreeGate&>(node));
    for (int i = 0; i < node.GetChildCount(); ++i) Visit(*node.GetChild(i));
  }

 private:
  static void Unfold(FaultTreeGate& gate) {
    ChildrenList& list = gate.CurrentList();
    if (list.flattened) return;
    list.flattened = true;
    bool nested = false;
    for (std::size_t i = list.firstAppended; i < list.children.size(); ++i) {
      nested = nested || IsGateOfType(*list.children[i], gate.type);
    }
    if (!nested) return;
    Gathering gathering{gate.type, {}, {}, {}};
    for (std::size_t i = 0; i < list.firstAppended; ++i) {
      // The gate's own children stay as they are, repeated ones too.
      gathering.holdings.Enter(*list.children[i]);
      gathering.result.push_back(list.children[i]);
    }
    for (std::size_t i = list.firstAppended; i < list.children.size(); ++i) {
      gathering.Add(list.children[i]);
    }
    list.children = std::move(gathering.result);
  }

  struct Gathering {
    NodeType type;
    std::vector<Pointer> result;
    Holdings holdings;
    std::unordered_set<int> unfolded;  // By id; a gate met again holds nothing new.

    void Add(const Pointer& node) {
      if (!IsGateOfType(*node, type)) {
        if (holdings.Enter(*node)) result.push_back(node);
        return;
      }
      if (!unfolded.insert(node->GetId()).second) return;
      for (const Pointer& child : static_cast<FaultTreeGate&>(*node).Children()) Add(child);
    }
  };

  OnceMarks marks;
};

bool IsDeviation(const FaultTreeNode& node) {
  return node.type == NodeType::InputDeviation || node.type == NodeType::OutputDeviation ||
         node.type == NodeType::ExternalDeviation || node.type == NodeType::External;
}

/// True when the parent of the node drops it; says so where the user may miss it.
bool Falls(const FaultTreeNode& node) {
  const Config& config = Config::Instance();
  if (node.type == NodeType::Circle && config.removeCircleNodes) {
    WarnOf("removing circle node", node);
    return true;
  }
  if (node.IsEvent() || node.GetChildCount() > 0) return false;
  if (node.type == NodeType::PCCF) {
    WarnOf("removing unactivated PCCF", node);
  } else if (IsDeviation(node) && config.removeHangingNodes) {
    WarnOf("removing unconnected deviation", node);
  }
  return true;
}

void SubcontractBelow(FaultTreeNode& node, OnceMarks& marks) {
  if (!marks.Enter(node)) return;
  std::vector<Pointer> falling;
  for (int i = 0; i < node.GetChildCount(); ++i) {
    const Pointer child = node.GetChild(i);
    SubcontractBelow(*child, marks);
    if (Falls(*child)) falling.push_back(child);
  }
  for (const Pointer& child : falling) node.RemoveChild(*child);
}

}  // namespace

void Contract(Model& model, FaultTreeNode& root) {
  Judge(model, root).Visit(root);
  Flattening().Visit(root);
}

void Subcontract(FaultTreeNode& root) {
  OnceMarks marks;
  SubcontractBelow(root, marks);
}

}  // namespace FTS
