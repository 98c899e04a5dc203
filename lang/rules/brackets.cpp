// Rule bracket: each bracket of a text is closed, no spreadsheet has put the text into quotation
// marks, and no remark in brackets stands behind it. Tested by brackets_test.cpp.
#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "lang/rules/check.h"
#include "lang/rules/remark.h"
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

// The character before `position`, or 0.
char32_t CharacterBefore(std::string_view text, std::size_t position) noexcept {
  return position == 0 ? 0 : LastCodePoint(text.substr(0, position)).value;
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
    } while (IsContinuation(text[begin]));
  }
  const bool isBehindLineBreak = begin > 1 && text[begin - 2] == '\\' && text[begin - 1] == 'n';
  const char32_t before = CharacterBefore(text, begin);
  return isBehindLineBreak ||
         (!IsLetter(before) && (before < '0' || before > '9') && before != '%');
}

// Counts the brackets of a text. A strict count also has brackets that may mean something else.
class BracketCount {
 public:
  BracketCount(std::string_view text, bool isStrict) : text_(text), isStrict_(isStrict) {
    VisitCodePoints(text, [this](char32_t character, std::string_view part) {
      const Bracket* const bracket = BracketOf(character);
      if (bracket != nullptr && (isStrict_ || !IsQuoted(text_, part))) {
        Count(bracket->kind, character == bracket->open, part);
      }
      return true;
    });
    depths_[kGuillemets] %= 2;
  }

  /// The first closing bracket of the kind that closes nothing, else the first open one that stays
  /// open; empty if all have their counterparts.
  std::string_view Lone(std::size_t kind) const noexcept {
    return !closing_[kind].empty() ? closing_[kind] : depths_[kind] > 0 ? open_[kind] : "";
  }

  bool HasLone() const noexcept {
    for (std::size_t kind = 0; kind < kKindCount; ++kind) {
      if (!Lone(kind).empty()) {
        return true;
      }
    }
    return false;
  }

 private:
  void Count(std::size_t kind, bool isOpening, std::string_view part) {
    const auto position = static_cast<std::size_t>(part.data() - text_.data());
    const bool isMeant = isStrict_ || part.size() > 1 || !IsSmiley(text_, position);
    if (kind == kGuillemets) {
      ++depths_[kind];  // some languages use them in the other order, or one of both alone
      open_[kind] = part;
    } else if (isOpening) {
      if (isMeant && depths_[kind]++ == 0) {
        open_[kind] = part;
      }
    } else if (depths_[kind] > 0) {
      --depths_[kind];
    } else if (isMeant && closing_[kind].empty() &&
               (isStrict_ || kind != kRound || !IsEnumeration(text_, position))) {
      closing_[kind] = part;
    }
  }

  std::string_view text_;
  bool isStrict_;
  std::array<std::size_t, kKindCount> depths_ = {};
  std::array<std::string_view, kKindCount> open_ = {};
  std::array<std::string_view, kKindCount> closing_ = {};
};

// Whether a quotation of the base is not closed: the program adds its end.
bool HasOddQuotes(std::string_view text) noexcept {
  return std::count_if(text.begin(), text.end(),
                       [](char c) { return c == '"' || c == '\'' || c == '`'; }) %
             2 !=
         0;
}

bool HasDoubleQuotes(std::string_view text) noexcept {
  bool found = text.find("&quot;") != std::string_view::npos;
  VisitCodePoints(text, [&found](char32_t character, std::string_view) {
    found = found || (character != '\'' && character != 0x2019 && IsQuote(character));
    return !found;
  });
  return found;
}

// Whether a spreadsheet has put the text into quotation marks: it doubles those within, and does so
// for texts with blanks or marks. A name in quotation marks may be the translator's style.
bool IsQuotedBySpreadsheet(std::string_view text, std::string_view base) noexcept {
  constexpr std::size_t kShortest = 3;
  constexpr std::ptrdiff_t kBlanksOfSentence = 2;
  if (text.size() < kShortest || text.front() != '"' || text.back() != '"' || base.empty() ||
      IsQuote(FirstCodePoint(base).value) || IsQuote(CharacterBefore(base, base.size()))) {
    return false;
  }
  const std::string_view inner = text.substr(1, text.size() - 2);
  bool hasDoubled = false;
  for (std::size_t i = inner.find('"'); i != std::string_view::npos; i = inner.find('"', i + 2)) {
    if (inner.substr(i, 2) != "\"\"") {
      return false;
    }
    hasDoubled = true;
  }
  if (HasDoubleQuotes(base) && !HasDoubleQuotes(inner)) {
    return false;  // those of the base may be meant
  }
  return hasDoubled || inner.find_first_of(",;") != std::string_view::npos ||
         std::count(inner.begin(), inner.end(), ' ') >= kBlanksOfSentence;
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
  if (check.base && IsQuotedBySpreadsheet(check.Text(), check.BaseText())) {
    check.Add(RuleId::kBracket, Severity::kWarning, check.Text(), {"bracket.quoted", {}}).mend = {
        "bracket.quoted_mend", {}};
    return;
  }
  if (const std::string_view remark = FindRemark(check.Text(), check.BaseText()); !remark.empty()) {
    check.Add(RuleId::kBracket, Severity::kWarning, remark, {"bracket.remark", {}}).mend = {
        "bracket.remark_mend", {}};
    return;
  }
  if (!MayHaveBrackets(check.Text()) || !BracketCount(check.Text(), true).HasLone()) {
    return;
  }
  const BracketCount brackets(check.Text(), false);
  const BracketCount base(check.BaseText(), true);
  const bool isQuoteOpen = HasOddQuotes(check.BaseText());
  const bool hasBraces = check.BaseText().find('{') != std::string_view::npos;  // of placeholders
  // Without a base nobody knows whether the program adds the other one.
  const Severity severity = check.base ? Severity::kWarning : Severity::kNote;
  for (std::size_t kind = 0; kind < kKindCount; ++kind) {
    const std::string_view lone = brackets.Lone(kind);
    const bool isMeant = !base.Lone(kind).empty() || (kind == kCurly && hasBraces) ||
                         (kind == kGuillemets && isQuoteOpen);
    if (!lone.empty() && !isMeant) {
      check.Add(RuleId::kBracket, severity, lone, {"bracket.message", {std::string(lone)}});
      return;
    }
  }
}

}  // namespace KelmoLibs::Lang
