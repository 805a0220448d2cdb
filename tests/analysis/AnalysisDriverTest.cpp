#include <gtest/gtest.h>

#include "analysis/CutSet.h"
#include "analysis/FaultTree.h"
#include "app/Config.h"
#include "faulttree/FaultTreeGate.h"
#include "platform/BigStack.h"
#include "support/CapturedStreams.h"
#include "support/CutSetText.h"
#include "support/FixedClock.h"
#include "support/PartsModel.h"
#include "support/ProcessStateTest.h"
#include "support/TreeBuilder.h"

namespace FTS {
namespace {

class AnalysisTest : public ProcessStateTest {
 protected:
  AnalysisTest() {
    Config::Instance().quantAnalysisTypes = QuantAnalysisType::EsaryProschan;
    Config::Instance().modularise = false;
  }

  std::shared_ptr<FaultTree> Add(const std::string& text) {
    const auto tree = std::make_shared<FaultTree>(builder.Tree(text));
    parts.model.AddFaultTree(tree);
    return tree;
  }

  void Figures(const std::string& name, double unavailability, double frequency) {
    builder.Event(name)->unavailability = unavailability;
    builder.Event(name)->frequency = frequency;
  }

  std::string Analyse(bool useBDDs = false) {
    const CapturedStreams streams;
    parts.model.Analyse(useBDDs);
    EXPECT_EQ(streams.Errors(), "");
    return streams.Output();
  }

  FixedClock clock;
  PartsModel parts;
  TreeBuilder builder{&parts.model};
};

TEST_F(AnalysisTest, ModelWithoutTreesIsDoneAtOnce) {
  EXPECT_EQ(Analyse(), "Analysing: \nFull analysis complete in 0s\n\n");
}

TEST_F(AnalysisTest, EachTreeIsReported) {
  Add("First=OR(A, AND(B, C))");
  Add("Second=AND(A, B)");
  Figures("A", 0.5, 0.25);
  Figures("B", 0.25, 0.125);
  Figures("C", 0.125, 0.0625);
  EXPECT_EQ(Analyse(),
            "Analysing: \n"
            "    First\n"
            "\tMICSUP produced 2 in: 0s\n"
            "\tUnavailability of 0.515625 calculated in: 0s\n"
            "\tFrequency of 0.257812 calculated in: 0s\n"
            "Cut Set Summary for: First\n"
            "1: 1\n"
            "2: 1\n"
            "Total: 2\n"
            "    Second\n"
            "\tMICSUP produced 1 in: 0s\n"
            "\tUnavailability of 0.125 calculated in: 0s\n"
            "\tFrequency of 0.125 calculated in: 0s\n"
            "Cut Set Summary for: Second\n"
            "1: 0\n"
            "2: 1\n"
            "Total: 1\n"
            "Full analysis complete in 0s\n\n");
}

TEST_F(AnalysisTest, SilentRunPrintsNothing) {
  Config::Instance().runSilent = true;
  const auto tree = Add("First=OR(A, B)");
  Figures("A", 0.5, 0.0);
  EXPECT_EQ(Analyse(), "");
  EXPECT_EQ(TextOf(tree->cutSets), "A; B");
  EXPECT_EQ(tree->unavailability, 0.5);
}

TEST_F(AnalysisTest, WithoutQuantificationFiguresStayZero) {
  Config::Instance().quantitativeAnalysis = false;
  const auto tree = Add("First=OR(A)");
  Figures("A", 0.5, 0.25);
  const std::string printed = Analyse();
  EXPECT_NE(printed.find("\tUnavailability of 0 calculated in: 0s\n"), std::string::npos);
  EXPECT_NE(printed.find("\tFrequency of 0 calculated in: 0s\n"), std::string::npos);
  EXPECT_EQ(tree->cutSets.begin()->second->unavailability, CutSet::NotComputed);
}

TEST_F(AnalysisTest, InclusionExclusionComputesNoFrequency) {
  Config::Instance().quantAnalysisTypes = QuantAnalysisType::CrossProduct;
  const auto tree = Add("First=OR(A, B)");
  Figures("A", 0.5, 0.25);
  Figures("B", 0.25, 0.25);
  Analyse();
  EXPECT_EQ(tree->unavailability, 0.625);
  EXPECT_EQ(tree->frequency, 0.0);
}

TEST_F(AnalysisTest, EsaryProschanWinsOverTheOthers) {
  Config::Instance().quantAnalysisTypes =
      QuantAnalysisType::EsaryProschan | QuantAnalysisType::CrossProduct | QuantAnalysisType::Rare;
  const auto tree = Add("First=OR(A, B)");
  Figures("A", 0.5, 0.25);
  Figures("B", 0.5, 0.25);
  Analyse();
  EXPECT_EQ(tree->unavailability, 0.75);
  EXPECT_EQ(tree->frequency, 0.25);
}

TEST_F(AnalysisTest, TreeWithoutRootHasNoCutSets) {
  parts.model.AddFaultTree(std::make_shared<FaultTree>(nullptr));
  EXPECT_EQ(Analyse(),
            "Analysing: \n"
            "    \n"
            "\tMICSUP produced 0 in: 0s\n"
            "\tUnavailability of 0 calculated in: 0s\n"
            "\tFrequency of 0 calculated in: 0s\n"
            "Cut Set Summary for: \n"
            "Full analysis complete in 0s\n\n");
}

TEST_F(AnalysisTest, TreesMayShareTheirNodes) {
  const auto first = Add("First=OR(S=AND(A, OR(B, C)), D)");
  const auto second = Add("Second=AND(S, E)");
  Analyse();
  EXPECT_EQ(TextOf(first->cutSets), "A B; A C; D");
  EXPECT_EQ(TextOf(second->cutSets), "A B E; A C E");
}

TEST_F(AnalysisTest, ModulesAreReportedOnBothStreams) {
  Config::Instance().modularise = true;
  const auto tree = Add("First=OR(AND(A, B), AND(C, D))");
  const CapturedStreams streams;
  parts.model.Analyse(false);
  EXPECT_EQ(streams.Errors(), "Number of modules found: 3\n");
  EXPECT_EQ(streams.Output().substr(0, streams.Output().find("\tUnavailability")),
            "Analysing: \n"
            "    First\n"
            "\tModularisation complete: 3 modules found.\n"
            "\tMICSUP produced 2 in: 0s\n");
  EXPECT_EQ(TextOf(tree->cutSets), "A B; C D");
}

TEST_F(AnalysisTest, NegationIsAnalysedWithTheConsensusLaw) {
  const auto tree = Add("First=OR(A, NOT(B))");
  tree->containsNot = true;
  const std::string printed = Analyse();
  EXPECT_EQ(TextOf(tree->cutSets),
            "A; \xAC"
            "B");
  EXPECT_NE(printed.find("    First\n\tApplying initial Consensus Law...\n"
                         "\tGenerating derived Consensus Cut Sets...\n\tMICSUP produced 2 in"),
            std::string::npos)
      << printed;
}

TEST_F(AnalysisTest, DecisionDiagramsTellTheirSize) {
  const auto tree = Add("First=OR(A, B)");
  const std::string printed = Analyse(true);
  EXPECT_EQ(TextOf(tree->cutSets), "A; B");
  EXPECT_NE(printed.find("    First\n      5 nodes in tree\n      Collecting cut sets...\n"
                         "\tBDD produced 2 in: 0s\n"),
            std::string::npos)
      << printed;
}

/// A clock that tells another time at each look: 0, 1 s, 3 s, 6 s, 10 s, ...
class RunningClock : public ClockSource {
 public:
  long long Milliseconds() override {
    constexpr long long Second = 1000;
    now += Second * looks++;
    return now;
  }
  long long CalendarSeconds() override { return 0; }

