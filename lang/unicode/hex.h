// Numbers as hexadecimal digits.
#pragma once

#include <cstdint>
#include <string>

namespace KelmoLibs::Lang {

/// Appends `value` with at least `digits` hexadecimal digits, in capitals.
void AppendHex(std::uint64_t value, unsigned digits, std::string& text);

/// "U+00A0".
std::string CodePointName(char32_t character);

}  // namespace KelmoLibs::Lang
