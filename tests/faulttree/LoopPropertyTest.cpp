#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>
#include <vector>

#include "analysis/FaultTree.h"
#include "app/DiagnosticLog.h"
#include "faulttree/CircleNode.h"
#include "faulttree/RefinementPasses.h"
#include "model/Model.h"
#include "support/ProcessStateTest.h"
#include "support/RandomGraph.h"

namespace FTS {
namespace {

/// The search for loops done word by word, along every path: what the product's walk, which enters
/// shared parts once, must agree with. Works on names, for graphs whose nodes are named uniquely.
class PlainLoops {
 public:
  struct Circle {
    std::vector<bool> loopChildren;
    bool entered = false;
    std::string enclosing;  // Empty: none.
  };

  void FindCircles(const FaultTreeNode& node) {
    if (onPath.contains(node.name)) {
      circles[node.name].loopChildren.resize(static_cast<std::size_t>(node.GetChildCount()));
      open.insert(node.name);
      return;
    }
    onPath.insert(node.name);
    for (int i = 0; i < node.GetChildCount(); ++i) {
      FindCircles(*node.GetChild(i));
      if (circles.contains(node.name) && open.erase(node.name) > 0) {
        circles[node.name].loopChildren[static_cast<std::size_t>(i)] = true;
      }
    }
    onPath.erase(node.name);
  }

  void DetectCrazyLoops(const FaultTreeNode& node, const std::string& current) {
    if (!onPath.insert(node.name).second) return;
    const auto own = circles.find(node.name);
    if (own != circles.end()) Judge(node.name, own->second, current);
    for (int i = 0; i < node.GetChildCount(); ++i) {
      const bool inLoop =
          own != circles.end() && own->second.loopChildren[static_cast<std::size_t>(i)];
      DetectCrazyLoops(*node.GetChild(i), inLoop ? node.name : current);
    }
    onPath.erase(node.name);
  }

  static void CutCircles(FaultTreeNode& node) {
    node.visited = true;
    for (int i = 0; i < node.GetChildCount(); ++i) {
      const FaultTreeNode::Pointer child = node.GetChild(i);
      if (child->visited) {
        node.ReplaceChild(i, child->circle);
      } else {
        CutCircles(*child);
      }
    }
    node.visited = false;
  }

  std::map<std::string, Circle> circles;
  std::set<std::string> crazy;

 private:
  void Judge(const std::string& name, Circle& own, const std::string& current) {
    if (!own.entered) {
      own.entered = true;
      own.enclosing = current;
      return;
    }
    const bool fine = own.enclosing.empty()
                          ? current.empty() || current == name
                          : !current.empty() && (current == name || current == own.enclosing);
    if (!fine) crazy.insert(name);
  }

  std::set<std::string> onPath;
  std::set<std::string> open;
};

std::string Bits(const std::vector<bool>& bits) {
  std::string text;
  for (const bool bit : bits) text += bit ? '1' : '0';
  return text;
}

std::string CirclesOf(FaultTreeNode& root) {
  std::map<int, FaultTreeNode*> nodes;
  root.CollectNodes(nodes);
  std::map<std::string, std::string> byName;
  for (const auto& [id, node] : nodes) {
    if (node->circle) byName[node->name] = Bits(node->circle->loopChildren);
  }
  std::string text;
  for (const auto& [name, bits] : byName) text += name + ":" + bits + " ";
  return text;
}

std::string CirclesOf(const PlainLoops& loops) {
  std::string text;
  for (const auto& [name, circle] : loops.circles) {
    text += name + ":" + Bits(circle.loopChildren) + " ";
  }
  return text;
}

/// The nodes at which the log's errors begin.
std::set<std::string> ReportedNodes() {
  std::set<std::string> names;
  for (const std::string& error : DiagnosticLog::Instance().Errors()) {
    const std::size_t begin = error.find("\n\t") + 2;
    names.insert(error.substr(begin, error.find('\n', begin) - begin));
  }
  return names;
}

/// Ends the cycles of a graph that a test has made, so that its nodes can go.
void Release(FaultTreeNode& root) {
  std::map<int, FaultTreeNode*> nodes;
  root.CollectNodes(nodes);
  std::vector<FaultTreeNode::Pointer> kept;
  for (const auto& [id, node] : nodes) kept.push_back(node->shared_from_this());
  for (const auto& node : kept) node->ClearChildren();
}

class LoopPropertyTest : public ProcessStateTest, public ::testing::WithParamInterface<unsigned> {};

TEST_P(LoopPropertyTest, AgreesWithTheWalkAlongEveryPath) {
  for (unsigned round = 0; round < 300; ++round) {
    const unsigned seed = GetParam() * 1000 + round;
    DiagnosticLog::Release();
    Model model(0, "m.xml", "m", "", 1.0F, 1.0);
    RandomGraph graph(seed, &model);
    const auto root =
        graph.Cyclic(3 + static_cast<int>(round % 5), 3 + static_cast<int>(round % 11));
    const std::string before = TextOf(*root);
    PlainLoops plain;
    plain.FindCircles(*root);
    plain.DetectCrazyLoops(*root, "");

    const auto tree = std::make_shared<FaultTree>(root);
    FindCircles(model, *tree);
    ASSERT_EQ(tree->hasLoops, !plain.circles.empty()) << "seed " << seed << ", of " << before;
    ASSERT_EQ(CirclesOf(*tree->root), CirclesOf(plain)) << "seed " << seed << ", of " << before;
    DetectCrazyLoops(*tree);
    ASSERT_EQ(tree->unbreakable, !plain.crazy.empty()) << "seed " << seed << ", of " << before;
    if (DiagnosticLog::Instance().ReportedErrors() < DiagnosticLog::MaxStored) {
      ASSERT_EQ(ReportedNodes(), plain.crazy) << "seed " << seed << ", of " << before;
    }
    if (tree->root != root) Release(*tree->root);
    model.basicEvents.clear();
  }
}

TEST_P(LoopPropertyTest, CutsTheEdgesThatTheWalkAlongEveryPathCuts) {
  for (unsigned round = 0; round < 300; ++round) {
    const unsigned seed = GetParam() * 1000 + round;
    Model model(0, "m.xml", "m", "", 1.0F, 1.0);
    RandomGraph graph(seed, &model);
    RandomGraph sameGraph(seed, &model);
    const auto root =
        graph.Cyclic(3 + static_cast<int>(round % 5), 3 + static_cast<int>(round % 11));
    const auto plainRoot =
        sameGraph.Cyclic(3 + static_cast<int>(round % 5), 3 + static_cast<int>(round % 11));
    const std::string before = TextOf(*root);
    const auto tree = std::make_shared<FaultTree>(root);
    const auto plainTree = std::make_shared<FaultTree>(plainRoot);
    FindCircles(model, *tree);
    FindCircles(model, *plainTree);
    CutCircles(model, *tree->root);
    PlainLoops::CutCircles(*plainTree->root);
    ASSERT_EQ(TextOf(*tree->root), TextOf(*plainTree->root))
        << "seed " << seed << ", of " << before;
    model.basicEvents.clear();
  }
}

INSTANTIATE_TEST_SUITE_P(Seeds, LoopPropertyTest, ::testing::Range(0U, 5U));

}  // namespace
}  // namespace FTS
