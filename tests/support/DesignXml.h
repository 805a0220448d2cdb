#pragma once

#include <initializer_list>
#include <string>
#include <vector>

namespace FTS {

// Models for the search of designs as text: components that each fail by their one event "dead" at
// the port "out", in whatever implementation is chosen.

/// One implementation. With an inside its port fails as the inner component "Inner" does.
struct XmlChoice {
  std::string name;
  double cost = 0.0;
  double unavailability = 0.1;
  double weight = 0.0;
  std::vector<std::string> inside = {};
};

/// The element that lets the search change a component.
inline constexpr const char* XmlIncluded = "<IncludeInOptimisation>true</IncludeInOptimisation>";

/// A component that may be built in any of the choices. `extra` stands behind its name.
std::string XmlDesignPart(const std::string& name, const std::vector<XmlChoice>& choices,
                          const std::string& extra = XmlIncluded);

/// An objective; `bounds` holds the elements of "Bounds".
std::string XmlObjective(const std::string& name, const std::string& goal = "Minimise",
                         const std::string& bounds = "");

/// What a model of designs is made of.
struct XmlDesign {
  std::vector<std::string> objectives;
  std::vector<std::string> parts;
  /// The hazards; each is named by its logic, for instance "Omission-A.out".
  std::vector<std::string> hazards = {};
  int maxGenerations = 3;
  int maxReplicants = 1;
};

std::string XmlDesignModel(const XmlDesign& design);

}  // namespace FTS
