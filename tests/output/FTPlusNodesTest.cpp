#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "app/Config.h"
#include "app/DiagnosticLog.h"
#include "faulttree/BasicEvent.h"
#include "faulttree/FaultTreeGate.h"
#include "output/FTPlusProject.h"
#include "support/CapturedStreams.h"
#include "support/CaseName.h"
#include "support/FaultTreePlusInstallation.h"
#include "support/ProcessStateTest.h"
#include "support/TreeBuilder.h"

namespace FTS {
namespace {

std::shared_ptr<BasicEvent> EventOf(const std::string& name, int id) {
  return std::make_shared<BasicEvent>(name, nullptr, true, NodeType::FailureMode, id);
}

/// A gate of id 100 over that many events, of ids 1, 2 and so on.
std::shared_ptr<FaultTreeGate> WideGate(NodeType type, int inputs) {
  const auto gate = MakeGate(type, "Top", nullptr, 100);
  for (int i = 1; i <= inputs; ++i) gate->AddChild(EventOf("e", i));
  return gate;
}

class FTPlusNodesTest : public ProcessStateTest {
 protected:
  std::map<int, int> records;
  FaultTreePlusInstallation installation;
  std::unique_ptr<DynamicLibrary> library = installation.Load();
  FTPlusProject project{*library, records, FTPlusProject::CurrentVersion};
  CapturedStreams streams;

  static const std::vector<std::string>& Warnings() { return DiagnosticLog::Instance().Warnings(); }

  void Refuse(const char* field) const { library->Find<void(const char*)>("RefuseField")(field); }
  std::string Calls(const std::string& start = "") const { return CallsOf(*library, start); }

  /// What the value of the gate's field "Type" is.
  std::string TypeOf(const FaultTreeNode::Pointer& node, FTPlusProject& target) const {
    EXPECT_TRUE(node->ExportFTPlusNode(target));
    const std::string start = "Gates 1 Type: '' ";
    const std::string call = Calls(start);
    return call.substr(start.size(), call.find(" 0\n") - start.size());
  }

