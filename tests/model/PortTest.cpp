#include <gmock/gmock.h>

#include <sstream>

#include "faulttree/DeviationProxies.h"
#include "faulttree/Gates.h"
#include "model/Component.h"
#include "model/Deviation.h"
#include "model/Implementation.h"
#include "model/Model.h"
#include "model/Perspective.h"
#include "model/Port.h"
#include "model/Subsystem.h"
#include "support/ModelBuilder.h"
#include "support/ProcessStateTest.h"
#include "support/TreeBuilder.h"

namespace FTS {
namespace {

class PortTest : public ProcessStateTest {
 protected:
  PortTest()
      : model(ModelBuilder()
                  .Component("A", {"in", "out"})
                  .Component("B", {"in", "out"})
                  .Event("A", "stuck")
                  .Output("A", "Late-out", "OR(stuck, Late-in)")
                  .Output("A", "Late-out", "stuck", "degraded")
                  .Line("A.out", "B.in")
                  .Build()) {
    const auto root = model->perspectives.at("DEFAULT")->rootSubsystem;
    root->BuildPortExpressions();
    root->Instantiate();
    in = model->FindPort("B.in");
    out = model->FindPort("A.out");
  }

  std::unique_ptr<Model> model;
  std::shared_ptr<Port> in;
  std::shared_ptr<Port> out;
};

TEST_F(PortTest, NameIsThatOfTheComponentAndItsOwn) {
  EXPECT_EQ(in->GetFullNameText(), "DEFAULT::B.in");
  EXPECT_EQ(in->GetLocalName(), "in");
}

TEST_F(PortTest, ExpressionIsMadeOncePerState) {
  const auto first = in->GetExternalExpression("Late", DefaultState);
  EXPECT_EQ(in->GetExternalExpression("Late", DefaultState), first);
  EXPECT_NE(in->GetExternalExpression("Late", "degraded"), first);
}

TEST_F(PortTest, ExpressionIsTheTemplateInNewNodes) {
  const auto source = in->GetExternalTemplate("Late");
  const auto instance = in->GetExternalExpression("Late", DefaultState);
  EXPECT_EQ(ShapeOf(instance), ShapeOf(source));
  EXPECT_NE(instance->GetId(), source->GetId());
  EXPECT_NE(instance->GetChild(0)->GetChild(0), source->GetChild(0)->GetChild(0));
}

TEST_F(PortTest, TemplateKeepsNoMemoOfItsInstance) {
  in->GetExternalExpression("Late", DefaultState);
  EXPECT_EQ(in->GetExternalTemplate("Late")->clone, nullptr);
}

TEST_F(PortTest, ClassWithoutTemplateHasNoExpression) {
  EXPECT_EQ(in->GetExternalExpression("Early", DefaultState), nullptr);
  EXPECT_EQ(in->GetInternalExpression("Late", DefaultState), nullptr);
  EXPECT_TRUE(in->internalExpressions.empty());
}

TEST_F(PortTest, RootsOfTemplatesAndInstancesAreHeld) {
  const auto source = in->GetExternalTemplate("Late");
  const auto instance = in->GetExternalExpression("Late", DefaultState);
  EXPECT_THAT(in->expressionRoots, ::testing::ElementsAre(source, instance));
}

TEST_F(PortTest, TemplateThatNobodyAskedForIsNotKept) {
  const auto instance = in->GetExternalExpression("Late", DefaultState);
  EXPECT_THAT(in->expressionRoots, ::testing::ElementsAre(instance));
  EXPECT_TRUE(in->externalTemplates.empty());
}

TEST_F(PortTest, TemplateStaysTheSame) {
  EXPECT_EQ(in->GetExternalTemplate("Late"), in->GetExternalTemplate("Late"));
}

TEST_F(PortTest, ForgottenInstanceIsMadeAnew) {
  const auto first = in->GetExternalExpression("Late", DefaultState);
  in->ClearInstances();
  const auto second = in->GetExternalExpression("Late", DefaultState);
  EXPECT_NE(second, first);
  EXPECT_EQ(ShapeOf(first), ShapeOf(second));
}

TEST_F(PortTest, DeviationIsThatOfTheState) {
  const auto usual = out->GetOutputDeviation("Late", DefaultState);
  const auto degraded = out->GetOutputDeviation("Late", "degraded");
  EXPECT_EQ(ShapeOf(usual->expression->GetChild(0)), "stuck");
  EXPECT_EQ(usual->expression->GetChildCount(), 2);
  EXPECT_EQ(degraded->expression->GetChildCount(), 1);
}

TEST_F(PortTest, DeviationOfAStateWithoutOneIsACopyOfTheDefault) {
  const auto usual = out->GetOutputDeviation("Late", DefaultState);
  const auto other = out->GetOutputDeviation("Late", "other");
  EXPECT_NE(other, usual);
  EXPECT_NE(other->expression, usual->expression);
  EXPECT_EQ(ShapeOf(other->expression), ShapeOf(usual->expression));
  EXPECT_EQ(out->GetOutputDeviation("Late", "other"), other);
}

TEST_F(PortTest, CopyForAStateKnowsNothingOfWhatSynthesisDidToTheDefault) {
  const auto usual = out->GetOutputDeviation("Late", DefaultState);
  usual->resolved = true;
  usual->expression->GetChild(1)->AddChild(std::make_shared<OrGate>("grown", model.get()));
  const auto other = out->GetOutputDeviation("Late", "other");
  EXPECT_FALSE(other->resolved);
  EXPECT_EQ(other->expression->GetChild(1)->GetChildCount(), 0);
}

TEST_F(PortTest, FallsBackForEachClassByItself) {
  const auto component = model->FindComponent("A");
  out->AddOutputDeviation(std::make_shared<OutputDeviation>(component, "Early", "out"), "degraded");
  EXPECT_EQ(out->GetOutputDeviation("Early", DefaultState), nullptr);
  EXPECT_NE(out->GetOutputDeviation("Early", "degraded"), nullptr);
  EXPECT_EQ(out->GetOutputDeviation("None", "degraded"), nullptr);
}

TEST_F(PortTest, OutputProxyIsSharedPerClass) {
  const auto late = out->GetOrMakeOutputProxy("Late");
  EXPECT_EQ(out->GetOrMakeOutputProxy("Late"), late);
  EXPECT_NE(out->GetOrMakeOutputProxy("Early"), late);
  EXPECT_EQ(late->name, "Late-DEFAULT::A.out");
  EXPECT_FALSE(late->reference);
}

TEST_F(PortTest, InputProxyIsSharedPerClassAndHasARecord) {
  const auto late = in->GetOrMakeInputProxy("Late");
  EXPECT_EQ(in->GetOrMakeInputProxy("Late"), late);
  EXPECT_EQ(late->name, "Late-DEFAULT::B.in");
  EXPECT_EQ(late->deviation->GetPort(), in);
}

TEST_F(PortTest, ProxyWithoutClassIsNamedByThePort) {
  EXPECT_EQ(out->GetOrMakeOutputProxy("")->name, "DEFAULT::A.out");
}

TEST_F(PortTest, ClearTakesLoopsApart) {
  const std::weak_ptr<FaultTreeNode> root = in->GetExternalExpression("Late", DefaultState);
  const auto leaf = root.lock()->GetChild(0)->GetChild(0);
  const std::weak_ptr<OutputDeviation> deviation = out->GetOutputDeviation("Late", DefaultState);
  leaf->AddChild(root.lock());
  deviation.lock()->expression->GetChild(1)->AddChild(deviation.lock()->expression);
  in->Clear();
  out->Clear();
  EXPECT_TRUE(root.expired());
  EXPECT_TRUE(deviation.expired());
  EXPECT_EQ(leaf->GetChildCount(), 0);
}

TEST_F(PortTest, ClearLeavesNothing) {
  in->GetExternalExpression("Late", DefaultState);
  in->GetOrMakeInputProxy("Late");
  in->Clear();
  EXPECT_TRUE(in->externalExpressions.empty());
  EXPECT_TRUE(in->externalTemplates.empty());
  EXPECT_TRUE(in->inputProxies.empty());
  EXPECT_TRUE(in->expressionRoots.empty());
  EXPECT_EQ(in->GetExternalTemplate("Late"), nullptr);
}

TEST_F(PortTest, PrintShowsDeviationsAndExpressions) {
  model->FindComponent("B")->GetCurrentImplementation();
  const auto instance = in->GetExternalExpression("Late", DefaultState);
  std::ostringstream expression;
  instance->Print(expression, 4);
  std::ostringstream text;
  in->Print(text, 1);
  EXPECT_EQ(text.str(),
            " PORT: DEFAULT::B.in\n"
            " OUTPUTDEVIATIONS: \n"
            " END OUTPUTDEVIATIONS: \n"
            " Internal PORTEXPRESSIONS: \n"
            " End Internal PORTEXPRESSIONS: \n"
            " External PORTEXPRESSIONS: \n" +
                expression.str() +
                " End External PORTEXPRESSIONS: \n"
                " END OF PORT (DEFAULT::B.in)\n");
}

}  // namespace
}  // namespace FTS
