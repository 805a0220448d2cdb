#pragma once

namespace FTS {

/// Runs the program once over the arguments of the process and returns its exit status. Nothing is
/// thrown: what cannot go on has been reported on the standard error stream.
int RunProgram(int argc, char** argv);

}  // namespace FTS
