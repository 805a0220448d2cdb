#include <gmock/gmock.h>

#include "endtoend/SearchRun.h"

namespace FTS {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

/// Searches that go on from what another one has left. "state.xml" is that of
/// generation 3, marked as one to be taken up.
class ResumedSearchTest : public SearchRun {
 protected:
  ResumedSearchTest() {
    Search({"maxGenerations=3"}, "before");
    Keep(State(3, "before"));
  }
  ProgramRun Resume(const std::vector<std::string>& options = {}) const {
    std::vector<std::string> all = {"previousStateFileName=state.xml"};
    all.insert(all.end(), options.begin(), options.end());
    return Search(all);
  }
  /// A run that could not start its search: told, nothing written, and ended in good order.
  static void ExpectRefused(const ProgramRun& run, const std::string& message) {
    EXPECT_EQ(run.exitStatus, 0);
    EXPECT_THAT(run.errors, HasSubstr(message));
    EXPECT_THAT(run.output, Not(HasSubstr("Starting evolution")));
    EXPECT_THAT(run.output, HasSubstr("Genetic Algorithm finished: deleting\n"));
  }
};

TEST_F(ResumedSearchTest, GoesOnBehindTheSavedGeneration) {
  const ProgramRun run = Resume();
  EXPECT_EQ(run.errors, "");
  EXPECT_THAT(run.output, HasSubstr("--------Stored population loaded--------\n"));
  EXPECT_THAT(run.output, HasSubstr("Loaded generation:\t3\n"));
  EXPECT_THAT(run.output, HasSubstr("Starting evolution at generation: 4\n"));
  EXPECT_THAT(run.output, Not(HasSubstr("Population initialised")));
  EXPECT_TRUE(Files().contains(Stem(6) + ".xml"));
}

TEST_F(ResumedSearchTest, KeepsTheBestOfBefore) {
  Resume();
  // Both ends of the front were there at generation 3 if they are in the state: none gets lost.
  const std::string before = State(3, "before");
  const std::string after = State(6);
  EXPECT_GE(Count(Between(after, "NonDominatedPopulation"), "<Individual>"),
            std::min(12, Count(Between(before, "NonDominatedPopulation"), "<Individual>")));
}

TEST_F(ResumedSearchTest, IsRepeatable) {
  Resume();
  const auto first = Contents("out");
  std::filesystem::remove_all(folder.Path("out"));
  Resume();
  EXPECT_EQ(first, Contents("out"));
}

TEST_F(ResumedSearchTest, AtTheLastGenerationThereIsNothingToDo) {
  const ProgramRun run = Resume({"maxGenerations=3"});
  EXPECT_THAT(run.output,
              HasSubstr("Current generation (3) of optimisation is already at maximum (3).\n"));
  EXPECT_FALSE(folder.Contains("out"));
}

TEST_F(ResumedSearchTest, KindOfTheStateGoesBeforeTheOption) {
  const ProgramRun run = Resume({"GAType=CoitGA"});
  EXPECT_EQ(run.errors, "");
  EXPECT_THAT(State(6), HasSubstr("<NSGA>"));
}

TEST_F(ResumedSearchTest, ForcedRestartIgnoresTheState) {
  Search({}, "fresh");
  const ProgramRun run = Resume({"forceRestart=true"});
  EXPECT_THAT(run.output, Not(HasSubstr("Stored population loaded")));
  EXPECT_EQ(Contents("out"), Contents("fresh"));
}

TEST_F(ResumedSearchTest, ForcedRestartDoesNotEvenLookForTheState) {
  const ProgramRun run = Search({"previousStateFileName=nowhere.xml", "forceRestart=true"});
  EXPECT_EQ(run.errors, "");
}

TEST_F(ResumedSearchTest, TypeOfTheStateGoesBeforeTheOption) {
  const ProgramRun run = Resume({"encodingType=TREE"});
  EXPECT_THAT(run.output,
              HasSubstr("Warning encoding type in saved state is different from program argument, "
                        "using saved type\n"));
  EXPECT_TRUE(Files().contains(Stem(6) + ".xml"));
}

TEST_F(ResumedSearchTest, StateAsWrittenLacksItsMark) {
  const std::string written = State(3, "before");
  folder.Write("state.xml", written);
  ExpectRefused(Resume(), "Missing element UncheckedPopulation in saved state: ");
  EXPECT_THAT(Files(), IsEmpty());
  EXPECT_EQ(folder.Read("state.xml"), written);
}

TEST_F(ResumedSearchTest, MissingFrontiersAreNamed) {
  std::string state = folder.Read("state.xml");
  const std::size_t begin = state.find("<OtherNonDominatedPopulations");
  std::size_t end = state.find("</OtherNonDominatedPopulations>");
  end = end == std::string::npos ? state.find("/>", begin) + 2
                                 : end + std::string("</OtherNonDominatedPopulations>").size();
  state.erase(begin, end - begin);
  folder.Write("state.xml", state);
  ExpectRefused(Resume(), "Missing element OtherNonDominatedPopulations");
  EXPECT_THAT(Files(), IsEmpty());
}

TEST_F(ResumedSearchTest, BrokenStateIsRefused) {
  const std::string state = folder.Read("state.xml");
  folder.Write("state.xml", state.substr(0, state.size() / 2));
  const ProgramRun run = Resume();
  ExpectRefused(run, "state.xml");
  EXPECT_THAT(Files(), IsEmpty());
}

TEST_F(ResumedSearchTest, MissingStateIsRefused) {
  ExpectRefused(Search({"previousStateFileName=nowhere.xml"}), "nowhere.xml");
  EXPECT_THAT(Files(), IsEmpty());
}

// A refused state refuses it to every run.
TEST_F(ResumedSearchTest, RefusedStateDoesNotKeepTheNextRunFromItsTurn) {
  const ProgramRun run = Search({"previousStateFileName=nowhere.xml", "numberOfRepeatRuns=2"});
  EXPECT_EQ(Count(run.output, "Genetic Algorithm finished: deleting\n"), 2);
}

/// Searches over one part of ten choices.
class ManyChoicesTest : public SearchRun {
 protected:
  ManyChoicesTest() {
    std::vector<XmlChoice> choices;
    for (int i = 0; i < 10; ++i) choices.push_back({"c" + std::to_string(i), 1.0 + i});
    folder.Write(
        "plant.xml",
        XmlDesignModel(
            {{XmlObjective("Cost")}, {XmlDesignPart("A", choices)}, {"Omission-A.out"}, 6, 0}));
  }
  static constexpr const char* Warning =
      "Warning: DEFAULT::A has more than nine implementations, and the fixed encoding cannot tell "
      "all of their combinations apart.\n";
};

TEST_F(ManyChoicesTest, AreWarnedOfInANewSearchAndInAResumedOne) {
  for (const std::string kind : {"NSGA", "CoitGA"}) {
    // The tenth choice reads like two replicas; a later generation need not be reached.
    const ProgramRun first = Search({"GAType=" + kind, "maxGenerations=0"}, kind);
    EXPECT_EQ(first.errors, Warning);
    const std::string populations =
        kind == "NSGA" ? "<OtherNonDominatedPopulations/>" : "<Population/>";
    folder.Write("state.xml",
                 Xml("Vel-Tarn_Results",
                     Xml(kind,
                         "<Generation>6</Generation><EncodingType>FixedEncoding</EncodingType>"
                         "<TimeElapsed>1</TimeElapsed><UncheckedPopulation/>" +
                             populations)));
    const ProgramRun run = Search({"previousStateFileName=state.xml"}, kind);
    EXPECT_THAT(run.output, HasSubstr("already at maximum (6)"));
    EXPECT_EQ(run.errors, Warning);
  }
}

TEST_F(ManyChoicesTest, AreNoWarningAlongTheHierarchy) {
  EXPECT_EQ(Search({"encodingType=TREE", "maxGenerations=0"}).errors, "");
}

}  // namespace
}  // namespace FTS
