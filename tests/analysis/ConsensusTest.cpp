#include <gmock/gmock.h>

#include <initializer_list>
#include <memory>
#include <string>

#include "analysis/ConsensusCutSet.h"
#include "analysis/CutSet.h"
#include "analysis/CutSetList.h"
#include "analysis/FaultTree.h"
#include "app/Config.h"
#include "faulttree/BasicEvent.h"
#include "faulttree/FaultTreeGate.h"
#include "support/CapturedStreams.h"
#include "support/CaseName.h"
#include "support/CutSetText.h"
#include "support/PartsModel.h"
#include "support/ProcessStateTest.h"
#include "support/TreeBuilder.h"

namespace FTS {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

constexpr const char* Initial = "\tApplying initial Consensus Law...\n";
constexpr const char* Round = "\tGenerating derived Consensus Cut Sets...\n";

/// Complements are written "~A" here.
class ConsensusTest : public ProcessStateTest {
 protected:
  ConsensusTest() {
    Config::Instance().modularise = false;
    Config::Instance().quantitativeAnalysis = false;
  }

  /// What the analysis prints.
  std::string Analyse(const std::string& text, bool useBDDs = false) {
    tree = std::make_shared<FaultTree>(builder.Tree(text));
    tree->containsNot = ContainsNot(*tree->root);
    parts.model.AddFaultTree(tree);
    const CapturedStreams streams;
    parts.model.Analyse(useBDDs);
    return streams.Output();
  }

  static std::string Readable(std::string text) {
    for (char& letter : text) {
      if (letter == '\xAC') letter = '~';
    }
    return text;
  }

  std::string Found() const { return Readable(TextOf(tree->cutSets)); }

