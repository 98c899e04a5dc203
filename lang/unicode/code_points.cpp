#include "lang/unicode/code_points.h"

#include <algorithm>

#include "text/utf8.h"

namespace KelmoLibs::Lang {

std::uint32_t CountCodePoints(std::string_view bytes) noexcept {
  std::size_t count = 0;
  while (!bytes.empty()) {
    const std::size_t wellFormed = Localize::WellFormedUtf8Length(bytes);
    count += static_cast<std::size_t>(
        std::count_if(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(wellFormed),
                      [](char c) { return !IsContinuation(c); }));
    bytes.remove_prefix(wellFormed);
    if (!bytes.empty()) {
      ++count;
      bytes.remove_prefix(1);
    }
  }
  return static_cast<std::uint32_t>(count);
}

}  // namespace KelmoLibs::Lang
