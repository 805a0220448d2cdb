// Damaged text models: whatever is in a file, reading ends with a model or one of our exceptions,
// and so does the synthesis of what was read. Run under the sanitizers these tests also look for
// what only they see.

#include <gmock/gmock.h>

#include <iterator>
#include <set>
#include <string>
#include <vector>

#include "input/TextModelTest.h"
#include "platform/FileSystem.h"
#include "support/Dice.h"
#include "support/FuzzCount.h"
#include "support/FuzzSeeds.h"
#include "support/TestPaths.h"
#include "support/TextDamage.h"
#include "support/TokenDamage.h"

namespace FTS {
namespace {

using ::testing::IsEmpty;

class TextRobustnessTest : public TextModelTest {
 protected:
  TextRobustnessTest() : text(*ReadWholeFile(TestsFolder() + "/models/everything.vtn")) {}

  /// What became of a file with that text: "synthesised", or the first words of the refusal. None
  /// of the nodes that were made on the way may stay behind.
  std::string ReadDamaged(const std::string& damaged) {
    const std::string outcome = OutcomeOf(folder.Write("damaged.vtn", damaged));
    const NodeCounters& counters = NodeCounters::Instance();
    EXPECT_EQ(counters.nodesMade, counters.nodesDestroyed) << damaged;
    return outcome;
  }

  static std::string OutcomeOf(const std::string& path) {
    try {
      const auto read = CreateTextParser(path)->Parse();
      read->Synthesise();
      return "synthesised";
    } catch (const VtnException& exception) {
      return exception.GetMessage().substr(0, 14);
    }
  }

  /// The smaller of two seeds: small ones are read faster, and each change to them counts for more.
  static const std::string& PickSeed(const std::vector<std::string>& seeds, Dice& dice) {
    const std::string& one = dice.Pick(seeds);
    const std::string& other = dice.Pick(seeds);
    return one.size() < other.size() ? one : other;
  }

  TemporaryFolder folder;
  std::string text;
};

const std::vector<std::string> Pieces = {"{",
                                         "}",
                                         "(",
                                         ")",
                                         "-",
                                         "=",
                                         ",",
                                         ".",
                                         ":",
                                         "\"",
                                         "\\",
                                         "~",
                                         "+",
                                         "*",
                                         "<",
                                         "|",
                                         "7",
                                         "1.5",
                                         "\"\"",
                                         "\"a\"",
                                         "E",
                                         "e",
                                         "t",
                                         "\xAC",
                                         "\xFF",
                                         "Name",
                                         "System",
                                         "Component",
                                         "Type",
                                         "Port",
                                         "Line",
                                         "Implementation",
                                         "FData",
                                         "Basic",
                                         "Basic Event",
                                         "Normal Events",
                                         "Output",
                                         "Output Deviation",
                                         "Output Deviations",
                                         "Actual",
                                         "CCF",
                                         "CCFs",
                                         "Potential",
                                         "Hazard",
                                         "Perspective",
                                         "Perspectives",
                                         "Connections",
                                         "Default",
                                         "OR",
                                         "AND",
                                         "ORPORT",
                                         "Constant",
                                         "None",
                                         "Linetype Directed",
                                         "Severity 3",
                                         "\"Omission-out\"",
                                         "\"(((\"",
                                         "\"GlobalGoto(a-b)\"",
                                         "Omission-Tank.flow",
                                         "DiagnosticCoverage",
                                         "System { Component { \"x\" Implementation { } } }"};

TEST_F(TextRobustnessTest, UndamagedModelIsReadWithoutAWord) {
  const CapturedStreams streams;
  model = ReadTextModel(text);
  EXPECT_THAT(Errors(), IsEmpty());
  EXPECT_THAT(Warnings(), IsEmpty());
  EXPECT_EQ(model->components.size(), 4U);
  EXPECT_EQ(model->hazards.size(), 2U);
}

TEST_F(TextRobustnessTest, TruncatedModelsAreRefused) {
  const CapturedStreams streams;
  const std::size_t end = text.find_last_of('}');
  Dice dice(1);
  for (std::size_t length = 0; length < end;
       length += static_cast<std::size_t>(dice.Between(1, 60)))
    EXPECT_NE(ReadDamaged(text.substr(0, length)), "synthesised") << length;
}

/// The ends that reading comes to most often when files are damaged; rarer ones would depend on
/// which files there are.
constexpr const char* Outcomes[] = {"synthesised",    "Match Error #1", "Match Error #2",
                                    "Match Error #3", "Match Error #4", "Parser creatio",
                                    "Error! Cannot "};

TEST_F(TextRobustnessTest, SeedsAreReadWithoutAWord) {
  const CapturedStreams streams;
  for (const std::string& seed : FuzzSeeds(".vtn")) {
    SCOPED_TRACE(seed);
    EXPECT_EQ(ReadDamaged(seed), "synthesised");
  }
  EXPECT_THAT(Errors(), IsEmpty());
}

TEST_F(TextRobustnessTest, DamagedBytesDoNoHarm) {
  Config::Instance().runSilent = true;  // The log would only slow this down.
  const std::vector<std::string> seeds = FuzzSeeds(".vtn");
  Dice dice(FuzzSeed(20221017));
  std::set<std::string> outcomes;
  for (int i = FuzzCount(1500); i > 0; --i) {
    outcomes.insert(ReadDamaged(Damaged(PickSeed(seeds, dice), dice, Pieces)));
  }
  for (const char* outcome : Outcomes) EXPECT_TRUE(outcomes.contains(outcome)) << outcome;
}

TEST_F(TextRobustnessTest, DamagedTokensDoNoHarm) {
  Config::Instance().runSilent = true;
  const std::vector<std::string> seeds = FuzzSeeds(".vtn");
  std::vector<std::string> pieces = Pieces;
  for (const std::string& seed : seeds) {
    for (std::string& token : SplitIntoTokens(seed)) pieces.push_back(std::move(token));
  }
  Dice dice(FuzzSeed(20221018));
  std::set<std::string> outcomes;
  for (int i = FuzzCount(1500); i > 0; --i) {
    outcomes.insert(ReadDamaged(DamagedByTokens(PickSeed(seeds, dice), dice, pieces)));
  }
  for (const char* outcome : Outcomes) EXPECT_TRUE(outcomes.contains(outcome)) << outcome;
}

TEST_F(TextRobustnessTest, GarbageIsRefused) {
  Dice dice(3);
  for (int i = 0; i < 100; ++i) {
    std::string garbage;
    for (int size = dice.Roll(500); size > 0; --size) garbage += static_cast<char>(dice.Roll(256));
    EXPECT_EQ(ReadDamaged(garbage), "Parser creatio");
  }
}

}  // namespace
}  // namespace FTS
