#include "support/ProgramRun.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <regex>

#include "model/NumberText.h"
#include "platform/FileSystem.h"
#include "platform/XmlDocument.h"
#include "support/TemporaryFolder.h"
#include "support/TestPaths.h"

namespace FTS {

ProgramRun RunProgramWith(const std::vector<std::string>& arguments, const ProgramStart& start) {
  const TemporaryFolder folder;
  const std::string outputPath = folder.Write("output", "");
  const std::string errorPath = folder.Write("errors", "");
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, outputPath.c_str(), O_WRONLY, 0);
  posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, errorPath.c_str(), O_WRONLY, 0);

  if (!start.folder.empty()) {
    posix_spawn_file_actions_addchdir_np(&actions, start.folder.c_str());
  }

  std::string program = start.program.empty() ? ProgramUnderTest() : start.program;
  std::vector<std::string> texts = arguments;
  std::vector<char*> argv{program.data()};
  for (std::string& text : texts) argv.push_back(text.data());
  argv.push_back(nullptr);

  ProgramRun run;
  pid_t child = 0;
  const int started = posix_spawn(&child, program.c_str(), &actions, nullptr, argv.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  EXPECT_EQ(started, 0) << "cannot start " << program;
  int status = 0;
  if (started == 0 && waitpid(child, &status, 0) == child && WIFEXITED(status)) {
    run.exitStatus = WEXITSTATUS(status);
  }
  run.output = folder.Read("output");
  run.errors = folder.Read("errors");
  return run;
}

std::string WithoutTimes(const std::string& text) {
  static const std::regex Time(R"(\b(\d+h )?(\d+m )?\d+(\.\d+)?(e-\d+)?s\b)");
  return std::regex_replace(text, Time, "<time>");
}

namespace {

std::string TextOfChild(const XmlElement& element, std::string_view child) {
  return std::string(element.FirstChild(child).Text());
}

/// The number behind `attribute=` in the file's text; the document gives elements and texts only,
/// so ids are read from the text itself.
std::vector<std::string> AttributeValues(const std::string& text, const std::regex& pattern) {
  std::vector<std::string> values;
  for (std::sregex_iterator i(text.begin(), text.end(), pattern), end; i != end; ++i) {
    values.push_back((*i)[1]);
  }
  return values;
}

std::map<std::string, std::string> EventNames(const std::string& text) {
  static const std::regex Event(R"re(<[A-Za-z]+ ID="(-?\d+)"><Name>([^<]*)</Name><ShortName>)re");
  std::map<std::string, std::string> names;
  for (std::sregex_iterator i(text.begin(), text.end(), Event), end; i != end; ++i) {
    names[(*i)[1]] = (*i)[2];
  }
  return names;
}

void ReadCutSets(const std::string& treeText, const std::map<std::string, std::string>& names,
                 ReportedTree& tree) {
  static const std::regex EventId("<Event ID=\"(-?\\d+)\" />");
  static const std::string Open = "<CutSet>";
  static const std::string Close = "</CutSet>";
  for (std::size_t at = treeText.find(Open); at != std::string::npos;
       at = treeText.find(Open, at + 1)) {
    const std::string one = treeText.substr(at, treeText.find(Close, at) - at);
    std::set<std::string> members;
    for (const std::string& id : AttributeValues(one, EventId)) {
      members.insert(names.contains(id) ? names.at(id) : "unknown event " + id);
    }
    std::string joined;
    for (const std::string& member : members) joined += (joined.empty() ? "" : ";") + member;
    EXPECT_TRUE(tree.cutSets.insert(joined).second) << "twice: " << joined;
    const std::size_t figure = one.find("<Unavailability>") + 16;
    tree.unavailabilityOf[joined] = ParseDouble(one.substr(figure, one.find('<', figure) - figure));
  }
}

void ReadSummary(const std::string& treeText, ReportedTree& tree) {
  static const std::regex Count("<CutSets order=\"(\\d+)\" pruned=\"false\">(\\d+)</CutSets>");
  for (std::sregex_iterator i(treeText.begin(), treeText.end(), Count), end; i != end; ++i) {
    tree.countByOrder[ParseInteger((*i)[1].str())] = ParseInteger((*i)[2].str());
  }
}

}  // namespace

std::map<std::string, ReportedTree> ReadResults(const std::string& path) {
  std::map<std::string, ReportedTree> trees;
  const XmlDocument document = XmlDocument::LoadFile(path);
  EXPECT_FALSE(document.HasError()) << path << ": " << document.ErrorText();
  if (document.HasError()) return trees;
  const auto text = ReadWholeFile(path).value_or("");
  const auto names = EventNames(text);
  std::size_t at = text.find("<FaultTree ID=");
  const XmlElement all = document.FirstChild("Vel-Tarn_Results").FirstChild("FaultTrees");
  for (XmlElement element = all.FirstChild("FaultTree"); element; element = element.NextSibling()) {
    const std::size_t next = text.find("<FaultTree ID=", at + 1);
    const std::string treeText = text.substr(at, next == std::string::npos ? next : next - at);
    ReportedTree tree;
    tree.unavailability = ParseDouble(TextOfChild(element, "Unavailability"));
    tree.frequency = ParseDouble(TextOfChild(element, "Frequency"));
    tree.severity = ParseDouble(TextOfChild(element, "Severity"));
    ReadSummary(treeText, tree);
    ReadCutSets(treeText, names, tree);
    trees.emplace(TextOfChild(element, "Name"), std::move(tree));
    at = next;
  }
  return trees;
}

}  // namespace FTS
