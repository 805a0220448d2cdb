#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "app/Config.h"
#include "app/DiagnosticLog.h"
#include "faulttree/BasicEvent.h"
#include "output/FTPlusExport.h"
#include "support/BrakeModel.h"
#include "support/CapturedStreams.h"
#include "support/FaultTreePlusInstallation.h"
#include "support/Golden.h"
#include "support/ProcessStateTest.h"
#include "support/TemporaryFolder.h"

namespace FTS {
namespace {

class FTPlusExportTest : public ProcessStateTest {
 protected:
  static constexpr const char* ProjectFile = "brake.v2-FMEAOutput/brake.v2.psa";
  static constexpr const char* LookupFile = "brake.v2-FMEAOutput/FaultTreePlusLookup.csv";
  static constexpr const char* NoDirectory =
      "Cannot start FaultTree+ - Could not find FaultTree+ directory in registry";
  static constexpr const char* NoStart =
      "Cannot start Fault Tree + : Could not find load function in FaultTree+ DLL.";
  static constexpr const char* Version = "SOFTWARE\\RAMS\\FaultTree+\\11.0";

  FTPlusExportTest() { Config::Instance().outputDir = folder.Path(); }

  static const std::vector<std::string>& Warnings() { return DiagnosticLog::Instance().Warnings(); }
  static std::vector<std::string> Only(const std::string& warning) { return {warning}; }

  /// The driver's step, with other results behind it.
  void RunDriver() {
    Config::Instance().outputTypes = OutputType::Ftp | OutputType::Xml;
    brake.Get().OutputResults();
    EXPECT_TRUE(folder.Contains("brake.v2-FMEAOutput/FaultTrees.xml"));
  }

  /// What a library that is loaded now has recorded: nothing unless somebody holds it.
  std::string CallsStillKnown() const { return CallsOf(*installation.Load()); }

