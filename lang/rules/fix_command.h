// The command line that mends a file.
#pragma once

#include <string>
#include <string_view>

namespace KelmoLibs::Lang {

/// "fix OPTIONS NAME", with the name as a shell needs it: whatever the name is, to run this line does
/// nothing else. The name is not empty. `options` end with a blank if there are
/// any.
std::string FixCommand(std::string_view options, const std::string& name);

}  // namespace KelmoLibs::Lang
