#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "analysis/CutSet.h"
#include "analysis/CutSetList.h"
#include "analysis/FMEA.h"
#include "analysis/FaultTree.h"
#include "analysis/ModuleEvent.h"
#include "app/DiagnosticLog.h"
#include "faulttree/CircleNode.h"
#include "faulttree/CommonCauseNodes.h"
#include "faulttree/DeviationNodes.h"
#include "faulttree/DeviationProxies.h"
#include "faulttree/Gates.h"
#include "faulttree/GotoNode.h"
#include "model/CCF.h"
#include "model/IFailureCause.h"
#include "output/RecordingVisitor.h"
#include "support/CaseName.h"
#include "support/ProcessStateTest.h"

namespace FTS {

namespace {

using Steps = std::vector<std::string>;
using NodePointer = std::shared_ptr<FaultTreeNode>;

std::shared_ptr<BasicEvent> Event(const std::string& name) {
  return std::make_shared<BasicEvent>(name, nullptr, true);
}

Steps WalkOf(IVisitable& object) {
  RecordingVisitor visitor;
  object.Accept(visitor);
  return visitor.steps;
}

struct NodeCase {
  const char* name;
  std::function<NodePointer()> make;
};

void PrintTo(const NodeCase& row, std::ostream* stream) { *stream << row.name; }

class EventWalkTest : public ProcessStateTest, public ::testing::WithParamInterface<NodeCase> {};

TEST_P(EventWalkTest, IsEnteredAndLeft) {
  const NodePointer node = GetParam().make();
  const std::string name = GetParam().name;
  EXPECT_EQ(WalkOf(*node), Steps({"+" + name, "-" + name}));
}

INSTANTIATE_TEST_SUITE_P(
    Classes, EventWalkTest,
    ::testing::Values(
        NodeCase{"BasicEvent", [] { return Event("e"); }},
        NodeCase{"NormalEvent", [] { return std::make_shared<NormalEvent>("e", nullptr, true); }},
        NodeCase{"CircleNode", [] { return std::make_shared<CircleNode>("e", nullptr, 1U, 5); }},
        NodeCase{"CCF", [] { return std::make_shared<CCF>("e", nullptr, nullptr, true); }},
        NodeCase{"PCCFNode", [] { return std::make_shared<PCCFNode>("e", nullptr); }},
        NodeCase{"InputDeviationNode",
                 [] { return std::make_shared<InputDeviationNode>("e", nullptr, nullptr); }},
        NodeCase{"OutputDeviationNode",
                 [] { return std::make_shared<OutputDeviationNode>("e", nullptr); }},
        NodeCase{"ExportedDeviationNode",
                 [] { return std::make_shared<ExportedDeviationNode>("e", nullptr); }}),
    CaseName);

class ProxyWalkTest : public ProcessStateTest, public ::testing::WithParamInterface<NodeCase> {};

TEST_P(ProxyWalkTest, ChildIsMetInside) {
  const NodePointer node = GetParam().make();
  node->AddChild(Event("e"));
  const std::string name = GetParam().name;
  EXPECT_EQ(WalkOf(*node), Steps({"+" + name, "+BasicEvent", "-BasicEvent", "-" + name}));
}

TEST_P(ProxyWalkTest, EmptyOneIsEnteredAndLeft) {
  const NodePointer node = GetParam().make();
  const std::string name = GetParam().name;
  EXPECT_EQ(WalkOf(*node), Steps({"+" + name, "-" + name}));
}

INSTANTIATE_TEST_SUITE_P(
    Classes, ProxyWalkTest,
    ::testing::Values(
        NodeCase{"ProxyNode",
                 [] { return std::make_shared<ProxyNode>(NodeType::NullOp, "p", nullptr); }},
        NodeCase{"NotGate", [] { return std::make_shared<NotGate>("p", nullptr); }},
        NodeCase{"GotoNode", [] { return std::make_shared<GotoNode>("p", nullptr, nullptr); }},
        NodeCase{"StateProxy", [] { return std::make_shared<StateProxy>("p", nullptr, nullptr); }},
        NodeCase{"InputDeviationProxy",
                 [] { return std::make_shared<InputDeviationProxy>("p", nullptr); }},
        NodeCase{"OutputDeviationProxy",
                 [] { return std::make_shared<OutputDeviationProxy>("p", nullptr); }},
        NodeCase{"ExportedDeviationProxy",
                 [] { return std::make_shared<ExportedDeviationProxy>("p", nullptr, nullptr); }}),
    CaseName);

class GateWalkTest : public ProcessStateTest, public ::testing::WithParamInterface<NodeCase> {};

TEST_P(GateWalkTest, ChildrenAreMetInTheirOrder) {
  const NodePointer node = GetParam().make();
  node->AddChild(std::make_shared<NormalEvent>("n", nullptr, true));
  node->AddChild(Event("e"));
  const std::string name = GetParam().name;
  EXPECT_EQ(WalkOf(*node), Steps({"+" + name, "+NormalEvent", "-NormalEvent", "+BasicEvent",
                                  "-BasicEvent", "-" + name}));
}

INSTANTIATE_TEST_SUITE_P(
    Classes, GateWalkTest,
    ::testing::Values(NodeCase{"AndGate", [] { return MakeGate(NodeType::And, "g", nullptr); }},
                      NodeCase{"OrGate", [] { return MakeGate(NodeType::Or, "g", nullptr); }},
                      NodeCase{"XorGate", [] { return MakeGate(NodeType::XOr, "g", nullptr); }},
                      NodeCase{"PandGate", [] { return MakeGate(NodeType::PAnd, "g", nullptr); }},
                      NodeCase{"SandGate", [] { return MakeGate(NodeType::SAnd, "g", nullptr); }},
                      NodeCase{"PorGate", [] { return MakeGate(NodeType::POr, "g", nullptr); }}),
    CaseName);

class NodeWalkTest : public ProcessStateTest {};

TEST_F(NodeWalkTest, ComplementIsALeaf) {
  const auto event = Event("e");
  EXPECT_EQ(WalkOf(*event->GetComplement()), Steps({"+ComplementEvent", "-ComplementEvent"}));
}

TEST_F(NodeWalkTest, ModuleIsALeaf) {
  const auto gate = MakeGate(NodeType::And, "g", nullptr);
  ModuleEvent module(*gate);
  EXPECT_EQ(WalkOf(module), Steps({"+ModuleEvent", "-ModuleEvent"}));
}

TEST_F(NodeWalkTest, ActivatedCommonCauseNodeHoldsItsCause) {
  PCCFNode node("e", nullptr);
  node.actual = std::make_shared<CCF>("fire", nullptr, nullptr, true);
  EXPECT_EQ(WalkOf(node), Steps({"+PCCFNode", "+CCF", "-CCF", "-PCCFNode"}));
}

TEST_F(NodeWalkTest, CommonCauseProxyLeadsToItsNode) {
  const auto proxy = std::make_shared<PCCFProxy>("p", nullptr);
  EXPECT_EQ(WalkOf(*proxy), Steps({"+PCCFProxy", "+PCCFNode", "-PCCFNode", "-PCCFProxy"}));
}

TEST_F(NodeWalkTest, ActivatedCommonCauseProxyMeetsTheCauseOnce) {
  const auto proxy = std::make_shared<PCCFProxy>("p", nullptr);
  proxy->Activate(std::make_shared<CCF>("fire", nullptr, nullptr, true));
  EXPECT_EQ(WalkOf(*proxy),
            Steps({"+PCCFProxy", "+PCCFNode", "+CCF", "-CCF", "-PCCFNode", "-PCCFProxy"}));
}

TEST_F(NodeWalkTest, SharedNodeIsMetFromEachParent) {
  const auto shared = MakeGate(NodeType::And, "s", nullptr);
  const auto root = MakeGate(NodeType::Or, "r", nullptr);
  const auto other = MakeGate(NodeType::PAnd, "o", nullptr);
  other->AddChild(shared);
  root->AddChild(shared);
  root->AddChild(other);
  EXPECT_EQ(WalkOf(*root), Steps({"+OrGate", "+AndGate", "-AndGate", "+PandGate", "+AndGate",
                                  "-AndGate", "-PandGate", "-OrGate"}));
}

TEST_F(NodeWalkTest, CycleEndsWhereItCloses) {
  const auto root = MakeGate(NodeType::Or, "r", nullptr);
  const auto inner = MakeGate(NodeType::And, "i", nullptr);
  root->AddChild(inner);
  inner->AddChild(root);
  EXPECT_EQ(WalkOf(*root),
            Steps({"+OrGate", "+AndGate", "+OrGate", "-OrGate", "-AndGate", "-OrGate"}));
  inner->ClearChildren();  // Else the loop keeps itself alive.
}

TEST_F(NodeWalkTest, WalkLeavesNoMarks) {
  const auto root = MakeGate(NodeType::Or, "r", nullptr);
  root->AddChild(Event("e"));
  WalkOf(*root);
  EXPECT_FALSE(root->visited);
}

TEST_F(NodeWalkTest, ChildrenAreThoseOfTheCurrentState) {
  const auto root = MakeGate(NodeType::Or, "r", nullptr);
  root->AddChild(Event("e"));
  root->SetCurrentState("other");
  EXPECT_EQ(WalkOf(*root), Steps({"+OrGate", "-OrGate"}));
}

TEST_F(NodeWalkTest, AbstractClassesCallNoHook) {
  const auto gate = MakeGate(NodeType::And, "g", nullptr);
  gate->AddChild(Event("e"));
  RecordingVisitor visitor;
  visitor.Visit(static_cast<FaultTreeGate&>(*gate));
  visitor.Visit(static_cast<FaultTreeNode&>(*gate));
  EXPECT_EQ(visitor.steps, Steps());
}

class ResultWalkTest : public ProcessStateTest {
 protected:
  RecordingVisitor visitor;
};

TEST_F(ResultWalkTest, LogHasNoParts) {
  visitor.Visit(DiagnosticLog::Instance());
  EXPECT_EQ(visitor.steps, Steps({"+DiagnosticLog", "-DiagnosticLog"}));
}

TEST_F(ResultWalkTest, MembersOfACutSetAreToldAsBasicEvents) {
  const auto normal = std::make_shared<NormalEvent>("n", nullptr, true);
  const auto cause = std::make_shared<CCF>("c", nullptr, nullptr, true);
  CutSet cutSet;
  cutSet.AddEvent(*normal);
  cutSet.AddEvent(*cause);
  visitor.Visit(cutSet);
  EXPECT_EQ(visitor.steps, Steps({"+CutSet", "+BasicEvent", "-BasicEvent", "+BasicEvent",
                                  "-BasicEvent", "-CutSet"}));
}

TEST_F(ResultWalkTest, ListMeetsOnlyTheCutSetsThatBeginWithItsEvent) {
  CutSet foreign;
  CutSet own;
  CutSet another;
  const auto event = Event("e");
  another.AddEvent(*event);
  CutSetList list;
  list.Append(own);
  list.Prepend(foreign);
  list.Append(another);
  visitor.Visit(list);
  EXPECT_EQ(visitor.steps, Steps({"+CutSetList", "+CutSet", "-CutSet", "+CutSet", "+BasicEvent",
                                  "-BasicEvent", "-CutSet", "-CutSetList"}));
}

TEST_F(ResultWalkTest, ListWithoutOwnCutSetsMeetsNone) {
  CutSet foreign;
  CutSetList list;
  list.Prepend(foreign);
  visitor.Visit(list);
  EXPECT_EQ(visitor.steps, Steps({"+CutSetList", "-CutSetList"}));
}

TEST_F(ResultWalkTest, TreeLeadsToItsRoot) {
  FaultTree tree(Event("e"));
  EXPECT_EQ(WalkOf(tree), Steps({"+FaultTree", "+BasicEvent", "-BasicEvent", "-FaultTree"}));
}

TEST_F(ResultWalkTest, TreeWithoutRootHasNoParts) {
  FaultTree tree(nullptr);
  EXPECT_EQ(WalkOf(tree), Steps({"+FaultTree", "-FaultTree"}));
}

TEST_F(ResultWalkTest, CauseHasNoParts) {
  Cause cause("c", nullptr, 1.0, Event("e"));
  EXPECT_EQ(WalkOf(cause), Steps({"+Cause", "-Cause"}));
}

}  // namespace

}  // namespace FTS
