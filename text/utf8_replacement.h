// Makes UTF-8 of any bytes.
#pragma once

#include <string>
#include <string_view>

namespace KelmoLibs::Localize {

/// A copy of `bytes` with U+FFFD in place of each byte that does not belong to a character.
std::string ReplaceInvalidUtf8(std::string_view bytes);

}  // namespace KelmoLibs::Localize
