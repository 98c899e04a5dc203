// The lists in which systems say how digits are grouped.
#pragma once

#include <cstdint>
#include <string_view>

namespace KelmoLibs::Localize {

struct DigitGroups {
  std::uint32_t first = 0;    // digits of the group at the decimal mark; 0: no groups
  std::uint32_t further = 0;  // of each other group
};

/// As the size of further groups: there are none.
constexpr std::uint32_t kNoFurtherGroup = 1000;  // more digits than a number has

/// The list of C's localeconv: a byte for each group. The last one repeats, CHAR_MAX ends them.
DigitGroups GroupsOfBytes(std::string_view list) noexcept;

/// The list of Windows: "3;2;0". A 0 repeats the last one, without it the groups end.
DigitGroups GroupsOfNumbers(std::wstring_view list) noexcept;

}  // namespace KelmoLibs::Localize
