// The nodes of a fault tree as elements of results XML. An event is a reference by its id, for its
// data stands in the table of failure modes; what has children is an element around theirs.

#include <memory>

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
#include "output/ResultsWriter.h"

namespace FTS {

namespace {

constexpr std::string_view And = "And";
constexpr std::string_view CommonCause = "PCCF";
constexpr std::string_view Exported = "ExportedDeviation";
constexpr std::string_view Goto = "Goto";  // States are jumps to a reader.
constexpr std::string_view Input = "InputDeviation";
constexpr std::string_view Not = "Not";
constexpr std::string_view Or = "Or";
constexpr std::string_view Output = "OutputDeviation";

/// A common cause is named after the component it stands in.
std::string NameOf(const PCCFProxy& proxy) {
  const std::shared_ptr<Component> owner = proxy.node ? proxy.node->owner.lock() : nullptr;
  return owner ? owner->GetFullNameText() + "." + proxy.name : proxy.name;
}

}  // namespace

void ResultsWriter::WalkChildren(FaultTreeNode& node) {
  const int count = node.GetChildCount();
  if (count > nodesLeft) {
    cutShort = true;
    return;
  }
  nodesLeft -= count;
  Visitor::WalkChildren(node);
}

void ResultsWriter::WriteEventReference(const FaultTreeNode& node) {
  out << "<Event ID=\"" << node.GetId() << "\" />";
}

void ResultsWriter::OpenNode(std::string_view element, const FaultTreeNode& node,
                             std::string_view nodeName) {
  out << "<" << element << " ID=\"" << node.GetId() << "\">";
  WriteElement("Name", nodeName);
}

void ResultsWriter::OpenParent(std::string_view element, const FaultTreeNode& node) {
  OpenNode(element, node, node.name);
  out << "<Children>";
}

void ResultsWriter::CloseParent(std::string_view element) {
  out << "</Children></" << element << ">";
}

void ResultsWriter::Enter(ExportedDeviationNode& node) { WriteEventReference(node); }
void ResultsWriter::Enter(InputDeviationNode& node) { WriteEventReference(node); }
void ResultsWriter::Enter(OutputDeviationNode& node) { WriteEventReference(node); }
void ResultsWriter::Enter(ComplementEvent& node) { WriteEventReference(node); }
void ResultsWriter::Enter(NormalEvent& node) { WriteEventReference(node); }
void ResultsWriter::Enter(ModuleEvent& node) { WriteEventReference(node); }
void ResultsWriter::Enter(CircleNode& node) { WriteEventReference(node); }
void ResultsWriter::Enter(CCF& node) { WriteEventReference(node); }
void ResultsWriter::Enter(BasicEvent& node) { WriteEventReference(node); }

void ResultsWriter::Enter(ExportedDeviationProxy& node) { OpenParent(Exported, node); }
void ResultsWriter::Leave(ExportedDeviationProxy&) { CloseParent(Exported); }
void ResultsWriter::Enter(InputDeviationProxy& node) { OpenParent(Input, node); }
void ResultsWriter::Leave(InputDeviationProxy&) { CloseParent(Input); }
void ResultsWriter::Enter(OutputDeviationProxy& node) { OpenParent(Output, node); }
void ResultsWriter::Leave(OutputDeviationProxy&) { CloseParent(Output); }
void ResultsWriter::Enter(GotoNode& node) { OpenParent(Goto, node); }
void ResultsWriter::Leave(GotoNode&) { CloseParent(Goto); }
void ResultsWriter::Enter(StateProxy& node) { OpenParent(Goto, node); }
void ResultsWriter::Leave(StateProxy&) { CloseParent(Goto); }
void ResultsWriter::Enter(NotGate& node) { OpenParent(Not, node); }
void ResultsWriter::Leave(NotGate&) { CloseParent(Not); }
void ResultsWriter::Enter(AndGate& node) { OpenParent(And, node); }
void ResultsWriter::Leave(AndGate&) { CloseParent(And); }
void ResultsWriter::Enter(OrGate& node) { OpenParent(Or, node); }
void ResultsWriter::Leave(OrGate&) { CloseParent(Or); }

void ResultsWriter::Enter(PCCFProxy& node) {
  OpenNode(CommonCause, node, NameOf(node));
  out << "<Children>";
}

void ResultsWriter::Leave(PCCFProxy&) { CloseParent(CommonCause); }

// The node has the element of its proxy, but its common cause stands in it without `Children`.
void ResultsWriter::Enter(PCCFNode& node) { OpenNode(CommonCause, node, node.name); }
void ResultsWriter::Leave(PCCFNode&) { out << "</" << CommonCause << ">"; }

}  // namespace FTS
