#include <gmock/gmock.h>

#include <map>
#include <set>
#include <string>
#include <vector>

#include "support/ModelXml.h"
#include "support/ProcessStateTest.h"
#include "support/ProgramRun.h"
#include "support/TemporaryFolder.h"

namespace FTS {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::UnorderedElementsAre;

/// Runs of the program on one component of the events A to F, each of unavailability 0.1.
class NegationRunTest : public ProcessStateTest {
 protected:
  ProgramRun Run(const std::vector<std::string>& expressions,
                 const std::vector<std::string>& options = {}) {
    std::vector<std::string> deviations;
    std::vector<std::string> hazards;
    std::vector<std::string> events;
    for (std::size_t i = 0; i < expressions.size(); ++i) {
      const std::string number = std::to_string(i);
      deviations.push_back(XmlDeviation("Class" + number + "-out", expressions[i]));
      hazards.push_back(XmlHazard("H" + number, "Class" + number + "-C.out"));
    }
    for (const char* name : {"A", "B", "C", "D", "F", "G"}) events.push_back(XmlEvent(name));
    const std::string model =
        XmlModel(hazards, XmlSystem({XmlLeaf("C", {"out"}, {events, deviations})}, {}));
    std::vector<std::string> arguments{folder.Write("m.xml", model), "outputdir=" + folder.Path(),
                                       "outputtype=XML,RESULTS"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    ProgramRun run = RunProgramWith(arguments);
    EXPECT_EQ(run.exitStatus, 0);
    trees = ReadResults(folder.Path("m-Results/Results.xml"));
    return run;
  }

  /// The cut sets of a tree by their events' own names, complements as "~A".
  std::set<std::string> CutSets(const std::string& tree = "H0") const {
    std::set<std::string> sets;
    for (std::string set : trees.at(tree).cutSets) {
      for (const std::string& noise : {std::string("DEFAULT::C."), std::string("C.")}) {
        for (std::size_t at = set.find(noise); at != std::string::npos; at = set.find(noise)) {
          set.erase(at, noise.size());
        }
      }
      for (std::size_t at = set.find('\xAC'); at != std::string::npos; at = set.find('\xAC')) {
        set[at] = '~';
      }
      sets.insert(set);
    }
    return sets;
  }

  TemporaryFolder folder;
  std::map<std::string, ReportedTree> trees;
};

TEST_F(NegationRunTest, ContradictionIsRemovedAndTold) {
  const ProgramRun run = Run({"A AND not A"});
  EXPECT_THAT(CutSets(), UnorderedElementsAre());
  EXPECT_THAT(run.output, HasSubstr("Removing 1 contradictions\n"
                                    "\tApplying initial Consensus Law...\n"
                                    "\tGenerating derived Consensus Cut Sets...\n"));
}

TEST_F(NegationRunTest, NegationOfOneEventIsItsComplement) {
  for (const char* contraction : {"contract=true", "contract=false"}) {
    Run({"not A"}, {contraction});
    EXPECT_THAT(CutSets(), UnorderedElementsAre("~A")) << contraction;
    EXPECT_NEAR(trees.at("H0").unavailability, 0.9, 1e-6) << contraction;
  }
}

TEST_F(NegationRunTest, NegationBelowANegatedTopEventStays) {
  for (const char* contraction : {"contract=true", "contract=false"}) {
    Run({"not (A AND not (B AND not C))"}, {contraction});
    EXPECT_THAT(CutSets(), UnorderedElementsAre("~A", "B;~C")) << contraction;
    EXPECT_NEAR(trees.at("H0").unavailability, 1.0 - 0.1 * (1.0 - 0.09), 1e-6) << contraction;
  }
}

TEST_F(NegationRunTest, NegatedTopEventLeavesOtherTreesAlone) {
  // Both trees hold the logic of Base, one of them negated, and Base holds an input without source.
  const std::string shared =
      XmlSystem({XmlLeaf("C", {"in", "base", "first", "second"},
                         {{XmlEvent("A"), XmlEvent("B"), XmlEvent("D")},
                          {XmlDeviation("Omission-base", "A AND (B OR Omission-in)"),
                           XmlDeviation("Omission-first", "not LocalGoto(Omission-base)"),
                           XmlDeviation("Omission-second", "D AND LocalGoto(Omission-base)")}})},
                {});
  const std::string model =
      XmlModel({XmlHazard("H0", "Omission-C.first"), XmlHazard("H1", "Omission-C.second")}, shared);
  const ProgramRun run = RunProgramWith(
      {folder.Write("m.xml", model), "outputdir=" + folder.Path(), "outputtype=XML,RESULTS"});
  trees = ReadResults(folder.Path("m-Results/Results.xml"));
  EXPECT_EQ(run.errors.find("No component for"), std::string::npos) << run.errors;
  EXPECT_THAT(CutSets("H0"), UnorderedElementsAre("~A", "~B"));
  EXPECT_THAT(CutSets("H1"), UnorderedElementsAre("A;B;D"));
}

TEST_F(NegationRunTest, PairIsJoined) {
  Run({"A AND B OR not A AND B"});
  EXPECT_THAT(CutSets(), UnorderedElementsAre("B"));
  EXPECT_NEAR(trees.at("H0").unavailability, 0.1, 1e-6);
}

TEST_F(NegationRunTest, CutSetThatOthersImplyIsRemoved) {
  Run({"A AND B OR not A AND C OR B AND C"});
  EXPECT_THAT(CutSets(), UnorderedElementsAre("A;B", "C;~A"));
}

TEST_F(NegationRunTest, ComplementHasTheRemainingProbability) {
  Run({"A AND not B"});
  EXPECT_NEAR(trees.at("H0").unavailability, 0.1 * 0.9, 1e-6);
}

TEST_F(NegationRunTest, DoubleNegationIsTheEventItself) {
  Run({"not (not A)"});
  EXPECT_THAT(CutSets(), UnorderedElementsAre("A"));
}

TEST_F(NegationRunTest, PandHasTheCutSetsOfItsFirstInput) {
  Run({"A pand B"});
  EXPECT_THAT(CutSets(), UnorderedElementsAre("A"));
}

TEST_F(NegationRunTest, ModelWithoutNegationsNeverMeetsTheConsensusLaw) {
  EXPECT_THAT(Run({"A AND B OR C"}).output, Not(HasSubstr("Consensus")));
}

TEST_F(NegationRunTest, TreesThatShareADeviationKeepTheirOwnMeaning) {
  // Both hang the same output's logic under them, and only one of them negates it.
  const std::string model = XmlModel(
      {XmlHazard("Fails", "Omission-C.out"), XmlHazard("Works", "not Omission-C.out")},
      XmlSystem(
          {XmlLeaf("C", {"out"},
                   {{XmlEvent("A"), XmlEvent("B")}, {XmlDeviation("Omission-out", "A AND B")}})},
          {}));
  RunProgramWith(
      {folder.Write("m.xml", model), "outputdir=" + folder.Path(), "outputtype=XML,RESULTS"});
  trees = ReadResults(folder.Path("m-Results/Results.xml"));
  EXPECT_THAT(CutSets("Fails"), UnorderedElementsAre("A;B"));
  EXPECT_THAT(CutSets("Works"), UnorderedElementsAre("~A", "~B"));
}

TEST_F(NegationRunTest, ModulesAreToldUnlessTheyAreTurnedOff) {
  const std::string logic = "A AND B OR C AND D";
  EXPECT_THAT(Run({logic}).output, HasSubstr("\tModularisation complete: 3 modules found.\n"));
  EXPECT_THAT(CutSets(), UnorderedElementsAre("A;B", "C;D"));
  const ProgramRun off = Run({logic}, {"modularise=false"});
  EXPECT_THAT(off.output, Not(HasSubstr("Modularisation")));
  EXPECT_THAT(off.errors, Not(HasSubstr("Number of modules found")));
  EXPECT_THAT(CutSets(), UnorderedElementsAre("A;B", "C;D"));
}

TEST_F(NegationRunTest, SharedEventLeavesOneModule) {
  const ProgramRun run = Run({"A AND B OR A AND C"});
  EXPECT_THAT(run.output, HasSubstr("\tModularisation complete: 1 modules found.\n"));
  EXPECT_THAT(run.errors, Not(HasSubstr("Number of modules found")));
  EXPECT_THAT(CutSets(), UnorderedElementsAre("A;B", "A;C"));
}

TEST_F(NegationRunTest, LimitIsAppliedToExpandedModules) {
  const ProgramRun run = Run({"(A AND B OR C) AND (D AND F OR G)"}, {"maxcutset=2"});
  EXPECT_THAT(CutSets(), UnorderedElementsAre("C;G"));
  EXPECT_THAT(run.output, HasSubstr("1: 0\n2: 1\n3: 0\n4: 0\nTotal: 1\n"))
      << "Dropped sets still count for the highest order.";
}

TEST_F(NegationRunTest, LimitThatMayHideSmallerCutSetsIsTold) {
  const std::string warning =
      "The order limit may hide smaller cut sets, which negation would make ";
  const ProgramRun run = Run({"A AND B OR A AND not B"}, {"maxcutset=1"});
  EXPECT_THAT(run.errors, HasSubstr(warning));
  EXPECT_THAT(Run({"A AND B"}, {"maxcutset=1"}).errors, Not(HasSubstr(warning)));
  EXPECT_THAT(Run({"A AND B OR A AND not B"}).errors, Not(HasSubstr(warning)));
  EXPECT_THAT(CutSets(), UnorderedElementsAre("A"));
}

TEST_F(NegationRunTest, DiagramsTellTheirSizeInSilentRunsToo) {
  const ProgramRun run = Run({"A OR A"}, {"useBDDs=true", "runSilent=true"});
  EXPECT_THAT(run.output, HasSubstr("      3 nodes in tree\n      Collecting cut sets...\n"));
}

TEST_F(NegationRunTest, DiagramsGiveTheCutSets) {
  const ProgramRun run = Run({"A OR A AND B OR C AND D"}, {"useBDDs=true"});
  EXPECT_THAT(run.output, HasSubstr("\tBDD produced 2 in: "));
  EXPECT_THAT(CutSets(), UnorderedElementsAre("A", "C;D"));
}

}  // namespace
}  // namespace FTS