 private:
  long long now = 0;
  long long looks = 0;
};

TEST_F(AnalysisTest, TimesOfLaterTreesCountFromThoseOfTheTreeBefore) {
  Add("First=OR(A, B)");
  Add("Second=OR(A, B)");
  auto before = Clock::Replace(std::make_unique<RunningClock>());
  const std::string printed = Analyse();
  Clock::Replace(std::move(before));
  EXPECT_NE(printed.find("    First\n\tMICSUP produced 2 in: 1s\n"), std::string::npos) << printed;
  EXPECT_NE(printed.find("    Second\n\tMICSUP produced 2 in: 7s\n"), std::string::npos) << printed;
}

TEST_F(AnalysisTest, DeepTreeIsAnalysed) {
  // A hundred thousand alternating gates; above order four the limit cuts.
  Config::Instance().maxCutSetSize = 4;
  Config::Instance().runSilent = true;
  RunOnBigStack([this] {
    FaultTreeNode::Pointer node = std::make_shared<BasicEvent>("last", &parts.model, true);
    for (int i = 0; i < 50000; ++i) {
      const auto conjunction = MakeGate(NodeType::And, "and", &parts.model);
      conjunction->AddChild(std::make_shared<BasicEvent>("b", &parts.model, true));
      conjunction->AddChild(node);
      const auto disjunction = MakeGate(NodeType::Or, "or", &parts.model);
      disjunction->AddChild(std::make_shared<BasicEvent>("a", &parts.model, true));
      disjunction->AddChild(conjunction);
      node = disjunction;
    }
    const auto tree = std::make_shared<FaultTree>(node);
    parts.model.AddFaultTree(tree);
    parts.model.Analyse(false);
    EXPECT_EQ(tree->cutSets.size(), 4U);
    EXPECT_EQ(tree->maxOrder, 4);
    parts.model.RemoveFaultTree(*tree);
  });
}

}  // namespace
}  // namespace FTS
