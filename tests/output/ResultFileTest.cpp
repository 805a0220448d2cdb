#include <gtest/gtest.h>

#include <filesystem>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "app/DiagnosticLog.h"
#include "output/ResultFile.h"
#include "support/ProcessStateTest.h"
#include "support/TemporaryFolder.h"

namespace FTS {

namespace {

class ResultFileTest : public ProcessStateTest {
 protected:
  using Texts = std::vector<std::string>;

  /// A file that opens and takes nothing.
  std::string FullFile() const {
    std::filesystem::create_symlink("/dev/full", folder.Path("full"));
    return folder.Path("full");
  }

  static const Texts& Errors() { return DiagnosticLog::Instance().Errors(); }

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
  EXPECT_EQ(Errors(), Texts());
}

TEST_F(ResultFileTest, FileThatTakesNothingIsOneError) {
  const std::string path = FullFile();
  ASSERT_TRUE(file.Open(path));
  for (int i = 0; i < 300000; ++i) file << "more than one piece ";
  file.Close();
  file.Close();
  EXPECT_EQ(Errors(), Texts{"Cannot write the whole of file: " + path});
}

TEST_F(ResultFileTest, RestThatDoesNotFitIsAnErrorAtTheEndOfTheObject) {
  const std::string path = FullFile();
  auto local = std::make_unique<ResultFile>();
  ASSERT_TRUE(local->Open(path));
  *local << "rest";
  EXPECT_EQ(Errors(), Texts());
  local.reset();
  EXPECT_EQ(Errors(), Texts{"Cannot write the whole of file: " + path});
}

TEST_F(ResultFileTest, FileThatDoesNotFitIsToldBeforeTheNextIsOpened) {
  const std::string path = FullFile();
  ASSERT_TRUE(file.Open(path));
  file << "lost";
  ASSERT_TRUE(file.Open(folder.Path("b")));
  EXPECT_EQ(Errors(), Texts{"Cannot write the whole of file: " + path});
  file << "kept";
  file.Close();
  EXPECT_EQ(folder.Read("b"), "kept");
  EXPECT_EQ(Errors().size(), 1u);
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
