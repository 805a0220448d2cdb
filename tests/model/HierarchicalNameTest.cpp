#include <gmock/gmock.h>

#include "model/HierarchicalName.h"
#include "support/CaseName.h"
#include "support/ProcessStateTest.h"

namespace FTS {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class HierarchicalNameTest : public ProcessStateTest {};

TEST_F(HierarchicalNameTest, LoneNameHasNoPath) {
  const HierarchicalName name("Top");
  EXPECT_THAT(name.Path(), IsEmpty());
  EXPECT_EQ(name.Name(), "Top");
  EXPECT_EQ(name.Perspective(), "");
}

TEST_F(HierarchicalNameTest, FullNameIsSplitAtItsSeparators) {
  const HierarchicalName name("Hw::Top.Sub.Port");
  EXPECT_EQ(name.Perspective(), "Hw");
  EXPECT_THAT(name.Path(), ElementsAre("Top", "Sub"));
  EXPECT_EQ(name.Name(), "Port");
}

TEST_F(HierarchicalNameTest, EmptyTextGivesAnEmptyName) {
  const HierarchicalName name("");
  EXPECT_THAT(name.Path(), IsEmpty());
  EXPECT_EQ(name.Name(), "");
  EXPECT_EQ(name.Perspective(), "");
  EXPECT_EQ(name.ToString(), "");
  EXPECT_EQ(HierarchicalName().ToString(), "");
}

TEST_F(HierarchicalNameTest, SingleColonIsAnOrdinaryCharacter) {
  const HierarchicalName name("a:b.c:d");
  EXPECT_EQ(name.Perspective(), "");
  EXPECT_THAT(name.Path(), ElementsAre("a:b"));
  EXPECT_EQ(name.Name(), "c:d");
}

TEST_F(HierarchicalNameTest, FirstDoubleColonEndsThePerspective) {
  const HierarchicalName name("A::B::c");
  EXPECT_EQ(name.Perspective(), "A");
  EXPECT_EQ(name.Name(), "B::c");
}

TEST_F(HierarchicalNameTest, PointBeforeTheDoubleColonBelongsToThePerspective) {
  const HierarchicalName name("a.b::c.d");
  EXPECT_EQ(name.Perspective(), "a.b");
  EXPECT_THAT(name.Path(), ElementsAre("c"));
  EXPECT_EQ(name.Name(), "d");
}

TEST_F(HierarchicalNameTest, EmptyPartsStayParts) {
  const HierarchicalName name("a..b.");
  EXPECT_THAT(name.Path(), ElementsAre("a", "", "b"));
  EXPECT_EQ(name.Name(), "");
  EXPECT_EQ(name.ToString(), "a..b.");
}

TEST_F(HierarchicalNameTest, OwnerNameBecomesThePath) {
  const HierarchicalName name("Hw::Top.Sub", "p");
  EXPECT_EQ(name.Perspective(), "Hw");
  EXPECT_THAT(name.Path(), ElementsAre("Top", "Sub"));
  EXPECT_EQ(name.Name(), "p");
  EXPECT_EQ(name.ToString(), "Hw::Top.Sub.p");
}

TEST_F(HierarchicalNameTest, EmptyOwnerAddsNoPath) {
  const HierarchicalName name("", "p");
  EXPECT_THAT(name.Path(), IsEmpty());
  EXPECT_EQ(name.ToString(), "p");
}

TEST_F(HierarchicalNameTest, OwnerThatIsAPerspectiveAddsNoPath) {
  const HierarchicalName name("Hw::", "p");
  EXPECT_EQ(name.Perspective(), "Hw");
  EXPECT_THAT(name.Path(), IsEmpty());
  EXPECT_EQ(name.ToString(), "Hw::p");
}

TEST_F(HierarchicalNameTest, LocalNameIsTakenAsItIs) {
  const HierarchicalName name("Top", "a.b::c");
  EXPECT_EQ(name.Name(), "a.b::c");
  EXPECT_THAT(name.Path(), ElementsAre("Top"));
}

TEST_F(HierarchicalNameTest, TextComesBackAsItWasRead) {
  for (const char* text : {"Top", "Hw::Top.Sub.Port", "a.b", "", ".", "a:b"}) {
    EXPECT_EQ(HierarchicalName(text).ToString(), text);
  }
}

struct WithinCase {
  const char* name;
  const char* inner;
  const char* outer;
  bool within;
};

class IsWithinTest : public ProcessStateTest, public ::testing::WithParamInterface<WithinCase> {};

TEST_P(IsWithinTest, IsWithin) {
  const HierarchicalName inner(GetParam().inner);
  EXPECT_EQ(inner.IsWithin(HierarchicalName(GetParam().outer)), GetParam().within)
      << GetParam().inner << " in " << GetParam().outer;
}

INSTANTIATE_TEST_SUITE_P(
    Names, IsWithinTest,
    ::testing::Values(WithinCase{"Child", "Top.Sub", "Top", true},
                      WithinCase{"Grandchild", "Top.Sub.p", "Top", true},
                      WithinCase{"ChildOfPath", "Top.Sub.p", "Top.Sub", true},
                      WithinCase{"Itself", "Top.Sub", "Top.Sub", false},
                      WithinCase{"Parent", "Top", "Top.Sub", false},
                      WithinCase{"Sibling", "Top.A.p", "Top.B", false},
                      WithinCase{"LikeBeginning", "Top2.Sub", "Top", false},
                      WithinCase{"OtherRoot", "X.Sub.p", "Top.Sub", false},
                      WithinCase{"PerspectiveOfInner", "Hw::Top.Sub", "Top", true},
                      WithinCase{"PerspectivesDiffer", "Hw::Top.Sub", "Sw::Top", true}),
    CaseName);

TEST_F(HierarchicalNameTest, PortIsWithinItsComponent) {
  const HierarchicalName port("Top.Sub", "p");
  EXPECT_TRUE(port.IsWithin(HierarchicalName("Top.Sub")));
}

}  // namespace
}  // namespace FTS
