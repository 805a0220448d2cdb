// Line expressions: how a port of a line fails, from the other ports of the line.

#include <algorithm>
#include <iterator>
#include <memory>
#include <string>
#include <utility>

#include "app/DiagnosticLog.h"
#include "faulttree/DeviationProxies.h"
#include "faulttree/FaultTreeGate.h"
#include "input/ExpressionReader.h"
#include "input/Lexer.h"
#include "input/Parser.h"
#include "model/Component.h"
#include "model/Line.h"
#include "model/Model.h"
#include "model/Port.h"
#include "model/Subsystem.h"
#include "model/VtnException.h"

namespace FTS {
namespace {

constexpr OperatorLevel Levels[] = {
    {{TokenType::OR, TokenType::PLUS}, NodeType::Or, "OR"},
    {{TokenType::AND, TokenType::MULTIPLY}, NodeType::And, "AND"},
};

/// A word that stands for the other ports of the line, or for the line's output.
struct PlaceholderWord {
  TokenType token;
  const char* name;
  NodeType node;
};

constexpr PlaceholderWord PlaceholderWords[] = {
    {TokenType::AndPort, Placeholder::AndPort, NodeType::And},
    {TokenType::OrPort, Placeholder::OrPort, NodeType::Or},
    {TokenType::OutputPort, Placeholder::OutputPort, NodeType::NullOp},
    {TokenType::Output, Placeholder::OutputPort, NodeType::NullOp},
};

NodeType DefaultNodeType(LineOperator op) {
  switch (op) {
    case LineOperator::AND:
      return NodeType::And;
    case LineOperator::OR:
      return NodeType::Or;
    case LineOperator::OUTPUT:
      break;
  }
  return NodeType::NullOp;
}

bool IsPlaceholder(const FaultTreeNode& node) {
  constexpr const char* Names[] = {Placeholder::Default, Placeholder::AndPort, Placeholder::OrPort,
                                   Placeholder::OutputPort};
  return std::find(std::begin(Names), std::end(Names), node.name) != std::end(Names);
}

class LineExpressionReader : public ExpressionReader {
 public:
  LineExpressionReader(Parser& initParser, Lexer& initLexer, Model& initModel, const Line& initLine,
                       std::string initGateSuffix, const std::string& initLineClass)
      : ExpressionReader(initParser, initLexer, initModel, Levels, std::move(initGateSuffix)),
        line(initLine),
        lineClass(initLineClass) {}

 protected:
  NodePointer ReadOperand() override;
  std::string Owner() const override { return "line: " + line.GetName(); }

  /// Answers a failure class that is not the line's: a warning here.
  virtual void AnswerOtherClass(const std::string& message);
  /// Tells the log of a token that begins no operand.
  virtual void ReportUnknownPort() const;
  /// Ends the reading over a port that does not exist; `row` is where it is named.
  [[noreturn]] virtual void RefusePort(const std::string& message, std::int32_t row) const;

 private:
  NodePointer ReadBracket();
  NodePointer TakePlaceholder(const char* name, NodeType type);
  NodePointer ReadPort();
  std::string ReadReferenceClass();
  std::shared_ptr<Port> FindPort(const Token& token) const;
  [[noreturn]] void RefuseToken() const;

