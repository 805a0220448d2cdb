#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <vector>

#include "optimisation/Forward.h"
#include "platform/XmlOutput.h"

namespace FTS {

/// A frontier: designs of which none dominates another.
class NonDominatedPopulation {
 public:
  using Owned = std::unique_ptr<Individual>;

  explicit NonDominatedPopulation(GA& initGa);
  virtual ~NonDominatedPopulation();
  NonDominatedPopulation(const NonDominatedPopulation&) = delete;
  NonDominatedPopulation& operator=(const NonDominatedPopulation&) = delete;

  /// Enters the candidate unless a member dominates it, and takes out the members that it
  /// dominates. Whoever fails or leaves goes to `rejected`. True when the candidate joined.
  bool Insert(Owned candidate, std::vector<Owned>& rejected);
  /// Destroys the `count` members that come last in the order of the search.
  void Trim(std::size_t count);
  /// How far the neighbours of each member lie apart, summed over the objectives in their own
  /// units. Those at either end of an objective are marked as boundary instead.
  void AssignCrowding();
  void ToXML(XmlOutputElement parent) const;

  std::map<std::int32_t, Owned> members;  ///< By id.

 private:
  GA* ga;
};

/// The order of the search, for tournaments and for who has to go: feasible designs first and the
/// newest of them foremost, then infeasible ones, those at a boundary or in the open before others.
/// Crowding counts among infeasible designs only, which is on purpose: saved searches are resumed
/// under the order that they began with.
bool CrowdedLess(const Individual& left, const Individual& right);

}  // namespace FTS
