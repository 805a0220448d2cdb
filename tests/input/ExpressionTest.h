#pragma once

#include <memory>
#include <string>
#include <vector>

#include "faulttree/BasicEvent.h"
#include "faulttree/CommonCauseNodes.h"
#include "input/Parser.h"
#include "model/Component.h"
#include "model/Implementation.h"
#include "model/Line.h"
#include "model/Model.h"
#include "model/Perspective.h"
#include "model/Port.h"
#include "model/Subsystem.h"
#include "model/VtnException.h"
#include "support/LogicText.h"
#include "support/ProcessStateTest.h"

namespace FTS {

/// A parser whose readers of expressions can be called.
class ExpressionParser : public Parser {
 public:
  ExpressionParser() : Parser("test") {
    model = std::make_unique<Model>(0, "/models/test.xml", "test", "", 1.0F, 0.0);
  }

  std::unique_ptr<Model> Parse() override { return nullptr; }

  using Parser::BuildHazardExpression;
  using Parser::BuildLineExpression;
  using Parser::BuildOutputExpression;
  using Parser::component;
  using Parser::currentLexer;
  using Parser::implementation;
  using Parser::model;
};

/// Expressions are read within a small system:
///
///   perspective Sys: components Pump (ports in, in2, out) and Valve (ports in, out)
///   inside Pump:     component Rotor (port shaft)
///   Pump's events:   A, B, C, D and E, the normal event N, the potential common cause P
class ExpressionTest : public ProcessStateTest {
 protected:
  ExpressionTest() {
    const auto perspective = std::make_shared<Perspective>("Sys", parser.model.get());
    parser.model->AddPerspective(perspective);
    system = std::make_shared<Subsystem>(parser.model.get());
    perspective->rootSubsystem = system;
    system->perspective = perspective;
    pump = AddComponent("Pump", system, {"in", "in2", "out"});
    valve = AddComponent("Valve", system, {"in", "out"});
    inside = std::make_shared<Subsystem>(parser.model.get());
    pump->currentImplementation->subsystem = inside;
    inside->owner = pump->currentImplementation;
    rotor = AddComponent("Rotor", inside, {"shaft"});
    AddEvents(*pump->currentImplementation);
  }

  /// The logic of Pump's deviation "x" in an expression whose first line has number 1.
  std::shared_ptr<FaultTreeNode> Output(const std::string& text) {
    return parser.BuildOutputExpression(text, pump->currentImplementation, "x", 1);
  }

  /// What is logged as errors.
  static const std::vector<std::string>& Errors() { return DiagnosticLog::Instance().Errors(); }
  static const std::vector<std::string>& Warnings() { return DiagnosticLog::Instance().Warnings(); }

  /// The message of the exception that `action` throws, with " @" and the line of a ParseException.
  template <typename Action>
  static std::string ThrownBy(Action action) {
    try {
      action();
    } catch (const ParseException& exception) {
      return exception.GetMessage() + " @" + std::to_string(exception.GetLine());
    } catch (const VtnException& exception) {
      return exception.GetMessage();
    }
    return "no exception";
  }

  ExpressionParser parser;
  std::shared_ptr<Subsystem> system;
  std::shared_ptr<Subsystem> inside;
  std::shared_ptr<Component> pump;
  std::shared_ptr<Component> valve;
  std::shared_ptr<Component> rotor;

 private:
  std::shared_ptr<Component> AddComponent(const std::string& name,
                                          const std::shared_ptr<Subsystem>& where,
                                          const std::vector<std::string>& ports) {
    Model* model = parser.model.get();
    const auto component = std::make_shared<Component>(name, where, model);
    where->AddComponent(component);
    for (const std::string& port : ports) {
      component->AddPort(std::make_shared<Port>(port, component, model));
    }
    const auto implementation = std::make_shared<Implementation>("built", component, model);
    component->AddImplementation(implementation);
    component->currentImplementation = implementation;
    return component;
  }

  void AddEvents(Implementation& implementation) {
    Model* model = parser.model.get();
    for (const char* name : {"A", "B", "C", "D", "E"}) {
      implementation.AddBasicEvent(std::make_shared<BasicEvent>(name, model, true));
    }
    implementation.AddBasicEvent(std::make_shared<NormalEvent>("N", model, true));
    implementation.AddPCCF(std::make_shared<PCCFProxy>("P", model));
  }
};

}  // namespace FTS
