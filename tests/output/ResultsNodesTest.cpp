#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <utility>

#include "app/Config.h"
#include "app/DiagnosticLog.h"
#include "faulttree/CircleNode.h"
#include "faulttree/CommonCauseNodes.h"
#include "faulttree/DeviationNodes.h"
#include "faulttree/DeviationProxies.h"
#include "faulttree/Gates.h"
#include "faulttree/GotoNode.h"
#include "model/CCF.h"
#include "output/VisitorXML.h"
#include "platform/BigStack.h"
#include "support/BrakeModel.h"
#include "support/CaseName.h"
#include "support/ProcessStateTest.h"
#include "support/TemporaryFolder.h"

namespace FTS {

namespace {

using NodePointer = std::shared_ptr<FaultTreeNode>;

NodePointer Event(int id) {
  return std::make_shared<BasicEvent>("event", nullptr, true, NodeType::FailureMode, id);
}

NodePointer With(NodePointer parent, const NodePointer& child) {
  parent->AddChild(child);
  return parent;
}

class ResultsNodesTest : public ProcessStateTest {
 protected:
  /// What stands between the tags of `TopNode` for a tree with that root.
  std::string TopNodeOf(const NodePointer& root) {
    const auto model = EmptyModel("nodes.xml");
    AddTree(*model, root);
    writer.WriteFaultTreesFile(*model, folder.Path());
    const std::string text = folder.Read("FaultTrees.xml");
    const std::size_t start = text.find("<TopNode>") + 9;
    return text.substr(start, text.find("</TopNode>") - start);
  }

