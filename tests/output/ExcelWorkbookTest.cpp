#include <gmock/gmock.h>

#include <filesystem>
#include <limits>
#include <memory>
#include <string>
#include <string_view>

#include "analysis/FMEA.h"
#include "app/Config.h"
#include "app/DiagnosticLog.h"
#include "faulttree/BasicEvent.h"
#include "faulttree/Gates.h"
#include "output/Workbook.h"
#include "support/BrakeModel.h"
#include "support/CapturedStreams.h"
#include "support/FixedClock.h"
#include "support/ProcessStateTest.h"
#include "support/TemporaryFolder.h"

namespace FTS {

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

class ExcelWorkbookTest : public ProcessStateTest {
 protected:
  ExcelWorkbookTest() { Config::Instance().outputDir = folder.Path(); }

  std::string Written() {
    brake.Get().WriteExcelWorkbook();
    return folder.Read("brake.v2-FMEAOutput/brake.v2_Excel.xml");
  }

  /// A sheet of the workbook, from its table on.
  std::string Sheet(const std::string& name) {
    const std::string book = Written();
    const std::size_t start = book.find("ss:Name=\"" + name + "\">");
    EXPECT_NE(start, std::string::npos) << book;
    return book.substr(start, book.find("</Worksheet>", start) - start);
  }

  /// All rows of the sheet, the texts of each joined by "|" and ended by a line end.
  static std::string Texts(const std::string& sheet) {
    std::string texts;
    for (std::size_t at = 0; (at = sheet.find('<', at)) != std::string::npos; ++at) {
      const std::string_view rest = std::string_view(sheet).substr(at);
      if (rest.starts_with("</Row>")) texts += '\n';
      if (rest.starts_with("<Row/>")) texts += '\n';
      if (!rest.starts_with("<Data ")) continue;
      const std::size_t open = rest.find('>') + 1;
      if (!texts.empty() && texts.back() != '\n') texts += '|';
      texts += rest.substr(open, rest.find('<', open) - open);
    }
    return texts;
  }

  static std::string CellOf(const std::string& text) { return ">" + text + "</Data>"; }

