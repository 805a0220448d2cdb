// Output deviation logic: how an output of a component fails, from the component's own events and
// from deviations at its inputs, at gotos and at the host of its allocation.

#include <memory>
#include <string>
#include <utility>

#include "app/DiagnosticLog.h"
#include "faulttree/BasicEvent.h"
#include "faulttree/CommonCauseNodes.h"
#include "faulttree/DeviationProxies.h"
#include "faulttree/GotoNode.h"
#include "input/ExpressionReader.h"
#include "input/ModelParts.h"
#include "input/Parser.h"
#include "model/Component.h"
#include "model/Deviation.h"
#include "model/Implementation.h"
#include "model/Model.h"
#include "model/Port.h"

namespace FTS {
namespace {

// The temporal operators bind tighter than AND, and POR looser than PAND.
constexpr OperatorLevel Levels[] = {
    {{TokenType::OR, TokenType::PLUS}, NodeType::Or, "OR"},
    {{TokenType::XOR, TokenType::XOR}, NodeType::XOr, "XOR"},
    {{TokenType::AND, TokenType::MULTIPLY}, NodeType::And, "AND"},
    {{TokenType::POR, TokenType::POR}, NodeType::POr, "POR"},
    {{TokenType::PAND, TokenType::PAND}, NodeType::PAnd, "PAND"},
    {{TokenType::SAND, TokenType::SAND}, NodeType::SAnd, "SAND"},
};

class OutputExpressionReader : public ExpressionReader {
 public:
  OutputExpressionReader(Parser& initParser, Lexer& initLexer, Model& initModel,
                         const std::shared_ptr<Component>& initComponent,
                         Implementation& initImplementation, const std::string& label)
      : ExpressionReader(initParser, initLexer, initModel, Levels, " [" + label + "]"),
        component(initComponent),
        implementation(initImplementation) {}

 protected:
  NodePointer ReadOperand() override;
  std::string Owner() const override { return "component: " + component->GetFullNameText(); }

 private:
  using PrimaryReader = NodePointer (OutputExpressionReader::*)();
  struct Primary {
    TokenType head;
    PrimaryReader read;
  };
  static const Primary Primaries[];

  NodePointer ReadPrimary();
  NodePointer ReadInputDeviation();
  NodePointer ReadEvent();
  NodePointer ReadSubExpression();
  NodePointer ReadClassless();
  NodePointer ReadAllocation();
  NodePointer ReadGlobalGoto();
  NodePointer ReadLocalGoto();

  std::shared_ptr<InputDeviation> FindInputDeviation(const std::string& failureClass,
                                                     const std::string& portName);
  NodePointer MakeGoto(std::string target);
  NodePointer FindEvent(const std::string& name) const;

