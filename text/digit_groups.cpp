#include "text/digit_groups.h"

#include <algorithm>
#include <climits>
#include <cstddef>

namespace KelmoLibs::Localize {
namespace {

std::uint32_t SizeOf(char byte) noexcept {
  return byte > 0 && byte != CHAR_MAX ? static_cast<std::uint32_t>(byte) : 0;
}

// Cuts the first number off a list; 0 if it is none.
std::uint32_t TakeNumber(std::wstring_view& list) noexcept {
  const std::size_t length = std::min(list.find(L';'), list.size());
  // Windows has only one digit for each group.
  const bool isDigit = length == 1 && list[0] >= L'0' && list[0] <= L'9';
  const std::uint32_t number = isDigit ? static_cast<std::uint32_t>(list[0] - L'0') : 0;
  list.remove_prefix(std::min(length + 1, list.size()));
  return number;
}

}  // namespace

DigitGroups GroupsOfBytes(std::string_view list) noexcept {
  const std::uint32_t first = list.empty() ? 0 : SizeOf(list[0]);
  if (first == 0) {
    return {};
  }
  if (list.size() == 1) {
    return {first, first};
  }
  const std::uint32_t second = SizeOf(list[1]);
  return {first, second != 0 ? second : kNoFurtherGroup};
}

DigitGroups GroupsOfNumbers(std::wstring_view list) noexcept {
  const std::uint32_t first = TakeNumber(list);
  if (first == 0) {
    return {};
  }
  if (list.empty() || list == L"0;0") {
    return {first, kNoFurtherGroup};
  }
  const std::uint32_t second = TakeNumber(list);
  return {first, second != 0 ? second : first};
}

}  // namespace KelmoLibs::Localize
