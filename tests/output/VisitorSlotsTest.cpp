// The order of the three families is what writers are compiled against, so it is tested in the
// table of virtual operations itself.

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cstddef>
#include <string>

#include "output/RecordingVisitor.h"
#include "support/ProcessStateTest.h"

namespace FTS {

namespace {

constexpr int Classes = 45;
constexpr int DestructorSlots = 2;

class VisitorSlotsTest : public ProcessStateTest {
 protected:
  /// The position in the table. A pointer to a virtual operation holds its offset there, plus one
  /// (the C++ ABI of the platforms we build on).
  template <class X>
  static int SlotOf(void (Visitor::*operation)(X&)) {
    struct Representation {
      std::ptrdiff_t offset;
      std::ptrdiff_t adjustment;
    };
    const auto representation = std::bit_cast<Representation>(operation);
    return static_cast<int>((representation.offset - 1) /
                            static_cast<std::ptrdiff_t>(sizeof(void*)));
  }
};

TEST_F(VisitorSlotsTest, VisitFamilyIsInTheOrderOfClasses) {
  int expected = DestructorSlots;
  EXPECT_EQ(SlotOf<ReservedPlace>(&Visitor::Visit), expected);
#define FTS_EXPECT_SLOT(X) EXPECT_EQ(SlotOf<X>(&Visitor::Visit), ++expected) << #X;
  FTS_VISITED_CLASSES(FTS_EXPECT_SLOT)
#undef FTS_EXPECT_SLOT
  EXPECT_EQ(expected, DestructorSlots + Classes - 1);
}

TEST_F(VisitorSlotsTest, EnterFamilyFollowsInTheSameOrder) {
  int expected = DestructorSlots + Classes;
  EXPECT_EQ(SlotOf<ReservedPlace>(&Visitor::Enter), expected);
#define FTS_EXPECT_SLOT(X) EXPECT_EQ(SlotOf<X>(&Visitor::Enter), ++expected) << #X;
  FTS_VISITED_CLASSES(FTS_EXPECT_SLOT)
#undef FTS_EXPECT_SLOT
  EXPECT_EQ(expected, DestructorSlots + 2 * Classes - 1);
}

TEST_F(VisitorSlotsTest, LeaveFamilyHasCommonCauseProxyBeforeNode) {
  const int first = DestructorSlots + 2 * Classes;
  constexpr int NodePlace = 16;
  EXPECT_EQ(SlotOf<ReservedPlace>(&Visitor::Leave), first);
  EXPECT_EQ(SlotOf<CircleNode>(&Visitor::Leave), first + NodePlace - 1);
  EXPECT_EQ(SlotOf<PCCFProxy>(&Visitor::Leave), first + NodePlace);
  EXPECT_EQ(SlotOf<PCCFNode>(&Visitor::Leave), first + NodePlace + 1);
  EXPECT_EQ(SlotOf<StateProxy>(&Visitor::Leave), first + NodePlace + 2);
}

TEST_F(VisitorSlotsTest, LeaveFamilyIsOtherwiseInTheOrderOfClasses) {
  int expected = DestructorSlots + 2 * Classes;
#define FTS_EXPECT_SLOT(X)                                               \
  ++expected;                                                            \
  if (std::string(#X) != "PCCFNode" && std::string(#X) != "PCCFProxy") { \
    EXPECT_EQ(SlotOf<X>(&Visitor::Leave), expected) << #X;               \
  }
  FTS_VISITED_CLASSES(FTS_EXPECT_SLOT)
#undef FTS_EXPECT_SLOT
}

}  // namespace

}  // namespace FTS
