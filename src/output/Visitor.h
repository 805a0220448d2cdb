#pragma once

#include "analysis/Forward.h"
#include "faulttree/Forward.h"
#include "model/Forward.h"

namespace FTS {

class DiagnosticLog;

/// Never defined and never met. It holds the first place of each family of `Visitor` free: the
/// place of a class is what a writer is compiled against, and all others keep theirs while this one
/// stays.
class ReservedPlace;

/// Walks the analysed model and tells a writer what it meets. The visitor knows the shape of the
/// object graph and nothing of any file format; a writer overrides the hooks it needs.
///
/// Three families with one operation per class, in the same order of classes. `Visit(X)` is the
/// walk: `Enter(X)`, the parts of X, `Leave(X)`. A node that several parents share is met once from
/// each of them, because results are trees of text; `WalkChildren` is where a writer bounds that. A
/// writer that overrides some overloads of a family hides the rest, so it begins with
/// `using Visitor::Enter;` and so on.
class Visitor {
 public:
  virtual ~Visitor() = default;

  // The walk. Throws `VtnException` "No current implementation found for component: ..." where it
  // would have to go into an implementation that was never chosen.

  virtual void Visit(ReservedPlace& object);
  virtual void Visit(DiagnosticLog& object);
  virtual void Visit(CutSetList& object);
  virtual void Visit(CutSet& object);
  virtual void Visit(ExportedDeviationNode& object);
  virtual void Visit(ExportedDeviationProxy& object);
  virtual void Visit(InputDeviationNode& object);
  virtual void Visit(InputDeviationProxy& object);
  virtual void Visit(OutputDeviationNode& object);
  virtual void Visit(OutputDeviationProxy& object);
  virtual void Visit(GotoNode& object);
  virtual void Visit(ProxyNode& object);
  virtual void Visit(ComplementEvent& object);
  virtual void Visit(NormalEvent& object);
  virtual void Visit(ModuleEvent& object);
  virtual void Visit(CircleNode& object);
  virtual void Visit(PCCFNode& object);
  virtual void Visit(PCCFProxy& object);
  virtual void Visit(StateProxy& object);
  virtual void Visit(CCF& object);
  virtual void Visit(BasicEvent& object);
  virtual void Visit(XorGate& object);
  virtual void Visit(SandGate& object);
  virtual void Visit(PorGate& object);
  virtual void Visit(PandGate& object);
  virtual void Visit(NotGate& object);
  virtual void Visit(AndGate& object);
  virtual void Visit(OrGate& object);
  virtual void Visit(FaultTreeGate& object);
  virtual void Visit(FaultTreeNode& object);
  virtual void Visit(FaultTree& object);
  virtual void Visit(FMEA& object);
  virtual void Visit(Cause& object);
  virtual void Visit(Hazard& object);
  virtual void Visit(ExportedDeviation& object);
  virtual void Visit(OutputDeviation& object);
  virtual void Visit(InputDeviation& object);
  virtual void Visit(Deviation& object);
  virtual void Visit(Implementation& object);
  virtual void Visit(Line& object);
  virtual void Visit(Port& object);
  virtual void Visit(Component& object);
  virtual void Visit(Subsystem& object);
  virtual void Visit(Perspective& object);
  virtual void Visit(Model& object);

  // Called before the parts of the object.