  std::shared_ptr<Component> component;
  Implementation& implementation;
};

// By the token at the head, where that is no name.
const OutputExpressionReader::Primary OutputExpressionReader::Primaries[] = {
    {TokenType::LeftParenthesis, &OutputExpressionReader::ReadSubExpression},
    {TokenType::MINUS, &OutputExpressionReader::ReadClassless},
    {TokenType::FromAllocation, &OutputExpressionReader::ReadAllocation},
    {TokenType::GlobalGoto, &OutputExpressionReader::ReadGlobalGoto},
    {TokenType::LocalGoto, &OutputExpressionReader::ReadLocalGoto},
};

void AddError(const std::string& text) { DiagnosticLog::Instance().AddError(text); }

OutputExpressionReader::NodePointer OutputExpressionReader::ReadOperand() {
  if (lexer.Advance(TokenType::NOT)) return Negate(ReadPrimary());
  return ReadPrimary();
}

OutputExpressionReader::NodePointer OutputExpressionReader::ReadPrimary() {
  if (HeadIsName()) return HeadIsClass() ? ReadInputDeviation() : ReadEvent();
  for (const Primary& primary : Primaries) {
    if (lexer.NextIs(primary.head)) return (this->*primary.read)();
  }
  // The token stays where it is: it may be the operator or parenthesis that comes next.
  AddError("Unknown node type! [line number : " + LineText() + "]");
  return nullptr;
}

OutputExpressionReader::NodePointer OutputExpressionReader::ReadInputDeviation() {
  const std::string failureClass = TakeFailureClass();
  if (!lexer.Current()) parser.Match(TokenType::ID);  // Throws: the port is missing.
  // Ports may be called like keywords, so any token will do.
  const std::string portName = BehindLastPoint(TakeText());
  const std::shared_ptr<InputDeviation> deviation = FindInputDeviation(failureClass, portName);
  if (!deviation) {
    AddError("Port " + portName + " in component " + component->GetFullNameText() +
             " not found! [line number : " + LineText() + "]");
    return nullptr;
  }
  auto proxy = std::make_shared<InputDeviationProxy>(deviation, &model, LineNumber());
  implementation.AddInputDeviationProxy(proxy);
  return proxy;
}

/// The implementation's one record of the deviation, made on first mention; null without the port.
std::shared_ptr<InputDeviation> OutputExpressionReader::FindInputDeviation(
    const std::string& failureClass, const std::string& portName) {
  const auto known = implementation.inputDeviationRecords.find(failureClass + "-" + portName);
  if (known != implementation.inputDeviationRecords.end()) return known->second;
  if (!component->FindPort(portName)) return nullptr;
  auto deviation = std::make_shared<InputDeviation>(component, failureClass, portName);
  implementation.AddInputDeviation(deviation);
  return deviation;
}

OutputExpressionReader::NodePointer OutputExpressionReader::ReadEvent() {
  const bool isLetterE = lexer.NextIs(TokenType::E);
  const std::string text = TakeText();
  const std::string name = isLetterE ? "E" : text;  // Both "e" and "E" name it.
  if (NodePointer event = FindEvent(name)) return event;
  AddError("Basic event " + name +
           " is referred to in an output deviation but does not exist in component " +
           component->GetFullNameText() + " [line number : " + LineText() + "]");
  return nullptr;
}

OutputExpressionReader::NodePointer OutputExpressionReader::FindEvent(
    const std::string& name) const {
  const auto commonCause = implementation.ccfNodes.find(name);
  if (commonCause != implementation.ccfNodes.end()) return commonCause->second;
  const auto event = implementation.basicEvents.find(name);
  return event != implementation.basicEvents.end() ? event->second : nullptr;
}

OutputExpressionReader::NodePointer OutputExpressionReader::ReadSubExpression() {
  const NodePointer inner = ReadParenthesised();
  if (!inner) return nullptr;
  const auto proxy = std::make_shared<ProxyNode>(NodeType::NullOp, "Sub-Expression", &model);
  proxy->AddChild(inner);
  return proxy;
}

OutputExpressionReader::NodePointer OutputExpressionReader::ReadClassless() {
  parser.Match(TokenType::MINUS);
  const std::string text = TakeText();
  AddError("Possible input deviation without failure class. -" + text +
           " [line number : " + LineText() + "]");
  return nullptr;
}

OutputExpressionReader::NodePointer OutputExpressionReader::ReadAllocation() {
  parser.Match(TokenType::FromAllocation);
  parser.Match(TokenType::LeftParenthesis);
  // Without a class the hyphen stays, as in the name under which the host keeps its deviation.
  const std::string failureClass = HeadIsClass() ? ReadFailureClass() : "";
  const std::string name = failureClass + "-" + ReadQualifiedName();
  parser.Match(TokenType::RightParenthesis);
  return std::make_shared<ExportedDeviationProxy>(name, &model, component, LineNumber());
}

OutputExpressionReader::NodePointer OutputExpressionReader::ReadGlobalGoto() {
  parser.Match(TokenType::GlobalGoto);
  parser.Match(TokenType::LeftParenthesis);
  // Without a class the name is the label of an output deviation.
  const std::string prefix = HeadIsClass() ? ReadFailureClass() + "-" : "";
  const std::string target = prefix + ReadQualifiedName();
  parser.Match(TokenType::RightParenthesis);
  return MakeGoto(target);
}

OutputExpressionReader::NodePointer OutputExpressionReader::ReadLocalGoto() {
  parser.Match(TokenType::LocalGoto);
  parser.Match(TokenType::LeftParenthesis);
  const std::string failureClass = ReadFailureClass();
  std::string place = ReadQualifiedName();
  parser.Match(TokenType::RightParenthesis);
  // What names its perspective is complete; all else lies within this component.
  const bool isComplete = place.find("::") != std::string::npos;
  if (!isComplete) place = component->GetFullNameText() + "." + place;
  return MakeGoto(failureClass + "-" + place);
}

OutputExpressionReader::NodePointer OutputExpressionReader::MakeGoto(std::string target) {
  return std::make_shared<GotoNode>(std::move(target), &model, component, LineNumber());
}

}  // namespace

Parser::NodePointer Parser::BuildOutputExpression(std::string expression,
                                                  const std::shared_ptr<Implementation>& owner,
                                                  const std::string& label,
                                                  std::int32_t startLine) {
  implementation = owner;
  component = owner->GetOwner();
  OutputExpressionReader reader(*this, expressionLexer, *model, component, *implementation, label);
  return ReadExpression(reader, std::move(expression), startLine);
}

void Parser::AttachExpression(const std::string& text, const std::string& label, std::int32_t line,
                              IFailureCause& owner) {
  if (text.empty()) return;
  const NodePointer expression = BuildOutputExpression(text, implementation, label, line);
  if (!expression) return;
  owner.AddCause(std::make_unique<Cause>(text, model.get(), CertainProbability, expression),
                 model.get());
}

}  // namespace FTS
