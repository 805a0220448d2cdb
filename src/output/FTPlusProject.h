#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "faulttree/Forward.h"
#include "faulttree/Marks.h"
#include "platform/DynamicLibrary.h"

namespace FTS {

// The tables of a FaultTree+ project.
inline constexpr const char* GatesTable = "Gates";
inline constexpr const char* EventsTable = "Events";

/// The project that the library of FaultTree+ is filling: records in two tables, made and written
/// field by field. A field that the library refuses is for the caller to tell; a project may well
/// be saved without it.
class FTPlusProject {
 public:
  static constexpr int NoRecord = -1;
  /// A library of before there were passwords knows fewer failure models.
  static constexpr int LegacyVersion = 1;
  static constexpr int CurrentVersion = 2;

  /// `initRecords`, from node id to record, is kept up to date; it and the library outlive this.
  FTPlusProject(const DynamicLibrary& library, std::map<int, int>& initRecords, int initVersion);

  /// False, with a warning each time, when the library lacks what writes records.
  bool CanWriteRecords() const;
  /// Begins a walk over all trees, in which `Marks` have met nothing.
  void StartPass() { marks.emplace(); }
  OnceMarks& Marks() { return *marks; }
  int GetVersion() const { return version; }

  /// The node's record; `NoRecord` when it has none.
  int RecordOf(const FaultTreeNode& node) const;
  /// A new record for the node under its short name. One that could not be made is told.
  int CreateRecord(const char* table, const FaultTreeNode& node);
  /// A new record that stands for no node.
  int CreateRecord(const char* table, const std::string& name);

  bool SetText(const char* table, const std::string& field, int record, const std::string& value);
  bool SetInteger(const char* table, const std::string& field, int record, int value);
  bool SetNumber(const char* table, const std::string& field, int record, double value);

  /// Tells on the console what went wrong with a record: " <record>: <text>", one line.
  static void Tell(int record, const std::string& text);

 private:
  using CreateEntry = std::uint32_t FTS_LIBRARY_CALL(const char* table, const char* name);
  using SetEntry = std::int32_t FTS_LIBRARY_CALL(const char* table, const char* field,
                                                 std::int32_t record, const char* text,
                                                 std::int32_t integer, double number);

  CreateEntry* createRecord;  // Null when the library lacks it, as the next.
  SetEntry* setFieldValue;
  std::map<int, int>& records;
  int version;
  std::optional<OnceMarks> marks;
};

}  // namespace FTS
