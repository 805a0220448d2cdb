#include <gmock/gmock.h>

#include <limits>

#include "app/Config.h"
#include "app/DiagnosticLog.h"
#include "support/CaseName.h"
#include "support/FixedClock.h"
#include "support/ProcessStateTest.h"

namespace FTS {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ConfigTest : public ProcessStateTest {};

TEST_F(ConfigTest, AnalysisDefaultsAreThoseOfARunWithoutOptions) {
  const Config& config = Config::Instance();
  EXPECT_EQ(config.contraction, 1);
  EXPECT_TRUE(config.countNormalEvents);
  EXPECT_FALSE(config.ignoreCrazyLoops);
  EXPECT_FALSE(config.isoMode);
  EXPECT_EQ(config.maxCutSetSize, 0);
  EXPECT_TRUE(config.modularise);
  EXPECT_FALSE(config.mutualExclusion);
  EXPECT_TRUE(config.quantitativeAnalysis);
  EXPECT_EQ(config.quantAnalysisTypes, 0);
  EXPECT_FALSE(config.removeCircleNodes);
  EXPECT_TRUE(config.removeHangingNodes);
  EXPECT_FALSE(config.useBDDs);
  EXPECT_FALSE(config.skipAnalysis);
}

TEST_F(ConfigTest, RunAndOutputDefaultsAreThoseOfARunWithoutOptions) {
  const Config& config = Config::Instance();
  EXPECT_EQ(config.openResultTypes, 0);
  EXPECT_FALSE(config.optimise);
  EXPECT_TRUE(config.outputContractedTrees);
  EXPECT_EQ(config.outputDir, "default");
  EXPECT_EQ(config.outputTypes, 0);
  EXPECT_FALSE(config.runSilent);
  EXPECT_FALSE(config.suppressWarnings);
  EXPECT_FALSE(config.testMode);
  EXPECT_TRUE(config.generateFMEAXML);
  EXPECT_TRUE(config.openBrowser);
}

TEST_F(ConfigTest, DecompositionDefaultsAreThoseOfTheTools) {
  const Config& config = Config::Instance();
  EXPECT_FALSE(config.decomposeSILs);
  EXPECT_FALSE(config.decomposeDALs);
  EXPECT_EQ(config.asilCostHeuristic, "0 10 20 30 40");
  EXPECT_EQ(config.tabuRepetitionLimit, 1000);
  EXPECT_EQ(config.tabuUpdatePdesFrequency, 3.0);
  EXPECT_EQ(config.tabuUpdatePascFrequency, 4.0);
  EXPECT_EQ(config.tabuPdesLimit, 1.0);
  EXPECT_EQ(config.tabuPascLimit, 0.4);
  EXPECT_EQ(config.tabuNumOutputSolutions, 50);
}

TEST_F(ConfigTest, OptimiserDefaultsAreThoseOfTheRecord) {
  const Config& config = Config::Instance();
  EXPECT_EQ(config.populationSize, 100);
  EXPECT_EQ(config.childPopulationSize, 100);
  EXPECT_EQ(config.mutationRate, 0.0);
  EXPECT_EQ(config.crossoverRate, 0.9);
  EXPECT_EQ(config.outputInterval, 0);
  EXPECT_EQ(config.maxGenerations, 1056);
  EXPECT_EQ(config.numberOfRepeatRuns, 1);
  EXPECT_FALSE(config.allowInfeasibleResults);
  EXPECT_FALSE(config.strictBoundaries);
  EXPECT_EQ(config.populationSizing, 2);
  EXPECT_FALSE(config.forceRestart);
  EXPECT_TRUE(config.includeArchive);
  EXPECT_FALSE(config.useRBD);
  EXPECT_FALSE(config.pureElitist);
  EXPECT_EQ(config.previousStateFileName, "");
  EXPECT_EQ(config.timingDataFileName, "");
  EXPECT_EQ(config.encodingType, 0);
}

TEST_F(ConfigTest, RandomSeedStartsAtTheCalendarTime) {
  FixedClock clock;
  clock.SetCalendarSeconds(1666000000);
  EXPECT_EQ(Config().randomSeed, 1666000000);
}

TEST_F(ConfigTest, InstanceIsTheSameUntilItIsReleased) {
  Config::Instance().maxCutSetSize = 7;
  EXPECT_EQ(Config::Instance().maxCutSetSize, 7);
  Config::Release();
  EXPECT_EQ(Config::Instance().maxCutSetSize, 0);
}

struct WordCase {
  const char* name;
  const char* words;
  std::int32_t bits;
  std::int32_t openBits;
};

class OutputTypesTest : public ProcessStateTest, public ::testing::WithParamInterface<WordCase> {};

TEST_P(OutputTypesTest, WordsSetTheirBits) {
  Config config;
  config.SetOutputTypes(GetParam().words);
  EXPECT_EQ(config.outputTypes, GetParam().bits) << GetParam().words;
  EXPECT_EQ(config.openResultTypes, GetParam().openBits) << GetParam().words;
}

INSTANTIATE_TEST_SUITE_P(
    Words, OutputTypesTest,
    ::testing::Values(WordCase{"Xml", "XML", 0x1, 0x1}, WordCase{"Ftp", "FTP", 0x2, 0x2},
                      WordCase{"Excel", "EXCEL", 0x4, 0}, WordCase{"OpenPsa", "OPENPSA", 0x8, 0},
                      WordCase{"Iso", "ISO", 0x10, 0}, WordCase{"Problog", "PROBLOG", 0x20, 0},
                      WordCase{"Epm", "EPM", 0x40, 0}, WordCase{"Results", "RESULTS", 0x80, 0},
                      WordCase{"Html", "HTML", 0x100, 0x100},
                      WordCase{"ListWithBlanks", " X M L ,EXCEL,, HTML ", 0x105, 0x101},
                      WordCase{"CaseMatters", "xml,Html", 0, 0},
                      WordCase{"UnknownWord", "NONE,FTP", 0x2, 0x2},
                      WordCase{"TabIsNoBlank", "\tXML", 0, 0}, WordCase{"Empty", "", 0, 0}),
    CaseName);

TEST_F(ConfigTest, OutputTypesAreAddedToThoseThatAreSet) {
  Config config;
  config.SetOutputTypes("XML");
  config.SetOutputTypes("EXCEL");
  EXPECT_EQ(config.outputTypes, 0x5);
  EXPECT_EQ(config.openResultTypes, 0x1);
}

class QuantAnalysisTypesTest : public ProcessStateTest,
                               public ::testing::WithParamInterface<WordCase> {};

TEST_P(QuantAnalysisTypesTest, WordsSetTheirBits) {
  Config config;
  config.SetQuantAnalysisTypes(GetParam().words);
  EXPECT_EQ(config.quantAnalysisTypes, GetParam().bits) << GetParam().words;
}

INSTANTIATE_TEST_SUITE_P(Words, QuantAnalysisTypesTest,
                         ::testing::Values(WordCase{"EsaryProschan", "EsaryProschan", 0x1, 0},
                                           WordCase{"CrossProduct", "CrossProduct", 0x2, 0},
                                           WordCase{"Rare", "Rare", 0x4, 0},
                                           WordCase{"All", "Rare, Cross Product,EsaryProschan", 0x7,
                                                    0},
                                           WordCase{"UnknownWord", "rare,Exact", 0, 0}),
                         CaseName);

TEST_F(ConfigTest, QuantAnalysisTypesAreAddedToThoseThatAreSet) {
  Config config;
  config.SetQuantAnalysisTypes("CrossProduct");
  config.SetQuantAnalysisTypes("Rare");
  EXPECT_EQ(config.quantAnalysisTypes, 0x6);
}

TEST_F(ConfigTest, CostHeuristicHasBlanksForCommas) {
  Config config;
  config.SetCostHeuristic("0,1,2, 3,4");
  EXPECT_EQ(config.asilCostHeuristic, "0 1 2  3 4");
  EXPECT_THAT(DiagnosticLog::Instance().Warnings(), IsEmpty());
}

TEST_F(ConfigTest, CostHeuristicThatCannotBeStoredIsTheDefaultWithAWarning) {
  // Volatile, so that no compiler reasons about a length that nobody ever reads up to.
  volatile std::size_t tooLong = std::numeric_limits<std::size_t>::max();
  Config config;
  config.SetCostHeuristic("1,2,3,4,5");
  config.SetCostHeuristic(std::string_view("1,2", tooLong));
  EXPECT_EQ(config.asilCostHeuristic, "0 10 20 30 40");
  EXPECT_THAT(DiagnosticLog::Instance().Warnings(),
              ElementsAre("Error parsing Asil cost heuristic arguments. Using default values"));
}

}  // namespace
}  // namespace FTS
