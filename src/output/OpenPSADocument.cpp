// The Open-PSA document: the structure of all trees, for other tools of fault tree analysis.

#include <iostream>
#include <memory>
#include <string>

#include "analysis/FaultTree.h"
#include "app/Config.h"
#include "faulttree/FaultTreeNode.h"
#include "model/Model.h"
#include "model/VtnException.h"
#include "output/ResultsFolder.h"
#include "platform/FileSystem.h"
#include "platform/XmlOutput.h"

namespace FTS {

std::unique_ptr<XmlOutput> Model::MakeOpenPSADocument() const {
  auto document = std::make_unique<XmlOutput>("opsa-mef");
  for (const auto& tree : faultTrees) {
    if (tree->unbreakable) continue;
    const XmlOutputElement element = document->Root().Add("define-fault-tree");
    element.SetAttribute("name", tree->root ? tree->root->name : "?");
    if (tree->root) tree->root->WriteOpenPSA(element);
  }
  return document;
}

void Model::SaveOpenPSADocument(const XmlOutput& document) const {
  if (!Config::Instance().runSilent) std::cout << "Outputting to OpenPSA\n";
  const std::string folder = MakeResultsFolder(*this, FMEAOutputSuffix);
  const std::string path = JoinPath(folder, GetFileStem() + ".xml");
  if (!ReplaceFile(path, document.Text())) throw VtnException("Cannot write file: " + path);
}

}  // namespace FTS
