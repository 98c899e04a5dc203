// Rule length: a text that is far longer than the base, or longer than a limit of the project.
// Tested by length_test.cpp.
#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

#include "lang/reading/pattern.h"
#include "lang/rules/check.h"
#include "lang/unicode/code_points.h"
#include "lang/unicode/display_width.h"

namespace KelmoLibs::Lang {
namespace {

std::size_t WidthOf(std::string_view text) {
  std::size_t width = 0;
  while (!text.empty()) {
    const CodePoint first = FirstCodePoint(text);
    width += first.length == 1 ? 1 : DisplayWidth(first.value);
    text.remove_prefix(first.length);
  }
  return width;
}

// In columns. Of 33,000 translations of programs one in 500 is longer.
constexpr std::size_t LongestFor(std::size_t widthOfBase) noexcept {
  constexpr std::size_t kMore = 20;
  return 2 * widthOfBase + kMore;
}

const KeyLimit* LimitOf(const TextCheck& check) {
  const auto& limits = check.file.Settings().limits;
  const auto found = std::find_if(limits.begin(), limits.end(), [&](const KeyLimit& limit) {
    return FitsPattern(check.entry.key, limit.keys);
  });
  return found != limits.end() ? &*found : nullptr;
}

}  // namespace

void CheckLength(const TextCheck& check) {
  const KeyLimit* const limit = LimitOf(check);
  if (limit != nullptr) {
    const std::size_t length = Localize::CountCharacters(check.Text());
    if (length > limit->characters) {
      check.Add(RuleId::kLength, Severity::kNote, check.Text(),
                {"length.limit",
                 {std::to_string(length), std::to_string(limit->characters), limit->keys}});
    }
    return;
  }
  if (!check.base || check.BaseText().empty()) {
    return;
  }
  const std::size_t widthOfBase = WidthOf(check.BaseText());
  if (check.Text().size() <= LongestFor(widthOfBase)) {
    return;  // no character takes more columns than bytes
  }
  const std::size_t width = WidthOf(check.Text());
  if (width > LongestFor(widthOfBase)) {
    check.Add(RuleId::kLength, Severity::kNote, check.Text(),
              {"length.message", {std::to_string(width), std::to_string(widthOfBase)}});
  }
}

}  // namespace KelmoLibs::Lang
