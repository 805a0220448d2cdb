#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <ostream>
#include <regex>
#include <string>

#include "analysis/FaultTree.h"
#include "app/Config.h"
#include "faulttree/FaultTreeNode.h"
#include "platform/XmlOutput.h"
#include "support/BrakeModel.h"
#include "support/CapturedStreams.h"
#include "support/CaseName.h"
#include "support/Golden.h"
#include "support/ProcessStateTest.h"
#include "support/TemporaryFolder.h"
#include "support/ThrownMessage.h"
#include "support/TreeBuilder.h"

namespace FTS {
namespace {

class OpenPSATest : public ProcessStateTest {
 protected:
  /// What the graph adds to a tree's element: the elements one behind the other, ids left out.
  static std::string Definitions(FaultTreeNode& root) {
    const XmlOutput document("t");
    root.WriteOpenPSA(document.Root());
    static const std::regex outside("^[^]*<t>\n|</t>\n$");
    static const std::regex layout("\n *|^ +");
    static const std::regex id(" \\[-?[0-9]+\\]\"");
    const std::string inside = std::regex_replace(document.Text(), outside, "");
    return std::regex_replace(std::regex_replace(inside, layout, ""), id, "\"");
  }
  static std::string Definitions(const std::string& tree) { return Definitions(*Tree(tree)); }
};

// Nodes

struct ConnectiveCase {
  const char* name;
  const char* gate;
  const char* start;
  const char* end;
};

void PrintTo(const ConnectiveCase& row, std::ostream* stream) { *stream << row.name; }

class ConnectiveTest : public OpenPSATest, public ::testing::WithParamInterface<ConnectiveCase> {};

TEST_P(ConnectiveTest, StandsAroundTheReferences) {
  EXPECT_EQ(Definitions("T=" + std::string(GetParam().gate) + "(A, B)"),
            "<define-gate name=\"T\">" + std::string(GetParam().start) +
                "<basic-event name=\"A\" /><basic-event name=\"B\" />" + GetParam().end +
                "</define-gate>"
                "<define-basic-event name=\"A\" /><define-basic-event name=\"B\" />");
}

INSTANTIATE_TEST_SUITE_P(Gates, ConnectiveTest,
                         ::testing::Values(ConnectiveCase{"And", "AND", "<and>", "</and>"},
                                           ConnectiveCase{"Or", "OR", "<or>", "</or>"},
                                           ConnectiveCase{"Xor", "XOR", "<xor>", "</xor>"},
                                           // No reader is to take these for something else.
                                           ConnectiveCase{"Pand", "PAND", "<>", "</>"},
                                           ConnectiveCase{"Por", "POR", "<>", "</>"},
                                           ConnectiveCase{"Sand", "SAND", "<>", "</>"}),
                         CaseName);

TEST_F(OpenPSATest, NegationIsAConnectiveOfOneReference) {
  EXPECT_EQ(Definitions("T=NOT(A)"),
            "<define-gate name=\"T\"><not><basic-event name=\"A\" /></not></define-gate>"
            "<define-basic-event name=\"A\" />");
}

TEST_F(OpenPSATest, ProxyIsAGateWithoutConnective) {
  for (const std::string word : {"PROXY", "IN", "OUT", "EXPORTED", "GOTO", "STATE"}) {
    EXPECT_EQ(Definitions("T=" + word + "(A)"),
              "<define-gate name=\"T\"><basic-event name=\"A\" /></define-gate>"
              "<define-basic-event name=\"A\" />")
        << word;
  }
}

TEST_F(OpenPSATest, ProxyWithoutChildIsAnEmptyGate) {
  EXPECT_EQ(Definitions("T=AND(A, P=IN())"),
            "<define-gate name=\"T\"><and><basic-event name=\"A\" /><gate name=\"P\" /></and>"
            "</define-gate><define-basic-event name=\"A\" /><define-gate name=\"P\" />");
}

TEST_F(OpenPSATest, GateWithoutChildrenKeepsItsConnective) {
  EXPECT_EQ(Definitions("T=OR()"), "<define-gate name=\"T\"><or /></define-gate>");
}

TEST_F(OpenPSATest, ProxyAndGateAreReferredToAsGates) {
  EXPECT_EQ(Definitions("T=OR(P=OUT(A), G=AND(B))"),
            "<define-gate name=\"T\"><or><gate name=\"P\" /><gate name=\"G\" /></or></define-gate>"
            "<define-gate name=\"P\"><basic-event name=\"A\" /></define-gate>"
            "<define-basic-event name=\"A\" />"
            "<define-gate name=\"G\"><and><basic-event name=\"B\" /></and></define-gate>"
            "<define-basic-event name=\"B\" />");
}

TEST_F(OpenPSATest, SharedNodeHasOneDefinitionAndTwoReferences) {
  EXPECT_EQ(
      Definitions("T=AND(L=OR(G=AND(A), A), R=OR(G))"),
      "<define-gate name=\"T\"><and><gate name=\"L\" /><gate name=\"R\" /></and></define-gate>"
      "<define-gate name=\"L\"><or><gate name=\"G\" /><basic-event name=\"A\" /></or>"
      "</define-gate>"
      "<define-gate name=\"G\"><and><basic-event name=\"A\" /></and></define-gate>"
      "<define-basic-event name=\"A\" />"
      "<define-gate name=\"R\"><or><gate name=\"G\" /></or></define-gate>");
}

TEST_F(OpenPSATest, ChildThatComesTwiceIsReferredToTwice) {
  EXPECT_EQ(Definitions("T=OR(A, A)"),
            "<define-gate name=\"T\"><or><basic-event name=\"A\" /><basic-event name=\"A\" /></or>"
            "</define-gate><define-basic-event name=\"A\" />");
}

TEST_F(OpenPSATest, LoopEndsTheWalk) {
  const ScopedGraph loop(Tree("T=OR(A, P=OUT(T))"));
  EXPECT_EQ(Definitions(*loop),
            "<define-gate name=\"T\"><or><basic-event name=\"A\" /><gate name=\"P\" /></or>"
            "</define-gate><define-basic-event name=\"A\" />"
            "<define-gate name=\"P\"><gate name=\"T\" /></define-gate>");
}

TEST_F(OpenPSATest, EventAtTheTopIsADefinitionAlone) {
  EXPECT_EQ(Definitions("A"), "<define-basic-event name=\"A\" />");
}

TEST_F(OpenPSATest, NamesCarryTheIdAndAreEscaped) {
  const auto event =
      std::make_shared<BasicEvent>("<5 V> & 'cold'", nullptr, true, NodeType::FailureMode, 7);
  const XmlOutput document("t");
  event->WriteOpenPSA(document.Root());
  EXPECT_EQ(document.Text(),
            "<?xml version=\"1.0\" encoding=\"iso-8859-1\" ?>\n<t>\n    <define-basic-event "
            "name=\"&lt;5 V&gt; &amp; &apos;cold&apos; [7]\" />\n</t>\n");
}

// Document

class OpenPSADocumentTest : public OpenPSATest {
 protected:
  OpenPSADocumentTest() { Config::Instance().outputDir = folder.Path(); }

