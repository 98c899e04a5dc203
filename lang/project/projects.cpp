#include "lang/project/projects.h"

#include <algorithm>
#include <utility>

#include "lang/reading/file_bytes.h"

namespace KelmoLibs::Lang {

namespace fs = std::filesystem;

const Project* Projects::Of(const fs::path& file) {
  const fs::path folder = file.parent_path();
  const auto [entry, isNew] = byFolder_.try_emplace(folder, nullptr);
  if (isNew) {
    if (const std::optional<fs::path> path = FindProjectFile(folder)) {
      entry->second = Read(*path);
    }
  }
  return entry->second;
}

const Project* Projects::Read(const fs::path& path) {
  const auto known =
      std::find_if(projects_.begin(), projects_.end(),
                   [&path](const std::unique_ptr<Project>& one) { return one->path == path; });
  if (known != projects_.end()) {
    return known->get();
  }
  std::vector<ProjectFault> faults;
  const std::optional<std::string> bytes = ReadFileBytes(path);
  if (bytes) {
    projects_.push_back(std::make_unique<Project>(ParseProject(*bytes, path, faults)));
  } else {
    projects_.push_back(std::make_unique<Project>());
    projects_.back()->path = path;
    faults.push_back({0, 0, {"problem.unreadable", {}}});
  }
  for (ProjectFault& fault : faults) {
    problems_.push_back({path, std::move(fault)});
  }
  return projects_.back().get();
}

}  // namespace KelmoLibs::Lang
