// Reads placeholders. In doubt a sign is none: a text with "100 % sure" or "a {b c}" has none.
// tests/lang/placeholder_syntax_test.cpp has a row for each syntax and look-alike.
#include "lang/rules/placeholder_syntax.h"

#include <algorithm>

#include "lang/unicode/ascii.h"

namespace KelmoLibs::Lang {
namespace {

constexpr std::size_t kNone = std::string_view::npos;

// So far the end of a pair of braces is looked for.
constexpr std::size_t kLongestBraces = 2000;

char At(std::string_view text, std::size_t at) noexcept {
  return at < text.size() ? text[at] : '\0';
}

// Letters of all alphabets, so that translated names are seen.
bool IsNameStart(char c) noexcept {
  return IsAsciiLetter(c) || c == '_' || static_cast<unsigned char>(c) > 0x7F;
}
bool IsInName(char c) noexcept { return IsNameStart(c) || IsAsciiDigit(c) || c == '.' || c == '-'; }

// The end of the digits or of the name that begins at `at`; `at` itself if there is none.
std::size_t EndOfDigits(std::string_view text, std::size_t at) noexcept {
  while (IsAsciiDigit(At(text, at))) {
    ++at;
  }
  return at;
}
std::size_t EndOfName(std::string_view text, std::size_t at) noexcept {
  if (IsNameStart(At(text, at))) {
    while (IsInName(At(text, at))) {
      ++at;
    }
  }
  return at;
}

std::string_view Part(std::string_view text, std::size_t first, std::size_t end) noexcept {
  return text.substr(first, end - first);
}

PrintfType TypeOf(char conversion) noexcept {
  switch (conversion) {
    case 'd':
    case 'i':
    case 'u':
      return PrintfType::kInteger;
    case 'x':
    case 'X':
    case 'o':
      return PrintfType::kHex;
    case 'e':
    case 'E':
    case 'f':
    case 'F':
    case 'g':
    case 'G':
      return PrintfType::kReal;
    case 's':
      return PrintfType::kText;
    case 'c':
      return PrintfType::kCharacter;
    case 'p':
    case '@':
      return PrintfType::kOther;
    default:
      return PrintfType::kNone;
  }
}

// "hh", "ll", "I64" and so on; empty if there is none.
std::string_view SizeAt(std::string_view text, std::size_t at) noexcept {
  for (const std::string_view size :
       {"hh", "h", "ll", "l", "L", "j", "z", "t", "q", "I64", "I32"}) {
    if (text.substr(at, size.size()) == size) {
      return text.substr(at, size.size());
    }
  }
  return {};
}

// The end of the braces whose first one is before `at`, and npos if they do not end.
std::size_t EndOfBraces(std::string_view text, std::size_t at) noexcept {
  std::size_t depth = 1;
  const std::size_t end = std::min(text.size(), at + kLongestBraces);
  for (; at < end; ++at) {
    if (text[at] == '{') {
      ++depth;
    } else if (text[at] == '}' && --depth == 0) {
      return at + 1;
    }
  }
  return kNone;
}

// Whether the kind of an ICU argument stands behind the comma at `at`: "{ascii,ebcdic}" is none.
bool IsIcuKind(std::string_view text, std::size_t at) noexcept {
  at = std::min(text.find_first_not_of(" ,", at), text.size());
  const std::string_view kind = Part(text, at, EndOfName(text, at));
  return kind == "plural" || kind == "select" || kind == "selectordinal" || kind == "number" ||
         kind == "date" || kind == "time" || kind == "list";
}

// Whether the percent sign at `at` begins a part of a date, such as %Y.
bool IsOfDate(std::string_view text, std::size_t at) noexcept {
  constexpr std::string_view kOfDates = "YHMBbyjkZTRD";
  return kOfDates.find(text[at + 1]) != kNone && !IsAsciiLetter(At(text, at + 2)) &&
         (at == 0 || !IsAsciiDigit(text[at - 1]));
}

// "%d" in "%dpx" is a placeholder, and "%i" in "100%ig" is none.
bool IsWord(std::string_view text, std::size_t percent, std::size_t conversion) noexcept {
  constexpr std::string_view kOftenBeforeLetters = "dsuifx";
  if (!IsAsciiLetter(At(text, conversion + 1))) {
    return false;
  }
  const bool isAfterNumber =
      percent > 0 && (IsAsciiDigit(text[percent - 1]) ||
                      (text[percent - 1] == ' ' && percent > 1 && IsAsciiDigit(text[percent - 2])));
  return isAfterNumber || kOftenBeforeLetters.find(text[conversion]) == kNone;
}

}  // namespace

Placeholders::Placeholders(std::string_view text, PercentDigits digits) noexcept {
  for (std::size_t at = 0; areAll_;) {
    at = text.find_first_of("%{", at);
    if (at == kNone) {
      return;
    }
    at = text[at] == '%' ? ReadPercent(text, at, digits) : ReadBrace(text, at);
  }
}

// Reads what begins with the percent sign at `at`, and returns where to go on. So do the other
// readers.
std::size_t Placeholders::ReadPercent(std::string_view text, std::size_t at,
                                      PercentDigits digits) noexcept {
  const std::size_t next = at + 1;
  switch (At(text, next)) {
    case '\0':
      return next;
    case '%': {
      // In Turkish the percent sign stands in front: "%%1".
      const bool isBeforeNumber = digits == PercentDigits::kAreNumber &&
                                  IsAsciiDigit(At(text, next + 1)) &&
                                  At(text, EndOfDigits(text, next + 1)) != '$';
      return isBeforeNumber ? next : next + 1;
    }
    case '(':
    case '{':
      return ReadPercentName(text, at);
    case 'L':  // %L1 is %1 with separators
      return IsAsciiDigit(At(text, next + 1)) ? ReadPercentNumber(text, at, digits)
                                              : ReadPrintf(text, at);
    default:
      break;
  }
  if (IsAsciiDigit(text[next]) && text[next] != '0' && At(text, EndOfDigits(text, next)) != '$') {
    return ReadPercentNumber(text, at, digits);
  }
  isTimeFormat_ = isTimeFormat_ || IsOfDate(text, at);
  return ReadPrintf(text, at);
}

// %(name)s, %{name}
std::size_t Placeholders::ReadPercentName(std::string_view text, std::size_t at) noexcept {
  const std::size_t first = at + 2;
  const bool isBrace = text[at + 1] == '{';
  const std::size_t close = EndOfName(text, first);
  if (close == first || At(text, close) != (isBrace ? '}' : ')')) {
    return at + 1;
  }
  const std::string_view name = Part(text, first, close);
  if (isBrace) {
    Add(PlaceholderSyntax::kPercentBrace, Part(text, at, close + 1), name);
    return close + 1;
  }
  const std::size_t conversion =
      std::min(text.find_first_not_of("0123456789.+-#", close + 1), text.size());
  if (TypeOf(At(text, conversion)) == PrintfType::kNone && At(text, conversion) != 'r') {
    return at + 1;
  }
  Add(PlaceholderSyntax::kPercentName, Part(text, at, conversion + 1), name);
  return conversion + 1;
}

// %1, %L1, or the width of %5d
std::size_t Placeholders::ReadPercentNumber(std::string_view text, std::size_t at,
                                            PercentDigits digits) noexcept {
  constexpr std::size_t kLongest = 2;
  const std::size_t number = text[at + 1] == 'L' ? at + 2 : at + 1;
  const std::size_t end = EndOfDigits(text, number);
  const std::size_t before = count_;
  const std::size_t endOfPrintf = ReadPrintf(text, at);
  if (count_ > before) {
    const bool isSure = At(text, end) == '.';
    const bool isBeforeWord = IsAsciiLetter(At(text, endOfPrintf));  // "%1hours"
    hasDoubtfulDigits_ = hasDoubtfulDigits_ || (!isSure && !isBeforeWord);
    if (isSure || (digits == PercentDigits::kAreWidth && !isBeforeWord)) {
      return endOfPrintf;
    }
    count_ = before;
    --lastArgument_;
  }
  if (end - number <= kLongest) {
    Add(PlaceholderSyntax::kPercentNumber, Part(text, at, end), Part(text, number, end));
  }
  return end;
}

// %[number$][flags][width][.precision][size]conversion
std::size_t Placeholders::ReadPrintf(std::string_view text, std::size_t at) noexcept {
  constexpr unsigned kBase = 10;
  std::size_t next = at + 1;
  unsigned argument = 0;
  const std::size_t end = EndOfDigits(text, next);
  constexpr std::size_t kLongestNumber = 3;
  if (end > next && end - next <= kLongestNumber && At(text, end) == '$') {
    for (; next < end; ++next) {
      argument = argument * kBase + static_cast<unsigned>(text[next] - '0');
    }
    ++next;
  }
  const std::size_t flags = next;
  next = std::min(text.find_first_not_of("-+#0'", next), text.size());
  const bool hasSignFlag = Part(text, flags, next).find_first_of("-+") != kNone;
  const bool isStarWidth = At(text, next) == '*';
  const std::size_t width = next;
  next = isStarWidth ? next + 1 : EndOfDigits(text, next);
  if (hasSignFlag && next == width && At(text, next) != '.') {
    return at + 1;  // "%-sign"
  }
  bool isStarPrecision = false;
  if (At(text, next) == '.' && (IsAsciiDigit(At(text, next + 1)) || At(text, next + 1) == '*')) {
    isStarPrecision = At(text, next + 1) == '*';
    next = isStarPrecision ? next + 2 : EndOfDigits(text, next + 1);
  }
  const std::string_view size = SizeAt(text, next);
  next += size.size();
  const PrintfType type = TypeOf(At(text, next));
  const bool isSizeOfWord = !size.empty() && IsAsciiLetter(At(text, next + 1));  // "%list"
  if (type == PrintfType::kNone || isSizeOfWord || IsWord(text, at, next)) {
    return at + 1;
  }
  for (const bool isStar : {isStarWidth, isStarPrecision}) {
    if (isStar && argument == 0) {
      Add(PlaceholderSyntax::kPrintf, Part(text, at, next + 1), {});
      if (areAll_) {
        found_[count_ - 1].type = PrintfType::kInteger;
        found_[count_ - 1].argument = ++lastArgument_;
      }
    }
  }
  Add(PlaceholderSyntax::kPrintf, Part(text, at, next + 1), {});
  if (areAll_) {
    Placeholder& placeholder = found_[count_ - 1];
    placeholder.isNumbered = argument != 0;
    placeholder.argument = argument != 0 ? argument : ++lastArgument_;
    placeholder.type = type;
    placeholder.size = size;
  }
  return next + 1;
}

std::size_t Placeholders::ReadBrace(std::string_view text, std::size_t at) noexcept {
  if (At(text, at + 1) == '{') {
    std::size_t first = at + 2;
    first = std::min(text.find_first_not_of(' ', first), text.size());
    const std::size_t end = EndOfName(text, first);
    const std::size_t close = std::min(text.find_first_not_of(' ', end), text.size());
    if (end == first || text.substr(close, 2) != "}}") {
      return at + 2;  // an escaped brace
    }
    Add(PlaceholderSyntax::kDoubleBrace, Part(text, at, close + 2), Part(text, first, end));
    return close + 2;
  }
  const bool isAfterDollar = at > 0 && text[at - 1] == '$';
  const std::size_t first = at + 1;
  const bool isNumber = IsAsciiDigit(At(text, first));
  const std::size_t end = isNumber ? EndOfDigits(text, first) : EndOfName(text, first);
  const char sign = At(text, end);
  std::size_t close = end + 1;
  if (sign == ',' || sign == ':' || sign == '!') {
    const bool isArgument = end > first && (sign != ',' || isNumber || IsIcuKind(text, end));
    close = isArgument ? EndOfBraces(text, end) : kNone;
    constexpr unsigned kMostOpen = 16;  // so that the time stays linear
    openBraces_ += close == kNone ? 1U : 0U;
    areAll_ = areAll_ && openBraces_ < kMostOpen;
  } else if (sign != '}' || (end == first && isAfterDollar)) {
    close = kNone;
  }
  if (close == kNone) {
    return first;
  }
  if (isAfterDollar) {
    Add(PlaceholderSyntax::kDollarBrace, Part(text, at - 1, close), Part(text, first, end));
  } else {
    Add(isNumber || end == first ? PlaceholderSyntax::kBraceNumber : PlaceholderSyntax::kBraceName,
        Part(text, at, close), Part(text, first, end));
  }
  return close;
}

void Placeholders::Add(PlaceholderSyntax syntax, std::string_view whole,
                       std::string_view name) noexcept {
  if (count_ == kMost) {
    areAll_ = false;
    return;
  }
  Placeholder& placeholder = found_[count_++];
  placeholder = {};
  placeholder.syntax = syntax;
  placeholder.whole = whole;
  placeholder.name = name;
  if (syntax == PlaceholderSyntax::kBraceNumber && name.empty()) {
    placeholder.argument = ++lastBrace_;
  }
}

bool HasPlaceholderMark(std::string_view text) noexcept {
  return std::any_of(text.begin(), text.end(), [](char c) { return c == '%' || c == '{'; });
}

namespace {

// Counts the texts of a dictionary that have a syntax.
class UseCount {
 public:
  void Add(std::string_view text) noexcept {
    const Placeholders placeholders(text, PercentDigits::kAreNumber);
    if (placeholders.HasDoubtfulDigits()) {
      ++doubtful_;
      return;
    }
    if (placeholders.IsTimeFormat() || placeholders.IsEmpty()) {
      return;
    }
    ++texts_;
    std::array<bool, kPlaceholderSyntaxCount> isIn{};
    for (const Placeholder& placeholder : placeholders) {
      // A text such as "{Town}" may be a label.
      isIn[Index(placeholder.syntax)] = placeholder.whole.size() < text.size();
    }
    for (std::size_t i = 0; i < counts_.size(); ++i) {
      counts_[i] += isIn[i] ? 1U : 0U;
    }
  }

