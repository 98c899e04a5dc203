#include "lang/unicode/double_encoding.h"

#include <array>
#include <cstddef>
#include <cstdint>

#include "lang/unicode/code_page.h"
#include "lang/unicode/code_points.h"
#include "text/utf8.h"

namespace KelmoLibs::Lang {
namespace {

// A character of UTF-8 whose bytes stand in the text as characters of a code page.
struct Sequence {
  char32_t value = 0;      // 0: there is none
  std::size_t length = 0;  // in the text, in bytes
  char32_t last = 0;       // the character that stands for the last byte
};

constexpr bool IsBetween(char32_t value, char32_t first, char32_t last) noexcept {
  return value >= first && value <= last;
}

// Bytes without a character in windows-1252 are read as control characters.
std::optional<unsigned char> ByteAs(CodePage page, char32_t character) noexcept {
  if (page == CodePage::kWindows1252 && IsBetween(character, 0x80, 0xFF) &&
      (character >= 0xA0 || !CharacterOf(page, static_cast<char>(character)))) {
    return static_cast<unsigned char>(character);
  }
  const std::optional<char> byte = ByteOf(page, character);
  return byte ? std::optional(static_cast<unsigned char>(*byte)) : std::nullopt;
}

Sequence SequenceAt(CodePage page, std::string_view text) noexcept {
  const CodePoint first = FirstCodePoint(text);
  const bool isLead =
      page == CodePage::kWindows1252
          ? IsBetween(first.value, 0xC2, 0xF4)
          : first.value == 0x420 || first.value == 0x421 ||    // Cyrillic Er, Es: Cyrillic letters
                first.value == 0x413 || first.value == 0x432;  // Ghe: Latin letters; ve: signs
  if (!isLead) {
    return {};
  }
  const unsigned char lead = *ByteAs(page, first.value);
  const std::size_t length = lead >= 0xF0 ? 4U : lead >= 0xE0 ? 3U : 2U;
  std::string bytes(1, static_cast<char>(lead));  // short: it needs no memory
  Sequence sequence;
  sequence.length = first.length;
  for (std::size_t i = 1; i < length; ++i) {
    if (sequence.length >= text.size()) {
      return {};
    }
    const CodePoint next = FirstCodePoint(text.substr(sequence.length));
    const std::optional<unsigned char> byte =
        next.value < 0x80 ? std::nullopt : ByteAs(page, next.value);
    if (!byte || (*byte & 0xC0U) != 0x80U) {
      return {};
    }
    bytes += static_cast<char>(*byte);
    sequence.length += next.length;
    sequence.last = next.value;
  }
  if (Localize::WellFormedUtf8Length(bytes) == length) {
    sequence.value = FirstCodePoint(bytes).value;
  }
  return sequence;
}

bool IsAsciiLetter(char32_t character) noexcept { return IsBetween(character | 0x20U, U'a', U'z'); }

bool IsLowerLatin(char32_t character) noexcept {
  return IsBetween(character, U'a', U'z') || IsBetween(character, 0xDF, 0xFF);
}

bool IsUpperLatin(char32_t character) noexcept {
  return IsBetween(character, U'A', U'Z') || IsBetween(character, 0xC0, 0xDE);
}

// Marks that follow capital letters in real texts.
bool IsMark(char32_t character) noexcept {
  constexpr std::u32string_view kMarks =
      U"\u00A0\u00A1\u00A7\u00A9\u00AA\u00AB\u00AE\u00B0\u00B1\u00B2\u00B3\u00B7\u00B9\u00BA\u00BB"
      U"\u00BC\u00BD\u00BE\u00BF\u2013\u2014\u2018\u2019\u201A\u201C\u201D\u201E\u2020\u2021\u2022"
      U"\u2026\u2030\u2039\u203A\u20AC\u2122";
  return kMarks.find(character) != std::u32string_view::npos;
}

bool IsSign(char32_t value) noexcept {
  return IsBetween(value, 0x2010, 0x203A) || value == 0x20AC || value == 0x2116 ||
         value == 0x2122 || IsBetween(value, 0x2190, 0x22FF);
}

struct Range {
  char32_t first;
  char32_t last;
};

// The scripts of which two letters in a row are needed.
constexpr std::array<Range, 9> kScripts = {{{0x386, 0x3CE},      // Greek
                                            {0x400, 0x491},      // Cyrillic
                                            {0x5D0, 0x5EA},      // Hebrew
                                            {0x60C, 0x6D2},      // Arabic
                                            {0x900, 0xE5B},      // of India, Thai
                                            {0x10A0, 0x10FF},    // Georgian
                                            {0x3001, 0x9FFF},    // Chinese, Japanese
                                            {0xFF01, 0xFF5E},    // their full-width marks
                                            {0xAC00, 0xD7A3}}};  // Korean

// The script in kScripts, counted from 1; 0 for all others.
unsigned ScriptOf(char32_t value) noexcept {
  for (unsigned i = 0; i < kScripts.size(); ++i) {
    if (IsBetween(value, kScripts[i].first, kScripts[i].last)) {
      return i + 1;
    }
  }
  return 0;
}

// How sure it is that a sequence is no real text; kSure and more are reported.
constexpr unsigned kSure = 2;

unsigned SureIn1252(const Sequence& sequence, char32_t before, char32_t after) noexcept {
  const char32_t value = sequence.value;
  if (IsSign(value) || IsBetween(value, 0x1EA0, 0x1EF9) || IsBetween(value, 0x1F300, 0x1FAFF)) {
    return kSure;
  }
  const bool isLatin = IsBetween(value, 0xA0, 0x17F);
  if (!isLatin && !IsBetween(value, 0x218, 0x21B)) {
    return 0;
  }
  const bool isInWord = IsLowerLatin(before) || IsLowerLatin(after);
  if (isInWord || (isLatin && !IsMark(sequence.last))) {
    return kSure;
  }
  if (IsUpperLatin(before) || !isLatin) {
    return 0;
  }
  // A degree sign, and the marks in front of Spanish sentences.
  return value == 0xB0 || value == 0xA1 || value == 0xBF ? kSure : 1U;
}

unsigned SureIn1251(const Sequence& sequence, char32_t before, char32_t after) noexcept {
  const bool isLatin = IsBetween(sequence.value, 0xC0, 0xFF);
  return IsSign(sequence.value) || (isLatin && (IsAsciiLetter(before) || IsAsciiLetter(after)))
             ? kSure
             : 0U;
}

// Cyrillic letters that pairs of Cyrillic letters can be.
bool IsUsualCyrillic(char32_t value) noexcept {
  constexpr std::u32string_view kOthers =
      U"\u0401\u0404\u0406\u0407\u0451\u0454\u0456\u0457\u0490\u0491";
  return IsBetween(value, 0x410, 0x44F) || kOthers.find(value) != std::u32string_view::npos;
}

// Sequences one behind the other.
struct Run {
  std::size_t length = 0;
  unsigned sure = 0;
  char32_t last = 0;    // the last character of the text in it
  std::string letters;  // what they were
};

Run RunAt(CodePage page, std::string_view text, char32_t before) {
  Run run;
  unsigned script = 0;
  run.last = before;
  for (Sequence sequence = SequenceAt(page, text); sequence.value != 0;) {
    const std::string_view rest = text.substr(run.length + sequence.length);
    const char32_t after = rest.empty() ? 0 : FirstCodePoint(rest).value;
    const bool isLetter = page == CodePage::kWindows1252 || IsUsualCyrillic(sequence.value);
    const unsigned itsScript = isLetter ? ScriptOf(sequence.value) : 0;
    run.sure += page == CodePage::kWindows1252 ? SureIn1252(sequence, run.last, after)
                                               : SureIn1251(sequence, run.last, after);
    run.sure += itsScript != 0 && itsScript == script ? kSure : 0U;
    script = itsScript;
    run.last = sequence.last;
    run.length += sequence.length;
    Localize::AppendUtf8(sequence.value, run.letters);
    sequence = rest.empty() ? Sequence() : SequenceAt(page, rest);
  }
  return run;
}

std::optional<DoubleEncoded> FindIn(CodePage page, std::string_view text) {
  DoubleEncoded found;
  unsigned sure = 0;
  char32_t before = 0;
  for (std::size_t i = 0; i < text.size();) {
    const Run run = RunAt(page, text.substr(i), before);
    if (run.sure > 0 && found.part.empty()) {
      found = {text.substr(i, run.length), run.letters};
    }
    sure += run.sure;
    if (sure >= kSure) {
      return found;
    }
    const CodePoint character = FirstCodePoint(text.substr(i));
    before = run.length > 0 ? run.last : character.value;
    i += run.length > 0 ? run.length : character.length;
  }
  return std::nullopt;
}

}  // namespace

std::optional<DoubleEncoded> FindDoubleEncoded(std::string_view text) {
  std::optional<DoubleEncoded> found = FindIn(CodePage::kWindows1252, text);
  return found ? found : FindIn(CodePage::kWindows1251, text);
}

}  // namespace KelmoLibs::Lang
