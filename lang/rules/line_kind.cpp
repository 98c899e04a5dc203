// Tested by lines_test.cpp.
#include "lang/rules/line_kind.h"

#include <algorithm>
#include <array>

#include "lang/unicode/ascii.h"

namespace KelmoLibs::Lang {
namespace {

constexpr std::size_t kConflictMarkLength = 7;
constexpr std::size_t kShortestRule = 3;  // a line such as "---"

bool StartsWith(std::string_view text, std::string_view start) noexcept {
  return text.substr(0, start.size()) == start;
}

bool IsNameCharacter(char c) noexcept {
  return IsAsciiLetterOrDigit(c) || c == '_' || c == '.' || c == '-';
}

std::size_t NameLength(std::string_view text) noexcept {
  std::size_t length = 0;
  while (length < text.size() && IsNameCharacter(text[length])) {
    ++length;
  }
  return length;
}

bool IsRepeated(std::string_view key, char c) noexcept {
  return key.find_first_not_of(c) == std::string_view::npos;
}

LineKind KindOfMark(const Entry& entry, LineKind conflict) noexcept {
  const std::string_view key = entry.key;
  if (key.size() == kConflictMarkLength && IsRepeated(key, key.front())) {
    return conflict;
  }
  return key.size() >= kShortestRule && IsRepeated(key, key.front()) ? LineKind::kComment
                                                                     : LineKind::kEntry;
}

// "# Menu" and "#Menu". `mark` is the length of the mark.
LineKind KindOfComment(std::string_view key, std::size_t mark) noexcept {
  const bool isAlone = IsRepeated(key.substr(mark), key.front());
  return isAlone ? LineKind::kComment : LineKind::kWordComment;
}

// "[menu]" and "[main menu]", but not "[OK]" with a text.
LineKind KindOfBracket(const Entry& entry) noexcept {
  const std::size_t close = entry.key.find(']');
  const bool isWord = close == entry.key.size() - 1 && entry.text.empty();
  const bool areWords = close == std::string_view::npos && !entry.text.empty() &&
                        entry.text.find(']') == entry.text.size() - 1;
  return isWord || areWords ? LineKind::kSection : LineKind::kEntry;
}

TextFormat FormatOfQuotedKey(const Entry& entry) noexcept {
  const std::string_view key = entry.key;
  const std::string_view text = entry.text;
  if (StartsWith(text, "=") && text.back() == ';') {
    return TextFormat::kStrings;
  }
  const std::size_t end = key.find('"', 1);
  if (end == std::string_view::npos) {
    return TextFormat::kDictionary;
  }
  const std::string_view rest = key.substr(end + 1);
  if (StartsWith(rest, ":") || (rest.empty() && StartsWith(text, ":"))) {
    return TextFormat::kJson;
  }
  const bool isQuotedText = text.size() > 1 && text.front() == '"' && text.back() == '"';
  return StartsWith(rest, ",") || StartsWith(rest, ";") || (rest.empty() && isQuotedText)
             ? TextFormat::kSpreadsheet
             : TextFormat::kDictionary;
}

TextFormat FormatOfName(const Entry& entry) noexcept {
  const std::string_view key = entry.key;
  const std::size_t name = NameLength(key);
  if (name == 0) {
    return TextFormat::kDictionary;
  }
  if (name == key.size()) {
    if (StartsWith(key, "msgid") || key == "msgstr" || key == "msgctxt") {
      return StartsWith(entry.text, "\"") ? TextFormat::kPo : TextFormat::kDictionary;
    }
    return StartsWith(entry.text, "=") ? TextFormat::kKeyValue : TextFormat::kDictionary;
  }
  switch (key[name]) {
    case '=':
      return TextFormat::kKeyValue;
    case ';':
    case ',':
      return TextFormat::kSpreadsheet;
    case ':':
      return name + 1 == key.size() ? TextFormat::kYaml : TextFormat::kDictionary;
    case '[':
      return StartsWith(key, "msgstr[") ? TextFormat::kPo : TextFormat::kDictionary;
    default:
      return TextFormat::kDictionary;
  }
}

}  // namespace

LineKind KindOf(const Entry& entry) noexcept {
  const std::string_view key = entry.key;
  if (key.empty()) {
    return LineKind::kEntry;
  }
  switch (key.front()) {
    case '#':
    case ';':
      return KindOfComment(key, 1);
    case '/':
      return StartsWith(key, "//")   ? KindOfComment(key, 2)
             : StartsWith(key, "/*") ? LineKind::kComment
                                     : LineKind::kEntry;
    case '[':
      return KindOfBracket(entry);
    case '<':
      return StartsWith(key, "<!--") ? LineKind::kComment
                                     : KindOfMark(entry, LineKind::kConflictStart);
    case '>':
      return KindOfMark(entry, LineKind::kConflictEnd);
    case '=':
    case '|':
      return KindOfMark(entry, LineKind::kConflictMid);
    case '-':
    case '*':
    case '_':
    case '~':
    case '+':
      return KindOfMark(entry, LineKind::kComment);
    default:
      return LineKind::kEntry;
  }
}

TextFormat FormatOf(const Entry& entry) noexcept {
  const std::string_view key = entry.key.empty() ? entry.text : entry.key;  // may be indented
  if (key.empty()) {
    return TextFormat::kDictionary;
  }
  const Entry line = entry.key.empty() ? Entry{key.substr(0, key.find_first_of(" \t")), {}} : entry;
  switch (key.front()) {
    case '{':
    case '}':
      return key.size() == 1 || key[1] == ',' || key[1] == '"' ? TextFormat::kJson
                                                               : TextFormat::kDictionary;
    case '<':
      return key.size() > 1 && (IsAsciiLetter(key[1]) || key[1] == '/' || key[1] == '?')
                 ? TextFormat::kXml
                 : TextFormat::kDictionary;
    case '"':
      return FormatOfQuotedKey(line);
    default:
      return FormatOfName(line);
  }
}

std::size_t NameBeforeEqualsSign(std::string_view key) noexcept {
  const std::size_t name = NameLength(key);
  return name + 1 < key.size() && key[name] == '=' ? name : 0;
}

KeyShape::KeyShape(const std::vector<Entry>& entries) noexcept {
  struct Count {
    std::size_t keys = 0;
    std::size_t ascii = 0;
    std::size_t beforeTabs = 0;
  };
  constexpr std::array<char, 4> kSeparators = {'.', '_', '-', '/'};
  constexpr std::size_t kFewest = 4;
  constexpr std::size_t kNearlyAllOf = 10;  // nine of ten
  std::array<Count, kSeparators.size()> counts{};
  for (const Entry& entry : entries) {
    const bool isAscii = IsAscii(entry.key);
    const bool isBeforeTab = IsBeforeTab(entry);
    for (std::size_t i = 0; i < kSeparators.size(); ++i) {
      separator_ = kSeparators[i];
      if (Fits(entry.key)) {
        ++counts[i].keys;
        counts[i].ascii += isAscii ? 1U : 0U;
        counts[i].beforeTabs += isBeforeTab ? 1U : 0U;
      }
    }
  }
  const auto best = static_cast<std::size_t>(
      std::max_element(counts.begin(), counts.end(),
                       [](const Count& a, const Count& b) { return a.keys < b.keys; }) -
      counts.begin());
  const Count& most = counts[best];
  const bool isKnown = most.keys >= kFewest && most.keys * 2 >= entries.size();
  separator_ = isKnown ? kSeparators[best] : '\0';
  areAscii_ = isKnown && (most.keys - most.ascii) * kNearlyAllOf <= most.keys;
  areBeforeTabs_ = isKnown && (most.keys - most.beforeTabs) * kNearlyAllOf <= most.keys;
}

bool KeyShape::Fits(std::string_view key) const noexcept {
  const std::size_t found = key.find(separator_, 1);
  return found != std::string_view::npos && found + 1 < key.size();
}

bool IsBeforeTab(const Entry& entry) noexcept {
  // A text, even an empty one behind a separator, stands in the same line.
  return !entry.text.empty() && *(entry.key.data() + entry.key.size()) == '\t';
}

}  // namespace KelmoLibs::Lang
