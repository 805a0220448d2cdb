#pragma once

#include <functional>

namespace FTS {

/// Runs the program once over the arguments of the process and returns its exit status. Nothing is
/// thrown: what cannot go on has been reported on the standard error stream.
///
/// The status is 0 however the run over a model ended; scripts read failures from the error stream.
/// It is 1 for an unusable configuration file, for an end by lack of memory or by another exception
/// that nobody has caught, and for a test mode that could not be run.
int RunProgram(int argc, char** argv);

/// Calls `run` and returns its result. When memory runs out in it, a block kept for that purpose is
/// given back, so that the message can be printed, and the result is 1. So it is, with the text as
/// the message, for every other standard exception that nobody has caught.
int RunToTheEnd(const std::function<int()>& run);

}  // namespace FTS
