#include <gmock/gmock.h>

#include "app/DiagnosticLog.h"
#include "faulttree/CommonCauseNodes.h"
#include "faulttree/DeviationProxies.h"
#include "faulttree/GotoNode.h"
#include "faulttree/ProxyNode.h"
#include "support/CaseName.h"
#include "support/ProcessStateTest.h"
#include "support/TreeBuilder.h"

namespace FTS {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

using ProxyNodeTest = ProcessStateTest;

struct LegalCase {
  const char* name;
  NodeType type;
};

class LegalProxyTest : public ProcessStateTest, public ::testing::WithParamInterface<LegalCase> {};

TEST_P(LegalProxyTest, IsMadeWithoutAWarning) {
  const ProxyNode proxy(GetParam().type, "P", nullptr);
  EXPECT_THAT(DiagnosticLog::Instance().Warnings(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Types, LegalProxyTest,
                         ::testing::Values(LegalCase{"NullOp", NodeType::NullOp},
                                           LegalCase{"Not", NodeType::Not},
                                           LegalCase{"Input", NodeType::InputDeviation},
                                           LegalCase{"Output", NodeType::OutputDeviation},
                                           LegalCase{"PCCF", NodeType::PCCF},
                                           LegalCase{"External", NodeType::External},
                                           LegalCase{"Exported", NodeType::ExternalDeviation},
                                           LegalCase{"State", NodeType::State}),
                         CaseName);

TEST_F(ProxyNodeTest, OfAGateTypeWarnsAndWorks) {
  ProxyNode proxy(NodeType::Or, "P", nullptr);
  proxy.AddChild(Tree("A"));
  EXPECT_THAT(DiagnosticLog::Instance().Warnings(),
              ElementsAre("Creating a proxy node with a operator type of Or"));
  EXPECT_EQ(proxy.GetChildCount(), 1);
}

TEST_F(ProxyNodeTest, KnowsTheDefaultStateFromTheStart) {
  const ProxyNode proxy(NodeType::NullOp, "P", nullptr);
  EXPECT_TRUE(proxy.childByState.contains("default"));
  EXPECT_EQ(proxy.GetChildCount(), 0);
  EXPECT_EQ(proxy.GetChild(0), nullptr);
}

TEST_F(ProxyNodeTest, KeepsTheSecondOfTwoChildren) {
  ProxyNode proxy(NodeType::NullOp, "P", nullptr);
  proxy.AddChild(Tree("A"));
  proxy.AddChild(Tree("B"));
  EXPECT_EQ(ShapeOf(proxy), "PROXY(B)");
  EXPECT_EQ(proxy.childByState.at("default"), proxy.GetChild(0));
}

TEST_F(ProxyNodeTest, ReplacedByNullIsEmpty) {
  const auto proxy = Tree("PROXY(A)");
  proxy->ReplaceChild(0, nullptr);
  EXPECT_EQ(proxy->GetChildCount(), 0);
  EXPECT_EQ(static_cast<ProxyNode&>(*proxy).childByState.at("default"), nullptr);
}

TEST_F(ProxyNodeTest, ClearedIsEmpty) {
  const auto proxy = Tree("PROXY(A)");
  proxy->ClearChildren();
  EXPECT_EQ(proxy->GetChildCount(), 0);
}

TEST_F(ProxyNodeTest, RemovesItsChildByIdOnly) {
  const auto proxy = Tree("PROXY(A)");
  EXPECT_FALSE(proxy->RemoveChild(*proxy));
  EXPECT_EQ(proxy->GetChildCount(), 1);
  EXPECT_TRUE(proxy->RemoveChild(*FindNode(*proxy, "A")));
  EXPECT_EQ(proxy->GetChildCount(), 0);
  EXPECT_FALSE(proxy->RemoveChild(*proxy));
}

TEST_F(ProxyNodeTest, OfParenthesesHasNoEventNode) {
  ProxyNode proxy(NodeType::NullOp, "Sub-Expression", nullptr);
  EXPECT_EQ(proxy.GetEventNode(), nullptr);
}

TEST_F(ProxyNodeTest, OutputDeviationMakesItsEventNodeOnce) {
  OutputDeviationProxy proxy("late-A.out", nullptr);
  const auto event = proxy.GetEventNode();
  EXPECT_EQ(event, proxy.GetEventNode());
  EXPECT_EQ(event->name, "late-A.out (UNCONNECTED)");
  EXPECT_EQ(event->type, NodeType::OutputDeviation);
  EXPECT_EQ(event->GetTypeName(), "OutputDeviationNode");
  EXPECT_TRUE(event->owner.expired());
}

TEST_F(ProxyNodeTest, GotoMakesAnOutputDeviationNode) {
  GotoNode proxy("late-A.out", nullptr, nullptr);
  const auto event = proxy.GetEventNode();
  EXPECT_EQ(event, proxy.GetEventNode());
  EXPECT_EQ(event->name, "late-A.out (UNCONNECTED)");
  EXPECT_EQ(event->type, NodeType::OutputDeviation);
}

TEST_F(ProxyNodeTest, ExportedDeviationMakesANodeOfItsOwnType) {
  ExportedDeviationProxy proxy("late-power", nullptr, nullptr);
  const auto event = proxy.GetEventNode();
  EXPECT_EQ(event, proxy.GetEventNode());
  EXPECT_EQ(event->name, "late-power (UNCONNECTED)");
  EXPECT_EQ(event->type, NodeType::ExternalDeviation);
  EXPECT_EQ(event->GetTypeName(), "ExportedDeviationNode");
}

TEST_F(ProxyNodeTest, InputWithoutARecordHasNeitherEventNodeNorCoverage) {
  InputDeviationProxy proxy("late-A.in", nullptr);
  EXPECT_EQ(proxy.GetEventNode(), nullptr);
  EXPECT_EQ(proxy.GetCoverage("H"), 0.0);
  EXPECT_FALSE(proxy.HasCoverage("H"));
}

TEST_F(ProxyNodeTest, OfACommonCauseHasItsEventFromTheStart) {
  PCCFProxy proxy("fire", nullptr);
  ASSERT_NE(proxy.node, nullptr);
  EXPECT_EQ(proxy.GetEventNode(), proxy.node);
  EXPECT_EQ(proxy.node->name, "fire");
  EXPECT_EQ(proxy.node->type, NodeType::PCCF);
  EXPECT_EQ(proxy.node->prime, 0.0);
  EXPECT_EQ(proxy.actual, nullptr);
}

}  // namespace
}  // namespace FTS
