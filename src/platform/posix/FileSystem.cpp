#include "platform/FileSystem.h"

#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <system_error>

namespace FTS {

std::string WithNativeSeparators(std::string_view path) {
  std::string native(path);
  std::replace(native.begin(), native.end(), '\\', PathSeparator);
  return native;
}

std::optional<std::string> AbsolutePath(std::string_view path) {
  if (path.empty()) return std::nullopt;
  std::error_code failure;
  const auto absolute = std::filesystem::absolute(WithNativeSeparators(path), failure);
  if (failure) return std::nullopt;
  std::string text = absolute.lexically_normal().string();
  if (text.size() > LongestPath) return std::nullopt;
  return text;
}

PathParts SplitPath(std::string_view path) {
  const std::string native = WithNativeSeparators(path);
  const std::size_t separator = native.rfind(PathSeparator);
  const std::size_t nameStart = separator == std::string::npos ? 0 : separator + 1;
  const std::string name = native.substr(nameStart);
  const std::size_t point = std::min(name.rfind('.'), name.size());
  return {"", native.substr(0, nameStart), name.substr(0, point), name.substr(point)};
}

bool EndsWithSeparator(std::string_view text) {
  return !text.empty() && (text.back() == '/' || text.back() == '\\');
}

std::string JoinPath(std::string_view folder, std::string_view name) {
  std::string path = WithNativeSeparators(folder);
  if (!path.empty() && !EndsWithSeparator(path)) path += PathSeparator;
  return path.append(name);
}

bool FileReadable(std::string_view path) {
  const std::string native = WithNativeSeparators(path);
  return access(native.c_str(), R_OK) == 0 && !IsDirectory(native);
}

bool IsRegularFile(std::string_view path) {
  std::error_code failure;
  return std::filesystem::is_regular_file(WithNativeSeparators(path), failure);
}

bool IsDirectory(std::string_view path) {
  std::error_code failure;
  return std::filesystem::is_directory(WithNativeSeparators(path), failure);
}

void CreateFolders(std::string_view path) {
  const std::string native = WithNativeSeparators(path);
  std::error_code failure;
  std::filesystem::create_directories(native, failure);
  // The library's own exception words the operation differently from one version to the next.
  if (failure) throw std::filesystem::filesystem_error("create_directories", native, failure);
}

std::string ProgramPathFromSystem() {
  std::error_code failure;
  const auto path = std::filesystem::read_symlink("/proc/self/exe", failure);
  return failure ? std::string() : path.string();
}

std::optional<std::string> ReadWholeFile(std::string_view path) {
  const std::string native = WithNativeSeparators(path);
  if (IsDirectory(native)) return std::nullopt;  // A folder opens like a file and then reads empty.
  std::ifstream file(native, std::ios::binary);
  if (!file) return std::nullopt;
  std::string content;
  // Small at first: most files are, and memory that is never filled takes its time too.
  std::size_t chunk = std::size_t{1} << 14;
  for (std::size_t filled = 0; file; filled = content.size(), chunk *= 2) {
    content.resize(filled + chunk);
    file.read(content.data() + filled, static_cast<std::streamsize>(chunk));
    content.resize(filled + static_cast<std::size_t>(file.gcount()));
  }
  if (file.bad()) return std::nullopt;
  return content;
}

bool ReplaceFile(std::string_view path, std::string_view content) {
  const std::string target = WithNativeSeparators(path);
  const std::string temporary = target + ".tmp";
  std::ofstream file(temporary, std::ios::binary | std::ios::trunc);
  file.write(content.data(), static_cast<std::streamsize>(content.size()));
  file.close();
  std::error_code failure;
  if (file) std::filesystem::rename(temporary, target, failure);
  if (file && !failure) return true;
  std::filesystem::remove(temporary, failure);
  return false;
}

bool RemoveFile(std::string_view path) {
  std::error_code failure;
  std::filesystem::remove(WithNativeSeparators(path), failure);
  return !failure;
}

}  // namespace FTS
