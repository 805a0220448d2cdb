#include "output/FTPlusProject.h"

#include <iostream>

#include "app/Config.h"
#include "app/DiagnosticLog.h"
#include "faulttree/FaultTreeNode.h"

namespace FTS {

FTPlusProject::FTPlusProject(const DynamicLibrary& library, std::map<int, int>& initRecords,
                             int initVersion)
    : createRecord(library.Find<CreateEntry>("_PSADLLCreateRecord@8")),
      setFieldValue(library.Find<SetEntry>("_PSADLLSetFieldValue@28")),
      records(initRecords),
      version(initVersion) {
  StartPass();
}

bool FTPlusProject::CanWriteRecords() const {
  if (createRecord && setFieldValue) return true;
  DiagnosticLog::Instance().AddWarning("Couldn't load FT+ DLL Functions");
  return false;
}

int FTPlusProject::RecordOf(const FaultTreeNode& node) const {
  const auto found = records.find(node.GetId());
  return found == records.end() ? NoRecord : found->second;
}

int FTPlusProject::CreateRecord(const char* table, const FaultTreeNode& node) {
  const int record = CreateRecord(table, node.GetFTPlusName());
  if (record == NoRecord && !Config::Instance().runSilent) {
    std::cout << "FTPID not set! (" << record << ")\n";
  }
  records[node.GetId()] = record;
  return record;
}

// Ids have 32 bits without a sign; the one that is all ones is none.
int FTPlusProject::CreateRecord(const char* table, const std::string& name) {
  return static_cast<int>(createRecord(table, name.c_str()));
}

bool FTPlusProject::SetText(const char* table, const std::string& field, int record,
                            const std::string& value) {
  return setFieldValue(table, field.c_str(), record, value.c_str(), 0, 0.0) != 0;
}

bool FTPlusProject::SetInteger(const char* table, const std::string& field, int record, int value) {
  return setFieldValue(table, field.c_str(), record, "", value, 0.0) != 0;
}

bool FTPlusProject::SetNumber(const char* table, const std::string& field, int record,
                              double value) {
  return setFieldValue(table, field.c_str(), record, "", 0, value) != 0;
}

void FTPlusProject::Tell(int record, const std::string& text) {
  if (!Config::Instance().runSilent) std::cout << " " << record << ": " << text << "\n";
}

}  // namespace FTS
