#include "optimisation/CoitGA.h"

#include <algorithm>
#include <cmath>
#include <iostream>
#include <utility>

#include "app/Config.h"
#include "model/Model.h"
#include "model/NumberText.h"
#include "model/Objective.h"
#include "optimisation/Individual.h"
#include "optimisation/ModelEncodings.h"
#include "optimisation/Random.h"

namespace FTS {

namespace {

constexpr double MutationShare = 0.55;
constexpr double Tightening = 0.04;  // Of the thresholds, per generation.
constexpr std::size_t SmallestPopulation = 2;

bool FitnessLess(const std::unique_ptr<Individual>& left,
                 const std::unique_ptr<Individual>& right) {
  if (left->fitness < right->fitness || left->fitness > right->fitness) {
    return left->fitness < right->fitness;
  }
  return left->individualId > right->individualId;
}

void KeepLower(double& best, double cost) {
  if (best == -1.0 || best > cost) best = cost;
}

}  // namespace

CoitGA::CoitGA(Model& initModel, const std::string& modelPath, std::int32_t initRunNumber)
    : GA(initModel, modelPath, initRunNumber),
      mutationCount(MutationsFor(Config::Instance().populationSize)) {
  Config& config = Config::Instance();
  WarnOfSmallPopulation();
  WarnOfAmbiguousGenes();
  const std::int32_t size = CreateEncoding(*model, config.encodingType)->GetSize();
  config.mutationRate = size > 0 ? 1.0 / size : 1.0;
  std::cout << "MutationRate: " << FormatDouble(config.mutationRate) << '\n';
  SeedRandom(config.randomSeed);
}

CoitGA::~CoitGA() = default;

void CoitGA::WarnOfSmallPopulation() {
  const std::int32_t size = Config::Instance().populationSize;
  if (size != 1) return;  // Smaller ones are told for every kind of search.
  std::cerr << "Warning: CoitGA needs a population of at least 2, for the best one is never "
               "mutated: populationSize=1\n";
}

std::int32_t CoitGA::MutationsFor(std::int32_t populationSize) {
  return static_cast<std::int32_t>(populationSize * MutationShare);
}

void CoitGA::AdvanceGeneration() {
  RankPopulation();
  UpdateFitness();
  TrimPopulation();
  MutatePopulation();
  UpdateFitness();
}

void CoitGA::RankPopulation() {
  while (!uncheckedPopulation.empty()) {
    std::unique_ptr<Individual> individual = std::move(uncheckedPopulation.back());
    uncheckedPopulation.pop_back();
    if (individual->feasible) KeepLower(bestFeasibleCost, individual->asilCost);
    KeepLower(bestCost, individual->asilCost);
    frontiers.push_back(std::move(individual));
  }
}

void CoitGA::UpdateFitness() {
  const double divisor = generation * Tightening + 1.0;
  for (auto& [name, objective] : model->objectives) {
    if (!objective.hasLowerBound && !objective.hasUpperBound) continue;
    objective.lowerScale = objective.lowerScaleStart / divisor;
    objective.upperScale = objective.upperScaleStart / divisor;
  }
  for (const auto& individual : frontiers) {
    individual->fitness = individual->asilCost - individual->GetPenalty();
  }
  std::sort(frontiers.begin(), frontiers.end(), FitnessLess);
}

double CoitGA::GetPenaltyWeight() const {
  return bestFeasibleCost > bestCost ? bestCost - bestFeasibleCost + 1.0 : 0.0;
}

void CoitGA::TrimPopulation() {
  const std::int32_t limit = std::max(Config::Instance().populationSize, 0);
  while (static_cast<std::int32_t>(frontiers.size()) > limit) frontiers.pop_back();
}

void CoitGA::AssignCrowding() { frontiers.clear(); }

void CoitGA::MutatePopulation() {
  if (frontiers.size() < SmallestPopulation) return;
  const int others = static_cast<int>(frontiers.size()) - 1;
  for (std::int32_t i = 0; i < mutationCount; ++i) {
    Individual& individual = *frontiers[static_cast<std::size_t>(1 + RandomIndex(others))];
    std::unique_ptr<Encoding> before = individual.encoding->Clone();
    if (!individual.encoding->Mutate(Config::Instance().mutationRate)) continue;
    if (!individual.Evaluate()) individual.encoding = std::move(before);
  }
}

const Individual& CoitGA::SelectParent() const {
  const std::size_t size = frontiers.size();
  const float root = std::trunc(std::sqrt(static_cast<float>(size - 1))) + 1.0F;
  const auto drawn = static_cast<std::size_t>(RandomUniform() * root);
  // The square prefers the first ones, which are the best.
  return *frontiers[std::min(drawn * drawn, size - 1)];
}

void CoitGA::CreateOffspring() {
  const std::int32_t wanted = Config::Instance().childPopulationSize;
  int failures = 0;
  while (static_cast<std::int32_t>(uncheckedPopulation.size()) < wanted) {
    if (frontiers.empty()) {
      AddRandomIndividual();
      continue;
    }
    const Individual& first = SelectParent();
    std::unique_ptr<Individual> child = first.Breed(SelectParent());
    if (child->Evaluate()) {
      failures = 0;
      uncheckedPopulation.push_back(std::move(child));
    } else {
      CountFailure(failures, *child->encoding);
    }
  }
}

void CoitGA::PrintEndDetails() const {
  std::cout << "Total Number of individuals: " << frontiers.size() << '\n'
            << "Number of undominated individuals: 0\n"
            << "Number of archived individuals: 0\n";
}

void CoitGA::PopulationToXML(XmlOutputElement parent) const {
  const XmlOutputElement population = parent.Add("Population");
  for (const auto& individual : frontiers) individual->ToXML(population);
}

}  // namespace FTS
