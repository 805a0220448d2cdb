#include "support/TestPaths.h"

namespace FTS {

std::string ProgramUnderTest() { return FTS_PROGRAM_PATH; }

std::string TestsFolder() { return FTS_CHECKOUT_FOLDER "/tests"; }

std::string ExamplesFolder() { return FTS_CHECKOUT_FOLDER "/examples"; }

}  // namespace FTS
