#include "lang/commands/rows.h"

#include <algorithm>
#include <cstddef>

#include "lang/report/visible_text.h"

namespace KelmoLibs::Lang {

std::string AlignedRows(const std::vector<Cells>& rows, unsigned indent) {
  constexpr unsigned kGap = 2;
  std::vector<unsigned> widths;
  for (const Cells& row : rows) {
    widths.resize(std::max(widths.size(), row.size()));
    for (std::size_t i = 0; i < row.size(); ++i) {
      widths[i] = std::max(widths[i], WidthOf(row[i]));
    }
  }
  std::string text;
  for (const Cells& row : rows) {
    text.append(indent, ' ');
    for (std::size_t i = 0; i < row.size(); ++i) {
      text += row[i];
      if (i + 1 < row.size()) {
        text.append(widths[i] + kGap - WidthOf(row[i]), ' ');
      }
    }
    text += '\n';
  }
  return text;
}

}  // namespace KelmoLibs::Lang
