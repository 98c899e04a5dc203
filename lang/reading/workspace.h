// All files of one run, merged by id, with the base that the translations are compared with.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "lang/reading/dictionary_file.h"
#include "lang/reading/merged_dictionary.h"
#include "lang/reading/unit_file.h"

namespace KelmoLibs::Lang {

/// One file of a run: a dictionary or a unit table.
struct WorkspaceFile {
  std::unique_ptr<DictionaryFile> dictionary;  // null if it is a unit table
  std::unique_ptr<UnitFile> units;             // null if it is a dictionary
  bool isReported = true;                      // false: only read, to compare other files with it

  const SourceFile& Source() const noexcept {
    return dictionary ? dictionary->Source() : units->Source();
  }
};

struct Workspace {
  std::vector<WorkspaceFile> files;
  std::map<std::string, MergedDictionary, std::less<>> dictionaries;  // by intended id
  std::optional<std::uint32_t> baseFile;

  /// The dictionary that the others are compared with, or null.
  const MergedDictionary* Base() const noexcept;

  /// The dictionary that file number `file` is compared with, or null: without a base, for a file
  /// with the id of the base, and for a set of its own. A dictionary that has less than a tenth of
  /// the keys of the base is a set of its own.
  const MergedDictionary* BaseOf(std::uint32_t file) const noexcept;
};

/// A file or folder that cannot be used: the run ends with status 2.
struct WorkspaceProblem {
  std::string path;    // UTF-8
  std::string reason;  // key of a text: "problem.unreadable" and so on
};

struct WorkspaceRequest {
  std::vector<std::string> paths;   // files, folders, patterns with * and ?; UTF-8
  std::optional<std::string> base;  // UTF-8
};

/// Reads the files of `request`. Files of one id merge in the order given, in folders by name. For
/// single files it also reads their base and the files of the same ids in their folders; these are
/// not reported.
Workspace ReadWorkspace(const WorkspaceRequest& request, std::vector<WorkspaceProblem>& problems);

}  // namespace KelmoLibs::Lang
