// Finds damaged placeholders: the text is written in plain letters without blanks, and the missing
// placeholder is looked for in it.
#include "lang/rules/placeholder_cause.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "lang/unicode/ascii.h"
#include "lang/unicode/code_points.h"
#include "lang/unicode/look_alikes.h"

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

bool IsBlank(char32_t character) noexcept {
  // From U+2000 to U+200F also zero-width ones and marks of direction.
  return character == ' ' || character == 0xA0 || character == 0x202F || character == 0x3000 ||
         (0x2000 <= character && character <= 0x200F);
}

// The small ASCII character that was meant; \0 for what can be in no placeholder, \1 for nothing.
constexpr char kOther = '\0';
constexpr char kLeftOut = '\1';

PlainCharacter Plain(char32_t character) noexcept {
  constexpr char32_t kDigits = 10;
  // Arabic, Persian, Hindi, Thai
  constexpr char32_t kFirstDigits[] = {0x0660, 0x06F0, 0x0966, 0x0E50};
  if (IsBlank(character)) {
    return {kLeftOut, Damage::kBlank};
  }
  if (' ' < character && character < 0x7F) {
    const char small = AsciiLowerCase(static_cast<char>(character));
    return {small, static_cast<char32_t>(small) == character ? Damage::kNone : Damage::kCapital};
  }
  if (character == 0x066A) {  // Arabic percent sign
    return {'%', Damage::kDigit};
  }
  for (const char32_t first : kFirstDigits) {
    if (first <= character && character < first + kDigits) {
      return {static_cast<char>('0' + (character - first)), Damage::kDigit};
    }
  }
  const char32_t like = AsciiLookAlike(character);
  if (like == character) {
    return {kOther, Damage::kNone};
  }
  const bool isFullWidth = 0xFF01 <= character && character <= 0xFF5E;
  return {AsciiLowerCase(static_cast<char>(like)),
          isFullWidth ? Damage::kFullWidth : Damage::kLookAlike};
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

bool IsLetter(char c) noexcept { return IsAsciiLower(c) || c == '_'; }

bool Overlap(std::string_view left, std::string_view right) noexcept {
  return left.data() < right.data() + right.size() && right.data() < left.data() + left.size();
}

bool IsOpening(char c) noexcept { return std::string_view("{[(<").find(c) != std::string::npos; }
bool IsClosing(char c) noexcept { return std::string_view("}])>").find(c) != std::string::npos; }
bool IsBrace(char c) noexcept { return c == '{' || c == '}'; }

// Looks for one placeholder in one text.
class Search {
 public:
  Search(const Placeholder& missing, std::string_view text, const Placeholders& found,
         const Placeholders& base)
      : missing_(missing), text_(text), found_(found), base_(base), plain_(text) {}

  // The placeholder itself, in other characters.
  PlaceholderCause FindItself() const {
    const std::string wanted = PlainLetters(missing_.whole);
    return FirstOf(wanted, [&](std::size_t begin, std::size_t end) -> PlaceholderCause {
      const std::string_view part = PartOf(begin, end);
      const bool isLongerNumber = IsAsciiDigit(wanted.back()) && IsAsciiDigit(At(end));
      const Damage damage = WorstIn(begin, end);
      const bool isPercentage =
          damage == Damage::kBlank && begin > 0 && IsAsciiDigit(At(begin - 1));
      if (part == missing_.whole || isLongerNumber || damage == Damage::kNone || isPercentage) {
        return {};
      }
      return {part, kHints[static_cast<std::size_t>(damage)]};
    });
  }

  // The percent sign behind the number, as texts from right to left often have it.
  PlaceholderCause FindSwapped() const {
    return FirstOf(PlainLetters(missing_.name) + '%',
                   [&](std::size_t begin, std::size_t end) -> PlaceholderCause {
                     if ((begin > 0 && IsAsciiDigit(At(begin - 1))) || IsAsciiDigit(At(end))) {
                       return {};
                     }
                     return {PartOf(begin, end), "placeholder.hint.swapped"};
                   });
  }

  // "%l" or "%s" for "%1".
  PlaceholderCause FindMistyped() const {
    constexpr std::size_t kLength = 2;
    if (text_.size() < kLength) {
      return {};
    }
    for (std::size_t at = text_.find('%'); at < text_.size() - 1; at = text_.find('%', at + 1)) {
      const char second = text_[at + 1];
      const bool isInWord = at + kLength < text_.size() && IsAsciiLetter(text_[at + kLength]);
      const std::string_view part = text_.substr(at, kLength);
      if (isInWord || IsSeen(part)) {
        continue;
      }
      if (missing_.name == "1" && std::string_view("lI|").find(second) != std::string_view::npos) {
        return {part, "placeholder.hint.letter"};
      }
      if (second == 's' || second == 'd') {
        return {part, "placeholder.hint.other"};
      }
    }
    return {};
  }

  // The name or number in other brackets, or in one only.
  PlaceholderCause FindInBrackets() const {
    return FirstOf(
        PlainLetters(missing_.name), [&](std::size_t begin, std::size_t end) -> PlaceholderCause {
          const char before = begin > 0 ? At(begin - 1) : kOther;
          const char behind = At(end);
          const bool isInWord = (IsLetter(before) && AreBeside(begin - 1, begin)) ||
                                (IsLetter(behind) && AreBeside(end - 1, end));
          const bool isBetween = (IsOpening(before) && IsClosing(behind)) ||
                                 (IsBrace(before) && !IsAsciiDigit(behind)) || IsBrace(behind);
          if (isInWord || !isBetween) {
            return {};
          }
          const bool hasBefore = IsOpening(before) || IsClosing(before);
          const bool hasBehind = IsOpening(behind) || IsClosing(behind);
          return {PartOf(begin - (hasBefore ? 1U : 0U), end + (hasBehind ? 1U : 0U)),
                  "placeholder.hint.brackets"};
        });
  }

 private:
  char At(std::size_t index) const noexcept {
    return index < plain_.characters.size() ? plain_.characters[index] : kOther;
  }

  // Whether no blank stands between two characters.
  bool AreBeside(std::size_t left, std::size_t right) const noexcept {
    return plain_.origins[left].end == plain_.origins[right].begin;
  }

  std::string_view PartOf(std::size_t begin, std::size_t end) const noexcept {
    const std::size_t first = plain_.origins[begin].begin;
    return text_.substr(first, plain_.origins[end - 1].end - first);
  }

  // A blank in front of the first character is not in the placeholder.
  Damage WorstIn(std::size_t begin, std::size_t end) const noexcept {
    Damage worst = Damage::kNone;
    for (std::size_t i = begin; i < end; ++i) {
      const Damage damage = plain_.origins[i].damage;
      if (i != begin || damage != Damage::kBlank) {
        worst = std::min(worst, damage);
      }
    }
    return worst;
  }

  // Whether the program sees a placeholder of the base in a part of the text.
  bool IsSeen(std::string_view part) const noexcept {
    return std::any_of(found_.begin(), found_.end(), [&](const Placeholder& placeholder) {
      return Overlap(placeholder.whole, part) &&
             std::any_of(base_.begin(), base_.end(),
                         [&](const Placeholder& other) { return IsSameValue(other, placeholder); });
    });
  }

  // The first cause that `causeAt(begin, end)` gives for a place of `wanted`.
  template <class CauseAt>
  PlaceholderCause FirstOf(const std::string& wanted, CauseAt causeAt) const {
    for (std::size_t at = plain_.characters.find(wanted); at != std::string::npos;
         at = plain_.characters.find(wanted, at + 1)) {
      const PlaceholderCause cause = causeAt(at, at + wanted.size());
      if (!cause.where.empty() && !IsSeen(cause.where)) {
        return cause;
      }
    }
    return {};
  }

  const Placeholder& missing_;
  std::string_view text_;
  const Placeholders& found_;
  const Placeholders& base_;
  PlainText plain_;
};

}  // namespace

PlaceholderCause CauseOfMissing(const Placeholder& missing, std::string_view text,
                                const Placeholders& found, const Placeholders& base) {
  constexpr std::size_t kLongest = 10'000;  // bytes; longer texts are no texts for people
  if (text.size() > kLongest) {
    return {};
  }
  const Search search(missing, text, found, base);
  const PlaceholderCause cause = search.FindItself();
  if (!cause.where.empty()) {
    return cause;
  }
  switch (missing.syntax) {
    case PlaceholderSyntax::kPercentNumber: {
      const PlaceholderCause mistyped = search.FindMistyped();
      return mistyped.where.empty() ? search.FindSwapped() : mistyped;
    }
    case PlaceholderSyntax::kBraceNumber:
    case PlaceholderSyntax::kBraceName:
      return missing.name.empty() ? PlaceholderCause{} : search.FindInBrackets();
    default:
      return {};
  }
}

}  // namespace KelmoLibs::Lang
