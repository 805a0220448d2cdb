#include <gmock/gmock.h>

#include "app/DiagnosticLog.h"
#include "model/Hazard.h"
#include "support/PartsModel.h"
#include "support/ProcessStateTest.h"
#include "support/TreeBuilder.h"

namespace FTS {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

const std::vector<std::string>& Warnings() { return DiagnosticLog::Instance().Warnings(); }

class DiagnosticCoverageTest : public ProcessStateTest {
 protected:
  DiagnosticCoverageTest() : component(parts.AddComponent("A")), builder(&parts.model) {
    for (const char* port : {"p", "q"}) {
      parts.AddPort(component, port);
      builder.Define(port, parts.Input(component, "late", port));
    }
  }

  InputDeviationProxy& Proxy(const std::string& name) {
    return static_cast<InputDeviationProxy&>(*builder.Node(name));
  }

  /// Puts the expression under the proxy called `name`, which covers the hazard to `percent`.
  void Cover(const std::string& name, double percent, const std::string& expression) {
    Proxy(name).SetCoverage("H", percent);
    Proxy(name).AddChild(builder.Tree(expression));
  }

  std::string MechanismOf(const std::string& event) {
    const auto& coverage = builder.Event(event)->coverage;
    const auto found = coverage.find("H");
    if (found == coverage.end()) return "none";
    return found->second.lock()->name;
  }

  void Apply(const std::string& tree) {
    builder.Tree(tree)->ApplyDiagnosticCoverage(hazard, nullptr);
  }

