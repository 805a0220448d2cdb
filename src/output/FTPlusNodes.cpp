// FaultTree+ nodes: the records of a project's gates and events, and the links between them.
// Assumes nothing about the graph and changes nothing in it; what has been made stands in the
// project. Each node is met once in all trees, parents first and children in their order, so that a
// node that several parents share has one record.
// Blanks in front of line ends, and the wording of what is told, are those that scripts match.

#include <string>

#include "faulttree/BasicEvent.h"
#include "faulttree/FaultTreeNode.h"
#include "faulttree/GraphWalk.h"
#include "output/FTPlusProject.h"

namespace FTS {

namespace {

// Values of the field "Type" of a gate.
constexpr int OrType = 0;
constexpr int AndType = 1;
constexpr int PassType = 8;  // Hands its one input on.

// The most inputs of a gate, one of which may lead to a further gate.
constexpr int InputsPerGate = 18;

// Values of the fields "Input Type n".
constexpr int EventInput = 0;
constexpr int GateInput = 1;

std::string WithId(const char* before, const FaultTreeNode& node, const char* behind) {
  return before + std::to_string(node.GetId()) + behind;
}

/// The tool has no gates that ask for a sequence, and has always been given the version of its
/// library for their type: projects that were checked by hand count on it.
int OtherGateType(const FTPlusProject& project) { return project.GetVersion(); }

int TypeByNode(const FaultTreeNode& node, const FTPlusProject& project) {
  if (node.type == NodeType::NullOp) return PassType;
  if (node.type == NodeType::And) return AndType;
  if (node.type == NodeType::Or) return OrType;
  return OtherGateType(project);
}

int TypeOf(const FaultTreeNode& node, const FTPlusProject& project) {
  return node.GetChildCount() == 1 ? PassType : TypeByNode(node, project);
}

bool SetInput(FTPlusProject& project, const char* field, int record, int input, int value) {
  return project.SetInteger(GatesTable, field + std::to_string(input), record, value);
}

constexpr const char* InputType = "Input Type ";
constexpr const char* InputIndex = "Input Index ";

/// A further gate as the last input of the record; returns its record.
int ChainGate(FTPlusProject& project, const FaultTreeNode& node, int record, int input) {
  const int number = ++NodeCounters::Instance().kludgeGatesMade;
  const int further = project.CreateRecord(GatesTable, "Kludge-" + std::to_string(number));
  // It goes on with the inputs of its node, and so has the node's type.
  if (!project.SetInteger(GatesTable, "Type", further, TypeByNode(node, project))) {
    FTPlusProject::Tell(further, "error12 calling dll in kludge, how annoying");
  }
  if (!SetInput(project, InputType, record, input, GateInput)) {
    FTPlusProject::Tell(further, "error adding kludge gate to parent 1 ");
  }
  if (!SetInput(project, InputIndex, record, input, further)) {
    FTPlusProject::Tell(further, "error adding kludge gate to parent 2 ");
  }
  return further;
}

void AddInput(FTPlusProject& project, int record, int input, const FaultTreeNode& child) {
  const bool isEvent = child.IsEvent();
  const char* const adding = isEvent ? "error adding event (" : "error adding gate (";
  if (!SetInput(project, InputType, record, input, isEvent ? EventInput : GateInput)) {
    const char* const end = isEvent ? ") to parent 1 " : ") to parent 1  ";
    FTPlusProject::Tell(record, WithId(adding, child, end));
  }
  if (!SetInput(project, InputIndex, record, input, project.RecordOf(child))) {
    FTPlusProject::Tell(record, WithId(adding, child, ") to parent 2 "));
  }
}

/// The count runs over inputs and further gates alike. So the last gate of a chain may get one
/// input more than the others before that is noticed: projects have always been cut that way.
void LinkInputs(FTPlusProject& project, const FaultTreeNode& node) {
  int record = project.RecordOf(node);
  int input = 0;
  int count = 1;
  for (int i = 0; i < node.GetChildCount(); ++i) {
    if (count % InputsPerGate == 0 && node.GetChildCount() - count > 0) {
      record = ChainGate(project, node, record, input);
      input = 0;
      ++count;
    }
    AddInput(project, record, input, *node.GetChild(i));
    ++input;
    ++count;
  }
}

}  // namespace

std::string FaultTreeNode::GetFTPlusName() const {
  constexpr std::size_t Longest = 32;
  const std::string idText = "(" + std::to_string(id) + ")";
  if (name.size() + idText.size() <= Longest) return name + idText;
  const std::string cut = "..";
  return name.substr(0, Longest - cut.size() - idText.size()) + cut + idText;
}

std::string FaultTreeNode::GetFTPlusDescription() const {
  constexpr std::size_t Longest = 119;
  return description.substr(0, Longest);
}

bool FaultTreeNode::ExportFTPlusNode(FTPlusProject& project) {
  if (!project.CanWriteRecords()) return false;
  ForEachNode(*this, project.Marks(), [&](FaultTreeNode& node) { node.MakeFTPlusRecord(project); });
  return true;
}

bool FaultTreeNode::ExportFTPlusLinks(FTPlusProject& project) {
  if (!project.CanWriteRecords()) return false;
  ForEachNode(*this, project.Marks(),
              [&](const FaultTreeNode& node) { LinkInputs(project, node); });
  return true;
}

// Gates and proxies; a gate without inputs would be refused, and has no record.
void FaultTreeNode::MakeFTPlusRecord(FTPlusProject& project) {
  if (GetChildCount() == 0 || project.RecordOf(*this) != FTPlusProject::NoRecord) return;
  const int record = project.CreateRecord(GatesTable, *this);
  if (!project.SetInteger(GatesTable, "Type", record, TypeOf(*this, project))) {
    FTPlusProject::Tell(record, "error setting node type ");
  }
  if (!project.SetText(GatesTable, "Description", record, GetFTPlusDescription())) {
    FTPlusProject::Tell(record, "error setting node description ");
  }
}

void BasicEvent::MakeFTPlusRecord(FTPlusProject& project) {
  if (project.RecordOf(*this) != FTPlusProject::NoRecord) return;
  const int record = project.CreateRecord(EventsTable, *this);
  if (!project.SetText(EventsTable, "Description", record, GetFTPlusDescription())) {
    FTPlusProject::Tell(record, "error setting basic event description ");
  }
  ExportFailureModel(project);
}

}  // namespace FTS
