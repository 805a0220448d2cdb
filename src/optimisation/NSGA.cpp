#include "optimisation/NSGA.h"

#include <algorithm>
#include <iostream>
#include <utility>

#include "app/Config.h"
#include "model/Model.h"
#include "optimisation/Individual.h"
#include "optimisation/ModelEncodings.h"
#include "optimisation/NonDominatedPopulation.h"
#include "optimisation/Random.h"
#include "optimisation/SavedStateText.h"
#include "platform/Clock.h"

namespace FTS {

namespace {

using Owned = std::unique_ptr<Individual>;

/// The preferred one of two members drawn with replacement.
const Individual& WinnerOfTournament(const std::vector<Individual*>& pool) {
  const int size = static_cast<int>(pool.size());
  const Individual& first = *pool[static_cast<std::size_t>(RandomIndex(size))];
  const Individual& second = *pool[static_cast<std::size_t>(RandomIndex(size))];
  return CrowdedLess(first, second) ? first : second;
}

}  // namespace

NSGA::NSGA(Model& initModel, const std::string& modelPath, std::int32_t initRunNumber)
    : GA(initModel, modelPath, initRunNumber),
      archive(std::make_unique<NonDominatedPopulation>(*this)) {
  WarnOfAmbiguousGenes();
  MeasureEncoding();
  SeedRandom(Config::Instance().randomSeed);
}

NSGA::~NSGA() = default;

void NSGA::MeasureEncoding() {
  Config& config = Config::Instance();
  std::int32_t size = model->CreateFixedEncoding()->GetSize();
  // A model without redundancy to choose, as in a search for safety levels, has no flat genes.
  if (size == 0) size = CreateEncoding(*model, config.encodingType)->GetSize();
  config.mutationRate = size > 0 ? 1.0 / size : 1.0;
}

void NSGA::AdvanceGeneration() {
  RankPopulation();
  AssignCrowding();
  TrimPopulation();
  AdaptPopulationSize();
}

std::size_t NSGA::FirstFrontierSize() const {
  return frontiers.empty() ? 0 : frontiers.front()->members.size();
}

void NSGA::AdaptPopulationSize() const {
  Config& config = Config::Instance();
  if (config.populationSizing != PopulationSizing::Variable) return;
  const bool early = generation < maxGenerations / 10;
  const std::size_t size = early ? FirstFrontierSize() : archive->members.size();
  if (early ? !frontiers.empty() : size > 0) {
    config.populationSize = static_cast<std::int32_t>(size);
  }
}

void NSGA::RankPopulation() {
  const Config& config = Config::Instance();
  NonDominatedPopulation* current = frontiers.empty() ? nullptr : frontiers.front().get();
  std::size_t level = 0;
  std::vector<Owned> rejected;
  while (!uncheckedPopulation.empty() || !rejected.empty()) {
    if (uncheckedPopulation.empty()) {
      std::move(rejected.rbegin(), rejected.rend(), std::back_inserter(uncheckedPopulation));
      rejected.clear();
      ++level;
      if (config.pureElitist) {
        uncheckedPopulation.clear();
        break;
      }
    }
    // Only a new frontier becomes the current one: as long as there are frontiers from before, all
    // that fails is tried on the first once more, and those between stay as they are.
    if (level == frontiers.size()) {
      frontiers.push_back(std::make_unique<NonDominatedPopulation>(*this));
      current = frontiers.back().get();
    }
    Owned candidate = std::move(uncheckedPopulation.back());
    uncheckedPopulation.pop_back();
    if (config.strictBoundaries && !candidate->feasible) continue;
    current->Insert(std::move(candidate), rejected);
  }
  if (config.includeArchive) ArchiveFirstFrontier();
}

void NSGA::ArchiveFirstFrontier() {
  if (frontiers.empty()) return;
  for (const auto& [id, member] : frontiers.front()->members) {
    if (!member->feasible || member->archived) continue;
    member->archived = true;
    std::vector<Owned> displaced;
    archive->Insert(member->Clone(), displaced);
  }
}

void NSGA::AssignCrowding() {
  std::int64_t total = 0;
  for (const auto& frontier : frontiers) {
    const auto size = static_cast<std::int64_t>(frontier->members.size());
    total += size;
    const std::int64_t excess = total - Config::Instance().populationSize;
    if (excess > 0 && excess >= size) return;  // It will go, with those behind it.
    frontier->AssignCrowding();
  }
}

void NSGA::TrimPopulation() {
  const Config& config = Config::Instance();
  // Sizes of one mode are strict at once, of another from the tenth part of the search on.
  const bool strictSize =
      config.populationSizing == PopulationSizing::Fixed ||
      (config.populationSizing == PopulationSizing::Variable && generation >= maxGenerations / 10);
  const std::int64_t limit = config.populationSize;
  std::int64_t total = 0;
  std::int64_t firstSize = 0;
  for (std::size_t i = 0; i < frontiers.size();) {
    const auto size = static_cast<std::int64_t>(frontiers[i]->members.size());
    const std::int64_t saved = total;
    total += size;
    const std::int64_t excess = total - limit;
    if (i == 0 && !strictSize) {
      firstSize = size;
      ++i;
    } else if (excess <= 0) {
      ++i;
    } else if ((strictSize || firstSize <= limit) && excess < size) {
      frontiers[i]->Trim(static_cast<std::size_t>(excess));
      total = limit;
      ++i;
    } else {
      frontiers.erase(frontiers.begin() + static_cast<std::ptrdiff_t>(i));
      total = saved;
    }
  }
}

void NSGA::AddChild(const std::vector<Individual*>& pool) {
  int failures = 0;
  while (true) {
    const Individual& first = WinnerOfTournament(pool);
    const Individual& second = WinnerOfTournament(pool);
    Owned child = first.Breed(second);
    child->encoding->Mutate(Config::Instance().mutationRate);
    if (child->Evaluate()) {
      uncheckedPopulation.push_back(std::move(child));
      return;
    }
    CountFailure(failures, *child->encoding);
  }
}

void NSGA::CreateOffspring() {
  std::vector<Individual*> pool;
  for (const auto& frontier : frontiers) {
    for (const auto& [id, member] : frontier->members) pool.push_back(member.get());
  }
  std::sort(pool.begin(), pool.end(), [](const Individual* left, const Individual* right) {
    return CrowdedLess(*left, *right);
  });
  const std::int32_t wanted = Config::Instance().childPopulationSize;
  while (static_cast<std::int32_t>(uncheckedPopulation.size()) < wanted) {
    if (pool.empty()) {
      AddRandomIndividual();  // Nobody has met the bounds so far, or all were cut off.
    } else {
      AddChild(pool);
    }
  }
}

void NSGA::PrintStatusDetails() const {
  std::cout << "Number of archive individuals: " << archive->members.size() << '\n';
}

void NSGA::PrintEndDetails() const {
  std::size_t total = 0;
  for (const auto& frontier : frontiers) total += frontier->members.size();
  if (total == 0 && Config::Instance().strictBoundaries) {
    std::cerr << "No design met the bounds of the objectives.\n";
  }
  std::cout << "Total Number of individuals: " << total << '\n'
            << "Number of undominated individuals: " << FirstFrontierSize() << '\n'
            << "Number of archived individuals: " << archive->members.size() << '\n';
}

void NSGA::PopulationToXML(XmlOutputElement parent) const {
  if (!frontiers.empty()) frontiers.front()->ToXML(parent);
  const XmlOutputElement others = parent.Add("OtherNonDominatedPopulations");
  for (std::size_t i = 1; i < frontiers.size(); ++i) frontiers[i]->ToXML(others);
  if (!archive->members.empty()) archive->ToXML(parent.Add("ArchiveNonDominatedPopulations"));
}

}  // namespace FTS
