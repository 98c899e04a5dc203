// Rule accelerator: "&File" and "(&F)" make the F a key. Tests: accelerators_test.cpp.
#include <cstddef>
#include <string>
#include <string_view>

#include "lang/rules/text_rules.h"
#include "lang/unicode/code_points.h"
#include "lang/unicode/scripts.h"

namespace KelmoLibs::Lang {
namespace {

struct Accelerators {
  std::size_t count = 0;
  std::string_view last;  // with its letter
};

bool IsAsciiAlphanumeric(char c) noexcept {
  return (c >= '0' && c <= '9') || ScriptOf(static_cast<unsigned char>(c)) == Script::kLatin;
}

// &amp; &#233;
bool IsEntity(std::string_view text, std::size_t ampersand) noexcept {
  constexpr std::size_t kLongest = 32;
  std::size_t end = ampersand + 1;
  while (end < text.size() && end - ampersand <= kLongest &&
         (IsAsciiAlphanumeric(text[end]) || text[end] == '#')) {
    ++end;
  }
  return end < text.size() && text[end] == ';' && end > ampersand + 1;
}

// ...?a=1&b=2 and other words of a command.
bool IsInCommand(std::string_view text, std::size_t ampersand) noexcept {
  constexpr std::size_t kLongest = 200;
  for (std::size_t i = ampersand; i > 0 && ampersand - i < kLongest && text[i - 1] != ' '; --i) {
    const char before = text[i - 1];
    if (before == '=' || before == '?' || (before == '/' && i > 1 && text[i - 2] == '/')) {
      return true;
    }
  }
  return ampersand > 0 && (text[ampersand - 1] == '>' || text[ampersand - 1] == '<');
}

Accelerators AcceleratorsOf(std::string_view text) {
  Accelerators found;
  for (std::size_t i = text.find('&'); i != std::string_view::npos; i = text.find('&', i)) {
    if (i + 1 < text.size() && text[i + 1] == '&') {
      i += 2;
      continue;
    }
    if (i + 1 < text.size() && !IsEntity(text, i) && !IsInCommand(text, i)) {
      const CodePoint next = FirstCodePoint(text.substr(i + 1));
      if (IsLetter(next.value)) {
        ++found.count;
        found.last = text.substr(i, 1 + next.length);
      }
    }
    ++i;
  }
  return found;
}

}  // namespace

void CheckAccelerators(const TextCheck& check) {
  const bool mayHave = check.Text().find('&') != std::string_view::npos;
  if (!check.base || (!mayHave && check.BaseText().find('&') == std::string_view::npos)) {
    return;
  }
  const Accelerators base = AcceleratorsOf(check.BaseText());
  const Accelerators own = AcceleratorsOf(check.Text());
  if (own.count > base.count) {
    check.Add(
        RuleId::kAccelerator, Severity::kWarning, own.last,
        {base.count == 0 ? "accelerator.surplus" : "accelerator.second", {std::string(own.last)}});
  } else if (own.count == 0 && base.count == 1) {
    check.Add(RuleId::kAccelerator, Severity::kNote, check.Text(),
              {"accelerator.missing", {std::string(base.last)}});
  }
}

}  // namespace KelmoLibs::Lang
