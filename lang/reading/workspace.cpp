#include "lang/reading/workspace.h"

#include <algorithm>
#include <set>
#include <system_error>
#include <unordered_map>
#include <utility>

#include "lang/reading/file_bytes.h"
#include "lang/unicode/ascii.h"

namespace KelmoLibs::Lang {
namespace {

namespace fs = std::filesystem;

// Reads files into a workspace, each file once.
class Reader {
 public:
  Reader(Workspace& workspace, std::vector<FileProblem>& problems)
      : workspace_(workspace), problems_(problems) {}

  // The index of the file; nothing if it cannot be read.
  std::optional<std::uint32_t> Read(const fs::path& path, bool isReported) {
    // Names that differ only by case may be the same file.
    std::vector<std::uint32_t>& sameNames = byName_[FileKey(path)];
    for (const std::uint32_t i : sameNames) {
      std::error_code error;
      if (fs::equivalent(workspace_.files[i].Source().Path(), path, error)) {
        workspace_.files[i].isReported = workspace_.files[i].isReported || isReported;
        return i;
      }
    }
    const std::string name = GenericName(path);
    std::optional<std::string> bytes = ReadFileBytes(path);
    if (!bytes) {
      problems_.push_back({name, ReadProblem(path)});
      return std::nullopt;
    }
    WorkspaceFile file;
    file.isReported = isReported;
    if (IsUnitTableName(path)) {
      file.units = std::make_unique<UnitFile>(name, path, *std::move(bytes));
    } else {
      file.dictionary = std::make_unique<DictionaryFile>(name, path, *std::move(bytes));
    }
    workspace_.files.push_back(std::move(file));
    sameNames.push_back(static_cast<std::uint32_t>(workspace_.files.size() - 1));
    return sameNames.back();
  }

 private:
  Workspace& workspace_;
  std::vector<FileProblem>& problems_;
  std::unordered_map<std::string, std::vector<std::uint32_t>> byName_;
};

// The other files with the ids of single files, which hosts load together with them. A sibling is
// read before a file that it stands before by name.
class Siblings {
 public:
  explicit Siblings(Reader& reader) : reader_(reader) {}

  // Files that are given: they are no siblings.
  void Exclude(const fs::path& path) { excluded_.insert(path.lexically_normal()); }

  void ReadBefore(const fs::path& path, const std::string& id) { Read(path, id, true); }
  void ReadBehind(const fs::path& path, const std::string& id) { Read(path, id, false); }

 private:
  struct Sibling {
    fs::path path;
    std::string id;
  };

  void Read(const fs::path& path, const std::string& id, bool isBefore) {
    for (const Sibling& sibling : FilesBeside(path)) {
      if (sibling.id == id && (!isBefore || sibling.path < path) &&
          excluded_.find(sibling.path.lexically_normal()) == excluded_.end()) {
        reader_.Read(sibling.path, false);
      }
    }
  }

  // The dictionaries in the folder of `path`, by name.
  const std::vector<Sibling>& FilesBeside(const fs::path& path) {
    const fs::path folder = path.parent_path();
    const auto [known, isNew] = byFolder_.emplace(folder, std::vector<Sibling>());
    if (isNew) {
      for (const fs::path& file : FilesOfFolder(folder)) {
        if (!IsUnitTableName(file)) {
          known->second.push_back({file, ReadId(file)});
        }
      }
    }
    return known->second;
  }

  Reader& reader_;
  std::set<fs::path> excluded_;
  std::map<fs::path, std::vector<Sibling>> byFolder_;
};

// The base's problem; null if it can be the base.
const char* ProblemOfBase(const WorkspaceFile& file) {
  if (!file.dictionary) {
    return "problem.base_is_unit_table";
  }
  return file.dictionary->IntendedId().empty() ? "problem.base_without_id" : nullptr;
}

// Whether `count` is less than a tenth of `all`.
bool AreFew(std::size_t count, std::size_t all) noexcept {
  constexpr std::size_t kPart = 10;
  return count * kPart < all;
}

// The keys of a file of the base, each once.
std::vector<std::string_view> KeysOf(const Workspace& workspace, std::uint32_t file) {
  const MergedDictionary& base = *workspace.Base();
  std::vector<std::string_view> keys;
  const auto add = [&](const Entry& entry) {
    if (base.Find(entry.key).entry == &entry) {
      keys.push_back(entry.key);
    }
  };
  const DictionaryFile& dictionary = *workspace.files[file].dictionary;
  std::for_each(dictionary.Entries().begin(), dictionary.Entries().end(), add);
  std::for_each(dictionary.LostEntries().begin(), dictionary.LostEntries().end(), add);
  return keys;
}

// Compares the dictionaries with the files of the base. Most counts end after a tenth of the keys.
class SetSearch {
 public:
  // Precondition: there is a base.
  explicit SetSearch(Workspace& workspace) : workspace_(workspace), base_(*workspace.Base()) {
    for (const std::uint32_t file : base_.Files()) {
      baseKeys_.emplace(file, KeysOf(workspace, file));
    }
  }

  void FindUntranslated() {
    for (const auto& [baseFile, keys] : baseKeys_) {
      for (const auto& [id, dictionary] : workspace_.dictionaries) {
        if (&dictionary != &base_ && HasFewOf(dictionary, keys)) {
          workspace_.untranslated.push_back({baseFile, id});
        }
      }
    }
  }

