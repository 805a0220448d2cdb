#include <gtest/gtest.h>

#include <ostream>
#include <string>

#include "faulttree/BasicEvent.h"
#include "faulttree/Gates.h"
#include "output/SheetNames.h"
#include "support/BrakeModel.h"
#include "support/CaseName.h"
#include "support/ProcessStateTest.h"

namespace FTS {

namespace {

constexpr int SomeId = 123;

struct NameCase {
  const char* name;
  const char* title;
  int id;
  const char* sheet;
};

void PrintTo(const NameCase& row, std::ostream* stream) { *stream << row.title; }

class SheetNamesTest : public ProcessStateTest {
 protected:
  FaultTree& Add(const std::string& title, int id) {
    return AddTree(*model, std::make_shared<OrGate>(title, model.get(), id));
  }
  std::string NameOf(const FaultTree& tree) { return SheetNames(model->faultTrees).Of(tree); }

  std::unique_ptr<Model> model = EmptyModel("m.xml");
};

class SheetNameTest : public SheetNamesTest, public ::testing::WithParamInterface<NameCase> {};

TEST_P(SheetNameTest, Is) {
  EXPECT_EQ(SheetName(Add(GetParam().title, GetParam().id)), GetParam().sheet);
}

INSTANTIATE_TEST_SUITE_P(
    Titles, SheetNameTest,
    ::testing::Values(
        NameCase{"ShortIsWhole", "Loss of braking", 20, "Loss of braking(20)"},
        NameCase{"FortyCharactersAreCutToTwentyFour", "0123456789012345678901234567890123456789",
                 SomeId, "012345678901234567890123..(123)"},
        NameCase{"ThirtyOneInAllFit", "01234567890123456789012345", SomeId,
                 "01234567890123456789012345(123)"},
        NameCase{"ThirtyTwoInAllDoNot", "012345678901234567890123456", SomeId,
                 "012345678901234567890123..(123)"},
        NameCase{"LongerIdsLeaveLess", "0123456789012345678901234567890123456789", 1234567,
                 "01234567890123456789..(1234567)"},
        NameCase{"EmptyTitle", "", 5, "(5)"},
        NameCase{"RefusedCharactersAreReplaced", "a:b\\c/d?e*f[g]h\ni", 5, "a_b_c_d_e_f_g_h_i(5)"},
        NameCase{"ApostropheInside", "driver's", 5, "driver's(5)"},
        NameCase{"ApostropheInFront", "'x'", 5, "_x'(5)"},
        NameCase{"CharactersCountNotBytes", "\xC3\xA4\xC3\xB6\xC3\xBC 45678901234567890123456",
                 SomeId, "\xC3\xA4\xC3\xB6\xC3\xBC 45678901234567890123..(123)"},
        NameCase{"Latin1BytesCountOne", "\xAC 2345678901234567890123456", SomeId,
                 "\xAC 2345678901234567890123..(123)"},
        NameCase{"CharactersAreNotCutApart", "01234567890123456789012\xF0\x9F\x98\x80 789", SomeId,
                 "01234567890123456789012..(123)"}),
    CaseName);

TEST_F(SheetNamesTest, TreeWithoutTopNodeIsNamedByItsTitle) {
  EXPECT_EQ(TreeTitle(AddTree(*model, nullptr)), "?");
  EXPECT_EQ(SheetName(*model->faultTrees.back()), "_");
}

TEST_F(SheetNamesTest, ComplementAtTheTopHasANegativeId) {
  const BrakeModel brake;
  EXPECT_EQ(SheetName(AddTree(*model, brake.leak->GetComplement())),
            "\xAC"
            "leak(-12)");
}

TEST_F(SheetNamesTest, EqualNamesAreToldApart) {
  FaultTree& first = AddTree(*model, nullptr);
  FaultTree& second = AddTree(*model, nullptr);
  FaultTree& third = AddTree(*model, nullptr);
  EXPECT_EQ(NameOf(first), "_");
  EXPECT_EQ(NameOf(second), "_~2");
  EXPECT_EQ(NameOf(third), "_~3");
}

TEST_F(SheetNamesTest, CaseMakesNoDifference) {
  FaultTree& first = Add("Same", 7);
  const auto root = std::make_shared<OrGate>("SAME", model.get(), 8);
  FaultTree& second = AddTree(*model, root);
  EXPECT_EQ(NameOf(first), "Same(7)");
  EXPECT_EQ(NameOf(second), "SAME(8)");
}

TEST_F(SheetNamesTest, TreesOfOneTopNodeAreToldApartWithinTheLimit) {
  const auto root = std::make_shared<OrGate>("0123456789012345678901234567890", model.get(), 7);
  FaultTree& first = AddTree(*model, root);
  FaultTree& second = AddTree(*model, root);
  EXPECT_EQ(NameOf(first), "01234567890123456789012345..(7)");
  EXPECT_EQ(NameOf(second), "012345678901234567890123..(7)~2");
}

}  // namespace

}  // namespace FTS
