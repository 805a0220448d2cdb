#include <gmock/gmock.h>

#include "faulttree/Gates.h"
#include "faulttree/ProxyNode.h"
#include "support/CapturedStreams.h"
#include "support/CaseName.h"
#include "support/ProcessStateTest.h"
#include "support/TreeBuilder.h"

namespace FTS {
namespace {

using GateTest = ProcessStateTest;

struct GateCase {
  const char* name;
  NodeType type;
  const char* typeName;
};

class GateTypeTest : public ProcessStateTest, public ::testing::WithParamInterface<GateCase> {};

TEST_P(GateTypeTest, IsMadeByItsType) {
  const auto gate = MakeGate(GetParam().type, "G", nullptr);
  EXPECT_EQ(gate->type, GetParam().type);
  EXPECT_EQ(gate->GetTypeName(), GetParam().typeName);
  EXPECT_EQ(gate->name, "G");
  EXPECT_TRUE(gate->IsGate());
  EXPECT_FALSE(gate->IsEvent());
  EXPECT_FALSE(gate->IsProxy());
}

INSTANTIATE_TEST_SUITE_P(Gates, GateTypeTest,
                         ::testing::Values(GateCase{"Or", NodeType::Or, "OrGate"},
                                           GateCase{"And", NodeType::And, "AndGate"},
                                           GateCase{"Pand", NodeType::PAnd, "PandGate"},
                                           GateCase{"Sand", NodeType::SAnd, "SandGate"},
                                           GateCase{"Por", NodeType::POr, "PorGate"},
                                           GateCase{"Xor", NodeType::XOr, "XorGate"}),
                         CaseName);

TEST_F(GateTest, ChildrenKeepTheirOrder) {
  const auto top = Tree("OR(A, B, C)");
  ASSERT_EQ(top->GetChildCount(), 3);
  EXPECT_EQ(top->GetChild(1)->name, "B");
}

TEST_F(GateTest, ReplacedChildKeepsItsPlace) {
  TreeBuilder builder;
  const auto top = builder.Tree("OR(A, B, C)");
  top->ReplaceChild(1, builder.Tree("AND(D)"));
  EXPECT_EQ(ShapeOf(top), "OR(A, AND(D), C)");
}

TEST_F(GateTest, FirstChildOfTheIdIsRemoved) {
  const auto top = Tree("OR(B, A, C, A)");
  EXPECT_TRUE(top->RemoveChild(*top->GetChild(3)));
  EXPECT_EQ(ShapeOf(top), "OR(B, C, A)");
}

TEST_F(GateTest, RemovingAStrangerChangesNothing) {
  const auto top = Tree("OR(A)");
  EXPECT_FALSE(top->RemoveChild(*Tree("B")));
  EXPECT_EQ(ShapeOf(top), "OR(A)");
}

TEST_F(GateTest, ClearedGateHasNoChildren) {
  const auto top = Tree("OR(A, B)");
  top->ClearChildren();
  EXPECT_EQ(top->GetChildCount(), 0);
}

TEST_F(GateTest, HasChildComparesIds) {
  const auto top = Tree("OR(A, AND(B))");
  EXPECT_TRUE(top->HasChild(*top->GetChild(1)));
  EXPECT_TRUE(top->HasChild(OrGate("", nullptr, top->GetChild(1)->GetId())));
  EXPECT_FALSE(top->HasChild(*Tree("AND(B)")));
}

TEST_F(GateTest, HasChildComparesPrimesOfEvents) {
  const auto top = Tree("OR(A)");
  BasicEvent same("elsewhere", nullptr, false);
  same.prime = static_cast<const BasicEvent&>(*top->GetChild(0)).prime;
  EXPECT_TRUE(top->HasChild(same));
  same.prime += 1.0;
  EXPECT_FALSE(top->HasChild(same));
}

TEST_F(GateTest, EventIgnoresChildren) {
  const auto event = Tree("A");
  event->AddChild(Tree("B"));
  event->ReplaceChild(0, Tree("B"));
  EXPECT_EQ(event->GetChildCount(), 0);
  EXPECT_EQ(event->GetChild(0), nullptr);
  EXPECT_FALSE(event->RemoveChild(*event));
}

class AddPrimeObjectTest : public ProcessStateTest {
 protected:
  static bool Add(FaultTreeGate& gate, const std::shared_ptr<BasicEvent>& event) {
    return gate.AddPrimeObject(*event, *event);
  }
  static bool Add(FaultTreeGate& gate, const std::shared_ptr<AndGate>& factor) {
    return gate.AddPrimeObject(*factor, *factor);
  }

