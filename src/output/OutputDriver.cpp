// Which writers run, in the order that users know from the console. The Open-PSA document is not
// among them: synthesis makes it (faulttree/Refinement.cpp).

#include <cstdint>
#include <exception>
#include <iostream>
#include <string>

#include "app/Config.h"
#include "app/DiagnosticLog.h"
#include "model/Model.h"
#include "output/FTPlusExport.h"
#include "output/VisitorCombinedXML.h"
#include "output/VisitorHTML.h"
#include "output/VisitorProblog.h"
#include "output/VisitorXML.h"
#include "platform/Viewer.h"

namespace FTS {

namespace {

bool Wants(std::int32_t bit) { return (Config::Instance().outputTypes & bit) != 0; }

void Say(bool quiet, const std::string& text) {
  if (!quiet) std::cout << text << "\n";
}

/// Writes by one of the two writers of the folder of results, and shows what is to be shown.
template <typename Writer>
void WriteAndShow(Model& model, bool quiet) {
  Say(quiet, "Generating XML results");  // For the pages too.
  std::string path;
  {
    Writer writer;
    model.Accept(writer);
    path = writer.viewerPath;
  }
  const Config& config = Config::Instance();
  // It is the pages that ask for the viewer, for the XML files too: with these alone nothing is
  // shown. They name nothing to show, and the empty command is told all the same.
  if (config.testMode || (config.openResultTypes & OutputType::Html) == 0) return;
  Say(quiet, "\"" + path + "\"");
  OpenInViewer(path);
}

void WriteProblog(Model& model) {
  VisitorProblog writer;
  model.Accept(writer);
}

void MakeFaultTreePlusProject(Model& model, bool quiet, DynamicLibrary& library) {
  const Config& config = Config::Instance();
  Say(quiet, "Generating Fault Tree + file");
  const std::string project = ExportFaultTreePlus(model, library);
  if (project.empty()) {
    DiagnosticLog::Instance().AddWarning("Error during FT+ generation");
  } else if (!config.testMode && (config.openResultTypes & OutputType::Ftp) != 0) {
    OpenFaultTreePlus(project, library);
    library.StayLoaded();  // The tool that it has started goes on working with it.
  }
}

/// Other results do not depend on a tool of another maker, whatever its library does.
void WriteFaultTreePlus(Model& model, bool quiet) {
  DiagnosticLog& log = DiagnosticLog::Instance();
  try {
    const auto library = LoadFaultTreePlus();
    if (library) {
      MakeFaultTreePlusProject(model, quiet, *library);
    } else {
      log.AddWarning("Fault Tree Plus DLL not found - Output to FT+ is not possible.");
    }
  } catch (const std::exception&) {
    log.AddWarning("There was a problem outputting to FaultTree+");
  }
}

void WriteResults(Model& model, bool quiet) {
  Say(quiet, "Generating XML results to Results.xml");
  VisitorCombinedXML writer;
  model.Accept(writer);
}

}  // namespace

void Model::OutputResults() {
  const bool quiet = Config::Instance().runSilent;
  if (Wants(OutputType::Excel)) WriteExcelWorkbook();
  if (Wants(OutputType::Problog)) WriteProblog(*this);
  if (Wants(OutputType::Iso)) WriteISO26262Workbook();
  if (Wants(OutputType::Epm)) WriteEPMBlock();
  if (Wants(OutputType::Ftp)) WriteFaultTreePlus(*this, quiet);
  if (Wants(OutputType::Xml)) WriteAndShow<VisitorXML>(*this, quiet);
  if (Wants(OutputType::Html)) WriteAndShow<VisitorHTML>(*this, quiet);
  if (Wants(OutputType::Results)) WriteResults(*this, quiet);
}

}  // namespace FTS
