// Copies of implementations, for another model or for a replica in the same one.
// All expressions of an implementation are cloned under one memo, so that what they share in the
// source they share in the copy; it is cleared when the copy is complete. Order: events, input
// deviations, common causes, deviations by state, and last the subsystem.

#include <utility>

#include "analysis/CutSet.h"
#include "analysis/ModuleEvent.h"
#include "faulttree/CommonCauseNodes.h"
#include "faulttree/DeviationProxies.h"
#include "model/CCF.h"
#include "model/Component.h"
#include "model/Deviation.h"
#include "model/Implementation.h"
#include "model/Perspective.h"
#include "model/Subsystem.h"

namespace FTS {

namespace {

class ContentsCopy {
 public:
  ContentsCopy(const Implementation& initSource, Implementation& initCopy,
               const std::shared_ptr<Component>& initOwner, CloneMode initMode)
      : source(initSource), copy(initCopy), owner(initOwner), mode(initMode) {}
  ~ContentsCopy() { ClearMemo(); }
  ContentsCopy(const ContentsCopy&) = delete;
  ContentsCopy& operator=(const ContentsCopy&) = delete;

  void Run() {
    BindCommonCauses();
    CopyEvents();
    CopyInputDeviations();
    for (const auto& [name, proxy] : source.ccfNodes) copy.AddPCCF(CloneOf(*proxy));
    CopyStateLogic();
  }

 private:
  template <typename Node>
  std::shared_ptr<Node> CloneOf(Node& node) const {
    return std::static_pointer_cast<Node>(node.Clone(copy.model, mode, true, owner));
  }

  /// Common causes are declared on the perspective, which has copied them already: that copy is
  /// given as the result of cloning, or each component would get a cause of its own.
  void BindCommonCauses() const {
    const std::shared_ptr<Perspective> perspective = owner->GetPerspective();
    if (copy.model == source.model || !perspective) return;
    for (const auto& [name, proxy] : source.ccfNodes) {
      if (proxy->actual) proxy->actual->clone = perspective->FindCCF(proxy->actual->name);
    }
  }

  void CopyEvents() const {
    for (const auto& [name, event] : source.basicEvents) {
      const std::shared_ptr<BasicEvent> added = CloneOf(*event);
      added->owner = owner;
      added->coverage.clear();  // Of a synthesis.
      copy.AddBasicEvent(added);
    }
  }

  void CopyInputDeviations() const {
    for (const auto& [name, record] : source.inputDeviationRecords) {
      copy.AddInputDeviation(record->Copy(owner));
    }
    for (const auto& [name, proxy] : source.inputDeviations) {
      copy.AddInputDeviationProxy(CloneOf(*proxy));
    }
  }

  void CopyStateLogic() const {
    for (const auto& [state, logic] : source.stateLogic) {
      copy.AddStateLogic(std::make_shared<StateLogic>(state));
      for (const auto& [name, deviation] : logic->exportedDeviations) {
        copy.AddExportedDeviation(deviation->CopyWithin(owner, mode), state);
      }
      for (const auto& [name, deviation] : logic->outputDeviations) {
        copy.AddOutputDeviation(deviation->CopyWithin(owner, mode), state);
      }
    }
  }

  void ClearMemo() const {
    for (const auto& [name, event] : source.basicEvents) ClearClones(*event);
    for (const auto& [name, proxy] : source.inputDeviations) ClearClones(*proxy);
    for (const auto& [name, proxy] : source.ccfNodes) {
      ClearClones(*proxy);
      if (proxy->actual) ClearClones(*proxy->actual);
    }
    for (const auto& [state, logic] : source.stateLogic) {
      for (const auto& [name, deviation] : logic->exportedDeviations) ClearLogic(*deviation);
      for (const auto& [name, deviation] : logic->outputDeviations) ClearLogic(*deviation);
    }
  }

  static void ClearLogic(const IFailureCause& deviation) {
    if (deviation.expression) ClearClones(*deviation.expression);
  }

  const Implementation& source;
  Implementation& copy;
  const std::shared_ptr<Component>& owner;
  const CloneMode mode;
};

}  // namespace

std::shared_ptr<Implementation> Implementation::Clone(
    const std::shared_ptr<Component>& newOwner) const {
  return CopyTo(newOwner, CloneMode::KeepIdentity);
}

std::shared_ptr<Implementation> Implementation::CloneForReplica(
    const std::shared_ptr<Component>& newOwner) const {
  return CopyTo(newOwner, CloneMode::NewIdentity);
}

std::shared_ptr<Implementation> Implementation::CopyTo(const std::shared_ptr<Component>& newOwner,
                                                       CloneMode mode) const {
  auto copy = std::make_shared<Implementation>(name, newOwner, newOwner->GetModel());
  copy->description = description;
  copy->cost = cost;
  copy->weight = weight;
  copy->failureRate = failureRate;
  copy->hBlockType = hBlockType;
  copy->includeInOptimisation = includeInOptimisation;
  newOwner->AddImplementation(copy);  // First: cloned proxies look for their records there.
  ContentsCopy(*this, *copy, newOwner, mode).Run();
  if (subsystem) {
    copy->subsystem = subsystem->Clone(copy->model, nullptr, copy, mode);
    copy->subsystem->Reconnect(*subsystem);
  }
  return copy;
}

}  // namespace FTS
