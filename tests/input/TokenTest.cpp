#include <sstream>
#include <string>

#include "input/Token.h"
#include "support/ProcessStateTest.h"

namespace FTS {
namespace {

class TokenTest : public ProcessStateTest {};

TEST_F(TokenTest, TypesAreNamedInTheOrderOfTheirNumbers) {
  const std::string expected =
      "ERROR - File closed|AND|OR|(|)|[|]|{|}|-|.|,|<STRING>|<ID>|<NUMBER>|Done - file read|Model|"
      "Version|System|Name|Component|Component type|Description|Outport|Port|Porttype|FData|Line|"
      "Implementations|Implementation|Current|Basic Event|Basic Events|Output Deviations|Constant|"
      "MTTR|MTTF|Fixed|Time|Binomial|Poisson|Dormant|Sequential|Variable|None|Output Deviation|"
      "Severity|H_BlockType|Default|E|Output|Or Port|And Port|Output Port|Linetype Directed|"
      "Connections|PAND|POR|NOT|XOR|SAND|PLUS|MINUS|MULTIPLY|DIVIDE|EQUALS|Cost|Inport|SubSystem|"
      "RTWdata|Branch|SrcBlock|SrcPort|DstBlock|DstPort|H_|Weight|Actual|Potential|CCFs|CCF|ACCF|"
      "MaxGenerations|DefaultMaxReplicants|Objectives|Reliability|Safety|Risk|Unavailability|"
      "Maximise|Minimise|MaxReplicants|IncludeInOptimisation|OptimisationParams|Objective|"
      "ExcludeFromOptimisation|RiskTime|Colon|SimulationX|FailureClassAssignments|FailureClass|"
      "Alternatives|Type|Matlab|GotoNode|MTTFMTTR|Perspective|Perspectives|Hazards|Hazard|"
      "SafetyRequirement|Logic|GlobalGoto|LocalGoto|FromAllocation|Allocations|Allocation|"
      "FailureDistribution|Percentage|ComponentFailureRate|DiagnosticCoverage|";
  std::ostringstream names;
  for (std::uint32_t i = 0; i < NamedTokenTypes; ++i) {
    names << TokenName(static_cast<TokenType>(i)) << '|';
  }
  EXPECT_EQ(names.str(), expected);
}

TEST_F(TokenTest, LastKeywordsOfFilesHaveNumbersButNoNames) {
  EXPECT_EQ(static_cast<std::uint32_t>(TokenType::DiagnosticCoverageKeyword), 121u);
  EXPECT_EQ(static_cast<std::uint32_t>(TokenType::NormalEvents), 122u);
  EXPECT_EQ(static_cast<std::uint32_t>(TokenType::NormalEvent), 123u);
  EXPECT_EQ(TokenName(TokenType::DiagnosticCoverageKeyword), "");
  EXPECT_EQ(TokenName(TokenType::NormalEvents), "");
  EXPECT_EQ(TokenName(TokenType::NormalEvent), "");
}

}  // namespace
}  // namespace FTS