  TemporaryFolder folder;
  VisitorXML writer;
};

struct ElementCase {
  const char* name;
  std::function<NodePointer()> make;
  const char* text;
};

void PrintTo(const ElementCase& row, std::ostream* stream) { *stream << row.name; }

class NodeElementTest : public ResultsNodesTest,
                        public ::testing::WithParamInterface<ElementCase> {};

TEST_P(NodeElementTest, IsWritten) { EXPECT_EQ(TopNodeOf(GetParam().make()), GetParam().text); }

INSTANTIATE_TEST_SUITE_P(
    Events, NodeElementTest,
    ::testing::Values(
        ElementCase{"BasicEvent", [] { return Event(7); }, "<Event ID=\"7\" />"},
        ElementCase{"NormalEvent",
                    [] { return std::make_shared<NormalEvent>("e", nullptr, true, 8); },
                    "<Event ID=\"8\" />"},
        ElementCase{"CCF", [] { return std::make_shared<CCF>("e", nullptr, nullptr, true, 9); },
                    "<Event ID=\"9\" />"},
        ElementCase{"CircleNode", [] { return std::make_shared<CircleNode>("e", nullptr, 1U, 10); },
                    "<Event ID=\"10\" />"},
        ElementCase{"InputDeviationNode",
                    [] { return std::make_shared<InputDeviationNode>("e", nullptr, nullptr, 11); },
                    "<Event ID=\"11\" />"},
        ElementCase{"OutputDeviationNode",
                    [] { return std::make_shared<OutputDeviationNode>("e", nullptr, 12); },
                    "<Event ID=\"12\" />"},
        ElementCase{"ExportedDeviationNode",
                    [] { return std::make_shared<ExportedDeviationNode>("e", nullptr, 13); },
                    "<Event ID=\"13\" />"},
        ElementCase{"PCCFNode", [] { return std::make_shared<PCCFNode>("fire", nullptr, 14); },
                    "<PCCF ID=\"14\"><Name>fire</Name></PCCF>"}),
    CaseName);

INSTANTIATE_TEST_SUITE_P(
    Gates, NodeElementTest,
    ::testing::Values(
        ElementCase{"AndGate",
                    [] { return With(MakeGate(NodeType::And, "g", nullptr, 20), Event(7)); },
                    "<And ID=\"20\"><Name>g</Name><Children><Event ID=\"7\" /></Children></And>"},
        ElementCase{"OrGate",
                    [] { return With(MakeGate(NodeType::Or, "g", nullptr, 20), Event(7)); },
                    "<Or ID=\"20\"><Name>g</Name><Children><Event ID=\"7\" /></Children></Or>"},
        ElementCase{"NotGate",
                    [] { return With(std::make_shared<NotGate>("g", nullptr, 20), Event(7)); },
                    "<Not ID=\"20\"><Name>g</Name><Children><Event ID=\"7\" /></Children></Not>"},
        ElementCase{"EmptyGate", [] { return MakeGate(NodeType::Or, "g", nullptr, 20); },
                    "<Or ID=\"20\"><Name>g</Name><Children></Children></Or>"},
        ElementCase{"XorGate",
                    [] { return With(MakeGate(NodeType::XOr, "g", nullptr, 20), Event(7)); },
                    "<Event ID=\"7\" />"},
        ElementCase{"PandGate",
                    [] { return With(MakeGate(NodeType::PAnd, "g", nullptr, 20), Event(7)); },
                    "<Event ID=\"7\" />"},
        ElementCase{"SandGate",
                    [] { return With(MakeGate(NodeType::SAnd, "g", nullptr, 20), Event(7)); },
                    "<Event ID=\"7\" />"},
        ElementCase{"PorGate",
                    [] { return With(MakeGate(NodeType::POr, "g", nullptr, 20), Event(7)); },
                    "<Event ID=\"7\" />"}),
    CaseName);

INSTANTIATE_TEST_SUITE_P(
    Proxies, NodeElementTest,
    ::testing::Values(
        ElementCase{"InputDeviationProxy",
                    [] {
                      return With(std::make_shared<InputDeviationProxy>("O-a", nullptr, 20),
                                  Event(7));
                    },
                    "<InputDeviation ID=\"20\"><Name>O-a</Name><Children><Event ID=\"7\" />"
                    "</Children></InputDeviation>"},
        ElementCase{"OutputDeviationProxy",
                    [] {
                      return With(std::make_shared<OutputDeviationProxy>("O-a", nullptr, -1, 20),
                                  Event(7));
                    },
                    "<OutputDeviation ID=\"20\"><Name>O-a</Name><Children><Event ID=\"7\" />"
                    "</Children></OutputDeviation>"},
        ElementCase{"ExportedDeviationProxy",
                    [] {
                      return With(
                          std::make_shared<ExportedDeviationProxy>("O-a", nullptr, nullptr, -1, 20),
                          Event(7));
                    },
                    "<ExportedDeviation ID=\"20\"><Name>O-a</Name><Children><Event ID=\"7\" />"
                    "</Children></ExportedDeviation>"},
        ElementCase{"GotoNode",
                    [] {
                      return With(std::make_shared<GotoNode>("O-a", nullptr, nullptr, -1, 20),
                                  Event(7));
                    },
                    "<Goto ID=\"20\"><Name>O-a</Name><Children><Event ID=\"7\" />"
                    "</Children></Goto>"},
        ElementCase{
            "StateProxy",
            [] { return With(std::make_shared<StateProxy>("on", nullptr, nullptr, 20), Event(7)); },
            "<Goto ID=\"20\"><Name>on</Name><Children><Event ID=\"7\" />"
            "</Children></Goto>"},
        ElementCase{"ProxyNode",
                    [] {
                      return With(std::make_shared<ProxyNode>(NodeType::NullOp, "p", nullptr, 20),
                                  Event(7));
                    },
                    "<Event ID=\"7\" />"}),
    CaseName);

TEST_F(ResultsNodesTest, ComplementHasTheNegatedIdOfItsEvent) {
  const auto event = std::make_shared<BasicEvent>("e", nullptr, true, NodeType::FailureMode, 7);
  EXPECT_EQ(TopNodeOf(event->GetComplement()), "<Event ID=\"-7\" />");
}

TEST_F(ResultsNodesTest, ChildrenOfAnExclusionStandInTheGateAroundIt) {
  const auto exclusive = MakeGate(NodeType::XOr, "x", nullptr, 21);
  exclusive->AddChild(Event(7));
  exclusive->AddChild(Event(8));
  const auto root = MakeGate(NodeType::Or, "r", nullptr, 20);
  root->AddChild(exclusive);
  root->AddChild(Event(9));
  EXPECT_EQ(TopNodeOf(root),
            "<Or ID=\"20\"><Name>r</Name><Children><Event ID=\"7\" /><Event ID=\"8\" />"
            "<Event ID=\"9\" /></Children></Or>");
}

TEST_F(ResultsNodesTest, ActivatedCommonCauseHoldsNodeAndCause) {
  const auto proxy = std::make_shared<PCCFProxy>("fire", nullptr, 20);
  proxy->Activate(std::make_shared<CCF>("fire", nullptr, nullptr, true, 21));
  const std::string nodeId = std::to_string(proxy->node->GetId());
  EXPECT_EQ(TopNodeOf(proxy), "<PCCF ID=\"20\"><Name>fire</Name><Children><PCCF ID=\"" + nodeId +
                                  "\"><Name>fire</Name><Event ID=\"21\" /></PCCF>"
                                  "</Children></PCCF>");
}

TEST_F(ResultsNodesTest, CommonCauseIsNamedAfterTheOwnerOfItsNode) {
  BrakeModel brake;
  const auto proxy = std::make_shared<PCCFProxy>("fire", nullptr, 20);
  proxy->node->owner = brake.pump;
  const std::string text = TopNodeOf(proxy);
  EXPECT_TRUE(text.starts_with("<PCCF ID=\"20\"><Name>Sys::Pump.fire</Name><Children>")) << text;
}

TEST_F(ResultsNodesTest, SharedGateIsWrittenUnderEachParent) {
  const auto shared = MakeGate(NodeType::And, "s", nullptr, 21);
  const auto root = MakeGate(NodeType::Or, "r", nullptr, 20);
  root->AddChild(With(std::make_shared<NotGate>("n", nullptr, 22), shared));
  root->AddChild(shared);
  const std::string text = "<And ID=\"21\"><Name>s</Name><Children></Children></And>";
  EXPECT_EQ(TopNodeOf(root),
            "<Or ID=\"20\"><Name>r</Name><Children><Not ID=\"22\"><Name>n</Name>"
            "<Children>" +
                text + "</Children></Not>" + text + "</Children></Or>");
}

TEST_F(ResultsNodesTest, DeepTreeIsWrittenWhole) {
  constexpr int Depth = 100000;
  RunOnBigStack([this] {
    NodePointer node = Event(7);
    for (int i = 0; i < Depth; ++i) node = With(std::make_shared<NotGate>("n", nullptr, 9), node);
    const std::string text = TopNodeOf(node);
    const std::string step = "<Not ID=\"9\"><Name>n</Name><Children>";
    const std::string event = "<Event ID=\"7\" />";
    const std::string end = "</Children></Not>";
    EXPECT_EQ(text.size(), Depth * (step.size() + end.size()) + event.size());
    EXPECT_NE(text.find(step + event + end), std::string::npos);
  });
}

/// A chain of gates of which each has the next one twice, so that paths double with every step.
NodePointer Ladder(int steps) {
  NodePointer node = Event(7);
  for (int i = 0; i < steps; ++i) {
    const auto gate = MakeGate(NodeType::And, "", nullptr, 100 + i);
    gate->AddChild(With(MakeGate(NodeType::PAnd, "", nullptr), node));
    gate->AddChild(With(MakeGate(NodeType::PAnd, "", nullptr), node));
    node = gate;
  }
  return node;
}

class NodeLimitTest : public ResultsNodesTest {};

TEST_F(NodeLimitTest, TreeOfJustThatManyNodesIsWhole) {
  VisitorXML limited(3);
  const auto root = MakeGate(NodeType::Or, "r", nullptr, 20);
  root->AddChild(Event(7));
  root->AddChild(With(std::make_shared<NotGate>("n", nullptr, 21), Event(8)));
  const auto model = EmptyModel("nodes.xml");
  AddTree(*model, root);
  limited.WriteFaultTreesFile(*model, folder.Path());
  EXPECT_NE(folder.Read("FaultTrees.xml").find("<Event ID=\"8\" />"), std::string::npos);
  EXPECT_TRUE(DiagnosticLog::Instance().Warnings().empty());
}

TEST_F(NodeLimitTest, LargerTreeLosesItsDepthAndIsNamedInAWarning) {
  VisitorXML limited(2);
  const auto root = MakeGate(NodeType::Or, "Too much", nullptr, 20);
  root->AddChild(Event(7));
  root->AddChild(With(std::make_shared<NotGate>("n", nullptr, 21), Event(8)));
  const auto model = EmptyModel("nodes.xml");
  AddTree(*model, root);
  limited.WriteFaultTreesFile(*model, folder.Path());
  const std::string text = folder.Read("FaultTrees.xml");
  EXPECT_NE(text.find("<TopNode><Or ID=\"20\"><Name>Too much</Name><Children><Event ID=\"7\" />"
                      "<Not ID=\"21\"><Name>n</Name><Children></Children></Not></Children></Or>"
                      "</TopNode>"),
            std::string::npos)
      << text;
  EXPECT_NE(text.find("<WarningList><Warning>Fault tree is written in part only, as it has more "
                      "than 2 nodes with shared ones repeated: Too much</Warning></WarningList>"),
            std::string::npos)
      << text;
}

TEST_F(NodeLimitTest, EachTreeHasTheWholeLimit) {
  VisitorXML limited(1);
  const auto model = EmptyModel("nodes.xml");
  AddTree(*model, With(MakeGate(NodeType::Or, "a", nullptr, 20), Event(7)));
  AddTree(*model, With(MakeGate(NodeType::Or, "b", nullptr, 21), Event(8)));
  limited.WriteFaultTreesFile(*model, folder.Path());
  EXPECT_NE(folder.Read("FaultTrees.xml").find("<Event ID=\"8\" />"), std::string::npos);
}

TEST_F(NodeLimitTest, TreeWithMorePathsThanADiskHoldsEnds) {
  constexpr int Limit = 1000;
  VisitorXML limited(Limit);
  const auto model = EmptyModel("nodes.xml");
  AddTree(*model, Ladder(60));
  limited.WriteFaultTreesFile(*model, folder.Path());
  const std::string text = folder.Read("FaultTrees.xml");
  int gates = 0;
  for (auto at = text.find("<And "); at != std::string::npos; at = text.find("<And ", at + 1)) {
    ++gates;
  }
  EXPECT_LE(gates, Limit);
  EXPECT_GE(gates, 60);
  EXPECT_EQ(DiagnosticLog::Instance().Warnings().size(), 1U);
}

}  // namespace

}  // namespace FTS
