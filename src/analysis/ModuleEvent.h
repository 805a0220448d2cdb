#pragma once

#include <memory>
#include <string>
#include <vector>

#include "analysis/CutSet.h"
#include "faulttree/BasicEvent.h"

namespace FTS {

/// Stands for a whole gate whose graph shares nothing with the rest of its tree, so that the cut
/// sets above count it as one member until they are complete. Named "MOD: " and the gate's name,
/// with the gate's id.
class ModuleEvent : public BasicEvent {
 public:
  /// Takes two primes and keeps the second; the first goes to waste with every module, and keys of
  /// established models depend on it.
  explicit ModuleEvent(FaultTreeGate& initGate);
  ~ModuleEvent() override;

  void Accept(Visitor& visitor) override;
  std::string GetTypeName() const override { return "ModuleEvent"; }
  /// True when one of its cut sets is made of normal events and such modules only.
  bool IsMadeOfNormalEvents() const;

  /// Takes over the cut sets of the module, when they are complete.
  void TakeCutSets(FaultTreeGate& source);
  /// Expands the cut sets that hold further modules, in place.
  int ExpandModuleCutSets() override;

  OrderRange orders;  ///< Of the expanded cut sets, without regard to the limit.
  /// One of its cut sets, or of those of a module in them, has no event: diagrams do not name
  /// negated events. What comes of the expansion may then lie inside other cut sets.
  bool holdsEmptySet = false;
  bool hasNestedModules = false;  ///< One of `moduleCutSets` holds a further module event.
  std::vector<std::unique_ptr<CutSet>> moduleCutSets;
  FaultTreeGate* gate;  ///< The gate it stands for, which owns it.

 protected:
  std::shared_ptr<BasicEvent> MakeSame(Model* target, int newId) override;
};

}  // namespace FTS
