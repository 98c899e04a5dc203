// Rules doubled-word and doubled-blank. Tested by doubled_test.cpp.
#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string>
#include <string_view>

#include "lang/rules/check.h"
#include "lang/rules/word_reader.h"

namespace KelmoLibs::Lang {
namespace {

bool IsBlanks(std::string_view text) noexcept {
  return !text.empty() && text.find_first_not_of(' ') == std::string_view::npos;
}

// Languages that double words: for a plural, for emphasis, or because of the order of the words.
bool DoublesWords(std::string_view primary) {
  constexpr std::string_view kLanguages =
      " az bn fil gu hi id ja jv km kn ko lo mi ml mr ms my ne pa si sm su sw ta te th tk tl to tr"
      " ur uz vi zh ";
  return IsOneOfLanguages(primary, kLanguages);
}

// Words that stand twice in right sentences: "die Werte, die die Pumpe hat" without its comma.
bool IsDoubledByRight(std::string_view word) noexcept {
  constexpr std::string_view kWords[] = {
      "had",  "that",                              // English
      "das",  "dem",  "den", "der", "die", "sie",  // German
      "nous", "vous",                              // French
      "que",  "si",                                // Spanish, Portuguese, Italian
      "dat",  "det",  "az",  "ez",                 // Dutch, Scandinavian, Hungarian
  };
  return std::find(std::begin(kWords), std::end(kWords), word) != std::end(kWords);
}

// Whether the first letters of a word stand in the part in front of the blanks before it. Reading the
// words takes ten times as long.
bool MayHaveDoubledWord(std::string_view text) noexcept {
  constexpr std::size_t kTwoLetters = 4;  // bytes, if the first one is not ASCII
  std::size_t begin = 0;
  for (std::size_t end = text.find(' '); end != std::string_view::npos;
       end = text.find(' ', begin)) {
    const std::size_t next = text.find_first_not_of(' ', end);
    if (next == std::string_view::npos) {
      break;
    }
    const std::size_t size = static_cast<unsigned char>(text[next]) < 0x80U ? 2 : kTwoLetters;
    const std::string_view first = text.substr(next, size);
    if (text.substr(begin, end - begin).find(first.substr(0, first.find(' '))) !=
        std::string_view::npos) {
      return true;
    }
    begin = next;
  }
  return false;
}

std::string_view FindDoubledWord(std::string_view text) {
  constexpr std::size_t kShortest = 2;
  if (!MayHaveDoubledWord(text)) {
    return {};
  }
  WordReader words(text);
  std::string_view last;
  for (Word word; words.Next(word); last = word.letters) {
    if (word.letters.size() >= kShortest && word.letters == last && IsBlanks(word.before) &&
        !IsDoubledByRight(word.letters)) {
      return word.letters;
    }
  }
  return {};
}

// The second half of a text that is one sentence pasted twice, with or without a blank between;
// empty if it is none. Shorter texts may be doubled on purpose.
std::string_view FindSecondHalf(std::string_view text) {
  constexpr std::ptrdiff_t kFewestBlanks = 2;  // of three words, one of which may be a placeholder
  const std::size_t half = text.size() / 2;
  const bool isBlankBetween = text.size() % 2 != 0;
  const std::string_view second = text.substr(text.size() - half);
  if (half == 0 || (isBlankBetween && text[half] != ' ') || text.substr(0, half) != second ||
      std::count(second.begin(), second.end(), ' ') < kFewestBlanks) {
    return {};
  }
  WordReader words(second);
  Word word;
  return words.Next(word) && words.Next(word) ? second : std::string_view();
}

std::string_view FindDoubledBlank(std::string_view text) noexcept {
  const std::size_t found = text.find("  ");
  return found == std::string_view::npos ? std::string_view() : text.substr(found, 2);
}

}  // namespace

void CheckDoubled(const TextCheck& check) {
  if (check.base) {
    const std::string_view half = FindSecondHalf(check.Text());
    if (!half.empty() && FindSecondHalf(check.BaseText()).empty()) {
      check.Add(RuleId::kDoubledWord, Severity::kWarning, half, {"doubled-word.text", {}}).mend = {
          "doubled-word.text_mend", {}};
      return;
    }
  }
  const std::string_view word = DoublesWords(check.file.FileLanguage().primary)
                                    ? std::string_view()
                                    : FindDoubledWord(check.Text());
  if (!word.empty() && FindDoubledWord(check.BaseText()).empty()) {
    check.Add(RuleId::kDoubledWord, Severity::kNote, word,
              {"doubled-word.message", {std::string(word)}});
  }
  if (!check.base && check.file.AllFiles().Base() != nullptr) {
    return;  // nobody compares the base, whose blanks are meant
  }
  const std::string_view blanks = FindDoubledBlank(check.Text());
  if (!blanks.empty() && FindDoubledBlank(check.BaseText()).empty()) {
    check.Add(RuleId::kDoubledBlank, Severity::kNote, blanks, {"doubled-blank.message", {}});
  }
}

}  // namespace KelmoLibs::Lang
