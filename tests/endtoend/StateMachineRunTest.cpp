#include <gmock/gmock.h>

#include <regex>
#include <string>

#include "support/ModelXml.h"
#include "support/ProcessStateTest.h"
#include "support/ProgramRun.h"
#include "support/StateMachineXml.h"
#include "support/TemporaryFolder.h"

namespace FTS {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;

/// The program on models that are state machines.
class StateMachineRunTest : public ProcessStateTest {
 protected:
  ProgramRun Run(const std::string& xml, std::vector<std::string> options = {}) {
    options.insert(options.begin(), {folder.Write("m.xml", xml), "outputdir=" + folder.Path(),
                                     "outputtype=RESULTS"});
    return RunProgramWith(options);
  }
  std::map<std::string, ReportedTree> Results() const {
    return ReadResults(folder.Path("m-Results/Results.xml"));
  }

  /// The lines between the two, with "#" for every id.
  static std::string Between(const std::string& text, const std::string& first,
                             const std::string& last) {
    const std::size_t begin = text.find(first) + first.size();
    static const std::regex Id("\\(-?[0-9]+\\)");
    return std::regex_replace(text.substr(begin, text.find(last, begin) - begin), Id, "(#)");
  }

  static int CountOf(const std::string& part, const std::string& text) {
    int count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
      ++count;
    }
    return count;
  }

  void ExpectStoppedWith(const std::string& machine, const std::string& message) {
    const ProgramRun run = Run(XmlStateModel(machine));
    EXPECT_EQ(run.exitStatus, 0);
    EXPECT_EQ(run.errors, message + "\n");
    EXPECT_THAT(run.output, HasSubstr("Synthesising:\n"));
    EXPECT_THAT(run.output, Not(HasSubstr("Refining fault trees...")));
    EXPECT_FALSE(folder.Contains("m-Results/Results.xml"));
  }

  /// What is written of a failed state that one transition from the start leads to.
  static constexpr const char* OneWay =
      "State: Failed State: loss of f(#) = 0 # default\n"
      "{\n"
      "  And: (#) = 0 # default\n"
      "  {\n"
      "    State: State: s(#) = 0 # default\n"
      "    Or: Omission-DEFAULT::A.out(#) = 0 # default\n"
      "    {\n"
      "      FailureMode: dead(#) = 0 # default\n"
      "    } \n"
      "  } \n"
      "} \n";

  TemporaryFolder folder;
};

TEST_F(StateMachineRunTest, ShowsEachFailedStateBeforeAndAfterItIsResolved) {
  const ProgramRun run = Run(XmlStateModel("*s A>f; !f"));
  EXPECT_EQ(Between(run.output, "Synthesising:\n", "Refining fault trees..."),
            std::string(OneWay) + OneWay);
  EXPECT_THAT(run.output, HasSubstr("Contracting Failed State: loss of f\n"));
  EXPECT_EQ(run.errors, "");
}

TEST_F(StateMachineRunTest, ShowsTheFailedStatesInASilentRunToo) {
  const ProgramRun run = Run(XmlStateModel("*s A>f; !f"), {"runSilent=true"});
  EXPECT_EQ(Between(run.output, "runSilent=true\n", "no such text"), std::string(OneWay) + OneWay);
  EXPECT_EQ(run.errors, "");
}

TEST_F(StateMachineRunTest, ReportsATreeForEachFailedState) {
  const ProgramRun run = Run(XmlStateModel("*s A>a B>f; a C>f R>s; !f D>g; !g"));
  EXPECT_EQ(run.exitStatus, 0);
  const auto trees = Results();
  ASSERT_THAT(trees, SizeIs(2));
  const ReportedTree& first = trees.at("Failed State: loss of f");
  EXPECT_THAT(first.cutSets, ElementsAre("DEFAULT::A.dead;DEFAULT::C.dead", "DEFAULT::B.dead"));
  EXPECT_EQ(first.severity, -1.0);
  EXPECT_DOUBLE_EQ(first.unavailability, 0.109);  // 1 - 0.99 * 0.9
  EXPECT_THAT(trees.at("Failed State: loss of g").cutSets,
              ElementsAre("DEFAULT::A.dead;DEFAULT::C.dead;DEFAULT::D.dead",
                          "DEFAULT::B.dead;DEFAULT::D.dead"));
}

TEST_F(StateMachineRunTest, GivesTheSameTreesWithoutContraction) {
  const ProgramRun run = Run(XmlStateModel("*s A>a B>f; a C>f; !f"), {"contract=false"});
  EXPECT_EQ(run.exitStatus, 0);
  EXPECT_THAT(run.errors, Not(HasSubstr("No component for: ")));
  EXPECT_THAT(Results().at("Failed State: loss of f").cutSets,
              ElementsAre("DEFAULT::A.dead;DEFAULT::C.dead", "DEFAULT::B.dead"));
}

TEST_F(StateMachineRunTest, FailedStartHasATreeWithoutCutSetsInEveryMode) {
  for (const char* option : {"contract=true", "contract=false", "useBDDs=true"}) {
    const ProgramRun run = Run(XmlStateModel("*!f A>g; g B>f"), {option});
    EXPECT_EQ(run.exitStatus, 0) << option;
    const auto trees = Results();
    ASSERT_THAT(trees, SizeIs(1)) << option << run.errors;
    EXPECT_THAT(trees.at("Failed State: loss of f").cutSets, IsEmpty()) << option;
  }
}

TEST_F(StateMachineRunTest, StopsAtAnUnknownState) {
  ExpectStoppedWith("*ok A>nowhere; !down",
                    "Missing destination state 'nowhere in transition by A in state ok");
}

TEST_F(StateMachineRunTest, StopsAtAnUnknownPort) {
  ExpectStoppedWith("*ok Late-A.none>down A>down; !down",
                    "Cannot find output deviation 'Late-A.none in transition by Late-A.none in "
                    "state ok - missing port.");
}

TEST_F(StateMachineRunTest, StopsAtAnUnknownClass) {
  ExpectStoppedWith("*ok Late-A.out>down A>down; !down",
                    "Cannot find output deviation 'Late-A.out in transition by Late-A.out in state "
                    "ok - no output deviation of that class in the port.");
}

TEST_F(StateMachineRunTest, WarnsAtEachVisitOfALeafAndMakesNoTree) {
  const ProgramRun run = Run(XmlStateModel("*s; x A>a; a B>f C>f; !f"));
  EXPECT_EQ(run.exitStatus, 0);
  EXPECT_THAT(run.errors, HasSubstr("WARNINGS: 2\n"));
  EXPECT_EQ(CountOf("State machine contains a leaf state that is not the starting state: x\n",
                    run.errors),
            2);
  EXPECT_THAT(run.output, Not(HasSubstr("Contracting")));
  EXPECT_THAT(run.errors, HasSubstr("No fault trees present: no output generated."));
  EXPECT_FALSE(folder.Contains("m-Results/Results.xml"));
}

}  // namespace
}  // namespace FTS
