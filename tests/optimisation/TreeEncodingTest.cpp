#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "analysis/FaultTree.h"
#include "model/Component.h"
#include "model/Implementation.h"
#include "model/Objective.h"
#include "optimisation/EncodingText.h"
#include "optimisation/FixedEncoding.h"
#include "optimisation/Random.h"
#include "optimisation/SearchTest.h"
#include "optimisation/TreeEncoding.h"
#include "support/CaseName.h"
#include "support/ThrownMessage.h"

namespace FTS {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;

using Choices = std::vector<Choice>;

/// "Plant" can be built flat, or with an inner part of three choices, of which the last has a part
/// of two choices within; "Aux" in two ways on one of two hosts.
///
///   DEFAULT::Aux    0, 1                     on Main or Spare
///   DEFAULT::Plant  0 flat, 1 with Inner: 0, 1 flat, 2 with Inner: 0, 1
class TreeEncodingTest : public SearchTest {
 protected:
  TreeEncodingTest() {
    const std::string deep = XmlDesignPart("Inner", {{"d0", 100.0, 0.5}, {"d1", 200.0, 0.25}});
    const std::string inner = XmlDesignPart(
        "Inner", {{"i0", 10.0, 0.125}, {"i1", 20.0, 0.1}, {"i2", 30.0, 0.0, 0.0, {deep}}});
    UseModel({{XmlObjective("Cost")},
              {XmlDesignPart("Plant", {{"flat", 1.0, 0.2}, {"split", 2.0, 0.0, 0.0, {inner}}}),
               XmlDesignPart("Aux", {{"x0", 1000.0, 0.4}, {"x1", 2000.0, 0.3}},
                             std::string(XmlIncluded) + Hosts({"Main", "Spare"})),
               XmlDesignPart("Fixed", {{"f", 4.0, 0.0}, {"unused", 5.0, 0.0}}, "")},
              {"Omission-Plant.out OR Omission-Aux.out"}});
  }

  static std::string Hosts(const std::vector<std::string>& names) {
    std::string alternatives;
    for (std::size_t i = 1; i < names.size(); ++i) alternatives += Xml("Alternative", names[i]);
    return Xml("Allocations", Xml("Current", names[0]) + Xml("Alternatives", alternatives));
  }

  static Choice Aux(int index, const std::string& host) { return {"DEFAULT::Aux", index, host}; }
  static Choice Plant(int index, const Choices& inside = {}) {
    return {"DEFAULT::Plant", index, "", inside};
  }
  static Choice Inner(int index, const Choices& inside = {}) {
    return {"DEFAULT::Plant.Inner", index, "", inside};
  }
  static Choice Deep(int index) { return {"DEFAULT::Plant.Inner.Inner", index}; }

  std::unique_ptr<TreeEncoding> Design(const Choices& choices) {
    return EncodingFrom<TreeEncoding>(*model, "TreeEncoding", TreeDesign(choices));
  }
};

/// Draws as the rules of the encoding say.
class Rules {
 public:
  explicit Rules(int seed) : generator(seed) {}

  double Number() { return static_cast<double>(generator.Uniform()); }
  int Index(int count) { return static_cast<int>(generator.Uniform() * static_cast<float>(count)); }
  std::string Host() { return Index(2) == 0 ? "Main" : "Spare"; }

  Choice Aux() {
    const int index = Index(2);
    return {"DEFAULT::Aux", index, Host()};
  }
  Choices InsidePlant(int index) {
    if (index == 0) return {};
    const int inner = Index(3);
    return {{"DEFAULT::Plant.Inner", inner, "", InsideInner(inner)}};
  }
  Choices InsideInner(int index) {
    if (index < 2) return {};
    return {{"DEFAULT::Plant.Inner.Inner", Index(2)}};
  }
  Choice Plant() {
    const int index = Index(2);
    return {"DEFAULT::Plant", index, "", InsidePlant(index)};
  }

