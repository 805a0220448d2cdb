#include <gmock/gmock.h>

#include <sstream>

#include "faulttree/FaultTreeNode.h"
#include "model/Line.h"
#include "model/Model.h"
#include "model/Perspective.h"
#include "model/Subsystem.h"
#include "support/CaseName.h"
#include "support/ModelBuilder.h"
#include "support/ProcessStateTest.h"
#include "support/TreeBuilder.h"

namespace FTS {
namespace {

struct MessagesCase {
  const char* name;
  const char* text;
  std::vector<std::string> messages;
};

class LineMessagesTest : public ProcessStateTest,
                         public ::testing::WithParamInterface<MessagesCase> {};

TEST_P(LineMessagesTest, AreThePartsOfTheName) {
  const auto model = ModelBuilder().Build();
  const auto subsystem = std::make_shared<Subsystem>(model.get());
  EXPECT_EQ(Line(GetParam().text, subsystem, model.get()).messages, GetParam().messages);
}

INSTANTIATE_TEST_SUITE_P(Names, LineMessagesTest,
                         ::testing::Values(MessagesCase{"Two", "m1,m2", {"m1", "m2"}},
                                           MessagesCase{"EmptyLast", "m1,m2,", {"m1", "m2"}},
                                           MessagesCase{"EmptyMiddle", "m1,,m2", {"m1", "", "m2"}},
                                           MessagesCase{"One", "m1", {"m1"}},
                                           MessagesCase{"None", "", {}}),
                         CaseName);

class LineTest : public ProcessStateTest {
 protected:
  LineTest() {
    LineText text;
    text.name = "m1,m2";
    text.connections = {{"A.out", "OUTPUTPORT"}, {"Late-B.in", "AND(A.out, DEFAULT)"}};
    text.directed = true;
    text.defaultOperator = LineOperator::AND;
    model = ModelBuilder().Component("A", {"out"}).Component("B", {"in"}).Line(text).Build();
    root = model->perspectives.at("DEFAULT")->rootSubsystem;
    line = root->lines.at(0);
    line->description = "a cable";
  }

  std::unique_ptr<Model> model;
  std::shared_ptr<Subsystem> root;
  std::shared_ptr<Line> line;
};

TEST_F(LineTest, CloneComesWithoutConnections) {
  const auto copy = line->Clone(root);
  EXPECT_EQ(copy->GetName(), "m1,m2");
  EXPECT_EQ(copy->description, "a cable");
  EXPECT_EQ(copy->defaultOperator, LineOperator::AND);
  EXPECT_TRUE(copy->directed);
  EXPECT_TRUE(copy->connections.empty());
}

TEST_F(LineTest, CopiedExpressionsAreClones) {
  const auto copy = line->Clone(root);
  line->CopyExpressions(*copy);
  ASSERT_EQ(copy->connections.size(), 2U);
  const auto& own = copy->connections.at("Late-B.in");
  const auto& source = line->connections.at("Late-B.in");
  EXPECT_NE(own, source);
  EXPECT_EQ(ShapeOf(own), ShapeOf(source));
  EXPECT_EQ(source->clone, nullptr);
}

TEST_F(LineTest, CopiedExpressionsTakeThePlaceOfOwnOnes) {
  const auto copy = line->Clone(root);
  copy->AddConnection("old", line->connections.at("A.out"));
  line->messages = {"m3"};
  line->CopyExpressions(*copy);
  EXPECT_FALSE(copy->connections.contains("old"));
  EXPECT_THAT(copy->messages, ::testing::ElementsAre("m3"));
}

TEST_F(LineTest, PrintShowsConnections) {
  std::ostringstream output;
  line->connections.at("A.out")->Print(output, 4);
  std::ostringstream gate;
  line->connections.at("Late-B.in")->Print(gate, 4);
  std::ostringstream text;
  line->Print(text, 1);
  EXPECT_EQ(text.str(),
            " --------------------------------------------------\n"
            " LINE: m1,m2\n"
            " numConnections: 2\n"
            " numMessages: 2\n"
            " Directed: Yes\n"
            " Default: AND\n"
            " Connections:\n"
            " Port: A.out\n" +
                output.str() + " Port: Late-B.in\n" + gate.str() + " END LINE\n");
}

}  // namespace
}  // namespace FTS
