#include <initializer_list>
#include <string>

#include "app/Config.h"
#include "app/Options.h"
#include "app/ProgramPath.h"
#include "model/VtnException.h"
#include "support/CaseName.h"
#include "support/FixedClock.h"
#include "support/ProcessStateTest.h"

namespace FTS {
namespace {

/// Settles a command line of the program, a model and these options.
RunOptions Settle(std::initializer_list<std::string> options) {
  std::vector<std::string> arguments = {"vtn", "model.vtnx"};
  arguments.insert(arguments.end(), options);
  return SettleOptions(arguments);
}

class OptionsTest : public ProcessStateTest {
 protected:
  Config& config = Config::Instance();
};

// The first argument.

TEST_F(OptionsTest, FirstArgumentIsTheModel) {
  const RunOptions options = SettleOptions({"vtn", "model.vtnx"});
  EXPECT_EQ(options.modelFile, "model.vtnx");
  EXPECT_EQ(options.mode, ProgramMode::Normal);
  EXPECT_FALSE(config.testMode);
}

TEST_F(OptionsTest, OptionInFrontOfTheModelIsTakenForIt) {
  const RunOptions options = SettleOptions({"vtn", "maxcutset=3", "model.vtnx"});
  EXPECT_EQ(options.modelFile, "maxcutset=3");
  EXPECT_EQ(config.maxCutSetSize, 0);
}

TEST_F(OptionsTest, NoArgumentsGiveNoModel) {
  EXPECT_EQ(SettleOptions({"vtn"}).modelFile, "");
  EXPECT_EQ(SettleOptions({}).modelFile, "");
}

struct ModeCase {
  const char* name;
  const char* word;
  ProgramMode mode;
};

class TestModeTest : public ProcessStateTest, public ::testing::WithParamInterface<ModeCase> {};

TEST_P(TestModeTest, WordSelectsTheMode) {
  const RunOptions options = SettleOptions({"vtn", GetParam().word});
  EXPECT_EQ(options.mode, GetParam().mode);
  EXPECT_EQ(options.modelFile, "");
  EXPECT_TRUE(Config::Instance().testMode);
  EXPECT_EQ(Config::Instance().outputTypes, OutputType::Xml);
}

INSTANTIATE_TEST_SUITE_P(
    Words, TestModeTest,
    ::testing::Values(ModeCase{"Regression", "testMode", ProgramMode::RegressionTest},
                      ModeCase{"RegressionInSmallLetters", "testmode", ProgramMode::RegressionTest},
                      ModeCase{"Pruning", "testPruningMode", ProgramMode::PruningTest},
                      ModeCase{"PruningInSmallLetters", "testpruningmode",
                               ProgramMode::PruningTest}),
    CaseName);

TEST_F(OptionsTest, OtherSpellingOfATestModeIsAModel) {
  EXPECT_EQ(SettleOptions({"vtn", "TestMode"}).modelFile, "TestMode");
  EXPECT_EQ(SettleOptions({"vtn", "testMode="}).modelFile, "testMode=");
}

// The rows, by the kind of their values.

struct FlagCase {
  const char* name;
  const char* spelling;
  bool Config::*field;
};

class FlagTest : public ProcessStateTest, public ::testing::WithParamInterface<FlagCase> {
 protected:
  bool Value(const std::string& text) {
    Settle({GetParam().spelling + text});
    return Config::Instance().*GetParam().field;
  }
};

TEST_P(FlagTest, OnlyTrueIsTrue) {
  EXPECT_TRUE(Value("true"));
  EXPECT_FALSE(Value("false"));
  EXPECT_TRUE(Value("true"));
  EXPECT_FALSE(Value("TRUE"));
  EXPECT_TRUE(Value("true"));
  EXPECT_FALSE(Value(""));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, FlagTest,
    ::testing::Values(
        FlagCase{"useBDDs", "useBDDs=", &Config::useBDDs},
        FlagCase{"idevns", "idevns=", &Config::removeHangingNodes},
        FlagCase{"outputContractedTrees", "outputContractedTrees=", &Config::outputContractedTrees},
        FlagCase{"circles", "circles=", &Config::removeCircleNodes},
        FlagCase{"mutualexclusion", "mutualexclusion=", &Config::mutualExclusion},
        FlagCase{"modularise", "modularise=", &Config::modularise},
        FlagCase{"quantanalysis", "quantanalysis=", &Config::quantitativeAnalysis},
        FlagCase{"skipAnalysis", "skipAnalysis=", &Config::skipAnalysis},
        FlagCase{"runSilent", "runSilent=", &Config::runSilent},
        FlagCase{"optimise", "optimise=", &Config::optimise},
        FlagCase{"generateFMEAXML", "generateFMEAXML=", &Config::generateFMEAXML},
        FlagCase{"useRBD", "useRBD=", &Config::useRBD},
        FlagCase{"pureElitist", "pureElitist=", &Config::pureElitist},
        FlagCase{"strictBoundaries", "strictBoundaries=", &Config::strictBoundaries},
        FlagCase{"allowInfeasibleResults",
                 "allowInfeasibleResults=", &Config::allowInfeasibleResults},
        FlagCase{"forceRestart", "forceRestart=", &Config::forceRestart},
        FlagCase{"includeArchive", "includeArchive=", &Config::includeArchive},
        FlagCase{"countNormalEvents", "countNormalEvents=", &Config::countNormalEvents}),
    CaseName);

struct NumberCase {
  const char* name;
  const char* spelling;
  std::int32_t Config::*field;
};

class NumberTest : public ProcessStateTest, public ::testing::WithParamInterface<NumberCase> {
 protected:
  int Value(const std::string& text) {
    Settle({GetParam().spelling + text});
    return Config::Instance().*GetParam().field;
  }
};

TEST_P(NumberTest, IsReadAsAnIntegerOrZero) {
  EXPECT_EQ(Value("37"), 37);
  EXPECT_EQ(Value("-4"), -4);
  EXPECT_EQ(Value("12abc"), 12);
  EXPECT_EQ(Value("abc"), 0);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, NumberTest,
    ::testing::Values(
        NumberCase{"maxcutset", "maxcutset=", &Config::maxCutSetSize},
        NumberCase{"maxcutsets", "maxcutsets=", &Config::maxCutSetSize},
        NumberCase{"maxCutSet", "maxCutSet=", &Config::maxCutSetSize},
        NumberCase{"maxCutSetSize", "maxCutSetSize=", &Config::maxCutSetSize},
        NumberCase{"populationSize", "populationSize=", &Config::populationSize},
        NumberCase{"childPopulationSize", "childPopulationSize=", &Config::childPopulationSize},
        NumberCase{"outputInterval", "outputInterval=", &Config::outputInterval},
        NumberCase{"numberOfRepeatRuns", "numberOfRepeatRuns=", &Config::numberOfRepeatRuns},
        NumberCase{"tabuRepetitionLimit", "tabuRepetitionLimit=", &Config::tabuRepetitionLimit},
        NumberCase{"tabuNumOutputSolutions",
                   "tabuNumOutputSolutions=", &Config::tabuNumOutputSolutions}),
    CaseName);

struct RateCase {
  const char* name;
  const char* spelling;
  double Config::*field;
};

class RateTest : public ProcessStateTest, public ::testing::WithParamInterface<RateCase> {
 protected:
  double Value(const std::string& text) {
    Settle({GetParam().spelling + text});
    return Config::Instance().*GetParam().field;
  }
};

TEST_P(RateTest, IsReadAsADoubleOrZero) {
  EXPECT_EQ(Value("0.25"), 0.25);
  EXPECT_EQ(Value("1e-3x"), 0.001);
  EXPECT_EQ(Value("abc"), 0.0);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, RateTest,
    ::testing::Values(RateCase{"mutationRate", "mutationRate=", &Config::mutationRate},
                      RateCase{"crossoverRate", "crossoverRate=", &Config::crossoverRate},
                      RateCase{"tabuUpdatePdesFrequency",
                               "tabuUpdatePdesFrequency=", &Config::tabuUpdatePdesFrequency},
                      RateCase{"tabuUpdatePascFrequency",
                               "tabuUpdatePascFrequency=", &Config::tabuUpdatePascFrequency},
                      RateCase{"tabuPdesLimit", "tabuPdesLimit=", &Config::tabuPdesLimit},
                      RateCase{"tabuPascLimit", "tabuPascLimit=", &Config::tabuPascLimit}),
    CaseName);

struct TextCase {
  const char* name;
  const char* spelling;
  std::string Config::*field;
};

class TextTest : public ProcessStateTest, public ::testing::WithParamInterface<TextCase> {};

TEST_P(TextTest, IsTakenAsItIs) {
  Settle({GetParam().spelling + std::string(" a=b/c ")});
  EXPECT_EQ(Config::Instance().*GetParam().field, " a=b/c ");
}

INSTANTIATE_TEST_SUITE_P(
    Rows, TextTest,
    ::testing::Values(
        TextCase{"outputdir", "outputdir=", &Config::outputDir},
        TextCase{"previousState", "previousStateFileName=", &Config::previousStateFileName},
        TextCase{"timingData", "timingDataFileName=", &Config::timingDataFileName},
        TextCase{"asilCostHeuristic", "asilCostHeuristic=", &Config::asilCostHeuristic},
        TextCase{"dalCostHeuristic", "dalCostHeuristic=", &Config::asilCostHeuristic}),
    CaseName);

// Rows of their own kind.

TEST_F(OptionsTest, WarningsAreSuppressedByFalseAlone) {
  Settle({"warnings=false"});
  EXPECT_TRUE(config.suppressWarnings);
  Settle({"warnings=no"});
  EXPECT_FALSE(config.suppressWarnings);
}

TEST_F(OptionsTest, AnalysisIsSkippedByFalseAlone) {
  Settle({"analyse=true"});
  EXPECT_FALSE(config.skipAnalysis);
  Settle({"analyse=false"});
  EXPECT_TRUE(config.skipAnalysis);
  Settle({"analyse=0"});
  EXPECT_FALSE(config.skipAnalysis);
}

TEST_F(OptionsTest, XmlParserIsChosenByTrueAlone) {
  EXPECT_FALSE(Settle({}).useXmlParser);
  EXPECT_TRUE(Settle({"useXMLParser=true"}).useXmlParser);
  EXPECT_FALSE(Settle({"useXMLParser=yes"}).useXmlParser);
}

TEST_F(OptionsTest, OutputFolderLosesItsQuotes) {
  Settle({"outputdir=\"C:\\my results\""});
  EXPECT_EQ(config.outputDir, "C:\\my results");
}

TEST_F(OptionsTest, LoneQuoteOfTheOutputFolderStays) {
  Settle({"outputdir=\""});
  EXPECT_EQ(config.outputDir, "\"");
  Settle({"outputdir=\"open"});
  EXPECT_EQ(config.outputDir, "\"open");
}

TEST_F(OptionsTest, EmptyOutputFolderIsTheDefault) {
  Settle({"outputdir=somewhere", "outputdir="});
  EXPECT_EQ(config.outputDir, "default");
  Settle({"outputdir=somewhere", "outputdir=\"\""});
  EXPECT_EQ(config.outputDir, "default");
}

TEST_F(OptionsTest, SearchIsCoitGAUnlessNamed) {
  EXPECT_EQ(Settle({}).gaType, "CoitGA");
  EXPECT_EQ(Settle({"GAType=NSGA"}).gaType, "NSGA");
  EXPECT_EQ(Settle({"GAType="}).gaType, "");
}

TEST_F(OptionsTest, OutputTypesOfSeveralOptionsAddUp) {
  Settle({"outputtype=XML", "outputtype=EXCEL"});
  EXPECT_EQ(config.outputTypes, OutputType::Xml | OutputType::Excel);
}

TEST_F(OptionsTest, QuantificationIsEsaryProschanUnlessNamed) {
  Settle({});
  EXPECT_EQ(config.quantAnalysisTypes, QuantAnalysisType::EsaryProschan);
}

TEST_F(OptionsTest, NamedQuantificationReplacesTheDefault) {
  Settle({"quantanalysistype=Rare,CrossProduct"});
  EXPECT_EQ(config.quantAnalysisTypes, QuantAnalysisType::Rare | QuantAnalysisType::CrossProduct);
}

TEST_F(OptionsTest, UnknownQuantificationGivesTheDefault) {
  Settle({"quantanalysistype=Exact"});
  EXPECT_EQ(config.quantAnalysisTypes, QuantAnalysisType::EsaryProschan);
}

TEST_F(OptionsTest, DecompositionOnlyHasToBeginWithItsLetters) {
  Settle({"decomposeSILs=false"});
  EXPECT_TRUE(config.decomposeSILs);
  EXPECT_FALSE(config.decomposeDALs);
  Settle({"decomposeDALsToo"});
  EXPECT_TRUE(config.decomposeDALs);
}

TEST_F(OptionsTest, IsoModeOnlyHasToBeginWithItsLetters) {
  Settle({"isoMode"});
  EXPECT_FALSE(config.isoMode);
  Settle({"isomode=false"});
  EXPECT_TRUE(config.isoMode);
}

TEST_F(OptionsTest, DisplayOutputFalseOpensNothingButPages) {
  Settle({"outputtype=XML,FTP,HTML", "displayOutput=false"});
  EXPECT_EQ(config.outputTypes, OutputType::Xml | OutputType::Ftp | OutputType::Html);
  EXPECT_EQ(config.openResultTypes, OutputType::Html);
  EXPECT_FALSE(config.openBrowser);
}

TEST_F(OptionsTest, DisplayOutputOtherwiseDoesNothing) {
  Settle({"outputtype=XML,FTP", "displayOutput=no", "displayOutput=true"});
  EXPECT_EQ(config.openResultTypes, OutputType::Xml | OutputType::Ftp);
  EXPECT_TRUE(config.openBrowser);
}

TEST_F(OptionsTest, MinusOpenftpWritesTheProjectAndDoesNotOpenIt) {
  Settle({"-openftp", "outputtype=FTP"});
  EXPECT_EQ(config.outputTypes, OutputType::Ftp);
  EXPECT_EQ(config.openResultTypes, 0);
}

TEST_F(OptionsTest, OpenftpWithAnotherSignIsAcceptedInVain) {
  const RunOptions options = Settle({"outputtype=FTP", "+openftp", "xopenftp"});
  EXPECT_EQ(config.openResultTypes, OutputType::Ftp);
  EXPECT_EQ(options.recognised, "outputtype=FTP\n+openftp\nxopenftp\n");
}

TEST_F(OptionsTest, OpenftpStandsAloneBehindItsSign) {
  const RunOptions options = Settle({"outputtype=FTP", "-openftps", "openftp", "--openftp"});
  EXPECT_EQ(config.openResultTypes, OutputType::Ftp);
  EXPECT_EQ(options.recognised, "outputtype=FTP\n");
}

TEST_F(OptionsTest, OpenbrowserIsRecognisedInNoSpelling) {
  const RunOptions options =
      Settle({"outputtype=XML", "-openbrowser", "-openbro", "-openiex", "openbrowser"});
  EXPECT_EQ(config.openResultTypes, OutputType::Xml);
  EXPECT_TRUE(config.openBrowser);
  EXPECT_EQ(options.recognised, "outputtype=XML\n");
}

struct ContractionCase {
  const char* name;
  const char* option;
  std::int32_t before;
  std::int32_t after;
};

class ContractionOptionTest : public ProcessStateTest,
                              public ::testing::WithParamInterface<ContractionCase> {};

TEST_P(ContractionOptionTest, Gives) {
  Config::Instance().contraction = GetParam().before;
  Settle({GetParam().option});
  EXPECT_EQ(Config::Instance().contraction, GetParam().after) << GetParam().option;
}

INSTANTIATE_TEST_SUITE_P(
    Options, ContractionOptionTest,
    ::testing::Values(ContractionCase{"True", "contract=true", 2, 1},
                      ContractionCase{"False", "contract=false", 2, 0},
                      ContractionCase{"OtherText", "contract=yes", 1, 0},
                      ContractionCase{"Plus", "+contract", 0, 1},
                      ContractionCase{"Minus", "-contract", 1, 0},
                      ContractionCase{"AnyOtherSign", "xcontract", 1, 0},
                      ContractionCase{"WordAloneIsUnknown", "contract", 2, 2},
                      ContractionCase{"LongerWordIsUnknown", "-contracts", 2, 2},
                      ContractionCase{"OtherOptionKeepsIt", "circles=true", 2, 2}),
    CaseName);

TEST_F(OptionsTest, OptimisationIsSilentUnlessToldOtherwiseLater) {
  Settle({"optimise=true", "runSilent=false"});
  EXPECT_TRUE(config.optimise);
  EXPECT_FALSE(config.runSilent);
  Settle({"runSilent=false", "optimise=true"});
  EXPECT_TRUE(config.runSilent);
}

TEST_F(OptionsTest, OptimiseFalseEndsSilence) {
  Settle({"runSilent=true", "optimise=false"});
  EXPECT_FALSE(config.runSilent);
}

TEST_F(OptionsTest, PopulationIsOfVariableSizeUnlessANumberIsGiven) {
  Settle({});
  EXPECT_EQ(config.populationSizing, PopulationSizing::Variable);
  EXPECT_EQ(config.populationSize, 100);
  Settle({"populationSize=20"});
  EXPECT_EQ(config.populationSizing, PopulationSizing::Fixed);
  EXPECT_EQ(config.populationSize, 20);
}

TEST_F(OptionsTest, PopulationWordsKeepTheNumber) {
  Settle({"populationSize=20", "populationSize=unlimited"});
  EXPECT_EQ(config.populationSizing, PopulationSizing::Unlimited);
  EXPECT_EQ(config.populationSize, 20);
  Settle({"populationSize=unlimited", "populationSize=variable"});
  EXPECT_EQ(config.populationSizing, PopulationSizing::Variable);
  EXPECT_EQ(config.populationSize, 100);
}

TEST_F(OptionsTest, PopulationSizeThatIsNoNumberIsZero) {
  Settle({"populationSize=abc"});
  EXPECT_EQ(config.populationSizing, PopulationSizing::Fixed);
  EXPECT_EQ(config.populationSize, 0);
}

TEST_F(OptionsTest, ChildrenAreAsManyAsTheirParents) {
  Settle({"populationSize=20"});
  EXPECT_EQ(config.childPopulationSize, 20);
  Settle({"childPopulationSize=5", "populationSize=20"});
  EXPECT_EQ(config.childPopulationSize, 5);
}

TEST_F(OptionsTest, RatesOfTheSearchHaveDefaultsOfTheirOwn) {
  Settle({});
  EXPECT_EQ(config.mutationRate, 0.05);
  EXPECT_EQ(config.crossoverRate, 0.9);
  EXPECT_TRUE(config.includeArchive);
}

TEST_F(OptionsTest, GenerationLimitIsHandedOnOnlyWhenGiven) {
  EXPECT_FALSE(Settle({}).maxGenerations.has_value());
  EXPECT_EQ(Settle({"maxGenerations=12"}).maxGenerations, 12);
  EXPECT_EQ(Settle({"maxGenerations=x"}).maxGenerations, 0);
  EXPECT_EQ(config.maxGenerations, 1056);
}

struct EncodingCase {
  const char* name;
  const char* word;
  std::int32_t type;
};

class EncodingTypeTest : public ProcessStateTest,
                         public ::testing::WithParamInterface<EncodingCase> {};

TEST_P(EncodingTypeTest, WordGives) {
  Settle({"encodingType=FIXED", std::string("encodingType=") + GetParam().word});
  EXPECT_EQ(Config::Instance().encodingType, GetParam().type);
}

INSTANTIATE_TEST_SUITE_P(Words, EncodingTypeTest,
                         ::testing::Values(EncodingCase{"Tree", "TREE", 0},
                                           EncodingCase{"Fixed", "FIXED", 1},
                                           EncodingCase{"FixedAsil", "FIXED_ASIL", 2},
                                           EncodingCase{"TreeAsil", "TREE_ASIL", 3},
                                           EncodingCase{"OtherWordLeavesIt", "tree", 1}),
                         CaseName);

TEST_F(OptionsTest, CostsOfEitherNameFillOneField) {
  Settle({"asilCostHeuristic=1,2,3,4,5", "dalCostHeuristic=5,4,3,2,1"});
  EXPECT_EQ(config.asilCostHeuristic, "5 4 3 2 1");
  Settle({"dalCostHeuristic=5,4,3,2,1", "asilCostHeuristic=1,2,3,4,5"});
  EXPECT_EQ(config.asilCostHeuristic, "1 2 3 4 5");
}

// What the scan accepts.

TEST_F(OptionsTest, RecognisedOptionsAreListedInTheirOrder) {
  const RunOptions options = Settle({"maxcutset=3", "unknown=1", "abc", "", "-contract"});
  EXPECT_EQ(options.recognised, "maxcutset=3\n-contract\n");
}

TEST_F(OptionsTest, CaseOfASpellingMatters) {
  const RunOptions options = Settle({"MaxCutSet=3", "modularize=false", "RunSilent=true"});
  EXPECT_EQ(options.recognised, "");
  EXPECT_EQ(config.maxCutSetSize, 0);
}

TEST_F(OptionsTest, ShortArgumentsAreIgnored) {
  EXPECT_EQ(Settle({"abc", "-ftp", "c="}).recognised, "");
}

TEST_F(OptionsTest, LastOfTwoLikeOptionsWins) {
  Settle({"maxcutset=3", "maxCutSetSize=5"});
  EXPECT_EQ(config.maxCutSetSize, 5);
}

TEST_F(OptionsTest, SeedIsTheCalendarTimeOfSettling) {
  FixedClock clock;
  clock.SetCalendarSeconds(1666000000);
  Settle({});
  EXPECT_EQ(config.randomSeed, 1666000000);
}

TEST_F(OptionsTest, ProgramPathLeadsToTheRunningProgram) {
  Settle({});
  EXPECT_NE(ProgramPath(), "");
  EXPECT_NE(ProgramPath(), "vtn");
  EXPECT_EQ(ProgramFolder().front(), '/');
}

TEST_F(OptionsTest, ConfigurationFileThatCannotBeUsedEndsSettling) {
  EXPECT_THROW(Settle({"config=/dev/null/my.cfg"}), VtnException);
}

/// Stands for a configuration file with a cut set limit, subcontraction and a format to open.
Config& LoadSettings(const std::string& path) {
  EXPECT_EQ(path, "my.cfg");
  Config::Release();
  Config::Instance().maxCutSetSize = 4;
  Config::Instance().contraction = Contraction::Subcontract;
  Config::Instance().SetOutputTypes("XML,FTP");
  return Config::Instance();
}

RunOptions SettleWithFile(std::initializer_list<std::string> options) {
  std::vector<std::string> arguments = {"vtn", "model.vtnx"};
  arguments.insert(arguments.end(), options);
  return SettleOptions(arguments, LoadSettings);
}

TEST_F(OptionsTest, ConfigurationFileWinsOverOptionsKeptAtOnce) {
  SettleWithFile({"maxcutset=3", "config=my.cfg", "modularise=false"});
  EXPECT_EQ(Config::Instance().maxCutSetSize, 4);
  EXPECT_TRUE(Config::Instance().modularise);
}

TEST_F(OptionsTest, OptionsHeldBackOutlastAConfigurationFile) {
  const RunOptions options = SettleWithFile({"populationSize=20", "config=my.cfg", "GAType=NSGA"});
  EXPECT_EQ(Config::Instance().populationSize, 20);
  EXPECT_EQ(Config::Instance().childPopulationSize, 20);
  EXPECT_EQ(Config::Instance().mutationRate, 0.05);
  EXPECT_EQ(options.gaType, "NSGA");
}

TEST_F(OptionsTest, ContractionOfAConfigurationFileStaysUnlessForced) {
  SettleWithFile({"config=my.cfg"});
  EXPECT_EQ(Config::Instance().contraction, Contraction::Subcontract);
  SettleWithFile({"config=my.cfg", "+contract"});
  EXPECT_EQ(Config::Instance().contraction, Contraction::Contract);
}

TEST_F(OptionsTest, FormatsOfAConfigurationFileAreNotOpenedAgainstTheOption) {
  SettleWithFile({"config=my.cfg", "-openftp"});
  EXPECT_EQ(Config::Instance().openResultTypes, OutputType::Xml);
  SettleWithFile({"displayOutput=false", "config=my.cfg"});
  EXPECT_EQ(Config::Instance().openResultTypes, 0);
  EXPECT_EQ(Config::Instance().outputTypes, OutputType::Xml | OutputType::Ftp);
}

TEST_F(OptionsTest, QuantificationIsSettledBehindTheConfigurationFile) {
  SettleWithFile({"quantanalysistype=Rare", "config=my.cfg"});
  EXPECT_EQ(Config::Instance().quantAnalysisTypes, QuantAnalysisType::EsaryProschan);
}

TEST_F(OptionsTest, EmptyConfigurationPathLoadsNothing) {
  Settle({"config=", "maxcutset=3"});
  EXPECT_EQ(config.maxCutSetSize, 3);
}

}  // namespace
}  // namespace FTS
