// Runs the rules over files that a test makes up.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "lang/reading/workspace.h"
#include "lang/rules/check_workspace.h"

namespace KelmoLibs::Lang {

struct MadeUpFile {
  std::string name;
  std::string bytes;
  bool isReported = true;
};

/// A workspace of `files`. The base is the file with the index `base`.
inline Workspace MakeWorkspace(const std::vector<MadeUpFile>& files,
                               std::optional<std::uint32_t> base) {
  Workspace workspace;
  for (const MadeUpFile& file : files) {
    WorkspaceFile& added = workspace.files.emplace_back();
    added.dictionary = std::make_unique<DictionaryFile>(file.name, file.name, file.bytes);
    added.isReported = file.isReported;
  }
  workspace.baseFile = base;
  MergeFiles(workspace);
  return workspace;
}

/// A line for each finding of a rule from `first` to `last`: "de.txt:2:1 error header KEY SENTENCE".
inline std::string FindingsOf(const std::vector<MadeUpFile>& files,
                              std::optional<std::uint32_t> base, RuleId first, RuleId last) {
  const Workspace workspace = MakeWorkspace(files, base);
  std::string lines;
  for (const Finding& finding : CheckWorkspace(workspace).Take()) {
    if (finding.rule < first || finding.rule > last) {
      continue;
    }
    lines += workspace.files[finding.place.file].Source().Name();
    lines += ':' + std::to_string(finding.place.line) + ':' + std::to_string(finding.place.column);
    lines += ' ';
    lines += SeverityName(finding.severity);
    lines += ' ';
    lines += RuleOf(finding.rule).name;
    lines += ' ' + finding.key + ' ' + finding.message.key + '\n';
  }
  return lines;
}

}  // namespace KelmoLibs::Lang