  TemporaryFolder folder;
  BrakeModel brake;
  CapturedStreams streams;
};

TEST_F(OpenPSADocumentTest, HoldsEveryTreeWithItsOwnDefinitions) {
  EXPECT_GOLDEN(brake.Get().MakeOpenPSADocument()->Text(), "output/brake.v2.xml");
}

TEST_F(OpenPSADocumentTest, NamesATreeWithoutTopNodeByAQuestionMark) {
  brake.Get().faultTrees.clear();
  AddTree(brake.Get(), nullptr);
  EXPECT_EQ(brake.Get().MakeOpenPSADocument()->Text(),
            "<?xml version=\"1.0\" encoding=\"iso-8859-1\" ?>\n<opsa-mef>\n"
            "    <define-fault-tree name=\"?\" />\n</opsa-mef>\n");
}

TEST_F(OpenPSADocumentTest, LeavesOutTreesThatCannotBeAnalysed) {
  brake.Loss().unbreakable = true;
  const std::string text = brake.Get().MakeOpenPSADocument()->Text();
  EXPECT_EQ(text.find("Loss of braking"), std::string::npos) << text;
  EXPECT_NE(text.find("<define-fault-tree name=\"Braking late\">"), std::string::npos) << text;
}

TEST_F(OpenPSADocumentTest, OfAModelWithoutTreesIsARootAlone) {
  brake.Get().faultTrees.clear();
  EXPECT_EQ(brake.Get().MakeOpenPSADocument()->Text(),
            "<?xml version=\"1.0\" encoding=\"iso-8859-1\" ?>\n<opsa-mef />\n");
}

TEST_F(OpenPSADocumentTest, IsSavedUnderTheNameOfTheModelFile) {
  brake.Get().SaveOpenPSADocument(*brake.Get().MakeOpenPSADocument());
  EXPECT_GOLDEN(folder.Read("brake.v2-FMEAOutput/brake.v2.xml"), "output/brake.v2.xml");
  EXPECT_EQ(streams.Output(), "Outputting to OpenPSA\n");
}

TEST_F(OpenPSADocumentTest, IsSavedWithoutAWordInASilentRun) {
  Config::Instance().runSilent = true;
  brake.Get().SaveOpenPSADocument(*brake.Get().MakeOpenPSADocument());
  EXPECT_TRUE(folder.Contains("brake.v2-FMEAOutput/brake.v2.xml"));
  EXPECT_EQ(streams.Output(), "");
}

TEST_F(OpenPSADocumentTest, FolderThatCannotBeMadeIsNamedByItsOperation) {
  Config::Instance().outputDir = folder.Write("file", "");
  try {
    brake.Get().SaveOpenPSADocument(XmlOutput("opsa-mef"));
    ADD_FAILURE() << "nothing was thrown";
  } catch (const std::filesystem::filesystem_error& error) {
    EXPECT_NE(std::string(error.what()).find("create_directories"), std::string::npos)
        << error.what();
  }
}

TEST_F(OpenPSADocumentTest, FileThatCannotBeWrittenIsNamed) {
  folder.Write("brake.v2-FMEAOutput/brake.v2.xml/in-the-way", "");  // Its folder stands there.
  EXPECT_EQ(ThrownMessage([&] { brake.Get().SaveOpenPSADocument(XmlOutput("opsa-mef")); }),
            "Cannot write file: " + folder.Path("brake.v2-FMEAOutput/brake.v2.xml"));
}

}  // namespace
}  // namespace FTS
