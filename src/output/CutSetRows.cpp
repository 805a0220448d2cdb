// Cut sets in a workbook: the rows of one, and the sheet that lists those of a tree by order. Every
// row of that sheet gives its number.

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "analysis/CutSet.h"
#include "analysis/FaultTree.h"
#include "app/Config.h"
#include "faulttree/BasicEvent.h"
#include "output/Workbook.h"
#include "output/WorkbookSheets.h"

namespace FTS {
namespace {

constexpr const char* LabelStyle = "boldLeftAllBorders";
constexpr const char* ValueStyle = "normalLeftAllBorders";

/// The borders of a member's cell draw one frame around all members.
const char* MemberStyle(int place, int size) {
  if (size <= 1) return ValueStyle;
  if (place == 0) return "normalLeftAllExceptBottomBorders";
  if (place == size - 1) return "normalLeftAllExceptTopBorders";
  return "normalLeftAllExceptTopAndBottomBorders";
}

template <typename WriteValue>
void WriteFact(Workbook& out, const char* label, const WriteValue& writeValue) {
  out.StartNextRow();
  out.Text({.style = LabelStyle}, label);
  writeValue(Cell{.style = ValueStyle});
  out.EndRow();
}

void WriteFacts(Workbook& out, const FaultTree& tree) {
  const auto fact = [&](const char* label, double figure) {
    WriteFact(out, label, [&](const Cell& cell) { out.Number(cell, figure); });
  };
  const auto text = [&](const char* label, const std::string& value) {
    WriteFact(out, label, [&](const Cell& cell) { out.Text(cell, value); });
  };
  const std::string& description = tree.root ? tree.root->description : tree.label;
  text("Top Event (Effect)", TreeTitle(tree));
  fact("System Unavailability", tree.unavailability);
  fact("System Frequency", tree.frequency);
  if (tree.severity != -1.0) fact("Severity", tree.severity);  // As long as it was never set.
  text("Description", description.empty() ? "N/A" : description);
  WriteFact(out, "Number of Cut Sets",
            [&](const Cell& cell) { out.Number(cell, static_cast<int>(tree.cutSets.size())); });
}

void WriteEmptyRow(Workbook& out) {
  out.StartNextRow();
  out.Empty({.mergeAcross = 1});
  out.EndRow();
}

/// The cut sets by the number that their order is printed under, each in the order of their keys.
std::map<int, std::vector<CutSet*>> ByPrintedOrder(const FaultTree& tree) {
  const bool plain = Config::Instance().countNormalEvents;
  std::map<int, std::vector<CutSet*>> sections;
  for (const auto& [key, cutSet] : tree.cutSets) {
    sections[plain ? cutSet->GetSize() : cutSet->GetEffectiveOrder() + 1].push_back(cutSet.get());
  }
  return sections;
}

/// False when the sheet is full.
bool WriteSection(Workbook& out, int order, const std::vector<CutSet*>& cutSets) {
  constexpr int RowsInFront = 2;
  if (!out.HasRoom(RowsInFront)) return false;
  WriteEmptyRow(out);
  out.StartNextRow();
  out.Text({.style = LabelStyle},
           std::to_string(cutSets.size()) + " x Cut Sets of Order: " + std::to_string(order));
  out.Text({.style = LabelStyle}, "Unavailability");
  out.Text({.style = LabelStyle}, "Frequency");
  out.EndRow();
  for (CutSet* const cutSet : cutSets) {
    if (!out.HasRoom(std::max(cutSet->GetSize(), 1))) return false;
    out.StartNextRow();
    cutSet->WriteExcelRows(out, 1);
  }
  return true;
}

}  // namespace

void WriteContentsLink(Workbook& out, int mergeAcross) {
  out.Text({.style = "s21", .mergeAcross = mergeAcross, .sheet = ContentsSheet},
           "Click here to go to the Contents page");
}

void BasicEvent::WriteCutSetRows(Workbook& stream, int place, int size, int column) const {
  stream.Text({.style = MemberStyle(place, size), .column = column}, name);
}

void CutSet::WriteExcelRows(Workbook& stream, int column) {
  const int size = GetSize();
  const int shownColumn = column > 1 ? column : 0;
  for (int i = 0; i < std::max(size, 1); ++i) {
    if (i > 0) stream.StartNextRow();
    if (size > 0) {
      events[i]->WriteCutSetRows(stream, i, size, shownColumn);
    } else {
      stream.Text({.style = ValueStyle, .column = shownColumn}, "");
    }
    if (i == 0) {
      // Written for one row too, where it merges nothing: readers of these sheets take the number
      // of members from it.
      const Cell figure{.style = ValueStyle, .mergeDown = std::max(size - 1, 0)};
      stream.Number(figure, GetUnavailability());
      stream.Number(figure, GetFrequency());
    }
    stream.EndRow();
  }
}

void FaultTree::WriteCutSetSheet(Workbook& stream) const {
  stream.StartSheet(stream.SheetOf(*this), {200.25});
  stream.StartNextRow();
  WriteContentsLink(stream, 1);
  stream.Empty({.style = "s21"});
  stream.EndRow();
  WriteEmptyRow(stream);
  WriteFacts(stream, *this);
  const int lastOrder = Config::Instance().countNormalEvents ? maxOrder : maxOrder + 1;
  for (const auto& [order, section] : ByPrintedOrder(*this)) {
    if (order < 1 || order > lastOrder) continue;
    if (!WriteSection(stream, order, section)) break;
  }
  stream.EndSheet();
}

}  // namespace FTS
