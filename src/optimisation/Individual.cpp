#include "optimisation/Individual.h"

#include <algorithm>
#include <cmath>
#include <iostream>
#include <limits>
#include <optional>
#include <utility>

#include "app/Config.h"
#include "model/Model.h"
#include "model/NumberText.h"
#include "model/Objective.h"
#include "model/VtnException.h"
#include "optimisation/GA.h"
#include "optimisation/ModelEncodings.h"
#include "optimisation/Random.h"
#include "optimisation/SavedStateText.h"

namespace FTS {

namespace {

struct ProcessState {
  std::int32_t nextId = 0;
  double comparisons = 0.0;
  std::optional<double> lowestInvalids;
};

ProcessState& TheState() {
  static ProcessState state;
  return state;
}

constexpr std::int32_t LastId = std::numeric_limits<std::int32_t>::max();

/// The next id. The last one is never given out, since there would be none behind it.
std::int32_t TakeId() {
  std::int32_t& next = TheState().nextId;
  if (next == LastId) throw VtnException("No ids are left for further individuals.");
  return next++;
}

/// On how many objectives each of two individuals is at least as good as the other.
struct Score {
  std::size_t left = 0;
  std::size_t right = 0;

  void Count(double leftValue, double rightValue, bool maximise) {
    // What is no number cannot tell two designs apart.
    const bool equal = leftValue == rightValue || std::isnan(leftValue) || std::isnan(rightValue);
    const bool leftBetter = maximise ? leftValue > rightValue : leftValue < rightValue;
    if (equal || leftBetter) ++left;
    if (equal || !leftBetter) ++right;
  }
};

}  // namespace

Individual::Individual(GA& initGa, std::int32_t encodingType,
                       std::unique_ptr<Encoding> initEncoding)
    : encoding(std::move(initEncoding)), individualId(TakeId()), ga(&initGa) {
  if (!encoding) encoding = CreateEncoding(*ga->model, encodingType);
}

Individual::Individual(GA& initGa, std::unique_ptr<Encoding> initEncoding, std::int32_t initId)
    : encoding(std::move(initEncoding)), individualId(initId), ga(&initGa) {}

Individual::Individual(GA& initGa, XmlElement element)
    : encoding(LoadEncoding(*initGa.model, RequiredChild(element, "Encoding"))),
      individualId(RequiredInteger(element, "IndividualID", LastId - 1)),
      ga(&initGa) {
  const XmlElement values = RequiredChild(element, "Evaluations");
  for (XmlElement item = values.FirstChild(); item; item = item.NextSibling()) {
    evaluations[RequiredText(item, "Name")] = RequiredDouble(item, "Value");
  }
  const auto cost = evaluations.find("ASILCost");
  if (cost != evaluations.end()) asilCost = cost->second;
  if (element.FirstChild("LastAlteredGeneration")) {
    lastAlteredGeneration = RequiredInteger(element, "LastAlteredGeneration");
  }
  std::cout << individualId << '\n';
  TheState().nextId = std::max(TheState().nextId, individualId + 1);
}

Individual::~Individual() = default;

std::unique_ptr<Individual> Individual::Clone() const {
  // The constructor is not for others: the copy has the id of its source.
  std::unique_ptr<Individual> copy(new Individual(*ga, encoding->Clone(), individualId));
  copy->feasible = feasible;
  copy->lastAlteredGeneration = lastAlteredGeneration;
  copy->evaluations = evaluations;
  copy->notes = notes;
  return copy;
}

std::unique_ptr<Individual> Individual::Breed(const Individual& other) const {
  const bool cross = Config::Instance().crossoverRate > static_cast<double>(RandomUniform());
  std::unique_ptr<Encoding> child =
      cross ? encoding->Crossover(*other.encoding) : encoding->Clone();
  if (!child) throw VtnException("Two encodings of the population do not match.");
  return std::make_unique<Individual>(*ga, encoding->GetType(), std::move(child));
}

double Individual::GetValue(const std::string& objective) const {
  const auto found = evaluations.find(objective);
  return found == evaluations.end() ? 0.0 : found->second;
}

void Individual::Compare(Individual& left, Individual& right) {
  TheState().comparisons += 1.0;
  Score score;
  for (const auto& [name, value] : left.evaluations) {
    const Objective* objective = left.ga->model->GetObjective(name);
    // A value that no objective of the model asks for is a figure to keep low. One that the other
    // lacks counts as 0 there, and is entered.
    score.Count(value, right.evaluations[name], objective && objective->maximise);
  }
  const std::size_t objectives = left.evaluations.size();
  if (score.left > score.right) {
    if (score.left == objectives) right.dominated = true;
  } else if (score.right > score.left) {
    if (score.right == objectives) left.dominated = true;
  } else if (score.right == objectives && left.encoding->Equals(*right.encoding)) {
    // The older one of two equal designs stays.
    (left.individualId >= right.individualId ? left : right).dominated = true;
  }
}

void Individual::ToXML(XmlOutputElement parent) const {
  const XmlOutputElement element = parent.Add("Individual");
  element.Add("IndividualID", std::to_string(individualId));
  encoding->ToXML(element.Add("Encoding"));
  const XmlOutputElement values = element.Add("Evaluations");
  for (const auto& [name, value] : evaluations) {
    const XmlOutputElement evaluation = values.Add("Evaluation");
    evaluation.Add("Name", name);
    const bool whole = name == "ASILCost" || name == "ASILInvalids";
    evaluation.Add("Value", FormatFixed(value, whole ? 0 : 6));
  }
  element.Add("LastAlteredGeneration", std::to_string(lastAlteredGeneration));
}

void Individual::RecordInvalids(double invalids) {
  std::optional<double>& lowest = TheState().lowestInvalids;
  if (lowest && invalids >= *lowest) return;
  lowest = invalids;
  std::cout << "New lowest Invalids count : " << FormatDouble(invalids) << '\n';
}

void Individual::ResetProcessState() { TheState() = ProcessState(); }

double Individual::ComparisonCount() { return TheState().comparisons; }

double ToSixDigits(double value) {
  return std::isfinite(value) ? ParseDouble(FormatDouble(value)) : value;
}

}  // namespace FTS
