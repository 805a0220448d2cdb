#include "output/Workbook.h"

#include <cmath>
#include <utility>

#include "app/DiagnosticLog.h"
#include "model/Model.h"
#include "model/NumberText.h"
#include "output/WorkbookHead.h"
#include "output/XmlEscape.h"

namespace FTS {
namespace {

/// The first cell of the sheet, as a link names it.
std::string LinkTo(std::string_view sheet) {
  std::string link = "#'";
  for (const char c : sheet) {
    link += c;
    if (c == '\'') link += c;  // Or the name would end here.
  }
  return link + "'!A1";
}

}  // namespace

int MergeOver(int count) { return count > 1 ? count - 1 : Cell::Unmerged; }

Workbook::Workbook(const Model& initModel) : model(initModel), names(initModel.faultTrees) {}

Workbook::~Workbook() { out << "</Workbook>\n"; }

bool Workbook::Open(const std::string& path) {
  if (!out.Open(path)) return false;
  out << WorkbookHead();
  return true;
}

void Workbook::StartSheet(std::string_view name, std::initializer_list<double> columnWidths) {
  sheet = name;
  row = 0;
  cutShort = false;
  tooWide = false;
  cutTexts.clear();
  out << " <Worksheet ss:Name=\"" << EscapeXml(name) << "\">\n  <Table>\n";
  // LibreOffice takes a column without its number for the one behind.
  int column = 0;
  for (const double width : columnWidths) {
    out << "   <Column ss:Index=\"" << ++column << "\" ss:AutoFitWidth=\"0\" ss:Width=\"" << width
        << "\"/>\n";
  }
}

void Workbook::EndSheet() { out << "  </Table>\n </Worksheet>\n"; }

void Workbook::EndSheet(const SheetView& view) {
  out << "  </Table>\n"
         "  <WorksheetOptions xmlns=\"urn:schemas-microsoft-com:office:excel\">\n";
  if (view.selected) out << "   <Selected/>\n";
  if (view.activeRow > 0) {
    out << "   <Panes>\n    <Pane>\n     <Number>3</Number>\n     <ActiveRow>" << view.activeRow
        << "</ActiveRow>\n";
    if (view.activeColumn > 0) out << "     <ActiveCol>" << view.activeColumn << "</ActiveCol>\n";
    out << "    </Pane>\n   </Panes>\n";
  }
  out << "   <ProtectObjects>False</ProtectObjects>\n"
         "   <ProtectScenarios>False</ProtectScenarios>\n"
         "  </WorksheetOptions>\n"
         " </Worksheet>\n";
}

void Workbook::StartRow() {
  ++row;
  out << "   <Row>\n";
}

void Workbook::StartRow(int number) {
  row = number;
  out << "   <Row ss:Index=\"" << number << "\">\n";
}

void Workbook::StartNextRow() { StartRow(row + 1); }

void Workbook::EndRow() { out << "   </Row>\n"; }

void Workbook::EmptyRow(int mergeAcross) {
  StartRow();
  Empty({.mergeAcross = mergeAcross});
  EndRow();
}

bool Workbook::HasRoom(long long rows) {
  if (row + rows <= MostRowsOfSheet) return true;
  WarnOfLimit(cutShort, MostRowsOfSheet, " rows: ");
  return false;
}

bool Workbook::HasColumns(int columns) {
  if (columns <= MostColumnsOfSheet) return true;
  WarnOfLimit(tooWide, MostColumnsOfSheet, " columns: ");
  return false;
}

void Workbook::WarnOfLimit(bool& warned, int limit, const char* what) const {
  if (std::exchange(warned, true)) return;
  DiagnosticLog::Instance().AddWarning("Workbook is written in part only, as a sheet has at most " +
                                       std::to_string(limit) + what + sheet);
}

void Workbook::WriteAttribute(std::string_view name, int value) {
  out << " ss:" << name << "=\"" << value << "\"";
}

void Workbook::WriteCellStart(const Cell& cell) {
  out << "    <Cell";
  if (cell.column > 0) WriteAttribute("Index", cell.column);
  if (cell.mergeAcross != Cell::Unmerged) WriteAttribute("MergeAcross", cell.mergeAcross);
  if (cell.mergeDown != Cell::Unmerged) WriteAttribute("MergeDown", cell.mergeDown);
  if (!cell.style.empty()) out << " ss:StyleID=\"" << cell.style << "\"";
  if (!cell.sheet.empty()) out << " ss:HRef=\"" << EscapeXml(LinkTo(cell.sheet)) << "\"";
}

void Workbook::WriteData(const Cell& cell, std::string_view type, std::string_view value) {
  WriteCellStart(cell);
  out << "><Data ss:Type=\"" << type << "\">" << value << "</Data></Cell>\n";
}

void Workbook::Empty(const Cell& cell) {
  WriteCellStart(cell);
  out << "/>\n";
}

void Workbook::Text(const Cell& cell, std::string_view text) {
  WriteData(cell, "String", EscapeXml(Fitted(text)));
}

std::string_view Workbook::Fitted(std::string_view text) {
  constexpr std::size_t TellingLength = 40;
  if (text.size() <= LongestText) return text;  // No text has more units than bytes.
  const std::string_view fitting = BeginningOf(text, LongestText);
  const std::string beginning(BeginningOf(text, TellingLength));
  if (fitting.size() < text.size() && cutTexts.insert(beginning).second) {
    DiagnosticLog::Instance().AddWarning("Text is written in part only, as a cell has at most " +
                                         std::to_string(LongestText) + " characters: " + sheet +
                                         ", row " + std::to_string(row) + ": " + beginning + "..");
  }
  return fitting;
}

void Workbook::Number(const Cell& cell, int number) {
  WriteData(cell, "Number", std::to_string(number));
}

void Workbook::Number(const Cell& cell, double number) {
  // Programs refuse a whole workbook for one cell whose number is "inf" or "nan".
  WriteData(cell, std::isfinite(number) ? "Number" : "String", FormatDouble(number));
}

void Workbook::Formula(const Cell& cell, std::string_view formula) {
  WriteCellStart(cell);
  out << " ss:Formula=\"" << EscapeXml(formula) << "\"/>\n";
}

}  // namespace FTS
