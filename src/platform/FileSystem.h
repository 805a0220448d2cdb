#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace FTS {

/// What stands between the folders of a path that the program forms. Users may type '/' or '\\'.
inline constexpr char PathSeparator = '/';

/// The longest path that is taken as a file name, in bytes.
inline constexpr int LongestPath = 260;

/// A path cut into its parts; put together again in this order they are the path.
struct PathParts {
  std::string drive;      ///< Always empty on POSIX.
  std::string directory;  ///< With its separator at the end; empty for a bare file name.
  std::string baseName;   ///< The file's name without its last extension.
  std::string extension;  ///< From the last point of the file's name on, the point included.
};

/// The path with every separator turned into the platform's.
std::string WithNativeSeparators(std::string_view path);

/// The path from the root, without "." and ".." in it, with native separators. Nothing is returned
/// for an empty path and for one whose absolute form is longer than `LongestPath`. The file need
/// not exist.
std::optional<std::string> AbsolutePath(std::string_view path);

/// Cuts a path into its parts, with native separators. A file name that starts with its only point
/// is all extension.
PathParts SplitPath(std::string_view path);

/// Whether the text's last character separates folders, in either spelling.
bool EndsWithSeparator(std::string_view text);

/// `name` inside `folder`; a separator is put between them unless `folder` is empty or ends in one.
/// The folder's separators become native, the name stays as it is.
std::string JoinPath(std::string_view folder, std::string_view name);

/// Whether a file of that name exists and may be read. A folder is no file.
bool FileReadable(std::string_view path);

/// Whether there is a file of bytes, and no folder, pipe or device; links are followed.
bool IsRegularFile(std::string_view path);

bool IsDirectory(std::string_view path);

/// Makes the folder and those above it; one that exists is fine. Throws
/// std::filesystem::filesystem_error with the operation name "create_directories".
void CreateFolders(std::string_view path);

/// The absolute path of the running program's file; empty if the system doesn't tell.
std::string ProgramPathFromSystem();

/// The bytes of a file; nothing if it is a folder or can't be read.
std::optional<std::string> ReadWholeFile(std::string_view path);

/// Puts a file of that content in the place of the one that is there, if any: under a temporary
/// name beside it first, so that whoever reads the file, and a run that is ended in between, finds
/// either the old one or the new one whole. False when that fails; the old file is then still
/// there.
bool ReplaceFile(std::string_view path, std::string_view content);

/// False when the file is there and cannot be removed.
bool RemoveFile(std::string_view path);

}  // namespace FTS
