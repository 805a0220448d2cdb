// Hazard logic: how deviations at the outputs of the system combine into a top event.

#include <memory>
#include <string>

#include "app/DiagnosticLog.h"
#include "faulttree/DeviationProxies.h"
#include "faulttree/ProxyNode.h"
#include "input/ExpressionReader.h"
#include "input/Lexer.h"
#include "input/Parser.h"
#include "model/Model.h"
#include "model/VtnException.h"

namespace FTS {
namespace {

constexpr OperatorLevel Levels[] = {
    {{TokenType::OR, TokenType::PLUS}, NodeType::Or, "OR"},
    {{TokenType::AND, TokenType::MULTIPLY}, NodeType::And, "AND"},
};

class HazardExpressionReader : public ExpressionReader {
 public:
  HazardExpressionReader(Parser& initParser, Lexer& initLexer, Model& initModel,
                         const std::string& initExpression, const std::string& initHazard)
      : ExpressionReader(initParser, initLexer, initModel, Levels, ""),
        expression(initExpression),
        hazard(initHazard) {}

 protected:
  NodePointer ReadOperand() override;
  std::string Owner() const override { return "hazard: " + hazard; }

  NodePointer ReadDeviation();

 private:
  /// The longest part of an expression that a message quotes, in bytes.
  static constexpr std::size_t LongestQuotation = 1 << 20;

  NodePointer ReadPrimary();
  void ReportUnknownNode() const;

  const std::string& expression;
  const std::string& hazard;
};

HazardExpressionReader::NodePointer HazardExpressionReader::ReadOperand() {
  if (lexer.Advance(TokenType::NOT)) return Negate(ReadPrimary());
  return ReadPrimary();
}

HazardExpressionReader::NodePointer HazardExpressionReader::ReadPrimary() {
  if (lexer.NextIs(TokenType::LeftParenthesis)) {
    NodePointer inner = ReadParenthesised();
    // The name is that of line expressions on purpose: readers of results know it.
    if (inner && inner->IsGate()) inner->name = "Line Sub-Expression";
    return inner;
  }
  NodePointer deviation;
  const bool classed = HeadIsClass();
  if (classed) {
    deviation = ReadDeviation();
  } else {
    DiagnosticLog::Instance().AddError(
        "No failure class in hazard expression [line number: " + LineText() + "]");
  }
  if (!deviation) ReportUnknownNode();
  if (!classed && HeadIsName()) TakeText();  // On to the next operand and its faults.
  return deviation;
}

/// Class, hyphen, name. Where the deviation is, only synthesis finds out.
HazardExpressionReader::NodePointer HazardExpressionReader::ReadDeviation() {
  const std::string failureClass = TakeFailureClass();
  std::string name;
  if (lexer.Advance(TokenType::Default)) {
    name = "Default";
  } else if (HeadIsName()) {
    name = TakeText();
  } else {
    return nullptr;
  }
  if (lexer.Advance(TokenType::Colon)) {
    parser.Match(TokenType::Colon);
    name += "::" + ReadName();
  }
  return std::make_shared<OutputDeviationProxy>(failureClass + "-" + name, &model);
}

void HazardExpressionReader::ReportUnknownNode() const {
  DiagnosticLog& log = DiagnosticLog::Instance();
  // A text that is only counted is not made: the expression may be as long as the file, and have as
  // many faults.
  if (log.ReportedErrors() >= DiagnosticLog::MaxStored) {
    log.AddError("");
    return;
  }
  const bool quotable = expression.size() <= LongestQuotation;
  const std::string quotation =
      quotable ? expression : expression.substr(0, LongestQuotation) + "...";
  log.AddError("Unknown node '" + HeadText() + "' in Hazard expression '" + quotation + "'" +
               " [line number : " + LineText() + "]");
}

/// The language of text models: no NOT, and what is no deviation ends the reading.
class TextHazardExpressionReader : public HazardExpressionReader {
 public:
  using HazardExpressionReader::HazardExpressionReader;

 protected:
  NodePointer ReadOperand() override;
};

TextHazardExpressionReader::NodePointer TextHazardExpressionReader::ReadOperand() {
  if (lexer.NextIs(TokenType::LeftParenthesis)) {
    const auto bracket = std::make_shared<ProxyNode>(NodeType::NullOp, "Sub-Expression", &model);
    bracket->AddChild(ReadParenthesised());
    return bracket;
  }
  NodePointer deviation = HeadIsName() && HeadIsClass() ? ReadDeviation() : nullptr;
  if (!deviation) throw ParseException("Unknown Hazard Node!", LineNumber());
  return deviation;
}

}  // namespace

Parser::NodePointer Parser::BuildHazardExpression(const std::string& expression,
                                                  const std::string& hazard) {
  HazardExpressionReader reader(*this, expressionLexer, *model, expression, hazard);
  return ReadExpression(reader, expression, 0);
}

Parser::NodePointer Parser::BuildTextHazardExpression(const std::string& expression,
                                                      const std::string& hazard,
                                                      std::int32_t startLine) {
  TextHazardExpressionReader reader(*this, expressionLexer, *model, expression, hazard);
  return ReadExpression(reader, expression, startLine);
}

}  // namespace FTS
