#include <gtest/gtest.h>

#include <set>
#include <vector>

#include "faulttree/RefinementPasses.h"
#include "model/Model.h"
#include "support/ProcessStateTest.h"
#include "support/RandomGraph.h"

namespace FTS {
namespace {

/// Lifting done word by word: every gate takes in what it can as soon as it comes to it.
class PlainContraction {
 public:
  void Run(FaultTreeNode& node) {
    if (!done.insert(node.GetId()).second) return;
    if (node.IsGate()) Gate(node);
    if (node.IsProxy()) Proxy(node);
  }

 private:
  void Gate(FaultTreeNode& gate) {
    std::vector<FaultTreeNode::Pointer> removed;
    for (int i = 0; i < gate.GetChildCount(); ++i) {
      const FaultTreeNode::Pointer child = gate.GetChild(i);
      Run(*child);
      const bool empty = !child->IsEvent() && child->GetChildCount() == 0;
      if (empty || child->GetChildCount() == 1 || child->type == gate.type) {
        removed.push_back(child);
        for (int j = 0; j < child->GetChildCount(); ++j) {
          if (!gate.HasChild(*child->GetChild(j))) gate.AddChild(child->GetChild(j));
        }
      }
    }
    for (const auto& child : removed) gate.RemoveChild(*child);
  }

  void Proxy(FaultTreeNode& proxy) {
    if (proxy.GetChildCount() == 0) return;
    const FaultTreeNode::Pointer child = proxy.GetChild(0);
    Run(*child);
    if (child->GetChildCount() == 1) {
      proxy.AddChild(FaultTreeNode::Pointer(child->GetChild(0)));
    } else if (child->GetChildCount() == 0 && !child->IsEvent()) {
      proxy.ClearChildren();
      return;
    }
    const FaultTreeNode::Pointer below = proxy.GetChild(0);
    if (below->type == proxy.type) {
      proxy.AddChild(below->GetChildCount() ? FaultTreeNode::Pointer(below->GetChild(0)) : nullptr);
    }
  }

  std::set<int> done;
};

class ContractionPropertyTest : public ProcessStateTest,
                                public ::testing::WithParamInterface<unsigned> {};

TEST_P(ContractionPropertyTest, GivesTheTreeThatPlainLiftingGives) {
  for (unsigned round = 0; round < 200; ++round) {
    const unsigned seed = GetParam() * 1000 + round;
    Model model(0, "m.xml", "m", "", 1.0F, 1.0);
    RandomGraph plainGraph(seed, &model);
    RandomGraph graph(seed, &model);
    const auto expected = plainGraph.Acyclic(14);
    const auto actual = graph.Acyclic(14);
    const std::string before = TextOf(*actual);
    expected->CopyChildrenToState(ContractedState);
    actual->CopyChildrenToState(ContractedState);
    PlainContraction().Run(*expected);
    Contract(model, *actual);
    ASSERT_EQ(TextOf(*actual), TextOf(*expected)) << "seed " << seed << ", of " << before;
  }
}

TEST_P(ContractionPropertyTest, ChangesNothingTheSecondTime) {
  for (unsigned round = 0; round < 50; ++round) {
    const unsigned seed = GetParam() * 1000 + round;
    Model model(0, "m.xml", "m", "", 1.0F, 1.0);
    RandomGraph graph(seed, &model);
    const auto root = graph.Acyclic(14);
    root->CopyChildrenToState(ContractedState);
    Contract(model, *root);
    const std::string once = TextOf(*root);
    Contract(model, *root);
    ASSERT_EQ(TextOf(*root), once) << "seed " << seed;
  }
}

TEST_P(ContractionPropertyTest, LeavesTheTreeAsSynthesisedInItsOwnState) {
  for (unsigned round = 0; round < 50; ++round) {
    const unsigned seed = GetParam() * 1000 + round;
    Model model(0, "m.xml", "m", "", 1.0F, 1.0);
    RandomGraph graph(seed, &model);
    const auto root = graph.Acyclic(14);
    const std::string before = TextOf(*root);
    root->CopyChildrenToState(ContractedState);
    Contract(model, *root);
    root->SetCurrentState(DefaultState);
    ASSERT_EQ(TextOf(*root), before) << "seed " << seed;
  }
}

INSTANTIATE_TEST_SUITE_P(Seeds, ContractionPropertyTest, ::testing::Range(0U, 5U));

}  // namespace
}  // namespace FTS
