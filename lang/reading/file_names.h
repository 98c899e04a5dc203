// Names of files: which belong to a folder or a pattern, and which are unit tables.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "lang/reading/workspace.h"

namespace KelmoLibs::Lang {

/// Whether the name is that of a unit table: *-val.txt or lang-val.text.
bool IsUnitTableName(const std::filesystem::path& path);

struct GivenFile {
  std::filesystem::path path;
  bool isOfFolder;  // the folder was given, not the file
};

/// The files that `paths` name, in this order: a file is itself; a folder gives FilesOfFolder; * and
/// ? in the last part of a path stand for any characters and for any one character. A folder or
/// pattern without a file is a problem.
std::vector<GivenFile> ExpandPaths(const std::vector<std::string>& paths,
                                   std::vector<WorkspaceProblem>& problems);

/// The unit tables and other *.txt files of a folder by name, without those of its folders. The
/// case of ".txt" does not matter.
std::vector<std::filesystem::path> FilesOfFolder(const std::filesystem::path& folder);

}  // namespace KelmoLibs::Lang
