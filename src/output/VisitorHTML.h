#pragma once

#include <string>

#include "output/VisitorXML.h"

namespace FTS {

/// Writes the results as pages that a browser opens from the disk: "Index.html", the template of
/// the pages beside it, and in the folder "model" the same text as `VisitorXML` writes, as strings
/// of scripts. Goes to the same folder as `VisitorXML`. Texts of the model are not escaped, as they
/// are not in the XML files: an apostrophe in a name makes a script that does not load, and the
/// pages then say so.
class VisitorHTML : public VisitorXML {
 public:
  using VisitorXML::VisitorXML;

  using VisitorXML::Enter;
  using VisitorXML::Leave;
  using VisitorXML::Visit;

  /// Writes all of it and sets `viewerPath` to the absolute path of "Index.html" when it is there.
  void Visit(Model& model) override;
  /// The warnings, which unlike texts of the model are escaped for the script they stand in.
  void Enter(DiagnosticLog& log) override;

  /// The script "model/FaultTrees.js" in the folder.
  void WriteFaultTreesFile(Model& model, const std::string& folder) override;
  /// The trees with their nodes, without the failure modes, which come with each tree's cut sets.
  void WriteFaultTrees(Model& model) override;

 private:
  void WriteIndex(const Model& model, const std::string& path);
  void WriteCutSetScripts(Model& model, const std::string& folder);
};

}  // namespace FTS
