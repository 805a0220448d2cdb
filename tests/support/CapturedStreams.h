#pragma once

#include <iostream>
#include <sstream>
#include <streambuf>
#include <string>

namespace FTS {

/// Takes what is written to std::cout and std::cerr while it lives, each apart, and gives the
/// streams back their own buffers when it dies.
class CapturedStreams {
 public:
  CapturedStreams()
      : outBuffer(std::cout.rdbuf(out.rdbuf())), errorBuffer(std::cerr.rdbuf(error.rdbuf())) {}

  ~CapturedStreams() {
    std::cout.rdbuf(outBuffer);
    std::cerr.rdbuf(errorBuffer);
  }

  CapturedStreams(const CapturedStreams&) = delete;
  CapturedStreams& operator=(const CapturedStreams&) = delete;

  /// What has been written to the standard output so far.
  std::string Output() const { return out.str(); }

  /// What has been written to the standard error stream so far.
  std::string Errors() const { return error.str(); }

 private:
  std::ostringstream out;
  std::ostringstream error;
  std::streambuf* outBuffer;  // The streams' own, not owned.
  std::streambuf* errorBuffer;
};

}  // namespace FTS
