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
#include "lang/reading/file_names.h"
#include "lang/reading/merged_dictionary.h"
#include "lang/reading/unit_file.h"

namespace KelmoLibs::Lang {

/// One file of a run: a dictionary or a unit table.
struct WorkspaceFile {
  std::unique_ptr<DictionaryFile> dictionary;  // null if it is a unit table
  std::unique_ptr<UnitFile> units;             // null if it is a dictionary
  bool isReported = true;                      // false: only read, to compare other files with it

  /// Most of its keys are not in the base, and it has less than a tenth of the keys of each file of
  /// the base. These keys are not surplus.
  bool isSetOfItsOwn = false;

  const SourceFile& Source() const noexcept {
    return dictionary ? dictionary->Source() : units->Source();
  }
};

/// A file of the base that a dictionary does not translate: it has less than a tenth of the keys. The
/// others are not missing.
struct UntranslatedFile {
  std::uint32_t baseFile;  // index in Workspace::files
  std::string id;          // of the dictionary
};

struct Workspace {
  std::vector<WorkspaceFile> files;
  std::map<std::string, MergedDictionary, std::less<>> dictionaries;    // by intended id
  std::map<std::string, std::vector<std::string_view>> idsByLowerCase;  // of the dictionaries
  std::optional<std::uint32_t> baseFile;
  std::vector<UntranslatedFile> untranslated;  // by index of the base's file, then by id

  /// The dictionary that the others are compared with, or null.
  const MergedDictionary* Base() const noexcept;

  /// The dictionary that file number `file` is compared with, or null: without a base, for a unit
  /// table and for a file with the id of the base.
  const MergedDictionary* BaseOf(std::uint32_t file) const noexcept;

  /// Whether keys of file number `ofBaseFile` of the base are missing in the dictionary of file number
  /// `file` if it lacks them.
  bool OwesKeysOf(std::uint32_t file, std::uint32_t ofBaseFile) const noexcept;
};

/// Merges the dictionaries of all files by id, and compares them with the base. To be called once,
/// when all files are read.
void MergeFiles(Workspace& workspace);

/// The id of the dictionary at `path`, from its first line; empty if it has none or cannot be read.
std::string ReadId(const std::filesystem::path& path);

struct WorkspaceRequest {
  std::vector<GivenFile> files;
  std::optional<std::string> base;  // its path, UTF-8
};

/// Reads the files of `request`, each once. Files of one id merge in the order given, in folders by
/// name. For single files it also reads the other files of the same id in their folders, and so for
/// the base; these are not reported.
///
/// All files with the id of the base make the base. A file of a folder that is given is reported,
/// the base too. A base that cannot be read, is a unit table or has no id is a problem; then there
/// is none.
Workspace ReadWorkspace(const WorkspaceRequest& request, std::vector<FileProblem>& problems);

}  // namespace KelmoLibs::Lang
