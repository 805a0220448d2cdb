#include "input/ExpressionReader.h"

#include <utility>

#include "faulttree/FaultTreeGate.h"
#include "faulttree/ProxyNode.h"
#include "input/Lexer.h"
#include "input/Parser.h"
#include "model/Model.h"
#include "model/VtnException.h"

namespace FTS {
namespace {

/// Makes a lexer the one that is read from, until the end of the expression or an exception.
class CurrentLexer {
 public:
  CurrentLexer(Lexer*& initHolder, Lexer& lexer) : holder(initHolder), before(initHolder) {
    holder = &lexer;
  }
  ~CurrentLexer() { holder = before; }
  CurrentLexer(const CurrentLexer&) = delete;
  CurrentLexer& operator=(const CurrentLexer&) = delete;

 private:
  Lexer*& holder;
  Lexer* before;  // That of a text file, null in documents.
};

}  // namespace

Parser::NodePointer Parser::ReadExpression(ExpressionReader& reader, std::string text,
                                           std::int32_t startLine) {
  const CurrentLexer current(currentLexer, expressionLexer);
  expressionLexer.SetText(std::move(text), startLine);
  expressionLexer.ReadAhead();
  return reader.ReadExpression();
}

ExpressionReader::ExpressionReader(Parser& initParser, Lexer& initLexer, Model& initModel,
                                   std::span<const OperatorLevel> initLevels,
                                   std::string initGateSuffix)
    : parser(initParser),
      lexer(initLexer),
      model(initModel),
      levels(initLevels),
      gateSuffix(std::move(initGateSuffix)) {}

ExpressionReader::~ExpressionReader() = default;

ExpressionReader::NodePointer ExpressionReader::ReadFrom(std::size_t loosestLevel) {
  NodePointer expression = ReadOperand();
  // The tightest operators take their operands first. One stack frame serves all levels, which
  // keeps deeply nested parentheses cheap.
  for (std::size_t level = levels.size(); level-- > loosestLevel;) {
    expression = ReadChain(level, expression);
  }
  return expression;
}

ExpressionReader::NodePointer ExpressionReader::ReadChain(std::size_t level,
                                                          const NodePointer& first) {
  const OperatorLevel& row = levels[level];
  if (!TakeOperator(row)) return first;
  const std::shared_ptr<FaultTreeGate> gate = MakeGate(row.gate, GateName(row.word), &model);
  if (first) gate->AddChild(first);
  do {
    if (const NodePointer operand = ReadFrom(level + 1)) gate->AddChild(operand);
  } while (TakeOperator(row));
  return gate->GetChildCount() > 0 ? gate : nullptr;
}

bool ExpressionReader::TakeOperator(const OperatorLevel& level) {
  return lexer.Advance(level.operators[0]) || lexer.Advance(level.operators[1]);
}

ExpressionReader::NodePointer ExpressionReader::ReadParenthesised() {
  parser.Match(TokenType::LeftParenthesis);
  if (++nesting > DeepestNesting) {
    throw ParseException("Expression with parentheses nested too deeply in " + Owner(),
                         LineNumber());
  }
  NodePointer expression = ReadExpression();
  --nesting;
  parser.Match(TokenType::RightParenthesis);
  return expression;
}

ExpressionReader::NodePointer ExpressionReader::Negate(const NodePointer& operand) const {
  if (!operand) return nullptr;
  const auto negation = std::make_shared<NotGate>(GateName("NOT"), &model);
  negation->AddChild(operand);
  return negation;
}

std::string ExpressionReader::GateName(std::string_view word) const {
  return std::string(word) + gateSuffix;
}

bool ExpressionReader::HeadIsName() const {
  return lexer.NextIs(TokenType::ID) || lexer.NextIs(TokenType::E);
}

bool ExpressionReader::HeadIsClass() const {
  const TokenPtr behind = lexer.Peek(1);
  return behind && behind->type == TokenType::MINUS;
}

bool ExpressionReader::HeadIsDefaultPerspective() const {
  if (!lexer.NextIs(TokenType::Default)) return false;
  const TokenPtr first = lexer.Peek(1);
  const TokenPtr second = lexer.Peek(2);
  return first && second && first->type == TokenType::Colon && second->type == TokenType::Colon;
}

std::string ExpressionReader::TakeText() {
  const TokenPtr head = lexer.Current();
  if (!head) return "";
  lexer.Advance(head->type);
  return head->text;
}

std::string ExpressionReader::HeadText() const {
  const TokenPtr head = lexer.Current();
  return head ? head->text : "";
}

std::string ExpressionReader::ReadName() {
  return lexer.NextIs(TokenType::E) ? TakeText() : parser.Match(TokenType::ID)->text;
}

std::string ExpressionReader::ReadQualifiedName() {
  // The perspective of models that declare none is called like a keyword.
  std::string name = HeadIsDefaultPerspective() ? TakeText() : ReadName();
  if (!lexer.Advance(TokenType::Colon)) return name;
  parser.Match(TokenType::Colon);
  return name + "::" + ReadName();
}

std::string ExpressionReader::TakeFailureClass() {
  std::string failureClass = TakeText();
  parser.Match(TokenType::MINUS);
  model.AddFailureClass(failureClass);
  return failureClass;
}

std::string ExpressionReader::ReadFailureClass() {
  std::string failureClass = ReadName();
  parser.Match(TokenType::MINUS);
  model.AddFailureClass(failureClass);
  return failureClass;
}

std::int32_t ExpressionReader::LineNumber() const { return lexer.LineNumber(); }

std::string ExpressionReader::LineText() const { return std::to_string(LineNumber()); }

std::string BehindLastPoint(const std::string& text) { return text.substr(text.rfind('.') + 1); }

}  // namespace FTS
