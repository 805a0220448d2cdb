#include <pthread.h>

#include <stdexcept>

#include "platform/BigStack.h"
#include "support/ProcessStateTest.h"

namespace FTS {
namespace {

class BigStackTest : public ProcessStateTest {};

/// Uses at least a KiB of stack per level, and something of it after the call, so that the compiler
/// can neither make a loop of it nor drop the array.
int Descend(int levels) {
  volatile char frame[1024];
  frame[0] = 1;
  return levels == 0 ? 0 : Descend(levels - 1) + frame[0];
}

TEST_F(BigStackTest, HoldsWalksFarDeeperThanTheUsualStack) {
  constexpr int Levels = 200'000;  // 200 MiB at least, where a process usually has 8.
  int reached = 0;
  RunOnBigStack([&] { reached = Descend(Levels); });
  EXPECT_EQ(reached, Levels);
}

TEST_F(BigStackTest, PassesTheExceptionOfTheWorkOn) {
  const auto fail = [] { throw std::out_of_range("deep down"); };
  try {
    RunOnBigStack(fail);
    FAIL() << "No exception came through";
  } catch (const std::out_of_range& exception) {
    EXPECT_STREQ(exception.what(), "deep down");
  }
}

TEST_F(BigStackTest, ServesAgainAfterAnException) {
  EXPECT_THROW(RunOnBigStack([] { throw 1; }), int);
  bool ran = false;
  RunOnBigStack([&] { ran = true; });
  EXPECT_TRUE(ran);
}

TEST_F(BigStackTest, NestedCallRunsOnTheSameStack) {
  pthread_t outer{};
  pthread_t inner{};
  RunOnBigStack([&] {
    outer = pthread_self();
    RunOnBigStack([&] { inner = pthread_self(); });
  });
  EXPECT_TRUE(pthread_equal(outer, inner));
  EXPECT_FALSE(pthread_equal(outer, pthread_self()));
}

TEST_F(BigStackTest, NestedExceptionCanBeCaughtInTheOuterWork) {
  bool caught = false;
  RunOnBigStack([&] {
    try {
      RunOnBigStack([] { throw std::runtime_error("inner"); });
    } catch (const std::runtime_error&) {
      caught = true;
    }
  });
  EXPECT_TRUE(caught);
}

}  // namespace
}  // namespace FTS