  PlaceholderUse Result() const noexcept {
    constexpr std::size_t kRarest = 50;  // in one of so many texts with placeholders
    PlaceholderUse use;
    const bool areWidths = counts_[Index(PlaceholderSyntax::kPrintf)] >
                           counts_[Index(PlaceholderSyntax::kPercentNumber)];
    use.digits = areWidths ? PercentDigits::kAreWidth : PercentDigits::kAreNumber;
    const auto ofDoubtful =
        areWidths ? PlaceholderSyntax::kPrintf : PlaceholderSyntax::kPercentNumber;
    for (std::size_t i = 0; i < counts_.size(); ++i) {
      const std::size_t count = counts_[i] + (i == Index(ofDoubtful) ? doubtful_ : 0);
      use.isUsed[i] = count > 0 && count * kRarest >= texts_;
    }
    return use;
  }

 private:
  static constexpr std::size_t Index(PlaceholderSyntax syntax) noexcept {
    return static_cast<std::size_t>(syntax);
  }

  std::array<std::size_t, kPlaceholderSyntaxCount> counts_{};
  std::size_t texts_ = 0;
  std::size_t doubtful_ = 0;
};

}  // namespace

PlaceholderUse UseOfPlaceholders(const Workspace& workspace, const MergedDictionary& dictionary) {
  UseCount count;
  for (const std::uint32_t file : dictionary.Files()) {
    for (const Entry& entry : workspace.files[file].dictionary->Entries()) {
      if (HasPlaceholderMark(entry.text)) {
        count.Add(entry.text);
      }
    }
  }
  return count.Result();
}

bool IsSameValue(const Placeholder& left, const Placeholder& right) noexcept {
  if (left.syntax != right.syntax) {
    return false;
  }
  return left.syntax == PlaceholderSyntax::kPrintf
             ? left.argument == right.argument && left.type == right.type && left.size == right.size
             : left.name == right.name && left.argument == right.argument;
}

}  // namespace KelmoLibs::Lang
