#include <gmock/gmock.h>

#include <sstream>

#include "app/DiagnosticLog.h"
#include "faulttree/DeviationNodes.h"
#include "faulttree/DeviationProxies.h"
#include "model/Component.h"
#include "model/Deviation.h"
#include "model/DeviationName.h"
#include "model/Implementation.h"
#include "model/Port.h"
#include "support/CaseName.h"
#include "support/ModelBuilder.h"
#include "support/ProcessStateTest.h"
#include "support/ThrownMessage.h"
#include "support/TreeBuilder.h"

namespace FTS {
namespace {

struct NameCase {
  const char* name;
  const char* text;
  const char* failureClass;
  const char* port;
};

class DeviationNameTest : public ProcessStateTest,
                          public ::testing::WithParamInterface<NameCase> {};

TEST_P(DeviationNameTest, IsDividedAtItsFirstHyphen) {
  EXPECT_EQ(FailureClassOf(GetParam().text), GetParam().failureClass);
  EXPECT_EQ(PortOf(GetParam().text), GetParam().port);
}

INSTANTIATE_TEST_SUITE_P(
    Names, DeviationNameTest,
    ::testing::Values(NameCase{"LocalPort", "Late-Out1", "Late", "Out1"},
                      NameCase{"FullPort", "Late-Top.A.Out1", "Late", "Top.A.Out1"},
                      NameCase{"FurtherHyphen", "a-b-c", "a", "b-c"},
                      NameCase{"NoHyphen", "Top.A.Out1", "", ""}, NameCase{"Empty", "", "", ""},
                      NameCase{"NoClass", "-Out1", "", "Out1"}),
    CaseName);

class DeviationTest : public ProcessStateTest {
 protected:
  DeviationTest() : model(ModelBuilder().Component("A", {"in", "out"}).Build()) {
    component = model->FindComponent("A");
  }

