#include "input/Dialect.h"

#include <algorithm>

namespace FTS {
namespace {

constexpr Keyword SharedKeywords[] = {
    {"Model", TokenType::Model},
    {"Version", TokenType::Version},
    {"System", TokenType::System},
    {"Name", TokenType::Name},
    {"Component", TokenType::Component},
    {"ComponentType", TokenType::ComponentType},
    {"Componenttype", TokenType::ComponentType},
    {"type", TokenType::Type},
    {"Type", TokenType::Type},
    {"Description", TokenType::Description},
    {"Porttype", TokenType::Porttype},
    {"Port", TokenType::Port},
    {"FData", TokenType::FData},
    {"Line", TokenType::Line},
    {"Implementations", TokenType::Implementations},
    {"Implementation", TokenType::Implementation},
    {"Current", TokenType::Current},
    {"BasicEvent", TokenType::BasicEvent},
    {"BasicEvents", TokenType::BasicEvents},
    {"OutputDeviations", TokenType::OutputDeviations},
    {"OutputDeviation", TokenType::OutputDeviation},
    {"Constant", TokenType::Constant},
    {"MTTR", TokenType::MTTR},
    {"MTTF", TokenType::MTTF},
    {"Fixed", TokenType::Fixed},
    {"Time", TokenType::Time},
    {"time", TokenType::Time},
    {"t", TokenType::Time},
    {"Binomial", TokenType::Binomial},
    {"Poisson", TokenType::Poisson},
    {"Dormant", TokenType::Dormant},
    {"Sequential", TokenType::Sequential},
    {"Variable", TokenType::Variable},
    {"None", TokenType::None},
    {"Severity", TokenType::Severity},
    {"H_BlockType", TokenType::H_BlockType},
    {"Default", TokenType::Default},
    {"DEFAULT", TokenType::Default},
    {"OR", TokenType::OR},
    {"or", TokenType::OR},
    {"AND", TokenType::AND},
    {"and", TokenType::AND},
    {"OUTPUT", TokenType::Output},
    {"ORPORT", TokenType::OrPort},
    {"ANDPORT", TokenType::AndPort},
    {"OUTPUTPORT", TokenType::OutputPort},
    {"LinetypeDirected", TokenType::LinetypeDirected},
    {"Connections", TokenType::Connections},
    {"Outport", TokenType::Outport},
    {"sand", TokenType::SAND},
    {"pand", TokenType::PAND},
    {"por", TokenType::POR},
    {"xor", TokenType::XOR},
    {"not", TokenType::NOT},
    {"Cost", TokenType::Cost},
    {"Weight", TokenType::Weight},
    {"RTWdata", TokenType::RTWdata},
    {"Alternatives", TokenType::Alternatives},
    {"GlobalGoto", TokenType::GlobalGoto},
    {"LocalGoto", TokenType::LocalGoto},
    {"FromAllocation", TokenType::FromAllocation},
    {"E", TokenType::E},
    {"e", TokenType::E},
};

// The operators in capitals are missing on purpose: in expressions they are names of events.
constexpr Keyword ExpressionOnlyKeywords[] = {
    {"H_", TokenType::H_BlockType},
    {"EXTERNAL", TokenType::GotoNode},
    {"External", TokenType::GotoNode},
    {"external", TokenType::GotoNode},
};

constexpr Keyword FileOnlyKeywords[] = {
    {"SAND", TokenType::SAND},
    {"PAND", TokenType::PAND},
    {"POR", TokenType::POR},
    {"XOR", TokenType::XOR},
    {"NOT", TokenType::NOT},
    {"cost", TokenType::Cost},
    {"Inport", TokenType::Inport},
    {"SubSystem", TokenType::SubSystem},
    {"Branch", TokenType::Branch},
    {"SrcBlock", TokenType::SrcBlock},
    {"SrcPort", TokenType::SrcPort},
    {"DstBlock", TokenType::DstBlock},
    {"DstPort", TokenType::DstPort},
    {"Actual", TokenType::Actual},
    {"Potential", TokenType::Potential},
    {"CCFs", TokenType::CCFs},
    {"CCF", TokenType::CCF},
    {"ACCF", TokenType::ACCF},
    {"MaxGenerations", TokenType::MaxGenerations},
    {"DefaultMaxReplicants", TokenType::DefaultMaxReplicants},
    {"Objectives", TokenType::Objectives},
    {"Reliability", TokenType::Reliability},
    {"Safety", TokenType::Safety},
    {"Risk", TokenType::Risk},
    {"Unavailability", TokenType::Unavailability},
    {"Maximise", TokenType::Maximise},
    {"Minimise", TokenType::Minimise},
    {"MaxReplicants", TokenType::MaxReplicants},
    {"IncludeInOptimisation", TokenType::IncludeInOptimisation},
    {"OptimisationParams", TokenType::OptimisationParams},
    {"Objective", TokenType::Objective},
    {"ExcludeFromOptimisation", TokenType::ExcludeFromOptimisation},
    {"RiskTime", TokenType::RiskTime},
    {"SimulationX", TokenType::SimulationX},
    {"FailureClassAssignments", TokenType::FailureClassAssignments},
    {"FailureClass", TokenType::FailureClass},
    {"Matlab", TokenType::Matlab},
    {"MTTFMTTR", TokenType::MTTFMTTR},
    {"Perspectives", TokenType::Perspectives},
    {"Perspective", TokenType::Perspective},
    {"Hazards", TokenType::Hazards},
    {"Hazard", TokenType::Hazard},
    {"SafetyRequirement", TokenType::SafetyRequirement},
    {"Logic", TokenType::Logic},
    {"Allocations", TokenType::Allocations},
    {"Allocation", TokenType::Allocation},
    {"FailureDistribution", TokenType::FailureDistribution},
    {"Percentage", TokenType::Percentage},
    {"EXTERNAL", TokenType::GotoNode},
    {"DiagnosticCoverage", TokenType::DiagnosticCoverageKeyword},
    {"NormalEvents", TokenType::NormalEvents},
    {"NormalEvent", TokenType::NormalEvent},
};

constexpr std::string_view FileOpenWords[] = {"Basic", "Output", "Normal", "Linetype"};
constexpr std::string_view ExpressionOpenWords[] = {"Linetype"};

struct Symbol {
  unsigned char character;
  TokenType type;
};

constexpr Symbol SharedSymbols[] = {
    {'*', TokenType::MULTIPLY},
    {'+', TokenType::PLUS},
    {'<', TokenType::PAND},
    {':', TokenType::Colon},
    {'|', TokenType::POR},
    {'~', TokenType::NOT},
    {'!', TokenType::NOT},
    {'^', TokenType::XOR},
    {'&', TokenType::SAND},
    {'(', TokenType::LeftParenthesis},
    {')', TokenType::RightParenthesis},
    {'[', TokenType::LeftBracket},
    {']', TokenType::RightBracket},
    {'{', TokenType::LeftBrace},
    {'}', TokenType::RightBrace},
    {'-', TokenType::MINUS},
    {'.', TokenType::Point},
    {',', TokenType::Comma},
    {'/', TokenType::DIVIDE},
    {'=', TokenType::EQUALS},
};

// Old files write a priority AND as a semicolon too.
constexpr Symbol FileOnlySymbols[] = {{';', TokenType::PAND}};

// The byte is the sign for "not" in Latin-1.
constexpr Symbol ExpressionOnlySymbols[] = {{0xAC, TokenType::NOT}};

constexpr std::array<TokenType, 256> SymbolTable(std::span<const Symbol> own) {
  std::array<TokenType, 256> table{};
  for (const Symbol& symbol : SharedSymbols) table[symbol.character] = symbol.type;
  for (const Symbol& symbol : own) table[symbol.character] = symbol.type;
  return table;
}

template <std::size_t OwnCount>
constexpr auto KeywordTable(const Keyword (&own)[OwnCount]) {
  std::array<Keyword, std::size(SharedKeywords) + OwnCount> table{};
  const auto end = std::copy(std::begin(SharedKeywords), std::end(SharedKeywords), table.begin());
  std::copy(std::begin(own), std::end(own), end);
  std::sort(table.begin(), table.end(),
            [](const Keyword& left, const Keyword& right) { return left.word < right.word; });
  return table;
}

constexpr auto FileKeywords = KeywordTable(FileOnlyKeywords);
constexpr auto ExpressionKeywords = KeywordTable(ExpressionOnlyKeywords);

}  // namespace

constinit const Dialect FileDialect = {.symbols = SymbolTable(FileOnlySymbols),
                                       .keywords = FileKeywords,
                                       .openWords = FileOpenWords,
                                       .dropsCharacterBehindOpenWord = true,
                                       .symbolsHaveText = false,
                                       .backslashEscapesQuote = true,
                                       .keepsLineEndsInStrings = true};

constinit const Dialect ExpressionDialect = {.symbols = SymbolTable(ExpressionOnlySymbols),
                                             .keywords = ExpressionKeywords,
                                             .openWords = ExpressionOpenWords,
                                             .dropsCharacterBehindOpenWord = false,
                                             .symbolsHaveText = true,
                                             .backslashEscapesQuote = false,
                                             .keepsLineEndsInStrings = false};

std::optional<TokenType> Dialect::FindKeyword(std::string_view word) const {
  const auto row = std::lower_bound(
      keywords.begin(), keywords.end(), word,
      [](const Keyword& keyword, std::string_view wanted) { return keyword.word < wanted; });
  if (row == keywords.end() || row->word != word) return std::nullopt;
  return row->type;
}

bool Dialect::IsOpenWord(std::string_view word) const {
  return std::find(openWords.begin(), openWords.end(), word) != openWords.end();
}

}  // namespace FTS
