#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <system_error>

namespace FTS {

TemporaryFolder::TemporaryFolder()
    : path((std::filesystem::temp_directory_path() / "vtn-test-XXXXXX").string()) {
  if (!mkdtemp(path.data())) throw std::runtime_error("Cannot make the folder " + path);
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path, ignored);
}

std::string TemporaryFolder::Path(std::string_view name) const {
  return path + "/" + std::string(name);
}

std::string TemporaryFolder::Write(std::string_view name, std::string_view content) const {
  const std::string file = Path(name);
  std::filesystem::create_directories(std::filesystem::path(file).parent_path());
  std::ofstream stream(file, std::ios::binary);
  stream << content;
  stream.close();
  if (!stream) throw std::runtime_error("Cannot write the file " + file);
  return file;
}

std::string TemporaryFolder::Read(std::string_view name) const {
  std::ifstream stream(Path(name), std::ios::binary);
  EXPECT_TRUE(stream) << "No file " << name << " in the temporary folder";
  std::ostringstream content;
  content << stream.rdbuf();
  return content.str();
}

bool TemporaryFolder::Contains(std::string_view name) const {
  return std::filesystem::exists(Path(name));
}

}  // namespace FTS
