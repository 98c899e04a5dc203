// What a rule of single texts finds in one text.
#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "lang/rules/check.h"
#include "lang/unicode/code_points.h"
#include "tests/lang/findings_of.h"

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
  std::vector<MadeUpFile> files = {
      {row.language + ".txt", row.language + "\nkey\t" + row.text + "\n"}};
  if (!row.base.empty()) {
    files.push_back({"en.txt", "en\nkey\t" + row.base + "\n"});
  }
  const Workspace workspace =
      MakeWorkspace(files, row.base.empty() ? std::nullopt : std::optional<std::uint32_t>(1));
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

/// Each row gives what it expects.
template <std::size_t size>
void ExpectResults(void (*rule)(const TextCheck&), const TextRow (&rows)[size],
                   const RuleSettings& settings = {}) {
  for (const TextRow& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(ResultsOf(rule, row, settings), row.expected);
  }
}

}  // namespace KelmoLibs::Lang
