#include <gtest/gtest.h>

#include <string>

#include "support/Golden.h"
#include "support/ProcessStateTest.h"

namespace FTS {

namespace {

class SameBytesTest : public ProcessStateTest {
 protected:
  static std::string Message(const std::string& actual, const std::string& expected) {
    return SameBytes(actual, expected).message();
  }
};

TEST_F(SameBytesTest, EqualTextsAgree) {
  EXPECT_TRUE(SameBytes("a\xAC", "a\xAC"));
  EXPECT_TRUE(SameBytes("", ""));
}

TEST_F(SameBytesTest, FirstDifferenceIsToldWithItsOffset) {
  EXPECT_FALSE(SameBytes("<Name>a</Name>", "<Name>b</Name>"));
  EXPECT_EQ(Message("<Name>a</Name>", "<Name>b</Name>"),
            "first difference at offset 6 (actual has 14 bytes, expected 14)\n"
            "  actual:   <Name>>>>a</Name>\n"
            "  expected: <Name>>>>b</Name>");
}

TEST_F(SameBytesTest, MissingEndIsADifference) {
  EXPECT_FALSE(SameBytes("ab", "abc"));
  EXPECT_EQ(Message("ab", "abc"),
            "first difference at offset 2 (actual has 2 bytes, expected 3)\n"
            "  actual:   ab>>>(end)\n"
            "  expected: ab>>>c");
}

TEST_F(SameBytesTest, UnprintableBytesAreShownByNumber) {
  EXPECT_EQ(Message("\xAC\n", "\xAC"),
            "first difference at offset 1 (actual has 2 bytes, expected 1)\n"
            "  actual:   \\xAC>>>\\x0A\n"
            "  expected: \\xAC>>>(end)");
}

TEST_F(SameBytesTest, ContextOfALongTextIsCut) {
  const std::string before(100, 'x');
  const std::string after(100, 'y');
  EXPECT_EQ(Message(before + "1" + after, before + "2" + after),
            "first difference at offset 100 (actual has 201 bytes, expected 201)\n"
            "  actual:   ..." +
                std::string(60, 'x') + ">>>1" + std::string(59, 'y') +
                "...\n"
                "  expected: ..." +
                std::string(60, 'x') + ">>>2" + std::string(59, 'y') + "...");
}

}  // namespace

}  // namespace FTS
