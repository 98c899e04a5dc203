// Columns of text on a terminal.
#pragma once

#include <string>
#include <vector>

namespace KelmoLibs::Lang {

using Cells = std::vector<std::string>;  // cells: results of VisibleText

/// The rows as lines, each behind `indent` blanks. The cells of a column begin below each other, two
/// blanks behind the widest cell of the column before.
std::string AlignedRows(const std::vector<Cells>& rows, unsigned indent);

}  // namespace KelmoLibs::Lang
