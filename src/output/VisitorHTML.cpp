#include "output/VisitorHTML.h"

#include <array>
#include <filesystem>
#include <iostream>
#include <string_view>

#include "analysis/FaultTree.h"
#include "app/DiagnosticLog.h"
#include "faulttree/FaultTreeNode.h"
#include "model/Model.h"
#include "output/PageLines.h"
#include "output/PageTemplate.h"
#include "output/ResultsFolder.h"
#include "output/ScriptText.h"
#include "platform/FileSystem.h"

namespace FTS {
namespace {

// In the order in which they load. All stand in the template.
constexpr std::array<std::string_view, 18> TemplateScripts = {
    "FTOutput/javascript/xmlTransform.js",
    "FTOutput/javascript/popup.js",
    "FTOutput/javascript/ftiens4.js",
    "FTOutput/javascript/ua.js",
    "FTOutput/XSL/menus.js",
    "FTOutput/XSL/overviewTable.js",
    "FTOutput/XSL/topEventInfo.js",
    "FTOutput/XSL/faultTreeView.js",
    "FTOutput/XSL/cutsets.js",
    "FTOutput/XSL/FMEA.js",
    "FTOutput/XSL/ASILOptimisation.js",
    "FTOutput/XSL/ASILOptimisationSummary.js",
    "FTOutput/XSL/asils.js",
    "FTOutput/XSL/optimisation.js",
    "FTOutput/XSL/optimisationSummary.js",
    "FTOutput/XSL/treeASILEncoding.js",
    "FTOutput/XSL/treeEncoding.js",
    "FTOutput/XSL/warnings.js",
};

constexpr std::string_view Body =
    "</head>\n"
    "<body class=\"tableHeader\" onLoad=\"\n"
    "menuTransform('FaultTrees', 'Fault Trees Overview');\n"
    "overviewTransform('FaultTrees', 'descending');\n"
    "changeTitle('VelTarn Analysis Results');\n"
    "\">\n"
    "<table id=\"BodyTable\" cellspacing=\"0\">\n"
    "<tr><td><div id=\"MenuHeader\">\n"
    "</div></td></tr>\n"
    "<tr>\n"
    "<td>\n"
    "<div id=\"OverviewSpace\">\n"
    "</div>\n"
    "<div id=\"ContentSpace\">\n"
    "</div>\n"
    "</td>\n"
    "</tr>\n"
    "</table>\n"
    "</body>\n"
    "</html>\n";

std::string VariableOf(const FaultTree& tree) {
  return "CutSets_" + std::to_string(tree.root->GetId());
}

/// The absolute path of the file when it exists, else "".
std::string PathToShow(const std::string& path) {
  std::error_code error;
  const bool exists = std::filesystem::exists(path, error);
  if (error) throw std::filesystem::filesystem_error("exists", path, error);
  if (!exists) return "";
  if (std::filesystem::path(path).is_absolute()) return path;
  // Without ".." it is easier to read, but behind a link to a folder it may name another file.
  const auto plain = AbsolutePath(path);
  if (plain && std::filesystem::equivalent(*plain, path, error)) return *plain;
  return JoinPath(std::filesystem::current_path().string(), path);
}

}  // namespace

void VisitorHTML::Visit(Model& model) {
  const std::string folder = MakeResultsFolder(model, FMEAOutputSuffix);
  CreateFolders(JoinPath(folder, "model"));
  SelectTreeState(model);
  const std::string index = JoinPath(folder, "Index.html");
  WriteIndex(model, index);
  viewerPath = PathToShow(index);
  UnpackPageTemplate(folder);
  WriteFaultTreesFile(model, folder);
  WriteCutSetScripts(model, folder);
}

void VisitorHTML::WriteIndex(const Model& model, const std::string& path) {
  if (out.Open(path)) {
    out << PageHeadStart << ScriptStart << "model/FaultTrees.js" << ScriptEnd;
    for (const auto& tree : model.faultTrees) {
      if (!tree->root) continue;
      out << ScriptStart << "model/" << VariableOf(*tree) << ".js" << ScriptEnd;
    }
    for (const std::string_view script : TemplateScripts) out << ScriptStart << script << ScriptEnd;
    out << Body;
  } else {
    std::cerr << "ERROR: Could not open XML file to write: " << path << '\n';
  }
  out.Close();
}

void VisitorHTML::WriteFaultTreesFile(Model& model, const std::string& folder) {
  out.Open(JoinPath(folder, "model/FaultTrees.js"));
  out << "var FaultTrees = '";
  const std::string modelName = model.GetFileStem();
  WriteRootStart(&modelName);
  WriteFaultTrees(model);
  WriteSafetyAllocations(model);
  Visit(DiagnosticLog::Instance());
  WriteRootEnd();
  out << "';";
  out.Close();
}

void VisitorHTML::WriteFaultTrees(Model& model) {
  out << "<FaultTrees>";
  for (const auto& tree : model.faultTrees) WriteFaultTree(*tree, true, false);
  out << "</FaultTrees>";
}

void VisitorHTML::WriteCutSetScripts(Model& model, const std::string& folder) {
  for (const auto& tree : model.faultTrees) {
    if (!tree->root) continue;
    const std::string variable = VariableOf(*tree);
    if (!out.Open(JoinPath(folder, "model/" + variable + ".js"))) continue;
    out << "var " << variable << " = '";
    WriteCutSetsDocument(model, *tree);
    out << "';";
    out.Close();
  }
}

void VisitorHTML::Enter(DiagnosticLog& log) { WriteWarnings(log, EscapedForScript); }

}  // namespace FTS
