#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "optimisation/EncodingText.h"
#include "optimisation/FixedEncoding.h"
#include "optimisation/RedundancyBenchmark.h"
#include "optimisation/SearchTest.h"
#include "optimisation/TreeEncoding.h"
#include "support/CaseName.h"

namespace FTS {
namespace {

/// The published table: four choices each, all zero where there is none.
struct Row {
  std::array<double, 4> reliability;
  std::array<double, 4> cost;
  std::array<double, 4> weight;
};

constexpr std::array<Row, 14> Published = {{
    {{0.90, 0.93, 0.91, 0.95}, {1, 1, 2, 2}, {3, 4, 2, 5}},
    {{0.95, 0.94, 0.93, 0}, {2, 1, 1, 0}, {8, 10, 9, 0}},
    {{0.85, 0.90, 0.87, 0.92}, {2, 3, 1, 4}, {7, 5, 6, 4}},
    {{0.83, 0.87, 0.85, 0}, {3, 4, 5, 0}, {5, 6, 4, 0}},
    {{0.94, 0.93, 0.95, 0}, {2, 2, 3, 0}, {4, 3, 5, 0}},
    {{0.99, 0.98, 0.97, 0.96}, {3, 3, 2, 2}, {5, 4, 5, 4}},
    {{0.91, 0.92, 0.94, 0}, {4, 4, 5, 0}, {7, 8, 9, 0}},
    {{0.81, 0.90, 0.91, 0}, {3, 5, 6, 0}, {4, 7, 6, 0}},
    {{0.97, 0.99, 0.96, 0.91}, {2, 3, 4, 3}, {8, 9, 7, 8}},
    {{0.83, 0.85, 0.90, 0}, {4, 4, 5, 0}, {6, 5, 6, 0}},
    {{0.94, 0.95, 0.96, 0}, {3, 4, 5, 0}, {5, 6, 6, 0}},
    {{0.79, 0.82, 0.85, 0.90}, {2, 3, 4, 5}, {4, 5, 6, 7}},
    {{0.98, 0.99, 0.97, 0}, {2, 3, 2, 0}, {5, 5, 6, 0}},
    {{0.90, 0.92, 0.95, 0.99}, {4, 4, 5, 6}, {6, 7, 6, 9}},
}};

std::string TwoDigits(int number) { return (number < 10 ? "0" : "") + std::to_string(number); }

class RedundancyBenchmarkTest : public SearchTest {
 protected:
  /// Components "fyffe01" to "fyffe14" of four choices, with room for eight replicas.
  void UseFlatModel() {
    std::vector<std::string> parts;
    for (int i = 1; i <= 14; ++i) {
      parts.push_back(XmlDesignPart("fyffe" + TwoDigits(i), {{"1"}, {"2"}, {"3"}, {"4"}}));
    }
    UseModel({{XmlObjective("Cost"), XmlObjective("Weight")}, parts, {}, 3, 7});
  }
};

TEST_F(RedundancyBenchmarkTest, TableIsThePublishedOne) {
  for (int subsystem = 1; subsystem <= 14; ++subsystem) {
    const Row& row = Published[static_cast<std::size_t>(subsystem - 1)];
    for (int choice = 1; choice <= 4; ++choice) {
      const auto at = static_cast<std::size_t>(choice - 1);
      const BenchmarkChoice found = BenchmarkChoiceOf(subsystem, choice);
      EXPECT_EQ(found.reliability, row.reliability[at]) << subsystem << '/' << choice;
      EXPECT_EQ(found.cost, row.cost[at]) << subsystem << '/' << choice;
      EXPECT_EQ(found.weight, row.weight[at]) << subsystem << '/' << choice;
    }
  }
}

struct NoChoiceCase {
  const char* name;
  int subsystem;
  int choice;
};

class NoBenchmarkChoiceTest : public RedundancyBenchmarkTest,
                              public ::testing::WithParamInterface<NoChoiceCase> {};

TEST_P(NoBenchmarkChoiceTest, IsWorthNothing) {
  const BenchmarkChoice found = BenchmarkChoiceOf(GetParam().subsystem, GetParam().choice);
  EXPECT_EQ(found.reliability, 0.0);
  EXPECT_EQ(found.cost, 0.0);
  EXPECT_EQ(found.weight, 0.0);
}

INSTANTIATE_TEST_SUITE_P(Outside, NoBenchmarkChoiceTest,
                         ::testing::Values(NoChoiceCase{"FourthOfThree", 2, 4},
                                           NoChoiceCase{"Fifth", 1, 5}, NoChoiceCase{"None", 1, 0},
                                           NoChoiceCase{"Negative", 1, -1},
                                           NoChoiceCase{"NoSubsystem", 0, 1},
                                           NoChoiceCase{"SubsystemBeyond", 15, 1}),
                         CaseName);

struct NameCase {
  const char* name;
  const char* fullName;
  int flat;
  int tree;
};

class BenchmarkNameTest : public RedundancyBenchmarkTest,
                          public ::testing::WithParamInterface<NameCase> {};

TEST_P(BenchmarkNameTest, TellsTheSubsystem) {
  EXPECT_EQ(FlatBenchmarkSubsystem(GetParam().fullName), GetParam().flat);
  EXPECT_EQ(TreeBenchmarkSubsystem(GetParam().fullName), GetParam().tree);
}

INSTANTIATE_TEST_SUITE_P(
    Names, BenchmarkNameTest,
    ::testing::Values(NameCase{"FirstFlat", "DEFAULT::fyffe01", 1, 0},
                      NameCase{"LastFlat", "DEFAULT::fyffe14", 14, 0},
                      NameCase{"BareFlat", "fyffe09", 9, 0},
                      NameCase{"FlatZero", "DEFAULT::fyffe00", 0, 0},
                      NameCase{"FlatBeyond", "DEFAULT::fyffe15", 0, 0},
                      NameCase{"FlatOneDigit", "DEFAULT::fyffe1", 0, 0},
                      NameCase{"FlatThreeDigits", "DEFAULT::fyffe011", 0, 0},
                      NameCase{"FlatInside", "DEFAULT::S.fyffe01", 0, 0},
                      NameCase{"FlatBehindABlank", "DEFAULT:: fyffe01", 0, 0},
                      NameCase{"FlatCapital", "DEFAULT::Fyffe01", 0, 0},
                      NameCase{"FirstTree", "DEFAULT::S.component1a", 0, 1},
                      NameCase{"LastTree", "DEFAULT::S.component14d", 0, 14},
                      NameCase{"TopTree", "DEFAULT::component7c", 0, 7},
                      NameCase{"BareTree", "component10b", 0, 10},
                      NameCase{"TreeZero", "DEFAULT::S.component0a", 0, 0},
                      NameCase{"TreeBeyond", "DEFAULT::S.component15a", 0, 0},
                      NameCase{"TreeLetter", "DEFAULT::S.component1e", 0, 0},
                      NameCase{"TreeWithoutLetter", "DEFAULT::S.component1", 0, 0},
                      NameCase{"TreeLeadingZero", "DEFAULT::S.component01a", 0, 0},
                      NameCase{"TreeInside", "DEFAULT::component1a.x", 0, 0},
                      NameCase{"Other", "DEFAULT::Pump", 0, 0}, NameCase{"Empty", "", 0, 0}),
    CaseName);

TEST_F(RedundancyBenchmarkTest, ReplicasOfANodeWorkInParallel) {
  UseFlatModel();
  FixedEncoding encoding(*model, false);
  FixedEncodingNode node(encoding, "DEFAULT::fyffe01", true);
  node.genes = {1, 2, 0};
  EXPECT_DOUBLE_EQ(node.GetNodeReliability(), 1.0 - 0.1 * 0.07);
  EXPECT_EQ(node.GetNodeCost(), 2.0);
  EXPECT_EQ(node.GetNodeWeight(), 7.0);
}

TEST_F(RedundancyBenchmarkTest, ChoiceThatASubsystemLacksIsWorthNothing) {
  UseFlatModel();
  FixedEncoding encoding(*model, false);
  FixedEncodingNode node(encoding, "DEFAULT::fyffe02", true);
  node.genes = {4};
  EXPECT_EQ(node.GetNodeReliability(), 0.0);
  EXPECT_EQ(node.GetNodeCost(), 0.0);
  EXPECT_EQ(node.GetNodeWeight(), 0.0);
}

TEST_F(RedundancyBenchmarkTest, OtherComponentIsWorthNothing) {
  UseModel({{}, {XmlDesignPart("other", {{"1"}, {"2"}})}});
  FixedEncoding encoding(*model, false);
  FixedEncodingNode node(encoding, "DEFAULT::other", true);
  node.genes = {1, 2};
  EXPECT_EQ(node.GetNodeReliability(), 0.0);
  EXPECT_EQ(node.GetNodeCost(), 0.0);
  EXPECT_EQ(node.GetNodeWeight(), 0.0);
}

TEST_F(RedundancyBenchmarkTest, PublishedDesignHasThePublishedFigures) {
  UseFlatModel();
  const std::vector<std::vector<int>> genes = {
      {3, 3, 3},    {1, 1}, {4, 4, 4}, {3, 3, 3, 3}, {2, 2, 2},    {2, 2}, {1, 1, 1},
      {1, 1, 1, 1}, {1, 2}, {2, 3, 3}, {3, 3},       {1, 1, 1, 1}, {1, 1}, {3, 4}};
  std::vector<Genes> nodes;
  for (int i = 0; i < 14; ++i) {
    nodes.push_back({"DEFAULT::fyffe" + TwoDigits(i + 1), genes[static_cast<std::size_t>(i)]});
    nodes.back().genes.resize(8, 0);
  }
  const auto design = EncodingFrom<FixedEncoding>(*model, "FixedEncoding", FlatDesign(nodes));
  EXPECT_EQ(design->GetSum1(), 130.0);
  EXPECT_EQ(design->GetSum2(), 191.0);
  EXPECT_NEAR(design->GetProduct(), 0.98681, 0.000005);
}

/// Subsystems of replicas as parts within: S1 of subsystem 1, S2 of 2.
class TreeBenchmarkTest : public RedundancyBenchmarkTest {
 protected:
  TreeBenchmarkTest() {
    const std::vector<XmlChoice> choices = {{"1"}, {"2"}, {"3"}, {"4"}};
    const std::string none = XmlDesignPart("Inner", {{"i"}}, "");
    UseModel(
        {{},
         {XmlDesignPart("S1", {{"s",
                                0,
                                0,
                                0,
                                {XmlDesignPart("component1a", choices),
                                 XmlDesignPart("component1d", choices), none}}}),
          XmlDesignPart("S2", {{"s", 0, 0, 0, {XmlDesignPart("component2b", choices), none}}})}});
  }
  std::unique_ptr<TreeEncoding> Design(int a, int d, int b) {
    return EncodingFrom<TreeEncoding>(
        *model, "TreeEncoding",
        TreeDesign({{"DEFAULT::S1",
                     0,
                     "",
                     {{"DEFAULT::S1.component1a", a}, {"DEFAULT::S1.component1d", d}}},
                    {"DEFAULT::S2", 0, "", {{"DEFAULT::S2.component2b", b}}}}));
  }
};

TEST_F(TreeBenchmarkTest, PartsWithinWorkInParallelAndTopPartsInSeries) {
  const auto design = Design(0, 1, 2);
  EXPECT_DOUBLE_EQ(design->GetProduct(), (1.0 - 0.1 * 0.07) * 0.93);
  EXPECT_EQ(design->GetSum1(), 1.0 + 1.0 + 1.0);
  EXPECT_EQ(design->GetSum2(), 3.0 + 4.0 + 9.0);
}

TEST_F(TreeBenchmarkTest, ChoiceBeyondTheRowIsWorthNothing) {
  const auto design = Design(3, 3, 3);
  EXPECT_EQ(design->GetProduct(), 0.0);
  EXPECT_EQ(design->GetSum1(), 4.0);
  EXPECT_EQ(design->GetSum2(), 10.0);
}

TEST_F(TreeBenchmarkTest, OtherPartWithoutPartsWithinIsWorthNothing) {
  UseModel({{}, {XmlDesignPart("Other", {{"o"}})}});
  const TreeEncoding design(*model, true);
  EXPECT_EQ(design.GetProduct(), 0.0);
  EXPECT_EQ(design.GetSum1(), 0.0);
  EXPECT_EQ(design.GetSum2(), 0.0);
}

}  // namespace
}  // namespace FTS
