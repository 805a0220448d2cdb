#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "analysis/BDD.h"
#include "analysis/CutSet.h"
#include "app/Config.h"
#include "faulttree/BasicEvent.h"
#include "faulttree/FaultTreeGate.h"
#include "support/CaseName.h"
#include "support/CutSetText.h"
#include "support/ProcessStateTest.h"

namespace FTS {
namespace {

using Diagram = std::unique_ptr<BDDParent>;

/// Diagrams over the events A, B and C, in falling order of their weights.
class BDDTest : public ProcessStateTest {
 protected:
  BDDTest() { events = {MakeEvent("A", 0.9F), MakeEvent("B", 0.8F), MakeEvent("C", 0.7F)}; }

  static std::shared_ptr<BasicEvent> MakeEvent(const std::string& name, float weight) {
    auto event = std::make_shared<BasicEvent>(name, nullptr, true);
    event->orderWeight = weight;
    return event;
  }

  /// "A" is the event's diagram, "~A" the negated one, "1" and "0" are terminals.
  Diagram Make(const std::string& text) const {
    if (text == "0" || text == "1") return std::make_unique<BDDTerminal>(text == "1");
    const bool negated = text[0] == '~';
    const std::string name = text.substr(negated ? 1 : 0);
    for (const auto& event : events) {
      if (event->name == name) return std::make_unique<BDDNode>(*event, negated);
    }
    throw std::invalid_argument(text);
  }

  Diagram And(Diagram a, Diagram b) const { return ApplyAnd(std::move(a), std::move(b)); }
  Diagram Or(Diagram a, Diagram b) const { return ApplyOr(std::move(a), std::move(b)); }

  /// "A(high, low)", terminals as digits.
  static std::string TextOf(const BDDParent& diagram) {
    if (diagram.kind == BDDParent::Kind::Terminal) {
      return static_cast<const BDDTerminal&>(diagram).value ? "1" : "0";
    }
    const auto& node = static_cast<const BDDNode&>(diagram);
    return node.event->name + "(" + TextOf(*node.high) + ", " + TextOf(*node.low) + ")";
  }

  std::vector<std::shared_ptr<BasicEvent>> events;
};

TEST_F(BDDTest, FreshNodeIsTrueWhereItsEventOccurs) { EXPECT_EQ(TextOf(*Make("A")), "A(1, 0)"); }

TEST_F(BDDTest, NegatedNodeIsTrueWhereItsEventDoesNotOccur) {
  EXPECT_EQ(TextOf(*Make("~A")), "A(0, 1)");
}

TEST_F(BDDTest, PrintIndentsBranchesHighOneFirst) {
  const Diagram diagram = Or(Make("A"), Make("B"));
  std::ostringstream stream;
  diagram->Print(stream, 2);
  EXPECT_EQ(stream.str(),
            "  BDDNODE: A\n"
            "     BDDTERMINAL: 1\n"
            "     BDDNODE: B\n"
            "        BDDTERMINAL: 1\n"
            "        BDDTERMINAL: 0\n");
}

TEST_F(BDDTest, CountTakesTerminalsIn) {
  EXPECT_EQ(Make("1")->CountNodes(), 1);
  EXPECT_EQ(Make("A")->CountNodes(), 3);
  EXPECT_EQ(Or(Make("A"), Make("B"))->CountNodes(), 5);
}

TEST_F(BDDTest, CloneSharesNothing) {
  const Diagram diagram = And(Make("A"), Make("B"));
  const Diagram clone = diagram->Clone();
  auto& node = static_cast<BDDNode&>(*clone);
  node.high = Make("0");
  EXPECT_EQ(TextOf(*diagram), "A(B(1, 0), 0)");
  EXPECT_EQ(TextOf(*clone), "A(0, 0)");
}

TEST_F(BDDTest, CloneIsTheSameDiagram) {
  EXPECT_EQ(TextOf(*And(Make("~A"), Make("B"))->Clone()), "A(0, B(1, 0))");
  EXPECT_TRUE(static_cast<BDDNode&>(*Make("~A")->Clone()).negated);
}

struct ApplyCase {
  const char* name;
  const char* a;
  const char* b;
  const char* conjunction;
  const char* disjunction;
};

class ApplyTest : public BDDTest, public ::testing::WithParamInterface<ApplyCase> {};

TEST_P(ApplyTest, GivesTheConjunction) {
  EXPECT_EQ(TextOf(*And(Make(GetParam().a), Make(GetParam().b))), GetParam().conjunction);
}

TEST_P(ApplyTest, GivesTheDisjunction) {
  EXPECT_EQ(TextOf(*Or(Make(GetParam().a), Make(GetParam().b))), GetParam().disjunction);
}

INSTANTIATE_TEST_SUITE_P(
    Operands, ApplyTest,
    ::testing::Values(ApplyCase{"BothFalse", "0", "0", "0", "0"},
                      ApplyCase{"FalseAndTrue", "0", "1", "0", "1"},
                      ApplyCase{"TrueAndFalse", "1", "0", "0", "1"},
                      ApplyCase{"BothTrue", "1", "1", "1", "1"},
                      ApplyCase{"TrueAndNode", "1", "A", "A(1, 0)", "1"},
                      ApplyCase{"FalseAndNode", "0", "A", "0", "A(1, 0)"},
                      ApplyCase{"NodeAndTrue", "A", "1", "A(1, 0)", "1"},
                      ApplyCase{"NodeAndFalse", "A", "0", "0", "A(1, 0)"},
                      ApplyCase{"HeavierFirst", "A", "B", "A(B(1, 0), 0)", "A(1, B(1, 0))"},
                      ApplyCase{"HeavierSecond", "B", "A", "A(B(1, 0), 0)", "A(1, B(1, 0))"},
                      ApplyCase{"SameEvent", "A", "A", "A(1, 0)", "A(1, 0)"},
                      ApplyCase{"SameEventNegated", "A", "~A", "A(0, 0)", "A(1, 1)"},
                      ApplyCase{"Negated", "~A", "B", "A(0, B(1, 0))", "A(B(1, 0), 1)"}),
    CaseName);

TEST_F(BDDTest, FirstOperandIsOnTopWhenWeightsAreEqual) {
  events[1]->orderWeight = events[0]->orderWeight;
  EXPECT_EQ(TextOf(*Or(Make("B"), Make("A"))), "B(1, A(1, 0))");
  EXPECT_EQ(TextOf(*Or(Make("A"), Make("B"))), "A(1, B(1, 0))");
}

TEST_F(BDDTest, DeepOperandsAreCombinedBranchByBranch) {
  EXPECT_EQ(TextOf(*And(Or(Make("A"), Make("B")), Or(Make("A"), Make("C")))),
            "A(1, B(C(1, 0), 0))");
}

class BDDPathsTest : public BDDTest {
 protected:
  std::string Collected(const Diagram& diagram) {
    std::vector<BasicEvent*> path;
    diagram->CollectCutSets(*gate, path);
    EXPECT_TRUE(path.empty());
    return FTS::TextOf(gate->cutSets);
  }

