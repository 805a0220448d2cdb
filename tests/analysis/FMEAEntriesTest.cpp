#include <gmock/gmock.h>

#include "analysis/CutSet.h"
#include "analysis/CutSetList.h"
#include "analysis/FMEA.h"
#include "analysis/FaultTree.h"
#include "faulttree/FaultTreeGate.h"
#include "support/PartsModel.h"
#include "support/ProcessStateTest.h"
#include "support/TreeBuilder.h"

namespace FTS {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class FMEAEntriesTest : public ProcessStateTest {
 protected:
  FMEAEntriesTest() : gate(MakeGate(NodeType::Or, "G", &parts.model)) {
    gate->primeIndex = std::make_unique<CutSetIndex>();
  }

  /// Lists a cut set of the events in the gate's index.
  CutSet& List(const std::vector<std::string>& events) {
    cutSets.push_back(std::make_unique<CutSet>());
    for (const std::string& event : events) {
      builder.Tree(event);
      cutSets.back()->AddEvent(*builder.Event(event));
    }
    gate->primeIndex->Add(*cutSets.back());
    return *cutSets.back();
  }

  PartsModel parts;
  TreeBuilder builder{&parts.model};
  std::shared_ptr<FaultTree> tree = std::make_shared<FaultTree>(nullptr);
  FMEA fmea{parts.model};
  std::vector<std::unique_ptr<CutSet>> cutSets;
  std::shared_ptr<FaultTreeGate> gate;
};

TEST_F(FMEAEntriesTest, EventAloneInACutSetOfAGateHasADirectEffect) {
  List({"A"});
  List({"B", "C"});
  gate->AddToFMEA(fmea, tree);
  EXPECT_THAT(fmea.GetDirectEffects(*builder.Event("A")), ElementsAre(tree));
  EXPECT_THAT(fmea.GetFurtherEffects(*builder.Event("A")), IsEmpty());
  EXPECT_THAT(fmea.GetDirectEffects(*builder.Event("B")), IsEmpty());
  EXPECT_THAT(fmea.GetFurtherEffects(*builder.Event("C")), ElementsAre(tree));
}

TEST_F(FMEAEntriesTest, EventWhoseCutSetsHaveGoneHasNoEffect) {
  gate->primeIndex->Remove(List({"A"}));
  gate->AddToFMEA(fmea, tree);
  EXPECT_TRUE(fmea.directEffects.empty());
  EXPECT_TRUE(fmea.furtherEffects.empty());
}

TEST_F(FMEAEntriesTest, EventIsNoDirectCauseOnceItsOwnCutSetHasGone) {
  CutSet& alone = List({"A"});
  List({"A", "B"});
  gate->primeIndex->Remove(alone);
  gate->AddToFMEA(fmea, tree);
  EXPECT_THAT(fmea.GetDirectEffects(*builder.Event("A")), IsEmpty());
  EXPECT_THAT(fmea.GetFurtherEffects(*builder.Event("A")), ElementsAre(tree));
}

TEST_F(FMEAEntriesTest, GateWithoutAnIndexHasNoEffects) {
  gate->primeIndex.reset();
  gate->AddToFMEA(fmea, tree);
  EXPECT_TRUE(fmea.directEffects.empty());
}

TEST_F(FMEAEntriesTest, EventCausesDirectly) {
  builder.Tree("A");
  builder.Event("A")->AddToFMEA(fmea, tree);
  EXPECT_THAT(fmea.GetDirectEffects(*builder.Event("A")), ElementsAre(tree));
}

TEST_F(FMEAEntriesTest, ProxyHandsTheQuestionDown) {
  builder.Tree("PROXY(A)")->AddToFMEA(fmea, tree);
  builder.Tree("PROXY()")->AddToFMEA(fmea, tree);
  EXPECT_THAT(fmea.GetDirectEffects(*builder.Event("A")), ElementsAre(tree));
}

}  // namespace
}  // namespace FTS
