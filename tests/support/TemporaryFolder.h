#pragma once

#include <string>
#include <string_view>

namespace FTS {

/// A fresh, empty folder that lives as long as the object; the only place where tests write.
class TemporaryFolder {
 public:
  TemporaryFolder();
  ~TemporaryFolder();

  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  /// The folder's absolute path, without a separator at its end.
  const std::string& Path() const { return path; }

  /// The path of a file or folder inside; it need not exist.
  std::string Path(std::string_view name) const;

  /// Writes a file, with the folders it lies in, and returns its path.
  std::string Write(std::string_view name, std::string_view content) const;

  /// The bytes of a file inside. One that can't be read fails the test and gives no text.
  std::string Read(std::string_view name) const;

  bool Contains(std::string_view name) const;

 private:
  std::string path;
};

}  // namespace FTS
