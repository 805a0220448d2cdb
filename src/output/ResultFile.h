#pragma once

#include <fstream>
#include <string>
#include <string_view>

namespace FTS {

/// A text file of results, written in large pieces: trees with a million cut sets are tens of
/// millions of short texts. What is written while no file is open, or to one that cannot be written
/// any more, is lost without a word: a missing file must not end a run whose other results are
/// fine.
class ResultFile {
 public:
  ResultFile();
  /// Closes.
  ~ResultFile();
  ResultFile(const ResultFile&) = delete;
  ResultFile& operator=(const ResultFile&) = delete;

  /// Makes the file anew. False when that fails.
  bool Open(const std::string& path);
  void Close();

  ResultFile& operator<<(std::string_view text);
  ResultFile& operator<<(int number);
  /// As `FormatDouble` writes it.
  ResultFile& operator<<(double number);

 private:
  void Flush();

  std::ofstream stream;
  std::string pending;  // Written when it has grown to a piece worth writing.
};

}  // namespace FTS
