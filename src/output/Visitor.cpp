#include "output/Visitor.h"

#include <memory>
#include <string>

#include "analysis/CutSet.h"
#include "analysis/CutSetList.h"
#include "analysis/FMEA.h"
#include "analysis/FaultTree.h"
#include "analysis/ModuleEvent.h"
#include "app/DiagnosticLog.h"
#include "faulttree/BasicEvent.h"
#include "faulttree/CircleNode.h"
#include "faulttree/CommonCauseNodes.h"
#include "faulttree/DeviationNodes.h"
#include "faulttree/DeviationProxies.h"
#include "faulttree/Gates.h"
#include "faulttree/GotoNode.h"
#include "faulttree/Marks.h"
#include "model/CCF.h"
#include "model/Component.h"
#include "model/Deviation.h"
#include "model/Hazard.h"
#include "model/IFailureCause.h"
#include "model/Implementation.h"
#include "model/Line.h"
#include "model/Model.h"
#include "model/Perspective.h"
#include "model/Port.h"
#include "model/Subsystem.h"

namespace FTS {

namespace {

void WalkCauses(const IFailureCause& holder, Visitor& visitor) {
  for (const auto& cause : holder.causes) cause->Accept(visitor);
}

}  // namespace

void Visitor::WalkChildren(FaultTreeNode& node) {
  const OnPathMark mark(node);
  if (!mark.Entered()) return;
  for (int i = 0; i < node.GetChildCount(); ++i) node.GetChild(i)->Accept(*this);
}

// Nothing is behind the reserved place, not even hooks to call.
void Visitor::Visit(ReservedPlace&) {}

void Visitor::Visit(DiagnosticLog& object) {
  Enter(object);
  Leave(object);
}

// The others of the list merely contain its event: they begin with another one and are met in its
// list. So each cut set of a tree is met once.
void Visitor::Visit(CutSetList& object) {
  Enter(object);
  for (CutSet* cutSet : object.Own()) Visit(*cutSet);
  Leave(object);
}

// Members are told as basic events whatever they are: what a cut set holds are events of one kind
// to a reader.
void Visitor::Visit(CutSet& object) {
  Enter(object);
  for (BasicEvent* event : object.events) Visit(*event);
  Leave(object);
}

void Visitor::Visit(ExportedDeviationNode& object) {
  Enter(object);
  Leave(object);
}

void Visitor::Visit(ExportedDeviationProxy& object) {
  Enter(object);
  WalkChildren(object);
  Leave(object);
}

void Visitor::Visit(InputDeviationNode& object) {
  Enter(object);
  Leave(object);
}

void Visitor::Visit(InputDeviationProxy& object) {
  Enter(object);
  WalkChildren(object);
  Leave(object);
}

void Visitor::Visit(OutputDeviationNode& object) {
  Enter(object);
  Leave(object);
}

void Visitor::Visit(OutputDeviationProxy& object) {
  Enter(object);
  WalkChildren(object);
  Leave(object);
}

void Visitor::Visit(GotoNode& object) {
  Enter(object);
  WalkChildren(object);
  Leave(object);
}

void Visitor::Visit(ProxyNode& object) {
  Enter(object);
  WalkChildren(object);
  Leave(object);
}

void Visitor::Visit(ComplementEvent& object) {
  Enter(object);
  Leave(object);
}

void Visitor::Visit(NormalEvent& object) {
  Enter(object);
  Leave(object);
}

void Visitor::Visit(ModuleEvent& object) {
  Enter(object);
  Leave(object);
}

void Visitor::Visit(CircleNode& object) {
  Enter(object);
  Leave(object);
}

void Visitor::Visit(PCCFNode& object) {
  Enter(object);
  if (object.actual) object.actual->Accept(*this);  // Null until activated.
  Leave(object);
}

void Visitor::Visit(PCCFProxy& object) {
  Enter(object);
  if (object.node) object.node->Accept(*this);
  Leave(object);
}

void Visitor::Visit(StateProxy& object) {
  Enter(object);
  WalkChildren(object);
  Leave(object);
}

void Visitor::Visit(CCF& object) {
  Enter(object);
  Leave(object);
}

void Visitor::Visit(BasicEvent& object) {
  Enter(object);
  Leave(object);
}

void Visitor::Visit(XorGate& object) {
  Enter(object);
  WalkChildren(object);
  Leave(object);
}

void Visitor::Visit(SandGate& object) {
  Enter(object);
  WalkChildren(object);
  Leave(object);
}

void Visitor::Visit(PorGate& object) {
  Enter(object);
  WalkChildren(object);
  Leave(object);
}

void Visitor::Visit(PandGate& object) {
  Enter(object);
  WalkChildren(object);
  Leave(object);
}

void Visitor::Visit(NotGate& object) {
  Enter(object);
  WalkChildren(object);
  Leave(object);
}

void Visitor::Visit(AndGate& object) {
  Enter(object);
  WalkChildren(object);
  Leave(object);
}

void Visitor::Visit(OrGate& object) {
  Enter(object);
  WalkChildren(object);
  Leave(object);
}

// Abstract classes: no object is of them alone, and so their hooks are never called.
void Visitor::Visit(FaultTreeGate&) {}

void Visitor::Visit(FaultTreeNode&) {}

void Visitor::Visit(FaultTree& object) {
  Enter(object);
  if (object.root) object.root->Accept(*this);
  Leave(object);
}

void Visitor::Visit(FMEA& object) {
  Enter(object);
  Leave(object);
}

void Visitor::Visit(Cause& object) {
  Enter(object);
  Leave(object);
}

void Visitor::Visit(Hazard& object) {
  Enter(object);
  WalkCauses(object, *this);
  Leave(object);
}

void Visitor::Visit(ExportedDeviation& object) {
  Enter(object);
  WalkCauses(object, *this);
  Leave(object);
}

void Visitor::Visit(OutputDeviation& object) {
  Enter(object);
  WalkCauses(object, *this);
  Leave(object);
}

void Visitor::Visit(InputDeviation& object) {
  Enter(object);
  Leave(object);
}

void Visitor::Visit(Deviation& object) {
  Enter(object);
  Leave(object);
}

void Visitor::Visit(Implementation& object) {
  Enter(object);
  for (const auto& [name, event] : object.basicEvents) event->Accept(*this);
  for (const auto& [name, deviation] : object.inputDeviationRecords) deviation->Accept(*this);
  for (const auto& [name, proxy] : object.ccfNodes) proxy->Accept(*this);
  const auto exportedEnd = object.ExportedDeviationsEnd(DefaultState);
  for (auto i = object.ExportedDeviationsBegin(DefaultState); i != exportedEnd; ++i) {
    i->second->Accept(*this);
  }
  const auto outputEnd = object.OutputDeviationsEnd(DefaultState);
  for (auto i = object.OutputDeviationsBegin(DefaultState); i != outputEnd; ++i) {
    i->second->Accept(*this);
  }
  Leave(object);
}

void Visitor::Visit(Line& object) {
  Enter(object);
  Leave(object);
}

// A port is only announced. Its `Leave` stays silent on purpose: writers close what they opened for
// a port in `Enter` itself.
void Visitor::Visit(Port& object) { Enter(object); }

void Visitor::Visit(Component& object) {
  Enter(object);
  for (const auto& [name, port] : object.ports) Visit(*port);
  for (const auto& implementation : object.implementations) Visit(*implementation);
  // Throws without current implementation: results of half a system would look like results.
  if (const std::shared_ptr<Subsystem> inside = object.GetSubsystem()) inside->Accept(*this);
  Leave(object);
}

void Visitor::Visit(Subsystem& object) {
  Enter(object);
  for (const auto& [name, component] : object.components) Visit(*component);
  for (const auto& line : object.lines) Visit(*line);
  Leave(object);
}

void Visitor::Visit(Perspective& object) {
  Enter(object);
  if (object.rootSubsystem) Visit(*object.rootSubsystem);
  Leave(object);
}

void Visitor::Visit(Model& object) {
  Enter(object);
  for (const auto& [name, perspective] : object.perspectives) Visit(*perspective);
  for (const auto& [name, hazard] : object.hazards) Visit(*hazard);
  Leave(object);
}

}  // namespace FTS
