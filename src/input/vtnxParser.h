#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "input/Parser.h"
#include "platform/XmlDocument.h"

namespace FTS {

/// Reads models in the program's main format: an XML document, alone in a file or as the one entry
/// of an archive. Serves one `Parse`; the document is freed with the parser.
// NOLINTNEXTLINE(readability-identifier-naming): called as its file format is.
class vtnxParser : public Parser {
 public:
  /// Opens the file and loads its document. A file ".xml" is the document; any other is an archive,
  /// which the converter makes of a ".vtn" file first. Throws VtnException "File does not exist:
  /// ..." and "Invalid file name: ...". What is wrong with archive or document shows below.
  explicit vtnxParser(std::string initPath);
  ~vtnxParser() override;

  /// Whether the document is in error; then there is nothing to parse.
  bool HasXmlError() const { return document.HasError(); }
  const std::string& XmlErrorText() const { return document.ErrorText(); }
  /// Counted from 1; 0 when no place can be told.
  int XmlErrorRow() const { return document.ErrorRow(); }
  int XmlErrorColumn() const { return document.ErrorColumn(); }

  /// How reading the last archive of this process went: a status of platform/ZipArchive.h. No run
  /// reports it; it is there for a debugger's eye.
  static int LastArchiveStatus();

  /// Reads the document. Faults that the run can go on from are logged. Throws VtnException for
  /// others, ParseException for expressions that lack a token.
  std::unique_ptr<Model> Parse() override;

 private:
  /// Reads the text of a cause's logic, whose first line has that number.
  using LogicReader = std::function<NodePointer(const std::string& text, std::int32_t line)>;

  // The document: vtnxParser.cpp

  static XmlDocument Load(const std::string& path);
  void ReadOptimisationParams(XmlElement element);
  void ReadObjective(XmlElement element);
  void ReadPerspectives(XmlElement root);
  std::shared_ptr<Hazard> ReadHazard(XmlElement element);
  void ReadHazardLogic(XmlElement element);
  void ReadState(XmlElement element);

  // The architecture: vtnxStructure.cpp

  void ReadPerspective(XmlElement element);
  /// The perspective of a model that declares none; its contents stand in the model's element.
  void ReadDefaultPerspective(XmlElement root);
  void ReadPerspectiveContents(XmlElement element);
  void ReadActualCCF(XmlElement element);
  void ReadSystem(XmlElement element, const std::shared_ptr<Subsystem>& subsystem);
  void ReadComponent(XmlElement element, const std::shared_ptr<Subsystem>& subsystem);
  void ReadComponentFields(XmlElement element, const Subsystem& subsystem);
  void ReadAllocations(XmlElement element);
  void ReadImplementation(XmlElement element, bool isCurrent);
  void ReadBlockType(XmlElement element);
  void ReadLine(XmlElement element, const std::shared_ptr<Subsystem>& subsystem);
  void ReadConnection(XmlElement element, Line& line);

  // What an implementation says about failures: vtnxFailureData.cpp

  void ReadFailureData(XmlElement element);
  void ReadBasicEvents(XmlElement data);
  /// Null when the implementation has an event of that name.
  std::shared_ptr<BasicEvent> ReadBasicEvent(XmlElement element, bool normal);
  static void ReadUnavailabilityFormula(XmlElement element, BasicEvent& event);
  void ReadPotentialCCF(XmlElement element);
  void ReadDiagnosticCoverage(XmlElement element);
  void ReadGoalCoverage(XmlElement element, const std::string& coverageName);
  void CoverInputDeviation(const std::string& deviationName, const std::string& hazardName,
                           double percentage, const std::string& coverageName);

  // Deviations and their logic: vtnxDeviations.cpp

  void ReadOutputDeviation(XmlElement element);
  void ReadExportedPropagation(XmlElement element);
  void ReadGlobalLabel(XmlElement element, const std::shared_ptr<OutputDeviation>& deviation);
  template <typename DeviationType>
  void ReadDeviationLogic(XmlElement element, const std::shared_ptr<DeviationType>& deviation);
  template <typename DeviationType>
  void ReadStateLogic(const std::string& text, const std::string& label, std::int32_t line,
                      const std::shared_ptr<DeviationType>& deviation);
  void ReadCauses(XmlElement element, IFailureCause& owner, const LogicReader& read);

  std::string path;
  XmlDocument document;
  std::shared_ptr<Perspective> perspective;  // Being read.
};

/// The end of messages about an element: its line as an editor counts.
std::string LineNumberNote(XmlElement element);

}  // namespace FTS
