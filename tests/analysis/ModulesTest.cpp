#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "analysis/CutSet.h"
#include "analysis/FaultTree.h"
#include "analysis/ModuleEvent.h"
#include "analysis/Prime.h"
#include "app/Config.h"
#include "faulttree/FaultTreeGate.h"
#include "support/CapturedStreams.h"
#include "support/CutSetText.h"
#include "support/ProcessStateTest.h"
#include "support/TreeBuilder.h"

namespace FTS {
namespace {

class ModulesTest : public ProcessStateTest {
 protected:
  FaultTreeNode& Make(const std::string& text) {
    tree = std::make_unique<FaultTree>(builder.Tree(text));
    return *tree->GetTopGate();
  }

  /// The count that comes back.
  int Modularise(const std::string& text, bool useBDDs = false) {
    Make(text);
    const CapturedStreams streams;
    const int count = tree->Modularise(useBDDs);
    EXPECT_EQ(streams.Output(), "");
    errors = streams.Errors();
    return count;
  }

  /// The cut sets that the module event of a gate has, as text.
  std::string ModuleText(const std::string& gate) const {
    std::string text;
    for (const auto& cutSet : EventOf(gate).moduleCutSets) {
      text += (text.empty() ? "" : "; ") + MembersOf(*cutSet);
    }
    return text;
  }

  const ModuleEvent& EventOf(const std::string& gate) const {
    const ModuleEvent* const event = builder.Node(gate)->moduleEvent.get();
    if (!event) throw std::logic_error(gate + " has no module event");
    return *event;
  }

  bool IsModule(const std::string& gate) const { return builder.Node(gate)->isModule; }

