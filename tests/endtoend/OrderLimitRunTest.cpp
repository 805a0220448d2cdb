// Cut sets above the order limit, and such as exclude each other, through the whole program: what
// is left out must never make the rest look worse than it is.

#include <gtest/gtest.h>

#include <string>
#include <tuple>

#include "app/Config.h"
#include "model/Model.h"
#include "support/ModelXml.h"
#include "support/ProcessStateTest.h"

namespace FTS {
namespace {

class OrderLimitRunTest : public ProcessStateTest,
                          public ::testing::WithParamInterface<std::tuple<bool, bool>> {
 protected:
  /// One component whose logic of many events is the top event.
  static std::string CutSets(const std::string& logic, const std::string& eventNames) {
    XmlFailures failures;
    std::string name;
    for (const char character : eventNames + " ") {
      if (character != ' ') {
        name += character;
        continue;
      }
      failures.events.push_back(XmlEvent(name));
      name.clear();
    }
    failures.deviations.push_back(XmlDeviation("Omission-out", logic));
    Config& config = Config::Instance();
    config.modularise = std::get<0>(GetParam());
    const std::string text = XmlModel({XmlHazard("H", "Omission-A.out")},
                                      XmlSystem({XmlLeaf("A", {"out"}, failures)}, {}));
    const auto model = LoadModel(text);
    config.runSilent = true;
    model->Synthesise();
    model->Analyse(std::get<1>(GetParam()));
    return CutSetsOf(*model, "H");
  }
};

TEST_P(OrderLimitRunTest, TooLargePartnerLeavesNothingOfAConjunction) {
  Config::Instance().maxCutSetSize = 2;
  EXPECT_EQ(
      CutSets("x AND ((a OR b) AND (c OR d) AND (f OR g) OR (h OR i) AND (j OR k) AND (l OR m))",
              "x a b c d f g h i j k l m"),
      "");
}

TEST_P(OrderLimitRunTest, TooLargePartnerWithASharedEventLeavesNothing) {
  Config::Instance().maxCutSetSize = 1;
  EXPECT_EQ(CutSets("x AND (s AND (a OR b) OR s AND (c OR d))", "x s a b c d"), "");
}

TEST_P(OrderLimitRunTest, AlternativesWithinTheLimitStay) {
  Config::Instance().maxCutSetSize = 2;
  EXPECT_EQ(CutSets("x AND ((a OR b) AND (c OR d) OR f)", "x a b c d f"), "A.f*A.x");
}

TEST_P(OrderLimitRunTest, ExclusivePartnerLeavesNothingOfAConjunction) {
  Config::Instance().mutualExclusion = true;
  EXPECT_EQ(CutSets("x AND (open AND closed OR up AND down)", "x open closed up down"), "");
}

INSTANTIATE_TEST_SUITE_P(Routes, OrderLimitRunTest,
                         ::testing::Combine(::testing::Bool(), ::testing::Bool()));

}  // namespace
}  // namespace FTS
