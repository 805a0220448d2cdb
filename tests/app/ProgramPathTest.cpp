#include "app/ProgramPath.h"
#include "support/ProcessStateTest.h"

namespace FTS {
namespace {

class ProgramPathTest : public ProcessStateTest {};

TEST_F(ProgramPathTest, IsEmptyUntilItIsSet) {
  EXPECT_EQ(ProgramPath(), "");
  EXPECT_EQ(ProgramFolder(), "");
}

TEST_F(ProgramPathTest, KeepsWhatWasSetLast) {
  SetProgramPath("/usr/bin/first");
  SetProgramPath("/opt/vtn/second");
  EXPECT_EQ(ProgramPath(), "/opt/vtn/second");
}

TEST_F(ProgramPathTest, FolderEndsWithTheLastSeparatorOfEitherKind) {
  SetProgramPath("/opt/vtn/program");
  EXPECT_EQ(ProgramFolder(), "/opt/vtn/");
  SetProgramPath("C:\\tools/vtn\\program.exe");
  EXPECT_EQ(ProgramFolder(), "C:\\tools/vtn\\");
}

TEST_F(ProgramPathTest, BareNameHasNoFolder) {
  SetProgramPath("program");
  EXPECT_EQ(ProgramFolder(), "");
}

}  // namespace
}  // namespace FTS
