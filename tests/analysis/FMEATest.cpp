#include <gmock/gmock.h>

#include "analysis/CutSet.h"
#include "analysis/FMEA.h"
#include "analysis/FaultTree.h"
#include "app/Config.h"
#include "faulttree/BasicEvent.h"
#include "support/CapturedStreams.h"
#include "support/PartsModel.h"
#include "support/ProcessStateTest.h"
#include "support/TreeBuilder.h"

namespace FTS {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class FMEATest : public ProcessStateTest {
 protected:
  std::shared_ptr<FaultTree> Add(const std::string& text) {
    const auto tree = std::make_shared<FaultTree>(builder.Tree(text));
    parts.model.AddFaultTree(tree);
    return tree;
  }

  void Register(const std::string& name, const std::shared_ptr<Component>& owner) {
    builder.Event(name)->owner = owner;
    parts.model.AddEvent(builder.Event(name));
  }

  const BasicEvent& Event(const std::string& name) { return *builder.Event(name); }

  std::vector<std::string> EventsOf(const std::string& component) {
    std::vector<std::string> names;
    for (const auto& event : parts.model.fmea->eventsByComponent.at(component)) {
      names.push_back(event->name);
    }
    return names;
  }

  void Run() {
    const CapturedStreams streams;
    parts.model.Analyse(false);
    parts.model.BuildFMEA();
  }

  PartsModel parts;
  TreeBuilder builder{&parts.model};
};

TEST_F(FMEATest, SinglePointFailureIsADirectEffectAndTheRestAreFurther) {
  const auto first = Add("First=OR(A, AND(B, C))");
  const auto second = Add("Second=AND(A, B)");
  for (const char* name : {"A", "B", "C"}) Register(name, nullptr);
  Run();
  const FMEA& fmea = *parts.model.fmea;
  EXPECT_THAT(fmea.GetDirectEffects(Event("A")), ElementsAre(first));
  EXPECT_THAT(fmea.GetFurtherEffects(Event("A")), ElementsAre(second));
  EXPECT_THAT(fmea.GetDirectEffects(Event("B")), IsEmpty());
  EXPECT_THAT(fmea.GetFurtherEffects(Event("B")), ElementsAre(first, second));
  EXPECT_THAT(fmea.GetFurtherEffects(Event("C")), ElementsAre(first));
}

TEST_F(FMEATest, EventsStandUnderTheirComponentByPrime) {
  const auto pump = parts.AddComponent("Pump");
  Add("First=OR(A, B, C)");
  Register("C", pump);
  Register("B", nullptr);
  Register("A", pump);
  Run();
  EXPECT_THAT(EventsOf(pump->GetFullNameText()), ElementsAre("A", "C"));
  EXPECT_THAT(EventsOf(ToText(NodeType::FailureMode)), ElementsAre("B"));
}

TEST_F(FMEATest, WithoutAnalysisEventsHaveNoEffects) {
  Add("First=OR(A, B)");
  Register("A", nullptr);
  Register("B", nullptr);
  parts.model.BuildFMEA();
  EXPECT_THAT(EventsOf(ToText(NodeType::FailureMode)), ElementsAre("A", "B"));
  EXPECT_THAT(parts.model.fmea->GetDirectEffects(Event("A")), IsEmpty());
  EXPECT_THAT(parts.model.fmea->GetFurtherEffects(Event("A")), IsEmpty());
}

TEST_F(FMEATest, CutSetOfAFailureAndANormalEventIsNotDirect) {
  Config::Instance().countNormalEvents = false;
  builder.Define("n", std::make_shared<NormalEvent>("n", &parts.model, true));
  const auto tree = Add("First=AND(A, n)");
  Register("A", nullptr);
  Run();
  EXPECT_THAT(parts.model.fmea->GetDirectEffects(Event("A")), IsEmpty());
  EXPECT_THAT(parts.model.fmea->GetFurtherEffects(Event("A")), ElementsAre(tree));
}

TEST_F(FMEATest, EachBuildStartsAnew) {
  Add("First=OR(A)");
  Register("A", nullptr);
  Run();
  const auto before = parts.model.fmea;
  parts.model.BuildFMEA();
  EXPECT_NE(parts.model.fmea, before);
  EXPECT_EQ(parts.model.fmea->GetDirectEffects(Event("A")).size(), 1U);
}

TEST_F(FMEATest, PrintNamesEachComponent) {
  const auto pump = parts.AddComponent("Pump");
  Add("First=OR(A, B)");
  Register("A", pump);
  Register("B", nullptr);
  Run();
  std::ostringstream printed;
  parts.model.fmea->Print(printed, 2);
  EXPECT_EQ(printed.str(),
            "  " + ToText(NodeType::FailureMode) + "\n  " + pump->GetFullNameText() + "\n");
}

}  // namespace
}  // namespace FTS
