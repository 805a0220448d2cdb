#include <gmock/gmock.h>

#include <string>
#include <utility>

#include "app/TestList.h"
#include "support/CaseName.h"
#include "support/ProcessStateTest.h"
#include "support/TemporaryFolder.h"

namespace FTS {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

class TestListTest : public ProcessStateTest {
 protected:
  std::vector<TestEntry> List(const std::string& text) {
    return ReadTestList(folder.Write("TestModels.txt", text));
  }

  Expectations Expected(const std::string& text) {
    return ReadExpectations(folder.Write("x_expectedResults.txt", text)).value();
  }

  TemporaryFolder folder;
};

struct EntryCase {
  const char* name;
  const char* line;
  const char* path;
  int maxCutSetSize;
  bool discountNormalEvents;
  bool removeHangingNodes;
};

class TestEntryTest : public TestListTest, public ::testing::WithParamInterface<EntryCase> {};

TEST_P(TestEntryTest, IsRead) {
  const std::vector<TestEntry> entries = List(GetParam().line);
  ASSERT_EQ(entries.size(), 1U);
  EXPECT_EQ(entries[0].path, GetParam().path);
  EXPECT_EQ(entries[0].maxCutSetSize, GetParam().maxCutSetSize);
  EXPECT_EQ(entries[0].discountNormalEvents, GetParam().discountNormalEvents);
  EXPECT_EQ(entries[0].removeHangingNodes, GetParam().removeHangingNodes);
}

INSTANTIATE_TEST_SUITE_P(
    Lines, TestEntryTest,
    ::testing::Values(
        EntryCase{"PathAlone", "a/b c.xml", "a/b c.xml", 0, false, true},
        EntryCase{"LineEnd", "a.xml\n", "a.xml", 0, false, true},
        EntryCase{"WindowsLineEnd", "a\\b.xml,3\r\n", "a\\b.xml", 3, false, true},
        EntryCase{"Discount", "a.xml,discountNormalEvents", "a.xml", 0, true, true},
        EntryCase{"Hanging", "a.xml,keepHangingIDEVNs", "a.xml", 0, false, false},
        EntryCase{"All", "a.xml,discountNormalEvents,keepHangingIDEVNs,5", "a.xml", 5, true, false},
        EntryCase{"OtherOrderAndBlanks", " a.xml , 5 , keepHangingIDEVNs ", "a.xml", 5, false,
                  false},
        EntryCase{"UnknownWord", "a.xml,DiscountNormalEvents", "a.xml", 0, false, true},
        EntryCase{"EmptyParts", "a.xml,,4,", "a.xml", 4, false, true}),
    CaseName);

TEST_F(TestListTest, EndsAtTheFirstEmptyLine) {
  EXPECT_EQ(List("a.xml\nb.xml\n\nc.xml\n").size(), 2U);
  EXPECT_EQ(List("a.xml\r\n\r\nc.xml\r\n").size(), 1U);
  EXPECT_THAT(List("\na.xml\n"), IsEmpty());
}

TEST_F(TestListTest, MissingListIsEmpty) {
  EXPECT_THAT(ReadTestList(folder.Path("missing")), IsEmpty());
}

TEST_F(TestListTest, LongLinesAreReadWhole) {
  const std::string path(400, 'x');
  const auto entries = List(path + ",3\nb.xml\n");
  ASSERT_EQ(entries.size(), 2U);
  EXPECT_EQ(entries[0].path, path);
  EXPECT_EQ(entries[0].maxCutSetSize, 3);
}

TEST_F(TestListTest, ExpectationsStandBesideTheModel) {
  EXPECT_EQ(ExpectationsPath("a/b.c/brake.v2.xml"), "a/b.c/brake.v2_expectedResults.txt");
  EXPECT_EQ(ExpectationsPath("brake.vtnx"), "brake_expectedResults.txt");
}

TEST_F(TestListTest, ExpectationsAreReadByTree) {
  const Expectations expected = Expected("#1\nU 0.5\nC 1 3\nC 12 40\n#3\r\nC 2 1\r\n");
  ASSERT_EQ(expected.trees.size(), 2U);
  EXPECT_EQ(expected.trees[0].number, 1);
  EXPECT_EQ(expected.trees[0].unavailability, 0.5);
  EXPECT_THAT(expected.trees[0].cutSets, ElementsAre(Pair(1, 3), Pair(12, 40)));
  EXPECT_EQ(expected.trees[1].number, 3);
  EXPECT_EQ(expected.trees[1].unavailability, std::nullopt);
  EXPECT_THAT(expected.trees[1].cutSets, ElementsAre(Pair(2, 1)));
  EXPECT_EQ(expected.strangeLine, 0);
}

TEST_F(TestListTest, MissingExpectationsAreTold) {
  EXPECT_FALSE(ReadExpectations(folder.Path("missing")).has_value());
}

struct StrangeLine {
  const char* name;
  const char* line;
};

class StrangeLineTest : public TestListTest, public ::testing::WithParamInterface<StrangeLine> {};

TEST_P(StrangeLineTest, EndsTheReading) {
  const Expectations expected =
      Expected("#1\nU 0.5\n" + std::string(GetParam().line) + "\nC 1 1\n");
  EXPECT_EQ(expected.strangeLine, 3);
  ASSERT_EQ(expected.trees.size(), 1U);
  EXPECT_THAT(expected.trees[0].cutSets, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Lines, StrangeLineTest,
    ::testing::Values(StrangeLine{"Empty", ""}, StrangeLine{"Text", "order 1"},
                      StrangeLine{"OtherLetter", "X 0.5"}, StrangeLine{"NoNumber", "U low"},
                      StrangeLine{"NoCount", "C 1"}, StrangeLine{"NoOrder", "C one 1"},
                      StrangeLine{"NoTreeNumber", "#"}, StrangeLine{"TreeByName", "#Top"}),
    CaseName);

TEST_F(TestListTest, EmptyLinesAtTheEndBelongToNothing) {
  EXPECT_EQ(Expected("#1\nC 1 1\n\n \r\n\n").strangeLine, 0);
  EXPECT_EQ(Expected("\n").strangeLine, 0);
}

TEST_F(TestListTest, FiguresBeforeTheFirstTreeDoNotFit) {
  EXPECT_EQ(Expected("U 0.5\n#1\n").strangeLine, 1);
}

}  // namespace
}  // namespace FTS
