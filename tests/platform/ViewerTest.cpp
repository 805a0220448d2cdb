#include <string>
#include <vector>

#include "platform/Viewer.h"
#include "support/EnvironmentVariable.h"
#include "support/ProcessStateTest.h"
#include "support/RecordedCommands.h"

namespace FTS {
namespace {

using Arguments = std::vector<std::string>;

class ViewerTest : public ProcessStateTest {
 protected:
  EnvironmentVariable display{"DISPLAY", ":0"};
  EnvironmentVariable wayland{"WAYLAND_DISPLAY", std::nullopt};
  EnvironmentVariable browser{"BROWSER", std::nullopt};
  RecordedCommands commands;
};

TEST_F(ViewerTest, DesktopChoosesTheProgram) {
  OpenInViewer("/out/Index.html");
  ASSERT_EQ(commands.Lines().size(), 1u);
  EXPECT_EQ(commands.Lines()[0].program, "xdg-open");
  EXPECT_EQ(commands.Lines()[0].arguments, Arguments{"/out/Index.html"});
  EXPECT_TRUE(commands.Lines()[0].discardOutput);
  EXPECT_TRUE(commands.Lines()[0].detached);
}

TEST_F(ViewerTest, BrowserVariableComesFirst) {
  const EnvironmentVariable chosen("BROWSER", "my-browser");
  OpenInViewer("/out/a b.html");
  ASSERT_EQ(commands.Lines().size(), 1u);
  EXPECT_EQ(commands.Lines()[0].program, "my-browser");
  EXPECT_EQ(commands.Lines()[0].arguments, Arguments{"/out/a b.html"});
}

TEST_F(ViewerTest, BrowserVariableMayCarryOptions) {
  const EnvironmentVariable chosen("BROWSER", "my-browser  --new-window");
  OpenInViewer("/out/Index.html");
  ASSERT_EQ(commands.Lines().size(), 1u);
  EXPECT_EQ(commands.Lines()[0].program, "my-browser");
  EXPECT_EQ(commands.Lines()[0].arguments, (Arguments{"--new-window", "/out/Index.html"}));
}

TEST_F(ViewerTest, OtherKindOfDisplayServesToo) {
  const EnvironmentVariable noDisplay("DISPLAY", std::nullopt);
  const EnvironmentVariable otherDisplay("WAYLAND_DISPLAY", "wayland-0");
  OpenInViewer("/out/Index.html");
  EXPECT_EQ(commands.Lines().size(), 1u);
}

TEST_F(ViewerTest, WithoutADisplayNothingRuns) {
  const EnvironmentVariable noDisplay("DISPLAY", std::nullopt);
  OpenInViewer("/out/Index.html");
  EXPECT_TRUE(commands.Lines().empty());
}

TEST_F(ViewerTest, EmptyDisplayIsNone) {
  const EnvironmentVariable noDisplay("DISPLAY", "");
  OpenInViewer("/out/Index.html");
  EXPECT_TRUE(commands.Lines().empty());
}

TEST_F(ViewerTest, EmptyPathOpensNothing) {
  OpenInViewer("");
  EXPECT_TRUE(commands.Lines().empty());
}

TEST_F(ViewerTest, FailureIsIgnored) {
  commands.SetStatus(std::nullopt);
  EXPECT_NO_THROW(OpenInViewer("/out/Index.html"));
}

}  // namespace
}  // namespace FTS
