#include "support/DesignXml.h"

#include "model/NumberText.h"
#include "support/ModelXml.h"

namespace FTS {

namespace {

std::string All(const std::vector<std::string>& elements) {
  std::string text;
  for (const std::string& element : elements) text += element + "\n";
  return text;
}

std::string Inside(const XmlChoice& choice) {
  if (choice.inside.empty()) return "";
  return XmlSystem(choice.inside, {XmlWire("Inner.out", "out")});
}

std::string ChoiceXml(const std::string& element, const XmlChoice& choice) {
  const std::string failures =
      Xml("FailureData", Xml("BasicEvents", XmlEvent("dead", choice.unavailability)) +
                             Xml("OutputDeviations", XmlDeviation("Omission-out", "dead")));
  return Xml(element, Xml("Name", choice.name) +
                          Xml("HBlockType", choice.inside.empty() ? "NotRefined" : "Refined") +
                          Xml("Cost", FormatDouble(choice.cost)) +
                          Xml("Weight", FormatDouble(choice.weight)) +
                          (choice.inside.empty() ? failures : Inside(choice)));
}

}  // namespace

std::string XmlDesignPart(const std::string& name, const std::vector<XmlChoice>& choices,
                          const std::string& extra) {
  std::string alternatives;
  for (std::size_t i = 1; i < choices.size(); ++i) {
    alternatives += ChoiceXml("Alternative", choices[i]);
  }
  return Xml("Component",
             Xml("Name", name) + extra + Xml("Ports", Xml("Port", Xml("Name", "out"))) +
                 Xml("Implementations",
                     ChoiceXml("Current", choices.at(0)) + Xml("Alternatives", alternatives)));
}

std::string XmlObjective(const std::string& name, const std::string& goal,
                         const std::string& bounds) {
  return Xml("Objective",
             Xml("Name", name) + Xml("Goal", goal) + (bounds.empty() ? "" : Xml("Bounds", bounds)));
}

std::string XmlDesignModel(const XmlDesign& design) {
  std::vector<std::string> hazards;
  for (const std::string& logic : design.hazards) hazards.push_back(XmlHazard(logic, logic));
  const std::string parameters = Xml(
      "OptimisationParams", Xml("MaxGenerations", std::to_string(design.maxGenerations)) +
                                Xml("DefaultMaxReplicants", std::to_string(design.maxReplicants)) +
                                Xml("Objectives", All(design.objectives)));
  return XmlModel(hazards, parameters + XmlSystem(design.parts, {}));
}

}  // namespace FTS