  PartsModel parts;
  TreeBuilder builder{&parts.model};
  std::shared_ptr<FaultTree> tree;
};

struct ConsensusCase {
  const char* name;
  const char* tree;
  const char* cutSets;
};

class ConsensusLawTest : public ConsensusTest,
                         public ::testing::WithParamInterface<ConsensusCase> {};

TEST_F(ConsensusTest, JoinedCutSetTakesThePlaceOfOneWithItsKey) {
  builder.Tree("OR(A, B, E)");
  builder.Event("E")->prime = builder.Event("A")->prime * builder.Event("B")->prime;
  Analyse("OR(AND(A, B, C), AND(A, B, NOT(C)), E)");
  EXPECT_EQ(Found(), "A B");
}

TEST_P(ConsensusLawTest, LeavesTheseCutSets) {
  Analyse(GetParam().tree);
  EXPECT_EQ(Found(), GetParam().cutSets);
}

TEST_P(ConsensusLawTest, LeavesTheSameWithModules) {
  Config::Instance().modularise = true;
  Config::Instance().runSilent = true;
  Analyse(GetParam().tree);
  EXPECT_EQ(Found(), GetParam().cutSets);
}

// The names of events rise with their primes, so members are in the order of the text.
INSTANTIATE_TEST_SUITE_P(
    Trees, ConsensusLawTest,
    ::testing::Values(
        ConsensusCase{"Contradiction", "AND(A, NOT(A))", ""},
        ConsensusCase{"ContradictionAmongOthers", "AND(OR(A, B), NOT(A))", "B ~A"},
        ConsensusCase{"JoinedPair", "OR(AND(A, B), AND(NOT(A), B))", "B"},
        ConsensusCase{"JoinedPairMakesOthersRedundant",
                      "OR(AND(A, B), AND(NOT(A), B), AND(B, C), D)", "B; D"},
        ConsensusCase{"JoinedPairInsideAStoredSet", "OR(AND(A, B, C), AND(NOT(A), B, C), B)", "B"},
        ConsensusCase{"TermMakesTheThirdRedundant", "OR(AND(A, B), AND(NOT(A), C), AND(B, C))",
                      "A B; C ~A"},
        ConsensusCase{"TermInsideALargerOne", "OR(AND(A, B), AND(NOT(A), C), AND(B, C, D))",
                      "A B; C ~A"},
        ConsensusCase{"ParentsStay", "OR(AND(A, B), AND(NOT(A), C))", "A B; C ~A"},
        ConsensusCase{"ParentAroundItsOwnTerm", "OR(A, AND(NOT(A), B))", "A; B ~A"},
        ConsensusCase{"TermOfATerm", "OR(AND(A, B), AND(NOT(A), C), AND(NOT(B), D), AND(C, D))",
                      "A B; C ~A; D ~B"},
        ConsensusCase{"DoubleNegation", "OR(NOT(NOT(A)))", "A"},
        ConsensusCase{"NegatedGate", "AND(NOT(OR(A, B)), C)", "C ~A ~B"},
        ConsensusCase{"Pand", "OR(PAND(A, B), NOT(C))", "A; ~C"}),
    CaseName);

TEST_F(ConsensusTest, ContradictionsAreCounted) {
  const std::string printed = Analyse("AND(A, NOT(A))");
  EXPECT_THAT(printed, HasSubstr("Removing 1 contradictions\n" + std::string(Initial) + Round));
  EXPECT_THAT(printed, HasSubstr("\tMICSUP produced 0 in: "));
}

TEST_F(ConsensusTest, WithoutContradictionsNoneAreCounted) {
  EXPECT_THAT(Analyse("OR(A, NOT(B))"), Not(HasSubstr("Removing")));
}

TEST_F(ConsensusTest, RedundantCutSetsGoWithoutAWord) {
  EXPECT_THAT(Analyse("OR(AND(A, B), AND(NOT(A), C), AND(B, C))"), Not(HasSubstr("Removing")));
}

TEST_F(ConsensusTest, SilentRunPrintsNothing) {
  Config::Instance().runSilent = true;
  EXPECT_EQ(Analyse("OR(AND(A, NOT(A)), AND(A, B), AND(NOT(A), B))"), "");
  EXPECT_EQ(Found(), "B");
}

TEST_F(ConsensusTest, TreeWithoutNegationIsLeftAlone) {
  const std::string printed = Analyse("OR(AND(A, ~A), B)");
  EXPECT_EQ(Found(), "A ~A; B");
  EXPECT_THAT(printed, Not(HasSubstr("Consensus")));
  EXPECT_THAT(printed, Not(HasSubstr("Removing")));
}

TEST_F(ConsensusTest, WhatAlwaysHoldsIsTheSetOfNoEvents) {
  Analyse("OR(A, NOT(A))");
  ASSERT_EQ(tree->cutSets.size(), 1U);
  EXPECT_TRUE(tree->cutSets.begin()->second->events.empty());
  EXPECT_EQ(tree->cutSets.begin()->first, 1.0);
  EXPECT_TRUE(tree->primeIndex->lists.empty());
}

TEST_F(ConsensusTest, RemovedCutSetsLeaveTheIndex) {
  Analyse("OR(AND(A, B), AND(NOT(A), C), AND(B, C), AND(D, NOT(D)), AND(E, C), AND(NOT(E), C))");
  EXPECT_EQ(Found(), "A B; C");
  const auto listed = [this](const char* name, int size) {
    const CutSetList* const list = tree->primeIndex->Find(builder.Event(name)->prime, size);
    return list ? list->GetCount() : 0;
  };
  EXPECT_EQ(listed("A", 2), 1);
  EXPECT_EQ(listed("B", 2), 1);
  EXPECT_EQ(listed("C", 1), 1);
  EXPECT_EQ(listed("C", 2), 0);
  EXPECT_EQ(listed("D", 2), 0);
  EXPECT_EQ(listed("E", 2), 0);
  EXPECT_EQ(tree->primeIndex->lists.size(), 3U);
}

TEST_F(ConsensusTest, DiagramsNameNoComplements) {
  Analyse("AND(A, NOT(B))", true);
  EXPECT_EQ(Found(), "A");
}

TEST_F(ConsensusTest, ReplacedRootLivesOnUnderAnOrGate) {
  const auto negation = builder.Tree("Top=NOT(AND(A, B))");
  negation->description = "why";
  const int id = negation->GetId();
  tree = std::make_shared<FaultTree>(negation);
  tree->Dualise();
  EXPECT_EQ(ShapeOf(tree->root), "OR(OR(~A, ~B))");
  EXPECT_EQ(tree->root->GetId(), id);
  EXPECT_EQ(tree->root->name, "Top");
  EXPECT_EQ(tree->root->description, "why");
}

/// Terms of cut sets that the test writes down.
class ConsensusTermTest : public ConsensusTest {
 protected:
  std::unique_ptr<CutSet> Set(std::initializer_list<const char*> names) {
    auto cutSet = std::make_unique<CutSet>();
    for (const std::string name : names) {
      if (name[0] == '~') {
        builder.Tree(name.substr(1));
        cutSet->AddEvent(*builder.Event(name.substr(1))->GetComplement());
      } else {
        builder.Tree(name);
        cutSet->AddEvent(*builder.Event(name));
      }
    }
    return cutSet;
  }
};

TEST_F(ConsensusTermTest, HoldsTheOtherMembersOfBoth) {
  const auto a = Set({"A", "B", "C"});
  const auto b = Set({"~A", "D"});
  const ConsensusCutSet term(*a, *b, *builder.Event("A"));
  EXPECT_EQ(MembersOf(term), "B C D");
  EXPECT_TRUE(term.IsConsensus());
  EXPECT_EQ(term.GetPrimeType(), "CUTSET");
}

TEST_F(ConsensusTermTest, MemberOfBothSquaresItsFactor) {
  const auto a = Set({"A", "B"});
  const auto b = Set({"~A", "B", "C"});
  const ConsensusCutSet term(*a, *b, *builder.Event("A"));
  EXPECT_EQ(MembersOf(term), "B C");
  const double prime = builder.Event("B")->prime;
  EXPECT_EQ(term.prime, prime * prime * builder.Event("C")->prime);
}

TEST_F(ConsensusTermTest, TermsHandTheirParentsOn) {
  const auto a = Set({"A", "B"});
  const auto b = Set({"~A", "C"});
  const auto c = Set({"~B", "D"});
  const ConsensusCutSet first(*a, *b, *builder.Event("A"));
  const ConsensusCutSet second(first, *c, *builder.Event("B"));
  EXPECT_TRUE(second.HasParent(*a));
  EXPECT_TRUE(second.HasParent(*b));
  EXPECT_TRUE(second.HasParent(*c));
  EXPECT_FALSE(second.HasParent(first));
  EXPECT_EQ(second.parents.size(), 3U);
}

TEST_F(ConsensusTermTest, ClonedTermIsAPlainCutSet) {
  const auto a = Set({"A", "B"});
  const auto b = Set({"~A", "C"});
  const ConsensusCutSet term(*a, *b, *builder.Event("A"));
  EXPECT_FALSE(term.Clone()->IsConsensus());
}

TEST_F(ConsensusTermTest, EventAndItsComplementContradictEachOther) {
  EXPECT_TRUE(Set({"A", "B", "~A"})->IsContradiction());
  EXPECT_FALSE(Set({"A", "~B"})->IsContradiction());
  EXPECT_FALSE(Set({"~A", "~B"})->IsContradiction());
  EXPECT_FALSE(Set({})->IsContradiction());
}

TEST_F(ConsensusTermTest, MapIsFilledAnewFromTheIndex) {
  tree = std::make_shared<FaultTree>(builder.Tree("OR(A, B, C)"));
  tree->AddCutSet(Set({"A", "B"}), false);
  tree->AddCutSet(Set({"C"}), false);
  tree->AddCutSet(Set({}), false);
  tree->RebuildCutSetMap();
  EXPECT_EQ(tree->cutSets.size(), 3U);
  EXPECT_EQ(tree->cutSets.count(1.0), 1U) << "The set of no events is in no list.";
}

}  // namespace
}  // namespace FTS
