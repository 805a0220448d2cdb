#include "optimisation/GA.h"

#include <algorithm>
#include <array>
#include <iostream>
#include <string_view>
#include <utility>

#include "app/Config.h"
#include "model/Component.h"
#include "model/Model.h"
#include "model/NumberText.h"
#include "model/VtnException.h"
#include "optimisation/Individual.h"
#include "output/PageTemplate.h"
#include "platform/Clock.h"
#include "platform/FileSystem.h"
#include "platform/Viewer.h"

namespace FTS {

namespace {

constexpr std::string_view Rule = "----------------------------------------";
constexpr std::string_view ResultsSuffix = "-OptimisationResults";

float SecondsSince(long long start) {
  return static_cast<float>(Clock::Milliseconds() - start) / 1000.0F;
}

std::string Seconds(float seconds) { return FormatDouble(static_cast<double>(seconds)); }

/// What a run's name says of the size of the population, by `PopulationSizing`. The words do not
/// fit the options' words, which is deliberate: scripts know result files by these names.
constexpr std::array<std::string_view, 3> SizingTexts = {"_PopulationLimit", "_PopulationSize",
                                                         "_PopulationVariable"};

/// What the word in a command file does.
struct SearchCommand {
  std::string_view word;
  bool GA::*flag;
  bool value;
};

constexpr std::array<SearchCommand, 6> Commands = {{
    {"QUIT", &GA::quit, true},
    {"REPORT_STATUS", &GA::reportStatus, true},
    {"MONITOR_STATUS", &GA::monitorStatus, true},
    {"CANCEL_MONITOR_STATUS", &GA::monitorStatus, false},
    {"STORE_CURRENT_STATE", &GA::storeState, true},
    {"OUTPUT_CURRENT_GENERATION_CONFIGURATION", &GA::outputConfiguration, true},
}};

}  // namespace

GA::GA(Model& initModel, const std::string& modelPath, std::int32_t initRunNumber)
    : maxGenerations(Config::Instance().maxGenerations),
      runNumber(initRunNumber),
      model(&initModel),
      basePrimeCount(static_cast<std::uint32_t>(initModel.GetPrimeCount())) {
  const PathParts parts = SplitPath(AbsolutePath(modelPath).value_or(modelPath));
  folder = parts.drive + parts.directory;
  fileName = parts.baseName + parts.extension;
}

GA::~GA() = default;

void GA::Evolve() {
  const long long sessionStart = Clock::Milliseconds();
  if (generation >= maxGenerations) {
    std::cout << "Current generation (" << generation << ") of optimisation is already at maximum ("
              << maxGenerations << ").\n";
    return;
  }
  ++generation;
  std::cout << "Starting evolution at generation: " << generation << '\n';
  RunGenerations(sessionStart);
  const float sessionTime = SecondsSince(sessionStart);
  totalTime += sessionTime;
  OutputOptimisationResults();
  if (Config::Instance().openBrowser) {
    const std::string page = JoinPath(ResultsFolder(), GetRunName() + ".html");
    // The words of another system, which scripts look for; what opens it is this one's viewer.
    std::cout << "start iexplore.exe \"" << page << "\"\n";
    OpenInViewer(page);
  }
  quit = true;
  PrintEnd(sessionTime);
}

void GA::RunGenerations(long long sessionStart) {
  const std::int32_t interval = Config::Instance().outputInterval;
  while (generation <= maxGenerations) {
    ReadCommandFile();
    const long long start = Clock::Milliseconds();
    if (generation > 1) {
      CreateOffspring();
    } else if (uncheckedPopulation.empty()) {
      InitialisePopulation();
    } else {
      JoinGivenCandidates();
    }
    AdvanceGeneration();
    if (interval != 0 && generation % interval == 0) OutputOptimisationResults();
    if ((monitorStatus || reportStatus) && WantsStatus()) PrintStatus(start, sessionStart);
    std::cout.flush();
    if (generation == maxGenerations) break;
    ++generation;
    if (quit) break;
  }
}

void GA::PrintStatus(long long generationStart, long long sessionStart) const {
  const float session = SecondsSince(sessionStart);
  std::cout << "Generation: " << generation << '/' << maxGenerations << " completed in "
            << Seconds(SecondsSince(generationStart))
            << " s. Session run time: " << Seconds(session)
            << " s. Total run time: " << Seconds(totalTime + session) << "s.\n";
  PrintStatusDetails();
}

void GA::PrintEnd(float sessionTime) const {
  std::cout << "-------Maximum generation reached-------\n"
            << "Generation: " << generation << '\n'
            << "Session evolution time: " << Seconds(sessionTime) << "s.\n"
            << "Total evolution time: " << Seconds(totalTime) << "s.\n";
  PrintEndDetails();
  std::cout << Rule << '\n';
}

void GA::CountFailure(int& failures, const Encoding& last) {
  if (++failures < MostTries) return;
  const std::string reason = last.DescribeInvalid();
  throw VtnException("No valid design found in " + std::to_string(MostTries) + " tries" +
                     (reason.empty() ? "" : ": " + reason) + ".");
}

void GA::WarnOfAmbiguousGenes() const {
  constexpr std::size_t MostTold = 9;
  if (savedType.value_or(Config::Instance().encodingType) != EncodingType::Fixed) return;
  for (const auto& component : model->configurableComponents) {
    if (component->implementations.size() <= MostTold) continue;
    std::cerr << "Warning: " << component->GetFullNameText()
              << " has more than nine implementations, and the fixed encoding cannot tell all of "
                 "their combinations apart.\n";
  }
}

void GA::AddRandomIndividual() {
  const std::int32_t type = savedType.value_or(Config::Instance().encodingType);
  int failures = 0;
  while (true) {
    auto individual = std::make_unique<Individual>(*this, type, nullptr);
    if (individual->Evaluate()) {
      uncheckedPopulation.push_back(std::move(individual));
      return;
    }
    CountFailure(failures, *individual->encoding);
  }
}

void GA::InitialisePopulation() {
  const long long start = Clock::Milliseconds();
  const std::int32_t wanted = Config::Instance().childPopulationSize;
  while (static_cast<std::int32_t>(uncheckedPopulation.size()) < wanted) AddRandomIndividual();
  std::cout << "--------Population initialised--------\n"
            << "Time taken to intitialise population: " << Seconds(SecondsSince(start)) << "s.\n"
            << "Number of individuals created: " << uncheckedPopulation.size() << '\n'
            << Rule << '\n';
}

std::string GA::CommandFolder() const {
  return JoinPath(folder, SplitPath(fileName).baseName + std::string(ResultsSuffix));
}

void GA::ReadCommandFile() {
  CreateFolders(CommandFolder());
  const std::string path = JoinPath(CommandFolder(), "commandFile.txt");
  const std::optional<std::string> text = ReadWholeFile(path);
  if (!text) return;
  bool found = false;
  std::string buffer;
  for (const char character : *text) {
    buffer += character;
    const auto command = std::find_if(Commands.begin(), Commands.end(),
                                      [&](const SearchCommand& row) { return row.word == buffer; });
    if (command == Commands.end()) continue;
    this->*command->flag = command->value;
    buffer.clear();
    found = true;
  }
  if (found) RemoveFile(path);
}

std::string GA::ResultsFolder() const {
  return JoinPath(model->OutputDirectory(), model->GetFileStem() + std::string(ResultsSuffix));
}

std::string GA::MakeResultsFolder() const {
  CreateFolders(model->OutputDirectory());
  CreateFolders(ResultsFolder());
  UnpackPageTemplate(ResultsFolder());
  return ResultsFolder();
}

void GA::OutputOptimisationResults() {
  const long long start = Clock::Milliseconds();
  std::cout << "Outputting optimisation results\n";
  if (Config::Instance().openBrowser) {
    const std::string resultsFolder = MakeResultsFolder();
    WriteState();
    WriteModelScript();
    WriteResultsPage(resultsFolder);
  }
  std::cout << "Output completed in " << Seconds(SecondsSince(start)) << " s.\n";
}

std::string GA::GetRunName() const {
  const Config& config = Config::Instance();
  std::string name =
      "GA(" + SplitPath(fileName).baseName + ")_Generation" + std::to_string(generation);
  name += SizingTexts.at(static_cast<std::size_t>(config.populationSizing));
  name += std::to_string(config.populationSize);
  name += "_ChildPopulationSize" + std::to_string(config.childPopulationSize);
  if (config.includeArchive) name += "_Archive";
  name += config.encodingType == EncodingType::Fixed ? "_FixedEncoding" : "_TreeEncoding";
  if (config.pureElitist) name += "_PureElitist";
  return name + "_RunNumber" + std::to_string(runNumber);
}

}  // namespace FTS
