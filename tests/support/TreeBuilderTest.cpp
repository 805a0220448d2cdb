#include <gmock/gmock.h>

#include <stdexcept>

#include "faulttree/FaultTreeGate.h"
#include "faulttree/ProxyNode.h"
#include "support/CaseName.h"
#include "support/ProcessStateTest.h"
#include "support/TreeBuilder.h"

namespace FTS {
namespace {

using TreeBuilderTest = ProcessStateTest;

struct NotationCase {
  const char* name;
  const char* text;
};

class NotationTest : public ProcessStateTest, public ::testing::WithParamInterface<NotationCase> {};

TEST_P(NotationTest, ComesBackAsItWas) {
  const ScopedGraph graph(Tree(GetParam().text));
  EXPECT_EQ(ShapeOf(*graph), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Shapes, NotationTest,
    ::testing::Values(NotationCase{"Event", "A"}, NotationCase{"Gates", "AND(A, OR(B, C))"},
                      NotationCase{"AllGates", "XOR(PAND(A, B), SAND(A, B), POR(A, B))"},
                      NotationCase{"EmptyGate", "OR()"},
                      NotationCase{"Negation", "AND(A, NOT(OR(A, B)))"},
                      NotationCase{"Proxies", "OR(PROXY(A), IN(B), OUT(C), EXPORTED(D), GOTO(E))"},
                      NotationCase{"OtherProxies", "OR(PCCF(A), STATE(B))"},
                      NotationCase{"EmptyProxy", "OR(A, late-Top.P.in=IN())"},
                      NotationCase{"SharedGate", "AND(G=OR(A, B), OR(G, C))"},
                      NotationCase{"Loop", "G=OR(A, AND(B, G))"},
                      NotationCase{"LoopThroughProxy", "OR(A, OR [x]=OR(IN(OR [x]), B))"},
                      NotationCase{"Complement", "AND(A, ~A)"}),
    CaseName);

TEST_F(TreeBuilderTest, EqualNamesAreOneEvent) {
  const auto top = Tree("AND(A, OR(B, A))");
  EXPECT_EQ(top->GetChild(0), top->GetChild(1)->GetChild(1));
}

TEST_F(TreeBuilderTest, SharedGateIsOneNode) {
  const auto top = Tree("AND(G=OR(A, B), OR(G, C))");
  EXPECT_EQ(top->GetChild(0), top->GetChild(1)->GetChild(0));
}

TEST_F(TreeBuilderTest, EventsTakePrimesInOrderOfMention) {
  TreeBuilder builder;
  const auto top = builder.Tree("AND(B, OR(A, B))");
  EXPECT_EQ(builder.Event("B")->prime, 3.0);
  EXPECT_EQ(builder.Event("A")->prime, 5.0);
}

TEST_F(TreeBuilderTest, TreesOfOneBuilderShareNames) {
  TreeBuilder builder;
  const auto first = builder.Tree("AND(A, G=OR(B, C))");
  const auto second = builder.Tree("OR(G, A)");
  EXPECT_EQ(first->GetChild(1), second->GetChild(0));
  EXPECT_EQ(first->GetChild(0), second->GetChild(1));
}

TEST_F(TreeBuilderTest, DefinedNodeStandsForItsName) {
  TreeBuilder builder;
  builder.Define("N", std::make_shared<NormalEvent>("N", nullptr, true));
  EXPECT_EQ(builder.Tree("OR(N)")->GetChild(0)->type, NodeType::Normal);
}

TEST_F(TreeBuilderTest, EventsOutliveTheirPlaceInTheTree) {
  const auto top = Tree("OR(NOT(A))");
  top->Dualise(false);
  EXPECT_EQ(ShapeOf(top), "OR(~A)");
}

TEST_F(TreeBuilderTest, SharedNodeWithoutPlainNameIsWrittenOutEachTime) {
  const auto top = Tree("AND(OR [p]=OR(A), OR [p])");
  EXPECT_EQ(ShapeOf(top), "AND(OR(A), OR(A))");
}

TEST_F(TreeBuilderTest, NamelessNodeOfALoopIsWrittenWithItsId) {
  const auto inner = Tree("OR(A)");
  inner->AddChild(inner);
  const ScopedGraph graph(inner);
  const std::string label = "#" + std::to_string(inner->GetId());
  EXPECT_EQ(ShapeOf(*graph), label + "=OR(A, " + label + ")");
}

TEST_F(TreeBuilderTest, ReleasedLoopIsGone) {
  { const ScopedGraph graph(Tree("G=OR(A, AND(B, G))")); }
  EXPECT_EQ(NodeCounters::Instance().nodesDestroyed, 4);
}

struct FaultyCase {
  const char* name;
  const char* text;
};

class FaultyNotationTest : public ProcessStateTest,
                           public ::testing::WithParamInterface<FaultyCase> {};

TEST_P(FaultyNotationTest, IsRefused) {
  EXPECT_THROW(Tree(GetParam().text), std::invalid_argument);
}

INSTANTIATE_TEST_SUITE_P(Texts, FaultyNotationTest,
                         ::testing::Values(FaultyCase{"OpenBracket", "AND(A, B"},
                                           FaultyCase{"SurplusBracket", "AND(A))"},
                                           FaultyCase{"UnknownWord", "NAND(A, B)"},
                                           FaultyCase{"MissingName", "AND(A,,B)"},
                                           FaultyCase{"TwoOperands", "NOT(A, B)"},
                                           FaultyCase{"DefinedTwice", "AND(G=OR(A), G=OR(B))"},
                                           FaultyCase{"NamedNothing", "G=A"}),
                         CaseName);

}  // namespace
}  // namespace FTS
