#include "cldr/number_formats.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>

#include "cldr/number_table.h"

namespace KelmoLibs::Cldr {
namespace {

constexpr std::size_t kLongestId = 15;  // the longest of the table has 11 bytes

// As the table has ids; a blank for a character that no id has.
char Normalized(char c) noexcept {
  if (c >= 'A' && c <= 'Z') {
    return static_cast<char>(c | 0x20);
  }
  if (c == '-' || c == '_') {
    return '-';
  }
  return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') ? c : ' ';
}

// The format of exactly this id.
const NumberFormat* FindExactly(std::string_view id) noexcept {
  std::array<char, kLongestId + 2> name{};
  name[0] = ' ';
  char* const end = std::transform(id.begin(), id.end(), name.data() + 1, Normalized);
  if (std::find(name.data() + 1, end, ' ') != end) {
    return nullptr;
  }
  *end = ' ';
  const std::string_view wanted(name.data(), id.size() + 2);
  const auto* const found = std::find_if(
      std::begin(kNumberTable), std::end(kNumberTable), [wanted](const NumberFormatRow& row) {
        return row.languages.find(wanted) != std::string_view::npos;
      });
  return found != std::end(kNumberTable) ? &found->format : nullptr;
}

}  // namespace

const NumberFormat* FindNumberFormat(std::string_view id) noexcept {
  while (!id.empty()) {
    const NumberFormat* const found = id.size() <= kLongestId ? FindExactly(id) : nullptr;
    if (found != nullptr) {
      return found;
    }
    const std::size_t separator = id.find_last_of("-_");
    id = id.substr(0, separator != std::string_view::npos ? separator : 0);
  }
  return nullptr;
}

}  // namespace KelmoLibs::Cldr
