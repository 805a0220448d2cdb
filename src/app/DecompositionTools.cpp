#include "app/DecompositionTools.h"

#include <iostream>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "app/Config.h"
#include "app/ProgramPath.h"
#include "model/Model.h"
#include "model/NumberText.h"
#include "platform/Command.h"
#include "platform/FileSystem.h"

namespace FTS {
namespace {

/// The folder with the tables that the tools read.
std::string ResultsFolder(const Model& model) {
  return JoinPath(model.OutputDirectory(), model.GetFileStem() + "-FMEAOutput");
}

std::vector<std::string> SplitAtBlanks(const std::string& text) {
  std::istringstream stream(text);
  std::vector<std::string> parts;
  for (std::string part; std::getline(stream, part, ' ');) {
    if (!part.empty()) parts.push_back(std::move(part));
  }
  return parts;
}

/// Runs a tool on the results. What is printed is a command line as a user would type it; what is
/// run gets the same arguments without a shell, so that no character in a name has a meaning.
void Launch(const std::string& name, const Model& model, const std::string& arguments) {
  CommandLine line;
  line.program = ToolPath(ProgramFolder(), name);
  line.arguments = SplitAtBlanks(arguments);
  const std::string folder = ResultsFolder(model);
  line.arguments.insert(line.arguments.begin(), folder);
  if (!Config::Instance().runSilent) {
    std::cout << '"' << line.program << "\" \"" << folder << "\" " << arguments << '\n';
  }
  Command::Run(line);
}

}  // namespace

void LaunchSilDecomposition(const Model& model) {
  const Config& config = Config::Instance();
  std::string arguments = config.asilCostHeuristic;
  for (const std::string& number :
       {std::to_string(config.numberOfRepeatRuns), std::to_string(config.tabuRepetitionLimit),
        FormatDouble(config.tabuUpdatePdesFrequency), FormatDouble(config.tabuUpdatePascFrequency),
        FormatDouble(config.tabuPdesLimit), FormatDouble(config.tabuPascLimit),
        std::to_string(config.tabuNumOutputSolutions)}) {
    arguments += " " + number;
  }
  Launch("asilDecomp", model, arguments);
}

void LaunchDalDecomposition(const Model& model) {
  // The costs are those of the other tool: both options fill one setting.
  Launch("DAL", model, "dalCosts " + Config::Instance().asilCostHeuristic);
}

}  // namespace FTS
