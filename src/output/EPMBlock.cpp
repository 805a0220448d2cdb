// Figures on the console for programs that start this one and read what it prints. They ask for the
// block, so it is printed in silent runs too.

#include <iostream>
#include <memory>

#include "analysis/CutSet.h"
#include "analysis/FaultTree.h"
#include "model/Model.h"
#include "model/NumberText.h"

namespace FTS {

void Model::WriteEPMBlock() const {
  double systemRisk = 0.0;
  std::cout << "EPM_Output\n";
  for (const auto& tree : faultTrees) {
    // A severity that was never set is -1 and makes the risk negative. Readers of the block tell
    // such trees by the severity and leave them out themselves.
    const double risk = tree->unavailability * tree->severity + 0.0;  // Never "-0".
    systemRisk += risk;
    std::cout << "FaultTree: " << tree->GetName() << "\nCutSets: " << tree->cutSets.size()
              << "\nUnavailability: " << FormatDouble(tree->unavailability)
              << "\nSeverity: " << FormatDouble(tree->severity) << "\nRisk: " << FormatDouble(risk)
              << '\n';
  }
  std::cout << "SystemRisk: " << FormatDouble(systemRisk) << "\nEnd_EPM_Output\n";
}

}  // namespace FTS
