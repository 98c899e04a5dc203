// Finds damaged placeholders: the text is written in plain letters without blanks, and the missing
// placeholder is looked for in it.
#include "lang/rules/placeholder_cause.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "lang/unicode/code_points.h"

namespace KelmoLibs::Lang {
namespace {

// What is wrong with a character, the most telling one first.
enum class Damage : std::uint8_t { kFullWidth, kDigit, kLookAlike, kCapital, kBlank, kNone };

constexpr std::array<std::string_view, 5> kHints = {
    "placeholder.hint.full_width", "placeholder.hint.digit", "placeholder.hint.look_alike",
    "placeholder.hint.capital", "placeholder.hint.blank"};

struct PlainCharacter {
  char character;
  Damage damage;
};

char32_t Distance(char32_t character, char32_t first, char32_t last) noexcept {
  return first <= character && character <= last ? character - first : last;
}

// Letters of other alphabets that look like Latin ones.
char LatinOf(char32_t letter) noexcept {
  struct Pair {
    char32_t letter;
    char latin;
  };
  static constexpr Pair kPairs[] = {
      {0x0391, 'a'}, {0x0392, 'b'}, {0x0395, 'e'}, {0x0397, 'h'}, {0x0399, 'i'},  // Greek capitals
      {0x039A, 'k'}, {0x039C, 'm'}, {0x039D, 'n'}, {0x039F, 'o'}, {0x03A1, 'p'}, {0x03A4, 't'},
      {0x03A5, 'y'}, {0x03A7, 'x'}, {0x03B1, 'a'}, {0x03B9, 'i'},  // small ones
      {0x03BD, 'v'}, {0x03BF, 'o'}, {0x03C1, 'p'}, {0x03C5, 'u'}, {0x03C7, 'x'}, {0x0405, 's'},
      {0x0406, 'i'}, {0x0408, 'j'}, {0x0410, 'a'}, {0x0412, 'b'},  // Cyrillic
      {0x0415, 'e'}, {0x041A, 'k'}, {0x041C, 'm'}, {0x041D, 'h'}, {0x041E, 'o'}, {0x0420, 'p'},
      {0x0421, 'c'}, {0x0422, 't'}, {0x0423, 'y'}, {0x0425, 'x'}, {0x0430, 'a'}, {0x0435, 'e'},
      {0x043A, 'k'}, {0x043C, 'm'}, {0x043D, 'h'}, {0x043E, 'o'}, {0x0440, 'p'}, {0x0441, 'c'},
      {0x0442, 't'}, {0x0443, 'y'}, {0x0445, 'x'}, {0x0455, 's'}, {0x0456, 'i'}, {0x0458, 'j'},
  };
  const auto* const found =
      std::find_if(std::begin(kPairs), std::end(kPairs),
                   [letter](const Pair& pair) { return pair.letter == letter; });
  return found != std::end(kPairs) ? found->latin : '\0';
}

bool IsBlank(char32_t character) noexcept {
  return character == ' ' || character == 0xA0 || character == 0x202F || character == 0x3000 ||
         (0x2000 <= character &&
          character <= 0x200F);  // also zero-width ones and marks of direction
}

// The small ASCII character that was meant; \0 for what can be in no placeholder, \1 for nothing.
constexpr char kOther = '\0';
constexpr char kLeftOut = '\1';

PlainCharacter Plain(char32_t character) noexcept {
  constexpr char32_t kDigits = 10;
  constexpr char32_t kFirstDigits[] = {0x0660, 0x06F0, 0x0966,
                                       0x0E50};  // Arabic, Persian, Hindi, Thai
  if (IsBlank(character)) {
    return {kLeftOut, Damage::kBlank};
  }
  if ('A' <= character && character <= 'Z') {
    return {static_cast<char>(character - 'A' + 'a'), Damage::kCapital};
  }
  if (' ' < character && character < 0x7F) {
    return {static_cast<char>(character), Damage::kNone};
  }
  if (0xFF01 <= character && character <= 0xFF5E) {
    const PlainCharacter plain = Plain(character - 0xFF01 + '!');
    return {plain.character, Damage::kFullWidth};
  }
  if (character == 0x066A) {  // Arabic percent sign
    return {'%', Damage::kDigit};
  }
  for (const char32_t first : kFirstDigits) {
    if (const char32_t digit = Distance(character, first, first + kDigits); digit < kDigits) {
      return {static_cast<char>('0' + digit), Damage::kDigit};
    }
  }
  const char latin = LatinOf(character);
  return {latin, latin != kOther ? Damage::kLookAlike : Damage::kNone};
}

// The text in plain characters, and the place of each in it.
struct PlainText {
  struct Origin {
    std::uint32_t begin;
    std::uint32_t end;
    Damage damage;
  };
  std::string characters;
  std::vector<Origin> origins;

