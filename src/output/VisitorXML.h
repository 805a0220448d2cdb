#pragma once

#include <string>

#include "output/ResultsWriter.h"

namespace FTS {

/// Writes the results as "FaultTrees.xml" (failure modes and trees) and, for each tree, a file
/// "CutSets(<id>).xml", in the folder "<file stem>-FMEAOutput" of the output folder. `Visit` of a
/// model does all of it; a folder that cannot be made throws std::filesystem::filesystem_error.
class VisitorXML : public ResultsWriter {
 public:
  using ResultsWriter::ResultsWriter;

  using ResultsWriter::Enter;
  using ResultsWriter::Leave;
  using ResultsWriter::Visit;

  void Visit(Model& model) override;

  /// Everything but the cut sets, as the file "FaultTrees.xml" in the folder. Without a word when
  /// the file cannot be made.
  virtual void WriteFaultTreesFile(Model& model, const std::string& folder);
  /// The element of that name: failure modes, then every tree with its nodes.
  virtual void WriteFaultTrees(Model& model);

 private:
  void WriteCutSetFiles(Model& model, const std::string& folder);
};

}  // namespace FTS
