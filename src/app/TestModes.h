#pragma once

namespace FTS {

/// Compares the results of listed models with stored ones and returns the exit status. This version
/// can't: it says so on the standard error stream and returns 1.
int RunRegressionTests();

/// Compares the cut sets of listed models with those found under lower limits; likewise.
int RunPruningTests();

}  // namespace FTS
