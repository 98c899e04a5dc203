#include "lang/reading/workspace.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <system_error>
#include <utility>

#include "lang/reading/file_names.h"

namespace KelmoLibs::Lang {
namespace {

namespace fs = std::filesystem;

std::optional<std::string> ReadBytes(const fs::path& path) {
  std::error_code error;
  if (!fs::is_regular_file(path, error)) {
    return std::nullopt;
  }
  std::ifstream file(path, std::ios::binary);
  const auto size = fs::file_size(path, error);
  if (!file || error) {
    return std::nullopt;
  }
  std::string bytes(static_cast<std::size_t>(size), '\0');
  file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  bytes.resize(static_cast<std::size_t>(file.gcount()));
  return bytes;
}

// Reads files into a workspace, each file once.
class Reader {
 public:
  Reader(Workspace& workspace, std::vector<WorkspaceProblem>& problems)
      : workspace_(workspace), problems_(problems) {}

  // The index of the file; nothing if it cannot be read.
  std::optional<std::uint32_t> Read(const fs::path& path, bool isReported) {
    for (std::uint32_t i = 0; i < workspace_.files.size(); ++i) {
      std::error_code error;
      if (fs::equivalent(workspace_.files[i].Source().Path(), path, error)) {
        workspace_.files[i].isReported = workspace_.files[i].isReported || isReported;
        return i;
      }
    }
    const std::string name = path.lexically_normal().generic_u8string();
    std::optional<std::string> bytes = ReadBytes(path);
    if (!bytes) {
      problems_.push_back({name, "problem.unreadable"});
      return std::nullopt;
    }
    WorkspaceFile file;
    file.isReported = isReported;
    if (IsUnitTableName(path)) {
      file.units = std::make_unique<UnitFile>(name, path, std::move(*bytes));
    } else {
      file.dictionary = std::make_unique<DictionaryFile>(name, path, std::move(*bytes));
    }
    workspace_.files.push_back(std::move(file));
    return static_cast<std::uint32_t>(workspace_.files.size() - 1);
  }

 private:
  Workspace& workspace_;
  std::vector<WorkspaceProblem>& problems_;
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

Workspace ReadWorkspace(const WorkspaceRequest& request, std::vector<WorkspaceProblem>& problems) {
  Workspace workspace;
  Reader reader(workspace, problems);
  for (const fs::path& path : ExpandPaths(request.paths, problems)) {
    reader.Read(path, true);
  }
  if (request.base) {
    workspace.baseFile = reader.Read(fs::u8path(*request.base), false);
  }
  for (std::uint32_t i = 0; i < workspace.files.size(); ++i) {
    if (const auto& dictionary = workspace.files[i].dictionary) {
      workspace.dictionaries[std::string(dictionary->IntendedId())].Merge(i, *dictionary);
    }
  }
  return workspace;
}

}  // namespace KelmoLibs::Lang
