#include <gmock/gmock.h>

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "analysis/FaultTree.h"
#include "model/Component.h"
#include "model/Implementation.h"
#include "model/Subsystem.h"
#include "model/VtnException.h"
#include "optimisation/EncodingText.h"
#include "optimisation/FixedEncoding.h"
#include "optimisation/Random.h"
#include "optimisation/SearchTest.h"
#include "optimisation/TreeEncoding.h"
#include "support/CaseName.h"
#include "support/ThrownMessage.h"

namespace FTS {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

using List = std::vector<int>;

/// Two parts of three and two choices: A has room for three replicas, B for two.
class FixedEncodingTest : public SearchTest {
 protected:
  FixedEncodingTest() {
    UseModel({{XmlObjective("Cost")},
              {XmlDesignPart("A", {{"a1", 1.0, 0.5}, {"a2", 2.0, 0.25}, {"a3", 4.0, 0.125}},
                             std::string(XmlIncluded) + Xml("MaxReplicants", "2")),
               XmlDesignPart("B", {{"b1", 10.0, 0.1}, {"b2", 20.0, 0.2}})},
              {"Omission-A.out OR Omission-B.out"}});
  }

  std::unique_ptr<FixedEncoding> Design(const List& a, const List& b) {
    return From(FlatDesign({{"DEFAULT::A", a}, {"DEFAULT::B", b}}));
  }
  std::unique_ptr<FixedEncoding> From(const std::string& text) {
    return EncodingFrom<FixedEncoding>(*model, "FixedEncoding", text);
  }
  static List GenesAt(const Encoding& encoding, std::size_t index) {
    return GenesOf(encoding).at(index).genes;
  }
  static void Sort(List& genes) {
    std::sort(genes.begin(), genes.end(), [](int left, int right) {
      return (left == 0 ? 99 : left) < (right == 0 ? 99 : right);
    });
  }
};

// Numbers are drawn by the test itself, in the order of the rules.
TEST_F(FixedEncodingTest, RandomGenesFollowTheGenerator) {
  for (int seed = 1; seed <= 200; ++seed) {
    RandomGenerator generator(seed);
    const auto draw = [&](int count) {
      return static_cast<int>(generator.Uniform() * static_cast<float>(count)) + 1;
    };
    const auto node = [&](int slots, int choices) {
      List genes(static_cast<std::size_t>(slots), 0);
      const int filled = draw(slots);
      for (int i = 0; i < filled; ++i) genes[static_cast<std::size_t>(i)] = draw(choices);
      Sort(genes);
      return genes;
    };
    const std::vector<Genes> expected = {{"DEFAULT::A", node(3, 3)}, {"DEFAULT::B", node(2, 2)}};
    SeedRandom(seed);
    const FixedEncoding made(*model, true);
    ASSERT_EQ(GenesOf(made), expected) << "seed " << seed;
    ASSERT_TRUE(made.IsValid());
  }
}

TEST_F(FixedEncodingTest, SizeCountsTheGenes) {
  EXPECT_EQ(FixedEncoding(*model, true).GetSize(), 5);
  EXPECT_EQ(FixedEncoding(*model, false).GetSize(), 0);
  EXPECT_EQ(FixedEncoding(*model, true).GetType(), 1);
}

/// What mutation makes of a node, by the numbers of the generator.
struct ExpectedMutation {
  ExpectedMutation(List initGenes, int choices, double rate, RandomGenerator& generator)
      : genes(std::move(initGenes)) {
    std::map<int, int> counts;
    for (int& gene : genes) {
      if (static_cast<double>(generator.Uniform()) >= rate) continue;
      int next = 0;
      if (generator.Uniform() <= 0.5F) {
        next = static_cast<int>(generator.Uniform() * static_cast<float>(choices)) + 1;
      }
      if (next == gene) continue;
      --counts[gene];
      ++counts[next];
      gene = next;
      touched = true;
    }
    for (const auto& [value, count] : counts) changed = changed || count != 0;
  }

