// Rules end-mark and full-stop: a text ends with the mark that ends the text of the base, in the
// writing of its language. Tested by end_marks_test.cpp.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "lang/rules/check.h"
#include "lang/rules/remark.h"
#include "lang/rules/word_reader.h"
#include "lang/rules/wording.h"
#include "lang/unicode/code_points.h"
#include "lang/unicode/scripts.h"

namespace KelmoLibs::Lang {
namespace {

enum class EndKind : std::uint8_t { kOther, kColon, kQuestion, kEllipsis, kFullStop, kExclamation };

struct End {
  EndKind kind = EndKind::kOther;
  std::string_view mark;  // a view into the text; empty if the kind is kOther
  bool isInBrackets = false;
  bool hasEllipsis = false;  // also of a question: "?…"
};

bool IsOneOf(std::u32string_view set, char32_t character) noexcept {
  return set.find(character) != std::u32string_view::npos;
}

// Also marks of direction and other characters without a width.
bool IsBlank(char32_t character) noexcept {
  return IsOneOf(U" \u00A0\u2007\u2009\u202F\u3000\u200B\u200E\u200F\u061C\u202C\u2069", character);
}

bool IsQuote(char32_t character) noexcept {
  return IsOneOf(
      U"\"'`*\u00AB\u00BB\u2018\u2019\u201A\u201C\u201D\u201E\u2039\u203A\u2033\u300D\u300F",
      character);
}

bool IsClosingBracket(char32_t character) noexcept {
  return IsOneOf(U")]}\uFF09\uFF3D\uFF5D\u3009\u300B\u3011\u3015", character);
}

bool IsColon(char32_t character) noexcept {
  // Full-width, small, vertical, mathematical, Ethiopic, Khmer.
  return IsOneOf(U":\uFF1A\uFE55\uFE13\u2236\u1365\u1366\u17D6", character);
}

bool IsQuestionMark(char32_t character) noexcept {
  // Greek, Armenian, Arabic, Ethiopic, full-width, small, in pairs.
  return IsOneOf(U"?\u037E\u055E\u061F\u1367\uFF1F\uFE56\u2047\u2048\u2049", character);
}

bool IsDot(char32_t character) noexcept {
  return IsOneOf(U".\u3002\uFF61\uFF0E\u30FB\u00B7", character);
}

bool IsEllipsis(char32_t character) noexcept {
  return IsOneOf(U"\u2025\u2026\u22EF\uFE19", character);
}

bool IsFullStop(char32_t character) noexcept {
  // East Asia, India, Urdu, Armenian, Burmese, Khmer, Ethiopic, Tibetan.
  return IsOneOf(
      U".\u3002\uFF61\uFF0E\u0964\u0965\u06D4\u0589\u104A\u104B\u17D4\u17D5\u1362\u0F0D\u0F0E",
      character);
}

bool IsExclamation(char32_t character) noexcept {
  return IsOneOf(U"!\u055C\u1944\uFE57\uFF01", character);
}

bool EndsWith(std::string_view text, std::string_view end) noexcept {
  return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

// The part that begins with the last `open`, without the text before; empty if it is long.
std::string_view LastPart(std::string_view text, char open) noexcept {
  constexpr std::size_t kLongest = 24;
  const std::string_view part = text.substr(text.size() - std::min(text.size(), kLongest));
  const std::size_t found = part.find_last_of(open);
  return found == std::string_view::npos ? std::string_view() : part.substr(found);
}

// Length of what stands at the end and is no punctuation of the text: the escape of a line end, a
// closing tag, an accelerator such as (&F).
std::size_t NoTextAtEnd(std::string_view text) noexcept {
  constexpr std::string_view kEscapes[] = {"\\n", "\\t", "\\r"};
  for (const std::string_view escape : kEscapes) {
    if (EndsWith(text, escape)) {
      return escape.size();
    }
  }
  if (EndsWith(text, ">")) {
    const std::string_view tag = LastPart(text, '<');
    const bool isTag = tag.substr(0, 2) == "</" || EndsWith(tag, "/>") || tag == "<br>";
    return isTag ? tag.size() : 0;
  }
  if (EndsWith(text, ")")) {
    const std::string_view part = LastPart(text, '(');
    return part.substr(0, 2) == "(&" ? part.size() : 0;
  }
  return 0;
}

// The marks at the end of `text`, which ends with one of them or with a letter.
End MarksAtEnd(std::string_view text, bool isSemicolonQuestion) noexcept {
  constexpr unsigned kDotsOfEllipsis = 3;
  const CodePoint last = LastCodePoint(text);
  const std::string_view lastPart = text.substr(text.size() - last.length);
  if (IsColon(last.value)) {
    return {EndKind::kColon, lastPart};
  }
  unsigned dots = 0;
  bool isQuestion = false;
  std::string_view before = text;
  while (!before.empty()) {
    const CodePoint mark = LastCodePoint(before);
    if (IsQuestionMark(mark.value) || (isSemicolonQuestion && mark.value == ';')) {
      isQuestion = true;
    } else if (IsDot(mark.value)) {
      ++dots;
    } else if (IsEllipsis(mark.value)) {
      dots = kDotsOfEllipsis;
    } else if (!IsExclamation(mark.value)) {
      break;
    }
    before.remove_suffix(mark.length);
  }
  const std::string_view marks = text.substr(before.size());
  if (isQuestion || dots >= kDotsOfEllipsis) {
    return {isQuestion ? EndKind::kQuestion : EndKind::kEllipsis, marks, false,
            dots >= kDotsOfEllipsis};
  }
  return IsFullStop(last.value)      ? End{EndKind::kFullStop, lastPart}
         : IsExclamation(last.value) ? End{EndKind::kExclamation, lastPart}
                                     : End{};
}

// Looks through blanks, quotes, brackets and the like at the end.
End EndOf(std::string_view text, bool isSemicolonQuestion) noexcept {
  bool isInBrackets = false;
  bool isInQuotes = false;
  while (!text.empty()) {
    const std::size_t noText = NoTextAtEnd(text);
    if (noText > 0) {
      text.remove_suffix(noText);
      continue;
    }
    const CodePoint last = LastCodePoint(text);
    isInBrackets = isInBrackets || IsClosingBracket(last.value);
    isInQuotes = isInQuotes || IsQuote(last.value);
    if (!IsBlank(last.value) && !IsQuote(last.value) && !IsClosingBracket(last.value)) {
      End end = MarksAtEnd(text, isSemicolonQuestion);
      end.isInBrackets = isInBrackets;
      const std::string_view before = text.substr(0, text.size() - end.mark.size());
      const char32_t ahead = before.empty() ? U' ' : LastCodePoint(before).value;
      // A quoted mark is a name of itself: "expected ':'".
      const bool isName =
          (isInBrackets || isInQuotes) && (IsQuote(ahead) || IsOneOf(U"([{\u300C\uFF08", ahead));
      return isName ? End{} : end;
    }
    text.remove_suffix(last.length);
  }
  return {};
}

// Whether a language often has no question mark where English has one.
bool MayOmitQuestionMark(std::string_view language) {
  return IsOneOfLanguages(language, " ja ko th lo km my bo ");
}

// Whether its sentences often end without a full stop.
bool MayOmitFullStop(std::string_view language) {
  return IsOneOfLanguages(language, " ja th lo km my bo ");
}

std::size_t CountWords(std::string_view text, std::size_t most) {
  std::size_t count = 0;
  WordReader words(text);
  for (Word word; count < most && words.Next(word);) {
    ++count;
  }
  return count;
}

// Whether the difference to another such end is a matter of style.
bool IsStyle(EndKind kind) noexcept {
  return kind == EndKind::kOther || kind == EndKind::kFullStop || kind == EndKind::kExclamation;
}

// The sentences that end in `text` in front of its last one, without `end`.
std::size_t CountSentences(std::string_view text, const End& end) {
  if (!end.mark.empty()) {
    text = text.substr(0, static_cast<std::size_t>(end.mark.data() - text.data()));
  }
  std::size_t count = 0;
  bool isBehindMark = false;
  VisitCodePoints(text, [&](char32_t character, std::string_view) {
    const bool isWideMark = IsOneOf(U"\u3002\uFF01\uFF1F", character);  // no blank follows
    const bool isEnd = isBehindMark && (IsBlank(character) || character == '\\');
    count += isWideMark || isEnd ? 1 : 0;
    isBehindMark = IsFullStop(character) || IsQuestionMark(character) || IsExclamation(character);
    isBehindMark = isBehindMark && !isWideMark;
    return true;
  });
  return count;
}

// Whether the mark of `own`, which the base lacks, belongs to another wording.
bool IsSurplusMeant(const TextCheck& check, const End& base, const End& own) {
  const std::string_view baseText = check.BaseText();
  switch (own.kind) {
    case EndKind::kColon:
      return IsBeginOfSentence(baseText) || PointsBelow(baseText);
    case EndKind::kQuestion:  // also of a sentence that the base lacks
      return HasIndirectQuestion(baseText) || IsGuess(baseText) ||
             CountSentences(check.Text(), own) > CountSentences(baseText, base);
    default:
      return IsOpenList(baseText) || IsProgress(baseText);
  }
}

bool IsEndMarkMeant(const TextCheck& check, const End& base, const End& own) {
  const std::string_view language = check.file.FileLanguage().primary;
  if (language == "hy") {
    return true;  // a colon is a full stop, and the question mark stands within a word
  }
  if ((base.isInBrackets && base.kind != EndKind::kOther) ||
      (own.isInBrackets && own.kind != EndKind::kOther)) {
    return true;  // of a remark in brackets, which may be worded in another way
  }
  if (IsStyle(base.kind)) {
    return IsSurplusMeant(check, base, own);
  }
  if (base.kind == EndKind::kQuestion && IsStyle(own.kind)) {
    return MayOmitQuestionMark(language) || IsGuess(check.BaseText());
  }
  if (base.kind == EndKind::kEllipsis && own.hasEllipsis) {
    return true;
  }
  constexpr std::size_t kLongSentence = 8;
  return base.kind == EndKind::kColon && own.kind == EndKind::kFullStop &&  // before a list
         CountWords(check.BaseText(), kLongSentence) == kLongSentence;
}

bool IsFullStopMeant(const TextCheck& check, const End& base, const End& own) {
  constexpr std::size_t kSentence = 3;  // words; shorter texts may be abbreviations
  const bool isAdded = own.kind == EndKind::kFullStop;
  const std::string_view language = check.file.FileLanguage().primary;
  return base.kind == EndKind::kExclamation || own.kind == EndKind::kExclamation ||
         (!isAdded && MayOmitFullStop(language)) || language == "hy" ||
         CountWords(check.BaseText(), kSentence) < kSentence;
}

std::string_view MessageOf(EndKind kind) noexcept {
  switch (kind) {
    case EndKind::kColon:
      return "end-mark.no-colon";
    case EndKind::kQuestion:
      return "end-mark.no-question-mark";
    case EndKind::kEllipsis:
      return "end-mark.no-ellipsis";
    default:
      return "end-mark.surplus";
  }
}

}  // namespace

// The entry close to this one whose text has the end that this text should have, and should have the
// end that this text has: texts have slipped from line to line. Null if there is none.
const Entry* FindSlipped(const TextCheck& check, EndKind base, EndKind own) {
  constexpr std::ptrdiff_t kReach = 2;
  const std::vector<Entry>& entries = check.file.File().Entries();
  const std::ptrdiff_t here = &check.entry - entries.data();
  const auto count = static_cast<std::ptrdiff_t>(entries.size());
  for (std::ptrdiff_t i = std::max<std::ptrdiff_t>(here - kReach, 0);
       i < std::min(here + kReach + 1, count); ++i) {
    const Entry& other = entries[static_cast<std::size_t>(i)];
    const FoundEntry otherBase = check.file.FindInBase(other.key);
    if (i != here && otherBase && EndOf(other.text, false).kind == base &&
        EndOf(otherBase.entry->text, false).kind == own) {
      return &other;
    }
  }
  return nullptr;
}

void CheckEndMarks(const TextCheck& check) {
  if (!check.base || check.Text().empty() || check.BaseText().empty()) {
    return;
  }
  const End base = EndOf(check.BaseText(), false);
  // A Greek semicolon is a question mark, or it belongs to a command.
  const bool isSemicolonQuestion =
      base.kind == EndKind::kQuestion && check.file.FileLanguage().primary == "el";
  const End own = EndOf(check.Text(), isSemicolonQuestion);
  if (own.kind == base.kind) {
    return;
  }
  if (!FindRemark(check.Text(), check.BaseText()).empty()) {
    return;  // rule bracket reports it
  }
  const std::string_view text = check.Text();
  const std::string_view where =
      own.mark.empty() ? text.substr(text.size() - LastCodePoint(text).length) : own.mark;
  if (!IsStyle(base.kind) || !IsStyle(own.kind)) {
    if (!IsEndMarkMeant(check, base, own)) {
      Finding& finding = check.Add(RuleId::kEndMark, Severity::kWarning, where,
                                   {std::string(MessageOf(base.kind)),
                                    {std::string(IsStyle(base.kind) ? own.mark : base.mark)}});
      if (const Entry* const other = FindSlipped(check, base.kind, own.kind)) {
        const std::uint32_t line = check.file.Source().LineOf(other->key.data());
        finding.hint = {IsStyle(base.kind) ? "end-mark.slipped" : "end-mark.slipped_from",
                        {std::to_string(line)}};
        finding.mend = {"end-mark.slipped_mend", {}};
      }
    }
  } else if (!IsFullStopMeant(check, base, own)) {
    check.Add(RuleId::kFullStop, Severity::kNote, where,
              {own.kind == EndKind::kFullStop ? "full-stop.surplus" : "full-stop.missing", {}});
  }
}

}  // namespace KelmoLibs::Lang
