// Loops and unconnected inputs, through the whole program.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "app/Config.h"
#include "app/DiagnosticLog.h"
#include "model/Model.h"
#include "platform/BigStack.h"
#include "support/CapturedStreams.h"
#include "support/ModelXml.h"
#include "support/ProcessStateTest.h"

namespace FTS {
namespace {

class LoopRunTest : public ProcessStateTest {
 protected:
  static const std::vector<std::string>& Warnings() { return DiagnosticLog::Instance().Warnings(); }

  /// A feeds B and B feeds A; `A.copy` only hands on what arrives at A.
  static std::string Ring(const std::string& operatorOfA, const std::string& hazardPort) {
    return XmlModel(
        {XmlHazard("H", "Omission-A." + hazardPort)},
        XmlSystem({XmlLeaf("A", {"in", "out", "copy"},
                           {{XmlEvent("a")},
                            {XmlDeviation("Omission-out", "a " + operatorOfA + " Omission-in"),
                             XmlDeviation("Omission-copy", "Omission-in")}}),
                   XmlLeaf("B", {"in", "out"},
                           {{XmlEvent("b")}, {XmlDeviation("Omission-out", "Omission-in")}})},
                  {XmlWire("A.out", "B.in"), XmlWire("B.out", "A.in")}));
  }

  /// Neighbours fail each other in both directions.
  static std::string TwoWayChain(int components) {
    std::vector<std::string> blocks;
    std::vector<std::string> wires;
    for (int i = 0; i < components; ++i) {
      const std::string name = "C" + std::to_string(i);
      blocks.push_back(
          XmlLeaf(name, {"left", "right", "out"},
                  {{XmlEvent("fails")},
                   {XmlDeviation("Omission-out", "fails + Omission-left + Omission-right")}}));
      if (i == 0) continue;
      const std::string before = "C" + std::to_string(i - 1);
      wires.push_back(XmlWire(before + ".out", name + ".left"));
      wires.push_back(XmlWire(name + ".out", before + ".right"));
    }
    return XmlModel({XmlHazard("H", "Omission-C0.out")}, XmlSystem(blocks, wires));
  }
};

TEST_F(LoopRunTest, RemovedLoopIsNoUnconnectedInput) {
  Config::Instance().removeCircleNodes = true;
  Config::Instance().removeHangingNodes = false;
  EXPECT_EQ(OnlyCutSets(Ring("OR", "copy")), "A.a");
  EXPECT_EQ(OnlyCutSets(Ring("AND", "copy")), "A.a");
}

TEST_F(LoopRunTest, RemovedLoopIsNoEventOfADiagram) {
  Config::Instance().removeCircleNodes = true;
  for (const std::string hazardPort : {"out", "copy"}) {
    const auto model = LoadModel(Ring("OR", hazardPort));
    Config::Instance().runSilent = true;
    const CapturedStreams streams;
    model->Synthesise();
    model->Analyse(true);
    EXPECT_EQ(CutSetsOf(*model, "H"), "A.a") << hazardPort;
  }
}

TEST_F(LoopRunTest, RemovedLoopIsReportedAsLoopOnly) {
  Config::Instance().removeCircleNodes = true;
  Config::Instance().removeHangingNodes = true;
  const auto model = LoadModel(Ring("AND", "copy"));
  const CapturedStreams streams;
  model->Synthesise();
  EXPECT_EQ(Warnings(), std::vector<std::string>{
                            "Warning: removing circle node - CIRCLE TO Omission-DEFAULT::B.out"});
}

TEST_F(LoopRunTest, EveryComponentOfALongTwoWayChainIsFound) {
  // A thousand loops inside each other: the way through them must stay small in memory.
  constexpr int Components = 1000;
  Config::Instance().quantitativeAnalysis = false;
  std::string cutSets;
  RunOnBigStack([&] { cutSets = OnlyCutSets(TwoWayChain(Components)); });
  for (int i = 0; i < Components; ++i) {
    const std::string event = "C" + std::to_string(i) + ".fails";
    ASSERT_NE((cutSets + " ").find(event + " "), std::string::npos) << event;
  }
}

TEST_F(LoopRunTest, HazardNamedLikeAPortOfNoPerspectiveKeepsTheRunGoing) {
  Config::Instance().removeHangingNodes = false;
  const std::string text = XmlModel(
      {XmlHazard("L-x::y", "Omission-A.missing")},
      XmlSystem({XmlLeaf("A", {"out"}, {{XmlEvent("a")}, {XmlDeviation("Omission-out", "a")}})},
                {}));
  EXPECT_EQ(OnlyCutSets(text), "L-x::y (UNCONNECTED)");
}

TEST_F(LoopRunTest, HazardNamedLikeADeviationHasAnEventOfItsOwn) {
  Config::Instance().removeHangingNodes = false;
  const std::string text = XmlModel(
      {XmlHazard("Omission-A.in", "Omission-A.missing"), XmlHazard("Late", "Omission-A.out")},
      XmlSystem({XmlLeaf("A", {"in", "out"},
                         {{XmlEvent("a")}, {XmlDeviation("Omission-out", "a + Omission-in")}})},
                {}));
  const auto model = LoadModel(text);
  Config::Instance().runSilent = true;
  model->Synthesise();
  model->Analyse(false);
  EXPECT_EQ(CutSetsOf(*model, "Omission-A.in"), "Omission-A.in (UNCONNECTED)");
  EXPECT_EQ(CutSetsOf(*model, "Late"), "A.a + Omission-DEFAULT::A.in (UNCONNECTED)");
}

}  // namespace
}  // namespace FTS
