// The project files of a run: each file belongs to the nearest one.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "lang/project/project.h"

namespace KelmoLibs::Lang {

class Projects {
 public:
  /// A project file that cannot be used.
  struct Problem {
    std::filesystem::path path;
    ProjectFault fault;
  };

  /// The project of the file at `file`, or null. Reads its project file at the first call.
  const Project* Of(const std::filesystem::path& file);

  /// All projects so far, in the order of reading.
  const std::vector<std::unique_ptr<Project>>& All() const noexcept { return projects_; }

  const std::vector<Problem>& Problems() const noexcept { return problems_; }

 private:
  const Project* Read(const std::filesystem::path& path);

  std::vector<std::unique_ptr<Project>> projects_;
  std::map<std::filesystem::path, const Project*> byFolder_;
  std::vector<Problem> problems_;
};

}  // namespace KelmoLibs::Lang
