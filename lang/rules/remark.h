// A remark of the translator that was left behind a text.
#pragma once

#include <string_view>

namespace KelmoLibs::Lang {

/// The brackets at the end of `text` that stand behind the end of a sentence: "Saved. (to be
/// checked)". Empty if there are none, or if `base` has brackets too.
inline std::string_view FindRemark(std::string_view text, std::string_view base) noexcept {
  if (text.empty() || text.back() != ')' || base.empty() ||
      base.find('(') != std::string_view::npos) {
    return {};
  }
  const std::size_t open = text.rfind('(');
  if (open == std::string_view::npos || open < 2 || text[open - 1] != ' ') {
    return {};
  }
  const char end = text[open - 2];
  const bool isBehindSentence = end == '.' || end == '!' || end == '?' || end == ':';
  // A key letter, such as "Open? (&O)", a placeholder or a number belongs to the text.
  const bool isOfText = text.find_first_of("&%{0123456789", open) != std::string_view::npos;
  return isBehindSentence && !isOfText ? text.substr(open) : std::string_view();
}

}  // namespace KelmoLibs::Lang