  /// The record of a kludge gate or of an event in each input: "1: 2 3, 4: 5".
  std::string InputsText() const {
    std::string text;
    const std::string all = Calls("Gates ");
    std::string gate;
    std::size_t start = 0;
    for (std::size_t end = all.find('\n'); end != std::string::npos; end = all.find('\n', start)) {
      const std::string line = all.substr(start, end - start);
      start = end + 1;
      const std::size_t field = line.find(" Input Index ");
      if (field == std::string::npos) continue;
      const std::string record = line.substr(6, field - 6);
      const std::size_t value = line.find(": '' ") + 5;
      if (record != gate) text += (text.empty() ? "" : ", ") + record + ":";
      gate = record;
      text += " " + line.substr(value, line.find(' ', value) - value);
    }
    return text;
  }
};

// Short names

struct ShortNameCase {
  const char* name;
  std::string text;
  int id;
  std::string expected;
};

void PrintTo(const ShortNameCase& row, std::ostream* stream) { *stream << row.name; }

class ShortNameTest : public ProcessStateTest,
                      public ::testing::WithParamInterface<ShortNameCase> {};

TEST_P(ShortNameTest, HasAtMostThirtyTwoCharacters) {
  EXPECT_EQ(EventOf(GetParam().text, GetParam().id)->GetFTPlusName(), GetParam().expected);
  EXPECT_LE(GetParam().expected.size(), 32U);
}

INSTANTIATE_TEST_SUITE_P(
    Names, ShortNameTest,
    ::testing::Values(ShortNameCase{"Short", "stuck", 7, "stuck(7)"},
                      ShortNameCase{"Empty", "", 7, "(7)"},
                      ShortNameCase{"ThatJustFits", "abcdefghijklmnopqrstuvwxyz0", 123,
                                    "abcdefghijklmnopqrstuvwxyz0(123)"},
                      ShortNameCase{"OneCharacterTooLong", "abcdefghijklmnopqrstuvwxyz01", 123,
                                    "abcdefghijklmnopqrstuvwxy..(123)"},
                      ShortNameCase{"OfFortyCharacters", "abcdefghijklmnopqrstuvwxyz0123456789ABCD",
                                    12345, "abcdefghijklmnopqrstuvw..(12345)"}),
    CaseName);

TEST_F(FTPlusNodesTest, ShortNameOfAComplementHasItsOwnId) {
  const auto event = EventOf("abcdefghijklmnopqrstuvwxyz01", 12);
  EXPECT_EQ(event->GetComplement()->GetFTPlusName(),
            "\xAC"
            "abcdefghijklmnopqrstuvwx..(-12)");
}

TEST_F(FTPlusNodesTest, DescriptionIsCutAtWhatTheToolTakes) {
  const auto event = EventOf("e", 1);
  event->description = std::string(119, 'x');
  EXPECT_EQ(event->GetFTPlusDescription(), std::string(119, 'x'));
  event->description += "y";
  EXPECT_EQ(event->GetFTPlusDescription(), std::string(119, 'x'));
}

// Records

TEST_F(FTPlusNodesTest, GatesAndEventsAreRecordsParentsFirst) {
  const auto top = MakeGate(NodeType::Or, "Top", nullptr, 100);
  const auto gate = MakeGate(NodeType::And, "", nullptr, 50);
  top->description = "No stop";
  top->AddChild(gate);
  top->AddChild(EventOf("a", 1));
  gate->AddChild(EventOf("b", 2));
  gate->AddChild(EventOf("c", 3));
  EXPECT_TRUE(top->ExportFTPlusNode(project));
  EXPECT_EQ(Calls(),
            "Gates: Top(100) = 1\n"
            "Gates 1 Type: '' 0 0\n"
            "Gates 1 Description: 'No stop' 0 0\n"
            "Gates: (50) = 2\n"
            "Gates 2 Type: '' 1 0\n"
            "Gates 2 Description: '' 0 0\n"
            "Events: b(2) = 3\n"
            "Events 3 Description: '' 0 0\n"
            "Events: c(3) = 4\n"
            "Events 4 Description: '' 0 0\n"
            "Events: a(1) = 5\n"
            "Events 5 Description: '' 0 0\n");
  EXPECT_EQ(records, (std::map<int, int>{{1, 5}, {2, 3}, {3, 4}, {50, 2}, {100, 1}}));
}

TEST_F(FTPlusNodesTest, NodeOfTwoTreesOrOfTwoParentsIsOneRecord) {
  TreeBuilder builder;
  const auto first = builder.Tree("AND(G=OR(A, B), OR(G), A)");
  const auto second = builder.Tree("OR(G, A)");
  EXPECT_TRUE(first->ExportFTPlusNode(project));
  EXPECT_TRUE(second->ExportFTPlusNode(project));
  EXPECT_EQ(records.size(), 6U);
  EXPECT_EQ(Calls("Events: A("),
            "Events: A(" + std::to_string(builder.Event("A")->GetId()) +
                ") = " + std::to_string(records.at(builder.Event("A")->GetId())) + "\n");
}

TEST_F(FTPlusNodesTest, NodeThatHasARecordGetsNoOther) {
  records[100] = 77;
  const auto gate = WideGate(NodeType::Or, 2);
  EXPECT_TRUE(gate->ExportFTPlusNode(project));
  EXPECT_EQ(Calls("Gates"), "");
  EXPECT_EQ(records.at(100), 77);
  EXPECT_EQ(records.at(1), 1);
}

TEST_F(FTPlusNodesTest, GateWithoutChildrenHasNoRecord) {
  const auto top = Tree("OR(A, AND())");
  EXPECT_TRUE(top->ExportFTPlusNode(project));
  EXPECT_EQ(records.size(), 2U);
  EXPECT_EQ(Calls("Gates: Gate"), "");
}

TEST_F(FTPlusNodesTest, RecordThatCannotBeMadeIsToldAndTheExportGoesOn) {
  library->Find<void()>("RefuseRecords")();
  EXPECT_TRUE(WideGate(NodeType::Or, 1)->ExportFTPlusNode(project));
  EXPECT_EQ(streams.Output(), "FTPID not set! (-1)\nFTPID not set! (-1)\n");
  EXPECT_EQ(records, (std::map<int, int>{{1, -1}, {100, -1}}));
}

struct FTPlusGateTypeCase {
  const char* name;
  const char* tree;
  const char* current;
  const char* legacy;
};

void PrintTo(const FTPlusGateTypeCase& row, std::ostream* stream) { *stream << row.name; }

class FTPlusGateTypeTest : public FTPlusNodesTest,
                           public ::testing::WithParamInterface<FTPlusGateTypeCase> {};

TEST_P(FTPlusGateTypeTest, WithACurrentLibrary) {
  EXPECT_EQ(TypeOf(Tree(GetParam().tree), project), GetParam().current);
}

TEST_P(FTPlusGateTypeTest, WithALegacyLibrary) {
  FTPlusProject legacy(*library, records, FTPlusProject::LegacyVersion);
  EXPECT_EQ(TypeOf(Tree(GetParam().tree), legacy), GetParam().legacy);
}

INSTANTIATE_TEST_SUITE_P(Types, FTPlusGateTypeTest,
                         ::testing::Values(FTPlusGateTypeCase{"And", "AND(A, B)", "1", "1"},
                                           FTPlusGateTypeCase{"Or", "OR(A, B)", "0", "0"},
                                           FTPlusGateTypeCase{"AndOfOne", "AND(A)", "8", "8"},
                                           FTPlusGateTypeCase{"OrOfOne", "OR(A)", "8", "8"},
                                           FTPlusGateTypeCase{"Proxy", "PROXY(A)", "8", "8"},
                                           FTPlusGateTypeCase{"Negation", "NOT(A)", "8", "8"},
                                           FTPlusGateTypeCase{"XorOfOne", "XOR(A)", "8", "8"},
                                           // Deliberately the version of the library.
                                           FTPlusGateTypeCase{"Xor", "XOR(A, B)", "2", "1"},
                                           FTPlusGateTypeCase{"Pand", "PAND(A, B)", "2", "1"}),
                         CaseName);

// What goes wrong with single fields

struct RefusalCase {
  const char* name;
  const char* field;
  const char* told;
};

void PrintTo(const RefusalCase& row, std::ostream* stream) { *stream << row.name; }

class FieldRefusalTest : public FTPlusNodesTest,
                         public ::testing::WithParamInterface<RefusalCase> {};

TEST_P(FieldRefusalTest, IsToldAndTheExportGoesOn) {
  Refuse(GetParam().field);
  const auto top = MakeGate(NodeType::Or, "Top", nullptr, 100);
  top->AddChild(EventOf("a", 1));
  top->AddChild(MakeGate(NodeType::And, "", nullptr, 50));
  top->GetChild(1)->AddChild(EventOf("b", 2));
  EXPECT_TRUE(top->ExportFTPlusNode(project));
  project.StartPass();
  EXPECT_TRUE(top->ExportFTPlusLinks(project));
  EXPECT_EQ(streams.Output(), GetParam().told);
  EXPECT_TRUE(Warnings().empty());
}

INSTANTIATE_TEST_SUITE_P(
    Fields, FieldRefusalTest,
    ::testing::Values(
        RefusalCase{"Type", "Type", " 1: error setting node type \n 3: error setting node type \n"},
        RefusalCase{"Description", "Description",
                    " 1: error setting node description \n"
                    " 2: error setting basic event description \n"
                    " 3: error setting node description \n"
                    " 4: error setting basic event description \n"},
        RefusalCase{"InputType", "Input Type 0",
                    " 1: error adding event (1) to parent 1 \n"
                    " 3: error adding event (2) to parent 1 \n"},
        RefusalCase{"InputIndex", "Input Index 0",
                    " 1: error adding event (1) to parent 2 \n"
                    " 3: error adding event (2) to parent 2 \n"},
        // Two blanks in the one text and one in the other.
        RefusalCase{"GateInputType", "Input Type 1", " 1: error adding gate (50) to parent 1  \n"},
        RefusalCase{"GateInputIndex", "Input Index 1",
                    " 1: error adding gate (50) to parent 2 \n"}),
    CaseName);

TEST_F(FTPlusNodesTest, SilentRunTellsNothing) {
  Config::Instance().runSilent = true;
  Refuse("*");
  library->Find<void()>("RefuseRecords")();
  const auto top = WideGate(NodeType::Or, 19);
  EXPECT_TRUE(top->ExportFTPlusNode(project));
  EXPECT_TRUE(top->ExportFTPlusLinks(project));
  EXPECT_EQ(streams.Output(), "");
}

TEST_F(FTPlusNodesTest, LibraryWithoutRecordsIsAWarningForEachWalk) {
  for (const char* missing : {"_PSADLLCreateRecord@8", "_PSADLLSetFieldValue@28"}) {
    const PartialLibrary partial(*library, {missing});
    FTPlusProject broken(partial, records, FTPlusProject::CurrentVersion);
    EXPECT_FALSE(Tree("OR(A)")->ExportFTPlusNode(broken));
    EXPECT_FALSE(Tree("OR(A)")->ExportFTPlusLinks(broken));
  }
  EXPECT_EQ(Warnings(), std::vector<std::string>(4, "Couldn't load FT+ DLL Functions"));
  EXPECT_TRUE(records.empty());
}

// Links

TEST_F(FTPlusNodesTest, ChildrenAreInputsInTheirOrder) {
  const auto top = MakeGate(NodeType::Or, "Top", nullptr, 100);
  top->AddChild(EventOf("a", 1));
  top->AddChild(MakeGate(NodeType::And, "", nullptr, 50));
  top->GetChild(1)->AddChild(EventOf("b", 2));
  records = {{1, 11}, {2, 12}, {50, 15}, {100, 10}};
  EXPECT_TRUE(top->ExportFTPlusLinks(project));
  EXPECT_EQ(Calls(),
            "Gates 10 Input Type 0: '' 0 0\n"
            "Gates 10 Input Index 0: '' 11 0\n"
            "Gates 10 Input Type 1: '' 1 0\n"
            "Gates 10 Input Index 1: '' 15 0\n"
            "Gates 15 Input Type 0: '' 0 0\n"
            "Gates 15 Input Index 0: '' 12 0\n");
}

TEST_F(FTPlusNodesTest, SharedNodeIsLinkedFromEachParentAndItsOwnInputsOnce) {
  const auto shared = MakeGate(NodeType::Or, "S", nullptr, 50);
  shared->AddChild(EventOf("a", 1));
  const auto top = MakeGate(NodeType::And, "T", nullptr, 100);
  const auto other = MakeGate(NodeType::And, "U", nullptr, 101);
  top->AddChild(shared);
  top->AddChild(shared);
  other->AddChild(shared);
  records = {{1, 11}, {50, 15}, {100, 10}, {101, 20}};
  EXPECT_TRUE(top->ExportFTPlusLinks(project));
  EXPECT_TRUE(other->ExportFTPlusLinks(project));
  EXPECT_EQ(InputsText(), "10: 15 15, 15: 11, 20: 15");
}

TEST_F(FTPlusNodesTest, ChildWithoutRecordIsMinusOne) {
  const auto top = Tree("OR(A, AND())");
  EXPECT_TRUE(top->ExportFTPlusLinks(project));
  EXPECT_EQ(InputsText(), "-1: -1 -1");
}

struct ChainCase {
  const char* name;
  int inputs;
  const char* expected;  // Events have the records of their ids, the gate has 100.
};

void PrintTo(const ChainCase& row, std::ostream* stream) { *stream << row.name; }

class ChainTest : public FTPlusNodesTest, public ::testing::WithParamInterface<ChainCase> {
 protected:
  /// The first record that the library makes; events have no more than 40.
  static constexpr int Further = 41;

