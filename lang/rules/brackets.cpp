// Rule bracket: each bracket of a text is closed. Tests: brackets_test.cpp.
#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "lang/rules/text_rules.h"
#include "lang/unicode/code_points.h"
#include "lang/unicode/scripts.h"

namespace KelmoLibs::Lang {
namespace {

// Brackets in different widths may close each other.
struct Bracket {
  char32_t open;
  char32_t closed;
  std::size_t kind;
};

constexpr std::size_t kKindCount = 9;
constexpr Bracket kBrackets[] = {
    {'(', ')', 0},       {0xFF08, 0xFF09, 0},  // full-width
    {'[', ']', 1},       {0xFF3B, 0xFF3D, 1},  // full-width
    {'{', '}', 2},       {0xFF5B, 0xFF5D, 2},  // full-width
    {0x3008, 0x3009, 3},                       // angle brackets of East Asia
    {0x300A, 0x300B, 4},                       // the same, doubled
    {0x300C, 0x300D, 5},                       // corner brackets
    {0x300E, 0x300F, 6},                       // white corner brackets
    {0x3010, 0x3011, 7},                       // lenticular brackets
    {0x00AB, 0x00BB, 8},                       // guillemets
};
constexpr std::size_t kRound = 0;
constexpr std::size_t kCurly = 2;
constexpr std::size_t kGuillemets = kKindCount - 1;

const Bracket* BracketOf(char32_t character) noexcept {
  for (const Bracket& bracket : kBrackets) {
    if (character == bracket.open || character == bracket.closed) {
      return &bracket;
    }
  }
  return nullptr;
}

// What has no counterpart, for each kind: the first closing bracket, else the first open one.
using Lone = std::array<std::string_view, kKindCount>;

// The character before `position`, or 0.
char32_t CharacterBefore(std::string_view text, std::size_t position) noexcept {
  if (position == 0) {
    return 0;
  }
  do {
    --position;
  } while (position > 0 && (static_cast<unsigned char>(text[position]) & 0xC0U) == 0x80U);
  return FirstCodePoint(text.substr(position)).value;
}

bool IsQuote(char32_t character) noexcept {
  return character != 0 && std::u32string_view(
                               U"'\"`\u00B4\u00AB\u00BB\u2018\u2019\u201A\u201C"
                               U"\u201D\u201E\u2039\u203A\u300C\u300D")
                                   .find(character) != std::u32string_view::npos;
}

// "(" or ')': the bracket itself is meant.
bool IsQuoted(std::string_view text, std::string_view bracket) noexcept {
  const auto begin = static_cast<std::size_t>(bracket.data() - text.data());
  const std::size_t end = begin + bracket.size();
  return IsQuote(CharacterBefore(text, begin)) && end < text.size() &&
         IsQuote(FirstCodePoint(text.substr(end)).value);
}

// :) ;-( and the like.
bool IsSmiley(std::string_view text, std::size_t position) noexcept {
  if (position > 0 && text[position - 1] == '-') {
    --position;
  }
  return position > 0 && (text[position - 1] == ':' || text[position - 1] == ';');
}

// a) or 12) or iv), also behind punctuation.
bool IsEnumeration(std::string_view text, std::size_t position) noexcept {
  constexpr std::size_t kLongest = 3;
  constexpr std::string_view kNumbers = "0123456789ivx";
  std::size_t begin = position;
  while (begin > 0 && position - begin < kLongest &&
         kNumbers.find(text[begin - 1]) != std::string_view::npos) {
    --begin;
  }
  if (begin == position) {
    const char32_t letter = CharacterBefore(text, position);
    if (!IsLetter(letter)) {
      return false;
    }
    do {
      --begin;
    } while ((static_cast<unsigned char>(text[begin]) & 0xC0U) == 0x80U);
  }
  const bool isBehindLineBreak = begin > 1 && text[begin - 2] == '\\' && text[begin - 1] == 'n';
  const char32_t before = CharacterBefore(text, begin);
  return isBehindLineBreak ||
         (!IsLetter(before) && (before < '0' || before > '9') && before != '%');
}

// `isStrict`: also counts brackets that may mean something else.
bool HasLone(std::string_view text, bool isStrict, Lone& lone) {
  lone = {};
  std::array<std::size_t, kKindCount> depths = {};
  std::array<std::string_view, kKindCount> open = {};
  std::array<std::string_view, kKindCount> closing = {};
  std::size_t guillemets = 0;
  for (std::size_t position = 0; position < text.size();) {
    const CodePoint character = FirstCodePoint(text.substr(position));
    const std::string_view part = text.substr(position, character.length);
    const Bracket* const bracket = BracketOf(character.value);
    if (bracket != nullptr && (isStrict || !IsQuoted(text, part))) {
      const std::size_t kind = bracket->kind;
      const bool isMeant = isStrict || character.length > 1 || !IsSmiley(text, position);
      if (kind == kGuillemets) {
        ++guillemets;  // some languages use them in the other order, or one of both alone
        open[kind] = part;
      } else if (character.value == bracket->open) {
        if (isMeant && depths[kind]++ == 0) {
          open[kind] = part;
        }
      } else if (depths[kind] > 0) {
        --depths[kind];
      } else if (isMeant && (isStrict || kind != kRound || !IsEnumeration(text, position)) &&
                 closing[kind].empty()) {
        closing[kind] = part;
      }
    }
    position += character.length;
  }
  depths[kGuillemets] = guillemets % 2;
  bool hasLone = false;
  for (std::size_t kind = 0; kind < kKindCount; ++kind) {
    lone[kind] = !closing[kind].empty() ? closing[kind] : depths[kind] > 0 ? open[kind] : "";
    hasLone = hasLone || !lone[kind].empty();
  }
  return hasLone;
}

// Whether a quotation of the base is not closed: the program adds its end.
bool HasOddQuotes(std::string_view text) noexcept {
  return std::count_if(text.begin(), text.end(),
                       [](char c) { return c == '"' || c == '\'' || c == '`'; }) %
             2 !=
         0;
}

// Whether there may be a bracket.
bool MayHaveBrackets(std::string_view text) noexcept {
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    switch (byte) {
      case '(':
      case ')':
      case '[':
      case ']':
      case '{':
      case '}':
      case 0xC2U:  // guillemets
      case 0xE3U:  // brackets of East Asia
      case 0xEFU:  // full-width ones
        return true;
      default:
        break;
    }
  }
  return false;
}

}  // namespace

void CheckBrackets(const TextCheck& check) {
  Lone lone;
  if (!MayHaveBrackets(check.Text()) || !HasLone(check.Text(), true, lone) ||
      !HasLone(check.Text(), false, lone)) {
    return;
  }
  Lone loneInBase;
  HasLone(check.BaseText(), true, loneInBase);
  const bool isQuoteOpen = HasOddQuotes(check.BaseText());
  // Without a base nobody knows whether the program adds the other one.
  const Severity severity = check.base ? Severity::kWarning : Severity::kNote;
  for (std::size_t kind = 0; kind < kKindCount; ++kind) {
    if (kind == kCurly && check.BaseText().find('{') != std::string_view::npos) {
      continue;  // placeholders
    }
    if (!lone[kind].empty() && loneInBase[kind].empty() && !(kind == kGuillemets && isQuoteOpen)) {
      check.Add(RuleId::kBracket, severity, lone[kind],
                {"bracket.message", {std::string(lone[kind])}});
      return;
    }
  }
}

}  // namespace KelmoLibs::Lang
