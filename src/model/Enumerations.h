#pragma once

#include <cstdint>
#include <string>

namespace FTS {

/// What a fault tree node is. The numbers are fixed: they order and select nodes in the analysis.
enum class NodeType : std::int32_t {
  NullOp = 0,
  Or = 1,
  And = 2,
  PAnd = 3,
  SAnd = 4,
  POr = 5,
  Not = 6,
  XOr = 7,
  InputDeviation = 8,
  OutputDeviation = 9,
  FailureMode = 10,  // Basic event.
  Circle = 11,
  PCCF = 12,  // Potential common cause failure.
  ACCF = 13,  // Actual common cause failure.
  Module = 14,
  External = 15,  // Goto.
  ExternalDeviation = 16,
  Normal = 17,
  Complement = 18,
  State = 19,
};

/// How the failure behaviour of a component is composed from its own annotation and its inside.
enum class HBlockType : std::int32_t { PROPAGATOR = 0, REFINED = 1, NOT_REFINED = 2, BOTH = 3 };

/// The operator with which a line joins its sources by default. Not the number of a node type.
enum class LineOperator : std::int32_t { AND = 0, OR = 1, OUTPUT = 2 };

/// The formula that turns the parameters of a basic event into unavailability and frequency.
enum class FailureModel : std::int32_t {
  CONSTANT = 0,
  MTTR = 1,
  MTTF = 2,
  MTTFMTTR = 3,
  FIXED = 4,
  TIME = 5,
  BINOMIAL = 6,
  POISSON = 7,
  DORMANT = 8,
  SEQUENTIAL = 9,
  VARIABLE = 10,
  DISTRIBUTION = 11,
  NONE = 12,
};

/// The text of an enumerator in results and messages.
std::string ToText(NodeType type);
std::string ToText(HBlockType type);
std::string ToText(LineOperator op);
std::string ToText(FailureModel failureModel);

}  // namespace FTS
