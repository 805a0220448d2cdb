#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace FTS {

/// What a token is. The numbers index the names that messages use.
enum class TokenType : std::uint32_t {
  FileClosed = 0,
  AND,
  OR,
  LeftParenthesis,
  RightParenthesis,
  LeftBracket,
  RightBracket,
  LeftBrace,
  RightBrace,
  Hyphen,  // The character "-" gives MINUS.
  Point,
  Comma,
  STRING,
  ID,
  NUMBER,
  FileRead,
  Model,
  Version,
  System,
  Name,
  Component,
  ComponentType,
  Description,
  Outport,
  Port,
  Porttype,
  FData,
  Line,
  Implementations,
  Implementation,
  Current,
  BasicEvent,
  BasicEvents,
  OutputDeviations,
  Constant,
  MTTR,
  MTTF,
  Fixed,
  Time,
  Binomial,
  Poisson,
  Dormant,
  Sequential,
  Variable,
  None,
  OutputDeviation,
  Severity,
  H_BlockType,
  Default,
  E,
  Output,
  OrPort,
  AndPort,
  OutputPort,
  LinetypeDirected,
  Connections,
  PAND,
  POR,
  NOT,
  XOR,
  SAND,
  PLUS,
  MINUS,
  MULTIPLY,
  DIVIDE,
  EQUALS,
  Cost,
  Inport,
  SubSystem,
  RTWdata,
  Branch,
  SrcBlock,
  SrcPort,
  DstBlock,
  DstPort,
  H_,
  Weight,
  Actual,
  Potential,
  CCFs,
  CCF,
  ACCF,
  MaxGenerations,
  DefaultMaxReplicants,
  Objectives,
  Reliability,
  Safety,
  Risk,
  Unavailability,
  Maximise,
  Minimise,
  MaxReplicants,
  IncludeInOptimisation,
  OptimisationParams,
  Objective,
  ExcludeFromOptimisation,
  RiskTime,
  Colon,
  SimulationX,
  FailureClassAssignments,
  FailureClass,
  Alternatives,
  Type,
  Matlab,
  GotoNode,
  MTTFMTTR,
  Perspective,
  Perspectives,
  Hazards,
  Hazard,
  SafetyRequirement,
  Logic,
  GlobalGoto,
  LocalGoto,
  FromAllocation,
  Allocations,
  Allocation,
  FailureDistribution,
  Percentage,
  ComponentFailureRate,
  DiagnosticCoverage,  // The last one with a name, and no keyword gives it.

  DiagnosticCoverageKeyword = 121,
  NormalEvents = 122,
  NormalEvent = 123,
};

/// How many token types, from the first on, have a name.
inline constexpr std::uint32_t NamedTokenTypes = 121;

/// A piece of model text with its meaning.
struct Token {
  std::uint32_t line;  // Where the piece ends, counted from the first line's number.
  TokenType type;
  std::string text;  // Empty for punctuation in files.
};

using TokenPtr = std::shared_ptr<const Token>;

/// The name of a token type in messages. The last three types have none, so it is empty for them.
std::string_view TokenName(TokenType type);

}  // namespace FTS
