// Faults of text models, each with its message and line.

#include <gmock/gmock.h>

#include "input/TextModelTest.h"

namespace FTS {
namespace {

using ::testing::IsEmpty;

class TextFaultsTest : public TextModelTest {
 protected:
  /// The message that making a reader of a file with that text ends with, the path left out.
  std::string RefusalOf(const std::string& text) {
    const std::string path = folder.Write("odd.vtn", text);
    std::string message = ThrownBy([&path] { CreateTextParser(path); });
    const std::size_t at = message.find(path);
    return at == std::string::npos ? message : message.replace(at, path.size(), "PATH");
  }

  static constexpr const char* NotRecognised =
      "Parser creation error: The file 'PATH' could not be parsed - it is not a recognised format";

  TemporaryFolder folder;
};

TEST_F(TextFaultsTest, MissingFileIsNotFound) {
  const std::string path = folder.Path("missing.vtn");
  EXPECT_EQ(ThrownBy([&path] { CreateTextParser(path); }),
            "File not found! Could not open file: " + path);
}

TEST_F(TextFaultsTest, FolderIsNotFound) {
  EXPECT_EQ(ThrownBy([this] { CreateTextParser(folder.Path()); }),
            "File not found! Could not open file: " + folder.Path());
}

struct StartCase {
  const char* name;
  const char* text;
  bool recognised;
};

class TextStartTest : public TextFaultsTest, public ::testing::WithParamInterface<StartCase> {};

TEST_P(TextStartTest, TellsWhatTheFileIs) {
  EXPECT_EQ(RefusalOf(GetParam().text), GetParam().recognised ? "no exception" : NotRecognised);
}

INSTANTIATE_TEST_SUITE_P(
    Starts, TextStartTest,
    ::testing::Values(
        StartCase{"Empty", "", false}, StartCase{"OtherWord", "System { }", false},
        StartCase{"SmallLetters", "model Name \"m\" System { }", false},
        StartCase{"Xml", "<?xml version=\"1.0\"?><Model><System/></Model>", false},
        StartCase{"ModelAlone", "Model", false},
        StartCase{"NoSection", "Model Name \"m\" Version 1", false},
        StartCase{"NameWithoutValue", "Model Name Version 1 System", false},
        StartCase{"OtherKeyword", "Model Name \"m\" Component", false},
        StartCase{"VersionWithoutNumber", "Model Name \"m\" Version \"1\" System", false},
        StartCase{"PointWithoutNumber", "Model Name \"m\" Version 1. System", false},
        StartCase{"RiskTimeAsNumber", "Model Name \"m\" RiskTime 10 System", false},
        StartCase{"WithoutName", "Model System", true},
        StartCase{"SectionAtOnce", "Model Name \"m\" Hazards", true},
        StartCase{"Description", "Model Name \"m\" Description \"d\" Perspectives", true},
        StartCase{"SimulationX", "Model Name \"m\" SimulationX OptimisationParams", true},
        StartCase{"Matlab", "Model Name \"m\" Matlab Actual CCFs", true},
        StartCase{"Version1", "Model Name \"m\" Version 1 System", true},
        StartCase{"Version1Point2", "Model Name \"m\" Version 1.2 System", true},
        StartCase{"RiskTime", "Model Name \"m\" RiskTime \"1\" System", true},
        StartCase{"All", "Model Name \"m\" SimulationX Matlab Version 1 RiskTime \"1\" System",
                  true}),
    CaseName);

struct FaultCase {
  const char* name;
  const char* content;  // Behind `Model Name "m"` and a line end.
  const char* message;
};

class TextFaultTest : public TextFaultsTest, public ::testing::WithParamInterface<FaultCase> {};

TEST_P(TextFaultTest, EndsTheReading) {
  EXPECT_EQ(FaultOf(GetParam().content), GetParam().message);
  EXPECT_THAT(Errors(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Head, TextFaultTest,
    ::testing::Values(
        FaultCase{"OutOfTokens", "System {",
                  "Match Error #1: Ran out of tokens. Expected: \"}\" @2"},
        FaultCase{"SystemMissing", "Hazards { }",
                  "Match Error #1: Ran out of tokens. Expected: \"System\" @2"},
        FaultCase{"OtherKeyword", "System {\nPort { } }",
                  "Match Error #4: Incorrect Token type. Expected: \"}\" but found: \"Port\" @3"},
        FaultCase{"WordForKeyword", "System { }\nHazards\n{ Hazard { Title \"H\" } }",
                  "no exception"},
        FaultCase{"Word", "Hazards { Hazard {\nTitle \"H\" } } System { }",
                  "Match Error #2: Incorrect Token type - found String/ID. Expected: \"Name\" but "
                  "found: \"<ID>\" with value: \"Title\" @3"},
        FaultCase{"String", "Hazards { Hazard { \"H\" } } System { }",
                  "Match Error #2: Incorrect Token type - found String/ID. Expected: \"Name\" but "
                  "found: \"<STRING>\" with value: \"H\" @2"},
        FaultCase{"Number", "Hazards { Hazard { Name 7 } } System { }",
                  "Match Error #3: Incorrect Token type - found Number. Expected: \"<STRING>\" but "
                  "found: \"<NUMBER>\" with value: \"7\" @2"},
        FaultCase{"UnnamedKeyword", "System { Normal Event { } }",
                  "Match Error #4: Incorrect Token type. Expected: \"}\" but found: "
                  "\"NormalEvent\" @2"},
        FaultCase{"SeverityAsString", "Hazards { Hazard { Name \"H\" Severity \"1\" } } System { }",
                  "Match Error #2: Incorrect Token type - found String/ID. Expected: \"<NUMBER>\" "
                  "but found: \"<STRING>\" with value: \"1\" @2"},
        FaultCase{"ExponentInANumber",
                  "Hazards { Hazard { Name \"H\" Severity 1e3 Logic \"\" } } System { }",
                  "Match Error #2: Incorrect Token type - found String/ID. Expected: \"Logic\" but "
                  "found: \"<ID>\" with value: \"e3\" @2"},
        FaultCase{"FractionMissing", "Hazards { Hazard { Name \"H\" Severity 1. } } System { }",
                  "Match Error #4: Incorrect Token type. Expected: \"<NUMBER>\" but found: \"}\" "
                  "@2"},
        FaultCase{"HazardNot",
                  "Hazards { Hazard { Name \"H\"\nLogic \"a-A.p AND\n~b-B.p\" } }\n"
                  "System { }",
                  "Unknown Hazard Node! @4"},
        FaultCase{"HazardWithoutClass",
                  "Hazards { Hazard { Name \"H\" Logic \"A.p\" } } System { }",
                  "Unknown Hazard Node! @2"},
        FaultCase{"HazardWithoutName", "Hazards { Hazard { Name \"H\" Logic \"a-(\" } } System { }",
                  "Unknown Hazard Node! @2"},
        FaultCase{"HazardOperandMissing",
                  "Hazards { Hazard { Name \"H\" Logic \"a-A.p OR\" } } System { }",
                  "Unknown Hazard Node! @2"},
        FaultCase{"HazardBracket", "Hazards { Hazard { Name \"H\" Logic \"(a-A.p\" } } System { }",
                  "Match Error #1: Ran out of tokens. Expected: \")\" @2"},
        FaultCase{"ObjectiveName",
                  "OptimisationParams { MaxGenerations 1 DefaultMaxReplicants 1 Objectives { "
                  "Objective { Beauty : Maximise } } } System { }",
                  "Match Error #2: Incorrect Token type - found String/ID. Expected: \"Cost\" but "
                  "found: \"<ID>\" with value: \"Beauty\" @2"},
        FaultCase{"ObjectiveGoal",
                  "OptimisationParams { MaxGenerations 1 DefaultMaxReplicants 1 Objectives { "
                  "Objective { Cost : 5 } } } System { }",
                  "Match Error #3: Incorrect Token type - found Number. Expected: \"Minimise\" but "
                  "found: \"<NUMBER>\" with value: \"5\" @2"}),
    CaseName);

INSTANTIATE_TEST_SUITE_P(
    Structure, TextFaultTest,
    ::testing::Values(
        FaultCase{
            "BlockTypeOfDocuments",
            "System { Component { Name \"C\" Implementation {\nH_BlockType \"NotRefined\" } } "
            "}",
            "Unrecognised block type: NotRefined @3"},
        FaultCase{"ImplementationMissing", "System { Component { Name \"C\" } }",
                  "Match Error #4: Incorrect Token type. Expected: \"Implementation\" but found: "
                  "\"}\" @2"},
        FaultCase{"DefaultOfALine", "System { Line { Default XOR Connections { } } }",
                  "Match Error #4: Incorrect Token type. Expected: \"Output\" but found: \"XOR\" "
                  "@2"},
        FaultCase{"ConnectionWithoutClass",
                  "System { Component { Name \"A\" Port { Name \"p\" } Implementation { } }\n"
                  "Line { Default OR Connections { A.p = ORPORT } } }",
                  "Match Error #4: Incorrect Token type. Expected: \"MINUS\" but found: \"EQUALS\" "
                  "@3"},
        FaultCase{"OtherClassOnLine",
                  "System { Component { Name \"A\" Port { Name \"p\" } Implementation { } }\n"
                  "Line { Default OR Name \"wire\" Connections {\nx-A.p = y-A.p } } }",
                  "Failure classes do not match in line: 'x' and 'y' wire on line number: 4 @4"},
        FaultCase{"UnknownOperandOnLine",
                  "System { Line { Default OR Connections { x-A.p = 7 } } }",
                  "Unknown Port Node! @2"},
        FaultCase{"OperandMissingOnLine", "System { Line { Default OR Connections { x-A.p = } } }",
                  "Unknown Port Node! @2"},
        FaultCase{"PortNotReadYet",
                  "System { Line { Default OR Name \"wire\" Connections { x-A.p = x-A.p } }\n"
                  "Component { Name \"A\" Port { Name \"p\" } Implementation { } } }",
                  "Error! Cannot find port: A.p on line: wire in model top layer; may not be "
                  "locally qualified @2"},
        FaultCase{"PortThatIsNotThere",
                  "System {\nComponent { Name \"A\" Port { Name \"p\" } Implementation { } }\n"
                  "Line { Default OR Name \"wire\" Connections {\nx-A.p =\nx-A.q\n\n} } }",
                  "Error! Cannot find port: A.q on line: wire in component: DEFAULT::A on line "
                  "@6"}),
    CaseName);

INSTANTIATE_TEST_SUITE_P(
    FailureData, TextFaultTest,
    ::testing::Values(
        FaultCase{"BasicEventsMissing",
                  "System { Component { Name \"C\" Implementation { FData { Output Deviations { } "
                  "} } } }",
                  "Match Error #4: Incorrect Token type. Expected: \"Basic Events\" but found: "
                  "\"Output Deviations\" @2"},
        FaultCase{"FailureModelMissing",
                  "System { Component { Name \"C\" Implementation { FData { Basic Events { Basic "
                  "Event { Name \"a\" } } } } } }",
                  "Match Error #4: Incorrect Token type. Expected: \"Constant\" but found: \"}\" "
                  "@2"},
        FaultCase{"ParameterWithoutQuotes",
                  "System { Component { Name \"C\" Implementation { FData { Basic Events { Basic "
                  "Event { Name \"a\" Fixed { Unavailability = 0 } } } } } } }",
                  "Match Error #3: Incorrect Token type - found Number. Expected: \"<STRING>\" but "
                  "found: \"<NUMBER>\" with value: \"0\" @2"},
        FaultCase{
            "TimeIsNoParameterOfAnEvent",
            "System { Component { Name \"C\" Implementation { FData { Basic Events { Basic "
            "Event { Name \"a\" Time { t = \"1\" } } } } } } }",
            "Match Error #4: Incorrect Token type. Expected: \"<ID>\" but found: \"Time\" @2"},
        FaultCase{"CoverageIsNoParameter",
                  "System { Component { Name \"C\" Implementation { FData { Basic Events { Basic "
                  "Event { Name \"a\" Fixed { DiagnosticCoverage = \"1\" } } } } } } }",
                  "Match Error #4: Incorrect Token type. Expected: \"<ID>\" but found: "
                  "\"DiagnosticCoverage\" @2"},
        FaultCase{"DistributionOfACommonCause",
                  "Actual CCFs { Actual CCF { Name \"f\" FailureDistribution { } } } System { }",
                  "Match Error #4: Incorrect Token type. Expected: \"Constant\" but found: "
                  "\"FailureDistribution\" @2"},
        FaultCase{"UnknownCommonCause",
                  "System { Component { Name \"C\" Implementation { FData { Basic Events { }\n"
                  "Potential CCFs { Potential CCF { Name \"heat\" ACCF\n\"fire\" } } } } } }",
                  "Actual CCF not found for Potential CCF: heat @4"},
        FaultCase{
            "DeviationWithoutLogic",
            "System { Component { Name \"C\" Port { Name \"p\" } Implementation { FData { "
            "Basic Events { } Output Deviations { Output Deviation { Name \"x-p\" } } } } } }",
            "Match Error #4: Incorrect Token type. Expected: \"<STRING>\" but found: \"}\" "
            "@2"},
        FaultCase{"BracketInLogic",
                  "System { Component { Name \"C\" Port { Name \"p\" } Implementation { FData { "
                  "Basic Events { Basic Event { Name \"a\" None { } } }\nOutput Deviations { "
                  "Output Deviation { Name \"x-p\"\n\"(a\" } } } } } }",
                  "Match Error #1: Ran out of tokens. Expected: \")\" @4"}),
    CaseName);

TEST_F(TextFaultsTest, DeviationOfAnUnknownPortEndsTheReading) {
  EXPECT_EQ(FaultOf(DataSystem("Basic Events { } Output Deviations { Output Deviation { Name "
                               "\"x-q\" \"\" } }"))
                .substr(0, 38),
            "Could not find port in component: DEFA");
}

TEST_F(TextFaultsTest, FaultLeavesTheFileLexerCurrentBehindLogic) {
  // Behind a string with logic, tokens come from the file again.
  EXPECT_EQ(
      FaultOf(DataSystem("Basic Events { Basic Event { Name \"a\" None { } } }\n"
                         "Output Deviations { Output Deviation { Name \"x-out\" \"a\" 7 } }")),
      "Match Error #3: Incorrect Token type - found Number. Expected: \"}\" but found: "
      "\"<NUMBER>\" with value: \"7\" @6");
}

TEST_F(TextFaultsTest, SystemsInSystemsHaveALimit) {
  std::string text;
  for (int i = 0; i < 1001; ++i) text += "System { Component { Name \"C\" Implementation { ";
  EXPECT_EQ(FaultOf(text), "Systems are nested too deeply @2");
}

}  // namespace
}  // namespace FTS
