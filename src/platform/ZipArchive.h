#pragma once

#include <string>
#include <vector>

namespace FTS {

/// How reading an entry of an archive went.
inline constexpr int ZipOk = 0;
inline constexpr int ZipNoArchive = 0x10000;      ///< No such file, or it is no ZIP archive.
inline constexpr int ZipBrokenArchive = 0x80000;  ///< It opens, and its entries can't be listed.
inline constexpr int ZipEntryNotFound = 1280;     ///< No entry has the name.
inline constexpr int ZipEntryRefused = 1;  ///< Too large, or its name leads out of the archive.
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

/// Unpacks every entry of the archive into the folder, with the folders of its name, over files
/// that are there. An entry that is refused, damaged or cannot be written is passed over. The
/// result is `ZipOk`, `ZipNoArchive`, or `ZipBrokenArchive` when the archive's list of entries
/// cannot be read to its end; the entries before that are unpacked all the same. `cutShort` gains
/// the paths of the files that were made and then could not be written to their end.
int UnpackArchive(const std::string& archivePath, const std::string& folder,
                  std::vector<std::string>& cutShort);

}  // namespace FTS