  std::shared_ptr<AndGate> Product(const std::string& events) {
    auto gate = std::make_shared<AndGate>(events, nullptr);
    for (const char event : events) Add(*gate, Event(event));
    return gate;
  }

  std::shared_ptr<BasicEvent> Event(char name) {
    return std::static_pointer_cast<BasicEvent>(builder.Tree(std::string(1, name)));
  }

  TreeBuilder builder;
  CapturedStreams streams;
};

TEST_F(AddPrimeObjectTest, AndGateMultipliesThePrimesOfItsEvents) {
  const auto gate = Product("AB");
  EXPECT_EQ(ShapeOf(*gate), "AND(A, B)");
  EXPECT_EQ(gate->GetPrime(), 15.0);
  EXPECT_EQ(gate->GetPrimeType(), "AND GATE");
}

TEST_F(AddPrimeObjectTest, AndGateRefusesAFactorItHas) {
  const auto gate = Product("AB");
  EXPECT_FALSE(Add(*gate, Event('A')));
  EXPECT_EQ(ShapeOf(*gate), "AND(A, B)");
}

TEST_F(AddPrimeObjectTest, AndGateWithInputsTakesEventsOnly) {
  const auto gate = Product("A");
  EXPECT_FALSE(Add(*gate, Product("BC")));
  EXPECT_EQ(ShapeOf(*gate), "AND(A)");
}

TEST_F(AddPrimeObjectTest, OrGateAbsorbsAProductThatHoldsAnother) {
  OrGate gate("", nullptr);
  EXPECT_TRUE(Add(gate, Product("AB")));
  EXPECT_FALSE(Add(gate, Product("ABC")));
  EXPECT_EQ(ShapeOf(gate), "OR(AND(A, B))");
}

TEST_F(AddPrimeObjectTest, OrGateDropsProductsThatHoldTheNewOne) {
  OrGate gate("", nullptr);
  Add(gate, Product("ABC"));
  Add(gate, Product("CD"));
  EXPECT_TRUE(Add(gate, Product("AB")));
  EXPECT_EQ(ShapeOf(gate), "OR(AND(C, D), AND(A, B))");
}

TEST_F(AddPrimeObjectTest, OrGateTakesNoEvents) {
  OrGate gate("", nullptr);
  EXPECT_FALSE(Add(gate, Event('A')));
  EXPECT_EQ(gate.GetChildCount(), 0);
}

TEST_F(AddPrimeObjectTest, OtherGatesTakeNothing) {
  XorGate gate("", nullptr);
  EXPECT_FALSE(Add(gate, Event('A')));
  EXPECT_EQ(streams.Output(), "");
}

TEST_F(AddPrimeObjectTest, AndGateTracesWhatItIsGiven) {
  AndGate gate("G", nullptr, 70);
  Add(gate, Event('A'));
  Add(gate, Event('B'));
  EXPECT_EQ(streams.Output(),
            "AND ADD PRIME OBJECT: Name: G ID: 70 Prime: 0 num children: 0 Prime OBJECT: 3\n"
            "AND ADD PRIME OBJECT: Name: G ID: 70 Prime: 3 num children: 1 Prime OBJECT: 5\n");
}

TEST_F(AddPrimeObjectTest, OrGateTracesWithoutAPrime) {
  OrGate gate("G", nullptr, 70);
  Add(gate, Event('A'));
  EXPECT_EQ(streams.Output(),
            "OR ADD PRIME OBJECT: Name: G ID: 70 num children: 0 Prime OBJECT: 3\n");
}

}  // namespace
}  // namespace FTS
