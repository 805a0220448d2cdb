#include <gtest/gtest.h>

#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "analysis/FaultTree.h"
#include "app/Config.h"
#include "model/Model.h"
#include "support/CapturedStreams.h"
#include "support/CaseName.h"
#include "support/ModelXml.h"
#include "support/ProcessStateTest.h"
#include "support/StateMachineOracle.h"
#include "support/StateMachineXml.h"

namespace FTS {
namespace {

struct ModeCase {
  const char* name;
  void (*set)(Config& config);
};

/// Failed states' cut sets under the options that take other roads to them.
class FailedStateModesTest : public ProcessStateTest,
                             public ::testing::WithParamInterface<ModeCase> {
 protected:
  static constexpr std::uint64_t Machines = 320;

  FailedStateModesTest() { GetParam().set(Config::Instance()); }

  /// One line for each tree: its name and its cut sets.
  static std::string TreesOf(const std::string& xml) {
    const auto model = LoadModel(xml);
    const CapturedStreams streams;
    model->Synthesise();
    model->Analyse(Config::Instance().useBDDs);
    std::string text;
    for (const auto& tree : model->faultTrees) {
      text += tree->GetName() + " = " + CutSetsOf(*model, tree->GetName()) + "\n";
    }
    return text;
  }

  /// The same by the oracle, for a machine whose causes are events.
  static std::string ExpectedTrees(const std::vector<SketchedState>& machine) {
    std::string text;
    for (const SketchedState& state : machine) {
      const auto ways = MinimalWays(machine, state.name);
      if (!state.isFail || ways.empty()) continue;
      std::set<std::string> products;
      for (const auto& way : ways) products.insert(Joined(way, "*"));
      text += "Failed State: loss of " + state.name + " = " + Joined(products, " + ") + "\n";
    }
    return text;
  }

  /// The machine with the event behind each cause in its place.
  template <typename EventOf>
  static std::vector<SketchedState> WithEvents(std::vector<SketchedState> machine,
                                               const EventOf& eventOf) {
    for (SketchedState& state : machine) {
      for (auto& transition : state.transitions) {
        transition.cause += "." + eventOf(state.name);
      }
    }
    return machine;
  }

  /// A model with the components "A" to "H", each with these events and this logic.
  static std::string ModelOf(const std::vector<SketchedState>& machine,
                             const std::vector<std::string>& events, const std::string& logic) {
    std::vector<std::string> eventTexts;
    for (const auto& event : events) eventTexts.push_back(XmlEvent(event));
    std::vector<std::string> components;
    for (char name = 'A'; name <= 'H'; ++name) {
      components.push_back(XmlLeaf(std::string(1, name), {"out"},
                                   {eventTexts, {XmlDeviation("Omission-out", logic)}}));
    }
    return XmlModel({}, XmlSystem(components, {}) + XmlStateMachine(machine));
  }

 private:
  static std::string Joined(const std::set<std::string>& parts, const std::string& separator) {
    std::string text;
    for (const auto& part : parts) text += (text.empty() ? "" : separator) + part;
    return text;
  }
};

TEST_P(FailedStateModesTest, GiveTheSameCutSets) {
  EXPECT_EQ(TreesOf(XmlStateModel("*s A>a B>f; a C>f D>b; b E>f; !f; *!g")),
            "Failed State: loss of f = A.dead*C.dead + A.dead*D.dead*E.dead + B.dead\n"
            "Failed State: loss of g = \n");
}

TEST_P(FailedStateModesTest, FindTheWaysOfRandomMachines) {
  int withTrees = 0;
  for (std::uint64_t seed = 1; seed <= Machines && !HasFailure(); ++seed) {
    const auto machine = RandomMachine(seed);
    const auto expected =
        ExpectedTrees(WithEvents(machine, [](const std::string&) { return std::string("dead"); }));
    EXPECT_EQ(TreesOf(ModelOf(machine, {"dead"}, "dead")), expected)
        << "seed " << seed << ": " << ToText(machine);
    withTrees += expected.empty() ? 0 : 1;
  }
  EXPECT_GT(withTrees, 150);
}

TEST_P(FailedStateModesTest, FindTheWaysWhereCausesDifferByState) {
  const std::set<std::string> own = {"s0", "s2", "s3", "s5"};
  const std::string logic = "{s0: s0, s2: s2, default: other, s3: s3, s5: s5}";
  for (std::uint64_t seed = 1; seed <= Machines && !HasFailure(); ++seed) {
    const auto machine = RandomMachine(seed);
    const auto expected = ExpectedTrees(WithEvents(
        machine, [&](const std::string& state) { return own.contains(state) ? state : "other"; }));
    EXPECT_EQ(TreesOf(ModelOf(machine, {"s0", "s2", "s3", "s5", "other"}, logic)), expected)
        << "seed " << seed << ": " << ToText(machine);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Modes, FailedStateModesTest,
    ::testing::Values(
        ModeCase{"Default", [](Config&) {}},
        ModeCase{"Silent", [](Config& config) { config.runSilent = true; }},
        ModeCase{"Uncontracted", [](Config& config) { config.contraction = Contraction::None; }},
        ModeCase{"Subcontracted",
                 [](Config& config) { config.contraction = Contraction::Subcontract; }},
        ModeCase{"WithoutModules", [](Config& config) { config.modularise = false; }},
        ModeCase{"WithDiagrams", [](Config& config) { config.useBDDs = true; }}),
    CaseName);

}  // namespace
}  // namespace FTS
