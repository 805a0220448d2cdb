#include <gmock/gmock.h>

#include <set>
#include <string>

#include "app/Config.h"
#include "app/DiagnosticLog.h"
#include "platform/FileSystem.h"
#include "support/CaseName.h"
#include "support/Dice.h"
#include "support/FileSizeLimit.h"
#include "support/FuzzCount.h"
#include "support/FuzzSeeds.h"
#include "support/ProcessStateTest.h"
#include "support/TemporaryFolder.h"
#include "support/TextDamage.h"
#include "support/ThrownMessage.h"
#include "support/TokenDamage.h"

namespace FTS {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ConfigFileTest : public ProcessStateTest {
 protected:
  /// The settings of a file with that text.
  const Config& Load(const std::string& text) {
    return Config::LoadOrCreate(folder.Write("my.cfg", text));
  }

  static std::string LoadingFails(const std::string& path) {
    return ThrownMessage([&path] { Config::LoadOrCreate(path); });
  }

  TemporaryFolder folder;
};

TEST_F(ConfigFileTest, SettingsAreThoseOfTheFile) {
  const Config& config = Load(
      "Max cut set size = 7;\nRemove circle nodes = true;\nRemove hanging nodes = false;\n"
      "Mutual exclusion = true;\nRun silent = true;\nSuppress warnings = true;\n"
      "Modularise = false;\nIgnore crazy loops = true;\nContraction = subcontract;\n"
      "Output type = EXCEL, HTML;\nOutput dir = /results;\nQuantitative analysis = false;\n");
  EXPECT_EQ(config.maxCutSetSize, 7);
  EXPECT_TRUE(config.removeCircleNodes);
  EXPECT_FALSE(config.removeHangingNodes);
  EXPECT_TRUE(config.mutualExclusion);
  EXPECT_TRUE(config.runSilent);
  EXPECT_TRUE(config.suppressWarnings);
  EXPECT_FALSE(config.modularise);
  EXPECT_TRUE(config.ignoreCrazyLoops);
  EXPECT_EQ(config.contraction, Contraction::Subcontract);
  EXPECT_EQ(config.outputTypes, OutputType::Excel | OutputType::Html);
  EXPECT_EQ(config.openResultTypes, OutputType::Html);
  EXPECT_EQ(config.outputDir, "/results");
  EXPECT_FALSE(config.quantitativeAnalysis);
  EXPECT_EQ(&config, &Config::Instance());
}

TEST_F(ConfigFileTest, RecordIsReplacedAsAWhole) {
  Config::Instance().useBDDs = true;
  Config::Instance().maxCutSetSize = 3;
  const Config& config = Load("Modularise = false;\n");
  EXPECT_FALSE(config.useBDDs);
  EXPECT_EQ(config.maxCutSetSize, 0);
}

struct LineCase {
  const char* name;
  const char* line;
  std::int32_t maxCutSetSize;
};

class ConfigLineTest : public ConfigFileTest, public ::testing::WithParamInterface<LineCase> {};

TEST_P(ConfigLineTest, GivesTheLimit) {
  EXPECT_EQ(Load(GetParam().line).maxCutSetSize, GetParam().maxCutSetSize);
  EXPECT_THAT(DiagnosticLog::Instance().Warnings(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Lines, ConfigLineTest,
    ::testing::Values(LineCase{"AsWritten", "Max cut set size = 4;\n", 4},
                      LineCase{"WithoutBlanksAndEnd", "Maxcutsetsize=4", 4},
                      LineCase{"BlanksAnywhere", "  M axcut set  size =  1 2 ; ; \n", 12},
                      LineCase{"WindowsLineEnd", "Max cut set size = 4;\r\nother\r\n", 4},
                      LineCase{"OtherCase", "max cut set size = 4;", 0},
                      LineCase{"UnknownKey", "Max cut sets = 4;", 0},
                      LineCase{"Comment", "// Max cut set size = 4;", 0},
                      LineCase{"IndentedComment", " // Max cut set size = 4;", 0},
                      LineCase{"OneSlash", "/ Max cut set size = 4;", 0},
                      LineCase{"NoEqualsSign", "Max cut set size 4;", 0},
                      LineCase{"NoNumber", "Max cut set size = four;", 0},
                      LineCase{"TwoEqualsSigns", "Max cut set size = 4 = 5;", 4},
                      LineCase{"LaterLineWins", "Max cut set size = 4;\nMax cut set size = 5;\n",
                               5},
                      LineCase{"EmptyFile", "", 0},
                      LineCase{"EmptyLines", "\n\n\nMax cut set size = 4;\n\n", 4},
                      LineCase{"TabCounts", "\tMax cut set size = 4;", 0}),
    CaseName);

TEST_F(ConfigFileTest, ValueIsAllBehindTheFirstEqualsSign) {
  EXPECT_EQ(Load("Output dir = a = b; c;\n").outputDir, "a=bc");
}

TEST_F(ConfigFileTest, EmptyFolderIsThatOfTheModel) {
  EXPECT_EQ(Load("Output dir = ;\n").outputDir, "default");
}

TEST_F(ConfigFileTest, OnlyTrueIsTrue) {
  for (const char* value : {"True", "1", "yes", "", "truee"}) {
    EXPECT_FALSE(Load("Mutual exclusion = " + std::string(value) + ";").mutualExclusion) << value;
  }
  EXPECT_FALSE(Load("Remove hanging nodes = on;").removeHangingNodes);
}

TEST_F(ConfigFileTest, ContractionHasThreeWords) {
  EXPECT_EQ(Load("Contraction = none;").contraction, Contraction::None);
  EXPECT_EQ(Load("Contraction = contract;").contraction, Contraction::Contract);
  EXPECT_EQ(Load("Contraction = subcontract;").contraction, Contraction::Subcontract);
  EXPECT_EQ(Load("Contraction = none;\nContraction = off;").contraction, Contraction::None);
}

TEST_F(ConfigFileTest, WordNoneNamesNoFormat) {
  EXPECT_EQ(Load("Output type = NONE;").outputTypes, 0);
  EXPECT_EQ(Load("Output type = XML, NONE;\nOutput type = ISO;").outputTypes,
            OutputType::Xml | OutputType::Iso);
}

TEST_F(ConfigFileTest, LongLinesAreReadWhole) {
  const std::string folderName(300, 'x');
  EXPECT_EQ(Load("Output dir = " + folderName + ";").outputDir, folderName);
}

TEST_F(ConfigFileTest, MissingFileIsCreatedWithDefaults) {
  const Config& config = Config::LoadOrCreate(folder.Path("new.cfg"));
  EXPECT_EQ(config.maxCutSetSize, 4);
  EXPECT_EQ(config.outputTypes, OutputType::Xml | OutputType::Ftp);
  EXPECT_EQ(config.openResultTypes, OutputType::Xml | OutputType::Ftp);
  EXPECT_EQ(config.outputDir, "default");
  EXPECT_FALSE(config.removeCircleNodes);
  EXPECT_TRUE(config.removeHangingNodes);
  EXPECT_FALSE(config.suppressWarnings);
  EXPECT_FALSE(config.mutualExclusion);
  EXPECT_THAT(DiagnosticLog::Instance().Warnings(),
              ElementsAre("No config file present - creating new file 'veltarn.cfg' with default "
                          "values."));
}

TEST_F(ConfigFileTest, CreatedFileHasTheseBytes) {
  Config::LoadOrCreate(folder.Path("new.cfg"));
  EXPECT_EQ(folder.Read("new.cfg"),
            "// Maximum number of events in a cut set - larger ones are removed\n"
            "Max cut set size = 4;\n"
            "\n"
            "// The output type - can be a combination of XML (for XML web page output),\n"
            "// FTP (Fault Tree +, if available), EXCEL (MS Excel) or NONE.\n"
            "// Separate values with commas.\n"
            "Output type = XML, FTP;\n"
            "\n"
            "// Where to output (default means the same dir as the .vtn model files)\n"
            "// Note that this output directory must contain the FTOutput folder for XML output\n"
            "Output dir = default;\n"
            "\n"
            "// Are circles removed from the fault trees?\n"
            "Remove circle nodes = false;\n"
            "\n"
            "// Are unconnected nodes removed?\n"
            "Remove hanging nodes = true;\n"
            "\n"
            "// Should the warning messages be suppressed?\n"
            "Suppress warnings = false;\n"
            "\n"
            "// Should events from the same component be mutually exclusive?\n"
            "Mutual exclusion = false;\n");
}

TEST_F(ConfigFileTest, MissingFoldersAreCreatedToo) {
  EXPECT_EQ(Config::LoadOrCreate(folder.Path("a/b\\new.cfg")).maxCutSetSize, 4);
  EXPECT_TRUE(folder.Contains("a/b/new.cfg"));
}

TEST_F(ConfigFileTest, CreationIsToldInASilentRunToo) {
  // The new record is not silent, and the old one is gone.
  Config::Instance().runSilent = true;
  Config::LoadOrCreate(folder.Path("new.cfg"));
  EXPECT_EQ(DiagnosticLog::Instance().Warnings().size(), 1U);
}

TEST_F(ConfigFileTest, FileThatIsThereIsNotTouched) {
  Load("Modularise = false;\n");
  EXPECT_EQ(folder.Read("my.cfg"), "Modularise = false;\n");
  EXPECT_THAT(DiagnosticLog::Instance().Warnings(), IsEmpty());
}

TEST_F(ConfigFileTest, FolderInItsPlaceCannotBeCreated) {
  EXPECT_EQ(LoadingFails(folder.Path()), "Could not create new config file 'veltarn.cfg'!");
}

TEST_F(ConfigFileTest, FileInPlaceOfItsFolderKeepsItFromBeingCreated) {
  const std::string file = folder.Write("file", "");
  EXPECT_EQ(LoadingFails(file + "/my.cfg"), "Could not create new config file 'veltarn.cfg'!");
}

TEST_F(ConfigFileTest, HalfAFileIsNotLeftBehind) {
  {
    const FileSizeLimit limit(100);
    EXPECT_EQ(LoadingFails(folder.Path("new.cfg")),
              "Could not create new config file 'veltarn.cfg'!");
  }
  EXPECT_FALSE(folder.Contains("new.cfg"));
  EXPECT_THAT(DiagnosticLog::Instance().Warnings(), IsEmpty());
}

TEST_F(ConfigFileTest, PathThatIsTooLongIsInvalid) {
  const std::string path = folder.Path(std::string(300, 'x'));
  EXPECT_EQ(LoadingFails(path), "Invalid file name: " + path);
}

TEST_F(ConfigFileTest, SettingsAreUsableBehindAFailure) {
  Config::Instance().maxCutSetSize = 3;
  LoadingFails(folder.Path());
  EXPECT_EQ(Config::Instance().maxCutSetSize, 0);
}

/// Files with damage to bytes and to whole tokens.
class DamagedConfigTest : public ConfigFileTest {
 protected:
  const std::vector<std::string> pieces = {
      "=",    ";",       "//",       "\n",  "\r\n",         " ",
      "true", "false",   ",",        "XML", "NONE",         "99999999999999",
      "Max",  "default", "contract", "\t",  "Contraction=", "\nMax cut set size = 4;\n"};

  /// Loads a file with that text and looks at what no line can say, whatever stands in it.
  const Config& LoadDamaged(const std::string& text) {
    const Config& config = Load(text);
    EXPECT_TRUE(config.countNormalEvents) << text;
    EXPECT_FALSE(config.outputDir.empty()) << text;
    EXPECT_TRUE(config.contraction == Contraction::None ||
                config.contraction == Contraction::Contract ||
                config.contraction == Contraction::Subcontract)
        << text;
    return config;
  }
};

TEST_F(DamagedConfigTest, DamagedBytesDoNoHarm) {
  const std::vector<std::string> seeds = FuzzSeeds(".cfg");
  Dice dice(FuzzSeed(20221017));
  std::set<std::int32_t> limits;
  for (int i = FuzzCount(1000); i > 0; --i) {
    limits.insert(LoadDamaged(Damaged(dice.Pick(seeds), dice, pieces)).maxCutSetSize);
  }
  EXPECT_TRUE(limits.contains(4));
  EXPECT_TRUE(limits.contains(0));
}

TEST_F(DamagedConfigTest, DamagedTokensDoNoHarm) {
  const std::vector<std::string> seeds = FuzzSeeds(".cfg");
  Dice dice(FuzzSeed(20221018));
  std::set<std::int32_t> limits;
  for (int i = FuzzCount(1000); i > 0; --i) {
    limits.insert(LoadDamaged(DamagedByTokens(dice.Pick(seeds), dice, pieces)).maxCutSetSize);
  }
  EXPECT_TRUE(limits.contains(4));
  EXPECT_TRUE(limits.contains(0));
}

}  // namespace
}  // namespace FTS
