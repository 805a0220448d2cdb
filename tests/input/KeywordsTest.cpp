#include <string>

#include "input/Dialect.h"
#include "support/ProcessStateTest.h"

namespace FTS {
namespace {

class KeywordsTest : public ProcessStateTest {
 protected:
  /// The name of a word's type: that of an identifier when it is no keyword.
  static std::string NameIn(const Dialect& dialect, const char* word) {
    return std::string(TokenName(dialect.FindKeyword(word).value_or(TokenType::ID)));
  }
};

struct KeywordRow {
  const char* word;
  const char* name;
};

constexpr KeywordRow SharedRows[] = {
    {"Model", "Model"},
    {"Version", "Version"},
    {"System", "System"},
    {"Name", "Name"},
    {"Component", "Component"},
    {"ComponentType", "Component type"},
    {"Componenttype", "Component type"},
    {"type", "Type"},
    {"Type", "Type"},
    {"Description", "Description"},
    {"Porttype", "Porttype"},
    {"Port", "Port"},
    {"FData", "FData"},
    {"Line", "Line"},
    {"Implementations", "Implementations"},
    {"Implementation", "Implementation"},
    {"Current", "Current"},
    {"BasicEvent", "Basic Event"},
    {"BasicEvents", "Basic Events"},
    {"OutputDeviations", "Output Deviations"},
    {"OutputDeviation", "Output Deviation"},
    {"Constant", "Constant"},
    {"MTTR", "MTTR"},
    {"MTTF", "MTTF"},
    {"Fixed", "Fixed"},
    {"Time", "Time"},
    {"time", "Time"},
    {"t", "Time"},
    {"Binomial", "Binomial"},
    {"Poisson", "Poisson"},
    {"Dormant", "Dormant"},
    {"Sequential", "Sequential"},
    {"Variable", "Variable"},
    {"None", "None"},
    {"Severity", "Severity"},
    {"H_BlockType", "H_BlockType"},
    {"Default", "Default"},
    {"DEFAULT", "Default"},
    {"OR", "OR"},
    {"or", "OR"},
    {"AND", "AND"},
    {"and", "AND"},
    {"OUTPUT", "Output"},
    {"ORPORT", "Or Port"},
    {"ANDPORT", "And Port"},
    {"OUTPUTPORT", "Output Port"},
    {"LinetypeDirected", "Linetype Directed"},
    {"Connections", "Connections"},
    {"Outport", "Outport"},
    {"sand", "SAND"},
    {"pand", "PAND"},
    {"por", "POR"},
    {"xor", "XOR"},
    {"not", "NOT"},
    {"Cost", "Cost"},
    {"Weight", "Weight"},
    {"RTWdata", "RTWdata"},
    {"Alternatives", "Alternatives"},
    {"GlobalGoto", "GlobalGoto"},
    {"LocalGoto", "LocalGoto"},
    {"FromAllocation", "FromAllocation"},
    {"E", "E"},
    {"e", "E"},
    {"EXTERNAL", "GotoNode"},
};

// Words of either format that the other takes for names.
constexpr KeywordRow ExpressionRows[] = {
    {"H_", "H_BlockType"}, {"External", "GotoNode"}, {"external", "GotoNode"}};

constexpr KeywordRow FileRows[] = {
    {"SAND", "SAND"},
    {"PAND", "PAND"},
    {"POR", "POR"},
    {"XOR", "XOR"},
    {"NOT", "NOT"},
    {"cost", "Cost"},
    {"Inport", "Inport"},
    {"SubSystem", "SubSystem"},
    {"Branch", "Branch"},
    {"SrcBlock", "SrcBlock"},
    {"SrcPort", "SrcPort"},
    {"DstBlock", "DstBlock"},
    {"DstPort", "DstPort"},
    {"Actual", "Actual"},
    {"Potential", "Potential"},
    {"CCFs", "CCFs"},
    {"CCF", "CCF"},
    {"ACCF", "ACCF"},
    {"MaxGenerations", "MaxGenerations"},
    {"DefaultMaxReplicants", "DefaultMaxReplicants"},
    {"Objectives", "Objectives"},
    {"Reliability", "Reliability"},
    {"Safety", "Safety"},
    {"Risk", "Risk"},
    {"Unavailability", "Unavailability"},
    {"Maximise", "Maximise"},
    {"Minimise", "Minimise"},
    {"MaxReplicants", "MaxReplicants"},
    {"IncludeInOptimisation", "IncludeInOptimisation"},
    {"OptimisationParams", "OptimisationParams"},
    {"Objective", "Objective"},
    {"ExcludeFromOptimisation", "ExcludeFromOptimisation"},
    {"RiskTime", "RiskTime"},
    {"SimulationX", "SimulationX"},
    {"FailureClassAssignments", "FailureClassAssignments"},
    {"FailureClass", "FailureClass"},
    {"Matlab", "Matlab"},
    {"MTTFMTTR", "MTTFMTTR"},
    {"Perspectives", "Perspectives"},
    {"Perspective", "Perspective"},
    {"Hazards", "Hazards"},
    {"Hazard", "Hazard"},
    {"SafetyRequirement", "SafetyRequirement"},
    {"Logic", "Logic"},
    {"Allocations", "Allocations"},
    {"Allocation", "Allocation"},
    {"FailureDistribution", "FailureDistribution"},
    {"Percentage", "Percentage"},
};

TEST_F(KeywordsTest, SharedWordsMeanTheSameInBothFormats) {
  for (const KeywordRow& row : SharedRows) {
    EXPECT_EQ(NameIn(ExpressionDialect, row.word), row.name) << row.word;
    EXPECT_EQ(NameIn(FileDialect, row.word), row.name) << row.word;
  }
}

TEST_F(KeywordsTest, WordsOfExpressionsAreNamesInFiles) {
  for (const KeywordRow& row : ExpressionRows) {
    EXPECT_EQ(NameIn(ExpressionDialect, row.word), row.name) << row.word;
    EXPECT_EQ(NameIn(FileDialect, row.word), "<ID>") << row.word;
  }
}

TEST_F(KeywordsTest, WordsOfFilesAreNamesInExpressions) {
  for (const KeywordRow& row : FileRows) {
    EXPECT_EQ(NameIn(FileDialect, row.word), row.name) << row.word;
    EXPECT_EQ(NameIn(ExpressionDialect, row.word), "<ID>") << row.word;
  }
}

TEST_F(KeywordsTest, FormatsHaveNoFurtherKeywords) {
  constexpr std::size_t NamelessInFiles = 3;
  EXPECT_EQ(ExpressionDialect.keywords.size(), std::size(SharedRows) + std::size(ExpressionRows));
  EXPECT_EQ(FileDialect.keywords.size(),
            std::size(SharedRows) + std::size(FileRows) + NamelessInFiles);
}

}  // namespace
}  // namespace FTS
