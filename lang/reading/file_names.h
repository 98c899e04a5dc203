// Names of files: which belong to a folder or a pattern, and which are unit tables.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "lang/reading/workspace.h"

namespace KelmoLibs::Lang {

/// Whether the name is that of a unit table: *-val.txt or lang-val.text.
bool IsUnitTableName(const std::filesystem::path& path);

/// The files that `paths` name, in this order: a file is itself; a folder gives its unit tables and
/// other *.txt files by name, without those of its folders; * and ? in the last part of a path stand
/// for any characters and for any one character. A path or pattern without a file is a problem.
std::vector<std::filesystem::path> ExpandPaths(const std::vector<std::string>& paths,
                                               std::vector<WorkspaceProblem>& problems);

}  // namespace KelmoLibs::Lang
