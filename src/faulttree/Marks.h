#pragma once

#include <cstdint>

#include "faulttree/Forward.h"

namespace FTS {

/// Tells a walk which nodes it has met, so that each is worked on once however many parents share
/// it. The marks need no clearing: every walk has a number of its own, and a node remembers the
/// last walk that entered it. A second walk over the same nodes, begun before the first has ended,
/// takes the first one's marks away: end one walk before the next begins.
class OnceMarks {
 public:
  OnceMarks();
  OnceMarks(const OnceMarks&) = delete;
  OnceMarks& operator=(const OnceMarks&) = delete;

  /// True when this walk meets the node for the first time.
  bool Enter(const FaultTreeNode& node);

 private:
  std::uint64_t walk;
};

/// Marks a node as lying on the path from the root of the walk, for walks that ask "am I below
/// myself?". The mark goes with the object that set it, on every way out of the function.
class OnPathMark {
 public:
  explicit OnPathMark(const FaultTreeNode& initNode);
  ~OnPathMark();
  OnPathMark(const OnPathMark&) = delete;
  OnPathMark& operator=(const OnPathMark&) = delete;

  /// False when the node was on the path already: a loop closes here.
  bool Entered() const { return entered; }

 private:
  const FaultTreeNode& node;
  bool entered;
};

}  // namespace FTS
