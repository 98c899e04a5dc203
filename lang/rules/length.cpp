// Rule length: a text that is far longer than the base, or longer than a limit of the project.
// Tests: length_test.cpp.
#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

#include "lang/reading/pattern.h"
#include "lang/rules/text_rules.h"
#include "lang/unicode/code_points.h"
#include "lang/unicode/display_width.h"

namespace KelmoLibs::Lang {
namespace {

std::size_t WidthOf(std::string_view text) {
  std::size_t width = 0;
  VisitCodePoints(text, [&](char32_t character, std::string_view /*part*/) {
    width += DisplayWidth(character);
    return true;
  });
  return width;
}

// In columns. Of 33,000 translations of programs one in 500 is longer.
constexpr std::size_t LongestFor(std::size_t widthOfBase) noexcept {
  constexpr std::size_t kMore = 20;
  return 2 * widthOfBase + kMore;
}

// A text takes at most twice its bytes in columns, and at least one for four of them.
bool MayBeTooLong(std::string_view text, std::string_view base) noexcept {
  constexpr std::size_t kBytesOfCharacter = 4;
  return text.size() > LongestFor(base.size() / kBytesOfCharacter);
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
    const std::size_t length = CountCodePoints(check.Text());
    if (length > limit->characters) {
      check.Add(RuleId::kLength, Severity::kNote, check.Text(),
                {"length.limit",
                 {std::to_string(length), std::to_string(limit->characters), limit->keys}});
    }
    return;
  }
  if (!check.base || check.BaseText().empty() || !MayBeTooLong(check.Text(), check.BaseText())) {
    return;
  }
  const std::size_t width = WidthOf(check.Text());
  const std::size_t widthOfBase = WidthOf(check.BaseText());
  if (width > LongestFor(widthOfBase)) {
    check.Add(RuleId::kLength, Severity::kNote, check.Text(),
              {"length.message", {std::to_string(width), std::to_string(widthOfBase)}});
  }
}

}  // namespace KelmoLibs::Lang
