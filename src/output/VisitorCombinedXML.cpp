#include "output/VisitorCombinedXML.h"

#include <iostream>

#include "analysis/FaultTree.h"
#include "app/Config.h"
#include "app/DiagnosticLog.h"
#include "model/Model.h"
#include "output/ResultsFolder.h"
#include "platform/FileSystem.h"

namespace FTS {

void VisitorCombinedXML::Visit(Model& model) {
  const std::string folder = MakeResultsFolder(model, "-Results");
  SelectTreeState(model);
  WriteResultsFile(folder, model);
}

void VisitorCombinedXML::WriteFaultTrees(Model& model) {
  out << "<FaultTrees>";
  WriteFMEA(model);
  for (const auto& tree : model.faultTrees) WriteFaultTree(*tree, true, true);
  out << "</FaultTrees>";
}

void VisitorCombinedXML::WriteResultsFile(const std::string& folder, Model& model) {
  const std::string path = JoinPath(folder, "Results.xml");
  out.Open(path);
  WriteRootStart(nullptr);
  WriteFaultTrees(model);
  Visit(DiagnosticLog::Instance());
  WriteSafetyAllocations(model);
  WriteRootEnd();
  out.Close();
  if (!Config::Instance().runSilent) std::cout << path << "\n";
}

}  // namespace FTS
