#include <gmock/gmock.h>

#include <string>

#include "analysis/FaultTree.h"
#include "app/DiagnosticLog.h"
#include "app/ProgramPath.h"
#include "faulttree/FaultTreeNode.h"
#include "optimisation/SafetyLevelTest.h"
#include "output/VisitorCombinedXML.h"
#include "output/VisitorHTML.h"
#include "output/VisitorXML.h"
#include "platform/FileSystem.h"
#include "support/CapturedStreams.h"
#include "support/TemporaryFolder.h"

namespace FTS {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

class SafetyAllocationsTest : public SafetyLevelTest {
 protected:
  SafetyAllocationsTest() {
    Config::Instance().outputDir = output.Path();
    Config::Instance().runSilent = false;  // A silent run keeps no warnings.
  }

  void Allocate(int a, int b) {
    model->safetyAllocations.push_back(
        {{EventOf("A").prime, a}, {EventOf("B").prime, b}, {EventOf("C.Inner").prime, 5}});
  }
  std::string Trees() {
    VisitorXML writer;
    model->Accept(writer);
    return output.Read(model->GetFileStem() + "-FMEAOutput/FaultTrees.xml");
  }
  std::string Results() {
    VisitorCombinedXML writer;
    model->Accept(writer);
    return output.Read(model->GetFileStem() + "-Results/Results.xml");
  }
  static std::string Node(const std::string& name, const std::string& events,
                          const std::string& inside = "<SubNodes />") {
    return "<EncodingNode><Component><ShortName>" + name.substr(name.rfind('.') + 1) +
           "</ShortName><FullName>" + name + "</FullName></Component>" + events + inside +
           "</EncodingNode>";
  }
  std::string Event(const std::string& component, int level) const {
    return "<BasicEvents><BasicEvent><Name>dead</Name><ID>" + PrimeOf(component) +
           "</ID><SafetyRequirement>" + std::to_string(level) +
           "</SafetyRequirement></BasicEvent></BasicEvents>";
  }
  static std::string Individual(int id, const std::string& nodes, int cost) {
    return "<Individual><IndividualID>" + std::to_string(id) +
           "</IndividualID><Encoding><TreeASILEncoding>" + nodes +
           "</TreeASILEncoding></Encoding><Evaluations><Evaluation><Name>ASILCost</Name><Value>" +
           std::to_string(cost) + "</Value></Evaluation></Evaluations></Individual>";
  }

  TemporaryFolder output;
  CapturedStreams streams;
};

TEST_F(SafetyAllocationsTest, ModelWithoutAllocationsHasNoBlock) {
  EXPECT_THAT(Trees(), Not(HasSubstr("SafetyAllocations")));
  EXPECT_THAT(Results(), Not(HasSubstr("SafetyAllocations")));
}

TEST_F(SafetyAllocationsTest, AllocationsStandInTheirOrderWithLevelsAndCost) {
  Allocate(1, 2);
  Allocate(4, 0);
  const auto nodes = [this](int a, int b) {
    return Node("DEFAULT::A", Event("A", a)) + Node("DEFAULT::B", Event("B", b)) +
           Node("DEFAULT::C", "<BasicEvents />",
                "<SubNodes>" + Node("DEFAULT::C.Inner", Event("C.Inner", 5)) + "</SubNodes>");
  };
  EXPECT_THAT(Trees(),
              HasSubstr("</FaultTrees><SafetyAllocations><ModelFileName>" + model->GetName() +
                        "</ModelFileName><Objectives><Objective><Name>ASILCost</Name></Objective>"
                        "</Objectives><Population>" +
                        Individual(0, nodes(1, 2), 10 + 100 + 100000) +
                        Individual(1, nodes(4, 0), 10000 + 100000) +
                        "</Population></SafetyAllocations></Vel-Tarn_Results>"));
}

// The combined file has had the other order from its first version on.
TEST_F(SafetyAllocationsTest, BlockStandsBeforeWarningsOnlyInTheFileOfTrees) {
  Allocate(1, 1);
  Config::Instance().runSilent = false;  // A silent run keeps no warnings.
  DiagnosticLog::Instance().AddWarning("Something");
  EXPECT_THAT(Trees(), HasSubstr("</SafetyAllocations><WarningList>"));
  EXPECT_THAT(Results(), HasSubstr("</WarningList><SafetyAllocations>"));
}

TEST_F(SafetyAllocationsTest, CostStaysAtTheLargestInteger) {
  SafetyAllocation allocation;
  constexpr int Events = 30'000;
  for (int i = 0; i < Events; ++i) allocation[i] = 5;
  EXPECT_EQ(GetASILCost(allocation), 2147483647);
}

TEST_F(SafetyAllocationsTest, CutSetFilesHaveNoBlock) {
  Allocate(1, 1);
  VisitorXML writer;
  model->Accept(writer);
  const std::string folder = model->GetFileStem() + "-FMEAOutput/";
  for (const auto& tree : model->faultTrees) {
    const std::string file = "CutSets(" + std::to_string(tree->root->GetId()) + ").xml";
    EXPECT_THAT(output.Read(folder + file), Not(HasSubstr("SafetyAllocations")));
  }
}

TEST_F(SafetyAllocationsTest, EventsBeyondTheAllocationHaveNoLevel) {
  model->safetyAllocations.push_back({{EventOf("A").prime, 3}});
  EXPECT_THAT(Trees(), HasSubstr(Node("DEFAULT::B", Event("B", -1))));
  EXPECT_THAT(Trees(), HasSubstr("<Value>1000</Value>"));
}

// The string of a script ends at an apostrophe or a line break.
TEST_F(SafetyAllocationsTest, NamesOfAllocationsDoNotEndTheStringOfTheScript) {
  Allocate(1, 1);
  EventOf("A").name = "it's \"<dead>\"\n & gone";
  VisitorHTML writer;
  SetProgramPath(ProgramPathFromSystem());
  model->Accept(writer);
  SetProgramPath("");
  const std::string script = output.Read(model->GetFileStem() + "-FMEAOutput/model/FaultTrees.js");
  const std::size_t start = script.find("<SafetyAllocations>");
  const std::size_t end = script.find("</SafetyAllocations>");
  ASSERT_NE(start, std::string::npos);
  const std::string block = script.substr(start, end - start);
  EXPECT_THAT(block, HasSubstr("it&apos;s &quot;&lt;dead&gt;&quot;&#x0A; &amp; gone"));
  EXPECT_EQ(block.find_first_of("'\n"), std::string::npos);
}

}  // namespace
}  // namespace FTS
