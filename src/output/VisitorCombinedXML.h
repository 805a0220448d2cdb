#pragma once

#include <string>

#include "output/VisitorXML.h"

namespace FTS {

/// Writes the results as one file "Results.xml", cut sets included, in the folder "<file
/// stem>-Results" of the output folder.
class VisitorCombinedXML : public VisitorXML {
 public:
  using VisitorXML::VisitorXML;

  using VisitorXML::Enter;
  using VisitorXML::Leave;
  using VisitorXML::Visit;

  void Visit(Model& model) override;

  /// Failure modes, then every tree with its nodes and all its cut sets.
  void WriteFaultTrees(Model& model) override;

  /// Writes the file into the folder and tells its path on the standard output, even where it
  /// cannot be made.
  virtual void WriteResultsFile(const std::string& folder, Model& model);
};

}  // namespace FTS
