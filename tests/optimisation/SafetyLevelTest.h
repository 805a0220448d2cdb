#pragma once

#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "faulttree/BasicEvent.h"
#include "model/Component.h"
#include "model/Hazard.h"
#include "model/Implementation.h"
#include "model/NumberText.h"
#include "optimisation/EncodingText.h"
#include "optimisation/SearchTest.h"

namespace FTS {

/// An analysed model with levels to be given to three events: those of A, of B, and of the part
/// Inner within C, which has no event of its own. One hazard takes the loss of both A and B, the
/// other that of C.
class SafetyLevelTest : public SearchTest {
 protected:
  SafetyLevelTest() {
    Config::Instance().decomposeSILs = true;
    const std::string inner = XmlDesignPart("Inner", {{"i"}}, "");
    UseModel({{XmlObjective("ASILCost"), XmlObjective("ASILInvalids")},
              {XmlDesignPart("A", {{"a"}}, ""), XmlDesignPart("B", {{"b"}}, ""),
               XmlDesignPart("C", {{"c", 0.0, 0.0, 0.0, {inner}}}, "")},
              {"Omission-A.out AND Omission-B.out", "Omission-C.out"}});
    model->Synthesise();
    model->Analyse(false);
  }

  BasicEvent& EventOf(const std::string& component) const {
    return *model->FindComponent(component)->currentImplementation->basicEvents.at("dead");
  }
  std::string PrimeOf(const std::string& component) const {
    return FormatDouble(EventOf(component).prime);
  }
  void SetLevels(int a, int b, int c) const {
    EventOf("A").safetyRequirement = a;
    EventOf("B").safetyRequirement = b;
    EventOf("C.Inner").safetyRequirement = c;
  }
  /// The levels in the model of A, B and C.Inner.
  std::vector<int> Levels() const {
    return {EventOf("A").safetyRequirement, EventOf("B").safetyRequirement,
            EventOf("C.Inner").safetyRequirement};
  }
  /// What an encoding gives those three.
  std::vector<int> LevelsOf(const Encoding& encoding) const {
    SetLevels(-7, -7, -7);
    encoding.Apply(*model);
    return Levels();
  }
  void Require(const std::string& hazard, int level) const {
    model->hazards.at(hazard)->safetyRequirement = level;
  }
  static std::vector<int> Lines(const std::string& text) {
    std::vector<int> numbers;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
      numbers.push_back(ParseInteger(line));
      EXPECT_EQ(line, std::to_string(numbers.back()));
    }
    return numbers;
  }

  static constexpr const char* BothLost = "Omission-A.out AND Omission-B.out";
  static constexpr const char* CLost = "Omission-C.out";
};

}  // namespace FTS
