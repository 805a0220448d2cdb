#include <sstream>
#include <string>
#include <vector>

#include "model/BuildInfo.h"
#include "model/Enumerations.h"
#include "model/IPrintable.h"
#include "model/ISafetyRequirementTarget.h"
#include "model/VtnException.h"
#include "support/ProcessStateTest.h"

namespace FTS {
namespace {

class BaseTypesTest : public ProcessStateTest {};

template <typename Enumeration>
std::vector<std::string> TextsOf(int count) {
  std::vector<std::string> texts;
  for (int i = 0; i < count; ++i) texts.push_back(ToText(static_cast<Enumeration>(i)));
  return texts;
}

using Texts = std::vector<std::string>;

TEST_F(BaseTypesTest, NodeTypesPrintInTheOrderOfTheirNumbers) {
  EXPECT_EQ(TextsOf<NodeType>(20), (Texts{"NullOp",
                                          "Or",
                                          "And",
                                          "PAnd",
                                          "SAnd",
                                          "POr",
                                          "Not",
                                          "XOr",
                                          "InputDeviation",
                                          "OutputDeviation",
                                          "FailureMode",
                                          "Circle",
                                          "PCCF",
                                          "ACCF",
                                          "Module",
                                          "External",
                                          "ExternalDeviation",
                                          "Normal",
                                          "Complement",
                                          "State"}));
}

TEST_F(BaseTypesTest, BlockTypesPrintInTheOrderOfTheirNumbers) {
  EXPECT_EQ(TextsOf<HBlockType>(4), (Texts{"PROPAGATOR", "REFINED", "NOT_REFINED", "BOTH"}));
}

TEST_F(BaseTypesTest, LineOperatorsPrintInTheOrderOfTheirNumbers) {
  EXPECT_EQ(TextsOf<LineOperator>(3), (Texts{"AND", "OR", "OUTPUT"}));
}

TEST_F(BaseTypesTest, FailureModelsPrintInTheOrderOfTheirNumbers) {
  EXPECT_EQ(TextsOf<FailureModel>(13),
            (Texts{"CONSTANT", "MTTR", "MTTF", "MTTFMTTR", "FIXED", "TIME", "BINOMIAL", "POISSON",
                   "DORMANT", "SEQUENTIAL", "VARIABLE", "DISTRIBUTION", "NONE"}));
}

TEST_F(BaseTypesTest, EnumeratorsCarryTheNumbersOfTheirTexts) {
  EXPECT_EQ(ToText(NodeType::NullOp), "NullOp");
  EXPECT_EQ(ToText(NodeType::XOr), "XOr");
  EXPECT_EQ(ToText(NodeType::FailureMode), "FailureMode");
  EXPECT_EQ(ToText(NodeType::ACCF), "ACCF");
  EXPECT_EQ(ToText(NodeType::External), "External");
  EXPECT_EQ(ToText(NodeType::State), "State");
  EXPECT_EQ(ToText(HBlockType::NOT_REFINED), "NOT_REFINED");
  EXPECT_EQ(ToText(LineOperator::OUTPUT), "OUTPUT");
  EXPECT_EQ(ToText(FailureModel::DISTRIBUTION), "DISTRIBUTION");
}

class PrintableWord : public IPrintable {
 public:
  void Print(std::ostream& stream, int indent) const override {
    Indent(stream, indent);
    stream << "word";
  }
};

TEST_F(BaseTypesTest, IndentIsOneBlankPerLevel) {
  std::ostringstream stream;
  PrintableWord().Print(stream, 3);
  EXPECT_EQ(stream.str(), "   word");
}

TEST_F(BaseTypesTest, IndentOfNoLevelsWritesNothing) {
  std::ostringstream stream;
  PrintableWord().Print(stream, 0);
  PrintableWord().Print(stream, -2);
  EXPECT_EQ(stream.str(), "wordword");
}

TEST_F(BaseTypesTest, ExceptionCarriesItsMessage) {
  const VtnException exception("broken");
  EXPECT_EQ(exception.GetMessage(), "broken");
  EXPECT_STREQ(exception.what(), "broken");
}

TEST_F(BaseTypesTest, ParseExceptionIsCaughtAsItsBaseAndKeepsTheLine) {
  try {
    throw ParseException("broken", 12);
  } catch (const VtnException& exception) {
    EXPECT_EQ(exception.GetMessage(), "broken");
    const auto* parseException = dynamic_cast<const ParseException*>(&exception);
    ASSERT_NE(parseException, nullptr);
    EXPECT_EQ(parseException->GetLine(), 12);
  }
}

TEST_F(BaseTypesTest, SafetyRequirementStartsAtNoneAndIsCopied) {
  struct Target : ISafetyRequirementTarget {};
  Target target;
  EXPECT_EQ(target.safetyRequirement, 0);
  target.safetyRequirement = 4;
  const Target copy(target);
  EXPECT_EQ(copy.safetyRequirement, 4);
}

TEST_F(BaseTypesTest, BuildIsNamedByEditionVersionAndDate) {
  EXPECT_STREQ(BuildEdition, "Internal");
  EXPECT_STREQ(BuildDate, "17 October 2022");
  EXPECT_EQ(MajorVersion, 2);
  EXPECT_EQ(MinorVersion, 5);
  EXPECT_EQ(BuildNumber, 901);
}

}  // namespace
}  // namespace FTS
