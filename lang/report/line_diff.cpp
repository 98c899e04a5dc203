#include "lang/report/line_diff.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "lang/report/visible_text.h"

namespace KelmoLibs::Lang {
namespace {

constexpr std::size_t kContext = 3;

// The lines with what ends them, but for LF and CR LF.
std::vector<std::string_view> LinesOf(std::string_view text) {
  const bool isCr =
      text.find('\n') == std::string_view::npos && text.find('\r') != std::string_view::npos;
  std::vector<std::string_view> lines;
  while (!text.empty()) {
    const std::size_t end = text.find(isCr ? '\r' : '\n');
    const std::size_t length = std::min(end, text.size() - 1) + 1;
    std::string_view line = text.substr(0, length);
    if (line.back() == '\n') {
      line.remove_suffix(line.size() > 1 && line[line.size() - 2] == '\r' ? 2 : 1);
    }
    lines.push_back(line);
    text.remove_prefix(length);
  }
  return lines;
}

// Appends the lines from `first` to `end`: the old ones of changed lines in front of the new ones.
void AppendHunk(const std::vector<std::string_view>& before,
                const std::vector<std::string_view>& after, std::size_t first, std::size_t end,
                std::string& diff) {
  const std::string range = std::to_string(first + 1) + ',' + std::to_string(end - first);
  diff += "@@ -" + range + " +" + range + " @@\n";
  for (std::size_t i = first; i < end;) {
    if (before[i] == after[i]) {
      diff += ' ' + VisibleText(before[i++]) + '\n';
      continue;
    }
    std::size_t same = i;
    for (; same < end && before[same] != after[same]; ++same) {
      diff += '-' + VisibleText(before[same]) + '\n';
    }
    for (; i < same; ++i) {
      diff += '+' + VisibleText(after[i]) + '\n';
    }
  }
}

}  // namespace

std::string LineDiff(const std::string& name, std::string_view before, std::string_view after) {
  const std::vector<std::string_view> oldLines = LinesOf(before);
  const std::vector<std::string_view> newLines = LinesOf(after);
  const std::size_t count = std::min(oldLines.size(), newLines.size());
  std::string diff;
  for (std::size_t i = 0; i < count; ++i) {
    if (oldLines[i] == newLines[i]) {
      continue;
    }
    std::size_t last = i;  // the last changed line of this part
    for (std::size_t next = i + 1; next < count && next <= last + 2 * kContext; ++next) {
      last = oldLines[next] != newLines[next] ? next : last;
    }
    if (diff.empty()) {
      diff = "--- " + VisibleText(name) + "\n+++ " + VisibleText(name) + '\n';
    }
    AppendHunk(oldLines, newLines, i - std::min(i, kContext), std::min(last + kContext + 1, count),
               diff);
    i = last;
  }
  return diff;
}

}  // namespace KelmoLibs::Lang
