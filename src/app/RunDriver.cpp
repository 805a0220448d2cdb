#include "app/RunDriver.h"

#include <exception>
#include <iostream>
#include <memory>
#include <new>
#include <string>
#include <vector>

#include "analysis/Prime.h"
#include "app/Config.h"
#include "app/DiagnosticLog.h"
#include "app/Duration.h"
#include "app/ModelReading.h"
#include "app/Options.h"
#include "app/RunPhases.h"
#include "app/RunReports.h"
#include "app/TestModes.h"
#include "app/UsageText.h"
#include "model/BuildInfo.h"
#include "model/Model.h"
#include "model/VtnException.h"
#include "platform/BigStack.h"
#include "platform/Clock.h"

namespace FTS {
namespace {

constexpr int Success = 0;
constexpr int Failure = 1;
constexpr std::size_t MemoryReserveSize = 16384;  // Bytes.

void PrintBanner() {
  std::cout << "Vel-Tarn Safety Analysis & Optimisation Tool\n"
            << "SimulationX Build v" << MajorVersion << '.' << MinorVersion << '.' << BuildNumber
            << " (x64)\n"
            << BuildDate << "\n\n";
}

/// A silent run stores no errors and so is never stopped here, which is meant to be: a search over
/// designs gets as far as the model lets it.
void StopOnParsingErrors() {
  if (DiagnosticLog::Instance().ErrorCount() == 0) return;
  PrintErrors(std::cerr);
  throw ParseException("There were unrecoverable errors found during parsing.", -1);
}

void ReadAndRun(const RunOptions& options, std::unique_ptr<Model>& model) {
  model = ReadModel(options.modelFile, options.useXmlParser);
  StopOnParsingErrors();
  if (!model) return;
  if (Config::Instance().optimise) {
    RunOptimisation(*model, options);
  } else {
    RunNormalPhases(*model);
  }
}

/// Reads the model and runs the phases; what cannot go on is printed and ends only this.
void RunGuarded(const RunOptions& options, std::unique_ptr<Model>& model) {
  try {
    ReadAndRun(options, model);
  } catch (const ParseException& exception) {
    std::cerr << exception.GetMessage() << " at line number: " << exception.GetLine() << '\n';
  } catch (const VtnException& exception) {
    std::cerr << exception.GetMessage() << '\n';
  } catch (const std::bad_alloc&) {
    throw;  // Ends the program at once.
  } catch (const std::exception& exception) {
    std::cerr << exception.what() << '\n';
  }
}

void RunModelFile(const RunOptions& options) {
  const long long start = Clock::Milliseconds();
  std::cout << "Program Arguments Passed: \n" << options.recognised;
  const bool quiet = Config::Instance().runSilent;
  if (!quiet) std::cout << "\n\nParsing file: " << options.modelFile << "\n\n" << std::flush;

  std::unique_ptr<Model> model;
  RunGuarded(options, model);
  model.reset();

  if (!quiet) {
    const float seconds = static_cast<float>(Clock::Milliseconds() - start) / 1000.0f;
    std::cout << "Time elapsed: " << FormatDuration(seconds) << '\n';
  }
  PrintWarnings(std::cerr);
  PrintErrors(std::cerr);
  DiagnosticLog::Release();
  Config::Release();
  Prime::Release();
}

int RunMode(const RunOptions& options) {
  switch (options.mode) {
    case ProgramMode::RegressionTest:
      return RunRegressionTests();
    case ProgramMode::PruningTest:
      return RunPruningTests();
    case ProgramMode::Normal:
      break;
  }
  if (options.modelFile.empty()) {
    PrintUsage(std::cout);
  } else {
    RunModelFile(options);
  }
  return Success;
}

int RunWithArguments(const std::vector<std::string>& arguments) {
  PrintBanner();
  RunOptions options;
  try {
    options = SettleOptions(arguments);
  } catch (const VtnException& exception) {
    std::cerr << "Error while trying to load or create Vel-Tarn configuration file: "
              << exception.GetMessage() << '\n';
    return Failure;
  }
  return RunMode(options);
}

}  // namespace

int RunToTheEnd(const std::function<int()>& run) {
  // Static, so that no compiler may conclude that the block is never needed.
  static std::unique_ptr<char[]> reserve;
  try {
    reserve = std::make_unique<char[]>(MemoryReserveSize);
    const int status = run();
    reserve.reset();
    return status;
  } catch (const std::bad_alloc&) {
    reserve.reset();
    std::cerr << "Vel-Tarn has exited with an out of memory exception.\n";
    return Failure;
  } catch (const std::exception& exception) {
    // What no phase has caught would end the process without a word that a user understands.
    std::cerr << exception.what() << '\n';
    return Failure;
  }
}

int RunProgram(int argc, char** argv) {
  return RunToTheEnd([argc, argv] {
    const std::vector<std::string> arguments(argv, argv + argc);
    int status = Failure;
    RunOnBigStack([&arguments, &status] { status = RunWithArguments(arguments); });
    return status;
  });
}

}  // namespace FTS