  explicit PlainText(std::string_view text) {
    Damage before = Damage::kNone;  // a blank that was left out
    VisitCodePoints(text, [&](char32_t value, std::string_view part) {
      const PlainCharacter plain = Plain(value);
      if (plain.character == kLeftOut) {
        before = Damage::kBlank;
        return true;
      }
      const auto begin = static_cast<std::uint32_t>(part.data() - text.data());
      characters += plain.character;
      origins.push_back(
          {begin, begin + static_cast<std::uint32_t>(part.size()), std::min(plain.damage, before)});
      before = Damage::kNone;
      return true;
    });
  }
};

// The characters as PlainText has them.
std::string PlainLetters(std::string_view text) { return PlainText(text).characters; }

bool IsLetter(char c) noexcept { return ('a' <= c && c <= 'z') || c == '_'; }
bool IsDigit(char c) noexcept { return '0' <= c && c <= '9'; }

bool Overlap(std::string_view left, std::string_view right) noexcept {
  return left.data() < right.data() + right.size() && right.data() < left.data() + left.size();
}

// Whether the program sees a placeholder of the base in a part of the text.
bool IsSeen(std::string_view part, const Placeholders& found, const Placeholders& base) noexcept {
  return std::any_of(found.begin(), found.end(), [&](const Placeholder& placeholder) {
    return Overlap(placeholder.whole, part) &&
           std::any_of(base.begin(), base.end(),
                       [&](const Placeholder& other) { return IsSameValue(other, placeholder); });
  });
}

// Calls `visit(begin, end)` for each place of `wanted` in the text until it returns true.
template <class Visitor>
bool VisitPlaces(const PlainText& plain, const std::string& wanted, Visitor visit) {
  for (std::size_t at = plain.characters.find(wanted); at != std::string::npos;
       at = plain.characters.find(wanted, at + 1)) {
    if (visit(at, at + wanted.size())) {
      return true;
    }
  }
  return false;
}

bool IsOpening(char c) noexcept { return std::string_view("{[(<").find(c) != std::string::npos; }
bool IsClosing(char c) noexcept { return std::string_view("}])>").find(c) != std::string::npos; }
bool IsBrace(char c) noexcept { return c == '{' || c == '}'; }

}  // namespace

PlaceholderCause CauseOfMissing(const Placeholder& missing, std::string_view text,
                                const Placeholders& found, const Placeholders& base) {
  const PlainText plain(text);
  PlaceholderCause cause;
  const auto partOf = [&](std::size_t begin, std::size_t end) {
    const std::size_t first = plain.origins[begin].begin;
    return text.substr(first, plain.origins[end - 1].end - first);
  };
  const auto isNumber = [&](std::size_t at) {
    return at < plain.characters.size() && IsDigit(plain.characters[at]);
  };

  // The placeholder itself, in other characters.
  const std::string wanted = PlainLetters(missing.whole);
  const bool isFound = VisitPlaces(plain, wanted, [&](std::size_t begin, std::size_t end) {
    const std::string_view part = partOf(begin, end);
    const bool isLongerNumber = IsDigit(wanted.back()) && isNumber(end);
    if (part == missing.whole || isLongerNumber || IsSeen(part, found, base)) {
      return false;
    }
    Damage damage = Damage::kNone;
    for (std::size_t i = begin; i < end; ++i) {
      // A blank in front of the first character is not in the placeholder.
      const Damage here = plain.origins[i].damage;
      damage = std::min(damage, i == begin && here == Damage::kBlank ? Damage::kNone : here);
    }
    const bool isPercentOfNumber = damage == Damage::kBlank && begin > 0 && isNumber(begin - 1);
    if (damage == Damage::kNone || isPercentOfNumber) {
      return false;
    }
    cause = {part, kHints[static_cast<std::size_t>(damage)]};
    return true;
  });
  if (isFound) {
    return cause;
  }

  // The percent sign behind the number, as texts from right to left often have it.
  if (missing.syntax == PlaceholderSyntax::kPercentNumber) {
    VisitPlaces(plain, PlainLetters(missing.name) + '%', [&](std::size_t begin, std::size_t end) {
      const std::string_view part = partOf(begin, end);
      if ((begin > 0 && isNumber(begin - 1)) || isNumber(end) || IsSeen(part, found, base)) {
        return false;
      }
      cause = {part, "placeholder.hint.swapped"};
      return true;
    });
    return cause;
  }

  // The name or number in other brackets, or in one only.
  const bool hasBraces = missing.syntax == PlaceholderSyntax::kBraceNumber ||
                         missing.syntax == PlaceholderSyntax::kBraceName;
  if (hasBraces && !missing.name.empty()) {
    VisitPlaces(plain, PlainLetters(missing.name), [&](std::size_t begin, std::size_t end) {
      const char before = begin > 0 ? plain.characters[begin - 1] : kOther;
      const char behind = end < plain.characters.size() ? plain.characters[end] : kOther;
      const bool isInWord = IsLetter(before) || IsLetter(behind);
      const bool isBetween = (IsOpening(before) && IsClosing(behind)) ||
                             (IsBrace(before) && !isNumber(end)) || IsBrace(behind);
      if (isInWord || !isBetween) {
        return false;
      }
      const bool hasBefore = IsOpening(before) || IsClosing(before);
      const bool hasBehind = IsOpening(behind) || IsClosing(behind);
      const std::string_view part =
          partOf(begin - (hasBefore ? 1U : 0U), end + (hasBehind ? 1U : 0U));
      if (IsSeen(part, found, base)) {
        return false;
      }
      cause = {part, "placeholder.hint.brackets"};
      return true;
    });
  }
  return cause;
}

}  // namespace KelmoLibs::Lang
