#include <gtest/gtest.h>

#include "analysis/ModuleEvent.h"
#include "analysis/Prime.h"
#include "faulttree/FaultTreeGate.h"
#include "support/ProcessStateTest.h"

namespace FTS {
namespace {

class ModuleEventTest : public ProcessStateTest {
 protected:
  std::shared_ptr<FaultTreeGate> gate = MakeGate(NodeType::Or, "pumps", nullptr);
};

TEST_F(ModuleEventTest, EventIsNamedAndNumberedAfterItsGate) {
  const ModuleEvent module(*gate);
  EXPECT_EQ(module.name, "MOD: pumps");
  EXPECT_EQ(module.GetId(), gate->GetId());
  EXPECT_EQ(module.type, NodeType::Module);
  EXPECT_EQ(module.gate, gate.get());
  EXPECT_FALSE(module.hasNestedModules);
}

TEST_F(ModuleEventTest, EachModuleTakesTwoPrimesAndKeepsTheSecond) {
  const ModuleEvent first(*gate);
  const ModuleEvent second(*gate);
  EXPECT_EQ(first.prime, 5.0);
  EXPECT_EQ(second.prime, 11.0);
  EXPECT_EQ(Prime::Instance().Next(), 13.0);
}

TEST_F(ModuleEventTest, ModuleWithoutCutSetsIsNotMadeOfNormalEvents) {
  EXPECT_FALSE(ModuleEvent(*gate).IsMadeOfNormalEvents());
}

}  // namespace
}  // namespace FTS
