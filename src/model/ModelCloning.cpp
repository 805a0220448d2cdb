// The life cycle of a model beside its phases: back to the parsed state, and copies in it.
// What synthesis links may lead in circles, so it is taken apart before it is dropped. Templates
// (implementations' logic, lines' connections, hazards' expressions) are never touched.

#include <unordered_map>
#include <utility>

#include "analysis/CutSet.h"
#include "analysis/FMEA.h"
#include "analysis/FaultTree.h"
#include "faulttree/BasicEvent.h"
#include "model/CCF.h"
#include "model/Component.h"
#include "model/Deviation.h"
#include "model/GraphRelease.h"
#include "model/Hazard.h"
#include "model/Implementation.h"
#include "model/Model.h"
#include "model/Objective.h"
#include "model/Perspective.h"
#include "model/StateMachine.h"
#include "model/Subsystem.h"
#include "platform/FileSystem.h"

namespace FTS {

namespace {

/// Which object of a clone stands for which of its source. Full names are not enough: alternative
/// implementations of a component may hold components of the same name.
class Correspondence {
 public:
  void Enter(const Subsystem& source, const Subsystem& copy) {
    for (const auto& [name, component] : source.components) {
      const auto other = copy.components.find(name);
      if (other == copy.components.end()) continue;
      componentCopies[component.get()] = other->second;
      const auto& implementations = other->second->implementations;
      for (std::size_t i = 0; i < component->implementations.size(); ++i) {
        if (i < implementations.size()) Enter(*component->implementations[i], *implementations[i]);
      }
    }
  }

  /// Null when there is none.
  std::shared_ptr<Component> CopyOf(const Component& source) const {
    const auto found = componentCopies.find(&source);
    return found == componentCopies.end() ? nullptr : found->second;
  }

  std::shared_ptr<Deviation> CopyOf(const Deviation& source) const {
    const auto found = deviationCopies.find(&source);
    return found == deviationCopies.end() ? nullptr : found->second;
  }

 private:
  void Enter(const Implementation& source, const Implementation& copy) {
    for (const auto& [state, logic] : source.stateLogic) {
      for (const auto& [name, deviation] : logic->outputDeviations) {
        deviationCopies[deviation.get()] = copy.GetOutputDeviation(name, state);
      }
    }
    if (source.subsystem && copy.subsystem) Enter(*source.subsystem, *copy.subsystem);
  }

  // Looked up only, never walked.
  std::unordered_map<const Component*, std::shared_ptr<Component>> componentCopies;
  std::unordered_map<const Deviation*, std::shared_ptr<Deviation>> deviationCopies;
};

}  // namespace

void Model::ClearSynthesis() {
  fmea.reset();
  std::vector<FaultTreeNode::Pointer> roots;
  for (const auto& tree : faultTrees) roots.push_back(std::exchange(tree->root, nullptr));
  for (const auto& [hazardName, hazard] : hazards) {
    // A tree that was dropped for its loops is in the hazard only.
    if (hazard->faultTree) roots.push_back(std::exchange(hazard->faultTree->root, nullptr));
    hazard->faultTree.reset();
  }
  for (const auto& deviation : systemOutports) roots.push_back(std::move(deviation->expression));
  faultTrees.clear();
  systemOutports.clear();
  unconnectedEvents.clear();
  faultTreePlusIds.clear();
  ReleaseGraphs(std::move(roots));
  stateMachine->Unlink();
  std::erase_if(gotoTargets, [](const auto& target) { return target.second->exported; });
  for (const auto& [perspectiveName, perspective] : perspectives) {
    for (const auto& [ccfName, ccf] : perspective->ccfs) ForgetAnalysis(*ccf);
    if (perspective->rootSubsystem) perspective->rootSubsystem->Clear();
  }
  for (const auto& [prime, event] : basicEvents) ForgetAnalysis(*event);
  basicEvents.clear();
}

std::unique_ptr<Model> Model::Clone() const {
  auto copy = std::make_unique<Model>(mode, JoinPath(directory, fileName), name, description,
                                      versionNumber, riskTime);
  copy->cutSetCount = cutSetCount;
  copy->maxGenerations = maxGenerations;
  copy->defaultMaxReplicants = defaultMaxReplicants;
  copy->failureClassAssignments = failureClassAssignments;
  copy->objectives = objectives;
  for (auto& [objectiveName, objective] : copy->objectives) objective.ResetScales();
  for (const std::string& failureClass : failureClasses) copy->AddFailureClass(failureClass);
  for (const auto& [perspectiveName, perspective] : perspectives) {
    copy->AddPerspective(perspective->Clone(copy.get()));
  }
  for (const auto& [hazardName, hazard] : hazards) copy->AddHazard(hazard->Clone(copy.get()));
  copy->stateMachine = stateMachine->Clone(copy.get());
  const auto initial = copy->stateMachine->states.find(DefaultState);
  if (initial != copy->stateMachine->states.end()) copy->stateStack = {initial->second};
  CopyReferencesTo(*copy);
  return copy;
}

void Model::CopyPerspectives(Model& target) const {
  for (const auto& [perspectiveName, perspective] : perspectives) {
    const auto other = target.perspectives.find(perspectiveName);
    if (other != target.perspectives.end()) other->second->RebuildFrom(*perspective);
  }
  CopyReferencesTo(target);
}

/// Labels and the list of configurable components point into the architecture.
void Model::CopyReferencesTo(Model& target) const {
  if (gotoTargets.empty() && configurableComponents.empty()) return;
  Correspondence correspondence;
  for (const auto& [perspectiveName, perspective] : perspectives) {
    const auto other = target.perspectives.find(perspectiveName);
    if (other == target.perspectives.end()) continue;
    if (!perspective->rootSubsystem || !other->second->rootSubsystem) continue;
    correspondence.Enter(*perspective->rootSubsystem, *other->second->rootSubsystem);
  }
  for (const auto& [label, deviation] : gotoTargets) {
    // Exported deviations enter at each synthesis.
    if (auto own = correspondence.CopyOf(*deviation)) target.gotoTargets[label] = std::move(own);
  }
  target.configurableComponents.clear();
  for (const auto& component : configurableComponents) {
    if (const auto own = correspondence.CopyOf(*component)) target.AddConfigurableComponent(own);
  }
}

}  // namespace FTS
