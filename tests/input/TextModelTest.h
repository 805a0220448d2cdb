#pragma once

#include <memory>
#include <string>

#include "input/ModelTextTest.h"
#include "input/ParserSimX.h"
#include "support/CapturedStreams.h"
#include "support/CaseName.h"

namespace FTS {

/// Reads a model in the text format given as text. Fails with the parser's exceptions.
inline std::unique_ptr<Model> ReadTextModel(const std::string& text) {
  const TemporaryFolder folder;
  return CreateTextParser(folder.Write("model.vtn", text))->Parse();
}

/// Base of tests that read text models written in the test.
class TextModelTest : public ModelTextTest {
 protected:
  /// Reads `Model Name "m"`, and that content behind it.
  void ReadText(const std::string& content) {
    const CapturedStreams streams;
    model = ReadTextModel("Model Name \"m\"\n" + content);
  }

  /// A system with the component Pump, its ports in and out, whose block ends with that content.
  static std::string PumpSystem(const std::string& content) {
    return "System { Component { Name \"Pump\" Port { Name \"in\" } Port { Name \"out\" }\n" +
           content + " } }";
  }

  /// The same, where the content is that of Pump's only implementation.
  static std::string BuiltSystem(const std::string& content) {
    return PumpSystem("Implementation { Name \"built\"\n" + content + " }");
  }

  /// The same, where the content is that of the failure data.
  static std::string DataSystem(const std::string& content) {
    return BuiltSystem("FData {\n" + content + " }");
  }

  /// The message and line of what reading a model with that content ends with.
  std::string FaultOf(const std::string& content) {
    return ThrownBy([&] { ReadText(content); });
  }
};

}  // namespace FTS
