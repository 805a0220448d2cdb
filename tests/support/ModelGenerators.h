#pragma once

#include <cstddef>
#include <map>
#include <string>

#include "support/ModelSketch.h"

namespace FTS {

/// A model whose answer is known in closed form. It has one hazard, "Top", one failure class and no
/// two events of one name.
struct GeneratedModel {
  ModelSketch sketch;
  std::map<int, std::size_t> setsByOrder;  ///< How many minimal cut sets there are of each order.
  double unavailability = 0.0;             ///< Esary and Proschan's figure.

  /// The text of the model file.
  std::string Xml() const;
};

/// Layers of two components. Each fails by itself, or when both components of the layer before
/// fail, and so feeds both of the next layer; the top is the AND over the last layer. 2^layers
/// paths lead down, but only `layers` cut sets of order 2 come of it. For walks that must not take
/// one path after the other.
GeneratedModel Ladder(int layers);

/// n components in a row, each of which passes on what it gets and adds one event: n cut sets of
/// order 1, and a graph some nodes deep for each component. For recursion, and for more events than
/// a signature has bits.
GeneratedModel Chain(int n);

/// One component with (x1 OR .. OR xa) AND (y1 OR .. OR yb): a * b cut sets of order 2. For
/// products of gates.
GeneratedModel TwoOrs(int a, int b);

/// Layers of three 2-out-of-3 voters over three sources; each voter hears all three outputs of the
/// layer before and has an event of its own. A last vote is the top. 3 cut sets of order 2 for each
/// layer and for the sources, and more than 6^layers paths. For sharing, and absorption.
GeneratedModel SharedVoters(int layers);

/// n components with two events each that fail when both have occurred; the top is the OR over
/// them: n cut sets of order 2 without a common event. Each is a module. For many cut sets.
GeneratedModel OrOfAnds(int n);

/// Refined components with ten parts in a row each, as many as make a text of at least that many
/// megabytes (10^6 bytes). The top is the first of them: 10 cut sets of order 1. For reading.
GeneratedModel LargeModel(int megabytes);

}  // namespace FTS
