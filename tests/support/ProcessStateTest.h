#pragma once

#include <gtest/gtest.h>

#include "analysis/Prime.h"
#include "app/Config.h"
#include "app/DiagnosticLog.h"
#include "app/ProgramPath.h"

namespace FTS {

/// The fixture that every test derives from: it starts with fresh process-wide state and leaves
/// fresh state behind, so that no test can see what another one did. A test with parameters adds
/// ::testing::WithParamInterface<T> as a second base.
class ProcessStateTest : public ::testing::Test {
 protected:
  ProcessStateTest() { ResetProcessState(); }
  ~ProcessStateTest() override { ResetProcessState(); }

  ProcessStateTest(const ProcessStateTest&) = delete;
  ProcessStateTest& operator=(const ProcessStateTest&) = delete;

 private:
  static void ResetProcessState() {
    DiagnosticLog::Release();
    Config::Release();
    Prime::Release();
    SetProgramPath("");
    // Counters of nodes and the random source are reset here too, in this one place.
  }
};

}  // namespace FTS
