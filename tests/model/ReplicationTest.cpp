#include <gmock/gmock.h>

#include <sstream>

#include "app/Config.h"
#include "faulttree/CommonCauseNodes.h"
#include "faulttree/DeviationProxies.h"
#include "faulttree/GotoNode.h"
#include "model/CCF.h"
#include "model/Component.h"
#include "model/Deviation.h"
#include "model/Implementation.h"
#include "model/Line.h"
#include "model/Model.h"
#include "model/Perspective.h"
#include "model/Port.h"
#include "model/Subsystem.h"
#include "support/CaseName.h"
#include "support/ModelBuilder.h"
#include "support/ProcessStateTest.h"
#include "support/ThrownMessage.h"
#include "support/TreeBuilder.h"

namespace FTS {
namespace {

using ::testing::ElementsAre;

std::string Optimise(Component& component, std::string selection) {
  component.CreateOptimisedImplementation(selection);
  return selection;
}

/// Source, X with two implementations, and Sink in a row; the hazard is what leaves Sink.
ModelBuilder Row() {
  ModelBuilder builder;
  builder.CommonCause("fire");
  builder.Component("Source", {"out"}).Event("Source", "empty");
  builder.Output("Source", "Late-out", "empty");
  builder.Component("X", {"in", "out"}).Event("X", "stuck");
  builder.PotentialCommonCause("X", "heat", "fire");
  builder.Output("X", "Late-out", "OR(stuck, heat, Late-in)").Output("X", "Early-out", "stuck");
  builder.Component("Sink", {"in", "out"}).Output("Sink", "Late-out", "Late-in");
  builder.Line("Source.out", "X.in").Line("X.out", "Sink.in");
  builder.Hazard("Loss", "Late-Sink.out");
  builder.Alternative("X", "cheap").Event("X", "worn").Output("X", "Late-out", "worn");
  return builder;
}

class ReplicationTest : public ProcessStateTest {
 protected:
  ReplicationTest() : model(Row().Build()), component(model->FindComponent("X")) {}

  Implementation& Result() const { return component->GetCurrentImplementation(); }
  Component& Replica(int number) const {
    return *Result().subsystem->components.at("X_COPY_" + std::to_string(number));
  }
  std::vector<std::string> LineNames() const {
    std::vector<std::string> names;
    for (const auto& line : Result().subsystem->lines) names.push_back(line->name);
    return names;
  }
  const Line& LineAt(std::size_t index) const { return *Result().subsystem->lines.at(index); }

