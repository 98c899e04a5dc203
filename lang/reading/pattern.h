// Patterns for names of files and for keys.
#pragma once

#include <string_view>

namespace KelmoLibs::Lang {

/// Whether the whole of `name` fits `pattern`: "*" stands for any characters, "?" for any one character.
bool FitsPattern(std::string_view name, std::string_view pattern) noexcept;

}  // namespace KelmoLibs::Lang
