// Refinement: takes all synthesised trees through loop detection, cutting, contraction and the
// search for contradictions. Driver of the passes in RefinementPasses.h; it writes their progress.

#include <iostream>
#include <memory>

#include "analysis/FaultTree.h"
#include "app/Config.h"
#include "faulttree/FaultTreeNode.h"
#include "faulttree/Marks.h"
#include "faulttree/RefinementPasses.h"
#include "model/Hazard.h"
#include "model/Model.h"
#include "platform/XmlOutput.h"

namespace FTS {

namespace {

void DetectAllCrazyLoops(const Model& model, bool quiet) {
  if (Config::Instance().ignoreCrazyLoops) return;
  if (!quiet) std::cout << "Detecting CrazyLoops...\n";
  for (auto tree = model.faultTrees.rbegin(); tree != model.faultTrees.rend(); ++tree) {
    DetectCrazyLoops(**tree);
  }
}

void TerminateLoops(Model& model, bool quiet) {
  if (!quiet) std::cout << "Manipulating trees...\n";
  for (const auto& tree : model.faultTrees) {
    if (!tree->hasLoops) continue;
    if (!quiet) std::cout << "Terminating loops in " << tree->root->name << '\n';
    CutCircles(model, *tree->root);
  }
}

/// Mechanisms are input deviations, which contraction folds away, also out of what later trees
/// share. So all trees are walked before the first is contracted, or only the first of two hazards
/// with common logic would be covered.
void ApplyCoverage(const Model& model) {
  if (!Config::Instance().isoMode) return;
  for (const auto& tree : model.faultTrees) {
    const auto hazard = tree->unbreakable ? nullptr : tree->source.lock();
    if (hazard) tree->root->ApplyDiagnosticCoverage(*hazard, nullptr);
  }
}

/// A search synthesises each of its candidates, and a file of the last one would look like a
/// result.
bool WantsOpenPSA() {
  const Config& config = Config::Instance();
  return !config.optimise && (config.outputTypes & OutputType::OpenPsa) != 0;
}

void Fold(Model& model, FaultTreeNode& root, bool quiet) {
  switch (Config::Instance().contraction) {
    case Contraction::Contract:
      if (!quiet) std::cout << "Contracting " << root.name << '\n';
      Contract(model, root);
      return;
    case Contraction::Subcontract:
      if (!quiet) std::cout << "Subcontracting " << root.name << '\n';
      Subcontract(root);
      return;
    default:
      return;
  }
}

void FindTreeContradictions(FaultTree& tree) {
  {
    OnceMarks marks;
    tree.root->FindContradictions(marks);
  }
  tree.containsNot = ContainsNot(*tree.root);
  tree.root->ClearContradiction();
}

}  // namespace

void Model::RefineTrees() {
  const bool quiet = Config::Instance().runSilent;
  if (!quiet) std::cout << "Refining fault trees...\n";
  DetectAllCrazyLoops(*this, quiet);  // A loop once cut can't be judged.
  TerminateLoops(*this, quiet);
  ApplyCoverage(*this);
  // Trees share logic, and contracting one changes what the next would show.
  const auto document = WantsOpenPSA() ? MakeOpenPSADocument() : nullptr;
  std::size_t i = 0;
  while (i < faultTrees.size()) {
    const std::shared_ptr<FaultTree> tree = faultTrees[i];
    tree->root->CopyChildrenToState(ContractedState);  // Keeps the tree as synthesised.
    if (tree->unbreakable) {
      if (!quiet) {
        std::cout << tree->root->name << " contains unbreakable loops and cannot be analysed.\n";
      }
      RemoveFaultTree(*tree);  // The next tree has moved to this index.
      continue;
    }
    Fold(*this, *tree->root, quiet);
    FindTreeContradictions(*tree);
    tree->root->RegisterBasicEvents(*this);
    ++i;
  }
  if (document) SaveOpenPSADocument(*document);
}

}  // namespace FTS
