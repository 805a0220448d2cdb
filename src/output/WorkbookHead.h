#pragma once

#include <string_view>

namespace FTS {

/// What every workbook begins with, up to and including its styles. The dates in it are constants,
/// so that a workbook is the same whatever day it is written.
extern const std::string_view WorkbookHead;

}  // namespace FTS
