#include "output/VisitorXML.h"

#include "analysis/FaultTree.h"
#include "app/DiagnosticLog.h"
#include "faulttree/FaultTreeNode.h"
#include "model/Model.h"
#include "output/ResultsFolder.h"
#include "platform/FileSystem.h"

namespace FTS {

void VisitorXML::Visit(Model& model) {
  const std::string folder = MakeResultsFolder(model, FMEAOutputSuffix);
  SelectTreeState(model);
  WriteFaultTreesFile(model, folder);
  WriteCutSetFiles(model, folder);
}

void VisitorXML::WriteFaultTreesFile(Model& model, const std::string& folder) {
  out.Open(JoinPath(folder, "FaultTrees.xml"));
  const std::string modelName = model.GetFileStem();
  WriteRootStart(&modelName);
  WriteFaultTrees(model);
  WriteSafetyAllocations(model);
  Visit(DiagnosticLog::Instance());
  WriteRootEnd();
  out.Close();
}

void VisitorXML::WriteFaultTrees(Model& model) {
  out << "<FaultTrees>";
  WriteFMEA(model);
  for (const auto& tree : model.faultTrees) WriteFaultTree(*tree, true, false);
  out << "</FaultTrees>";
}

void VisitorXML::WriteCutSetFiles(Model& model, const std::string& folder) {
  for (const auto& tree : model.faultTrees) {
    if (!tree->root) continue;
    const std::string fileName = "CutSets(" + std::to_string(tree->root->GetId()) + ").xml";
    if (!out.Open(JoinPath(folder, fileName))) continue;
    WriteCutSetsDocument(model, *tree);
    out.Close();
  }
}

}  // namespace FTS