  TemporaryFolder folder;
  BrakeModel brake;
  CapturedStreams streams;
  FixedClock clock;
};

TEST_F(ExcelWorkbookTest, SeverityThatWasNeverSetHasNoRow) {
  EXPECT_THAT(Sheet("Loss of braking(20)"), HasSubstr(CellOf("Severity")));
  EXPECT_THAT(Sheet("Braking late(30)"), Not(HasSubstr(CellOf("Severity"))));
}

TEST_F(ExcelWorkbookTest, SeverityOfNothingIsASeverity) {
  brake.Late().severity = 0.0;
  EXPECT_THAT(Texts(Sheet("Braking late(30)")), HasSubstr("\nSeverity|0\n"));
}

TEST_F(ExcelWorkbookTest, FiguresOfALoneMemberAreMergedOverNothing) {
  EXPECT_THAT(Sheet("Loss of braking(20)"),
              HasSubstr("<Cell ss:MergeDown=\"0\" ss:StyleID=\"normalLeftAllBorders\"><Data "
                        "ss:Type=\"Number\">0.0025</Data></Cell>"));
}

TEST_F(ExcelWorkbookTest, MembersBetweenFirstAndLastHaveBordersAtTheSidesOnly) {
  AddCutSet(brake.Late(), {brake.stuck, brake.leak, brake.demand});
  brake.Late().maxOrder = 3;
  EXPECT_THAT(Sheet("Braking late(30)"),
              HasSubstr("<Cell ss:StyleID=\"normalLeftAllExceptTopAndBottomBorders\"><Data "
                        "ss:Type=\"String\">leak</Data></Cell>"));
}

TEST_F(ExcelWorkbookTest, TreeWithoutCutSetsHasItsSummaryOnly) {
  const auto root = std::make_shared<OrGate>("Nothing", &brake.Get(), 40);
  AddTree(brake.Get(), root);
  EXPECT_EQ(Texts(Sheet("Nothing(40)")),
            "Click here to go to the Contents page\n\nTop Event (Effect)|Nothing\n"
            "System Unavailability|0\nSystem Frequency|0\nDescription|N/A\n"
            "Number of Cut Sets|0\n");
}

TEST_F(ExcelWorkbookTest, TreeWithoutTopNodeHasALinkAndNoCounts) {
  AddTree(brake.Get(), nullptr);
  EXPECT_TRUE(Texts(Sheet("Contents")).ends_with("\nBraking late|0|1|1\n?\n"));
  EXPECT_THAT(Sheet("Contents"), HasSubstr("ss:HRef=\"#'_'!A1\""));
  EXPECT_THAT(Texts(Sheet("_")), HasSubstr("\nTop Event (Effect)|?\n"));
}

TEST_F(ExcelWorkbookTest, ModelWithoutTreesAndTableHasTheFirstRowsAlone) {
  brake.Get().faultTrees.clear();
  brake.Get().fmea = nullptr;
  EXPECT_EQ(Texts(Sheet("Contents")),
            "FMEA tables\nDirect Effects\nFurther Effects\n"
            "Number of cut sets of order:\nFault Tree Cut Sets|Total\n");
  EXPECT_EQ(Texts(Sheet("Direct Effects")), "Click here to go to the Contents page\n");
  EXPECT_EQ(Texts(Sheet("Further Effects")), "Click here to go to the Contents page\n");
}

TEST_F(ExcelWorkbookTest, HighestOrderThatWasMetHasAColumnThoughItsCutSetsWereDropped) {
  brake.Loss().maxOrder = 3;
  EXPECT_THAT(Texts(Sheet("Contents")),
              HasSubstr("Fault Tree Cut Sets|1|2|3|Total\nLoss of braking|1|1|0|2\n"));
}

TEST_F(ExcelWorkbookTest, OrdersWithoutNormalEventsAreOneHigher) {
  Config::Instance().countNormalEvents = false;
  EXPECT_THAT(Texts(Sheet("Contents")),
              HasSubstr("Fault Tree Cut Sets|1|2|3|Total\n"
                        "Loss of braking|0|2|0|2\nBraking late|0|0|1|1\n"));
  EXPECT_THAT(Texts(Sheet("Loss of braking(20)")),
              HasSubstr("\n2 x Cut Sets of Order: 2|Unavailability|Frequency\n"
                        "stuck|0.0025|1.2e-05\nleak|0.25|0.125\ndemand\n"));
}

TEST_F(ExcelWorkbookTest, CutSetOfNormalEventsAloneIsOfOrderOneThen) {
  Config::Instance().countNormalEvents = false;
  AddCutSet(brake.Late(), {brake.demand});
  EXPECT_THAT(Texts(Sheet("Braking late(30)")),
              HasSubstr("\n1 x Cut Sets of Order: 1|Unavailability|Frequency\ndemand|1|0\n"));
}

TEST_F(ExcelWorkbookTest, CutSetWithoutMembersHasARowOfItsFigures) {
  Config::Instance().countNormalEvents = false;
  AddCutSet(brake.Late(), {});
  EXPECT_THAT(Texts(Sheet("Braking late(30)")),
              HasSubstr("\n1 x Cut Sets of Order: 1|Unavailability|Frequency\n1|0\n"));
}

TEST_F(ExcelWorkbookTest, ComponentNamedNoneIsLeftOut) {
  brake.Get().fmea->eventsByComponent["None"] = {brake.stuck};
  EXPECT_THAT(Sheet("Direct Effects"), Not(HasSubstr("Component: None")));
  EXPECT_THAT(Sheet("Further Effects"), Not(HasSubstr("Component: None")));
}

TEST_F(ExcelWorkbookTest, EventStandsBesideAllItsEffects) {
  brake.Get().fmea->AddEffect(brake.stuck->prime, brake.Get().faultTrees.at(1), true);
  const std::string sheet = Sheet("Direct Effects");
  EXPECT_THAT(sheet, HasSubstr("<Cell ss:MergeDown=\"1\" ss:StyleID=\"normalLeftAllBorders\"><Data "
                               "ss:Type=\"String\">stuck</Data></Cell>"));
  EXPECT_THAT(Texts(sheet), HasSubstr("\nstuck|Loss of braking|2.5\nBraking late|-1\n"));
  EXPECT_THAT(sheet, HasSubstr("   <Row ss:Index=\"10\">\n    <Cell ss:Index=\"2\" "
                               "ss:StyleID=\"hyperlinkLeftAllBorders\" "
                               "ss:HRef=\"#'Braking late(30)'!A1\">"));
}

TEST_F(ExcelWorkbookTest, EventStandsBesideAllCutSetsThatItContributesTo) {
  AddCutSet(brake.Late(), {brake.stuck, brake.leak, brake.demand});
  EXPECT_THAT(Sheet("Further Effects"),
              HasSubstr("<Cell ss:MergeDown=\"4\" ss:StyleID=\"normalLeftAllBorders\"><Data "
                        "ss:Type=\"String\">stuck</Data></Cell>"));
}

/// All rows of the sheet that have a number, each number behind a blank.
std::string RowNumbers(const std::string& sheet) {
  const std::string start = "<Row ss:Index=\"";
  std::string numbers;
  for (std::size_t at = 0; (at = sheet.find(start, at)) != std::string::npos;) {
    at += start.size();
    numbers += " " + sheet.substr(at, sheet.find('"', at) - at);
  }
  return numbers;
}

TEST_F(ExcelWorkbookTest, RowsBesideAMergedCellGiveTheirNumber) {
  EXPECT_EQ(RowNumbers(Sheet("Direct Effects")), "");
  EXPECT_EQ(RowNumbers(Sheet("Further Effects")), " 6 11 13 18");
  brake.Get().fmea->AddEffect(brake.stuck->prime, brake.Get().faultTrees.at(1), true);
  AddCutSet(brake.Late(), {brake.stuck, brake.leak, brake.demand});
  EXPECT_EQ(RowNumbers(Sheet("Direct Effects")), " 10");
  // The effects of "stuck": a cut set of two events, and one of three behind it.
  EXPECT_THAT(RowNumbers(Sheet("Further Effects")), ::testing::StartsWith(" 6 11 12 13 14 "));
}

TEST_F(ExcelWorkbookTest, HeadingOfTheOrdersIsAsWideAsTheirTable) {
  const auto heading = [](const char* merge) {
    return "<Cell ss:Index=\"2\"" + std::string(merge) + " ss:StyleID=\"boldCenterAllBorders\">";
  };
  brake.Loss().maxOrder = 3;  // Four columns, with the total.
  EXPECT_THAT(Sheet("Contents"), HasSubstr(heading(" ss:MergeAcross=\"3\"")));
  brake.Get().faultTrees.clear();
  brake.Get().fmea = nullptr;
  EXPECT_THAT(Sheet("Contents"), HasSubstr(heading("")));
}

TEST_F(ExcelWorkbookTest, OrdersThatAreTooManyForASheetHaveNoColumns) {
  brake.Loss().maxOrder = Workbook::MostColumnsOfSheet - 2;
  EXPECT_THAT(Sheet("Contents"), HasSubstr(">16382</Data>"));
  EXPECT_THAT(DiagnosticLog::Instance().Warnings(), IsEmpty());
  ++brake.Loss().maxOrder;
  const std::string sheet = Sheet("Contents");
  EXPECT_THAT(sheet, Not(HasSubstr(">16383</Data>")));
  EXPECT_THAT(sheet, HasSubstr("ss:MergeAcross=\"16382\""));
  EXPECT_THAT(DiagnosticLog::Instance().Warnings(),
              ElementsAre("Workbook is written in part only, as a sheet has at most 16384 columns: "
                          "Contents"));
}

TEST_F(ExcelWorkbookTest, TotalHoldsTheCutSetsOfOrdersWithoutAColumn) {
  {
    Workbook book(brake.Get());
    ASSERT_TRUE(book.Open(folder.Path("book")));
    brake.Loss().WriteNavigationRow(book, 1);
  }
  EXPECT_THAT(Texts(folder.Read("book")), ::testing::EndsWith("Loss of braking|1|2\n"));
}

TEST_F(ExcelWorkbookTest, LongTextIsCutAndItsPlaceIsTold) {
  const std::string start = "The brake does not stop the car. 12345678";
  brake.Loss().root->description =
      start + std::string(Workbook::LongestText - start.size(), 'x') + "yz";
  const std::string sheet = Sheet("Loss of braking(20)");
  EXPECT_THAT(sheet, HasSubstr("xx</Data>"));
  EXPECT_THAT(sheet, Not(HasSubstr("xy")));
  EXPECT_THAT(
      DiagnosticLog::Instance().Warnings(),
      ElementsAre("Text is written in part only, as a cell has at most 32767 characters: "
                  "Loss of braking(20), row 7: The brake does not stop the car. 1234567.."));
}

TEST_F(ExcelWorkbookTest, TextThatJustFitsIsWhole) {
  brake.Loss().root->description = std::string(Workbook::LongestText, 'x');
  EXPECT_THAT(Sheet("Loss of braking(20)"), HasSubstr(CellOf(brake.Loss().root->description)));
  EXPECT_THAT(DiagnosticLog::Instance().Warnings(), IsEmpty());
}

TEST_F(ExcelWorkbookTest, LengthOfATextIsThatOfItsCharacters) {
  std::string description;  // Of two bytes each.
  for (std::size_t i = 0; i < Workbook::LongestText; ++i) description += "\xC3\xA4";
  brake.Loss().root->description = description;
  EXPECT_THAT(Sheet("Loss of braking(20)"), HasSubstr(CellOf(description)));
  EXPECT_THAT(DiagnosticLog::Instance().Warnings(), IsEmpty());
}

TEST_F(ExcelWorkbookTest, LongNameIsToldOncePerSheet) {
  brake.demand->name = "demand" + std::string(Workbook::LongestText, 'x');
  AddCutSet(brake.Late(), {brake.stuck, brake.leak, brake.demand});
  brake.Late().maxOrder = 3;
  const auto& warnings = DiagnosticLog::Instance().Warnings();
  Written();
  const std::string end = ": demand" + std::string(34, 'x') + "..";
  EXPECT_THAT(warnings, ::testing::Each(::testing::EndsWith(end)));
  // Both tables of effects and the sheets of both trees.
  EXPECT_EQ(warnings.size(), 4u);
}

TEST_F(ExcelWorkbookTest, NamesAreEscapedEverywhere) {
  brake.Loss().root->name = "a<b&\"c\"'d'";
  brake.stuck->name = "<stuck>";
  const std::string link = "ss:HRef=\"#'a&lt;b&amp;&quot;c&quot;''d''(20)'!A1\"";
  const std::string cell = CellOf("a&lt;b&amp;&quot;c&quot;'d'");
  EXPECT_THAT(Sheet("Contents"), HasSubstr(link + ">"));
  EXPECT_THAT(Sheet("Direct Effects"), HasSubstr(link));
  EXPECT_THAT(Sheet("Further Effects"), HasSubstr(CellOf("&lt;stuck&gt;")));
  EXPECT_THAT(Sheet("a&lt;b&amp;&quot;c&quot;'d'(20)"), HasSubstr(cell));
}

TEST_F(ExcelWorkbookTest, FigureThatIsNoNumberIsText) {
  brake.Loss().unavailability = std::numeric_limits<double>::infinity();
  brake.Loss().frequency = std::numeric_limits<double>::quiet_NaN();
  EXPECT_THAT(Sheet("Loss of braking(20)"), HasSubstr("<Data ss:Type=\"String\">inf</Data>"));
  EXPECT_THAT(Sheet("Loss of braking(20)"), HasSubstr("<Data ss:Type=\"String\">nan</Data>"));
}

TEST_F(ExcelWorkbookTest, TellsTheTimeThatEachTreeTook) {
  brake.Get().WriteExcelWorkbook();
  EXPECT_EQ(streams.Output(),
            "Outputting Cut Sets To XML SpreadSheet Navigation Pane: Loss of braking: 0 secs\n"
            "Outputting Cut Sets To XML SpreadSheet Navigation Pane: Braking late: 0 secs\n"
            "Outputting Cut Sets To XML SpreadSheet: Loss of braking: 0 secs\n"
            "Outputting Cut Sets To XML SpreadSheet: Braking late: 0 secs\n");
}

TEST_F(ExcelWorkbookTest, SilentRunTellsNothing) {
  Config::Instance().runSilent = true;
  EXPECT_TRUE(Written().ends_with("</Workbook>\n"));
  EXPECT_EQ(streams.Output() + streams.Errors(), "");
}

TEST_F(ExcelWorkbookTest, FileThatCannotBeWrittenIsAnErrorAndNothingMore) {
  const std::string path = folder.Path("brake.v2-FMEAOutput/brake.v2_Excel.xml");
  std::filesystem::create_directories(path);
  brake.Get().WriteExcelWorkbook();
  EXPECT_THAT(
      DiagnosticLog::Instance().Errors(),
      ElementsAre("ERROR: Could not open file " + path + " to write output to xmlSpreadSheet"));
  EXPECT_EQ(streams.Output(), "");
}

TEST_F(ExcelWorkbookTest, FolderThatCannotBeMadeEndsTheOutput) {
  Config::Instance().outputDir = folder.Write("file", "");
  EXPECT_THROW(brake.Get().WriteExcelWorkbook(), std::filesystem::filesystem_error);
}

TEST_F(ExcelWorkbookTest, SheetEndsWhereSpreadsheetProgramsEndIt) {
  Workbook book(brake.Get());
  book.StartSheet("Loss", {});
  book.StartRow(Workbook::MostRowsOfSheet - 2);
  EXPECT_TRUE(book.HasRoom(2));
  EXPECT_THAT(DiagnosticLog::Instance().Warnings(), IsEmpty());
  EXPECT_FALSE(book.HasRoom(3));
  EXPECT_FALSE(book.HasRoom(4));
  EXPECT_TRUE(book.HasRoom(1));
  EXPECT_THAT(DiagnosticLog::Instance().Warnings(),
              ElementsAre("Workbook is written in part only, as a sheet has at most 1048576 rows: "
                          "Loss"));
}

}  // namespace

}  // namespace FTS
