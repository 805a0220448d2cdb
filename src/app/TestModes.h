#pragma once

#include <functional>
#include <memory>
#include <string>

#include "model/Forward.h"

namespace FTS {

/// Reads the model of a test. Throws like the readers.
using TestModelReader = std::function<std::unique_ptr<Model>(const std::string& path)>;

/// Reads a model as XML, whatever its extension.
std::unique_ptr<Model> ReadTestModel(const std::string& path);

/// Runs the models that "TestModels.txt" in the current folder lists, and compares their results
/// with the expected ones that are stored beside them. Writes a log and a summary; see TestReport.
/// Returns the number of failed tests as an exit status.
int RunRegressionTests(const TestModelReader& read = ReadTestModel);

/// Runs the same models without and with order limits, and compares the cut sets within the limits.
/// Returns the number of failed tests as an exit status.
int RunPruningTests(const TestModelReader& read = ReadTestModel);

}  // namespace FTS
