// Names of files: which belong to a folder or a pattern, and which are unit tables.
#pragma once

#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

namespace KelmoLibs::Lang {

/// A file or folder that cannot be used: the run ends with status 2.
struct FileProblem {
  std::string path;    // UTF-8
  std::string reason;  // key of a text: "problem.unreadable" and so on
};

/// The path as it is shown, in UTF-8 and with /. Unlike path::generic_u8string it keeps both slashes in
/// front of the name of a computer, "//server/share".
std::string GenericName(const std::filesystem::path& path);

/// The path without "." and "x/..". Unlike path::lexically_normal it keeps the two backslashes in front
/// of the name of a computer.
std::filesystem::path NormalPath(const std::filesystem::path& path);

/// The normal path from the root. A path with the name of a computer is absolute, which
/// std::filesystem::absolute of MinGW-w64 does not know.
std::filesystem::path AbsolutePath(const std::filesystem::path& path, std::error_code& error);

/// A text that is the same for all paths of one file. Files whose paths differ only by case have the
/// same one too.
std::string FileKey(const std::filesystem::path& path);

/// Whether the name is that of a unit table: *-val.txt or lang-val.text.
bool IsUnitTableName(const std::filesystem::path& path);

/// A file to be checked.
struct GivenFile {
  std::filesystem::path path;
  bool isOfFolder;  // its folder was given, and not the file itself
};

/// The files that `paths` (UTF-8) name, in this order: a file is itself; a folder gives FilesOfFolder; * and
/// ? in the last part of a path stand for any characters and for any one character. A folder or
/// pattern without a file is a problem.
std::vector<GivenFile> ExpandPaths(const std::vector<std::string>& paths,
                                   std::vector<FileProblem>& problems);

/// The unit tables and other *.txt files of a folder by name, without those of its folders. The
/// case of ".txt" does not matter.
std::vector<std::filesystem::path> FilesOfFolder(const std::filesystem::path& folder);

}  // namespace KelmoLibs::Lang
