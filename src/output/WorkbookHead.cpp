#include "output/WorkbookHead.h"

#include <array>
#include <string_view>

namespace FTS {

namespace {

constexpr std::string_view BeforeStyles = R"(<?xml version="1.0"?>
<?mso-application progid="Excel.Sheet"?>
<Workbook xmlns="urn:schemas-microsoft-com:office:spreadsheet"
 xmlns:o="urn:schemas-microsoft-com:office:office"
 xmlns:x="urn:schemas-microsoft-com:office:excel"
 xmlns:ss="urn:schemas-microsoft-com:office:spreadsheet"
 xmlns:html="http://www.w3.org/TR/REC-html40">
 <DocumentProperties xmlns="urn:schemas-microsoft-com:office:office">
  <Author>Vel-Tarn</Author>
  <LastAuthor>Vel-Tarn</LastAuthor>
  <Created>2006-11-24T16:29:22Z</Created>
  <LastSaved>2006-11-24T16:30:09Z</LastSaved>
  <Version>11.8107</Version>
 </DocumentProperties>
 <ExcelWorkbook xmlns="urn:schemas-microsoft-com:office:excel">
  <WindowHeight>8700</WindowHeight>
  <WindowWidth>15195</WindowWidth>
  <WindowTopX>0</WindowTopX>
  <WindowTopY>120</WindowTopY>
  <ActiveSheet>0</ActiveSheet>
  <ProtectStructure>False</ProtectStructure>
  <ProtectWindows>False</ProtectWindows>
 </ExcelWorkbook>
 <Styles>
)";

/// One of the styles that the sheets are made of: a place for the text, borders and a font.
struct CellStyle {
  std::string_view id;
  std::string_view horizontal;
  std::string_view borders;  // By their first letters.
  std::string_view font;     // What the font has beside its name.
};

constexpr std::string_view Plain = "";
constexpr std::string_view Bold = R"( ss:Bold="1")";
constexpr std::string_view Link = R"( ss:Color="#0000FF" ss:Underline="Single")";

constexpr std::array<CellStyle, 9> CellStyles = {{
    {"boldCenterAllBorders", "Center", "BLRT", Bold},
    {"boldLeftAllBorders", "Left", "BLRT", Bold},
    {"normalLeftAllExceptTopAndBottomBorders", "Left", "LR", Plain},
    {"normalLeftAllExceptTopBorders", "Left", "BLR", Plain},
    {"normalLeftAllExceptBottomBorders", "Left", "LRT", Plain},
    {"normalLeftAllBorders", "Left", "BLRT", Plain},
    {"normalCenterAllBorders", "Center", "BLRT", Plain},
    {"hyperlinkLeftAllBorders", "Left", "BLRT", Link},
    {"hyperlinkCenterAllBorders", "Center", "BLRT", Link},
}};

constexpr std::array<std::string_view, 4> Sides = {"Bottom", "Left", "Right", "Top"};

constexpr std::string_view BehindCellStyles = R"(  <Style ss:ID="Default" ss:Name="Normal">
   <Alignment ss:Vertical="Bottom"/>
   <Borders/>
   <Font/>
   <Interior/>
   <NumberFormat/>
   <Protection/>
  </Style>
  <Style ss:ID="s21" ss:Name="Hyperlink">
   <Font ss:Color="#0000FF" ss:Underline="Single"/>
  </Style>
  <Style ss:ID="s22"/>
  <Style ss:ID="s28">
   <Alignment ss:Horizontal="Left" ss:Vertical="Top" ss:WrapText="1"/>
  </Style>
  <Style ss:ID="s29">
   <Alignment ss:Horizontal="Left" ss:Vertical="Top"/>
   <Font ss:Color="#0000FF"/>
   <NumberFormat/>
  </Style>
  <Style ss:ID="s30">
   <NumberFormat ss:Format="Scientific"/>
  </Style>
 </Styles>
)";

void Append(std::string& text, const CellStyle& style) {
  const auto add = [&text](auto... parts) { (text.append(parts), ...); };
  add("  <Style ss:ID=\"", style.id, "\">\n   <Alignment ss:Horizontal=\"", style.horizontal,
      "\" ss:Vertical=\"Top\"/>\n   <Borders>\n");
  for (const std::string_view side : Sides) {
    if (style.borders.find(side.front()) == std::string_view::npos) continue;
    add("    <Border ss:Position=\"", side, "\" ss:LineStyle=\"Continuous\" ss:Weight=\"1\"/>\n");
  }
  add("   </Borders>\n   <Font ss:FontName=\"Arial\" x:Family=\"Swiss\"", style.font,
      "/>\n  </Style>\n");
}

}  // namespace

std::string WorkbookHead() {
  std::string text(BeforeStyles);
  for (const CellStyle& style : CellStyles) Append(text, style);
  return text.append(BehindCellStyles);
}

}  // namespace FTS
