// Stands in for the library of FaultTree+ in tests: it has the same eight entries, does nothing in
// them and writes down how they were called. It is loaded while the tests run, and so is no part of
// them. Nothing here is a template or inline, for such things can keep a library from being
// unloaded.

#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstring>

namespace {

constexpr std::size_t Size = std::size_t{1} << 20;
char calls[Size];
std::size_t used = 0;
std::uint32_t nextRecord = 1;
bool accepts = true;
bool saves = true;
bool createsRecords = true;
char refusedField[64] = "";

void Record(const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  const int written = std::vsnprintf(calls + used, Size - used, format, arguments);
  va_end(arguments);
  if (written > 0 && used + static_cast<std::size_t>(written) < Size) {
    used += static_cast<std::size_t>(written);
  }
}

}  // namespace

extern "C" {

// For tests.

const char* RecordedCalls() { return calls; }
void RefusePassword() { accepts = false; }
void RefuseSaving() { saves = false; }
void RefuseRecords() { createsRecords = false; }
/// "*" stands for all fields.
void RefuseField(const char* field) { std::strncpy(refusedField, field, sizeof(refusedField) - 1); }

// The entries.

std::int32_t PSADLLValidate(std::int32_t first, std::int32_t second) {
  Record("Validate(%d, %d)\n", first, second);
  return accepts ? 1 : 0;
}

std::int32_t PSADLLNewProject() {
  Record("NewProject()\n");
  return 0;
}

std::int32_t PSADLLSaveProject(const char* path) {
  Record("SaveProject(%s)\n", path);
  return saves ? 1 : 0;
}

void PSADLLGetProjectOptions(std::int32_t* first, std::int32_t* second) {
  *first = 17;
  *second = -4;
  Record("GetProjectOptions()\n");
}

void PSADLLSetProjectOptions(std::int32_t first, std::int32_t second) {
  Record("SetProjectOptions(%d, %d)\n", first, second);
}

std::uint32_t PSADLLCreateRecord(const char* table, const char* name) {
  const std::uint32_t record = createsRecords ? nextRecord++ : 0xFFFFFFFFU;
  Record("%s: %s = %d\n", table, name, static_cast<std::int32_t>(record));
  return record;
}

std::int32_t PSADLLSetFieldValue(const char* table, const char* field, std::int32_t record,
                                 const char* text, std::int32_t integer, double number) {
  Record("%s %d %s: '%s' %d %g\n", table, record, field, text, integer, number);
  const bool refused = std::strcmp(refusedField, "*") == 0 || std::strcmp(refusedField, field) == 0;
  return refused ? 0 : 1;
}

void PSADLLStartFaultTreePlus(const char* path, const char* directory, std::int32_t mode,
                              std::int32_t wait) {
  Record("StartFaultTreePlus(%s, %s, %d, %d)\n", path, directory, mode, wait);
}

}  // extern "C"
