// The rules line-break, entity and tag: what stands in a text for its layout, beside the base.
// Translations differ in much of it on purpose, so these rules look only at what is surely lost.
#include <algorithm>
#include <array>
#include <cstddef>
#include <string>

#include "lang/rules/check.h"
#include "lang/unicode/ascii.h"
#include "text/utf8.h"

namespace KelmoLibs::Lang {
namespace {

constexpr std::size_t kNone = std::string_view::npos;

char At(std::string_view text, std::size_t at) noexcept {
  return at < text.size() ? text[at] : '\0';
}

// Line breaks.

struct LineBreaks {
  std::size_t count = 0;
  std::size_t longestLine = 0;  // bytes
  std::string_view last;
  bool isAtStart = false;
  bool isAtEnd = false;
  bool isBehindSentence = false;  // one of them
  bool hasEmptyLine = false;
  std::size_t within = 0;  // neither at the start nor at the end
  std::size_t wraps = 0;   // within a sentence: the next line goes on with a small letter
};

// Whether "C:" stands in front of `at`, as a word: behind a blank, a mark or a quotation mark.
bool IsBehindDrive(std::string_view text, std::size_t at) noexcept {
  if (at < 2 || text[at - 1] != ':' || !IsAsciiLetter(text[at - 2])) {
    return false;
  }
  constexpr std::string_view kQuotes[] = {u8"\u201C", u8"\u201D", u8"\u201E", u8"\u2018",
                                          u8"\u201A", u8"\u00AB", u8"\u00BB", u8"\u300C",
                                          u8"\u00A0", u8"\u202F"};
  const std::string_view before = text.substr(0, at - 2);
  return before.empty() || std::string_view(" \t\"'`()[{<>=,;|/").find(before.back()) != kNone ||
         std::any_of(std::begin(kQuotes), std::end(kQuotes), [before](std::string_view quote) {
           return before.size() >= quote.size() &&
                  before.substr(before.size() - quote.size()) == quote;
         });
}

// Whether the line break from `at` to `behind` stands within a sentence.
bool IsWrap(std::string_view text, std::size_t at, std::size_t behind) noexcept {
  return at > 0 && std::string_view(".:!?").find(text[at - 1]) == kNone &&
         IsAsciiLower(At(text, behind));
}

// The "\n" of a text. A path such as "C:\new" has none, nor has "\\n".
LineBreaks FindLineBreaks(std::string_view text) noexcept {
  constexpr std::size_t kLength = 2;
  LineBreaks breaks;
  bool isInPath = false;
  std::size_t start = 0;
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (text[at] == ' ') {
      isInPath = false;
    } else if (text[at] == '\\') {
      isInPath = isInPath || IsBehindDrive(text, at);
      if (At(text, at + 1) == 'n' && !isInPath) {
        ++breaks.count;
        breaks.last = text.substr(at, kLength);
        breaks.longestLine = std::max(breaks.longestLine, at - start);
        breaks.isAtStart = breaks.isAtStart || at == 0;
        breaks.isBehindSentence = breaks.isBehindSentence ||
                                  (at > 0 && std::string_view(".:!?").find(text[at - 1]) != kNone);
        breaks.isAtEnd = at + kLength == text.size();
        breaks.hasEmptyLine = breaks.hasEmptyLine || (breaks.count > 1 && at == start);
        breaks.within += at > 0 && !breaks.isAtEnd ? 1 : 0;
        breaks.wraps += IsWrap(text, at, at + kLength) ? 1 : 0;
        start = at + kLength;
      }
      ++at;
    }
  }
  breaks.longestLine = std::max(breaks.longestLine, text.size() - start);
  return breaks;
}

// Whether the text has more or fewer line breaks than it should. Lines of prose are broken at other
// places in other languages, and labels need not be broken, so the breaks inside are counted only in
// texts of a few short lines, and are missing only behind a sentence. Where the base breaks a line
// within a sentence, a text needs more or fewer lines.
bool HasOtherBreaks(const LineBreaks& base, const LineBreaks& text) noexcept {
  constexpr std::size_t kMost = 2;
  constexpr std::size_t kLongestIfLess = 60;
  constexpr std::size_t kLongestIfMore = 40;
  if (base.count == text.count) {
    return false;
  }
  if (base.count > 0 && (base.isAtStart != text.isAtStart || base.isAtEnd != text.isAtEnd)) {
    return true;
  }
  if (base.count > kMost || text.count > base.count + kMost) {
    return false;
  }
  if (text.count < base.count) {
    return base.isBehindSentence && base.longestLine <= kLongestIfLess &&
           text.within + base.wraps < base.within;
  }
  const bool isWrapped = base.wraps > 0 && base.hasEmptyLine == text.hasEmptyLine;
  return !isWrapped && base.longestLine <= kLongestIfMore;
}

void CheckLineBreaks(const TextCheck& check) {
  const LineBreaks base = FindLineBreaks(check.BaseText());
  const LineBreaks text = FindLineBreaks(check.Text());
  const bool isOneWord = base.count == 0 && check.BaseText().find(' ') == kNone;
  if (isOneWord || !HasOtherBreaks(base, text)) {
    return;
  }
  const std::string_view where = text.count > base.count ? text.last : check.Text();
  check.Add(RuleId::kLineBreak, Severity::kWarning, where,
            {"line-break.message", {std::to_string(text.count), std::to_string(base.count)}});
}

// Entities.

struct Entity {
  std::string_view whole;  // "&amp;"; without the ";" if it is broken
  std::string_view name;   // "amp", "#160"
  bool isBroken = false;
};

constexpr std::string_view kEntities[] = {
    "amp",    "lt",    "gt",     "quot",   "apos",   "nbsp",   "copy",  "reg",    "trade",
    "hellip", "mdash", "ndash",  "laquo",  "raquo",  "ldquo",  "rdquo", "lsquo",  "rsquo",
    "bdquo",  "sbquo", "eacute", "egrave", "agrave", "ccedil", "auml",  "ouml",   "uuml",
    "Auml",   "Ouml",  "Uuml",   "szlig",  "euro",   "deg",    "times", "middot", "bull",
    "shy",    "sect",  "plusmn", "micro",  "rarr",   "larr"};
constexpr std::ptrdiff_t kMeantWithoutEnd = 6;  // so many of them are seen without the ";" too

// The entity that begins with the "&" at `at`; its `whole` is empty if there is none.
Entity EntityAt(std::string_view text, std::size_t at) noexcept {
  constexpr std::size_t kLongest = 10;
  const bool isAfterBlank = At(text, at + 1) == ' ';
  const std::size_t first = at + (isAfterBlank ? 2U : 1U);
  const bool isNumber = At(text, first) == '#' && IsAsciiLetterOrDigit(At(text, first + 1));
  std::size_t end = first + (isNumber ? 1U : 0U);
  while (end < first + kLongest && IsAsciiLetterOrDigit(At(text, end))) {
    ++end;
  }
  const std::string_view name = text.substr(std::min(first, text.size()), end - first);
  const auto* const known = std::find(std::begin(kEntities), std::end(kEntities), name);
  const bool isKnown = known != std::end(kEntities);
  const bool isClosed = At(text, end) == ';';
  if (isClosed && !isAfterBlank && (isNumber || isKnown)) {
    return {text.substr(at, end + 1 - at), name};
  }
  const bool isMeant = isNumber || known - std::begin(kEntities) < kMeantWithoutEnd;
  if (isMeant && (isClosed || !isAfterBlank)) {
    return {text.substr(at, end - at + (isClosed ? 1U : 0U)), name, true};
  }
  return {};
}

// The first entity of `text` at or behind `at`; its `whole` is empty if there is none.
Entity FindEntity(std::string_view text, std::size_t at) noexcept {
  Entity entity;
  for (at = text.find('&', at); at != kNone && entity.whole.empty(); at = text.find('&', at + 1)) {
    entity = EntityAt(text, at);
  }
  return entity;
}

bool HasEntity(std::string_view text, std::string_view name) noexcept {
  for (Entity entity = FindEntity(text, 0); !entity.whole.empty();) {
    if (!entity.isBroken && entity.name == name) {
      return true;
    }
    entity = FindEntity(
        text, static_cast<std::size_t>(entity.whole.data() + entity.whole.size() - text.data()));
  }
  return false;
}

void CheckEntities(const TextCheck& check) {
  const std::string_view text = check.Text();
  const std::string_view base = check.BaseText();
  const Entity first = FindEntity(text, 0);
  const bool hasBaseEntities = !FindEntity(base, 0).whole.empty();
  if (!hasBaseEntities) {
    // The base is plain text: the user would see the letters of the entity.
    if (!first.whole.empty() && !first.isBroken && base.find('<') == kNone) {
      check.Add(RuleId::kEntity, Severity::kWarning, first.whole,
                {"entity.surplus", {std::string(first.whole)}});
    }
    return;
  }
  for (std::size_t at = 0; at < text.size();) {
    const Entity entity = FindEntity(text, at);
    if (entity.whole.empty()) {
      break;
    }
    if (entity.isBroken) {
      check
          .Add(RuleId::kEntity, Severity::kWarning, entity.whole,
               {"entity.broken", {std::string(entity.whole)}})
          .hint = {"entity.hint", {'&' + std::string(entity.name) + ';'}};
      return;
    }
    at = static_cast<std::size_t>(entity.whole.data() + entity.whole.size() - text.data());
  }
  // The sign itself where the base has its entity.
  const std::size_t sign = text.find('&');
  const bool isEntity = sign != kNone && FindEntity(text, sign).whole.data() == text.data() + sign;
  if (sign != kNone && !isEntity && HasEntity(base, "amp") && !HasEntity(text, "amp")) {
    check
        .Add(RuleId::kEntity, Severity::kWarning, text.substr(sign, 1),
             {"entity.missing", {"&amp;"}})
        .hint = {"entity.hint", {"&amp;"}};
  }
}

// Escapes of other formats.

bool IsHexDigit(char c) noexcept {
  return IsAsciiDigit(c) || (AsciiLowerCase(c) >= 'a' && AsciiLowerCase(c) <= 'f');
}

// The first "\u00c9" or "\xE9" that stands for a letter beyond ASCII. "\x86" is the end of a path.
std::string_view FindEscape(std::string_view text) noexcept {
  constexpr std::size_t kDigitsOfU = 4;
  constexpr std::size_t kDigitsOfX = 2;
  for (std::size_t at = text.find('\\'); at != kNone; at = text.find('\\', at + 2)) {
    const char kind = At(text, at + 1);
    const std::size_t count = kind == 'u' ? kDigitsOfU : kind == 'x' ? kDigitsOfX : 0;
    const std::string_view digits = text.substr(std::min(at + 2, text.size()), count);
    if (count == 0 || digits.size() < count ||
        !std::all_of(digits.begin(), digits.end(), IsHexDigit)) {
      continue;
    }
    const bool isAscii =
        kind == 'u' ? digits.substr(0, 2) == "00" && digits[2] < '8' : digits[0] < 'A';
    if (!isAscii) {
      return text.substr(at, 2 + count);
    }
  }
  return {};
}

// The letter that an escape of FindEscape stands for; empty if it is half of one.
std::string LetterOf(std::string_view escape) {
  constexpr int kBase = 16;
  const auto character =
      static_cast<char32_t>(std::stoul(std::string(escape.substr(2)), nullptr, kBase));
  std::string letter;
  if (character < 0xD800 || character > 0xDFFF) {
    Localize::AppendUtf8(character, letter);
  }
  return letter;
}

void CheckEscapes(const TextCheck& check) {
  const std::string_view base = check.BaseText();
  const bool hasBase = base.find("\\u") != kNone || base.find("\\x") != kNone;
  const std::string_view escape = hasBase ? std::string_view() : FindEscape(check.Text());
  if (!escape.empty()) {
    check.Add(RuleId::kEntity, Severity::kWarning, escape, {"entity.escape", {std::string(escape)}})
        .mend = {"entity.escape_mend", {LetterOf(escape)}};
  }
}

// Marks that programs for translators put around the source and the translation of a segment:
// "{0>Open<}87{>Öffnen<0}".

void CheckSegmentMarks(const TextCheck& check) {
  const std::string_view text = check.Text();
  for (const std::string_view mark : {"{0>", "<0}", "<}"}) {
    const std::size_t found = text.find(mark);
    if (found == kNone || check.BaseText().find(mark) != kNone ||
        (mark == "<}" && text.find("{>", found) == kNone)) {
      continue;
    }
    check
        .Add(RuleId::kTag, Severity::kWarning, text.substr(found, mark.size()),
             {"tag.segment", {std::string(mark)}})
        .mend = {"tag.segment_mend", {}};
    return;
  }
}

// Tags.

struct Tag {
  std::string_view whole;  // "<b>", "</b>", "<br/>", "<a href='…'>"
  std::string_view name;
  bool isClosing = false;
};

// Tags that programs show text with. Others may stand for a word: "<file>".
constexpr std::array<std::string_view, 32> kKnownTags = {
    "a",     "b",     "big", "center", "code", "div", "em", "font", "h1",   "h2",     "h3",
    "h4",    "i",     "img", "li",     "ol",   "pre", "s",  "span", "sub",  "strong", "sup",
    "small", "table", "td",  "th",     "tr",   "tt",  "u",  "ul",   "html", "body"};

bool IsKnownTag(std::string_view name) noexcept {
  return std::any_of(kKnownTags.begin(), kKnownTags.end(),
                     [name](std::string_view known) { return AreEqualButForCase(known, name); });
}

// The tags of a text with a name that is known; a text with more of them than are kept is not
// judged.
class Tags {
 public:
  static constexpr std::size_t kMost = 64;

