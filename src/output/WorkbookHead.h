#pragma once

#include <string>

namespace FTS {

/// What every workbook begins with, up to and including its styles. The dates in it are constants,
/// so that a workbook is the same whatever day it is written.
std::string WorkbookHead();

}  // namespace FTS