  void MutateAux(Choice& aux, double rate) {
    if (Number() < rate) aux.allocation = Host();
    if (Number() < rate) aux.index = Index(2);
  }
  void MutatePlant(Choice& plant, double rate) {
    if (Number() < rate) {
      const int index = Index(2);
      if (index != plant.index) {
        plant.index = index;
        plant.inside = InsidePlant(index);
        return;
      }
    }
    for (Choice& inner : plant.inside) MutateInner(inner, rate);
  }
  void MutateInner(Choice& inner, double rate) {
    if (Number() < rate / 10) {
      const int index = Index(3);
      if (index != inner.index) {
        inner.index = index;
        inner.inside = InsideInner(index);
        return;
      }
    }
    for (Choice& deep : inner.inside) {
      if (Number() < rate) deep.index = Index(2);
    }
  }

 private:
  RandomGenerator generator;
};

TEST_F(TreeEncodingTest, RandomChoicesFollowTheGenerator) {
  int deepest = 0;
  for (int seed = 1; seed <= 200; ++seed) {
    Rules rules(seed);
    const Choice aux = rules.Aux();
    const Choice plant = rules.Plant();
    SeedRandom(seed);
    const TreeEncoding made(*model, true);
    ASSERT_EQ(ChoicesOf(made), (Choices{aux, plant})) << "seed " << seed;
    if (made.GetSize() == 4) ++deepest;
  }
  EXPECT_GT(deepest, 10);
}

TEST_F(TreeEncodingTest, SizeCountsTheChoices) {
  EXPECT_EQ(Design({Aux(0, "Main"), Plant(0)})->GetSize(), 2);
  EXPECT_EQ(Design({Aux(0, "Main"), Plant(1, {Inner(0)})})->GetSize(), 3);
  EXPECT_EQ(Design({Aux(0, "Main"), Plant(1, {Inner(2, {Deep(1)})})})->GetSize(), 4);
}

TEST_F(TreeEncodingTest, IsAlwaysValidAndOfTypeZero) {
  const TreeEncoding made(*model, true);
  EXPECT_TRUE(made.IsValid());
  EXPECT_EQ(made.GetType(), 0);
  EXPECT_EQ(made.GetModel(), model.get());
}

// The rate is a tenth for the parts of the top components, and whole again below.
TEST_F(TreeEncodingTest, MutationFollowsTheGenerator) {
  int deepChanges = 0;
  for (int seed = 1; seed <= 500; ++seed) {
    Choices expected = {Aux(0, "Main"), Plant(1, {Inner(2, {Deep(0)})})};
    const Choices before = expected;
    Rules rules(seed);
    rules.MutateAux(expected[0], 0.6);
    rules.MutatePlant(expected[1], 0.6);
    const auto design = Design(before);
    SeedRandom(seed);
    const bool changed = design->Mutate(0.6);
    ASSERT_EQ(ChoicesOf(*design), expected) << "seed " << seed;
    ASSERT_TRUE(changed || expected == before) << "seed " << seed;
    if (expected[1] == Plant(1, {Inner(2, {Deep(1)})})) ++deepChanges;
  }
  EXPECT_GT(deepChanges, 50);
}

TEST_F(TreeEncodingTest, WithoutRateNothingMutates) {
  const auto design = Design({Aux(0, "Main"), Plant(1, {Inner(2, {Deep(0)})})});
  for (int i = 0; i < 50; ++i) EXPECT_FALSE(design->Mutate(0.0));
  EXPECT_EQ(ChoicesOf(*design), (Choices{Aux(0, "Main"), Plant(1, {Inner(2, {Deep(0)})})}));
}

TEST_F(TreeEncodingTest, OtherChoiceAtTheTopReplacesEverythingWithin) {
  for (int seed = 1; seed <= 60; ++seed) {
    const auto design = Design({Aux(0, "Main"), Plant(0)});
    SeedRandom(seed);
    while (ChoicesOf(*design)[1].index == 0) design->Mutate(1.0);
    const Choice plant = ChoicesOf(*design)[1];
    ASSERT_EQ(plant.inside.size(), 1U) << "seed " << seed;
    ASSERT_EQ(plant.inside[0].inside.size(), plant.inside[0].index == 2 ? 1U : 0U);
  }
}

TEST_F(TreeEncodingTest, OnlyChoiceNeverMutates) {
  UseModel({{}, {XmlDesignPart("A", {{"a"}}), XmlDesignPart("B", {{"b"}})}});
  TreeEncoding made(*model, true);
  for (int i = 0; i < 50; ++i) EXPECT_FALSE(made.Mutate(1.0));
  EXPECT_EQ(ChoicesOf(made), (Choices{{"DEFAULT::A", 0}, {"DEFAULT::B", 0}}));
}

// A new host ends the walk below, although nothing below depends on it.
TEST_F(TreeEncodingTest, NewAllocationLeavesThePartsWithin) {
  const std::string inner = XmlDesignPart("Inner", {{"i0"}, {"i1"}, {"i2"}, {"i3"}});
  UseModel({{},
            {XmlDesignPart("A", {{"a", 1.0, 0.0, 0.0, {inner}}},
                           std::string(XmlIncluded) + Hosts({"Main", "Spare"}))}});
  const auto design = Design({{"DEFAULT::A", 0, "Main", {{"DEFAULT::A.Inner", 1}}}});
  for (int i = 0; i < 100; ++i) {
    design->Mutate(1.0);
    ASSERT_EQ(ChoicesOf(*design)[0].inside, (Choices{{"DEFAULT::A.Inner", 1}}));
  }
}

TEST_F(TreeEncodingTest, WithoutIncludedComponentsItIsEmpty) {
  UseModel({{}, {XmlDesignPart("A", {{"a", 7.0}, {"b", 8.0}}, "")}, {"Omission-A.out"}});
  TreeEncoding made(*model, true);
  EXPECT_EQ(made.GetSize(), 0);
  EXPECT_TRUE(made.IsValid());
  EXPECT_FALSE(made.Mutate(1.0));
  model->Synthesise();
  ASSERT_EQ(model->GetFaultTreeCount(), 1);
  made.Apply(*model);
  EXPECT_EQ(model->GetFaultTreeCount(), 0);
  EXPECT_EQ(model->EvaluateCost(), 7.0);
  EXPECT_EQ(made.GetProduct(), 1.0);
  EXPECT_EQ(made.GetSum1(), 0.0);
}

// An included part within one that is not has no choice: only the levels from the top are walked.
TEST_F(TreeEncodingTest, PartsWithinWhatIsNotIncludedAreNotReached) {
  const std::string inner = XmlDesignPart("Inner", {{"i0"}, {"i1"}});
  UseModel({{}, {XmlDesignPart("A", {{"a", 1.0, 0.0, 0.0, {inner}}}, "")}});
  EXPECT_EQ(TreeEncoding(*model, true).GetSize(), 0);
}

TEST_F(TreeEncodingTest, CrossoverOfTwoBuildsOfOnePartCopiesOneWhole) {
  const auto mother = Design({Aux(0, "Main"), Plant(0)});
  const auto father = Design({Aux(0, "Spare"), Plant(1, {Inner(2, {Deep(1)})})});
  bool seen[2] = {false, false};
  for (int seed = 1; seed <= 40; ++seed) {
    SeedRandom(seed);
    // Equal choices take the first parent's host, and draw nothing.
    const bool fathers = RandomGenerator(seed).Uniform() <= 0.5F;
    seen[fathers ? 1 : 0] = true;
    const auto child = mother->Crossover(*father);
    const Choice expected = fathers ? Plant(1, {Inner(2, {Deep(1)})}) : Plant(0);
    ASSERT_EQ(ChoicesOf(*child), (Choices{Aux(0, "Main"), expected})) << "seed " << seed;
  }
  EXPECT_TRUE(seen[0] && seen[1]);
}

TEST_F(TreeEncodingTest, CrossoverDescendsWhereChoicesAgree) {
  const auto mother = Design({Aux(0, "Main"), Plant(1, {Inner(2, {Deep(0)})})});
  const auto father = Design({Aux(1, "Spare"), Plant(1, {Inner(2, {Deep(1)})})});
  for (int seed = 1; seed <= 40; ++seed) {
    RandomGenerator generator(seed);
    SeedRandom(seed);
    const Choice aux = generator.Uniform() <= 0.5F ? Aux(1, "Spare") : Aux(0, "Main");
    const int deep = generator.Uniform() <= 0.5F ? 1 : 0;
    ASSERT_EQ(ChoicesOf(*mother->Crossover(*father)),
              (Choices{aux, Plant(1, {Inner(2, {Deep(deep)})})}))
        << "seed " << seed;
  }
}

TEST_F(TreeEncodingTest, ChildOfEqualParentsEqualsThem) {
  for (int i = 0; i < 20; ++i) {
    const TreeEncoding mother(*model, true);
    EXPECT_TRUE(mother.Crossover(*mother.Clone())->Equals(mother));
  }
}

TEST_F(TreeEncodingTest, CloneIsIndependent) {
  const Choices choices = {Aux(0, "Main"), Plant(1, {Inner(2, {Deep(0)})})};
  const auto source = Design(choices);
  const auto copy = source->Clone();
  EXPECT_TRUE(copy->Equals(*source) && source->Equals(*copy));
  while (ChoicesOf(*copy) == choices) copy->Mutate(1.0);
  EXPECT_EQ(ChoicesOf(*source), choices);
}

TEST_F(TreeEncodingTest, EqualsAsksForEverythingWithin) {
  const auto design = Design({Aux(0, "Main"), Plant(1, {Inner(2, {Deep(0)})})});
  EXPECT_TRUE(design->Equals(*Design({Aux(0, "Main"), Plant(1, {Inner(2, {Deep(0)})})})));
  EXPECT_FALSE(design->Equals(*Design({Aux(0, "Main"), Plant(1, {Inner(2, {Deep(1)})})})));
  EXPECT_FALSE(design->Equals(*Design({Aux(0, "Main"), Plant(1, {Inner(1)})})));
  EXPECT_FALSE(design->Equals(*Design({Aux(0, "Spare"), Plant(1, {Inner(2, {Deep(0)})})})));
  EXPECT_FALSE(design->Equals(*Design({Aux(1, "Main"), Plant(1, {Inner(2, {Deep(0)})})})));
  EXPECT_FALSE(design->Equals(TreeEncoding(*model, false)));
  EXPECT_FALSE(TreeEncoding(*model, false).Equals(FixedEncoding(*model, false)));
}

/// A design with the cut sets, unavailability and cost of the model it makes.
struct BuiltCase {
  const char* name;
  Choices choices;
  const char* cutSets;
  double unavailability;
  double cost;
};

class TreeApplyTest : public TreeEncodingTest, public ::testing::WithParamInterface<BuiltCase> {};

TEST_P(TreeApplyTest, ModelIsBuiltThatWay) {
  const auto design = Design(GetParam().choices);
  std::unique_ptr<Model> clone;
  EXPECT_EQ(model->EvaluateInClone(*design, false, clone), model.get());
  EXPECT_FALSE(clone);
  EXPECT_EQ(model->EvaluateCost(), GetParam().cost);
  EXPECT_EQ(model->FindComponent("Aux")->currentAllocation, GetParam().choices[0].allocation);
  model->Synthesise();
  model->Analyse(false);
  EXPECT_EQ(CutSetsOf(*model, model->faultTrees.at(0)->GetName()), GetParam().cutSets);
  EXPECT_DOUBLE_EQ(model->GetFaultTreeUnavailability(0), GetParam().unavailability);
}

Choice Node(const char* name, int index, const Choices& inside = {}) {
  return {std::string("DEFAULT::") + name, index, "", inside};
}

INSTANTIATE_TEST_SUITE_P(
    Designs, TreeApplyTest,
    ::testing::Values(
        BuiltCase{"Flat",
                  {{"DEFAULT::Aux", 0, "Main"}, Node("Plant", 0)},
                  "Aux.dead + Plant.dead",
                  1.0 - 0.6 * 0.8,
                  1005.0},
        BuiltCase{"OneLevel",
                  {{"DEFAULT::Aux", 1, "Spare"}, Node("Plant", 1, {Node("Plant.Inner", 1)})},
                  "Aux.dead + Inner.dead",
                  1.0 - 0.7 * 0.9,
                  2026.0},
        BuiltCase{"TwoLevels",
                  {{"DEFAULT::Aux", 0, "Spare"},
                   Node("Plant", 1, {Node("Plant.Inner", 2, {Node("Plant.Inner.Inner", 1)})})},
                  "Aux.dead + Inner.dead",
                  1.0 - 0.6 * 0.75,
                  1236.0}),
    CaseName);

TEST_F(TreeEncodingTest, ApplyingDropsTheAnalysisBefore) {
  const auto design = Design({Aux(0, "Main"), Plant(1, {Inner(0)})});
  model->Synthesise();
  model->Analyse(false);
  design->Apply(*model);
  EXPECT_TRUE(model->faultTrees.empty());
  EXPECT_TRUE(model->basicEvents.empty());
}

TEST_F(TreeEncodingTest, DesignsFollowOneAnotherInOneModel) {
  const auto first = Design({Aux(0, "Main"), Plant(1, {Inner(2, {Deep(1)})})});
  const auto second = Design({Aux(1, "Spare"), Plant(0)});
  for (int i = 0; i < 3; ++i) {
    first->Apply(*model);
    EXPECT_EQ(model->EvaluateCost(), 1000.0 + 2.0 + 30.0 + 200.0 + 4.0);
    second->Apply(*model);
    EXPECT_EQ(model->EvaluateCost(), 2000.0 + 1.0 + 4.0);
    EXPECT_EQ(model->FindComponent("Aux")->currentAllocation, "Spare");
  }
}

TEST_F(TreeEncodingTest, TextNamesEveryChoice) {
  EXPECT_EQ(EncodingText(*Design({Aux(1, "Spare"), Plant(1, {Inner(0)})})),
            "    <TreeEncoding>\n"
            "        <EncodingNode>\n"
            "            <Component>\n"
            "                <Name>DEFAULT::Aux</Name>\n"
            "                <Implementation>\n"
            "                    <Name>x1</Name>\n"
            "                    <Index>1</Index>\n"
            "                </Implementation>\n"
            "            </Component>\n"
            "            <Allocation>Spare</Allocation>\n"
            "            <SubNodes />\n"
            "        </EncodingNode>\n"
            "        <EncodingNode>\n"
            "            <Component>\n"
            "                <Name>DEFAULT::Plant</Name>\n"
            "                <Implementation>\n"
            "                    <Name>split</Name>\n"
            "                    <Index>1</Index>\n"
            "                </Implementation>\n"
            "            </Component>\n"
            "            <SubNodes>\n"
            "                <EncodingNode>\n"
            "                    <Component>\n"
            "                        <Name>DEFAULT::Plant.Inner</Name>\n"
            "                        <Implementation>\n"
            "                            <Name>i0</Name>\n"
            "                            <Index>0</Index>\n"
            "                        </Implementation>\n"
            "                    </Component>\n"
            "                    <SubNodes />\n"
            "                </EncodingNode>\n"
            "            </SubNodes>\n"
            "        </EncodingNode>\n"
            "    </TreeEncoding>\n");
}

TEST_F(TreeEncodingTest, RandomDesignsSurviveTheirText) {
  for (int i = 0; i < 50; ++i) {
    const TreeEncoding made(*model, true);
    const auto read = EncodingFrom<TreeEncoding>(*model, "TreeEncoding", EncodingText(made));
    ASSERT_TRUE(read->Equals(made) && made.Equals(*read));
  }
}

// What the model stands on when a design is read must not matter.
TEST_F(TreeEncodingTest, ReadingFindsPartsOfChoicesThatAreNotCurrent) {
  const Choices choices = {Aux(0, "Main"), Plant(1, {Inner(2, {Deep(1)})})};
  Design({Aux(0, "Main"), Plant(0)})->Apply(*model);
  EXPECT_EQ(ChoicesOf(*Design(choices)), choices);
}

struct UnfitCase {
  const char* name;
  const char* part;         // Of the text of a design.
  const char* replacement;  // What stands there instead.
  const char* message;      // A part of it.
};

class UnfitTreeTest : public TreeEncodingTest, public ::testing::WithParamInterface<UnfitCase> {};

TEST_P(UnfitTreeTest, IsRefused) {
  std::string text = TreeDesign({Aux(1, "Spare"), Plant(1, {Inner(0)})});
  const std::size_t at = text.find(GetParam().part);
  ASSERT_NE(at, std::string::npos);
  text.replace(at, std::string(GetParam().part).size(), GetParam().replacement);
  EXPECT_THAT(ThrownMessage([&] { EncodingFrom<TreeEncoding>(*model, "TreeEncoding", text); }),
              HasSubstr(GetParam().message));
}

INSTANTIATE_TEST_SUITE_P(
    Texts, UnfitTreeTest,
    ::testing::Values(
        UnfitCase{"UnknownComponent", "DEFAULT::Plant<", "DEFAULT::Gone<", "DEFAULT::Gone"},
        UnfitCase{"NoIndex", "<Index>1</Index>", "", "Missing element Index"},
        UnfitCase{"NoSubNodes", "<SubNodes></SubNodes>", "", "Missing element SubNodes"},
        UnfitCase{"NegativeIndex", "<Index>0</Index>", "<Index>-1</Index>", "Inner"},
        UnfitCase{"IndexBeyondTheChoices", "<Index>0</Index>", "<Index>3</Index>",
                  "DEFAULT::Plant.Inner has no implementation 3 (in EncodingNode, line 1)"},
        UnfitCase{"IndexWithText", "<Index>0</Index>", "<Index>0x</Index>",
                  "No number in element Index of saved state: 0x (in Implementation, line 1)"},
        UnfitCase{"IndexBeyondAllNumbers", "<Index>0</Index>", "<Index>4294967296</Index>",
                  "Number out of range in element Index of saved state: 4294967296"},
        UnfitCase{"OtherInside", "Plant.Inner<", "Plant.Outer<",
                  "DEFAULT::Plant.Outer stands in the place of DEFAULT::Plant.Inner"},
        UnfitCase{"UnknownHost", ">Spare<", ">Nowhere<",
                  "DEFAULT::Aux cannot be allocated to \"Nowhere\" (in Allocation, line 1)"},
        UnfitCase{"NoHost", "<Allocation>Spare</Allocation>", "",
                  "DEFAULT::Aux cannot be allocated to \"\" (in EncodingNode, line 1)"},
        UnfitCase{"HostWhereThereIsNone", "<SubNodes><EncodingNode>",
                  "<Allocation>Main</Allocation><SubNodes><EncodingNode>",
                  "DEFAULT::Plant cannot be allocated to \"Main\" (in Allocation, line 1)"}),
    CaseName);

struct UnfitHierarchyCase {
  const char* name;
  Choices choices;
  const char* reason;
};

class UnfitHierarchyTest : public TreeEncodingTest,
                           public ::testing::WithParamInterface<UnfitHierarchyCase> {};

TEST_P(UnfitHierarchyTest, IsRefused) {
  EXPECT_EQ(ThrownMessage([&] { Design(GetParam().choices); }),
            std::string("Encoding in saved state does not fit the model: ") + GetParam().reason);
}

const Choice OnSpare{"DEFAULT::Aux", 1, "Spare"};

INSTANTIATE_TEST_SUITE_P(
    Designs, UnfitHierarchyTest,
    ::testing::Values(
        UnfitHierarchyCase{
            "Empty", {}, "it has 0 components, the model 2 (in TreeEncoding, line 1)"},
        UnfitHierarchyCase{
            "OneMissing", {OnSpare}, "it has 1 components, the model 2 (in TreeEncoding, line 1)"},
        UnfitHierarchyCase{
            "OtherOrder",
            {{"DEFAULT::Plant", 0}, OnSpare},
            "DEFAULT::Plant stands in the place of DEFAULT::Aux (in EncodingNode, line 1)"},
        UnfitHierarchyCase{
            "NotIncluded",
            {OnSpare, {"DEFAULT::Fixed", 0}},
            "DEFAULT::Fixed stands in the place of DEFAULT::Plant (in EncodingNode, line 1)"},
        UnfitHierarchyCase{
            "NothingInside",
            {OnSpare, {"DEFAULT::Plant", 1}},
            "it has 0 components inside DEFAULT::Plant, the model 1 (in SubNodes, line 1)"},
        UnfitHierarchyCase{
            "TooMuchInside",
            {OnSpare, {"DEFAULT::Plant", 0, "", {{"DEFAULT::Plant.Inner", 0}}}},
            "it has 1 components inside DEFAULT::Plant, the model 0 (in SubNodes, line 1)"}),
    CaseName);

}  // namespace
}  // namespace FTS