  PartsModel parts;
  std::shared_ptr<Component> component;
  TreeBuilder builder;
  Hazard hazard{"H", &parts.model};
};

TEST_F(DiagnosticCoverageTest, CoverageIsThatOfTheRecordThatProxiesShare) {
  const auto other = parts.Input(component, "late", "p");
  Proxy("p").SetCoverage("H", 90.0);
  EXPECT_TRUE(other->HasCoverage("H"));
  EXPECT_EQ(other->GetCoverage("H"), 90.0);
  EXPECT_FALSE(other->HasCoverage("I"));
  EXPECT_EQ(other->GetCoverage("I"), 0.0);
}

TEST_F(DiagnosticCoverageTest, MechanismReachesTheEventsBelowIt) {
  Cover("p", 90.0, "OR(B, AND(C, PROXY(D)))");
  Apply("OR(E, p)");
  EXPECT_EQ(MechanismOf("B"), "late-Main::A.p");
  EXPECT_EQ(MechanismOf("D"), "late-Main::A.p");
  EXPECT_EQ(MechanismOf("E"), "none");
  EXPECT_THAT(Warnings(), IsEmpty());
}

TEST_F(DiagnosticCoverageTest, ProxyWithoutCoverageHandsTheOneAboveOn) {
  Proxy("q").AddChild(builder.Tree("B"));
  Cover("p", 90.0, "OR(q)");
  Apply("OR(p)");
  EXPECT_EQ(MechanismOf("B"), "late-Main::A.p");
}

TEST_F(DiagnosticCoverageTest, InnermostMechanismCounts) {
  Cover("q", 60.0, "B");
  Cover("p", 90.0, "OR(q, C)");
  Apply("OR(p)");
  EXPECT_EQ(MechanismOf("B"), "late-Main::A.q");
  EXPECT_EQ(MechanismOf("C"), "late-Main::A.p");
}

TEST_F(DiagnosticCoverageTest, CoverageForAnotherHazardIsNone) {
  Proxy("p").SetCoverage("I", 90.0);
  Proxy("p").AddChild(builder.Tree("B"));
  Apply("OR(p)");
  EXPECT_EQ(MechanismOf("B"), "none");
}

TEST_F(DiagnosticCoverageTest, HigherOfTwoCoveragesStaysWithAWarning) {
  Cover("p", 90.0, "B");
  Cover("q", 99.5, "B");
  builder.Event("B")->owner = component;
  Apply("OR(p, q)");
  EXPECT_EQ(MechanismOf("B"), "late-Main::A.q");
  EXPECT_THAT(Warnings(),
              ElementsAre("Basic event Main::A.B already has diagnostic coverage 90 from "
                          "late-Main::A.p but is receiving more coverage from late-Main::A.q - "
                          "using highest value."));
}

TEST_F(DiagnosticCoverageTest, LowerCoverageChangesNothingButWarns) {
  Cover("p", 90.0, "B");
  Cover("q", 60.0, "B");
  Apply("OR(p, q)");
  EXPECT_EQ(MechanismOf("B"), "late-Main::A.p");
  EXPECT_EQ(Warnings().size(), 1U);
}

TEST_F(DiagnosticCoverageTest, EqualCoverageStaysWithTheFirst) {
  Cover("p", 90.0, "B");
  Cover("q", 90.0, "B");
  Apply("OR(p, q)");
  EXPECT_EQ(MechanismOf("B"), "late-Main::A.p");
}

TEST_F(DiagnosticCoverageTest, EventHearsOfAMechanismOnceHoweverManyPathsLeadToIt) {
  Cover("p", 90.0, "OR(AND(B, C), AND(B, D), B)");
  Apply("OR(p, AND(E, p))");
  EXPECT_EQ(MechanismOf("B"), "late-Main::A.p");
  EXPECT_THAT(Warnings(), IsEmpty());
}

TEST_F(DiagnosticCoverageTest, DeviationThatIsNamedTwiceIsOneMechanism) {
  builder.Define("again", parts.Input(component, "late", "p"));
  Cover("p", 90.0, "OR(B, C)");
  Proxy("again").AddChild(builder.Tree("AND(B, D)"));
  Apply("OR(p, again)");
  for (const char* event : {"B", "C", "D"}) EXPECT_EQ(MechanismOf(event), "late-Main::A.p");
  EXPECT_THAT(Warnings(), IsEmpty());
}

TEST_F(DiagnosticCoverageTest, MechanismsBehindADeviationThatIsNamedTwiceAreToldOnce) {
  builder.Define("again", parts.Input(component, "late", "p"));
  Cover("p", 90.0, "B");
  Cover("q", 99.0, "B");
  Proxy("again").AddChild(builder.Tree("B"));
  Apply("OR(p, q, again)");
  EXPECT_EQ(MechanismOf("B"), "late-Main::A.q");
  EXPECT_EQ(Warnings().size(), 1U);
}

TEST_F(DiagnosticCoverageTest, WalkForAnotherTreeOfTheHazardTellsNothingNew) {
  Cover("p", 90.0, "B");
  Apply("OR(p, C)");
  Apply("OR(p, D)");
  EXPECT_EQ(MechanismOf("B"), "late-Main::A.p");
  EXPECT_THAT(Warnings(), IsEmpty());
}

TEST_F(DiagnosticCoverageTest, PartThatIsReachedWithAndWithoutAMechanismIsCovered) {
  Cover("p", 90.0, "G=OR(B, C)");
  Apply("OR(G, p)");
  EXPECT_EQ(MechanismOf("B"), "late-Main::A.p");
}

TEST_F(DiagnosticCoverageTest, LoopEndsTheWalk) {
  const auto loop = builder.Tree("G=OR(B, AND(C, G))");
  Proxy("p").SetCoverage("H", 90.0);
  Proxy("p").AddChild(loop);
  Apply("OR(p)");
  EXPECT_EQ(MechanismOf("C"), "late-Main::A.p");
  ReleaseGraph(loop);
}

TEST_F(DiagnosticCoverageTest, LadderOfSharedGatesIsWalkedOncePerMechanism) {
  FaultTreeNode::Pointer rung = builder.Tree("OR(B, C)");
  for (int i = 0; i < 64; ++i) {  // 2^64 paths.
    const auto next = Tree("OR(AND(), AND())");
    next->GetChild(0)->AddChild(rung);
    next->GetChild(1)->AddChild(rung);
    rung = next;
  }
  Proxy("p").SetCoverage("H", 90.0);
  Proxy("p").AddChild(rung);
  Apply("OR(p)");
  EXPECT_EQ(MechanismOf("B"), "late-Main::A.p");
  EXPECT_THAT(Warnings(), IsEmpty());
}

}  // namespace
}  // namespace FTS
