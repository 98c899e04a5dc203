#include "lang/rules/wording.h"

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <string>

#include "lang/rules/word_reader.h"
#include "lang/unicode/ascii.h"

namespace KelmoLibs::Lang {
namespace {

constexpr std::size_t kNone = std::string_view::npos;

bool EndsWith(std::string_view text, std::string_view end) noexcept {
  return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

bool IsAmong(std::string_view word, std::initializer_list<std::string_view> words) noexcept {
  return std::any_of(words.begin(), words.end(),
                     [word](std::string_view other) { return AreEqualButForCase(word, other); });
}

bool HasWord(std::string_view text, std::initializer_list<std::string_view> wanted) noexcept {
  WordReader words(text);
  for (Word word; words.Next(word);) {
    if (IsAmong(word.letters, wanted)) {
      return true;
    }
  }
  return false;
}

std::string_view FirstWord(std::string_view text) noexcept {
  WordReader words(text);
  Word word;
  return words.Next(word) ? word.letters : std::string_view();
}

// Without the escapes of line ends and the blanks at the end.
std::string_view WithoutLineEnd(std::string_view text) noexcept {
  while (EndsWith(text, "\\n") || EndsWith(text, " ")) {
    text.remove_suffix(text.back() == 'n' ? 2 : 1);
  }
  return text;
}

}  // namespace

bool IsBeginOfSentence(std::string_view text) {
  constexpr std::string_view kWords =
      " a an and are as at by every for from in into is of on or per than the to until via want "
      "was "
      "with ";
  const std::size_t blank = text.find_last_of(' ');
  const std::string_view last = text.substr(blank == kNone ? 0 : blank + 1);
  return EndsWith(text, "`") || EndsWith(text, "(") ||
         (!last.empty() && kWords.find(" " + std::string(last) + " ") != kNone);
}

bool HasIndirectQuestion(std::string_view text) {
  return HasWord(text, {"whether"}) ||
         IsAmong(FirstWord(text), {"how", "if", "what", "when", "where", "which", "who", "why"});
}

bool IsGuess(std::string_view text) { return HasWord(text, {"consider", "maybe", "perhaps"}); }

bool IsProgress(std::string_view text) {
  text = WithoutLineEnd(text);
  const bool isSentence = EndsWith(text, ".");
  if (!isSentence && text.find_first_of("%{") == kNone) {
    return false;  // a label: "Setting the date"
  }
  const std::size_t sentence = text.rfind(". ");
  return EndsWith(FirstWord(text.substr(sentence == kNone ? 0 : sentence + 1)), "ing");
}

bool IsOpenList(std::string_view text) {
  text = WithoutLineEnd(text);
  return EndsWith(text, "etc") || EndsWith(text, "etc.") || EndsWith(text, "..");
}

bool PointsBelow(std::string_view text) {
  text = WithoutLineEnd(text);
  return EndsWith(text, " below") || EndsWith(text, " below.");
}

}  // namespace KelmoLibs::Lang
