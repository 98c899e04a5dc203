// The project file kelmo-lang.json: the base, the severities of rules, ignored findings, limits.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "lang/finding.h"
#include "lang/rules/rule_settings.h"

namespace KelmoLibs::Lang {

constexpr std::string_view kProjectFileName = "kelmo-lang.json";

/// The severity that a project gives to a rule.
enum class Level : std::uint8_t { kOff, kNote, kWarning, kError };

/// The level of that name, or nothing.
std::optional<Level> FindLevel(std::string_view name) noexcept;

/// The least severe findings that make a run fail.
enum class FailOn : std::uint8_t { kNever, kNote, kWarning, kError };

/// The value of that name, or nothing.
std::optional<FailOn> FindFailOn(std::string_view name) noexcept;

struct IgnoredFinding {
  std::string file;  // relative to the project file, with /; a pattern (reading/pattern.h)
  std::string key;   // a pattern
  RuleId rule;
};

struct Project {
  std::filesystem::path path;  // of the project file
  std::optional<std::filesystem::path> base;
  std::optional<std::filesystem::path> baseline;
  std::optional<FailOn> failOn;
  std::array<std::optional<Level>, kRuleCount> levels;
  std::vector<IgnoredFinding> ignored;
  std::vector<KeyLimit> limits;

  /// The member of `ignored` that a finding with this rule and key in `file` fits, or null.
  const IgnoredFinding* FindIgnored(const std::filesystem::path& file, RuleId rule,
                                    std::string_view key) const;
};

/// What is wrong with a project file, and where.
struct ProjectFault {
  std::uint32_t line = 0;  // 0: the file as a whole
  std::uint32_t column = 0;
  Sentence sentence;
};

/// Reads the bytes of the project file at `path`. If `faults` gets any, the project is not usable.
Project ParseProject(std::string_view bytes, std::filesystem::path path,
                     std::vector<ProjectFault>& faults);

/// The nearest project file at or above `folder`, the empty path being the current one; the search ends with the folder that has .git,
/// .hg or .svn. Nothing if there is none.
std::optional<std::filesystem::path> FindProjectFile(const std::filesystem::path& folder);

/// The path of `file` as project files name it: relative to the folder of `project`, with /.
std::string NameInProject(const std::filesystem::path& file, const std::filesystem::path& project);

/// The project file `bytes` (empty: a new one) with one more ignored finding. The rest stays as it
/// is. Precondition: ParseProject finds no fault in them.
std::string WithIgnored(std::string_view bytes, const IgnoredFinding& ignored,
                        std::string_view reason);

}  // namespace KelmoLibs::Lang
