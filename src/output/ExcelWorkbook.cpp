// The workbook of results: contents, the two tables of effects, and the frame of the tree sheets,
// whose rows are in CutSetRows.cpp.

#include <algorithm>
#include <iostream>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "analysis/CutSet.h"
#include "analysis/CutSetList.h"
#include "analysis/FMEA.h"
#include "analysis/FaultTree.h"
#include "app/Config.h"
#include "app/DiagnosticLog.h"
#include "faulttree/BasicEvent.h"
#include "model/Model.h"
#include "model/NumberText.h"
#include "output/ResultsFolder.h"
#include "output/Workbook.h"
#include "output/WorkbookSheets.h"
#include "platform/Clock.h"
#include "platform/FileSystem.h"

namespace FTS {
namespace {

/// A table of effects; how many further columns its link and its components' rows cover.
struct EffectTable {
  const char* name;
  int linkMerge;
  int componentMerge;
  std::vector<const char*> headings;
  void (FMEA::*writeRows)(Workbook&, const BasicEvent&) const;
};

/// The highest number that orders are printed under.
int LastOrder(const Model& model) {
  int last = 0;
  for (const auto& tree : model.faultTrees) last = std::max(last, tree->maxOrder);
  // Orders that leave normal events out are printed one higher, as on the console.
  return Config::Instance().countNormalEvents || model.faultTrees.empty() ? last : last + 1;
}

/// As many of the orders as the sheet of contents has columns for, beside the tree and the total.
int ShownOrders(Workbook& out, int lastOrder) {
  constexpr int OtherColumns = 2;
  if (out.HasColumns(lastOrder + OtherColumns)) return lastOrder;
  return Workbook::MostColumnsOfSheet - OtherColumns;
}

/// Calls `write` for each tree and tells how long it took.
template <typename Write>
void ForEachTree(const Model& model, const char* what, const Write& write) {
  constexpr double MillisecondsPerSecond = 1000.0;
  const bool quiet = Config::Instance().runSilent;
  for (const auto& tree : model.faultTrees) {
    const long long start = Clock::Milliseconds();
    write(*tree);
    if (quiet) continue;
    const auto elapsed = static_cast<double>(Clock::Milliseconds() - start);
    std::cout << what << tree->GetName() << ": " << FormatDouble(elapsed / MillisecondsPerSecond)
              << " secs\n";
  }
}

void WriteLinkRow(Workbook& out, const char* sheet) {
  out.StartRow();
  out.Text({.style = "s21", .sheet = sheet}, sheet);
  out.EndRow();
}

void WriteContentsHead(Workbook& out, int lastOrder) {
  constexpr int HeadingRow = 5;
  out.StartRow();
  out.Text({.style = "s22"}, "FMEA tables");
  out.EndRow();
  WriteLinkRow(out, DirectEffectsSheet);
  WriteLinkRow(out, FurtherEffectsSheet);
  out.StartRow(HeadingRow);
  // Over all columns of the table but the first, the total's too, as headings of the other tables
  // stand over the whole of theirs.
  const int furtherColumns = lastOrder > 0 ? lastOrder : Cell::Unmerged;
  out.Text({.style = "boldCenterAllBorders", .column = 2, .mergeAcross = furtherColumns},
           "Number of cut sets of order:");
  out.EndRow();
  out.StartRow(HeadingRow + 1);
  out.Text({.style = "boldLeftAllBorders"}, "Fault Tree Cut Sets");
  for (int order = 1; order <= lastOrder; ++order) {
    out.Number({.style = "boldCenterAllBorders"}, order);
  }
  out.Text({.style = "boldCenterAllBorders"}, "Total");
  out.EndRow();
}

void WriteContents(Workbook& out, const Model& model) {
  out.StartSheet(ContentsSheet, {200.25});
  const int lastOrder = ShownOrders(out, LastOrder(model));
  WriteContentsHead(out, lastOrder);
  ForEachTree(model, "Outputting Cut Sets To XML SpreadSheet Navigation Pane: ",
              [&](const FaultTree& tree) { tree.WriteNavigationRow(out, lastOrder); });
  out.EndSheet({.selected = true, .activeRow = 1});
}

void WriteComponentRows(Workbook& out, const FMEA& fmea, const std::string& component,
                        const EffectTable& table) {
  constexpr int RowsInFront = 3;
  if (!out.HasRoom(RowsInFront)) return;
  out.EmptyRow(table.componentMerge);
  out.StartRow();
  out.Text({.style = "boldCenterAllBorders", .mergeAcross = table.componentMerge},
           "Component: " + component);
  out.EndRow();
  out.StartRow();
  for (const char* heading : table.headings) out.Text({.style = "boldLeftAllBorders"}, heading);
  out.EndRow();
  for (const auto& event : fmea.eventsByComponent.at(component)) {
    (fmea.*table.writeRows)(out, *event);
  }
}

void WriteEffects(Workbook& out, const Model& model, const EffectTable& table) {
  out.StartRow();
  WriteContentsLink(out, table.linkMerge);
  out.EndRow();
  if (!model.fmea) return;
  for (const auto& [component, events] : model.fmea->eventsByComponent) {
    if (component != "None") WriteComponentRows(out, *model.fmea, component, table);
  }
}

void WriteDirectEffects(Workbook& out, const Model& model) {
  const EffectTable table{DirectEffectsSheet,
                          2,
                          2,
                          {"Failure Mode", "Direct Effect", "Severity"},
                          &FMEA::WriteDirectEffectRows};
  out.StartSheet(table.name, {70.5, 163.5, 44.25, 162});
  WriteEffects(out, model, table);
  out.EndSheet(SheetView());
}

void WriteFurtherEffects(Workbook& out, const Model& model) {
  const EffectTable table{FurtherEffectsSheet,
                          4,
                          5,
                          {"Failure Mode", "Further Effect", "Severity", "Contributing Events",
                           "Cut Set Unavailability", "Cut Set Frequency"},
                          &FMEA::WriteFurtherEffectRows};
  out.StartSheet(table.name, {76.5, 163.5, 44.25, 122.25, 109.5, 130.5, 126});
  WriteEffects(out, model, table);
  out.EndSheet({.activeRow = 30, .activeColumn = 5});
}

/// The event's name beside its effects, which take the rows from this one on.
void StartEventRow(Workbook& out, const BasicEvent& event, long long rows) {
  out.StartRow();
  out.Text({.style = "normalLeftAllBorders", .mergeDown = MergeOver(static_cast<int>(rows))},
           event.name);
}

/// The tree's sheet, and how bad its top event is, beside so many rows.
void WriteEffectCells(Workbook& out, const FaultTree& tree, int rows) {
  const int mergeDown = MergeOver(rows);
  out.Text({.style = "hyperlinkLeftAllBorders",
            .column = 2,
            .mergeDown = mergeDown,
            .sheet = out.SheetOf(tree)},
           TreeTitle(tree));
  out.Number({.style = "normalLeftAllBorders", .mergeDown = mergeDown}, tree.severity);
}

const CutSetIndex::ListsBySize& ListsOf(const FaultTree& tree, const BasicEvent& event) {
  static const CutSetIndex::ListsBySize NoLists;
  const auto found = tree.primeIndex->lists.find(event.prime);
  return found == tree.primeIndex->lists.end() ? NoLists : found->second;
}

/// How many rows the tree's cut sets with the event take, a row for each member.
long long RowsOf(const FaultTree& tree, const BasicEvent& event) {
  long long rows = 0;
  for (const auto& [size, list] : ListsOf(tree, event)) {
    rows += static_cast<long long>(size) * list->GetCount();
  }
  return rows;
}

}  // namespace

std::unique_ptr<Workbook> Model::WriteWorkbookHead(const std::string& word) const {
  const std::string stem = GetFileStem();
  const std::string folder = MakeResultsFolder(*this, FMEAOutputSuffix);
  const std::string path = JoinPath(folder, stem + (word.empty() ? "" : "_" + word) + "_Excel.xml");
  auto workbook = std::make_unique<Workbook>(*this);
  if (workbook->Open(path)) return workbook;
  DiagnosticLog::Instance().AddError("ERROR: Could not open file " + path +
                                     " to write output to xmlSpreadSheet");
  return nullptr;
}

void Model::WriteExcelWorkbook() {
  const std::unique_ptr<Workbook> out = WriteWorkbookHead("");
  if (!out) return;
  WriteContents(*out, *this);
  WriteDirectEffects(*out, *this);
  WriteFurtherEffects(*out, *this);
  ForEachTree(*this, "Outputting Cut Sets To XML SpreadSheet: ", [&](const FaultTree& tree) {
    tree.WriteCutSetSheet(*out);
  });
}

void FaultTree::WriteNavigationRow(Workbook& stream, int lastOrder) const {
  stream.StartRow();
  stream.Text({.style = "hyperlinkLeftAllBorders", .sheet = stream.SheetOf(*this)},
              TreeTitle(*this));
  if (root) {
    const std::map<int, int> counts = CountCutSetsByOrder();
    for (int order = 1; order <= lastOrder; ++order) {
      const auto found = counts.find(order);
      stream.Number({.style = "normalCenterAllBorders"}, found == counts.end() ? 0 : found->second);
    }
    int total = 0;  // Of orders without a column too.
    for (const auto& [order, count] : counts) total += order > 0 ? count : 0;
    stream.Number({.style = "normalCenterAllBorders"}, total);
  }
  stream.EndRow();
}

void FMEA::WriteDirectEffectRows(Workbook& stream, const BasicEvent& event) const {
  const Trees& trees = GetDirectEffects(event);
  const auto rows = static_cast<long long>(trees.size());
  if (!stream.HasRoom(std::max(rows, 1LL))) return;
  StartEventRow(stream, event, rows);
  for (std::size_t i = 0; i < trees.size(); ++i) {
    if (i > 0) {
      stream.EndRow();
      stream.StartNextRow();
    }
    WriteEffectCells(stream, *trees[i], 1);
  }
  stream.EndRow();
}

void FMEA::WriteFurtherEffectRows(Workbook& stream, const BasicEvent& event) const {
  const Trees& trees = GetFurtherEffects(event);
  long long rows = 0;
  for (const auto& tree : trees) rows += RowsOf(*tree, event);
  if (!stream.HasRoom(std::max(rows, 1LL))) return;
  StartEventRow(stream, event, rows);
  bool first = true;
  for (const auto& tree : trees) {
    for (const auto& [size, list] : ListsOf(*tree, event)) {
      for (CutSet* const cutSet : list->All()) {
        if (!std::exchange(first, false)) stream.StartNextRow();
        WriteEffectCells(stream, *tree, size);
        cutSet->WriteExcelRows(stream, 4);
      }
    }
  }
  if (first) stream.EndRow();  // Of an event that contributes to nothing.
}

}  // namespace FTS
