#pragma once

#include <memory>
#include <string>
#include <vector>

#include "optimisation/GA.h"

namespace FTS {

/// A search for the cheapest allocation by a single number: cost, and a penalty for missed bounds
/// that tightens from generation to generation and is weighed by the gap between the best feasible
/// and the best cost so far. The penalty is that of Coit, Smith and Tate (Adaptive penalty methods
/// for genetic optimization of constrained combinatorial problems, INFORMS Journal on Computing 8,
/// 1996). The population is one list, best first. It needs at least two members: with one there is
/// nobody to mutate, for the best is never touched.
class CoitGA : public GA {
 public:
  CoitGA(Model& initModel, const std::string& modelPath, std::int32_t initRunNumber);
  /// Goes on from a saved search. Throws `VtnException` naming what is missing in it.
  CoitGA(Model& initModel, XmlElement element, const std::string& statePath,
         const std::string& modelPath, std::int32_t initRunNumber);
  ~CoitGA() override;

  void TrimPopulation() override;
  /// By crossover alone: mutation comes behind the ranking.
  void CreateOffspring() override;
  void RankPopulation() override;
  /// Destroys the population: there is no crowding in a single list.
  void AssignCrowding() override;
  double GetPenaltyWeight() const override;

  std::vector<std::unique_ptr<Individual>> frontiers;  ///< The population, best first.
  std::int32_t mutationCount;                          ///< Mutations of a generation.
  double bestFeasibleCost = -1.0;                      ///< -1 before any.
  double bestCost = -1.0;

 protected:
  void AdvanceGeneration() override;
  void JoinGivenCandidates() override { CreateOffspring(); }
  bool WantsStatus() const override { return generation % 10 == 0; }
  void PrintEndDetails() const override;
  std::string GetKind() const override { return "CoitGA"; }
  void PopulationToXML(XmlOutputElement parent) const override;

 private:
  static std::int32_t MutationsFor(std::int32_t populationSize);
  static void WarnOfSmallPopulation();
  void UpdateFitness();
  void MutatePopulation();
  const Individual& SelectParent() const;
};

}  // namespace FTS
