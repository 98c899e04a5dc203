#include "lang/rules/word_reader.h"

#include <algorithm>

#include "lang/unicode/code_points.h"
#include "lang/unicode/scripts.h"

namespace KelmoLibs::Lang {
namespace {

constexpr std::string_view kAsciiLetters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
constexpr std::string_view kNameCharacters =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_";

// A name or a tag is not longer, so that a text of brackets alone does not take long.
constexpr std::size_t kLongestPart = 100;

bool IsOneOf(std::string_view set, std::string_view text, std::size_t position) noexcept {
  return position < text.size() && set.find(text[position]) != std::string_view::npos;
}

std::size_t Behind(std::string_view set, std::string_view text, std::size_t position) noexcept {
  return std::min(text.find_first_not_of(set, position), text.size());
}

// The position behind the next `end`, if none of `forbidden` comes before; else `position`.
std::size_t BehindPart(std::string_view text, std::size_t position, char end,
                       std::string_view forbidden) noexcept {
  const std::string_view part = text.substr(position, kLongestPart);
  const std::size_t found = part.find(end);
  return found == std::string_view::npos || part.find_first_of(forbidden) < found
             ? position
             : position + found + 1;
}

// Behind %s, %-5.2f, %1$s, %1, %(name)s. `position` is that of the percent sign.
std::size_t BehindPercent(std::string_view text, std::size_t position) noexcept {
  ++position;
  if (IsOneOf("(", text, position)) {
    position = BehindPart(text, position, ')', " ");
  }
  position = Behind("0123456789$.*#+'-", text, position);
  position = Behind("hlLqjzt", text, position);
  return IsOneOf(kAsciiLetters, text, position) ? position + 1 : position;
}

}  // namespace

std::size_t BehindNoWord(std::string_view text, std::size_t position) noexcept {
  switch (text[position]) {
    case '%':
      return BehindPercent(text, position);
    case '\\':
      return std::min(position + 2, text.size());
    case '{':
      return BehindPart(text, position, '}', " ");
    case '$': {
      const std::size_t next = position + 1;
      return IsOneOf("{", text, next) ? BehindPart(text, next, '}', " ")
                                      : Behind(kNameCharacters, text, next);
    }
    case '<':
      return IsOneOf("/", text, position + 1) || IsOneOf(kAsciiLetters, text, position + 1)
                 ? BehindPart(text, position + 1, '>', "<")
                 : position;
    case '&': {
      const std::size_t behind = Behind(kNameCharacters, text, position + 1);
      return IsOneOf(";", text, behind) ? behind + 1 : position;
    }
    default:
      return position;
  }
}

bool WordReader::Next(Word& word) noexcept {
  const std::size_t begin = position_;
  while (position_ < text_.size()) {
    const std::size_t behindNoWord = BehindNoWord(text_, position_);
    if (behindNoWord > position_) {
      position_ = behindNoWord;
      continue;
    }
    const CodePoint first = FirstCodePoint(text_.substr(position_));
    if (IsLetter(first.value)) {
      const std::size_t end = BehindLetters(position_ + first.length);
      word = {text_.substr(position_, end - position_), text_.substr(begin, position_ - begin)};
      position_ = end;
      return true;
    }
    position_ += first.length;
  }
  return false;
}

std::size_t WordReader::BehindLetters(std::size_t position) const noexcept {
  while (position < text_.size()) {
    const CodePoint next = FirstCodePoint(text_.substr(position));
    if (ScriptOf(next.value) == Script::kNone) {
      break;
    }
    position += next.length;
  }
  return position;
}

}  // namespace KelmoLibs::Lang
