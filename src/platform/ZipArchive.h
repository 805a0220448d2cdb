#pragma once

#include <string>

namespace FTS {

/// How reading an entry of an archive went.
inline constexpr int ZipOk = 0;
inline constexpr int ZipNoArchive = 0x10000;   ///< No such file, or it is no ZIP archive.
inline constexpr int ZipEntryNotFound = 1280;  ///< No entry has the name.
inline constexpr int ZipEntryRefused = 1;      ///< Too large, or its name leads out of the archive.
inline constexpr int ZipEntryDamaged = 2;  ///< It cannot be unpacked, or its check sum is wrong.

/// The largest entry that is unpacked, by the size that the archive declares: 1 GiB.
inline constexpr unsigned long long LargestZipEntry = 1ULL << 30;

struct ZipEntry {
  int status = ZipOk;
  std::string data;  ///< Empty unless the status is `ZipOk`.
};

/// Unpacks one entry of the archive at `archivePath`. The first entry whose name is `entryName`
/// without regard to the case of ASCII letters is taken. An absolute name and one with ".." among
/// its folders are refused.
ZipEntry ReadZipEntry(const std::string& archivePath, const std::string& entryName);

}  // namespace FTS
