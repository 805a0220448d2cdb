#include <gmock/gmock.h>

#include <numeric>
#include <set>

#include "support/ProcessStateTest.h"
#include "support/TokenDamage.h"

namespace FTS {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class TokenDamageTest : public ProcessStateTest {
 protected:
  static std::string Joined(const std::vector<std::string>& tokens) {
    return std::accumulate(tokens.begin(), tokens.end(), std::string());
  }
};

TEST_F(TokenDamageTest, TokensAreWordsNumbersStringsAndSymbols) {
  EXPECT_THAT(
      SplitIntoTokens("Name \"a \\\" {\" {x=1.5,\n}\n"),
      ElementsAre("Name", " \"a \\\" {\"", " {", "x", "=", "1", ".", "5", ",", "\n}", "\n"));
  EXPECT_THAT(SplitIntoTokens("a \"open"), ElementsAre("a", " \"open"));
  EXPECT_THAT(SplitIntoTokens(""), IsEmpty());
}

TEST_F(TokenDamageTest, TokensJoinedAreTheText) {
  Dice dice(7);
  for (int i = 0; i < 200; ++i) {
    std::string text;
    for (int size = dice.Roll(60); size > 0; --size) {
      text += dice.Pick<std::string>({"\"", "\\", "{", "}", " ", "\n", "word", "7", "-", "\xFF"});
    }
    EXPECT_EQ(Joined(SplitIntoTokens(text)), text);
  }
}

TEST_F(TokenDamageTest, DamageIsVariedAndRepeatable) {
  const std::string text = "A { B \"s\" { C } D { E \"logic\" } }";
  std::set<std::string> damaged;
  Dice dice(1);
  for (int i = 0; i < 100; ++i) damaged.insert(DamagedByTokens(text, dice, {"new"}));
  EXPECT_GT(damaged.size(), 80U);
  Dice again(1);
  EXPECT_TRUE(damaged.contains(DamagedByTokens(text, again, {"new"})));
  EXPECT_EQ(DamagedByTokens("", dice, {"new"}), "");
}

}  // namespace
}  // namespace FTS
