#include <gmock/gmock.h>

#include <regex>
#include <string>
#include <vector>

#include "optimisation/FixedASILEncoding.h"
#include "optimisation/FixedEncoding.h"
#include "optimisation/Random.h"
#include "optimisation/SafetyLevelTest.h"
#include "optimisation/TreeASILEncoding.h"
#include "optimisation/TreeEncoding.h"
#include "support/CaseName.h"
#include "support/ThrownMessage.h"

namespace FTS {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;

using List = std::vector<int>;

class FixedASILEncodingTest : public SafetyLevelTest {
 protected:
  std::string NodeText(const std::string& component, int level) const {
    return Xml(
        "EncodingNode",
        Xml("Component",
            Xml("BasicEvent", "dead") + Xml("Name", "DEFAULT::" + component + ":dead") +
                Xml("ID", PrimeOf(component)) + Xml("SafetyRequirement", std::to_string(level))));
  }
  std::string DesignText(int a, int b, int c) const {
    return Xml("FixedASILEncoding", NodeText("A", a) + NodeText("B", b) + NodeText("C.Inner", c));
  }
  std::unique_ptr<FixedASILEncoding> Design(int a, int b, int c) {
    return From(DesignText(a, b, c));
  }
  std::unique_ptr<FixedASILEncoding> From(const std::string& text) {
    return EncodingFrom<FixedASILEncoding>(*model, "FixedASILEncoding", text);
  }
  static int Level(RandomGenerator& generator) {
    return static_cast<int>(generator.Uniform() * 5.0F);
  }
  const CapturedStreams streams;
};

TEST_F(FixedASILEncodingTest, RandomLevelsFollowTheGeneratorAndAreTold) {
  std::string told;
  for (int seed = 1; seed <= 40; ++seed) {
    RandomGenerator generator(seed);
    List expected;
    for (int i = 0; i < 3; ++i) {
      expected.push_back(Level(generator));
      told += std::to_string(expected.back()) + "\n";
    }
    SeedRandom(seed);
    ASSERT_EQ(LevelsOf(FixedASILEncoding(*model, true)), expected) << "seed " << seed;
  }
  EXPECT_EQ(streams.Output(), told);
}

TEST_F(FixedASILEncodingTest, HasOneGenePerEvent) {
  const FixedASILEncoding made(*model, true);
  EXPECT_EQ(made.GetSize(), 3);
  EXPECT_EQ(made.GetType(), 2);
  EXPECT_TRUE(made.IsValid());
  EXPECT_EQ(made.GetProduct(), 0.0);
  EXPECT_EQ(made.GetSum1(), 0.0);
  EXPECT_EQ(made.GetSum2(), 0.0);
  EXPECT_EQ(FixedASILEncoding(*model, false).GetSize(), 0);
}

TEST_F(FixedASILEncodingTest, MutationFollowsTheGeneratorAndTellsEveryLevel) {
  std::string told;
  for (int seed = 1; seed <= 200; ++seed) {
    RandomGenerator generator(seed);
    List expected = {0, 2, 4};
    bool changed = false;
    for (int& level : expected) {
      if (0.4 > static_cast<double>(generator.Uniform())) {
        const int next = generator.Uniform() <= 0.5F ? Level(generator) : 0;
        changed = changed || next != level;
        level = next;
      }
      told += std::to_string(level) + "\n";
    }
    const auto design = Design(0, 2, 4);
    SeedRandom(seed);
    ASSERT_EQ(design->Mutate(0.4), changed) << "seed " << seed;
    ASSERT_EQ(LevelsOf(*design), expected) << "seed " << seed;
  }
  EXPECT_EQ(streams.Output(), told);
}

TEST_F(FixedASILEncodingTest, WithoutRateLevelsAreToldAllTheSame) {
  EXPECT_FALSE(Design(0, 2, 4)->Mutate(0.0));
  EXPECT_EQ(streams.Output(), "0\n2\n4\n");
}

TEST_F(FixedASILEncodingTest, CrossoverTakesEachLevelFromEitherParent) {
  const auto mother = Design(0, 1, 2);
  const auto father = Design(3, 4, 3);
  for (int seed = 1; seed <= 40; ++seed) {
    RandomGenerator generator(seed);
    List expected;
    for (int i = 0; i < 3; ++i) {
      expected.push_back(generator.Uniform() <= 0.5F ? List{0, 1, 2}[static_cast<std::size_t>(i)]
                                                     : List{3, 4, 3}[static_cast<std::size_t>(i)]);
    }
    SeedRandom(seed);
    ASSERT_EQ(LevelsOf(*mother->Crossover(*father)), expected) << "seed " << seed;
  }
  EXPECT_THAT(streams.Output(), IsEmpty());
}

TEST_F(FixedASILEncodingTest, CrossoverWithAnotherFormGivesNothing) {
  EXPECT_EQ(Design(0, 1, 2)->Crossover(TreeASILEncoding(*model, nullptr)), nullptr);
}

TEST_F(FixedASILEncodingTest, CloneIsIndependent) {
  const auto source = Design(0, 1, 2);
  const auto copy = source->Clone();
  EXPECT_TRUE(copy->Equals(*source));
  while (!copy->Mutate(1.0)) {
  }
  EXPECT_EQ(LevelsOf(*source), (List{0, 1, 2}));
}

TEST_F(FixedASILEncodingTest, EqualsAsksForNamesAndLevels) {
  const auto design = Design(0, 1, 2);
  EXPECT_TRUE(design->Equals(*Design(0, 1, 2)));
  EXPECT_FALSE(design->Equals(*Design(0, 1, 3)));
  EXPECT_FALSE(design->Equals(FixedASILEncoding(*model, false)));
  EXPECT_FALSE(design->Equals(TreeASILEncoding(*model, nullptr)));
}

TEST_F(FixedASILEncodingTest, EventsThatAnotherModelLacksArePassedOver) {
  const auto design = Design(3, 2, 1);
  model->basicEvents.erase(EventOf("B").prime);
  EXPECT_EQ(LevelsOf(*design), (List{3, -7, 1}));
}

TEST_F(FixedASILEncodingTest, LevelsReachFromNoneToTheOneThatIsNotDrawn) {
  EXPECT_EQ(LevelsOf(*Design(-1, 0, 5)), (List{-1, 0, 5}));
}

struct UnfitLevelsCase {
  const char* name;
  const char* pattern;  // In the text of a design; the first is replaced.
  const char* replacement;
  const char* reason;
};

class UnfitLevelsTest : public FixedASILEncodingTest,
                        public ::testing::WithParamInterface<UnfitLevelsCase> {};

TEST_P(UnfitLevelsTest, AreRefused) {
  const std::string text = DesignText(1, 2, 3);
  const std::string changed =
      std::regex_replace(text, std::regex(GetParam().pattern), GetParam().replacement,
                         std::regex_constants::format_first_only);
  ASSERT_NE(text, changed);
  EXPECT_THAT(
      ThrownMessage([&] { From(changed); }),
      ::testing::MatchesRegex(std::string("Encoding in saved state does not fit the model: ") +
                              GetParam().reason + " \\(in Component, line 1\\)"));
}

INSTANTIATE_TEST_SUITE_P(
    Texts, UnfitLevelsTest,
    ::testing::Values(UnfitLevelsCase{"OtherComponent", "A:dead", "Z:dead",
                                      "no event DEFAULT::Z:dead with the ID [0-9]+ is left"},
                      UnfitLevelsCase{"OtherEvent", "A:dead", "A:gone",
                                      "no event DEFAULT::A:gone with the ID [0-9]+ is left"},
                      UnfitLevelsCase{"OtherPrime", "<ID>[0-9]*<", "<ID>9999991<",
                                      "no event DEFAULT::A:dead with the ID 9999991 is left"},
                      UnfitLevelsCase{
                          "OneTwice",
                          "(<EncodingNode>.*?</EncodingNode>)<EncodingNode>.*?</EncodingNode>",
                          "$1$1", "no event DEFAULT::A:dead with the ID [0-9]+ is left"},
                      UnfitLevelsCase{"LevelTooHigh", ">2</Safety", ">6</Safety",
                                      "DEFAULT::B:dead has the level 6"},
                      UnfitLevelsCase{"LevelTooLow", ">2</Safety", ">-2</Safety",
                                      "DEFAULT::B:dead has the level -2"}),
    CaseName);

TEST_F(FixedASILEncodingTest, EventsMayStandInAnyOrder) {
  const auto design =
      From(Xml("FixedASILEncoding", NodeText("C.Inner", 3) + NodeText("A", 1) + NodeText("B", 2)));
  EXPECT_TRUE(design->Equals(*Design(1, 2, 3)));
  EXPECT_EQ(LevelsOf(*design), (List{1, 2, 3}));
}

TEST_F(FixedASILEncodingTest, MissingEventsAreRefused) {
  const std::string text = Xml("FixedASILEncoding", NodeText("A", 1) + NodeText("B", 2));
  EXPECT_EQ(ThrownMessage([&] { From(text); }),
            "Encoding in saved state does not fit the model: it has 2 events, the model 3 (in "
            "FixedASILEncoding, line 1)");
}

TEST_F(FixedASILEncodingTest, RandomDesignsSurviveTheirText) {
  for (int i = 0; i < 30; ++i) {
    const FixedASILEncoding made(*model, true);
    const auto read = From(EncodingText(made));
    ASSERT_TRUE(read->Equals(made));
    ASSERT_EQ(LevelsOf(*read), LevelsOf(made));
    ASSERT_EQ(EncodingText(*read), EncodingText(made));
  }
}

TEST_F(FixedASILEncodingTest, TextHoldsTheFourElementsOfEachEvent) {
  const std::string text = EncodingText(*Design(3, 0, 4));
  EXPECT_THAT(text, ::testing::StartsWith("    <FixedASILEncoding>\n"
                                          "        <EncodingNode>\n"
                                          "            <Component>\n"
                                          "                <BasicEvent>"));
  EXPECT_THAT(text, HasSubstr("                <ID>" + PrimeOf("A") +
                              "</ID>\n"
                              "                <SafetyRequirement>3</SafetyRequirement>\n"
                              "            </Component>\n"
                              "        </EncodingNode>\n"));
}

TEST_F(FixedASILEncodingTest, NamesAreWhatStandsBehindTheLastColon) {
  EXPECT_EQ(FixedASILEncodingNode("DEFAULT::A:dead", 3.0, 1).GetName(), "dead");
  EXPECT_EQ(FixedASILEncodingNode("fire", 3.0, 1).GetName(), "None");
  EXPECT_EQ(FixedASILEncodingNode(":x", 3.0, 1).GetName(), "x");
}

struct MissingCase {
  const char* name;
  const char* element;
};

class MissingLevelElementTest : public FixedASILEncodingTest,
                                public ::testing::WithParamInterface<MissingCase> {};

TEST_P(MissingLevelElementTest, IsNamed) {
  std::string text = DesignText(1, 2, 3);
  const std::string element = GetParam().element;
  for (const std::string& tag : {"<" + element + ">", "</" + element + ">"}) {
    text.replace(text.find(tag), tag.size(), tag[1] == '/' ? "</Other>" : "<Other>");
  }
  EXPECT_THAT(ThrownMessage([&] { From(text); }), HasSubstr("Missing element " + element));
}

INSTANTIATE_TEST_SUITE_P(Names, MissingLevelElementTest,
                         ::testing::Values(MissingCase{"Name", "Name"}, MissingCase{"ID", "ID"},
                                           MissingCase{"Level", "SafetyRequirement"}),
                         CaseName);

}  // namespace
}  // namespace FTS
