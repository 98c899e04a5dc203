// Which lines of a file a mend changes, as `diff -u` shows it.
#pragma once

#include <string>
#include <string_view>

namespace KelmoLibs::Lang {

/// A unified diff of two versions of the file `name`, with all characters visible. Line n of one
/// version is line n of the other. Empty if no line differs.
std::string LineDiff(const std::string& name, std::string_view before, std::string_view after);

}  // namespace KelmoLibs::Lang
