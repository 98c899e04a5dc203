// Findings that a project has accepted: only others are reported.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "lang/finding.h"
#include "lang/project/project.h"
#include "lang/reading/workspace.h"

namespace KelmoLibs::Lang {

/// The bytes of a baseline file at `path` that accepts `findings`. A finding is known by its file,
/// rule, key and message, and not by its line.
std::string WriteBaseline(const Workspace& workspace, const std::vector<Finding>& findings,
                          const std::filesystem::path& path);

/// Removes those findings that the baseline file accepts, each as often as it is there. A fault if
/// `bytes` is no baseline file; then nothing is removed.
std::optional<ProjectFault> RemoveAccepted(std::string_view bytes, const Workspace& workspace,
                                           const std::filesystem::path& path,
                                           std::vector<Finding>& findings);

}  // namespace KelmoLibs::Lang
