#include <sstream>
#include <utility>

#include "model/Hazard.h"
#include "model/IFailureCause.h"
#include "model/Model.h"
#include "support/CaseName.h"
#include "support/ModelBuilder.h"
#include "support/ProcessStateTest.h"
#include "support/TreeBuilder.h"

namespace FTS {
namespace {

struct MergeCase {
  const char* name;
  std::vector<std::string> causes;
  const char* shape;
};

class FailureCauseTest : public ProcessStateTest, public ::testing::WithParamInterface<MergeCase> {
 protected:
  FailureCauseTest() : model(ModelBuilder().Build()), builder(model.get()) {}

  void AddCause(Hazard& hazard, const std::string& logic) {
    hazard.AddCause(std::make_unique<Cause>("a cause", model.get(), 1.0, builder.Tree(logic)),
                    model.get());
  }

  std::unique_ptr<Model> model;
  TreeBuilder builder;
};

TEST_P(FailureCauseTest, CausesBecomeOneFlatOr) {
  Hazard hazard("Loss", model.get());
  for (const std::string& cause : GetParam().causes) AddCause(hazard, cause);
  EXPECT_EQ(ShapeOf(hazard.expression), GetParam().shape);
  EXPECT_EQ(hazard.expression->name, "Loss");
  EXPECT_EQ(hazard.causes.size(), GetParam().causes.size());
}

INSTANTIATE_TEST_SUITE_P(
    Causes, FailureCauseTest,
    ::testing::Values(MergeCase{"TwoOrs", {"OR(A, B)", "OR(C, D)"}, "OR(A, B, C, D)"},
                      MergeCase{"OneEvent", {"A"}, "OR(A)"},
                      MergeCase{"OneAnd", {"AND(A, B)"}, "OR(AND(A, B))"},
                      MergeCase{"EventAndOr", {"A", "OR(B, C)"}, "OR(A, B, C)"},
                      MergeCase{"Repeated", {"A", "A"}, "OR(A, A)"}),
    CaseName);

TEST_F(FailureCauseTest, ExpressionGivenWithoutCausesIsJoinedToTheFirstCause) {
  Hazard hazard("Loss", model.get());
  hazard.expression = builder.Tree("AND(A, B)");
  AddCause(hazard, "OR(C, D)");
  EXPECT_EQ(ShapeOf(hazard.expression), "OR(C, D, AND(A, B))");
}

TEST_F(FailureCauseTest, TwoOfNoOrGetANamelessOne) {
  Hazard hazard("Loss", model.get());
  hazard.expression = builder.Tree("AND(A, B)");
  AddCause(hazard, "C");
  EXPECT_EQ(ShapeOf(hazard.expression), "OR(AND(A, B), C)");
  EXPECT_EQ(hazard.expression->name, "");
}

TEST_F(FailureCauseTest, LogicOfACauseIsNotChangedByWhatIsAdded) {
  Hazard hazard("Loss", model.get());
  AddCause(hazard, "OR(A, B)");
  AddCause(hazard, "C");
  EXPECT_EQ(ShapeOf(hazard.causes[0]->expression), "OR(A, B)");
}

TEST_F(FailureCauseTest, OrOfACauseIsNotChangedByWhatStoodBefore) {
  Hazard hazard("Loss", model.get());
  hazard.expression = builder.Tree("AND(A, B)");
  AddCause(hazard, "OR(C, D)");
  EXPECT_EQ(ShapeOf(hazard.causes[0]->expression), "OR(C, D)");
}

TEST_F(FailureCauseTest, CausePrintsItsProbability) {
  std::ostringstream text;
  Cause("wear", model.get(), 0.25, nullptr).Print(text, 2);
  EXPECT_EQ(text.str(), "  Cause: wear (p=0.25)\n");
}

}  // namespace
}  // namespace FTS
