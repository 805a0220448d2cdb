#include "optimisation/NonDominatedPopulation.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>
#include <utility>

#include "app/Config.h"
#include "model/Model.h"
#include "model/Objective.h"
#include "optimisation/GA.h"
#include "optimisation/Individual.h"

namespace FTS {

namespace {

constexpr std::array<std::string_view, 7> SortingObjectives = {
    "Cost", "Weight", "ASILCost", "ASILInvalids", "Risk", "Reliability", "Safety"};

/// Others leave the order as the objective before has left it.
bool Sorts(const std::string& objective) {
  return objective.find("Unavailability") != std::string::npos ||
         std::find(SortingObjectives.begin(), SortingObjectives.end(), objective) !=
             SortingObjectives.end();
}

/// Ascending by one objective, what is no number last, the newer one of two equals first.
class ByObjective {
 public:
  explicit ByObjective(const std::string& initObjective) : objective(&initObjective) {}

  bool operator()(const Individual* left, const Individual* right) const {
    const double leftValue = left->GetValue(*objective);
    const double rightValue = right->GetValue(*objective);
    if (std::isnan(leftValue) != std::isnan(rightValue)) return std::isnan(rightValue);
    if (leftValue < rightValue || leftValue > rightValue) return leftValue < rightValue;
    return left->individualId > right->individualId;
  }

 private:
  const std::string* objective;
};

void AddDistances(const std::vector<Individual*>& sorted, const std::string& objective) {
  for (std::size_t i = 0; i < sorted.size(); ++i) {
    if (i == 0 || i + 1 == sorted.size()) {
      sorted[i]->boundary = true;
    } else {
      const double sum = sorted[i]->crowding + sorted[i + 1]->GetValue(objective) -
                         sorted[i - 1]->GetValue(objective);
      if (!std::isnan(sum)) sorted[i]->crowding = sum;  // Two infinities lie nowhere apart.
    }
  }
}

bool CrowdedLessAmongInfeasible(const Individual& left, const Individual& right) {
  if (left.boundary != right.boundary) return left.boundary;
  if (!left.boundary && (left.crowding > right.crowding || left.crowding < right.crowding)) {
    return left.crowding > right.crowding;
  }
  return left.individualId > right.individualId;
}

}  // namespace

bool CrowdedLess(const Individual& left, const Individual& right) {
  if (left.rank != right.rank) return left.rank < right.rank;
  if (left.feasible != right.feasible) return left.feasible;
  if (left.feasible) return left.individualId > right.individualId;
  return CrowdedLessAmongInfeasible(left, right);
}

NonDominatedPopulation::NonDominatedPopulation(GA& initGa) : ga(&initGa) {}

NonDominatedPopulation::~NonDominatedPopulation() = default;

bool NonDominatedPopulation::Insert(Owned candidate, std::vector<Owned>& rejected) {
  candidate->dominated = false;
  if (Config::Instance().strictBoundaries && !candidate->feasible) {
    rejected.push_back(std::move(candidate));
    return false;
  }
  for (auto member = members.begin(); member != members.end();) {
    member->second->dominated = false;
    Individual::Compare(*member->second, *candidate);
    if (member->second->dominated) {
      member->second->dominated = false;
      rejected.push_back(std::move(member->second));
      member = members.erase(member);
    } else if (candidate->dominated) {
      candidate->dominated = false;
      rejected.push_back(std::move(candidate));
      return false;
    } else {
      ++member;
    }
  }
  const std::int32_t id = candidate->individualId;
  const auto [place, isNew] = members.try_emplace(id);
  // Only a saved search that was changed by hand has an id twice.
  if (!isNew) rejected.push_back(std::move(place->second));
  place->second = std::move(candidate);
  return true;
}

void NonDominatedPopulation::Trim(std::size_t count) {
  std::vector<const Individual*> sorted;
  for (const auto& [id, member] : members) sorted.push_back(member.get());
  std::sort(sorted.begin(), sorted.end(), [](const Individual* left, const Individual* right) {
    return CrowdedLess(*left, *right);
  });
  for (std::size_t i = sorted.size() - std::min(count, sorted.size()); i < sorted.size(); ++i) {
    members.erase(std::int32_t{sorted[i]->individualId});
  }
}

void NonDominatedPopulation::AssignCrowding() {
  std::vector<Individual*> sorted;
  for (const auto& [id, member] : members) {
    member->crowding = 0.0;
    member->boundary = false;
    sorted.push_back(member.get());
  }
  const Model& model = *ga->model;
  for (auto entry = model.ObjectivesBegin(); entry != model.ObjectivesEnd(); ++entry) {
    if (Sorts(entry->first)) std::sort(sorted.begin(), sorted.end(), ByObjective(entry->first));
    AddDistances(sorted, entry->first);
  }
}

void NonDominatedPopulation::ToXML(XmlOutputElement parent) const {
  const XmlOutputElement element = parent.Add("NonDominatedPopulation");
  for (const auto& [id, member] : members) member->ToXML(element);
}

}  // namespace FTS
