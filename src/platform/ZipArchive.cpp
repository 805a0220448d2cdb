#include "platform/ZipArchive.h"

#include <minizip/unzip.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string_view>

#include "platform/FileSystem.h"

namespace FTS {

namespace {

struct ArchiveCloser {
  void operator()(void* archive) const { unzClose(archive); }
};
using Archive = std::unique_ptr<void, ArchiveCloser>;

constexpr int IgnoreCase = 2;  // The library's code for its name comparison.

bool StartsWithDrive(std::string_view name) { return name.size() > 1 && name[1] == ':'; }

/// Whether an entry of this name would be unpacked outside of the folder it is unpacked to.
bool LeadsOutside(std::string_view name) {
  const std::string native = WithNativeSeparators(name);
  if (native.starts_with(PathSeparator) || StartsWithDrive(native)) return true;
  std::size_t start = 0;
  while (start <= native.size()) {
    const std::size_t end = std::min(native.find(PathSeparator, start), native.size());
    if (native.substr(start, end - start) == "..") return true;
    start = end + 1;
  }
  return false;
}

/// Unpacks the open entry. The declared size is a claim of the archive, so memory grows only with
/// what is really there; the library stops at the declared size.
ZipEntry Unpack(const Archive& archive, unsigned long long declaredSize) {
  constexpr unsigned ChunkSize = 1U << 20;
  ZipEntry entry;
  int count = 0;
  do {
    const std::size_t filled = entry.data.size();
    entry.data.resize(filled + ChunkSize);
    count = unzReadCurrentFile(archive.get(), entry.data.data() + filled, ChunkSize);
    entry.data.resize(filled + static_cast<std::size_t>(std::max(count, 0)));
  } while (count > 0);
  // Closing compares the check sum, but only of an entry that was read to its declared end.
  const bool sound = unzCloseCurrentFile(archive.get()) == UNZ_OK && count == 0 &&
                     entry.data.size() == declaredSize;
  return sound ? entry : ZipEntry{ZipEntryDamaged, ""};
}

/// Unpacks the entry at which the archive stands.
ZipEntry UnpackCurrent(const Archive& archive, std::string_view entryName) {
  unz_file_info64 info{};
  if (unzGetCurrentFileInfo64(archive.get(), &info, nullptr, 0, nullptr, 0, nullptr, 0) != UNZ_OK) {
    return {ZipEntryDamaged, ""};
  }
  if (info.uncompressed_size > LargestZipEntry || LeadsOutside(entryName)) {
    return {ZipEntryRefused, ""};
  }
  if (unzOpenCurrentFile(archive.get()) != UNZ_OK) return {ZipEntryDamaged, ""};
  return Unpack(archive, info.uncompressed_size);
}

std::string CurrentName(const Archive& archive) {
  unz_file_info64 info{};
  unzGetCurrentFileInfo64(archive.get(), &info, nullptr, 0, nullptr, 0, nullptr, 0);
  std::string name(info.size_filename, '\0');
  unzGetCurrentFileInfo64(archive.get(), nullptr, name.data(), name.size(), nullptr, 0, nullptr, 0);
  return name;
}

void WriteEntry(const Archive& archive, const std::string& folder,
                std::vector<std::string>& cutShort) {
  const std::string name = CurrentName(archive);
  if (EndsWithSeparator(name)) return;  // A folder; those that hold files are made with them.
  const ZipEntry entry = UnpackCurrent(archive, name);
  if (entry.status != ZipOk) return;
  const std::filesystem::path target = JoinPath(folder, WithNativeSeparators(name));
  std::error_code failure;
  std::filesystem::create_directories(target.parent_path(), failure);
  std::ofstream file(target, std::ios::binary);
  if (!file.is_open()) return;
  file << entry.data;
  file.close();
  if (!file) cutShort.push_back(target.string());
}

}  // namespace

int UnpackArchive(const std::string& archivePath, const std::string& folder,
                  std::vector<std::string>& cutShort) {
  const Archive archive(unzOpen64(WithNativeSeparators(archivePath).c_str()));
  if (!archive) return ZipNoArchive;
  unz_global_info64 info{};
  if (unzGetGlobalInfo64(archive.get(), &info) != UNZ_OK) return ZipBrokenArchive;
  // The library finds fault with a list of nothing.
  int status = info.number_entry == 0 ? UNZ_END_OF_LIST_OF_FILE : unzGoToFirstFile(archive.get());
  for (ZPOS64_T i = 0; i < info.number_entry && status == UNZ_OK; ++i) {
    WriteEntry(archive, folder, cutShort);
    status = unzGoToNextFile(archive.get());
  }
  return status == UNZ_OK || status == UNZ_END_OF_LIST_OF_FILE ? ZipOk : ZipBrokenArchive;
}

ZipEntry ReadZipEntry(const std::string& archivePath, const std::string& entryName) {
  const Archive archive(unzOpen64(WithNativeSeparators(archivePath).c_str()));
  if (!archive) return {ZipNoArchive, ""};
  if (unzLocateFile(archive.get(), entryName.c_str(), IgnoreCase) != UNZ_OK) {
    return {ZipEntryNotFound, ""};
  }
  return UnpackCurrent(archive, entryName);
}

}  // namespace FTS
