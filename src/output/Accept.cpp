// Which `Visit` an object goes to: the one of its own exact class. The bodies stand here, above the
// classes, so that no header below knows the visitor.

#include "analysis/FMEA.h"
#include "analysis/FaultTree.h"
#include "analysis/ModuleEvent.h"
#include "faulttree/BasicEvent.h"
#include "faulttree/CircleNode.h"
#include "faulttree/CommonCauseNodes.h"
#include "faulttree/DeviationNodes.h"
#include "faulttree/DeviationProxies.h"
#include "faulttree/Gates.h"
#include "faulttree/GotoNode.h"
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
#include "output/Visitor.h"

namespace FTS {

void ExportedDeviationNode::Accept(Visitor& visitor) { visitor.Visit(*this); }
void ExportedDeviationProxy::Accept(Visitor& visitor) { visitor.Visit(*this); }
void InputDeviationNode::Accept(Visitor& visitor) { visitor.Visit(*this); }
void InputDeviationProxy::Accept(Visitor& visitor) { visitor.Visit(*this); }
void OutputDeviationNode::Accept(Visitor& visitor) { visitor.Visit(*this); }
void OutputDeviationProxy::Accept(Visitor& visitor) { visitor.Visit(*this); }
void GotoNode::Accept(Visitor& visitor) { visitor.Visit(*this); }
void ProxyNode::Accept(Visitor& visitor) { visitor.Visit(*this); }
void ComplementEvent::Accept(Visitor& visitor) { visitor.Visit(*this); }
void NormalEvent::Accept(Visitor& visitor) { visitor.Visit(*this); }
void ModuleEvent::Accept(Visitor& visitor) { visitor.Visit(*this); }
void CircleNode::Accept(Visitor& visitor) { visitor.Visit(*this); }
void PCCFNode::Accept(Visitor& visitor) { visitor.Visit(*this); }
void PCCFProxy::Accept(Visitor& visitor) { visitor.Visit(*this); }
void StateProxy::Accept(Visitor& visitor) { visitor.Visit(*this); }
void CCF::Accept(Visitor& visitor) { visitor.Visit(*this); }
void BasicEvent::Accept(Visitor& visitor) { visitor.Visit(*this); }
void XorGate::Accept(Visitor& visitor) { visitor.Visit(*this); }
void SandGate::Accept(Visitor& visitor) { visitor.Visit(*this); }
void PorGate::Accept(Visitor& visitor) { visitor.Visit(*this); }
void PandGate::Accept(Visitor& visitor) { visitor.Visit(*this); }
void NotGate::Accept(Visitor& visitor) { visitor.Visit(*this); }
void AndGate::Accept(Visitor& visitor) { visitor.Visit(*this); }
void OrGate::Accept(Visitor& visitor) { visitor.Visit(*this); }
void FaultTree::Accept(Visitor& visitor) { visitor.Visit(*this); }
void FMEA::Accept(Visitor& visitor) { visitor.Visit(*this); }
void Cause::Accept(Visitor& visitor) { visitor.Visit(*this); }
void Hazard::Accept(Visitor& visitor) { visitor.Visit(*this); }
void ExportedDeviation::Accept(Visitor& visitor) { visitor.Visit(*this); }
void OutputDeviation::Accept(Visitor& visitor) { visitor.Visit(*this); }
void InputDeviation::Accept(Visitor& visitor) { visitor.Visit(*this); }
void Deviation::Accept(Visitor& visitor) { visitor.Visit(*this); }
void Implementation::Accept(Visitor& visitor) { visitor.Visit(*this); }
void Line::Accept(Visitor& visitor) { visitor.Visit(*this); }
void Port::Accept(Visitor& visitor) { visitor.Visit(*this); }
void Component::Accept(Visitor& visitor) { visitor.Visit(*this); }
void Subsystem::Accept(Visitor& visitor) { visitor.Visit(*this); }
void Perspective::Accept(Visitor& visitor) { visitor.Visit(*this); }
void Model::Accept(Visitor& visitor) { visitor.Visit(*this); }

}  // namespace FTS
