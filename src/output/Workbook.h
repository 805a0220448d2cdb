#pragma once

#include <cstddef>
#include <initializer_list>
#include <set>
#include <string>
#include <string_view>

#include "model/Forward.h"
#include "output/ResultFile.h"
#include "output/SheetNames.h"

namespace FTS {

/// A cell of a workbook but for what stands in it. What is not set is left out of the file.
struct Cell {
  static constexpr int Unmerged = -1;

  std::string_view style = {};  ///< An id of the style block.
  int column = 0;               ///< From 1 on; 0: the next.
  int mergeAcross = Unmerged;   ///< How many further columns it covers.
  int mergeDown = Unmerged;     ///< How many further rows.
  std::string_view sheet = {};  ///< The sheet that a link leads to.
};

/// What `Cell::mergeDown` says of a cell that covers so many rows.
int MergeOver(int count);

/// What is noted about how a sheet is shown. 0: nothing.
struct SheetView {
  bool selected = false;
  int activeRow = 0;
  int activeColumn = 0;
};

/// A workbook in the XML spreadsheet format that spreadsheet programs have opened since 2003. It is
/// streamed: nothing of it is kept, and whoever writes starts and ends sheets and rows in turn.
class Workbook {
 public:
  /// Spreadsheet programs refuse a sheet of more rows or columns.
  static constexpr int MostRowsOfSheet = 1'048'576;
  static constexpr int MostColumnsOfSheet = 16'384;
  /// Nor do they take a longer text in a cell, in UTF-16 units.
  static constexpr std::size_t LongestText = 32'767;

  /// Names a sheet for each tree of the model.
  explicit Workbook(const Model& initModel);
  /// Writes the end.
  ~Workbook();
  Workbook(const Workbook&) = delete;
  Workbook& operator=(const Workbook&) = delete;

  /// Makes the file and writes everything in front of the sheets. False when it cannot be made.
  bool Open(const std::string& path);

  const Model& GetModel() const { return model; }
  const std::string& SheetOf(const FaultTree& tree) const { return names.Of(tree); }

  void StartSheet(std::string_view name, std::initializer_list<double> columnWidths);
  void EndSheet();
  void EndSheet(const SheetView& view);

  /// A row behind the last, or, given its number from 1 on, that row.
  void StartRow();
  void StartRow(int number);
  /// The row behind the last, given its number. For rows that a merged cell above reaches into:
  /// what is left out of them is covered, and nobody has to work out which row they are.
  void StartNextRow();
  void EndRow();
  /// A row with nothing but an empty cell, which covers so many further columns.
  void EmptyRow(int mergeAcross);
  /// The number of the row that was started last, 0 before the first.
  int GetRow() const { return row; }
  /// Whether so many more rows fit on the sheet. The first refusal is a warning.
  bool HasRoom(long long rows);
  /// Whether the sheet may have so many columns. The first refusal is a warning.
  bool HasColumns(int columns);

  void Empty(const Cell& cell);
  /// A text that is too long is cut, with a warning that says where it stands and how it begins;
  /// one for all texts of a sheet that begin like it.
  void Text(const Cell& cell, std::string_view text);
  void Number(const Cell& cell, int number);
  /// A figure; one that is no finite number is written as text.
  void Number(const Cell& cell, double number);
  /// In terms of relative rows and columns. The spreadsheet program computes the value.
  void Formula(const Cell& cell, std::string_view formula);

 private:
  void WarnOfLimit(bool& warned, int limit, const char* what) const;
  std::string_view Fitted(std::string_view text);
  void WriteCellStart(const Cell& cell);
  void WriteAttribute(std::string_view name, int value);
  void WriteData(const Cell& cell, std::string_view type, std::string_view value);

  const Model& model;
  SheetNames names;
  ResultFile out;
  std::string sheet;  // The one that is being written.
  int row = 0;
  bool cutShort = false;           // It has been refused rows.
  bool tooWide = false;            // It has been refused columns.
  std::set<std::string> cutTexts;  // The beginnings of its texts that were cut.
};

}  // namespace FTS