  TreeBuilder builder;
  std::unique_ptr<FaultTree> tree;
  std::string errors;
};

TEST_F(ModulesTest, GatesWithoutSharedNodesAreModules) {
  EXPECT_EQ(Modularise("OR(G=AND(A, B), H=AND(C, D))"), 3);
  EXPECT_TRUE(IsModule("G"));
  EXPECT_TRUE(IsModule("H"));
  EXPECT_EQ(errors, "Number of modules found: 3\n");
}

TEST_F(ModulesTest, EachModuleIsGeneratedAlone) {
  Modularise("OR(G=AND(A, B), H=AND(C, D))");
  EXPECT_EQ(ModuleText("G"), "A B");
  EXPECT_EQ(ModuleText("H"), "C D");
  EXPECT_FALSE(tree->root->cutSetsDone);
  EXPECT_TRUE(tree->root->cutSets.empty());
}

TEST_F(ModulesTest, GateAboveSeesOneEventForEachModule) {
  Modularise("OR(G=AND(A, B), H=AND(C, D))");
  tree->root->GenerateCutSets();
  EXPECT_EQ(TextOf(tree->root->cutSets), "MOD: G; MOD: H");
  tree->CollectCutSets();
  EXPECT_EQ(TextOf(tree->cutSets), "A B; C D");
}

TEST_F(ModulesTest, SharedEventLeavesTheTopGateAsTheOnlyModule) {
  EXPECT_EQ(Modularise("OR(G=AND(A, B), H=AND(A, C))"), 1);
  EXPECT_FALSE(IsModule("G"));
  EXPECT_FALSE(IsModule("H"));
  EXPECT_FALSE(builder.Node("G")->cutSetsDone) << "Nothing is generated for one module.";
  EXPECT_TRUE(builder.Node("G")->cutSets.empty());
  EXPECT_EQ(errors, "");
}

TEST_F(ModulesTest, SilentRunDoesNotTellTheNumber) {
  Config::Instance().runSilent = true;
  EXPECT_EQ(Modularise("OR(G=AND(A, B), H=AND(C, D))"), 3);
  EXPECT_EQ(errors, "");
}

TEST_F(ModulesTest, GateReachedTwiceIsAModuleOnce) {
  // Both OR gates see it, so that neither is a module itself.
  EXPECT_EQ(Modularise("AND(K=OR(X, G=AND(A, B)), L=OR(Y, G))"), 2);
  EXPECT_TRUE(IsModule("G"));
  EXPECT_FALSE(IsModule("K"));
  EXPECT_FALSE(IsModule("L"));
  tree->root->GenerateCutSets();
  EXPECT_EQ(TextOf(tree->root->cutSets), "MOD: G; X Y");
  tree->CollectCutSets();
  EXPECT_EQ(TextOf(tree->cutSets), "A B; X Y");
}

TEST_F(ModulesTest, GateWithAllUsersOfASharedNodeIsAModule) {
  EXPECT_EQ(Modularise("OR(X, M=AND(K=OR(A, S), L=OR(B, S)))"), 2);
  EXPECT_TRUE(IsModule("M"));
  EXPECT_EQ(ModuleText("M"), "S; A B") << "In the order of their keys: 7 and 5 * 11.";
}

TEST_F(ModulesTest, InnerModulesComeBeforeOuterOnes) {
  FaultTreeNode& top = Make("T=AND(X, M=OR(G=AND(A, B), H=AND(C, D)))");
  std::vector<std::shared_ptr<FaultTreeGate>> modules;
  top.AssignVisitNumbersAlt(1);
  top.FindModulesDeep(modules);
  std::string names;
  for (const auto& module : modules) names += module->name + " ";
  EXPECT_EQ(names, "G H M T ");
}

TEST_F(ModulesTest, OuterModuleHoldsTheEventsOfInnerOnes) {
  EXPECT_EQ(Modularise("AND(X, M=OR(G=AND(A, B), H=AND(C, D)))"), 4);
  EXPECT_TRUE(EventOf("M").hasNestedModules);
  EXPECT_FALSE(EventOf("G").hasNestedModules);
  EXPECT_EQ(ModuleText("M"), "MOD: G; MOD: H");
}

TEST_F(ModulesTest, ProxiesAreNoModulesButWhatIsBelowThemMayBe) {
  EXPECT_EQ(Modularise("OR(P=PROXY(G=AND(A, B)), C)"), 2);
  EXPECT_FALSE(IsModule("P"));
  EXPECT_TRUE(IsModule("G"));
  tree->root->GenerateCutSets();
  EXPECT_EQ(TextOf(tree->root->cutSets), "C; MOD: G");
}

TEST_F(ModulesTest, VisitsAreDatedDepthFirst) {
  FaultTreeNode& top = Make("OR(G=AND(A, B), H=AND(A, C))");
  EXPECT_EQ(top.AssignVisitNumbersAlt(1), 10);
  const auto dates = [this](const std::string& name) {
    const FaultTreeNode& node = *builder.Node(name);
    return std::vector<int>{node.firstVisit, node.secondVisit, node.lastVisit};
  };
  EXPECT_EQ(dates("G"), (std::vector<int>{2, 5, 5}));
  EXPECT_EQ(dates("A"), (std::vector<int>{3, 3, 7}));
  EXPECT_EQ(dates("B"), (std::vector<int>{4, 4, 4}));
  EXPECT_EQ(dates("H"), (std::vector<int>{6, 9, 9}));
  EXPECT_EQ(dates("C"), (std::vector<int>{8, 8, 8}));
  EXPECT_EQ(top.firstVisit, 1);
  EXPECT_EQ(top.secondVisit, 10);
}

TEST_F(ModulesTest, GateVisitedAgainIsDatedButNotEntered) {
  FaultTreeNode& top = Make("AND(G=OR(A, B), X, G)");
  EXPECT_EQ(top.AssignVisitNumbersAlt(1), 8);
  EXPECT_EQ(builder.Node("G")->secondVisit, 5);
  EXPECT_EQ(builder.Node("G")->lastVisit, 7);
  EXPECT_EQ(builder.Node("A")->lastVisit, 3);
}

TEST_F(ModulesTest, WalksAreLinearInALadderOfSharedGates) {
  FaultTreeNode::Pointer rung = builder.Tree("OR(A, B)");
  for (int i = 0; i < 200; ++i) {  // 2^200 paths.
    const auto left = Tree("PROXY()");
    const auto right = Tree("PROXY()");
    left->AddChild(rung);
    right->AddChild(rung);
    const auto next = i % 2 == 0 ? Tree("AND()") : Tree("OR()");
    next->AddChild(left);
    next->AddChild(right);
    rung = next;
  }
  tree = std::make_unique<FaultTree>(rung);
  Config::Instance().runSilent = true;
  EXPECT_EQ(tree->Modularise(false), 201) << "All gates are, and share no event with others.";
  tree->root->GenerateCutSets();
  tree->CollectCutSets();
  EXPECT_EQ(TextOf(tree->cutSets), "A; B");
}

TEST_F(ModulesTest, EachModuleTakesTwoPrimes) {
  Modularise("OR(G=AND(A, B), H=AND(C, D))");  // The events have 3, 5, 7 and 11.
  EXPECT_EQ(EventOf("G").prime, 17.0);
  EXPECT_EQ(EventOf("H").prime, 23.0);
  EXPECT_EQ(Prime::Instance().Next(), 37.0) << "The top gate has taken its own.";
}

TEST_F(ModulesTest, ResetTakesTheTreeBack) {
  Modularise("OR(G=AND(A, B), H=AND(C, D))");
  tree->root->ResetModules();
  for (const char* name : {"G", "H", "A", "D"}) {
    const FaultTreeNode& node = *builder.Node(name);
    EXPECT_FALSE(node.isModule) << name;
    EXPECT_FALSE(node.moduleEvent) << name;
    EXPECT_FALSE(node.cutSetsDone) << name;
    EXPECT_TRUE(node.cutSets.empty()) << name;
    EXPECT_EQ(node.firstVisit + node.secondVisit + node.lastVisit, 0) << name;
    EXPECT_EQ(node.minVisit + node.maxVisit, 0) << name;
  }
}

TEST_F(ModulesTest, SearchCanBeRepeated) {
  Modularise("OR(G=AND(A, B), H=AND(C, D))");
  Config::Instance().runSilent = true;
  EXPECT_EQ(tree->Modularise(false), 3);
  EXPECT_EQ(ModuleText("G"), "A B");
}

TEST_F(ModulesTest, DiagramsOfModulesGiveTheSameCutSets) {
  EXPECT_EQ(Modularise("AND(X, M=OR(G=AND(A, B), H=AND(C, D)))", true), 4);
  EXPECT_EQ(ModuleText("G"), "A B");
  EXPECT_EQ(ModuleText("H"), "C D");
  EXPECT_EQ(ModuleText("M"), "MOD: G; MOD: H");
  EXPECT_TRUE(EventOf("M").hasNestedModules);
}

TEST_F(ModulesTest, TreesWithoutTopGateHaveNoModules) {
  FaultTree rootless(nullptr);
  EXPECT_EQ(rootless.Modularise(false), 0);
}

TEST_F(ModulesTest, EventAtTheTopIsNoModule) { EXPECT_EQ(Modularise("IN(A)"), 0); }

TEST_F(ModulesTest, ModulesBelowAProxyAtTheRootAreFound) {
  EXPECT_EQ(Modularise("OUT(OR(G=AND(A, B), H=AND(C, D)))"), 3);
  EXPECT_TRUE(IsModule("G"));
}

TEST_F(ModulesTest, EventAndItsComplementDoNotTieModulesTogether) {
  EXPECT_EQ(Modularise("OR(G=AND(A, B), H=AND(~A, C))"), 3);
  tree->root->GenerateCutSets();
  tree->CollectCutSets();
  EXPECT_EQ(TextOf(tree->cutSets),
            "A B; \xAC"
            "A C");
}

}  // namespace
}  // namespace FTS
