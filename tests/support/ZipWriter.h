#pragma once

#include <string>
#include <vector>

namespace FTS {

struct ZipItem {
  std::string name;
  std::string data;
};

/// Writes a ZIP archive of these entries, in order, each of them compressed. Throws
/// std::runtime_error if that fails.
void WriteZip(const std::string& path, const std::vector<ZipItem>& items);

}  // namespace FTS
