#include <filesystem>
#include <fstream>
#include <string>

#include "platform/Command.h"
#include "support/ProcessStateTest.h"
#include "support/RecordedCommands.h"
#include "support/TemporaryFolder.h"

namespace FTS {
namespace {

class CommandTest : public ProcessStateTest {
 protected:
  TemporaryFolder folder;
};

TEST_F(CommandTest, ReturnsTheExitStatus) {
  EXPECT_EQ(Command::Run({"true", {}}), 0);
  EXPECT_EQ(Command::Run({"sh", {"-c", "exit 3"}}), 3);
}

TEST_F(CommandTest, ProgramThatIsMissingGivesNoStatus) {
  EXPECT_EQ(Command::Run({folder.Path("missing"), {}}), std::nullopt);
}

TEST_F(CommandTest, ProgramEndedByASignalGivesNoStatus) {
  EXPECT_EQ(Command::Run({"sh", {"-c", "kill -9 $$"}}), std::nullopt);
}

TEST_F(CommandTest, WaitsForTheEnd) {
  const std::string file = folder.Path("written");
  const std::string script =
      "i=0; while [ $i -lt 20000 ]; do i=$((i + 1)); done; echo done > \"$0\"";
  Command::Run({"sh", {"-c", script, file}});
  EXPECT_EQ(folder.Read("written"), "done\n");
}

TEST_F(CommandTest, DetachedProgramIsNotWaitedFor) {
  const std::string in = folder.Path("in");
  const std::string out = folder.Path("out");
  ASSERT_EQ(Command::Run({"mkfifo", {in, out}}), 0);
  // It cannot end before this test has written to it.
  CommandLine line{"sh", {"-c", "read word < \"$1\"; echo \"$word\" > \"$2\"", "sh", in, out}};
  line.detached = true;
  EXPECT_EQ(Command::Run(line), 0);
  std::ofstream(in) << "late\n";
  std::string word;
  std::ifstream(out) >> word;
  EXPECT_EQ(word, "late");
}

TEST_F(CommandTest, DetachedProgramThatIsMissingGivesNoStatus) {
  CommandLine line{folder.Path("missing"), {}};
  line.detached = true;
  EXPECT_EQ(Command::Run(line), std::nullopt);
}

TEST_F(CommandTest, NoCharacterOfAnArgumentIsSpecial) {
  const std::string argument = "a b; $(echo c) 'd' \"e\" * \\";
  Command::Run({"sh", {"-c", "printf %s \"$2\" > \"$1\"", "sh", folder.Path("out"), argument}});
  EXPECT_EQ(folder.Read("out"), argument);
}

TEST_F(CommandTest, OutputIsShownUnlessDiscarded) {
  ::testing::internal::CaptureStdout();
  Command::Run({"echo", {"shown"}});
  Command::Run({"echo", {"hidden"}, true});
  EXPECT_EQ(::testing::internal::GetCapturedStdout(), "shown\n");
}

class ToolPathTest : public CommandTest {
 protected:
  void WriteProgram(const std::string& name) const {
    std::filesystem::permissions(folder.Write(name, "#!/bin/sh\n"),
                                 std::filesystem::perms::owner_all);
  }

  std::string Found() const { return ToolPath(folder.Path() + "/", "tool"); }
};

TEST_F(ToolPathTest, EndingGoesBeforeTheBareName) {
  WriteProgram("tool.exe");
  WriteProgram("tool");
  EXPECT_EQ(Found(), folder.Path("tool.exe"));
}

TEST_F(ToolPathTest, BareNameServesWithoutTheOther) {
  WriteProgram("tool");
  EXPECT_EQ(Found(), folder.Path("tool"));
}

TEST_F(ToolPathTest, FileThatCannotBeRunHidesNoProgram) {
  folder.Write("tool.exe", "MZ");
  WriteProgram("tool");
  EXPECT_EQ(Found(), folder.Path("tool"));
}

TEST_F(ToolPathTest, FolderHidesNoProgram) {
  std::filesystem::create_directory(folder.Path("tool.exe"));
  WriteProgram("tool");
  EXPECT_EQ(Found(), folder.Path("tool"));
}

TEST_F(ToolPathTest, HasTheEndingWhenNothingCanBeRun) {
  EXPECT_EQ(Found(), folder.Path("tool.exe"));
  folder.Write("tool", "");
  EXPECT_EQ(Found(), folder.Path("tool.exe"));
}

TEST_F(CommandTest, RecordingRunsNothing) {
  RecordedCommands commands;
  commands.SetStatus(5);
  EXPECT_EQ(Command::Run({"touch", {folder.Path("touched")}}), 5);
  ASSERT_EQ(commands.Lines().size(), 1u);
  EXPECT_EQ(commands.Lines()[0].program, "touch");
  EXPECT_FALSE(folder.Contains("touched"));
}

}  // namespace
}  // namespace FTS
