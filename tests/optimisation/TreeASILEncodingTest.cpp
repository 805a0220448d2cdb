#include <gmock/gmock.h>

#include <regex>
#include <string>
#include <vector>

#include "optimisation/FixedASILEncoding.h"
#include "optimisation/Random.h"
#include "optimisation/SafetyLevelTest.h"
#include "optimisation/TreeASILEncoding.h"
#include "optimisation/TreeEncoding.h"
#include "support/CaseName.h"
#include "support/ThrownMessage.h"

namespace FTS {
namespace {

using ::testing::HasSubstr;

using List = std::vector<int>;

class TreeASILEncodingTest : public SafetyLevelTest {
 protected:
  std::unique_ptr<TreeASILEncoding> Design(int a, int b, int c) {
    const SafetyAllocation allocation = {
        {EventOf("A").prime, a}, {EventOf("B").prime, b}, {EventOf("C.Inner").prime, c}};
    return std::make_unique<TreeASILEncoding>(*model, &allocation);
  }
  std::unique_ptr<TreeASILEncoding> From(const std::string& text) {
    return EncodingFrom<TreeASILEncoding>(*model, "TreeASILEncoding", text);
  }
  static int Level(RandomGenerator& generator) {
    return static_cast<int>(generator.Uniform() * 5.0F);
  }
};

TEST_F(TreeASILEncodingTest, RandomLevelsFollowTheGenerator) {
  const CapturedStreams streams;
  for (int seed = 1; seed <= 40; ++seed) {
    RandomGenerator generator(seed);
    const int a = Level(generator);
    const int b = Level(generator);
    const int c = Level(generator);
    SeedRandom(seed);
    ASSERT_EQ(LevelsOf(TreeASILEncoding(*model, nullptr)), (List{a, b, c})) << "seed " << seed;
  }
  EXPECT_EQ(streams.Output(), "") << "only the flat form tells levels";
}

TEST_F(TreeASILEncodingTest, SizeCountsComponentsAndNotEvents) {
  const TreeASILEncoding made(*model, nullptr);
  EXPECT_EQ(made.GetSize(), 4) << "A, B, C, which has no event, and the part within C";
  EXPECT_EQ(made.GetType(), 0);
  EXPECT_TRUE(made.IsValid());
  EXPECT_EQ(made.GetProduct(), 0.0);
  EXPECT_EQ(made.GetSum1(), 0.0);
  EXPECT_EQ(made.GetSum2(), 0.0);
}

TEST_F(TreeASILEncodingTest, EventOutsideTheAllocationHasNoLevel) {
  const SafetyAllocation allocation = {{EventOf("B").prime, 3}};
  EXPECT_EQ(LevelsOf(TreeASILEncoding(*model, &allocation)), (List{-1, 3, -1}));
}

// The part within C stands at depth 1, where a tenth of the rate holds.
TEST_F(TreeASILEncodingTest, MutationFollowsTheGenerator) {
  int inner = 0;
  for (int seed = 1; seed <= 500; ++seed) {
    RandomGenerator generator(seed);
    List expected = {0, 2, 4};
    for (std::size_t i = 0; i < 3; ++i) {
      const double rate = i == 2 ? 0.8 / 10 : 0.8;
      if (static_cast<double>(generator.Uniform()) < rate) expected[i] = Level(generator);
    }
    if (expected[2] != 4) ++inner;
    const auto design = Design(0, 2, 4);
    SeedRandom(seed);
    const bool changed = design->Mutate(0.8);
    ASSERT_EQ(LevelsOf(*design), expected) << "seed " << seed;
    ASSERT_TRUE(changed || expected == (List{0, 2, 4})) << "seed " << seed;
  }
  EXPECT_GT(inner, 10);
  EXPECT_LT(inner, 80);
}

TEST_F(TreeASILEncodingTest, WithoutRateNothingMutates) {
  const auto design = Design(0, 2, 4);
  for (int i = 0; i < 20; ++i) EXPECT_FALSE(design->Mutate(0.0));
  EXPECT_EQ(LevelsOf(*design), (List{0, 2, 4}));
}

TEST_F(TreeASILEncodingTest, CrossoverTakesEachLevelFromEitherParent) {
  const auto mother = Design(0, 1, 2);
  const auto father = Design(3, 4, 3);
  for (int seed = 1; seed <= 40; ++seed) {
    RandomGenerator generator(seed);
    const int a = generator.Uniform() <= 0.5F ? 0 : 3;
    const int b = generator.Uniform() <= 0.5F ? 1 : 4;
    const int c = generator.Uniform() <= 0.5F ? 2 : 3;
    SeedRandom(seed);
    ASSERT_EQ(LevelsOf(*mother->Crossover(*father)), (List{a, b, c})) << "seed " << seed;
  }
}

TEST_F(TreeASILEncodingTest, CrossoverWithAnotherFormGivesNothing) {
  const CapturedStreams streams;
  const auto design = Design(0, 1, 2);
  EXPECT_EQ(design->Crossover(FixedASILEncoding(*model, true)), nullptr);
  // Both tree forms have one type code; the search would never mix them, and must not crash on it.
  EXPECT_EQ(design->Crossover(TreeEncoding(*model, false)), nullptr);
}

TEST_F(TreeASILEncodingTest, ChildOfEqualParentsEqualsThem) {
  const auto mother = Design(0, 1, 2);
  EXPECT_TRUE(mother->Crossover(*mother->Clone())->Equals(*mother));
}

TEST_F(TreeASILEncodingTest, CloneIsIndependent) {
  const auto source = Design(0, 1, 2);
  const auto copy = source->Clone();
  EXPECT_TRUE(copy->Equals(*source) && source->Equals(*copy));
  while (LevelsOf(*copy) == List{0, 1, 2}) copy->Mutate(1.0);
  EXPECT_EQ(LevelsOf(*source), (List{0, 1, 2}));
}

TEST_F(TreeASILEncodingTest, EqualsAsksForLevelsAtEveryDepth) {
  const CapturedStreams streams;
  const auto design = Design(0, 1, 2);
  EXPECT_TRUE(design->Equals(*Design(0, 1, 2)));
  EXPECT_FALSE(design->Equals(*Design(1, 1, 2)));
  EXPECT_FALSE(design->Equals(*Design(0, 1, 3)));
  EXPECT_FALSE(design->Equals(FixedASILEncoding(*model, true)));
  EXPECT_FALSE(design->Equals(TreeEncoding(*model, false)));
}

TEST_F(TreeASILEncodingTest, ApplyingKeepsTheTrees) {
  const auto before = model->faultTrees;
  Design(4, 3, 2)->Apply(*model);
  EXPECT_EQ(model->faultTrees, before);
  EXPECT_EQ(Levels(), (List{4, 3, 2}));
}

// The short name is what stands behind the last point, which a top component's name has not.
TEST_F(TreeASILEncodingTest, TextFollowsTheHierarchy) {
  const std::string text = EncodingText(*Design(3, 0, 4));
  EXPECT_THAT(text, HasSubstr("        <EncodingNode>\n"
                              "            <Component>\n"
                              "                <ShortName>DEFAULT::C</ShortName>\n"
                              "                <FullName>DEFAULT::C</FullName>\n"
                              "            </Component>\n"
                              "            <BasicEvents />\n"
                              "            <SubNodes>\n"
                              "                <EncodingNode>\n"
                              "                    <Component>\n"
                              "                        <ShortName>Inner</ShortName>\n"
                              "                        <FullName>DEFAULT::C.Inner</FullName>\n"
                              "                    </Component>\n"
                              "                    <BasicEvents>\n"
                              "                        <BasicEvent>\n"
                              "                            <Name>dead</Name>\n"
                              "                            <ID>" +
                              PrimeOf("C.Inner") +
                              "</ID>\n"
                              "                            <SafetyRequirement>4"
                              "</SafetyRequirement>\n"
                              "                        </BasicEvent>\n"
                              "                    </BasicEvents>\n"
                              "                    <SubNodes />\n"
                              "                </EncodingNode>\n"
                              "            </SubNodes>\n"
                              "        </EncodingNode>\n"
                              "    </TreeASILEncoding>\n"));
  EXPECT_THAT(text, ::testing::StartsWith("    <TreeASILEncoding>\n        <EncodingNode>\n"));
}

TEST_F(TreeASILEncodingTest, RandomDesignsSurviveTheirText) {
  for (int i = 0; i < 30; ++i) {
    const TreeASILEncoding made(*model, nullptr);
    const auto read = From(EncodingText(made));
    ASSERT_TRUE(read->Equals(made) && made.Equals(*read));
  }
}

TEST_F(TreeASILEncodingTest, ReadingNamesWhatIsMissing) {
  for (const std::string element : {"Component", "FullName", "ID", "SafetyRequirement"}) {
    std::string text = EncodingText(*Design(1, 2, 3));
    for (const std::string& tag : {"<" + element + ">", "</" + element + ">"}) {
      text.replace(text.find(tag), tag.size(), tag[1] == '/' ? "</Other>" : "<Other>");
    }
    EXPECT_THAT(ThrownMessage([&] { From(text); }), HasSubstr("Missing element " + element));
  }
}

struct UnfitLevelsCase {
  const char* name;
  const char* part;  // Of the text of a design.
  const char* replacement;
  const char* reason;
};

class UnfitTreeLevelsTest : public TreeASILEncodingTest,
                            public ::testing::WithParamInterface<UnfitLevelsCase> {};

TEST_P(UnfitTreeLevelsTest, AreRefused) {
  std::string text = EncodingText(*Design(1, 2, 3));
  const std::regex part(GetParam().part);
  ASSERT_TRUE(std::regex_search(text, part)) << text;
  text = std::regex_replace(text, part, GetParam().replacement,
                            std::regex_constants::format_first_only);
  const std::string message = ThrownMessage([&] { From(text); });
  EXPECT_THAT(message, ::testing::StartsWith(
                           std::string("Encoding in saved state does not fit the model: ") +
                           GetParam().reason));
  EXPECT_THAT(message, ::testing::ContainsRegex(" \\(in [A-Za-z]+, line [0-9]+\\)$"));
}

INSTANTIATE_TEST_SUITE_P(
    Texts, UnfitTreeLevelsTest,
    ::testing::Values(
        UnfitLevelsCase{"OtherComponent", "<FullName>DEFAULT::A<", "<FullName>DEFAULT::Z<",
                        "DEFAULT::Z stands in the place of DEFAULT::A (in EncodingNode, line 2)"},
        UnfitLevelsCase{"OtherInside", "C.Inner<", "C.Outer<",
                        "DEFAULT::C.Outer stands in the place of DEFAULT::C.Inner"},
        UnfitLevelsCase{"NoEvents", "<BasicEvent>[^]*?</BasicEvent>", "",
                        "it has 0 events of DEFAULT::A, the model 1 (in BasicEvents"},
        UnfitLevelsCase{"OtherPrime", "<ID>[0-9]*<", "<ID>9999991<",
                        "no event dead with the ID 9999991 is left in DEFAULT::A (in BasicEvent,"},
        UnfitLevelsCase{"OtherEvent", "<Name>dead<", "<Name>gone<", "no event gone with the ID "},
        UnfitLevelsCase{"LevelTooHigh", "<SafetyRequirement>3<", "<SafetyRequirement>6<",
                        "DEFAULT::C.Inner:dead has the level 6 (in BasicEvent,"},
        UnfitLevelsCase{"LevelTooLow", "<SafetyRequirement>1<", "<SafetyRequirement>-2<",
                        "DEFAULT::A:dead has the level -2"},
        UnfitLevelsCase{
            "NothingInside", "<SubNodes>\\s*<EncodingNode>[^]*?</EncodingNode>\\s*</SubNodes>",
            "<SubNodes/>", "it has 0 components inside DEFAULT::C, the model 1 (in SubNodes"},
        UnfitLevelsCase{"Empty", "<TreeASILEncoding>[^]*</TreeASILEncoding>", "<TreeASILEncoding/>",
                        "it has 0 components, the model 3 (in TreeASILEncoding, line 1)"}),
    CaseName);

TEST_F(TreeASILEncodingTest, ReadingDrawsNoNumbers) {
  const std::string text = EncodingText(*Design(1, 2, 3));
  SeedRandom(77);
  From(text);
  RandomGenerator generator(77);
  EXPECT_EQ(RandomUniform(), generator.Uniform());
}

}  // namespace
}  // namespace FTS
