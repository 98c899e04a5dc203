// Letters and digits of ASCII. Bytes of other characters are neither.
#pragma once

#include <string>
#include <string_view>

#include "text/ascii_digit.h"

namespace KelmoLibs::Lang {

using Localize::IsAsciiDigit;

constexpr bool IsAsciiLower(char c) noexcept { return c >= 'a' && c <= 'z'; }
constexpr bool IsAsciiUpper(char c) noexcept { return c >= 'A' && c <= 'Z'; }
constexpr bool IsAsciiLetter(char c) noexcept { return IsAsciiLower(c) || IsAsciiUpper(c); }
constexpr bool IsAsciiLetterOrDigit(char c) noexcept { return IsAsciiLetter(c) || IsAsciiDigit(c); }

/// Whether all bytes are ASCII.
bool IsAscii(std::string_view text) noexcept;

/// Letters of ASCII in lower case; all other bytes stay.
constexpr char AsciiLowerCase(char c) noexcept {
  return IsAsciiUpper(c) ? static_cast<char>(c - 'A' + 'a') : c;
}
std::string AsciiLowerCase(std::string_view text);

/// Whether the texts differ at most in the case of letters of ASCII.
bool AreEqualButForCase(std::string_view left, std::string_view right) noexcept;

}  // namespace KelmoLibs::Lang