  void Export(const std::shared_ptr<FaultTreeGate>& gate) {
    for (int i = 1; i < Further; ++i) {
      library->Find<std::uint32_t(const char*, const char*)>("_PSADLLCreateRecord@8")("Unused", "");
    }
    for (int i = 1; i < Further; ++i) records[i] = i;
    records[100] = 100;
    EXPECT_TRUE(gate->ExportFTPlusLinks(project));
  }
};

TEST_P(ChainTest, SplitsWhatIsTooWide) {
  Export(WideGate(NodeType::Or, GetParam().inputs));
  EXPECT_EQ(InputsText(), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Widths, ChainTest,
    ::testing::Values(
        ChainCase{"Seventeen", 17, "100: 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17"},
        ChainCase{"Eighteen", 18, "100: 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18"},
        ChainCase{"Nineteen", 19, "100: 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 41, 41: 18 19"},
        ChainCase{"ThirtySix", 36,
                  "100: 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 41, "
                  "41: 18 19 20 21 22 23 24 25 26 27 28 29 30 31 32 33 34 35 36"},
        ChainCase{"ThirtySeven", 37,
                  "100: 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 41, "
                  "41: 18 19 20 21 22 23 24 25 26 27 28 29 30 31 32 33 34 42, 42: 35 36 37"}),
    CaseName);

TEST_F(ChainTest, FurtherGateIsMadeBeforeItIsAnInput) {
  Export(WideGate(NodeType::And, 19));
  const std::string calls = Calls();
  const std::size_t start = calls.find("Gates: ");
  EXPECT_EQ(calls.substr(start, calls.find("Gates 41 Input") - start),
            "Gates: Kludge-1 = 41\n"
            "Gates 41 Type: '' 1 0\n"
            "Gates 100 Input Type 17: '' 1 0\n"
            "Gates 100 Input Index 17: '' 41 0\n");
  EXPECT_EQ(Calls("Gates 41 Description"), "");
}

TEST_F(ChainTest, FurtherGatesAreNumberedThroughTheRun) {
  Export(WideGate(NodeType::Or, 19));
  project.StartPass();
  Export(WideGate(NodeType::Or, 37));
  EXPECT_EQ(Calls("Gates: "), "Gates: Kludge-1 = 41\nGates: Kludge-2 = 82\nGates: Kludge-3 = 83\n");
}

TEST_F(ChainTest, FurtherGateHasTheTypeOfItsNode) {
  Export(WideGate(NodeType::Or, 19));
  EXPECT_EQ(Calls("Gates 41 Type"), "Gates 41 Type: '' 0 0\n");
  project.StartPass();
  Export(WideGate(NodeType::PAnd, 19));
  EXPECT_EQ(Calls("Gates 82 Type"), "Gates 82 Type: '' 2 0\n");
}

TEST_F(ChainTest, RefusedFieldsOfAFurtherGateAreTold) {
  Refuse("Type");
  Export(WideGate(NodeType::Or, 19));
  EXPECT_EQ(streams.Output(), " 41: error12 calling dll in kludge, how annoying\n");
}

TEST_F(ChainTest, RefusedLinkToAFurtherGateIsToldWithItsRecord) {
  Refuse("Input Type 17");
  Export(WideGate(NodeType::Or, 19));
  Refuse("Input Index 17");
  project.StartPass();
  Export(WideGate(NodeType::Or, 19));
  EXPECT_EQ(streams.Output(),
            " 41: error adding kludge gate to parent 1 \n"
            " 82: error adding kludge gate to parent 2 \n");
}

// Failure models

struct ModelCase {
  const char* name;
  FailureModel model;
  const char* current;  // Type and parameters by field number.
  const char* legacy;
  const char* currentWarning;
  const char* legacyWarning;
};

void PrintTo(const ModelCase& row, std::ostream* stream) { *stream << row.name; }

class FTPlusModelTest : public FTPlusNodesTest, public ::testing::WithParamInterface<ModelCase> {
 protected:
  static std::shared_ptr<BasicEvent> Make() {
    auto event = EventOf("e", 1);
    event->failureModel = GetParam().model;
    event->unavailability = 0.125;
    int value = 10;
    for (const char* parameter : {"FailureRate", "RepairRate", "MTTR", "MTTF", "Unavailability",
                                  "n", "m", "s", "InspectionTime", "RiskTime"}) {
      event->SetParameter(parameter, ++value);
    }
    return event;
  }

  /// "7, 0=11, 2=20" for the type 7 and two parameters.
  std::string ModelText() const {
    const std::string type = "Events 1 Local Model Type: '' ";
    const std::string parameter = "Events 1 Local Model Parameter ";
    std::string text = Calls(type);
    if (!text.empty()) text = text.substr(type.size(), text.find(" 0\n") - type.size());
    const std::string all = Calls(parameter);
    for (std::size_t at = all.find(parameter); at != std::string::npos;
         at = all.find(parameter, at + 1)) {
      const std::size_t end = all.find('\n', at);
      const std::string line = all.substr(at + parameter.size(), end - at - parameter.size());
      text += ", " + line.substr(0, 1) + "=" + line.substr(line.rfind(' ') + 1);
    }
    return text;
  }

  static std::vector<std::string> Expected(const std::string& warning) {
    return warning.empty() ? std::vector<std::string>() : std::vector<std::string>{warning};
  }
};

TEST_P(FTPlusModelTest, WithACurrentLibrary) {
  EXPECT_TRUE(Make()->ExportFTPlusNode(project));
  EXPECT_EQ(ModelText(), GetParam().current);
  EXPECT_EQ(Warnings(), Expected(GetParam().currentWarning));
}

TEST_P(FTPlusModelTest, WithALegacyLibrary) {
  FTPlusProject legacy(*library, records, FTPlusProject::LegacyVersion);
  EXPECT_TRUE(Make()->ExportFTPlusNode(legacy));
  EXPECT_EQ(ModelText(), GetParam().legacy);
  EXPECT_EQ(Warnings(), Expected(GetParam().legacyWarning));
}

#define LEGACY(word)                                              \
  "Using legacy Fault Tree Plus DLL which does not support " word \
  " - Outputting to unavailability as FIXED."
constexpr const char* NoMttf =
    "Fault Tree Plus does not support this method MTTF - Outputting to unavailability as FIXED.";
constexpr const char* Fixed = "0, 0=0.125";

INSTANTIATE_TEST_SUITE_P(
    Models, FTPlusModelTest,
    ::testing::Values(
        ModelCase{"Constant", FailureModel::CONSTANT, "1, 0=11, 2=12", "1, 0=11, 2=12", "", ""},
        ModelCase{"Mttr", FailureModel::MTTR, "10, 0=11, 2=13", Fixed, "", LEGACY("RATEMTTR")},
        ModelCase{"Mttf", FailureModel::MTTF, Fixed, Fixed, NoMttf, NoMttf},
        ModelCase{"MttfMttr", FailureModel::MTTFMTTR, "2, 0=14, 2=13", "2, 0=14, 2=13", "", ""},
        ModelCase{"FixedValue", FailureModel::FIXED, "0, 0=15", "0, 0=15", "", ""},
        ModelCase{"Time", FailureModel::TIME, "7, 0=11, 2=20", Fixed, "", LEGACY("TIMEATRISK")},
        ModelCase{"Binomial", FailureModel::BINOMIAL, "8, 0=11, 2=12, 4=16, 5=17", Fixed, "",
                  LEGACY("BINOMIAL")},
        ModelCase{"Poisson", FailureModel::POISSON, "9, 0=11, 2=16, 3=18", Fixed, "",
                  LEGACY("POISSON")},
        ModelCase{"Dormant", FailureModel::DORMANT, "3, 0=11, 2=13, 4=19", "3, 0=11, 2=13, 4=19",
                  "", ""},
        ModelCase{"Sequential", FailureModel::SEQUENTIAL, "", "", "", ""},
        ModelCase{"Variable", FailureModel::VARIABLE, "", "", "", ""},
        ModelCase{"Distribution", FailureModel::DISTRIBUTION, "", "", "", ""},
        ModelCase{"None", FailureModel::NONE, "", "", "", ""}),
    CaseName);

struct ModelRefusalCase {
  const char* name;
  FailureModel model;
  std::string told;
};

void PrintTo(const ModelRefusalCase& row, std::ostream* stream) { *stream << row.name; }

class ModelRefusalTest : public FTPlusNodesTest,
                         public ::testing::WithParamInterface<ModelRefusalCase> {};

TEST_P(ModelRefusalTest, IsToldWithModelAndParameter) {
  Refuse("*");
  const auto event = EventOf("e", 1);
  event->failureModel = GetParam().model;
  EXPECT_TRUE(event->ExportFTPlusNode(project));
  EXPECT_EQ(streams.Output(), " 1: error setting basic event description \n" + GetParam().told);
}

INSTANTIATE_TEST_SUITE_P(
    Models, ModelRefusalTest,
    ::testing::Values(ModelRefusalCase{"Constant", FailureModel::CONSTANT,
                                       " 1: error setting PSA_RATE \n"
                                       " 1: error setting UF_CONSTANT - FailureRate \n"
                                       " 1: error setting UF_CONSTANT - RepairRate \n"},
                      ModelRefusalCase{"Mttr", FailureModel::MTTR,
                                       " 1: error setting PSA_RATEMTTR \n"
                                       " 1: error setting UF_MTTR - FailureRate \n"
                                       " 1: error setting UF_MTTR - MTTR \n"},
                      ModelRefusalCase{"Mttf", FailureModel::MTTF,
                                       " 1: error setting UF_MTTF - FailureRate \n"
                                       " 1: error setting PSA_FIXED - Unavailability \n"},
                      ModelRefusalCase{"MttfMttr", FailureModel::MTTFMTTR,
                                       " 1: error setting UF_MTTFMTTR - FailureRate \n"
                                       " 1: error setting UF_MTTFMTTR - MTTF \n"
                                       " 1: error setting UF_MTTFMTTR - MTTR \n"},
                      ModelRefusalCase{"FixedValue", FailureModel::FIXED,
                                       " 1: error setting UF_FIXED \n"
                                       " 1: error setting UF_FIXED - Unavailability \n"},
                      ModelRefusalCase{"Time", FailureModel::TIME,
                                       " 1: error setting UF_TIME \n"
                                       " 1: error setting UF_TIME - FailureRate \n"
                                       " 1: error setting UF_TIME - RiskTime \n"},
                      ModelRefusalCase{"Binomial", FailureModel::BINOMIAL,
                                       " 1: error setting UF_BINOMIAL \n"
                                       " 1: error setting UF_BINOMIAL - FailureRate \n"
                                       " 1: error setting UF_BINOMIAL - RepairRate \n"
                                       " 1: error setting UF_BINOMIAL - TotalFailureEvents \n"
                                       " 1: error setting UF_BINOMIAL - MinFailureEvents \n"},
                      ModelRefusalCase{"Poisson", FailureModel::POISSON,
                                       " 1: error setting UF_POISSON \n"
                                       " 1: error setting UF_POISSON - FailureRate \n"
                                       " 1: error setting UF_POISSON - RequiredComponents \n"
                                       " 1: error setting UF_POISSON - SpareComponents \n"},
                      ModelRefusalCase{"Dormant", FailureModel::DORMANT,
                                       " 1: error setting UF_DORMANT \n"
                                       " 1: error setting UF_DORMANT - FailureRate \n"
                                       " 1: error setting UF_DORMANT - MTTR \n"
                                       " 1: error setting UF_DORMANT - InspectionTime \n"},
                      ModelRefusalCase{"None", FailureModel::NONE, ""}),
    CaseName);

}  // namespace
}  // namespace FTS
