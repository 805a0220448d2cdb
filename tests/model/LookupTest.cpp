#include <gmock/gmock.h>

#include "app/DiagnosticLog.h"
#include "model/Component.h"
#include "model/Hazard.h"
#include "model/Implementation.h"
#include "model/Model.h"
#include "model/Perspective.h"
#include "model/Port.h"
#include "support/CaseName.h"
#include "support/ModelBuilder.h"
#include "support/ProcessStateTest.h"
#include "support/ThrownMessage.h"

namespace FTS {
namespace {

std::unique_ptr<Model> TwoPerspectives() {
  return ModelBuilder()
      .Perspective("Sw")
      .Component("A", {"soft"})
      .Perspective("Hw")
      .Component("A", {"hard"})
      .Component("A.Sub", {"p"})
      .Component("A.Sub.Deep", {"q"})
      .Build();
}

struct PortCase {
  const char* name;
  const char* text;
  const char* found;  // Empty for none.
};

class PortLookupTest : public ProcessStateTest, public ::testing::WithParamInterface<PortCase> {};

TEST_P(PortLookupTest, FindsByFullName) {
  const auto model = TwoPerspectives();
  const auto port = model->FindPort(GetParam().text);
  EXPECT_EQ(port ? port->GetFullNameText() : "", GetParam().found);
}

INSTANTIATE_TEST_SUITE_P(
    Names, PortLookupTest,
    ::testing::Values(
        PortCase{"WithPrefix", "Sw::A.soft", "Sw::A.soft"},
        PortCase{"WithoutPrefixIsThePerspectiveThatSortsFirst", "A.hard", "Hw::A.hard"},
        PortCase{"NotInOtherPerspectives", "A.soft", ""},
        PortCase{"Nested", "Hw::A.Sub.p", "Hw::A.Sub.p"},
        PortCase{"DeeplyNested", "A.Sub.Deep.q", "Hw::A.Sub.Deep.q"},
        PortCase{"UnknownPort", "Hw::A.none", ""}, PortCase{"UnknownComponent", "Hw::B.hard", ""},
        PortCase{"UnknownInside", "Hw::A.None.p", ""}, PortCase{"InsideALeaf", "Sw::A.Sub.p", ""},
        PortCase{"PortAlone", "Hw::hard", ""}, PortCase{"Nothing", "", ""}),
    CaseName);

class ComponentLookupTest : public ProcessStateTest,
                            public ::testing::WithParamInterface<PortCase> {};

TEST_P(ComponentLookupTest, FindsByFullName) {
  const auto model = TwoPerspectives();
  const auto component = model->FindComponent(GetParam().text);
  EXPECT_EQ(component ? component->GetFullNameText() : "", GetParam().found);
}

INSTANTIATE_TEST_SUITE_P(
    Names, ComponentLookupTest,
    ::testing::Values(PortCase{"Top", "Sw::A", "Sw::A"}, PortCase{"WithoutPrefix", "A", "Hw::A"},
                      PortCase{"Nested", "A.Sub.Deep", "Hw::A.Sub.Deep"},
                      PortCase{"Unknown", "Hw::B", ""}, PortCase{"InsideALeaf", "Sw::A.Sub", ""},
                      PortCase{"BelowAnUnknown", "Hw::B.Sub", ""}, PortCase{"Nothing", "", ""}),
    CaseName);

class LookupTest : public ProcessStateTest {};

TEST_F(LookupTest, UnknownPerspectiveOfAPortIsLoggedAndThrown) {
  const auto model = TwoPerspectives();
  const std::string message = ThrownMessage([&] { model->FindPort("Mw::A.soft"); });
  EXPECT_EQ(message, "ERROR: Perspective not found: Mw");
  EXPECT_THAT(DiagnosticLog::Instance().Errors(), ::testing::ElementsAre(message));
}

TEST_F(LookupTest, UnknownPerspectiveOfAComponentNamesIt) {
  const auto model = TwoPerspectives();
  const std::string message = ThrownMessage([&] { model->FindComponent("Mw::A"); });
  EXPECT_EQ(message, "ERROR: Perspective not found: Mw when resolvingMw::A");
  EXPECT_THAT(DiagnosticLog::Instance().Errors(), ::testing::ElementsAre(message));
}

TEST_F(LookupTest, DefaultPerspectiveIsFoundAsExpressionsSpellIt) {
  const auto model =
      ModelBuilder().Component("A", {"out"}).Perspective("Aa").Component("A", {"other"}).Build();
  const auto port = model->FindPort("Default::A.out");
  ASSERT_NE(port, nullptr);
  EXPECT_EQ(port->GetFullNameText(), "DEFAULT::A.out");
  EXPECT_EQ(model->FindComponent("Default::A"), model->FindComponent("DEFAULT::A"));
}

TEST_F(LookupTest, PerspectiveOfThatVerySpellingComesFirst) {
  const auto model =
      ModelBuilder().Component("A", {"out"}).Perspective("Default").Component("A", {"out"}).Build();
  EXPECT_EQ(model->FindPort("Default::A.out")->GetFullNameText(), "Default::A.out");
  EXPECT_EQ(model->FindPort("DEFAULT::A.out")->GetFullNameText(), "DEFAULT::A.out");
}

TEST_F(LookupTest, DefaultPerspectiveThatIsMissingIsNamedAsAskedFor) {
  const auto model = TwoPerspectives();
  EXPECT_EQ(ThrownMessage([&] { model->FindPort("Default::A.soft"); }),
            "ERROR: Perspective not found: Default");
}

TEST_F(LookupTest, ModelWithoutPerspectivesHoldsNothing) {
  const Model model(0, "m.xml", "", "", 1.0F, 0.0);
  EXPECT_EQ(model.FindPort("A.out"), nullptr);
  EXPECT_EQ(model.FindComponent("A"), nullptr);
}

TEST_F(LookupTest, PerspectiveWithoutSystemHoldsNothing) {
  Model model(0, "m.xml", "", "", 1.0F, 0.0);
  model.AddPerspective(std::make_shared<Perspective>("P", &model));
  EXPECT_EQ(model.FindPort("P::A.out"), nullptr);
  EXPECT_EQ(model.FindComponent("P::A"), nullptr);
}

TEST_F(LookupTest, WalkThroughAComponentWithoutImplementationFails) {
  const auto model = TwoPerspectives();
  model->FindComponent("Hw::A")->currentImplementation = nullptr;
  EXPECT_EQ(ThrownMessage([&] { model->FindPort("Hw::A.Sub.p"); }),
            "No current implementation found for component: Hw::A");
  EXPECT_EQ(ThrownMessage([&] { model->FindComponent("Hw::A.Sub"); }),
            "No current implementation found for component: Hw::A");
}

TEST_F(LookupTest, PortOfAComponentWithoutImplementationIsFound) {
  const auto model = TwoPerspectives();
  model->FindComponent("Hw::A")->currentImplementation = nullptr;
  EXPECT_NE(model->FindPort("Hw::A.hard"), nullptr);
}

TEST_F(LookupTest, OnlyTheCurrentImplementationIsWalked) {
  const auto model = ModelBuilder()
                         .Component("A", {})
                         .Component("A.Old", {"p"})
                         .Alternative("A", "new")
                         .Component("A.New", {"p"})
                         .Build();
  model->FindComponent("A")->SelectImplementation(1);
  EXPECT_EQ(model->FindPort("A.Old.p"), nullptr);
  EXPECT_NE(model->FindPort("A.New.p"), nullptr);
}

TEST_F(LookupTest, HazardIsFoundByName) {
  const auto model = ModelBuilder().Hazard("Loss", "Late-A.out").Build();
  EXPECT_EQ(model->FindHazard("Loss")->name, "Loss");
  EXPECT_EQ(model->FindHazard("None"), nullptr);
}

}  // namespace
}  // namespace FTS