  std::shared_ptr<FaultTreeGate> gate = MakeGate(NodeType::Or, "G", nullptr);
};

TEST_F(BDDPathsTest, EachWayToTrueIsACutSetOfTheEventsThatOccur) {
  EXPECT_EQ(Collected(Or(Make("A"), And(Make("B"), Make("C")))), "A; B C");
  EXPECT_EQ(gate->maxOrder, 2);
}

TEST_F(BDDPathsTest, WaysAroundOthersAreDropped) {
  auto a = std::make_unique<BDDNode>(*events[0], false);
  a->high = Make("B");
  a->low = Make("B");
  EXPECT_EQ(Collected(std::move(a)), "B") << "A and B come first, and go when B arrives.";
}

TEST_F(BDDPathsTest, WaysLongerThanTheLimitAreDroppedWithoutAMark) {
  Config::Instance().maxCutSetSize = 1;
  EXPECT_EQ(Collected(Or(Make("A"), And(Make("B"), Make("C")))), "A");
  EXPECT_EQ(gate->maxOrder, 1);
  EXPECT_FALSE(gate->IsTruncated());
}

TEST_F(BDDPathsTest, LimitIsThatOfThePlainLength) {
  const auto normal = std::make_shared<NormalEvent>("N", nullptr, true);
  normal->orderWeight = 1.0F;
  events.push_back(normal);
  Config::Instance().countNormalEvents = false;
  Config::Instance().maxCutSetSize = 1;
  EXPECT_EQ(Collected(And(Make("A"), Make("N"))), "");
}

TEST_F(BDDPathsTest, ComplementIsNotNamedWhereItHolds) {
  EXPECT_EQ(Collected(And(Make("A"), Make("~B"))), "A");
}

TEST_F(BDDPathsTest, TrueTerminalAloneIsTheSetOfNoEvents) {
  Collected(Make("1"));
  ASSERT_EQ(gate->cutSets.size(), 1U);
  EXPECT_EQ(gate->cutSets.begin()->first, 1.0);
  EXPECT_TRUE(gate->cutSets.begin()->second->events.empty());
}

TEST_F(BDDPathsTest, FalseTerminalGivesNothing) {
  Collected(Make("0"));
  EXPECT_TRUE(gate->cutSets.empty());
}

}  // namespace
}  // namespace FTS