  virtual void Enter(ReservedPlace&) {}
  virtual void Enter(DiagnosticLog&) {}
  virtual void Enter(CutSetList&) {}
  virtual void Enter(CutSet&) {}
  virtual void Enter(ExportedDeviationNode&) {}
  virtual void Enter(ExportedDeviationProxy&) {}
  virtual void Enter(InputDeviationNode&) {}
  virtual void Enter(InputDeviationProxy&) {}
  virtual void Enter(OutputDeviationNode&) {}
  virtual void Enter(OutputDeviationProxy&) {}
  virtual void Enter(GotoNode&) {}
  virtual void Enter(ProxyNode&) {}
  virtual void Enter(ComplementEvent&) {}
  virtual void Enter(NormalEvent&) {}
  virtual void Enter(ModuleEvent&) {}
  virtual void Enter(CircleNode&) {}
  virtual void Enter(PCCFNode&) {}
  virtual void Enter(PCCFProxy&) {}
  virtual void Enter(StateProxy&) {}
  virtual void Enter(CCF&) {}
  virtual void Enter(BasicEvent&) {}
  virtual void Enter(XorGate&) {}
  virtual void Enter(SandGate&) {}
  virtual void Enter(PorGate&) {}
  virtual void Enter(PandGate&) {}
  virtual void Enter(NotGate&) {}
  virtual void Enter(AndGate&) {}
  virtual void Enter(OrGate&) {}
  virtual void Enter(FaultTreeGate&) {}
  virtual void Enter(FaultTreeNode&) {}
  virtual void Enter(FaultTree&) {}
  virtual void Enter(FMEA&) {}
  virtual void Enter(Cause&) {}
  virtual void Enter(Hazard&) {}
  virtual void Enter(ExportedDeviation&) {}
  virtual void Enter(OutputDeviation&) {}
  virtual void Enter(InputDeviation&) {}
  virtual void Enter(Deviation&) {}
  virtual void Enter(Implementation&) {}
  virtual void Enter(Line&) {}
  virtual void Enter(Port&) {}
  virtual void Enter(Component&) {}
  virtual void Enter(Subsystem&) {}
  virtual void Enter(Perspective&) {}
  virtual void Enter(Model&) {}

  // Called after the parts of the object.

  virtual void Leave(ReservedPlace&) {}
  virtual void Leave(DiagnosticLog&) {}
  virtual void Leave(CutSetList&) {}
  virtual void Leave(CutSet&) {}
  virtual void Leave(ExportedDeviationNode&) {}
  virtual void Leave(ExportedDeviationProxy&) {}
  virtual void Leave(InputDeviationNode&) {}
  virtual void Leave(InputDeviationProxy&) {}
  virtual void Leave(OutputDeviationNode&) {}
  virtual void Leave(OutputDeviationProxy&) {}
  virtual void Leave(GotoNode&) {}
  virtual void Leave(ProxyNode&) {}
  virtual void Leave(ComplementEvent&) {}
  virtual void Leave(NormalEvent&) {}
  virtual void Leave(ModuleEvent&) {}
  virtual void Leave(CircleNode&) {}
  virtual void Leave(PCCFProxy&) {}  // Before the node it stands for, unlike in `Enter`.
  virtual void Leave(PCCFNode&) {}
  virtual void Leave(StateProxy&) {}
  virtual void Leave(CCF&) {}
  virtual void Leave(BasicEvent&) {}
  virtual void Leave(XorGate&) {}
  virtual void Leave(SandGate&) {}
  virtual void Leave(PorGate&) {}
  virtual void Leave(PandGate&) {}
  virtual void Leave(NotGate&) {}
  virtual void Leave(AndGate&) {}
  virtual void Leave(OrGate&) {}
  virtual void Leave(FaultTreeGate&) {}
  virtual void Leave(FaultTreeNode&) {}
  virtual void Leave(FaultTree&) {}
  virtual void Leave(FMEA&) {}
  virtual void Leave(Cause&) {}
  virtual void Leave(Hazard&) {}
  virtual void Leave(ExportedDeviation&) {}
  virtual void Leave(OutputDeviation&) {}
  virtual void Leave(InputDeviation&) {}
  virtual void Leave(Deviation&) {}
  virtual void Leave(Implementation&) {}
  virtual void Leave(Line&) {}
  virtual void Leave(Port&) {}
  virtual void Leave(Component&) {}
  virtual void Leave(Subsystem&) {}
  virtual void Leave(Perspective&) {}
  virtual void Leave(Model&) {}

 protected:
  /// Walks the children of a gate or proxy by index, those of the current state. A node that lies
  /// on the path already is not walked again, so that the walk ends on any graph.
  virtual void WalkChildren(FaultTreeNode& node);
};

}  // namespace FTS
