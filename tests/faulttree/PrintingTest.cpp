#include <gtest/gtest.h>

#include <sstream>

#include "analysis/CutSet.h"
#include "faulttree/Gates.h"
#include "faulttree/ProxyNode.h"
#include "support/ProcessStateTest.h"
#include "support/TreeBuilder.h"

namespace FTS {
namespace {

std::string Printed(const FaultTreeNode& node, int indent) {
  std::ostringstream stream;
  node.Print(stream, indent);
  return stream.str();
}

using PrintingTest = ProcessStateTest;

TEST_F(PrintingTest, EventIsOneLine) {
  const auto event = Tree("A");
  EXPECT_EQ(Printed(*event, 3), "   FailureMode: A(1) = 0 # default\n");
}

TEST_F(PrintingTest, ChildrenStandInBracesTwoDeeper) {
  const auto top = Tree("T=OR(A, AND(B))");
  EXPECT_EQ(Printed(*top, 1),
            " Or: T(1) = 0 # default\n"
            " {\n"
            "   FailureMode: A(2) = 0 # default\n"
            "   And: (3) = 0 # default\n"
            "   {\n"
            "     FailureMode: B(4) = 0 # default\n"
            "   } \n"
            " } \n");
}

TEST_F(PrintingTest, NodeOfALoopIsWrittenWithoutItsChildren) {
  const ScopedGraph graph(Tree("G=OR(PROXY(G))"));
  EXPECT_EQ(Printed(*graph, 0),
            "Or: G(1) = 0 # default\n"
            "{\n"
            "  NullOp: (2) = 0 # default\n"
            "  {\n"
            "    Or: G(1) = 0 # default\n"
            "  } \n"
            "} \n");
  EXPECT_FALSE(graph->visited);
}

TEST_F(PrintingTest, SharedNodeIsWrittenUnderEachParent) {
  const auto top = Tree("OR(AND(A), AND(A))");
  EXPECT_EQ(Printed(*top, 0),
            "Or: (1) = 0 # default\n"
            "{\n"
            "  And: (2) = 0 # default\n"
            "  {\n"
            "    FailureMode: A(3) = 0 # default\n"
            "  } \n"
            "  And: (4) = 0 # default\n"
            "  {\n"
            "    FailureMode: A(3) = 0 # default\n"
            "  } \n"
            "} \n");
}

TEST_F(PrintingTest, StateAndNumberOfCutSetsAreThoseOfTheNode) {
  const auto event = Tree("A");
  event->state = "degraded";
  event->cutSets[3.0] = std::make_unique<CutSet>();
  EXPECT_EQ(Printed(*event, 0), "FailureMode: A(1) = 1 # degraded\n");
}

TEST_F(PrintingTest, DisplayNameHoldsTheId) {
  EXPECT_EQ(OrGate("Top", nullptr, 70).GetDisplayName(), "Top [70]");
}

TEST_F(PrintingTest, DisplayNameOfANamelessGateIsGate) {
  EXPECT_EQ(OrGate("", nullptr, 70).GetDisplayName(), "Gate [70]");
}

TEST_F(PrintingTest, DisplayNameOfAnyOtherNamelessNodeIsEvent) {
  EXPECT_EQ(BasicEvent("", nullptr, false, NodeType::FailureMode, 70).GetDisplayName(),
            "Event [70]");
  EXPECT_EQ(ProxyNode(NodeType::NullOp, "", nullptr, 71).GetDisplayName(), "Event [71]");
}

}  // namespace
}  // namespace FTS
