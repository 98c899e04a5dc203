// Names of files: which belong to a folder or a pattern, and which are unit tables.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace KelmoLibs::Lang {

/// A file or folder that cannot be used: the run ends with status 2.
struct FileProblem {
  std::string path;    // UTF-8
  std::string reason;  // key of a text: "problem.unreadable" and so on
};

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
