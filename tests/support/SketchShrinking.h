#pragma once

#include <functional>

#include "support/ModelSketch.h"

namespace FTS {

/// Whether every name in the sketch refers to something that is there: hazards to a port with a
/// deviation or an inner connection, gotos to a port, labels to a deviation, events to their
/// component. A model that fails here would be refused on reading or in synthesis.
bool RefersWell(const ModelSketch& sketch);

/// Makes the sketches that come about by leaving out one thing, one after the other: a hazard, a
/// component, a deviation, a line, a connection, an event, an operand; what takes away most comes
/// first. Not all of them refer well. Stops when `accept` returns true, and returns that then.
bool TrySmallerSketches(const ModelSketch& sketch, const std::function<bool(ModelSketch&)>& accept);

}  // namespace FTS
