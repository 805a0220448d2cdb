#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>

#include "model/Forward.h"
#include "model/VtnException.h"
#include "optimisation/Encoding.h"
#include "optimisation/Forward.h"
#include "platform/XmlDocument.h"

namespace FTS {

/// A candidate design: its encoding, the objective values measured for it, and what the search
/// notes on it.
class Individual {
 public:
  /// With that encoding, or without one given with a random one of that type.
  Individual(GA& initGa, std::int32_t encodingType, std::unique_ptr<Encoding> initEncoding);
  /// From a saved search; tells the id on standard output, and no later individual gets it again.
  /// Bounds are not checked anew. Throws `VtnException` when the element does not fit the model.
  Individual(GA& initGa, XmlElement element);
  virtual ~Individual();

  /// A copy with the same id.
  std::unique_ptr<Individual> Clone() const;
  /// A child with a new id; of this one alone where the crossover rate says so.
  std::unique_ptr<Individual> Breed(const Individual& other) const;

  /// Measures the design: optimisation/Evaluation.cpp. False when there is nothing to measure,
  /// because the design cannot be built. Throws like synthesis and analysis, with the id behind the
  /// message.
  bool Evaluate();

  /// Marks the one of the two as `dominated` that is no better in any objective and not the same
  /// design, or of two equal designs the younger one.
  static void Compare(Individual& left, Individual& right);

  /// How far bounds are missed, weighed against the gap between the best feasible and the best
  /// cost of the search; 0 or less.
  double GetPenalty() const;

  void ToXML(XmlOutputElement parent) const;

  /// The measured value of the objective, 0 when there is none.
  double GetValue(const std::string& objective) const;

  std::map<std::string, double> evaluations;  ///< By objective, to six significant digits.
  std::map<std::string, double> violations;   ///< By objective: how far from its bound.
  double crowding = 0.0;
  std::int32_t rank = 0;  ///< Stays 0; the order of the search asks for it all the same.
  bool boundary = false;
  bool feasible = true;
  double asilCost = 0.0;
  std::unique_ptr<Encoding> encoding;
  std::int32_t individualId;
  std::map<std::int32_t, std::string> notes;
  std::int32_t violationCount = 0;
  bool dominated = false;
  std::int32_t lastAlteredGeneration = 0;
  double fitness = 0.0;
  bool archived = false;

  /// Forgets the ids given out, the comparisons counted and the lowest count of invalid cut sets.
  static void ResetProcessState();
  /// The comparisons of this process.
  static double ComparisonCount();

 private:
  Individual(GA& initGa, std::unique_ptr<Encoding> initEncoding, std::int32_t initId);
  /// Tells on standard output when no individual before had so few invalid cut sets.
  static void RecordInvalids(double invalids);
  bool Measure();
  VtnException Named(const std::string& message) const;
  void EvaluateDesign(Model* working);
  void EvaluateSafetyLevels(Model& working);
  void CheckBounds();

  GA* ga;
};

/// The evaluations of `value` that the search compares: written with six significant digits and
/// read back, so that designs which differ in the seventh digit count as equal.
double ToSixDigits(double value);

}  // namespace FTS