  explicit Tags(std::string_view text) noexcept {
    std::size_t close = 0;
    for (std::size_t at = text.find('<'); at != kNone; at = text.find('<', at + 1)) {
      const std::size_t slash = At(text, at + 1) == '/' ? 1 : 0;
      const std::size_t first = at + 1 + slash;
      std::size_t end = first;
      while (IsAsciiLetterOrDigit(At(text, end))) {
        ++end;
      }
      // Looked for once, so that the time stays linear.
      close = close < end ? text.find('>', end) : close;
      if (close == kNone) {
        return;
      }
      const char behind = At(text, end);
      const std::string_view name = text.substr(first, end - first);
      const bool isTag =
          IsAsciiLetter(At(text, first)) && (behind == '>' || behind == ' ' || behind == '/');
      if (isTag && IsKnownTag(name)) {
        Add({text.substr(at, close + 1 - at), name, slash != 0});
      }
    }
  }

  // NOLINTBEGIN(readability-identifier-naming): for range-based loops
  const Tag* begin() const noexcept { return found_.data(); }
  const Tag* end() const noexcept { return found_.data() + count_; }
  // NOLINTEND(readability-identifier-naming)
  bool AreAll() const noexcept { return areAll_; }

  std::ptrdiff_t Count(std::string_view name, bool isClosing) const noexcept {
    return std::count_if(begin(), end(), [&](const Tag& tag) {
      return tag.isClosing == isClosing && AreEqualButForCase(tag.name, name);
    });
  }
  // Opening tags without closing ones.
  std::ptrdiff_t Balance(std::string_view name) const noexcept {
    return Count(name, false) - Count(name, true);
  }