  const Line& line;
  const std::string& lineClass;
};

LineExpressionReader::NodePointer LineExpressionReader::ReadOperand() {
  if (HeadIsName()) return ReadPort();
  if (lexer.NextIs(TokenType::LeftParenthesis)) return ReadBracket();
  if (lexer.NextIs(TokenType::Default)) {
    return TakePlaceholder(Placeholder::Default, DefaultNodeType(line.defaultOperator));
  }
  for (const PlaceholderWord& word : PlaceholderWords) {
    if (lexer.NextIs(word.token)) return TakePlaceholder(word.name, word.node);
  }
  RefuseToken();
}

void LineExpressionReader::AnswerOtherClass(const std::string& message) {
  DiagnosticLog::Instance().AddWarning(message);
}

void LineExpressionReader::ReportUnknownPort() const {
  DiagnosticLog::Instance().AddError("Unknown Port Node! (" + HeadText() +
                                     ") [line number : " + LineText() + "]");
}

void LineExpressionReader::RefusePort(const std::string& message, std::int32_t /*row*/) const {
  throw VtnException(message);
}

void LineExpressionReader::RefuseToken() const {
  ReportUnknownPort();
  throw ParseException("Unknown Port Node!", LineNumber());
}

LineExpressionReader::NodePointer LineExpressionReader::ReadBracket() {
  NodePointer inner = ReadParenthesised();
  // A placeholder is known by its name when the line is expanded.
  if (inner && inner->IsGate() && !IsPlaceholder(*inner)) inner->name = "Line Sub-Expression";
  return inner;
}

LineExpressionReader::NodePointer LineExpressionReader::TakePlaceholder(const char* name,
                                                                        NodeType type) {
  TakeText();
  if (type == NodeType::NullOp) return std::make_shared<ProxyNode>(type, name, &model);
  return MakeGate(type, name, &model);
}

LineExpressionReader::NodePointer LineExpressionReader::ReadPort() {
  const std::string failureClass = ReadReferenceClass();
  const TokenPtr head = lexer.Current();
  if (!head) parser.Match(TokenType::ID);  // Throws: the port is missing.
  TakeText();
  const std::shared_ptr<Port> port = FindPort(*head);
  const std::string prefix = failureClass.empty() ? "" : failureClass + "-";
  auto proxy = std::make_shared<OutputDeviationProxy>(prefix + port->GetFullNameText(), &model,
                                                      LineNumber());
  proxy->classless = failureClass.empty();
  proxy->reference = true;
  return proxy;
}

/// The class in front of a port, which should be that of the line; empty without one.
std::string LineExpressionReader::ReadReferenceClass() {
  if (!HeadIsClass()) {
    if (!lineClass.empty()) {
      DiagnosticLog::Instance().AddError(
          "Line expression is classed and so must contain failure classes on the right-hand side " +
          line.GetName() + " [line number: " + LineText() + "]");
    }
    return "";
  }
  std::string found = TakeFailureClass();
  if (found != lineClass) {
    AnswerOtherClass("Failure classes do not match in line: '" + lineClass + "' and '" + found +
                     "' " + line.GetName() + " on line number: " + LineText());
  }
  return found;
}

/// The port that the token's path names from within the line's subsystem. Ends the reading without
/// one.
std::shared_ptr<Port> LineExpressionReader::FindPort(const Token& token) const {
  const std::string& path = token.text;
  const auto row = static_cast<std::int32_t>(token.line);
  const std::shared_ptr<Subsystem> subsystem = line.GetOwner();
  const std::shared_ptr<Component> owner = subsystem->GetOwnerComponent();
  const std::size_t point = path.find('.');
  std::shared_ptr<Component> component = owner;
  if (point != std::string::npos) {
    const auto found = subsystem->components.find(path.substr(0, point));
    component = found == subsystem->components.end() ? nullptr : found->second;
  }
  const std::string complaint =
      "Error! Cannot find port: " + path + " on line: " + line.GetName() + " in ";
  if (!component && !owner) {
    RefusePort(complaint + "model top layer; may not be locally qualified", row);
  }
  if (!component) {
    RefusePort(
        complaint + "component: " + owner->GetFullNameText() + " may not be locally qualified",
        row);
  }
  std::shared_ptr<Port> port =
      component->FindPort(point == std::string::npos ? path : path.substr(point + 1));
  if (!port) RefusePort(complaint + "component: " + component->GetFullNameText() + " on line", row);
  return port;
}

/// Reads from a text model's own tokens. Gates have no suffix there, and all faults end the reading
/// with the line of the file, without an entry in the log.
class TextLineExpressionReader : public LineExpressionReader {
 public:
  TextLineExpressionReader(Parser& initParser, Lexer& initLexer, Model& initModel,
                           const Line& initLine, const std::string& initLineClass)
      : LineExpressionReader(initParser, initLexer, initModel, initLine, "", initLineClass) {}

 protected:
  void AnswerOtherClass(const std::string& message) override {
    throw ParseException(message, LineNumber());
  }
  // The exception that follows tells it.
  void ReportUnknownPort() const override {}
  void RefusePort(const std::string& message, std::int32_t row) const override {
    throw ParseException(message, row);
  }
};

}  // namespace

void Parser::BuildLineExpression(std::string expression, const std::string& failureName, Line& line,
                                 std::int32_t startLine, const std::string& failureClass) {
  LineExpressionReader reader(*this, expressionLexer, *model, line, " [" + failureName + "]",
                              failureClass);
  line.AddConnection(failureName, ReadExpression(reader, std::move(expression), startLine));
}

void Parser::BuildTextLineExpression(const std::string& failureName, Line& line,
                                     const std::string& failureClass) {
  TextLineExpressionReader reader(*this, *currentLexer, *model, line, failureClass);
  line.AddConnection(failureName, reader.ReadExpression());
}

}  // namespace FTS
