#pragma once

#include <memory>
#include <string>
#include <vector>

#include "optimisation/GA.h"

namespace FTS {

/// An elitist search by non-dominated frontiers, of the family of Deb, Pratap, Agarwal and
/// Meyarivan (A fast and elitist multiobjective genetic algorithm: NSGA-II, IEEE Transactions on
/// Evolutionary Computation 6, 2002). Its rules are its own: frontiers persist from one generation
/// to the next, candidates are placed by repeated insertion, and among feasible designs the newest
/// comes first.
class NSGA : public GA {
 public:
  NSGA(Model& initModel, const std::string& modelPath, std::int32_t initRunNumber);
  /// Goes on from a saved search. Throws `VtnException` naming what is missing in it.
  NSGA(Model& initModel, XmlElement element, const std::string& statePath,
       const std::string& modelPath, std::int32_t initRunNumber);
  ~NSGA() override;

  void TrimPopulation() override;
  void CreateOffspring() override;
  /// With `strictBoundaries` an infeasible candidate is destroyed, not tried on the next frontier:
  /// none would ever take it.
  void RankPopulation() override;
  void AssignCrowding() override;

  std::vector<std::unique_ptr<NonDominatedPopulation>> frontiers;  ///< The ranked population.
  std::unique_ptr<NonDominatedPopulation> archive;  ///< Copies of the best feasible designs ever.

 protected:
  void AdvanceGeneration() override;
  void PrintStatusDetails() const override;
  void PrintEndDetails() const override;
  std::string GetKind() const override { return "NSGA"; }
  void PopulationToXML(XmlOutputElement parent) const override;

 private:
  void MeasureEncoding();
  void ArchiveFirstFrontier();
  void AdaptPopulationSize() const;
  void AddChild(const std::vector<Individual*>& pool);
  std::size_t FirstFrontierSize() const;
};

}  // namespace FTS
