#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <utility>

#include "app/Config.h"
#include "model/Model.h"
#include "optimisation/FakeEncoding.h"
#include "optimisation/Individual.h"
#include "optimisation/NSGA.h"
#include "optimisation/NonDominatedPopulation.h"
#include "support/CapturedStreams.h"
#include "support/DesignXml.h"
#include "support/ModelXml.h"
#include "support/ProcessStateTest.h"

namespace FTS {

/// A search over a model that has two objectives to minimise, "Cost" and "Weight", and one
/// component to choose. Its candidates are made by hand; the seed is fixed.
class SearchTest : public ProcessStateTest {
 protected:
  using Values = std::map<std::string, double>;

  SearchTest() {
    Config::Instance().randomSeed = 4711;
    Config::Instance().runSilent = true;
    Config::Instance().quantAnalysisTypes = QuantAnalysisType::EsaryProschan;
    UseModel({{XmlObjective("Cost"), XmlObjective("Weight")},
              {XmlDesignPart("A", {{"cheap", 1.0}, {"good", 2.0}})}});
  }

  /// Another model for the tests of a derived fixture.
  void UseModel(const XmlDesign& design) {
    search.reset();
    model = LoadModel(XmlDesignModel(design));
    model->ResetImplementations();
    search = std::make_unique<NSGA>(*model, "/models/plant.v2.xml", 1);
  }

  /// A candidate with the number of a design that no other one has, and with these values.
  std::unique_ptr<Individual> Candidate(const Values& values, bool feasible = true) {
    return Candidate(++lastDesign, values, feasible);
  }
  std::unique_ptr<Individual> Candidate(int design, const Values& values, bool feasible = true) {
    auto made = std::make_unique<Individual>(*search, EncodingType::Tree,
                                             std::make_unique<FakeEncoding>(design));
    made->evaluations = values;
    made->feasible = feasible;
    return made;
  }
  static Values At(double cost, double weight) { return {{"Cost", cost}, {"Weight", weight}}; }

  std::unique_ptr<Model> model;
  std::unique_ptr<NSGA> search;

 private:
  int lastDesign = 1000;
};

}  // namespace FTS
