// The byte-order mark of UTF-8, for which the library has no special treatment.
#pragma once

#include <string_view>

namespace KelmoLibs::Lang {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

inline std::string_view WithoutByteOrderMark(std::string_view text) noexcept {
  return text.substr(0, kByteOrderMark.size()) == kByteOrderMark
             ? text.substr(kByteOrderMark.size())
             : text;
}

}  // namespace KelmoLibs::Lang
