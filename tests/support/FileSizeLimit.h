#pragma once

#include <sys/resource.h>

#include <csignal>

namespace FTS {

/// As long as it lives no file of this process grows beyond so many bytes, as on a full disk.
class FileSizeLimit {
 public:
  explicit FileSizeLimit(rlim_t bytes) : handler(std::signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit lower{bytes, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &lower);
  }

  ~FileSizeLimit() {
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
  }

  FileSizeLimit(const FileSizeLimit&) = delete;
  FileSizeLimit& operator=(const FileSizeLimit&) = delete;

 private:
  void (*handler)(int);  // Without one the signal of the first such write ends the process.
  rlimit before{};
};

}  // namespace FTS
