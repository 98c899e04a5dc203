// Rule accelerator: "&File" and "(&F)" make the F a key. Tested by accelerators_test.cpp.
#include <cstddef>
#include <string>
#include <string_view>

#include "lang/rules/check.h"
#include "lang/unicode/ascii.h"
#include "lang/unicode/code_points.h"
#include "lang/unicode/scripts.h"

namespace KelmoLibs::Lang {
namespace {

struct Accelerators {
  std::size_t count = 0;
  std::string_view first;  // with their letters
  std::string_view last;
};

// &amp; &#233;
bool IsEntity(std::string_view text, std::size_t ampersand) noexcept {
  constexpr std::size_t kLongest = 32;
  std::size_t end = ampersand + 1;
  while (end < text.size() && end - ampersand <= kLongest &&
         (IsAsciiLetterOrDigit(text[end]) || text[end] == '#')) {
    ++end;
  }
  return end < text.size() && text[end] == ';' && end > ampersand + 1;
}

// &amp without its semicolon, where the base has &amp; itself. Rule entity reports it. Not in a long
// base: the cost would grow with both lengths.
bool IsBrokenEntity(std::string_view text, std::size_t ampersand, std::string_view base) {
  constexpr std::size_t kLongest = 32;
  constexpr std::size_t kLongestBase = 2000;
  if (base.size() > kLongestBase) {
    return false;
  }
  std::size_t end = ampersand + 1;
  while (end < text.size() && end - ampersand <= kLongest && IsAsciiLetterOrDigit(text[end])) {
    ++end;
  }
  return end > ampersand + 1 && base.find(std::string(text.substr(ampersand, end - ampersand)) +
                                          ';') != std::string_view::npos;
}

// Whether the word at the end of `part` is one of a command or an address, such as ?a=1&b=2. `wasSo`:
// the answer for the text in front of `part`.
bool IsInCommand(std::string_view part, bool wasSo) noexcept {
  const std::size_t blank = part.rfind(' ');
  const std::string_view word = blank == std::string_view::npos ? part : part.substr(blank + 1);
  return (wasSo && blank == std::string_view::npos) ||
         word.find_first_of("=?") != std::string_view::npos ||
         word.find("//") != std::string_view::npos;
}

Accelerators AcceleratorsOf(std::string_view text, std::string_view base) {
  Accelerators found;
  bool isInCommand = false;
  std::size_t last = 0;
  for (std::size_t i = text.find('&'); i != std::string_view::npos; i = text.find('&', last)) {
    isInCommand = IsInCommand(text.substr(last, i - last), isInCommand);
    last = i + 1;
    if (last == text.size()) {
      break;
    }
    if (text[last] == '&') {
      ++last;
      continue;
    }
    const bool isRedirection = i > 0 && (text[i - 1] == '>' || text[i - 1] == '<');
    const CodePoint next = FirstCodePoint(text.substr(last));
    if (IsLetter(next.value) && !isInCommand && !isRedirection && !IsEntity(text, i) &&
        !IsBrokenEntity(text, i, base)) {
      found.last = text.substr(i, 1 + next.length);
      found.first = found.count++ == 0 ? found.last : found.first;
    }
  }
  return found;
}

}  // namespace

void CheckAccelerators(const TextCheck& check) {
  const bool mayHave = check.Text().find('&') != std::string_view::npos;
  if (!check.base || (!mayHave && check.BaseText().find('&') == std::string_view::npos)) {
    return;
  }
  const Accelerators base = AcceleratorsOf(check.BaseText(), check.BaseText());
  const Accelerators own = AcceleratorsOf(check.Text(), check.BaseText());
  if (own.count > base.count) {
    const std::string last(own.last);
    if (base.count == 0) {
      check.Add(RuleId::kAccelerator, Severity::kWarning, own.last,
                {"accelerator.surplus", {last}});
      return;
    }
    const auto marked =
        static_cast<std::size_t>(own.last.data() + own.last.size() - own.first.data());
    check.Add(RuleId::kAccelerator, Severity::kWarning, {own.first.data(), marked},
              {"accelerator.second", {std::string(own.first), last}});
  } else if (own.count == 0 && base.count == 1 &&
             check.Text().find("&\\") == std::string_view::npos) {  // "&\u00c9": rule entity
    check.Add(RuleId::kAccelerator, Severity::kNote, check.Text(),
              {"accelerator.missing", {std::string(base.last)}});
  }
}

}  // namespace KelmoLibs::Lang
