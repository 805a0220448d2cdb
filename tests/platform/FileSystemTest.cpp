#include <unistd.h>

#include <filesystem>
#include <string>

#include "platform/FileSystem.h"
#include "support/CaseName.h"
#include "support/FileSizeLimit.h"
#include "support/ProcessStateTest.h"
#include "support/TemporaryFolder.h"

namespace FTS {
namespace {

class FileSystemTest : public ProcessStateTest {
 protected:
  TemporaryFolder folder;
};

struct AbsoluteCase {
  const char* name;
  const char* path;
  const char* absolute;
};

class AbsolutePathTest : public FileSystemTest,
                         public ::testing::WithParamInterface<AbsoluteCase> {};

TEST_P(AbsolutePathTest, IsNormalised) {
  EXPECT_EQ(AbsolutePath(GetParam().path), GetParam().absolute);
}

INSTANTIATE_TEST_SUITE_P(
    Paths, AbsolutePathTest,
    ::testing::Values(AbsoluteCase{"AbsoluteStays", "/a/b.xml", "/a/b.xml"},
                      AbsoluteCase{"PointsVanish", "/a/./b/../c.xml", "/a/c.xml"},
                      AbsoluteCase{"NothingIsAboveTheRoot", "/../../a.xml", "/a.xml"},
                      AbsoluteCase{"RepeatedSeparatorsBecomeOne", "/a//b.xml", "/a/b.xml"},
                      AbsoluteCase{"BackslashSeparates", "\\a\\b.xml", "/a/b.xml"},
                      AbsoluteCase{"SeparatorAtTheEndStays", "/a/b/", "/a/b/"}),
    CaseName);

TEST_F(FileSystemTest, AbsolutePathStartsInTheCurrentFolder) {
  EXPECT_EQ(AbsolutePath("models/../brake.xml"),
            (std::filesystem::current_path() / "brake.xml").string());
}

TEST_F(FileSystemTest, AbsolutePathOfNothingIsNone) { EXPECT_EQ(AbsolutePath(""), std::nullopt); }

TEST_F(FileSystemTest, AbsolutePathMayHave260Characters) {
  const std::string path = "/" + std::string(259, 'a');
  EXPECT_EQ(AbsolutePath(path), path);
}

TEST_F(FileSystemTest, LongerAbsolutePathIsNone) {
  EXPECT_EQ(AbsolutePath("/" + std::string(260, 'a')), std::nullopt);
}

TEST_F(FileSystemTest, ShortPathInALongFolderCountsInFull) {
  const std::string path = "/" + std::string(300, 'a') + "/../b.xml";
  EXPECT_EQ(AbsolutePath(path), "/b.xml");
}

struct SplitCase {
  const char* name;
  const char* path;
  const char* directory;
  const char* baseName;
  const char* extension;
};

class SplitPathTest : public FileSystemTest, public ::testing::WithParamInterface<SplitCase> {};

TEST_P(SplitPathTest, CutsIntoParts) {
  const PathParts parts = SplitPath(GetParam().path);
  EXPECT_EQ(parts.drive, "");
  EXPECT_EQ(parts.directory, GetParam().directory);
  EXPECT_EQ(parts.baseName, GetParam().baseName);
  EXPECT_EQ(parts.extension, GetParam().extension);
}

INSTANTIATE_TEST_SUITE_P(
    Paths, SplitPathTest,
    ::testing::Values(SplitCase{"FileInAFolder", "/m/brake.xml", "/m/", "brake", ".xml"},
                      SplitCase{"BareName", "brake.vtnx", "", "brake", ".vtnx"},
                      SplitCase{"LastPointCounts", "/m/brake.v2.xml", "/m/", "brake.v2", ".xml"},
                      SplitCase{"NoExtension", "/m.d/brake", "/m.d/", "brake", ""},
                      SplitCase{"PointAtTheEnd", "/m/brake.", "/m/", "brake", "."},
                      SplitCase{"OnlyExtension", "/m/.xml", "/m/", "", ".xml"},
                      SplitCase{"FolderOnly", "/m/d/", "/m/d/", "", ""},
                      SplitCase{"BackslashSeparates", "m\\d/brake.xml", "m/d/", "brake", ".xml"},
                      SplitCase{"Nothing", "", "", "", ""}),
    CaseName);

struct JoinCase {
  const char* name;
  const char* folder;
  const char* file;
  const char* path;
};

class JoinPathTest : public FileSystemTest, public ::testing::WithParamInterface<JoinCase> {};

TEST_P(JoinPathTest, PutsOneSeparatorBetween) {
  EXPECT_EQ(JoinPath(GetParam().folder, GetParam().file), GetParam().path);
}

INSTANTIATE_TEST_SUITE_P(
    Paths, JoinPathTest,
    ::testing::Values(JoinCase{"SeparatorIsAdded", "out", "a.xml", "out/a.xml"},
                      JoinCase{"SeparatorIsThere", "out/", "a.xml", "out/a.xml"},
                      JoinCase{"BackslashIsThere", "d\\out\\", "a.xml", "d/out/a.xml"},
                      JoinCase{"NoFolder", "", "a.xml", "a.xml"},
                      JoinCase{"NameStays", "out", "a\\b.xml", "out/a\\b.xml"}),
    CaseName);

TEST_F(FileSystemTest, EitherSeparatorEndsAFolder) {
  EXPECT_TRUE(EndsWithSeparator("out/"));
  EXPECT_TRUE(EndsWithSeparator("out\\"));
  EXPECT_FALSE(EndsWithSeparator("out"));
  EXPECT_FALSE(EndsWithSeparator(""));
}

TEST_F(FileSystemTest, WrittenFileIsReadable) {
  EXPECT_TRUE(FileReadable(folder.Write("d/a.xml", "text")));
  EXPECT_TRUE(FileReadable(folder.Path("d\\a.xml")));
}

TEST_F(FileSystemTest, MissingFileIsNotReadable) {
  EXPECT_FALSE(FileReadable(folder.Path("a.xml")));
  EXPECT_FALSE(FileReadable(""));
}

TEST_F(FileSystemTest, FolderIsNoReadableFile) {
  EXPECT_TRUE(IsDirectory(folder.Path()));
  EXPECT_FALSE(FileReadable(folder.Path()));
}

TEST_F(FileSystemTest, FileIsNoFolder) {
  EXPECT_FALSE(IsDirectory(folder.Write("a.xml", "text")));
  EXPECT_FALSE(IsDirectory(folder.Path("missing")));
}

TEST_F(FileSystemTest, RegularFileIsNoFolderAndNoDevice) {
  EXPECT_TRUE(IsRegularFile(folder.Write("a.xml", "text")));
  std::filesystem::create_symlink("a.xml", folder.Path("link"));
  EXPECT_TRUE(IsRegularFile(folder.Path("link")));
  EXPECT_FALSE(IsRegularFile(folder.Path()));
  EXPECT_FALSE(IsRegularFile("/dev/null"));
  EXPECT_FALSE(IsRegularFile(folder.Path("missing")));
}

TEST_F(FileSystemTest, FoldersAreMadeWithThoseAbove) {
  CreateFolders(folder.Path("a/b\\c/"));
  EXPECT_TRUE(IsDirectory(folder.Path("a/b/c")));
}

TEST_F(FileSystemTest, FolderThatExistsIsFine) { EXPECT_NO_THROW(CreateFolders(folder.Path())); }

TEST_F(FileSystemTest, FailureToMakeAFolderNamesTheOperation) {
  const std::string path = folder.Write("file", "") + "/below";
  try {
    CreateFolders(path);
    FAIL() << "A folder was made below a file";
  } catch (const std::filesystem::filesystem_error& error) {
    EXPECT_NE(std::string(error.what()).find("create_directories"), std::string::npos)
        << error.what();
    EXPECT_EQ(error.path1(), path);
  }
}

TEST_F(FileSystemTest, RunningProgramKnowsItsFile) {
  const std::string path = ProgramPathFromSystem();
  EXPECT_EQ(SplitPath(path).baseName, "fts_tests");
  EXPECT_TRUE(FileReadable(path));
}

TEST_F(FileSystemTest, FileIsReadWholeAndUnchanged) {
  std::string content("line\r\nnul \0 and \xE9 byte", 22);
  while (content.size() < 3'000'000) content += content;  // More than one piece.
  EXPECT_EQ(ReadWholeFile(folder.Write("big.bin", content)), content);
}

TEST_F(FileSystemTest, EmptyFileReadsEmpty) {
  EXPECT_EQ(ReadWholeFile(folder.Write("empty", "")), "");
}

TEST_F(FileSystemTest, MissingFileOrFolderReadsAsNone) {
  EXPECT_EQ(ReadWholeFile(folder.Path("missing")), std::nullopt);
  EXPECT_EQ(ReadWholeFile(folder.Path()), std::nullopt);
}

TEST_F(FileSystemTest, ContentThatDoesNotFitLeavesTheFileThatIsThere) {
  const std::string path = folder.Write("state", "the state before");
  {
    const FileSizeLimit limit(100);
    EXPECT_FALSE(ReplaceFile(path, std::string(101, 'x')));
    EXPECT_TRUE(ReplaceFile(folder.Path("other"), std::string(100, 'x')));
  }
  EXPECT_EQ(folder.Read("state"), "the state before");
  EXPECT_FALSE(folder.Contains("state.tmp"));
}

}  // namespace
}  // namespace FTS
