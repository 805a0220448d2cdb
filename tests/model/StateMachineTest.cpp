#include <gmock/gmock.h>

#include "model/Model.h"
#include "model/StateMachine.h"
#include "support/ModelBuilder.h"
#include "support/ProcessStateTest.h"

namespace FTS {
namespace {

class StateMachineTest : public ProcessStateTest {
 protected:
  StateMachineTest() : model(ModelBuilder().Build()), machine(model->stateMachine) {
    up = AddState("up");
    up->isStart = true;
    machine->startState = up;
    down = AddState("down");
    down->isFail = true;
    down->failName = "System down";
    machine->failStates.push_back(down);
    up->transitions.push_back(std::make_shared<Transition>("break", "Omission-A.out", "down", up));
  }

  std::shared_ptr<State> AddState(const std::string& name) {
    auto state = std::make_shared<State>(name, machine);
    machine->AddState(state);
    return state;
  }

  std::unique_ptr<Model> model;
  std::shared_ptr<StateMachine> machine;
  std::shared_ptr<State> up;
  std::shared_ptr<State> down;
};

TEST_F(StateMachineTest, StateOfTheSameNameTakesThePlace) {
  const auto other = AddState("up");
  EXPECT_EQ(machine->states.at("up"), other);
  EXPECT_EQ(machine->states.size(), 3U);
}

TEST_F(StateMachineTest, CloneHasTheSameStates) {
  const auto target = ModelBuilder().Build();
  const auto copy = machine->Clone(target.get());
  ASSERT_EQ(copy->states.size(), 3U);
  EXPECT_EQ(copy->model, target.get());
  EXPECT_NE(copy->states.at("up"), up);
  EXPECT_EQ(copy->startState, copy->states.at("up"));
  EXPECT_TRUE(copy->startState->isStart);
  EXPECT_THAT(copy->failStates, ::testing::ElementsAre(copy->states.at("down")));
  EXPECT_TRUE(copy->failStates[0]->isFail);
  EXPECT_EQ(copy->failStates[0]->failName, "System down");
  EXPECT_EQ(copy->failStates[0]->machine.lock(), copy);
}

TEST_F(StateMachineTest, CloneIsUnlinked) {
  up->transitions[0]->destination = down;
  down->incoming.push_back(up->transitions[0]);
  const auto copy = machine->Clone(model.get());
  const auto& transition = copy->states.at("up")->transitions.at(0);
  EXPECT_EQ(transition->name, "break");
  EXPECT_EQ(transition->cause, "Omission-A.out");
  EXPECT_EQ(transition->destinationName, "down");
  EXPECT_EQ(transition->owner.lock(), copy->states.at("up"));
  EXPECT_EQ(transition->destination, nullptr);
  EXPECT_TRUE(copy->states.at("down")->incoming.empty());
}

TEST_F(StateMachineTest, CloneKeepsAFailedStateWhoseNameIsTaken) {
  AddState("down");
  const auto copy = machine->Clone(model.get());
  EXPECT_EQ(copy->failStates.at(0)->failName, "System down");
  EXPECT_NE(copy->failStates[0], copy->states.at("down"));
}

TEST_F(StateMachineTest, ClearedModelHoldsNoLinks) {
  up->transitions[0]->destination = down;
  down->incoming.push_back(up->transitions[0]);
  model->ClearSynthesis();
  EXPECT_EQ(up->transitions[0]->destination, nullptr);
  EXPECT_TRUE(down->incoming.empty());
}

}  // namespace
}  // namespace FTS