  TemporaryFolder folder;
  BrakeModel brake;
  FaultTreePlusInstallation installation;
  CapturedStreams streams;
};

// The project

TEST_F(FTPlusExportTest, ProjectIsMadeByTheseCalls) {
  const auto library = installation.Load();
  EXPECT_EQ(ExportFaultTreePlus(brake.Get(), *library), folder.Path(ProjectFile));
  EXPECT_EQ(CallsOf(*library),
            "Validate(0, 0)\n"
            "NewProject()\n"
            "GetProjectOptions()\n"
            "SetProjectOptions(17, -4)\n"
            "Gates: Loss of braking(20) = 1\n"
            "Gates 1 Type: '' 0 0\n"
            "Gates 1 Description: 'No pressure & <b>no</b> stop' 0 0\n"
            "Events: stuck(11) = 2\n"
            "Events 2 Description: 'Shaft \"stuck\" & cold' 0 0\n"
            "Gates: (22) = 3\n"
            "Gates 3 Type: '' 1 0\n"
            "Gates 3 Description: '' 0 0\n"
            "Events: leak(12) = 4\n"
            "Events 4 Description: '' 0 0\n"
            "Events: demand(13) = 5\n"
            "Events 5 Description: '' 0 0\n"
            "Gates: Braking late(30) = 6\n"
            "Gates 6 Type: '' 1 0\n"
            "Gates 6 Description: '' 0 0\n"
            "Events: fire(14) = 7\n"
            "Events 7 Description: '' 0 0\n"
            "Gates 1 Input Type 0: '' 0 0\n"
            "Gates 1 Input Index 0: '' 2 0\n"
            "Gates 1 Input Type 1: '' 1 0\n"
            "Gates 1 Input Index 1: '' 3 0\n"
            "Gates 3 Input Type 0: '' 0 0\n"
            "Gates 3 Input Index 0: '' 4 0\n"
            "Gates 3 Input Type 1: '' 0 0\n"
            "Gates 3 Input Index 1: '' 5 0\n"
            "Gates 6 Input Type 0: '' 0 0\n"
            "Gates 6 Input Index 0: '' 2 0\n"
            "Gates 6 Input Type 1: '' 0 0\n"
            "Gates 6 Input Index 1: '' 7 0\n"
            "SaveProject(" +
                folder.Path(ProjectFile) + ")\n");
  EXPECT_EQ(brake.Get().faultTreePlusIds.size(), 7U);
  EXPECT_TRUE(folder.Contains(LookupFile));
  EXPECT_TRUE(Warnings().empty());
  EXPECT_EQ(streams.Output(), "");
}

TEST_F(FTPlusExportTest, EntriesAreLookedUpByTheirDecoratedNames) {
  const auto whole = installation.Load();
  const PartialLibrary library(*whole, {});
  const std::string project = ExportFaultTreePlus(brake.Get(), library);
  OpenFaultTreePlus(project, library);
  EXPECT_EQ(library.asked,
            std::vector<std::string>({"_PSADLLValidate@8", "_PSADLLNewProject@0",
                                      "_PSADLLSaveProject@4", "_PSADLLGetProjectOptions@8",
                                      "_PSADLLSetProjectOptions@8", "_PSADLLCreateRecord@8",
                                      "_PSADLLSetFieldValue@28", "_PSADLLStartFaultTreePlus@16"}));
}

TEST_F(FTPlusExportTest, LibraryWithoutPasswordIsALegacyOne) {
  const auto whole = installation.Load();
  const PartialLibrary library(*whole, {"_PSADLLValidate@8"});
  brake.stuck->failureModel = FailureModel::MTTR;
  EXPECT_EQ(ExportFaultTreePlus(brake.Get(), library), folder.Path(ProjectFile));
  EXPECT_EQ(CallsOf(*whole, "Validate"), "");
  EXPECT_EQ(CallsOf(*whole, "Events 2 Local Model Type"), "Events 2 Local Model Type: '' 0 0\n");
  EXPECT_EQ(Warnings(), Only("Using legacy Fault Tree Plus DLL which does not support RATEMTTR - "
                             "Outputting to unavailability as FIXED."));
}

TEST_F(FTPlusExportTest, RefusedPasswordIsToldAndNothingIsSaved) {
  const auto library = installation.Load();
  library->Find<void()>("RefusePassword")();
  EXPECT_EQ(ExportFaultTreePlus(brake.Get(), *library), "");
  EXPECT_EQ(CallsOf(*library), "Validate(0, 0)\n");
  EXPECT_EQ(streams.Output(), "Invalid password for this version of the DLL\n");
  EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
  EXPECT_TRUE(Warnings().empty());
}

TEST_F(FTPlusExportTest, RefusedPasswordIsNotToldInASilentRun) {
  Config::Instance().runSilent = true;
  const auto library = installation.Load();
  library->Find<void()>("RefusePassword")();
  EXPECT_EQ(ExportFaultTreePlus(brake.Get(), *library), "");
  EXPECT_EQ(streams.Output(), "");
}

TEST_F(FTPlusExportTest, ModelWithoutTreesIsAWarning) {
  brake.Get().faultTrees.clear();
  const auto library = installation.Load();
  EXPECT_EQ(ExportFaultTreePlus(brake.Get(), *library), "");
  EXPECT_EQ(Warnings(), Only("Cannot save FT+ file - No fault trees for analysis"));
  EXPECT_EQ(CallsOf(*library), "");
}

TEST_F(FTPlusExportTest, LibraryWithoutProjectsIsAWarning) {
  const auto whole = installation.Load();
  for (const char* missing : {"_PSADLLNewProject@0", "_PSADLLSaveProject@4"}) {
    const PartialLibrary library(*whole, {missing});
    EXPECT_EQ(ExportFaultTreePlus(brake.Get(), library), "") << missing;
  }
  EXPECT_EQ(Warnings(), std::vector<std::string>(2, "Couldn't load FT+ DLL Functions"));
  EXPECT_EQ(CallsOf(*whole), "");
}

TEST_F(FTPlusExportTest, LibraryWithoutOptionsIsAWarningBehindTheNewProject) {
  const auto whole = installation.Load();
  for (const char* missing : {"_PSADLLGetProjectOptions@8", "_PSADLLSetProjectOptions@8"}) {
    const PartialLibrary library(*whole, {missing});
    EXPECT_EQ(ExportFaultTreePlus(brake.Get(), library), "") << missing;
  }
  EXPECT_EQ(Warnings(), std::vector<std::string>(2, NoStart));
  EXPECT_EQ(CallsOf(*whole), "Validate(0, 0)\nNewProject()\nValidate(0, 0)\nNewProject()\n");
}

TEST_F(FTPlusExportTest, LibraryWithoutRecordsSavesNothing) {
  const auto whole = installation.Load();
  const PartialLibrary library(*whole, {"_PSADLLSetFieldValue@28"});
  EXPECT_EQ(ExportFaultTreePlus(brake.Get(), library), "");
  EXPECT_EQ(Warnings(), Only("Couldn't load FT+ DLL Functions"));
  EXPECT_EQ(CallsOf(*whole, "SaveProject"), "");
}

TEST_F(FTPlusExportTest, TreeWithoutTopNodeEndsTheExport) {
  AddTree(brake.Get(), nullptr);
  const auto library = installation.Load();
  EXPECT_EQ(ExportFaultTreePlus(brake.Get(), *library), "");
  EXPECT_NE(CallsOf(*library, "Events: fire"), "");  // Trees before it are there.
  EXPECT_EQ(CallsOf(*library, "Gates 1 Input"), "");
  EXPECT_FALSE(folder.Contains(LookupFile));
}

TEST_F(FTPlusExportTest, ProjectThatCannotBeSavedIsAWarning) {
  const auto library = installation.Load();
  library->Find<void()>("RefuseSaving")();
  EXPECT_EQ(ExportFaultTreePlus(brake.Get(), *library), "");
  EXPECT_EQ(Warnings(), Only("Cannot save FT+ file: brake.v2 - Unable to save fault trees to Fault "
                             "Tree+"));
  EXPECT_TRUE(folder.Contains(LookupFile));
}

// The table of names

TEST_F(FTPlusExportTest, LookupTableListsAllNodesById) {
  WriteFaultTreePlusLookup(brake.Get());
  EXPECT_GOLDEN(folder.Read(LookupFile), "output/FaultTreePlusLookup.csv");
}

TEST_F(FTPlusExportTest, LookupTableKeepsItsColumns) {
  brake.Get().faultTrees.erase(brake.Get().faultTrees.begin());
  brake.stuck->name = "a,b";
  brake.stuck->description = "two\nlines";
  brake.fire->name = "6\"";
  WriteFaultTreePlusLookup(brake.Get());
  EXPECT_EQ(folder.Read(LookupFile),
            "NodeID,Shortened FTPlus name,Full Vel-Tarn name,Description\n"
            "11,\"=\"\"a,b(11)\"\"\",\"Sys::Pump.a,b\",\"two\nlines\"\n"
            "14,\"=\"\"6\"\"\"\"(14)\"\"\",\"6\"\"\",\n"
            "30,=\"Braking late(30)\",Braking late,\n");
}

// Finding the tool

TEST_F(FTPlusExportTest, DirectoryIsThatOfTheVersionEnteredLast) {
  installation.GetRegistry().AddKey("SOFTWARE\\RAMS\\FaultTree+\\9.0");
  installation.GetRegistry().texts["SOFTWARE\\RAMS\\FaultTree+\\9.0\\ProductDir"] = "/tools/nine";
  EXPECT_EQ(GetFaultTreePlusDirectory(), "/tools/nine/Program");
  EXPECT_TRUE(Warnings().empty());
}

TEST_F(FTPlusExportTest, ToolThatIsNotEnteredIsAWarning) {
  installation.GetRegistry().keys.clear();
  EXPECT_EQ(GetFaultTreePlusDirectory(), "");
  EXPECT_EQ(Warnings(), Only("Cannot start FaultTree+ - Error opening FaultTree+ key: Registry "
                             "error code: 2"));
}

TEST_F(FTPlusExportTest, VersionThatCannotBeReadIsAWarningAndTheNextCounts) {
  ListedRegistry& registry = installation.GetRegistry();
  registry.errors[Version] = 234;
  EXPECT_EQ(GetFaultTreePlusDirectory(), "");
  registry.AddKey("SOFTWARE\\RAMS\\FaultTree+\\12.0");
  registry.texts["SOFTWARE\\RAMS\\FaultTree+\\12.0\\ProductDir"] = "/tools/twelve";
  EXPECT_EQ(GetFaultTreePlusDirectory(), "/tools/twelve/Program");
  const std::string query =
      "Cannot start FaultTree+ - Error querying version: Registry error code: 234";
  EXPECT_EQ(Warnings(),
            std::vector<std::string>(
                {query, "Cannot start FaultTree+ - Latest version not found: ", query}));
}

TEST_F(FTPlusExportTest, ToolWithoutVersionIsAWarning) {
  installation.GetRegistry().keys = {{FaultTreePlusInstallation::ToolKey, {}}};
  EXPECT_EQ(GetFaultTreePlusDirectory(), "");
  EXPECT_EQ(Warnings(), Only("Cannot start FaultTree+ - Latest version not found: "));
}

TEST_F(FTPlusExportTest, VersionThatCannotBeOpenedIsAWarning) {
  installation.GetRegistry().keys.erase(Version);
  EXPECT_EQ(GetFaultTreePlusDirectory(), "");
  EXPECT_EQ(Warnings(),
            Only("Cannot start FaultTree+ - Error opening version key: Registry error code: 2"));
}

TEST_F(FTPlusExportTest, VersionWithoutFolderIsAWarning) {
  installation.GetRegistry().texts.clear();
  EXPECT_EQ(GetFaultTreePlusDirectory(), "");
  EXPECT_EQ(Warnings(),
            Only("Cannot start FaultTree+ - Error querying ProductDir: Registry error code: 2"));
}

TEST_F(FTPlusExportTest, SystemWithoutRegistryHasNoDirectoryAndNoLibrary) {
  const auto held = Registry::Replace(nullptr);
  EXPECT_EQ(GetFaultTreePlusDirectory(), "");
  EXPECT_EQ(LoadFaultTreePlus(), nullptr);
  EXPECT_TRUE(Warnings().empty());
}

// Opening the tool

TEST_F(FTPlusExportTest, ToolIsStartedOnTheProject) {
  const auto library = installation.Load();
  OpenFaultTreePlus("/a/b.psa", *library);
  EXPECT_EQ(CallsOf(*library),
            "StartFaultTreePlus(/a/b.psa, " + installation.ProgramFolder() + ", 0, 1000)\n");
  EXPECT_EQ(streams.Output(), "Opening Fault Tree+ ...\n");
}

TEST_F(FTPlusExportTest, ToolThatIsNotFoundIsAWarningOfItsOwn) {
  installation.GetRegistry().texts.clear();
  const auto library = installation.Load();
  OpenFaultTreePlus("/a/b.psa", *library);
  EXPECT_EQ(CallsOf(*library), "");
  ASSERT_EQ(Warnings().size(), 2U);
  EXPECT_EQ(Warnings()[1], NoDirectory);
}

TEST_F(FTPlusExportTest, LibraryThatCannotStartTheToolIsAWarning) {
  const auto whole = installation.Load();
  OpenFaultTreePlus("/a/b.psa", PartialLibrary(*whole, {"_PSADLLStartFaultTreePlus@16"}));
  EXPECT_EQ(Warnings(), Only(NoStart));
  EXPECT_EQ(streams.Output(), "");
}

// The step of the output driver

TEST_F(FTPlusExportTest, DriverMakesTheProjectAndUnloadsTheLibrary) {
  RunDriver();
  EXPECT_EQ(streams.Output(), "Generating Fault Tree + file\nGenerating XML results\n");
  EXPECT_TRUE(folder.Contains(LookupFile));
  EXPECT_TRUE(Warnings().empty());
  EXPECT_EQ(CallsStillKnown(), "");
}

TEST_F(FTPlusExportTest, DriverOpensTheProjectAndKeepsTheLibrary) {
  Config::Instance().openResultTypes = OutputType::Ftp;
  RunDriver();
  EXPECT_EQ(streams.Output(),
            "Generating Fault Tree + file\nOpening Fault Tree+ ...\nGenerating XML results\n");
  const std::string started = "StartFaultTreePlus(" + folder.Path(ProjectFile) + ", " +
                              installation.ProgramFolder() + ", 0, 1000)\n";
  EXPECT_TRUE(CallsStillKnown().ends_with(started)) << CallsStillKnown();
}

TEST_F(FTPlusExportTest, DriverOpensNothingInTestMode) {
  Config::Instance().openResultTypes = OutputType::Ftp;
  Config::Instance().testMode = true;
  RunDriver();
  EXPECT_EQ(streams.Output(), "Generating Fault Tree + file\nGenerating XML results\n");
  EXPECT_EQ(CallsStillKnown(), "");
}

TEST_F(FTPlusExportTest, DriverIsSilentInASilentRun) {
  Config::Instance().runSilent = true;
  Config::Instance().openResultTypes = OutputType::Ftp;
  RunDriver();
  EXPECT_EQ(streams.Output(), "");
  EXPECT_NE(CallsStillKnown(), "");
}

TEST_F(FTPlusExportTest, DriverWarnsBehindAnExportThatFailed) {
  const auto held = installation.Load();
  held->Find<void()>("RefuseSaving")();
  Config::Instance().openResultTypes = OutputType::Ftp;
  RunDriver();
  EXPECT_EQ(Warnings(), std::vector<std::string>({"Cannot save FT+ file: brake.v2 - Unable to save "
                                                  "fault trees to Fault Tree+",
                                                  "Error during FT+ generation"}));
  EXPECT_EQ(CallsOf(*held, "Start"), "");
}

TEST_F(FTPlusExportTest, DriverWarnsOfAFailureAndGoesOn) {
  // The folder cannot be made: a file stands in its way. Other results go elsewhere afterwards.
  Config::Instance().outputDir = folder.Write("file", "");
  Config::Instance().outputTypes = OutputType::Ftp | OutputType::Epm;
  brake.Get().OutputResults();
  EXPECT_EQ(Warnings(), Only("There was a problem outputting to FaultTree+"));
  EXPECT_EQ(CallsStillKnown(), "");
}

TEST_F(FTPlusExportTest, DriverWarnsOfALibraryThatIsMissing) {
  std::filesystem::remove(installation.PathOfLibrary());
  RunDriver();
  EXPECT_EQ(Warnings(), Only("Fault Tree Plus DLL not found - Output to FT+ is not possible."));
  EXPECT_EQ(streams.Output(), "Generating XML results\n");
}

TEST_F(FTPlusExportTest, DriverWarnsOfAFileThatIsNoLibrary) {
  std::filesystem::remove(installation.PathOfLibrary());
  std::filesystem::create_directories(installation.PathOfLibrary());
  RunDriver();
  EXPECT_EQ(Warnings(), Only("Fault Tree Plus DLL not found - Output to FT+ is not possible."));
}

}  // namespace
}  // namespace FTS