  List genes;
  bool touched = false;  ///< Perhaps only by an exchange of genes.
  bool changed = false;
};

TEST_F(FixedEncodingTest, MutationFollowsTheGenerator) {
  int exchanges = 0;
  int changes = 0;
  for (int seed = 1; seed <= 600; ++seed) {
    const auto mutated = Design({1, 2, 0}, {1, 2});
    RandomGenerator generator(seed);
    ExpectedMutation a({1, 2, 0}, 3, 0.6, generator);
    ExpectedMutation b({1, 2}, 2, 0.6, generator);
    if (a.changed) Sort(a.genes);
    if (b.changed) Sort(b.genes);
    if (b.touched && !b.changed) ++exchanges;
    SeedRandom(seed);
    const bool changed = mutated->Mutate(0.6);
    changes += changed ? 1 : 0;
    ASSERT_EQ(changed, a.changed || b.changed) << "seed " << seed;
    ASSERT_EQ(GenesAt(*mutated, 0), a.genes) << "seed " << seed;
    ASSERT_EQ(GenesAt(*mutated, 1), b.genes) << "seed " << seed;
  }
  EXPECT_GT(exchanges, 3) << "no case of genes that change places, which stay unsorted";
  EXPECT_GT(changes, 100);
}

TEST_F(FixedEncodingTest, WithoutRateNothingMutates) {
  const auto design = Design({1, 2, 0}, {1, 0});
  for (int i = 0; i < 50; ++i) EXPECT_FALSE(design->Mutate(0.0));
  EXPECT_TRUE(design->Equals(*Design({1, 2, 0}, {1, 0})));
}

TEST_F(FixedEncodingTest, CrossoverTakesEachGeneFromEitherParent) {
  const auto mother = Design({1, 2, 3}, {1, 0});
  const auto father = Design({2, 3, 0}, {2, 2});
  for (int seed = 1; seed <= 100; ++seed) {
    RandomGenerator generator(seed);
    const auto pick = [&](List left, const List& right) {
      for (std::size_t i = 0; i < left.size(); ++i) {
        if (generator.Uniform() > 0.5F) left[i] = right[i];
      }
      Sort(left);
      return left;
    };
    const List a = pick({1, 2, 3}, {2, 3, 0});
    const List b = pick({1, 0}, {2, 2});
    SeedRandom(seed);
    const auto child = mother->Crossover(*father);
    ASSERT_EQ(GenesAt(*child, 0), a) << "seed " << seed;
    ASSERT_EQ(GenesAt(*child, 1), b) << "seed " << seed;
  }
}

TEST_F(FixedEncodingTest, ChildOfEqualParentsEqualsThem) {
  const auto mother = Design({1, 2, 3}, {1, 0});
  const auto father = mother->Clone();
  for (int i = 0; i < 20; ++i) EXPECT_TRUE(mother->Crossover(*father)->Equals(*mother));
}

TEST_F(FixedEncodingTest, CloneIsIndependent) {
  const auto source = Design({1, 2, 3}, {1, 0});
  const auto copy = source->Clone();
  EXPECT_TRUE(copy->Equals(*source));
  EXPECT_EQ(copy->GetModel(), model.get());
  while (!copy->Mutate(1.0)) {
  }
  EXPECT_EQ(GenesOf(*source),
            (std::vector<Genes>{{"DEFAULT::A", {1, 2, 3}}, {"DEFAULT::B", {1, 0}}}));
}

TEST_F(FixedEncodingTest, CloneIsSorted) {
  // An exchange of genes leaves the source unsorted.
  for (int seed = 1;; ++seed) {
    ASSERT_LT(seed, 1000) << "no seed exchanges genes";
    const auto source = Design({1, 2, 0}, {1, 2});
    SeedRandom(seed);
    source->Mutate(0.6);
    if (GenesAt(*source, 1) != List{2, 1}) continue;
    EXPECT_EQ(GenesAt(*source->Clone(), 1), (List{1, 2}));
    break;
  }
}

TEST_F(FixedEncodingTest, EqualsAsksForAllGenes) {
  const auto design = Design({1, 2, 0}, {1, 0});
  EXPECT_TRUE(design->Equals(*Design({1, 2, 0}, {1, 0})));
  EXPECT_FALSE(design->Equals(*Design({1, 2, 0}, {2, 0})));
  EXPECT_FALSE(design->Equals(*Design({1, 2, 2}, {1, 0})));
}

TEST_F(FixedEncodingTest, EqualsAsksForTheForm) {
  const FixedEncoding empty(*model, false);
  const TreeEncoding tree(*model, false);
  EXPECT_FALSE(empty.Equals(tree));
  EXPECT_FALSE(empty.Equals(*Design({1, 2, 0}, {1, 0}))) << "another number of components";
}

struct ValidCase {
  const char* name;
  List a;
  List b;
  bool valid;
};

class ValidDesignTest : public FixedEncodingTest,
                        public ::testing::WithParamInterface<ValidCase> {};

TEST_P(ValidDesignTest, EveryComponentNeedsAReplica) {
  // Without genes there is no room for any.
  if (GetParam().b.empty()) model->FindComponent("B")->maxReplicants = -1;
  EXPECT_EQ(Design(GetParam().a, GetParam().b)->IsValid(), GetParam().valid);
}

INSTANTIATE_TEST_SUITE_P(Genes, ValidDesignTest,
                         ::testing::Values(ValidCase{"OneEach", {1, 0, 0}, {2, 0}, true},
                                           ValidCase{"Full", {1, 2, 3}, {2, 2}, true},
                                           ValidCase{"FirstEmpty", {0, 0, 0}, {2, 0}, false},
                                           ValidCase{"LastEmpty", {1, 0, 0}, {0, 0}, false},
                                           ValidCase{"WithoutGenes", {1, 0, 0}, {}, false}),
                         CaseName);

TEST_F(FixedEncodingTest, FirstComponentWithoutReplicaIsDescribed) {
  EXPECT_EQ(Design({1, 0, 0}, {1, 0})->DescribeInvalid(), "");
  EXPECT_EQ(Design({1, 0, 0}, {0, 0})->DescribeInvalid(), "DEFAULT::B is left without a replica");
  EXPECT_EQ(Design({0, 0, 0}, {0, 0})->DescribeInvalid(), "DEFAULT::A is left without a replica");
}

/// One component without room for replicas, in one implementation.
TEST_F(FixedEncodingTest, OnlyGeneOfAnOnlyChoiceMayGetLost) {
  UseModel({{}, {XmlDesignPart("A", {{"a"}})}, {}, 3, 0});
  FixedEncoding made(*model, true);
  EXPECT_EQ(GenesAt(made, 0), (List{1}));
  EXPECT_TRUE(made.IsValid());
  while (!made.Mutate(1.0)) {
  }
  EXPECT_EQ(GenesAt(made, 0), (List{0}));
  EXPECT_FALSE(made.IsValid());
}

TEST_F(FixedEncodingTest, WithoutComponentsItIsEmptyAndValid) {
  UseModel({{}, {XmlDesignPart("A", {{"a"}}, "")}});
  FixedEncoding made(*model, true);
  EXPECT_EQ(made.GetSize(), 0);
  EXPECT_TRUE(made.IsValid());
  EXPECT_FALSE(made.Mutate(1.0));
  EXPECT_EQ(made.GetProduct(), 1.0);
  EXPECT_EQ(made.GetSum1(), 0.0);
  EXPECT_EQ(made.GetSum2(), 0.0);
  EXPECT_TRUE(made.Equals(*made.Clone()));
}

/// Designs put into a clone of the model, against models made by hand.
class FixedApplyTest : public FixedEncodingTest {
 protected:
  struct Figures {
    std::string cutSets;
    double unavailability;
    double cost;

