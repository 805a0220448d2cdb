#pragma once

#include <gtest/gtest.h>

#include "analysis/Prime.h"
#include "app/Config.h"
#include "app/DiagnosticLog.h"
#include "app/ProgramPath.h"
#include "faulttree/FaultTreeNode.h"
#include "optimisation/Individual.h"
#include "optimisation/Random.h"

namespace FTS {

/// The fixture that every test derives from: it starts with fresh process-wide state and leaves
/// fresh state behind, so that no test can see what another one did. A test with parameters adds
/// ::testing::WithParamInterface<T> as a second base.
class ProcessStateTest : public ::testing::Test {
 protected:
  ProcessStateTest() { ResetProcessState(); }
  /// All that a test has made must be gone: a loop that nobody cuts is a leak. The members of the
  /// test's own fixture have died before.
  ~ProcessStateTest() override {
    const NodeCounters& counters = NodeCounters::Instance();
    EXPECT_EQ(counters.nodesMade, counters.nodesDestroyed) << "Nodes have outlived the test.";
    ResetProcessState();
  }

  ProcessStateTest(const ProcessStateTest&) = delete;
  ProcessStateTest& operator=(const ProcessStateTest&) = delete;

 private:
  static void ResetProcessState() {
    DiagnosticLog::Release();
    Config::Release();
    Prime::Release();
    SetProgramPath("");
    NodeCounters::Reset();
    ReleaseRandom();
    Individual::ResetProcessState();
  }
};

}  // namespace FTS
