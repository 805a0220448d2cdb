#pragma once

#include <string>

#include "support/ModelSketch.h"

namespace FTS {

/// The sketch as the text of a model file (XML).
std::string SketchText(const ModelSketch& sketch);

}  // namespace FTS
