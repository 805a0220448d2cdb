#pragma once

#include <functional>
#include <memory>
#include <ostream>
#include <vector>

#include "analysis/Forward.h"
#include "faulttree/Forward.h"
#include "model/IPrintable.h"

namespace FTS {

/// A node of a binary decision diagram over events: an inner node or a terminal. Diagrams are plain
/// trees that own their branches. Nothing is shared between them and nothing is remembered, so that
/// operations work in place on operands of their own; in the worst case the size is exponential in
/// the number of events. A diagram serves the generation of cut sets only, no figure is computed on
/// it.
class BDDParent : public IPrintable {
 public:
  enum class Kind : int { Terminal = 0, Inner = 1 };

  explicit BDDParent(Kind initKind) : kind(initKind) {}
  ~BDDParent() override = default;
  BDDParent(const BDDParent&) = delete;
  BDDParent& operator=(const BDDParent&) = delete;

  virtual std::unique_ptr<BDDParent> Clone() const = 0;
  /// Inner nodes and terminals together, each branch on its own.
  virtual int CountNodes() const = 0;
  /// Hands each way to a true terminal to the gate as a cut set: the events of `path` and those on
  /// whose high branches the way lies. Ways longer than the order limit are left out.
  virtual void CollectCutSets(FaultTreeNode& gate, std::vector<BasicEvent*>& path) const = 0;

  const Kind kind;
};

/// Decides on one event.
class BDDNode : public BDDParent {
 public:
  /// With terminals on both branches: true where the event occurs, or, `negated`, where it does
  /// not. The event must outlive the diagram.
  BDDNode(BasicEvent& initEvent, bool initNegated);

  void Print(std::ostream& stream, int indent) const override;
  std::unique_ptr<BDDParent> Clone() const override;
  int CountNodes() const override;
  void CollectCutSets(FaultTreeNode& gate, std::vector<BasicEvent*>& path) const override;

  BasicEvent* event;
  std::unique_ptr<BDDParent> high;  ///< Where the event occurs; never null.
  std::unique_ptr<BDDParent> low;   ///< Where it does not; never null.
  bool negated;                     ///< As given at construction.
};

/// The end of a way.
class BDDTerminal : public BDDParent {
 public:
  explicit BDDTerminal(bool initValue) : BDDParent(Kind::Terminal), value(initValue) {}

  void Print(std::ostream& stream, int indent) const override;
  std::unique_ptr<BDDParent> Clone() const override;
  int CountNodes() const override { return 1; }
  void CollectCutSets(FaultTreeNode& gate, std::vector<BasicEvent*>& path) const override;

  bool value;
};

/// The diagram of both operands holding, and of one at least. The operands are used up. Of two
/// inner nodes on different events the one with the larger order weight comes on top, on equal
/// weights the first.
std::unique_ptr<BDDParent> ApplyAnd(std::unique_ptr<BDDParent> a, std::unique_ptr<BDDParent> b);
std::unique_ptr<BDDParent> ApplyOr(std::unique_ptr<BDDParent> a, std::unique_ptr<BDDParent> b);

/// Builds the diagram below the gate and gives the gate its cut sets. `beforeCollecting` sees the
/// diagram in between. False, and no diagram, when nothing is known to cause the gate.
bool CollectBDDCutSets(FaultTreeNode& gate,
                       const std::function<void(const BDDParent&)>& beforeCollecting);

}  // namespace FTS