    bool operator==(const Figures&) const = default;
    friend void PrintTo(const Figures& figures, std::ostream* stream) {
      *stream << figures.cutSets << ", Q=" << figures.unavailability << ", " << figures.cost;
    }
  };

  static Figures Analysed(Model& analysed) {
    analysed.Synthesise();
    analysed.Analyse(false);
    return {CutSetsOf(analysed, analysed.faultTrees.at(0)->GetName()),
            analysed.GetFaultTreeUnavailability(0), analysed.EvaluateCost()};
  }
  static Figures ByHand(const std::vector<std::string>& parts, const std::string& logic) {
    const auto made = LoadModel(XmlDesignModel({{}, parts, {logic}}));
    return Analysed(*made);
  }
  Figures Applied(const Encoding& encoding) {
    std::unique_ptr<Model> clone;
    Model* const working = model->EvaluateInClone(encoding, true, clone);
    EXPECT_EQ(working, clone.get());
    return Analysed(*working);
  }
};

TEST_F(FixedApplyTest, ReplicasMeetInAnAndGate) {
  const Figures applied = Applied(*Design({1, 3, 0}, {2, 0}));
  EXPECT_EQ(applied, ByHand({XmlDesignPart("A_COPY_1", {{"", 1.0, 0.5}}),
                             XmlDesignPart("A_COPY_2", {{"", 4.0, 0.125}}),
                             XmlDesignPart("B_COPY_1", {{"", 20.0, 0.2}})},
                            "Omission-A_COPY_1.out AND Omission-A_COPY_2.out OR "
                            "Omission-B_COPY_1.out"));
  EXPECT_EQ(applied.cutSets, "A_COPY_1.dead*A_COPY_2.dead + B_COPY_1.dead");
  EXPECT_DOUBLE_EQ(applied.unavailability, 1.0 - (1.0 - 0.5 * 0.125) * 0.8);
  EXPECT_EQ(applied.cost, 25.0);
}

TEST_F(FixedApplyTest, ReplicasOfOneChoiceFailApart) {
  const Figures applied = Applied(*Design({2, 2, 2}, {1, 1}));
  EXPECT_EQ(applied.cutSets,
            "A_COPY_1.dead*A_COPY_2.dead*A_COPY_3.dead + B_COPY_1.dead*B_COPY_2.dead");
  EXPECT_NEAR(applied.unavailability, 1.0 - (1.0 - 0.25 * 0.25 * 0.25) * (1.0 - 0.1 * 0.1), 1e-15);
  EXPECT_EQ(applied.cost, 26.0);
}

TEST_F(FixedApplyTest, DesignOutlivesItsApplication) {
  const auto design = Design({1, 3, 0}, {2, 0});
  const Figures first = Applied(*design);
  EXPECT_EQ(Applied(*Design({1, 1, 1}, {1, 1})).cost, 23.0);
  EXPECT_EQ(Applied(*design), first);
}

TEST_F(FixedApplyTest, ModelItselfStaysAsItWas) {
  Applied(*Design({2, 3, 0}, {2, 0}));
  EXPECT_EQ(model->EvaluateCost(), 11.0);
  EXPECT_EQ(model->FindComponent("A")->implementations.size(), 3U);
  EXPECT_EQ(model->FindComponent("A")->currentImplementation->name, "a1");
  EXPECT_TRUE(model->faultTrees.empty());
  EXPECT_EQ(Analysed(*model).cutSets, "A.dead + B.dead");
}

TEST_F(FixedApplyTest, SelectionsAreBuiltIntoTheModelAndAnalysed) {
  ASSERT_TRUE(model->ApplyAndEvaluate("13|2", false));
  ASSERT_EQ(model->faultTrees.size(), 1U);
  EXPECT_EQ(CutSetsOf(*model, model->faultTrees[0]->GetName()),
            "A_COPY_1.dead*A_COPY_2.dead + B_COPY_1.dead");
  EXPECT_DOUBLE_EQ(model->GetFaultTreeUnavailability(0), 1.0 - (1.0 - 0.5 * 0.125) * 0.8);
  EXPECT_EQ(model->EvaluateCost(), 25.0);
}

TEST_F(FixedApplyTest, SelectionsInACloneLeaveTheModelAlone) {
  EXPECT_TRUE(model->ApplyAndEvaluate("13|2", true));
  EXPECT_EQ(model->EvaluateCost(), 11.0);
  EXPECT_TRUE(model->faultTrees.empty());
  EXPECT_EQ(model->FindComponent("A")->implementations.size(), 3U);
}

TEST_F(FixedApplyTest, SelectionsThatLeaveAComponentEmptyAreNotAnalysed) {
  for (const char* selections : {"13|0", "13", "|2", ""}) {
    EXPECT_FALSE(model->ApplyAndEvaluate(selections, false)) << selections;
    EXPECT_TRUE(model->faultTrees.empty());
  }
}

TEST_F(FixedApplyTest, OutermostIncludedComponentsAreReached) {
  const std::string inner = XmlDesignPart("Inner", {{"i1", 3.0, 0.5}, {"i2", 5.0, 0.25}});
  UseModel({{},
            {XmlDesignPart("Outer", {{"o", 1.0, 0.0, 0.0, {inner}}}, ""),
             XmlDesignPart("C", {{"c", 2.0, 0.1}}, "")},
            {"Omission-Outer.out OR Omission-C.out"}});
  const auto design = From(FlatDesign({{"DEFAULT::Outer.Inner", {1, 2}}}));
  EXPECT_TRUE(design->IsValid());
  EXPECT_EQ(FixedEncoding(*model, true).GetSize(), 2);
  const Figures applied = Applied(*design);
  EXPECT_EQ(applied.cutSets, "C.dead + Inner_COPY_1.dead*Inner_COPY_2.dead");
  EXPECT_DOUBLE_EQ(applied.unavailability, 1.0 - 0.9 * (1.0 - 0.5 * 0.25));
  EXPECT_EQ(applied.cost, 1.0 + 2.0 + 3.0 + 5.0);
}

// The digits have no separator: 1, 12 reads like 1, 1, 2. Model files rely on the digits.
TEST_F(FixedApplyTest, NumbersOfTwoDigitsReadAsTwoReplicas) {
  std::vector<XmlChoice> choices;
  for (int i = 1; i <= 12; ++i) choices.push_back({"a" + std::to_string(i), 1.0 * i, 0.5});
  UseModel({{}, {XmlDesignPart("A", choices)}, {"Omission-A.out"}, 3, 2});
  const Figures twelve = Applied(*From(FlatDesign({{"DEFAULT::A", {1, 12, 0}}})));
  EXPECT_EQ(twelve, Applied(*From(FlatDesign({{"DEFAULT::A", {1, 1, 2}}}))));
  EXPECT_EQ(twelve.cost, 4.0);
}

TEST_F(FixedEncodingTest, TextNamesEveryGene) {
  EXPECT_EQ(EncodingText(*Design({1, 3, 0}, {2, 0})),
            "    <FixedEncoding>\n"
            "        <EncodingNode>\n"
            "            <Component>\n"
            "                <Name>DEFAULT::A</Name>\n"
            "            </Component>\n"
            "            <Implementations>\n"
            "                <Implementation>\n"
            "                    <Name>a1</Name>\n"
            "                    <Index>1</Index>\n"
            "                </Implementation>\n"
            "                <Implementation>\n"
            "                    <Name>a3</Name>\n"
            "                    <Index>3</Index>\n"
            "                </Implementation>\n"
            "                <Implementation>\n"
            "                    <Name />\n"
            "                    <Index>0</Index>\n"
            "                </Implementation>\n"
            "            </Implementations>\n"
            "        </EncodingNode>\n"
            "        <EncodingNode>\n"
            "            <Component>\n"
            "                <Name>DEFAULT::B</Name>\n"
            "            </Component>\n"
            "            <Implementations>\n"
            "                <Implementation>\n"
            "                    <Name>b2</Name>\n"
            "                    <Index>2</Index>\n"
            "                </Implementation>\n"
            "                <Implementation>\n"
            "                    <Name />\n"
            "                    <Index>0</Index>\n"
            "                </Implementation>\n"
            "            </Implementations>\n"
            "        </EncodingNode>\n"
            "    </FixedEncoding>\n");
}

TEST_F(FixedEncodingTest, RandomDesignsSurviveTheirText) {
  for (int i = 0; i < 50; ++i) {
    const FixedEncoding made(*model, true);
    const auto read = From(EncodingText(made));
    ASSERT_TRUE(read->Equals(made) && made.Equals(*read));
  }
}

TEST_F(FixedEncodingTest, GeneBeyondTheChoicesIsToldAndKept) {
  const CapturedStreams streams;
  const auto design = Design({1, 4, 0}, {1, 0});
  EXPECT_EQ(streams.Output(), "Error processing encoding: index bit is out of range for model\n");
  EXPECT_EQ(GenesAt(*design, 0), (List{1, 4, 0}));
  std::unique_ptr<Model> clone;
  EXPECT_NE(ThrownMessage([&] { model->EvaluateInClone(*design, true, clone); }), "no exception");
}

struct UnfitFlatCase {
  const char* name;
  std::vector<Genes> nodes;
  const char* reason;
};

class UnfitFlatTest : public FixedEncodingTest,
                      public ::testing::WithParamInterface<UnfitFlatCase> {};

TEST_P(UnfitFlatTest, IsRefused) {
  EXPECT_EQ(ThrownMessage([&] { From(FlatDesign(GetParam().nodes)); }),
            std::string("Encoding in saved state does not fit the model: ") + GetParam().reason);
}

INSTANTIATE_TEST_SUITE_P(
    Designs, UnfitFlatTest,
    ::testing::Values(
        UnfitFlatCase{"OtherComponent",
                      {{"DEFAULT::Gone", {1, 0, 0}}, {"DEFAULT::B", {1, 0}}},
                      "DEFAULT::Gone stands in the place of DEFAULT::A (in EncodingNode, line 1)"},
        UnfitFlatCase{"OtherOrder",
                      {{"DEFAULT::B", {1, 0}}, {"DEFAULT::A", {1, 0, 0}}},
                      "DEFAULT::B stands in the place of DEFAULT::A (in EncodingNode, line 1)"},
        UnfitFlatCase{"OneTwice",
                      {{"DEFAULT::A", {1, 0, 0}}, {"DEFAULT::A", {1, 0, 0}}},
                      "DEFAULT::A stands in the place of DEFAULT::B (in EncodingNode, line 1)"},
        UnfitFlatCase{"OneMissing",
                      {{"DEFAULT::A", {1, 0, 0}}},
                      "it has 1 components, the model 2 (in FixedEncoding, line 1)"},
        UnfitFlatCase{"TooManyGenes",
                      {{"DEFAULT::A", {1, 1, 1, 1}}, {"DEFAULT::B", {1, 0}}},
                      "it has 4 genes of DEFAULT::A, the model 3 (in Implementations, line 1)"},
        UnfitFlatCase{"TooFewGenes",
                      {{"DEFAULT::A", {1, 0, 0}}, {"DEFAULT::B", {}}},
                      "it has 0 genes of DEFAULT::B, the model 2 (in Implementations, line 1)"},
        UnfitFlatCase{"NegativeGene",
                      {{"DEFAULT::A", {1, 0, 0}}, {"DEFAULT::B", {1, -1}}},
                      "a gene of DEFAULT::B is negative (in Implementation, line 1)"}),
    CaseName);

struct MissingCase {
  const char* name;
  const char* element;
};

class MissingElementTest : public FixedEncodingTest,
                           public ::testing::WithParamInterface<MissingCase> {};

TEST_P(MissingElementTest, IsNamed) {
  std::string text = FlatDesign({{"DEFAULT::A", {1, 0, 0}}, {"DEFAULT::B", {1, 0}}});
  const std::string open = std::string("<") + GetParam().element + ">";
  text.replace(text.rfind(open), open.size(), "<Other>");
  const std::string close = std::string("</") + GetParam().element + ">";
  text.replace(text.rfind(close), close.size(), "</Other>");
  EXPECT_THAT(ThrownMessage([&] { From(text); }),
              HasSubstr(std::string("Missing element ") + GetParam().element));
}

INSTANTIATE_TEST_SUITE_P(Names, MissingElementTest,
                         ::testing::Values(MissingCase{"Component", "Component"},
                                           MissingCase{"Implementations", "Implementations"},
                                           MissingCase{"Index", "Index"}),
                         CaseName);

}  // namespace
}  // namespace FTS
