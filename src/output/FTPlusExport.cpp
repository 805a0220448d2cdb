// The FaultTree+ project: the calls of the library around the records of the trees.

#include "output/FTPlusExport.h"

#include <cstdint>
#include <iostream>
#include <string>

#include "analysis/FaultTree.h"
#include "app/Config.h"
#include "app/DiagnosticLog.h"
#include "faulttree/FaultTreeNode.h"
#include "model/Model.h"
#include "output/FTPlusProject.h"
#include "output/ResultsFolder.h"
#include "platform/FileSystem.h"

namespace FTS {

namespace {

using ValidateEntry = std::int32_t FTS_LIBRARY_CALL(std::int32_t first, std::int32_t second);
using NewProjectEntry = std::int32_t FTS_LIBRARY_CALL();
using SaveProjectEntry = std::int32_t FTS_LIBRARY_CALL(const char* path);
using GetOptionsEntry = void FTS_LIBRARY_CALL(std::int32_t* first, std::int32_t* second);
using SetOptionsEntry = void FTS_LIBRARY_CALL(std::int32_t first, std::int32_t second);

/// Those that begin and end a project; null where the library lacks one.
struct ProjectEntries {
  explicit ProjectEntries(const DynamicLibrary& library)
      : validate(library.Find<ValidateEntry>("_PSADLLValidate@8")),
        newProject(library.Find<NewProjectEntry>("_PSADLLNewProject@0")),
        saveProject(library.Find<SaveProjectEntry>("_PSADLLSaveProject@4")),
        getOptions(library.Find<GetOptionsEntry>("_PSADLLGetProjectOptions@8")),
        setOptions(library.Find<SetOptionsEntry>("_PSADLLSetProjectOptions@8")) {}

  ValidateEntry* validate;
  NewProjectEntry* newProject;
  SaveProjectEntry* saveProject;
  GetOptionsEntry* getOptions;
  SetOptionsEntry* setOptions;
};

bool Fail(const std::string& warning) {
  DiagnosticLog::Instance().AddWarning(warning);
  return false;
}

/// The maker of the library gives the password to those who build programs with it.
bool IsAccepted(const ProjectEntries& entries) {
  if (!entries.validate || entries.validate(FTS_FTPLUS_PASSWORD_1, FTS_FTPLUS_PASSWORD_2) != 0) {
    return true;
  }
  if (!Config::Instance().runSilent) {
    std::cout << "Invalid password for this version of the DLL\n";
  }
  return false;
}

/// An empty project with the options of the tool's user.
bool StartProject(const Model& model, const ProjectEntries& entries) {
  if (model.faultTrees.empty()) {
    return Fail("Cannot save FT+ file - No fault trees for analysis");
  }
  if (!entries.newProject || !entries.saveProject) return Fail("Couldn't load FT+ DLL Functions");
  if (!IsAccepted(entries)) return false;
  entries.newProject();
  if (!entries.getOptions || !entries.setOptions) {
    // The wording speaks of another entry; it is the one that users know.
    return Fail("Cannot start Fault Tree + : Could not find load function in FaultTree+ DLL.");
  }
  std::int32_t first = 0;
  std::int32_t second = 0;
  entries.getOptions(&first, &second);
  entries.setOptions(first, second);
  return true;
}

using Pass = bool (FaultTreeNode::*)(FTPlusProject& project);

bool RunPass(const Model& model, FTPlusProject& project, Pass pass) {
  project.StartPass();
  for (const auto& tree : model.faultTrees) {
    if (!tree->root || !((*tree->root).*pass)(project)) return false;
  }
  return true;
}

}  // namespace

std::string ExportFaultTreePlus(Model& model, const DynamicLibrary& library) {
  const ProjectEntries entries(library);
  if (!StartProject(model, entries)) return "";
  const int version =
      entries.validate ? FTPlusProject::CurrentVersion : FTPlusProject::LegacyVersion;
  FTPlusProject project(library, model.faultTreePlusIds, version);
  if (!RunPass(model, project, &FaultTreeNode::ExportFTPlusNode)) return "";
  if (!RunPass(model, project, &FaultTreeNode::ExportFTPlusLinks)) return "";
  WriteFaultTreePlusLookup(model);
  const std::string stem = model.GetFileStem();
  const std::string path = JoinPath(MakeResultsFolder(model, FMEAOutputSuffix), stem + ".psa");
  if (entries.saveProject(path.c_str()) != 0) return path;
  Fail("Cannot save FT+ file: " + stem + " - Unable to save fault trees to Fault Tree+");
  return "";
}

}  // namespace FTS
