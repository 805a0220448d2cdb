#include <gtest/gtest.h>

#include <set>
#include <string>

#include "support/ModelXml.h"
#include "support/ProcessStateTest.h"
#include "support/ProgramRun.h"
#include "support/TemporaryFolder.h"

namespace FTS {
namespace {

using CutSets = std::set<std::string>;

std::string Repeated(const std::string& text, int times) {
  std::string result;
  for (int i = 0; i < times; ++i) result += text;
  return result;
}

/// Runs of the program on model files in which a small thing of the text decides what they say, or
/// whether they can be read at all.
class ModelTextRunTest : public ProcessStateTest {
 protected:
  /// Two components without a line: A fails by its event, B by that logic.
  static std::string TwoBlocks(const std::string& hazard, const std::string& logicOfB) {
    return XmlModel(
        {XmlHazard("H", hazard)},
        XmlSystem({XmlLeaf("A", {"out"}, {{XmlEvent("dead")}, {XmlDeviation("Late-out", "dead")}}),
                   XmlLeaf("B", {"out"},
                           {{XmlEvent("a"), XmlEvent("b")}, {XmlDeviation("Late-out", logicOfB)}})},
                  {}));
  }

  ProgramRun Run(const std::string& text) const {
    return RunProgramWith(
        {folder.Write("m.xml", text), "outputdir=" + folder.Path(), "outputtype=RESULTS"});
  }

  /// What the analysis of a model finds that is read without a word.
  CutSets CutSetsOf(const std::string& text) const {
    const ProgramRun run = Run(text);
    EXPECT_EQ(run.exitStatus, 0);
    EXPECT_EQ(run.errors, "");
    if (!folder.Contains("m-Results/Results.xml")) return {"no results"};
    return ReadResults(folder.Path("m-Results/Results.xml")).at("H").cutSets;
  }

  TemporaryFolder folder;
};

// Comments

TEST_F(ModelTextRunTest, LogicGoesOnBehindAComment) {
  EXPECT_EQ(CutSetsOf(TwoBlocks("Late-B.out", "a <!-- the pump --> + b")),
            (CutSets{"DEFAULT::B.a", "DEFAULT::B.b"}));
}

TEST_F(ModelTextRunTest, LogicMayBeginWithAComment) {
  EXPECT_EQ(CutSetsOf(TwoBlocks("<!-- both -->Late-A.out AND\n<!-- of\nthem --> Late-B.out", "a")),
            (CutSets{"DEFAULT::A.dead;DEFAULT::B.a"}));
}

// The default perspective

TEST_F(ModelTextRunTest, HazardMayNameTheDefaultPerspective) {
  EXPECT_EQ(CutSetsOf(TwoBlocks("Late-DEFAULT::A.out", "a")), (CutSets{"DEFAULT::A.dead"}));
}

TEST_F(ModelTextRunTest, GlobalGotoMayNameTheDefaultPerspective) {
  EXPECT_EQ(CutSetsOf(TwoBlocks("Late-B.out", "a + GlobalGoto(Late-DEFAULT::A.out)")),
            (CutSets{"DEFAULT::A.dead", "DEFAULT::B.a"}));
}

TEST_F(ModelTextRunTest, LocalGotoMayNameTheDefaultPerspective) {
  EXPECT_EQ(CutSetsOf(TwoBlocks("Late-B.out", "a + LocalGoto(Late-DEFAULT::A.out)")),
            (CutSets{"DEFAULT::A.dead", "DEFAULT::B.a"}));
}

TEST_F(ModelTextRunTest, MissingDefaultPerspectiveIsReported) {
  const std::string system = XmlSystem(
      {XmlLeaf("A", {"out"}, {{XmlEvent("dead")}, {XmlDeviation("Late-out", "dead")}})}, {});
  const ProgramRun run =
      Run(XmlModel({XmlHazard("H", "Late-DEFAULT::A.out")},
                   Xml("Perspectives", Xml("Perspective", Xml("Name", "Plant") + system))));
  EXPECT_EQ(run.exitStatus, 0);
  EXPECT_EQ(run.errors,
            "ERROR: Perspective not found: Default\n"
            "\nERRORS: 1\nERROR: ERROR: Perspective not found: Default\n");
}

// Documents that cannot be read

TEST_F(ModelTextRunTest, EndOfACutOffDocumentIsNamed) {
  const ProgramRun run = Run("<Model>\n" + Repeated("<a/>", 1000));
  EXPECT_EQ(run.exitStatus, 0);
  EXPECT_EQ(run.errors, "XML parser error: Error reading Element value. at row: 2 column: 4001\n");
}

TEST_F(ModelTextRunTest, ElementWithVeryManyAttributesIsNamed) {
  std::string attributes;
  for (int i = 0; i < 90'000; ++i) attributes += " a" + std::to_string(i) + "=\"1\"";
  const ProgramRun run = Run("<Model>\n  <Name" + attributes + ">m</Name></Model>");
  EXPECT_EQ(run.exitStatus, 0);
  EXPECT_EQ(run.errors,
            "XML parser error: Error: an element has more than 1000 attributes in line 2. "
            "at row: 2 column: 3\n");
}

TEST_F(ModelTextRunTest, ComponentOfParenthesesWithoutEndIsNamed) {
  const ProgramRun run = Run(TwoBlocks("Late-B.out", std::string(50'000, '(')));
  EXPECT_EQ(run.exitStatus, 0);
  EXPECT_EQ(run.errors,
            "Expression with parentheses nested too deeply in component: DEFAULT::B at line "
            "number: 8\n");
}

TEST_F(ModelTextRunTest, HazardOfParenthesesWithoutEndIsNamed) {
  const ProgramRun run = Run(TwoBlocks(std::string(50'000, '('), "a"));
  EXPECT_EQ(run.errors,
            "Expression with parentheses nested too deeply in hazard: H at line number: 0\n");
}

}  // namespace
}  // namespace FTS
