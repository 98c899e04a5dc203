// The digits of ASCII.
#pragma once

namespace KelmoLibs::Localize {

constexpr bool IsAsciiDigit(char c) noexcept { return c >= '0' && c <= '9'; }

}  // namespace KelmoLibs::Localize
