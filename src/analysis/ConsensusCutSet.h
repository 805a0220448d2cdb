#pragma once

#include <vector>

#include "analysis/CutSet.h"

namespace FTS {

/// What two cut sets imply together that hold an event and its complement: whether the event occurs
/// or not, one of the two is down to its other members. A tool to find redundant cut sets; it is
/// never a result.
class ConsensusCutSet : public CutSet {
 public:
  /// The term of `a`, which holds the event, and `b`, which holds its complement.
  ConsensusCutSet(const CutSet& a, const CutSet& b, const BasicEvent& event);

  bool IsConsensus() const override { return true; }
  bool HasParent(const CutSet& cutSet) const;

  /// The tree's own cut sets from which it descends, each once. Not owned.
  std::vector<const CutSet*> parents;

 private:
  void AddParents(const CutSet& cutSet);
};

}  // namespace FTS
