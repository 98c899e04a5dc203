// Texts and problems as lines of text, so that a test compares everything at once.
#pragma once

#include <string>
#include <string_view>

#include "host/problem_list.h"
#include "host/text_collection.h"

/// Each language as `id|name`, then its entries as `file:line key=text`.
inline std::string Dump(const KelmoLibs::Host::TextCollection& texts) {
  std::string lines;
  for (const auto& language : texts.languages) {
    lines += language->Id() + '|' + language->Name() + '\n';
    for (const KelmoLibs::Host::TextRecord* const entry : language->Entries()) {
      lines += *texts.files[entry->file] + ':' + std::to_string(entry->line) + ' ';
      lines.append(entry->Key()).append("=").append(entry->Text()).append("\n");
    }
  }
  return lines;
}

/// Each problem as `code severity file:line:column language key detail`; an empty field is a dash.
inline std::string Dump(const KelmoLibs::Host::ProblemList& problems) {
  const auto field = [](const std::string& text) { return text.empty() ? "-" : text; };
  std::string lines;
  for (const KelmoLibs::Host::Problem& problem : problems.All()) {
    lines += std::to_string(static_cast<int>(problem.code)) + ' ' +
             std::to_string(static_cast<int>(problem.severity)) + ' ' + field(problem.file) + ':' +
             std::to_string(problem.line) + ':' + std::to_string(problem.column) + ' ' +
             field(problem.language) + ' ' + field(problem.key) + ' ' + field(problem.detail) +
             '\n';
  }
  return lines;
}
