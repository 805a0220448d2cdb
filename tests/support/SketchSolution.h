#pragma once

#include <functional>
#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "support/FailureOracle.h"
#include "support/ModelSketch.h"

namespace FTS {

/// A deviation depends on itself; the solution knows no loops.
struct SketchLoop : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// What a sketch means, worked out by a direct walk over its values. The rules:
///
/// Deviations. An output deviation is the OR of its causes; without causes it is no deviation. The
/// events of a component are told apart by its full name; a common cause is one event for all who
/// refer to it.
///
/// Ports. Seen from outside, a class leaving a port of a component is
///   - for a propagator with two ports: what arrives at the other port (with another number of
///     ports a hole);
///   - for a component that is not refined: the output deviation;
///   - for a refined one: what the lines inside say about the port;
///   - for one that is both: the OR of the two.
/// Seen from a line inside the component, the place of the inner lines is taken by what arrives at
/// the port from outside. A class arriving at a port is what the lines around its component say.
///
/// Lines. A connection says how a port (its target) fails. For one target and class the connection
/// with that class counts, that of the last line if several lines have one; otherwise the one
/// without a class of the first line that has one. (A line has at most one connection for a target
/// and class.) A reference without class means the target's class. ANDPORT and ORPORT stand for the
/// AND or OR over the line's other ports that have a connection for the class or one for all
/// classes: all of them on an undirected line; on a directed line those whose expression is
/// OUTPUTPORT (or DEFAULT where the default is OUTPUT), and all of them if there is no such port.
/// DEFAULT is the one of them that the line's default operator names. OUTPUTPORT is a hole, and so
/// is a connection's absence.
///
/// Jumps. A goto means what leaves the target's port, seen from outside. FromAllocation and a goto
/// to an exported deviation mean that deviation of the host; a hole if the host has none.
///
/// Trees. One per hazard in the order of names: its logic over what leaves the named ports. Without
/// hazards, one per output deviation that is a system outport, named by class, "-" and the port's
/// full name: perspectives and components in the order of names, a component before what is inside
/// it, and its deviations in the order of their names.
///
/// Holes are told in FailureOracle.h.
class SketchSolution {
 public:
  explicit SketchSolution(const ModelSketch& initSketch);

  /// Null for a hole. These throw SketchLoop.
  FormulaPtr Leaving(int component, const std::string& port, const std::string& failureClass);
  FormulaPtr Arriving(int component, const std::string& port, const std::string& failureClass);
  FormulaPtr Exported(int component, const std::string& name);

  /// The trees in order, each with its name.
  std::vector<std::pair<std::string, FormulaPtr>> Trees();

  /// Whether an operand of a deviation's or hazard's logic has turned out to be a hole so far.
  bool MetHole() const { return metHole; }

  /// Whether the lines inside a component have a connection for the class at the port.
  bool HasInnerConnection(int component, const std::string& port,
                          const std::string& failureClass) const;

 private:
  /// What a line says about one of its ports.
  struct Rule {
    const SketchLine* line = nullptr;
    const SketchConnection* connection = nullptr;
    int system = -1;
    std::string failureClass;
  };

  FormulaPtr Once(const std::string& key, const std::function<FormulaPtr()>& solve);
  FormulaPtr Seen(int component, const std::string& port, const std::string& failureClass,
                  bool fromInside);
  FormulaPtr Annotated(int component, const std::string& port, const std::string& failureClass);
  FormulaPtr Deviation(int component, const SketchDeviation& deviation);
  FormulaPtr Lines(int system, int component, const std::string& port,
                   const std::string& failureClass);
  Rule FindRule(int system, int component, const std::string& port,
                const std::string& failureClass) const;
  FormulaPtr LocalLogic(const SketchLogic& logic, int component);
  FormulaPtr Noted(FormulaPtr operand);
  FormulaPtr LineLogic(const SketchLogic& logic, const Rule& rule);
  FormulaPtr Peers(const std::string& word, const Rule& rule);
  FormulaPtr HazardLogic(const SketchLogic& logic);
  void AddOutports(int system, std::vector<std::pair<std::string, FormulaPtr>>& trees);

  const ModelSketch& sketch;
  std::map<std::string, FormulaPtr> solved;
  bool metHole = false;
  std::set<std::string> open;  // Keys whose solution has begun.
};

}  // namespace FTS
