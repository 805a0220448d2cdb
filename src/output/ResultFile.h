#pragma once

#include <fstream>
#include <string>
#include <string_view>

namespace FTS {

/// Enters an error that names a file which could not be written to its end, as on a full disk.
void ReportCutShort(const std::string& path);

/// A text file of results, written in large pieces: trees with a million cut sets are tens of
/// millions of short texts. It never ends a run whose other results may be fine: what is written
/// while no file is open is lost without a word, and a file that was opened and cannot be written
/// to its end, as on a full disk, is told as an error when it is closed.
class ResultFile {
 public:
  ResultFile();
  /// Closes.
  ~ResultFile();
  ResultFile(const ResultFile&) = delete;
  ResultFile& operator=(const ResultFile&) = delete;

  /// Makes the file anew. False when that fails.
  bool Open(const std::string& initPath);
  /// Writes the rest. One error in the log names the file if not all of it could be written.
  void Close();

  ResultFile& operator<<(std::string_view text);
  ResultFile& operator<<(int number);
  /// As `FormatDouble` writes it.
  ResultFile& operator<<(double number);

 private:
  void Flush();

  std::ofstream stream;
  std::string path;     // Of the file that is open.
  std::string pending;  // Written when it has grown to a piece worth writing.
};

}  // namespace FTS
