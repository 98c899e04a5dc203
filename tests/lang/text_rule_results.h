// What a rule of single texts finds in one text.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "lang/rules/check.h"
#include "lang/unicode/code_points.h"

namespace KelmoLibs::Lang {

/// A text under test. Without `base` there is no base.
struct TextRow {
  const char* name;
  std::string language;
  std::string base;
  std::string text;
  std::string expected;  // "warning end-mark.no-colon <marked part>" for each finding, with "; "
};

/// Runs `rule` on the text, whose key is "key".
inline std::string ResultsOf(void (*rule)(const TextCheck&), const TextRow& row,
                             const RuleSettings& settings = {}) {
  Workspace workspace;
  const auto add = [&workspace](const std::string& id, const std::string& text) {
    WorkspaceFile& file = workspace.files.emplace_back();
    file.dictionary =
        std::make_unique<DictionaryFile>(id + ".txt", id + ".txt", id + "\nkey\t" + text + "\n");
    workspace.dictionaries[id].Merge(static_cast<std::uint32_t>(workspace.files.size() - 1),
                                     *file.dictionary);
  };
  add(row.language, row.text);
  if (!row.base.empty()) {
    add("en", row.base);
    workspace.baseFile = 1;
  }
  Findings findings;
  RunCheck run(workspace, findings);
  FileCheck check(run, 0, settings);
  const Entry& entry = check.File().Entries().front();
  rule({check, entry, row.base.empty() ? FoundEntry() : workspace.Base()->Find(entry.key)});
  std::string results;
  for (const Finding& finding : findings) {
    results += results.empty() ? "" : "; ";
    results.append(SeverityName(finding.severity)).append(" ").append(finding.message.key);
    std::string_view marked = check.Source().Bytes().substr(finding.place.offset);
    std::size_t bytes = 0;
    for (std::uint32_t i = 0; i < finding.place.length; ++i) {
      bytes += FirstCodePoint(marked.substr(bytes)).length;
    }
    marked = marked.substr(0, bytes);
    results.append(" ").append(marked == row.text ? "(all)" : marked);
  }
  return results;
}

}  // namespace KelmoLibs::Lang
