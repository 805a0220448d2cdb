// What both test modes have in common: the list, one test behind the other, and what ends a test.

#include "app/TestModes.h"

#include <exception>
#include <iostream>
#include <new>

#include "analysis/Prime.h"
#include "app/Config.h"
#include "app/DiagnosticLog.h"
#include "app/ModelCheck.h"
#include "app/ModelReading.h"
#include "app/TestList.h"
#include "app/TestReport.h"
#include "faulttree/FaultTreeNode.h"
#include "model/Model.h"
#include "model/VtnException.h"
#include "platform/Clock.h"

namespace FTS {
namespace {

constexpr const char* ListName = "TestModels.txt";

/// Gives the test the state of a process that has just started, but for its settings. Node ids go
/// on; nothing that is compared depends on them.
void Prepare(const TestEntry& entry) {
  Config& config = Config::Instance();
  config.maxCutSetSize = entry.maxCutSetSize;
  config.countNormalEvents = !entry.discountNormalEvents;
  config.removeHangingNodes = entry.removeHangingNodes;
  NodeCounters::Instance() = NodeCounters();
  DiagnosticLog::Release();
}

/// Runs the test's phases; what ends them is told and makes the test an error.
bool RunGuarded(ModelCheck& test, TestReport& report) {
  try {
    test.RunPhases();
    return true;
  } catch (const ParseException& exception) {
    report.Complain("Exception occurred: " + exception.GetMessage() +
                    " at line Number: " + std::to_string(exception.GetLine()));
  } catch (const VtnException& exception) {
    report.Complain("Exception occurred: " + exception.GetMessage());
  } catch (const std::bad_alloc&) {
    throw;  // Ends the program at once.
  } catch (const std::exception& exception) {
    report.Complain("Exception: " + std::string(exception.what()) + "\nException occurred: ");
  }
  return false;
}

TestOutcome RunTest(ModelCheck& test, TestReport& report) {
  try {
    Prepare(test.entry);
    const bool complete = RunGuarded(test, report);
    test.End();
    // Primes start anew with each model, as in a run by itself: they grow from model to model
    // otherwise, until products of them overflow.
    Prime::Release();
    return test.Outcome(complete);
  } catch (const std::bad_alloc&) {
    throw;
  } catch (const std::exception& exception) {
    report.Complain("Test failed: " + std::string(exception.what()));
    return TestOutcome::Errors;
  }
}

template <typename Test>
int RunTests(const TestModelReader& read, bool countsLeaks) {
  // Set again for those that have come by a configuration file.
  Config::Instance().testMode = true;
  Config::Instance().SetOutputTypes("XML");
  TestReport report;
  const long long start = Clock::Milliseconds();
  int number = 0;
  for (const TestEntry& entry : ReadTestList(ListName)) {
    report.Show("TEST " + std::to_string(++number));
    report.Show("--------");
    report.Show("Testing file: " + entry.path);
    Test test(entry, read, report);
    report.Finish(number, RunTest(test, report), entry.path);
  }
  report.FinishAll(Clock::Milliseconds() - start, countsLeaks);
  return report.ExitStatus();
}

}  // namespace

std::unique_ptr<Model> ReadTestModel(const std::string& path) {
  constexpr bool AsXml = true;
  auto model = ReadModel(path, AsXml);
  if (!model) throw VtnException("No model in " + path);
  return model;
}

int RunRegressionTests(const TestModelReader& read) {
  return RunTests<RegressionCheck>(read, true);
}

int RunPruningTests(const TestModelReader& read) { return RunTests<PruningCheck>(read, false); }

}  // namespace FTS
