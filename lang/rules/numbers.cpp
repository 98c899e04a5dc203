// Rules number and look-alike-sign: a number of the base that is another one in the text, and letters
// and signs that only look like those of the base. Tests: numbers_test.cpp.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string>
#include <string_view>

#include "lang/rules/check.h"
#include "lang/rules/word_reader.h"
#include "lang/unicode/ascii.h"
#include "lang/unicode/code_points.h"
#include "lang/unicode/scripts.h"

namespace KelmoLibs::Lang {
namespace {

constexpr std::size_t kNone = std::string_view::npos;

// The value of a digit, of any script that translations are written in; 10 for other characters.
unsigned DigitOf(char32_t c) noexcept {
  constexpr unsigned kDigits = 10;
  constexpr char32_t kZeros[] = {0x0660, 0x06F0, 0x0966, 0x09E6, 0x0E50,
                                 0x0ED0, 0x1040, 0x17E0, 0xFF10};
  if (c < kZeros[0]) {
    return c >= '0' && c <= '9' ? static_cast<unsigned>(c - '0') : kDigits;
  }
  for (const char32_t zero : kZeros) {
    if (c >= zero && c < zero + kDigits) {
      return static_cast<unsigned>(c - zero);
    }
  }
  return kDigits;
}
constexpr unsigned kNoDigit = 10;

unsigned DigitAt(std::string_view text, std::size_t at) noexcept {
  return at < text.size() ? DigitOf(FirstCodePoint(text.substr(at)).value) : kNoDigit;
}

struct Number {
  std::string_view where;
  std::uint64_t value;
  unsigned digits;
  bool hasSeparator;
  bool isTime;  // "6" or "30" of "6:30"
};

// The numbers of a text, but for those in placeholders, tags and escapes.
class Numbers {
 public:
  explicit Numbers(std::string_view text) noexcept : text_(text) {
    for (std::size_t at = 0; at < text.size() && areAll_;) {
      if (const std::size_t behind = BehindNoWord(text, at); behind > at) {
        at = behind;
      } else if (DigitAt(text, at) != kNoDigit) {
        at = Read(at);
      } else {
        at += FirstCodePoint(text.substr(at)).length;
      }
    }
  }

  // False if the text has more numbers, or larger ones, than are kept.
  bool AreAll() const noexcept { return areAll_; }
  std::size_t Count() const noexcept { return count_; }

  // NOLINTBEGIN(readability-identifier-naming): for range-based loops
  const Number* begin() const noexcept { return found_.data(); }
  const Number* end() const noexcept { return found_.data() + count_; }
  // NOLINTEND(readability-identifier-naming)

  std::ptrdiff_t CountOf(std::uint64_t value) const noexcept {
    return std::count_if(begin(), end(), [value](const Number& n) { return n.value == value; });
  }

 private:
  static constexpr std::size_t kMost = 32;
  static constexpr unsigned kMostDigits = 18;

  // Reads the number at `at` and returns the end of it.
  std::size_t Read(std::size_t at) noexcept {
    Number number{};
    const std::size_t begin = at;
    for (;;) {
      if (const unsigned digit = DigitAt(text_, at); digit != kNoDigit) {
        number.value = number.value * 10 + digit;
        ++number.digits;
        at += FirstCodePoint(text_.substr(at)).length;
      } else if (const std::size_t behind = BehindSeparator(at); behind > at) {
        number.hasSeparator = true;
        at = behind;
      } else {
        break;
      }
      if (number.digits > kMostDigits) {
        areAll_ = false;
        return text_.size();
      }
    }
    number.where = text_.substr(begin, at - begin);
    number.isTime =
        (begin > 0 && text_[begin - 1] == ':') || (at < text_.size() && text_[at] == ':');
    if (count_ == kMost) {
      areAll_ = false;
      return text_.size();
    }
    found_[count_++] = number;
    return at;
  }

  // Behind a separator of decimals or groups within a number; `at` if there is none.
  std::size_t BehindSeparator(std::size_t at) const noexcept {
    if (at >= text_.size()) {
      return at;
    }
    const CodePoint sign = FirstCodePoint(text_.substr(at));
    const std::size_t behind = at + sign.length;
    switch (sign.value) {
      case '.':
      case ',':
      case '\'':
      case 0x2019:  // apostrophe
      case 0x066B:  // Arabic separators
      case 0x066C:
        return DigitAt(text_, behind) != kNoDigit ? behind : at;
      case ' ':
      case 0x00A0:
      case 0x2009:
      case 0x202F:
        return IsGroup(behind) ? behind : at;
      default:
        return at;
    }
  }

