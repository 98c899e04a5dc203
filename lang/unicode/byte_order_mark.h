// The byte-order mark of UTF-8, for which the library has no special treatment.
#pragma once

#include <string_view>

namespace KelmoLibs::Lang {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

/// `text` without the mark that it may begin with.
inline std::string_view WithoutByteOrderMark(std::string_view text) noexcept {
  return text.substr(0, kByteOrderMark.size()) == kByteOrderMark
             ? text.substr(kByteOrderMark.size())
             : text;
}

/// `text` without all marks that it begins with: files that were saved several times have several.
inline std::string_view WithoutByteOrderMarks(std::string_view text) noexcept {
  while (WithoutByteOrderMark(text).size() < text.size()) {
    text = WithoutByteOrderMark(text);
  }
  return text;
}

}  // namespace KelmoLibs::Lang