  std::unique_ptr<Model> model;
  std::shared_ptr<Component> component;
};

TEST_F(ReplicationTest, NothingSelectedChangesNothingButTheSelection) {
  std::string selection = "000";
  EXPECT_FALSE(component->CreateOptimisedImplementation(selection));
  EXPECT_EQ(selection, "");
  EXPECT_EQ(component->implementations.size(), 2U);
  EXPECT_EQ(Result().name, "impl");
}

TEST_F(ReplicationTest, ZerosAreRemovedFromTheSelection) {
  EXPECT_EQ(Optimise(*component, "01020"), "12");
}

TEST_F(ReplicationTest, ResultIsANewCurrentImplementation) {
  Optimise(*component, "12");
  EXPECT_EQ(component->implementations.size(), 3U);
  EXPECT_EQ(Result().name, "OptimisedImplementation");
  EXPECT_EQ(Result().description, "Automatically generated to store optimised implementations");
  EXPECT_EQ(Result().hBlockType, HBlockType::REFINED);
  EXPECT_EQ(Result().cost, 0.0);
  EXPECT_EQ(Result().weight, 0.0);
}

TEST_F(ReplicationTest, EachDigitIsAReplica) {
  Optimise(*component, "12");
  EXPECT_EQ(Result().subsystem->components.size(), 2U);
  EXPECT_EQ(Replica(1).GetCurrentImplementation().name, "impl");
  EXPECT_EQ(Replica(2).GetCurrentImplementation().name, "cheap");
  EXPECT_EQ(Replica(2).GetFullNameText(), "DEFAULT::X.X_COPY_2");
  EXPECT_EQ(model->components.at("DEFAULT::X.X_COPY_2").get(), &Replica(2));
  EXPECT_EQ(Replica(1).ports.size(), 2U);
}

TEST_F(ReplicationTest, LinesAreNamedByWhatIsLeftOfAWord) {
  Optimise(*component, "12");
  EXPECT_THAT(LineNames(), ElementsAre("InLine", "utline", "tline"));
}

TEST_F(ReplicationTest, LineNamesRunOut) {
  ModelBuilder builder;
  builder.Component("X", {"out"}).Event("X", "stuck");
  for (const char* failureClass : {"A", "B", "C", "D", "E", "F", "G", "H"}) {
    builder.Output("X", std::string(failureClass) + "-out", "stuck");
  }
  model = builder.Build();
  component = model->FindComponent("X");
  Optimise(*component, "1");
  EXPECT_THAT(LineNames(),
              ElementsAre("InLine", "utline", "tline", "line", "ine", "ne", "e", "", ""));
}

TEST_F(ReplicationTest, OutputsOfTheReplicasAreJoined) {
  Optimise(*component, "12");
  // The classes are met in the order of names.
  const Line& line = LineAt(2);
  EXPECT_EQ(line.description, "AutoGen Line for redundancy");
  EXPECT_EQ(line.defaultOperator, LineOperator::AND);
  EXPECT_TRUE(line.directed);
  ASSERT_EQ(line.connections.size(), 1U);
  EXPECT_EQ(line.connections.begin()->first, "Late-out");
  EXPECT_EQ(line.connections.begin()->second->name, "Late-out");
  EXPECT_EQ(ShapeOf(line.connections.begin()->second),
            "AND(Late-DEFAULT::X.X_COPY_1.out=OUT(), Late-DEFAULT::X.X_COPY_2.out=OUT())");
}

struct AssignmentCase {
  const char* name;
  int value;
  NodeType type;
};

class AssignmentTest : public ProcessStateTest,
                       public ::testing::WithParamInterface<AssignmentCase> {};

TEST_P(AssignmentTest, DecidesWhetherOneReplicaIsEnough) {
  const auto model = Row().Build();
  model->failureClassAssignments["Late"] = GetParam().value;
  const auto component = model->FindComponent("X");
  Optimise(*component, "12");
  const auto& line = component->GetSubsystem()->lines.at(2);
  EXPECT_EQ(line->connections.at("Late-out")->type, GetParam().type);
}

INSTANTIATE_TEST_SUITE_P(Values, AssignmentTest,
                         ::testing::Values(AssignmentCase{"Zero", 0, NodeType::And},
                                           AssignmentCase{"One", 1, NodeType::Or},
                                           AssignmentCase{"Two", 2, NodeType::And},
                                           AssignmentCase{"Three", 3, NodeType::Or}),
                         CaseName);

TEST_F(ReplicationTest, InputsOfTheReplicasAreThoseOfTheComponent) {
  Optimise(*component, "11");
  const Line& line = LineAt(0);
  EXPECT_EQ(line.description, "AutoGen Line for redundancy");
  EXPECT_EQ(line.defaultOperator, LineOperator::OR);
  EXPECT_TRUE(line.directed);
  ASSERT_EQ(line.connections.size(), 2U);
  EXPECT_TRUE(line.connections.contains("Late-X_COPY_1.in"));
  EXPECT_EQ(ShapeOf(line.connections.at("Late-X_COPY_2.in")), "Late-DEFAULT::X.in=OUT()");
}

TEST_F(ReplicationTest, EventsOfReplicasAreNewOnesAndSharedWithinAReplica) {
  Optimise(*component, "11");
  const auto& first = Replica(1).GetCurrentImplementation();
  const auto& second = Replica(2).GetCurrentImplementation();
  const auto& own = first.basicEvents.at("stuck");
  EXPECT_NE(own->prime, second.basicEvents.at("stuck")->prime);
  EXPECT_NE(own->prime, component->implementations[0]->basicEvents.at("stuck")->prime);
  EXPECT_EQ(own->owner.lock().get(), &Replica(1));
  for (const char* name : {"Late-out", "Early-out"}) {
    const auto deviation = first.GetOutputDeviation(name, DefaultState);
    EXPECT_EQ(deviation->expression->GetChild(0), own) << name;
  }
}

TEST_F(ReplicationTest, CommonCausesStayCommon) {
  Optimise(*component, "11");
  const auto fire = model->perspectives.at("DEFAULT")->FindCCF("fire");
  for (const int number : {1, 2}) {
    const auto& proxy = Replica(number).GetCurrentImplementation().ccfNodes.at("heat");
    EXPECT_EQ(proxy->actual, fire);
    EXPECT_EQ(proxy->GetChild(0), fire);
    EXPECT_EQ(proxy->owner.lock().get(), &Replica(number));
  }
  EXPECT_EQ(fire->clone, nullptr);
}

TEST_F(ReplicationTest, InputProxiesAreThoseOfTheReplica) {
  Optimise(*component, "1");
  const auto& implementation = Replica(1).GetCurrentImplementation();
  const auto& record = implementation.inputDeviationRecords.at("Late-in");
  EXPECT_EQ(record->GetFullName(), "Late-DEFAULT::X.X_COPY_1.in");
  EXPECT_EQ(implementation.inputDeviations.at("Late-in")->deviation, record);
  const auto logic = implementation.GetOutputDeviation("Late-out", DefaultState)->expression;
  const auto& proxy = static_cast<const InputDeviationProxy&>(*logic->GetChild(2));
  EXPECT_EQ(proxy.deviation, record);
  EXPECT_EQ(proxy.name, record->GetFullName());
  EXPECT_EQ(logic->name, "Late-DEFAULT::X.X_COPY_1.out");
}

TEST_F(ReplicationTest, SystemOutputMovesToTheComponent) {
  component->implementations[0]
      ->GetOutputDeviation("Late-out", DefaultState)
      ->SetSystemOutput(true);
  Optimise(*component, "11");
  const auto own = Result().GetOutputDeviation("Late-out", DefaultState);
  ASSERT_NE(own, nullptr);
  EXPECT_TRUE(own->IsSystemOutput());
  EXPECT_EQ(own->expression, nullptr);
  EXPECT_EQ(own->GetFullName(), "Late-DEFAULT::X.out");
  for (const int number : {1, 2}) {
    EXPECT_FALSE(Replica(number)
                     .GetCurrentImplementation()
                     .GetOutputDeviation("Late-out", DefaultState)
                     ->IsSystemOutput());
  }
  EXPECT_TRUE(component->implementations[0]
                  ->GetOutputDeviation("Late-out", DefaultState)
                  ->IsSystemOutput());
}

TEST_F(ReplicationTest, MessagesLeadToThePortsOfTheReplica) {
  component->inputMessages["speed"] = {component->FindPort("in")};
  component->outputMessages["force"] = {component->FindPort("out")};
  Optimise(*component, "1");
  EXPECT_EQ(Replica(1).FindInputPort("speed"), Replica(1).FindPort("in"));
  EXPECT_EQ(Replica(1).FindOutputPort("force"), Replica(1).FindPort("out"));
}

struct SelectionCase {
  const char* name;
  const char* selection;
  const char* message;
};

class SelectionMistakeTest : public ProcessStateTest,
                             public ::testing::WithParamInterface<SelectionCase> {};

TEST_P(SelectionMistakeTest, ChangesNothing) {
  const auto model = Row().Build();
  const auto component = model->FindComponent("X");
  const std::size_t before = model->components.size();
  EXPECT_EQ(ThrownMessage([&] { Optimise(*component, GetParam().selection); }), GetParam().message);
  EXPECT_EQ(component->implementations.size(), 2U);
  EXPECT_EQ(model->components.size(), before);
}

INSTANTIATE_TEST_SUITE_P(
    Digits, SelectionMistakeTest,
    ::testing::Values(
        SelectionCase{"TooLarge", "13", "No implementation at position 3 of component: DEFAULT::X"},
        SelectionCase{"NoDigit", "1x", "No implementation at position x of component: DEFAULT::X"}),
    CaseName);

TEST_F(ReplicationTest, SelectionIsWrittenByNames) {
  std::ostringstream text;
  component->WriteImplementations("0120", text);
  EXPECT_EQ(text.str(), "DEFAULT::X: impl, cheap");
}

TEST_F(ReplicationTest, NamesThatLeadInsideAreRebased) {
  LineText inner;
  inner.inside = "X";
  inner.connections = {{"out", "OR(Inner.out, Late-Inner.out)"}};
  model = ModelBuilder()
              .Component("X", {"out"})
              .Component("X.Inner", {"out"})
              .Event("X.Inner", "stuck")
              .Output("X.Inner", "Late-out",
                      "OR(GOTO(Late-DEFAULT::X.out), GOTO(Late-X.Inner.out), "
                      "GOTO(Late-DEFAULT::Xa.out), GOTO(label))")
              .Line(inner)
              .Build();
  component = model->FindComponent("X");
  Optimise(*component, "1");
  EXPECT_EQ(ShapeOf(Replica(1).GetSubsystem()->lines.at(0)->connections.at("out")),
            "OR(DEFAULT::X.X_COPY_1.Inner.out=OUT(), Late-DEFAULT::X.X_COPY_1.Inner.out=OUT())");
  const auto copy = model->FindComponent("X.X_COPY_1.Inner");
  EXPECT_EQ(ShapeOf(copy->GetCurrentImplementation()
                        .GetOutputDeviation("Late-out", DefaultState)
                        ->expression),
            "OR(Late-DEFAULT::X.X_COPY_1.out=GOTO(), Late-DEFAULT::X.X_COPY_1.Inner.out=GOTO(), "
            "Late-DEFAULT::Xa.out=GOTO(), label=GOTO())");
}

// What the redundant model's tree is.

class RedundantTreeTest : public ProcessStateTest {
 protected:
  /// The trees of the model when X consists of the selected replicas.
  static std::string TreesOf(Model& model, const std::string& selection) {
    Optimise(*model.FindComponent("X"), selection);
    Config::Instance().runSilent = true;
    model.Synthesise();
    return TreesText(model);
  }
};

TEST_F(RedundantTreeTest, TakesAllReplicas) {
  const auto model = Row().Build();
  EXPECT_EQ(TreesOf(*model, "12"), "Loss=OUT(AND(OR(stuck, PCCF(fire), empty), worn))\n");
}

TEST_F(RedundantTreeTest, OneReplicaIsAsNone) {
  const auto model = Row().Build();
  EXPECT_EQ(TreesOf(*model, "1"), "Loss=OUT(OR(stuck, PCCF(fire), empty))\n");
}

TEST_F(RedundantTreeTest, SystemOutputIsThatOfTheComponent) {
  const auto model = ModelBuilder()
                         .Component("X", {"out"})
                         .Event("X", "stuck")
                         .SystemOutput("X", "Late-out", "stuck")
                         .Build();
  EXPECT_EQ(TreesOf(*model, "11"), "Late-DEFAULT::X.out=AND(stuck, stuck)\n");
}

TEST_F(RedundantTreeTest, GoesThroughRefinedReplicas) {
  LineText in;
  in.inside = "X";
  in.directed = true;
  in.connections = {{"in", "OUTPUTPORT"}, {"Inner.in", "DEFAULT"}};
  LineText out = in;
  out.connections = {{"Inner.out", "OUTPUTPORT"}, {"out", "DEFAULT"}};
  const auto model = ModelBuilder()
                         .Component("Source", {"out"})
                         .Event("Source", "empty")
                         .Output("Source", "Late-out", "empty")
                         .Component("X", {"in", "out"})
                         .Component("X.Inner", {"in", "out"})
                         .Event("X.Inner", "stuck")
                         .Output("X.Inner", "Late-out", "OR(stuck, Late-in)")
                         .Line(in)
                         .Line(out)
                         .Line("Source.out", "X.in")
                         .Hazard("Loss", "Late-X.out")
                         .Build();
  EXPECT_EQ(TreesOf(*model, "11"), "Loss=OUT(AND(OR(stuck, empty), OR(stuck, empty)))\n");
}

TEST_F(RedundantTreeTest, GoesThroughPropagatingReplicas) {
  const auto model = ModelBuilder()
                         .Component("Source", {"out"})
                         .Event("Source", "empty")
                         .Output("Source", "Late-out", "empty")
                         .Component("X", {"in", "out"})
                         .Block("X", HBlockType::PROPAGATOR)
                         .Line("Source.out", "X.in")
                         .Hazard("Loss", "Late-X.out")
                         .Build();
  EXPECT_EQ(TreesOf(*model, "11"), "Loss=OUT(empty)\n");
}

TEST_F(RedundantTreeTest, HostOfAnAllocationFailsWithAllReplicas) {
  const auto model = ModelBuilder()
                         .Component("X", {})
                         .Event("X", "dead")
                         .Export("X", "Loss-power", "dead")
                         .Component("Task", {"out"})
                         .Allocate("Task", "X")
                         .Output("Task", "Late-out", "ALLOC(Loss-power)")
                         .Hazard("Loss", "Late-Task.out")
                         .Build();
  EXPECT_EQ(TreesOf(*model, "11"), "Loss=OUT(AND(dead, dead))\n");
}

}  // namespace
}  // namespace FTS
