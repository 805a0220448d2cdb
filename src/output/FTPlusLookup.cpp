// The table beside a FaultTree+ project that leads from the tool's short names to the model's.

#include <map>
#include <string>
#include <string_view>

#include "analysis/FaultTree.h"
#include "faulttree/BasicEvent.h"
#include "model/Model.h"
#include "output/FTPlusExport.h"
#include "output/ResultFile.h"
#include "output/ResultsFolder.h"
#include "platform/FileSystem.h"

namespace FTS {

namespace {

/// A comma, a quote or a line end in a text of the model would make cells of its parts.
bool NeedsQuotes(std::string_view text) {
  return text.find_first_of(",\"\r\n") != std::string_view::npos;
}

std::string Quoted(std::string_view text) {
  std::string quoted = "\"";
  for (const char c : text) {
    if (c == '"') quoted += '"';
    quoted += c;
  }
  return quoted + '"';
}

std::string Cell(const std::string& text) { return NeedsQuotes(text) ? Quoted(text) : text; }

/// As a formula, or spreadsheet programs would take a name that is a number for one.
std::string FormulaCell(const std::string& text) {
  return NeedsQuotes(text) ? Quoted("=" + Quoted(text)) : "=\"" + text + "\"";
}

std::string FullNameOf(const FaultTreeNode& node) {
  return node.IsEvent() ? static_cast<const BasicEvent&>(node).GetFullName() : node.name;
}

}  // namespace

void WriteFaultTreePlusLookup(const Model& model) {
  std::map<int, FaultTreeNode*> nodes;
  for (const auto& tree : model.faultTrees) {
    if (tree->root) tree->root->CollectNodes(nodes);
  }
  ResultFile file;
  file.Open(JoinPath(MakeResultsFolder(model, FMEAOutputSuffix), "FaultTreePlusLookup.csv"));
  file << "NodeID,Shortened FTPlus name,Full Vel-Tarn name,Description\n";
  for (const auto& [id, node] : nodes) {
    file << id << "," << FormulaCell(node->GetFTPlusName()) << "," << Cell(FullNameOf(*node)) << ","
         << Cell(node->description) << "\n";
  }
}

}  // namespace FTS
