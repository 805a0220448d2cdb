// The state of a search as a document: writing it, and going on from one.

#include <algorithm>
#include <array>
#include <iostream>
#include <string_view>
#include <utility>

#include "app/Config.h"
#include "model/BuildInfo.h"
#include "model/Model.h"
#include "model/NumberText.h"
#include "model/Objective.h"
#include "model/VtnException.h"
#include "optimisation/CoitGA.h"
#include "optimisation/GA.h"
#include "optimisation/Individual.h"
#include "optimisation/ModelEncodings.h"
#include "optimisation/NSGA.h"
#include "optimisation/NonDominatedPopulation.h"
#include "optimisation/Random.h"
#include "optimisation/ResultFiles.h"
#include "optimisation/SavedStateText.h"
#include "platform/Clock.h"
#include "platform/FileSystem.h"

namespace FTS {

namespace {

struct EncodingWord {
  std::int32_t type;
  std::string_view word;
};

// The tree form of safety levels has no word of its own in files from before it could be saved, and
// is written with the first one.
constexpr std::array<EncodingWord, 3> EncodingWords = {
    {{EncodingType::Fixed, "FixedEncoding"},
     {EncodingType::Tree, "TreeEncoding"},
     {EncodingType::FixedAsil, "FixedASILEncoding"}}};

std::string_view WordOf(std::int32_t type) {
  for (const EncodingWord& row : EncodingWords) {
    if (row.type == type) return row.word;
  }
  return EncodingWords.front().word;
}

void ObjectivesToXML(const Model& model, XmlOutputElement parent) {
  const XmlOutputElement list = parent.Add("Objectives");
  for (auto entry = model.ObjectivesBegin(); entry != model.ObjectivesEnd(); ++entry) {
    const XmlOutputElement objective = list.Add("Objective");
    objective.Add("Name", entry->first);
    objective.Add("Goal", entry->second.maximise ? "Maximise" : "Minimise");
  }
}

void SetRootAttributes(const Model& model, XmlOutputElement root) {
  root.SetAttribute("model", model.GetFileStem());
  root.SetAttribute("build", BuildEdition);
  root.SetAttribute("majorVersion", std::to_string(MajorVersion));
  root.SetAttribute("minorVersion", std::to_string(MinorVersion));
  root.SetAttribute("version", std::to_string(BuildNumber));
  root.SetAttribute("versionDate", BuildDate);
}

/// A part that every saved search has, at the top of the document.
XmlElement RequiredPart(XmlElement state, const std::string& name) {
  const XmlElement part = state.FirstChild(name);
  if (!part) throw VtnException("Missing element " + name + " in saved state");
  return part;
}

void ReadEncodingType(std::string_view word) {
  Config& config = Config::Instance();
  const auto row = std::find_if(EncodingWords.begin(), EncodingWords.end(),
                                [word](const EncodingWord& known) { return known.word == word; });
  if (row == EncodingWords.end()) {
    std::cout << "ERROR OF Encoding TYPE\n";
    return;
  }
  if (row->type == config.encodingType) return;
  std::cout << "Warning encoding type in saved state is different from program argument, "
               "using saved type\n";
  // Safety levels are searched along the hierarchy only, which has no word of its own.
  if (!config.decomposeSILs) config.encodingType = row->type;
}

}  // namespace

void GA::WriteState() {
  XmlOutput document("Vel-Tarn_Results");
  SetRootAttributes(*model, document.Root());
  const XmlOutputElement state = document.Root().Add(GetKind());
  state.Add("ModelFileName", fileName);
  state.Add("RandomSeed", std::to_string(RandomState()));
  state.Add("Generation", std::to_string(generation));
  state.Add("EncodingType", WordOf(Config::Instance().encodingType));
  state.Add("TimeElapsed", FormatDouble(static_cast<double>(totalTime)));
  ObjectivesToXML(*model, state);
  PopulationToXML(state);

  CreateFolders(ResultsFolder());
  const std::string stem = JoinPath(ResultsFolder(), GetRunName());
  const std::string text = document.Text();
  WriteResultFile(stem + ".xml", text);
  WriteScript(stem + ".js", "OptimisationResults", text);
}

void GA::ReadState(XmlElement element, StateReading& reading) {
  Config& config = Config::Instance();
  if (element.FirstChild("RandomSeed")) {
    config.randomSeed = RequiredSeed(element, "RandomSeed");
  }
  RequiredPart(element, "Generation");
  generation = RequiredCount(element, "Generation");
  ReadEncodingType(RequiredPart(element, "EncodingType").Text());
  RequiredPart(element, "TimeElapsed");
  totalTime = static_cast<float>(RequiredDouble(element, "TimeElapsed"));
  uncheckedPopulation =
      ReadIndividuals(RequiredPart(element, "UncheckedPopulation"), "new population", reading);
}

void GA::CheckForm(XmlElement individual) const {
  const XmlElement encoding = RequiredChild(individual, "Encoding");
  const EncodingForm& form = FormOf(encoding);
  const bool hasLevels =
      form.type == EncodingType::FixedAsil || form.type == EncodingType::TreeAsil;
  if (Config::Instance().decomposeSILs && !hasLevels) {
    RefuseEncoding(encoding, std::string(form.element) + " has no safety levels to search");
  }
  if (savedType && *savedType != form.type) {
    RefuseEncoding(encoding, std::string(form.element) + " among individuals of another form");
  }
}

std::vector<std::unique_ptr<Individual>> GA::ReadIndividuals(XmlElement element,
                                                             const std::string& place,
                                                             StateReading& reading) {
  std::vector<std::unique_ptr<Individual>> individuals;
  for (XmlElement item = element.FirstChild(); item; item = item.NextSibling()) {
    ++reading.held;
    try {
      CheckForm(item);
      individuals.push_back(std::make_unique<Individual>(*this, item));
    } catch (const VtnException& exception) {
      ++reading.refused;
      std::cout << "Error loading individual. Not added\n";
      std::cerr << exception.GetMessage() << ": " << reading.path << '\n';
      continue;
    }
    savedType = FormOf(item.FirstChild("Encoding")).type;
    if (!place.empty()) std::cout << "Individual loaded and added to " << place << ".\n";
  }
  return individuals;
}

void GA::FinishReading(const StateReading& reading) {
  if (reading.held == 0 || reading.refused < reading.held) return;
  throw VtnException("No individual of the saved state fits the model");
}

void GA::ReportLoaded(long long start, std::size_t individuals, std::size_t undominated) const {
  const auto seconds =
      static_cast<double>(static_cast<float>(Clock::Milliseconds() - start) / 1000.0F);
  std::cout << "--------Stored population loaded--------\n"
            << "Time taken to load population: " << FormatDouble(seconds) << "s.\n"
            << "Number of individuals loaded: " << individuals << '\n'
            << "Number of undominated individuals: " << undominated << '\n'
            << "Loaded generation:\t" << generation << '\n'
            << "Time taken to reach generation: " << FormatDouble(static_cast<double>(totalTime))
            << "s.\n"
            << "----------------------------------------\n";
}

NSGA::NSGA(Model& initModel, XmlElement element, const std::string& statePath,
           const std::string& modelPath, std::int32_t initRunNumber)
    : GA(initModel, modelPath, initRunNumber),
      archive(std::make_unique<NonDominatedPopulation>(*this)) {
  const long long start = Clock::Milliseconds();
  StateReading reading{statePath};
  ReadState(element, reading);
  std::size_t loaded = uncheckedPopulation.size();
  const auto readFrontier = [this, &loaded, &reading](XmlElement population,
                                                      const std::string& place) {
    auto frontier = std::make_unique<NonDominatedPopulation>(*this);
    for (auto& individual : ReadIndividuals(population, place, reading)) {
      const std::int32_t id = individual->individualId;
      loaded += frontier->members.emplace(id, std::move(individual)).second ? 1 : 0;
    }
    return frontier;
  };
  if (const XmlElement first = element.FirstChild("NonDominatedPopulation")) {
    frontiers.push_back(readFrontier(first, "frontier rank 0"));
  }
  const XmlElement others = RequiredPart(element, "OtherNonDominatedPopulations");
  for (XmlElement item = others.FirstChild(); item; item = item.NextSibling()) {
    const std::string rank = std::to_string(frontiers.size());
    frontiers.push_back(readFrontier(item, "frontier rank " + rank));
  }
  const XmlElement archives = element.FirstChild("ArchiveNonDominatedPopulations");
  if (archives.FirstChild()) {
    archive = readFrontier(RequiredChild(archives, "NonDominatedPopulation"), "");
  }
  FinishReading(reading);
  WarnOfAmbiguousGenes();
  for (const auto& frontier : frontiers) frontier->AssignCrowding();
  ReportLoaded(start, loaded, FirstFrontierSize());
}

CoitGA::CoitGA(Model& initModel, XmlElement element, const std::string& statePath,
               const std::string& modelPath, std::int32_t initRunNumber)
    : GA(initModel, modelPath, initRunNumber),
      mutationCount(MutationsFor(Config::Instance().populationSize)) {
  const long long start = Clock::Milliseconds();
  StateReading reading{statePath};
  ReadState(element, reading);
  frontiers = ReadIndividuals(RequiredPart(element, "Population"), "population", reading);
  FinishReading(reading);
  WarnOfSmallPopulation();
  WarnOfAmbiguousGenes();
  ReportLoaded(start, uncheckedPopulation.size() + frontiers.size(), 0);
}

std::unique_ptr<GA> LoadState(Model& model, const std::string& statePath,
                              const std::string& modelPath, std::int32_t runNumber) {
  const XmlDocument document = XmlDocument::LoadFile(statePath);
  if (document.HasError()) {
    throw VtnException("Cannot read saved state: " + statePath + ": " + document.ErrorText() +
                       " at line " + std::to_string(document.ErrorRow()));
  }
  try {
    const XmlElement root = document.FirstChild("Vel-Tarn_Results");
    if (!root) throw VtnException("Missing element Vel-Tarn_Results in saved state");
    if (const XmlElement state = root.FirstChild("NSGA")) {
      return std::make_unique<NSGA>(model, state, statePath, modelPath, runNumber);
    }
    const XmlElement state = root.FirstChild("CoitGA");
    if (!state) throw VtnException("Missing element NSGA or CoitGA in saved state");
    return std::make_unique<CoitGA>(model, state, statePath, modelPath, runNumber);
  } catch (const VtnException& exception) {
    throw VtnException(exception.GetMessage() + ": " + statePath);
  }
}

}  // namespace FTS