 private:
  void Add(const Tag& tag) noexcept {
    if (count_ == kMost) {
      areAll_ = false;
      return;
    }
    found_[count_++] = tag;
  }

  std::array<Tag, kMost> found_;
  std::size_t count_ = 0;
  bool areAll_ = true;
};

// Chinese, Japanese and Korean have other ways to mark words: their texts often leave out styles.
bool MayLeaveOut(std::string_view tag, const Language& language) {
  const bool isStyle = AreEqualButForCase(tag, "b") || AreEqualButForCase(tag, "i") ||
                       AreEqualButForCase(tag, "u") || AreEqualButForCase(tag, "em") ||
                       AreEqualButForCase(tag, "strong");
  return isStyle && IsOneOfLanguages(language.primary, " zh ja ko ");
}

// "&lt;b&gt;" where the base has the tag "<b>"; empty if the text has none.
std::string_view FindEscapedTag(std::string_view text, const Tag& tag) {
  constexpr std::string_view kEnd = "&gt;";
  const std::string start = (tag.isClosing ? "&lt;/" : "&lt;") + std::string(tag.name);
  const std::size_t at = text.find(start);
  const std::size_t end = at == kNone ? kNone : text.find(kEnd, at + start.size());
  return end == kNone ? std::string_view() : text.substr(at, end + kEnd.size() - at);
}

// Whether a word processor has changed the quotation marks of a tag, such as <a href="...">.
bool HasOddQuotes(const Tag& tag) {
  constexpr std::string_view kOdd[] = {u8"=\u201C", u8"=\u201D", u8"=\u201E", u8"=\u2018",
                                       u8"=\u2019", u8"=\u00AB", u8"=\u00BB", u8"=\uFF02"};
  return std::any_of(std::begin(kOdd), std::end(kOdd),
                     [&tag](std::string_view odd) { return tag.whole.find(odd) != kNone; });
}

// The first such tag of the text; null if there is none, or if the base has one too.
const Tag* FindOddQuotes(const Tags& text, const Tags& base) {
  const Tag* const found = std::find_if(text.begin(), text.end(), HasOddQuotes);
  return found != text.end() && std::none_of(base.begin(), base.end(), HasOddQuotes) ? found
                                                                                     : nullptr;
}

void CheckTags(const TextCheck& check) {
  const Tags base(check.BaseText());
  if (base.begin() == base.end()) {
    return;
  }
  const Tags text(check.Text());
  if (!base.AreAll() || !text.AreAll()) {
    return;
  }
  // A style may be given to more or fewer words, but each tag that opens also closes.
  for (const Tag& tag : text) {
    const std::ptrdiff_t surplus = text.Balance(tag.name) - base.Balance(tag.name);
    if (surplus != 0) {
      const std::string lacking = (surplus > 0 ? "</" : "<") + std::string(tag.name) + '>';
      check.Add(RuleId::kTag, Severity::kWarning, tag.whole, {"tag.unbalanced", {lacking}});
      return;
    }
  }
  if (const Tag* const tag = FindOddQuotes(text, base)) {
    check.Add(RuleId::kTag, Severity::kWarning, tag->whole, {"tag.quotes", {}}).mend = {
        "tag.quotes_mend", {}};
    return;
  }
  for (const Tag& tag : base) {
    if (text.Count(tag.name, tag.isClosing) == 0 &&
        !MayLeaveOut(tag.name, check.file.FileLanguage())) {
      const std::string_view escaped = FindEscapedTag(check.Text(), tag);
      if (!escaped.empty()) {
        const std::string wanted(tag.whole);
        check
            .Add(RuleId::kTag, Severity::kWarning, escaped,
                 {"tag.escaped", {std::string(escaped), wanted}})
            .mend = {"tag.escaped_mend", {wanted}};
        return;
      }
      check.Add(RuleId::kTag, Severity::kWarning, check.Text(),
                {"tag.missing", {std::string(tag.whole)}});
      return;
    }
  }
}

bool HasAny(const TextCheck& check, char sign) noexcept {
  return check.Text().find(sign) != kNone || check.BaseText().find(sign) != kNone;
}

}  // namespace

void CheckMarkup(const TextCheck& check) {
  if (!check.base || check.Text().empty() || check.Text() == check.BaseText()) {
    return;
  }
  if (HasAny(check, '\\')) {
    CheckLineBreaks(check);
    CheckEscapes(check);
  }
  if (HasAny(check, '&')) {
    CheckEntities(check);
  }
  if (check.Text().find('}') != kNone) {
    CheckSegmentMarks(check);
  }
  if (check.BaseText().find('<') != kNone) {
    CheckTags(check);
  }
}

}  // namespace KelmoLibs::Lang
