// Rule untranslated: a text of three or more words that is equal to that of the base. Tested by
// untranslated_test.cpp.
#include <algorithm>
#include <cstddef>
#include <string_view>

#include "lang/rules/check.h"
#include "lang/rules/word_reader.h"
#include "lang/unicode/ascii.h"

namespace KelmoLibs::Lang {
namespace {

// Characters beside a word that is a part of a path, an option, an address or a name in a program.
constexpr std::string_view kNoProse = "/\\_=-@#.$";

bool IsUpperCase(std::string_view word) noexcept {
  return std::none_of(word.begin(), word.end(), IsAsciiLower);
}

// The number of words that a translator would translate.
std::size_t CountWords(std::string_view text) {
  constexpr std::size_t kShortest = 2;
  std::size_t count = 0;
  WordReader words(text);
  for (Word word; words.Next(word);) {
    const std::size_t end =
        static_cast<std::size_t>(word.letters.data() - text.data()) + word.letters.size();
    const bool isBehindProse =
        word.before.empty() || kNoProse.find(word.before.back()) == std::string_view::npos;
    const bool isBeforeProse = end + 1 >= text.size() || text[end + 1] == ' ' ||
                               kNoProse.find(text[end]) == std::string_view::npos;
    if (word.letters.size() >= kShortest && isBehindProse && isBeforeProse &&
        !IsUpperCase(word.letters)) {
      ++count;
    }
  }
  return count;
}

// Whether the base is in another variety of the same language.
bool IsOfLanguageOfBase(const TextCheck& check) {
  const std::string_view id = check.file.AllFiles().files[check.base.file].dictionary->IntendedId();
  return LanguageOf(id).primary == check.file.FileLanguage().primary;
}

// A line of copyright is the same in all languages.
bool IsCopyright(std::string_view text) noexcept {
  constexpr std::string_view kSign = u8"\u00A9";
  return text.substr(0, kSign.size()) == kSign || text.substr(0, 3) == "(c)";
}

}  // namespace

void CheckUntranslated(const TextCheck& check) {
  constexpr std::size_t kWords = 3;
  if (check.base && check.Text() == check.BaseText() && CountWords(check.Text()) >= kWords &&
      !IsOfLanguageOfBase(check) && !IsCopyright(check.Text())) {
    check.Add(RuleId::kUntranslated, Severity::kNote, check.Text(), {"untranslated.message", {}});
  }
}

}  // namespace KelmoLibs::Lang