  // Whether exactly three digits stand there.
  bool IsGroup(std::size_t at) const noexcept {
    constexpr std::size_t kDigitsOfGroup = 3;
    std::size_t digits = 0;
    while (digits <= kDigitsOfGroup && DigitAt(text_, at) != kNoDigit) {
      ++digits;
      at += FirstCodePoint(text_.substr(at)).length;
    }
    return digits == kDigitsOfGroup;
  }

  std::string_view text_;
  std::array<Number, kMost> found_;  // those behind `count_` are not initialized
  std::size_t count_ = 0;
  bool areAll_ = true;
};

// The one number of `left` that `right` has less often; null if there is none, or more than one.
const Number* OnlyWithout(const Numbers& left, const Numbers& right) noexcept {
  const Number* only = nullptr;
  for (const Number& number : left) {
    const std::ptrdiff_t surplus = left.CountOf(number.value) - right.CountOf(number.value);
    if (surplus > 1 || (surplus == 1 && only != nullptr && only->value != number.value)) {
      return nullptr;
    }
    if (surplus == 1) {
      only = &number;
    }
  }
  return only;
}

// "14" for "2014".
bool IsYearWithoutCentury(const Number& left, const Number& right) noexcept {
  constexpr unsigned kDigitsOfYear = 4;
  const Number& longer = left.digits > right.digits ? left : right;
  const Number& shorter = left.digits > right.digits ? right : left;
  return longer.digits == kDigitsOfYear && shorter.digits == 2 &&
         longer.value % 100 == shorter.value;
}

// Years are others in the calendars of these languages.
bool IsYearOfOtherCalendar(const Number& base, const std::string& language) noexcept {
  constexpr std::uint64_t kFirst = 1900;
  constexpr std::uint64_t kLast = 2100;
  constexpr std::string_view kLanguages[] = {"am", "fa", "lo", "ne", "ps", "th"};
  return base.value >= kFirst && base.value <= kLast &&
         std::find(std::begin(kLanguages), std::end(kLanguages), language) != std::end(kLanguages);
}

// "more than 1" is "2 or more" in other languages, and "zero" may be "0". So one of both numbers has
// two digits.
bool IsChanged(const Number& base, const Number& text) noexcept {
  return (base.digits > 1 || text.digits > 1) && !base.hasSeparator && !text.hasSeparator &&
         !base.isTime && !text.isTime && !IsYearWithoutCentury(base, text);
}

// Whether `base` is two short numbers, such as "1/2", "3-4" or "1.2".
bool IsTwoNumbers(std::string_view base) noexcept {
  constexpr std::size_t kLongest = 5;
  return base.size() <= kLongest && IsAsciiDigit(base.front()) && IsAsciiDigit(base.back()) &&
         base.find_first_not_of("0123456789") == base.find_first_of("/-.") &&
         base.find_first_of("/-.") == base.find_last_not_of("0123456789");
}

std::uint64_t ValueOf(std::string_view digits) noexcept {
  std::uint64_t value = 0;
  for (const char c : digits) {
    value = value * 10 + static_cast<std::uint64_t>(c - '0');
  }
  return value;
}

// The words and numbers of a short text that has nothing else but ".", "-", "/" and blanks.
struct DateParts {
  std::size_t words = 0;
  std::size_t letters = 0;
  std::array<std::uint64_t, 3> values = {};
  std::size_t count = 0;
  bool isDate = true;
};

DateParts DatePartsOf(std::string_view text) {
  DateParts parts;
  std::size_t digits = 0;
  bool isInWord = false;
  VisitCodePoints(text, [&](char32_t c, std::string_view part) {
    const bool isDigit = c < 0x80U && IsAsciiDigit(static_cast<char>(c));
    const bool isLetter = !isDigit && IsLetter(c);
    if (isDigit && digits++ == 0 && parts.count++ == parts.values.size()) {
      parts.isDate = false;
    } else if (isDigit) {
      parts.values[parts.count - 1] = parts.values[parts.count - 1] * 10 + ValueOf(part);
    } else {
      digits = 0;
      parts.isDate = isLetter || std::string_view("./- ").find(part) != kNone;
    }
    parts.words += isLetter && !isInWord ? 1 : 0;
    parts.letters += isLetter ? 1 : 0;
    isInWord = isLetter;
    return parts.isDate;
  });
  return parts;
}

// "01. Feb", "1-Feb", "Feb 2001" or "01.02.2024" for "1/2": a number of the base and the name of a
// month, or both numbers and a year.
bool IsDateOf(std::string_view base, std::string_view text) {
  constexpr std::size_t kLongest = 24;  // bytes
  constexpr std::size_t kFewestLetters = 3;
  constexpr std::uint64_t kFirstYear = 1900;
  if (text.size() > kLongest || !IsTwoNumbers(base)) {
    return false;
  }
  const std::size_t sign = base.find_first_of("/-.");
  const std::uint64_t first = ValueOf(base.substr(0, sign));
  const std::uint64_t second = ValueOf(base.substr(sign + 1));
  const DateParts parts = DatePartsOf(text);
  bool hasFirst = false;
  bool hasSecond = false;
  std::size_t years = 0;
  for (std::size_t i = 0; parts.isDate && i < parts.count; ++i) {
    hasFirst = hasFirst || parts.values[i] == first;
    hasSecond = hasSecond || parts.values[i] == second;
    years += parts.values[i] >= kFirstYear ? 1 : 0;
  }
  if (parts.words == 1 && parts.letters >= kFewestLetters) {
    return (hasFirst || hasSecond) && years <= 1 && parts.count == 1 + years;
  }
  constexpr std::size_t kPartsOfDate = 3;
  return parts.words == 0 && parts.count == kPartsOfDate && years == 1 && hasFirst && hasSecond;
}

void CheckChanged(const TextCheck& check) {
  const std::string_view base = check.BaseText();
  if (IsDateOf(base, check.Text())) {
    check.Add(RuleId::kNumber, Severity::kWarning, check.Text(),
              {"number.date", {std::string(base)}});
    return;
  }
  const Numbers ofBase(base);
  if (ofBase.Count() == 0 || !ofBase.AreAll()) {
    return;
  }
  const Numbers ofText(check.Text());
  if (!ofText.AreAll() || ofText.Count() != ofBase.Count()) {
    return;
  }
  const Number* const lost = OnlyWithout(ofBase, ofText);
  const Number* const found = OnlyWithout(ofText, ofBase);
  if (lost == nullptr || found == nullptr || !IsChanged(*lost, *found) ||
      IsYearOfOtherCalendar(*lost, check.file.FileLanguage().primary)) {
    return;
  }
  check.Add(RuleId::kNumber, Severity::kWarning, found->where,
            {"number.changed", {std::string(lost->where), std::string(found->where)}});
}

// Words of letters and digits, such as "C0".

// The first word of ASCII letters and digits behind `last`, a part of `text`; empty at the end. Parts
// of placeholders and escapes are none.
std::string_view NextCode(std::string_view text, std::string_view last) noexcept {
  constexpr std::string_view kSigns = "%$\\{&";
  auto end = static_cast<std::size_t>(last.data() + last.size() - text.data());
  for (;;) {
    std::size_t begin = end;
    while (begin < text.size() && !IsAsciiLetterOrDigit(text[begin])) {
      ++begin;
    }
    end = begin;
    while (end < text.size() && IsAsciiLetterOrDigit(text[end])) {
      ++end;
    }
    if (begin == end || begin == 0 || kSigns.find(text[begin - 1]) == kNone) {
      return text.substr(begin, end - begin);
    }
  }
}

// The first code of `text` for which `isWanted` is true; empty if there is none.
template <class Condition>
std::string_view FindCode(std::string_view text, Condition isWanted) {
  std::string_view code = NextCode(text, text.substr(0, 0));
  while (!code.empty() && !isWanted(code)) {
    code = NextCode(text, code);
  }
  return code;
}

bool HasCode(std::string_view text, std::string_view code) {
  return !FindCode(text, [code](std::string_view other) { return other == code; }).empty();
}

bool HasLetterAndDigit(std::string_view code) noexcept {
  return code.size() > 1 && std::any_of(code.begin(), code.end(), IsAsciiDigit) &&
         std::any_of(code.begin(), code.end(), IsAsciiLetter);
}

// The digit that a letter looks like; other characters stay.
char DigitLike(char c) noexcept {
  return c == 'O' || c == 'o' ? '0' : c == 'l' || c == 'I' ? '1' : c;
}

// Whether the codes differ, and only by letters for digits.
bool LooksLike(std::string_view left, std::string_view right) noexcept {
  const auto isLike = [](char l, char r) {
    return l == r || (DigitLike(l) == DigitLike(r) && IsAsciiDigit(l) != IsAsciiDigit(r));
  };
  return left.size() == right.size() && left != right &&
         std::equal(left.begin(), left.end(), right.begin(), isLike);
}

// A letter for a digit of the base, or a digit for a letter. One of both codes has letters and digits.
bool CheckCodes(const TextCheck& check) {
  constexpr std::size_t kLongest = 1000;  // bytes
  const std::string_view base = check.BaseText();
  const std::string_view text = check.Text();
  if (base.size() > kLongest || text.size() > kLongest) {
    return false;
  }
  std::string_view wrong;
  const auto isReplaced = [&](std::string_view ofBase) {
    if (!HasLetterAndDigit(ofBase) || HasCode(text, ofBase)) {
      return false;
    }
    wrong = FindCode(text, [&](std::string_view code) {
      return LooksLike(code, ofBase) && !HasCode(base, code);
    });
    return !wrong.empty();
  };
  std::string_view right = FindCode(base, isReplaced);
  if (right.empty()) {
    const auto isWrong = [&](std::string_view found) {
      if (!HasLetterAndDigit(found) || HasCode(base, found)) {
        return false;
      }
      right = FindCode(base, [&](std::string_view code) {
        return LooksLike(code, found) && !HasCode(text, code);
      });
      return !right.empty();
    };
    wrong = FindCode(text, isWrong);
  }
  if (wrong.empty()) {
    return false;
  }
  check.Add(RuleId::kLookAlikeSign, Severity::kWarning, wrong,
            {"look-alike-sign.code", {std::string(right), std::string(wrong)}});
  return true;
}

// A sign that looks like the degree sign of the base: ordinal indicator, ring, superscript zero.
void CheckDegree(const TextCheck& check) {
  constexpr std::string_view kDegree = u8"\u00B0";
  constexpr std::string_view kLike[] = {u8"\u00BA", u8"\u02DA", u8"\u2070"};
  const std::string_view text = check.Text();
  if (check.BaseText().find(kDegree) == kNone || text.find(kDegree) != kNone) {
    return;
  }
  for (const std::string_view sign : kLike) {
    if (const std::size_t found = text.find(sign); found != kNone) {
      check.Add(RuleId::kLookAlikeSign, Severity::kWarning, text.substr(found, sign.size()),
                {"look-alike-sign.degree", {std::string(sign)}});
      return;
    }
  }
}

// The full-width bar of Chinese and Japanese keyboards, where the program separates parts at "|".
void CheckBar(const TextCheck& check) {
  constexpr std::string_view kFullWidthBar = u8"\uFF5C";
  const std::string_view text = check.Text();
  const std::size_t found = text.find(kFullWidthBar);
  if (found != kNone && check.BaseText().find('|') != kNone && text.find('|') == kNone) {
    check.Add(RuleId::kLookAlikeSign, Severity::kWarning, text.substr(found, kFullWidthBar.size()),
              {"look-alike-sign.sign", {"|", std::string(kFullWidthBar)}});
  }
}

// Whether the text has a digit of ASCII. Quick: the compiler makes a loop of vectors of it.
bool HasDigit(std::string_view text) noexcept {
  constexpr unsigned char kDigits = 10;
  unsigned char found = 0;
  for (const char c : text) {
    found |= static_cast<unsigned char>(static_cast<unsigned char>(c - '0') < kDigits);
  }
  return found != 0;
}

// Whether the texts have the same digits of ASCII in the same order.
bool HaveSameDigits(std::string_view left, std::string_view right) noexcept {
  std::size_t l = 0;
  std::size_t r = 0;
  for (;; ++l, ++r) {
    while (l < left.size() && !IsAsciiDigit(left[l])) {
      ++l;
    }
    while (r < right.size() && !IsAsciiDigit(right[r])) {
      ++r;
    }
    if (l == left.size() || r == right.size() || left[l] != right[r]) {
      return l == left.size() && r == right.size();
    }
  }
}

}  // namespace

void CheckNumbers(const TextCheck& check) {
  const std::string_view base = check.BaseText();
  if (!check.base || check.Text() == base) {
    return;
  }
  const bool isInBase = HasDigit(base);
  if ((isInBase || HasDigit(check.Text())) && !HaveSameDigits(base, check.Text()) &&
      !CheckCodes(check) && isInBase) {
    CheckChanged(check);
  }
  CheckDegree(check);
  CheckBar(check);
}

}  // namespace KelmoLibs::Lang
