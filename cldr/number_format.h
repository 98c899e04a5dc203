// How people write numbers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace KelmoLibs::Cldr {

/// In bytes, for the formats of languages and that of the user.
constexpr std::size_t kLongestMark = 15;

struct NumberFormat {
  std::string_view decimalMark = ".";
  std::string_view groupMark = ",";
  std::string_view minusSign = "-";
  char32_t zeroDigit = U'0';            // the digits of 1 to 9 stand behind it
  std::uint32_t groupSize = 3;          // digits of the group at the decimal mark; 0: no groups
  std::uint32_t furtherGroupSize = 3;   // of the other groups; at least 1 if there are groups
  std::uint32_t minimumFirstGroup = 1;  // at least 1; fewer digits before the first mark: no mark
  bool isGrouped = false;
};

}  // namespace KelmoLibs::Cldr
