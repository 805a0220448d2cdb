#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "model/Forward.h"

namespace FTS {

// Models as text, put together from small pieces; each function gives one element of the file
// format.

/// A connection of a line: the port it targets, its class ("" for none) and its expression.
struct XmlConnection {
  std::string port;
  std::string failureClass;
  std::string expression;
};

/// An element with text or elements in it.
std::string Xml(const std::string& name, const std::string& content);

/// A basic event of fixed unavailability; a normal event likewise.
std::string XmlEvent(const std::string& name, double unavailability = 0.1);
std::string XmlNormalEvent(const std::string& name, double unavailability = 0.1);
/// An output deviation "class-port" with its logic; `extra` holds further elements.
std::string XmlDeviation(const std::string& name, const std::string& expression,
                         const std::string& extra = "");

/// What a component's implementation says of failures.
struct XmlFailures {
  std::vector<std::string> events = {};
  std::vector<std::string> deviations = {};
  std::vector<std::string> exported = {};
  std::vector<std::string> normalEvents = {};
};

/// A component whose behaviour is its annotation alone.
std::string XmlLeaf(const std::string& name, const std::vector<std::string>& ports,
                    const XmlFailures& failures, const std::string& extra = "");
/// A component of the given block type ("Refined", "Both", "Propagator", "NotRefined") with an
/// inner system (may be empty).
std::string XmlBlock(const std::string& name, const std::vector<std::string>& ports,
                     const std::string& blockType, const XmlFailures& failures,
                     const std::string& system, const std::string& extra = "");
/// A line; `type` is "Directed" or anything else, `defaultOperator` "AND", "OR" or "OUTPUT".
std::string XmlLine(const std::string& type, const std::string& defaultOperator,
                    const std::vector<XmlConnection>& connections,
                    const std::string& name = "line");
/// The line from one output to one input, as most lines are.
std::string XmlWire(const std::string& from, const std::string& to);
std::string XmlSystem(const std::vector<std::string>& components,
                      const std::vector<std::string>& lines);
std::string XmlHazard(const std::string& name, const std::string& logic, double severity = 0.0);
/// The whole document; `body` holds the system or the perspectives, and what else stands beside.
std::string XmlModel(const std::vector<std::string>& hazards, const std::string& body);

/// The model that the reader makes of the text.
std::unique_ptr<Model> LoadModel(const std::string& xml);

/// The cut sets of the analysed tree of that name, each as its members' names (component's local
/// name,
/// ".", event) in ascending order, joined by "*"; all in ascending order, joined by " + ".
std::string CutSetsOf(const Model& model, const std::string& tree);

/// Reads, synthesises and analyses silently, and gives `CutSetsOf` the only tree.
std::string OnlyCutSets(const std::string& xml);

}  // namespace FTS
