#include "lang/reading/file_names.h"

#include <algorithm>
#include <string_view>
#include <system_error>

#include "lang/reading/pattern.h"
#include "lang/unicode/ascii.h"

namespace KelmoLibs::Lang {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kNeutralUnitTable = "lang-val.text";

template <class Predicate>
std::vector<fs::path> FilesOf(const fs::path& folder, Predicate isWanted) {
  std::vector<fs::path> files;
  std::error_code error;
  for (fs::directory_iterator entry(folder.empty() ? fs::path(".") : folder, error), end;
       !error && entry != end; entry.increment(error)) {
    const fs::path name = entry->path().filename();
    std::error_code notRegular;
    if (isWanted(name.u8string()) && entry->is_regular_file(notRegular)) {
      files.push_back(folder / name);
    }
  }
  std::sort(files.begin(), files.end());
  return files;
}

// Whether the path begins as "\\server\share". On POSIX two slashes are one.
bool HasComputer(const fs::path& path) {
  const fs::path::string_type& given = path.native();
  const auto isSlash = [](auto c) { return c == '/' || c == '\\'; };
  return fs::path::preferred_separator != '/' && given.size() > 2 && isSlash(given[0]) &&
         isSlash(given[1]);
}

}  // namespace

std::string GenericName(const fs::path& path) {
  std::string name = path.u8string();
  if constexpr (fs::path::preferred_separator != '/') {
    std::replace(name.begin(), name.end(), '\\', '/');
  }
  return name;
}

fs::path NormalPath(const fs::path& path) {
  if (!HasComputer(path)) {
    return path.lexically_normal();
  }
  return fs::path::preferred_separator +
         fs::path(path.native().substr(1)).lexically_normal().native();
}

fs::path AbsolutePath(const fs::path& path, std::error_code& error) {
  return NormalPath(HasComputer(path) ? path : fs::absolute(path, error));
}

std::string FileKey(const fs::path& path) {
  std::error_code error;
  // Without the first step, a relative path would stay one until its file is made.
  const fs::path canonical = fs::weakly_canonical(AbsolutePath(path, error), error);
  return AsciiLowerCase((error ? path : canonical).generic_u8string());
}

bool IsUnitTableName(const fs::path& path) {
  const std::string name = AsciiLowerCase(path.filename().u8string());
  return FitsPattern(name, "*-val.txt") || name == kNeutralUnitTable;
}

std::vector<GivenFile> ExpandPaths(const std::vector<std::string>& paths,
                                   std::vector<FileProblem>& problems) {
  std::vector<GivenFile> files;
  for (const std::string& given : paths) {
    const fs::path path = fs::u8path(given);
    std::error_code error;
    std::vector<fs::path> found;
    const bool isFolder = fs::is_directory(path, error);
    if (isFolder) {
      found = FilesOfFolder(path);
    } else if (const std::string pattern = path.filename().u8string();
               pattern.find_first_of("*?") != std::string::npos && !fs::exists(path, error)) {
      found = FilesOf(path.parent_path(),
                      [&pattern](const std::string& name) { return FitsPattern(name, pattern); });
    } else {
      found.push_back(path);
    }
    if (found.empty()) {
      const fs::directory_iterator opened(isFolder ? path : fs::path("."), error);
      problems.push_back({given, isFolder && error ? "problem.unreadable" : "problem.no_files"});
    }
    for (const fs::path& file : found) {
      files.push_back({file, isFolder});
    }
  }
  return files;
}

std::vector<fs::path> FilesOfFolder(const fs::path& folder) {
  return FilesOf(folder, [](const std::string& name) {
    const std::string lower = AsciiLowerCase(name);
    return FitsPattern(lower, "*.txt") || lower == kNeutralUnitTable;
  });
}

}  // namespace KelmoLibs::Lang
