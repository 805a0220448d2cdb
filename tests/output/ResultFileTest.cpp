#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "output/ResultFile.h"
#include "support/ProcessStateTest.h"
#include "support/TemporaryFolder.h"

namespace FTS {

namespace {

class ResultFileTest : public ProcessStateTest {
 protected:
  TemporaryFolder folder;
  ResultFile file;
};

TEST_F(ResultFileTest, TextsAndNumbersFollowOneAnother) {
  ASSERT_TRUE(file.Open(folder.Path("a")));
  file << "x=" << std::string("1\n") << -12 << " " << 1.2e-05 << "\xAC";
  file.Close();
  EXPECT_EQ(folder.Read("a"), "x=1\n-12 1.2e-05\xAC");
}

TEST_F(ResultFileTest, LargestIntegersAreWrittenInFull) {
  ASSERT_TRUE(file.Open(folder.Path("a")));
  file << std::numeric_limits<int>::min() << std::numeric_limits<int>::max();
  file.Close();
  EXPECT_EQ(folder.Read("a"), "-21474836482147483647");
}

TEST_F(ResultFileTest, TextLongerThanOnePieceArrivesWhole) {
  ASSERT_TRUE(file.Open(folder.Path("a")));
  std::string expected;
  for (int i = 0; i < 100000; ++i) {
    file << "piece " << i << ";";
    expected += "piece " + std::to_string(i) + ";";
  }
  file.Close();
  EXPECT_EQ(folder.Read("a"), expected);
}

TEST_F(ResultFileTest, OpeningReplacesWhatTheFileHeld) {
  folder.Write("a", "old content");
  ASSERT_TRUE(file.Open(folder.Path("a")));
  file << "new";
  file.Close();
  EXPECT_EQ(folder.Read("a"), "new");
}

TEST_F(ResultFileTest, EndOfTheObjectWritesTheRest) {
  {
    ResultFile local;
    ASSERT_TRUE(local.Open(folder.Path("a")));
    local << "rest";
  }
  EXPECT_EQ(folder.Read("a"), "rest");
}

TEST_F(ResultFileTest, FileThatCannotBeMadeTakesTextsInSilence) {
  EXPECT_FALSE(file.Open(folder.Path("missing/a")));
  file << "lost" << 1 << 2.0;
  file.Close();
  EXPECT_FALSE(folder.Contains("missing"));
}

TEST_F(ResultFileTest, FileThatCannotBeMadeLeavesNothingForTheNext) {
  EXPECT_FALSE(file.Open(folder.Path("missing/a")));
  file << "lost";
  ASSERT_TRUE(file.Open(folder.Path("b")));
  file << "kept";
  file.Close();
  EXPECT_EQ(folder.Read("b"), "kept");
}

}  // namespace

}  // namespace FTS
