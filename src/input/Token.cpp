#include "input/Token.h"

#include <array>

namespace FTS {
namespace {

constexpr std::array<std::string_view, NamedTokenTypes> TokenNames = {
    "ERROR - File closed",
    "AND",
    "OR",
    "(",
    ")",
    "[",
    "]",
    "{",
    "}",
    "-",
    ".",
    ",",
    "<STRING>",
    "<ID>",
    "<NUMBER>",
    "Done - file read",
    "Model",
    "Version",
    "System",
    "Name",
    "Component",
    "Component type",
    "Description",
    "Outport",
    "Port",
    "Porttype",
    "FData",
    "Line",
    "Implementations",
    "Implementation",
    "Current",
    "Basic Event",
    "Basic Events",
    "Output Deviations",
    "Constant",
    "MTTR",
    "MTTF",
    "Fixed",
    "Time",
    "Binomial",
    "Poisson",
    "Dormant",
    "Sequential",
    "Variable",
    "None",
    "Output Deviation",
    "Severity",
    "H_BlockType",
    "Default",
    "E",
    "Output",
    "Or Port",
    "And Port",
    "Output Port",
    "Linetype Directed",
    "Connections",
    "PAND",
    "POR",
    "NOT",
    "XOR",
    "SAND",
    "PLUS",
    "MINUS",
    "MULTIPLY",
    "DIVIDE",
    "EQUALS",
    "Cost",
    "Inport",
    "SubSystem",
    "RTWdata",
    "Branch",
    "SrcBlock",
    "SrcPort",
    "DstBlock",
    "DstPort",
    "H_",
    "Weight",
    "Actual",
    "Potential",
    "CCFs",
    "CCF",
    "ACCF",
    "MaxGenerations",
    "DefaultMaxReplicants",
    "Objectives",
    "Reliability",
    "Safety",
    "Risk",
    "Unavailability",
    "Maximise",
    "Minimise",
    "MaxReplicants",
    "IncludeInOptimisation",
    "OptimisationParams",
    "Objective",
    "ExcludeFromOptimisation",
    "RiskTime",
    "Colon",
    "SimulationX",
    "FailureClassAssignments",
    "FailureClass",
    "Alternatives",
    "Type",
    "Matlab",
    "GotoNode",
    "MTTFMTTR",
    "Perspective",
    "Perspectives",
    "Hazards",
    "Hazard",
    "SafetyRequirement",
    "Logic",
    "GlobalGoto",
    "LocalGoto",
    "FromAllocation",
    "Allocations",
    "Allocation",
    "FailureDistribution",
    "Percentage",
    "ComponentFailureRate",
    "DiagnosticCoverage",
};

constexpr std::string_view NameAt(TokenType type) {
  return TokenNames[static_cast<std::size_t>(type)];
}

// A row missing or out of place would shift all names behind it.
static_assert(NameAt(TokenType::NUMBER) == "<NUMBER>");
static_assert(NameAt(TokenType::OutputDeviations) == "Output Deviations");
static_assert(NameAt(TokenType::EQUALS) == "EQUALS");
static_assert(NameAt(TokenType::RiskTime) == "RiskTime");
static_assert(NameAt(TokenType::DiagnosticCoverage) == "DiagnosticCoverage");
static_assert(static_cast<std::uint32_t>(TokenType::DiagnosticCoverage) + 1 == NamedTokenTypes);

}  // namespace

std::string_view TokenName(TokenType type) {
  const auto index = static_cast<std::size_t>(type);
  return index < TokenNames.size() ? TokenNames[index] : std::string_view();
}

}  // namespace FTS
