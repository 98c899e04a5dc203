// Which rules are on for a file, and how long its texts may be: the part of a project's settings that
// the rules ask for.
#pragma once

#include <bitset>
#include <cstdint>
#include <string>
#include <vector>

#include "lang/rules/rule.h"

namespace KelmoLibs::Lang {

/// The texts of all keys that fit a pattern (reading/pattern.h) have at most so many characters.
struct KeyLimit {
  std::string keys;
  std::uint32_t characters = 0;  // code points
};

/// What the rules are told about a file. Severities are changed after the rules have run.
struct RuleSettings {
  std::bitset<kRuleCount> isOn;
  std::vector<KeyLimit> limits;  // the first one whose pattern fits a key counts

  RuleSettings() noexcept {
    for (const Rule& rule : AllRules()) {
      isOn[static_cast<std::size_t>(rule.id)] = rule.isOnByDefault;
    }
  }

  bool IsOn(RuleId rule) const noexcept { return isOn[static_cast<std::size_t>(rule)]; }
};

/// The settings of all files of a workspace, some of which share theirs.
struct SettingsOfFiles {
  std::vector<RuleSettings> settings = std::vector<RuleSettings>(1);
  std::vector<std::uint32_t> ofFile;  // index in `settings`, by file; 0 for files behind the end

  const RuleSettings& Of(std::uint32_t file) const noexcept {
    return settings[file < ofFile.size() ? ofFile[file] : 0];
  }
};

}  // namespace KelmoLibs::Lang
