// Synthesis: one fault tree per failed state of a state machine, else per hazard, else per
// system output, grown from the architecture.
// The driver of resolution (Resolution.cpp) and refinement (Refinement.cpp), and the one place of
// synthesis that writes progress to standard output. Trees share the logic of shared deviations.

#include <iostream>
#include <memory>
#include <string>

#include "analysis/FaultTree.h"
#include "app/Config.h"
#include "app/Duration.h"
#include "faulttree/FaultTreeNode.h"
#include "faulttree/RefinementPasses.h"
#include "faulttree/Resolution.h"
#include "model/Component.h"
#include "model/Deviation.h"
#include "model/Hazard.h"
#include "model/Implementation.h"
#include "model/Model.h"
#include "model/Perspective.h"
#include "model/Port.h"
#include "model/StateMachine.h"
#include "model/Subsystem.h"
#include "platform/Clock.h"

namespace FTS {

namespace {

std::string TimeSince(long long start) {
  return FormatDuration(static_cast<float>(Clock::Milliseconds() - start) / 1000.0F);
}

void Announce(const std::string& name) {
  if (!Config::Instance().runSilent) std::cout << "    " << name << '\n';
}

void ReportTreeDone(long long start) {
  if (!Config::Instance().runSilent) {
    std::cout << "\tSynthesis complete in " << TimeSince(start) << '\n';
  }
}

/// The logic of a system output; null when it has none.
FaultTreeNode::Pointer LogicOfSystemOutport(Model& model, OutputDeviation& deviation) {
  const std::shared_ptr<Port> port = deviation.GetPort();
  FaultTreeNode::Pointer annotation = HasAnnotation(*port) ? deviation.expression : nullptr;
  const FaultTreeNode::Pointer inside =
      HasInside(*port) ? port->GetInternalExpression(deviation.failureClass, DefaultState)
                       : nullptr;
  return JoinInside(model, *port, annotation, inside);
}

}  // namespace

void Model::Synthesise() {
  const bool quiet = Config::Instance().runSilent;
  if (!quiet) std::cout << "Synthesising:\n";
  const long long start = Clock::Milliseconds();
  for (const auto& [perspectiveName, perspective] : perspectives) {
    if (!perspective->rootSubsystem) continue;
    perspective->rootSubsystem->BuildPortExpressions();
    perspective->rootSubsystem->Instantiate();
  }
  if (!stateMachine->failStates.empty()) {
    SynthesiseFromStateMachine();
  } else if (hazards.empty()) {
    SynthesiseFromSystemOutports();
  } else {
    SynthesiseFromHazards();
  }
  // When all trees are grown, so that no logic changes any more that they share.
  for (const auto& tree : faultTrees) FindCircles(*this, *tree);
  RefineTrees();
  if (!quiet) std::cout << "Full synthesis complete in " << TimeSince(start) << '\n';
}

void Model::SynthesiseFromHazards() {
  for (const auto& [hazardName, hazard] : hazards) {
    if (!hazard->expression) continue;
    const auto root = CloneTemplate(*hazard->expression, this, CloneMode::NewIdentity);
    Announce(hazard->GetCauseName());
    const long long start = Clock::Milliseconds();
    ResolveHazardExpression(*root);
    const auto tree = std::make_shared<FaultTree>(root);
    tree->label = root->description;
    tree->severity = hazard->severity;
    tree->source = hazard;
    hazard->faultTree = tree;
    root->name = hazard->GetCauseName();
    root->description = hazard->description;
    AddFaultTree(tree);
    ReportTreeDone(start);
  }
}

void Model::SynthesiseFromSystemOutports() {
  for (const std::shared_ptr<OutputDeviation>& deviation : systemOutports) {
    const auto root = LogicOfSystemOutport(*this, *deviation);
    if (!root) continue;
    root->description = deviation->description;
    Announce(root->name);
    const long long start = Clock::Milliseconds();
    if (HasAnnotation(*deviation->GetPort()) && deviation->expression) {
      deviation->resolved = true;
      ResolveDeviation(*deviation->expression);
    }
    const auto tree = std::make_shared<FaultTree>(root);
    tree->label = root->description;
    tree->sourceDeviation = deviation;
    tree->severity = deviation->severity;
    AddFaultTree(tree);
    ReportTreeDone(start);
  }
}

}  // namespace FTS