  std::unique_ptr<Model> model;
  std::shared_ptr<Component> component;
};

TEST_F(DeviationTest, NamesCarryThePerspective) {
  const OutputDeviation deviation(component, "Late", "out");
  EXPECT_EQ(deviation.GetFullName(), "Late-DEFAULT::A.out");
  EXPECT_EQ(deviation.GetLocalName(), "Late-out");
}

TEST_F(DeviationTest, NameWithoutClassIsThePortAlone) {
  const InputDeviation deviation(component, "", "in");
  EXPECT_EQ(deviation.GetFullName(), "DEFAULT::A.in");
  EXPECT_EQ(deviation.GetLocalName(), "in");
}

TEST_F(DeviationTest, PortFoundByNameLeavesTheSubjectEmpty) {
  const InputDeviation deviation(component, "Late", "in");
  EXPECT_EQ(deviation.GetPort(), component->FindPort("in"));
  EXPECT_EQ(deviation.GetSubject(), "");
  EXPECT_FALSE(deviation.byMessage);
}

TEST_F(DeviationTest, OutputIsFoundThroughAnOutgoingMessage) {
  component->outputMessages["speed"] = {component->FindPort("out")};
  const OutputDeviation deviation(component, "Late", "Wheel.speed");
  EXPECT_EQ(deviation.GetPort(), component->FindPort("out"));
  EXPECT_TRUE(deviation.byMessage);
  EXPECT_EQ(deviation.GetFullName(), "Late-DEFAULT::A.out:speed");
  EXPECT_EQ(deviation.GetLocalName(), "Late-out:speed");
}

TEST_F(DeviationTest, InputIsFoundThroughAnIncomingMessage) {
  component->inputMessages["speed"] = {component->FindPort("in")};
  component->outputMessages["speed"] = {component->FindPort("out")};
  EXPECT_EQ(InputDeviation(component, "Late", "speed").GetPort(), component->FindPort("in"));
}

TEST_F(DeviationTest, AmbiguousMessageTakesTheFirstPortWithAWarning) {
  component->inputMessages["speed"] = {component->FindPort("out"), component->FindPort("in")};
  EXPECT_EQ(InputDeviation(component, "Late", "speed").GetPort(), component->FindPort("out"));
  EXPECT_THAT(DiagnosticLog::Instance().Warnings(),
              ::testing::ElementsAre("Ambiguous port reference - multiple inports linked to line "
                                     "message speed in component DEFAULT::A"));
}

TEST_F(DeviationTest, AmbiguousOutgoingMessageIsNamedSo) {
  component->outputMessages["speed"] = {component->FindPort("out"), component->FindPort("in")};
  component->FindOutputPort("speed");
  EXPECT_THAT(DiagnosticLog::Instance().Warnings(),
              ::testing::ElementsAre("Ambiguous port reference - multiple outports linked to line "
                                     "message speed in component DEFAULT::A"));
}

TEST_F(DeviationTest, UnknownSubjectIsRefused) {
  EXPECT_EQ(ThrownMessage([this] { OutputDeviation(component, "Late", "B.none"); }),
            "Could not find port in component: DEFAULT::A with failure subject: B.none");
}

TEST_F(DeviationTest, ExportedNamesAreOfTheComponent) {
  const ExportedDeviation deviation(component, "Loss", "power");
  EXPECT_EQ(deviation.GetFullName(), "Loss-DEFAULT::A.power");
  EXPECT_EQ(deviation.GetLocalName(), "Loss-power");
  EXPECT_EQ(deviation.kind, IFailureCause::OfExportedDeviation);
  EXPECT_TRUE(deviation.exported);
}

TEST_F(DeviationTest, EventOfAnInputIsMadeOnce) {
  const auto record = std::make_shared<InputDeviation>(component, "Late", "in");
  const auto first = std::make_shared<InputDeviationProxy>(record, model.get(), 1);
  const auto second = std::make_shared<InputDeviationProxy>(record, model.get(), 2);
  EXPECT_EQ(first->GetEventNode(), second->GetEventNode());
  EXPECT_EQ(first->GetEventNode()->name, "Late-DEFAULT::A.in (UNCONNECTED)");
}

TEST_F(DeviationTest, PrintShowsLogicAndMarks) {
  OutputDeviation deviation(component, "Late", "out");
  deviation.description = "too late";
  deviation.severity = 2.5;
  std::ostringstream text;
  deviation.Print(text, 1);
  EXPECT_EQ(text.str(),
            " DEVIATION: Late-DEFAULT::A.out\n"
            " DESCRIPTION: too late\n"
            " SEVERITY: 2.5\n"
            " SYSTEM OUTPORT: No\n"
            " EXPRESSION: \n"
            " END OF DEVIATION (Late-DEFAULT::A.out)\n");
}

TEST_F(DeviationTest, PrintOfAnInputHasNothingOfItsOwn) {
  std::ostringstream text;
  InputDeviation(component, "Late", "in").Print(text, 0);
  EXPECT_EQ(text.str(),
            "DEVIATION: Late-DEFAULT::A.in\nDESCRIPTION: \n"
            "END OF DEVIATION (Late-DEFAULT::A.in)\n");
}

class DeviationCopyTest : public ProcessStateTest {
 protected:
  DeviationCopyTest()
      : model(ModelBuilder()
                  .Component("A", {"in", "out"})
                  .Event("A", "stuck")
                  .Output("A", "Late-out", "AND(stuck, Late-in)")
                  .Build()) {
    component = model->FindComponent("A");
    source = component->GetCurrentImplementation().GetOutputDeviation("Late-out", DefaultState);
  }

  std::unique_ptr<Model> model;
  std::shared_ptr<Component> component;
  std::shared_ptr<OutputDeviation> source;
};

TEST_F(DeviationCopyTest, KeepsWhatDescribesIt) {
  source->description = "too late";
  source->severity = 3.0;
  source->SetSystemOutput(true);
  const auto copy = source->Copy(component);
  EXPECT_EQ(copy->description, "too late");
  EXPECT_EQ(copy->severity, 3.0);
  EXPECT_TRUE(copy->IsSystemOutput());
  EXPECT_EQ(copy->GetFullName(), source->GetFullName());
}

TEST_F(DeviationCopyTest, HasNewGatesOverTheSameEvents) {
  const auto copy = source->Copy(component);
  const auto sourceAnd = source->expression->GetChild(0);
  const auto copyAnd = copy->expression->GetChild(0);
  EXPECT_EQ(ShapeOf(copy->expression), ShapeOf(source->expression));
  EXPECT_NE(copyAnd->GetId(), sourceAnd->GetId());
  EXPECT_EQ(copyAnd->GetChild(0), sourceAnd->GetChild(0));
}

TEST_F(DeviationCopyTest, LeavesNoMemoOnTheSource) {
  source->Copy(component);
  EXPECT_EQ(source->expression->clone, nullptr);
  EXPECT_EQ(source->expression->GetChild(0)->clone, nullptr);
}

TEST_F(DeviationCopyTest, OfTheSameComponentSharesTheInputRecords) {
  const auto copy = source->Copy(component);
  const auto& proxy =
      static_cast<const InputDeviationProxy&>(*copy->expression->GetChild(0)->GetChild(1));
  EXPECT_EQ(proxy.deviation,
            component->GetCurrentImplementation().inputDeviationRecords.at("Late-in"));
}

}  // namespace
}  // namespace FTS
