#pragma once

#include <memory>
#include <string>
#include <vector>

#include "model/Component.h"
#include "model/Deviation.h"
#include "model/Implementation.h"
#include "model/Line.h"
#include "model/Model.h"
#include "model/Perspective.h"
#include "model/Port.h"
#include "model/Subsystem.h"
#include "model/VtnException.h"
#include "support/LogicText.h"
#include "support/ProcessStateTest.h"
#include "support/ReadModel.h"

namespace FTS {

/// Base of tests that read model documents written in the test.
class ModelTextTest : public ProcessStateTest {
 protected:
  /// An element with that content.
  static std::string Tag(const std::string& name, const std::string& content) {
    return "<" + name + ">" + content + "</" + name + ">";
  }

  /// Reads a `Model` element with that content.
  void Read(const std::string& content) { model = ReadModelText(Tag("Model", content)); }

  /// Reads a model whose only component is Pump, with the ports in and out and that content.
  void ReadPump(const std::string& content) {
    Read(Tag("System", Tag("Components", Tag("Component", PumpHead + content))));
  }

  /// Reads a model whose only component Pump has one implementation, "built", with that content.
  void ReadBuilt(const std::string& content) {
    ReadPump(Tag("Implementations", Tag("Current", "<Name>built</Name>" + content)));
  }

  /// Reads a model in which the failure data of "built" have that content.
  void ReadFailureData(const std::string& content) { ReadBuilt(Tag("FailureData", content)); }

  /// The component of that full name; fails the test without it.
  Component& ComponentNamed(const std::string& fullName) {
    const std::shared_ptr<Component> found = model->FindComponent(fullName);
    if (!found) throw VtnException("The test's model has no component " + fullName);
    return *found;
  }

  Component& Pump() { return ComponentNamed("DEFAULT::Pump"); }
  Implementation& Built() { return Pump().GetCurrentImplementation(); }

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

  static constexpr const char* PumpHead =
      "<Name>Pump</Name>"
      "<Ports><Port><Name>in</Name></Port><Port><Name>out</Name></Port></Ports>";

  std::unique_ptr<Model> model;
};

}  // namespace FTS