  void FindSetsOfTheirOwn() {
    for (std::uint32_t i = 0; i < workspace_.files.size(); ++i) {
      if (workspace_.BaseOf(i) != nullptr) {
        workspace_.files[i].isSetOfItsOwn = IsSetOfItsOwn(*workspace_.files[i].dictionary);
      }
    }
  }

 private:
  static bool HasFewOf(const MergedDictionary& dictionary,
                       const std::vector<std::string_view>& keys) {
    std::size_t count = 0;
    for (const std::string_view key : keys) {
      count += dictionary.Find(key) ? 1U : 0U;
      if (!AreFew(count, keys.size())) {
        return false;
      }
    }
    return !keys.empty();
  }

  bool IsSetOfItsOwn(const DictionaryFile& file) const {
    std::size_t keys = 0;
    std::size_t shared = 0;
    std::map<std::uint32_t, std::size_t> counts;  // by file of the base
    const auto isEnough = [&](const Entry& entry) {
      ++keys;
      const FoundEntry found = base_.Find(entry.key);
      shared += found ? 1U : 0U;
      return found && !AreFew(++counts[found.file], baseKeys_.at(found.file).size());
    };
    return std::none_of(file.Entries().begin(), file.Entries().end(), isEnough) &&
           std::none_of(file.LostEntries().begin(), file.LostEntries().end(), isEnough) &&
           shared * 2 < keys;
  }

  Workspace& workspace_;
  const MergedDictionary& base_;
  std::map<std::uint32_t, std::vector<std::string_view>> baseKeys_;  // by file
};

}  // namespace

const MergedDictionary* Workspace::Base() const noexcept {
  if (!baseFile) {
    return nullptr;
  }
  const auto found = dictionaries.find(files[*baseFile].dictionary->IntendedId());
  return found != dictionaries.end() ? &found->second : nullptr;
}

const MergedDictionary* Workspace::BaseOf(std::uint32_t file) const noexcept {
  const MergedDictionary* const base = Base();
  if (base == nullptr || !files[file].dictionary) {
    return nullptr;
  }
  const auto found = dictionaries.find(files[file].dictionary->IntendedId());
  return found == dictionaries.end() || &found->second == base ? nullptr : base;
}

bool Workspace::OwesKeysOf(std::uint32_t file, std::uint32_t ofBaseFile) const noexcept {
  const std::string_view id = files[file].dictionary->IntendedId();
  using FileAndId = std::pair<std::uint32_t, std::string_view>;
  const auto found =
      std::lower_bound(untranslated.begin(), untranslated.end(), FileAndId{ofBaseFile, id},
                       [](const UntranslatedFile& one, const FileAndId& wanted) {
                         return FileAndId{one.baseFile, one.id} < wanted;
                       });
  return found == untranslated.end() || found->baseFile != ofBaseFile || found->id != id;
}

std::string ReadId(const fs::path& path) {
  constexpr std::size_t kEnough = 1024;
  const DictionaryFile start({}, path, ReadFileBytes(path, kEnough).value_or(std::string()));
  return std::string(start.IntendedId());
}

void MergeFiles(Workspace& workspace) {
  for (std::uint32_t i = 0; i < workspace.files.size(); ++i) {
    if (const auto& dictionary = workspace.files[i].dictionary) {
      workspace.dictionaries[std::string(dictionary->IntendedId())].Merge(i, *dictionary);
    }
  }
  for (const auto& [id, dictionary] : workspace.dictionaries) {
    workspace.idsByLowerCase[AsciiLowerCase(id)].emplace_back(id);
  }
  if (workspace.Base() != nullptr) {
    SetSearch search(workspace);
    search.FindUntranslated();
    search.FindSetsOfTheirOwn();
  }
}

Workspace ReadWorkspace(const WorkspaceRequest& request, std::vector<FileProblem>& problems) {
  Workspace workspace;
  Reader reader(workspace, problems);
  Siblings siblings(reader);
  for (const GivenFile& file : request.files) {
    siblings.Exclude(file.path);
  }
  std::vector<std::pair<fs::path, std::string>> single;  // with their ids
  const auto read = [&](const fs::path& path, bool isSingle, bool isReported) {
    const std::string id = isSingle && !IsUnitTableName(path) ? ReadId(path) : std::string();
    if (!id.empty()) {
      siblings.ReadBefore(path, id);
      single.emplace_back(path, id);
    }
    return reader.Read(path, isReported);
  };
  for (const GivenFile& file : request.files) {
    read(file.path, !file.isOfFolder, true);
  }
  if (request.base) {
    const std::optional<std::uint32_t> base = read(fs::u8path(*request.base), true, false);
    const char* const problem = base ? ProblemOfBase(workspace.files[*base]) : nullptr;
    if (problem != nullptr) {
      problems.push_back({*request.base, problem});
    } else {
      workspace.baseFile = base;
    }
  }
  for (const auto& [path, id] : single) {
    siblings.ReadBehind(path, id);
  }
  if (workspace.baseFile) {  // the base's other files in the folders of single files
    const std::string id(workspace.files[*workspace.baseFile].dictionary->IntendedId());
    for (const auto& [path, ownId] : single) {
      siblings.ReadBehind(path, id);
    }
  }
  MergeFiles(workspace);
  return workspace;
}

}  // namespace KelmoLibs::Lang
